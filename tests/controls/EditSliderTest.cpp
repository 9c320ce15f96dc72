#include "controls/TdEditSlider.h"

#include "basic/TdHostMessage.h"
#include "common/TdModule.h"
#include "controls/TdEditSliderButton.h"
#include "controls/TdNumEdit.h"
#include "controls/TdSliderCtrl.h"
#include "controls/TdSliderFrame.h"
#include "controls/TdTriangleButton.h"

#include <QAccessible>
#include <QApplication>
#include <QDataStream>
#include <QFormLayout>
#include <QLineEdit>
#include <QMainWindow>
#include <QPointer>
#include <QScreen>
#include <QTest>
#include <QToolBar>

#include <gtest/gtest.h>

#include <climits>
#include <functional>

using namespace Qt::StringLiterals;

namespace {

/// A main window that notes the commands it is told.
class Host : public QMainWindow
{
public:
    Host() { CTdModule::SetMainWnd(this); }
    ~Host() override { CTdModule::SetMainWnd(nullptr); }

    QList<qint64> m_commands;
    std::function<void()> m_inCommand;

protected:
    bool event(QEvent *event) override
    {
        if (CTdHostMessage *message = CTdHostMessage::from(event);
            message && message->message() == CTdHostMessage::Command)
            tell(message->number());
        return QMainWindow::event(event);
    }

private:
    void tell(qint64 command)
    {
        m_commands.append(command);
        if (m_inCommand)
            m_inCommand();
    }
};

class EditSlider : public testing::Test
{
protected:
    EditSlider() : m_control(new CTdEditSlider(7, &m_host))
    {
        m_host.setCentralWidget(m_control);
        m_host.resize(120, 60);
        m_host.move(200, 200);
        m_host.show();
        m_control->EnableWindowX(1);
    }
    std::string shown() const { return m_control->GetEdit()->text().toStdString(); }
    QSlider *open()
    {
        QTest::mouseClick(m_control->GetButton(), Qt::LeftButton);
        EXPECT_TRUE(m_control->GetFrame()->isVisible());
        return m_control->GetFrame()->GetSlider();
    }

    Host m_host;
    CTdEditSlider *m_control;
};

TEST_F(EditSlider, ReleasingTheMouseFiresTheCommandOnceAndCloses)
{
    QSlider *slider = open();
    QTest::mousePress(slider, Qt::LeftButton, {}, QPoint(slider->width() / 2, 8)); // near the top
    EXPECT_TRUE(m_host.m_commands.isEmpty());
    QTest::mouseRelease(slider, Qt::LeftButton, {}, QPoint(slider->width() / 2, 8));
    EXPECT_EQ(m_host.m_commands, QList<qint64>{7});
    EXPECT_FALSE(m_control->GetFrame()->isVisible());
    EXPECT_GT(m_control->GetPos(), 0); // the larger value is at the top
    EXPECT_EQ(shown(), std::to_string(m_control->GetPos()));
}

TEST_F(EditSlider, KeysMoveChooseAndGiveUp)
{
    QSlider *slider = open();
    QTest::keyClick(slider, Qt::Key_Up);
    EXPECT_EQ(m_control->GetPos(), 1);
    EXPECT_EQ(shown(), "1");
    QTest::keyClick(slider, Qt::Key_Escape);
    EXPECT_FALSE(m_control->GetFrame()->isVisible());
    EXPECT_EQ(shown(), "0"); // given up
    EXPECT_TRUE(m_host.m_commands.isEmpty());
    QTest::keyClick(m_control->GetEdit(), Qt::Key_Down, Qt::AltModifier);
    ASSERT_TRUE(m_control->GetFrame()->isVisible());
    QTest::keyClick(slider, Qt::Key_Return);
    EXPECT_FALSE(m_control->GetFrame()->isVisible());
    EXPECT_EQ(m_host.m_commands, QList<qint64>{7});
    QTest::keyClick(m_control->GetEdit(), Qt::Key_Return);
    EXPECT_EQ(m_host.m_commands.size(), 2);
    m_control->EnableWindowX(0);
    QTest::keyClick(m_control->GetEdit(), Qt::Key_Return);
    EXPECT_EQ(m_host.m_commands.size(), 2);
    QTest::mouseClick(m_control->GetButton(), Qt::LeftButton);
    EXPECT_FALSE(m_control->GetFrame()->isVisible());
    EXPECT_TRUE(m_control->GetEdit()->isReadOnly());
    EXPECT_TRUE(m_control->GetEdit()->isEnabled());
}

TEST_F(EditSlider, EscapeInTheMiddleOfADragBringsBackWhatWasTyped)
{
    m_control->GetEdit()->setText(u"250"_s);
    QSlider *slider = open();
    QTest::mousePress(slider, Qt::LeftButton, {}, QPoint(slider->width() / 2, slider->height() / 2));
    EXPECT_NE(shown(), "250");
    QTest::keyClick(slider, Qt::Key_Escape);
    EXPECT_EQ(shown(), "250");
    EXPECT_EQ(m_control->GetPos(), 100);
    EXPECT_FALSE(slider->isSliderDown());
}

TEST_F(EditSlider, TheHostMayDeleteItInItsCommand)
{
    for (const bool inTheEdit : {true, false}) {
        QPointer<CTdEditSlider> control = new CTdEditSlider(7, &m_host);
        m_host.setCentralWidget(control);
        control->EnableWindowX(1);
        m_host.m_inCommand = [control] { delete control; };
        if (!inTheEdit)
            QTest::mouseClick(control->GetButton(), Qt::LeftButton);
        QWidget *slider = control->GetFrame()->GetSlider();
        QTest::keyClick(inTheEdit ? control->GetEdit() : slider, Qt::Key_Return);
        EXPECT_TRUE(control.isNull());
    }
    EXPECT_EQ(m_host.m_commands.size(), 2);
}

TEST_F(EditSlider, TheSliderClampsWhatTheEditKeeps)
{
    m_control->GetEdit()->selectAll();
    QTest::keyClicks(m_control->GetEdit(), u"250"_s);
    EXPECT_EQ(shown(), "250");
    EXPECT_EQ(m_control->GetPos(), 100);
    EXPECT_TRUE(m_host.m_commands.isEmpty());
    m_control->SetPos(-250);
    EXPECT_EQ(shown(), "-100");
    m_control->GetEdit()->setText(u"12"_s); // by the program
    EXPECT_EQ(m_control->GetPos(), 12);
}

TEST_F(EditSlider, DeliberatelyARangeThatIsNotSymmetricClampsToItsStart)
{
    m_control->SetRange(0, 100);
    m_control->SetPos(40);
    EXPECT_EQ(m_control->GetPos(), 0);
    for (const auto &[low, high] : {std::pair{5, -5}, std::pair{INT_MIN, INT_MAX}}) {
        m_control->SetRange(low, high);
        m_control->SetPos(INT_MIN);
        m_control->SetPos(INT_MAX);
    }
    EXPECT_EQ(m_control->GetPos(), INT_MAX);
}

TEST_F(EditSlider, ThePopUpStaysOnTheScreenAndHidesWhenItsPlaceChanges)
{
    const QRect room = m_host.screen()->availableGeometry();
    m_host.move(room.right() - m_host.width(), room.bottom() - m_host.height());
    open();
    EXPECT_TRUE(room.contains(m_control->GetFrame()->geometry()));
    m_host.move(10, 10);
    QCoreApplication::processEvents();
    EXPECT_FALSE(m_control->GetFrame()->isVisible());
    QWidget between;
    m_control->setParent(&between);
    between.setParent(&m_host);
    const std::function<void()> changes[] = {
        [&] { between.move(5, 5); },
        [this] { m_host.hide(); },
        [this] { m_control->setEnabled(false); },
    };
    for (const auto &change : changes) {
        m_control->setEnabled(true);
        m_host.show();
        between.show();
        m_control->show();
        open();
        change();
        EXPECT_FALSE(m_control->GetFrame()->isVisible());
    }
    m_control->setParent(nullptr);
    between.setParent(nullptr);
    delete m_control;
}

TEST(EditSliderInAForm, TabGoesThroughItAndItHasItsLabelsName)
{
    QWidget form;
    auto *layout = new QFormLayout(&form);
    auto *before = new QLineEdit;
    auto *control = new CTdEditSlider; // made before it has a parent
    auto *behind = new QLineEdit;
    layout->addRow(u"Before"_s, before);
    layout->addRow(u"&Percentage:"_s, control);
    layout->addRow(u"Behind"_s, behind);
    control->EnableWindowX(1);
    form.show();
    form.activateWindow();
    before->setFocus();
    for (QWidget *stop : {static_cast<QWidget *>(control->GetEdit()), static_cast<QWidget *>(control->GetButton()),
                          static_cast<QWidget *>(behind)}) {
        QTest::keyClick(form.focusWidget(), Qt::Key_Tab);
        EXPECT_EQ(form.focusWidget(), stop);
    }
    QAccessibleInterface *read = QAccessible::queryAccessibleInterface(control->GetEdit());
    EXPECT_EQ(read->text(QAccessible::Name).toStdString(), "Percentage:");
}

TEST(EditSliderButton, CopiesStayInStep)
{
    Host host;
    QToolBar lying;
    QToolBar upright;
    upright.setOrientation(Qt::Vertical);
    CTdEditSliderButton first(40);
    CTdEditSliderButton second(40);
    CTdEditSliderButton other(41);
    EXPECT_EQ(CTdEditSliderButton::GetPos(40), -1);
    lying.addAction(&first);
    upright.addAction(&first);
    lying.addAction(&second);
    first.SetRange(-10, 10);
    EXPECT_EQ(second.GetMax(), 10);
    EXPECT_EQ(other.GetMax(), 100);
    auto *onLying = qobject_cast<CTdEditSlider *>(lying.widgetForAction(&first));
    auto *onUpright = qobject_cast<CTdEditSlider *>(upright.widgetForAction(&first));
    ASSERT_TRUE(onLying && onUpright);
    EXPECT_GT(onLying->width(), onLying->height());
    EXPECT_LT(onUpright->width(), onUpright->height());
    onLying->GetEdit()->selectAll();
    QTest::keyClicks(onLying->GetEdit(), u"50"_s);
    EXPECT_EQ(onUpright->GetPos(), 10);
    EXPECT_EQ(second.GetValue(), 10); // else GetPos() would not tell what the user set
    EXPECT_EQ(CTdEditSliderButton::GetPos(40), 10);
    EXPECT_GT(onUpright->GetEdit()->width(), onUpright->fontMetrics().horizontalAdvance(u"-10"_s) + 6);
    EXPECT_EQ(CTdEditSliderButton::GetPos(99), -1);
    first.EnableWindow(0);
    EXPECT_TRUE(onUpright->GetEdit()->isReadOnly());
    first.EnableWindow(1);
    host.addToolBar(&lying);
    first.SetValue(3);
    EXPECT_TRUE(host.m_commands.isEmpty());
    first.SetValue(4, true); // heard by the window that holds it; the upright bar is a window of its own
    EXPECT_EQ(host.m_commands, QList<qint64>{40});
    host.removeToolBar(&lying);
    lying.setParent(nullptr);
}

TEST(EditSliderButton, StreamsComeBackAndGarbageChangesNothing)
{
    CTdEditSliderButton button(40, 2, nullptr, 0x4, 90);
    button.SetRange(-7, 7);
    button.SetValue(5);
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    button.Serialize(out);
    ASSERT_EQ(bytes.size(), 28);
    EXPECT_EQ(bytes.mid(8, 4).toHex().toStdString(), "5a000000"); // the width, low byte first
    CTdEditSliderButton back;
    QDataStream in(bytes);
    ASSERT_TRUE(back.Deserialize(in));
    EXPECT_EQ(back.GetWidth(), 90);
    EXPECT_EQ(back.GetStyle(), 0x50000014U);
    EXPECT_EQ(back.GetMin(), -7);
    EXPECT_EQ(back.GetValue(), 5);
    CTdEditSliderButton copy;
    QToolBar bar;
    bar.addAction(&copy);
    copy.CopyFrom(button);
    const auto *control = qobject_cast<CTdEditSlider *>(bar.widgetForAction(&copy));
    EXPECT_EQ(control->width(), 90);
    EXPECT_EQ(control->GetPos(), 5);
    EXPECT_EQ(control->GetCommandId(), 40);
    EXPECT_EQ(control->GetImage(), 2);
    CTdEditSliderButton reversed(0, -1, nullptr, 0, INT_MAX); // what is written can be read, however absurd
    reversed.SetRange(5, -5);
    QByteArray absurd;
    QDataStream outAgain(&absurd, QIODevice::WriteOnly);
    reversed.Serialize(outAgain);
    QDataStream inAgain(absurd);
    EXPECT_TRUE(CTdEditSliderButton().Deserialize(inAgain));
    for (const QByteArray &garbage : {bytes.left(27), QByteArray(28, '\xff'), QByteArray()}) {
        QDataStream broken(garbage);
        EXPECT_FALSE(back.Deserialize(broken));
        EXPECT_EQ(back.GetValue(), 5);
    }
}

} // namespace

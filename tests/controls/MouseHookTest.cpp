#include "controls/ListCtrlEx.h"
#include "controls/TdMouseHook.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPointer>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>

#include <gtest/gtest.h>

#include <memory>

namespace {

/// A window with a label in a frame in it: presses on the label go from there up to the window.
class MouseHook : public testing::Test
{
protected:
    MouseHook()
    {
        m_window.resize(300, 200);
        m_frame = new QFrame(&m_window);
        m_frame->setGeometry(20, 20, 100, 100);
        m_label = new QLabel(m_frame);
        m_label->setGeometry(10, 10, 50, 50);
        m_window.show();
    }
    void press(QWidget *widget) { QTest::mouseClick(widget, Qt::LeftButton); }

    QWidget m_window;
    QFrame *m_frame;
    QLabel *m_label;
};

TEST_F(MouseHook, TellsAnEventOnceThoughItIsPassedOn)
{
    CTdMouseHook hook;
    const QSignalSpy pressed(&hook, &CTdMouseHook::pressed), released(&hook, &CTdMouseHook::released),
        moved(&hook, &CTdMouseHook::moved);
    press(m_label);
    press(m_label); // a second one at the same place is another one
    EXPECT_EQ(pressed.size(), 2);
    EXPECT_EQ(released.size(), 2);
    EXPECT_EQ(pressed[0][0].value<QWidget *>(), m_label);
    EXPECT_EQ(pressed[0][1].toPoint(), m_label->mapToGlobal(m_label->rect().center()));
    QTest::mouseMove(m_label, {3, 3});
    EXPECT_EQ(moved.size(), 1) << "without mouse tracking";
    // A real one comes through the window.
    QTest::mouseClick(m_window.windowHandle(), Qt::RightButton, {}, {200, 150});
    ASSERT_EQ(pressed.size(), 3);
    EXPECT_EQ(pressed[2][0].value<QWidget *>(), &m_window);
    hook.SetActive(false);
    press(m_label);
    EXPECT_EQ(pressed.size(), 3);
}

TEST_F(MouseHook, InsideIsWhatBelongsToTheWidgetsAndEndsAtTheirBorder)
{
    CTdMouseHook hook;
    auto *box = new QComboBox(m_frame);
    box->addItems({QStringLiteral("a"), QStringLiteral("b")});
    box->show();
    hook.SetInside({m_frame});
    const QSignalSpy pressed(&hook, &CTdMouseHook::pressed), crossed(&hook, &CTdMouseHook::crossed);
    press(m_label);
    box->showPopup();
    press(box->view()->viewport()); // a window that a widget inside has opened
    box->hidePopup();
    EXPECT_EQ(pressed.size(), 0);
    press(&m_window);
    EXPECT_EQ(pressed.size(), 1);
    // A drag holds the mouse: the events go on to the label, wherever the mouse is.
    QTest::mousePress(m_label, Qt::LeftButton);
    QTest::mouseMove(m_label, QPoint(180, 5));
    EXPECT_FALSE(crossed.last()[0].toBool());
    QTest::mouseRelease(m_label, Qt::LeftButton, {}, {5, 5});
    EXPECT_TRUE(crossed.last()[0].toBool());
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(&m_window, &leave);
    EXPECT_FALSE(crossed.last()[0].toBool());
    delete m_frame; // is forgotten
    press(&m_window);
    EXPECT_EQ(pressed.size(), 2);
}

TEST_F(MouseHook, SurvivesWhatThoseDoWhomItTells)
{
    int told = 0;
    auto first = std::make_unique<CTdMouseHook>();
    auto second = std::make_unique<CTdMouseHook>();
    // Deletes itself, and another that had its turn or has not; then what was clicked.
    QObject::connect(second.get(), &CTdMouseHook::pressed, [&] {
        ++told;
        first.reset();
        second.reset();
    });
    press(m_label);
    EXPECT_EQ(told, 1);
    CTdMouseHook hook;
    QObject::connect(&hook, &CTdMouseHook::pressed, &hook, [&](QWidget *under) {
        ++told;
        if (under != m_label)
            return;
        // A dialog, which is clicked itself.
        QDialog dialog(&m_window);
        QTimer::singleShot(0, &dialog, [&dialog, this] {
            press(&dialog);
            dialog.accept();
        });
        dialog.exec();
        delete m_frame;
    });
    QMouseEvent event(QEvent::MouseButtonPress, {1, 1}, m_label->mapToGlobal(QPointF(1, 1)), Qt::LeftButton,
                      Qt::LeftButton, {});
    EXPECT_TRUE(QApplication::sendEvent(m_label, &event));
    EXPECT_EQ(told, 3);
}

TEST(MouseHookInLists, AClickOnAToolBarFindsTheEntryInTheCell)
{
    QWidget window;
    auto *save = new QToolButton(&window);
    save->setFocusPolicy(Qt::NoFocus); // as on toolbars
    auto *list = new CListCtrlEx(&window);
    auto *layout = new QVBoxLayout(&window);
    layout->addWidget(save);
    layout->addWidget(list);
    list->InsertColumn(0, QStringLiteral("Name"), 100);
    list->SetColumnEditor(0, CellEditor::Text);
    list->InsertItem(0, QStringLiteral("old"));
    window.show();
    QString saved;
    QObject::connect(save, &QToolButton::clicked, [&] { saved = list->GetItemText(0, 0); });
    ASSERT_TRUE(list->EditItem(0, 0));
    QTest::keyClicks(list->viewport()->findChild<QLineEdit *>(), QStringLiteral("new"));
    QTest::mouseClick(save, Qt::LeftButton);
    EXPECT_EQ(saved, QStringLiteral("new"));
    EXPECT_FALSE(list->IsEditing());
}

} // namespace

#include "basic/TdHostMessage.h"
#include "controls/TdComboBoxButton.h"
#include "controls/TdImageComboBox.h"

#include <QAbstractItemView>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QMainWindow>
#include <QPixmap>
#include <QScreen>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QToolBar>
#include <QWheelEvent>

#include <gtest/gtest.h>

namespace {

void turnWheel(QWidget *widget)
{
    const QPointF middle = widget->rect().center();
    QWheelEvent event(middle, widget->mapToGlobal(middle), {}, {0, -120}, Qt::NoButton, {}, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(widget, &event);
}

class Host : public QMainWindow
{
public:
    QList<qint64> m_commands;

protected:
    bool event(QEvent *event) override
    {
        if (CTdHostMessage *message = CTdHostMessage::from(event);
            message && message->message() == CTdHostMessage::Command)
            m_commands.append(message->number());
        return QMainWindow::event(event);
    }
};

TEST(AutoWidthComboBox, TheListIsAsWideAsItsLongestEntryAndStaysOnTheScreen)
{
    const QRect room = QGuiApplication::primaryScreen()->availableGeometry();
    for (const Qt::LayoutDirection direction : {Qt::LeftToRight, Qt::RightToLeft}) {
        for (const int x : {room.left() + 5, room.right() - 60}) {
            for (const int letters : {3, 30, 2000}) {
                CTdAutoWidthComboBox box;
                box.setLayoutDirection(direction);
                box.setGeometry(x, 100, 60, box.sizeHint().height());
                const QString longest(letters, u'W');
                box.addItems({QStringLiteral("a"), longest, QString(letters + 1, u'i')}); // more letters, less wide
                box.show();
                box.showPopup();
                const QRect list = box.view()->window()->geometry();
                EXPECT_TRUE(room.contains(list)) << x << ' ' << letters;
                const int wanted = std::min(room.width(), box.view()->fontMetrics().horizontalAdvance(longest));
                EXPECT_GE(list.width(), std::max(wanted, 60)) << x << ' ' << letters;
                box.hidePopup();
            }
        }
    }
}

TEST(AutoWidthComboBox, TenThousandEntriesAreMeasuredAtOnce)
{
    CTdAutoWidthComboBox box;
    EXPECT_EQ(box.GetDroppedWidth(), 0);
    QStringList texts;
    for (int i = 0; i < 10000; ++i)
        texts << QStringLiteral("A dataset of some length, number %1").arg(i);
    box.addItems(texts);
    QElapsedTimer clock;
    clock.start();
    EXPECT_GT(box.GetDroppedWidth(), 100);
    RecordProperty("milliseconds", static_cast<int>(clock.elapsed()));
    EXPECT_LT(clock.elapsed(), 500);
    // Whatever the style: not over the whole screen, and with a scroll bar.
    box.show();
    box.showPopup();
    EXPECT_LE(box.view()->height(), (box.maxVisibleItems() + 1) * box.view()->sizeHintForRow(0));
    EXPECT_TRUE(box.view()->verticalScrollBar()->isVisible());
}

TEST(AutoWidthComboBox, TheWheelChangesOnlyWhatHasTheFocus)
{
    QWidget window;
    QLineEdit other(&window);
    CTdAutoWidthComboBox box(&window);
    box.addItems({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")});
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    other.setFocus();
    turnWheel(&box);
    EXPECT_EQ(box.currentIndex(), 0);
    EXPECT_FALSE(box.hasFocus());
    box.setFocus();
    turnWheel(&box);
    EXPECT_EQ(box.currentIndex(), 1);
}

TEST(ImageComboBox, IconAndIndentBelongToTheEntry)
{
    QPixmap red(16, 16);
    red.fill(Qt::red);
    CTdImageComboBox box;
    EXPECT_EQ(box.AddItem(QStringLiteral("datasource"), 0, 0), 0);
    EXPECT_EQ(box.AddItem(QStringLiteral("dataset"), 1, 1, 7), 1);
    EXPECT_TRUE(box.itemIcon(0).isNull());
    const int without = box.GetDroppedWidth();
    box.SetImageList({QIcon(red)});
    EXPECT_FALSE(box.itemIcon(0).isNull());
    EXPECT_TRUE(box.itemIcon(1).isNull()); // there is no such image
    EXPECT_GT(box.GetDroppedWidth(), without);
    EXPECT_EQ(box.InsertItem(0, QStringLiteral("first"), CTdImageComboBox::noImage, 1000), 0);
    EXPECT_EQ(box.GetItemIndent(0), CTdImageComboBox::greatestIndent);
    EXPECT_EQ(box.GetItemImage(1), 0);
    EXPECT_EQ(box.GetItemIndent(2), 1);
    EXPECT_EQ(box.itemData(2).toInt(), 7);
    EXPECT_EQ(box.GetItemImage(99), CTdImageComboBox::noImage);
    EXPECT_EQ(box.GetItemIndent(-1), 0);
}

TEST(ComboBoxButton, CopiesAndButtonsOfOneCommandStayInStep)
{
    Host host;
    CTdComboBoxButton button(7), twin(7), stranger(8);
    button.SetEditable(true);
    for (const char *text : {"one", "two", "three"})
        button.AddItem(QString::fromLatin1(text));
    EXPECT_EQ(button.GetCurSel(), -1);
    for (CTdComboBoxButton *action : {&button, &twin, &stranger})
        host.addToolBar(QString())->addAction(action);
    host.addToolBar(QString())->addAction(&button);
    host.show();
    QList<QComboBox *> boxes = host.findChildren<QComboBox *>();
    ASSERT_EQ(boxes.size(), 4);
    boxes.removeIf([](QComboBox *box) { return box->count() == 0; });
    ASSERT_EQ(boxes.size(), 3); // the stranger has no entries
    const QSignalSpy chosen(&button, &CTdComboBoxButton::chosen);
    const auto allShow = [&](const QString &text) {
        return button.GetText() == text && twin.GetText() == text &&
               std::all_of(boxes.cbegin(), boxes.cend(), [&](QComboBox *box) { return box->currentText() == text; });
    };

    boxes[0]->setFocus();
    QTest::keyClick(boxes[0], Qt::Key_Down);
    EXPECT_TRUE(allShow(QStringLiteral("one")));
    EXPECT_EQ(host.m_commands, QList<qint64>{7});

    boxes[0]->lineEdit()->selectAll();
    QTest::keyClicks(boxes[0]->lineEdit(), QStringLiteral("1 : 5000"));
    QTest::keyClick(boxes[0]->lineEdit(), Qt::Key_Return);
    EXPECT_TRUE(allShow(QStringLiteral("1 : 5000")));
    EXPECT_EQ(button.GetCurSel(), -1);
    EXPECT_EQ(host.m_commands.size(), 2);

    EXPECT_TRUE(button.SelectItem(2)); // silent
    EXPECT_TRUE(allShow(QStringLiteral("three")));
    EXPECT_TRUE(twin.DeleteItem(0));
    EXPECT_EQ(button.GetCurSel(), 1);
    EXPECT_TRUE(allShow(QStringLiteral("three")));
    EXPECT_FALSE(button.SelectItem(2));
    EXPECT_EQ(host.m_commands.size(), 2);
    EXPECT_EQ(chosen.size(), 2);
    twin.RemoveAllItems();
    EXPECT_EQ(button.GetCount(), 0);
    EXPECT_FALSE(stranger.SetText(QStringLiteral("typed")));
    EXPECT_EQ(CTdComboBoxButton::GetByCmd(8), &stranger);
    EXPECT_EQ(CTdComboBoxButton::GetByCmd(9), nullptr);
    button.setEnabled(false);
    EXPECT_FALSE(boxes[0]->isEnabled() && boxes[1]->isEnabled() && boxes[2]->isEnabled());
}

} // namespace

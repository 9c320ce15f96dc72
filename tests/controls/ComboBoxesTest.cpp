#include "basic/TdHostMessage.h"
#include "controls/TdComboBoxButton.h"
#include "controls/TdImageComboBox.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QDataStream>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QListView>
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
    EXPECT_EQ(std::count_if(boxes.cbegin(), boxes.cend(), [](QComboBox *box) { return box->isEnabled(); }),
              1); // the twin's
}

TEST(ComboBoxButton, DropsItsEntriesDownBesideAnUprightToolbar)
{
    Host host;
    CTdComboBoxButton button(7, 110);
    button.SetEditable(true);
    for (const char *text : {"one", "two", "three"})
        button.AddItem(QString::fromLatin1(text));
    auto *bar = new QToolBar(&host);
    host.addToolBar(Qt::LeftToolBarArea, bar);
    bar->addAction(&button);
    host.resize(300, 300);
    host.show();
    QWidget *face = bar->widgetForAction(&button);
    EXPECT_EQ(face->height(), 110);
    EXPECT_LT(face->width(), 40);
    const auto dropped = [&] { return face->findChild<QListView *>(QStringLiteral("entries")); };
    const auto close = [] { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); };
    QTest::mouseClick(face, Qt::LeftButton);
    ASSERT_TRUE(dropped());
    QTest::mouseClick(dropped()->viewport(), Qt::LeftButton, {},
                      dropped()->visualRect(dropped()->model()->index(1, 0)).center());
    EXPECT_EQ(button.GetCurSel(), 1);
    EXPECT_EQ(host.m_commands, QList<qint64>{7});
    EXPECT_EQ(face->accessibleDescription().toStdString(), "two");
    close();
    QTest::keyClick(face, Qt::Key_Down);
    ASSERT_TRUE(dropped());
    auto *edit = dropped()->parent()->findChild<QLineEdit *>();
    QTest::keyClicks(edit, QStringLiteral("own"));
    QTest::keyClick(edit, Qt::Key_Return);
    EXPECT_EQ(button.GetText().toStdString(), "own");
    EXPECT_EQ(host.m_commands.size(), 2);
    close();
    QTest::keyClick(face, Qt::Key_Space);
    QTest::keyClick(dropped(), Qt::Key_Escape);
    close();
    EXPECT_FALSE(dropped());
    EXPECT_EQ(host.m_commands.size(), 2);
    host.removeToolBar(bar);
    host.addToolBar(Qt::TopToolBarArea, bar);
    EXPECT_EQ(face->width(), 110);
}

TEST(ComboBoxButton, StreamsKeepItAndGarbageChangesNothing)
{
    CTdComboBoxButton button(21, 90), read(22), twin(21);
    button.SetEditable(true);
    button.AddItem(QStringLiteral("a"), 5);
    button.AddItem(QStringLiteral("b"), 0.1);
    button.AddItem(QStringLiteral("c"), QVariant::fromValue(&button));
    button.SetText(QStringLiteral("typed"));
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    button.Serialize(out);
    EXPECT_EQ(out.byteOrder(), QDataStream::BigEndian); // the host's again
    read.AddItem(QStringLiteral("old"));
    QDataStream none;
    EXPECT_FALSE(read.Deserialize(none));
    for (qsizetype length = 0; length < bytes.size(); ++length) {
        QDataStream cut(bytes.left(length));
        EXPECT_FALSE(read.Deserialize(cut)) << length;
    }
    EXPECT_EQ(read.GetCommandId(), 22);
    EXPECT_EQ(read.GetItem(0).toStdString(), "old");
    QDataStream in(bytes);
    ASSERT_TRUE(read.Deserialize(in));
    EXPECT_EQ(read.GetCommandId(), 21);
    EXPECT_EQ(read.GetWidth(), 90);
    EXPECT_EQ(read.GetCount(), 3);
    EXPECT_EQ(read.GetItemData(0).toInt(), 5);
    EXPECT_EQ(read.GetItemData(1).toDouble(), 0.1);
    EXPECT_FALSE(read.GetItemData(2).isValid());
    EXPECT_EQ(read.GetText().toStdString(), "typed");
    CTdComboBoxButton copy(23);
    copy.CopyFrom(read);
    EXPECT_EQ(copy.GetCommandId(), 23);
    EXPECT_EQ(copy.GetText().toStdString(), "typed");
    EXPECT_EQ(copy.GetCount(), 3);
}

TEST(ComboBoxButton, SurvivesAListenerThatDeletesIt)
{
    Host host;
    auto *button = new CTdComboBoxButton(7);
    button->AddItem(QStringLiteral("one"));
    host.addToolBar(QString())->addAction(button);
    host.show();
    QObject::connect(button, &CTdComboBoxButton::chosen, button, [button] { delete button; });
    auto *box = host.findChild<QComboBox *>();
    box->setFocus();
    QTest::keyClick(box, Qt::Key_Down);
    EXPECT_EQ(CTdComboBoxButton::GetByCmd(7), nullptr);
}

TEST(ComboBoxButton, KeepsALongTextWhenItsEditIsLeft)
{
    CTdComboBoxButton button(5);
    button.SetEditable(true);
    const QString text = QString(40000, u'W'); // line edits take less by themselves
    button.SetText(text);
    QToolBar bar;
    bar.addAction(&button);
    bar.show();
    QApplication::setActiveWindow(&bar);
    auto *edit = bar.findChild<QLineEdit *>();
    ASSERT_TRUE(edit);
    edit->setFocus();
    edit->clearFocus();
    EXPECT_TRUE(button.GetText() == text);
}

TEST(ComboBoxButton, TellsOfNoTextThatIsTypedWhenItsWindowGoes)
{
    CTdComboBoxButton button(7);
    button.SetEditable(true);
    const QSignalSpy chosen(&button, &CTdComboBoxButton::chosen);
    for (const bool isDeleted : {false, true}) {
        Host host;
        host.addToolBar(QString())->addAction(&button);
        host.show();
        QApplication::setActiveWindow(&host);
        auto *box = host.findChild<QComboBox *>();
        box->setFocus();
        QTest::keyClicks(box->lineEdit(), QStringLiteral("typed"));
        ASSERT_TRUE(box->lineEdit()->hasFocus());
        if (!isDeleted) {
            host.close();
            EXPECT_TRUE(box->currentText().isEmpty());
        }
    }
    EXPECT_EQ(chosen.size(), 0);
}

} // namespace

#include "controls/HListBox.h"
#include "controls/ListCtrlEx.h"
#include "controls/NaturalOrder.h"
#include "controls/TdDragListCtrl.h"
#include "controls/TdHeaderCtrl.h"

#include <QApplication>
#include <QComboBox>
#include <QElapsedTimer>
#include <QIntValidator>
#include <QLineEdit>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QToolTip>
#include <QWheelEvent>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int many = 10000;

QStringList column(const CTdListCtrl &list, int at)
{
    QStringList texts;
    for (int row = 0; row < list.GetItemCount(); ++row)
        texts += list.GetItemText(row, at);
    return texts;
}

/// Shows @p list with one-letter rows.
void fill(CTdListCtrl &list, const QString &letters)
{
    if (list.GetColumnCount() == 0)
        list.InsertColumn(-1, u"Name"_s, 100);
    for (const QChar letter : letters)
        list.InsertItem(-1, letter);
    list.resize(400, 300);
    list.show();
    list.setFocus();
    QApplication::setActiveWindow(&list);
}

QPoint middle(const CTdListCtrl &list, int row, int at = 0)
{
    return list.visualRect(list.model()->index(row, at)).center();
}

/// Name (text), Kind (choice), Shown (check), Width (text, 1 to 99).
struct EditedList
{
    EditedList()
    {
        list.InsertColumn(-1, u"Name"_s, 100);
        list.InsertColumn(-1, u"Kind"_s, 80);
        list.InsertColumn(-1, u"Shown"_s, 80);
        list.InsertColumn(-1, u"Width"_s, 80);
        list.SetColumnEditor(0, CellEditor::Text);
        list.SetColumnEditor(1, CellEditor::Choice, {u"Road"_s, u"River"_s});
        list.SetColumnEditor(2, CellEditor::Check);
        list.SetColumnEditor(3, CellEditor::Text);
        list.SetColumnValidator(3, &range);
        list.SetColumnValidator(0, [](int, const QString &text) {
            return text.trimmed().isEmpty() ? CellVerdict::Refuse(u"A name, please."_s)
                                            : CellVerdict::Accept(text.trimmed());
        });
        list.SetHeaderCheck(2, true);
        list.InsertItems(0, {{u"a"_s, u"Road"_s, {}, u"5"_s}, {u"b"_s, u"River"_s, {}, u"7"_s}});
        fill(list, {});
    }
    QLineEdit *line() const { return qobject_cast<QLineEdit *>(focus()); }
    QWidget *focus() const { return QApplication::focusWidget(); }

    QIntValidator range{1, 99};
    CListCtrlEx list;
    QSignalSpy edited{&list, &CTdListCtrl::cellEdited};
};

TEST(HListBox, SelectsAllAndTheOthersInOneNotification)
{
    CHListBox box;
    for (int row = 0; row < many; ++row)
        box.addItem(QString::number(row));
    box.item(3)->setFlags(Qt::ItemIsEnabled);
    box.item(5)->setHidden(true);
    box.show();
    QSignalSpy changed(&box, &QListWidget::itemSelectionChanged);
    QElapsedTimer timer;
    box.SelectAllItems();
    EXPECT_EQ(changed.count(), 1);
    EXPECT_EQ(box.GetSelCount(), many - 2);
    box.SelectAllItems();
    box.ReverseSelect();
    EXPECT_EQ(changed.count(), 2);
    EXPECT_EQ(box.GetSelCount(), 0);
    for (const int row : {1, 8, 6})
        QTest::mouseClick(box.viewport(), Qt::LeftButton, Qt::ControlModifier,
                          box.visualItemRect(box.item(row)).center());
    EXPECT_EQ(box.GetSelItems(), (QList<int>{1, 6, 8}));
    changed.clear();
    box.ReverseSelect();
    EXPECT_EQ(changed.count(), 1);
    EXPECT_EQ(box.GetSelCount(), many - 5);
    EXPECT_EQ(box.GetSelItems().mid(0, 4), (QList<int>{0, 2, 4, 7}));
    // Many ranges, where the selection model itself takes time by their square.
    QItemSelection every;
    for (int row = 0; row < many; row += 4)
        every.append(QItemSelectionRange(box.model()->index(row, 0)));
    box.selectionModel()->select(every, QItemSelectionModel::ClearAndSelect);
    timer.start();
    box.ReverseSelect();
    EXPECT_EQ(box.GetSelCount(), many * 3 / 4 - 2);
    EXPECT_LT(timer.elapsed(), 1000);
    box.clear();
    box.ReverseSelect();
    EXPECT_EQ(box.GetSelCount(), 0);
}

TEST(NaturalOrder, PutsNumbersByValueThenWordsThenNothing)
{
    const QStringList texts{u"road 10"_s, {},        u"1e1"_s, u"Road 9"_s, u"-2"_s,
                            u"1.5"_s,     u"1.25"_s, u"éa"_s,  u"z"_s,      u"nan"_s};
    const auto sorted = [&](Qt::SortOrder direction) {
        QStringList result;
        for (const int at : naturalOrder(texts, direction))
            result += texts[at];
        return result.join(u'|').toStdString();
    };
    EXPECT_EQ(sorted(Qt::AscendingOrder), "-2|1.25|1.5|1e1|éa|nan|Road 9|road 10|z|");
    EXPECT_EQ(sorted(Qt::DescendingOrder), "z|road 10|Road 9|nan|éa|1e1|1.5|1.25|-2|");
}

TEST(ListCtrlEx, OpensAndClosesEditorsByKey)
{
    EditedList test;
    test.list.SetCurItem(0);
    for (const Qt::Key key : {Qt::Key_F2, Qt::Key_Return}) {
        QTest::keyClick(test.focus(), key);
        ASSERT_TRUE(test.list.IsEditing());
        QTest::keyClicks(test.focus(), u"zz"_s);
        QTest::keyClick(test.focus(), Qt::Key_Escape);
        EXPECT_FALSE(test.list.IsEditing());
    }
    EXPECT_EQ(test.edited.count(), 0);
    QTest::keyClick(test.focus(), Qt::Key_N); // replaces the text
    QTest::keyClicks(test.focus(), u"ew "_s);
    QTest::keyClick(test.focus(), Qt::Key_Tab);
    ASSERT_EQ(test.edited.count(), 1);
    EXPECT_EQ(test.edited.takeFirst(), (QVariantList{0, 0, u"a"_s, u"new"_s}));
    QTest::keyClick(test.focus(), Qt::Key_Down); // the choice next to it
    QTest::keyClick(test.focus(), Qt::Key_Tab);  // past the check box
    EXPECT_EQ(test.edited.takeFirst(), (QVariantList{0, 1, u"Road"_s, u"River"_s}));
    QTest::keyClicks(test.focus(), u"1x2"_s);
    QTest::keyClick(test.focus(), Qt::Key_Tab); // to the next row
    EXPECT_EQ(test.edited.takeFirst(), (QVariantList{0, 3, u"5"_s, u"12"_s}));
    EXPECT_EQ(test.list.GetCurItem(), 1);
    QTest::keyClick(test.focus(), Qt::Key_Backtab);
    EXPECT_EQ(test.list.currentIndex(), test.list.model()->index(0, 3));
    QTest::keyClick(test.focus(), Qt::Key_Return); // unchanged
    EXPECT_FALSE(test.list.IsEditing());
    EXPECT_TRUE(test.list.hasFocus());
    QTest::keyClick(test.focus(), Qt::Key_Left);
    QTest::keyClick(test.focus(), Qt::Key_Space);
    EXPECT_TRUE(test.list.GetCheck(0, 2));
    ASSERT_EQ(test.edited.count(), 1);
    EXPECT_EQ(test.edited.takeFirst(), (QVariantList{0, 2, u"0"_s, u"1"_s}));
    EXPECT_FALSE(test.list.EditItem(0, 2));
    EXPECT_FALSE(test.list.EditItem(2, 0));
    EXPECT_FALSE(test.list.EditItem(0, -1));
}

TEST(ListCtrlEx, KeepsARefusedEntryOpenUntilItIsRightOrGivenUp)
{
    EditedList test;
    QTest::mouseClick(test.list.viewport(), Qt::LeftButton, {}, middle(test.list, 0));
    QTest::mouseDClick(test.list.viewport(), Qt::LeftButton, {}, middle(test.list, 0));
    ASSERT_TRUE(test.line());
    QTest::keyClicks(test.focus(), u"  "_s);
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Tab, Qt::Key_Backtab})
        QTest::keyClick(test.focus(), key);
    ASSERT_TRUE(test.list.IsEditing());
    EXPECT_EQ(test.line()->toolTip().toStdString(), "A name, please.");
    QTest::mouseClick(test.list.viewport(), Qt::LeftButton, {}, middle(test.list, 1));
    EXPECT_TRUE(test.line()->hasFocus());
    EXPECT_EQ(QToolTip::text().toStdString(), "A name, please."); // which a click takes away by itself
    EXPECT_EQ(test.list.GetCurItem(), 0);
    EXPECT_FALSE(test.list.EndEdit());
    EXPECT_EQ(test.list.GetItemText(0, 0).toStdString(), "a");
    QTest::keyClicks(test.focus(), u"c"_s);
    EXPECT_EQ(test.line()->toolTip().toStdString(), "");
    QTest::mouseClick(test.list.viewport(), Qt::LeftButton, {}, middle(test.list, 1)); // keeps it
    EXPECT_EQ(test.list.GetItemText(0, 0).toStdString(), "c");
    EXPECT_EQ(test.list.GetCurItem(), 1);

    ASSERT_TRUE(test.list.EditItem(1, 3));
    QTest::keyClick(test.focus(), Qt::Key_Delete); // no number any more
    QTest::keyClick(test.focus(), Qt::Key_Return);
    ASSERT_TRUE(test.list.IsEditing());
    EXPECT_EQ(test.line()->toolTip().toStdString(), "This entry is not valid.");
    test.list.SetColumnValidator(3, [](int, const QString &) { return CellVerdict::Refuse(u"1 to 99, please."_s); });
    QTest::keyClick(test.focus(), Qt::Key_Return);
    EXPECT_EQ(test.line()->toolTip().toStdString(), "1 to 99, please.");
    QTest::keyClick(test.focus(), Qt::Key_Escape);
    EXPECT_EQ(test.list.GetItemText(1, 3).toStdString(), "7");
}

TEST(ListCtrlEx, SurvivesARowThatGoesUnderItsEditor)
{
    const std::function<void(EditedList &)> ends[] = {
        [](EditedList &test) { test.list.DeleteAllItems(); },
        [](EditedList &test) { test.list.DeleteColumn(0); },
        [](EditedList &test) { // the validator clears the list
            test.list.SetColumnValidator(0, [&test](int, const QString &text) {
                test.list.DeleteAllItems();
                return CellVerdict::Accept(text);
            });
            QTest::keyClick(test.focus(), Qt::Key_Tab);
        },
        [](EditedList &test) { // so does who is told
            QObject::connect(&test.list, &CTdListCtrl::cellEdited, &test.list, &CTdListCtrl::DeleteAllItems);
            QTest::keyClick(test.focus(), Qt::Key_Return);
        },
    };
    for (const auto &end : ends) {
        EditedList test;
        ASSERT_TRUE(test.list.EditItem(0, 0));
        QTest::keyClicks(test.focus(), u"x"_s);
        end(test);
        EXPECT_FALSE(test.list.IsEditing());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_FALSE(test.list.viewport()->findChild<QLineEdit *>());
        test.list.InsertItem(0, u"again"_s);
        EXPECT_TRUE(test.list.EditItem(0, test.list.GetColumnCount() - 1));
    }
}

TEST(ListCtrlEx, SettlesNoEntryWhileRowsAndColumnsChange)
{
    EditedList test;
    ASSERT_TRUE(test.list.EditItem(0, 0));
    QTest::keyClicks(test.focus(), u"x"_s);
    test.list.InsertColumn(0, u"New"_s);
    EXPECT_TRUE(test.list.IsEditing());
    EXPECT_TRUE(test.line());
    test.list.DeleteItem(0); // and another row becomes the current one
    EXPECT_FALSE(test.list.IsEditing());
    test.list.setColumnHidden(1, true);
    EXPECT_FALSE(test.list.EditItem(0, 1));
    EXPECT_EQ(test.edited.count(), 0);
}

TEST(ListCtrlEx, MayBeDeletedByWhoIsToldOfAnEdit)
{
    const std::function<void(CListCtrlEx &)> edits[] = {
        [](CListCtrlEx &list) {
            list.EditItem(0, 0);
            QTest::keyClicks(QApplication::focusWidget(), u"x"_s);
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        },
        [](CListCtrlEx &list) {
            list.SetCurItem(0, 1);
            QTest::keyClick(&list, Qt::Key_Space);
        },
        [](CListCtrlEx &list) {
            CTdHeaderCtrl *header = list.GetHeaderCtrl();
            QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, header->GetCheckBoxRect(1).center());
        },
    };
    for (const auto &edit : edits) {
        auto *list = new CListCtrlEx;
        list->InsertColumn(-1, u"Name"_s, 100);
        list->InsertColumn(-1, u"Shown"_s, 100);
        list->SetColumnEditor(0, CellEditor::Text);
        list->SetColumnCheckable(1, true);
        list->SetHeaderCheck(1, true);
        fill(*list, u"ab"_s);
        const QPointer<CListCtrlEx> alive(list);
        QObject::connect(list, &CTdListCtrl::cellEdited, [list] { delete list; });
        QObject::connect(list, &CTdListCtrl::columnChecked, [list] { delete list; });
        edit(*list);
        EXPECT_FALSE(alive);
    }
}

TEST(ListCtrlEx, TheWheelScrollsAndChangesNoChoice)
{
    EditedList test;
    test.list.InsertItems(-1, QList<QStringList>(100));
    ASSERT_TRUE(test.list.EditItem(0, 1));
    auto *choice = qobject_cast<QComboBox *>(test.focus());
    ASSERT_TRUE(choice);
    QWheelEvent wheel({5, 5}, choice->mapToGlobal(QPointF(5, 5)), {}, {0, -240}, Qt::NoButton, {}, Qt::NoScrollPhase,
                      false);
    QApplication::sendEvent(choice, &wheel);
    EXPECT_EQ(choice->currentIndex(), 0);
    EXPECT_FALSE(wheel.isAccepted());
}

TEST(ListCtrlEx, DrawsTheBeginningOfAHugeTextAndKeepsAllOfIt)
{
    EditedList test;
    const QString huge = u"W"_s.repeated(1000000);
    for (const QString &end : {u"b"_s, u"a"_s})
        test.list.InsertItem(-1, huge + end);
    QElapsedTimer clock;
    clock.start();
    test.list.grab();
    EXPECT_LT(clock.elapsed(), 500); // seconds when all of it is laid out
    test.list.SortItems(0);          // by what is not drawn
    EXPECT_TRUE(test.list.GetItemText(2, 0) == huge + u'a');
    const QString text = huge.left(40000); // line edits take less by themselves
    test.list.SetItemText(2, 0, text);
    ASSERT_TRUE(test.list.EditItem(2, 0));
    QTest::keyClick(test.line(), Qt::Key_End);
    QTest::keyClick(test.line(), Qt::Key_X);
    EXPECT_TRUE(test.list.EndEdit());
    EXPECT_TRUE(test.list.GetItemText(2, 0) == text + u'x');
}

TEST(HeaderCtrl, ChecksAllRowsByTheBoxAndSortsByTheLabel)
{
    EditedList test;
    CTdHeaderCtrl *header = test.list.GetHeaderCtrl();
    QSignalSpy checked(&test.list, &CTdListCtrl::columnChecked);
    test.list.SetCheck(1, 2, true);
    EXPECT_EQ(header->GetCheckState(2), Qt::PartiallyChecked);
    const QPoint box = header->GetCheckBoxRect(2).center();
    for (const bool all : {true, false}) {
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, box);
        EXPECT_EQ(header->GetCheckState(2), all ? Qt::Checked : Qt::Unchecked);
        EXPECT_EQ(test.list.GetCheck(0, 2), all);
        ASSERT_EQ(checked.count(), 1);
        EXPECT_EQ(checked.takeFirst(), (QVariantList{2, all}));
    }
    EXPECT_EQ(header->GetSortSection(), -1);
    const QPoint label(header->sectionViewportPosition(3) + 40, header->height() / 2);
    test.list.SetCurItem(1);
    test.list.SetItemText(0, 3, u"10"_s);
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, label);
    EXPECT_EQ(column(test.list, 3), (QStringList{u"7"_s, u"10"_s}));
    EXPECT_EQ(test.list.GetSelItems(), QList<int>{0}); // went with its row
    EXPECT_EQ(header->GetSortSection(), 3);
    test.list.SetItemText(0, 0, u"other"_s);
    EXPECT_EQ(header->GetSortSection(), 3);
    test.list.SetItemText(0, 3, u"70"_s);
    EXPECT_EQ(header->GetSortSection(), -1); // it would not be true any more

    test.list.setFocus();
    QTest::keyClick(test.focus(), Qt::Key_Tab);
    ASSERT_EQ(test.focus(), header);
    for (const Qt::Key key : {Qt::Key_Right, Qt::Key_Right, Qt::Key_Space, Qt::Key_Return, Qt::Key_Return})
        QTest::keyClick(header, key);
    EXPECT_EQ(header->GetCheckState(2), Qt::Checked);
    EXPECT_EQ(header->sortIndicatorOrder(), Qt::DescendingOrder);
    EXPECT_EQ(header->accessibleName().toStdString(), "Shown, all checked, sorted descending");
    QTest::keyClick(header, Qt::Key_Down);
    EXPECT_TRUE(test.list.hasFocus());
    for (const int none : {-1, 4}) {
        EXPECT_FALSE(header->HasCheckBox(none));
        EXPECT_TRUE(header->GetCheckBoxRect(none).isEmpty());
        header->SetSortMark(none);
        EXPECT_EQ(header->GetSortSection(), -1);
    }
}

/// Keeps the row "a" first.
class FixedFirst : public CTdDragListCtrl
{
protected:
    bool CanMove(const QList<int> &from, int to) const override { return to > 0 && !from.contains(0); }
};

void drag(CTdDragListCtrl &list, int row, const QPoint &to)
{
    QTest::mousePress(list.viewport(), Qt::LeftButton, {}, middle(list, row));
    for (const QPoint &at : {middle(list, row) + QPoint(0, 30), to}) {
        QMouseEvent move(QEvent::MouseMove, at, list.viewport()->mapToGlobal(at), Qt::NoButton, Qt::LeftButton, {});
        QApplication::sendEvent(list.viewport(), &move);
    }
}

TEST(DragListCtrl, MovesTheSelectedRowsByMouseAndKeyboard)
{
    FixedFirst list;
    fill(list, u"abcdef"_s);
    list.SetItemData(2, 42);
    QSignalSpy moved(&list, &CTdDragListCtrl::rowsMoved);
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, middle(list, 2));
    QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::ControlModifier, middle(list, 4));
    drag(list, 4, {20, 280});
    EXPECT_EQ(list.GetInsertMark(), 6);
    QTest::mouseRelease(list.viewport(), Qt::LeftButton, {}, {20, 280});
    EXPECT_EQ(column(list, 0).join(QString()).toStdString(), "abdfce");
    ASSERT_EQ(moved.count(), 1);
    EXPECT_EQ(moved[0][0].value<QList<int>>(), (QList<int>{2, 4}));
    EXPECT_EQ(moved.takeFirst()[1], 6);
    EXPECT_EQ(list.GetSelItems(), (QList<int>{4, 5}));
    EXPECT_EQ(list.GetCurItem(), 5);
    EXPECT_EQ(list.GetItemData(4), 42);

    const struct
    {
        Qt::Key key;
        const char *order;
        int told;
    } keys[] = {{Qt::Key_Down, "abdfce", 0}, {Qt::Key_Up, "abdcef", 1},   {Qt::Key_Home, "abdcef", 0},
                {Qt::Key_Up, "abcedf", 1},   {Qt::Key_Down, "abdcef", 1}, {Qt::Key_End, "abdfce", 1}};
    for (const auto &step : keys) {
        QTest::keyClick(&list, step.key, Qt::AltModifier);
        EXPECT_EQ(column(list, 0).join(QString()).toStdString(), step.order);
        EXPECT_EQ(moved.count(), step.told);
        moved.clear();
    }
    drag(list, 4, {20, 1}); // above "a": refused
    EXPECT_EQ(list.GetInsertMark(), -1);
    QTest::mouseRelease(list.viewport(), Qt::LeftButton, {}, {20, 1});
    EXPECT_EQ(moved.count(), 0);
}

TEST(DragListCtrl, GivesADragUpOnEscapeAndWhenRowsChange)
{
    const std::function<void(CTdDragListCtrl &)> ends[] = {
        [](CTdDragListCtrl &list) { QTest::keyClick(&list, Qt::Key_Escape); },
        [](CTdDragListCtrl &list) { list.DeleteAllItems(); },
        [](CTdDragListCtrl &list) { list.InsertItem(0, u"new"_s); },
        [](CTdDragListCtrl &list) { list.SortItems(0, Qt::DescendingOrder); },
        [](CTdDragListCtrl &list) { list.hide(); },
    };
    for (const auto &end : ends) {
        CTdDragListCtrl list;
        fill(list, u"abcdef"_s);
        QSignalSpy moved(&list, &CTdDragListCtrl::rowsMoved);
        drag(list, 1, {20, 280});
        ASSERT_TRUE(list.IsDragging());
        end(list);
        EXPECT_FALSE(list.IsDragging());
        const QStringList before = column(list, 0);
        QTest::mouseRelease(list.viewport(), Qt::LeftButton, {}, {20, 280});
        EXPECT_EQ(moved.count(), 0);
        EXPECT_EQ(column(list, 0), before);
    }
}

TEST(DragListCtrl, MovesAndScrollsAmongManyRows)
{
    CTdDragListCtrl list;
    list.InsertColumn(0, u"Layer"_s);
    QElapsedTimer timer;
    timer.start();
    QList<QStringList> rows;
    for (int row = 0; row < many; ++row)
        rows += QStringList(QString::number(row));
    list.InsertItems(0, rows);
    fill(list, {});
    drag(list, 2, {20, 299});
    QTest::qWait(150);
    EXPECT_GT(list.verticalScrollBar()->value(), 0);
    QTest::keyClick(&list, Qt::Key_Escape);
    QTest::mouseRelease(list.viewport(), Qt::LeftButton);
    list.selectAll();
    list.SetCurItem(many - 1);
    QTest::keyClick(&list, Qt::Key_Home, Qt::AltModifier);
    EXPECT_EQ(list.GetItemText(0, 0).toStdString(), std::to_string(many - 1));
    EXPECT_EQ(list.verticalScrollBar()->value(), 0); // the moved row is in view
    EXPECT_LT(timer.elapsed(), 3000);
    QSignalSpy removed(list.model(), &QAbstractItemModel::rowsRemoved);
    EXPECT_EQ(list.DeleteItems({4, 2, 2, -1, many, 0}), 3);
    EXPECT_EQ(removed.count(), 1);
    EXPECT_EQ(column(list, 0).mid(0, 3), (QStringList{u"0"_s, u"2"_s, u"4"_s}));
    QSignalSpy changed(list.selectionModel(), &QItemSelectionModel::selectionChanged);
    QList<int> odd;
    for (int row = 1; row < list.GetItemCount(); row += 2)
        odd += row;
    list.selectAll();
    timer.start();
    list.SetSelItems(odd + QList<int>{-1, many}); // the selection model itself takes time by the square of the ranges
    EXPECT_EQ(list.GetSelItems(), odd);
    EXPECT_EQ(changed.count(), 2);
    EXPECT_EQ(list.DeleteItems(odd), odd.size());
    EXPECT_EQ(list.GetSelCount(), 0);
    EXPECT_LT(timer.elapsed(), 1000);
    const QList<int> none;
    EXPECT_FALSE(list.MoveItems(none, 0));
    EXPECT_FALSE(list.MoveItems({-1}, 3));
    EXPECT_FALSE(list.MoveItems({0, many}, 3));
    EXPECT_FALSE(list.MoveItems({0}, many + 1));
}

} // namespace

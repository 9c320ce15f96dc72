#include "WorkspaceFixture.h"
#include "workspace/WorkspaceTreeFilterBox.h"

#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QTreeWidgetItemIterator>
#include <QVBoxLayout>

namespace {

class WorkspaceFilterBox : public WorkspaceFixture
{
protected:
    WorkspaceFilterBox()
    {
        window.setLayout(new QVBoxLayout);
        window.layout()->addWidget(&box);
        window.layout()->addWidget(&tree);
        box.SetTree(&tree);
    }
    ~WorkspaceFilterBox() override { tree.setParent(nullptr), box.setParent(nullptr); }

    void SetUp() override
    {
        openLayers(u"town"_s, {{u"Main roads"_s, u"LineString"_s}, {u"rivers"_s, u"LineString"_s}, {u"road signs"_s}});
        openLayers(u"roadside"_s, {{u"trees"_s}});
        workspace.GetMaps().Add(u"Road map"_s);
        workspace.GetMaps().Add(u"Relief"_s);
        window.show();
    }

    /// Types @p text and waits until the filter is done.
    void filter(const QString &text)
    {
        QSignalSpy done(&box, &CWorkspaceTreeFilterBox::filtered);
        box.SetText(text);
        ASSERT_TRUE(!done.isEmpty() || done.wait(5000));
    }
    /// Labels of the items that are not hidden, nor below a hidden one; of the leaves only where asked.
    QStringList shownLabels(bool leavesOnly = true) const
    {
        QStringList result;
        for (QTreeWidgetItemIterator it(const_cast<Tree *>(&tree)); *it; ++it) {
            bool shown = true;
            for (const QTreeWidgetItem *item = *it; item; item = item->parent())
                shown = shown && !item->isHidden();
            if (shown && (!leavesOnly || (*it)->childCount() == 0))
                result.append((*it)->text(0));
        }
        return result;
    }

    QWidget window;
    CWorkspaceTreeFilterBox box;
};

TEST_F(WorkspaceFilterBox, ShowsMatchesAndWhatLeadsToThem)
{
    fillAll();
    const QStringList before = shownLabels(false);
    filter(u"ROAD"_s);
    EXPECT_EQ(shownLabels(), QStringList({u"Main roads"_s, u"road signs"_s, u"trees"_s, u"Road map"_s}))
        << "a datasource that matches shows its datasets";
    EXPECT_EQ(box.GetFoundCount(), 4);
    EXPECT_TRUE(sourceItem(u"town"_s)->isExpanded());
    EXPECT_FALSE(sourceItem(u"roadside"_s)->isExpanded());

    filter(u"road main"_s);
    EXPECT_EQ(shownLabels(), QStringList{u"Main roads"_s}) << "every word counts, their order does not";

    filter(QString());
    EXPECT_TRUE(QTest::qWaitFor([&] { return shownLabels(false) == before; }));
    EXPECT_EQ(box.GetFoundCount(), 0);
    EXPECT_FALSE(sourceItem(u"town"_s)->isExpanded()) << "folded again";
}

TEST_F(WorkspaceFilterBox, FindsWhatIsNotFilledYet)
{
    connect();
    filter(u"signs"_s);
    EXPECT_EQ(shownLabels(), QStringList{u"road signs"_s});
    EXPECT_EQ(sourceItem(u"roadside"_s), nullptr) << "what does not match is not filled";
    EXPECT_EQ(sourceItem(u"town"_s)->childCount(), 3) << "filled as the host would";
    filter(u"relief"_s);
    EXPECT_EQ(shownLabels(), QStringList{u"Relief"_s});
}

TEST_F(WorkspaceFilterBox, FindsNothingThatTheHostHides)
{
    tree.SetShowItemMask(everything & ~Tree::ShowMaps);
    tree.SetDTDisplayMask(0x2); // lines
    tree.ConnectWorkspace(workspace);
    filter(u"road"_s);
    EXPECT_EQ(shownLabels(), QStringList({u"Main roads"_s, u"roadside"_s}));
}

TEST_F(WorkspaceFilterBox, SaysWhenNothingMatches)
{
    fillAll();
    filter(u"<b>zebra"_s);
    EXPECT_EQ(shownLabels(false), QStringList());
    const auto note = tree.viewport()->findChild<QLabel *>();
    ASSERT_NE(note, nullptr);
    EXPECT_TRUE(note->isVisible());
    EXPECT_TRUE(note->text().contains(u"<b>zebra"_s));
    filter(u"rivers"_s);
    EXPECT_FALSE(note->isVisible());
}

TEST_F(WorkspaceFilterBox, WorksByKeyboard)
{
    fillAll();
    auto *edit = box.findChild<QLineEdit *>();
    edit->setFocus();
    QTest::keyClicks(edit, u"signs"_s);
    ASSERT_TRUE(QTest::qWaitFor([this] { return box.GetFoundCount() == 1; }));
    QTest::keyClick(edit, Qt::Key_Down);
    ASSERT_NE(tree.currentItem(), nullptr);
    EXPECT_EQ(tree.currentItem()->text(0), u"road signs"_s);
    QTest::keyClick(edit, Qt::Key_Escape);
    EXPECT_EQ(edit->text(), QString());
    ASSERT_TRUE(QTest::qWaitFor([this] { return shownLabels().contains(u"rivers"_s); }));
    EXPECT_TRUE(sourceItem(u"town"_s)->isExpanded()) << "the current item stays in sight";
}

TEST_F(WorkspaceFilterBox, FollowsATreeThatChanges)
{
    fillAll();
    filter(u"road"_s);
    tree.FillTreeItem(Tree::FillTypeMap, u"Broadway"_s);
    tree.FillTreeItem(Tree::FillTypeMap, u"Hills"_s);
    ASSERT_TRUE(QTest::qWaitFor([this] { return box.GetFoundCount() == 5; }));
    EXPECT_FALSE(shownLabels().contains(u"Hills"_s));
    tree.DeleteSubItems(group(Node::ItemMaps), 0);
    ASSERT_TRUE(QTest::qWaitFor([this] { return box.GetFoundCount() == 3; }));
    tree.DeleteAllItemsEx();
    QTest::qWait(50);
    EXPECT_EQ(box.GetFoundCount(), 0);
}

TEST_F(WorkspaceFilterBox, LetsATreeGoUnhidden)
{
    fillAll();
    filter(u"zebra"_s);
    box.SetTree(nullptr);
    ASSERT_TRUE(QTest::qWaitFor([this] { return shownLabels().contains(u"rivers"_s); }));
    {
        Tree shortLived;
        box.SetTree(&shortLived);
    }
    EXPECT_EQ(box.GetTree(), nullptr);
    box.SetText(u"x"_s);
    QTest::qWait(200);
}

TEST_F(WorkspaceFilterBox, NeverHoldsTheWindowUpForLong)
{
    constexpr int count = 40000;
    ASSERT_NE(workspace.GetDataSources().Open(writeManyLayers(folder.path(), u"many.ovf"_s, count), u"many"_s),
              nullptr);
    fillAll();
    sourceItem(u"many"_s)->setExpanded(true);
    group(Node::ItemDataSources)->setExpanded(true);

    // A clock that ticks whenever events get their turn. Between two ticks the filter does a slice of its work, which
    // takes some milliseconds, or nothing at all.
    constexpr qint64 shortestSlice = 4;
    QElapsedTimer sinceTick;
    int slices = 0;
    QTimer ticker;
    QObject::connect(&ticker, &QTimer::timeout, &ticker,
                     [&] { slices += sinceTick.restart() >= shortestSlice ? 1 : 0; });
    const std::pair<QString, int> rows[] = {{u"0999"_s, 14}, {u"dataset"_s, count}, {u"35555"_s, 1}, {QString(), 0}};
    for (const auto &[text, found] : rows) {
        QSignalSpy done(&box, &CWorkspaceTreeFilterBox::filtered);
        slices = 0;
        sinceTick.start();
        ticker.start(0);
        box.SetText(text);
        ASSERT_TRUE(QTest::qWaitFor([&] { return done.count() >= 1 && box.GetFoundCount() == found; }, 60000));
        ticker.stop();
        EXPECT_GT(slices, 1) << "the work is done in slices: " << text.toStdString();
    }
    const QTreeWidgetItem *child = sourceItem(u"many"_s)->child(7);
    EXPECT_TRUE(QTest::qWaitFor([child] { return !child->isHidden(); }, 60000));
}

} // namespace

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

using Tree = CWorkspaceBarTree;
using Node = CTdOleDataNode;

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
        openLayers(QStringLiteral("town"), {{QStringLiteral("Main roads"), QStringLiteral("wkbLineString")},
                                            {QStringLiteral("rivers"), QStringLiteral("wkbLineString")},
                                            {QStringLiteral("road signs"), QStringLiteral("wkbPoint")}});
        openLayers(QStringLiteral("roadside"), {{QStringLiteral("trees"), QStringLiteral("wkbPoint")}});
        for (const QString &name : {QStringLiteral("Road map"), QStringLiteral("Relief")})
            workspace.GetMaps().Add(name);
        window.show();
    }

    /// Types @p text and waits until the filter is done.
    void filter(const QString &text)
    {
        QSignalSpy done(&box, &CWorkspaceTreeFilterBox::filtered);
        box.SetText(text);
        ASSERT_TRUE(!done.isEmpty() || done.wait(5000));
        while (tree.model() && text.isEmpty() && shownLabels(false).isEmpty() && done.wait(100)) {
        }
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
    QLineEdit *edit() const { return box.findChild<QLineEdit *>(); }

    QWidget window;
    CWorkspaceTreeFilterBox box;
};

TEST_F(WorkspaceFilterBox, ShowsMatchesAndWhatLeadsToThem)
{
    fillAll();
    const QStringList before = shownLabels(false);
    filter(QStringLiteral("ROAD"));
    EXPECT_EQ(shownLabels(), QStringList({QStringLiteral("Main roads"), QStringLiteral("road signs"),
                                          QStringLiteral("trees"), QStringLiteral("Road map")}))
        << "a datasource that matches shows its datasets";
    EXPECT_EQ(box.GetFoundCount(), 4);
    EXPECT_TRUE(find(Node::ItemDataSource, QStringLiteral("town"))->isExpanded());
    EXPECT_FALSE(find(Node::ItemDataSource, QStringLiteral("roadside"))->isExpanded());

    filter(QStringLiteral("road main"));
    EXPECT_EQ(shownLabels(), QStringList{QStringLiteral("Main roads")}) << "every word counts, their order does not";

    filter(QString());
    QTest::qWait(50);
    EXPECT_EQ(shownLabels(false), before);
    EXPECT_EQ(box.GetFoundCount(), 0);
    EXPECT_FALSE(find(Node::ItemDataSource, QStringLiteral("town"))->isExpanded()) << "folded again";
}

TEST_F(WorkspaceFilterBox, FindsWhatIsNotFilledYet)
{
    tree.SetShowItemMask(everything);
    tree.ConnectWorkspace(workspace);
    filter(QStringLiteral("signs"));
    EXPECT_EQ(shownLabels(), QStringList{QStringLiteral("road signs")});
    EXPECT_EQ(find(Node::ItemDataSource, QStringLiteral("roadside")), nullptr) << "what does not match is not filled";
    EXPECT_EQ(find(Node::ItemDataSource, QStringLiteral("town"))->childCount(), 3) << "filled as the host would";
    filter(QStringLiteral("relief"));
    EXPECT_EQ(shownLabels(), QStringList{QStringLiteral("Relief")});
}

TEST_F(WorkspaceFilterBox, FindsNothingThatTheHostHides)
{
    tree.SetShowItemMask(everything & ~Tree::ShowMaps);
    tree.SetDTDisplayMask(0x2); // lines
    tree.ConnectWorkspace(workspace);
    filter(QStringLiteral("road"));
    EXPECT_EQ(shownLabels(), QStringList({QStringLiteral("Main roads"), QStringLiteral("roadside")}));
}

TEST_F(WorkspaceFilterBox, SaysWhenNothingMatches)
{
    fillAll();
    filter(QStringLiteral("<b>zebra"));
    EXPECT_EQ(shownLabels(false), QStringList());
    const auto note = tree.viewport()->findChild<QLabel *>();
    ASSERT_NE(note, nullptr);
    EXPECT_TRUE(note->isVisible());
    EXPECT_TRUE(note->text().contains(QStringLiteral("<b>zebra")));
    filter(QStringLiteral("rivers"));
    EXPECT_FALSE(note->isVisible());
}

TEST_F(WorkspaceFilterBox, WorksByKeyboard)
{
    fillAll();
    window.activateWindow();
    edit()->setFocus();
    QTest::keyClicks(edit(), QStringLiteral("signs"));
    ASSERT_TRUE(QTest::qWaitFor([this] { return box.GetFoundCount() == 1; }));
    QTest::keyClick(edit(), Qt::Key_Down);
    ASSERT_NE(tree.currentItem(), nullptr);
    EXPECT_EQ(tree.currentItem()->text(0), QStringLiteral("road signs"));
    QTest::keyClick(edit(), Qt::Key_Escape);
    EXPECT_EQ(edit()->text(), QString());
    ASSERT_TRUE(QTest::qWaitFor([this] { return shownLabels().contains(QStringLiteral("rivers")); }));
    EXPECT_TRUE(find(Node::ItemDataSource, QStringLiteral("town"))->isExpanded()) << "the current item stays in sight";
}

TEST_F(WorkspaceFilterBox, FollowsATreeThatChanges)
{
    fillAll();
    filter(QStringLiteral("road"));
    tree.FillTreeItem(Tree::FillTypeMap, QStringLiteral("Broadway"));
    tree.FillTreeItem(Tree::FillTypeMap, QStringLiteral("Hills"));
    ASSERT_TRUE(QTest::qWaitFor([this] { return box.GetFoundCount() == 5; }));
    EXPECT_FALSE(shownLabels().contains(QStringLiteral("Hills")));
    tree.DeleteSubItems(group(Node::ItemMaps), 0);
    ASSERT_TRUE(QTest::qWaitFor([this] { return box.GetFoundCount() == 3; }));
    tree.DeleteAllItemsEx();
    QTest::qWait(50);
    EXPECT_EQ(box.GetFoundCount(), 0);
}

TEST_F(WorkspaceFilterBox, LetsATreeGoUnhidden)
{
    fillAll();
    filter(QStringLiteral("zebra"));
    box.SetTree(nullptr);
    ASSERT_TRUE(QTest::qWaitFor([this] { return shownLabels().contains(QStringLiteral("rivers")); }));
    {
        Tree shortLived;
        box.SetTree(&shortLived);
    }
    EXPECT_EQ(box.GetTree(), nullptr);
    box.SetText(QStringLiteral("x"));
    QTest::qWait(200);
}

TEST_F(WorkspaceFilterBox, NeverHoldsTheWindowUpForLong)
{
    constexpr int count = 100000;
    ASSERT_NE(workspace.GetDataSources().Open(writeManyLayers(folder.path(), QStringLiteral("many.ovf"), count),
                                              QStringLiteral("many")),
              nullptr);
    fillAll();
    find(Node::ItemDataSource, QStringLiteral("many"))->setExpanded(true);
    group(Node::ItemDataSources)->setExpanded(true);

    // A clock that ticks whenever events get their turn.
    QElapsedTimer sinceTick;
    qint64 longestPause = 0;
    int ticks = 0;
    QTimer ticker;
    QObject::connect(&ticker, &QTimer::timeout, &ticker, [&] {
        ++ticks;
        longestPause = qMax(longestPause, sinceTick.restart());
    });
    struct Row
    {
        QString text;
        int found;
    };
    for (const Row &row : {Row{QStringLiteral("0999"), 120}, Row{QStringLiteral("dataset"), count},
                           Row{QStringLiteral("55555"), 1}, Row{QString(), 0}}) {
        QSignalSpy done(&box, &CWorkspaceTreeFilterBox::filtered);
        box.SetText(row.text);
        QTest::qWait(row.text.isEmpty() ? 0 : 150); // the pause in which the user might go on typing
        sinceTick.start();
        ticks = 0;
        ticker.start(0);
        ASSERT_TRUE(QTest::qWaitFor([&] { return done.count() >= 1 && box.GetFoundCount() == row.found; }, 60000));
        ticker.stop();
        EXPECT_GT(ticks, 5) << "the work is done in slices: " << row.text.toStdString();
    }
    RecordProperty("LongestPauseInMilliseconds", int(longestPause));
    ASSERT_TRUE(QTest::qWaitFor(
        [this] { return !find(Node::ItemDataSource, QStringLiteral("many"))->child(7)->isHidden(); }, 60000));
    EXPECT_EQ(find(Node::ItemDataSource, QStringLiteral("many"))->child(7)->isHidden(), false);
}

} // namespace

#include "HostWindow.h"
#include "common/TdCommMethods.h"
#include "engine/data/DatasetVector.h"
#include "engine/data/TxDataSource.h"
#include "engine/data/TxQueryDef.h"
#include "engine/data/TxRecordset.h"
#include "engine/map/TxWorkspace.h"

#include <QApplication>
#include <QFile>
#include <QFileInfo>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <utility>

namespace {

using namespace Qt::Literals::StringLiterals;
using Methods = CTdCommMethods;
using Node = CTdOleDataNode;

/// A workspace with one datasource "Daten ß" of four datasets, Towns, Rivers, Woods and the network Roads with its
/// child, and a main window that is told what happens to them.
class Lifecycle : public testing::Test
{
protected:
    void SetUp() override
    {
        m_dataSource = m_workspace->GetDataSources().Create(m_folder.filePath(u"data.tdb"_s), m_alias,
                                                            CTxDataSourceStorage::Native);
        ASSERT_NE(m_dataSource, nullptr);
        m_dataset = make(m_name, CElemDatasetInfo::Point);
        make(u"Rivers"_s, CElemDatasetInfo::Line);
        make(u"Woods"_s, CElemDatasetInfo::Region);
        make(u"Roads"_s, CElemDatasetInfo::Network);
        ASSERT_FALSE(HasFatalFailure());
    }
    CTxDataset *make(const QString &name, CElemDatasetInfo::Type type)
    {
        CTxDatasetDef def;
        def.name = name;
        def.type = type;
        CTxDataset *made = m_dataSource->CreateDataset(def);
        EXPECT_TRUE(made && made->Open());
        return made;
    }
    CTxDataset *find(const QString &name) const { return m_dataSource->GetDataset(name); }
    Node node(Node::ItemType kind = Node::ItemDataset) const
    {
        return {Node::WndWorkspaceTree, kind, m_name, m_alias, 0, 0};
    }
    /// What the main window is told of the dataset called @p name.
    Node told(const QString &name) const { return {Node::WndNone, Node::ItemDataset, name, m_alias, 0, 0}; }

    const QString m_alias = u"Daten ß"_s;
    const QString m_name = u"Towns"_s;
    /// In memory where the system has such a place: waiting for a disk proves nothing.
    QTemporaryDir m_folder{QFileInfo(u"/dev/shm"_s).isWritable() ? u"/dev/shm/terravox-XXXXXX"_s : QString()};
    std::unique_ptr<CTxWorkspace> m_workspace = std::make_unique<CTxWorkspace>();
    std::unique_ptr<HostWindow> m_host = std::make_unique<HostWindow>();
    CTxDataSource *m_dataSource = nullptr;
    CTxDataset *m_dataset = nullptr;
};

TEST_F(Lifecycle, NamesLeadToDataSourceAndDataset)
{
    const auto expect = [this](const CTxWorkspace *workspace, const QString &alias, const QString &name,
                               const CTxDataSource *wantedSource, const CTxDataset *wanted) {
        CTxDataSource *dataSource = m_dataSource; // what was there before must go
        CTxDataset *dataset = m_dataset;
        Methods::GetDSandDT(workspace, alias, name, dataSource, dataset);
        EXPECT_EQ(dataSource, wantedSource);
        EXPECT_EQ(dataset, wanted);
    };
    expect(m_workspace.get(), m_alias, m_name, m_dataSource, m_dataset);
    expect(m_workspace.get(), m_alias, u"Villages"_s, m_dataSource, nullptr);
    expect(m_workspace.get(), u"Other"_s, m_name, nullptr, nullptr);
    expect(nullptr, m_alias, m_name, nullptr, nullptr);
}

TEST_F(Lifecycle, GetDSandDTTakesTheFirstEntryAndGetDatasetExactlyOneDatasetEntry)
{
    const auto expect = [this](const Node &node, const CTxDataset *first, const CTxDataset *only) {
        CTxDataSource *dataSource = nullptr;
        CTxDataset *dataset = nullptr;
        Methods::GetDSandDT(m_workspace.get(), node, dataSource, dataset);
        EXPECT_EQ(dataset, first);
        EXPECT_EQ(Methods::GetDataset(m_workspace.get(), node), only);
        EXPECT_EQ(Methods::GetDataset(nullptr, node), nullptr);
    };
    Node two = node();
    two.entries.append(two.entries.first());
    expect(node(), m_dataset, m_dataset);
    expect(two, m_dataset, nullptr);
    expect(node(Node::ItemSubDataset), m_dataset, nullptr);
    expect(Node(), nullptr, nullptr);
}

TEST_F(Lifecycle, RecordsetsGoBackAndDeadOnesAreDropped)
{
    auto *vector = static_cast<CDatasetVector *>(m_dataset);
    CTxRecordset *recordset = vector->Query(CTxQueryDef());
    ASSERT_NE(recordset, nullptr);
    Methods::ReleaseRecordset(recordset);
    EXPECT_EQ(recordset, nullptr);
    EXPECT_EQ(vector->GetRecordsetCount(), 0);
    Methods::ReleaseRecordset(recordset);

    recordset = vector->Query(CTxQueryDef());
    ASSERT_NE(recordset, nullptr);
    m_dataset->Close(); // the recordset dies
    Methods::ReleaseRecordset(recordset);
    EXPECT_EQ(recordset, nullptr);
}

TEST_F(Lifecycle, ClosingAndDeletingAreToldBeforeAndAfter)
{
    struct Row
    {
        const char *name;
        int before;
        int after;
        std::function<void()> act;
    };
    const Row rows[] = {
        {"close by pointer", 1165, 1166, [&] { Methods::CloseDataset(m_dataSource, m_dataset); }},
        {"close by name", 1165, 1166, [&] { Methods::CloseDataset(m_dataSource, u"towns"_s); }},
        {"close by alias", 1165, 1166, [&] { Methods::CloseDataset(m_workspace.get(), m_alias, m_name); }},
        {"delete by pointer", 1167, 1168, [&] { Methods::DeleteDataset(m_dataSource, m_dataset); }},
        {"delete by name", 1167, 1168, [&] { Methods::DeleteDataset(m_dataSource, m_dataset->GetName()); }},
        {"delete by alias", 1167, 1168, [&] { Methods::DeleteDataset(m_workspace.get(), m_alias, m_name); }},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.name);
        m_dataset = find(m_name) ? m_dataset : make(m_name, CElemDatasetInfo::Point);
        ASSERT_TRUE(m_dataset->Open());
        m_host->m_messages.clear();
        m_host->m_nodes.clear();
        QList<bool> there; // and open, as each message comes
        m_host->m_reaction = [&](const CTdHostMessage &) { there << (find(m_name) && find(m_name)->IsOpen()); };
        row.act();
        EXPECT_EQ(m_host->m_messages, (QList<int>{row.before, row.after}));
        EXPECT_EQ(m_host->m_nodes, (QList<Node>{told(m_name), told(m_name)}));
        EXPECT_EQ(there, (QList<bool>{true, false}));
        EXPECT_EQ(find(m_name) != nullptr, row.before == 1165);
    }
}

TEST_F(Lifecycle, WhatIsNotFoundIsSkippedWithoutAWord)
{
    CTxDataSource *other = m_workspace->GetDataSources().Create(m_folder.filePath(u"other.tdb"_s), u"other"_s,
                                                                CTxDataSourceStorage::Native);
    ASSERT_NE(other, nullptr);
    Methods::CloseDataset(nullptr, m_dataset);
    Methods::CloseDataset(m_dataSource, static_cast<CTxDataset *>(nullptr));
    Methods::CloseDataset(m_dataSource, u"Villages"_s);
    Methods::CloseDataset(m_workspace.get(), u"Nobody"_s, m_name);
    Methods::CloseDataset(static_cast<CTxWorkspace *>(nullptr), m_alias, m_name);
    Methods::CloseDataset(other, m_dataset);
    Methods::CloseDatasets(m_workspace.get(), nullptr);
    Methods::DeleteDataset(nullptr, m_dataset);
    Methods::DeleteDataset(other, m_dataset);
    Methods::DeleteDataset(m_workspace.get(), m_alias, u"Villages"_s);
    Methods::DeleteDatasets(nullptr, m_host->m_nodes.data());
    EXPECT_TRUE(m_host->m_messages.isEmpty());
    EXPECT_TRUE(m_dataset->IsOpen());
}

TEST_F(Lifecycle, WithoutAMainWindowNothingIsClosedOrDeleted)
{
    CTdModule::SetMainWnd(nullptr);
    Methods::CloseDataset(m_dataSource, m_dataset);
    Methods::DeleteDataset(m_dataSource, m_dataset);
    EXPECT_FALSE(Methods::PromoteCloseDataset(m_dataset)) << "and nobody is asked";
    ASSERT_EQ(find(m_name), m_dataset);
    EXPECT_TRUE(m_dataset->IsOpen());
    m_dataset->Close();
    EXPECT_TRUE(Methods::PromoteCloseDataset(m_dataset));
    EXPECT_TRUE(m_host->m_messages.isEmpty());
}

TEST_F(Lifecycle, NodesGoItemByItemWhateverTheirKinds)
{
    for (const bool deletes : {false, true}) {
        auto items = std::make_unique<Node>();
        for (const QString &name : {u"Woods"_s, u"Towns"_s, u"Rivers"_s})
            items->entries.append(told(name).entries.first());
        items->entries[1].itemType = Node::ItemMap;
        items->entries.insert(1, {m_alias, u"Villages"_s, Node::ItemDataset, Node::noDatasetType}); // is not there
        const int before = deletes ? 1167 : 1165;
        m_host->m_messages.clear();
        m_host->m_nodes.clear();
        m_host->m_reaction = [&](const CTdHostMessage &) { items.reset(); }; // the node dies on the way
        (deletes ? Methods::DeleteDatasets : Methods::CloseDatasets)(m_workspace.get(), items.get());
        EXPECT_EQ(m_host->m_messages, (QList<int>{before, before + 1, before, before + 1, before, before + 1}));
        EXPECT_EQ(m_host->m_nodes, (QList<Node>{told(u"Woods"_s), told(u"Woods"_s), told(u"Towns"_s), told(u"Towns"_s),
                                                told(u"Rivers"_s), told(u"Rivers"_s)}));
    }
    EXPECT_EQ(m_dataSource->GetDatasetCount(), 1);
    EXPECT_TRUE(find(u"Roads"_s)->IsOpen());
}

TEST_F(Lifecycle, NothingDeadIsTouchedWhateverTheHostDoes)
{
    using Act = std::function<void()>;
    const std::pair<const char *, Act> ends[] = {
        {"dataset deleted", [&] { m_dataSource->DeleteDataset(m_name); }},
        {"datasource closed", [&] { m_workspace->GetDataSources().Close(m_alias); }},
        {"workspace gone", [&] { m_workspace.reset(); }},
        {"main window gone", [&] { m_host.reset(); }},
    };
    Node both = told(m_name);
    both.entries.append(told(u"Rivers"_s).entries.first());
    const std::pair<const char *, Act> acts[] = {
        {"close", [&] { Methods::CloseDatasets(m_workspace.get(), &both); }},
        {"delete", [&] { Methods::DeleteDatasets(m_workspace.get(), &both); }},
        {"promote", [&] { EXPECT_FALSE(Methods::PromoteCloseDataset(m_dataset)); }},
    };
    for (const auto &[what, end] : ends) {
        for (const auto &[how, act] : acts) {
            SCOPED_TRACE(std::string(how) + ", " + what);
            QFile::remove(m_folder.filePath(u"data.tdb"_s));
            m_workspace = std::make_unique<CTxWorkspace>();
            m_host = std::make_unique<HostWindow>();
            ASSERT_NO_FATAL_FAILURE(SetUp());
            m_host->m_reaction = [&, once = false](const CTdHostMessage &) mutable {
                if (!std::exchange(once, true))
                    end();
            };
            act();
            const bool isTold = m_host != nullptr;
            EXPECT_TRUE(isTold || (find(m_name) && m_dataset->IsOpen())) << "who could be told of it?";
        }
    }
}

TEST_F(Lifecycle, CloseDataSourceDoesNothing)
{
    const Node source(Node::WndNone, Node::ItemDataSource, m_alias, m_alias, 0, 0);
    Methods::CloseDataSource(m_dataSource);
    Methods::CloseDataSource(m_workspace.get(), m_alias);
    Methods::CloseDataSources(m_workspace.get(), &source);
    EXPECT_EQ(m_workspace->GetDataSources().find(m_alias), m_dataSource);
    EXPECT_TRUE(m_dataset->IsOpen());
    EXPECT_TRUE(m_host->m_messages.isEmpty());
}

/// Answers the message box that opens next, and keeps what it said.
struct Answer
{
    explicit Answer(std::function<void(QMessageBox &)> answer)
    {
        QTimer::singleShot(0, &timer, [this, answer = std::move(answer)] {
            if (auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget())) {
                text = box->text();
                answer(*box);
            }
        });
    }
    explicit Answer(QMessageBox::StandardButton button)
        : Answer([button](QMessageBox &box) { box.button(button)->click(); })
    {
    }
    QObject timer; // its end is that of the wait
    QString text;
};

TEST_F(Lifecycle, PromoteCloseDatasetAsksOnlyForWhatStaysOpen)
{
    struct Row
    {
        const char *name;
        bool isOpen;
        qint64 answer;
        bool hostCloses;
        QMessageBox::StandardButton button;
        bool asked;
        bool result;
        bool staysOpen;
    };
    constexpr auto none = QMessageBox::NoButton;
    const Row rows[] = {
        {"closed, nobody cares", false, 0, false, none, false, true, false},
        {"open, nobody cares", true, 0, false, none, false, true, false},
        {"the host took care", true, 1, true, none, false, false, false},
        {"the host holds it, Yes", true, 1, false, QMessageBox::Yes, true, true, false},
        {"the host holds it, No", true, 1, false, QMessageBox::No, true, false, true},
    };
    for (const Row &row : rows) {
        for (const bool byName : {false, true}) {
            SCOPED_TRACE(row.name);
            row.isOpen ? m_dataset->Open() : m_dataset->Close();
            m_host->m_messages.clear();
            m_host->m_answer = row.answer;
            m_host->m_reaction = [&](const CTdHostMessage &message) {
                if (message.message() == CTdHostMessage::ReleaseDataset) {
                    EXPECT_EQ(message.dataset(), m_dataset);
                    if (row.hostCloses)
                        m_dataset->Close();
                }
            };
            const Answer answer(row.button);
            EXPECT_EQ(byName ? Methods::PromoteCloseDataset(m_workspace.get(), m_alias, m_name)
                             : Methods::PromoteCloseDataset(m_dataset),
                      row.result);
            EXPECT_EQ(m_dataset->IsOpen(), row.staysOpen);
            EXPECT_EQ(answer.text.isEmpty(), !row.asked);
            EXPECT_EQ(m_host->m_messages.first(), 1173);
            EXPECT_EQ(m_host->m_messages.contains(1165), !row.hostCloses && !row.staysOpen);
        }
    }
    EXPECT_FALSE(Methods::PromoteCloseDataset(nullptr));
    EXPECT_FALSE(Methods::PromoteCloseDataset(m_workspace.get(), m_alias, u"Villages"_s));
}

TEST_F(Lifecycle, PromoteCloseDatasetClosesTheChildInPlaceOfItsParent)
{
    CTxDataset *roads = find(u"Roads"_s);
    CTxDataset *nodes = roads->GetChildDataset();
    ASSERT_TRUE(nodes && nodes->Open());
    EXPECT_TRUE(Methods::PromoteCloseDataset(roads));
    EXPECT_EQ(m_host->m_nodes.first(), told(nodes->GetName()));
    EXPECT_FALSE(nodes->IsOpen());
    EXPECT_TRUE(roads->IsOpen());
}

TEST_F(Lifecycle, PromoteCloseDatasetAsksInTheMainWindow)
{
    m_host->m_answer = 1;
    {
        const Answer answer([&](QMessageBox &box) {
            EXPECT_EQ(box.icon(), QMessageBox::Warning);
            EXPECT_EQ(box.standardButtons(), QMessageBox::Yes | QMessageBox::No);
            EXPECT_EQ(box.parentWidget(), m_host.get());
            EXPECT_TRUE(box.isModal());
            QTest::keyClick(&box, Qt::Key_Escape);
        });
        EXPECT_FALSE(Methods::PromoteCloseDataset(m_dataset)) << "Escape is No";
        EXPECT_EQ(answer.text,
                  u"The operating dataset \"Towns\" is opened. To continue, you must close it first. Close it?");
    }
    const Answer deletesIt([&](QMessageBox &box) {
        m_dataSource->DeleteDataset(m_name);
        box.button(QMessageBox::Yes)->click();
    });
    EXPECT_FALSE(Methods::PromoteCloseDataset(m_dataset));
    m_dataset = find(u"Rivers"_s);
    const Answer ends([&](QMessageBox &) { m_host.reset(); });
    EXPECT_FALSE(Methods::PromoteCloseDataset(m_dataset)) << "the question went with the window";
    EXPECT_TRUE(m_dataset->IsOpen());
}

} // namespace

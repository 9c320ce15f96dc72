#include "basic/TdOleDataNode.h"
#include "common/TdCommMethods.h"
#include "engine/data/DatasetVector.h"
#include "engine/data/TxDataSource.h"
#include "engine/data/TxQueryDef.h"
#include "engine/data/TxRecordset.h"
#include "engine/map/TxWorkspace.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

using namespace Qt::Literals::StringLiterals;
using Methods = CTdCommMethods;
using Node = CTdOleDataNode;

/// A workspace with one datasource of one dataset, "Towns" in "Daten ß".
class Lifecycle : public testing::Test
{
protected:
    void SetUp() override
    {
        QFile file(m_folder.filePath(u"Towns.geojson"_s));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(
            R"({"type":"FeatureCollection","name":"Towns","features":[{"type":"Feature","properties":{"name":"A"},
                       "geometry":{"type":"Point","coordinates":[1,2]}}]})");
        file.close();
        m_dataSource = m_workspace.GetDataSources().Open(file.fileName(), m_alias);
        m_dataset = m_dataSource ? m_dataSource->GetDataset(m_name) : nullptr;
        ASSERT_NE(m_dataset, nullptr);
    }
    Node node(Node::ItemType kind = Node::ItemDataset) const
    {
        return {Node::WndWorkspaceTree, kind, m_name, m_alias, 0, 0};
    }

    const QString m_alias = u"Daten ß"_s;
    const QString m_name = u"Towns"_s;
    QTemporaryDir m_folder;
    CTxWorkspace m_workspace;
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
    expect(&m_workspace, m_alias, m_name, m_dataSource, m_dataset);
    expect(&m_workspace, m_alias, u"Villages"_s, m_dataSource, nullptr);
    expect(&m_workspace, u"Other"_s, m_name, nullptr, nullptr);
    expect(nullptr, m_alias, m_name, nullptr, nullptr);
}

TEST_F(Lifecycle, GetDSandDTTakesTheFirstEntryAndGetDatasetExactlyOneDatasetEntry)
{
    const auto expect = [this](const Node &node, const CTxDataset *first, const CTxDataset *only) {
        CTxDataSource *dataSource = nullptr;
        CTxDataset *dataset = nullptr;
        Methods::GetDSandDT(&m_workspace, node, dataSource, dataset);
        EXPECT_EQ(dataset, first);
        EXPECT_EQ(Methods::GetDataset(&m_workspace, node), only);
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
    ASSERT_TRUE(m_dataset->Open());
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

TEST(AppDir, IsTheExecutablesFolder)
{
    const QString folder = Methods::GetAppDir();
    EXPECT_TRUE(folder.endsWith(u'/'));
    EXPECT_TRUE(QFileInfo::exists(folder + QFileInfo(QCoreApplication::applicationFilePath()).fileName()));
}

} // namespace

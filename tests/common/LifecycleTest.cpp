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

/// A workspace with one datasource of one dataset, "Towns" in "Daten ß".
class Lifecycle : public testing::Test
{
protected:
    Lifecycle()
    {
        QFile file(m_folder.filePath(QStringLiteral("Towns.geojson")));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(
            R"({"type":"FeatureCollection","name":"Towns","features":[{"type":"Feature","properties":{"name":"A"},
                       "geometry":{"type":"Point","coordinates":[1,2]}}]})");
        file.close();
        m_dataSource = m_workspace.GetDataSources().Open(file.fileName(), m_alias);
        m_dataset = m_dataSource ? m_dataSource->GetDataset(QStringLiteral("Towns")) : nullptr;
    }

    void SetUp() override { ASSERT_NE(m_dataset, nullptr); }

    CTdOleDataNode node(CTdOleDataNode::ItemType kind = CTdOleDataNode::ItemDataset) const
    {
        return {CTdOleDataNode::WndWorkspaceTree, kind, QStringLiteral("Towns"), m_alias, 0, 0};
    }

    const QString m_alias = QStringLiteral("Daten ß");
    QTemporaryDir m_folder;
    CTxWorkspace m_workspace;
    CTxDataSource *m_dataSource = nullptr;
    CTxDataset *m_dataset = nullptr;
};

TEST_F(Lifecycle, NamesLeadToDataSourceAndDataset)
{
    struct Row
    {
        const CTxWorkspace *workspace;
        QString alias;
        QString name;
        CTxDataSource *dataSource;
        CTxDataset *dataset;
    };
    const Row rows[] = {
        {&m_workspace, m_alias, QStringLiteral("Towns"), m_dataSource, m_dataset},
        {&m_workspace, m_alias, QStringLiteral("Villages"), m_dataSource, nullptr},
        {&m_workspace, QStringLiteral("Other"), QStringLiteral("Towns"), nullptr, nullptr},
        {nullptr, m_alias, QStringLiteral("Towns"), nullptr, nullptr},
    };
    for (const Row &row : rows) {
        CTxDataSource *dataSource = m_dataSource; // what was there before must go
        CTxDataset *dataset = m_dataset;
        CTdCommMethods::GetDSandDT(row.workspace, row.alias, row.name, dataSource, dataset);
        EXPECT_EQ(dataSource, row.dataSource);
        EXPECT_EQ(dataset, row.dataset);
    }
}

TEST_F(Lifecycle, NodeLeadsToItsFirstEntry)
{
    CTdOleDataNode two = node();
    two.entries.append({QStringLiteral("Other"), QStringLiteral("Other"), CTdOleDataNode::ItemMap});
    CTxDataSource *dataSource = nullptr;
    CTxDataset *dataset = nullptr;
    CTdCommMethods::GetDSandDT(&m_workspace, two, dataSource, dataset);
    EXPECT_EQ(dataset, m_dataset);
    CTdCommMethods::GetDSandDT(&m_workspace, CTdOleDataNode(), dataSource, dataset);
    EXPECT_EQ(dataSource, nullptr);
    EXPECT_EQ(dataset, nullptr);
}

TEST_F(Lifecycle, GetDatasetWantsExactlyOneDatasetEntry)
{
    EXPECT_EQ(CTdCommMethods::GetDataset(&m_workspace, node()), m_dataset);
    EXPECT_EQ(CTdCommMethods::GetDataset(nullptr, node()), nullptr);
    EXPECT_EQ(CTdCommMethods::GetDataset(&m_workspace, node(CTdOleDataNode::ItemSubDataset)), nullptr);
    CTdOleDataNode two = node();
    two.entries.append(two.entries.first());
    EXPECT_EQ(CTdCommMethods::GetDataset(&m_workspace, two), nullptr);
    EXPECT_EQ(CTdCommMethods::GetDataset(&m_workspace, CTdOleDataNode()), nullptr);
}

TEST_F(Lifecycle, RecordsetsGoBackAndDeadOnesAreDropped)
{
    ASSERT_TRUE(m_dataset->Open());
    auto *vector = static_cast<CDatasetVector *>(m_dataset);
    CTxRecordset *recordset = vector->Query(CTxQueryDef());
    ASSERT_NE(recordset, nullptr);
    CTdCommMethods::ReleaseRecordset(recordset);
    EXPECT_EQ(recordset, nullptr);
    EXPECT_EQ(vector->GetRecordsetCount(), 0);
    CTdCommMethods::ReleaseRecordset(recordset);

    recordset = vector->Query(CTxQueryDef());
    ASSERT_NE(recordset, nullptr);
    m_dataset->Close(); // the recordset dies
    CTdCommMethods::ReleaseRecordset(recordset);
    EXPECT_EQ(recordset, nullptr);
}

TEST(AppDir, IsTheExecutablesFolder)
{
    const QString folder = CTdCommMethods::GetAppDir();
    EXPECT_TRUE(folder.endsWith(u'/'));
    EXPECT_TRUE(QFileInfo::exists(folder + QFileInfo(QCoreApplication::applicationFilePath()).fileName()));
}

} // namespace

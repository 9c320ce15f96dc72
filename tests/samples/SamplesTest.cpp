#include "engine/base/TxErrorMsg.h"
#include "engine/data/DatasetRaster.h"
#include "engine/data/DatasetVector.h"
#include "engine/map/TxWorkspace.h"

#include <gtest/gtest.h>

#include <QDirIterator>
#include <QFile>
#include <QTemporaryDir>

#include <set>

namespace {

const QString samples = QStringLiteral(TD_SOURCE_DIR "/samples");

QByteArray lastError()
{
    return TxGetErrorMsgObj().GetErrorMessage().toUtf8();
}

/// The samples as users get them, opened from a copy so that nothing in the source tree can change.
class SamplesTest : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_folder.isValid());
        QDirIterator files(samples, {QStringLiteral("*")}, QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            const QString file = files.next();
            const QString copy = m_folder.path() + file.mid(samples.size());
            ASSERT_TRUE(QDir().mkpath(QFileInfo(copy).path()));
            ASSERT_TRUE(QFile::copy(file, copy));
        }
        ASSERT_TRUE(m_workspace.Open(m_folder.filePath(QStringLiteral("world.txw")))) << lastError().constData();
    }

    QTemporaryDir m_folder;
    CTxWorkspace m_workspace;
};

} // namespace

TEST_F(SamplesTest, NothingIsMissing)
{
    for (const TxMissingDataSource &missing : m_workspace.GetMissingDataSources())
        ADD_FAILURE() << missing.alias.toStdString() << ": " << missing.reason.toStdString();
    EXPECT_GE(m_workspace.GetMaps().GetCount(), 2);
    EXPECT_EQ(m_workspace.GetLytStorages().GetCount(), 1);
    EXPECT_EQ(m_workspace.GetScenes().GetCount(), 1);
    for (int i = 0; i < m_workspace.GetMaps().GetCount(); ++i) {
        const CTxLayers &layers = m_workspace.GetMaps().GetAt(i)->GetLayers();
        EXPECT_GT(layers.GetCount(), 0);
        for (int layer = 0; layer < layers.GetCount(); ++layer)
            EXPECT_NE(layers.GetLayerAt(layer)->GetDataset(), nullptr)
                << layers.GetLayerAt(layer)->GetName().toStdString();
    }
}

TEST_F(SamplesTest, EveryDatasetOpensAndHoldsSomething)
{
    std::set<int> kinds;
    const CTxDataSources &sources = m_workspace.GetDataSources();
    for (int i = 0; i < sources.GetCount(); ++i) {
        for (qint32 j = 0; j < sources.GetAt(i)->GetDatasetCount(); ++j) {
            CTxDataset *dataset = sources.GetAt(i)->GetDatasetAt(j);
            SCOPED_TRACE((sources.GetAt(i)->GetAlias() + u'.' + dataset->GetName()).toStdString());
            ASSERT_TRUE(dataset->Open()) << lastError().constData();
            kinds.insert(dataset->GetType());
            if (auto *vector = dynamic_cast<CDatasetVector *>(dataset)) {
                EXPECT_GT(vector->GetRecordCount(), 0);
                EXPECT_EQ(vector->GetBounds().IsVoid(), vector->GetType() == CElemDatasetInfo::Tabular);
            } else {
                auto *raster = static_cast<CDatasetRaster *>(dataset);
                EXPECT_TRUE(raster->GetValueRange().has_value());
                EXPECT_FALSE(raster->Render(raster->GetBounds(), QSize(64, 64)).isNull());
            }
        }
    }
    EXPECT_EQ(kinds.size(), 17U) << "every kind that has an icon";
}

TEST(SampleFiles, StaySmallAndEachHasAnOrigin)
{
    QFile origin(samples + QStringLiteral("/ORIGIN.md"));
    ASSERT_TRUE(origin.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(origin.readAll());
    qint64 size = 0;
    QDirIterator files(samples, {QStringLiteral("*")}, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QFileInfo file(files.next());
        if (file.path().contains(QStringLiteral("__pycache__")))
            continue;
        size += file.size();
        const bool isLayer = file.path().startsWith(samples + QStringLiteral("/source/")) &&
                             !file.path().contains(QStringLiteral("formats"));
        EXPECT_TRUE(!isLayer || text.contains(file.baseName())) << file.filePath().toStdString();
    }
    EXPECT_LT(size, 5'000'000);
}

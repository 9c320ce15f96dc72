#include "engine/base/TxErrorMsg.h"
#include "engine/data/DatasetRaster.h"
#include "engine/data/DatasetVector.h"
#include "engine/data/TxQueryDef.h"
#include "engine/data/TxRecordset.h"
#include "engine/geometry/GeoLine.h"
#include "engine/geometry/GeoRegion.h"
#include "engine/geometry/GeoText.h"
#include "engine/map/TxWorkspace.h"

#include <gtest/gtest.h>

#include <QDirIterator>
#include <QFile>
#include <QMap>
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

    CTxDataset *dataset(const char *name)
    {
        CTxDataSource *database = m_workspace.GetDataSources().find(QStringLiteral("Terravox"));
        return database ? database->GetDataset(QString::fromLatin1(name)) : nullptr;
    }

    CDatasetVector *openVector(const char *name)
    {
        auto *vector = dynamic_cast<CDatasetVector *>(dataset(name));
        return vector && vector->Open() ? vector : nullptr;
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
    const CTxDataSources &sources = m_workspace.GetDataSources();
    for (int i = 0; i < sources.GetCount(); ++i) {
        for (qint32 j = 0; j < sources.GetAt(i)->GetDatasetCount(); ++j) {
            CTxDataset *dataset = sources.GetAt(i)->GetDatasetAt(j);
            SCOPED_TRACE((sources.GetAt(i)->GetAlias() + u'.' + dataset->GetName()).toStdString());
            ASSERT_TRUE(dataset->Open()) << lastError().constData();
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
}

TEST_F(SamplesTest, EveryKindWithAnIconIsThere)
{
    std::set<int> kinds;
    const CTxDataSources &sources = m_workspace.GetDataSources();
    for (int i = 0; i < sources.GetCount(); ++i) {
        for (qint32 j = 0; j < sources.GetAt(i)->GetDatasetCount(); ++j)
            kinds.insert(sources.GetAt(i)->GetDatasetAt(j)->GetType());
    }
    using Info = CElemDatasetInfo;
    for (const int kind : {Info::Tabular, Info::Point, Info::Line, Info::Network, Info::Region, Info::Parcel,
                           Info::Text, Info::Route, Info::Image, Info::Grid, Info::DEM, Info::Point3D, Info::Line3D,
                           Info::Region3D, Info::Text3D, Info::TIN, Info::CAD})
        EXPECT_TRUE(kinds.count(kind)) << "no dataset of kind " << kind;
}

TEST_F(SamplesTest, NetworkHasItsNodesAndLibraryItsTiles)
{
    const CTxDataset *network = dataset("Ferries");
    ASSERT_NE(network, nullptr);
    ASSERT_NE(network->GetChildDataset(), nullptr);
    EXPECT_EQ(network->GetChildDataset()->GetName(), QStringLiteral("Ferries_Node"));

    const auto *library = dynamic_cast<const CDatasetVector *>(dataset("SheetLand"));
    ASSERT_NE(library, nullptr);
    EXPECT_TRUE(library->GetOptions() & CTxDataset::Library);
    CDatasetVector *index = openVector(library->GetTileIndexName().toLatin1().constData());
    ASSERT_NE(index, nullptr);
    CTxRecordset *tiles = index->Query(CTxQueryDef());
    ASSERT_NE(tiles, nullptr);
    QStringList names;
    for (; !tiles->IsEOF(); tiles->MoveNext()) {
        CTxVariant name;
        ASSERT_TRUE(tiles->GetFieldValue(QStringLiteral("TxLibTileName"), name));
        names.append(name.toText());
    }
    EXPECT_TRUE(index->ReleaseRecordset(tiles));
    EXPECT_EQ(names.size(), 15);
    EXPECT_EQ(names.value(0), QStringLiteral("A1"));
}

TEST_F(SamplesTest, TextsHeightsMeasuresAndSurfacesSurvive)
{
    const auto first = [this](const char *name) {
        std::unique_ptr<CElemGeometry> owned;
        if (CDatasetVector *vector = openVector(name)) {
            CTxRecordset *records = vector->Query(CTxQueryDef());
            CElemGeometry *geometry = nullptr;
            if (records && records->GetGeometry(geometry))
                owned.reset(geometry);
            vector->ReleaseRecordset(records);
        }
        return owned;
    };
    const auto text = first("Labels");
    ASSERT_TRUE(text && text->GetType() == CElemGeometry::Text);
    EXPECT_EQ(static_cast<const CGeoText &>(*text).GetText(), QStringLiteral("Pacific Ocean"));
    EXPECT_DOUBLE_EQ(static_cast<const CGeoText &>(*text).GetHeight(), 7500);

    const auto text3D = first("SummitLabels3D");
    ASSERT_TRUE(text3D && text3D->GetType() == CElemGeometry::Text3D);
    EXPECT_EQ(static_cast<const CGeoText &>(*text3D).GetText(), QStringLiteral("1074 m"));

    const auto track = first("FerryTracks");
    ASSERT_TRUE(track && track->GetType() == CElemGeometry::Line);
    const auto &line = static_cast<const CGeoLine &>(*track);
    ASSERT_TRUE(line.HasM());
    EXPECT_NEAR(line.GetMs()[line.GetPointCount() - 1] * 1852.0, line.GetLength(), 50.0);

    const auto surface = first("Surface");
    ASSERT_TRUE(surface && surface->GetType() == CElemGeometry::Region3D);
    EXPECT_EQ(static_cast<const CGeoRegion &>(*surface).GetPartCount(), 1620);
}

TEST_F(SamplesTest, DrawingsGiveTheirTexts)
{
    CTxDataSource *drawing = m_workspace.GetDataSources().find(QStringLiteral("GulfIslands"));
    auto *entities = drawing ? dynamic_cast<CDatasetVector *>(drawing->GetDatasetAt(0)) : nullptr;
    ASSERT_TRUE(entities && entities->Open());
    CTxRecordset *records = entities->Query(CTxQueryDef());
    ASSERT_NE(records, nullptr);
    QMap<QString, std::pair<double, double>> texts; // height and angle
    for (; !records->IsEOF(); records->MoveNext()) {
        CElemGeometry *geometry = nullptr;
        ASSERT_TRUE(records->GetGeometry(geometry));
        const std::unique_ptr<CElemGeometry> owned(geometry);
        if (const auto *text = dynamic_cast<const CGeoText *>(geometry))
            texts.insert(text->GetText(), {text->GetHeight(), text->GetAngle()});
    }
    EXPECT_TRUE(entities->ReleaseRecordset(records));
    EXPECT_EQ(texts.value(QStringLiteral("GULF ISLANDS")), std::make_pair(1400.0, 0.0));
    EXPECT_EQ(texts.value(QStringLiteral("48°48'N")), std::make_pair(750.0, 90.0));
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

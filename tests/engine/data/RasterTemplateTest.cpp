#include "Rows.h"
#include "engine/data/RasterAppendFixture.h"
#include "engine/geometry/GeoPoint.h"
#include "engine/projection/TxPJCoordSys.h"

namespace {

using Info = CElemDatasetInfo;

struct TemplateRow
{
    const char *label;
    GDALDataType type;
    int bands;
    bool hasPalette;
    bool hasAlpha;
    std::optional<double> noData;
    const char *refusal;     ///< part of the error text; null where it can be made
    const char *pixelFormat; ///< and the others: of what is made
    int madeBands;
    Info::Type kind;
};

const TemplateRow templateRows[] = {
    {"grey", GDT_Byte, 1, false, false, {}, nullptr, "Byte", 2, Info::Image},
    {"colours", GDT_Byte, 3, false, false, {}, nullptr, "Byte", 4, Info::Image},
    {"colours with alpha", GDT_Byte, 4, false, true, {}, nullptr, "Byte", 4, Info::Image},
    {"palette", GDT_Byte, 1, true, false, {}, nullptr, "Byte", 4, Info::Image},
    {"heights", GDT_Int16, 1, false, false, -9999.0, nullptr, "Int16", 1, Info::Grid},
    {"depths", GDT_Float32, 1, false, false, -32768.0, nullptr, "Float32", 1, Info::Grid},
    {"whole numbers", GDT_Int32, 1, false, false, -1.0, nullptr, "Float32", 1, Info::Grid},
    {"fine numbers", GDT_Float64, 1, false, false, {}, "not as “Float64”", "", 0, Info::Grid},
    {"near infrared", GDT_Byte, 4, false, false, {}, "no alpha band", "", 0, Info::Image},
    {"many bands", GDT_Byte, 7, false, false, {}, "can have 4 bands", "", 0, Info::Image},
    {"deep colours", GDT_UInt16, 3, false, false, {}, "bytes as cells", "", 0, Info::Image}};

using RasterTemplate = WithRows<RasterAppendFixture, TemplateRow>;

TEST_P(RasterTemplate, BecomesADatasetThatHoldsItsCells)
{
    const TemplateRow &row = GetParam();
    const auto change = [&row](GDALDataset &file) {
        OGRSpatialReference system;
        system.importFromEPSG(32632);
        file.SetSpatialRef(&system);
        GDALColorTable colours;
        for (int i = 0; i < 256; ++i) {
            const GDALColorEntry entry = {short(i), short(255 - i), 9, 255};
            colours.SetColorEntry(i, &entry);
        }
        if (row.hasPalette)
            file.GetRasterBand(1)->SetColorTable(&colours);
        if (row.noData)
            file.GetRasterBand(1)->SetNoDataValue(*row.noData);
    };
    const auto value = [&row](int column, int y, int band) {
        if (row.noData && column == 0)
            return *row.noData;
        return row.hasAlpha && band == row.bands ? 255.0 : noise(column, y, band);
    };
    QStringList options;
    if (row.bands > 3)
        options << "PHOTOMETRIC=RGB" << (row.hasAlpha ? "ALPHA=YES" : "ALPHA=NO");
    const QSize size(300, 20);
    CDatasetRaster *source =
        openRaster(writeTiff("t.tif", {size, row.bands, row.type, value, {500000, 2, 0, 40, 0, -2}, options, change}));
    ASSERT_TRUE(source);
    CTxDataSource *database = create();
    CTxDataset *dataset = database->CreateDatasetFrom("Copy", source, CElemDataEnc::DCT);
    if (row.refusal) {
        EXPECT_FALSE(dataset);
        EXPECT_NE(lastError().find(row.refusal), std::string::npos) << lastError();
        EXPECT_EQ(database->GetDatasetCount(), 0);
        return;
    }
    ASSERT_TRUE(dataset) << lastError();
    auto *made = raster(database, "Copy");
    ASSERT_TRUE(made->Append(source)) << lastError();
    made = raster(reopen(), "Copy");
    EXPECT_EQ(made->GetType(), row.kind);
    EXPECT_EQ(made->GetEncType(), CElemDataEnc::DCT);
    EXPECT_EQ(made->GetPixelFormat().toStdString(), row.pixelFormat);
    EXPECT_EQ(made->GetBandCount(), row.madeBands);
    EXPECT_EQ(made->GetSize(), size);
    EXPECT_EQ(made->GetBounds(), source->GetBounds());
    CTxPJCoordSys system;
    made->GetProjection(system);
    EXPECT_EQ(system.GetType(), CTxPJCoordSys::Projected);
    // What is seen and told is the same, cell by cell: alpha, palette and "no data" included.
    EXPECT_EQ(made->Render(source->GetBounds(), size), source->Render(source->GetBounds(), size));
    for (const int column : {0, 1, 150, 299}) {
        if (!row.hasPalette) {
            EXPECT_EQ(made->GetValue(500001 + 2 * column, 5), source->GetValue(500001 + 2 * column, 5)) << column;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(All, RasterTemplate, testing::ValuesIn(templateRows), rowNames(&TemplateRow::label));

/// Such a dataset passes for one in the system that its neighbours have; its copy elsewhere must not.
TEST_F(RasterAppendFixture, WhatHasNoCoordinateSystemIsCopiedWithoutOne)
{
    CTxDataSource *from = sources.Create(path("from.tdb"), "from", CTxDataSourceStorage::Native);
    ASSERT_TRUE(from && from->CreateDataset(definition("First", Info::Point, {}, "EPSG:4326"))) << lastError();
    ASSERT_TRUE(from->CreateDataset(rasterDefinition("Plan", {500, 0, 503, 1}))) << lastError();
    CDatasetVector *towns = makeVector(from, "Towns");
    const CGeoPoint place(500, 1);
    ASSERT_TRUE(addRecord(*query(towns), {}, &place)) << lastError();
    CDatasetRaster *plan = raster(from, "Plan");
    ASSERT_TRUE(plan->Append(writeGrid("plan.asc", 500, 0, {{7, 8, -1}}), CRect2D())) << lastError();

    CTxDataSource *to = create();
    CTxPJCoordSys coordSys;
    for (CTxDataset *source : QList<CTxDataset *>{plan, towns}) {
        const CTxDataset *copy = to->CreateDatasetFrom(source->GetName(), source, CElemDataEnc::NONE);
        ASSERT_TRUE(copy) << lastError();
        copy->GetProjection(coordSys);
        EXPECT_EQ(coordSys.GetType(), CTxPJCoordSys::None) << copy->GetName().toStdString();
    }
    EXPECT_TRUE(raster(to, "Plan")->Append(plan)) << lastError();
    EXPECT_EQ(rowText(*raster(to, "Plan"), 0), "7 8 -");
    ASSERT_TRUE(vector(to, "Towns")->Append(query(towns).get())) << lastError();
    EXPECT_EQ(vector(to, "Towns")->GetBounds(), CRect2D(500, 1, 500, 1));
}

} // namespace

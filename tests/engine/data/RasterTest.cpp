#include "engine/data/DataFixture.h"
#include "engine/projection/TxPJCoordSys.h"
#include "engine/symbol/TxHeightColors.h"

#include <array>
#include <functional>
#include <gdal_priv.h>
#include <limits>

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

/// A GeoTIFF of the test's own making, opened.
class RasterTest : public DataFixture
{
protected:
    /// Makes a file of @p width by @p height cells whose values are @p cells in every band, lets @p change it, opens
    /// it.
    CDatasetRaster *make(int width, int height, GDALDataType type, const std::vector<double> &cells, int bands = 1,
                         const std::function<void(GDALDataset &)> &change = {})
    {
        const QString name = path(QStringLiteral("r%1.tif").arg(sources.GetCount()));
        GDALAllRegister();
        {
            const GDALDatasetUniquePtr file(GetGDALDriverManager()->GetDriverByName("GTiff")->Create(
                name.toUtf8(), width, height, bands, type, nullptr));
            if (change)
                change(*file);
            std::vector<double> values = cells;
            for (int band = 1; band <= bands; ++band) {
                if (file->GetRasterBand(band)->RasterIO(GF_Write, 0, 0, width, height, values.data(), width, height,
                                                        GDT_Float64, 0, 0, nullptr) != CE_None)
                    return nullptr;
            }
        }
        return raster(open(name));
    }
};

CTxColorsetEx colorset(double floor, double ceiling, std::initializer_list<COLORREF> colors)
{
    CTxColorsetEx result;
    result.SetZFloor(floor);
    result.SetZCeiling(ceiling);
    for (const COLORREF color : colors)
        result.AddColor(color);
    return result;
}

void place(GDALDataset &file, std::array<double, 6> transform)
{
    file.SetGeoTransform(transform.data());
}

TEST_F(RasterTest, LiesInItsCellsWithoutAGeoreference)
{
    CDatasetRaster *raster = make(3, 2, GDT_Byte, {1, 2, 3, 4, 5, 6});
    ASSERT_TRUE(raster);
    EXPECT_EQ(raster->GetBounds(), CRect2D(0, 0, 3, 2));
    EXPECT_EQ(raster->GetValue(0.5, 1.5), 1.0) << "the first row is at the top";
    EXPECT_EQ(raster->GetValue(2.5, 0.5), 6.0);
    const QImage image = raster->Render(raster->GetBounds(), QSize(3, 2));
    EXPECT_EQ(image.pixel(2, 1), qRgb(6, 6, 6));
    CTxPJCoordSys none;
    raster->GetProjection(none);
    EXPECT_EQ(none.GetType(), CTxPJCoordSys::None);
}

TEST_F(RasterTest, IsPaintedWhereItLiesWhateverWayItIsTurned)
{
    // South up, and turned by a right angle: in each the cell of value 9 is looked for at its place on the ground.
    for (const std::array<double, 6> transform :
         {std::array<double, 6>{10, 1, 0, 20, 0, 1}, std::array<double, 6>{10, 0, 1, 20, 1, 0}}) {
        CDatasetRaster *raster =
            make(2, 2, GDT_Byte, {1, 9, 3, 4}, 1, [&](GDALDataset &file) { place(file, transform); });
        ASSERT_TRUE(raster);
        EXPECT_EQ(raster->GetBounds(), CRect2D(10, 20, 12, 22));
        const double x = transform[0] + 1.5 * transform[1] + 0.5 * transform[2];
        const double y = transform[3] + 1.5 * transform[4] + 0.5 * transform[5];
        EXPECT_EQ(raster->GetValue(x, y), 9.0);
        const QImage image = raster->Render(raster->GetBounds(), QSize(2, 2));
        EXPECT_EQ(qRed(image.pixel(int(x - 10), int(22 - y))), 9);
    }
}

TEST_F(RasterTest, LeavesPlacesWithoutDataTransparent)
{
    CDatasetRaster *raster = make(3, 1, GDT_Float32, {1, -9999, notANumber}, 1, [](GDALDataset &file) {
        place(file, {0, 1, 0, 1, 0, -1});
        file.GetRasterBand(1)->SetNoDataValue(-9999);
    });
    ASSERT_TRUE(raster);
    EXPECT_EQ(raster->GetType(), CElemDatasetInfo::Grid);
    const QImage image = raster->Render(CRect2D(0, 0, 4, 1), QSize(4, 1));
    EXPECT_EQ(qAlpha(image.pixel(0, 0)), 255);
    for (int x : {1, 2, 3})
        EXPECT_EQ(qAlpha(image.pixel(x, 0)), 0) << x;
    for (double x : {1.5, 2.5, notANumber})
        EXPECT_EQ(raster->GetValue(x, 0.5), std::nullopt) << x;
    EXPECT_EQ(raster->GetValueRange(), std::make_pair(1.0, 1.0));
    EXPECT_EQ(raster->GetValueRange(2), std::nullopt);
}

TEST_F(RasterTest, ShowsGridsThroughTheRampAndPalettesByTheirColours)
{
    CDatasetRaster *grid = make(3, 1, GDT_Float32, {-100, 0, 100}, 1, [](GDALDataset &file) {
        place(file, {0, 1, 0, 1, 0, -1});
    });
    ASSERT_TRUE(grid);
    const QList<QRgb> ramp = {qRgb(0, 0, 255), qRgb(0, 255, 0), qRgb(255, 0, 0)};
    const QImage shown = grid->Render(grid->GetBounds(), QSize(3, 1), ramp);
    for (int x : {0, 1, 2})
        EXPECT_EQ(shown.pixel(x, 0), ramp.at(x)) << x;

    CDatasetRaster *palette = make(2, 1, GDT_Byte, {0, 1}, 1, [](GDALDataset &file) {
        GDALColorTable colours;
        const GDALColorEntry orange = {255, 128, 0, 255}, clear = {1, 2, 3, 0};
        colours.SetColorEntry(0, &orange);
        colours.SetColorEntry(1, &clear);
        file.GetRasterBand(1)->SetColorTable(&colours);
    });
    ASSERT_TRUE(palette);
    const QImage coloured = palette->Render(palette->GetBounds(), QSize(2, 1));
    EXPECT_EQ(coloured.pixel(0, 0), qRgb(255, 128, 0));
    EXPECT_EQ(coloured.pixel(1, 0), qRgb(1, 2, 3)) << "the format keeps no alpha of a palette";
}

TEST_F(RasterTest, ShowsGridsThroughColourSetsOfARangeOfTheirOwn)
{
    constexpr double none = -9999, infinity = std::numeric_limits<double>::infinity(), large = 1.6e9;
    const CTxColorsetEx rgb = colorset(0, 90, {0x0000FF, 0x00FF00, 0xFF0000});
    const CTxColorsetEx grey = colorset(large, large + 100, {0x000000, 0x646464});
    struct Row
    {
        const char *what;
        CTxColorsetEx colors;
        bool stepped;
        std::vector<double> heights;
        std::vector<QRgb> seen;
    };
    const QRgb red = qRgb(255, 0, 0), green = qRgb(0, 255, 0), blue = qRgb(0, 0, 255);
    const Row rows[] = {
        {"blended", rgb, false, {0, 45, 90, 22.5}, {red, green, blue, qRgb(128, 128, 0)}},
        {"stepped", rgb, true, {0, 29.999, 30, 60}, {red, red, green, blue}},
        {"beyond the range", rgb, false, {-1e30, 1e30, -infinity, infinity}, {red, blue, red, blue}},
        {"no data", rgb, true, {none, notANumber, 45, 45}, {0, 0, green, green}},
        {"large numbers",
         grey,
         false,
         {large, large + 1, large + 99, large + 100},
         {qRgb(0, 0, 0), qRgb(1, 1, 1), qRgb(99, 99, 99), qRgb(100, 100, 100)}},
        {"one colour", colorset(0, 90, {0x00FF00}), false, {-1, 0, 90, 91}, {green, green, green, green}},
        {"no extent", colorset(5, 5, {0x0000FF, 0xFF0000}), true, {4, 5, 6, 1e9}, {red, red, blue, blue}},
        {"the widest range",
         colorset(-1.7e308, 1.7e308, {0x0000FF, 0xFF0000}),
         true,
         {0, 1, 2, 3},
         {red, red, red, red}},
    };
    for (const Row &row : rows) {
        const CDatasetRaster *grid = make(4, 1, GDT_Float64, row.heights, 1, [](GDALDataset &file) {
            place(file, {0, 1, 0, 1, 0, -1});
            file.GetRasterBand(1)->SetNoDataValue(none);
        });
        ASSERT_TRUE(grid) << row.what;
        const QImage shown = grid->Render(grid->GetBounds(), QSize(4, 1), TxHeightColors(row.colors, row.stepped));
        for (size_t x = 0; x < row.seen.size(); ++x)
            EXPECT_EQ(shown.pixel(int(x), 0), row.seen[x]) << row.what << ' ' << x;
    }
}

TEST_F(RasterTest, SurvivesWindowsOfEverySize)
{
    CDatasetRaster *raster = make(2, 2, GDT_Byte, {10, 20, 30, 40}, 1, [](GDALDataset &file) {
        place(file, {0, 1, 0, 2, 0, -1});
    });
    ASSERT_TRUE(raster);
    const QSize size(5, 5);
    const double infinity = std::numeric_limits<double>::infinity();
    for (const CRect2D &bounds : {CRect2D(), CRect2D(0, 0, notANumber, 1), CRect2D(-infinity, 0, infinity, 1)})
        EXPECT_TRUE(raster->Render(bounds, size).isNull());
    for (const QSize &none : {QSize(), QSize(1 << 20, 1 << 20)})
        EXPECT_TRUE(raster->Render(raster->GetBounds(), none).isNull());
    for (const CRect2D &far : {CRect2D(1e300, 1e300, 1.1e300, 1.1e300), CRect2D(50, 50, 60, 60)}) {
        const QImage image = raster->Render(far, size);
        EXPECT_EQ(image.size(), size);
        EXPECT_EQ(qAlpha(image.pixel(2, 2)), 0);
    }
    EXPECT_EQ(raster->Render(CRect2D(-1e15, -1e15, 1e15, 1e15), size).size(), size) << "far smaller than a pixel";
    const QImage inside = raster->Render(CRect2D(1.2, 1.2, 1.2000001, 1.2000001), size);
    EXPECT_EQ(inside.pixel(2, 2), qRgb(20, 20, 20)) << "far larger than the image";
    raster->Close();
    EXPECT_TRUE(raster->Render(raster->GetBounds(), size).isNull());
}

} // namespace

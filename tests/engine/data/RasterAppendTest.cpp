#include "engine/data/RasterAppendFixture.h"

#include <QImage>

#include <limits>

namespace {

using RasterAppendTest = RasterAppendFixture;
using Info = CElemDatasetInfo;

} // namespace

TEST_F(RasterAppendTest, LaysCellsWithDataWhereTheyBelong)
{
    CDatasetRaster *grid = makeRaster({500000, 100, 500004, 103});
    const QString file = writeGrid("a.asc", 500001, 101, {{1, 2, 3, 4, 5}, {6, -1, 8, 9, 10}});
    ASSERT_TRUE(grid->Append(openRaster(file))) << lastError();
    EXPECT_EQ(rowText(*grid, 2), "- 1 2 3");
    EXPECT_EQ(rowText(*grid, 1), "- 6 - 8");
    EXPECT_EQ(rowText(*grid, 0), "- - - -");
    EXPECT_EQ(grid->GetValueRange(), std::make_pair(1.0, 8.0));

    EXPECT_EQ(rowText(*raster(reopen(), "Grid"), 1), "- 6 - 8") << "it is in the file";
}

TEST_F(RasterAppendTest, FlagFalseFillsOnlyWhatIsEmpty)
{
    CDatasetRaster *grid = makeRaster({500000, 100, 500003, 101}, "Int16");
    ASSERT_TRUE(grid->Append(writeGrid("a.asc", 500000, 100, {{1, -1, 3}}), CRect2D())) << lastError();
    const QString other = writeGrid("b.asc", 500000, 100, {{7, 8, -1}});
    ASSERT_TRUE(grid->Append(other, CRect2D(), CDatasetRaster::AsciiGrid, false)) << lastError();
    EXPECT_EQ(rowText(*grid, 0), "1 8 3");
    ASSERT_TRUE(grid->Append(other, CRect2D(), CDatasetRaster::AsciiGrid, true)) << lastError();
    EXPECT_EQ(rowText(*grid, 0), "7 8 3");
}

struct ResampleRow
{
    const char *pixelFormat;
    Info::Type kind;
    QList<int> cells; ///< of the source, laid over the whole target; -1 for no data
    bool hasPalette;
    const char *expected; ///< of the four cells
};

TEST_F(RasterAppendTest, ResamplesByWhatTheCellsMean)
{
    const ResampleRow rows[] = {
        {"Float32", Info::Grid, {0, 100}, false, "0 25 75 100"},
        {"Int16", Info::DEM, {0, 100}, false, "0 25 75 100"},
        {"Int16", Info::Grid, {0, 100}, false, "0 0 100 100"}, // may be classes
        {"Float32", Info::Grid, {0, 100}, true, "0 0 100 100"},
        {"Float32", Info::Grid, {80, -1}, false, "80 80 - -"}, // what has no data takes no part
        {"Float32", Info::Grid, {0, 10, 20, 30, 40, 50, 60, 70, 80, 90, 100, 110}, false, "10 40 70 100"},
        {"Float32", Info::Grid, {0, 10, 20, -1, 40, 50, -1, -1, -1, 90, 100, 110}, false, "10 45 - 100"},
        {"Int16", Info::Grid, {0, 10, 20, 30, 40, 50, 60, 70, 80, 90, 100, 110}, false, "10 40 70 100"}};
    for (const ResampleRow &row : rows) {
        SCOPED_TRACE(testing::Message() << row.pixelFormat << " -> " << row.expected);
        CDatasetRaster *target = makeRaster({500000, 100, 500004, 101}, row.pixelFormat, row.kind);
        const bool isFiner = row.cells.size() > 4;
        Image image = {QSize(int(row.cells.size()), isFiner ? 3 : 1), 1, GDT_Int16,
                       [&row](int column, int, int) { return row.cells.at(column); }};
        if (row.hasPalette)
            image.type = GDT_Byte;
        image.change = [&row](GDALDataset &file) {
            GDALColorTable colours;
            const GDALColorEntry entry = {1, 2, 3, 255};
            colours.SetColorEntry(255, &entry);
            if (row.hasPalette)
                file.GetRasterBand(1)->SetColorTable(&colours);
            else
                file.GetRasterBand(1)->SetNoDataValue(-1);
        };
        EXPECT_TRUE(target->Append(writeTiff("cells.tif", image), {500000, 100, 500004, 101})) << lastError();
        EXPECT_EQ(rowText(*target, 0), row.expected);
        sources.CloseAll();
        QFile::remove(path("new.tdb"));
    }
}

TEST_F(RasterAppendTest, SameCellsAreCopiedBitByBit)
{
    // In a database tiles are compressed, in a file overviews are kept: neither may change or hide a cell.
    const QSize size(700, 600);
    const Image picture = {size, 3, GDT_Byte, noise, {500010, 1, 0, 700, 0, -1}};
    const QString file = writeTiff("noise.tif", picture);
    Image plain = {QSize(800, 800), 3, GDT_Byte, [](int, int, int) { return 7.0; }, {500000, 1, 0, 800, 0, -1}};
    const QString target = writeTiff("target.tif", plain);
    {
        const GDALDatasetUniquePtr image(GDALDataset::Open(target.toUtf8(), GDAL_OF_UPDATE));
        int factor = 4;
        ASSERT_EQ(image->BuildOverviews("AVERAGE", 1, &factor, 0, nullptr, nullptr, nullptr), CE_None);
    }
    for (CDatasetRaster *into : {makeRaster({500000, 0, 500800, 800}, "Byte", Info::Image, 3), openRaster(target)}) {
        ASSERT_TRUE(into->Append(file, CRect2D())) << lastError();
        qint64 wrong = 0;
        for (int y = 0; y < size.height(); ++y) {
            for (int x = 0; x < size.width(); ++x)
                wrong += into->GetValue(500010.5 + x, 699.5 - y, 1 + x % 3) == noise(x, y, 1 + x % 3) ? 0 : 1;
        }
        EXPECT_EQ(wrong, 0);
        const QRgb small = into->Render({500100, 200, 500600, 600}, QSize(10, 10)).pixel(5, 5);
        EXPECT_GT(qRed(small), 60) << "overviews show what is new: the mean of noise is far above 7";
    }
}

TEST_F(RasterAppendTest, ReprojectsBetweenCoordinateSystems)
{
    // At the central meridian of the zone the grid of degrees stands upright on that of metres.
    CDatasetRaster *grid = makeRaster({500000, 5000000, 500040, 5000040});
    const QString file = path("degrees.asc");
    {
        QFile text(file);
        ASSERT_TRUE(text.open(QIODevice::WriteOnly));
        text.write("ncols 1\nnrows 1\nxllcorner 9.0000\nyllcorner 45.1534\ncellsize 0.0002\nNODATA_value -1\n5\n");
        QFile system(path("degrees.prj"));
        ASSERT_TRUE(system.open(QIODevice::WriteOnly));
        system.write("GEOGCS[\"GCS_WGS_1984\",DATUM[\"D_WGS_1984\",SPHEROID[\"WGS_1984\",6378137.0,298.257223563]],"
                     "PRIMEM[\"Greenwich\",0.0],UNIT[\"Degree\",0.0174532925199433]]");
    }
    ASSERT_TRUE(grid->Append(openRaster(file))) << lastError();
    const auto cells = [grid](double x) {
        int count = 0;
        for (int row = 0; row < 40; ++row)
            count += grid->GetValue(500000 + x, 5000000 + row + 0.5).has_value() ? 1 : 0;
        return count;
    };
    EXPECT_GT(cells(1.5), 10) << "0.0002 degrees of latitude are 22 m";
    EXPECT_EQ(cells(1.5), cells(14.5)) << "and 0.0002 degrees of longitude are 15.7 m there";
    EXPECT_EQ(cells(16.5), 0);
}

TEST_F(RasterAppendTest, GreyAndPaletteFilesBecomeColours)
{
    CTxDatasetDef def = definition("Image", CElemDatasetInfo::Image);
    def.rasterBounds = {0, 0, 4, 2};
    def.rasterSize = QSize(4, 2);
    def.pixelFormat = "Byte";
    def.bandCount = 3;
    auto *image = dynamic_cast<CDatasetRaster *>(create()->CreateDataset(def));
    ASSERT_TRUE(image && image->Open()) << lastError();

    QImage grey(2, 2, QImage::Format_Grayscale8);
    grey.fill(QColor(90, 90, 90));
    ASSERT_TRUE(grey.save(path("grey.png")));
    QImage palette(1, 2, QImage::Format_Indexed8);
    palette.setColorTable({qRgb(10, 200, 30), qRgb(0, 0, 0)});
    palette.fill(0);
    ASSERT_TRUE(palette.save(path("palette.png")));
    ASSERT_TRUE(image->Append(path("grey.png"), {0, 0, 2, 2}, CDatasetRaster::PNG)) << lastError();
    ASSERT_TRUE(image->Append(path("palette.png"), {2, 0, 3, 2}, CDatasetRaster::PNG)) << lastError();

    const QImage drawn = image->Render(image->GetBounds(), QSize(4, 2));
    EXPECT_EQ(drawn.pixelColor(0, 0), QColor(90, 90, 90));
    EXPECT_EQ(drawn.pixelColor(2, 1), QColor(10, 200, 30));
    EXPECT_EQ(drawn.pixelColor(3, 1).alpha(), 0) << "nothing was laid there";
}

struct RefusalRow
{
    const char *why; ///< part of the error text
    const char *file;
    CRect2D bounds = {};
    CDatasetRaster::FileType type = CDatasetRaster::AutoDetect;
};

TEST_F(RasterAppendTest, RefusesWhatCannotBeDone)
{
    const double none = std::numeric_limits<double>::quiet_NaN(), endless = std::numeric_limits<double>::infinity();
    const CRect2D here(500000, 100, 500004, 103);
    const std::array<double, 6> place = {500000, 1, 0, 103, 0, -1};
    CDatasetRaster *grid = makeRaster(here, "Int16");
    const QString file = writeGrid("a.asc", 500000, 100, {{1, 2}});
    writeGrid("far.asc", 600000, 100, {{1}});
    writeGrid("empty.asc", 500000, 100, {{-1}});
    writeGrid("large.asc", 500000, 100, {{1, 40000}});
    writeTiff("colours.tif", {QSize(4, 3), 3, GDT_Byte, noise, place});
    writeTiff("unplaced.tif", {QSize(4, 3), 1, GDT_Byte, noise});
    writeTiff("complex.tif", {QSize(4, 3), 1, GDT_CFloat32, noise, place});
    writeTiff("signed.tif", {QSize(4, 3), 1, GDT_Byte, noise, place, {"PIXELTYPE=SIGNEDBYTE"}});
    writeTiff("cut.tif", {QSize(40, 300), 1, GDT_Byte, noise, place});
    QFile::resize(path("cut.tif"), 5000);
    QFile(path("nothing.png")).open(QIODevice::WriteOnly);
    QFile points(path("points.geojson"));
    ASSERT_TRUE(points.open(QIODevice::WriteOnly));
    points.write(R"({"type":"Point","coordinates":[1,2]})");
    points.close();

    const RefusalRow rows[] = {{"does not exist", "missing.png"},
                               {"cannot be opened", "a.asc", {}, CDatasetRaster::JPEG},
                               {"do not overlap", "far.asc"},
                               {"no cell of it that holds data", "empty.asc"},
                               {"40000 does not fit into cells of the format Int16", "large.asc"},
                               {"3 bands of values, not 1", "colours.tif"},
                               {"no georeference", "unplaced.tif"},
                               {"complex", "complex.tif"},
                               {"signed bytes", "signed.tif"},
                               {"is cut", "cut.tif"},
                               {"empty file", "nothing.png"},
                               {"cannot be opened", "points.geojson"},
                               {"cannot be opened", ""}, // the folder
                               {"no area", "a.asc", {500004, 100, 500000, 103}},
                               {"no area", "a.asc", {500000, 100, 500000, 103}},
                               {"no area", "a.asc", {none, 100, 500004, 103}},
                               {"no area", "a.asc", {-endless, 100, endless, 103}}};
    for (const RefusalRow &row : rows) {
        EXPECT_FALSE(grid->Append(path(row.file), row.bounds, row.type)) << row.file;
        EXPECT_NE(lastError().find(row.why), std::string::npos) << row.file << ": " << lastError();
        EXPECT_EQ(rowText(*grid, 0), "- - - -") << row.file;
    }
    EXPECT_TRUE(grid->Append(path("unplaced.tif"), here)) << "its bounds were given: " << lastError();

    CDatasetRaster *source = openRaster(file);
    EXPECT_FALSE(grid->Append(nullptr));
    EXPECT_TRUE(grid->Append(grid)) << "every cell is there already";
    EXPECT_FALSE(source->Append(grid)) << "an ASCII grid cannot be changed";
    ASSERT_TRUE(grid->GetDataSource()->BeginTrans());
    EXPECT_FALSE(grid->Append(source)) << "the transaction would lock it out";
    ASSERT_TRUE(grid->GetDataSource()->RollbackTrans());
    EXPECT_TRUE(grid->Append(source)) << lastError();

    source->Close();
    EXPECT_FALSE(grid->Append(source));
    grid->Close();
    EXPECT_FALSE(grid->Append(file, CRect2D()));
}

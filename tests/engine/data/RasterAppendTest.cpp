#include "engine/data/DataFixture.h"

#include <QFile>
#include <QImage>

#include <cmath>

namespace {

constexpr const char *utm32 = "EPSG:32632";

class RasterAppendTest : public DataFixture
{
protected:
    /// An open grid of 1 m cells in a new database, without data everywhere.
    CDatasetRaster *makeGrid(const CRect2D &bounds, const char *pixelFormat = "Float32")
    {
        CTxDatasetDef def = rasterDefinition("Grid", bounds, pixelFormat);
        def.coordSys = utm32;
        CTxDataSource *database = create();
        EXPECT_TRUE(database->CreateDataset(def)) << lastError();
        return raster(database, "Grid");
    }

    /// Writes an ASCII grid of 1 m cells whose lower left corner is (x, y); rows from the north.
    QString writeGrid(const char *name, int x, int y, const QList<QList<int>> &rows)
    {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(QStringLiteral("ncols %1\nnrows %2\nxllcorner %3\nyllcorner %4\ncellsize 1\nNODATA_value -1\n")
                       .arg(QString::number(rows.first().size()), QString::number(rows.size()), QString::number(x),
                            QString::number(y))
                       .toLatin1());
        for (const QList<int> &row : rows) {
            for (const int value : row)
                file.write(QByteArray::number(value) + ' ');
            file.write("\n");
        }
        return file.fileName();
    }

    CDatasetRaster *openRaster(const QString &file) { return raster(open(file)); }

    /// The values of the cells of row @p row (0: the southernmost of the bounds) as text, "-" for no data.
    static QString rowText(const CDatasetRaster &raster, int row)
    {
        QStringList texts;
        const CRect2D bounds = raster.GetBounds();
        for (int column = 0; column < raster.GetSize().width(); ++column) {
            const auto value = raster.GetValue(bounds.left + column + 0.5, bounds.bottom + row + 0.5);
            texts.append(value ? QString::number(qRound(*value)) : "-");
        }
        return texts.join(u' ');
    }
};

} // namespace

TEST_F(RasterAppendTest, LaysCellsWithDataWhereTheyBelong)
{
    CDatasetRaster *grid = makeGrid({500000, 100, 500004, 103});
    const QString file = writeGrid("a.asc", 500001, 101, {{1, 2, 3, 4, 5}, {6, -1, 8, 9, 10}});
    ASSERT_TRUE(grid->Append(openRaster(file))) << lastError();
    EXPECT_EQ(rowText(*grid, 2), "- 1 2 3");
    EXPECT_EQ(rowText(*grid, 1), "- 6 - 8");
    EXPECT_EQ(rowText(*grid, 0), "- - - -");
    EXPECT_EQ(grid->GetValueRange(), std::make_pair(1.0, 8.0));

    EXPECT_EQ(rowText(*raster(reopen(), "Grid"), 1), "- 6 - 8") << "it is in the file";
}

TEST_F(RasterAppendTest, TellsHowFarItIsAndCanBeStopped)
{
    CDatasetRaster *grid = makeGrid({500000, 100, 500003, 101});
    const QString file = writeGrid("a.asc", 500000, 100, {{1, 2, 3}});
    QList<qint64> told;
    const auto stop = [&](qint64 done, qint64 total) {
        told << done << total;
        return false;
    };
    EXPECT_FALSE(grid->Append(file, CRect2D(), CDatasetRaster::AutoDetect, true, stop));
    EXPECT_EQ(told, QList<qint64>({0, 3}));
    EXPECT_TRUE(lastError().find("stopped") != std::string::npos) << lastError();
    EXPECT_EQ(rowText(*grid, 0), "- - -");
}

TEST_F(RasterAppendTest, FlagFalseFillsOnlyWhatIsEmpty)
{
    CDatasetRaster *grid = makeGrid({500000, 100, 500003, 101}, "Int16");
    ASSERT_TRUE(grid->Append(writeGrid("a.asc", 500000, 100, {{1, -1, 3}}), CRect2D())) << lastError();
    const QString other = writeGrid("b.asc", 500000, 100, {{7, 8, -1}});
    ASSERT_TRUE(grid->Append(other, CRect2D(), CDatasetRaster::AsciiGrid, false)) << lastError();
    EXPECT_EQ(rowText(*grid, 0), "1 8 3");
    ASSERT_TRUE(grid->Append(other, CRect2D(), CDatasetRaster::AsciiGrid, true)) << lastError();
    EXPECT_EQ(rowText(*grid, 0), "7 8 3");
}

TEST_F(RasterAppendTest, BoundsPlaceAndStretchAFile)
{
    CDatasetRaster *grid = makeGrid({500000, 100, 500004, 102});
    const QString file = writeGrid("a.asc", 0, 0, {{1, 2}});
    ASSERT_TRUE(grid->Append(file, {500000, 100, 500004, 102}, CDatasetRaster::AsciiGrid)) << lastError();
    EXPECT_EQ(rowText(*grid, 0), "1 1 2 2");
    EXPECT_EQ(rowText(*grid, 1), "1 1 2 2");
}

TEST_F(RasterAppendTest, ReprojectsBetweenCoordinateSystems)
{
    // At the central meridian of the zone the grid of degrees stands upright on that of metres.
    CDatasetRaster *grid = makeGrid({500000, 5000000, 500040, 5000040});
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

TEST_F(RasterAppendTest, RefusesWhatCannotBeDone)
{
    CDatasetRaster *grid = makeGrid({500000, 100, 500004, 103});
    const QString file = writeGrid("a.asc", 500000, 100, {{1, 2}});
    CDatasetRaster *source = openRaster(file);

    EXPECT_FALSE(grid->Append(nullptr));
    EXPECT_FALSE(source->Append(grid)) << "an ASCII grid cannot be changed";
    EXPECT_FALSE(grid->Append(path("missing.png"), CRect2D()));
    EXPECT_FALSE(grid->Append(file, CRect2D(), CDatasetRaster::JPEG)) << "it is none";
    EXPECT_FALSE(grid->Append(writeGrid("far.asc", 600000, 100, {{1}}), CRect2D())) << "they do not overlap";
    EXPECT_FALSE(grid->Append(writeGrid("empty.asc", 500000, 100, {{-1}}), CRect2D())) << "there is nothing to lay";

    ASSERT_TRUE(grid->GetDataSource()->BeginTrans());
    EXPECT_FALSE(grid->Append(source)) << "the transaction would lock it out";
    ASSERT_TRUE(grid->GetDataSource()->RollbackTrans());
    EXPECT_TRUE(grid->Append(source)) << lastError();

    source->Close();
    EXPECT_FALSE(grid->Append(source));
    grid->Close();
    EXPECT_FALSE(grid->Append(file, CRect2D()));
}

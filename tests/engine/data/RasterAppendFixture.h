#pragma once

#include "engine/data/DataFixture.h"

#include <QFile>

#include <gdal_priv.h>

#include <functional>

/// A test that makes rasters and lays one into another.
class RasterAppendFixture : public DataFixture
{
protected:
    static constexpr const char *utm32 = "EPSG:32632";

    /// What a raster file is to be.
    struct Image
    {
        QSize size;
        int bands = 1;
        GDALDataType type = GDT_Byte;
        std::function<double(int column, int row, int band)> value; ///< bands count from 1
        std::array<double, 6> place = {};                           ///< its geotransform; all 0 for none
        QStringList options = {};                                   ///< of the GeoTIFF driver
        std::function<void(GDALDataset &)> change = {};             ///< before the cells are written
    };

    /// Writes a GeoTIFF. @return its path
    QString writeTiff(const QString &name, const Image &image) const
    {
        GDALAllRegister();
        CPLStringList options;
        for (const QString &option : image.options)
            options.AddString(option.toUtf8());
        const int width = image.size.width(), height = image.size.height();
        const GDALDatasetUniquePtr file(GetGDALDriverManager()->GetDriverByName("GTiff")->Create(
            path(name).toUtf8(), width, height, image.bands, image.type, options.List()));
        std::array<double, 6> place = image.place;
        if (place[1] != 0)
            file->SetGeoTransform(place.data());
        if (image.change)
            image.change(*file);
        std::vector<double> row(static_cast<size_t>(width));
        for (int band = 1; band <= image.bands; ++band) {
            for (int y = 0; y < height; ++y) {
                for (int x = 0; x < width; ++x)
                    row[static_cast<size_t>(x)] = image.value(x, y, band);
                EXPECT_EQ(file->GetRasterBand(band)->RasterIO(GF_Write, 0, y, width, 1, row.data(), width, 1,
                                                              GDT_Float64, 0, 0, nullptr),
                          CE_None);
            }
        }
        return path(name);
    }

    /// Values without order, from 0 to 255, that no compression shortens.
    static double noise(int column, int row, int band)
    {
        quint32 value = quint32(column) * 2654435761u ^ quint32(row) * 2246822519u ^ quint32(band) * 3266489917u;
        value = (value ^ (value >> 15)) * 2246822519u;
        return double((value ^ (value >> 13)) & 255);
    }

    /// An open raster of cells of one unit without data, in a new database.
    CDatasetRaster *makeRaster(const CRect2D &bounds, const char *pixelFormat = "Float32",
                               CElemDatasetInfo::Type kind = CElemDatasetInfo::Grid, int bands = 1,
                               const char *system = utm32)
    {
        CTxDatasetDef def = rasterDefinition("Grid", bounds, pixelFormat);
        def.type = kind;
        def.bandCount = bands;
        def.coordSys = system;
        CTxDataSource *database = create();
        EXPECT_TRUE(database->CreateDataset(def)) << lastError();
        return raster(database, "Grid");
    }

    /// Writes an ASCII grid of 1 m cells whose lower left corner is (x, y); rows from the north; -1 is no data.
    QString writeGrid(const char *name, int x, int y, const QList<QList<int>> &rows) const
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
    static std::string rowText(const CDatasetRaster &raster, int row, int band = 1)
    {
        QStringList texts;
        const CRect2D bounds = raster.GetBounds();
        for (int column = 0; column < raster.GetSize().width(); ++column) {
            const auto value = raster.GetValue(bounds.left + column + 0.5, bounds.bottom + row + 0.5, band);
            texts.append(value ? QString::number(qRound(*value)) : "-");
        }
        return texts.join(u' ').toStdString();
    }
};

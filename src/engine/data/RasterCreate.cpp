#include "engine/data/NativeCatalogue.h"
#include "engine/data/TxDatasetMaker.h"
#include "engine/data/TxNewCoordSys.h"
#include "engine/data/TxRasterTable.h"
#include "engine/data/TxSchemaChange.h"

#include <gdal_priv.h>

#include <algorithm>
#include <array>

namespace {

/// A pixel format that a GeoPackage keeps without loss, and how.
struct FormatRow
{
    GDALDataType type;
    const char *tileFormat;
    int maximumBands;
    double noData; ///< of kinds other than images; NaN for none
};

constexpr std::array formatRows = {
    FormatRow{GDT_Byte, "PNG", 4, std::numeric_limits<double>::quiet_NaN()},
    FormatRow{GDT_Int16, "PNG", 1, -32768.0},
    FormatRow{GDT_UInt16, "PNG", 1, 65535.0},
    FormatRow{GDT_Float32, "TIFF", 1, -9999.0},
};

const FormatRow *findFormat(const QString &name)
{
    const GDALDataType type = GDALGetDataTypeByName(name.toUtf8().constData());
    const auto row =
        std::find_if(formatRows.begin(), formatRows.end(), [type](const FormatRow &r) { return r.type == type; });
    return row == formatRows.end() ? nullptr : &*row;
}

/// The bands that a raster is kept with. Images get an alpha band, so that places where nothing was drawn are seen
/// through: one and three bands become two and four.
int keptBands(const CTxDatasetDef &def)
{
    const bool needsAlpha = def.type == CElemDatasetInfo::Image && def.bandCount % 2 == 1;
    return def.bandCount + (needsAlpha ? 1 : 0);
}

QString refusal(const CTxDatasetDef &def, const FormatRow *format)
{
    constexpr int largestSide = 1 << 24;
    const QSize &size = def.rasterSize;
    if (size.width() < 1 || size.height() < 1 || size.width() > largestSide || size.height() > largestSide)
        return QStringLiteral("it has no usable size");
    if (def.rasterBounds.IsVoid() || !(def.rasterBounds.Width() > 0) || !(def.rasterBounds.Height() > 0) ||
        !qIsFinite(def.rasterBounds.Width()) || !qIsFinite(def.rasterBounds.Height()))
        return QStringLiteral("it has no usable bounds");
    if (!format)
        return QStringLiteral("cells can be kept as Byte, Int16, UInt16 and Float32, not as “%1”").arg(def.pixelFormat);
    if (def.type == CElemDatasetInfo::Image && format->type != GDT_Byte)
        return QStringLiteral("an image has bytes as cells");
    const int maximum = def.type == CElemDatasetInfo::Image ? format->maximumBands : 1;
    if (def.bandCount < 1 || def.bandCount > maximum)
        return QStringLiteral("it can have %1 bands, not %2").arg(maximum).arg(def.bandCount);
    return QString();
}

/// Makes the table through a connection of its own, as the driver wants it.
bool makeTable(const TxDataSourcePrivate &dataSource, const CTxDatasetDef &def, const FormatRow &format,
               TxNewCoordSys &coordSys, std::optional<double> noData)
{
    const QByteArray name = def.name.toUtf8();
    CPLStringList options;
    options.SetNameValue("APPEND_SUBDATASET", "YES");
    options.SetNameValue("RASTER_TABLE", name.constData());
    options.SetNameValue("TILE_FORMAT", format.tileFormat);
    TxGdal::DatasetPtr raster(dataSource.gdal->GetDriver()->Create(dataSource.path.toUtf8().constData(),
                                                                   def.rasterSize.width(), def.rasterSize.height(),
                                                                   keptBands(def), format.type, options.List()));
    if (!raster)
        return false;
    const CRect2D &bounds = def.rasterBounds;
    double transform[6] = {bounds.left, bounds.Width() / def.rasterSize.width(),   0.0, bounds.top,
                           0.0,         -bounds.Height() / def.rasterSize.height()};
    if (coordSys.reference() && raster->SetSpatialRef(coordSys.reference()) != CE_None)
        return false;
    if (raster->SetGeoTransform(transform) != CE_None)
        return false;
    GDALRasterBand &band = *raster->GetRasterBand(1);
    const auto keeps = [&band](double value) {
        // GDAL 3.6 keeps the value but answers a failure all the same; what the band says afterwards counts.
        const TxGdal::ErrorCollector quiet;
        band.SetNoDataValue(value);
        return band.GetNoDataValue() == value;
    };
    const bool hasNoData = !qIsNaN(format.noData);
    if (hasNoData && !(noData && keeps(*noData)) && !keeps(format.noData))
        return false;
    raster->FlushCache(false);
    return true; // what it could not write is reported
}

} // namespace

namespace TxDatasetMaker {

CTxDataset *makeRaster(TxDataSourcePrivate &dataSource, const CTxDatasetDef &def, std::optional<double> noData)
{
    const TxGdal::ErrorCollector errors;
    const QString failure = QStringLiteral("Cannot create the dataset “%1”").arg(def.name);
    CTxDatasetDef wanted = def;
    if (wanted.pixelFormat.isEmpty())
        wanted.pixelFormat = QStringLiteral("Byte");
    const FormatRow *format = findFormat(wanted.pixelFormat);
    QString reason = TxSchemaChange::refusal(dataSource);
    if (reason.isEmpty())
        reason = refusal(wanted, format);
    if (!reason.isEmpty()) {
        TxGdal::fail(failure + QStringLiteral(": ") + reason);
        return nullptr;
    }

    // Cells are written through a second connection, which our own unfinished reads would lock out.
    dataSource.endRecordsets();
    TxDatasetEntry entry;
    entry.name = wanted.name;
    entry.source = wanted.name.toUtf8();
    entry.type = wanted.type;
    entry.encType = wanted.encType;
    entry.options = wanted.options & (CTxDataset::Internal | CTxDataset::Temporary);
    entry.parent = wanted.parentDataset;
    entry.bands = keptBands(wanted);
    const bool isNative = dataSource.engineType == CTxDataSourceStorage::Native;
    const qint64 columns = TxNewCoordSys::columnCount(*dataSource.gdal);
    TxNewCoordSys coordSys;
    bool done = coordSys.read(wanted.coordSys) && makeTable(dataSource, wanted, *format, coordSys, noData) &&
                !coordSys.hasFailed(errors);
    if (TxNewCoordSys::columnCount(*dataSource.gdal) != columns) // the other connection has added some
        done = dataSource.reopen() && done;
    done = done && (!isNative || NativeCatalogue::addDataset(*dataSource.gdal, entry));
    if (!done) {
        errors.fail(failure);
        const TxGdal::ErrorCollector quiet; // there may be nothing to remove
        if (dataSource.gdal)
            TxRasterTable::remove(*dataSource.gdal, wanted.name);
        return nullptr;
    }
    CTxDataset *made = dataSource.addDataset(entry);
    if (!entry.parent.isEmpty())
        dataSource.attachChild(dataSource.find(entry.parent), made);
    return made;
}

} // namespace TxDatasetMaker

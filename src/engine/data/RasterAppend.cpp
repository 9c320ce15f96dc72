#include "engine/data/DatasetRaster.h"
#include "engine/data/TxRasterCheck.h"
#include "engine/data/TxRasterMosaic.h"
#include "engine/data/TxRasterPrivate.h"
#include "engine/data/TxRasterUpdate.h"
#include "engine/data/TxStoragePath.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

struct FileTypeRow
{
    CDatasetRaster::FileType type;
    const char *driver;
};

constexpr std::array fileTypes = {
    FileTypeRow{CDatasetRaster::TIFF, "GTiff"},        FileTypeRow{CDatasetRaster::PNG, "PNG"},
    FileTypeRow{CDatasetRaster::JPEG, "JPEG"},         FileTypeRow{CDatasetRaster::BMP, "BMP"},
    FileTypeRow{CDatasetRaster::AsciiGrid, "AAIGrid"},
};

/// The drivers that may open a file of @p type; all of them for AutoDetect.
QStringList driversOf(CDatasetRaster::FileType type)
{
    const auto row = std::find_if(fileTypes.begin(), fileTypes.end(),
                                  [type](const FileTypeRow &entry) { return entry.type == type; });
    return row == fileTypes.end() ? QStringList() : QStringList{QString::fromLatin1(row->driver)};
}

/// Why cells of @p dataset cannot be written; empty when they can.
QString refusal(const CDatasetRaster &dataset)
{
    const TxDataSourcePrivate &dataSource = TxDataSourcePrivate::of(*dataset.GetDataSource());
    if (!dataset.IsOpen())
        return QStringLiteral("“%1” is closed").arg(dataset.GetName());
    if (dataSource.isReadOnly() || (dataset.GetOptions() & CTxDataset::ReadOnly) != 0)
        return QStringLiteral("“%1” is read-only").arg(dataset.GetName());
    if (dataSource.transaction) // cells are written through a connection of their own, which it would lock out
        return QStringLiteral("Cells of “%1” cannot be written while a transaction is open").arg(dataset.GetName());
    return QString();
}

/// Why no image can be of @p type; empty when one can.
QString typeRefusal(CDatasetRaster::FileType type)
{
    const bool isKnown = type == CDatasetRaster::AutoDetect || !driversOf(type).isEmpty();
    return isKnown ? QString() : QStringLiteral("There is no image file type number %1").arg(type);
}

/// Why nothing can be laid into @p bounds; empty when it can.
QString boundsRefusal(const CRect2D &bounds)
{
    if (bounds == CRect2D())
        return QString();
    const bool isUsable = std::isfinite(bounds.left) && std::isfinite(bounds.bottom) && std::isfinite(bounds.right) &&
                          std::isfinite(bounds.top) && bounds.Width() > 0 && bounds.Height() > 0;
    return isUsable ? QString() : QStringLiteral("The bounds hold no area to lay an image into");
}

/// Opens the image @p path. @return null with the engine's last error set
TxGdal::DatasetPtr openImage(const QString &path, CDatasetRaster::FileType type)
{
    const TxGdal::ErrorCollector errors;
    const QString failure = QStringLiteral("The image “%1” ").arg(TxStoragePath::displayed(path));
    QString reason = path.isEmpty() ? QStringLiteral("has no name") : TxStoragePath::refusal(path);
    if (reason.isEmpty())
        reason = TxStoragePath::damage(path);
    if (!reason.isEmpty()) {
        TxGdal::fail(failure + reason);
        return nullptr;
    }
    TxGdal::DatasetPtr image = TxGdal::open(path.toUtf8(), GDAL_OF_RASTER, {}, driversOf(type));
    if (!image) {
        errors.fail(failure + QStringLiteral("cannot be opened"));
        return nullptr;
    }
    reason = TxRasterCheck::damage(*image, path);
    if (reason.isEmpty())
        return image;
    TxGdal::fail(failure + reason);
    return nullptr;
}

/// Lays @p source into the open dataset behind @p d, wholly or not at all.
bool append(TxRasterPrivate &d, GDALDataset &source, const TxRasterOrder &order, const TxProgress &progress)
{
    const TxGdal::ErrorCollector errors;
    d.dataSource().endRecordsets();
    qint64 reached = 0, whole = 0;
    const TxProgress watched = [&](qint64 done, qint64 total) {
        reached = done;
        whole = total;
        return !progress || progress(done, total);
    };
    // Asked before the first cell and behind the last one.
    const TxProgress atTheEnds = [&](qint64, qint64) { return !progress || progress(whole, whole > 0 ? whole : -1); };
    std::unique_ptr<TxRasterUpdate> update = TxRasterUpdate::begin(d, atTheEnds);
    const bool done = update && TxRasterMosaic::lay(update->raster(), source, order, watched) && update->commit();
    update.reset(); // takes back what was not kept
    if (!done) {
        const QString share = reached > 0
                                  ? QStringLiteral(" (it broke off after %1 % of the cells)").arg(100 * reached / whole)
                                  : QString();
        return errors.fail(
            QStringLiteral("Nothing was laid into “%1”, which is as it was%2").arg(d.q->GetName(), share));
    }
    d.contentChanged();
    if (!d.dataSource().isGeoPackage())
        d.dataSource().reopen(); // the file is another one
    d.gdal = d.openRaster(GDAL_OF_READONLY);
    return d.gdal || errors.fail(QStringLiteral("“%1” cannot be opened again").arg(d.q->GetName()));
}

} // namespace

bool CDatasetRaster::Append(CDatasetRaster *source, bool flag, const TxProgress &progress)
{
    if (!source || !source->IsOpen())
        return TxGdal::fail(QStringLiteral("There is no open raster to lay into “%1”").arg(GetName()));
    const QString reason = refusal(*this);
    if (!reason.isEmpty())
        return TxGdal::fail(reason);
    if (source == this)
        return true; // every cell is there already
    return append(*d, *source->d->gdal, {CRect2D(), GetType(), flag}, progress);
}

bool CDatasetRaster::Append(const QString &path, const CRect2D &bounds, FileType type, bool flag,
                            const TxProgress &progress)
{
    QString reason = refusal(*this);
    if (reason.isEmpty())
        reason = boundsRefusal(bounds);
    if (reason.isEmpty())
        reason = typeRefusal(type);
    if (!reason.isEmpty())
        return TxGdal::fail(reason);
    const TxGdal::DatasetPtr source = openImage(path, type);
    return source && append(*d, *source, {bounds, GetType(), flag}, progress);
}

#include "engine/data/DatasetRaster.h"
#include "engine/data/TxRasterMosaic.h"
#include "engine/data/TxRasterPrivate.h"

#include <algorithm>
#include <array>

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

/// Lays @p source into the open dataset behind @p d, which is opened for changes meanwhile.
bool append(TxRasterPrivate &d, GDALDataset &source, const CRect2D &bounds, bool replace, const TxProgress &progress)
{
    const TxGdal::ErrorCollector errors;
    const QString failure = QStringLiteral("Nothing was laid into “%1”").arg(d.q->GetName());
    d.dataSource().endRecordsets();
    TxGdal::DatasetPtr target = d.openRaster(GDAL_OF_UPDATE);
    bool done = target && TxRasterMosaic::lay(*target, source, bounds, replace, progress);
    target.reset(); // writes what is left, which may fail as well
    done = done && !errors.hasFailure();
    d.gdal = d.openRaster(GDAL_OF_READONLY);
    d.contentChanged();
    return (done && d.gdal) || errors.fail(failure);
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
    return append(*d, *source->d->gdal, CRect2D(), flag, progress);
}

bool CDatasetRaster::Append(const QString &path, const CRect2D &bounds, FileType type, bool flag,
                            const TxProgress &progress)
{
    const QString reason = refusal(*this);
    if (!reason.isEmpty())
        return TxGdal::fail(reason);
    const TxGdal::ErrorCollector errors;
    const TxGdal::DatasetPtr source = TxGdal::open(path.toUtf8(), GDAL_OF_RASTER, {}, driversOf(type));
    if (!source)
        return errors.fail(QStringLiteral("The image “%1” cannot be opened").arg(path));
    return append(*d, *source, bounds, flag, progress);
}

#include "engine/data/TxDatasetListing.h"

#include "engine/data/NativeCatalogue.h"
#include "engine/data/TxDatasetKind.h"

#include <ogrsf_frmts.h>

#include <QFileInfo>
#include <QHash>
#include <QSet>

#include <algorithm>
#include <array>
#include <optional>

namespace TxDatasetListing {

namespace {

constexpr char placeMark = '\x01'; // no layer's name begins with it

/// Gives names that nothing else in the list has.
class UniqueNames
{
public:
    QString take(const QString &proposal)
    {
        QString name = proposal;
        for (int number = 1; m_taken.contains(name); ++number)
            name = proposal + u'_' + QString::number(number);
        m_taken.insert(name);
        return name;
    }

private:
    QSet<QString> m_taken;
};

/// The kind of a layer whose driver does not tell a geometry type: that of its records if they are all of one. Drawings
/// stay CAD, databases are not read for this, and a layer of more than some thousand records stays CAD too.
CElemDatasetInfo::Type kindByRecords(OGRLayer &layer, const QByteArray &driver)
{
    constexpr std::array<const char *, 3> drivers = {"MapInfo File", "LIBKML", "KML"};
    constexpr int enough = 20000;
    if (std::none_of(drivers.begin(), drivers.end(), [&](const char *name) { return driver == name; }))
        return CElemDatasetInfo::CAD;
    std::optional<CElemDatasetInfo::Type> kind;
    int count = 0;
    layer.ResetReading();
    while (const OGRFeatureUniquePtr feature{layer.GetNextFeature()}) {
        const OGRGeometry *geometry = feature->GetGeometryRef();
        if (!geometry)
            continue;
        const CElemDatasetInfo::Type own = TxDatasetKind::ofGeometry(geometry->getGeometryType());
        if (kind.value_or(own) != own || ++count > enough) {
            kind = CElemDatasetInfo::CAD;
            break;
        }
        kind = own;
    }
    layer.ResetReading();
    return kind.value_or(CElemDatasetInfo::CAD);
}

void listLayers(GDALDataset &gdal, UniqueNames &names, std::vector<TxDatasetEntry> &entries)
{
    const QByteArray driver = gdal.GetDriverName();
    QSet<QByteArray> sources;
    const int count = gdal.GetLayerCount();
    entries.reserve(static_cast<size_t>(count));
    for (int index = 0; index < count; ++index) {
        OGRLayer *layer = gdal.GetLayer(index);
        if (!layer || gdal.IsLayerPrivate(index))
            continue;
        TxDatasetEntry entry;
        entry.source = layer->GetName();
        entry.name = names.take(QString::fromUtf8(entry.source));
        if (sources.contains(entry.source))
            entry.source = sourceByPlace(index);
        else
            sources.insert(entry.source);
        const OGRwkbGeometryType geometry = layer->GetGeomType();
        entry.type =
            wkbFlatten(geometry) == wkbUnknown ? kindByRecords(*layer, driver) : TxDatasetKind::ofGeometry(geometry);
        entries.push_back(std::move(entry));
    }
}

/// The rasters of a GeoPackage, from its table of contents: a raster's source is its table's name.
void listGeoPackageRasters(GDALDataset &gdal, UniqueNames &names, std::vector<TxDatasetEntry> &entries)
{
    OGRLayer *rows = gdal.ExecuteSQL("SELECT table_name, data_type FROM gpkg_contents WHERE data_type IN "
                                     "('tiles', '2d-gridded-coverage') ORDER BY rowid",
                                     nullptr, nullptr);
    if (!rows)
        return;
    for (const OGRFeatureUniquePtr &row : *rows) {
        TxDatasetEntry entry;
        entry.source = row->GetFieldAsString(0);
        entry.name = names.take(QString::fromUtf8(entry.source));
        entry.type = qstrcmp(row->GetFieldAsString(1), "tiles") == 0 ? CElemDatasetInfo::Image : CElemDatasetInfo::Grid;
        entries.push_back(std::move(entry));
    }
    gdal.ReleaseResultSet(rows);
}

bool isRaster(CElemDatasetInfo::Type type)
{
    return type >= CElemDatasetInfo::Image && type <= CElemDatasetInfo::ECW;
}

/// Adds what the catalogue of a native database says, and puts the datasets that it knows first, in its order.
void applyCatalogue(GDALDataset &gdal, std::vector<TxDatasetEntry> &entries)
{
    const QList<TxDatasetEntry> rows = NativeCatalogue::datasets(gdal);
    QHash<QByteArray, qsizetype> places;
    for (qsizetype place = 0; place < rows.size(); ++place)
        places.insert(rows.at(place).source, place);
    const auto placeOfEntry = [&](const TxDatasetEntry &entry) { return places.value(entry.source, rows.size()); };
    for (TxDatasetEntry &entry : entries) {
        const qsizetype place = placeOfEntry(entry);
        if (place == rows.size() || isRaster(rows.at(place).type) != isRaster(entry.type))
            continue;
        const TxDatasetEntry &row = rows.at(place);
        entry.type = row.type;
        entry.encType = row.encType;
        entry.options = row.options;
        entry.tileIndex = row.tileIndex;
        entry.parent = row.parent;
        entry.bands = row.bands;
    }
    std::stable_sort(entries.begin(), entries.end(), [&](const TxDatasetEntry &a, const TxDatasetEntry &b) {
        return placeOfEntry(a) < placeOfEntry(b);
    });
}

/// The encoding that a raster file says it has, of those that have a name here.
CElemDataEnc::encType encodingOf(GDALDataset &raster)
{
    struct Row
    {
        const char *compression;
        CElemDataEnc::encType encoding;
    };
    constexpr std::array rows = {
        Row{"LZW", CElemDataEnc::LZW},
        Row{"JPEG", CElemDataEnc::DCT},
        Row{"YCbCr JPEG", CElemDataEnc::DCT},
    };
    const char *compression = raster.GetMetadataItem("COMPRESSION", "IMAGE_STRUCTURE");
    const auto row = std::find_if(rows.begin(), rows.end(), [compression](const Row &entry) {
        return compression && qstricmp(entry.compression, compression) == 0;
    });
    return row == rows.end() ? CElemDataEnc::NONE : row->encoding;
}

/// The parts of a file that holds several rasters (netCDF, HDF …), else its one raster.
void listFileRasters(GDALDataset &gdal, const TxDataSourcePrivate &dataSource, UniqueNames &names,
                     std::vector<TxDatasetEntry> &entries)
{
    const QString base = QFileInfo(dataSource.path).completeBaseName();
    const auto add = [&](const QString &name, const QByteArray &source, CElemDatasetInfo::Type type) {
        TxDatasetEntry entry;
        entry.name = names.take(name);
        entry.source = source;
        entry.type = type;
        entries.push_back(std::move(entry));
    };
    if (gdal.GetRasterCount() > 0) {
        add(base, dataSource.gdalName, TxDatasetKind::ofRaster(gdal));
        entries.back().encType = encodingOf(gdal);
        return;
    }
    const char *const *parts = gdal.GetMetadata("SUBDATASETS");
    for (int number = 1;; ++number) {
        const char *source = CSLFetchNameValue(const_cast<char **>(parts), // the function does not write
                                               QByteArray("SUBDATASET_" + QByteArray::number(number) + "_NAME"));
        if (!source)
            break;
        const TxGdal::DatasetPtr part = TxGdal::open(source, GDAL_OF_RASTER);
        const QString name = QString::fromUtf8(source).section(u':', -1).remove(u'"');
        add(name.isEmpty() ? base : name, source, part ? TxDatasetKind::ofRaster(*part) : CElemDatasetInfo::Image);
    }
}

} // namespace

std::vector<TxDatasetEntry> list(const TxDataSourcePrivate &dataSource)
{
    std::vector<TxDatasetEntry> entries;
    if (!dataSource.gdal)
        return entries;
    UniqueNames names;
    listLayers(*dataSource.gdal, names, entries);
    if (dataSource.isGeoPackage())
        listGeoPackageRasters(*dataSource.gdal, names, entries);
    else
        listFileRasters(*dataSource.gdal, dataSource, names, entries);
    if (dataSource.engineType == CTxDataSourceStorage::Native)
        applyCatalogue(*dataSource.gdal, entries);
    return entries;
}

QByteArray sourceByPlace(int index)
{
    return placeMark + QByteArray::number(index);
}

int placeOf(const QByteArray &source)
{
    return source.startsWith(placeMark) ? source.mid(1).toInt() : -1;
}

} // namespace TxDatasetListing

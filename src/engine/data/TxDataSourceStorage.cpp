#include "engine/data/TxDataSourceStorage.h"

#include <algorithm>

const QList<CTxDataSourceStorage::Entry> &CTxDataSourceStorage::table()
{
    const auto list = [](const char *words) { return QString::fromLatin1(words).split(u' ', Qt::SkipEmptyParts); };
    const auto text = [](const char *words) { return QString::fromLatin1(words); };
    static const QList<Entry> rows = {
        // type, caption, drivers, extensions, isDatabase, canCreate
        {Native, text("Terravox database"), {QStringLiteral("GPKG")}, list("tdb"), false, true},
        {GeoPackage, text("GeoPackage"), {QStringLiteral("GPKG")}, list("gpkg"), false, true},
        {Shapefile, text("Shapefile"), {QStringLiteral("ESRI Shapefile")}, list("shp dbf shx shz"), false, true},
        {GeoJSON,
         text("GeoJSON"),
         {QStringLiteral("GeoJSON"), QStringLiteral("GeoJSONSeq"), QStringLiteral("TopoJSON"),
          QStringLiteral("ESRIJSON")},
         list("geojson json geojsonl topojson"),
         false,
         false},
        {MapInfo, text("MapInfo"), {QStringLiteral("MapInfo File")}, list("mif tab mid"), false, false},
        {DXF, text("DXF and DWG"), {QStringLiteral("DXF"), QStringLiteral("CAD")}, list("dxf dwg"), false, false},
        {DGN, text("DGN"), {QStringLiteral("DGN"), QStringLiteral("DGNv8")}, list("dgn"), false, false},
        {KML, text("KML"), {QStringLiteral("LIBKML"), QStringLiteral("KML")}, list("kml kmz"), false, false},
        {CSV, text("Delimited text"), {QStringLiteral("CSV")}, list("csv tsv"), false, false},
        {GML, text("GML"), {QStringLiteral("GML")}, list("gml"), false, false},
        {SQLite, text("SQLite"), {QStringLiteral("SQLite")}, list("sqlite db"), false, false},
        {FileGDB, text("File geodatabase"), {QStringLiteral("OpenFileGDB")}, list("gdb"), false, false},
        {E00, text("ArcInfo interchange"), {QStringLiteral("AVCE00")}, list("e00"), false, false},
        {VirtualVector, text("Virtual vector"), {QStringLiteral("OGR_VRT")}, list("ovf"), false, false},
        {PostgreSQL, text("PostgreSQL"), {QStringLiteral("PostgreSQL")}, {}, true, false},
        {ImageFile, text("Image or grid file"), {}, list("tif tiff jpg jpeg png asc vrt img bmp"), false, false},
        {OtherVector, text("Other vector file"), {}, {}, false, false},
    };
    return rows;
}

const CTxDataSourceStorage::Entry *CTxDataSourceStorage::find(Type type)
{
    const auto at =
        std::find_if(table().cbegin(), table().cend(), [type](const Entry &row) { return row.type == type; });
    return at == table().cend() ? nullptr : &*at;
}

CTxDataSourceStorage::Type CTxDataSourceStorage::typeOfDriver(const QString &driver, bool hasVector)
{
    // A native database is a GeoPackage that has our catalogue: the driver alone never says so.
    const auto at = std::find_if(table().cbegin(), table().cend(), [&driver](const Entry &row) {
        return row.type != Native && row.drivers.contains(driver, Qt::CaseInsensitive);
    });
    if (at != table().cend())
        return at->type;
    return hasVector ? OtherVector : ImageFile;
}

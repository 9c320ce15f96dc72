#include "engine/data/TxDatasetKind.h"

#include <gdal_priv.h>

#include <QByteArray>

#include <algorithm>
#include <array>

namespace TxDatasetKind {

namespace {

using Info = CElemDatasetInfo;

/// One geometry type (without its dimensions and "multi") and the kinds it makes.
struct GeometryRow
{
    OGRwkbGeometryType geometry;
    Info::Type flat;
    Info::Type withHeights;
    Info::Type withMeasures; // and without heights
};

constexpr std::array geometryRows = {
    GeometryRow{wkbNone, Info::Tabular, Info::Tabular, Info::Tabular},
    GeometryRow{wkbPoint, Info::Point, Info::Point3D, Info::Point},
    GeometryRow{wkbMultiPoint, Info::Point, Info::Point3D, Info::Point},
    GeometryRow{wkbLineString, Info::Line, Info::Line3D, Info::Route},
    GeometryRow{wkbMultiLineString, Info::Line, Info::Line3D, Info::Route},
    GeometryRow{wkbCircularString, Info::Line, Info::Line3D, Info::Route},
    GeometryRow{wkbCompoundCurve, Info::Line, Info::Line3D, Info::Route},
    GeometryRow{wkbMultiCurve, Info::Line, Info::Line3D, Info::Route},
    GeometryRow{wkbCurve, Info::Line, Info::Line3D, Info::Route},
    GeometryRow{wkbLinearRing, Info::Line, Info::Line3D, Info::Route},
    GeometryRow{wkbPolygon, Info::Region, Info::Region3D, Info::Region},
    GeometryRow{wkbMultiPolygon, Info::Region, Info::Region3D, Info::Region},
    GeometryRow{wkbCurvePolygon, Info::Region, Info::Region3D, Info::Region},
    GeometryRow{wkbMultiSurface, Info::Region, Info::Region3D, Info::Region},
    GeometryRow{wkbSurface, Info::Region, Info::Region3D, Info::Region},
    GeometryRow{wkbTriangle, Info::Region, Info::Region3D, Info::Region},
    GeometryRow{wkbPolyhedralSurface, Info::Region3D, Info::Region3D, Info::Region3D},
    GeometryRow{wkbTIN, Info::TIN, Info::TIN, Info::TIN},
};

/// One kind and the geometry type that its layer is made with.
struct KindRow
{
    Info::Type kind;
    OGRwkbGeometryType geometry;
};

constexpr std::array kindRows = {
    KindRow{Info::Tabular, wkbNone},
    KindRow{Info::Point, wkbPoint},
    KindRow{Info::Line, wkbMultiLineString},
    KindRow{Info::Network, wkbMultiLineString},
    KindRow{Info::Region, wkbMultiPolygon},
    KindRow{Info::Parcel, wkbMultiPolygon},
    KindRow{Info::Text, wkbPoint},
    KindRow{Info::Traverse, wkbMultiLineString},
    KindRow{Info::Route, wkbMultiLineStringM},
    KindRow{Info::Point3D, wkbPoint25D},
    KindRow{Info::Line3D, wkbMultiLineString25D},
    KindRow{Info::Region3D, wkbMultiPolygon25D},
    KindRow{Info::Text3D, wkbPoint25D},
    KindRow{Info::PointGL3D, wkbPoint25D},
    KindRow{Info::TIN, wkbTINZ},
    KindRow{Info::CAD, wkbUnknown},
};

/// Drivers whose rasters are of one kind whatever they hold.
struct DriverRow
{
    const char *driver;
    Info::Type kind;
};

constexpr std::array driverRows = {
    DriverRow{"MrSID", Info::MrSID}, DriverRow{"JP2MrSID", Info::MrSID}, DriverRow{"ECW", Info::ECW},
    DriverRow{"JP2ECW", Info::ECW},  DriverRow{"AAIGrid", Info::DEM},    DriverRow{"GRASSASCIIGrid", Info::DEM},
    DriverRow{"USGSDEM", Info::DEM}, DriverRow{"DTED", Info::DEM},       DriverRow{"SRTMHGT", Info::DEM},
    DriverRow{"GSAG", Info::DEM},    DriverRow{"GSBG", Info::DEM},       DriverRow{"GS7BG", Info::DEM},
    DriverRow{"SDTS", Info::DEM},
};

} // namespace

CElemDatasetInfo::Type ofGeometry(OGRwkbGeometryType type)
{
    const OGRwkbGeometryType flat = wkbFlatten(type);
    const auto row = std::find_if(geometryRows.begin(), geometryRows.end(),
                                  [flat](const GeometryRow &r) { return r.geometry == flat; });
    if (row == geometryRows.end())
        return Info::CAD;
    if (wkbHasZ(type))
        return row->withHeights;
    return wkbHasM(type) ? row->withMeasures : row->flat;
}

OGRwkbGeometryType geometryOf(CElemDatasetInfo::Type kind)
{
    const auto row =
        std::find_if(kindRows.begin(), kindRows.end(), [kind](const KindRow &r) { return r.kind == kind; });
    return row == kindRows.end() ? wkbUnknown : row->geometry;
}

CElemDatasetInfo::Type ofRaster(GDALDataset &raster)
{
    const char *driver = raster.GetDriver() ? raster.GetDriver()->GetDescription() : "";
    const auto row = std::find_if(driverRows.begin(), driverRows.end(),
                                  [driver](const DriverRow &r) { return qstricmp(r.driver, driver) == 0; });
    if (row != driverRows.end())
        return row->kind;
    if (raster.GetRasterCount() != 1)
        return Info::Image;
    GDALRasterBand &band = *raster.GetRasterBand(1);
    const bool isPicture = band.GetRasterDataType() == GDT_Byte || GDALDataTypeIsComplex(band.GetRasterDataType()) ||
                           band.GetColorTable() != nullptr;
    return isPicture ? Info::Image : Info::Grid;
}

} // namespace TxDatasetKind

#include "SampleTable.h"

namespace {

constexpr const char *wgs84 = "EPSG:4326";
constexpr const char *utm10n = "EPSG:32610";
constexpr const char *utm16n = "EPSG:32616";

constexpr VectorSample vectors[] = {
    {"Countries", CElemDatasetInfo::Region, "world/Countries.geojson", wgs84, nullptr, false},
    {"Rivers", CElemDatasetInfo::Line, "world/Rivers.geojson", wgs84, nullptr, false},
    {"Graticule", CElemDatasetInfo::Line, "world/Graticule.geojson", wgs84, nullptr, false},
    {"LargeCities", CElemDatasetInfo::Point, "world/LargeCities.geojson", wgs84, nullptr, false},
    {"TimeZoneCities", CElemDatasetInfo::Point, "world/TimeZoneCities.geojson", wgs84, nullptr, false},
    {"CountryCodes", CElemDatasetInfo::Tabular, "world/CountryCodes.csv", nullptr, nullptr, false},
    {"Currencies", CElemDatasetInfo::Tabular, "world/Currencies.csv", nullptr, nullptr, false},
    {"Land", CElemDatasetInfo::Region, "region/Land.geojson", utm10n, nullptr, false},
    {"Lakes", CElemDatasetInfo::Region, "region/Lakes.geojson", utm10n, nullptr, false},
    {"Coast", CElemDatasetInfo::Line, "region/Coast.geojson", utm10n, nullptr, false},
    {"Stations", CElemDatasetInfo::Point, "region/Stations.geojson", utm10n, nullptr, false},
    {"StationAreas", CElemDatasetInfo::Parcel, "region/StationAreas.geojson", utm10n, nullptr, false},
    {"Labels", CElemDatasetInfo::Text, "region/Labels.geojson", utm10n, nullptr, false},
    {"Chart", CElemDatasetInfo::CAD, "region/Chart.geojson", utm10n, nullptr, false},
    {"SheetLand", CElemDatasetInfo::Region, "region/SheetLand.geojson", utm10n, "SheetIndex", false},
    {"SheetIndex", CElemDatasetInfo::Region, "region/SheetIndex.geojson", utm10n, nullptr, true},
    {"Ferries", CElemDatasetInfo::Network, "ferries/Crossings.geojson", utm10n, nullptr, false},
    {"Ferries_Node", CElemDatasetInfo::Point, "ferries/Terminals.geojson", utm10n, nullptr, true},
    {"FerryTracks", CElemDatasetInfo::Route, "ferries/Tracks.csv", utm10n, nullptr, false},
    {"Summits3D", CElemDatasetInfo::Point3D, "terrain/Summits3D.geojson", utm16n, nullptr, false},
    {"SummitLabels3D", CElemDatasetInfo::Text3D, "terrain/SummitLabels3D.geojson", utm16n, nullptr, false},
    {"Contours3D", CElemDatasetInfo::Line3D, "terrain/Contours3D.geojson", utm16n, nullptr, false},
    {"Steps3D", CElemDatasetInfo::Region3D, "terrain/Steps3D.geojson", utm16n, nullptr, false},
    {"Surface", CElemDatasetInfo::TIN, "terrain/Tin.geojson", utm16n, nullptr, false},
};

constexpr RasterSample rasters[] = {
    {"TerrainShade", CElemDatasetInfo::Image, "terrain/JacksboroShade.png", "Byte"},
    {"Relief", CElemDatasetInfo::Grid, "region/Relief.tif", "Float32"},
    {"Terrain", CElemDatasetInfo::DEM, "terrain/Jacksboro.asc", "Int16"},
};

constexpr SourceSample sources[] = {
    {"Shapes", "source/formats/shapes"},
    {"World", "source/formats/world.gpkg"},
    {"Earth", "source/world/Earth.jpg"},
    {"ReliefGrid", "source/region/Relief.tif"},
    {"ReliefPicture", "source/region/ReliefPicture.jpg"},
    {"Jacksboro", "source/terrain/Jacksboro.asc"},
    {"GulfIslands", "source/formats/gulf_islands.dxf"},
    {"CoastDrawing", "source/formats/coast.dgn"},
    {"Terminals", "source/formats/terminals.kml"},
    {"Areas", "source/formats/areas.mif"},
    {"LargeCities", "source/formats/large_cities.csv"},
    {"Strait", "source/formats/strait.vrt"},
};

} // namespace

std::span<const VectorSample> vectorSamples()
{
    return vectors;
}

std::span<const RasterSample> rasterSamples()
{
    return rasters;
}

std::span<const SourceSample> sourceSamples()
{
    return sources;
}

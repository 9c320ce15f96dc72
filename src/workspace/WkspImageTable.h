#pragma once

#include "workspace/WkspImageList.h"

#include <array>

/// The icons of workspace items, in the order of their indices: what they stand for, and where their picture is.
struct WkspImageRow
{
    int index; ///< the same as the row's place
    CTdWkspImageList::ImageType type;
    const char *file; ///< name of the picture below wkspImageFolder
};

/// Where the pictures are, among the resources of the library or of a module that the host puts in front of it.
inline constexpr const char wkspImageFolder[] = "icons/workspace/";

// Do not change the order: hosts know the indices.
inline constexpr std::array<WkspImageRow, CTdWkspImageList::imageCount> wkspImageTable{{
    {0, CTdWkspImageList::ImageWorkspace, "00-workspace.svg"},
    {1, CTdWkspImageList::ImageDataSources, "01-datasources.svg"},
    {2, CTdWkspImageList::ImageDatabase, "02-datasource-database.svg"},
    {3, CTdWkspImageList::ImageFile, "03-datasource-file.svg"},
    {4, CTdWkspImageList::ImageMaps, "04-maps.svg"},
    {5, CTdWkspImageList::ImageMap, "05-map.svg"},
    {6, CTdWkspImageList::ImageLayouts, "06-layouts.svg"},
    {7, CTdWkspImageList::ImageLayout, "07-layout.svg"},
    {8, CTdWkspImageList::ImageScenes, "08-scenes.svg"},
    {9, CTdWkspImageList::ImageScene, "09-scene.svg"},
    {10, CTdWkspImageList::ImageResources, "10-resources.svg"},
    {11, CTdWkspImageList::ImageSymbolLibrary, "11-symbol-library.svg"},
    {12, CTdWkspImageList::ImageLineLibrary, "12-line-library.svg"},
    {13, CTdWkspImageList::ImageFillLibrary, "13-fill-library.svg"},
    {14, CTdWkspImageList::ImageType(14), "14-reserved-circle.svg"},
    {15, CTdWkspImageList::ImageType(15), "15-reserved-square.svg"},
    {16, CTdWkspImageList::ImageType(16), "16-reserved-triangle.svg"},
    {17, CTdWkspImageList::ImageType(17), "17-reserved-diamond.svg"},
    {18, CTdWkspImageList::ImageType(18), "18-reserved-dots.svg"},
    {19, CTdWkspImageList::ImageType(19), "19-reserved-bars.svg"},
    {20, CTdWkspImageList::ImageType(20), "20-reserved-chevron.svg"},
    {21, CTdWkspImageList::ImageDatabaseTransaction, "21-datasource-database-transaction.svg"},
    {22, CTdWkspImageList::ImageDatabaseNoTransaction, "22-datasource-database-no-transaction.svg"},
    {23, CTdWkspImageList::ImageFileTransaction, "23-datasource-file-transaction.svg"},
    {24, CTdWkspImageList::ImageFileNoTransaction, "24-datasource-file-no-transaction.svg"},
    {25, CTdWkspImageList::ImagePointOpen, "25-point-open.svg"},
    {26, CTdWkspImageList::ImagePointClosed, "26-point-closed.svg"},
    {27, CTdWkspImageList::ImageLineOpen, "27-line-open.svg"},
    {28, CTdWkspImageList::ImageLineClosed, "28-line-closed.svg"},
    {29, CTdWkspImageList::ImageNetworkOpen, "29-network-open.svg"},
    {30, CTdWkspImageList::ImageNetworkClosed, "30-network-closed.svg"},
    {31, CTdWkspImageList::ImageRegionOpen, "31-region-open.svg"},
    {32, CTdWkspImageList::ImageRegionClosed, "32-region-closed.svg"},
    {33, CTdWkspImageList::ImageTextOpen, "33-text-open.svg"},
    {34, CTdWkspImageList::ImageTextClosed, "34-text-closed.svg"},
    {35, CTdWkspImageList::ImageCadOpen, "35-cad-open.svg"},
    {36, CTdWkspImageList::ImageCadClosed, "36-cad-closed.svg"},
    {37, CTdWkspImageList::ImageRouteOpen, "37-route-open.svg"},
    {38, CTdWkspImageList::ImageRouteClosed, "38-route-closed.svg"},
    {39, CTdWkspImageList::ImageTinOpen, "39-tin-open.svg"},
    {40, CTdWkspImageList::ImageTinClosed, "40-tin-closed.svg"},
    {41, CTdWkspImageList::ImagePoint3DOpen, "41-point-3d-open.svg"},
    {42, CTdWkspImageList::ImagePoint3DClosed, "42-point-3d-closed.svg"},
    {43, CTdWkspImageList::ImageLine3DOpen, "43-line-3d-open.svg"},
    {44, CTdWkspImageList::ImageLine3DClosed, "44-line-3d-closed.svg"},
    {45, CTdWkspImageList::ImageRegion3DOpen, "45-region-3d-open.svg"},
    {46, CTdWkspImageList::ImageRegion3DClosed, "46-region-3d-closed.svg"},
    {47, CTdWkspImageList::ImageText3DOpen, "47-text-3d-open.svg"},
    {48, CTdWkspImageList::ImageText3DClosed, "48-text-3d-closed.svg"},
    {49, CTdWkspImageList::ImageTabular, "49-tabular.svg"},
    {50, CTdWkspImageList::ImageImage, "50-image.svg"},
    {51, CTdWkspImageList::ImageMrSid, "51-mrsid.svg"},
    {52, CTdWkspImageList::ImageGrid, "52-grid.svg"},
    {53, CTdWkspImageList::ImageDem, "53-dem.svg"},
    {54, CTdWkspImageList::ImageEcw, "54-ecw.svg"},
    {55, CTdWkspImageList::ImageUnknown, "55-unknown-type.svg"},
}};

/// What stands for a dataset type: two icons, the same one twice where open and closed look alike.
struct WkspDatasetImageRow
{
    CElemDatasetInfo::Type datasetType;
    CTdWkspImageList::ImageType open;
    CTdWkspImageList::ImageType closed;
};

// Parcel, traverse and 3D GL points are not here: they show the icon of an unknown type.
inline constexpr std::array<WkspDatasetImageRow, 18> wkspDatasetImageTable{{
    {CElemDatasetInfo::Tabular, CTdWkspImageList::ImageTabular, CTdWkspImageList::ImageTabular},
    {CElemDatasetInfo::Point, CTdWkspImageList::ImagePointOpen, CTdWkspImageList::ImagePointClosed},
    {CElemDatasetInfo::Line, CTdWkspImageList::ImageLineOpen, CTdWkspImageList::ImageLineClosed},
    {CElemDatasetInfo::Network, CTdWkspImageList::ImageNetworkOpen, CTdWkspImageList::ImageNetworkClosed},
    {CElemDatasetInfo::Region, CTdWkspImageList::ImageRegionOpen, CTdWkspImageList::ImageRegionClosed},
    {CElemDatasetInfo::Text, CTdWkspImageList::ImageTextOpen, CTdWkspImageList::ImageTextClosed},
    {CElemDatasetInfo::Route, CTdWkspImageList::ImageRouteOpen, CTdWkspImageList::ImageRouteClosed},
    {CElemDatasetInfo::Image, CTdWkspImageList::ImageImage, CTdWkspImageList::ImageImage},
    {CElemDatasetInfo::MrSID, CTdWkspImageList::ImageMrSid, CTdWkspImageList::ImageMrSid},
    {CElemDatasetInfo::Grid, CTdWkspImageList::ImageGrid, CTdWkspImageList::ImageGrid},
    {CElemDatasetInfo::DEM, CTdWkspImageList::ImageDem, CTdWkspImageList::ImageDem},
    {CElemDatasetInfo::ECW, CTdWkspImageList::ImageEcw, CTdWkspImageList::ImageEcw},
    {CElemDatasetInfo::Point3D, CTdWkspImageList::ImagePoint3DOpen, CTdWkspImageList::ImagePoint3DClosed},
    {CElemDatasetInfo::Line3D, CTdWkspImageList::ImageLine3DOpen, CTdWkspImageList::ImageLine3DClosed},
    {CElemDatasetInfo::Region3D, CTdWkspImageList::ImageRegion3DOpen, CTdWkspImageList::ImageRegion3DClosed},
    {CElemDatasetInfo::Text3D, CTdWkspImageList::ImageText3DOpen, CTdWkspImageList::ImageText3DClosed},
    {CElemDatasetInfo::TIN, CTdWkspImageList::ImageTinOpen, CTdWkspImageList::ImageTinClosed},
    {CElemDatasetInfo::CAD, CTdWkspImageList::ImageCadOpen, CTdWkspImageList::ImageCadClosed},
}};

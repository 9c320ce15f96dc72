#pragma once

#include <QtGlobal>

/// Kinds of datasets.
struct CElemDatasetInfo
{
    /// The kind's code, as files and callers know it. Do not change the values.
    enum Type : qint32 {
        Tabular = 0,
        Point = 1,
        Line = 3,
        Network = 4,
        Region = 5,
        Parcel = 6,
        Text = 7,
        Traverse = 33,
        Route = 35,
        Image = 81,
        MrSID = 82,
        Grid = 83,
        DEM = 84,
        ECW = 85,
        Point3D = 101,
        Line3D = 103,
        Region3D = 105,
        Text3D = 107,
        PointGL3D = 137,
        TIN = 139,
        CAD = 149
    };
};

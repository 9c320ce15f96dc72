#pragma once

#include "engine/data/ElemDatasetInfo.h"

#include <span>

/// A vector dataset of the sample database and where its records come from.
struct VectorSample
{
    const char *name;
    CElemDatasetInfo::Type type;
    const char *source;    ///< file below samples/source
    const char *coordSys;  ///< what CTxDatasetDef::coordSys takes; null for none
    const char *tileIndex; ///< the tile index of a library dataset; null for others
    bool isCompanion;      ///< the engine made it along with a dataset above: the nodes of a network, a tile index
};

/// A raster dataset of the sample database and the file whose cells it takes.
struct RasterSample
{
    const char *name;
    CElemDatasetInfo::Type type;
    const char *source;      ///< file below samples/source
    const char *pixelFormat; ///< "" for that of the source
};

/// A datasource of the sample workspace beside the database, opened read-only.
struct SourceSample
{
    const char *alias;
    const char *path; ///< below samples/
};

/// The vector datasets, companions behind the dataset that brings them.
std::span<const VectorSample> vectorSamples();
/// The raster datasets.
std::span<const RasterSample> rasterSamples();
/// The other datasources of the workspace.
std::span<const SourceSample> sourceSamples();

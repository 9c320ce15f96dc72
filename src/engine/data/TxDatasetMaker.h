#pragma once

#include "engine/data/TxDataSourcePrivate.h"

#include <optional>

class CDatasetRaster;

/// Makes datasets in a storage. A private header.
namespace TxDatasetMaker {

/// What field names a new dataset may have.
enum class FieldNames {
    Checked,  ///< those that CDatasetVector::IsAvailableFieldName would allow
    AsTheyAre ///< whatever the storage takes: of a template, whose values are copied by name
};

/// Makes what @p def describes, whole or not at all. @return the dataset, closed; null with the engine's last error
/// set.
/// @param[in] noData the value that means "no data" in a grid, if the storage can keep it; else one of its own
CTxDataset *make(TxDataSourcePrivate &dataSource, const CTxDatasetDef &def, FieldNames names,
                 std::optional<double> noData = std::nullopt);

/// The nodes that a new network was given by itself, if a dataset of the definition @p def shall take their place: they
/// are empty, and the new dataset is one of points with the network as its parent. Null when there are none.
CTxDataset *replacedNodes(const TxDataSourcePrivate &dataSource, const CTxDatasetDef &def);

/// Makes layers; @p def was checked but for its fields. (VectorCreate.cpp)
CTxDataset *makeVector(TxDataSourcePrivate &dataSource, const CTxDatasetDef &def, FieldNames names);

/// Makes a raster; @p def was checked but for size and cells. (RasterCreate.cpp)
CTxDataset *makeRaster(TxDataSourcePrivate &dataSource, const CTxDatasetDef &def, std::optional<double> noData);

/// Describes in @p def a raster like @p source, as a GeoPackage (a native database where @p isNative) can hold it.
/// @param[out] noData the value that means "no data" in @p source
/// @return why there is none, in words that follow the name of @p source; empty on success. (RasterTemplate.cpp)
QString describeRaster(const CDatasetRaster &source, bool isNative, CTxDatasetDef &def, std::optional<double> &noData);

/// Deletes what the storage holds of @p dataset, within the change that is under way. (DatasetDelete.cpp)
bool removeStored(const TxDataSourcePrivate &dataSource, const CTxDataset &dataset);

} // namespace TxDatasetMaker

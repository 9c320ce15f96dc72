#pragma once

#include "engine/data/TxCursor.h"
#include "engine/data/TxQueryPlan.h"

/// The three ways to walk over records, one for each kind of storage. A private header.
namespace TxCursors {

/// By a statement of our own on the driver's SQLite connection: GeoPackages and native databases. It sees what the
/// driver wrote, values are read without an OGR feature between, and any number of them run side by side.
/// @return null when the dataset has no identifier column or the statement is refused (@p refused tells which).
std::unique_ptr<TxCursor> makeSqlite(TxVectorPrivate &vector, const TxQueryPlan &plan, bool &refused);

/// By the reading position of the dataset's OGR layer, which the walks of that layer share; whichever moves takes it
/// over and finds its place again. For plain queries. @return null when the condition is refused.
std::unique_ptr<TxCursor> makeLayer(TxVectorPrivate &vector, const TxQueryPlan &plan);

/// By an SQL result of the driver (database servers) or of GDAL's SQLite dialect over a GDAL dataset of its own.
/// @return null when the statement is refused.
std::unique_ptr<TxCursor> makeResult(TxVectorPrivate &vector, const TxQueryPlan &plan);

} // namespace TxCursors

#pragma once

#include <QString>

#include <functional>

/// What datasets and fields may be called. A private header.
namespace TxNameRules {

constexpr int maximumLength = 63; // what PostgreSQL keeps; the others keep more

/// True for a name of 1 to 63 characters, a letter or underscore first, then letters (of any script), digits and
/// underscores.
bool isIdentifier(const QString &name);
/// True for an identifier without a prefix that a storage keeps for itself ("gpkg_", "sqlite_", "rtree_", "tdb_").
bool isDatasetName(const QString &name);
/// True for an identifier that is no word reserved by SQL.
bool isFieldName(const QString &name);
/// @p proposal made a dataset name: what is not allowed becomes "_", and what is too long is cut.
QString madeDatasetName(const QString &proposal);
/// @p base if it @p isFree, else the first free one of "base_1", "base_2" … (cut to be short enough).
QString firstFree(const QString &base, const std::function<bool(const QString &)> &isFree);

} // namespace TxNameRules

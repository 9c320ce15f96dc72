#pragma once

#include "engine/data/TxDataSourcePrivate.h"
#include "engine/data/TxFieldInfo.h"

#include <QHash>
#include <QList>

class GDALDataset;

/// The catalogue of the native database: what its GeoPackage tables alone do not say. docs/tdb-format.md describes the
/// tables. A private header.
///
/// The catalogue adds to what the file holds and never contradicts it: a row without its table is passed over, a table
/// without its row (another program's) is a dataset of the kind that its geometry says. All functions work on the
/// connection of the GDAL dataset that they are given and within its transaction, if there is one; what they cannot do
/// they report to the error collectors.
namespace NativeCatalogue {

/// True when the storage has a catalogue of the version that this engine writes.
bool exists(GDALDataset &storage);
/// Makes the tables of an empty catalogue.
bool create(GDALDataset &storage);

/// Every dataset whose table exists, in the order in which they were made. Tables are called as the datasets.
QList<TxDatasetEntry> datasets(GDALDataset &storage);
/// Adds a dataset.
bool addDataset(GDALDataset &storage, const TxDatasetEntry &entry);
/// Takes a dataset and its fields out of the catalogue; children and tiles stay.
bool removeDataset(GDALDataset &storage, const QString &name);
/// Gives a dataset another name wherever the catalogue mentions it.
bool renameDataset(GDALDataset &storage, const QString &name, const QString &newName);

/// What was noted of the fields of @p dataset, by lower-case field name.
QHash<QString, CTxFieldInfo> fields(GDALDataset &storage, const QString &dataset);
/// Notes the fields @p infos of @p dataset.
bool addFields(GDALDataset &storage, const QString &dataset, const CTxFieldInfos &infos);

} // namespace NativeCatalogue

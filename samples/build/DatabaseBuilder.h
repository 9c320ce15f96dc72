#pragma once

#include "engine/data/TxDataSources.h"

class CDatasetVector;
class CTxRecordset;
struct RasterSample;
struct VectorSample;

/// Builds the native sample database from the files below samples/source.
class DatabaseBuilder
{
public:
    /// @p folder is samples/.
    explicit DatabaseBuilder(const QString &folder) : m_folder(folder) {}

    /// Makes @p path anew with every dataset of the tables. @return false with error() set when something failed.
    bool build(const QString &path);
    /// What went wrong, for people.
    const QString &error() const { return m_error; }

private:
    bool addVector(const VectorSample &sample);
    CDatasetVector *makeVector(const VectorSample &sample, const CDatasetVector &source);
    bool addRaster(const RasterSample &sample);
    bool copyRecords(CDatasetVector &source, CDatasetVector &target, const VectorSample &sample);
    bool copyRecord(CTxRecordset &from, CTxRecordset &to, const VectorSample &sample);
    CTxDataSource *openSource(const char *path);
    bool fail(const QString &where);

    const QString m_folder;
    CTxDataSources m_sources;
    CTxDataSource *m_database = nullptr; // m_sources'
    QString m_error;
};

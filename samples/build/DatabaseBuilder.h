#pragma once

#include <QString>

#include <memory>

class CDatasetVector;
class CElemGeometry;
class CTxDataSource;
class CTxRecordset;
class CTxWorkspace;
struct RasterSample;
struct VectorSample;

/// Builds the native sample database from the files below samples/source.
class DatabaseBuilder
{
public:
    /// @p folder is samples/; the sources are opened in a workspace of the builder's own.
    explicit DatabaseBuilder(const QString &folder);
    ~DatabaseBuilder();

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
    const std::unique_ptr<CTxWorkspace> m_workspace;
    CTxDataSource *m_database = nullptr; // the workspace's
    QString m_error;
};

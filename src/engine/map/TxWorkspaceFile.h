#pragma once

#include "engine/map/TxWorkspacePrivate.h"

/// Between a workspace and its file: takes a workspace's state as a document, builds it from one, stores bytes safely.
class TxWorkspaceFile
{
public:
    /// The state of @p workspace as a file at @p path (empty while there is none) would hold it.
    static TxWorkspaceDocument snapshot(const CTxWorkspace &workspace, const QString &path);
    /// Fills the empty @p workspace from @p document, which was read from @p path.
    static void build(CTxWorkspace &workspace, const TxWorkspaceDocument &document, const QString &path);
    /// Reads the file @p path. @return nothing on failure, with the reason in @p error.
    static std::optional<TxWorkspaceDocument> load(const QString &path, QString &error);
    /// Puts @p bytes into the file @p path. The file is replaced only by a complete new one; a symbolic link stays and
    /// its target is replaced. @return false on failure, with the reason in @p error and the old file whole.
    static bool store(const QString &path, const QByteArray &bytes, QString &error);

private:
    static TxDataSourceRecord toRecord(const CTxDataSource &dataSource, const TxWorkspacePrivate::FileEntry *entry,
                                       const QString &folder);
    static QList<TxDataSourceRecord> dataSourceRecords(const TxWorkspacePrivate &workspace, const QString &folder);
    static TxMapRecord toRecord(const CTxMap &map);
    static void buildMap(CTxMap &map, const TxMapRecord &record, const CTxDataSources &dataSources);
};

#pragma once

#include "engine/map/TxWorkspace.h"
#include "engine/map/TxWorkspaceDocument.h"

#include <optional>

/// The inside of CTxWorkspace.
class TxWorkspacePrivate
{
public:
    /// A datasource that the workspace file named, in the file's order.
    struct FileEntry
    {
        TxDataSourceRecord record;                 ///< as it was in the file, but with the path made absolute
        const CTxDataSource *dataSource = nullptr; ///< null while it is missing; compared, never followed
        QString reason;                            ///< why it is missing
    };

    QString name;
    QString path;
    CTxDataSources dataSources; // before the maps, whose layers look into it
    CTxMaps maps;
    CTxLytStorages layouts;
    CTxScenes scenes;

    QList<FileEntry> fileEntries;
    QString unknown; ///< what the file's root held that this version does not know
    /// What saving wrote or would have written last; nothing when the file holds something else.
    std::optional<TxWorkspaceDocument> saved;
    mutable QList<TxMissingDataSource> missing;
};

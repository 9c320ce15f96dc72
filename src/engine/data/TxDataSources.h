#pragma once

#include "engine/base/TxExport.h"
#include "engine/base/TxNamedMap.h"
#include "engine/data/TxDataSource.h"

/// The open datasources of a workspace by alias, walked in the order in which they were opened.
class TX_EXPORT CTxDataSources : public TxNamedMap<CTxDataSource>
{
public:
    CTxDataSources() = default;
    ~CTxDataSources();

    /// Opens @p path (a file, a folder, or a connection string such as "PG:dbname=…") under @p alias.
    ///
    /// An empty alias is made from the path's name and made unique. @p options are flags of CTxDataSource::OpenOption.
    /// A storage that cannot be written is opened read-only. @return the datasource; null when the alias is taken or
    /// the storage is missing, locked, corrupt, empty or of no known kind (see TxGetErrorMsgObj()).
    CTxDataSource *Open(const QString &path, const QString &alias = QString(), quint32 options = CTxDataSource::Normal);
    /// Makes a new datasource of a kind that can be created, and opens it. An existing file is never overwritten.
    CTxDataSource *Create(const QString &path, const QString &alias, CTxDataSourceStorage::Type type);
    /// Closes the datasource called @p alias; a transaction that is open is taken back. @return false when none.
    bool Close(const QString &alias);
    /// Closes all of them.
    void CloseAll();
    /// Gives a datasource another alias. @return false when there is none, or the new alias is empty or taken.
    bool Rename(const QString &alias, const QString &newAlias);
    /// A free alias made from @p proposal ("_1", "_2" … is added where it is taken).
    QString GetUnoccupiedAlias(const QString &proposal) const;
};

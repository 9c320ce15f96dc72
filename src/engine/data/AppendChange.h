#pragma once

#include "engine/data/TxSchemaChange.h"
#include "engine/data/TxVectorPrivate.h"

#include <memory>
#include <optional>

class ShapefileKeeper;

/// The adding of many records to one dataset, whole or not at all. A private header.
///
/// Storages that know transactions get one, or within an edit transaction that the user has open a savepoint of it.
/// A shapefile's files are remembered. What is not committed when this object goes is taken back; every recordset of
/// the datasource is at its end then, as after CTxDataSource::RollbackTrans().
class AppendChange
{
public:
    /// @param changesFields  fields will be added too; not within a transaction of the user's
    AppendChange(TxVectorPrivate &target, bool changesFields);
    ~AppendChange();
    AppendChange(const AppendChange &) = delete;
    AppendChange &operator=(const AppendChange &) = delete;

    bool isOpen() const { return m_state == State::Open; }
    /// To be called before a text is written that makes the storage widen its field. @return false when what is there
    /// cannot be kept
    bool beforeWidening();
    /// Makes the records last. @return false when they do not arrive.
    bool commit();
    /// Takes everything back. @return false when something could not be
    bool takeBack();

private:
    enum class State { Open, Failed, Done };

    bool openSavepoint();
    bool takeBackSavepoint();
    bool takeBackFiles();
    bool executeSql(const QString &sql) const;

    TxVectorPrivate &m_target;
    TxDataSourcePrivate &m_dataSource;
    std::optional<TxSchemaChange> m_transaction; // null within one of the user's
    std::unique_ptr<ShapefileKeeper> m_files;
    bool m_savepoint = false;
    CRect2D m_boundsBefore; // within a transaction of the user's, which the driver outlives with wrong ones
    State m_state = State::Failed;
};

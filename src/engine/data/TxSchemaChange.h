#pragma once

#include "engine/data/TxDataSourcePrivate.h"

/// A change of a storage's structure (tables, columns), whole or not at all. A private header.
///
/// Storages that know transactions get one; a change that is not committed is taken back when this object goes, and the
/// storage is opened anew, since the driver's memory then tells of what is no more. Storages without transactions take
/// every step at once: who changes them undoes by hand.
class TxSchemaChange
{
public:
    explicit TxSchemaChange(TxDataSourcePrivate &dataSource);
    ~TxSchemaChange();
    TxSchemaChange(const TxSchemaChange &) = delete;
    TxSchemaChange &operator=(const TxSchemaChange &) = delete;

    /// Why the structure of the storage cannot be changed now; empty when it can.
    static QString refusal(TxDataSourcePrivate &dataSource);

    /// True when the change can go on.
    bool isOpen() const { return m_state != State::Failed; }
    /// True when the storage takes uncommitted changes back by itself.
    bool undoesItself() const { return m_state == State::Transaction; }
    /// Makes the change last. @return false when it cannot, the change is then taken back.
    bool commit();

private:
    enum class State { Transaction, Direct, Failed, Done };

    TxDataSourcePrivate &m_dataSource;
    State m_state = State::Failed;
};

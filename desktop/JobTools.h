#pragma once

#include "DatasetJobs.h"

class CTxFieldInfo;
class CTxQueryDef;
class CTxRecordset;

/// What the jobs of the Data menu have in common.
namespace JobTools {

/// True for a field that the engine fills, or that hosts keep their own identifiers in.
bool isKeptBySystem(const CTxFieldInfo &field);

/// A progress function that remembers that the user stopped the work.
class Stoppable
{
public:
    explicit Stoppable(const TxProgress &progress) : m_progress(progress) {}

    /// Whether to go on.
    bool tell(qint64 done, qint64 total);
    /// tell() as a function; dead with this.
    TxProgress progress();
    /// The result of work that failed just now: stopped, or failed with the engine's last error.
    DatasetJobs::Result failure() const;

private:
    const TxProgress &m_progress;
    bool m_isStopped = false;
};

/// Keeps a dataset open; closes it at the end if it was closed before and nobody reads it then.
class Opened
{
public:
    explicit Opened(CTxDataset &dataset);
    ~Opened();
    Opened(const Opened &) = delete;
    Opened &operator=(const Opened &) = delete;

    explicit operator bool() const { return m_isOpen; }

private:
    CTxDataset &m_dataset;
    const bool m_wasOpen;
    const bool m_isOpen;
};

/// The records that a query gives, given back at the end.
class Records
{
public:
    Records(CDatasetVector &dataset, const CTxQueryDef &query);
    ~Records();
    Records(const Records &) = delete;
    Records &operator=(const Records &) = delete;

    explicit operator bool() const { return m_records; }
    CTxRecordset *get() const { return m_records; }
    CTxRecordset *operator->() const { return m_records; }

private:
    CTxRecordset *m_records; // the engine's
};

/// A transaction, where the datasource knows them; taken back unless committed.
class Transaction
{
public:
    explicit Transaction(CTxDataSource &dataSource);
    ~Transaction();
    Transaction(const Transaction &) = delete;
    Transaction &operator=(const Transaction &) = delete;

    /// False when it could not be begun where one is wanted.
    explicit operator bool() const { return m_isReady; }
    /// True when changes can be taken back.
    bool canTakeBack() const { return m_isOpen; }
    bool commit();

private:
    CTxDataSource &m_dataSource;
    bool m_isOpen = false;
    bool m_isReady = true;
};

/// Deletes a dataset that was not finished; says so in @p result when that cannot be done.
void removeHalfMade(CTxDataSource &dataSource, const QString &name, DatasetJobs::Result &result);

} // namespace JobTools

#include "JobTools.h"

#include "common/TdCommMethods.h"
#include "engine/base/TxErrorMsg.h"
#include "engine/data/DatasetVector.h"
#include "engine/data/TxDataSource.h"
#include "engine/data/TxQueryDef.h"
#include "engine/data/TxRecordset.h"

#include <QCoreApplication>

namespace JobTools {

bool isKeptBySystem(const CTxFieldInfo &field)
{
    return field.IsSystemField() || CTdCommMethods::IsSysFieldName(field.GetName());
}

bool Stoppable::tell(qint64 done, qint64 total)
{
    m_isStopped = m_isStopped || (m_progress && !m_progress(done, total));
    return !m_isStopped;
}

TxProgress Stoppable::progress()
{
    return [this](qint64 done, qint64 total) { return tell(done, total); };
}

DatasetJobs::Result Stoppable::failure() const
{
    DatasetJobs::Result result;
    result.state = m_isStopped ? DatasetJobs::Result::Stopped : DatasetJobs::Result::Failed;
    if (!m_isStopped)
        result.why = TxGetErrorMsgObj().GetErrorMessage();
    return result;
}

Opened::Opened(CTxDataset &dataset)
    : m_dataset(dataset), m_wasOpen(dataset.IsOpen()), m_isOpen(m_wasOpen || dataset.Open())
{
}

Opened::~Opened()
{
    const bool isRead = m_dataset.IsVector() && static_cast<const CDatasetVector &>(m_dataset).GetRecordsetCount() > 0;
    if (!m_wasOpen && !isRead)
        m_dataset.Close();
}

Records::Records(CDatasetVector &dataset, const CTxQueryDef &query) : m_records(dataset.Query(query)) {}

Records::~Records()
{
    CTdCommMethods::ReleaseRecordset(m_records);
}

Transaction::Transaction(CTxDataSource &dataSource) : m_dataSource(dataSource)
{
    if (dataSource.IsTransStarted()) {
        TxGetErrorMsgObj().SetErrorMessage(
            QCoreApplication::translate("DatasetJobs", "“%1” has changes that are not committed.")
                .arg(dataSource.GetAlias()));
        m_isReady = false;
    } else if (dataSource.HasCapability(CTxDataSource::CanTransact)) {
        m_isReady = m_isOpen = dataSource.BeginTrans();
    }
}

Transaction::~Transaction()
{
    if (m_isOpen)
        m_dataSource.RollbackTrans();
}

bool Transaction::commit()
{
    if (m_isOpen && !m_dataSource.CommitTrans())
        return false;
    m_isOpen = false;
    return true;
}

void removeHalfMade(CTxDataSource &dataSource, const QString &name, DatasetJobs::Result &result)
{
    CTxDataset *dataset = dataSource.GetDataset(name);
    if (!dataset)
        return;
    dataset->Close();
    if (!dataSource.DeleteDataset(name))
        result.notes << QCoreApplication::translate("DatasetJobs", "The unfinished dataset “%1” could not be deleted.")
                            .arg(name);
}

} // namespace JobTools

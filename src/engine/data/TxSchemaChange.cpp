#include "engine/data/TxSchemaChange.h"

#include "engine/base/TxSqlite.h"

#include <ogrsf_frmts.h>

TxSchemaChange::TxSchemaChange(TxDataSourcePrivate &dataSource) : m_dataSource(dataSource)
{
    if (!dataSource.gdal->TestCapability(ODsCTransactions)) {
        m_state = State::Direct;
    } else if (dataSource.gdal->StartTransaction() == OGRERR_NONE) {
        m_state = State::Transaction;
        if (dataSource.isGeoPackage() && !TxSqlite::lockForWriting(*dataSource.gdal)) {
            TxSqlite::rollback(*dataSource.gdal);
            m_state = State::Failed;
        }
    }
}

TxSchemaChange::~TxSchemaChange()
{
    if (m_state != State::Transaction)
        return;
    m_dataSource.endRecordsets();
    TxSqlite::rollback(*m_dataSource.gdal);
    m_dataSource.reopen();
}

QString TxSchemaChange::refusal(TxDataSourcePrivate &dataSource)
{
    if (!dataSource.gdal && !dataSource.reopen())
        return QStringLiteral("The connection to “%1” is lost").arg(dataSource.alias);
    if (dataSource.busy > 0)
        return QStringLiteral("“%1” is busy with an append").arg(dataSource.alias);
    if (dataSource.isReadOnly())
        return QStringLiteral("“%1” is read-only").arg(dataSource.alias);
    if (dataSource.transaction)
        return QStringLiteral("The structure of “%1” cannot be changed while an edit transaction is open")
            .arg(dataSource.alias);
    return QString();
}

bool TxSchemaChange::commit()
{
    if (m_state == State::Direct) {
        m_dataSource.gdal->FlushCache();
        m_state = State::Done;
    } else if (m_state == State::Transaction && m_dataSource.gdal->CommitTransaction() == OGRERR_NONE) {
        m_state = State::Done;
    }
    return m_state == State::Done;
}

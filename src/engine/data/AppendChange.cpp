#include "engine/data/AppendChange.h"

#include "engine/base/TxSqlite.h"
#include "engine/data/GeoPackageRecount.h"
#include "engine/data/ShapefileKeeper.h"

#include <ogrsf_frmts.h>

#include <QDir>
#include <QFileInfo>

namespace {

constexpr char16_t savepointName[] = u"tx_append";

/// The file of the shapefile that holds the dataset.
QString shapefileOf(const TxVectorPrivate &vector)
{
    const QString path = QString::fromUtf8(vector.dataSource().gdalName);
    if (!QFileInfo(path).isDir())
        return path;
    return QDir(path).filePath(QString::fromUtf8(vector.source) + QStringLiteral(".shp"));
}

} // namespace

AppendChange::AppendChange(TxVectorPrivate &target, bool changesFields)
    : m_target(target), m_dataSource(target.dataSource())
{
    if (m_dataSource.transaction) {
        m_boundsBefore = m_target.q->GetBounds();
        m_savepoint = openSavepoint();
        m_state = m_savepoint ? State::Open : State::Failed;
        return;
    }
    if (m_dataSource.driver == "ESRI Shapefile") {
        m_dataSource.gdal->FlushCache();
        m_files = std::make_unique<ShapefileKeeper>(shapefileOf(target));
        if (m_files->reason().isEmpty() && changesFields && !m_files->keepTable())
            CPLError(CE_Failure, CPLE_FileIO, "the table cannot be copied");
        else if (!m_files->reason().isEmpty())
            CPLError(CE_Failure, CPLE_FileIO, "%s", m_files->reason().toUtf8().constData());
        else
            m_state = State::Open;
        return;
    }
    m_transaction.emplace(m_dataSource);
    m_state = m_transaction->isOpen() ? State::Open : State::Failed;
}

AppendChange::~AppendChange()
{
    takeBack();
}

bool AppendChange::executeSql(const QString &sql) const
{
    if (m_dataSource.isGeoPackage() || m_dataSource.driver == "SQLite")
        return TxSqlite::execute(TxSqlite::connection(*m_dataSource.gdal), sql);
    const TxGdal::ErrorCollector errors;
    OGRLayer *result = m_dataSource.gdal->ExecuteSQL(sql.toUtf8().constData(), nullptr, nullptr);
    m_dataSource.gdal->ReleaseResultSet(result);
    return !errors.hasFailure() || errors.fail(sql);
}

bool AppendChange::openSavepoint()
{
    // What the driver holds back (index entries, extents) must not come behind the savepoint.
    OGRLayer *layer = m_target.layer();
    return layer && layer->SyncToDisk() == OGRERR_NONE && m_target.resumeIndex() &&
           executeSql(QStringLiteral("SAVEPOINT ") + QString::fromUtf16(savepointName));
}

bool AppendChange::beforeWidening()
{
    return !m_files || m_files->keepTable();
}

bool AppendChange::commit()
{
    OGRLayer *layer = m_target.layer();
    if (!isOpen() || !layer || !m_target.resumeIndex() || layer->SyncToDisk() != OGRERR_NONE)
        return false;
    if (m_files) {
        if (!m_files->isComplete(layer->GetFeatureCount(TRUE))) {
            CPLError(CE_Failure, CPLE_FileIO, "the files do not hold what was written to them");
            return false;
        }
        if (m_files->hadIndex()) { // without one reading by place is slower, no more
            const TxGdal::ErrorCollector errors;
            executeSql(QStringLiteral("CREATE SPATIAL INDEX ON ") +
                       TxGdal::quoteIdentifier(QString::fromUtf8(m_target.source)));
        }
    } else if (m_transaction) {
        if (!m_transaction->commit())
            return false;
    } else if (!executeSql(QStringLiteral("RELEASE SAVEPOINT ") + QString::fromUtf16(savepointName))) {
        return false;
    }
    m_state = State::Done;
    return true;
}

bool AppendChange::takeBack()
{
    if (m_state != State::Open)
        return true;
    m_state = State::Failed;
    m_target.forgetPause();
    bool done = true;
    if (m_savepoint) {
        done = takeBackSavepoint();
    } else if (m_files) {
        done = takeBackFiles();
    } else {
        m_transaction.reset();
        done = m_dataSource.gdal != nullptr;
    }
    m_target.contentChanged();
    if (m_savepoint)
        m_target.bounds = m_boundsBefore;
    return done;
}

bool AppendChange::takeBackSavepoint()
{
    m_dataSource.endRecordsets();
    // The driver writes what it holds back now, to be taken back with the rest, and not when the user commits.
    if (OGRLayer *layer = m_target.layer())
        layer->SyncToDisk();
    const bool done = executeSql(QStringLiteral("ROLLBACK TO SAVEPOINT ") + QString::fromUtf16(savepointName)) &&
                      executeSql(QStringLiteral("RELEASE SAVEPOINT ") + QString::fromUtf16(savepointName));
    // What the driver believes of the extent lasts until the storage is opened anew.
    if (m_dataSource.isGeoPackage() || m_dataSource.driver == "SQLite")
        GeoPackageRecount::forgetCount(m_target);
    return done;
}

bool AppendChange::takeBackFiles()
{
    m_dataSource.endRecordsets();
    {
        const TxGdal::ErrorCollector errors; // what closing a full disk's file says was said before
        m_dataSource.gdal.reset();           // writes what it holds back, then lets go of the files
    }
    const bool restored = m_files->restore();
    return m_dataSource.reopen() && restored;
}

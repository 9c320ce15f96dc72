#include "engine/base/TxErrorMsg.h"
#include "engine/base/TxHandle.h"
#include "engine/base/TxSqlite.h"
#include "engine/base/TxVectorState.h"
#include "engine/data/AppendChange.h"
#include "engine/data/AppendFields.h"
#include "engine/data/AppendWriter.h"
#include "engine/data/NativeAppend.h"
#include "engine/data/NativeCatalogue.h"
#include "engine/data/ShapefileFields.h"
#include "engine/data/SpooledCursor.h"
#include "engine/data/TxFieldDefinition.h"
#include "engine/data/TxFieldValue.h"
#include "engine/data/TxNameRules.h"
#include "engine/projection/TxPJCoordSys.h"
#include "engine/projection/TxReprojector.h"

#include <ogrsf_frmts.h>

#include <QElapsedTimer>
#include <QFileInfo>

namespace {

constexpr qint64 progressRecords = 1000; // how often the progress function is called: every so many records,
constexpr qint64 progressTime = 100;     // and after so many milliseconds,
constexpr qint64 clockRecords = 16;      // looked at every so many records

/// Keeps the datasources of an append from being closed or changed by its progress function.
class BusyMark
{
public:
    explicit BusyMark(TxDataSourcePrivate &dataSource) : m_dataSource(dataSource) { ++m_dataSource.busy; }
    ~BusyMark() { --m_dataSource.busy; }
    BusyMark(const BusyMark &) = delete;
    BusyMark &operator=(const BusyMark &) = delete;

private:
    TxDataSourcePrivate &m_dataSource;
};

/// One append, from its checks to its end.
class VectorAppend
{
public:
    VectorAppend(TxVectorPrivate &target, CTxRecordset &recordset, const CTxAppendDef &def)
        : m_target(target), m_source(TxRecordsetPrivate::of(recordset)), m_recordset(&recordset), m_def(def)
    {
    }

    bool run();

private:
    QString refusal() const;
    bool prepareProjection();
    bool prepareTag();
    bool prepareSource();
    bool isSameStorage() const;
    qint64 lastId() const;
    bool makesTag() const { return !m_tag.isEmpty() && m_tagIndex < 0; }

    bool store();
    bool makeTag();
    bool fillTag(AppendWriter &writer);
    bool copyRecords(AppendWriter &writer, AppendChange &change);
    bool copyOneByOne(AppendWriter &writer, AppendChange &change);
    NativeAppend::Result copyAsStored(const AppendWriter &writer);
    bool tellProgress();
    bool isSourceAlive() const;
    bool goOn();

    /// Notes why the append fails. @return false, for the caller to return.
    bool fail(const QString &reason);
    /// The same for a record.
    bool failAt(qint64 id, const QString &reason);
    /// True when anything was reported since the append began.
    bool hasFailure() const;

    TxVectorPrivate &m_target;
    TxRecordsetPrivate &m_source;
    const TxHandle<CTxRecordset> m_recordset; // whose inside m_source is
    const CTxAppendDef &m_def;
    const TxGdal::ErrorCollector m_errors;
    int m_failuresBefore = TxGetErrorMsgObj().GetErrorCount();

    std::shared_ptr<TxReprojector> m_reprojector;
    QString m_tag; // the tag field's name as the target keeps it; empty for none
    int m_tagIndex = -1;
    std::unique_ptr<TxCursor> m_spool; // when the source cannot be walked while the target is written
    TxCursor *m_cursor = nullptr;      // what is walked; not owned
    bool m_onRecord = false;
    qint64 m_lastId = -1; // the target's last record, where the source's walk may come to new ones; else -1
    qint64 m_total = -1;
    qint64 m_read = 0;
    qint64 m_written = 0;
    QElapsedTimer m_sinceProgress;
    QString m_reason;
    bool m_isTakenBack = true;
};

bool VectorAppend::fail(const QString &reason)
{
    m_reason = reason;
    return false;
}

bool VectorAppend::failAt(qint64 id, const QString &reason)
{
    const QString record = QStringLiteral("the record %1 of “%2”").arg(id).arg(m_source.dataset->GetName());
    return fail(reason.isEmpty() ? record + QStringLiteral(" cannot be written")
                                 : record + QStringLiteral(" does not fit: ") + reason);
}

bool VectorAppend::hasFailure() const
{
    return m_errors.hasFailure() || TxGetErrorMsgObj().GetErrorCount() != m_failuresBefore;
}

QString VectorAppend::refusal() const
{
    const TxDataSourcePrivate &dataSource = m_target.dataSource();
    const QString name = m_target.q->GetName();
    if (dataSource.busy > 0 || m_source.vector().dataSource().busy > 0)
        return QStringLiteral("“%1” or its source is being appended to or from already").arg(name);
    if (!m_target.isOpen)
        return QStringLiteral("“%1” is not open").arg(name);
    if (dataSource.isReadOnly() || (m_target.q->GetOptions() & CTxDataset::ReadOnly) != 0)
        return QStringLiteral("“%1” is read-only").arg(name);
    if (!dataSource.q->HasCapability(CTxDataSource::CanEditRecords))
        return QStringLiteral("Records of “%1” cannot be changed").arg(name);
    if (!m_source.cursor)
        return QStringLiteral("The records to append to “%1” are gone since their dataset was closed or changed")
            .arg(name);
    return QString();
}

bool VectorAppend::isSameStorage() const
{
    const TxDataSourcePrivate &source = m_source.vector().dataSource();
    const TxDataSourcePrivate &target = m_target.dataSource();
    if (&source == &target)
        return true;
    const QString file = QFileInfo(source.path).canonicalFilePath();
    return !file.isEmpty() && file == QFileInfo(target.path).canonicalFilePath();
}

bool VectorAppend::prepareProjection()
{
    OGRLayer *layer = m_target.layer();
    if (!layer)
        return fail(QStringLiteral("it is no longer in “%1”").arg(m_target.dataSource().alias));
    if (layer->GetGeomType() == wkbNone)
        return true;
    CTxPJCoordSys from;
    CTxPJCoordSys to;
    m_source.dataset->GetProjection(from);
    m_target.dataSource().ownProjection(*m_target.q, to); // without one of its own it takes coordinates as they are
    bool failed = false;
    m_reprojector = TxReprojector::make(from, to, failed);
    return !failed || fail(QStringLiteral("no way is known from the coordinate system “%1” to “%2”")
                               .arg(from.GetName(), to.GetName()));
}

bool VectorAppend::prepareTag()
{
    m_tag = m_def.tagField;
    if (m_tag.isEmpty())
        return true;
    m_tagIndex = AppendFields::findTag(m_target, m_tag);
    if (m_tagIndex >= 0)
        return true;
    const QByteArray &driver = m_target.dataSource().driver;
    if (driver == "SQLite" || driver == "PostgreSQL") // which make no other names
        m_tag = m_tag.toLower();
    if (driver == "ESRI Shapefile")
        m_tag = QString::fromUtf8(m_tag.toUtf8().left(ShapefileFields::nameBytes));
    if (!m_target.q->IsAvailableFieldName(m_tag))
        return fail(QStringLiteral("“%1” cannot be the name of a field").arg(m_tag.left(80)));
    if (m_target.dataSource().transaction)
        return fail(QStringLiteral("the field “%1” cannot be made while an edit transaction is open").arg(m_tag));
    const int own = m_source.dataset == m_target.q ? 1 : 0;
    if (m_target.q->GetRecordsetCount() > own)
        return fail(QStringLiteral("the field “%1” cannot be made while recordsets are open").arg(m_tag));
    return true;
}

qint64 VectorAppend::lastId() const
{
    OGRLayer *layer = m_target.layer();
    const QString sql = QStringLiteral("SELECT MAX(%1) FROM %2")
                            .arg(TxGdal::quoteIdentifier(QString::fromUtf8(layer->GetFIDColumn())),
                                 TxGdal::quoteIdentifier(QString::fromUtf8(m_target.source)));
    return TxSqlite::integerOf(TxSqlite::connection(*m_target.dataSource().gdal), sql.toUtf8().constData(), {});
}

bool VectorAppend::prepareSource()
{
    m_source.leaveRecord();
    m_source.onRecord = false; // whatever comes, the recordset stands at its end
    m_cursor = m_source.cursor.get();
    const bool isPlain = m_source.query.joins.isEmpty();
    if (m_def.progress && isPlain && m_source.query.filter.isEmpty() && m_source.query.bounds.IsVoid())
        m_total = m_source.dataset->GetRecordCount();
    m_onRecord = m_cursor->first();
    if (isSameStorage()) {
        // Records that come while a GeoPackage is walked are passed over by their identifiers; other drivers lose their
        // place, lock one another out, or come to the new records for ever.
        const bool isOneConnection = &m_source.vector().dataSource() == &m_target.dataSource();
        const bool isOneDataset = m_source.dataset == m_target.q;
        if (isOneConnection && isPlain && m_target.dataSource().isGeoPackage() && !(makesTag() && isOneDataset)) {
            m_lastId = isOneDataset ? lastId() : -1;
        } else {
            auto spool = std::make_unique<SpooledCursor>(m_source.fields);
            if (!spool->fill(*m_cursor, m_onRecord))
                return fail(QStringLiteral("the records cannot be laid aside in a temporary file"));
            m_onRecord = spool->first();
            m_total = spool->count();
            m_spool = std::move(spool);
            m_cursor = m_spool.get();
        }
    }
    return !hasFailure() || fail(QStringLiteral("the records of “%1” cannot be read").arg(m_source.dataset->GetName()));
}

bool VectorAppend::makeTag()
{
    if (m_source.dataset == m_target.q)
        m_source.end(); // its fields change; the records were laid aside
    CTxFieldInfos infos = {CTxFieldInfo(m_tag, CTxFieldInfo::Text, TxNameRules::maximumLength)};
    OGRLayer *layer = m_target.layer();
    bool done = layer && TxFieldDefinition::addTo(*layer, infos, m_target.dataSource().driver) &&
                layer->SyncToDisk() == OGRERR_NONE;
    if (done && m_target.dataSource().engineType == CTxDataSourceStorage::Native)
        done = NativeCatalogue::addFields(*m_target.dataSource().gdal, m_target.q->GetName(), infos);
    m_target.schemaChanged();
    m_tagIndex = done ? AppendFields::findTag(m_target, m_tag) : -1;
    return m_tagIndex >= 0 || fail(QStringLiteral("the field “%1” cannot be made").arg(m_tag));
}

bool VectorAppend::fillTag(AppendWriter &writer)
{
    if (m_tagIndex < 0)
        return true;
    for (const TxVectorField &field : m_target.fields()) {
        if (field.ogrIndex != m_tagIndex)
            continue;
        const QString name = m_source.dataset->GetName();
        const QString reason = TxFieldValue::write(writer.feature(), m_tagIndex, field.info, CTxVariant(name));
        return reason.isEmpty() ||
               fail(QStringLiteral("the value “%1” for the field “%2” %3").arg(name, field.info.GetName(), reason));
    }
    return fail(QStringLiteral("there is no field “%1”").arg(m_tag));
}

bool VectorAppend::tellProgress()
{
    m_sinceProgress.start();
    if (!m_def.progress)
        return true;
    const TxGdal::ErrorCollector notOurs;
    const int failures = TxGetErrorMsgObj().GetErrorCount();
    const bool goesOn = m_def.progress(m_read, m_total);
    m_failuresBefore += TxGetErrorMsgObj().GetErrorCount() - failures;
    return goesOn || fail(QStringLiteral("it was stopped"));
}

/// The progress function may have given the recordset back.
bool VectorAppend::isSourceAlive() const
{
    return m_recordset.get() && (m_spool || m_source.cursor);
}

/// To be called now and then. @return false when the work shall stop or cannot go on.
bool VectorAppend::goOn()
{
    if (!tellProgress())
        return false;
    if (!isSourceAlive())
        return fail(QStringLiteral("its records were given back meanwhile"));
    TxVectorState::clearUpperHalves();
    return true;
}

bool VectorAppend::copyRecords(AppendWriter &writer, AppendChange &change)
{
    if (!goOn())
        return false;
    const NativeAppend::Result result = copyAsStored(writer);
    if (result == NativeAppend::Result::Failed ||
        (result == NativeAppend::Result::Unfit && !copyOneByOne(writer, change)))
        return false;
    m_total = m_read;
    return tellProgress();
}

NativeAppend::Result VectorAppend::copyAsStored(const AppendWriter &writer)
{
    using Result = NativeAppend::Result;
    if (m_spool || m_reprojector || !m_def.bounds.IsVoid())
        return Result::Unfit;
    NativeAppend native(m_source, m_target, writer.fields());
    native.setLastId(m_lastId);
    if (m_tagIndex >= 0)
        native.setTag(m_tagIndex, m_source.dataset->GetName());
    if (!native.isPossible())
        return Result::Unfit;
    const Result result = native.run([this](qint64 copied) {
        m_read = m_written = copied;
        return goOn();
    });
    m_read = m_written = native.copied();
    if (result == Result::Unfit) {
        m_read = m_written = 0;
        m_onRecord = m_cursor->first();
    } else if (result == Result::Failed && m_reason.isEmpty()) {
        if (native.currentId() >= 0)
            failAt(native.currentId(), QString());
        else
            fail(QStringLiteral("the storage does not keep the records"));
    }
    return result;
}

bool VectorAppend::copyOneByOne(AppendWriter &writer, AppendChange &change)
{
    for (; m_onRecord; m_onRecord = m_cursor->next()) {
        const qint64 id = m_cursor->id();
        if (m_lastId >= 0 && id > m_lastId)
            continue; // of those that were appended
        const AppendWriter::Result result = writer.write(*m_cursor, change);
        if (result == AppendWriter::Result::Refused || m_errors.hasFailure())
            return failAt(id, writer.reason());
        if (result == AppendWriter::Result::Written) {
            ++m_written;
            m_target.countAdded();
        }
        ++m_read;
        const bool isDue =
            m_read % progressRecords == 0 || (m_read % clockRecords == 0 && m_sinceProgress.elapsed() >= progressTime);
        if (isDue && !goOn())
            return false;
    }
    return !hasFailure() || fail(QStringLiteral("the records of “%1” cannot be read").arg(m_source.dataset->GetName()));
}

bool VectorAppend::store()
{
    AppendChange change(m_target, makesTag());
    if (!change.isOpen())
        return fail(QStringLiteral("the storage takes no changes"));
    bool done = !makesTag() || makeTag();
    if (done && !m_target.idleLayer())
        done = fail(QStringLiteral("it is no longer in “%1”").arg(m_target.dataSource().alias));
    if (done) {
        AppendWriter writer(m_source, m_target, m_tagIndex, m_reprojector.get(), m_def.bounds);
        TxVectorState::clearUpperHalves();
        done = fillTag(writer) && copyRecords(writer, change);
    }
    if (done && (!change.commit() || m_errors.hasFailure()))
        done = fail(QStringLiteral("the storage does not keep the records"));
    if (!done)
        m_isTakenBack = change.takeBack();
    return done;
}

bool VectorAppend::run()
{
    const QString target = m_target.q->GetName();
    const QString reason = refusal();
    if (!reason.isEmpty())
        return TxGdal::fail(reason);
    const BusyMark busyTarget(m_target.dataSource());
    const BusyMark busySource(m_source.vector().dataSource());
    const bool makesField = prepareTag() && makesTag();
    const bool done = m_reason.isEmpty() && prepareProjection() && prepareSource() && store();
    if (makesField)
        m_target.schemaChanged();
    if (done) {
        m_target.contentChanged();
        return true;
    }
    QString text = QStringLiteral("Nothing was appended to “%1”: %2").arg(target, m_reason);
    if (m_written > 0)
        text += QStringLiteral("; %1 records before it were taken back").arg(m_written);
    if (!m_isTakenBack)
        text += QStringLiteral("; the storage could not be opened anew or put back as it was");
    return m_errors.fail(text);
}

} // namespace

bool CDatasetVector::Append(CTxRecordset *source, const CTxAppendDef &def)
{
    if (!CTxRecordset::GetDatasetOf(source))
        return TxGdal::fail(QStringLiteral("There are no records to append to “%1”").arg(GetName()));
    return VectorAppend(*d, *source, def).run();
}

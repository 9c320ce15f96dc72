#include "engine/data/NativeAppend.h"

#include "engine/base/TxSqlite.h"
#include "engine/data/GeoPackageRecount.h"
#include "engine/data/NativeSchema.h"
#include "engine/data/SqliteRowSource.h"
#include "engine/data/TxGeoPackageBlob.h"
#include "engine/data/TxQueryPlan.h"
#include "engine/data/TxSpatialIndex.h"

#include <ogrsf_frmts.h>

#include <QtEndian>

#include <sqlite3.h>

#include <algorithm>
#include <cmath>
#include <cstring>

using TxSqlite::Statement;

namespace {

constexpr qint64 stepRecords = 1000;
constexpr char rowsName[] = "tdb_appended_rows";

bool isText(qint16 type)
{
    return type == CTxFieldInfo::Text || type == CTxFieldInfo::Memo || type == CTxFieldInfo::Character;
}

bool isWhole(qint16 type)
{
    return type == CTxFieldInfo::Byte || type == CTxFieldInfo::Short || type == CTxFieldInfo::Long;
}

bool isReal(qint16 type)
{
    return type == CTxFieldInfo::Single || type == CTxFieldInfo::Double || type == CTxFieldInfo::Numeric ||
           type == CTxFieldInfo::Float;
}

bool isBytes(qint16 type)
{
    return type == CTxFieldInfo::Binary || type == CTxFieldInfo::LongBinary || type == CTxFieldInfo::GeometryBinary;
}

/// True when @p text is made as @p form, where 9 stands for a digit.
bool hasForm(const char *text, int size, const char *form)
{
    if (size != static_cast<int>(std::strlen(form)))
        return false;
    for (int i = 0; i < size; ++i) {
        const bool isDigit = text[i] >= '0' && text[i] <= '9';
        if (form[i] == '9' ? !isDigit : text[i] != form[i])
            return false;
    }
    return true;
}

bool isMoment(const char *text, int size)
{
    return hasForm(text, size, "9999-99-99T99:99:99Z") || hasForm(text, size, "9999-99-99T99:99:99.999Z");
}

bool isTimeOfDay(const char *text, int size)
{
    return hasForm(text, size, "99:99:99") || hasForm(text, size, "99:99:99.999");
}

bool isCleanText(const char *text, int size)
{
    if (std::memchr(text, 0, static_cast<size_t>(size)))
        return false;
    const bool isAscii = std::all_of(text, text + size, [](char c) { return static_cast<signed char>(c) > 0; });
    return isAscii || CPLIsUTF8(text, size);
}

/// The ISO code of well-known binary for what @p type says; 0 where it says nothing.
quint32 wkbCodeOf(OGRwkbGeometryType type)
{
    constexpr quint32 withZ = 1000, withM = 2000;
    const auto flat = static_cast<quint32>(wkbFlatten(type));
    if (flat == wkbUnknown)
        return 0;
    return flat + (OGR_GT_HasZ(type) ? withZ : 0) + (OGR_GT_HasM(type) ? withM : 0);
}

QString columnOf(OGRLayer &layer, int ogrIndex)
{
    return TxGdal::quoteIdentifier(QString::fromUtf8(layer.GetLayerDefn()->GetFieldDefn(ogrIndex)->GetNameRef()));
}

} // namespace

/// The records of the source, as the target's connection reads them.
class NativeAppend::Rows : public SqliteRowSource
{
public:
    Rows(NativeAppend &owner, sqlite3 *source, const QString &select, const Step &step)
        : SqliteRowSource(owner.columnCount()), m_owner(owner), m_select(source, select), m_step(step)
    {
    }
    ~Rows() override { detach(); }

    Move next() override;
    bool give(int column, sqlite3_context *result) override;

    qint64 given() const { return m_given; }
    bool isStopped() const { return m_isStopped; }
    /// Copied as long as nothing spoke against it.
    Result outcome() const { return m_outcome; }

private:
    NativeAppend &m_owner;
    Statement m_select;
    const Step &m_step;
    qint64 m_given = 0;
    bool m_isStopped = false;
    Result m_outcome = Result::Copied;
};

NativeAppend::NativeAppend(const TxRecordsetPrivate &source, TxVectorPrivate &target, const AppendFields &fields)
    : m_source(source), m_target(target), m_from(source.vector().layer()), m_to(target.layer())
{
    m_isPaired = m_from && m_to && addPairs(fields);
}

void NativeAppend::setTag(int ogrIndex, const QString &text)
{
    m_tagIndex = ogrIndex;
    m_tag = text.toUtf8();
}

bool NativeAppend::isPossible()
{
    const CTxQueryDef &query = m_source.query;
    const bool isGeoPackage = m_source.vector().dataSource().isGeoPackage() && m_target.dataSource().isGeoPackage();
    if (!m_isPaired || !isGeoPackage || !query.joins.isEmpty() || !query.bounds.IsVoid())
        return false;
    if (*m_from->GetFIDColumn() == '\0' || *m_to->GetFIDColumn() == '\0')
        return false;
    return knowsGeometry() && addDerived() && columnCount() > 0;
}

bool NativeAppend::addPairs(const AppendFields &fields)
{
    for (const AppendFields::Pair &pair : fields.pairs()) {
        const qint16 to = pair.info.GetType();
        const qint16 from = pair.fromType;
        const int source = m_source.fields[static_cast<size_t>(pair.from)].ogrIndex;
        if (source < 0) // an identifier as a field of the target's
            return false;
        Column column{pair.from, pair.to, Check::AsItIs, pair.lowest, pair.highest, 0, pair.isNullable};
        column.safeBytes = static_cast<int>(std::min<size_t>(pair.safeBytes, std::numeric_limits<int>::max()));
        const OGRFieldType stored = m_from->GetLayerDefn()->GetFieldDefn(source)->GetType();
        if (isWhole(from) && isWhole(to)) {
            column.check = Check::Whole;
        } else if (from == CTxFieldInfo::Boolean && to == from) {
            column.check = Check::Whole;
            column.lowest = 0;
            column.highest = 1;
        } else if ((isReal(from) && isReal(to)) || (from == CTxFieldInfo::Currency && to == from)) {
            column.check = Check::Real;
        } else if (isText(from) && isText(to)) {
            column.check = Check::Text;
        } else if (from == CTxFieldInfo::Date && to == from && stored == OFTDateTime && pair.storage == OFTDateTime) {
            column.check = Check::Moment;
        } else if (from == CTxFieldInfo::Time && to == from) {
            column.check = Check::TimeOfDay;
        } else if (isBytes(from) && isBytes(to)) {
            column.check = Check::Bytes;
        } else {
            return false;
        }
        m_columns.push_back(column);
    }
    return true;
}

/// What follows from the geometry is copied where the source keeps it as the target does. Of a source that another
/// program made it is not known whether it says that.
bool NativeAppend::addDerived()
{
    const bool isNative = m_source.vector().dataSource().engineType == CTxDataSourceStorage::Native;
    for (const char *name : NativeSchema::derivedFields) {
        const auto at = std::find_if(m_source.fields.begin(), m_source.fields.end(), [name](const auto &field) {
            return field.ogrIndex >= 0 && field.info.GetName().compare(QLatin1String(name), Qt::CaseInsensitive) == 0;
        });
        const bool isKept = at != m_source.fields.end();
        const int to = m_to->GetLayerDefn()->GetFieldIndex(name);
        if (to < 0 && isKept && qstrcmp(name, NativeSchema::text) == 0)
            return false; // it may be a dataset of texts
        if (to < 0)
            continue;
        if (!isNative || !isKept)
            return false;
        m_columns.push_back({static_cast<int>(at - m_source.fields.begin()), to, Check::AsItIs, 0, 0, 0, true});
    }
    return true;
}

bool NativeAppend::knowsGeometry()
{
    if (m_to->GetGeomType() == wkbNone)
        return true;
    if (m_from->GetGeomType() == wkbNone)
        return true;
    if ((m_source.query.options & CTxQueryDef::SkipGeometry) != 0 || m_from->GetGeomType() != m_to->GetGeomType())
        return false;
    m_hasGeometry = true;
    m_wkbType = wkbCodeOf(m_to->GetGeomType());
    m_geometryColumn = static_cast<int>(m_source.fields.size());
    Statement system(TxSqlite::connection(*m_target.dataSource().gdal),
                     "SELECT srs_id FROM gpkg_geometry_columns WHERE lower(table_name) = lower(?)");
    if (!system.bind(QString::fromUtf8(m_target.source)).next())
        return false;
    m_systemId = static_cast<qint32>(system.integer(0));
    return true;
}

int NativeAppend::columnCount() const
{
    return static_cast<int>(m_columns.size()) + (m_tagIndex >= 0 ? 1 : 0) + (m_hasGeometry ? 1 : 0);
}

QString NativeAppend::insertText() const
{
    QStringList columns;
    for (const Column &column : m_columns)
        columns.append(columnOf(*m_to, column.to));
    if (m_tagIndex >= 0)
        columns.append(columnOf(*m_to, m_tagIndex));
    if (m_hasGeometry)
        columns.append(TxGdal::quoteIdentifier(QString::fromUtf8(m_to->GetGeometryColumn())));
    const QString table = TxGdal::quoteIdentifier(QString::fromUtf8(m_target.source));
    QStringList given;
    for (int i = 0; i < columns.size(); ++i)
        given.append(QStringLiteral("c%1").arg(i));
    return QStringLiteral("INSERT INTO %1 (%2) SELECT %3 FROM %4")
        .arg(table, columns.join(QStringLiteral(", ")), given.join(QStringLiteral(", ")), QLatin1String(rowsName));
}

NativeAppend::Result NativeAppend::run(const Step &step)
{
    sqlite3 *database = TxSqlite::connection(*m_target.dataSource().gdal);
    GeoPackageRecount recount(m_target);
    TxSqlite::Savepoint savepoint(database);
    if (!savepoint.isOpen() || !m_target.resumeIndex())
        return Result::Failed;
    m_isIndexed = m_hasGeometry && m_target.pauseIndex();
    if (!m_isIndexed && m_hasGeometry && m_to->TestCapability(OLCFastSpatialFilter))
        return Result::Unfit;
    Result result = recount.begin() ? copyAll(step) : Result::Failed;
    if (result == Result::Copied && m_isIndexed && !enterEntries())
        result = Result::Failed;
    m_target.forgetPause();
    if (result == Result::Copied &&
        (!recount.end(m_isConsecutive ? m_copied : -1, m_lastWritten, m_bounds) || !savepoint.release()))
        result = Result::Failed;
    return result;
}

bool NativeAppend::enterEntries()
{
    TxSpatialIndex &index = *m_target.pausedIndex();
    if (!m_isConsecutive)
        return index.resume();
    for (TxPackedRtree::Entry &entry : m_entries)
        entry.id += m_lastWritten - m_copied + 1;
    return index.resume(std::move(m_entries));
}

NativeAppend::Result NativeAppend::copyAll(const Step &step)
{
    const std::optional<TxQueryPlan> plan = TxQueryPlan::make(m_source.vector(), m_source.query);
    if (!plan || plan->fields().size() != m_source.fields.size())
        return Result::Unfit;
    const auto idColumn = [](TxVectorPrivate &vector) { return QString::fromUtf8(vector.layer()->GetFIDColumn()); };
    QStringList conditions;
    if (m_lastId >= 0)
        conditions.append(QStringLiteral("%1.%2 <= %3")
                              .arg(plan->mainAlias(), TxGdal::quoteIdentifier(idColumn(m_source.vector())))
                              .arg(m_lastId));
    const QString geometry = m_hasGeometry ? QString::fromUtf8(m_from->GetGeometryColumn()) : QString();
    const QString select = plan->select(idColumn, geometry, conditions);

    sqlite3 *database = TxSqlite::connection(*m_target.dataSource().gdal);
    const qint64 changesBefore = sqlite3_total_changes64(database);
    Result result = Result::Copied;
    QString failure;
    {
        const TxGdal::ErrorCollector errors; // a record that needs the general way is no failure
        Rows rows(*this, TxSqlite::connection(*m_source.vector().dataSource().gdal), select, step);
        const bool done = rows.attach(database, rowsName) && TxSqlite::execute(database, insertText());
        m_copied = rows.given();
        result = done || rows.outcome() != Result::Copied ? rows.outcome() : Result::Failed;
        if (result == Result::Failed && !rows.isStopped())
            failure = errors.text();
    }
    if (!failure.isEmpty())
        CPLError(CE_Failure, CPLE_AppDefined, "%s", failure.toUtf8().constData());
    if (result != Result::Copied)
        return result;
    m_currentId = -1;
    m_lastWritten = sqlite3_last_insert_rowid(database);
    // New identifiers follow one another, unless a trigger of the user's adds records of its own in between.
    m_isConsecutive = sqlite3_total_changes64(database) - changesBefore == m_copied;
    return Result::Copied;
}

SqliteRowSource::Move NativeAppend::Rows::next()
{
    if (m_given > 0 && m_given % stepRecords == 0 && !m_step(m_given)) {
        m_outcome = Result::Failed;
        m_isStopped = true;
        return Move::Failed;
    }
    if (!m_select.next()) {
        m_outcome = m_select.failed() ? Result::Failed : Result::Copied;
        return m_select.failed() ? Move::Failed : Move::End;
    }
    m_owner.m_currentId = m_select.integer(0);
    ++m_given;
    return Move::Row;
}

bool NativeAppend::Rows::give(int column, sqlite3_context *result)
{
    const std::vector<Column> &columns = m_owner.m_columns;
    const auto place = static_cast<size_t>(column);
    bool fits = true;
    if (place < columns.size())
        fits = giveValue(columns[place], m_select.handle(), result);
    else if (place == columns.size() && m_owner.m_tagIndex >= 0)
        sqlite3_result_text(result, m_owner.m_tag.constData(), static_cast<int>(m_owner.m_tag.size()), SQLITE_STATIC);
    else
        fits = m_owner.giveGeometry(m_select.handle(), m_given - 1, result);
    if (!fits)
        m_outcome = Result::Unfit;
    return fits;
}

/// Gives texts and bytes where they are: they stay until the query moves on.
bool NativeAppend::giveValue(const Column &column, sqlite3_stmt *from, sqlite3_context *result)
{
    const int at = column.from;
    const int stored = sqlite3_column_type(from, at);
    if (stored == SQLITE_NULL) {
        sqlite3_result_null(result);
        return column.isNullable;
    }
    const auto isInRange = [&column](double number) { return number >= column.lowest && number <= column.highest; };
    switch (column.check) {
    case Check::Whole: {
        const qint64 number = sqlite3_column_int64(from, at);
        sqlite3_result_int64(result, number);
        return stored == SQLITE_INTEGER && isInRange(static_cast<double>(number));
    }
    case Check::Real: {
        const double number = sqlite3_column_double(from, at);
        sqlite3_result_double(result, number);
        return stored == SQLITE_FLOAT && isInRange(number);
    }
    case Check::Bytes: {
        const void *bytes = sqlite3_column_blob(from, at);
        const int size = sqlite3_column_bytes(from, at);
        if (size > 0)
            sqlite3_result_blob(result, bytes, size, SQLITE_STATIC);
        else
            sqlite3_result_zeroblob(result, 0);
        return stored == SQLITE_BLOB && size <= column.safeBytes;
    }
    case Check::AsItIs:
        sqlite3_result_value(result, sqlite3_column_value(from, at));
        return true;
    case Check::Text:
    case Check::Moment:
    case Check::TimeOfDay:
        break;
    }
    if (stored != SQLITE_TEXT)
        return false;
    const auto *text = reinterpret_cast<const char *>(sqlite3_column_text(from, at));
    const int size = sqlite3_column_bytes(from, at);
    sqlite3_result_text(result, text, size, SQLITE_STATIC);
    if (column.check == Check::Moment)
        return isMoment(text, size);
    if (column.check == Check::TimeOfDay)
        return isTimeOfDay(text, size);
    return size <= column.safeBytes && isCleanText(text, size);
}

bool NativeAppend::giveGeometry(sqlite3_stmt *from, qint64 place, sqlite3_context *result)
{
    const auto *bytes = static_cast<const char *>(sqlite3_column_blob(from, m_geometryColumn));
    if (!bytes) {
        sqlite3_result_null(result);
        return sqlite3_column_type(from, m_geometryColumn) == SQLITE_NULL;
    }
    const int size = sqlite3_column_bytes(from, m_geometryColumn);
    const TxGeoPackageBlob blob(QByteArrayView(bytes, size));
    if (!blob.isValid())
        return false;
    const quint32 type = blob.wkbType();
    if (m_wkbType != 0 ? type != m_wkbType : type < wkbPoint || type > wkbMultiPolygon)
        return false; // collections may hold what is to be announced in the target
    if (const std::optional<OGREnvelope> box = blob.bounds()) {
        m_bounds.Merge(*box);
        if (m_isIndexed)
            m_entries.push_back(TxPackedRtree::entryOf(place, *box));
    }
    if (blob.systemId() == m_systemId) {
        sqlite3_result_blob(result, bytes, size, SQLITE_STATIC);
        return true;
    }
    m_geometry.resize(size);
    std::memcpy(m_geometry.data(), bytes, static_cast<size_t>(size));
    char *system = m_geometry.data() + TxGeoPackageBlob::systemIdOffset;
    if (blob.isLittleEndian())
        qToLittleEndian<qint32>(m_systemId, system);
    else
        qToBigEndian<qint32>(m_systemId, system);
    sqlite3_result_blob(result, m_geometry.constData(), size, SQLITE_STATIC);
    return true;
}

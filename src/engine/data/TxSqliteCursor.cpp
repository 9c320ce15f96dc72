#include "engine/data/TxCursors.h"
#include "engine/data/TxFieldTypes.h"
#include "engine/data/TxGeoPackageBlob.h"

#include <ogrsf_frmts.h>
#include <sqlite3.h>

#include <array>

namespace {

struct Finalizer
{
    void operator()(sqlite3_stmt *statement) const { sqlite3_finalize(statement); }
};
using Statement = std::unique_ptr<sqlite3_stmt, Finalizer>;

/// The column that holds the identifiers, empty for a view without one.
QString idColumnOf(TxVectorPrivate &vector)
{
    OGRLayer *layer = vector.layer();
    return layer ? QString::fromUtf8(layer->GetFIDColumn()) : QString();
}

std::unique_ptr<OGRGeometry> geometryOf(QByteArrayView bytes)
{
    const TxGeoPackageBlob blob(bytes);
    if (!blob.isValid())
        return nullptr;
    const QByteArrayView wkb = blob.wkb();
    OGRGeometry *geometry = nullptr;
    OGRGeometryFactory::createFromWkb(wkb.data(), nullptr, &geometry, static_cast<size_t>(wkb.size()), wkbVariantIso);
    return std::unique_ptr<OGRGeometry>(geometry);
}

class SqliteCursor : public TxCursor
{
public:
    SqliteCursor(TxVectorPrivate &vector, const TxQueryPlan &plan)
        : m_database(static_cast<sqlite3 *>(vector.dataSource().gdal->GetInternalHandle("SQLITE_HANDLE"))),
          m_vector(vector), m_plan(plan), m_idName(idColumnOf(vector))
    {
        OGRLayer *layer = vector.layer();
        if (plan.wantsGeometry())
            m_geometryColumn = QString::fromUtf8(layer->GetGeometryColumn());
        if (!plan.query().bounds.IsVoid())
            addBounds(*layer, QString::fromUtf8(vector.source));
        for (const TxRecordsetField &field : plan.fields())
            m_types.push_back(field.info.GetType());
    }

    /// @return false when the database refuses the statement.
    bool prepare()
    {
        m_statement = prepared(m_plan.select(idColumnOf, m_geometryColumn, m_conditions));
        return m_statement != nullptr;
    }

    bool first() override
    {
        sqlite3_reset(m_statement.get());
        return readyIndex() && next();
    }

    bool next() override
    {
        const int result = sqlite3_step(m_statement.get());
        if (result == SQLITE_ROW)
            return true;
        if (result != SQLITE_DONE)
            fail();
        sqlite3_reset(m_statement.get()); // lets the read lock go
        return false;
    }

    qint64 id() const override { return sqlite3_column_int64(m_statement.get(), 0); }

    void value(int index, CTxVariant &value) const override
    {
        value = read(m_statement.get(), index, m_types[static_cast<size_t>(index)]);
    }

    TxRawValue raw(int index) const override
    {
        return rawIn(m_statement.get(), index, m_types[static_cast<size_t>(index)]);
    }

    std::unique_ptr<OGRGeometry> geometry() const override { return geometryIn(m_statement.get()); }

    bool fetch(qint64 id, bool matching, TxRecord &record) override
    {
        Statement &one = matching ? m_fetchMatching : m_fetchAny;
        if (!one) {
            const QString isId =
                m_plan.mainAlias() + u'.' + TxGdal::quoteIdentifier(m_idName) + QStringLiteral(" = ?5");
            const QStringList conditions = matching ? m_conditions + QStringList{isId} : QStringList{isId};
            one = prepared(matching ? m_plan.select(idColumnOf, m_geometryColumn, conditions)
                                    : m_plan.unfiltered().select(idColumnOf, m_geometryColumn, conditions));
            if (!one)
                return false;
        }
        if (!readyIndex())
            return false;
        sqlite3_bind_int64(one.get(), 5, id);
        const bool found = sqlite3_step(one.get()) == SQLITE_ROW;
        if (found) {
            record.id = id;
            record.values.clear();
            for (size_t i = 0; i < m_types.size(); ++i)
                record.values.push_back(read(one.get(), static_cast<int>(i), m_types[i]));
            record.geometry = geometryIn(one.get());
        }
        sqlite3_reset(one.get());
        return found;
    }

    qint64 count() override
    {
        const Statement counting = prepared(m_plan.selectCount(idColumnOf, m_conditions));
        return counting && readyIndex() && sqlite3_step(counting.get()) == SQLITE_ROW
                   ? sqlite3_column_int64(counting.get(), 0)
                   : -1;
    }

private:
    /// Sees to it that the spatial index, if this walk uses it, knows the records that were added last.
    bool readyIndex() { return !m_usesIndex || !m_vector.pausedIndex() || m_vector.resumeIndex(); }

    /// Records whose bounds meet the query's: by the spatial index where there is one. Parameters ?1 … ?4 are the
    /// rectangle's edges.
    void addBounds(OGRLayer &layer, const QString &table)
    {
        const QString column = QString::fromUtf8(layer.GetGeometryColumn());
        if (column.isEmpty())
            return;
        if (layer.TestCapability(OLCFastSpatialFilter)) {
            m_usesIndex = true;
            layer.SyncToDisk(); // the driver holds new entries of the index back
            const QString index = TxGdal::quoteIdentifier(QStringLiteral("rtree_") + table + u'_' + column);
            const bool indexFirst =
                (m_plan.query().options & CTxQueryDef::AnyOrder) && m_plan.isPlain() && m_plan.query().filter.isEmpty();
            if (indexFirst) {
                m_plan.setLeadingTable(index + QStringLiteral(" AS tx_index"));
                m_conditions.append(
                    QStringLiteral("tx_index.maxx >= ?1 AND tx_index.minx <= ?3 AND tx_index.maxy >= ?2 "
                                   "AND tx_index.miny <= ?4 AND %1.%2 = tx_index.id")
                        .arg(m_plan.mainAlias(), TxGdal::quoteIdentifier(QString::fromUtf8(layer.GetFIDColumn()))));
                return;
            }
            // In the table's order: SQLite gathers all that the index gives before the first record comes.
            m_conditions.append(
                QStringLiteral(
                    "%1.%2 IN (SELECT id FROM %3 WHERE maxx >= ?1 AND minx <= ?3 AND maxy >= ?2 AND miny <= ?4)")
                    .arg(m_plan.mainAlias(), TxGdal::quoteIdentifier(QString::fromUtf8(layer.GetFIDColumn())), index));
        } else {
            const QString geometry = m_plan.mainAlias() + u'.' + TxGdal::quoteIdentifier(column);
            m_conditions.append(QStringLiteral("ST_MaxX(%1) >= ?1 AND ST_MinX(%1) <= ?3 AND ST_MaxY(%1) >= ?2 AND "
                                               "ST_MinY(%1) <= ?4")
                                    .arg(geometry));
        }
    }

    Statement prepared(const QString &sql)
    {
        const QByteArray text = sql.toUtf8();
        // Elsewhere SQLite reads "no such field" as a text, which would hide a misspelt name.
        int quotedTexts = 1;
        sqlite3_db_config(m_database, SQLITE_DBCONFIG_DQS_DML, -1, &quotedTexts);
        sqlite3_db_config(m_database, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
        sqlite3_stmt *raw = nullptr;
        const int result =
            sqlite3_prepare_v2(m_database, text.constData(), static_cast<int>(text.size()), &raw, nullptr);
        sqlite3_db_config(m_database, SQLITE_DBCONFIG_DQS_DML, quotedTexts, nullptr);
        Statement statement(raw);
        if (result != SQLITE_OK || !sqlite3_stmt_readonly(raw)) {
            fail();
            return nullptr;
        }
        const CRect2D &bounds = m_plan.query().bounds;
        const std::array edges = {bounds.left, bounds.bottom, bounds.right, bounds.top};
        const int parameters = sqlite3_bind_parameter_count(raw);
        for (int i = 0; i < 4 && i < parameters; ++i)
            sqlite3_bind_double(raw, i + 1, edges[static_cast<size_t>(i)]);
        return statement;
    }

    void fail() const
    {
        TxGdal::fail(QStringLiteral("The query failed: ") + QString::fromUtf8(sqlite3_errmsg(m_database)));
    }

    static CTxVariant read(sqlite3_stmt *statement, int column, qint16 type)
    {
        return TxFieldTypes::fromRaw(rawIn(statement, column, type), type);
    }

    static TxRawValue rawIn(sqlite3_stmt *statement, int column, qint16 type)
    {
        if (sqlite3_column_type(statement, column) == SQLITE_NULL)
            return TxRawValue();
        const auto dataIn = [&](TxRawValue::Kind kind, const void *data) {
            return TxRawValue::ofData(kind, data, static_cast<size_t>(sqlite3_column_bytes(statement, column)));
        };
        switch (type) {
        case CTxFieldInfo::Boolean:
        case CTxFieldInfo::Byte:
        case CTxFieldInfo::Short:
        case CTxFieldInfo::Long:
            return TxRawValue::ofInteger(sqlite3_column_int64(statement, column));
        case CTxFieldInfo::Single:
        case CTxFieldInfo::Double:
        case CTxFieldInfo::Currency:
        case CTxFieldInfo::Numeric:
        case CTxFieldInfo::Float:
            return TxRawValue::ofReal(sqlite3_column_double(statement, column));
        case CTxFieldInfo::Binary:
        case CTxFieldInfo::LongBinary:
        case CTxFieldInfo::GeometryBinary:
            return dataIn(TxRawValue::Bytes, sqlite3_column_blob(statement, column));
        case CTxFieldInfo::Date:
        case CTxFieldInfo::Time: {
            OGRField date;
            const char *text = reinterpret_cast<const char *>(sqlite3_column_text(statement, column));
            return text && OGRParseDate(text, &date, 0) ? TxRawValue::ofMoment(date) : TxRawValue();
        }
        default:
            return dataIn(TxRawValue::Text, sqlite3_column_text(statement, column));
        }
    }

    std::unique_ptr<OGRGeometry> geometryIn(sqlite3_stmt *statement) const
    {
        if (m_geometryColumn.isEmpty())
            return nullptr;
        const int column = static_cast<int>(m_types.size());
        const void *bytes = sqlite3_column_blob(statement, column);
        return geometryOf(QByteArrayView(static_cast<const char *>(bytes), sqlite3_column_bytes(statement, column)));
    }

    sqlite3 *const m_database; // the driver's
    TxVectorPrivate &m_vector;
    TxQueryPlan m_plan;
    const QString m_idName;
    QString m_geometryColumn; // empty when no geometry is wanted
    QStringList m_conditions;
    bool m_usesIndex = false;
    std::vector<qint16> m_types; // of the recordset's fields
    Statement m_statement;
    Statement m_fetchMatching;
    Statement m_fetchAny;
};

} // namespace

std::unique_ptr<TxCursor> TxCursors::makeSqlite(TxVectorPrivate &vector, const TxQueryPlan &plan, bool &refused)
{
    refused = false;
    if (!vector.dataSource().isGeoPackage() || idColumnOf(vector).isEmpty())
        return nullptr;
    auto cursor = std::make_unique<SqliteCursor>(vector, plan);
    refused = !cursor->prepare();
    return refused ? nullptr : std::move(cursor);
}

#include "engine/data/GeoPackageRecount.h"

#include "engine/base/TxSqlite.h"

#include <ogrsf_frmts.h>
#include <sqlite3.h>

#include <tuple>

using TxSqlite::Statement;

namespace {

/// The values of one record as they are stored, to be written back to it.
class StoredRecord
{
public:
    StoredRecord(sqlite3 *database, const QString &table, const QString &idColumn, qint64 id) : m_database(database)
    {
        // Neither the identifier nor columns that are worked out.
        Statement columns(database, "SELECT name FROM pragma_table_xinfo(?) WHERE hidden = 0 AND pk = 0");
        columns.bind(table);
        QStringList names;
        while (columns.next())
            names.append(TxGdal::quoteIdentifier(columns.text(0)));
        const QString isRecord = QStringLiteral(" WHERE %1 = %2").arg(TxGdal::quoteIdentifier(idColumn)).arg(id);
        Statement record(
            database,
            QStringLiteral("SELECT %1 FROM %2").arg(names.join(QStringLiteral(", ")), TxGdal::quoteIdentifier(table)) +
                isRecord);
        if (record.next()) {
            for (int i = 0; i < names.size(); ++i)
                m_values.emplace_back(sqlite3_value_dup(sqlite3_column_value(record.handle(), i)));
        }
        m_update = QStringLiteral("UPDATE %1 SET %2 = ?")
                       .arg(TxGdal::quoteIdentifier(table), names.join(QStringLiteral(" = ?, "))) +
                   isRecord;
    }

    bool writeBack() const
    {
        if (m_values.empty())
            return false;
        Statement update(m_database, m_update);
        for (size_t i = 0; i < m_values.size() && update.handle(); ++i)
            sqlite3_bind_value(update.handle(), static_cast<int>(i) + 1, m_values[i].get());
        return update.run();
    }

private:
    struct Freer
    {
        void operator()(sqlite3_value *value) const { sqlite3_value_free(value); }
    };

    sqlite3 *const m_database;
    std::vector<std::unique_ptr<sqlite3_value, Freer>> m_values;
    QString m_update;
};

/// A geometry of the layer's kind from one corner of @p bounds to the other; for points, which cover but one place, at
/// one of the corners.
std::unique_ptr<OGRGeometry> geometryOver(const OGREnvelope &bounds, OGRwkbGeometryType type, bool atUpperCorner)
{
    const OGRwkbGeometryType flat = wkbFlatten(type);
    if (flat == wkbPoint || flat == wkbMultiPoint) {
        auto point = atUpperCorner ? std::make_unique<OGRPoint>(bounds.MaxX, bounds.MaxY)
                                   : std::make_unique<OGRPoint>(bounds.MinX, bounds.MinY);
        return std::unique_ptr<OGRGeometry>(OGRGeometryFactory::forceTo(point.release(), type));
    }
    auto ring = std::make_unique<OGRLinearRing>();
    for (const auto &[x, y] : {std::pair(bounds.MinX, bounds.MinY), std::pair(bounds.MinX, bounds.MaxY),
                               std::pair(bounds.MaxX, bounds.MaxY), std::pair(bounds.MinX, bounds.MinY)})
        ring->addPoint(x, y);
    auto polygon = std::make_unique<OGRPolygon>();
    polygon->addRingDirectly(ring.release());
    return std::unique_ptr<OGRGeometry>(flat == wkbUnknown ? polygon.release()
                                                           : OGRGeometryFactory::forceTo(polygon.release(), type));
}

QString triggerName(const TxVectorPrivate &target)
{
    return QStringLiteral("trigger_insert_feature_count_") + QString::fromUtf8(target.source);
}

} // namespace

bool GeoPackageRecount::forgetCount(TxVectorPrivate &target)
{
    // A statement that deletes nothing; the driver looks for the layer's name in the text.
    const QString table = QString::fromUtf8(target.source);
    const QString sql = QStringLiteral("DELETE FROM %1 WHERE 0 AND %2 <> ''")
                            .arg(TxGdal::quoteIdentifier(table), TxGdal::quoteText(table));
    GDALDataset &storage = *target.dataSource().gdal;
    const TxGdal::ErrorCollector errors;
    storage.ReleaseResultSet(storage.ExecuteSQL(sql.toUtf8().constData(), nullptr, nullptr));
    return !errors.hasFailure() || errors.fail(QStringLiteral("The count of the records cannot be read"));
}

bool GeoPackageRecount::begin()
{
    OGRLayer *layer = m_target.idleLayer();
    if (!layer)
        return false;
    OGREnvelope before;
    if (layer->GetGeomType() != wkbNone)
        std::ignore =
            layer->GetExtent(&before, TRUE); // the driver would take the extent of the new records for that of all
    if (!forgetCount(m_target))
        return false;

    sqlite3 *database = TxSqlite::connection(*m_target.dataSource().gdal);
    Statement trigger(database, "SELECT sql FROM sqlite_master WHERE type = 'trigger' AND lower(name) = lower(?)");
    if (trigger.bind(triggerName(m_target)).next())
        m_trigger = trigger.text(0);
    return m_trigger.isEmpty() || TxSqlite::execute(database, QStringLiteral("DROP TRIGGER ") +
                                                                  TxGdal::quoteIdentifier(triggerName(m_target)));
}

bool GeoPackageRecount::end(qint64 added, qint64 id, const OGREnvelope &bounds)
{
    sqlite3 *database = TxSqlite::connection(*m_target.dataSource().gdal);
    const QString table = QString::fromUtf8(m_target.source);
    OGRLayer *layer = m_target.idleLayer();
    if (!layer || (!m_trigger.isEmpty() && !TxSqlite::execute(database, m_trigger)))
        return false;
    if (added == 0)
        return true;
    if (TxSqlite::integerOf(database, "SELECT count(*) FROM sqlite_master WHERE name = 'gpkg_ogr_contents'", {}) > 0) {
        // Without the trigger nobody kept the count: it is unknown.
        Statement count(database, m_trigger.isEmpty() || added < 0
                                      ? "UPDATE gpkg_ogr_contents SET feature_count = nullif(?1, ?1) "
                                        "WHERE lower(table_name) = lower(?2)"
                                      : "UPDATE gpkg_ogr_contents SET feature_count = feature_count + ?1 "
                                        "WHERE lower(table_name) = lower(?2)");
        if (!count.bind(added).bind(table).run())
            return false;
    }
    Statement changed(database, "UPDATE gpkg_contents SET last_change = strftime('%Y-%m-%dT%H:%M:%fZ', 'now') "
                                "WHERE lower(table_name) = lower(?)");
    return changed.bind(table).run() && (!bounds.IsInit() || widenExtent(*layer, id, bounds)) &&
           layer->SyncToDisk() == OGRERR_NONE && layer->GetFeatureCount(TRUE) >= 0;
}

/// The driver widens the extent that it remembers (and writes some time) by the records that it writes itself. It is
/// given one that reaches from corner to corner; the record is then written back as it was.
bool GeoPackageRecount::widenExtent(OGRLayer &layer, qint64 id, const OGREnvelope &bounds) const
{
    OGREnvelope before;
    if (layer.GetExtent(&before, FALSE) == OGRERR_NONE && before.Contains(bounds))
        return true;
    const StoredRecord record(TxSqlite::connection(*m_target.dataSource().gdal), QString::fromUtf8(m_target.source),
                              QString::fromUtf8(layer.GetFIDColumn()), id);
    const OGRFeatureUniquePtr feature(layer.GetFeature(id));
    if (!feature)
        return false;
    for (const bool atUpperCorner : {false, true}) {
        feature->SetGeometryDirectly(geometryOver(bounds, layer.GetGeomType(), atUpperCorner).release());
        if (layer.SetFeature(feature.get()) != OGRERR_NONE)
            return false;
    }
    return record.writeBack();
}

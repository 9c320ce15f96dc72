#include "engine/data/TxNewCoordSys.h"

#include "engine/base/TxSqlite.h"

#include <algorithm>

bool TxNewCoordSys::read(const QString &text)
{
    if (text.trimmed().isEmpty())
        return true;
    static constexpr const char *limits[] = {"ALLOW_NETWORK_ACCESS=NO", "ALLOW_FILE_ACCESS=NO", nullptr};
    m_isGiven = m_system.SetFromUserInput(text.toUtf8().constData(), limits) == OGRERR_NONE;
    m_system.SetAxisMappingStrategy(OAMS_TRADITIONAL_GIS_ORDER);
    if (m_isGiven) {
        static constexpr const char *oldForm[] = {"FORMAT=WKT1_GDAL", nullptr};
        const TxGdal::ErrorCollector complaints;
        char *wkt = nullptr;
        m_system.exportToWkt(&wkt, oldForm);
        CPLFree(wkt);
        m_complaints = complaints.messages();
    }
    return m_isGiven;
}

bool TxNewCoordSys::hasFailed(const TxGdal::ErrorCollector &errors) const
{
    const QStringList messages = errors.messages();
    return errors.hasFailure() && std::any_of(messages.begin(), messages.end(), [this](const QString &message) {
               return !m_complaints.contains(message);
           });
}

qint64 TxNewCoordSys::columnCount(GDALDataset &dataset)
{
    TxSqlite::Statement columns(TxSqlite::connection(dataset),
                                "SELECT count(*) FROM pragma_table_info('gpkg_spatial_ref_sys')");
    return columns.next() ? columns.integer(0) : 0;
}

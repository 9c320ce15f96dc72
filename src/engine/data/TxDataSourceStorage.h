#pragma once

#include "engine/base/TxExport.h"

#include <QList>
#include <QString>
#include <QStringList>

/// Where datasources are stored: the kinds of storage and their one table.
struct TX_EXPORT CTxDataSourceStorage
{
    /// The engine type of a datasource, as files and callers know it. Do not change the values.
    enum Type : qint32 {
        Unknown = -1,
        Shapefile = 0,
        GeoPackage = 2,
        PostgreSQL = 4,
        ImageFile = 5,
        DGN = 8,
        DXF = 9,
        GeoJSON = 10,
        MapInfo = 12,
        Native = 14,
        KML = 15,
        CSV = 16,
        GML = 17,
        SQLite = 18,
        FileGDB = 19,
        E00 = 20,
        VirtualVector = 21,
        OtherVector = 22
    };

    /// One kind of storage.
    struct Entry
    {
        Type type;              ///< the engine type
        QString caption;        ///< what users call it (English)
        QStringList drivers;    ///< short names of the GDAL drivers that open it, the preferred one first
        QStringList extensions; ///< file extensions without the dot, lower case, the preferred one first
        bool isDatabase;        ///< opened by a connection string, not by a path
        bool canCreate;         ///< new datasources of this kind can be made
    };

    /// Every kind of storage, in a fixed order.
    static const QList<Entry> &table();
    /// The row of @p type, null when there is none.
    static const Entry *find(Type type);
    /// The kind that a GDAL driver's datasets belong to; OtherVector or ImageFile for drivers without a row.
    static Type typeOfDriver(const QString &driver, bool hasVector);
};

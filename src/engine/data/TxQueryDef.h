#pragma once

#include "engine/base/TxExport.h"
#include "engine/geometry/Rect2D.h"

#include <QList>
#include <QString>
#include <QStringList>

/// A join of a foreign table to the dataset that is queried: records are paired where the two fields are equal.
struct CTxJoinItem
{
    enum Kind {
        InnerJoin, ///< records without a partner are left out
        LeftJoin   ///< records without a partner show nulls in the foreign fields
    };
    QString foreignDataset; ///< dataset of the same datasource
    QString localField;     ///< field of the queried dataset
    QString foreignField;   ///< field of the foreign dataset
    Kind kind = LeftJoin;

    bool operator==(const CTxJoinItem &other) const = default;
};

/// A query: which records, which fields, in which order. A value type, filled before the query.
///
/// Everything left as it is asks for all records, all fields and the dataset's own order.
class TX_EXPORT CTxQueryDef
{
public:
    /// What need not be fetched or kept; the flags are combined.
    enum Option : quint32 {
        NoOption = 0,
        SkipGeometry = 0x1,  ///< geometries are not wanted; CTxRecordset::GetGeometry fails
        SkipAttributes = 0x2, ///< only TxID and geometry are wanted
        AnyOrder = 0x4        ///< the order does not matter; the first record in a large "bounds" may then come sooner
    };

    QString filter;           ///< an SQL condition over the fields; empty for every record
    QStringList fields;       ///< names of the wanted fields, in the wanted order; empty for all
    QStringList orderBy;      ///< field names, each optionally followed by " ASC" or " DESC"
    QList<CTxJoinItem> joins; ///< foreign tables; their fields appear as "dataset.field"
    CRect2D bounds;           ///< only records whose bounds meet this rectangle; void for no such test
    quint32 options = NoOption;
};

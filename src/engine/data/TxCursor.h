#pragma once

#include "engine/base/TxVariant.h"

#include "engine/data/TxRawValue.h"

#include <QByteArray>

#include <ogr_geometry.h>

#include <memory>
#include <vector>

/// One record, taken out of a walk.
struct TxRecord
{
    qint64 id = -1;
    std::vector<CTxVariant> values; ///< one for each field of the recordset
    std::unique_ptr<OGRGeometry> geometry;
    QByteArray style; ///< how the source draws the record, in OGR's style language; empty where it does not say
};

/// A walk over the records that a query gives; how it is done depends on the storage. Cursors of the same dataset do
/// not disturb one another.
class TxCursor
{
public:
    virtual ~TxCursor() = default;
    TxCursor(const TxCursor &) = delete;
    TxCursor &operator=(const TxCursor &) = delete;

    /// Goes to the first record. @return false when there is none, or on failure.
    virtual bool first() = 0;
    /// Goes to the next record. @return false behind the last.
    virtual bool next() = 0;
    /// The current record's identifier. Valid only while the last move succeeded, as the next two.
    virtual qint64 id() const = 0;
    /// Reads the field at @p index of the recordset.
    virtual void value(int index, CTxVariant &value) const = 0;
    /// The same as the storage gives it, without a copy; valid until the next call or move.
    virtual TxRawValue raw(int index) const = 0;
    /// A copy of the geometry, null when there is none.
    virtual std::unique_ptr<OGRGeometry> geometry() const = 0;
    /// The geometry itself where that saves a copy: the record has none afterwards.
    virtual std::unique_ptr<OGRGeometry> takeGeometry() { return geometry(); }
    /// How the source draws the current record, in OGR's style language; empty where it does not say.
    virtual QByteArray style() const { return QByteArray(); }
    /// Reads the record @p id apart from the walk, which stays where it is. With @p matching only if the query gives
    /// it. @return false when there is none.
    virtual bool fetch(qint64 id, bool matching, TxRecord &record) = 0;
    /// How many records the query gives, -1 when it cannot be told.
    virtual qint64 count() = 0;

protected:
    TxCursor() = default;
};

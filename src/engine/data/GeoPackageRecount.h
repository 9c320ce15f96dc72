#pragma once

#include "engine/data/TxVectorPrivate.h"

#include <ogr_core.h>

/// Keeps right what a GeoPackage and its driver note of a table (how many records there are, what they cover, when they
/// changed) while records are added by SQL. A private header.
///
/// The triggers that count records one by one are put aside meanwhile. All of it is part of the transaction or
/// savepoint within which it happens.
class GeoPackageRecount
{
public:
    explicit GeoPackageRecount(TxVectorPrivate &target) : m_target(target) {}

    /// Makes the driver of the GeoPackage or SQLite file write what it holds back of @p target and forget the count it
    /// remembers. @return false on failure, reported to the error collectors.
    static bool forgetCount(TxVectorPrivate &target);
    /// To be called before records are added. @return false on failure, reported to the error collectors, as below.
    bool begin();
    /// To be called behind the last of @p added records (-1 when it is not known how many there are), one of which has
    /// the identifier @p id. @p bounds is what they cover, not initialised when that is nothing.
    bool end(qint64 added, qint64 id, const OGREnvelope &bounds);

private:
    bool widenExtent(OGRLayer &layer, qint64 id, const OGREnvelope &bounds) const;

    TxVectorPrivate &m_target;
    QString m_trigger; // the statement that makes it; empty when there is none
};

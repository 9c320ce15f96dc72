#pragma once

#include "engine/base/TxVariant.h"
#include "engine/data/TxFieldInfo.h"
#include "engine/data/TxRawValue.h"

#include <ogr_feature.h>

/// How OGR's fields and values read as ours. A private header.
namespace TxFieldTypes {

/// The description of an OGR field. A text without a bound stays Text with size 0; JSON is Memo; both dates and dates
/// with a time are Date; lists are shown as Text; whole numbers of 64 bits are Long, and their values tell when they
/// are wider.
CTxFieldInfo fromOgr(const OGRFieldDefn &field);

/// A whole number as a field of type Long gives it: Long where it fits, else Int64.
inline CTxVariant wholeNumber(qint64 value)
{
    const auto narrow = static_cast<qint32>(value);
    return narrow == value ? CTxVariant(narrow) : CTxVariant(value);
}

/// A whole number as a field of type @p type (a CTxFieldInfo::Type) gives it.
CTxVariant fromInteger(qint16 type, qint64 value);
/// A real number as a field of type @p type gives it.
CTxVariant fromReal(qint16 type, double value);
/// A date. A time without a date is given on 30 December 1899, a moment without a zone as UTC; a date has the time
/// 0:00.
CTxVariant fromDate(const OGRField &value);

/// The value of OGR field @p ogrIndex of @p feature, as a field of type @p type gives it.
CTxVariant fromFeature(const OGRFeature &feature, int ogrIndex, qint16 type);

/// The same, not copied: valid until the feature changes or another value of it is asked for.
TxRawValue rawOf(const OGRFeature &feature, int ogrIndex);
/// The value @p raw, as a field of type @p type gives it.
CTxVariant fromRaw(const TxRawValue &raw, qint16 type);

} // namespace TxFieldTypes

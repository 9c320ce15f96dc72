#pragma once

#include <QtGlobal>

#include <ogr_core.h>

/// A value as a storage gives it, not copied. A private header.
struct TxRawValue
{
    enum Kind {
        Null,
        Integer,
        Real,
        Text,  ///< UTF-8, a zero byte behind it
        Bytes, ///< any
        Moment ///< a date, a time or both
    };

    Kind kind = Null;
    qint64 integer = 0;
    double real = 0.0;
    const char *data = nullptr; ///< of texts and bytes, with their size; belongs to whoever gave the value
    size_t size = 0;
    OGRField moment = {};

    static TxRawValue ofInteger(qint64 value)
    {
        TxRawValue raw;
        raw.kind = Integer;
        raw.integer = value;
        return raw;
    }
    static TxRawValue ofReal(double value)
    {
        TxRawValue raw;
        raw.kind = Real;
        raw.real = value;
        return raw;
    }
    static TxRawValue ofData(Kind kind, const void *data, size_t size)
    {
        TxRawValue raw;
        raw.kind = kind;
        raw.data = static_cast<const char *>(data);
        raw.size = size;
        return raw;
    }
    static TxRawValue ofMoment(const OGRField &value)
    {
        TxRawValue raw;
        raw.kind = Moment;
        raw.moment = value;
        return raw;
    }
};

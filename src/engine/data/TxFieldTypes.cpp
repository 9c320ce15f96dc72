#include "engine/data/TxFieldTypes.h"

#include "engine/data/TxFieldDefinition.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace TxFieldTypes {

namespace {

/// One OGR type with its subtype. Rows without a subtype stand for every other subtype, and come last.
struct TypeRow
{
    OGRFieldType type;
    OGRFieldSubType subType;
    CTxFieldInfo::Type code;
};

constexpr std::array typeRows = {
    TypeRow{OFTInteger, OFSTBoolean, CTxFieldInfo::Boolean}, TypeRow{OFTInteger, OFSTInt16, CTxFieldInfo::Short},
    TypeRow{OFTReal, OFSTFloat32, CTxFieldInfo::Single},     TypeRow{OFTString, OFSTJSON, CTxFieldInfo::Memo},
    TypeRow{OFTInteger, OFSTNone, CTxFieldInfo::Long},       TypeRow{OFTInteger64, OFSTNone, CTxFieldInfo::Long},
    TypeRow{OFTReal, OFSTNone, CTxFieldInfo::Double},        TypeRow{OFTString, OFSTNone, CTxFieldInfo::Text},
    TypeRow{OFTDate, OFSTNone, CTxFieldInfo::Date},          TypeRow{OFTDateTime, OFSTNone, CTxFieldInfo::Date},
    TypeRow{OFTTime, OFSTNone, CTxFieldInfo::Time},          TypeRow{OFTBinary, OFSTNone, CTxFieldInfo::LongBinary},
};

} // namespace

CTxFieldInfo fromOgr(const OGRFieldDefn &field)
{
    const auto row = std::find_if(typeRows.begin(), typeRows.end(), [&field](const TypeRow &r) {
        return r.type == field.GetType() && (r.subType == OFSTNone || r.subType == field.GetSubType());
    });
    CTxFieldInfo info;
    info.SetName(QString::fromUtf8(field.GetNameRef()));
    info.SetType(row == typeRows.end() ? qint16(CTxFieldInfo::Text) : qint16(row->code));
    info.SetSize(std::max(field.GetWidth(), 0));
    if (field.GetType() == OFTInteger64 && info.GetSize() == 0)
        info.SetSize(TxFieldDefinition::wideDigits); // so that a copy has room for its values
    info.SetPrecision(std::max(field.GetPrecision(), 0));
    if (const char *caption = field.GetAlternativeNameRef(); caption && *caption)
        info.SetCaption(QString::fromUtf8(caption));
    if (const char *text = field.GetDefault()) {
        QString value = QString::fromUtf8(text); // an SQL literal
        if (value.size() >= 2 && value.startsWith(u'\'') && value.endsWith(u'\''))
            value = value.mid(1, value.size() - 2).replace(QStringLiteral("''"), QStringLiteral("'"));
        info.SetDefault(value);
    }
    quint32 flags = CTxFieldInfo::NoFlag;
    if (!field.IsNullable())
        flags |= CTxFieldInfo::Required;
    if (field.IsUnique())
        flags |= CTxFieldInfo::Unique;
    info.SetFlags(flags);
    if (info.IsSystemField())
        info.SetFlags(flags | CTxFieldInfo::System | CTxFieldInfo::ReadOnly);
    return info;
}

CTxVariant fromInteger(qint16 type, qint64 value)
{
    switch (type) {
    case CTxFieldInfo::Boolean:
        return CTxVariant(value != 0);
    case CTxFieldInfo::Byte:
        return CTxVariant(static_cast<quint8>(value));
    case CTxFieldInfo::Short:
        return CTxVariant(static_cast<qint16>(value));
    case CTxFieldInfo::Long:
        return wholeNumber(value);
    default:
        return fromReal(type, static_cast<double>(value));
    }
}

CTxVariant fromReal(qint16 type, double value)
{
    switch (type) {
    case CTxFieldInfo::Single:
        return CTxVariant(static_cast<float>(value));
    case CTxFieldInfo::Currency:
        return CTxVariant::fromInteger(CTxVariant::Currency, std::llround(value * 10000.0));
    default:
        return CTxVariant(value);
    }
}

CTxVariant fromDate(const OGRField &value)
{
    constexpr int unknownZone = 0, localZone = 1, utc = 100, minutesPerStep = 15;
    const auto &date = value.Date;
    const QDate day = date.Year == 0 && date.Month == 0 ? QDate(1899, 12, 30) : QDate(date.Year, date.Month, date.Day);
    const auto seconds = static_cast<int>(date.Second);
    const auto milliseconds = static_cast<int>(std::lround((double(date.Second) - seconds) * 1000.0));
    // A leap second is more than a QTime can hold.
    const QTime time = QTime(date.Hour, date.Minute, std::min(seconds, 59)).addMSecs(milliseconds);
    if (date.TZFlag == unknownZone || date.TZFlag == localZone || date.TZFlag == utc)
        return CTxVariant(QDateTime(day, time, Qt::UTC));
    return CTxVariant(QDateTime(day, time, Qt::OffsetFromUTC, (date.TZFlag - utc) * minutesPerStep * 60));
}

CTxVariant fromFeature(const OGRFeature &feature, int ogrIndex, qint16 type)
{
    return fromRaw(rawOf(feature, ogrIndex), type);
}

TxRawValue rawOf(const OGRFeature &feature, int ogrIndex)
{
    if (!feature.IsFieldSetAndNotNullUnsafe(ogrIndex))
        return TxRawValue();
    const OGRField &raw = *feature.GetRawFieldRef(ogrIndex);
    switch (feature.GetFieldDefnRef(ogrIndex)->GetType()) {
    case OFTInteger:
        return TxRawValue::ofInteger(raw.Integer);
    case OFTInteger64:
        return TxRawValue::ofInteger(raw.Integer64);
    case OFTReal:
        return TxRawValue::ofReal(raw.Real);
    case OFTString:
        return TxRawValue::ofData(TxRawValue::Text, raw.String, qstrlen(raw.String));
    case OFTDate:
    case OFTTime:
    case OFTDateTime:
        return TxRawValue::ofMoment(raw);
    case OFTBinary:
        return TxRawValue::ofData(TxRawValue::Bytes, raw.Binary.paData, static_cast<size_t>(raw.Binary.nCount));
    default: {
        const char *text = feature.GetFieldAsString(ogrIndex);
        return TxRawValue::ofData(TxRawValue::Text, text, qstrlen(text));
    }
    }
}

CTxVariant fromRaw(const TxRawValue &raw, qint16 type)
{
    switch (raw.kind) {
    case TxRawValue::Null:
        break;
    case TxRawValue::Integer:
        return fromInteger(type, raw.integer);
    case TxRawValue::Real:
        return fromReal(type, raw.real);
    case TxRawValue::Text:
        return CTxVariant(QString::fromUtf8(raw.data, static_cast<qsizetype>(raw.size)));
    case TxRawValue::Bytes:
        return CTxVariant(QByteArray(raw.data, static_cast<qsizetype>(raw.size)));
    case TxRawValue::Moment:
        return fromDate(raw.moment);
    }
    return CTxVariant::null();
}

} // namespace TxFieldTypes

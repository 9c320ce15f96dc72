#include "engine/data/TxFieldValue.h"

#include "engine/base/TxNumberText.h"
#include "engine/data/TxFieldDefinition.h"

#include <ogr_feature.h>

#include <QDateTime>

#include <array>
#include <cmath>
#include <limits>
#include <optional>

namespace TxFieldValue {

namespace {

bool isText(const CTxVariant &value)
{
    return value.GetType() == CTxVariant::String || value.GetType() == CTxVariant::NarrowString ||
           value.GetType() == CTxVariant::WideString;
}

bool isBytes(const CTxVariant &value)
{
    return value.GetType() == CTxVariant::Blob || value.GetType() == CTxVariant::BlobObject ||
           value.GetType() == CTxVariant::ByteArray;
}

bool isReal(const CTxVariant &value)
{
    return value.GetType() == CTxVariant::Float || value.GetType() == CTxVariant::Double ||
           value.GetType() == CTxVariant::Decimal;
}

/// The value as a real number; nothing when it is none.
std::optional<double> realOf(const CTxVariant &value)
{
    if (isBytes(value) || value.GetType() == CTxVariant::Date)
        return std::nullopt;
    if (value.GetType() == CTxVariant::Boolean)
        return value.toBool() ? 1.0 : 0.0;
    double number = value.toDouble();
    if (isText(value)) {
        bool ok = false;
        number = TxNumberText::toDouble(value.toText(), &ok);
        if (!ok)
            return std::nullopt;
    }
    return std::isfinite(number) ? std::optional(number) : std::nullopt;
}

/// The value as a whole number; nothing when it is none.
std::optional<qint64> wholeOf(const CTxVariant &value)
{
    if (isText(value)) {
        bool ok = false;
        const qint64 number = value.toText().trimmed().toLongLong(&ok);
        if (ok)
            return number;
    } else if (value.GetType() == CTxVariant::UnsignedInt64 && value.toInt64() < 0) {
        return std::nullopt; // above the signed range
    } else if (!isReal(value) && value.GetType() != CTxVariant::Currency && value.GetType() != CTxVariant::Boolean) {
        return isBytes(value) || value.GetType() == CTxVariant::Date ? std::nullopt : std::optional(value.toInt64());
    }
    const std::optional<double> number = realOf(value);
    constexpr double limit = 9223372036854775808.0; // 2^63
    if (!number || *number != std::trunc(*number) || *number < -limit || *number >= limit)
        return std::nullopt;
    return static_cast<qint64>(*number);
}

struct WholeRange
{
    qint16 type;
    qint64 lowest, highest;
};

constexpr std::array wholeRanges = {
    WholeRange{CTxFieldInfo::Byte, 0, 255},
    WholeRange{CTxFieldInfo::Short, -32768, 32767},
    WholeRange{CTxFieldInfo::Long, std::numeric_limits<qint32>::min(), std::numeric_limits<qint32>::max()},
};

QString writeWhole(OGRFeature &feature, int index, const CTxFieldInfo &info, const CTxVariant &value)
{
    const std::optional<qint64> number = wholeOf(value);
    if (!number)
        return QStringLiteral("is no whole number");
    const OGRFieldDefn &field = *feature.GetFieldDefnRef(index);
    for (const WholeRange &range : wholeRanges) {
        const bool isWider = range.type == CTxFieldInfo::Long && field.GetType() == OFTInteger64;
        if (range.type == info.GetType() && !isWider && (*number < range.lowest || *number > range.highest))
            return QStringLiteral("is not within %1 and %2").arg(range.lowest).arg(range.highest);
    }
    if (field.GetWidth() > 0 && QString::number(*number).size() > field.GetWidth())
        return QStringLiteral("has more than %1 digits").arg(field.GetWidth());
    feature.SetField(index, static_cast<GIntBig>(*number));
    return QString();
}

/// True when @p number in characters, @p precision of them behind the point, has room in a field of @p size. Decimals
/// that have none are cut by the storage, which is fine where what is left is still the same double.
bool fitsFixed(double number, qint32 size, qint32 precision)
{
    const QString text = TxNumberText::fixed(number, precision);
    return text.size() <= size || TxNumberText::toDouble(text.left(size)) == TxNumberText::toDouble(text);
}

QString writeReal(OGRFeature &feature, int index, const CTxFieldInfo &info, const CTxVariant &value)
{
    const std::optional<double> number = realOf(value);
    if (!number)
        return QStringLiteral("is no number");
    if (info.GetType() == CTxFieldInfo::Single && std::abs(*number) > double(std::numeric_limits<float>::max()))
        return QStringLiteral("is too large for a single-precision number");
    if (info.GetType() == CTxFieldInfo::Currency && std::abs(*number) > TxFieldDefinition::largestCurrency)
        return QStringLiteral("is too large for an amount of money");
    const bool isFixed = info.GetSize() > 0 && (info.GetType() == CTxFieldInfo::Numeric || info.GetPrecision() > 0);
    if (isFixed && !fitsFixed(*number, info.GetSize(), info.GetPrecision()))
        return QStringLiteral("has more than %1 characters").arg(info.GetSize());
    feature.SetField(index, *number);
    return QString();
}

QString writeBoolean(OGRFeature &feature, int index, const CTxVariant &value)
{
    const QString text = isText(value) ? value.toText().trimmed() : QString();
    const bool isWord =
        text.compare(u"true", Qt::CaseInsensitive) == 0 || text.compare(u"false", Qt::CaseInsensitive) == 0;
    const std::optional<double> number = isWord ? std::nullopt : realOf(value);
    if (!isWord && !number)
        return QStringLiteral("is neither true nor false");
    feature.SetField(index, (isWord ? value.toBool() : *number != 0.0) ? 1 : 0);
    return QString();
}

QString writeText(OGRFeature &feature, int index, const CTxFieldInfo &info, const CTxVariant &value)
{
    if (isBytes(value))
        return QStringLiteral("is no text");
    const QString text = value.toText();
    if (text.contains(QChar(u'\0')))
        return QStringLiteral("holds a zero character");
    const QByteArray utf8 = text.toUtf8();
    const OGRFieldDefn &field = *feature.GetFieldDefnRef(index);
    const qsizetype noted = TxFieldDefinition::bound(info);
    const qsizetype bound = noted > 0 ? noted : field.GetWidth();
    if (bound > 0 && text.size() > bound && text.toUcs4().size() > bound)
        return QStringLiteral("has more than %1 characters").arg(bound);
    feature.SetField(index, utf8.constData());
    return QString();
}

QString writeBytes(OGRFeature &feature, int index, const CTxFieldInfo &info, const CTxVariant &value)
{
    if (!isBytes(value) && !isText(value))
        return QStringLiteral("is no sequence of bytes");
    const QByteArray bytes = value.toBytes();
    const qsizetype bound = TxFieldDefinition::bound(info);
    if (bound > 0 && bytes.size() > bound)
        return QStringLiteral("has more than %1 bytes").arg(bound);
    if (bytes.size() > std::numeric_limits<int>::max())
        return QStringLiteral("has more than 2 GB");
    feature.SetField(index, static_cast<int>(bytes.size()), bytes.constData());
    return QString();
}

/// Moments with a zone are kept as UTC; those of the local clock keep what the clock showed.
QString writeMoment(OGRFeature &feature, int index, const CTxVariant &value)
{
    QDateTime moment = value.toDateTime();
    if (moment.isValid() && moment.timeSpec() != Qt::LocalTime)
        moment = moment.toUTC();
    const QDate date = moment.date();
    if (!moment.isValid() || date.year() < 0 || date.year() > 9999)
        return QStringLiteral("is no date");
    const QTime time = moment.time();
    constexpr int unknownZone = 0, utc = 100;
    feature.SetField(index, date.year(), date.month(), date.day(), time.hour(), time.minute(),
                     static_cast<float>(time.second()) + static_cast<float>(time.msec()) / 1000.0F,
                     moment.timeSpec() == Qt::LocalTime ? unknownZone : utc);
    return QString();
}

QString writeTime(OGRFeature &feature, int index, const CTxVariant &value)
{
    const bool isMoment = value.GetType() == CTxVariant::Date;
    const QTime time = isMoment ? value.toDateTime().time() : QTime::fromString(value.toText().trimmed(), Qt::ISODate);
    if (!time.isValid())
        return QStringLiteral("is no time of day");
    if (feature.GetFieldDefnRef(index)->GetType() == OFTTime) {
        feature.SetField(index, 0, 0, 0, time.hour(), time.minute(),
                         static_cast<float>(time.second()) + static_cast<float>(time.msec()) / 1000.0F, 0);
    } else { // storages without such a type keep its text
        const QString format = time.msec() == 0 ? QStringLiteral("HH:mm:ss") : QStringLiteral("HH:mm:ss.zzz");
        feature.SetField(index, time.toString(format).toUtf8().constData());
    }
    return QString();
}

} // namespace

QString write(OGRFeature &feature, int ogrIndex, const CTxFieldInfo &info, const CTxVariant &value)
{
    const OGRFieldDefn &field = *feature.GetFieldDefnRef(ogrIndex);
    if (value.IsNull()) {
        if (!field.IsNullable())
            return QStringLiteral("may not be left out");
        feature.SetFieldNull(ogrIndex);
        return QString();
    }
    if (info.GetType() == CTxFieldInfo::Time)
        return writeTime(feature, ogrIndex, value);
    switch (field.GetType()) {
    case OFTInteger:
    case OFTInteger64:
        return info.GetType() == CTxFieldInfo::Boolean ? writeBoolean(feature, ogrIndex, value)
                                                       : writeWhole(feature, ogrIndex, info, value);
    case OFTReal:
        return writeReal(feature, ogrIndex, info, value);
    case OFTString:
        return writeText(feature, ogrIndex, info, value);
    case OFTBinary:
        return writeBytes(feature, ogrIndex, info, value);
    case OFTDate:
    case OFTDateTime:
        return writeMoment(feature, ogrIndex, value);
    default:
        return QStringLiteral("cannot be kept in a field of that kind");
    }
}

} // namespace TxFieldValue

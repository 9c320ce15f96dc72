#include "engine/base/TxVariant.h"

#include "engine/base/TxNumberText.h"

#include <cmath>
#include <limits>

namespace {

constexpr double currencyUnit = 10000.0; // currency counts ten-thousandths

/// @p value truncated toward zero and kept within 64 bits; 0 for what is no number.
qint64 truncated(double value)
{
    constexpr double limit = 9223372036854775808.0; // 2^63
    if (std::isnan(value))
        return 0;
    if (value >= limit)
        return std::numeric_limits<qint64>::max();
    if (value < -limit)
        return std::numeric_limits<qint64>::min();
    return static_cast<qint64>(value);
}

/// "12.5" of 125000 ten-thousandths, exactly.
QString currencyText(qint64 value)
{
    constexpr quint64 unit = 10000;
    const quint64 magnitude = value < 0 ? 0 - static_cast<quint64>(value) : static_cast<quint64>(value);
    QString text = QString::number(magnitude / unit);
    if (magnitude % unit != 0) {
        text += u'.' + QString::number(magnitude % unit).rightJustified(4, u'0');
        while (text.endsWith(u'0'))
            text.chop(1);
    }
    return value < 0 ? u'-' + text : text;
}

} // namespace

CTxVariant::CTxVariant(const QDateTime &value) : m_type(Date), m_value(value) {}

CTxVariant CTxVariant::null()
{
    CTxVariant result;
    result.m_type = Null;
    return result;
}

CTxVariant CTxVariant::fromInteger(Type type, qint64 value)
{
    CTxVariant result;
    result.m_type = type;
    result.m_value = value;
    return result;
}

CTxVariant CTxVariant::fromReal(Type type, double value)
{
    CTxVariant result;
    result.m_type = type;
    result.m_value = value;
    return result;
}

CTxVariant CTxVariant::fromText(Type type, const QString &value)
{
    CTxVariant result;
    result.m_type = type;
    result.m_value = value;
    return result;
}

CTxVariant CTxVariant::fromBytes(Type type, const QByteArray &value)
{
    CTxVariant result;
    result.m_type = type;
    result.m_value = value;
    return result;
}

qint64 CTxVariant::toInt64() const
{
    if (const auto *number = std::get_if<qint64>(&m_value)) {
        if (m_type == UnsignedInt64 && *number < 0) // more than 63 bits
            return std::numeric_limits<qint64>::max();
        return m_type == Currency ? *number / static_cast<qint64>(currencyUnit) : *number;
    }
    if (const auto *real = std::get_if<double>(&m_value))
        return truncated(*real);
    if (const auto *text = std::get_if<QString>(&m_value))
        return TxNumberText::atoll(*text);
    if (const auto *date = std::get_if<QDateTime>(&m_value))
        return date->isValid() ? date->toMSecsSinceEpoch() : 0;
    return 0;
}

double CTxVariant::toDouble() const
{
    if (const auto *number = std::get_if<qint64>(&m_value)) {
        if (m_type == Currency)
            return static_cast<double>(*number) / currencyUnit;
        return m_type == UnsignedInt64 ? static_cast<double>(static_cast<quint64>(*number))
                                       : static_cast<double>(*number);
    }
    if (const auto *real = std::get_if<double>(&m_value))
        return *real;
    if (const auto *text = std::get_if<QString>(&m_value))
        return TxNumberText::atof(*text);
    return 0;
}

bool CTxVariant::toBool() const
{
    if (const auto *text = std::get_if<QString>(&m_value)) {
        if (text->compare(u"true", Qt::CaseInsensitive) == 0)
            return true;
    }
    return toDouble() != 0;
}

QString CTxVariant::toText() const
{
    if (const auto *number = std::get_if<qint64>(&m_value)) {
        if (m_type == Boolean)
            return *number != 0 ? QStringLiteral("true") : QStringLiteral("false");
        if (m_type == Currency)
            return currencyText(*number);
        return m_type == UnsignedInt64 ? QString::number(static_cast<quint64>(*number)) : QString::number(*number);
    }
    if (const auto *real = std::get_if<double>(&m_value)) {
        // A single is shown with the digits that a single has.
        return m_type == Float ? TxNumberText::shortestSingle(static_cast<float>(*real))
                               : TxNumberText::shortest(*real);
    }
    if (const auto *text = std::get_if<QString>(&m_value))
        return *text;
    if (const auto *date = std::get_if<QDateTime>(&m_value))
        return date->toString(date->time().msec() != 0 ? Qt::ISODateWithMs : Qt::ISODate);
    return QString();
}

QByteArray CTxVariant::toBytes() const
{
    if (const auto *bytes = std::get_if<QByteArray>(&m_value))
        return *bytes;
    if (const auto *text = std::get_if<QString>(&m_value))
        return text->toUtf8();
    return QByteArray();
}

QDateTime CTxVariant::toDateTime() const
{
    if (const auto *date = std::get_if<QDateTime>(&m_value))
        return *date;
    if (const auto *text = std::get_if<QString>(&m_value))
        return QDateTime::fromString(*text, Qt::ISODateWithMs);
    return QDateTime();
}

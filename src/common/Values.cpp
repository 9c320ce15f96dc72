#include "common/ConstantTable.h"
#include "common/TdCommMethods.h"
#include "engine/base/TxNumberText.h"
#include "engine/base/TxVariant.h"

#include <QDateTime>
#include <QLocale>

#include <array>

namespace {

QString low32(const CTxVariant &value)
{
    return QString::number(static_cast<qint32>(static_cast<quint32>(value.toInt64())));
}

QString reals8(const CTxVariant &value)
{
    return TxNumberText::fixed(value.toDouble(), 8);
}

QString byteText(const CTxVariant &value)
{
    return QString::number(static_cast<quint8>(value.toInt64()));
}

QString bytesText(const CTxVariant &)
{
    return QStringLiteral("[BLOB]");
}

QString plainText(const CTxVariant &value)
{
    return value.toText();
}

/// How the values of one code are written.
struct ValueTextRow
{
    CTxVariant::Type type;
    QString (*text)(const CTxVariant &value);
};
// Codes without a row have no text. Deliberate: bytes are read as unsigned, and unsigned and 64-bit numbers show their
// low 32 bits as a signed number. Texts made so are stored and compared by callers.
constexpr auto valueTexts = std::to_array<ValueTextRow>({
    {CTxVariant::Short, [](const CTxVariant &v) { return QString::number(static_cast<qint16>(v.toInt64())); }},
    {CTxVariant::Long, low32},
    {CTxVariant::Int, low32},
    {CTxVariant::UnsignedInt, low32},
    {CTxVariant::Float, [](const CTxVariant &v) { return TxNumberText::fixed(v.toDouble(), 4); }},
    {CTxVariant::Double, reals8},
    {CTxVariant::Decimal, reals8},
    {CTxVariant::Currency, [](const CTxVariant &v) { return QLocale::system().toCurrencyString(v.toDouble()); }},
    {CTxVariant::Date, [](const CTxVariant &v) { return v.toDateTime().toString(u"yyyy-MM-dd HH:mm:ss"); }},
    {CTxVariant::String, plainText},
    {CTxVariant::NarrowString, plainText},
    {CTxVariant::WideString, plainText},
    {CTxVariant::Boolean,
     [](const CTxVariant &v) { return v.toInt64() != 0 ? QStringLiteral("TRUE") : QStringLiteral("FALSE"); }},
    {CTxVariant::SignedByte, byteText},
    {CTxVariant::Byte, byteText},
    {CTxVariant::UnsignedShort, [](const CTxVariant &v) { return QString::number(static_cast<quint16>(v.toInt64())); }},
    {CTxVariant::UnsignedLong, low32},
    {CTxVariant::Int64, low32},
    {CTxVariant::UnsignedInt64, low32},
    {CTxVariant::Void,
     [](const CTxVariant &v) { return QString::number(static_cast<quint32>(v.toInt64()), 16).rightJustified(8); }},
    {CTxVariant::Blob, bytesText},
    {CTxVariant::BlobObject, bytesText},
    {CTxVariant::ByteArray, bytesText},
});
static_assert(TdTable::hasUniqueKeys(valueTexts, &ValueTextRow::type));

} // namespace

QString CTdCommMethods::VAR2STR(const CTxVariant &value)
{
    const ValueTextRow *row = TdTable::find(valueTexts, &ValueTextRow::type, value.GetType());
    return row ? row->text(value) : QString();
}

QString CTdCommMethods::StringAlign(const QString &text, int width)
{
    // Deliberate: the fixed 13 is the room that columns of numbers have, whatever width was asked for.
    constexpr int room = 13;
    return text.size() < width ? text.leftJustified(width, u'0') : text.left(room);
}

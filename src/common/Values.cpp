#include "common/ConstantTable.h"
#include "common/TdCommMethods.h"
#include "engine/base/TxNumberText.h"
#include "engine/base/TxVariant.h"

#include <QDateTime>
#include <QLocale>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace {

QString low32(const CTxVariant &value)
{
    return TxNumberText::whole(value.toInt32());
}

QString low32OfUnsigned(const CTxVariant &value)
{
    const qint64 number = value.toInt64(); // kept within 63 bits: where it is at their end, the text is exact
    const bool isExact = number != std::numeric_limits<qint64>::max();
    return isExact ? low32(value) : TxNumberText::whole(static_cast<qint32>(value.toText().toULongLong()));
}

QString reals8(const CTxVariant &value)
{
    return TxNumberText::fixed(value.toDouble(), 8);
}

QString byteText(const CTxVariant &value)
{
    return TxNumberText::whole(static_cast<quint8>(value.toInt64()));
}

QString bytesText(const CTxVariant &)
{
    return QStringLiteral("[BLOB]");
}

QString plainText(const CTxVariant &value)
{
    return value.toText();
}

/// "%Y-%m-%d %H:%M:%S" of the date and time as they are in the value's own zone; empty for no date.
QString dateText(const CTxVariant &value)
{
    const QDateTime moment = value.toDateTime();
    if (!moment.isValid())
        return QString();
    int year = 0, month = 0, day = 0;
    moment.date().getDate(&year, &month, &day);
    if (year < 0 || year > 9999)
        return moment.toString(u"yyyy-MM-dd HH:mm:ss");
    const QTime time = moment.time();
    std::array<char16_t, 20> text = {u"0000-00-00 00:00:00"};
    const auto put = [&text](size_t end, int number) {
        for (; number > 0; number /= 10)
            text[--end] = static_cast<char16_t>(u'0' + number % 10);
    };
    put(4, year);
    put(7, month);
    put(10, day);
    put(13, time.hour());
    put(16, time.minute());
    put(19, time.second());
    return QString(reinterpret_cast<const QChar *>(text.data()), text.size() - 1);
}

QString wordText(const CTxVariant &value)
{
    return QString::number(static_cast<quint32>(value.toInt64()), 16).rightJustified(8);
}

/// The amount as the user's locale writes one, with halves of the last decimal that is shown rounded away from zero: as
/// a double most halves lie a little beside it, and would go either way.
QString currencyText(const CTxVariant &value)
{
    constexpr double unit = 10000.0; // an amount counts ten-thousandths
    const QLocale locale = QLocale::system();
    const QString zero = locale.toCurrencyString(0.0);
    const auto digits = std::count_if(zero.begin(), zero.end(), [](QChar c) { return c.isDigit(); });
    const double shown = std::pow(10.0, static_cast<double>(std::max<qsizetype>(digits, 1) - 1));
    const double rounded = std::round(std::round(value.toDouble() * unit) / (unit / shown));
    return locale.toCurrencyString(rounded / shown + 0.0); // no "-0.00"
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
    {CTxVariant::Short, [](const CTxVariant &v) { return TxNumberText::whole(static_cast<qint16>(v.toInt64())); }},
    {CTxVariant::Long, low32},
    {CTxVariant::Int, low32},
    {CTxVariant::UnsignedInt, low32},
    {CTxVariant::Float, [](const CTxVariant &v) { return TxNumberText::fixed(v.toDouble(), 4); }},
    {CTxVariant::Double, reals8},
    {CTxVariant::Decimal, reals8},
    {CTxVariant::Currency, currencyText},
    {CTxVariant::Date, dateText},
    {CTxVariant::String, plainText},
    {CTxVariant::NarrowString, plainText},
    {CTxVariant::WideString, plainText},
    {CTxVariant::Boolean,
     [](const CTxVariant &v) { return v.toInt64() != 0 ? QStringLiteral("TRUE") : QStringLiteral("FALSE"); }},
    {CTxVariant::SignedByte, byteText},
    {CTxVariant::Byte, byteText},
    {CTxVariant::UnsignedShort,
     [](const CTxVariant &v) { return TxNumberText::whole(static_cast<quint16>(v.toInt64())); }},
    {CTxVariant::UnsignedLong, low32},
    {CTxVariant::Int64, low32},
    {CTxVariant::UnsignedInt64, low32OfUnsigned},
    {CTxVariant::Void, wordText},
    {CTxVariant::Blob, bytesText},
    {CTxVariant::BlobObject, bytesText},
    {CTxVariant::ByteArray, bytesText},
});
static_assert(TdTable::hasUniqueKeys(valueTexts, &ValueTextRow::type));

/// Where the row of a code stands in valueTexts, by the code; lists of records ask for each of their values.
class RowIndex
{
public:
    constexpr RowIndex()
    {
        for (size_t row = 0; row < valueTexts.size(); ++row)
            m_behind[placeOf(valueTexts[row].type)] = static_cast<quint8>(row + 1);
    }
    constexpr const ValueTextRow *find(CTxVariant::Type type) const
    {
        const quint8 behind = m_behind[placeOf(type)];
        return behind == 0 ? nullptr : &valueTexts[behind - 1U];
    }

private:
    static constexpr size_t bytesPlace = CTxVariant::BlobObject + 1; // the one code far from the others
    static constexpr size_t placeOf(CTxVariant::Type type)
    {
        if (type <= CTxVariant::BlobObject)
            return type;
        return type == CTxVariant::ByteArray ? bytesPlace : size_t(CTxVariant::Empty); // which has no row
    }
    std::array<quint8, bytesPlace + 1> m_behind = {}; // one more than the row, 0 for none
};
constexpr RowIndex rowIndex;

} // namespace

QString CTdCommMethods::VAR2STR(const CTxVariant &value)
{
    const ValueTextRow *row = rowIndex.find(value.GetType());
    return row ? row->text(value) : QString();
}

QString CTdCommMethods::StringAlign(const QString &text, int width)
{
    // Deliberate: the fixed 13 is the room that columns of numbers have, whatever width was asked for.
    constexpr int room = 13;
    return text.size() < width ? text.leftJustified(width, u'0') : text.left(room);
}

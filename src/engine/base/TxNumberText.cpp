#include "engine/base/TxNumberText.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <limits>
#include <string>

namespace TxNumberText {

namespace {

constexpr int mostDecimals = 60;
constexpr int mostDigits = 17;

/// White space as C's isspace knows it in the C locale.
bool isSpace(char16_t c)
{
    return c == u' ' || (c >= u'\t' && c <= u'\r');
}

QStringView skipSpace(QStringView text)
{
    while (!text.isEmpty() && isSpace(text.front().unicode()))
        text = text.sliced(1);
    return text;
}

QStringView dropSpaceBehind(QStringView text)
{
    while (!text.isEmpty() && isSpace(text.back().unicode()))
        text.chop(1);
    return text;
}

/// The leading characters of @p text that may belong to a number; the rest cannot, being no ASCII.
class Ascii
{
public:
    explicit Ascii(QStringView text)
    {
        for (const QChar c : text) {
            if (c.unicode() <= u' ' || c.unicode() >= 0x7f)
                break;
            m_bytes.push_back(static_cast<char>(c.unicode()));
        }
    }
    const char *begin() const { return m_bytes.data(); }
    const char *end() const { return m_bytes.data() + m_bytes.size(); }

private:
    std::string m_bytes; // short ones are held without an allocation
};

/// Takes the sign that from_chars does not take. @return true for "-".
bool takeSign(const char *&at, const char *end)
{
    if (at == end || (*at != '+' && *at != '-'))
        return false;
    return *at++ == '-';
}

/// What strtod reads at @p begin, in the C locale. @return behind the number, or @p begin when there is none.
const char *parseDouble(const char *begin, const char *end, double &value)
{
    const char *at = begin;
    const bool negative = takeSign(at, end);
    const bool startsWell = at != end && *at != '+' && *at != '-';
    const bool hexadecimal = end - at > 2 && at[0] == '0' && (at[1] == 'x' || at[1] == 'X');
    double magnitude = 0;
    std::from_chars_result result = {at, std::errc::invalid_argument};
    if (startsWell && hexadecimal && at[2] != '-')
        result = std::from_chars(at + 2, end, magnitude, std::chars_format::hex);
    if (startsWell && result.ec == std::errc::invalid_argument)
        result = std::from_chars(at, end, magnitude);
    if (result.ec == std::errc::invalid_argument) {
        value = 0;
        return begin;
    }
    if (result.ec == std::errc::result_out_of_range) {
        // from_chars does not say whether the number was too large or too small: its first significant digit and its
        // exponent do.
        const char *mark = std::find_if(at, result.ptr, [](char c) { return c == 'e' || c == 'E' || c == 'p'; });
        qint64 exponent = 0;
        if (mark != result.ptr) {
            const char *digits = mark + 1;
            const bool down = takeSign(digits, result.ptr);
            if (std::from_chars(digits, result.ptr, exponent).ec == std::errc::result_out_of_range)
                exponent = std::numeric_limits<qint64>::max();
            exponent = down ? -exponent : exponent;
        }
        const char *point = std::find(at, mark, '.');
        const char *significant = std::find_if(at, mark, [](char c) { return c != '0' && c != '.'; });
        const qint64 place = significant < point ? point - significant : point - significant + 1;
        magnitude = exponent > -place ? std::numeric_limits<double>::infinity() : 0.0;
    }
    value = negative ? -magnitude : magnitude;
    return result.ptr;
}

} // namespace

double atof(QStringView text)
{
    const Ascii ascii(skipSpace(text));
    double value = 0;
    parseDouble(ascii.begin(), ascii.end(), value);
    return value;
}

qint64 atoll(QStringView text)
{
    const Ascii ascii(skipSpace(text));
    const char *at = ascii.begin();
    const bool negative = takeSign(at, ascii.end());
    quint64 magnitude = 0;
    const auto result = std::from_chars(at, ascii.end(), magnitude);
    constexpr quint64 largest = std::numeric_limits<qint64>::max();
    if (result.ec == std::errc::invalid_argument)
        return 0;
    if (result.ec == std::errc::result_out_of_range || magnitude > largest)
        return negative ? std::numeric_limits<qint64>::min() : std::numeric_limits<qint64>::max();
    return negative ? -static_cast<qint64>(magnitude) : static_cast<qint64>(magnitude);
}

double toDouble(QStringView text, bool *ok)
{
    const QStringView trimmed = dropSpaceBehind(skipSpace(text));
    const Ascii ascii(trimmed);
    double value = 0;
    const char *behind = parseDouble(ascii.begin(), ascii.end(), value);
    const bool whole = behind != ascii.begin() && behind - ascii.begin() == trimmed.size();
    if (ok)
        *ok = whole;
    return whole ? value : 0;
}

namespace {

/// "00" to "99", as a text is made of them.
constexpr auto digitPairs = [] {
    std::array<char16_t, 200> pairs = {};
    for (size_t i = 0; i < 100; ++i) {
        pairs[2 * i] = static_cast<char16_t>(u'0' + i / 10);
        pairs[2 * i + 1] = static_cast<char16_t>(u'0' + i % 10);
    }
    return pairs;
}();

/// A number's text while it is written, from its last digit to its first.
class DigitWriter
{
public:
    /// Puts the last @p count digits of @p value in front of what is there. @return what is left of it
    quint64 putDigits(quint64 value, int count)
    {
        for (; count >= 2; count -= 2)
            value = putPair(value);
        if (count == 1) {
            put(static_cast<char16_t>(u'0' + value % 10));
            value /= 10;
        }
        return value;
    }
    /// Puts @p value in front of what is there.
    void putWhole(quint64 value)
    {
        while (value >= 100)
            value = putPair(value);
        if (value >= 10)
            putPair(value);
        else
            put(static_cast<char16_t>(u'0' + value));
    }
    void put(char16_t c) { m_text[--m_at] = c; }
    QString text() const
    {
        return QString(reinterpret_cast<const QChar *>(m_text.data() + m_at), qsizetype(m_text.size() - m_at));
    }

private:
    quint64 putPair(quint64 value)
    {
        const quint64 rest = value / 100;
        const size_t pair = static_cast<size_t>(value - rest * 100);
        m_at -= 2;
        m_text[m_at] = digitPairs[2 * pair];
        m_text[m_at + 1] = digitPairs[2 * pair + 1];
        return rest;
    }

    std::array<char16_t, 32> m_text; // sign, 20 digits, point, decimals
    size_t m_at = m_text.size();
};

__extension__ using Wide = unsigned __int128;

constexpr std::array<quint64, 10> powersOfTen = {1,      10,      100,      1000,      10000,
                                                 100000, 1000000, 10000000, 100000000, 1000000000};

/// A double below 2^64 as whole part and decimals, exactly rounded: a tie goes to the even digit, as printf has it.
struct FixedParts
{
    quint64 whole = 0;
    quint64 decimals = 0;

    /// @p mantissa * 2^-@p shift with @p count decimals, at least one of them. A number is 53 bits wide, so that
    /// multiplied by a power of ten below 2^30 it fits into 128 bits, and nothing is lost before the rounding.
    static FixedParts of(quint64 mantissa, int shift, int count)
    {
        constexpr int tooSmall = 53 + 30 + 1; // less than half of the last decimal
        FixedParts parts;
        if (shift <= 0) {
            parts.whole = mantissa << -shift;
        } else if (shift < tooSmall) {
            const quint64 unit = powersOfTen[static_cast<size_t>(count)];
            parts.whole = shift < 64 ? mantissa >> shift : 0;
            const Wide scaled = Wide(mantissa - (shift < 64 ? parts.whole << shift : 0)) * unit;
            parts.decimals = static_cast<quint64>(scaled >> shift);
            const Wide rest = scaled - (Wide(parts.decimals) << shift);
            const Wide half = Wide(1) << (shift - 1);
            if (rest > half || (rest == half && parts.decimals % 2 == 1))
                ++parts.decimals;
            if (parts.decimals == unit) {
                parts.decimals = 0;
                ++parts.whole;
            }
        }
        return parts;
    }
};

} // namespace

QString whole(qint64 value)
{
    DigitWriter writer;
    writer.putWhole(value < 0 ? 0 - static_cast<quint64>(value) : static_cast<quint64>(value));
    if (value < 0)
        writer.put(u'-');
    return writer.text();
}

QString fixed(double value, int decimals)
{
    // IEEE 754: a sign, 11 bits of exponent, 52 bits of a mantissa whose leading bit is not stored.
    constexpr int mantissaBits = 52, bias = 1023;
    constexpr quint64 leading = quint64(1) << mantissaBits;
    const auto bits = std::bit_cast<quint64>(value);
    const int exponent = static_cast<int>(bits >> mantissaBits & 0x7ff) - bias - mantissaBits;
    constexpr int largest = 11; // below 2^64
    if (decimals >= 1 && decimals < static_cast<int>(powersOfTen.size()) && exponent <= largest) {
        const FixedParts parts = FixedParts::of((bits & (leading - 1)) | leading, -exponent, decimals);
        DigitWriter writer;
        writer.putDigits(parts.decimals, decimals);
        writer.put(u'.');
        writer.putWhole(parts.whole);
        if (std::signbit(value))
            writer.put(u'-');
        return writer.text();
    }
    std::array<char, 310 + mostDecimals + 3> buffer; // the largest double has 309 digits
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed,
                                      std::clamp(decimals, 0, mostDecimals));
    return QString::fromLatin1(buffer.data(), result.ptr - buffer.data());
}

QString general(double value, int digits)
{
    std::array<char, 64> buffer;
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::general,
                                      std::clamp(digits, 1, mostDigits));
    return QString::fromLatin1(buffer.data(), result.ptr - buffer.data());
}

namespace {

template<class Real>
QString shortestOf(Real value)
{
    std::array<char, 64> buffer;
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
    return QString::fromLatin1(buffer.data(), result.ptr - buffer.data());
}

} // namespace

QString shortest(double value)
{
    return shortestOf(value);
}

QString shortestSingle(float value)
{
    return shortestOf(value);
}

} // namespace TxNumberText

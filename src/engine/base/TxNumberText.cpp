#include "engine/base/TxNumberText.h"

#include <algorithm>
#include <array>
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

QString fixed(double value, int decimals)
{
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

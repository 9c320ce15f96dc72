#include "controls/AngleParser.h"

#include "engine/base/TxNumberText.h"

#include <array>
#include <cmath>

namespace {

/// The signs that may stand behind each of the three numbers.
constexpr std::array<QStringView, 3> unitSigns = {u"\u00B0\u00BA\u02DA", u"'\u2032\u2019\u00B4\u02B9",
                                                  u"\"\u2033\u201D\u02BA"};
constexpr std::array<double, 3> unitsInDegree = {1.0, 60.0, 3600.0};

constexpr QStringView minusSigns = u"-\u2212\u2013"; // the en dash is what word processors make of a hyphen

/// Walks over a text once, from left to right.
class Scanner
{
public:
    explicit Scanner(QStringView text) : m_text(text) { skipBlanks(); }

    bool atEnd() const { return m_at >= m_text.size(); }
    qsizetype position() const { return m_at; }
    QChar peek() const { return atEnd() ? QChar() : m_text[m_at]; }

    /// Steps over the next character, and blanks behind it, when it is one of @p characters.
    bool take(QStringView characters)
    {
        if (atEnd() || !characters.contains(peek()))
            return false;
        ++m_at;
        skipBlanks();
        return true;
    }

    /// Steps over the next two characters, and blanks behind them, when they are the same of @p characters.
    bool takeTwo(QStringView characters)
    {
        if (m_at + 1 >= m_text.size() || m_text[m_at] != m_text[m_at + 1] || !characters.contains(peek()))
            return false;
        ++m_at;
        return take(characters);
    }

    /// The digits here, with a fraction when there is a point; empty when there are none.
    QStringView takeNumber()
    {
        const qsizetype start = m_at;
        skipDigits();
        qsizetype digits = m_at - start;
        if (peek() == u'.') {
            ++m_at;
            const qsizetype fraction = m_at;
            skipDigits();
            digits += m_at - fraction;
        }
        const QStringView number = m_text.mid(start, m_at - start);
        if (digits == 0) {
            m_at = start;
            return {};
        }
        skipBlanks();
        return number;
    }

private:
    void skipBlanks()
    {
        while (peek().isSpace())
            ++m_at;
    }
    void skipDigits()
    {
        while (peek() >= u'0' && peek() <= u'9')
            ++m_at;
    }

    QStringView m_text;
    qsizetype m_at = 0;
};

/// Steps over the sign of part @p part; two signs of minutes are one of seconds.
bool takeUnitSign(Scanner &scanner, size_t part)
{
    if (part < 2)
        return scanner.take(unitSigns[part]);
    return scanner.take(unitSigns[2]) || scanner.takeTwo(unitSigns[1]);
}

/// -1 or +1 for a letter of a direction here, 0 for none.
int takeDirection(Scanner &scanner)
{
    if (scanner.take(u"NnEe"))
        return 1;
    return scanner.take(u"SsWw") ? -1 : 0;
}

} // namespace

AngleParser::Result AngleParser::parse(const QString &text)
{
    Scanner scanner(text);
    const auto failed = [&scanner] { return Result{0.0, scanner.position()}; };
    int direction = takeDirection(scanner);
    if (direction == 0) {
        if (scanner.take(minusSigns))
            direction = -1;
        else if (scanner.take(u"+"))
            direction = 1;
    }

    double degrees = 0.0;
    bool hasFraction = false;
    for (size_t part = 0; part < unitSigns.size(); ++part) {
        const qsizetype start = scanner.position();
        const QStringView number = scanner.takeNumber();
        if (number.isEmpty()) {
            if (part == 0)
                return failed();
            break;
        }
        const double value = TxNumberText::atof(number);
        if (hasFraction || (part > 0 && value >= 60.0) || !std::isfinite(value))
            return {0.0, start};
        hasFraction = number.contains(u'.');
        degrees += value / unitsInDegree[part];
        const bool hasColon = !takeUnitSign(scanner, part) && part + 1 < unitSigns.size() && scanner.take(u":");
        if (hasColon && !(scanner.peek() >= u'0' && scanner.peek() <= u'9') && scanner.peek() != u'.')
            return failed();
    }

    const qsizetype behind = scanner.position();
    if (const int side = takeDirection(scanner); side != 0) {
        if (direction != 0)
            return {0.0, behind};
        direction = side;
    }
    if (!scanner.atEnd())
        return failed();
    return {direction < 0 ? -degrees : degrees, -1};
}

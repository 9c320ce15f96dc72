#include "controls/DegreeText.h"

#include "engine/base/TxNumberText.h"

#include <QtNumeric>

#include <algorithm>
#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

/// A double as C converts it to a whole number of 32 bits; what does not fit gives 0.
qint32 truncated(double number)
{
    return qIsFinite(number) && std::abs(number) < 2147483648.0 ? static_cast<qint32>(number) : 0;
}

qint32 wholeNumber(QStringView text)
{
    return static_cast<qint32>(std::clamp<qint64>(TxNumberText::atoll(text), std::numeric_limits<qint32>::min(),
                                                  std::numeric_limits<qint32>::max()));
}

QString degreeDigits(int degrees, bool negative)
{
    if (degrees == 0 && negative)
        return u"  -0"_s; // a sign that the number 0 cannot carry
    const QString text = TxNumberText::whole(degrees);
    return degrees > 99 ? u' ' + text : text.rightJustified(4, u' ');
}

double minutesBehind(double degrees)
{
    return std::abs(degrees - std::trunc(degrees)) * 60.0;
}

} // namespace

QString DegreeText::digits(double degrees)
{
    if (!(std::abs(degrees) < 2147483647.0))
        return {};
    int whole = static_cast<int>(degrees);
    const double fraction = std::abs(degrees - whole);
    int minutes = static_cast<int>(fraction * 60.0);
    double seconds = (fraction * 60.0 - minutes) * 60.0;
    if (std::abs(seconds - 60.0) < 1e-10) {
        seconds = 0.0;
        ++minutes;
    }
    if (minutes >= 60) {
        minutes -= 60;
        ++whole; // deliberate, below 0 too: the value moves one degree towards 0, as stored texts have it
    }
    // Deliberate: seconds that round up to 60 are shown as 60.
    const QString secondDigits = TxNumberText::fixed(seconds, 4).rightJustified(7, u' ');
    return degreeDigits(whole, degrees < 0.0) + TxNumberText::whole(minutes).rightJustified(2, u' ') +
           secondDigits.left(2) + secondDigits.mid(3, 4);
}

qint32 DegreeText::degreePart(const QString &text)
{
    const qsizetype colon = text.indexOf(u':');
    if (colon < 0)
        return wholeNumber(text);
    // Under a mask the sign stands in front of the blanks that right-align the number.
    QString degrees = text.left(colon).remove(u' ');
    while (degrees.startsWith(u'+'))
        degrees.remove(0, 1);
    return wholeNumber(degrees);
}

qint32 DegreeText::minutePart(const QString &text)
{
    const qsizetype first = text.indexOf(u':');
    if (first < 0)
        return truncated(minutesBehind(TxNumberText::atof(text)));
    const qsizetype last = text.lastIndexOf(u':');
    return last > first ? wholeNumber(QStringView(text).mid(first + 1, last - first - 1).trimmed()) : 0;
}

float DegreeText::secondPart(const QString &text)
{
    const qsizetype last = text.lastIndexOf(u':');
    if (last >= 0)
        return static_cast<float>(TxNumberText::atof(QStringView(text).mid(last + 1).trimmed()));
    const double minutes = minutesBehind(TxNumberText::atof(text));
    return static_cast<float>((minutes - minutePart(text)) * 60.0);
}

double DegreeText::plainSum(const QString &text)
{
    return degreePart(text) + minutePart(text) / 60.0 + static_cast<double>(secondPart(text)) / 3600.0;
}

double DegreeText::value(const QString &text)
{
    const QString dense = QString(text).remove(u' ');
    const qsizetype first = dense.indexOf(u':');
    const double degrees = TxNumberText::atof(QStringView(dense).left(first < 0 ? dense.size() : first));
    if (first < 0)
        return degrees;
    const double minutes = TxNumberText::atof(QStringView(dense).mid(first + 1, 2));
    const double seconds = TxNumberText::atof(QStringView(dense).mid(dense.lastIndexOf(u':') + 1));
    const double behind = minutes / 60.0 + seconds / 3600.0;
    return degrees < 0.0 ? degrees - behind : degrees + behind;
}

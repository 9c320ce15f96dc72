#pragma once

#include "colour/RampReport.h"

#include <QStringView>

#include <array>
#include <functional>
#include <vector>

/// What the readers of ramp files in text share.
namespace RampText {

/// Files of more stops are not read: nobody can see so many.
inline constexpr size_t maximumStops = 1 << 20;

/// The lines of a text, whatever they end with; read as Latin-1, for all that counts is ASCII.
class Lines
{
public:
    explicit Lines(const QByteArray &bytes);
    /// Goes on to the next line. @return false when there is none
    bool next();
    /// The line without white space around it.
    QStringView text() const { return m_text; }
    /// Its number, from 1.
    int number() const { return m_number; }

private:
    const QByteArray &m_bytes;
    qsizetype m_next = 0;
    QString m_line;
    QStringView m_text;
    int m_number = 0;
};

/// The words of @p text between white space; of a text with more than @p most words, so many and one.
std::vector<QStringView> words(QStringView text, size_t most);
/// The parts of @p text around @p separator, likewise.
std::vector<QStringView> parts(QStringView text, QChar separator, size_t most);
/// Reads a finite number. @return false when @p text is none
bool readNumber(QStringView text, double &number);

/// The colour "#rgb" or "#rrggbb".
std::optional<COLORREF> hexColor(QStringView text);
/// The colour that X11 knows by @p name, in any case; numbered shades ("ivory2") are reckoned from their first, to
/// within one level but for a few. Where X11 and the Web differ ("gray", "green", "maroon", "purple") it is X11's.
std::optional<COLORREF> x11Color(QStringView name);
/// The colour that GRASS knows by @p name, in any case.
std::optional<COLORREF> grassColor(QStringView name);

/// Red, green and blue, 0 to 255, with fractions.
using Channels = std::array<double, 3>;
/// The nearest colour.
COLORREF color(const Channels &channels);
Channels channels(COLORREF color);
/// Red, green and blue of a hue (of any turn, in degrees), a saturation and a value (0 to 1).
Channels fromHsv(double hue, double saturation, double value);
/// Hue (0 to 360, 0 for greys), saturation and value (0 to 1).
std::array<double, 3> toHsv(const Channels &channels);

/// Appends the way from @p from to @p to whose colours are @p at(0) to @p at(1): the ends, and so many stops between
/// that straight ways between them differ by no more than half a level. Of a way with a corner, it is at @p corner.
/// @return true when more than the ends were needed
bool appendWay(ColorRamp::Stops &stops, double from, double to, const std::function<Channels(double)> &at,
               double corner = 0.5);

} // namespace RampText

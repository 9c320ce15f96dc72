#include "colour/GimpGradient.h"

#include "colour/RampText.h"
#include "engine/base/TxNumberText.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

using RampText::Channels;

constexpr char title[] = "GIMP Gradient";

enum Blending { Linear, Curved, Sinusoidal, SphereIncreasing, SphereDecreasing, Step, blendingCount };
enum Coloring { Rgb, HsvCounterClockwise, HsvClockwise, coloringCount };

/// A line of the file.
struct Segment
{
    double left = 0.0, middle = 0.0, right = 0.0;
    Channels first = {}, last = {};
    bool isOpaque = true;
    Blending blending = Linear;
    Coloring coloring = Rgb;
    bool isChosen = false; // an end takes a colour that is chosen in the program

    /// Where the middle is, as part of the segment.
    double corner() const
    {
        if (!(right > left) || middle == (left + right) / 2) // of a segment hardly wide, division would not tell
            return 0.5;
        return std::clamp((middle - left) / (right - left), 0.0, 1.0);
    }
};

/// How much of the last colour a segment has at the part @p t of its way, when half of it is at @p middle.
double share(Blending blending, double t, double middle)
{
    constexpr double least = 1e-10;
    double linear = 0;
    if (t <= middle)
        linear = middle < least ? 0 : 0.5 * t / middle;
    else
        linear = middle > 1 - least ? 1 : 0.5 + 0.5 * (t - middle) / (1 - middle);
    switch (blending) {
    case Curved: // the power that is a half at the middle
        return std::pow(t, std::log(0.5) / std::log(std::clamp(middle, least, 1 - least)));
    case Sinusoidal: // half a wave of the sine
        return (1 - std::cos(std::numbers::pi * linear)) / 2;
    case SphereIncreasing: // a quarter of a circle, rising at once
        return std::sqrt(1 - (linear - 1) * (linear - 1));
    case SphereDecreasing: // a quarter of a circle, rising at last
        return 1 - std::sqrt(1 - linear * linear);
    default:
        return linear;
    }
}

/// The hue @p part of the way from @p first to @p last, both 0 to 360, that way round; equal hues make a full turn.
double turned(double first, double last, Coloring coloring, double part)
{
    if (coloring == HsvCounterClockwise)
        return first + (last - first + (first < last ? 0 : 360)) * part;
    return first - (first - last + (last < first ? 0 : 360)) * part;
}

Channels blend(const Segment &segment, double part)
{
    const auto mix = [part](double a, double b) { return a + (b - a) * part; };
    Channels result = {};
    if (segment.coloring == Rgb) {
        for (size_t i = 0; i < result.size(); ++i)
            result[i] = mix(segment.first[i], segment.last[i]);
        return result;
    }
    const auto a = RampText::toHsv(segment.first), b = RampText::toHsv(segment.last);
    return RampText::fromHsv(turned(a[0], b[0], segment.coloring, part), mix(a[1], b[1]), mix(a[2], b[2]));
}

/// Reads a whole number from 0 to below @p end. @return -1 when @p text is none
int readCode(QStringView text, int end)
{
    double number = 0;
    return RampText::readNumber(text, number) && number >= 0 && number < end ? static_cast<int>(number) : -1;
}

/// Reads a segment: 11 numbers and 2 codes, from version 2.4 on 2 more.
std::optional<RampReport::Note> readSegment(QStringView line, Segment &segment)
{
    constexpr size_t oldSize = 13, newSize = 15;
    const auto words = RampText::words(line, newSize);
    if (words.size() != oldSize && words.size() != newSize)
        return RampReport::BadLine;
    std::array<double, 11> numbers = {};
    for (size_t i = 0; i < numbers.size(); ++i) {
        if (!RampText::readNumber(words[i], numbers[i]))
            return RampReport::BadNumber;
    }
    segment.left = numbers[0];
    segment.middle = numbers[1];
    segment.right = numbers[2];
    for (size_t i = 0; i < 3; ++i) {
        segment.first[i] = 255 * std::clamp(numbers[3 + i], 0.0, 1.0);
        segment.last[i] = 255 * std::clamp(numbers[7 + i], 0.0, 1.0);
    }
    segment.isOpaque = numbers[6] >= 1 && numbers[10] >= 1;
    const int blending = readCode(words[11], blendingCount), coloring = readCode(words[12], coloringCount);
    if (blending < 0 || coloring < 0)
        return RampReport::BadLine;
    segment.blending = static_cast<Blending>(blending);
    segment.coloring = static_cast<Coloring>(coloring);
    constexpr int endKinds = 5;
    for (size_t i = oldSize; i < words.size(); ++i) {
        const int kind = readCode(words[i], endKinds);
        if (kind < 0)
            return RampReport::BadLine;
        segment.isChosen |= kind > 0;
    }
    if (segment.left < 0 || segment.right > 1 || segment.left > segment.right)
        return RampReport::BadOrder;
    return std::nullopt;
}

/// @return true when the segment is more than a straight way
bool append(ColorRamp::Stops &stops, const Segment &segment)
{
    if (segment.blending == Step) {
        const double middle = std::clamp(segment.middle, segment.left, segment.right);
        const COLORREF first = RampText::color(segment.first), last = RampText::color(segment.last);
        stops.insert(stops.end(), {{segment.left, first}, {middle, first}, {middle, last}, {segment.right, last}});
        return false;
    }
    const double corner = segment.corner();
    const auto at = [&](double t) { return blend(segment, share(segment.blending, t, corner)); };
    const bool isMore = RampText::appendWay(stops, segment.left, segment.right, at, corner);
    return isMore && (segment.blending != Linear || segment.coloring != Rgb);
}

QByteArray number(double value)
{
    return TxNumberText::shortest(value).toLatin1();
}

QByteArray parts(COLORREF color)
{
    return number(TxColorRef::red(color) / 255.0) + ' ' + number(TxColorRef::green(color) / 255.0) + ' ' +
           number(TxColorRef::blue(color) / 255.0) + " 1";
}

} // namespace

RampReading GimpGradient::read(const QByteArray &bytes)
{
    RampReading result;
    result.isRelative = true;
    RampText::Lines lines(bytes);
    const auto refuse = [&](RampReport::Note note) {
        result.report.add(note, lines.number());
        return result;
    };
    if (!lines.next() || lines.text() != QLatin1StringView(title) || !lines.next())
        return refuse(RampReport::WrongHead);
    if (lines.text().startsWith(u"Name:") && !lines.next()) // the first versions had no name
        return refuse(RampReport::NoColors);
    double count = 0;
    if (!RampText::readNumber(lines.text(), count) || count != std::floor(count))
        return refuse(RampReport::BadNumber);
    if (count < 1)
        return refuse(RampReport::NoColors);

    ColorRamp::Stops stops;
    constexpr double alike = 1e-5; // the program writes six decimals
    for (double i = 0; i < count; ++i) {
        Segment segment;
        if (!lines.next())
            return refuse(RampReport::BadLine);
        if (const auto note = readSegment(lines.text(), segment))
            return refuse(*note);
        if (!stops.empty()) {
            const double end = stops.back().value;
            if (segment.left < end - alike)
                return refuse(RampReport::BadOrder);
            if (segment.left > end + alike)
                result.report.add(RampReport::GapClosed, lines.number());
            else
                segment.left = std::min(end, segment.right);
            if (segment.left < end)
                return refuse(RampReport::BadOrder);
        }
        if (!segment.isOpaque)
            result.report.add(RampReport::AlphaLost, lines.number());
        if (segment.isChosen)
            result.report.add(RampReport::ChosenColors, lines.number());
        if (append(stops, segment))
            result.report.add(RampReport::Sampled, lines.number());
        if (stops.size() > RampText::maximumStops)
            return refuse(RampReport::TooLarge);
    }
    result.ramp = ColorRamp::fromStops(std::move(stops));
    if (!result.ramp)
        return refuse(RampReport::BadOrder);
    result.report.add(RampReport::Relative);
    return result;
}

RampWriting GimpGradient::write(const ColorRamp &ramp, const QString &name)
{
    RampWriting result;
    if (ramp.minimum() != 0 || ramp.maximum() != 1)
        result.report.add(RampReport::RangeLost);
    const std::optional<ColorRamp> unit = ramp.mapped(0, 1);
    ColorRamp::Stops stops = unit->stops();
    if (stops.size() == 1) // of no width
        stops = {{0, stops.front().color}, {1, stops.front().color}};
    QByteArray segments;
    int count = 0;
    for (size_t i = 1; i < stops.size(); ++i) {
        const auto &[left, first] = stops[i - 1];
        const auto &[right, last] = stops[i];
        if (left < right) {
            ++count;
            segments += number(left) + ' ' + number((left + right) / 2) + ' ' + number(right) + ' ' + parts(first) +
                        ' ' + parts(last) + " 0 0 0 0\n";
        }
    }
    result.bytes = title + QByteArray("\nName: ") + name.simplified().toUtf8() + '\n' + QByteArray::number(count) +
                   '\n' + segments;
    return result;
}

#include "colour/GmtPalette.h"

#include "colour/RampText.h"
#include "engine/base/TxNumberText.h"

#include <algorithm>
#include <cmath>

namespace {

using RampText::Channels;

/// How colours are written and blended.
enum class Model { Rgb, Hsv, Cmyk };

/// A colour as it was written: red, green, blue (0 to 255); hue (0 to 360), saturation, value (0 to 1); or cyan,
/// magenta, yellow and black (0 to 100).
struct Paint
{
    Model model = Model::Rgb;
    std::array<double, 4> parts = {};
};

constexpr std::array<std::array<double, 4>, 3> highest = {{{255, 255, 255, 0}, {360, 1, 1, 0}, {100, 100, 100, 100}}};

size_t partCount(Model model)
{
    return model == Model::Cmyk ? 4 : 3;
}

std::optional<Paint> readParts(std::span<const QStringView> texts, Model model)
{
    if (texts.size() != partCount(model))
        return std::nullopt;
    Paint paint{model, {}};
    for (size_t i = 0; i < texts.size(); ++i) {
        double &part = paint.parts[i];
        if (!RampText::readNumber(texts[i], part) || part < 0 || part > highest[static_cast<size_t>(model)][i])
            return std::nullopt;
    }
    return paint;
}

Paint paintOf(const Channels &rgb)
{
    return {Model::Rgb, {rgb[0], rgb[1], rgb[2], 0}};
}

/// A colour in one word: a name, #rrggbb, r/g/b, c/m/y/k, h-s-v or one level of grey.
std::optional<Paint> readPaint(QStringView text)
{
    if (const auto hex = RampText::hexColor(text))
        return paintOf(RampText::channels(*hex));
    if (const auto name = RampText::x11Color(text))
        return paintOf(RampText::channels(*name));
    if (text.contains(u'/')) {
        const auto parts = RampText::parts(text, u'/', 4);
        return readParts(parts, parts.size() == 4 ? Model::Cmyk : Model::Rgb);
    }
    if (text.contains(u'-'))
        return readParts(RampText::parts(text, u'-', 3), Model::Hsv);
    const std::array<QStringView, 3> grey = {text, text, text};
    return readParts(grey, Model::Rgb);
}

Channels toRgb(const Paint &paint)
{
    const auto &[a, b, c, black] = paint.parts;
    switch (paint.model) {
    case Model::Hsv:
        return RampText::fromHsv(a, b, c);
    case Model::Cmyk: {
        const double light = 255 * (1 - black / 100);
        return {light * (1 - a / 100), light * (1 - b / 100), light * (1 - c / 100)};
    }
    case Model::Rgb:
        break;
    }
    return {a, b, c};
}

Paint inModel(const Paint &paint, Model model)
{
    if (paint.model == model)
        return paint;
    const Channels rgb = toRgb(paint);
    if (model == Model::Rgb)
        return paintOf(rgb);
    if (model == Model::Hsv) {
        const auto [hue, saturation, value] = RampText::toHsv(rgb);
        return {model, {hue, saturation, value, 0}};
    }
    const double light = *std::max_element(rgb.begin(), rgb.end());
    if (light <= 0)
        return {model, {0, 0, 0, 100}};
    const auto ink = [light](double channel) { return 100 * (1 - channel / light); };
    return {model, {ink(rgb[0]), ink(rgb[1]), ink(rgb[2]), 100 * (1 - light / 255)}};
}

class Reader
{
public:
    RampReading read(const QByteArray &bytes)
    {
        RampText::Lines lines(bytes);
        while (lines.next() && !m_reading.report.isRefusal()) {
            const QStringView text = lines.text();
            if (text.startsWith(u'#'))
                readComment(text.sliced(1).trimmed());
            else if (!text.isEmpty())
                readLine(text, lines.number());
        }
        finish();
        return std::move(m_reading);
    }

private:
    void note(RampReport::Note note, int line = 0) { m_reading.report.add(note, line); }

    void readComment(QStringView text)
    {
        const qsizetype equals = text.indexOf(u'=');
        const QStringView key = text.first(equals < 0 ? text.size() : equals).trimmed();
        const QStringView value = equals < 0 ? QStringView() : text.sliced(equals + 1).trimmed();
        const auto is = [key](QLatin1StringView name) { return key.compare(name, Qt::CaseInsensitive) == 0; };
        if (is(QLatin1StringView("COLOR_MODEL"))) {
            if (value.contains(u"hsv", Qt::CaseInsensitive))
                m_model = Model::Hsv;
            else if (value.contains(u"cmyk", Qt::CaseInsensitive))
                m_model = Model::Cmyk;
            else
                m_model = Model::Rgb;
        } else if (is(QLatin1StringView("HARD_HINGE")) || is(QLatin1StringView("SOFT_HINGE")) ||
                   is(QLatin1StringView("HINGE"))) {
            double hinge = 0;
            if (value.isEmpty() || RampText::readNumber(value, hinge)) {
                m_hinge = hinge;
                note(RampReport::HingeLost);
            }
        } else if (is(QLatin1StringView("CYCLIC"))) {
            note(RampReport::CycleLost);
        } else if (is(QLatin1StringView("RANGE"))) {
            const auto ends = RampText::parts(value, u'/', 2);
            std::pair<double, double> range;
            if (ends.size() == 2 && RampText::readNumber(ends[0], range.first) &&
                RampText::readNumber(ends[1], range.second) && range.first < range.second)
                m_range = range;
        }
    }

    void readLine(QStringView text, int line)
    {
        if (const qsizetype label = text.indexOf(u';'); label >= 0) {
            note(RampReport::LabelsLost, line);
            text = text.first(label);
        }
        constexpr size_t mostWords = 11;
        auto words = RampText::words(text, mostWords);
        if (words.empty())
            return;
        const auto isOneOf = [](QStringView word, QStringView letters) {
            return word.size() == 1 && letters.contains(word.front());
        };
        if (isOneOf(words.front(), u"BF"))
            return note(RampReport::BeyondLost, line);
        if (isOneOf(words.front(), u"N"))
            return note(RampReport::NoValueLost, line);
        if (words.size() > 2 && isOneOf(words.back(), u"LUB")) {
            note(RampReport::LabelsLost, line);
            words.pop_back();
        }
        if (words.size() == 2)
            return readCategory(words, line);
        if (words.size() == 4 || words.size() == 8 || words.size() == 10)
            return readSlice(words, line);
        note(RampReport::BadLine, line);
    }

    std::optional<Paint> paint(std::span<const QStringView> words, int line)
    {
        std::optional<Paint> result;
        if (words.size() == 1) {
            const auto alpha = RampText::parts(words.front(), u'@', 2);
            double percent = 0;
            if (alpha.size() == 1 || (alpha.size() == 2 && RampText::readNumber(alpha[1], percent)))
                result = readPaint(alpha.front());
            if (alpha.size() == 2)
                note(RampReport::AlphaLost, line);
        } else if (words.size() == 4) {
            result = readParts(words, Model::Cmyk);
        } else {
            result = readParts(words, m_model == Model::Hsv ? Model::Hsv : Model::Rgb);
        }
        if (!result)
            note(RampReport::BadColor, line);
        return result;
    }

    void readCategory(std::span<const QStringView> words, int line)
    {
        double key = 0;
        if (!RampText::readNumber(words[0], key))
            return note(RampReport::BadNumber, line);
        if (m_hasSlices)
            return note(RampReport::BadLine, line);
        const std::optional<Paint> color = paint(words.subspan(1), line);
        if (!color)
            return;
        if (!m_stops.empty() && !(key > m_stops.back().value))
            return note(RampReport::BadOrder, line);
        m_isCategorical = true;
        if (!m_stops.empty())
            append({key, m_stops.back().color}, line);
        append({key, RampText::color(toRgb(*color))}, line);
    }

    void readSlice(std::span<const QStringView> words, int line)
    {
        const size_t half = words.size() / 2;
        double from = 0, to = 0;
        if (!RampText::readNumber(words[0], from) || !RampText::readNumber(words[half], to))
            return note(RampReport::BadNumber, line);
        if (m_isCategorical)
            return note(RampReport::BadLine, line);
        const std::optional<Paint> first = paint(words.subspan(1, half - 1), line);
        const bool isLikeFirst = half == 2 && words[3] == u"-";
        const std::optional<Paint> last = isLikeFirst ? first : paint(words.subspan(half + 1), line);
        if (!first || !last)
            return;
        if (from > to || (m_hasSlices && from < m_stops.back().value))
            return note(RampReport::BadOrder, line);
        if (m_hasSlices && from > m_stops.back().value)
            note(RampReport::GapClosed, line);
        m_hasSlices = true;
        const Paint begin = inModel(*first, m_model), end = inModel(*last, m_model);
        const auto at = [&](double t) {
            Paint blend{m_model, {}};
            for (size_t i = 0; i < blend.parts.size(); ++i)
                blend.parts[i] = std::lerp(begin.parts[i], end.parts[i], t);
            return toRgb(blend);
        };
        if (RampText::appendWay(m_stops, from, to, at))
            note(RampReport::Sampled, line);
        if (m_stops.size() > RampText::maximumStops)
            note(RampReport::TooLarge, line);
    }

    void append(const ColorRamp::Stop &stop, int line)
    {
        m_stops.push_back(stop);
        if (m_stops.size() > RampText::maximumStops)
            note(RampReport::TooLarge, line);
    }

    /// Spreads a ramp over parts of a range, 0 to 1 or -1 to 1, over the range that the file names.
    void spread()
    {
        const double first = m_stops.front().value, last = m_stops.back().value;
        if (!m_range || (first != 0 && first != -1) || (last != 0 && last != 1) || !(first < last))
            return;
        const auto [minimum, maximum] = *m_range;
        const bool isHinged = m_hinge && *m_hinge > minimum && *m_hinge < maximum && first < 0 && last > 0;
        for (ColorRamp::Stop &stop : m_stops) {
            if (!isHinged)
                stop.value = std::lerp(minimum, maximum, (stop.value - first) / (last - first));
            else
                stop.value = std::lerp(*m_hinge, stop.value < 0 ? minimum : maximum, std::abs(stop.value));
        }
    }

    void finish()
    {
        if (m_reading.report.isRefusal())
            return;
        if (m_stops.empty())
            return note(RampReport::NoColors);
        if (m_isCategorical)
            note(RampReport::Categories);
        spread();
        m_reading.ramp = ColorRamp::fromStops(std::move(m_stops));
        if (!m_reading.ramp)
            note(RampReport::BadOrder);
    }

    RampReading m_reading;
    ColorRamp::Stops m_stops;
    Model m_model = Model::Rgb;
    bool m_hasSlices = false;
    bool m_isCategorical = false;
    std::optional<double> m_hinge;
    std::optional<std::pair<double, double>> m_range;
};

QByteArray text(const ColorRamp::Stop &stop)
{
    return TxNumberText::shortest(stop.value).toLatin1() + '\t' + QByteArray::number(TxColorRef::red(stop.color)) +
           '/' + QByteArray::number(TxColorRef::green(stop.color)) + '/' +
           QByteArray::number(TxColorRef::blue(stop.color));
}

} // namespace

RampReading GmtPalette::read(const QByteArray &bytes)
{
    return Reader().read(bytes);
}

RampWriting GmtPalette::write(const ColorRamp &ramp)
{
    RampWriting result;
    result.bytes = "# COLOR_MODEL = RGB\n";
    const ColorRamp::Stops &stops = ramp.stops();
    if (stops.size() == 1) // a slice would have no width: the one category of a table of categories
        result.bytes += text(stops.front()) + '\n';
    for (size_t i = 1; i < stops.size(); ++i) {
        if (stops[i - 1].value < stops[i].value)
            result.bytes += text(stops[i - 1]) + '\t' + text(stops[i]) + '\n';
    }
    return result;
}

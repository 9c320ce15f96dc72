#include "colour/GrassColorRules.h"

#include "colour/RampText.h"
#include "engine/base/TxNumberText.h"

#include <algorithm>
#include <cmath>

namespace {

struct Rule
{
    double value = 0.0;
    bool isPercent = false;
    COLORREF color = 0;
    int line = 0;
};
using Rules = std::vector<Rule>;

std::optional<COLORREF> readParts(std::span<const QStringView> parts)
{
    RampText::Channels channels = {};
    if (parts.size() != channels.size())
        return std::nullopt;
    for (size_t i = 0; i < channels.size(); ++i) {
        if (!RampText::readNumber(parts[i], channels[i]) || channels[i] < 0 || channels[i] > 255)
            return std::nullopt;
    }
    return RampText::color(channels);
}

/// A colour: a name, #rrggbb, one level of grey, r:g:b or r g b.
std::optional<COLORREF> readColor(std::span<const QStringView> words)
{
    if (words.size() != 1)
        return readParts(words);
    const QStringView word = words.front();
    if (word.contains(u':'))
        return readParts(RampText::parts(word, u':', 3));
    if (const auto hex = RampText::hexColor(word))
        return hex;
    if (const auto name = RampText::grassColor(word))
        return name;
    const std::array<QStringView, 3> grey = {word, word, word};
    return readParts(grey);
}

bool is(QStringView word, QLatin1StringView keyword)
{
    return word.compare(keyword, Qt::CaseInsensitive) == 0;
}

/// Reads the lines as they stand. What is wrong is noted.
Rules readRules(const QByteArray &bytes, RampReport &report)
{
    Rules rules;
    RampText::Lines lines(bytes);
    while (lines.next() && !report.isRefusal()) {
        constexpr size_t most = 4;
        const auto words = RampText::words(lines.text(), most);
        if (words.empty() || words.front().startsWith(u'#'))
            continue;
        if (is(words.front(), QLatin1StringView("end")))
            break;
        const std::optional<COLORREF> color = readColor(std::span(words).subspan(1));
        if (!color) {
            report.add(words.size() == 2 || words.size() == 4 ? RampReport::BadColor : RampReport::BadLine,
                       lines.number());
        } else if (is(words.front(), QLatin1StringView("nv")) || words.front() == u"*") {
            report.add(RampReport::NoValueLost, lines.number());
        } else if (is(words.front(), QLatin1StringView("default"))) {
            report.add(RampReport::BeyondLost, lines.number());
        } else {
            Rule rule{0, words.front().endsWith(u'%'), *color, lines.number()};
            if (!RampText::readNumber(rule.isPercent ? words.front().chopped(1) : words.front(), rule.value))
                report.add(RampReport::BadNumber, lines.number());
            rules.push_back(rule);
            if (rules.size() > RampText::maximumStops)
                report.add(RampReport::TooLarge, lines.number());
        }
    }
    return rules;
}

/// Turns percentages into values of @p range, widened to hold the values that are there.
void resolve(Rules &rules, GrassColorRules::Range range)
{
    for (const Rule &rule : rules) {
        if (!rule.isPercent)
            range = {std::min(range.first, rule.value), std::max(range.second, rule.value)};
    }
    for (Rule &rule : rules) {
        if (rule.isPercent)
            rule.value = std::lerp(range.first, range.second, rule.value / 100);
    }
}

} // namespace

RampReading GrassColorRules::read(const QByteArray &bytes, const std::optional<Range> &dataRange)
{
    RampReading result;
    Rules rules = readRules(bytes, result.report);
    if (result.report.isRefusal())
        return result;
    const auto isPercent = [](const Rule &rule) { return rule.isPercent; };
    const auto percent = std::find_if(rules.begin(), rules.end(), isPercent);
    if (percent != rules.end()) {
        if (!dataRange && !std::all_of(rules.begin(), rules.end(), isPercent)) {
            result.report.add(RampReport::NeedsRange, percent->line);
            return result;
        }
        result.report.add(RampReport::Relative);
        result.isRelative = !dataRange;
        if (dataRange)
            resolve(rules, *dataRange);
    }
    if (!rules.empty() && rules.back().value < rules.front().value) // either way is right
        std::reverse(rules.begin(), rules.end());
    ColorRamp::Stops stops;
    stops.reserve(rules.size());
    for (const Rule &rule : rules) {
        if (!stops.empty() && !(stops.back().value <= rule.value)) {
            result.report.add(RampReport::BadOrder, rule.line);
            return result;
        }
        stops.push_back({rule.value, rule.color});
    }
    result.ramp = ColorRamp::fromStops(std::move(stops));
    if (!result.ramp)
        result.report.add(rules.empty() ? RampReport::NoColors : RampReport::BadNumber);
    return result;
}

RampWriting GrassColorRules::write(const ColorRamp &ramp)
{
    RampWriting result;
    for (const ColorRamp::Stop &stop : ramp.stops()) {
        result.bytes += TxNumberText::shortest(stop.value).toLatin1() + ' ' +
                        QByteArray::number(TxColorRef::red(stop.color)) + ':' +
                        QByteArray::number(TxColorRef::green(stop.color)) + ':' +
                        QByteArray::number(TxColorRef::blue(stop.color)) + '\n';
    }
    return result;
}

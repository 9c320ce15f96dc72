#include "colour/RampCheck.h"

#include <algorithm>
#include <iterator>

namespace {

using ColorVision::Deficiency;
using ColorVision::Lab;
using RampCheck::Finding;
using RampCheck::Kind;

constexpr Deficiency deficiencies[] = {Deficiency::Protanopia, Deficiency::Deuteranopia, Deficiency::Tritanopia,
                                       Deficiency::Achromatopsia};

/// True when CIEDE2000 cannot reach the bound. It is at most sqrt(2) times the distance with a* stretched by half: no
/// weight in it is below 1, and its turning term at most doubles.
bool areNear(const Lab &first, const Lab &second)
{
    constexpr double reach = RampCheck::distinctFrom * RampCheck::distinctFrom / 2.0;
    const double l = second.l - first.l;
    const double a = 1.5 * (second.a - first.a);
    const double b = second.b - first.b;
    return l * l + a * a + b * b < reach;
}

void findAlike(std::span<const COLORREF> stops, std::vector<Finding> &findings)
{
    using ColorVision::difference;
    using ColorVision::simulate;
    Lab last = ColorVision::toLab(stops[0]);
    for (size_t i = 1; i < stops.size(); ++i) {
        const Lab next = ColorVision::toLab(stops[i]);
        if (!areNear(last, next) && difference(last, next) >= RampCheck::distinctFrom) {
            for (const Deficiency deficiency : deficiencies) {
                if (difference(simulate(stops[i - 1], deficiency), simulate(stops[i], deficiency)) <
                    RampCheck::alikeBelow)
                    findings.push_back({Kind::NeighboursAlike, deficiency, static_cast<qsizetype>(i - 1)});
            }
        }
        last = next;
    }
}

/// Follows a lightness and tells where it turns. It has turned when it has gone back by more than the slack; the turn
/// is then at the extreme before.
class TurnFinder
{
public:
    /// Takes the lightness at or behind @p stop. @return the stop of a turn, or -1
    qsizetype take(double lightness, qsizetype stop)
    {
        if (m_low.lightness > lightness)
            m_low = {lightness, stop};
        if (m_high.lightness < lightness)
            m_high = {lightness, stop};
        const bool hasFallen = lightness < m_high.lightness - RampCheck::lightnessSlack;
        const bool hasRisen = lightness > m_low.lightness + RampCheck::lightnessSlack;
        qsizetype turn = -1;
        if (hasFallen && m_way >= 0) {
            turn = m_way > 0 ? m_high.stop : -1;
            m_way = -1;
            m_low = {lightness, stop};
        } else if (hasRisen && m_way <= 0) {
            turn = m_way < 0 ? m_low.stop : -1;
            m_way = 1;
            m_high = {lightness, stop};
        }
        return turn;
    }

private:
    struct Extreme
    {
        double lightness;
        qsizetype stop = 0;
    };
    Extreme m_low{1e9};
    Extreme m_high{-1e9};
    int m_way = 0; ///< 1 lighter, -1 darker, 0 not known yet
};

/// True when the blend of two colours may turn between them: some of its parts grow and some shrink.
bool mayTurn(COLORREF from, COLORREF to)
{
    const int steps[] = {TxColorRef::red(to) - TxColorRef::red(from), TxColorRef::green(to) - TxColorRef::green(from),
                         TxColorRef::blue(to) - TxColorRef::blue(from)};
    const auto [least, most] = std::minmax_element(std::begin(steps), std::end(steps));
    return *least < 0 && *most > 0;
}

void findTurns(std::span<const COLORREF> stops, std::vector<Finding> &findings)
{
    TurnFinder finder;
    const auto take = [&](COLORREF color, size_t stop) {
        const qsizetype turn = finder.take(ColorVision::lightness(color), static_cast<qsizetype>(stop));
        if (turn >= 0)
            findings.push_back({Kind::LightnessNotMonotone, Deficiency::None, turn});
    };
    for (size_t i = 0; i < stops.size(); ++i) {
        take(stops[i], i);
        if (i + 1 == stops.size() || !mayTurn(stops[i], stops[i + 1]))
            continue;
        // From red to green through a dark olive: a blend has at most one turn, and quarters see all worth telling.
        for (int k = 1; k < 4; ++k) {
            const auto blend = [&](int (*part)(COLORREF)) {
                return (part(stops[i]) * (4 - k) + part(stops[i + 1]) * k) / 4;
            };
            take(TxColorRef::make(blend(TxColorRef::red), blend(TxColorRef::green), blend(TxColorRef::blue)), i);
        }
    }
}

} // namespace

std::vector<Finding> RampCheck::check(std::span<const COLORREF> stops)
{
    std::vector<Finding> findings;
    if (stops.size() < 2 || stops.size() > maximumStops)
        return findings;
    findAlike(stops, findings);
    findTurns(stops, findings);
    return findings;
}

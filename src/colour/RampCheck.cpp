#include "colour/RampCheck.h"

#include <algorithm>
#include <array>

namespace {

using ColorVision::Deficiency;
using ColorVision::Lab;
using RampCheck::Finding;
using RampCheck::Kind;

constexpr Deficiency deficiencies[] = {Deficiency::Protanopia, Deficiency::Deuteranopia, Deficiency::Tritanopia,
                                       Deficiency::Achromatopsia};

/// One stop as people with full colour vision see it, and as those with each deficiency do.
struct Seen
{
    Lab full;
    std::array<Lab, std::size(deficiencies)> deficient;

    explicit Seen(COLORREF color) : full(ColorVision::toLab(color))
    {
        for (size_t i = 0; i < deficient.size(); ++i)
            deficient[i] = ColorVision::toLab(ColorVision::simulate(color, deficiencies[i]));
    }
};

void findAlike(std::span<const COLORREF> stops, std::vector<Finding> &findings)
{
    Seen last(stops[0]);
    for (size_t i = 1; i < stops.size(); ++i) {
        if (stops[i] == stops[i - 1])
            continue;
        const Seen next(stops[i]);
        if (ColorVision::difference(last.full, next.full) >= RampCheck::distinctFrom) {
            for (size_t k = 0; k < std::size(deficiencies); ++k) {
                if (ColorVision::difference(last.deficient[k], next.deficient[k]) < RampCheck::alikeBelow)
                    findings.push_back({Kind::NeighboursAlike, deficiencies[k], static_cast<qsizetype>(i - 1)});
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

void findTurns(std::span<const COLORREF> stops, std::vector<Finding> &findings)
{
    // Between two stops, too, the lightness may turn: from red to green through a dark olive. A blend has at most one
    // turn, and quarters see all that are worth telling.
    constexpr int quarters = 4;
    TurnFinder finder;
    const auto take = [&](COLORREF color, size_t stop) {
        const qsizetype turn = finder.take(ColorVision::lightness(color), static_cast<qsizetype>(stop));
        if (turn >= 0)
            findings.push_back({Kind::LightnessNotMonotone, Deficiency::None, turn});
    };
    for (size_t i = 0; i + 1 < stops.size(); ++i) {
        if (i > 0 && stops[i] == stops[i - 1])
            continue;
        for (int k = 0; k < quarters; ++k) {
            const auto blend = [&](int (*part)(COLORREF)) {
                return (part(stops[i]) * (quarters - k) + part(stops[i + 1]) * k) / quarters;
            };
            take(TxColorRef::make(blend(TxColorRef::red), blend(TxColorRef::green), blend(TxColorRef::blue)), i);
        }
    }
    take(stops.back(), stops.size() - 1);
}

} // namespace

std::vector<Finding> RampCheck::check(std::span<const COLORREF> stops)
{
    std::vector<Finding> findings;
    if (stops.size() < 2)
        return findings;
    findAlike(stops, findings);
    findTurns(stops, findings);
    return findings;
}

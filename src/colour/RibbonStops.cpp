#include "colour/RibbonStops.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace {

using Limits = std::numeric_limits<qint32>;

/// Cuts off the fraction. What is no number gives @p fallback, what 32 bits do not hold the nearest that they do.
qint32 truncated(double number, qint32 fallback)
{
    if (std::isnan(number))
        return fallback;
    return static_cast<qint32>(std::clamp<double>(number, Limits::min(), Limits::max()));
}

/// How far a channel's bits stand from the low end of a colour; -1 for what is no channel.
constexpr int shiftOf(RibbonStops::Target channel)
{
    switch (channel) {
    case RibbonStops::Target::Red:
        return 0;
    case RibbonStops::Target::Green:
        return 8;
    case RibbonStops::Target::Blue:
        return 16;
    default:
        return -1;
    }
}

} // namespace

RibbonStops::RibbonStops()
{
    m_state.stops = {{0, 0xFFFFFF, 0.0}, {0, 0x000000, 1000.0}};
    m_state.maximum = 1000.0;
}

const RibbonStop *RibbonStops::selectedStop() const
{
    return hasSelection() ? &m_state.stops[static_cast<size_t>(m_state.selected)] : nullptr;
}

void RibbonStops::SetMaxValue(double value)
{
    m_state.maximum = value;
    if (count() >= 2)
        m_state.stops.back().value = value;
}

void RibbonStops::SetMinValue(double value)
{
    m_state.minimum = value;
    if (count() >= 2)
        m_state.stops.front().value = value;
}

bool RibbonStops::replaceEmptyRange()
{
    if (m_state.maximum > m_state.minimum && std::isfinite(m_state.maximum - m_state.minimum))
        return false;
    SetMinValue(0.0);
    SetMaxValue(std::max(m_width, 1));
    return true;
}

bool RibbonStops::replaceAll(Stops stops, double minimum, double maximum)
{
    if (stops.empty())
        return false;
    aboutToEdit();
    m_state = {std::move(stops), minimum, maximum, -1};
    m_target = Target::None;
    CalculatePosition();
    return true;
}

void RibbonStops::setBand(qint32 left, qint32 width)
{
    m_left = left;
    m_width = width;
    CalculatePosition();
}

double RibbonStops::Position2Value(qint32 x) const
{
    const double value = (double(x) - m_left) / m_width * (m_state.maximum - m_state.minimum) + m_state.minimum;
    return std::isfinite(value) ? value : m_state.minimum;
}

void RibbonStops::CalculatePosition()
{
    const double first = m_state.stops.front().value;
    const double range = m_state.maximum - m_state.minimum;
    for (RibbonStop &stop : m_state.stops) {
        const double position = (stop.value - first) / range * m_width + m_left;
        stop.position = truncated(range == 0.0 ? std::nan("") : position, m_left);
    }
}

void RibbonStops::CalcValues()
{
    const double first = m_state.stops.front().value;
    const double span = m_state.stops.back().value - first;
    if (span == 0.0 || !std::isfinite(span))
        return;
    for (RibbonStop &stop : m_state.stops)
        stop.value = (stop.value - first) / span * (m_state.maximum - m_state.minimum) + m_state.minimum;
    m_state.stops.back().value = m_state.maximum; // which rounding may have missed
}

bool RibbonStops::ChangeStopPos(qint32 x)
{
    if (!isInterior(m_state.selected))
        return false;
    aboutToEdit();
    // Deliberate: the place that the stop has, not the one that it gets, decides whether it is swapped.
    auto stop = m_state.stops.begin() + m_state.selected;
    if (stop->position < (stop - 1)->position) {
        std::iter_swap(stop, stop - 1);
        --stop;
    } else if (stop->position > (stop + 1)->position) {
        std::iter_swap(stop, stop + 1);
        ++stop;
    }
    stop->position = x;
    stop->value = Position2Value(x);
    m_state.selected = static_cast<qint32>(stop - m_state.stops.begin());
    return true;
}

void RibbonStops::select(qint32 index)
{
    const bool isThere = index >= 0 && index < count();
    m_state.selected = isThere ? index : -1;
    m_target = isThere ? Target::Stop : Target::None;
}

bool RibbonStops::selectByKey(Go where)
{
    if (!hasSelection())
        return false;
    const qint32 last = count() - 1;
    const std::array places = {m_state.selected - 1, m_state.selected + 1, 0, last}; // in the order of Go
    m_state.selected = std::clamp(places[static_cast<size_t>(where)], 0, last);
    return true;
}

qint32 RibbonStops::insertionIndex(qint32 x) const
{
    const auto encloses = [x](const RibbonStop &from, const RibbonStop &to) {
        return x >= from.position && x <= to.position;
    };
    const Stops &stops = m_state.stops;
    const auto segment = std::adjacent_find(stops.begin(), stops.end(), encloses);
    // Deliberate: a click beside the stops counts as one into the second segment.
    const qint32 found = segment == stops.end() ? 1 : static_cast<qint32>(segment - stops.begin());
    return std::min(found + 1, count());
}

qint32 RibbonStops::insertStop(qint32 x, COLORREF color)
{
    const qint32 index = insertionIndex(x);
    aboutToEdit();
    m_state.stops.insert(m_state.stops.begin() + index, {x, color, Position2Value(x)});
    if (m_state.selected >= index)
        ++m_state.selected;
    return index;
}

bool RibbonStops::canRemoveSelected() const
{
    return hasSelection() && count() > 2;
}

bool RibbonStops::removeSelected()
{
    if (!canRemoveSelected())
        return false;
    aboutToEdit();
    const qint32 index = m_state.selected;
    const bool wasLast = index == count() - 1;
    m_state.stops.erase(m_state.stops.begin() + index);
    if (index == 0)
        m_state.minimum = m_state.stops.front().value;
    if (wasLast) {
        m_state.maximum = m_state.stops.back().value;
        --m_state.selected;
    }
    CalculatePosition();
    return true;
}

bool RibbonStops::step(qint32 by)
{
    if (!hasSelection())
        return false;
    if (m_target != Target::Stop)
        return setChannel(m_target, channel(m_target) + std::clamp(by, -255, 255));
    const qint64 x = qint64(selectedStop()->position) + by;
    const bool leaves = by < 0 ? x < m_left : x > qint64(m_left) + m_width;
    return !leaves && x >= Limits::min() && x <= Limits::max() && ChangeStopPos(static_cast<qint32>(x));
}

bool RibbonStops::editMaximum(double value)
{
    Stops &stops = m_state.stops;
    if (!std::isfinite(value) || !(value > m_state.minimum) || (count() >= 2 && !(value > stops.end()[-2].value)))
        return false;
    if (value != m_state.maximum || value != stops.back().value)
        aboutToEdit();
    m_state.maximum = stops.back().value = value;
    CalculatePosition();
    return true;
}

bool RibbonStops::editMinimum(double value)
{
    Stops &stops = m_state.stops;
    if (!std::isfinite(value) || !(value < m_state.maximum) || (count() >= 2 && !(value < stops[1].value)))
        return false;
    if (value != m_state.minimum || value != stops.front().value)
        aboutToEdit();
    m_state.minimum = stops.front().value = value;
    CalculatePosition();
    return true;
}

bool RibbonStops::editSelectedValue(double value)
{
    if (!hasSelection())
        return false;
    const auto stop = m_state.stops.begin() + m_state.selected;
    const bool isAccepted = isInterior(m_state.selected) ? value > (stop - 1)->value && value < (stop + 1)->value
                                                         : value == (m_state.selected == 0 ? minimum() : maximum());
    if (!isAccepted)
        return false;
    if (value != stop->value)
        aboutToEdit();
    stop->value = value;
    CalculatePosition();
    return true;
}

bool RibbonStops::setChannel(Target channel, qint32 value)
{
    const int shift = shiftOf(channel);
    if (!hasSelection() || shift < 0)
        return false;
    const COLORREF bits = static_cast<COLORREF>(std::clamp(value, 0, 255)) << shift;
    return setSelectedColor((selectedStop()->color & ~(0xFFU << shift)) | bits);
}

qint32 RibbonStops::channel(Target channel) const
{
    const int shift = shiftOf(channel);
    return hasSelection() && shift >= 0 ? static_cast<qint32>(selectedStop()->color >> shift & 0xFFU) : 0;
}

bool RibbonStops::setSelectedColor(COLORREF color)
{
    if (!hasSelection())
        return false;
    if (color != selectedStop()->color) {
        aboutToEdit();
        m_state.stops[static_cast<size_t>(m_state.selected)].color = color;
    }
    return true;
}

bool RibbonStops::distributeEvenly()
{
    if (count() < 2 || !std::isfinite(m_state.maximum - m_state.minimum))
        return false;
    aboutToEdit();
    const double last = count() - 1;
    for (qint32 i = 0; i < count(); ++i)
        m_state.stops[static_cast<size_t>(i)].value = std::lerp(m_state.minimum, m_state.maximum, i / last);
    CalculatePosition();
    return true;
}

bool RibbonStops::reverse()
{
    if (count() < 2 || !std::isfinite(m_state.maximum - m_state.minimum))
        return false;
    aboutToEdit();
    std::reverse(m_state.stops.begin(), m_state.stops.end());
    for (RibbonStop &stop : m_state.stops) {
        // The ends change places exactly, whatever rounding does to the sum.
        stop.value = stop.value == minimum() ? maximum() : minimum() + (maximum() - stop.value);
    }
    if (hasSelection())
        m_state.selected = count() - 1 - m_state.selected;
    CalculatePosition();
    return true;
}

bool RibbonStops::undo()
{
    return m_history.undo(m_state) && showState();
}

bool RibbonStops::redo()
{
    return m_history.redo(m_state) && showState();
}

/// The band may have another size than when the state was stored.
bool RibbonStops::showState()
{
    m_isModified = true;
    if (!hasSelection())
        m_target = Target::None;
    else if (m_target == Target::None)
        m_target = Target::Stop;
    CalculatePosition();
    return true;
}

void RibbonStops::aboutToEdit()
{
    m_history.record(m_state);
    m_isModified = true;
}

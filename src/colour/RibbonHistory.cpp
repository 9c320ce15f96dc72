#include "colour/RibbonHistory.h"

#include <exception>
#include <numeric>

namespace {

constexpr size_t mostSteps = 100;
constexpr size_t mostStops = 64 * 1024 * 1024 / sizeof(RibbonStop);

} // namespace

void RibbonHistory::begin()
{
    if (m_depth++ == 0)
        m_isRecorded = false;
}

void RibbonHistory::end()
{
    if (m_depth > 0)
        --m_depth;
}

void RibbonHistory::record(const State &before)
{
    m_redo.clear();
    if (m_depth > 0 && m_isRecorded)
        return;
    m_isRecorded = true;
    try {
        m_undo.push_back(before);
    } catch (const std::exception &) { // no memory left: better an edit that cannot be undone than none
        m_undo.clear();
        return;
    }
    const auto add = [](size_t sum, const State &state) { return sum + state.stops.size(); };
    size_t stops = std::accumulate(m_undo.begin(), m_undo.end(), size_t(0), add);
    while (m_undo.size() > 1 && (m_undo.size() > mostSteps || stops > mostStops)) {
        stops -= m_undo.front().stops.size();
        m_undo.pop_front();
    }
}

bool RibbonHistory::exchange(States &from, States &to, State &state)
{
    if (from.empty())
        return false;
    to.push_back(std::move(state));
    state = std::move(from.back());
    from.pop_back();
    m_isRecorded = false; // what is edited next is another step, even within one begin and end
    return true;
}

void RibbonHistory::clear()
{
    m_undo.clear();
    m_redo.clear();
    m_isRecorded = false;
}

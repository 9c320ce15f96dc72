#include "colour/RibbonColumns.h"

#include "colour/RibbonGeometry.h"
#include "engine/symbol/TxColorFolder.h"

#include <algorithm>
#include <array>

namespace {

/// Finds the columns that nothing covers yet, each step in all but constant time (a union-find structure).
class FreeColumns
{
public:
    explicit FreeColumns(qint64 count) : m_next(static_cast<size_t>(count) + 1)
    {
        for (size_t i = 0; i < m_next.size(); ++i)
            m_next[i] = i;
    }

    /// The first free column from @p column on; the count when there is none.
    size_t from(size_t column)
    {
        size_t free = column;
        while (m_next[free] != free)
            free = m_next[free];
        while (m_next[column] != free && column != free)
            column = std::exchange(m_next[column], free);
        return free;
    }

    void take(size_t column) { m_next[column] = column + 1; }

private:
    std::vector<size_t> m_next;
};

/// The colour @p k pixels behind the stop @p from, of @p distance to the stop @p to. Doubles are exact here: a quotient
/// that is no whole number is farther from one than rounding reaches.
COLORREF between(COLORREF from, COLORREF to, double k, double distance)
{
    const auto channel = [k, distance](int left, int right) {
        return static_cast<int>(left + k * (right - left) / distance);
    };
    return TxColorRef::make(channel(TxColorRef::red(from), TxColorRef::red(to)),
                            channel(TxColorRef::green(from), TxColorRef::green(to)),
                            channel(TxColorRef::blue(from), TxColorRef::blue(to)));
}

} // namespace

RibbonColumns::RibbonColumns(const std::vector<RibbonStop> &stops, const RibbonGeometry &geometry)
    : m_left(geometry.usableLeft())
{
    const qint64 count = std::max<qint64>(geometry.usableWidth(), 0) + 1;
    m_colors.assign(static_cast<size_t>(count), stops.empty() ? 0 : stops.back().color);
    if (stops.empty())
        return;
    FreeColumns columns(count);
    // A later segment covers an earlier one: so the last comes first, and every column is filled once.
    for (size_t i = stops.size() - 1; i > 0; --i) {
        const RibbonStop &from = stops[i - 1];
        const RibbonStop &to = stops[i];
        const qint64 begin = qint64(from.position) - m_left;
        const qint64 end = std::min(qint64(to.position) - m_left, count);
        if (std::max<qint64>(begin, 0) >= end)
            continue;
        const double distance = double(to.position) - from.position;
        size_t column = columns.from(static_cast<size_t>(std::max<qint64>(begin, 0)));
        while (column < static_cast<size_t>(end)) {
            m_colors[column] = between(from.color, to.color, double(qint64(column) - begin), distance);
            columns.take(column);
            column = columns.from(column + 1);
        }
    }
    const qint64 firstStop = std::clamp<qint64>(qint64(stops.front().position) - m_left, 0, count);
    for (size_t column = columns.from(0); column < static_cast<size_t>(firstStop); column = columns.from(column + 1))
        m_colors[column] = stops.front().color;
}

COLORREF RibbonColumns::colorAt(qint32 x) const
{
    const qint64 last = static_cast<qint64>(m_colors.size()) - 1;
    return m_colors[static_cast<size_t>(std::clamp<qint64>(qint64(x) - m_left, 0, last))];
}

QList<COLORREF> RibbonColumns::MakeOutColor(qint32 count) const
{
    QList<COLORREF> colors;
    if (count <= 0 || count > CTxColorFolder::maxGradientCount)
        return colors;
    colors.resize(count);
    // F.left + 21 and as many pixels as the usable band has, which begins at F.left + 20.
    const double left = double(m_left) + 1;
    const qint32 width = static_cast<qint32>(m_colors.size()) - 1;
    const double step = double(width) / count;
    // Places first, colours after: so the processor reckons several places at once.
    std::array<qint32, 512> columns;
    COLORREF *to = colors.data();
    for (qint32 done = 0; done < count;) {
        const qint32 some = std::min(count - done, static_cast<qint32>(columns.size()));
        for (qint32 i = 0; i < some; ++i)
            columns[static_cast<size_t>(i)] =
                std::clamp(static_cast<qint32>(left + (done + i) * step) - m_left, 0, width);
        for (qint32 i = 0; i < some; ++i)
            to[done + i] = m_colors[static_cast<size_t>(columns[static_cast<size_t>(i)])];
        done += some;
    }
    return colors;
}

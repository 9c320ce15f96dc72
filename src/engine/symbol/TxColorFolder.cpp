#include "engine/symbol/TxColorFolder.h"

#include <algorithm>

namespace {

/// @p from moved @p step of @p steps towards @p to, rounded half up; exact at both ends.
int between(int from, int to, qint64 step, qint64 steps)
{
    const qint64 twice = 2 * (from * (steps - step) + to * step); // 2 * 255 * 2^24 fits by far
    return static_cast<int>((twice + steps) / (2 * steps));
}

COLORREF between(COLORREF from, COLORREF to, qint64 step, qint64 steps)
{
    return TxColorRef::make(between(TxColorRef::red(from), TxColorRef::red(to), step, steps),
                            between(TxColorRef::green(from), TxColorRef::green(to), step, steps),
                            between(TxColorRef::blue(from), TxColorRef::blue(to), step, steps));
}

} // namespace

void CTxColorFolder::InsertAt(qint32 index, COLORREF color)
{
    m_colors.insert(std::clamp(index, 0, GetCount()), color);
}

bool CTxColorFolder::SetAt(qint32 index, COLORREF color)
{
    if (index < 0 || index >= GetCount())
        return false;
    m_colors[index] = color;
    return true;
}

bool CTxColorFolder::RemoveAt(qint32 index)
{
    if (index < 0 || index >= GetCount())
        return false;
    m_colors.removeAt(index);
    return true;
}

qint32 CTxColorFolder::MakeGradient(qint32 count, COLORREF first, COLORREF last)
{
    CTxColorFolder ends;
    ends.Add(first);
    ends.Add(last);
    return MakeGradient(count, ends);
}

qint32 CTxColorFolder::MakeGradient(qint32 count, const CTxColorFolder &colors)
{
    const QList<COLORREF> through = colors.m_colors; // a copy: colors may be this
    m_colors.clear();
    if (count < 1 || count > maxGradientCount || through.isEmpty())
        return 0;
    m_colors.reserve(count);
    const qint64 pieces = through.size() - 1;
    const qint64 steps = std::max(1, count - 1);
    for (qint64 i = 0; i < count; ++i) {
        // Place i * pieces / steps on the list, in whole numbers: colour `piece` and a fraction of `steps` behind it.
        const qint64 piece = i * pieces / steps;
        const qint64 rest = i * pieces % steps;
        m_colors.append(rest == 0 ? through[piece] : between(through[piece], through[piece + 1], rest, steps));
    }
    return count;
}

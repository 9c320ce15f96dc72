#include "engine/symbol/TxColorFolder.h"

#include "engine/symbol/StockGradients.h"

#include <QCoreApplication>

#include <algorithm>

namespace {

// Ramps are stepped in whole numbers of 2^-46, because a division for every colour would be most of the work. They are
// exact all the same: rounded half up, a channel is a whole number of 1 / (2 * steps) with steps below 2^24, so it
// meets the next whole number or is 2^-25 away from it. A run of at most 2^10 colours is off by less than 2^-27 (255
// times the 2^-46 that a step was cut by, 2^10 times), and the 2^-26 that is added makes good for it.
constexpr int fractionBits = 46;
constexpr double fractionOne = 0x1p46;
constexpr quint32 longestRun = 1 << 10;

struct Channel
{
    Channel(int from, int to, qint64 part, qint64 partStep)
        : value((static_cast<qint64>(from) << fractionBits) + (1LL << (fractionBits - 1)) +
                (1LL << (fractionBits - 26)) + (to - from) * part),
          step((to - from) * partStep)
    {
    }
    COLORREF next()
    {
        const auto channel = static_cast<COLORREF>(value >> fractionBits);
        value += step;
        return channel;
    }

    qint64 value, step;
};

/// Writes @p count colours between two neighbours of a ramp: the first at @p part of the way, and so on by @p partStep.
void writeRun(COLORREF *out, quint32 count, COLORREF from, COLORREF to, qint64 part, qint64 partStep)
{
    Channel red(TxColorRef::red(from), TxColorRef::red(to), part, partStep);
    Channel green(TxColorRef::green(from), TxColorRef::green(to), part, partStep);
    Channel blue(TxColorRef::blue(from), TxColorRef::blue(to), part, partStep);
    for (quint32 i = 0; i < count; ++i)
        out[i] = red.next() | green.next() << 8 | blue.next() << 16;
}

/// Writes the ramp of @p count colours through the colours of @p through (one or more) to @p out.
void writeRamp(COLORREF *out, quint32 count, const QList<COLORREF> &through)
{
    const qint64 pieces = through.size() - 1;
    const quint32 steps = std::max(1U, count - 1);
    // Colour i stands at i * pieces / steps on the list: behind colour `piece` by `rest` of `steps`.
    const qint64 pieceStep = pieces / steps;
    const auto restStep = static_cast<quint32>(pieces % steps);
    const double unit = fractionOne / steps;
    const auto partStep = static_cast<qint64>(restStep * unit);
    const quint32 whole = restStep > 0 ? steps / restStep : count, over = restStep > 0 ? steps % restStep : 0;
    qint64 piece = 0;
    quint32 rest = 0;
    quint32 left = 0; // colours of this piece that are still to be written
    for (quint32 written = 0; written < count;) {
        if (left == 0)
            left = pieceStep > 0 ? 1 : whole + (rest < over ? 1 : 0);
        const quint32 run = std::min({left, count - written, longestRun});
        writeRun(out + written, run, through[piece], through[std::min(piece + 1, pieces)],
                 static_cast<qint64>(rest * unit), partStep);
        written += run;
        left -= run;
        piece += pieceStep;
        rest += run * restStep;
        if (rest >= steps) {
            rest -= steps;
            ++piece;
        }
    }
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
    m_colors.resize(count);
    writeRamp(m_colors.data(), static_cast<quint32>(count), through);
    return count;
}

qint32 CTxColorFolder::MakeStockGradient(qint32 count, qint32 style, bool reverse)
{
    m_colors.clear();
    const StockGradients::Row *row = StockGradients::find(style);
    if (!row || count < 1 || count > maxGradientCount)
        return 0;
    m_colors.resize(count);
    const auto total = static_cast<quint32>(count);
    const quint32 water = row->traits.hasSeaLevel ? std::max(1U, total / 2) : total;
    writeRamp(m_colors.data(), water, StockGradients::knots(*row));
    if (water < total) {
        // Written from the peak down and then turned round, so that the peak is there however few colours there are.
        QList<COLORREF> land = StockGradients::knots(*row, true);
        std::reverse(land.begin(), land.end());
        writeRamp(m_colors.data() + water, total - water, land);
        std::reverse(m_colors.begin() + water, m_colors.end());
    }
    if (reverse)
        std::reverse(m_colors.begin(), m_colors.end());
    return count;
}

qint32 CTxColorFolder::GetStockGradientCount()
{
    return static_cast<qint32>(StockGradients::rows().size());
}

QString CTxColorFolder::GetStockGradientName(qint32 style)
{
    const StockGradients::Row *row = StockGradients::find(style);
    return row ? QCoreApplication::translate("TdCommon", row->name) : QString();
}

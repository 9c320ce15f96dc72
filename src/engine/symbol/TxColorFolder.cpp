#include "engine/symbol/TxColorFolder.h"

#include "engine/symbol/StockGradients.h"

#include <QCoreApplication>

#include <algorithm>

namespace {

/// The colours between two neighbours of a ramp: in doubles, because a division of whole numbers a channel would be
/// most of the cost, and exact all the same. A channel in units of 1 is k / (2 * steps) with steps below 2^24 when it
/// is rounded half up, so the next whole number is at least 2^-25 away or is met; the doubles are wrong by far less
/// than 2^-26, which is added to meet it.
class Between
{
public:
    Between(COLORREF from, COLORREF to)
        : m_red(channel(TxColorRef::red(from), TxColorRef::red(to))),
          m_green(channel(TxColorRef::green(from), TxColorRef::green(to))),
          m_blue(channel(TxColorRef::blue(from), TxColorRef::blue(to)))
    {
    }

    /// The colour at @p part of the way, 0 to 1.
    COLORREF at(double part) const { return m_red.at(part) | m_green.at(part) << 8 | m_blue.at(part) << 16; }

private:
    struct Channel
    {
        double start, change;
        COLORREF at(double part) const { return static_cast<COLORREF>(static_cast<int>(start + change * part)); }
    };
    static Channel channel(int from, int to) { return {from + 0.5 + 0x1p-26, double(to - from)}; }

    Channel m_red, m_green, m_blue;
};

/// Writes the ramp of @p count colours through the colours of @p through (one or more) to @p out.
void writeRamp(COLORREF *out, qint32 count, const QList<COLORREF> &through)
{
    const qint64 pieces = through.size() - 1;
    const qint64 steps = std::max(1, count - 1);
    // Colour i stands at i * pieces / steps on the list: behind colour `piece` by `rest` of `steps`.
    const qint64 pieceStep = pieces / steps, restStep = pieces % steps;
    const double unit = 1.0 / static_cast<double>(steps);
    qint64 piece = 0, rest = 0;
    for (const COLORREF *const end = out + count; out != end;) {
        const Between colors(through[piece], through[std::min(piece + 1, pieces)]);
        const qint64 here = piece;
        do {
            *out++ = colors.at(static_cast<double>(rest) * unit);
            piece += pieceStep;
            rest += restStep;
            if (rest >= steps) {
                rest -= steps;
                ++piece;
            }
        } while (piece == here && out != end);
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
    writeRamp(m_colors.data(), count, through);
    return count;
}

qint32 CTxColorFolder::MakeStockGradient(qint32 count, qint32 style, bool reverse)
{
    m_colors.clear();
    const StockGradients::Row *row = StockGradients::find(style);
    if (!row || count < 1 || count > maxGradientCount)
        return 0;
    m_colors.resize(count);
    const qint32 waterCount = row->traits.hasSeaLevel ? std::max(1, count / 2) : count;
    writeRamp(m_colors.data(), waterCount, StockGradients::knots(*row));
    if (waterCount < count) {
        // Written from the peak down and then turned round, so that the peak is there however few colours there are.
        QList<COLORREF> land = StockGradients::knots(*row, true);
        std::reverse(land.begin(), land.end());
        writeRamp(m_colors.data() + waterCount, count - waterCount, land);
        std::reverse(m_colors.begin() + waterCount, m_colors.end());
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

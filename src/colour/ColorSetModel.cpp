#include "colour/ColorSetModel.h"

#include "engine/symbol/TxColorFolder.h"

#include <algorithm>
#include <cmath>

namespace {

// How far from an end of the range a value still counts as the end.
constexpr double endTolerance = 1e-10;

constexpr int toItem(COLORREF color)
{
    return static_cast<int>(color);
}

} // namespace

void ColorSetModel::setColorset(const CTxColorsetEx &colorset)
{
    CTxColorFolder colors;
    for (qint32 i = 0; i < colorset.GetSize(); ++i)
        colors.Add(colorset.GetRGB(i));
    m_colors.FromColorFolder(colors);
    minimum = colorset.GetZFloor();
    maximum = colorset.GetZCeiling();
}

CTxColorsetEx ColorSetModel::colorset() const
{
    CTxColorsetEx result;
    result.SetZCeiling(maximum);
    result.SetZFloor(minimum);
    for (qint32 i = 0; i < count(); ++i)
        result.AddColor(at(i), 0.0);
    return result;
}

COLORREF ColorSetModel::at(qint32 index) const
{
    return static_cast<COLORREF>(m_colors.GetItem(index + 1));
}

CTxColorFolder ColorSetModel::folder() const
{
    CTxColorFolder result;
    m_colors.ToColorFolder(result);
    return result;
}

void ColorSetModel::add(COLORREF color)
{
    m_colors.Add(toItem(color));
}

void ColorSetModel::insert(qint32 index, COLORREF color)
{
    if (index >= 0 && index < count())
        m_colors.InsertAt(index + 1, toItem(color));
}

void ColorSetModel::remove(qint32 index)
{
    m_colors.Remove(index + 1, 1);
}

void ColorSetModel::replace(qint32 index, COLORREF color)
{
    m_colors.SetItem(index + 1, toItem(color));
}

void ColorSetModel::removeAll()
{
    m_colors.RemoveAll();
}

std::optional<ColorSetModel::SubRange> ColorSetModel::subRange(qint64 start, qint64 end) const
{
    if (start < 0 || start >= end || start >= count())
        return std::nullopt;
    const qint64 last = std::min<qint64>(end, count() - 1);
    return SubRange{static_cast<qint32>(start), static_cast<qint32>(last - start + 1)};
}

void ColorSetModel::fill(SubRange range, const CTxColorFolder &colors, bool inverse)
{
    for (qint32 i = 0; i < std::min(range.count, colors.GetCount()); ++i)
        replace(inverse ? range.first + range.count - 1 - i : range.first + i, colors.GetAt(i));
}

void ColorSetModel::fillRandom(SubRange range, bool inverse)
{
    CTdColors random;
    random.MakeRandomColorset(range.count);
    CTxColorFolder colors;
    random.ToColorFolder(colors);
    fill(range, colors, inverse);
}

void ColorSetModel::fillBetween(SubRange range, bool inverse)
{
    CTdColors ramp;
    ramp.MakeGradientColorset(range.count, toItem(at(range.first)), toItem(at(range.first + range.count - 1)));
    CTxColorFolder colors;
    ramp.ToColorFolder(colors);
    fill(range, colors, inverse);
}

void ColorSetModel::fillStock(SubRange range, qint32 style, bool inverse)
{
    CTxColorFolder colors;
    colors.MakeStockGradient(range.count, style, false);
    fill(range, colors, inverse);
}

ColorSetModel::RangeFault ColorSetModel::rangeFault() const
{
    const double width = maximum - minimum;
    if (!std::isfinite(width))
        return RangeFault::Endless;
    return width < 0.0 ? RangeFault::Reversed : width == 0.0 ? RangeFault::Flat : RangeFault::None;
}

ColorsetTable ColorSetModel::table() const
{
    ColorsetTable table;
    table.minimum = minimum;
    table.maximum = maximum;
    table.entries.resize(static_cast<size_t>(count()));
    table.reckonStep();
    // Deliberate: the last colour stands a step below the maximum. The colour ribbon editor adds a stop at the maximum
    // when it loads the file, which is the upper end of the last colour's step.
    for (qint32 i = 0; i < count(); ++i)
        table.entries[static_cast<size_t>(i)] = {minimum + i * table.step, at(i)};
    return table;
}

void ColorSetModel::load(const ColorsetTable &table)
{
    if (takesRangeOfFile) {
        minimum = table.minimum;
        maximum = table.maximum;
        intervalCount = std::max(table.count, 1) - 1;
    }
    CTxColorFolder colors;
    for (const ColorsetTable::Entry &entry : table.entries) {
        if (takesRangeOfFile || isWithinRange(entry.value))
            colors.Add(entry.color & 0xFFFFFFU); // files of others may have anything in the high byte
    }
    m_colors.FromColorFolder(colors);
}

bool ColorSetModel::isWithinRange(double value) const
{
    return (minimum < value && value < maximum) || std::abs(value - minimum) < endTolerance ||
           std::abs(value - maximum) < endTolerance;
}

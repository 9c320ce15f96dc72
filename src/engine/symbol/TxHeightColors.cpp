#include "engine/symbol/TxHeightColors.h"

#include "engine/symbol/TxColorFolder.h"

namespace {

/// How many places of the table there are from one colour to the next: as many as can be told apart in channels of 8
/// bits, and no more than a long set needs to look smooth.
qint32 placesBetween(qint32 count)
{
    constexpr qint32 distinct = 256;
    constexpr qint32 smooth = 4096;
    return count < 2 ? 1 : std::clamp(smooth / (count - 1), 1, distinct);
}

} // namespace

TxHeightColors::TxHeightColors(const CTxColorsetEx &colors, bool stepped)
    : m_floor(colors.GetZFloor()), m_span(colors.GetZCeiling() - colors.GetZFloor())
{
    const qint32 count = colors.GetSize();
    const qint32 places = stepped ? 1 : placesBetween(count);
    CTxColorFolder folder;
    for (qint32 i = 0; i < count; ++i)
        folder.Add(colors.GetRGB(i));
    if (places > 1) // each colour of the set stays exact, at a multiple of places
        folder.MakeGradient((count - 1) * places + 1, CTxColorFolder(folder));
    m_table.reserve(static_cast<size_t>(folder.GetCount()));
    for (const COLORREF color : folder.GetColors())
        m_table.push_back(TxColorRef::toRgb(color));
    const auto size = static_cast<double>(m_table.size());
    m_last = size - 1;
    m_steps = stepped ? size : m_last;
    m_offset = stepped ? 0.0 : 0.5; // the nearest place
}

#pragma once

#include "colour/RibbonStop.h"
#include "common/TdCommonExport.h"

#include <QList>

#include <vector>

class RibbonGeometry;

/// The colours of the ribbon's pixel columns: what is painted, and what the output colours are read back from. Logical
/// pixels, so neither depends on the screen's scale; no preview of a colour deficiency goes into them.
///
/// Between two neighbouring stops column k, from 0 to their distance - 1, has per channel truncate(left + k * (right -
/// left) / distance). Where stops are out of order the later segment covers the earlier, as if painted in order.
/// Columns of no segment go on with the nearer end's colour: those before the first stop with its colour, those from
/// the last stop on with the last's.
///
/// Making one takes time in proportion to stops and columns, whatever the stops' order.
class TDCOMMON_API RibbonColumns
{
public:
    /// The columns of the usable band and one more, where the last stop of the range stands.
    RibbonColumns(const std::vector<RibbonStop> &stops, const RibbonGeometry &geometry);

    /// The colours in order; the first stands at left(). At least one.
    const std::vector<COLORREF> &pixels() const { return m_colors; }
    qint32 left() const { return m_left; }
    /// The colour at pixel @p x, outside the columns that of the nearest.
    COLORREF colorAt(qint32 x) const;

    /// Reads back @p count colours along the rectangle from F.left + 21 to F.right - 19: with step = its width / count,
    /// colour i is that at truncate(left + i * step). The sample points end one pixel behind the last segment, so with
    /// as many colours as pixels the last one is the last stop's.
    /// @return nothing for a count of 0 or less, or of more than there are colours (CTxColorFolder::maxGradientCount)
    QList<COLORREF> MakeOutColor(qint32 count) const;

private:
    qint32 m_left;
    std::vector<COLORREF> m_colors;
};

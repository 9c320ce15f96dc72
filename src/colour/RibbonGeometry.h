#pragma once

#include "colour/RibbonStop.h"
#include "common/TdCommonExport.h"

#include <QPolygon>
#include <QRect>

#include <vector>

/// Where the parts of the ribbon stand, and what a point hits. Logical pixels of the window throughout, so nothing
/// depends on the screen's scale. Rectangles reach from left to left + width, the right and bottom edge not included.
///
/// F is the frame: the colour band is F with its bottom raised by 40, its usable part begins 20 from the left and ends
/// 20 before the right; below it stand the stops' markers, from 5 to 18 below the band. Made to be thrown away: make
/// one from the frame's rectangle whenever it is needed.
class TDCOMMON_API RibbonGeometry
{
public:
    explicit RibbonGeometry(const QRect &frame) : m_frame(frame) {}

    const QRect &frame() const { return m_frame; }
    /// The colour band.
    QRect band() const { return m_frame.adjusted(0, 0, 0, -40); }
    /// First pixel of the usable band; RibbonStops::setBand takes it and usableWidth().
    qint32 usableLeft() const { return m_frame.left() + 20; }
    /// Width of the usable band; not positive when the frame is too narrow.
    qint32 usableWidth() const { return m_frame.width() - 40; }
    /// What is filled with the ramp's columns: the usable band and its end, two pixels below the band's top to two
    /// above its bottom.
    QRect ramp() const;
    /// All that markers may cover, for repainting.
    QRect markerStrip() const;

    /// A stop's marker: a pentagon with its tip 5 below the band at @p position.
    QPolygon marker(qint32 position) const;
    /// What is filled with the stop's colour inside its marker: 10 x 8.
    QRect markerSwatch(qint32 position) const;

    /// True when @p x lies within the usable band, both ends included: where a drag moves a stop.
    bool isUsable(qint32 x) const { return x >= usableLeft() && x <= usableLeft() + usableWidth(); }
    /// True when @p point lies in the colour band, the unusable margins included: where a click inserts a stop.
    bool bandContains(QPoint point) const { return band().contains(point); }
    /// True when @p point lies in the pentagon of a stop at @p position, its edges included but for tip and bottom.
    bool hitsMarker(QPoint point, qint32 position) const;
    /// The first stop in order whose marker is hit, -1 for none.
    qint32 stopAt(QPoint point, const std::vector<RibbonStop> &stops) const;

private:
    qint32 bandBottom() const { return m_frame.top() + m_frame.height() - 40; }

    QRect m_frame;
};

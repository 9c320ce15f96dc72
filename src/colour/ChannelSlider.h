#pragma once

#include "common/TdCommonExport.h"

#include <QPolygon>
#include <QRect>

/// Where the parts of a slider for red, green or blue stand: a gradient with a triangle below it that tells the value.
/// Logical pixels. The frame should be at least 20 high, so that the triangle (12 to 20 below the top) stands inside
/// it.
class TDCOMMON_API ChannelSlider
{
public:
    explicit ChannelSlider(const QRect &frame) : m_frame(frame) {}

    const QRect &frame() const { return m_frame; }
    /// What belongs to the slider for the mouse: the frame, grown by 4 up and down. A click outside of all three
    /// sliders clears the selection.
    QRect hitArea() const { return m_frame.adjusted(0, -4, 0, 4); }
    /// What is filled with the gradient: the upper part of the frame, clear of the triangle.
    QRect gradient() const { return {m_frame.left(), m_frame.top(), m_frame.width(), qMin(m_frame.height(), 10)}; }
    /// x of the triangle's tip for a value of 0 to 255: left - 1 + width * value / 255.
    qint32 markerX(qint32 value) const;
    /// The triangle (with a foot) for a value.
    QPolygon marker(qint32 value) const;
    /// True when @p point lies in the triangle for @p value, edges included: a drag begins. At 0 and 255 half of the
    /// triangle stands beside the frame, so try this before hitArea().
    bool hitsMarker(QPoint point, qint32 value) const;
    /// The value at pixel @p x: truncate((x - left) / (width - 1) * 255), cut to 0 to 255; 0 for a frame of no width.
    qint32 valueAt(qint32 x) const;

private:
    QRect m_frame;
};

#include "colour/ChannelSlider.h"

#include <algorithm>
#include <cstdlib>

namespace {

/// Where the triangle's tip stands below the slider's top.
constexpr int markerTop = 12;

} // namespace

qint32 ChannelSlider::markerX(qint32 value) const
{
    return static_cast<qint32>(m_frame.left() - 1 + qint64(m_frame.width()) * std::clamp(value, 0, 255) / 255);
}

QPolygon ChannelSlider::marker(qint32 value) const
{
    const int x = markerX(value);
    const int y = m_frame.top() + markerTop;
    return QPolygon({{x, y}, {x - 4, y + 5}, {x - 4, y + 8}, {x + 4, y + 8}, {x + 4, y + 5}});
}

bool ChannelSlider::hitsMarker(QPoint point, qint32 value) const
{
    const int below = point.y() - (m_frame.top() + markerTop);
    const qint64 beside = std::abs(qint64(point.x()) - markerX(value));
    return below >= 0 && below <= 8 && beside * 5 <= std::min(below, 5) * 4;
}

qint32 ChannelSlider::valueAt(qint32 x) const
{
    const qint64 span = m_frame.width() - 1;
    return span > 0 ? static_cast<qint32>(std::clamp<qint64>((qint64(x) - m_frame.left()) * 255 / span, 0, 255)) : 0;
}

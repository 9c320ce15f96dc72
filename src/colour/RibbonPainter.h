#pragma once

#include "colour/RibbonStops.h"
#include "common/TdCommonExport.h"

#include <QPalette>

#include <functional>

class ChannelSlider;
class QPainter;
class RibbonColumns;
class RibbonGeometry;

/// Draws the parts of the ribbon editor, sharply at any scale of the screen. All that is not the ramp itself follows
/// the palette.
class TDCOMMON_API RibbonPainter
{
public:
    /// What to show instead of a colour, e.g. what a person with a colour-vision deficiency sees; none: the colours as
    /// they are. Affects the picture only, never the colours that are read back.
    using Preview = std::function<COLORREF(COLORREF)>;

    /// The painter must be active as long as this is used.
    RibbonPainter(QPainter &painter, const QPalette &palette) : m_painter(painter), m_palette(palette) {}

    void setPreview(Preview preview) { m_preview = std::move(preview); }

    /// The band with its frame and the ramp; @p hasFocus draws a focus mark round the band, for when no stop is
    /// selected.
    void drawBand(const RibbonGeometry &geometry, const RibbonColumns &columns, bool hasFocus = false);
    /// The markers of all stops. The selected one lies on top, in the palette's highlight; with @p hasFocus it carries
    /// the focus mark.
    void drawMarkers(const RibbonGeometry &geometry, const RibbonStops &ribbon, bool hasFocus = false);
    /// A slider: the gradient of @p channel (Red, Green, Blue) from 0 to 255 and the triangle at @p value, with a red
    /// pen while it is dragged. @p value -1 draws no triangle and pales: no stop is selected.
    void drawSlider(const ChannelSlider &slider, RibbonStops::Target channel, qint32 value, bool isDragged,
                    bool hasFocus = false);

private:
    QRgb shown(COLORREF color) const;
    void drawFrame(const QRect &rect);
    void drawMarker(const RibbonGeometry &geometry, const RibbonStop &stop, bool isSelected);
    void drawFocus(const QRect &rect);

    QPainter &m_painter;
    QPalette m_palette;
    Preview m_preview;
};

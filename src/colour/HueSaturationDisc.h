#pragma once

#include "colour/HSVType.h"
#include "common/TdCommonExport.h"

#include <QImage>
#include <QPointF>

/// A place of the disc: a hue in degrees, 0 to below 360, and a saturation, 0 to 255, both with fractions.
struct HueSaturation
{
    double hue = 0.0;
    double saturation = 0.0;
};

/// A disc whose angle is the hue, from red at the right against the clock, and whose radius is the saturation.
struct TDCOMMON_API HueSaturationDisc
{
    QPointF centre;
    double radius = 0.0; ///< in pixels

    /// Where a hue and saturation stand.
    QPointF pointOf(const HueSaturation &place) const;
    /// What stands at @p point; outside the disc what stands on its rim in that direction. The centre has hue 0.
    HueSaturation at(const QPointF &point) const;
    /// Whether @p point is at most @p slack pixels outside the disc.
    bool contains(const QPointF &point, double slack = 0.0) const;

    /// The whole degree and saturation nearest to @p place, with @p value.
    static HSVType rounded(const HueSaturation &place, int value);
    /// The disc at full brightness, @p pixels wide and high, with a smooth rim; premultiplied.
    static QImage picture(int pixels);
};

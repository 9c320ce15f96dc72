#pragma once

#include "colour/HSVType.h"
#include "colour/RGBType.h"
#include "common/TdCommonExport.h"

/// The colour that the user is picking, by red, green and blue and by hue, saturation and value at once.
///
/// The two are kept in step, each reckoned from the one that was edited last. What was edited stands as it was given:
/// it is not reckoned back, since whole numbers do not survive the way there and back.
class TDCOMMON_API CurrentColor
{
public:
    enum Part { Red, Green, Blue, Hue, Saturation, Value };
    static constexpr int partCount = 6;

    explicit CurrentColor(COLORREF color = 0) : m_rgb(color), m_hsv(m_rgb.toHSV()) {}

    const RGBType &rgb() const { return m_rgb; }
    const HSVType &hsv() const { return m_hsv; }
    COLORREF color() const { return m_rgb.color(); }

    int part(Part part) const;
    /// The largest value of a part; the smallest is 0.
    static int maximum(Part part);
    /// Sets one part to the nearest value in its range. @return false when it had this value already
    bool setPart(Part part, int value);
    /// Sets the whole colour. @return false when it was this one already
    bool setRgb(const RGBType &rgb);
    bool setHsv(const HSVType &hsv);

private:
    RGBType m_rgb;
    HSVType m_hsv;
};

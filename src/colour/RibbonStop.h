#pragma once

#include "engine/base/TxColorRef.h"

/// One colour stop of a ramp. A value type; CTdDlgRibbon knows it as CStopInfo.
struct RibbonStop
{
    qint32 position = 0; ///< x on the ribbon, in logical pixels of its window
    COLORREF color = 0;
    double value = 0.0; ///< in the units of the range

    bool operator==(const RibbonStop &other) const = default;
};

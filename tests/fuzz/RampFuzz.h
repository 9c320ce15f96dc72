#pragma once

#include "colour/RampReport.h"

#include <cstdlib>
#include <numeric>

inline void check(bool isRight)
{
    if (!isRight)
        std::abort();
}

/// Checks what reading any bytes gave: a refusal that says why, or a ramp as it should be, which is written and read
/// again without a change. @return 0
template<class Write, class Read>
int fuzzRamp(const RampReading &reading, Write write, Read read)
{
    check(reading.ramp.has_value() != reading.report.isRefusal());
    if (!reading.ramp)
        return 0;
    const ColorRamp &ramp = *reading.ramp;
    check(ramp == ColorRamp::fromStops(ramp.stops()));
    check(ramp.at(ramp.minimum()) == ramp.stops().front().color &&
          ramp.at(ramp.maximum()) == ramp.stops().back().color);
    ramp.at(std::midpoint(ramp.minimum(), ramp.maximum()));
    const QByteArray written = write(ramp);
    const RampReading again = read(written);
    check(again.ramp.has_value() && write(*again.ramp) == written);
    const std::optional<ColorRamp> unit = ramp.mapped(0, 1);
    check(again.ramp == ramp || again.ramp == unit || again.isRelative);
    return 0;
}

// Any bytes as a gradient of GIMP.

#include "RampFuzz.h"

#include "colour/GimpGradient.h"

extern "C" int LLVMFuzzerTestOneInput(const char *data, size_t size)
{
    return fuzzRamp(
        GimpGradient::read(QByteArray::fromRawData(data, static_cast<qsizetype>(size))),
        [](const ColorRamp &ramp) {
            const std::optional<ColorRamp> unit = ramp.mapped(0, 1);
            return GimpGradient::write(unit.value(), QStringLiteral("fuzz")).bytes;
        },
        GimpGradient::read);
}

// Any bytes as a colour palette table of GMT.

#include "RampFuzz.h"

#include "colour/GmtPalette.h"

extern "C" int LLVMFuzzerTestOneInput(const char *data, size_t size)
{
    return fuzzRamp(
        GmtPalette::read(QByteArray::fromRawData(data, static_cast<qsizetype>(size))),
        [](const ColorRamp &ramp) { return GmtPalette::write(ramp).bytes; }, GmtPalette::read);
}

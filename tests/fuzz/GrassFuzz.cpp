// Any bytes as colour rules of GRASS, with and without the range of the data.

#include "RampFuzz.h"

#include "colour/GrassColorRules.h"

extern "C" int LLVMFuzzerTestOneInput(const char *data, size_t size)
{
    const QByteArray bytes = QByteArray::fromRawData(data, static_cast<qsizetype>(size));
    const auto write = [](const ColorRamp &ramp) { return GrassColorRules::write(ramp).bytes; };
    const auto read = [](const QByteArray &written) { return GrassColorRules::read(written); };
    fuzzRamp(GrassColorRules::read(bytes, GrassColorRules::Range(-5, 1000)), write, read);
    return fuzzRamp(GrassColorRules::read(bytes), write, read);
}

// Any bytes as the file that the ribbon editor opens, and any edits of the ramp that comes of it: all stays defined,
// and undoing brings back what was loaded. The bytes of the edits stand behind those of the file.

#include "colour/RampCheck.h"
#include "colour/RibbonColumns.h"
#include "colour/RibbonFile.h"
#include "colour/RibbonGeometry.h"
#include "colour/RibbonStops.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <array>
#include <cstdlib>

#include <sys/mman.h>
#include <unistd.h>

namespace {

void check(bool isRight)
{
    if (!isRight)
        std::abort();
}

/// Loads the bytes by a file without a disk.
bool load(RibbonStops &ribbon, const std::vector<char> &bytes)
{
    static const int file = memfd_create("ribbon", 0);
    static const QString path = QStringLiteral("/proc/self/fd/%1").arg(file);
    const auto size = static_cast<off_t>(bytes.size());
    check(ftruncate(file, size) == 0 && pwrite(file, bytes.data(), bytes.size(), 0) == size);
    return RibbonFile::LoadRibbon(ribbon, path);
}

using Edit = void (*)(RibbonStops &ribbon, FuzzedDataProvider &data);

template<class Number>
Number number(FuzzedDataProvider &data)
{
    Number result = {};
    data.ConsumeData(&result, sizeof result); // other than ConsumeFloatingPoint, also what is no number
    return result;
}

constexpr Edit edits[] = {
    [](RibbonStops &ribbon, FuzzedDataProvider &data) { ribbon.select(data.ConsumeIntegralInRange(-1, 20)); },
    [](RibbonStops &ribbon, FuzzedDataProvider &data) { ribbon.ChangeStopPos(number<qint32>(data)); },
    [](RibbonStops &ribbon, FuzzedDataProvider &data) { ribbon.ChangeStopPos(data.ConsumeIntegralInRange(0, 500)); },
    [](RibbonStops &ribbon, FuzzedDataProvider &data) {
        ribbon.insertStop(number<qint32>(data), number<quint32>(data));
    },
    [](RibbonStops &ribbon, FuzzedDataProvider &) { ribbon.removeSelected(); },
    [](RibbonStops &ribbon, FuzzedDataProvider &data) { ribbon.step(data.ConsumeBool() ? 1 : -1); },
    [](RibbonStops &ribbon, FuzzedDataProvider &data) { ribbon.editMaximum(number<double>(data)); },
    [](RibbonStops &ribbon, FuzzedDataProvider &data) { ribbon.editMinimum(number<double>(data)); },
    [](RibbonStops &ribbon, FuzzedDataProvider &data) { ribbon.editSelectedValue(number<double>(data)); },
    [](RibbonStops &ribbon, FuzzedDataProvider &data) {
        ribbon.setChannel(data.PickValueInArray({RibbonStops::Target::Red, RibbonStops::Target::Blue}),
                          number<qint32>(data));
    },
    [](RibbonStops &ribbon, FuzzedDataProvider &) { ribbon.distributeEvenly(); },
    [](RibbonStops &ribbon, FuzzedDataProvider &) { ribbon.reverse(); },
    [](RibbonStops &ribbon, FuzzedDataProvider &) { ribbon.CalcValues(); },
    [](RibbonStops &ribbon, FuzzedDataProvider &) { ribbon.replaceEmptyRange(); },
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const quint8 *bytes, size_t size)
{
    FuzzedDataProvider data(bytes, size);
    const QRect frame(0, 0, data.ConsumeIntegralInRange(0, 600), 60);
    std::array<char, 64> script = {};
    for (char &byte : script)
        byte = data.ConsumeIntegral<char>();
    const RibbonGeometry geometry(frame);
    RibbonStops ribbon;
    ribbon.setBand(geometry.usableLeft(), geometry.usableWidth());
    const bool isLoaded = load(ribbon, data.ConsumeRemainingBytes<char>());
    check(isLoaded || ribbon.count() == 2);
    ribbon.clearHistory();
    const RibbonStops::Stops loaded = ribbon.stops();

    FuzzedDataProvider steps(reinterpret_cast<const quint8 *>(script.data()), script.size());
    while (steps.remaining_bytes() > 0) {
        edits[steps.ConsumeIntegralInRange<size_t>(0, std::size(edits) - 1)](ribbon, steps);
        check(ribbon.count() >= 1 && ribbon.selected() >= -1 && ribbon.selected() < ribbon.count());
    }
    std::vector<COLORREF> colors;
    for (const RibbonStop &stop : ribbon.stops())
        colors.push_back(stop.color);
    RampCheck::check(colors);
    check(RibbonColumns(ribbon.stops(), geometry).MakeOutColor(16).size() == 16);

    int undone = 0;
    while (ribbon.undo())
        check(++undone <= 64);
    if (undone > 0) // what CalcValues and ChangeStopPos do is not an edit by itself
        check(ribbon.count() == static_cast<qint32>(loaded.size()));
    while (ribbon.redo())
        --undone;
    check(undone == 0);
    return 0;
}

#include "colour/RibbonFile.h"

#include "colour/ColorsetTable.h"
#include "colour/RibbonStops.h"

#include <exception>

bool RibbonFile::SaveRibbon(const RibbonStops &ribbon, const QString &path)
{
    ColorsetTable table;
    table.minimum = ribbon.minimum();
    table.maximum = ribbon.maximum();
    try {
        table.entries.reserve(ribbon.stops().size());
    } catch (const std::exception &) {
        return false;
    }
    for (const RibbonStop &stop : ribbon.stops())
        table.entries.push_back({stop.value, stop.color});
    table.reckonStep();
    return table.save(path);
}

bool RibbonFile::LoadRibbon(RibbonStops &ribbon, const QString &path)
{
    ColorsetTable table;
    if (!table.load(path) || table.entries.empty())
        return false;
    RibbonStops::Stops stops;
    try {
        stops.reserve(table.entries.size() + 1);
    } catch (const std::exception &) {
        return false;
    }
    for (const ColorsetTable::Entry &entry : table.entries)
        stops.push_back({0, entry.color, entry.value});
    if (stops.back().value != table.maximum)
        stops.push_back({0, stops.back().color, table.maximum});
    return ribbon.replaceAll(std::move(stops), table.minimum, table.maximum);
}

#include "colour/RampFile.h"

#include "colour/ColorsetTable.h"
#include "colour/GimpGradient.h"
#include "colour/GmtPalette.h"
#include "common/TdModule.h"
#include "res/StringId.h"

#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <algorithm>
#include <cmath>

namespace {

using DataRange = std::optional<GrassColorRules::Range>;

RampReading readTable(const QString &path)
{
    RampReading result;
    ColorsetTable table;
    if (!table.load(path))
        result.report.add(RampReport::WrongHead);
    else if (table.entries.empty())
        result.report.add(RampReport::NoColors);
    else if (table.entries.size() > RampFile::maximumSize / sizeof(ColorRamp::Stop))
        result.report.add(RampReport::TooLarge);
    else if (result.ramp = ColorRamp::fromTable(table); !result.ramp)
        result.report.add(RampReport::BadOrder);
    return result;
}

RampWriting writeTable(const ColorRamp &ramp, const QString &)
{
    RampWriting result;
    QBuffer buffer(&result.bytes);
    buffer.open(QIODevice::WriteOnly);
    ramp.toTable().write(buffer);
    const ColorRamp::Stops &stops = ramp.stops();
    const double step = stops.size() > 1 ? (ramp.maximum() / 2 - ramp.minimum() / 2) / double(stops.size() - 1) * 2 : 0;
    const bool isEven = std::all_of(stops.begin(), stops.end(), [&, i = 0](const ColorRamp::Stop &stop) mutable {
        return std::abs(stop.value - (ramp.minimum() + step * i++)) <= 1e-6 * step;
    });
    if (!isEven)
        result.report.add(RampReport::SpacingLost);
    return result;
}

struct Kind
{
    const char *ending;
    TdStringId::Id filter;
    RampReading (*read)(const QByteArray &bytes, const DataRange &dataRange); // null: read by its path
    RampWriting (*write)(const ColorRamp &ramp, const QString &name);
};

constexpr Kind kinds[] = {
    {"cpt", TdStringId::RampFilterGmt,
     [](const QByteArray &bytes, const DataRange &) { return GmtPalette::read(bytes); },
     [](const ColorRamp &ramp, const QString &) { return GmtPalette::write(ramp); }},
    {"ggr", TdStringId::RampFilterGimp,
     [](const QByteArray &bytes, const DataRange &) { return GimpGradient::read(bytes); }, GimpGradient::write},
    {"rules", TdStringId::RampFilterGrass, GrassColorRules::read,
     [](const ColorRamp &ramp, const QString &) { return GrassColorRules::write(ramp); }},
    {"sct", TdStringId::ColorsetFilter, nullptr, writeTable},
};

const Kind *find(const QString &ending)
{
    const auto at = std::find_if(std::begin(kinds), std::end(kinds), [&](const Kind &kind) {
        return ending.compare(QLatin1StringView(kind.ending), Qt::CaseInsensitive) == 0;
    });
    return at == std::end(kinds) ? nullptr : at;
}

RampReading refused(RampReport::Note note)
{
    RampReading result;
    result.report.add(note);
    return result;
}

} // namespace

RampReading RampFile::load(const QString &path, const std::optional<GrassColorRules::Range> &dataRange)
{
    const QFileInfo info(path);
    const Kind *kind = find(info.suffix());
    if (!info.isFile()) // a pipe would keep us waiting
        return refused(RampReport::Unreadable);
    if (kind && !kind->read)
        return readTable(path);
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return refused(RampReport::Unreadable);
    const QByteArray bytes = file.read(maximumSize + 1);
    if (bytes.size() > maximumSize)
        return refused(RampReport::TooLarge);
    RampReading result = (kind ? kind->read : GrassColorRules::read)(bytes, dataRange);
    if (result.ramp && result.isRelative && dataRange) {
        if (const auto spread = result.ramp->mapped(dataRange->first, dataRange->second)) {
            result.ramp = spread;
            result.isRelative = false;
        }
    }
    return result;
}

RampReport RampFile::save(const QString &path, const ColorRamp &ramp)
{
    const QFileInfo old(path);
    const Kind *kind = find(old.suffix());
    RampReport failure;
    failure.add(kind ? RampReport::NotWritten : RampReport::UnknownKind);
    if (!kind || (old.exists() && !old.isFile())) // not to put a file in the place of a device
        return failure;
    const RampWriting writing = kind->write(ramp, old.completeBaseName());
    QSaveFile file(path);
    const bool isWritten =
        file.open(QIODevice::WriteOnly) && file.write(writing.bytes) == writing.bytes.size() && file.commit();
    return isWritten ? writing.report : failure;
}

QStringList RampFile::nameFilters(bool toOpen)
{
    QStringList result;
    if (toOpen)
        result = {CTdModule::LoadString(TdStringId::RampFilterAll), CTdModule::LoadString(TdStringId::RampFilterAny)};
    for (const Kind &kind : kinds)
        result.append(CTdModule::LoadString(kind.filter).section(u'|', 0, 0));
    return result;
}

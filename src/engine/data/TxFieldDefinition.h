#pragma once

#include "engine/data/TxFieldInfo.h"

#include <memory>

class OGRFieldDefn;
class OGRLayer;

/// How our fields are kept by OGR. A private header.
namespace TxFieldDefinition {

/// The OGR field that keeps @p info. @return null, which is reported to the error collectors, when there is no such
/// field type, the size is negative or more than a number can have, or the default is no value of the field.
std::unique_ptr<OGRFieldDefn> toOgr(const CTxFieldInfo &info);

/// Adds the fields @p infos to @p layer, which is the GDAL driver @p driver's. @return false at the first that cannot
/// be made under its name (some drivers cut what their format cannot keep, and say so in a warning only); those before
/// it, and a cut one, are there then
bool addTo(OGRLayer &layer, const CTxFieldInfos &infos, const QByteArray &driver);

/// The largest amount of a currency field: beyond it a double no longer tells ten-thousandths apart.
constexpr double largestCurrency = 9007199254740992.0 / 10000.0;

/// A Long field whose size is more digits than these is kept in 64 bits; shapefiles tell the two apart so.
constexpr qint32 longDigits = 9;
/// The size that a Long field of 64 bits has where its storage counts no digits.
constexpr qint32 wideDigits = 19;

/// The characters or bytes a value of the field may have, 0 for no bound.
qint32 bound(const CTxFieldInfo &info);

} // namespace TxFieldDefinition

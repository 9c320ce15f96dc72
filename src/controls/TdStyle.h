#pragma once

#include "common/TdCommonExport.h"

#include <QObject>
#include <QString>

class QPainter;
class QRect;
struct CTxGeoStyle;

/// The styles of the engine's libraries as lists to choose from: line styles, point symbols, and fills with the kinds
/// of gradient after them.
namespace TdStyle {

Q_NAMESPACE_EXPORT(TDCOMMON_API)

/// Which part of a CTxGeoStyle is meant.
enum Kind { Line, Fill, Symbol };
Q_ENUM_NS(Kind)

/// How many entries the list of @p kind has.
TDCOMMON_API int count(Kind kind);
/// The name of the entry @p index in the current language; empty when out of range.
TDCOMMON_API QString nameAt(Kind kind, int index);
/// The entry that @p style is drawn with: the first one for an id that does not exist.
TDCOMMON_API int indexOf(Kind kind, const CTxGeoStyle &style);
/// Makes the entry @p index that of @p style, whose colours and sizes stay. Does nothing when out of range.
TDCOMMON_API void choose(Kind kind, int index, CTxGeoStyle &style);
/// The name of the entry that @p style is drawn with.
TDCOMMON_API QString name(Kind kind, const CTxGeoStyle &style);

/// Draws a framed sample of that part of @p style into @p rect, and nothing outside. What it stands on is white as a
/// map's paper is, or gray where it would not be seen on that.
TDCOMMON_API void drawSample(QPainter &painter, const QRect &rect, Kind kind, const CTxGeoStyle &style);

} // namespace TdStyle

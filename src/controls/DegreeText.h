#pragma once

#include "common/TdCommonExport.h"

#include <QString>
#include <QStringView>

/// Angles as degrees, minutes and seconds in text, and back. Texts are laid out as "ddd:mm:ss.ffff" with the parts
/// right- aligned; a text without a colon is decimal degrees.
namespace DegreeText {

/// The 12 characters of an angle without what stands between them: 4 for degrees with the sign, 2 minutes, 2 whole
/// seconds, 4 digits of their fraction. Angles of 1000 degrees and more take more characters; an angle that is no
/// number, or beyond 32 bits, gives an empty text.
TDCOMMON_API QString digits(double degrees);

/// The whole degrees of @p text; 0 for text that is no number, here and below.
TDCOMMON_API qint32 degreePart(const QString &text);
/// The whole minutes of @p text.
TDCOMMON_API qint32 minutePart(const QString &text);
/// The seconds of @p text with their fraction.
TDCOMMON_API float secondPart(const QString &text);
/// Degrees plus minutes plus seconds of @p text, in decimal degrees. Deliberate: minutes and seconds are added below 0
/// too, so "-45:30:00" gives -44.5; forms that switch an edit to decimal degrees and back show the same text again.
TDCOMMON_API double plainSum(const QString &text);
/// The angle that @p text shows under a mask, in decimal degrees: below 0, minutes and seconds count away from 0.
/// Deliberate: "-0" is not below 0.
TDCOMMON_API double value(const QString &text);

} // namespace DegreeText

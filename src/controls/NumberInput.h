#pragma once

#include "common/TdCommonExport.h"

#include <QStringView>

/// Which characters a number may take while it is typed, the same under every locale.
namespace NumberInput {

/// The kinds of numbers, by the codes that hosts set.
enum Mode { Whole = 10, Real = 20 };

/// Whether @p typed may stand at @p caret (0 to the length) of @p text, which it is not in yet. Digits always may; a
/// sign at the front, or behind the letter of the exponent; "e" or "E" once, behind something; in a real number a
/// point once, before the exponent. In any other @p mode nothing may. Deliberate: an exponent may be typed into a whole
/// number too, which is then read up to it.
TDCOMMON_API bool accepts(int mode, QStringView text, qsizetype caret, QChar typed);

} // namespace NumberInput

#pragma once

#include "engine/base/TxExport.h"

#include <QString>
#include <QStringView>

/// Numbers to text and back, the same under every locale.
///
/// All number text of the product goes through here, since printf, strtod and streams follow the process locale.
namespace TxNumberText {

/// What C's atof reads: leading white space, then the longest leading number (decimal, exponent, "inf", "nan"), the
/// rest ignored; 0 when there is no number. Overflow gives an infinity, underflow 0.
TX_EXPORT double atof(QStringView text);

/// What C's atoll reads: leading white space, sign, digits; 0 when there is no number; kept within 64 bits.
TX_EXPORT qint64 atoll(QStringView text);

/// The whole text as a number (white space around it allowed).
/// @param[out] ok false when anything else stands in the text
TX_EXPORT double toDouble(QStringView text, bool *ok = nullptr);

/// @p value as printf's "%lld" gives it.
TX_EXPORT QString whole(qint64 value);

/// @p value with exactly @p decimals digits (0 to 60) behind the point, as printf's "%.*f" gives it in the C locale.
TX_EXPORT QString fixed(double value, int decimals);

/// @p value with at most @p digits (1 to 17) significant digits, as printf's "%.*g" gives it in the C locale.
TX_EXPORT QString general(double value, int digits = 15);

/// The shortest text that reads back as exactly @p value.
TX_EXPORT QString shortest(double value);
/// The shortest text that reads back as exactly the single @p value.
TX_EXPORT QString shortestSingle(float value);

} // namespace TxNumberText

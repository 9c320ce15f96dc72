#pragma once

#include "engine/base/TxExport.h"

#include <QString>

/// Texts of any content in XML, which has no way to write most control characters.
///
/// A character that XML cannot hold, or would change (a carriage return), is written as "_xHHHH_" with its UTF-16 code
/// in four hexadecimal digits; a text that happens to hold such a thing has its first underscore written as "_x005F_".
namespace TxXmlText {

TX_EXPORT QString encode(const QString &text);
TX_EXPORT QString decode(QStringView text);

} // namespace TxXmlText

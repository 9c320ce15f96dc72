#pragma once

#include <QString>

#include <functional>

/// The text of SQL conditions. A private header.
namespace TxFilterText {

/// True when every quote, bracket and comment of @p filter is closed, no parenthesis closes what was not opened, and no
/// statement ends in it.
bool isWhole(const QString &filter);

/// @p filter with its bare names replaced.
///
/// A bare name is an identifier, quoted in any of SQL's ways ("a", [a], `a`) or not, that stands neither before nor
/// behind a point nor before an opening parenthesis. @p replacement gives the text for a name, or an empty one to keep
/// it; names in brackets or backticks become "quoted" in any case. Texts and comments are left alone.
QString replaceNames(const QString &filter,
                     const std::function<QString(const QString &name, bool isQuoted)> &replacement);

} // namespace TxFilterText

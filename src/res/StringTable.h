#pragma once

#include <QtGlobal>

#include <span>

/// One text of a string table.
struct TdStringRow
{
    quint32 id;       ///< unique in its table
    const char *text; ///< the English text (UTF-8), the source of its translations; lives as long as the table
};

/// The library's own texts, ids ascending; translated in the context "TdCommon".
std::span<const TdStringRow> TdStringTable();

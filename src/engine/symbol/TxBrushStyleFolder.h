#pragma once

#include "engine/base/TxExport.h"

#include <QBrush>
#include <QColor>

/// Makes brushes for controls that fill with a style but draw nothing else of it.
class TX_EXPORT CTxBrushStyleFolder
{
public:
    CTxBrushStyleFolder() = delete;

    /// Makes @p brush that of the fill @p style (an id of CTxFillStyleLib) of the usual size in @p color, with nothing
    /// behind its marks.
    /// @return false, and the brush stays, for a style that does not exist
    static bool CreateBrush(QBrush &brush, qint32 style, const QColor &color);
};

#pragma once

#include "engine/base/TxExport.h"
#include "engine/data/ElemDatasetInfo.h"
#include "engine/symbol/TxColorsetEx.h"

#include <QColor>
#include <QString>

/// How a layer is drawn. Lengths are in device-independent pixels. A value type.
struct TxLayerStyle
{
    QColor line = QColor(0x40, 0x40, 0x40); ///< lines, outlines, text
    QColor fill = QColor(0xc8, 0xd6, 0xb9); ///< regions and point symbols; alpha counts
    double lineWidth = 1.0;                 ///< 0.1 to 20
    double symbolSize = 6.0;                ///< width of a point symbol, 1 to 100
    QString labelField;                     ///< field whose text is written at each record; empty for none
    double opacity = 1.0;                   ///< of the whole layer, 0 to 1
    CTxColorsetEx colors;                   ///< of the heights of grids and surfaces; empty for the usual ones
    bool stepped = false;                   ///< each of colors fills a step of its own; else they are blended

    bool operator==(const TxLayerStyle &other) const = default;
};

/// The style of a new layer over a dataset of kind @p kind: colours that go together and stay apart from one another,
/// a different one for each @p index (0, 1, 2 … in the order in which layers are added; negative counts as 0).
TX_EXPORT TxLayerStyle defaultStyle(CElemDatasetInfo::Type kind, int index);

/// The colours that grids and surfaces from @p floor to @p ceiling have when their layer has none of its own: to be
/// blended, few, and low to high.
TX_EXPORT CTxColorsetEx usualColors(double floor, double ceiling);

/// @p style as it can be seen on @p background: lines and texts too near to it in lightness become lighter or darker.
TX_EXPORT TxLayerStyle legibleStyle(const TxLayerStyle &style, const QColor &background);

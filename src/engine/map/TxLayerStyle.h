#pragma once

#include "engine/base/TxExport.h"
#include "engine/data/ElemDatasetInfo.h"
#include "engine/symbol/TxColorsetEx.h"
#include "engine/symbol/TxGeoStyle.h"

#include <QColor>
#include <QString>

/// A plain line, a solid fill and a circle: the simplest looks, as most layers have them.
/// @param line colour of lines, outlines and texts, also of the circle's outline
/// @param fill colour of regions and circles
/// @param symbolSize width of the circle, to the middle of its outline
TX_EXPORT CTxGeoStyle plainStyle(const QColor &line, const QColor &fill, double lineWidth, double symbolSize);

/// How a layer is drawn. Lengths are in device-independent pixels. A value type.
struct TxLayerStyle
{
    /// Lines, outlines, regions and symbols; texts have its line colour.
    CTxGeoStyle geoStyle = plainStyle(QColor(0x40, 0x40, 0x40), QColor(0xc8, 0xd6, 0xb9), 1, 6);
    QString labelField;   ///< field whose text is written at each record; empty for none
    double opacity = 1.0; ///< of the whole layer, 0 to 1
    CTxColorsetEx colors; ///< of the heights of grids and surfaces; empty for the usual ones
    bool stepped = false; ///< each of colors fills a step of its own; else they are blended

    bool operator==(const TxLayerStyle &other) const = default;
};

/// What of a CTxGeoStyle is seen of a layer, as bits.
struct TxStyleParts
{
    enum Part : quint32 { Line = 0x1, Fill = 0x2, Symbol = 0x4, Text = 0x8 };

    /// The parts that layers over datasets of kind @p kind are drawn with; 0 for those of heights and pictures.
    TX_EXPORT static quint32 of(CElemDatasetInfo::Type kind);
};

/// The style of a new layer over a dataset of kind @p kind: colours that go together and stay apart from one another,
/// a different one for each @p index (0, 1, 2 … in the order in which layers are added; negative counts as 0).
TX_EXPORT TxLayerStyle defaultStyle(CElemDatasetInfo::Type kind, int index);

/// The colours that grids and surfaces from @p floor to @p ceiling have when their layer has none of its own: to be
/// blended, few, and low to high.
TX_EXPORT CTxColorsetEx usualColors(double floor, double ceiling);

/// @p style as it can be seen on @p background: lines and texts too near to it in lightness become lighter or darker.
TX_EXPORT TxLayerStyle legibleStyle(const TxLayerStyle &style, const QColor &background);

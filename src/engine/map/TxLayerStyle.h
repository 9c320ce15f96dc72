#pragma once

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

    bool operator==(const TxLayerStyle &other) const = default;
};

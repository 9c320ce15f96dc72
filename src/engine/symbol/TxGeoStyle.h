#pragma once

#include "engine/base/TxExport.h"
#include "engine/symbol/TxColorFolder.h"

#include <QColor>
#include <QString>

/// How the colours of a gradient run over an area. The values are kept in files.
enum class TxGradientKind : qint32 {
    None = 0,    ///< no gradient: the fill style counts
    Linear = 1,  ///< from one side to the other
    Radial = 2,  ///< from the middle outwards
    Conical = 3, ///< around the middle
};

/// How a geometry is drawn: its line, its fill and its symbol. A value type.
///
/// Lengths are in the painter's units (device-independent pixels on a screen), angles in degrees counter-clockwise; the
/// alpha of colours counts. Any value may be put in: what draws it takes the nearest one in range, and the default for
/// one that is no number; an id that does not exist is that of the library's first entry.
struct TX_EXPORT CTxGeoStyle
{
    qint32 lineStyle = 0;                     ///< id in CTxLineStyleLib
    double lineWidth = 1.0;                   ///< of the style's simple strokes; 0.1 to 100
    QColor lineColor = QColor(Qt::black);     ///< of the line
    QColor lineBackColor = QColor(Qt::white); ///< between the casings of roads, between the dashes of railways

    qint32 fillStyle = 0;                     ///< id in CTxFillStyleLib
    QColor fillColor = QColor(0xC8D6B9);      ///< of the whole, of the marks of a pattern, and first of a gradient
    QColor fillBackColor = QColor(Qt::white); ///< behind the marks of a pattern, and last of a gradient
    double fillSize = 8.0;                    ///< the side of a pattern's tile; 2 to 256
    double fillAngle = 0.0;                   ///< of the pattern, and the direction in which a gradient runs
    TxGradientKind fillGradient = TxGradientKind::None;
    CTxColorFolder gradientColors; ///< of the gradient, evenly spread; empty for fillColor to fillBackColor

    qint32 symbolStyle = 0;                        ///< id in CTxSymbolLib
    double symbolSize = 12.0;                      ///< the side of the box it fits; 1 to 1000
    double symbolAngle = 0.0;                      ///< around the middle of its box
    QColor symbolColor = QColor(Qt::black);        ///< of the symbol
    double symbolOutlineWidth = 0.0;               ///< how far its outline reaches around it; 0 (none) to 20
    QColor symbolOutlineColor = QColor(Qt::white); ///< of its outline

    bool operator==(const CTxGeoStyle &other) const = default;

    static constexpr double minimumLineWidth = 0.1, maximumLineWidth = 100.0;
    static constexpr double minimumFillSize = 2.0, maximumFillSize = 256.0;
    static constexpr double minimumSymbolSize = 1.0, maximumSymbolSize = 1000.0;
    static constexpr double maximumOutlineWidth = 20.0;

    /// The style as can be drawn: lengths in range, angles from 0 to 360, the default for what is no number.
    CTxGeoStyle inRange() const;

    /// The style as one XML element, exactly: reading it gives an equal style, of finite numbers.
    QString ToXML() const;
    /// Reads what ToXML() wrote. What is missing or no value of its kind is the default; unknown parts are skipped.
    /// @return false, and nothing changes, for a text that is no such element
    bool FromXML(const QString &text);
};

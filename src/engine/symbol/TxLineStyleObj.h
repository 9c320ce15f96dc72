#pragma once

#include "engine/base/TxExport.h"

#include <QtGlobal>

#include <memory>

class QPainter;
class QPointF;
struct CTxGeoStyle;

/// A line style in one width and colour, made by CTxLineStyleLib. One serves all lines of a layer. Not for several
/// threads at a time.
class TX_EXPORT CTxLineStyleObj
{
public:
    explicit CTxLineStyleObj(const CTxGeoStyle &style);
    ~CTxLineStyleObj();
    CTxLineStyleObj(const CTxLineStyleObj &) = delete;
    CTxLineStyleObj &operator=(const CTxLineStyleObj &) = delete;

    /// Draws the line through @p count points on @p painter; a point that is no number leaves a gap. Only what can be
    /// seen is worked on, however long the line is.
    /// @return false, and nothing is drawn, when the painter is null or not active or there are fewer than two points
    bool Polyline(QPainter *painter, const QPointF *points, qint32 count) const;
    /// Draws the line on the painter that gLineStyleEngine keeps.
    bool Polyline(const QPointF *points, qint32 count) const;

    /// How far the drawing reaches beside the line at most, in the painter's units.
    double GetReach() const;

private:
    struct Private;
    std::unique_ptr<Private> d;
};

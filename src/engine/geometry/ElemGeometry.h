#pragma once

#include "engine/base/TxExport.h"
#include "engine/geometry/Rect2D.h"

#include <QtGlobal>

#include <memory>

/// The base of all geometry elements.
class TX_EXPORT CElemGeometry
{
public:
    /// The element's code. Do not change the values.
    enum Type : qint32 {
        Point = 1,
        Line = 3,
        Region = 5,
        Text = 7,
        Point3D = 101,
        Line3D = 103,
        Region3D = 105,
        Text3D = 107,
        Compound = 1000
    };

    virtual ~CElemGeometry();

    /// The element's code.
    virtual Type GetType() const = 0;
    /// The bounding rectangle; void when there is no point.
    virtual CRect2D GetBounds() const = 0;
    /// A copy of the whole element.
    virtual std::unique_ptr<CElemGeometry> Clone() const = 0;

protected:
    CElemGeometry() = default;
    CElemGeometry(const CElemGeometry &) = default;
    CElemGeometry &operator=(const CElemGeometry &) = default;
};

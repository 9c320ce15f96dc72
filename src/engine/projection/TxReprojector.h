#pragma once

#include "engine/base/TxExport.h"
#include "engine/geometry/Rect2D.h"

#include <memory>
#include <span>

class CTxPJCoordSys;
class OGRCoordinateTransformation;

/// Takes coordinates from one coordinate system to another. Private to the engine.
class TX_EXPORT TxReprojector
{
public:
    /// @return null when the two are the same or one of them is none, so that there is nothing to do, and when no way
    /// between them is known; @p failed tells which.
    static std::shared_ptr<TxReprojector> make(const CTxPJCoordSys &from, const CTxPJCoordSys &to, bool &failed);
    ~TxReprojector();

    /// Transforms @p points in place. Points without an image get NaN coordinates. @return false when any got them.
    bool transform(std::span<CPoint2D> points) const;
    /// The rectangle around the image of @p bounds; void when it has none.
    CRect2D transform(const CRect2D &bounds) const;
    /// The rectangle around what @p bounds, in the target system, is the image of; void when it has none.
    CRect2D inverse(const CRect2D &bounds) const;
    /// Transforms @p points, in the target system, back in place.
    bool inverse(std::span<CPoint2D> points) const;

private:
    struct Free
    {
        void operator()(OGRCoordinateTransformation *transformation) const;
    };
    using Transformation = std::unique_ptr<OGRCoordinateTransformation, Free>;
    TxReprojector(Transformation forward, Transformation backward);

    Transformation m_forward;
    Transformation m_backward;
};

#pragma once

#include "engine/geometry/GeoPoint.h"

#include <QString>

/// A text that stands at a place of the map.
class TX_EXPORT CGeoText : public CElemGeometry
{
public:
    /// An empty text without a place.
    CGeoText() = default;
    CGeoText(const CPoint2D &anchor, const QString &text, double angle = 0.0, double height = 0.0);

    /// Text, or Text3D when the anchor has a height.
    Type GetType() const override { return m_anchor.GetZ() ? Text3D : Text; }
    /// The anchor alone: how wide the letters are drawn is the map's business.
    CRect2D GetBounds() const override { return m_anchor.GetBounds(); }
    std::unique_ptr<CElemGeometry> Clone() const override;

    /// Where the base line of the first line begins.
    const CGeoPoint &GetAnchor() const { return m_anchor; }
    void SetAnchor(const CGeoPoint &anchor) { m_anchor = anchor; }
    /// What it says; lines are parted by "\n".
    const QString &GetText() const { return m_text; }
    void SetText(const QString &text) { m_text = text; }
    /// Direction of the base line in degrees, counter-clockwise from the x axis.
    double GetAngle() const { return m_angle; }
    void SetAngle(double degrees) { m_angle = degrees; }
    /// Height of a capital letter in the units of the coordinate system; 0 leaves it to the layer's style.
    double GetHeight() const { return m_height; }
    void SetHeight(double height) { m_height = height; }

private:
    CGeoPoint m_anchor;
    QString m_text;
    double m_angle = 0.0;
    double m_height = 0.0;
};

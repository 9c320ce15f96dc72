#include "engine/geometry/GeoText.h"

CGeoText::CGeoText(const CPoint2D &anchor, const QString &text, double angle, double height)
    : m_anchor(anchor), m_text(text), m_angle(angle), m_height(height)
{
}

std::unique_ptr<CElemGeometry> CGeoText::Clone() const
{
    return std::make_unique<CGeoText>(*this);
}

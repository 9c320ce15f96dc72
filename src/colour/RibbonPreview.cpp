#include "colour/RibbonPreview.h"

#include "colour/RibbonColumns.h"
#include "colour/RibbonGeometry.h"
#include "colour/RibbonPainter.h"

#include <QPainter>

RibbonPreview::RibbonPreview(QWidget *parent) : QWidget(parent)
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void RibbonPreview::setDeficiency(ColorVision::Deficiency deficiency)
{
    m_deficiency = deficiency;
    update();
}

QSize RibbonPreview::sizeHint() const
{
    return {265, 32};
}

void RibbonPreview::paintEvent(QPaintEvent *)
{
    if (!m_columns)
        return;
    QPainter device(this);
    RibbonPainter painter(device, palette());
    painter.setPreview([this](COLORREF color) { return ColorVision::simulate(color, m_deficiency); });
    // The band of a ribbon without the room for markers.
    painter.drawBand(RibbonGeometry(rect().adjusted(0, 0, 0, 40)), *m_columns);
}

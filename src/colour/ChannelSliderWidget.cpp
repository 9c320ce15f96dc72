#include "colour/ChannelSliderWidget.h"

#include "colour/ChannelSlider.h"
#include "colour/RibbonPainter.h"
#include "engine/ui/TxWheelGuard.h"

#include <QMouseEvent>
#include <QPainter>

ChannelSliderWidget::ChannelSliderWidget(QWidget *parent) : QAbstractSlider(parent)
{
    setRange(0, 255);
    setOrientation(Qt::Horizontal);
    setFocusPolicy(Qt::StrongFocus);
    TxWheelGuard::install(this);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void ChannelSliderWidget::setChannel(RibbonStops::Target channel)
{
    m_channel = channel;
    update();
}

QSize ChannelSliderWidget::sizeHint() const
{
    return {265, 30};
}

QSize ChannelSliderWidget::minimumSizeHint() const
{
    return {100, 30};
}

void ChannelSliderWidget::paintEvent(QPaintEvent *)
{
    QPainter device(this);
    RibbonPainter painter(device, palette());
    painter.drawSlider(ChannelSlider(frame()), m_channel, isEnabled() ? value() : -1, isSliderDown(), hasFocus());
}

void ChannelSliderWidget::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton && ChannelSlider(frame()).hitsMarker(event->position().toPoint(), value())) {
        setSliderDown(true);
        update();
    }
    event->accept(); // the dialog clears the selection for clicks outside of the sliders
}

void ChannelSliderWidget::mouseMoveEvent(QMouseEvent *event)
{
    if (isSliderDown() && event->buttons().testFlag(Qt::LeftButton))
        setSliderPosition(ChannelSlider(frame()).valueAt(event->position().toPoint().x()));
}

void ChannelSliderWidget::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton && isSliderDown()) {
        setSliderDown(false);
        update();
    }
}

void ChannelSliderWidget::hideEvent(QHideEvent *)
{
    setSliderDown(false);
}

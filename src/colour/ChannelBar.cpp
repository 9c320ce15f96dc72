#include "colour/ChannelBar.h"
#include "colour/PickerPaint.h"
#include "engine/ui/TxWheelGuard.h"

#include <QKeyEvent>
#include <QLinearGradient>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace {

constexpr int most = 255;
constexpr int coarseStep = 16;
constexpr double sideMargin = 5.0; // beside the bar, for the handle and the focus
constexpr double endMargin = 8.0;  // above and below it
constexpr double handleHeight = 8.0;
constexpr double rounding = 3.0;

} // namespace

ChannelBar::ChannelBar(QWidget *parent) : QAbstractSlider(parent)
{
    setOrientation(Qt::Vertical);
    setRange(0, most);
    setSingleStep(1);
    setPageStep(coarseStep);
    setFocusPolicy(Qt::StrongFocus);
    TxWheelGuard::install(this);
    setCursor(Qt::SizeVerCursor);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
}

void ChannelBar::setEnds(const QColor &bottom, const QColor &top)
{
    if (bottom == m_bottom && top == m_top)
        return;
    m_bottom = bottom;
    m_top = top;
    update();
}

QRectF ChannelBar::bar() const
{
    return QRectF(rect()).adjusted(sideMargin, endMargin, -sideMargin, -endMargin);
}

double ChannelBar::yOf(int value) const
{
    const QRectF area = bar();
    return area.bottom() - area.height() * value / most;
}

int ChannelBar::valueAt(double y) const
{
    const QRectF area = bar();
    if (area.height() <= 0.0)
        return value();
    return std::clamp(static_cast<int>(std::lround((area.bottom() - y) / area.height() * most)), 0, most);
}

QSize ChannelBar::sizeHint() const
{
    return {28, 160};
}

QSize ChannelBar::minimumSizeHint() const
{
    return {28, 60};
}

void ChannelBar::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (!isEnabled())
        painter.setOpacity(PickerPaint::disabledOpacity);
    const QRectF area = bar();
    QLinearGradient gradient(area.bottomLeft(), area.topLeft());
    gradient.setColorAt(0.0, m_bottom);
    gradient.setColorAt(1.0, m_top);
    painter.setBrush(gradient);
    painter.setPen(QPen(PickerPaint::outlineColor(palette()), 1.0));
    painter.drawRoundedRect(area, rounding, rounding);

    const QRectF handle(area.left() - 3.0, yOf(value()) - handleHeight / 2.0, area.width() + 6.0, handleHeight);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(QColor(0, 0, 0, 200), 3.5));
    painter.drawRoundedRect(handle, rounding, rounding);
    painter.setPen(QPen(Qt::white, 2.0));
    painter.drawRoundedRect(handle, rounding, rounding);
    if (hasFocus()) {
        painter.setPen(QPen(PickerPaint::focusColor(palette()), PickerPaint::focusWidth));
        painter.drawRoundedRect(QRectF(rect()).adjusted(1.0, 1.0, -1.0, -1.0), rounding, rounding);
    }
}

void ChannelBar::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    setSliderDown(true);
    setSliderPosition(valueAt(event->position().y()));
}

void ChannelBar::mouseMoveEvent(QMouseEvent *event)
{
    if (isSliderDown())
        setSliderPosition(valueAt(event->position().y()));
}

void ChannelBar::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        setSliderDown(false);
}

void ChannelBar::keyPressEvent(QKeyEvent *event)
{
    const bool coarse = event->modifiers() & (Qt::ShiftModifier | Qt::ControlModifier);
    if (coarse && (event->key() == Qt::Key_Up || event->key() == Qt::Key_Down))
        triggerAction(event->key() == Qt::Key_Up ? SliderPageStepAdd : SliderPageStepSub);
    else
        QAbstractSlider::keyPressEvent(event);
}

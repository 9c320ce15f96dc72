#include "colour/HueSaturationCircle.h"
#include "colour/PickerPaint.h"
#include "colour/RGBType.h"
#include "common/TdModule.h"
#include "engine/base/TxColorRef.h"
#include "res/StringId.h"

#include <QEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace {

constexpr double margin = PickerPaint::markerRadius + 2.0; // the marker may stand on the rim
constexpr double grabSlack = 6.0;                          // how far beside the disc a press still counts
constexpr double coarseHue = 10.0;
constexpr double coarseSaturation = 16.0;

} // namespace

HueSaturationCircle::HueSaturationCircle(QWidget *parent) : QWidget(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setTexts();
}

void HueSaturationCircle::setColor(const HSVType &color)
{
    if (color == m_color)
        return;
    if (color.hue != m_color.hue || color.saturation != m_color.saturation)
        m_place = {static_cast<double>(color.hue), static_cast<double>(color.saturation)};
    if (color.saturation > 0 || color.hue > 0)
        m_lastHue = m_place.hue;
    m_color = color;
    setTexts();
    update();
}

HueSaturationDisc HueSaturationCircle::disc() const
{
    // A whole number of pixels wide and on whole pixels, so that the picture is painted without smoothing.
    const double scale = devicePixelRatioF();
    const int pixels = std::max(0, static_cast<int>((std::min(width(), height()) - 2.0 * margin) * scale));
    const auto middle = [&](int length) {
        return (std::floor((length * scale - pixels) / 2.0) + pixels / 2.0) / scale;
    };
    return {{middle(width()), middle(height())}, pixels / 2.0 / scale};
}

const QImage &HueSaturationCircle::dimmedPicture()
{
    const double scale = devicePixelRatioF();
    const int pixels = static_cast<int>(std::lround(disc().radius * 2.0 * scale));
    if (m_picture.width() != pixels) {
        m_picture = HueSaturationDisc::picture(pixels);
        m_dimmedValue = -1;
    }
    if (m_dimmedValue != m_color.value) {
        // All parts of a colour are proportional to its brightness: black over it dims it just so.
        m_dimmed = m_picture;
        m_dimmed.setDevicePixelRatio(1.0);
        QPainter painter(&m_dimmed);
        painter.setCompositionMode(QPainter::CompositionMode_SourceAtop);
        painter.fillRect(m_dimmed.rect(), QColor(0, 0, 0, 255 - m_color.value));
        m_dimmedValue = m_color.value;
    }
    m_dimmed.setDevicePixelRatio(scale);
    return m_dimmed;
}

void HueSaturationCircle::paintEvent(QPaintEvent * /*event*/)
{
    const HueSaturationDisc area = disc();
    if (area.radius <= 0.0)
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (!isEnabled())
        painter.setOpacity(PickerPaint::disabledOpacity);
    painter.drawImage(area.centre - QPointF(area.radius, area.radius), dimmedPicture());
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(PickerPaint::outlineColor(palette()), 1.0));
    painter.drawEllipse(area.centre, area.radius, area.radius);
    if (hasFocus()) {
        const double around = area.radius + PickerPaint::focusWidth + 1.0;
        painter.setPen(QPen(PickerPaint::focusColor(palette()), PickerPaint::focusWidth));
        painter.drawEllipse(area.centre, around, around);
    }
    PickerPaint::drawMarker(painter, markerPoint(), TxColorRef::toQColor(m_color.toRGB().color()));
}

void HueSaturationCircle::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || !disc().contains(event->position(), grabSlack)) {
        event->ignore();
        return;
    }
    m_dragging = true;
    pick(disc().at(event->position()));
}

void HueSaturationCircle::mouseMoveEvent(QMouseEvent *event)
{
    if (m_dragging)
        pick(disc().at(event->position()));
    else
        setCursor(disc().contains(event->position(), grabSlack) ? Qt::CrossCursor : Qt::ArrowCursor);
}

void HueSaturationCircle::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        m_dragging = false;
}

void HueSaturationCircle::keyPressEvent(QKeyEvent *event)
{
    const bool coarse = event->modifiers() & (Qt::ShiftModifier | Qt::ControlModifier);
    HueSaturation place{static_cast<double>(m_color.hue), static_cast<double>(m_color.saturation)};
    if (m_color.saturation == 0)
        place.hue = std::round(m_lastHue);
    const double hueStep = coarse ? coarseHue : 1.0;
    const double saturationStep = coarse ? coarseSaturation : 1.0;
    switch (event->key()) {
    case Qt::Key_Right:
        place.hue += hueStep;
        break;
    case Qt::Key_Left:
        place.hue += 360.0 - hueStep;
        break;
    case Qt::Key_Up:
        place.saturation += saturationStep;
        break;
    case Qt::Key_Down:
        place.saturation -= saturationStep;
        break;
    case Qt::Key_PageUp:
        place.saturation += coarseSaturation;
        break;
    case Qt::Key_PageDown:
        place.saturation -= coarseSaturation;
        break;
    case Qt::Key_Home:
        place.saturation = 0.0;
        break;
    case Qt::Key_End:
        place.saturation = 255.0;
        break;
    default:
        QWidget::keyPressEvent(event);
        return;
    }
    place.hue = std::fmod(place.hue, 360.0);
    place.saturation = std::clamp(place.saturation, 0.0, 255.0);
    pick(place);
}

void HueSaturationCircle::pick(HueSaturation place)
{
    if (place.saturation == 0.0)
        place.hue = m_lastHue; // the centre has every hue
    const HSVType color = HueSaturationDisc::rounded(place, m_color.value);
    m_place = place;
    m_lastHue = place.hue;
    update();
    if (color == m_color)
        return;
    m_color = color;
    setTexts();
    Q_EMIT picked(color);
}

void HueSaturationCircle::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        setTexts();
}

void HueSaturationCircle::setTexts()
{
    setAccessibleName(CTdModule::LoadString(TdStringId::PickerHueSaturation));
    setAccessibleDescription(
        CTdModule::LoadString(TdStringId::PickerHueSaturationText).arg(m_color.hue).arg(m_color.saturation));
}

#include "colour/RgbCubeView.h"
#include "colour/PickerPaint.h"
#include "common/TdModule.h"
#include "engine/base/TxColorRef.h"
#include "engine/ui/TxWheelGuard.h"
#include "res/StringId.h"

#include <QEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>
#include <initializer_list>

namespace {

constexpr double margin = PickerPaint::markerRadius + 2.0; // the marker may stand on the outline
constexpr double letterGap = PickerPaint::markerRadius + 2.0;
constexpr int coarseStep = 16;
constexpr int most = 255;
constexpr int wheelStep = 120; // eighths of a degree of one notch

using Position = RgbCubeProjection::Position;

/// The letters of the parts, at the corners of the cube where there is most of each.
struct Letter
{
    QChar text;
    Position corner;
};
constexpr Letter letters[] = {{u'R', {255, 0, 0}}, {u'G', {0, 255, 0}}, {u'B', {0, 0, 255}}};

} // namespace

RgbCubeView::RgbCubeView(QWidget *parent) : QWidget(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    TxWheelGuard::install(this);
    setMouseTracking(true);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setTexts();
}

void RgbCubeView::setColor(const RGBType &color)
{
    if (color == m_color)
        return;
    m_color = color;
    setTexts();
    update();
}

RgbCubeProjection RgbCubeView::cube() const
{
    const double top = margin + fontMetrics().height(); // for the letter of green
    const double halfHeight = (height() - top - margin) / 2.0;
    const double halfWidth = width() / 2.0 - margin;
    const double edge = std::max(0.0, std::min(halfHeight, halfWidth / std::cos(M_PI / 6.0)));
    return {{width() / 2.0, top + halfHeight}, edge};
}

const QImage &RgbCubeView::cutPicture()
{
    const double scale = devicePixelRatioF();
    const QSize pixels(static_cast<int>(std::ceil(width() * scale)), static_cast<int>(std::ceil(height() * scale)));
    if (m_outer.size() != pixels)
        m_outer = cube().outerPicture(pixels.width(), pixels.height(), scale);
    RgbCubeProjection::cutPicture(m_outer, m_color, m_picture);
    m_picture.setDevicePixelRatio(scale);
    return m_picture;
}

void RgbCubeView::paintEvent(QPaintEvent * /*event*/)
{
    const RgbCubeProjection area = cube();
    if (area.edge <= 0.0)
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (!isEnabled())
        painter.setOpacity(PickerPaint::disabledOpacity);
    const QPolygonF outline = area.outline();
    painter.drawImage(QPointF(0.0, 0.0), cutPicture());
    drawEdges(painter);
    drawLetters(painter);
    painter.setBrush(Qt::NoBrush);
    const QColor outlineColor = hasFocus() ? PickerPaint::focusColor(palette()) : PickerPaint::outlineColor(palette());
    painter.setPen(
        QPen(outlineColor, hasFocus() ? PickerPaint::focusWidth : 1.0, Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin));
    painter.drawPolygon(outline);
    PickerPaint::drawMarker(painter, area.pointOf(RgbCubeProjection::positionOf(m_color)),
                            TxColorRef::toQColor(m_color.color()));
}

void RgbCubeView::drawEdges(QPainter &painter) const
{
    const RgbCubeProjection area = cube();
    const Position cut = RgbCubeProjection::positionOf(m_color);
    QPainterPath edges;
    const auto addLine = [&](const Position &from, const Position &to) {
        edges.moveTo(area.pointOf(from));
        edges.lineTo(area.pointOf(to));
    };
    for (std::size_t channel = 0; channel < 3; ++channel) {
        // From the outside to the cut along the edges of the cube that meet in its white corner,
        Position outside{most, most, most};
        outside[channel] = 0;
        Position rim{most, most, most};
        rim[channel] = cut[channel];
        addLine(outside, rim);
        // along the rim of the cut, and from the rim to the current colour.
        Position corner = cut;
        corner[channel] = most;
        for (const std::size_t other : {(channel + 1) % 3, (channel + 2) % 3}) {
            Position end = corner;
            end[other] = most;
            addLine(corner, end);
        }
        addLine(corner, cut);
    }
    // Flat ends: round ones take eight times as long to paint.
    painter.strokePath(edges, QPen(QColor(0, 0, 0, 120), 2.5, Qt::SolidLine, Qt::FlatCap));
    painter.strokePath(edges, QPen(QColor(255, 255, 255, 190), 1.0, Qt::SolidLine, Qt::FlatCap));
}

void RgbCubeView::drawLetters(QPainter &painter) const
{
    const RgbCubeProjection area = cube();
    const QFontMetrics metrics = fontMetrics();
    painter.setPen(palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::WindowText));
    for (const Letter &letter : letters) {
        const QPointF corner = area.pointOf(letter.corner);
        QRectF box(0.0, 0.0, metrics.horizontalAdvance(letter.text), metrics.height());
        const QPointF away = (corner - area.centre) / area.edge;
        // Above the topmost corner, below the two others.
        const double gap = letterGap + metrics.height() / 2.0;
        box.moveCenter(corner + QPointF(away.x() * letterGap, away.y() < 0.0 ? -gap : gap));
        painter.drawText(box, Qt::AlignCenter, letter.text);
    }
}

void RgbCubeView::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || !cube().contains(event->position())) {
        event->ignore();
        return;
    }
    m_dragging = true;
    m_face = cube().surfaceAt(event->position(), m_color);
    pick(RgbCubeProjection::rounded(m_face.position));
}

void RgbCubeView::mouseMoveEvent(QMouseEvent *event)
{
    if (m_dragging) {
        const double fixed = m_face.position[static_cast<std::size_t>(m_face.channel)];
        pick(RgbCubeProjection::rounded(cube().onPlane(event->position(), m_face.channel, fixed)));
    } else {
        setCursor(cube().contains(event->position()) ? Qt::CrossCursor : Qt::ArrowCursor);
    }
}

void RgbCubeView::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        m_dragging = false;
}

void RgbCubeView::wheelEvent(QWheelEvent *event)
{
    if (m_dragging || !cube().contains(event->position())) {
        event->ignore();
        return;
    }
    m_wheelRest += event->angleDelta().y();
    const int steps = m_wheelRest / wheelStep;
    m_wheelRest -= steps * wheelStep;
    const bool coarse = event->modifiers() & (Qt::ShiftModifier | Qt::ControlModifier);
    step(cube().surfaceAt(event->position(), m_color).channel, steps * (coarse ? coarseStep : 1));
    event->accept();
}

void RgbCubeView::keyPressEvent(QKeyEvent *event)
{
    struct Step
    {
        int key;
        int channel;
        int direction;
    };
    constexpr Step steps[] = {{Qt::Key_Right, 0, 1}, {Qt::Key_Left, 0, -1},  {Qt::Key_Up, 1, 1},
                              {Qt::Key_Down, 1, -1}, {Qt::Key_PageUp, 2, 1}, {Qt::Key_PageDown, 2, -1}};
    const bool coarse = event->modifiers() & (Qt::ShiftModifier | Qt::ControlModifier);
    for (const Step &row : steps) {
        if (row.key == event->key()) {
            step(row.channel, row.direction * (coarse ? coarseStep : 1));
            return;
        }
    }
    if (event->key() == Qt::Key_Home)
        pick({0, 0, 0});
    else if (event->key() == Qt::Key_End)
        pick({most, most, most});
    else
        QWidget::keyPressEvent(event);
}

void RgbCubeView::step(int channel, int amount)
{
    Position position = RgbCubeProjection::positionOf(m_color);
    double &part = position[static_cast<std::size_t>(channel)];
    part = std::clamp(part + amount, 0.0, static_cast<double>(most));
    pick(RgbCubeProjection::rounded(position));
}

void RgbCubeView::pick(const RGBType &color)
{
    if (color == m_color)
        return;
    setColor(color);
    Q_EMIT picked(color);
}

void RgbCubeView::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        setTexts();
    else if (event->type() == QEvent::FontChange)
        m_outer = {}; // the letters leave the cube another place
}

void RgbCubeView::setTexts()
{
    setAccessibleName(CTdModule::LoadString(TdStringId::PickerCube));
    setAccessibleDescription(
        CTdModule::LoadString(TdStringId::PickerCubeText).arg(m_color.red).arg(m_color.green).arg(m_color.blue));
}

#include "engine/map/TxMapWnd.h"

#include "engine/map/TxMap.h"
#include "engine/map/TxMapWndPrivate.h"
#include "engine/projection/TxPJCoordSys.h"
#include "engine/projection/TxReprojector.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

#include <cmath>

namespace {

constexpr double fitMargin = 16.0; // pixels around everything
constexpr double keyZoom = 1.5;
constexpr double keyPan = 0.125; // of the window

} // namespace

CTxMapWnd::CTxMapWnd(QWidget *parent) : QWidget(parent), d(std::make_unique<TxMapWndPrivate>(this))
{
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setCursor(Qt::OpenHandCursor);
    setAccessibleName(QCoreApplication::translate("TdCommon", "Map"));
}

CTxMapWnd::~CTxMapWnd() = default;

void CTxMapWnd::SetMap(CTxMap *map)
{
    d->renderer.setMap(map);
    d->picture = QImage();
    d->told.clear();
    d->hasView = false;
    setAccessibleDescription(map ? map->GetName() : QString());
    if (map && !map->GetViewBounds().IsVoid())
        d->showBounds(map->GetViewBounds(), 0, false);
    Refresh();
}

CTxMap *CTxMapWnd::GetMap() const
{
    return d->renderer.map();
}

bool CTxMapWnd::Refresh()
{
    d->renderer.stop();
    d->renderer.refresh();
    d->told.clear();
    const CTxMap *map = d->renderer.map();
    if (!map || map->GetLayers().GetCount() == 0) {
        d->picture = QImage();
    } else if (!d->hasView) {
        const CRect2D all = map->GetBounds();
        if (!all.IsVoid())
            d->showBounds(all, fitMargin, false);
    }
    d->restart(0);
    return map != nullptr;
}

void CTxMapWnd::ReleaseDataset(const CTxDataset *dataset)
{
    d->renderer.release(dataset);
}

CRect2D CTxMapWnd::GetViewBounds() const
{
    return d->hasView ? d->view.bounds() : CRect2D();
}

CRect2D CTxMapWnd::GetViewBoundsIn(const CTxPJCoordSys &coordSys) const
{
    const CTxMap *map = GetMap();
    if (!map)
        return CRect2D();
    CTxPJCoordSys own;
    map->GetProjection(own);
    bool failed = false;
    const auto reprojector = TxReprojector::make(own, coordSys, failed);
    if (failed)
        return CRect2D();
    return reprojector ? reprojector->transform(GetViewBounds()) : GetViewBounds();
}

void CTxMapWnd::SetViewBounds(const CRect2D &bounds)
{
    if (!bounds.IsVoid() && GetMap())
        d->showBounds(bounds, 0, true);
}

void CTxMapWnd::FitAll()
{
    const CTxMap *map = GetMap();
    const CRect2D all = map ? map->GetBounds() : CRect2D();
    if (!all.IsVoid())
        d->showBounds(all, fitMargin, true);
}

void CTxMapWnd::Zoom(double factor, const QPointF &about)
{
    d->moveTo(d->view.zoomed(factor, about));
}

void CTxMapWnd::Zoom(double factor)
{
    Zoom(factor, QRectF(rect()).center());
}

void CTxMapWnd::Pan(const QPointF &pixels)
{
    d->moveTo(d->view.panned(pixels));
}

bool CTxMapWnd::IsDrawing() const
{
    return d->isPending || d->renderer.isDrawing();
}

void CTxMapWnd::FinishDrawing()
{
    while (IsDrawing()) {
        if (d->isPending)
            d->begin();
        d->advance(1000);
    }
}

CPoint2D CTxMapWnd::PixelToMap(const QPointF &pixel) const
{
    return d->view.toMap(pixel);
}

QPointF CTxMapWnd::MapToPixel(const CPoint2D &point) const
{
    return d->view.toPixel(point);
}

QSize CTxMapWnd::sizeHint() const
{
    return QSize(640, 480);
}

void CTxMapWnd::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), d->background());
    if (GetMap()) {
        const MapRenderer &renderer = d->renderer;
        if (!d->isPending && !renderer.isDrawing() && !d->picture.isNull() &&
            d->picture.devicePixelRatio() != devicePixelRatioF())
            d->restart(0); // the window came to another screen
        d->drawPicture(painter, d->picture, d->pictureView);
        if (renderer.isDrawing() && (d->picture.isNull() || d->isSlow()))
            d->drawPicture(painter, renderer.image(), renderer.settings().view);
    }
    d->drawHint(painter);
}

void CTxMapWnd::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    if (!d->hasView)
        return;
    if (!d->fitted.IsVoid())
        d->setView(MapView::fitting(d->fitted, size(), d->fittedMargin), false);
    else
        d->setView(d->view.resized(size()), false);
}

void CTxMapWnd::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton && event->button() != Qt::MiddleButton) {
        QWidget::mousePressEvent(event);
        return;
    }
    d->isDragging = true;
    d->dragPlace = event->position();
    setCursor(Qt::ClosedHandCursor);
}

void CTxMapWnd::mouseMoveEvent(QMouseEvent *event)
{
    if (d->isDragging && (event->buttons() & (Qt::LeftButton | Qt::MiddleButton))) {
        const QPointF moved = event->position() - d->dragPlace;
        d->dragPlace = event->position();
        Pan(moved);
    }
    if (d->hasView) {
        const CPoint2D place = d->view.toMap(event->position());
        Q_EMIT pointerMoved(place.x, place.y);
    }
}

void CTxMapWnd::mouseReleaseEvent(QMouseEvent *event)
{
    if (!d->isDragging) {
        QWidget::mouseReleaseEvent(event);
        return;
    }
    d->isDragging = (event->buttons() & (Qt::LeftButton | Qt::MiddleButton)) != 0;
    if (!d->isDragging)
        setCursor(Qt::OpenHandCursor);
}

void CTxMapWnd::wheelEvent(QWheelEvent *event)
{
    constexpr double degreesToDouble = 45.0; // three notches of a usual wheel
    constexpr double unitsPerDegree = 8.0;
    const double degrees = event->angleDelta().y() / unitsPerDegree;
    if (degrees != 0)
        Zoom(std::exp2(degrees / degreesToDouble), event->position());
    event->accept();
}

void CTxMapWnd::keyPressEvent(QKeyEvent *event)
{
    const double dx = width() * keyPan;
    const double dy = height() * keyPan;
    switch (event->key()) {
    case Qt::Key_Left:
        Pan(QPointF(dx, 0));
        break;
    case Qt::Key_Right:
        Pan(QPointF(-dx, 0));
        break;
    case Qt::Key_Up:
        Pan(QPointF(0, dy));
        break;
    case Qt::Key_Down:
        Pan(QPointF(0, -dy));
        break;
    case Qt::Key_Plus:
    case Qt::Key_Equal: // the same key without Shift on many keyboards
        Zoom(keyZoom);
        break;
    case Qt::Key_Minus:
        Zoom(1 / keyZoom);
        break;
    case Qt::Key_Home:
        FitAll();
        break;
    default:
        QWidget::keyPressEvent(event);
    }
}

void CTxMapWnd::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange)
        d->restart(0);
    else if (event->type() == QEvent::LanguageChange)
        setAccessibleName(QCoreApplication::translate("TdCommon", "Map"));
}

#include "engine/map/TxMapWnd.h"

#include "engine/map/MapRenderer.h"
#include "engine/map/TxMap.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>
#include <QSet>
#include <QTimer>
#include <QWheelEvent>

#include <cmath>

namespace {

constexpr qint64 sliceMilliseconds = 10;
constexpr int pauseMilliseconds = 25;        // after a change of the view, so that a turn of the wheel is one drawing
constexpr qint64 repaintMilliseconds = 60;   // between showings of an incomplete picture
constexpr qint64 patienceMilliseconds = 120; // before an incomplete picture is shown upon the old one
constexpr double fitMargin = 16.0;           // pixels around everything
constexpr double keyZoom = 1.5;
constexpr double keyPan = 0.125; // of the window

/// A text of the canvas in the user's language.
QString text(const char *english)
{
    return QCoreApplication::translate("TdCommon", english);
}

} // namespace

/// The inside of CTxMapWnd.
class TxMapWndPrivate
{
public:
    explicit TxMapWndPrivate(CTxMapWnd *owner) : q(owner)
    {
        timer.setSingleShot(true);
        QObject::connect(&timer, &QTimer::timeout, q, [this] { slice(); });
    }

    QColor background() const
    {
        const CTxMap *map = renderer.map();
        return map && map->GetBackground().isValid() ? map->GetBackground() : q->palette().color(QPalette::Base);
    }

    /// Shows another view. @p keep stores it in the map as the one that somebody chose.
    void setView(const MapView &wanted, bool keep)
    {
        hasView = true;
        if (CTxMap *map = keep ? renderer.map() : nullptr)
            map->SetViewBounds(wanted.bounds());
        if (wanted == view && !renderer.image().isNull())
            return; // also while it is being drawn
        view = wanted;
        // A drawing that is nearly done is worth finishing: moved to its place it shows more than the one before.
        isStale = renderer.isDrawing() && !isPending && sinceStart.elapsed() < patienceMilliseconds;
        if (isStale)
            q->update();
        else if (!isPending)
            restart(pauseMilliseconds);
        Q_EMIT q->viewChanged();
    }

    /// Shows @p bounds, again whenever the window's size changes until somebody moves the view.
    void showBounds(const CRect2D &bounds, double margin, bool keep)
    {
        fitted = bounds;
        fittedMargin = margin;
        setView(MapView::fitting(bounds, q->size(), margin), false);
        if (CTxMap *map = keep ? renderer.map() : nullptr)
            map->SetViewBounds(bounds);
    }

    /// A view that somebody moved to.
    void moveTo(const MapView &wanted)
    {
        if (!hasView)
            return;
        fitted = CRect2D();
        setView(wanted, true);
    }

    /// Begins to draw the picture anew in @p milliseconds.
    void restart(int milliseconds)
    {
        renderer.stop();
        isStale = false;
        isPending = renderer.map() && hasView && !q->size().isEmpty();
        if (isPending)
            timer.start(milliseconds);
        else
            timer.stop();
        q->update();
    }

    void begin()
    {
        isPending = false;
        renderer.start({view, q->devicePixelRatioF(), background(), q->font()});
        sinceStart.start();
        sinceRepaint.start();
        lastPercent = -1;
    }

    void slice()
    {
        if (isPending)
            begin();
        advance(sliceMilliseconds);
    }

    /// Draws for some time and tells what came of it.
    void advance(qint64 milliseconds)
    {
        if (!renderer.isDrawing())
            return;
        const bool hasMore = renderer.step(milliseconds);
        if (hasMore) {
            timer.start(0);
            if (sinceStart.elapsed() >= patienceMilliseconds && sinceRepaint.elapsed() >= repaintMilliseconds) {
                sinceRepaint.start();
                q->update();
            }
        } else {
            timer.stop();
            picture = renderer.image();
            pictureView = renderer.settings().view;
            q->update();
        }
        if (isStale && (!hasMore || sinceStart.elapsed() >= patienceMilliseconds))
            restart(0);
        tell();
    }

    /// What a slice has to say. Listeners may do anything, closing what is drawn included, so this comes last.
    void tell()
    {
        const QList<MapRenderer::Failure> failures = renderer.takeFailures();
        const bool hasOpened = renderer.takeOpened();
        const int percent = renderer.percent();
        const QPointer<CTxMapWnd> guard(q);
        if (hasOpened)
            Q_EMIT q->datasetsOpened();
        for (const MapRenderer::Failure &failure : failures) {
            const QString key = failure.layer + u'\n' + failure.reason;
            if (!guard)
                return;
            if (!told.contains(key)) {
                told.insert(key);
                Q_EMIT q->drawingFailed(failure.layer, failure.reason);
            }
        }
        if (guard && percent != lastPercent) {
            lastPercent = percent;
            Q_EMIT q->drawingProgress(percent);
        }
    }

    /// Draws @p image, which shows @p imageView, where it belongs in the view of now.
    void drawPicture(QPainter &painter, const QImage &image, const MapView &imageView) const
    {
        if (image.isNull())
            return;
        if (imageView == view) {
            painter.drawImage(QPointF(), image);
            return;
        }
        const CRect2D bounds = imageView.bounds();
        const QRectF target(view.toPixel(CPoint2D(bounds.left, bounds.top)),
                            view.toPixel(CPoint2D(bounds.right, bounds.bottom)));
        constexpr double most = 1e5; // a picture scaled to more pixels shows nothing any more
        if (!target.intersects(QRectF(q->rect())) || target.width() > most || target.height() > most)
            return;
        painter.setRenderHint(QPainter::SmoothPixmapTransform, imageView.scale() != view.scale());
        painter.drawImage(target, image, QRectF(image.rect()));
    }

    void drawHint(QPainter &painter) const
    {
        const CTxMap *map = renderer.map();
        if (map && map->GetLayers().GetCount() > 0)
            return;
        QColor ink = background().lightnessF() < 0.5F ? QColor(Qt::white) : QColor(Qt::black);
        ink.setAlphaF(0.6F);
        painter.setPen(ink);
        constexpr int margin = 24;
        painter.drawText(q->rect().adjusted(margin, margin, -margin, -margin), Qt::AlignCenter | Qt::TextWordWrap,
                         map ? text("This map is empty. Drag datasets here to show them.") : text("No map is shown."));
    }

    CTxMapWnd *const q;
    MapRenderer renderer;
    QTimer timer;
    QElapsedTimer sinceStart;
    QElapsedTimer sinceRepaint;
    MapView view;
    bool hasView = false;   // false while there was nothing to show yet
    bool isPending = false; // a picture is to be begun when the timer ends
    bool isStale = false;   // the picture that is being drawn is of a view that has passed
    CRect2D fitted;         // what the view was made to show; void when somebody moved it since
    double fittedMargin = 0;
    QImage picture; // the last complete one
    MapView pictureView;
    QSet<QString> told; // failures
    int lastPercent = -1;
    QPointF dragPlace;
    bool isDragging = false;
};

CTxMapWnd::CTxMapWnd(QWidget *parent) : QWidget(parent), d(std::make_unique<TxMapWndPrivate>(this))
{
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setCursor(Qt::OpenHandCursor);
    setAccessibleName(text("Map"));
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
        if (renderer.isDrawing() && (d->picture.isNull() || d->sinceStart.elapsed() >= patienceMilliseconds))
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
        setAccessibleName(text("Map"));
}

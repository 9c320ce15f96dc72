#include "engine/map/TxMapWndPrivate.h"

#include "engine/map/TxMap.h"

#include <QCoreApplication>
#include <QPainter>
#include <QPointer>

namespace {

constexpr qint64 sliceMilliseconds = 10;
constexpr int pauseMilliseconds = 25;        // after a change of the view, so that a turn of the wheel is one drawing
constexpr qint64 repaintMilliseconds = 60;   // between showings of an incomplete picture
constexpr qint64 patienceMilliseconds = 120; // before an incomplete picture is shown upon the old one

} // namespace

TxMapWndPrivate::TxMapWndPrivate(CTxMapWnd *owner) : q(owner)
{
    timer.setSingleShot(true);
    QObject::connect(&timer, &QTimer::timeout, q, [this] { slice(); });
}

QColor TxMapWndPrivate::background() const
{
    const CTxMap *map = renderer.map();
    return map && map->GetBackground().isValid() ? map->GetBackground() : q->palette().color(QPalette::Base);
}

void TxMapWndPrivate::setView(const MapView &wanted, bool keep)
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

void TxMapWndPrivate::showBounds(const CRect2D &bounds, double margin, bool keep)
{
    fitted = bounds;
    fittedMargin = margin;
    setView(MapView::fitting(bounds, q->size(), margin), false);
    if (CTxMap *map = keep ? renderer.map() : nullptr)
        map->SetViewBounds(bounds);
}

void TxMapWndPrivate::moveTo(const MapView &wanted)
{
    if (!hasView)
        return;
    fitted = CRect2D();
    setView(wanted, true);
}

void TxMapWndPrivate::restart(int milliseconds)
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

void TxMapWndPrivate::begin()
{
    isPending = false;
    renderer.start({view, q->devicePixelRatioF(), background(), q->font()});
    sinceStart.start();
    sinceRepaint.start();
    lastPercent = -1;
}

void TxMapWndPrivate::slice()
{
    if (isPending)
        begin();
    advance(sliceMilliseconds);
}

void TxMapWndPrivate::advance(qint64 milliseconds)
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

void TxMapWndPrivate::tell()
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

void TxMapWndPrivate::drawPicture(QPainter &painter, const QImage &image, const MapView &imageView) const
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

void TxMapWndPrivate::drawHint(QPainter &painter) const
{
    const CTxMap *map = renderer.map();
    if (map && map->GetLayers().GetCount() > 0)
        return;
    QColor ink = background().lightnessF() < 0.5F ? QColor(Qt::white) : QColor(Qt::black);
    ink.setAlphaF(0.6F);
    painter.setPen(ink);
    constexpr int margin = 24;
    painter.drawText(
        q->rect().adjusted(margin, margin, -margin, -margin), Qt::AlignCenter | Qt::TextWordWrap,
        map ? QCoreApplication::translate("TdCommon", "This map is empty. Drag datasets here to show them.")
            : QCoreApplication::translate("TdCommon", "No map is shown."));
}

bool TxMapWndPrivate::isSlow() const
{
    return sinceStart.elapsed() >= patienceMilliseconds;
}

#pragma once

#include "engine/map/MapRenderer.h"
#include "engine/map/TxMapWnd.h"

#include <QElapsedTimer>
#include <QImage>
#include <QSet>
#include <QTimer>

class QPainter;

/// The inside of CTxMapWnd: which view is shown, when a picture is drawn, and what of it.
class TxMapWndPrivate
{
public:
    explicit TxMapWndPrivate(CTxMapWnd *owner);
    QColor background() const;
    /// Shows another view. @p keep stores it in the map as the one that somebody chose.
    void setView(const MapView &wanted, bool keep);
    /// Shows @p bounds, again whenever the window's size changes until somebody moves the view.
    void showBounds(const CRect2D &bounds, double margin, bool keep);
    /// A view that somebody moved to.
    void moveTo(const MapView &wanted);
    /// Begins to draw the picture anew in @p milliseconds.
    void restart(int milliseconds);
    void begin();
    void slice();
    /// Draws for some time and tells what came of it.
    void advance(qint64 milliseconds);
    /// What a slice has to say. Listeners may do anything, closing what is drawn included, so this comes last.
    void tell();
    /// True when drawing takes so long that what there is of the picture is worth showing.
    bool isSlow() const;
    /// Draws @p image, which shows @p imageView, where it belongs in the view of now.
    void drawPicture(QPainter &painter, const QImage &image, const MapView &imageView) const;
    void drawHint(QPainter &painter) const;

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

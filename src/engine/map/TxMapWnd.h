#pragma once

#include "engine/base/TxExport.h"
#include "engine/geometry/Rect2D.h"

#include <QWidget>

#include <memory>

class CTxDataset;
class CTxMap;
class CTxPJCoordSys;

/// A map canvas: draws the layers of a map; the user pans by dragging or the arrow keys, zooms by the wheel, + and -,
/// and sees everything with Home.
///
/// Drawing goes on in slices of some milliseconds between which events are handled, so it never blocks; a new view
/// begins it anew, and until then the old picture is shown moved or scaled. Layers in another coordinate system than
/// that of the map (CTxMap::GetProjection()) are reprojected while they are drawn. The view that a user or a caller
/// chooses is kept in the map.
///
/// A dataset that is closed is opened to be drawn and stays open while the map shows it; see ReleaseDataset(). A map,
/// layer, dataset or datasource that goes while it is drawn is noticed and let go of.
class TX_EXPORT CTxMapWnd : public QWidget
{
    Q_OBJECT
public:
    explicit CTxMapWnd(QWidget *parent = nullptr);
    ~CTxMapWnd() override;

    /// Shows @p map (not owned, may be null): the view it was left with, or all of it.
    void SetMap(CTxMap *map);
    CTxMap *GetMap() const;
    /// Draws anew after a layer, a flag or a dataset changed. @return false when no map is shown.
    bool Refresh();
    /// Lets go of @p dataset at once: no record of it is read after this call, until the next Refresh(). It is closed
    /// if it was opened here and nobody holds a recordset of it.
    void ReleaseDataset(const CTxDataset *dataset);

    /// The part of the plane that is shown.
    CRect2D GetViewBounds() const;
    /// The rectangle around that in @p coordSys; void when it has none there.
    CRect2D GetViewBoundsIn(const CTxPJCoordSys &coordSys) const;
    void SetViewBounds(const CRect2D &bounds);
    /// Shows everything.
    void FitAll();
    /// Zooms by @p factor (above 1: closer) about a place of the window; the middle when none is given.
    void Zoom(double factor, const QPointF &about);
    void Zoom(double factor);
    /// Moves the picture by some pixels.
    void Pan(const QPointF &pixels);
    /// True while drawing is not complete.
    bool IsDrawing() const;
    /// Draws all that is left to draw now; for pictures and tests.
    void FinishDrawing();

    CPoint2D PixelToMap(const QPointF &pixel) const;
    QPointF MapToPixel(const CPoint2D &point) const;

    QSize sizeHint() const override;

Q_SIGNALS:
    /// The pointer is above (@p x, @p y) of the map.
    void pointerMoved(double x, double y);
    void viewChanged();
    /// Drawing is complete (100) or has come so far (0 to 99).
    void drawingProgress(int percent);
    /// Datasets that were closed have been opened to be drawn.
    void datasetsOpened();
    /// A layer could not be drawn; said once for each reason until Refresh().
    void drawingFailed(const QString &layer, const QString &reason);

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    const std::unique_ptr<class TxMapWndPrivate> d;
};

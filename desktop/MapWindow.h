#pragma once

#include "basic/TdOleDataNode.h"

#include <QStringList>
#include <QWidget>

class CTxMap;
class CTxMapWnd;

/// The window of a map: the canvas, and the place where datasets and files are dropped.
class MapWindow : public QWidget
{
    Q_OBJECT
public:
    explicit MapWindow(QWidget *parent = nullptr);

    /// Shows @p map (not owned, may be null).
    void setMap(CTxMap *map);
    CTxMap *map() const;
    CTxMapWnd *canvas() const { return m_canvas; }
    /// Draws anew after the map's layers changed.
    void refresh();

    /// The length of one pixel divided into the same length on earth: the number behind "1 :". 0 when it cannot be
    /// told. Degrees are measured along the parallel in the middle of the view.
    double scaleDenominator() const;

Q_SIGNALS:
    /// Datasets were dropped from the workspace tree.
    void itemsDropped(const CTdOleDataNode &node);
    /// Files were dropped from a file manager.
    void filesDropped(const QStringList &paths);

protected:
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    CTxMapWnd *m_canvas;
};

#pragma once

#include "workspace/WkspImageList.h"

#include <QWidget>

class CTxLayer;
class MapWindow;
class QAction;
class QListWidget;
class QListWidgetItem;

/// The layers of the current map, the topmost first, each with a sample of its style: a check box shows or hides,
/// dragging changes the order.
class LayerPane : public QWidget
{
    Q_OBJECT
public:
    explicit LayerPane(QWidget *parent = nullptr);

    /// Shows the layers of @p view's map (not owned, may be null).
    void setView(MapWindow *view);
    /// Reads the layers of the map again.
    void refresh();
    /// Takes the selected layers out of the map.
    void removeSelected();

    /// The only selected layer; null when none is or more than one.
    CTxLayer *selectedLayer() const;
    /// Commands that the menu of a layer offers as well, behind its own.
    void addLayerCommands(const QList<QAction *> &commands) { m_commands += commands; }

    QListWidget *list() const { return m_list; }

Q_SIGNALS:
    /// The user changed the map's layers.
    void changed();
    /// The user wants to see the records of the layer's dataset.
    void tableWanted(const CTxLayer *layer);
    /// The user wants other looks for the selected layer: its sample was double-clicked.
    void styleWanted();
    /// Another layer may be selected, or the selected one may show something else.
    void selectionChanged();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void onItemChanged(QListWidgetItem *item);
    void onMoved(int from, int to);
    void showMenu(const QPoint &position);
    void zoomTo(int row);
    CTxLayer *currentLayer() const;

    MapWindow *m_view = nullptr; // not owned
    QListWidget *m_list;
    QAction *m_remove;
    QList<QAction *> m_commands;
    CTdWkspImageList m_images;
};

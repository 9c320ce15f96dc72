#pragma once

#include <QObject>

class Actions;
class CTxLayer;
class DocumentArea;
class LayerPane;
class QWidget;
class WorkspaceDocument;

/// The command for the looks of the layer that is selected in the layer pane. While it cannot be used its tips say why.
class LayerCommands : public QObject
{
    Q_OBJECT
public:
    LayerCommands(WorkspaceDocument &document, DocumentArea &area, LayerPane &layers, Actions &actions,
                  QWidget *window);

    /// Enables the action when it fits the selection.
    void updateActions();
    /// Asks for the style of the selected layer. What is applied meanwhile is on the map at once, and gone again when
    /// the dialog is cancelled; the layer, its map and its window may go too.
    void editStyle();

private:
    /// The selected layer that is drawn with a style, null when there is none.
    CTxLayer *selected() const;
    /// Why there is none.
    QString reason() const;

    WorkspaceDocument &m_document;
    DocumentArea &m_area;
    LayerPane &m_layers;
    Actions &m_actions;
    QWidget *m_window;   // parent of dialogs, not owned
    const QString m_tip; // of the action while it can be used
};

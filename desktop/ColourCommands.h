#pragma once

#include <QList>
#include <QObject>

class Actions;
class CTxColorsetEx;
class CTxLayer;
class DocumentArea;
class LayerPane;
class Prompts;
class QAction;
class QWidget;
class WorkspaceDocument;

/// The commands of the Colour menu: the colours of the heights of the layer that is selected in the layer pane.
///
/// Each begins with the colours that the layer shows and changes them when its dialog ends with OK; where the dialog
/// can tell, the map shows them while they are chosen. While no layer of heights is selected the status tips say what
/// is missing.
class ColourCommands : public QObject
{
    Q_OBJECT
public:
    ColourCommands(WorkspaceDocument &document, DocumentArea &area, LayerPane &layers, Actions &actions,
                   Prompts &prompts, QWidget *window);

    /// Enables the actions that fit the selection.
    void updateActions();

    void chooseStockRamp();
    void editColorSet();
    void editRamp();
    /// Loads a ramp file of any kind, and tells what of it was left out.
    void loadRampFile();
    /// Saves the layer's colours as a file of the kind that its name tells, and tells what that cannot hold.
    void saveRampFile();
    void setStepped(bool on);
    void resetColours();

private:
    /// The selected layer of heights, null when there is none.
    CTxLayer *selected() const;
    /// Why there is none.
    QString reason() const;
    void apply(CTxLayer &layer, const CTxColorsetEx &colors, bool stepped);

    WorkspaceDocument &m_document;
    DocumentArea &m_area;
    LayerPane &m_layers;
    Actions &m_actions;
    Prompts &m_prompts;
    QWidget *m_window;     // parent of dialogs, not owned
    QList<QString> m_tips; // of the actions while they can be used
};

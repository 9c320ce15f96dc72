#include "LayerCommands.h"

#include "Actions.h"
#include "DocumentArea.h"
#include "LayerPane.h"
#include "LayerStyleDialog.h"
#include "MapWindow.h"
#include "WorkspaceDocument.h"
#include "engine/base/TxHandle.h"
#include "engine/data/TxDataset.h"
#include "engine/map/TxMap.h"

#include <QAction>
#include <QPointer>

LayerCommands::LayerCommands(WorkspaceDocument &document, DocumentArea &area, LayerPane &layers, Actions &actions,
                             QWidget *window)
    : QObject(window), m_document(document), m_area(area), m_layers(layers), m_actions(actions), m_window(window),
      m_tip(actions[Actions::LayerStyle]->toolTip())
{
    connect(actions[Actions::LayerStyle], &QAction::triggered, this, &LayerCommands::editStyle);
    connect(&layers, &LayerPane::selectionChanged, this, &LayerCommands::updateActions);
    layers.addLayerCommands({actions[Actions::LayerStyle]});
    connect(&layers, &LayerPane::styleWanted, actions[Actions::LayerStyle], &QAction::trigger);
    updateActions();
}

CTxLayer *LayerCommands::selected() const
{
    CTxLayer *layer = m_area.currentMap() ? m_layers.selectedLayer() : nullptr;
    const CTxDataset *dataset = layer ? layer->GetDataset() : nullptr;
    return dataset && TxStyleParts::of(dataset->GetType()) != 0 ? layer : nullptr;
}

QString LayerCommands::reason() const
{
    if (!m_area.currentMap())
        return tr("Open a map first, and select a layer in the layer pane");
    const CTxLayer *layer = m_layers.selectedLayer();
    if (!layer)
        return tr("Select one layer in the layer pane first");
    return layer->GetDataset() ? tr("“%1” has no lines, fills or symbols: heights have the commands of the Colour menu")
                                     .arg(layer->GetName())
                               : tr("The dataset of “%1” is missing").arg(layer->GetName());
}

void LayerCommands::updateActions()
{
    QAction *action = m_actions[Actions::LayerStyle];
    action->setEnabled(selected());
    const QString tip = action->isEnabled() ? m_tip : reason();
    action->setStatusTip(tip);
    action->setToolTip(tip);
}

void LayerCommands::editStyle()
{
    CTxLayer *const chosen = selected();
    if (!chosen)
        return;
    const QPointer<MapWindow> view = m_area.currentMap();
    const TxHandle<CTxMap> map(view->map());
    const TxLayerStyle before = chosen->style();
    const auto give = [&](const TxLayerStyle &style) {
        CTxMap *shown = map.get();
        if (!shown || shown->GetLayers().FindLayer(chosen) < 0 || chosen->style() == style)
            return;
        chosen->setStyle(style);
        if (view)
            view->refresh();
        m_layers.refresh();
        m_document.touch();
    };
    const QColor background = view->map()->GetBackground();
    // On the heap: the window may go while the dialog is open, and takes it along.
    const QPointer<LayerStyleDialog> dialog =
        new LayerStyleDialog(chosen->GetName(), chosen->GetDataset()->GetType(), before,
                             background.isValid() ? background : view->palette().color(QPalette::Base), m_window);
    connect(dialog, &LayerStyleDialog::applied, this, [&] { give(dialog->style()); });
    const bool isAccepted = dialog->exec() == QDialog::Accepted;
    if (!dialog)
        return;
    give(isAccepted ? dialog->style() : before);
    delete dialog;
}

#include "ColourCommands.h"

#include "Actions.h"
#include "ColourPreview.h"
#include "DocumentArea.h"
#include "LayerColours.h"
#include "LayerPane.h"
#include "MapWindow.h"
#include "Prompts.h"
#include "StockRampDialog.h"
#include "WorkspaceDocument.h"
#include "colour/RampFile.h"
#include "colour/TdDlgRibbon.h"
#include "colour/TdIDEDlgColorSet.h"
#include "engine/data/TxDataset.h"
#include "engine/map/TxMap.h"

#include <QAction>
#include <QFileInfo>
#include <QSignalBlocker>

#include <array>

namespace {

constexpr std::array commands = {Actions::StockRamp,    Actions::EditColorSet, Actions::EditRamp,
                                 Actions::LoadRampFile, Actions::SaveRampFile, Actions::SteppedColours,
                                 Actions::ResetColours};

/// The colours of the ramp in @p ribbon; as many as the layer has where each fills a step.
CTxColorsetEx colorsOf(const CTdDlgRibbon &ribbon, const TxLayerStyle &style)
{
    return LayerColours::fromStops(ribbon.GetStops(), style.stepped ? style.colors.GetSize() : 0);
}

} // namespace

ColourCommands::ColourCommands(WorkspaceDocument &document, DocumentArea &area, LayerPane &layers, Actions &actions,
                               Prompts &prompts, QWidget *window)
    : QObject(window), m_document(document), m_area(area), m_layers(layers), m_actions(actions), m_prompts(prompts),
      m_window(window)
{
    for (const Actions::Id id : commands)
        m_tips.append(actions[id]->statusTip());
    connect(actions[Actions::StockRamp], &QAction::triggered, this, &ColourCommands::chooseStockRamp);
    connect(actions[Actions::EditColorSet], &QAction::triggered, this, &ColourCommands::editColorSet);
    connect(actions[Actions::EditRamp], &QAction::triggered, this, &ColourCommands::editRamp);
    connect(actions[Actions::LoadRampFile], &QAction::triggered, this, &ColourCommands::loadRampFile);
    connect(actions[Actions::SaveRampFile], &QAction::triggered, this, &ColourCommands::saveRampFile);
    connect(actions[Actions::SteppedColours], &QAction::toggled, this, &ColourCommands::setStepped);
    connect(actions[Actions::ResetColours], &QAction::triggered, this, &ColourCommands::resetColours);
    connect(&layers, &LayerPane::selectionChanged, this, &ColourCommands::updateActions);
    QList<QAction *> ofLayers;
    for (const Actions::Id id : commands)
        ofLayers.append(actions[id]);
    layers.addLayerCommands(ofLayers);
    updateActions();
}

CTxLayer *ColourCommands::selected() const
{
    CTxLayer *layer = m_layers.selectedLayer();
    return m_area.currentMap() && LayerColours::showsHeights(layer) ? layer : nullptr;
}

QString ColourCommands::reason() const
{
    if (!m_area.currentMap())
        return tr("Open a map first, and select a layer of heights in the layer pane");
    const CTxLayer *layer = m_layers.selectedLayer();
    if (!layer)
        return tr("Select one layer of heights in the layer pane first: a grid, an elevation model or a surface");
    return layer->GetDataset() ? tr("“%1” has no heights to colour: select a grid, an elevation model or a surface")
                                     .arg(layer->GetName())
                               : tr("The dataset of “%1” is missing").arg(layer->GetName());
}

void ColourCommands::updateActions()
{
    const CTxLayer *layer = selected();
    const bool hasOwn = layer && layer->style().colors.GetSize() > 0;
    for (size_t i = 0; i < commands.size(); ++i) {
        QAction *action = m_actions[commands[i]];
        const bool isReset = commands[i] == Actions::ResetColours;
        action->setEnabled(isReset ? hasOwn : layer != nullptr);
        QString tip = m_tips.at(static_cast<qsizetype>(i));
        if (!action->isEnabled())
            tip = layer ? tr("“%1” has the usual colours").arg(layer->GetName()) : reason();
        action->setStatusTip(tip);
        action->setToolTip(tip);
    }
    const QSignalBlocker blocker(m_actions[Actions::SteppedColours]);
    m_actions[Actions::SteppedColours]->setChecked(hasOwn && layer->style().stepped);
}

void ColourCommands::apply(CTxLayer &layer, const CTxColorsetEx &colors, bool stepped)
{
    TxLayerStyle style = layer.style();
    style.colors = colors;
    style.stepped = stepped;
    if (style == layer.style())
        return;
    layer.setStyle(style);
    if (MapWindow *view = m_area.currentMap()) // closed while the dialog stood
        view->refresh();
    m_layers.refresh();
    m_document.touch();
}

void ColourCommands::chooseStockRamp()
{
    CTxLayer *layer = selected();
    if (!layer)
        return;
    StockRampDialog dialog(layer->GetName(), LayerColours::shown(*layer),
                           LayerColours::heightRange(*layer->GetDataset()), m_window);
    ColourPreview preview(*layer, *m_area.currentMap());
    const auto show = [&] {
        preview.show(dialog.wantsCustom() ? CTxColorsetEx() : dialog.colors(), dialog.isStepped());
    };
    connect(&dialog, &StockRampDialog::changed, &preview, show);
    show();
    const bool isAccepted = dialog.exec() == QDialog::Accepted;
    layer = preview.end();
    if (!layer || !isAccepted)
        return;
    if (dialog.wantsCustom())
        editRamp();
    else
        apply(*layer, dialog.colors(), dialog.isStepped());
}

void ColourCommands::editColorSet()
{
    CTxLayer *layer = selected();
    if (!layer)
        return;
    const CTxColorsetEx shown = LayerColours::shown(*layer);
    ColourPreview preview(*layer, *m_area.currentMap());
    CTdIDEDlgColorSet dialog(shown.GetRGB(0), m_window);
    dialog.SetElevationMode(true);
    dialog.InitColorset(shown);
    const bool isAccepted = dialog.DoModal() == CTdDialog::IdOk;
    layer = preview.end();
    if (layer && isAccepted)
        apply(*layer, dialog.GetColorset(), layer->style().stepped);
}

void ColourCommands::editRamp()
{
    CTxLayer *layer = selected();
    if (!layer)
        return;
    ColourPreview preview(*layer, *m_area.currentMap());
    const TxLayerStyle before = layer->style();
    CTdDlgRibbon ribbon(m_window);
    ribbon.SetStops(LayerColours::toStops(LayerColours::shown(*layer)));
    connect(&ribbon, &CTdDlgRibbon::rampChanged, &preview,
            [&] { preview.show(colorsOf(ribbon, before), before.stepped); });
    const bool isAccepted = ribbon.DoModal() == CTdDialog::IdOk;
    layer = preview.end();
    if (layer && isAccepted)
        apply(*layer, colorsOf(ribbon, before), before.stepped);
}

void ColourCommands::loadRampFile()
{
    if (!selected())
        return;
    const QString path =
        m_prompts.openFiles(m_window, tr("Load Ramp File"), QString(), RampFile::nameFilters(true)).value(0);
    CTxLayer *layer = selected(); // may have gone while the dialog stood
    if (path.isEmpty() || !layer)
        return;
    const auto heights = LayerColours::heightRange(*layer->GetDataset()).value_or(std::pair(0.0, 1000.0));
    const RampReading reading = RampFile::load(path, heights);
    const QString name = QFileInfo(path).fileName(), texts = reading.report.texts().join(u'\n');
    if (!reading.ramp)
        return m_prompts.warn(m_window, tr("“%1” was not loaded").arg(name), texts);
    apply(*layer, LayerColours::fromRamp(*reading.ramp, heights), false);
    RampReport usual; // to be stretched over the data is what such files are for
    usual.add(RampReport::Relative);
    if (!reading.report.isEmpty() && reading.report != usual)
        m_prompts.warn(m_window, tr("“%1” was loaded, but not just as it is").arg(name), texts);
}

void ColourCommands::saveRampFile()
{
    CTxLayer *layer = selected();
    if (!layer)
        return;
    const std::optional<ColorRamp> ramp = LayerColours::toRamp(*layer);
    if (!ramp)
        return m_prompts.warn(m_window, tr("The colours of “%1” cannot be saved").arg(layer->GetName()),
                              tr("Their range is none."));
    const QString path = m_prompts.saveFile(m_window, tr("Save Ramp File"), layer->GetName(),
                                            RampFile::nameFilters(false), QStringLiteral("cpt"));
    if (path.isEmpty())
        return;
    const QString name = QFileInfo(path).fileName();
    const RampReport report = RampFile::save(path, *ramp);
    if (report.isRefusal())
        m_prompts.warn(m_window, tr("“%1” was not saved").arg(name), report.texts().join(u'\n'));
    else if (!report.isEmpty())
        m_prompts.warn(m_window, tr("“%1” was saved, but not all of the ramp").arg(name), report.texts().join(u'\n'));
}

void ColourCommands::setStepped(bool on)
{
    if (CTxLayer *layer = selected())
        apply(*layer, LayerColours::shown(*layer), on);
}

void ColourCommands::resetColours()
{
    if (CTxLayer *layer = selected())
        apply(*layer, CTxColorsetEx(), false);
}

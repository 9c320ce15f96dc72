#include "Actions.h"

#include "Icons.h"

#include <QAction>
#include <QCoreApplication>
#include <QKeySequence>

namespace {

/// One command. Texts are in the translation context "Actions".
struct Row
{
    Actions::Id id;
    const char *text;
    const char *icon; ///< name of the picture, or null
    QKeySequence::StandardKey standardKey;
    const char *key; ///< where there is no standard key, or null
    const char *tip; ///< what it does, for the status bar and tool tips
};

constexpr QKeySequence::StandardKey noKey = QKeySequence::UnknownKey;

constexpr Row table[] = {
    {Actions::NewWorkspace, QT_TRANSLATE_NOOP("Actions", "&New Workspace"), "new", QKeySequence::New, nullptr,
     QT_TRANSLATE_NOOP("Actions", "Start with an empty workspace")},
    {Actions::OpenWorkspace, QT_TRANSLATE_NOOP("Actions", "&Open Workspace…"), "open", QKeySequence::Open, nullptr,
     QT_TRANSLATE_NOOP("Actions", "Open a workspace file")},
    {Actions::OpenFiles, QT_TRANSLATE_NOOP("Actions", "Open &Datasource…"), "datasource-open", noKey, "Ctrl+Shift+O",
     QT_TRANSLATE_NOOP("Actions", "Open files as datasources")},
    {Actions::OpenFolder, QT_TRANSLATE_NOOP("Actions", "Open &Folder as Datasource…"), nullptr, noKey, nullptr,
     QT_TRANSLATE_NOOP("Actions", "Open a folder of data files as one datasource")},
    {Actions::OpenDatabase, QT_TRANSLATE_NOOP("Actions", "Open Data&base…"), nullptr, noKey, nullptr,
     QT_TRANSLATE_NOOP("Actions", "Connect to a PostgreSQL database")},
    {Actions::MissingDataSources, QT_TRANSLATE_NOOP("Actions", "&Missing Datasources…"), nullptr, noKey, nullptr,
     QT_TRANSLATE_NOOP("Actions", "Locate or remove the workspace's datasources that could not be opened")},
    {Actions::Save, QT_TRANSLATE_NOOP("Actions", "&Save Workspace"), "save", QKeySequence::Save, nullptr,
     QT_TRANSLATE_NOOP("Actions", "Save the workspace")},
    {Actions::SaveAs, QT_TRANSLATE_NOOP("Actions", "Save Workspace &As…"), nullptr, noKey, "Ctrl+Shift+S",
     QT_TRANSLATE_NOOP("Actions", "Save the workspace in another file")},
    {Actions::Exit, QT_TRANSLATE_NOOP("Actions", "E&xit"), nullptr, noKey, "Ctrl+Q",
     QT_TRANSLATE_NOOP("Actions", "Close the program")},
    {Actions::AddToMap, QT_TRANSLATE_NOOP("Actions", "Add to Current &Map"), nullptr, noKey, nullptr,
     QT_TRANSLATE_NOOP("Actions", "Add the selected datasets to the map in front")},
    {Actions::AddToNewMap, QT_TRANSLATE_NOOP("Actions", "Add to &New Map"), "map-new", noKey, nullptr,
     QT_TRANSLATE_NOOP("Actions", "Add the selected datasets to a new map")},
    {Actions::ShowTable, QT_TRANSLATE_NOOP("Actions", "Attribute &Table"), "table", noKey, "Ctrl+T",
     QT_TRANSLATE_NOOP("Actions", "Show the records of the selected dataset")},
    {Actions::Properties, QT_TRANSLATE_NOOP("Actions", "&Properties"), nullptr, noKey, "Alt+Return",
     QT_TRANSLATE_NOOP("Actions", "Show what is known of the selected dataset or datasource")},
    {Actions::CloseDataset, QT_TRANSLATE_NOOP("Actions", "&Close Dataset"), nullptr, noKey, nullptr,
     QT_TRANSLATE_NOOP("Actions", "Close the selected datasets; they stay in their datasource")},
    {Actions::CloseDataSource, QT_TRANSLATE_NOOP("Actions", "C&lose Datasource"), "datasource-close", noKey, nullptr,
     QT_TRANSLATE_NOOP("Actions", "Take the selected datasource out of the workspace; its files stay")},
    {Actions::RefreshDataSource, QT_TRANSLATE_NOOP("Actions", "&Refresh Datasource"), "refresh", noKey, nullptr,
     QT_TRANSLATE_NOOP("Actions", "Look again what datasets the selected datasource has")},
    {Actions::Rename, QT_TRANSLATE_NOOP("Actions", "R&ename…"), nullptr, noKey, "F2",
     QT_TRANSLATE_NOOP("Actions", "Give the selected item another name")},
    {Actions::Delete, QT_TRANSLATE_NOOP("Actions", "&Delete…"), nullptr, noKey, nullptr,
     QT_TRANSLATE_NOOP("Actions", "Delete the selected datasets or maps for good")},
    {Actions::ListTiles, QT_TRANSLATE_NOOP("Actions", "L&ist Tiles"), nullptr, noKey, nullptr,
     QT_TRANSLATE_NOOP("Actions", "Show the tiles of the selected library dataset in the tree")},
    {Actions::CopyDataset, QT_TRANSLATE_NOOP("Actions", "Cop&y to Another Datasource…"), "dataset-copy", noKey,
     "Ctrl+Shift+C", QT_TRANSLATE_NOOP("Actions", "Copy the selected dataset with all its content")},
    {Actions::Append, QT_TRANSLATE_NOOP("Actions", "&Append…"), "append", noKey, "Ctrl+Shift+A",
     QT_TRANSLATE_NOOP("Actions", "Add the records or cells of another dataset to the selected one")},
    {Actions::SmoothLines, QT_TRANSLATE_NOOP("Actions", "&Smooth Lines…"), "lines-smooth", noKey, nullptr,
     QT_TRANSLATE_NOOP("Actions", "Make curves of the lines of the selected dataset")},
    {Actions::ParallelLine, QT_TRANSLATE_NOOP("Actions", "Ma&ke Parallel Line…"), "line-parallel", noKey, nullptr,
     QT_TRANSLATE_NOOP("Actions", "Make a line beside each line of the selected dataset, in a new dataset")},
    {Actions::OpenMap, QT_TRANSLATE_NOOP("Actions", "&Open Map"), nullptr, noKey, nullptr,
     QT_TRANSLATE_NOOP("Actions", "Open the window of the selected map")},
    {Actions::NewMap, QT_TRANSLATE_NOOP("Actions", "&New Map"), "map-new", noKey, "Ctrl+M",
     QT_TRANSLATE_NOOP("Actions", "Make an empty map and open its window")},
    {Actions::FitAll, QT_TRANSLATE_NOOP("Actions", "&Fit All"), "fit", noKey, "Ctrl+0",
     QT_TRANSLATE_NOOP("Actions", "Show the whole map")},
    {Actions::ZoomIn, QT_TRANSLATE_NOOP("Actions", "Zoom &In"), "zoom-in", QKeySequence::ZoomIn, nullptr,
     QT_TRANSLATE_NOOP("Actions", "Show less of the map, larger")},
    {Actions::ZoomOut, QT_TRANSLATE_NOOP("Actions", "Zoom O&ut"), "zoom-out", QKeySequence::ZoomOut, nullptr,
     QT_TRANSLATE_NOOP("Actions", "Show more of the map, smaller")},
    {Actions::RefreshMap, QT_TRANSLATE_NOOP("Actions", "&Refresh"), "refresh", QKeySequence::Refresh, nullptr,
     QT_TRANSLATE_NOOP("Actions", "Draw the map anew, or read the table's records again")},
    {Actions::LayerStyle, QT_TRANSLATE_NOOP("Actions", "Layer &Style…"), "layer-style", noKey, "Ctrl+Shift+L",
     QT_TRANSLATE_NOOP("Actions", "Choose the line, the fill or the symbol that the selected layer is drawn with")},
    {Actions::StockRamp, QT_TRANSLATE_NOOP("Actions", "&Stock Colour Ramp…"), "colour-stock", noKey, "Ctrl+Shift+R",
     QT_TRANSLATE_NOOP("Actions", "Choose one of the stock colour ramps for the heights of the selected layer")},
    {Actions::EditColorSet, QT_TRANSLATE_NOOP("Actions", "Edit &Colour Set…"), "colour-set", noKey, nullptr,
     QT_TRANSLATE_NOOP("Actions", "Edit the list of colours for the heights of the selected layer")},
    {Actions::EditRamp, QT_TRANSLATE_NOOP("Actions", "Edit Colour &Ramp…"), "colour-ramp", noKey, nullptr,
     QT_TRANSLATE_NOOP("Actions", "Edit the stops of the colour ramp for the heights of the selected layer")},
    {Actions::LoadRampFile, QT_TRANSLATE_NOOP("Actions", "&Load Ramp File…"), nullptr, noKey, nullptr,
     QT_TRANSLATE_NOOP("Actions", "Give the selected layer the colours of a file of this or another system")},
    {Actions::SaveRampFile, QT_TRANSLATE_NOOP("Actions", "Sa&ve Ramp File…"), nullptr, noKey, nullptr,
     QT_TRANSLATE_NOOP("Actions", "Write the colours of the selected layer as a file for this or another system")},
    {Actions::SteppedColours, QT_TRANSLATE_NOOP("Actions", "Colours in S&teps"), nullptr, noKey, nullptr,
     QT_TRANSLATE_NOOP("Actions",
                       "Give each colour of the selected layer a step of height of its own, without blending")},
    {Actions::ResetColours, QT_TRANSLATE_NOOP("Actions", "R&eset Colours"), nullptr, noKey, nullptr,
     QT_TRANSLATE_NOOP("Actions", "Give the selected layer the usual colours of heights")},
    {Actions::FindInTree, QT_TRANSLATE_NOOP("Actions", "&Find in Workspace"), "filter", QKeySequence::Find, nullptr,
     QT_TRANSLATE_NOOP("Actions", "Go to the line that filters the workspace tree")},
    {Actions::CloseWindow, QT_TRANSLATE_NOOP("Actions", "&Close"), nullptr, noKey, "Ctrl+W",
     QT_TRANSLATE_NOOP("Actions", "Close the map or table in front")},
    {Actions::NextWindow, QT_TRANSLATE_NOOP("Actions", "&Next"), nullptr, noKey, "Ctrl+Tab",
     QT_TRANSLATE_NOOP("Actions", "Go to the next map or table")},
    {Actions::PreviousWindow, QT_TRANSLATE_NOOP("Actions", "&Previous"), nullptr, noKey, "Ctrl+Shift+Tab",
     QT_TRANSLATE_NOOP("Actions", "Go to the map or table before")},
    {Actions::Controls, QT_TRANSLATE_NOOP("Actions", "&Controls…"), nullptr, noKey, nullptr,
     QT_TRANSLATE_NOOP("Actions", "Show the library's controls at work")},
    {Actions::About, QT_TRANSLATE_NOOP("Actions", "&About Terravox"), "about", noKey, nullptr,
     QT_TRANSLATE_NOOP("Actions", "Show the version of the program")},
};
static_assert(std::size(table) == Actions::Count);

} // namespace

Actions::Actions(QObject *parent) : QObject(parent)
{
    const auto tr = [](const char *text) { return QCoreApplication::translate("Actions", text); };
    for (const Row &row : table) {
        auto *action = new QAction(tr(row.text), this);
        if (row.icon)
            action->setIcon(Icons::action(QLatin1String(row.icon)));
        if (row.standardKey != noKey)
            action->setShortcuts(row.standardKey);
        else if (row.key)
            action->setShortcut(QKeySequence(QLatin1String(row.key)));
        action->setStatusTip(tr(row.tip));
        const QString key = action->shortcut().toString(QKeySequence::NativeText);
        action->setToolTip(key.isEmpty() ? tr(row.tip) : QStringLiteral("%1 (%2)").arg(tr(row.tip), key));
        m_actions[static_cast<size_t>(row.id)] = action;
    }
    (*this)[SteppedColours]->setCheckable(true);
    (*this)[Exit]->setMenuRole(QAction::QuitRole);
    (*this)[About]->setMenuRole(QAction::AboutRole);
}

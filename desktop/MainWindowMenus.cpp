#include "MainWindow.h"

#include "AboutDialog.h"
#include "Actions.h"
#include "ControlsWindow.h"
#include "MissingDialog.h"
#include "RecentFiles.h"

#include <QDockWidget>
#include <QMenuBar>
#include <QToolBar>

// The menus and the toolbar of the main window: which command stands where.

namespace {

constexpr Actions::Id separator = Actions::Count;

void add(QWidget *to, const Actions &actions, std::initializer_list<Actions::Id> ids)
{
    for (const Actions::Id id : ids) {
        if (id != separator) {
            to->addAction(actions[id]);
            continue;
        }
        auto *line = new QAction(to);
        line->setSeparator(true);
        to->addAction(line);
    }
}

} // namespace

void MainWindow::makeMenus()
{
    const Actions &a = *m_actions;
    QMenu *file = menuBar()->addMenu(tr("&File"));
    add(file, a, {Actions::NewWorkspace, Actions::OpenWorkspace});
    m_recent->attach(file->addMenu(tr("Open &Recent")));
    add(file, a,
        {separator, Actions::OpenFiles, Actions::OpenFolder, Actions::OpenDatabase, Actions::MissingDataSources,
         separator, Actions::Save, Actions::SaveAs, separator, Actions::Exit});

    QMenu *dataMenu = menuBar()->addMenu(tr("&Data"));
    add(dataMenu, a,
        {Actions::AddToMap, Actions::AddToNewMap, Actions::ShowTable, Actions::ListTiles, separator,
         Actions::CopyDataset, Actions::Append, Actions::SmoothLines, Actions::ParallelLine, separator,
         Actions::CloseDataset, Actions::RefreshDataSource, Actions::CloseDataSource, separator, Actions::Rename,
         Actions::Delete, separator, Actions::Properties});

    QMenu *map = menuBar()->addMenu(tr("&Map"));
    add(map, a,
        {Actions::NewMap, Actions::OpenMap, separator, Actions::FitAll, Actions::ZoomIn, Actions::ZoomOut,
         Actions::RefreshMap, separator, Actions::LayerStyle});
    map->setToolTipsVisible(true); // why a command cannot be used

    QMenu *colour = menuBar()->addMenu(tr("&Colour"));
    colour->setToolTipsVisible(true); // why a command cannot be used
    add(colour, a,
        {Actions::StockRamp, Actions::EditColorSet, Actions::EditRamp, separator, Actions::LoadRampFile,
         Actions::SaveRampFile, separator, Actions::SteppedColours, Actions::ResetColours});

    m_viewMenu = menuBar()->addMenu(tr("&View"));
    add(m_viewMenu, a, {Actions::FindInTree, separator});

    QMenu *window = menuBar()->addMenu(tr("&Window"));
    add(window, a, {Actions::CloseWindow, separator, Actions::NextWindow, Actions::PreviousWindow});

    QMenu *help = menuBar()->addMenu(tr("&Help"));
    add(help, a, {Actions::Controls, separator, Actions::About});
}

void MainWindow::makeToolBar()
{
    QToolBar *bar = addToolBar(tr("Toolbar"));
    bar->setObjectName(QStringLiteral("ToolBar"));
    bar->setIconSize(QSize(20, 20));
    add(bar, *m_actions,
        {Actions::NewWorkspace, Actions::OpenWorkspace, Actions::Save, separator, Actions::OpenFiles,
         Actions::CloseDataSource, separator, Actions::NewMap, Actions::ShowTable, separator, Actions::FitAll,
         Actions::ZoomIn, Actions::ZoomOut, Actions::RefreshMap});

    // The docks' own actions show and hide them; their mnemonics are unique in the menu.
    struct Toggle
    {
        QAction *action;
        QString text;
        QString tip;
    };
    QList<Toggle> toggles;
    const auto dock = [this](const char *name) {
        return findChild<QDockWidget *>(QLatin1String(name))->toggleViewAction();
    };
    toggles << Toggle{dock("WorkspaceDock"), tr("&Workspace"), tr("Show or hide the workspace tree")}
            << Toggle{dock("LayerDock"), tr("&Layers"), tr("Show or hide the layers of the map")}
            << Toggle{dock("OutputDock"), tr("&Output"), tr("Show or hide the output pane")}
            << Toggle{bar->toggleViewAction(), tr("&Toolbar"), tr("Show or hide the toolbar")};
    for (const Toggle &toggle : toggles) {
        toggle.action->setText(toggle.text);
        toggle.action->setStatusTip(toggle.tip);
        m_viewMenu->addAction(toggle.action);
    }
}

void MainWindow::showMissing()
{
    MissingDialog(*m_document, m_prompts, this).exec();
}

void MainWindow::showControls()
{
    auto *window = findChild<ControlsWindow *>();
    if (!window)
        window = new ControlsWindow(this);
    window->show();
    window->raise();
    window->activateWindow();
}

void MainWindow::showAbout()
{
    AboutDialog(this).exec();
}

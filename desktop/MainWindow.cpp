#include "MainWindow.h"

#include "Actions.h"
#include "AttributeTable.h"
#include "ColourCommands.h"
#include "DataCommands.h"
#include "DocumentArea.h"
#include "DropContent.h"
#include "HostMessages.h"
#include "Icons.h"
#include "LayerCommands.h"
#include "LayerPane.h"
#include "MapStatus.h"
#include "MapWindow.h"
#include "OutputPane.h"
#include "Prompts.h"
#include "RecentFiles.h"
#include "WorkspaceCommands.h"
#include "WorkspaceDocument.h"
#include "WorkspacePane.h"
#include "basic/TdHostMessage.h"
#include "common/TdModule.h"
#include "engine/ui/TxWheelGuard.h"

#include <QCloseEvent>
#include <QDockWidget>
#include <QDragEnterEvent>
#include <QFileInfo>
#include <QMenu>
#include <QSettings>
#include <QStatusBar>

MainWindow::MainWindow(Prompts &prompts, CTdProfileFile &profile, QWidget *parent)
    : QMainWindow(parent), m_prompts(prompts), m_actions(new Actions(this)),
      m_document(new WorkspaceDocument(prompts, this)), m_pane(new WorkspacePane(*m_document, profile)),
      m_area(new DocumentArea(*m_document)), m_layers(new LayerPane), m_output(new OutputPane),
      m_recent(new RecentFiles(this)),
      m_commands(new WorkspaceCommands(*m_document, *m_pane, *m_area, *m_actions, prompts, this)),
      m_dataCommands(new DataCommands(*m_document, *m_pane, *m_area, *m_commands, *m_actions, prompts, this)),
      m_layerCommands(new LayerCommands(*m_document, *m_area, *m_layers, *m_actions, this)),
      m_colourCommands(new ColourCommands(*m_document, *m_area, *m_layers, *m_actions, prompts, this)),
      m_messages(new HostMessages(*m_document, *m_pane, *m_area, *m_commands, *m_output, this)),
      m_status(new MapStatus(statusBar()))
{
    TxWheelGuard::installEverywhere();
    setObjectName(QStringLiteral("MainWindow"));
    setWindowIcon(Icons::application());
    setAcceptDrops(true);
    setDockNestingEnabled(true);
    setCorner(Qt::BottomLeftCorner, Qt::LeftDockWidgetArea);
    setCentralWidget(m_area);
    resize(1280, 800);

    QDockWidget *workspace = addDock(QStringLiteral("WorkspaceDock"), tr("Workspace"), m_pane, Qt::LeftDockWidgetArea);
    QDockWidget *layers = addDock(QStringLiteral("LayerDock"), tr("Layers"), m_layers, Qt::LeftDockWidgetArea);
    QDockWidget *output = addDock(QStringLiteral("OutputDock"), tr("Output"), m_output, Qt::BottomDockWidgetArea);
    resizeDocks({workspace, layers}, {520, 180}, Qt::Vertical);
    resizeDocks({workspace}, {290}, Qt::Horizontal);
    resizeDocks({output}, {120}, Qt::Vertical);

    makeMenus();
    makeToolBar();
    connectCommands();
    connectViews();
    connectDocument();
    updateTitle();
    updateWindowActions();
    m_pane->setFocus();
    CTdModule::SetMainWnd(this);
}

MainWindow::~MainWindow()
{
    CTdModule::SetMainWnd(nullptr);
    // Windows hold records of the workspace, which goes before them as children go.
    m_document->disconnect();
    m_area->closeAll();
    m_pane->detach();
}

QDockWidget *MainWindow::addDock(const QString &name, const QString &title, QWidget *content, Qt::DockWidgetArea area)
{
    auto *dock = new QDockWidget(title, this);
    dock->setObjectName(name);
    dock->setWidget(content);
    addDockWidget(area, dock);
    return dock;
}

void MainWindow::connectCommands()
{
    const auto on = [this](Actions::Id id, auto &&command) {
        connect((*m_actions)[id], &QAction::triggered, this, command);
    };
    on(Actions::NewWorkspace, [this] { m_document->newWorkspace(); });
    on(Actions::OpenWorkspace, [this] {
        const QStringList chosen =
            m_prompts.openFiles(this, tr("Open Workspace"), QString(), WorkspaceDocument::workspaceFilters());
        if (!chosen.isEmpty())
            m_document->openWorkspace(chosen.first());
    });
    on(Actions::OpenFiles, [this] { askForFiles(); });
    on(Actions::OpenFolder, [this] { askForFolder(); });
    on(Actions::OpenDatabase, [this] { askForDatabase(); });
    on(Actions::MissingDataSources, [this] { showMissing(); });
    on(Actions::Save, [this] { m_document->save(); });
    on(Actions::SaveAs, [this] { m_document->saveAs(); });
    on(Actions::Exit, [this] { close(); });
    on(Actions::NewMap, [this] {
        if (const CTxMap *map = m_document->addMap(tr("Map")))
            m_area->showMap(map->GetName());
    });
    on(Actions::FitAll, [this] { m_area->fitAll(); });
    on(Actions::ZoomIn, [this] { m_area->zoom(2.0); });
    on(Actions::ZoomOut, [this] { m_area->zoom(0.5); });
    on(Actions::RefreshMap, [this] { m_area->refreshCurrent(); });
    on(Actions::FindInTree, [this] { m_pane->focusFilter(); });
    on(Actions::CloseWindow, [this] { m_area->closeCurrent(); });
    on(Actions::NextWindow, [this] { m_area->step(1); });
    on(Actions::PreviousWindow, [this] { m_area->step(-1); });
    on(Actions::Controls, [this] { showControls(); });
    on(Actions::About, [this] { showAbout(); });
    connect(m_recent, &RecentFiles::chosen, this, [this](const QString &file) {
        if (!m_document->openFile(file) && !RecentFiles::isConnection(file) && !QFileInfo::exists(file))
            m_recent->remove(file);
    });
}

void MainWindow::connectViews()
{
    connect(m_pane, &WorkspacePane::menuRequested, this, &MainWindow::showTreeMenu);
    connect(m_pane, &WorkspacePane::filesDropped, this, [this](const QStringList &files) { openFiles(files); });
    connect(m_area, &DocumentArea::filesDropped, this, [this](const QStringList &files) { openFiles(files); });
    connect(m_area, &DocumentArea::currentChanged, this, &MainWindow::updateWindowActions);
    connect(m_area, &DocumentArea::layersChanged, m_layers, &LayerPane::refresh);
    connect(m_area, &DocumentArea::datasetsOpened, this, [this] {
        m_pane->updateDatasets();
        m_commands->updateActions();
        m_layers->refresh(); // legends tell heights now
    });
    connect(m_layers, &LayerPane::changed, m_document, &WorkspaceDocument::touch);
    connect(m_layers, &LayerPane::tableWanted, m_commands, &WorkspaceCommands::showTable);
}

void MainWindow::connectDocument()
{
    connect(m_document, &WorkspaceDocument::changed, this, &MainWindow::updateTitle);
    connect(m_document, &WorkspaceDocument::used, m_recent, &RecentFiles::add);
    connect(m_document, &WorkspaceDocument::told, m_output, &OutputPane::print);
    connect(m_document, &WorkspaceDocument::failed, this, &MainWindow::fail);
    connect(m_document, &WorkspaceDocument::missingChanged, this, &MainWindow::updateWindowActions);
}

int MainWindow::openFiles(const QStringList &paths, bool ask)
{
    m_asks = ask;
    const int opened = m_document->openFiles(paths);
    m_asks = true;
    return opened;
}

void MainWindow::openAtStart(const QStringList &paths)
{
    openFiles(paths, false);
    const CTxMaps &maps = m_document->workspace().GetMaps();
    if (!m_area->current() && maps.GetCount() > 0)
        m_area->showMap(maps.GetAt(0)->GetName());
}

void MainWindow::fail(const QString &what, const QString &why)
{
    m_output->print(why.isEmpty() ? what : what + QLatin1Char(' ') + why);
    if (m_asks)
        m_prompts.warn(this, what, why);
}

void MainWindow::updateTitle()
{
    setWindowTitle(QStringLiteral("%1[*] — %2").arg(m_document->title(), tr("Terravox")));
    setWindowModified(m_document->isModified());
}

void MainWindow::updateWindowActions()
{
    MapWindow *view = qobject_cast<MapWindow *>(m_area->current());
    Actions &actions = *m_actions;
    actions[Actions::FitAll]->setEnabled(view);
    actions[Actions::ZoomIn]->setEnabled(view);
    actions[Actions::ZoomOut]->setEnabled(view);
    actions[Actions::RefreshMap]->setEnabled(m_area->current());
    actions[Actions::CloseWindow]->setEnabled(m_area->current());
    actions[Actions::NextWindow]->setEnabled(m_area->current());
    actions[Actions::PreviousWindow]->setEnabled(m_area->current());
    actions[Actions::MissingDataSources]->setEnabled(!m_document->workspace().GetMissingDataSources().isEmpty());
    m_status->setView(view);
    m_layers->setView(m_area->currentMap());
    updateTitle();
}

void MainWindow::askForFiles()
{
    openFiles(m_prompts.openFiles(this, tr("Open Datasource"), QString(), WorkspaceDocument::dataSourceFilters()));
}

void MainWindow::askForFolder()
{
    const QString folder = m_prompts.openFolder(this, tr("Open Folder as Datasource"));
    if (!folder.isEmpty())
        openFiles({folder});
}

void MainWindow::askForDatabase()
{
    const QString connection = m_prompts.connection(this);
    if (!connection.isEmpty())
        openFiles({connection});
}

void MainWindow::showTreeMenu(const QPoint &globalPosition)
{
    QMenu menu(this);
    m_commands->fillMenu(menu);
    menu.exec(globalPosition);
}

bool MainWindow::event(QEvent *event)
{
    CTdHostMessage *message = CTdHostMessage::from(event);
    return message ? m_messages->handle(*message) : QMainWindow::event(event);
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    if (!m_document->mayClose()) {
        event->ignore();
        return;
    }
    if (m_remembers) {
        QSettings settings;
        settings.setValue(QStringLiteral("geometry"), saveGeometry());
        settings.setValue(QStringLiteral("docks"), saveState());
    }
    event->accept();
}

void MainWindow::setRemembersLayout(bool on)
{
    m_remembers = on;
    if (!on)
        return;
    const QSettings settings;
    restoreGeometry(settings.value(QStringLiteral("geometry")).toByteArray());
    restoreState(settings.value(QStringLiteral("docks")).toByteArray());
}

void MainWindow::dragEnterEvent(QDragEnterEvent *event)
{
    if (!DropContent(*event->mimeData()).files.isEmpty())
        event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent *event)
{
    openFiles(DropContent(*event->mimeData()).files);
    event->acceptProposedAction();
}

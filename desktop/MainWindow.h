#pragma once

#include <QMainWindow>
#include <QStringList>

#include <memory>

class Actions;
class AttributeTable;
class ColourCommands;
class CTdProfileFile;
class DataCommands;
class DocumentArea;
class HostMessages;
class LayerCommands;
class LayerPane;
class MapStatus;
class OutputPane;
class Prompts;
class RecentFiles;
class WorkspaceCommands;
class WorkspaceDocument;
class WorkspacePane;

/// The program's main window: the workspace tree and the layers at the left, maps and attribute tables in the middle,
/// the output pane at the bottom. It is the host of the library's messages while it lives.
class MainWindow : public QMainWindow
{
    Q_OBJECT
public:
    /// @param prompts asks the user (not owned, outlives the window)
    /// @param profile the user's profile (not owned, outlives the window)
    MainWindow(Prompts &prompts, CTdProfileFile &profile, QWidget *parent = nullptr);
    ~MainWindow() override;

    /// Opens workspaces and datasources. What cannot be opened is told in the output pane and, with @p ask, in a
    /// message box. @return how many were opened.
    int openFiles(const QStringList &paths, bool ask = true);
    /// Opens what the program was started with, without a question, and shows the first map of its workspace: nobody
    /// who names a workspace wants to look at an empty window.
    void openAtStart(const QStringList &paths);
    /// Takes size, place and docks from the last run, and keeps them at the end of this one.
    void setRemembersLayout(bool on);

    WorkspaceDocument &document() const { return *m_document; }
    WorkspacePane &workspacePane() const { return *m_pane; }
    DocumentArea &documentArea() const { return *m_area; }
    LayerPane &layerPane() const { return *m_layers; }
    OutputPane &outputPane() const { return *m_output; }
    RecentFiles &recentFiles() const { return *m_recent; }
    Actions &actions() const { return *m_actions; }

protected:
    bool event(QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    QDockWidget *addDock(const QString &name, const QString &title, QWidget *content, Qt::DockWidgetArea area);
    void makeMenus();
    void makeToolBar();
    void connectCommands();
    void connectViews();
    void connectDocument();
    void updateTitle();
    void updateWindowActions();
    void fail(const QString &what, const QString &why);
    void askForFiles();
    void askForFolder();
    void askForDatabase();
    void showMissing();
    void showControls();
    void showAbout();
    void showTreeMenu(const QPoint &globalPosition);

    Prompts &m_prompts;
    Actions *m_actions;
    WorkspaceDocument *m_document;
    WorkspacePane *m_pane;
    DocumentArea *m_area;
    LayerPane *m_layers;
    OutputPane *m_output;
    RecentFiles *m_recent;
    WorkspaceCommands *m_commands;
    DataCommands *m_dataCommands;
    LayerCommands *m_layerCommands;
    ColourCommands *m_colourCommands;
    HostMessages *m_messages;
    MapStatus *m_status;
    QMenu *m_viewMenu = nullptr;
    bool m_remembers = false;
    bool m_asks = true; // failures show a message box
};

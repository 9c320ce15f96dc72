#pragma once

#include "engine/map/TxWorkspace.h"

#include <QHash>
#include <QObject>
#include <QString>
#include <QStringList>

#include <memory>

class CTxMap;
class Prompts;
class QWidget;

/// The workspace that the desktop shows, and everything that is done to it as a whole: the commands of the File menu,
/// without the menu.
///
/// Whoever shows parts of the workspace listens to its signals: what is about to go is announced before it goes, so
/// that every pointer into it can be dropped in time.
class WorkspaceDocument : public QObject
{
    Q_OBJECT
public:
    /// @param prompts asks the user (not owned, outlives this)
    /// @param window parent of the questions; may be null
    explicit WorkspaceDocument(Prompts &prompts, QWidget *window = nullptr);
    ~WorkspaceDocument() override;

    /// The workspace; another object after workspaceOpened().
    CTxWorkspace &workspace() const { return *m_workspace; }
    /// What to call the workspace in titles.
    QString title() const;
    /// True when there is something that saving would keep, other than what part of the plane the maps show.
    bool isModified() const;

    /// Asks what to do with unsaved changes, if there are any, and does it. @return false when the user wants to go on
    /// with the workspace as it is.
    bool mayClose();

    /// An empty workspace in place of this one, after mayClose().
    bool newWorkspace();
    /// The workspace of the file @p path in place of this one, after mayClose(). A file that cannot be read leaves the
    /// workspace as it was, and failed() tells why.
    bool openWorkspace(const QString &path);
    /// Saves to the workspace's file; asks for one where it has none.
    bool save();
    /// Asks for a file and saves to it.
    bool saveAs();
    bool saveAs(const QString &path);

    /// Opens @p path, a workspace file or anything that is a datasource (file, folder, connection string).
    bool openFile(const QString &path);
    /// Opens each of @p paths; what cannot be opened is told by failed(), and the others are opened. The workspace
    /// files among them come first. @return how many were opened.
    int openFiles(const QStringList &paths);
    /// Opens a datasource; one that was closed before gets the alias it had, so that its layers come back. @return
    /// null, and failed(), when it cannot be opened.
    CTxDataSource *openDataSource(const QString &path);
    /// Closes the datasource called @p alias; asks first when it has changes that are not committed.
    bool closeDataSource(const QString &alias);
    /// Gives a datasource another alias; map layers follow it.
    bool renameDataSource(const QString &alias, const QString &newAlias);
    /// Looks again what datasets a datasource has.
    bool refreshDataSource(const QString &alias);

    /// Opens a missing datasource, at @p path when that is not empty.
    bool locateMissing(const QString &alias, const QString &path);
    /// Takes a missing datasource out of the workspace.
    bool removeMissing(const QString &alias);

    /// Makes an empty map with a free name made from @p proposal.
    CTxMap *addMap(const QString &proposal);
    /// Removes the map called @p name.
    bool removeMap(const QString &name);
    /// Gives a map another name.
    bool renameMap(const QString &name, const QString &newName);

    /// Says that something in the workspace changed, for titles and save buttons.
    void touch() { Q_EMIT changed(); }

    /// Name filters of the file dialogs.
    static QStringList workspaceFilters();
    static QStringList dataSourceFilters();

Q_SIGNALS:
    /// The whole content is about to go.
    void workspaceClosing();
    /// workspace() is another one.
    void workspaceOpened();
    void dataSourceOpened(const QString &alias);
    /// The datasource is about to close: its datasets are dead after this.
    void dataSourceClosing(const QString &alias);
    void dataSourceClosed(const QString &alias);
    /// The datasource is about to be read anew: datasets that are gone are dead after this. dataSourceChanged()
    /// follows.
    void dataSourceRefreshing(const QString &alias);
    /// The datasource's list of datasets, or its alias, changed. @p oldAlias is what it was called before.
    void dataSourceChanged(const QString &alias, const QString &oldAlias);
    void mapAdded(const QString &name);
    void mapRemoving(const QString &name);
    void mapRemoved(const QString &name);
    void mapRenamed(const QString &name, const QString &newName);
    /// The list of missing datasources may have changed.
    void missingChanged();
    /// The title or isModified() may have changed.
    void changed();
    /// @p file was opened or saved: for the list of recent files.
    void used(const QString &file);
    /// Something failed: what, and why.
    void failed(const QString &what, const QString &why);
    /// Something worth a line in the output pane.
    void told(const QString &text);

private:
    void replaceWorkspace(std::unique_ptr<CTxWorkspace> workspace);
    void tellMissing();

    Prompts &m_prompts;
    QWidget *m_window; // not owned
    std::unique_ptr<CTxWorkspace> m_workspace;
    QHash<QString, QString> m_closed; // aliases of the datasources that were closed, by path
};

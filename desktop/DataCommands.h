#pragma once

#include "DatasetJobs.h"

#include <QList>
#include <QObject>

#include <functional>

class Actions;
class CDatasetVector;
class CTxDataset;
class CTxDataSource;
class DocumentArea;
class Prompts;
class QWidget;
class WorkspaceCommands;
class WorkspaceDocument;
class WorkspacePane;

/// The commands of the Data menu that make or change what is in datasets: copy, append, smooth, parallel line.
///
/// Each asks in a dialog of its own, works behind a progress window that can cancel, tells in the output pane what was
/// done, and brings maps and tables up to date.
class DataCommands : public QObject
{
    Q_OBJECT
public:
    DataCommands(WorkspaceDocument &document, WorkspacePane &pane, DocumentArea &area, WorkspaceCommands &commands,
                 Actions &actions, Prompts &prompts, QWidget *window);

    /// Enables the actions that fit the selection.
    void updateActions();

    void copyDataset();
    void append();
    void smoothLines();
    void makeParallelLines();

private:
    /// A job with what it is called in the progress window, and how its ends are told.
    struct Job
    {
        QString title;
        std::function<DatasetJobs::Result(const TxProgress &)> work;
        std::function<QString(qint64 count)> done;
        QString failed;
    };

    CTxDataset *selected() const;
    CDatasetVector *selectedLines() const;
    /// Runs @p job behind a progress window; windows do not read @p sources meanwhile. Tells how it ended.
    /// @return true when it was done
    bool run(const Job &job, const QList<CTxDataSource *> &sources);
    void showNew(const DatasetJobs::Place &place);

    WorkspaceDocument &m_document;
    WorkspacePane &m_pane;
    DocumentArea &m_area;
    WorkspaceCommands &m_commands;
    Actions &m_actions;
    Prompts &m_prompts;
    QWidget *m_window; // parent of dialogs, not owned
};

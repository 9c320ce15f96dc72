#pragma once

#include <QObject>

class CTdHostMessage;
class DocumentArea;
class OutputPane;
class WorkspaceCommands;
class WorkspaceDocument;
class WorkspacePane;

/// The main window's side of the host messages: the library tells what it does to datasets, and the windows that show
/// them let go in time.
class HostMessages : public QObject
{
    Q_OBJECT
public:
    HostMessages(WorkspaceDocument &document, WorkspacePane &pane, DocumentArea &area, WorkspaceCommands &commands,
                 OutputPane &output, QObject *parent);

    /// Handles @p message and writes the answer into it. @return false when it is none that the desktop knows.
    bool handle(CTdHostMessage &message);

private:
    void release(const CTdHostMessage &message);
    void answerRelease(CTdHostMessage &message);
    void afterClose(const CTdHostMessage &message);
    void afterDelete(const CTdHostMessage &message);

    WorkspaceDocument &m_document;
    WorkspacePane &m_pane;
    DocumentArea &m_area;
    WorkspaceCommands &m_commands;
    OutputPane &m_output;
};

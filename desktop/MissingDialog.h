#pragma once

#include <QDialog>

class Prompts;
class QPushButton;
class QTreeWidget;
class WorkspaceDocument;

/// Lists the datasources of the workspace that could not be opened, to locate them elsewhere, try them again or take
/// them out of the workspace.
class MissingDialog : public QDialog
{
    Q_OBJECT
public:
    MissingDialog(WorkspaceDocument &document, Prompts &prompts, QWidget *parent = nullptr);

    QTreeWidget *list() const { return m_list; }

private:
    void fill();
    void updateButtons();
    QString currentAlias() const;
    void locate();
    void retry();
    void remove();

    WorkspaceDocument &m_document;
    Prompts &m_prompts;
    QTreeWidget *m_list;
    QPushButton *m_locate;
    QPushButton *m_retry;
    QPushButton *m_remove;
};

#pragma once

#include <QFileDialog>

class QLabel;

/// The browser of folders: lists folders alone, makes new ones, and says below the list which one is selected.
class FolderDialog : public QFileDialog
{
    Q_OBJECT
public:
    /// @param initial the folder that is selected at first; where it is not there, the nearest one above it. Empty for
    /// the folder that was visited last.
    FolderDialog(QWidget *parent, const QString &initial, const QString &title);

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void select(const QString &folder);
    void showPath(const QString &path);
    void updateStatus();

    QLabel *m_status;
    QString m_path;
};

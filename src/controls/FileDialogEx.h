#pragma once

#include "common/TdCommonExport.h"

#include <QFileDialog>

class CTdProfileFile;
class FilePreview;

/// A dialog to open or save a file, with a preview of what is selected: pictures as thumbnails, data files with their
/// kind, size and extent. It begins in the folder where a file was last chosen for the same purpose.
///
/// A name without an extension is saved with the first extension of the filter that the user chose; with that of
/// setDefaultSuffix() where it is one of the filter's, or the filter names none.
class TDCOMMON_API CFileDialogEx : public QFileDialog
{
    Q_OBJECT

public:
    /// What DoModal() answers. Do not change the values.
    enum Result { IdOk = 1, IdCancel = 2 };

    /// @param open to open a file that exists; else to save one, which asks before a file is overwritten
    /// @param purpose whose folder is remembered ("Images", "Workspaces"); empty for none
    /// @param filter "caption|patterns|caption|patterns||", patterns with ";" between them; empty for all files
    /// @param profile remembers the folders; not owned, null for the user's own
    explicit CFileDialogEx(bool open, const QString &purpose = QString(), const QString &filter = QString(),
                           QWidget *parent = nullptr, CTdProfileFile *profile = nullptr);
    ~CFileDialogEx() override;

    /// Shows the dialog and waits. @return IdOk or IdCancel
    int DoModal();
    /// The path that was chosen last; empty when none was.
    QString GetPathName() const { return m_chosen.value(0); }
    /// All paths that were chosen, where the mode allows several.
    QStringList GetPathNames() const { return m_chosen; }

    /// Whether the preview shows; so at first.
    bool IsPreviewShown() const;
    void ShowPreview(bool shown);

    /// The folder where a file was last chosen for @p purpose; empty when there is none, or it is gone.
    static QString GetRememberedFolder(const QString &purpose, const CTdProfileFile &profile);

protected:
    void accept() override;
    void done(int result) override;

private:
    const QString m_purpose;
    CTdProfileFile *const m_profile; // not owned
    FilePreview *m_preview;
    QStringList m_chosen;
};

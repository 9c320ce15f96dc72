#pragma once

#include "common/TdCommonExport.h"

#include <QString>
#include <QStringList>

#include <optional>

class QWidget;

/// How the library asks for folders and files: this class shows dialogs of the library's own.
///
/// A host that has dialogs of its own, or a test that answers without one, derives from it and puts its object in
/// place. User-interface thread only.
class TDCOMMON_API CTdFileChooser
{
public:
    virtual ~CTdFileChooser();

    /// Lets the user choose a folder.
    /// @param owner parent of the dialog; null for none
    /// @param initial the folder that is selected at first; empty for the one that was visited last
    /// @return the folder, with "/" between its parts; nothing when the user cancels
    virtual std::optional<QString> ChooseFolder(QWidget *owner, const QString &initial, const QString &title);

    /// What to ask for when the user shall choose a file.
    struct FileRequest
    {
        QString title;            ///< of the dialog; empty for the platform's word
        QString initial;          ///< folder or file that is selected at first; empty for the current folder
        QString filter;           ///< "caption|patterns|caption|patterns||", patterns with ";" between them
        QString defaultExtension; ///< added to a name without one; with or without "*." before it; empty for none
        bool mustExist = true;    ///< opening: only a file that exists can be chosen
        bool askOverwrite = true; ///< saving: ask before a file that exists is chosen
    };
    /// Lets the user choose a file to open. @return its path; nothing when the user cancels
    virtual std::optional<QString> ChooseFileToOpen(QWidget *owner, const FileRequest &request);
    /// Lets the user choose a file to save to. @return its path; nothing when the user cancels
    virtual std::optional<QString> ChooseFileToSave(QWidget *owner, const FileRequest &request);

    /// The filters of "caption|patterns|…||" as Qt's dialog wants them: "caption (patterns)".
    static QStringList NameFilters(const QString &filter);

    /// The chooser that the library asks.
    static CTdFileChooser &GetCurrent();
    /// Puts @p chooser (not owned) in place; null for the library's own dialogs.
    static void SetCurrent(CTdFileChooser *chooser);
};

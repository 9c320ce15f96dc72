#pragma once

#include "common/TdCommonExport.h"

#include <QString>

#include <optional>

class QWidget;

/// How the library asks for folders: this class shows a dialog of the library's own.
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

    /// The chooser that the library asks.
    static CTdFileChooser &GetCurrent();
    /// Puts @p chooser (not owned) in place; null for the library's own dialogs.
    static void SetCurrent(CTdFileChooser *chooser);
};

#pragma once

#include "common/TdCommonExport.h"
#include "engine/base/TxColorRef.h"

#include <QString>

#include <optional>

class QWidget;

/// How the library asks for a colour: this class shows a dialog of Qt's.
///
/// A host that has a dialog of its own, or a test that answers without one, derives from it and puts its object in
/// place. User-interface thread only.
class TDCOMMON_API CTdColorChooser
{
public:
    virtual ~CTdColorChooser();

    /// Lets the user choose a colour, any.
    /// @param owner parent of the dialog; null for none
    /// @param initial the colour that is chosen at first
    /// @param title of the dialog; empty for the platform's word
    /// @return nothing when the user cancels
    virtual std::optional<COLORREF> ChooseColor(QWidget *owner, COLORREF initial, const QString &title);

    /// The chooser that the library asks.
    static CTdColorChooser &GetCurrent();
    /// Puts @p chooser (not owned) in place; null for the library's own dialog.
    static void SetCurrent(CTdColorChooser *chooser);
};

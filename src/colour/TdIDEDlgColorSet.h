#pragma once

#include "colour/RGBType.h"
#include "common/TdDialog.h"
#include "engine/symbol/TxColorsetEx.h"

#include <memory>

/// The dialog "Edit Colorset": a modal dialog in which the user edits an ordered list of colours for a range of
/// heights.
class TDCOMMON_API CTdIDEDlgColorSet : public CTdDialog
{
    Q_OBJECT

public:
    /// @param color what the picker shows at first
    explicit CTdIDEDlgColorSet(COLORREF color = 0, QWidget *parent = nullptr);
    ~CTdIDEDlgColorSet() override;

    /// Gives the dialog a colour set to begin with: its colours and its range. Call it before the dialog shows.
    void InitColorset(const CTxColorsetEx &colorset);
    /// Whether loading a file also takes the file's range, and all its colours whatever their value.
    void SetElevationMode(bool on);
    /// The edited colour set, after the dialog was closed with OK.
    const CTxColorsetEx &GetColorset() const;
    /// The picker's current colour.
    COLORREF GetColor() const;
};

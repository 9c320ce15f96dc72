#pragma once

#include "common/TdCommonExport.h"
#include "common/TdDialog.h"
#include "engine/base/TxColorRef.h"

#include <memory>

class CTxColorsetEx;

/// The dialog "Edit Colorset": a modal dialog in which the user edits an ordered list of colours for a range of
/// heights.
class TDCOMMON_API CTdIDEDlgColorSet : public CTdDialog
{
    Q_OBJECT

public:
    /// The number of the dialog's template, the one behind the colour ribbon editor's.
    static constexpr quint32 templateId = 10623;
    /// The numbers of its controls. Do not change the values.
    enum ControlId {
        AddButton = 39001,
        ApplyButton = 39002,
        AutoPanelButton = 39003,
        RandomButton = 39004,
        SpecificButton = 39005,
        DeleteButton = 39006,
        DeleteAllButton = 39007,
        LoadButton = 39008,
        InsertButton = 39009,
        SaveButton = 39010,
        InverseCheck = 39011,
        StockCombo = 39012,
        MaximumEdit = 39013,
        MinimumEdit = 39014,
        EndEdit = 39015,
        StartEdit = 39016,
        BrightnessEdit = 39017,
        HueEdit = 39018,
        SaturationEdit = 39019,
        BlueEdit = 39020,
        GreenEdit = 39021,
        RedEdit = 39022,
        ColorList = 39023,
        EndSpin = 39024,
        StartSpin = 39025,
        GlobalMaximumButton = 39097,
        GlobalMinimumButton = 39098,
    };

    /// @param color what the picker shows at first
    explicit CTdIDEDlgColorSet(COLORREF color = 0, QWidget *parent = nullptr);
    ~CTdIDEDlgColorSet() override;

    /// Gives the dialog a colour set to begin with: its colours and its range. Call it before the dialog shows.
    void InitColorset(const CTxColorsetEx &colorset);
    /// Whether loading a file also takes the file's range, and all its colours whatever their value. Off at first.
    void SetElevationMode(bool on);
    /// How many intervals the last file that was loaded in elevation mode says it has; 0 before.
    qint32 GetIntervalCount() const;
    /// The edited colour set, after the dialog was closed with OK; empty before.
    const CTxColorsetEx &GetColorset() const;
    /// The picker's current colour.
    COLORREF GetColor() const;

protected:
    bool OnInitDialog() override;
    /// Keeps the dialog open, with the bad end of the range selected, while the minimum is above the maximum or one of
    /// them is no finite number.
    void OnOK() override;

private:
    const std::unique_ptr<class TdIDEDlgColorSetPrivate> d;
};

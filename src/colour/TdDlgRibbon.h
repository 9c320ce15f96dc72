#pragma once

#include "colour/RibbonStop.h"
#include "common/TdDialog.h"

#include <QList>

#include <memory>

/// The colour ribbon editor: a modal dialog in which the user edits a ramp, as colour stops over a range of numbers. It
/// hands back a fixed number of colours sampled from the ramp. The last ramp stays in the temporary folder and comes
/// back the next time.
class TDCOMMON_API CTdDlgRibbon : public CTdDialog
{
    Q_OBJECT

public:
    /// The number of the dialog's template.
    static constexpr quint32 templateId = 10622;
    /// The numbers of its controls. Do not change the values.
    enum ControlId {
        RibbonFrame = 39100,
        MaximumEdit = 39101,
        MinimumEdit = 39102,
        ValueEdit = 39103,
        RedSlider = 39113,
        GreenSlider = 39114,
        BlueSlider = 39115,
        RedEdit = 39119,
        GreenEdit = 39120,
        BlueEdit = 39121,
        Swatch = 39122
    };

    /// One colour stop of the ramp.
    using CStopInfo = RibbonStop;

    explicit CTdDlgRibbon(QWidget *parent = nullptr);
    ~CTdDlgRibbon() override;

    /// Sets the upper end of the range, and the last stop's value with it. The ramp that was edited last, which
    /// comes back when the dialog opens, has a range of its own, and that replaces this one.
    void SetMaxValue(double value);
    /// Sets the lower end of the range, and the first stop's value with it; see SetMaxValue().
    void SetMinValue(double value);
    /// Sets how many colours to sample on OK; 0 for none. A count below, or beyond that of all colours there are
    /// (16,777,216), gives none either.
    void SetStopCount(int count);
    /// The sampled colours, from the lower end of the range to the upper, after the dialog was closed with OK.
    void GetColor(QList<COLORREF> &colors) const;

    /// Begins with @p stops (two or more, in order of their values, positions do not count) and with their range, in
    /// place of the last ramp from the temporary folder. An empty list takes that back.
    void SetStops(const QList<CStopInfo> &stops);
    /// The stops as they stand, in order; the first and the last tell the range.
    QList<CStopInfo> GetStops() const;
    /// @p count colours of the ramp as it stands, from the lower end of the range to the upper; none for a count of 0
    /// or less.
    QList<COLORREF> SampleColors(int count) const;

Q_SIGNALS:
    /// The user changed the ramp while the dialog is open; GetStops() tells how.
    void rampChanged();

protected:
    bool OnInitDialog() override;
    void OnOK() override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    const std::unique_ptr<class TdDlgRibbonPrivate> d;
};

#pragma once

#include "common/TdDialog.h"
#include "controls/TdStyle.h"
#include "engine/symbol/TxGeoStyle.h"

class CTdColorButton;
class CTxComboBoxGradientColors;
class QCheckBox;
class QDoubleSpinBox;
class QFormLayout;
class QLabel;
class QSpinBox;
class StyleGrid;

/// The dialog in which a line style, a fill or a point symbol is chosen: the styles of the library as a table of
/// samples, and beside it colours, sizes, angle and opacity with a larger sample of what comes out.
///
/// Only what the user changes is changed: values that the fields cannot show stay as they are.
class TDCOMMON_API CTdStyleDialog : public CTdDialog
{
    Q_OBJECT

public:
    static constexpr quint32 templateId = 10690;

    /// @param kind which part of the style is chosen; the others are kept
    /// @param style what it begins with
    CTdStyleDialog(TdStyle::Kind kind, const CTxGeoStyle &style, QWidget *parent = nullptr);
    ~CTdStyleDialog() override;

    /// The style as it is chosen now.
    const CTxGeoStyle &GetStyle() const { return m_style; }

Q_SIGNALS:
    /// The user has changed something: for a host that shows it before the dialog is closed.
    void styleChanged(const CTxGeoStyle &style);

private:
    void addColors(QFormLayout &form);
    void addRamp(QFormLayout &form);
    void addNumbers(QFormLayout &form);
    void addOpacity(QFormLayout &form);
    void setOpacity(int percent);
    void takeRamp();
    void noteChange();
    void showStyle();

    const TdStyle::Kind m_kind;
    CTxGeoStyle m_style;
    StyleGrid *m_grid;
    QWidget *m_sample;
    QLabel *m_name;
    QList<CTdColorButton *> m_colors; ///< as in the table of colours
    QDoubleSpinBox *m_size = nullptr;
    QDoubleSpinBox *m_angle = nullptr;
    QSpinBox *m_opacity = nullptr;
    QCheckBox *m_hasRamp = nullptr;
    CTxComboBoxGradientColors *m_ramp = nullptr;
};

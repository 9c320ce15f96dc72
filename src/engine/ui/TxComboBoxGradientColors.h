#pragma once

#include "engine/base/TxExport.h"

#include <QComboBox>

/// A list of the stock colour ramps, each shown as a picture with its name; typing searches the names.
class TX_EXPORT CTxComboBoxGradientColors : public QComboBox
{
    Q_OBJECT

public:
    explicit CTxComboBoxGradientColors(QWidget *parent = nullptr);
    ~CTxComboBoxGradientColors() override;

    /// Fills the list: item i is stock ramp i (see CTxColorFolder::MakeStockGradient), and the last item, "Custom…",
    /// stands for a ramp of the user's own, which whoever owns the list asks for. Nothing is selected, no signal is
    /// emitted.
    void InitContent();
};

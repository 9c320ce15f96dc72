#pragma once

#include "engine/symbol/TxColorsetEx.h"

#include <QDialog>

#include <optional>
#include <utility>

class CTxComboBoxGradientColors;
class QCheckBox;
class QDialogButtonBox;
class QLabel;
class QLineEdit;
class QSpinBox;

/// Asks for a stock colour ramp and the range of heights that it is laid over.
class StockRampDialog : public QDialog
{
    Q_OBJECT
public:
    /// @param layerName what is to be coloured
    /// @param shown the colours that it has now; their range is shown at first
    /// @param heights lowest and highest height of the data, nothing when not known
    StockRampDialog(const QString &layerName, const CTxColorsetEx &shown,
                    const std::optional<std::pair<double, double>> &heights, QWidget *parent = nullptr);

    /// The colours that are chosen; empty while none are, or the range is none.
    CTxColorsetEx colors() const;
    /// Whether each colour fills a step of its own.
    bool isStepped() const;
    /// The user wants to make a ramp of their own, in place of the stock ramps.
    bool wantsCustom() const;

Q_SIGNALS:
    /// colors() or isStepped() may have changed.
    void changed();

private:
    void makeLayout(const QString &layerName);
    void showRange(double floor, double ceiling);
    void updateState();

    const std::optional<std::pair<double, double>> m_heights;
    CTxComboBoxGradientColors *m_ramp;
    QCheckBox *m_reverse;
    QCheckBox *m_seaLevel;
    QLineEdit *m_floor;
    QLineEdit *m_ceiling;
    QCheckBox *m_stepped;
    QSpinBox *m_steps;
    QLabel *m_problem;
    QDialogButtonBox *m_buttons;
    QString m_okText;
};

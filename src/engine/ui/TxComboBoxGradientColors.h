#pragma once

#include "engine/base/TxExport.h"

#include <QComboBox>

#include <memory>
#include <optional>

class TypedSearch;

/// A list of the stock colour ramps, each shown as a picture with its name. Typing, in the list or in the closed field,
/// goes to the next name that begins with what was typed, or else has it anywhere. The wheel changes nothing unless the
/// control has the focus.
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

    /// The style of the selected stock ramp, -1 when none or "Custom…" is selected.
    qint32 GetStockGradient() const;
    /// Whether "Custom…" is selected.
    bool IsCustom() const;

    void showPopup() override;
    bool eventFilter(QObject *watched, QEvent *event) override;

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void fitPictures();
    void setTexts();
    /// The item that typing leads to: -1 when none, and no value when @p event is no typing.
    std::optional<int> typedItem(const QKeyEvent &event, int current);

    const std::unique_ptr<TypedSearch> m_search;
};

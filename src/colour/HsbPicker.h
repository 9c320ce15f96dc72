#pragma once

#include "colour/HSVType.h"
#include "common/TdCommonExport.h"

#include <QWidget>

class ChannelBar;
class HueSaturationCircle;

/// Picks a colour by hue, saturation and brightness: a circle whose angle is the hue and whose radius the saturation,
/// and a bar of brightness beside it. Mouse and keyboard.
class TDCOMMON_API HsbPicker : public QWidget
{
    Q_OBJECT

public:
    explicit HsbPicker(QWidget *parent = nullptr);
    ~HsbPicker() override;

    const HSVType &color() const { return m_color; }
    /// Shows @p color; parts out of range become the nearest. Emits nothing. The marker does not move when the colour
    /// is what the user just picked.
    void setColor(const HSVType &color);

Q_SIGNALS:
    /// The user picked another colour.
    void colorPicked(const HSVType &color);

protected:
    void changeEvent(QEvent *event) override;

private:
    void pick(const HSVType &color);
    void showColor();
    void setTexts();

    HSVType m_color;
    HueSaturationCircle *m_circle; ///< a child
    ChannelBar *m_brightness;      ///< a child
};

#pragma once

#include "colour/HSVType.h"
#include "common/TdCommonExport.h"

#include <QWidget>

/// Picks a colour by hue, saturation and brightness: a circle whose angle is the hue and whose radius the saturation,
/// and a bar of brightness beside it. Mouse and keyboard.
class TDCOMMON_API HsbPicker : public QWidget
{
    Q_OBJECT

public:
    explicit HsbPicker(QWidget *parent = nullptr);
    ~HsbPicker() override;

    const HSVType &color() const { return m_color; }
    /// Shows @p color; parts out of range become the nearest. Emits nothing.
    void setColor(const HSVType &color);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    /// The user picked another colour.
    void colorPicked(const HSVType &color);

private:
    HSVType m_color;
};

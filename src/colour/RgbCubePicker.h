#pragma once

#include "colour/RGBType.h"
#include "common/TdCommonExport.h"

#include <QWidget>

/// Picks a colour on the RGB cube: its three outer faces in perspective show the colours with one part fixed, and the
/// user slides the faces and picks on them. Mouse and keyboard.
class TDCOMMON_API RgbCubePicker : public QWidget
{
    Q_OBJECT

public:
    explicit RgbCubePicker(QWidget *parent = nullptr);
    ~RgbCubePicker() override;

    const RGBType &color() const { return m_color; }
    /// Shows @p color; parts out of range become the nearest. Emits nothing.
    void setColor(const RGBType &color);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    /// The user picked another colour.
    void colorPicked(const RGBType &color);

private:
    RGBType m_color;
};

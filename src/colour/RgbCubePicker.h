#pragma once

#include "colour/RGBType.h"
#include "common/TdCommonExport.h"

#include <QWidget>

#include <array>

class ChannelBar;
class RgbCubeView;

/// Picks a colour on the RGB cube: the cube is cut open at the current colour, which is the innermost corner of the
/// cut; the user picks on what shows of it, or slides the three planes of the cut by the bars of red, green and blue.
/// Mouse and keyboard.
class TDCOMMON_API RgbCubePicker : public QWidget
{
    Q_OBJECT

public:
    explicit RgbCubePicker(QWidget *parent = nullptr);
    ~RgbCubePicker() override;

    const RGBType &color() const { return m_color; }
    /// Shows @p color; parts out of range become the nearest. Emits nothing.
    void setColor(const RGBType &color);

Q_SIGNALS:
    /// The user picked another colour.
    void colorPicked(const RGBType &color);

protected:
    void changeEvent(QEvent *event) override;

private:
    void pick(const RGBType &color);
    void showColor();
    void setTexts();

    RGBType m_color;
    RgbCubeView *m_cube;                ///< a child
    std::array<ChannelBar *, 3> m_bars; ///< children: red, green, blue
};

#pragma once

#include "colour/RibbonStops.h"

#include <QAbstractSlider>

/// A slider for red, green or blue, 0 to 255, that is moved by its triangle. A click beside the triangle moves nothing.
/// Disabled, it shows no triangle. isSliderDown() tells that the user drags.
class ChannelSliderWidget : public QAbstractSlider
{
    Q_OBJECT

public:
    explicit ChannelSliderWidget(QWidget *parent = nullptr);

    RibbonStops::Target channel() const { return m_channel; }
    void setChannel(RibbonStops::Target channel);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    /// The slider itself; around it is room for the triangle.
    QRect frame() const { return rect().adjusted(5, 4, -5, -4); }

    RibbonStops::Target m_channel = RibbonStops::Target::Red;
};

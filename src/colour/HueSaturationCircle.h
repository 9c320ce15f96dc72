#pragma once

#include "colour/HSVType.h"
#include "colour/HueSaturationDisc.h"
#include "common/TdCommonExport.h"

#include <QImage>
#include <QWidget>

/// The disc of hues and saturations at the brightness of its colour. Left and Right turn the hue by a degree, Up and
/// Down change the saturation by 1, with Shift or Control by 10 and 16; Page Up, Page Down, Home and End go out and in.
class TDCOMMON_API HueSaturationCircle : public QWidget
{
    Q_OBJECT

public:
    explicit HueSaturationCircle(QWidget *parent = nullptr);

    /// Shows @p color, which must be in range. The marker stays on the very place the user picked as long as that
    /// rounds to the colour shown.
    void setColor(const HSVType &color);
    const HSVType &color() const { return m_color; }

    /// Where the disc stands, and where its marker.
    HueSaturationDisc disc() const;
    QPointF markerPoint() const { return disc().pointOf(m_place); }

    QSize sizeHint() const override { return {200, 200}; }
    QSize minimumSizeHint() const override { return {80, 80}; }

Q_SIGNALS:
    /// The user picked another hue or saturation.
    void picked(const HSVType &color);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void pick(HueSaturation place);
    void setTexts();
    const QImage &dimmedPicture();

    HSVType m_color;
    HueSaturation m_place;  ///< of the marker, rounds to m_color
    double m_lastHue = 0.0; ///< the hue to return to from grey, which has none
    bool m_dragging = false;
    QImage m_picture; ///< at full brightness, for the size and screen scale it has
    QImage m_dimmed;  ///< the same at m_dimmedValue
    int m_dimmedValue = -1;
};

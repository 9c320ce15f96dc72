#pragma once

#include "colour/RGBType.h"
#include "colour/RgbCubeProjection.h"
#include "common/TdCommonExport.h"

#include <QImage>
#include <QWidget>

/// The cube of colours, cut open at its colour. A press picks what shows there, a drag stays on the face where it
/// began, the wheel slides the face under the mouse while the cube has the focus. Right and Left change red, Up and Down green, Page Up and Page
/// Down blue, by 1, with Shift or Control by 16; Home is black, End white.
class TDCOMMON_API RgbCubeView : public QWidget
{
    Q_OBJECT

public:
    explicit RgbCubeView(QWidget *parent = nullptr);

    /// Shows @p color, which must be in range.
    void setColor(const RGBType &color);
    const RGBType &color() const { return m_color; }

    /// Where the cube stands.
    RgbCubeProjection cube() const;

    QSize sizeHint() const override { return {200, 200}; }
    QSize minimumSizeHint() const override { return {80, 80}; }

Q_SIGNALS:
    /// The user picked another colour.
    void picked(const RGBType &color);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void pick(const RGBType &color);
    void step(int channel, int amount);
    void setTexts();
    void drawEdges(QPainter &painter) const;
    void drawLetters(QPainter &painter) const;
    const QImage &cutPicture();

    RGBType m_color;
    RgbCubeProjection::Hit m_face; ///< where the drag began
    bool m_dragging = false;
    int m_wheelRest = 0; ///< eighths of degrees that did not make a step yet
    QImage m_outer;      ///< the uncut cube, for the size and screen scale it has
    QImage m_picture;    ///< cut at m_color
};

#pragma once

#include "common/TdCommonExport.h"

#include <QAbstractSlider>
#include <QColor>

/// An upright bar for one part of a colour, 0 at the bottom to 255 at the top, painted with the colours that each
/// place gives. Arrows move by 1, with Shift or Control or by page by 16, Home and End to the ends.
class TDCOMMON_API ChannelBar : public QAbstractSlider
{
    Q_OBJECT

public:
    explicit ChannelBar(QWidget *parent = nullptr);

    /// The colours at the bottom and the top; between them it is linear.
    void setEnds(const QColor &bottom, const QColor &top);

    /// Where a value stands, and the value nearest to a height; above and below the bar its ends.
    double yOf(int value) const;
    int valueAt(double y) const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    QRectF bar() const;

    QColor m_bottom = Qt::black;
    QColor m_top = Qt::white;
};

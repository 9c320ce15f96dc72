#pragma once

#include "common/TdCommonExport.h"

#include <QAbstractButton>

/// A small flat button with a triangle that points down, up, left or right: it opens what hangs on the control beside
/// it.
class TDCOMMON_API CTdTriangleButton : public QAbstractButton
{
    Q_OBJECT
    Q_PROPERTY(Qt::ArrowType direction READ GetDirection WRITE SetDirection)

public:
    explicit CTdTriangleButton(QWidget *parent = nullptr);
    ~CTdTriangleButton() override;

    /// Where the triangle points; down at first.
    Qt::ArrowType GetDirection() const { return m_direction; }
    void SetDirection(Qt::ArrowType direction);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    Qt::ArrowType m_direction = Qt::DownArrow;
};

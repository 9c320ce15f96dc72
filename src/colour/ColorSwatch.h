#pragma once

#include "engine/base/TxColorRef.h"

#include <QAbstractButton>

#include <optional>

/// A button that shows a colour, or that there is none; Space, Enter and a click push it.
class ColorSwatch : public QAbstractButton
{
    Q_OBJECT

public:
    explicit ColorSwatch(QWidget *parent = nullptr);

    /// Shows @p color. Without one the swatch is empty.
    void setColor(std::optional<COLORREF> color);
    std::optional<COLORREF> color() const { return m_color; }

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    std::optional<COLORREF> m_color;
};

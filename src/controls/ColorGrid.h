#pragma once

#include "engine/base/TxColorRef.h"

#include <QList>
#include <QWidget>

#include <optional>

/// A table of colours to choose one from, by mouse or with the arrow keys, Enter and Space.
class ColorGrid : public QWidget
{
    Q_OBJECT

public:
    explicit ColorGrid(const QList<COLORREF> &colors, int columns, QWidget *parent = nullptr);

    /// Moves the cursor to the first cell with this colour; to no cell where there is none.
    void setCurrentColor(std::optional<COLORREF> color);
    /// The cell under the cursor; -1 for none.
    int currentCell() const { return m_current; }
    /// Where the cell is drawn.
    QRect cellRect(int cell) const;

    QSize sizeHint() const override;

Q_SIGNALS:
    void chosen(COLORREF color);

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    int cellAt(const QPoint &point) const;
    int cellSide() const;
    void setCurrentCell(int cell);
    void choose(int cell);

    const QList<COLORREF> m_colors;
    const int m_columns;
    int m_current = -1;
};

#pragma once

#include "common/TdCommonExport.h"
#include "controls/TdListCtrl.h"

#include <QBasicTimer>

/// A report list whose rows the user puts into another order, by drag or by keyboard.
///
/// A drag takes all selected rows; a mark shows where they will stand, the list scrolls under a drag at its edge, and
/// Escape gives the drag up, as does any change of the rows meanwhile. Alt+Up, Alt+Down, Alt+Home and Alt+End move the
/// selected rows one row on, or to an end. Rows that did not stand together do afterwards, in the order they had.
/// Selection and current row go with the rows.
///
/// A place is named by the row, as they stand before the move, in front of which the rows come to stand; the number of
/// rows names the end.
class TDCOMMON_API CTdDragListCtrl : public CTdListCtrl
{
    Q_OBJECT

public:
    explicit CTdDragListCtrl(QWidget *parent = nullptr);
    ~CTdDragListCtrl() override;

    /// Moves rows for the program: neither asks CanMove() nor emits rowsMoved(). @return false, and nothing changes,
    /// when a row or the place is out of range or the rows stand there already.
    bool MoveItems(const QList<int> &from, int to);
    /// Whether the user is dragging rows.
    bool IsDragging() const { return m_drag == Drag::Running; }
    /// Where dragged rows would stand if they were dropped now, -1 for nowhere.
    int GetInsertMark() const { return m_mark; }

Q_SIGNALS:
    /// The user moved the rows @p from (ascending, as they stood before) to the place @p to: one notification a move.
    void rowsMoved(const QList<int> &from, int to);

protected:
    /// Whether the user may move the rows @p from (ascending) to the place @p to; true here. Asked while the mouse
    /// moves and again before the move.
    virtual bool CanMove(const QList<int> &from, int to) const;

    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void timerEvent(QTimerEvent *event) override;

private:
    enum class Drag {
        None,
        Armed,   ///< pressed on a selected row, not moved far enough yet
        Running, ///< the insert mark follows the mouse
        Spent    ///< given up while the button is still down
    };

    void startDrag();
    void stopDrag(Drag next);
    void followMouse();
    void moveForUser(const QList<int> &from, int to);
    int placeAt(int y) const;

    Drag m_drag = Drag::None;
    QPoint m_mouse;       ///< in the viewport; where it was pressed while armed
    QList<int> m_dragged; ///< the rows, ascending
    int m_mark = -1;
    QBasicTimer m_scrollTimer;
};

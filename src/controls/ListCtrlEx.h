#pragma once

#include "common/TdCommonExport.h"
#include "controls/CellEditor.h"
#include "controls/TdListCtrl.h"

class CellDelegate;

/// A report list that is edited in place: a column as text, by choice or by check box, with a validator a column.
///
/// F2, Enter, a double click or typing opens the editor of the current cell. Enter keeps the entry, Tab keeps it and
/// goes on to the next cell that opens an editor (Shift+Tab back), Up and Down keep it and go to the next row, Escape
/// gives it up, and so does the loss of its cell, hidden or removed; a click elsewhere keeps it. An entry that the
/// validator refuses stays in the open editor, with the message, until it is corrected or given up. Check boxes are
/// toggled by a click or Space and are not judged. A click on a header sorts (see CTdListCtrl::SortItems()).
class TDCOMMON_API CListCtrlEx : public CTdListCtrl
{
    Q_OBJECT

public:
    explicit CListCtrlEx(QWidget *parent = nullptr);
    ~CListCtrlEx() override;

    /// Says how the cells of a column are edited; the choices are those of CellEditor::Choice.
    bool SetColumnEditor(int column, CellEditor::Kind kind, const QStringList &choices = {});
    CellEditor::Kind GetColumnEditor(int column) const;
    /// Has entries of a column judged; an empty function takes all.
    bool SetColumnValidator(int column, const CellEditor::Validator &validator);
    /// Lets only what @p validator takes be typed in a text column; null takes all. It is not owned.
    bool SetColumnValidator(int column, const QValidator *validator);

    /// Opens the editor of a cell. @return false when the cell cannot be edited, or has a check box, or another cell's
    /// entry is refused.
    bool EditItem(int row, int column);
    /// Whether an editor is open.
    bool IsEditing() const;
    /// Closes the open editor, if any, and keeps its entry. Dialogs call it before they take the rows.
    /// @return false when the entry is refused: the editor stays open and shows the message.
    bool EndEdit();
    /// Closes the open editor, if any, and gives its entry up.
    void CancelEdit();

protected:
    bool edit(const QModelIndex &index, EditTrigger trigger, QEvent *event) override;
    void closeEditor(QWidget *editor, QAbstractItemDelegate::EndEditHint hint) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void updateEditorGeometries() override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool endEditOrStay();
    QModelIndex nextCell(const QModelIndex &from, int step) const;

    CellDelegate *const m_delegate; // the list's
    bool m_dropsDownOnRelease = false;
};

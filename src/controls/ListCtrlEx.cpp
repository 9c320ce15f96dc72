#include "controls/ListCtrlEx.h"

#include "controls/CellDelegate.h"
#include "controls/ReportModel.h"

#include <QComboBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPointer>

#include <algorithm>
#include <iterator>
#include <utility>

CListCtrlEx::CListCtrlEx(QWidget *parent)
    : CTdListCtrl(parent), m_delegate(qobject_cast<CellDelegate *>(itemDelegate()))
{
    setEditTriggers(DoubleClicked | EditKeyPressed | AnyKeyPressed);
    SetSortable(true);
    header()->viewport()->installEventFilter(this);
}

CListCtrlEx::~CListCtrlEx() = default;

bool CListCtrlEx::SetColumnEditor(int column, CellEditor::Kind kind, const QStringList &choices)
{
    if (IsEditing() && m_delegate->editedCell().column() == column)
        CancelEdit(); // it would be the wrong editor
    return reportModel()->changeColumn(column, [&](ReportModel::Column &settings) {
        settings.editor.kind = kind;
        settings.editor.choices = choices;
    });
}

CellEditor::Kind CListCtrlEx::GetColumnEditor(int column) const
{
    const ReportModel::Column *settings = reportModel()->column(column);
    return settings ? settings->editor.kind : CellEditor::None;
}

bool CListCtrlEx::SetColumnValidator(int column, const CellEditor::Validator &validator)
{
    return reportModel()->changeColumn(column,
                                       [&](ReportModel::Column &settings) { settings.editor.validator = validator; });
}

bool CListCtrlEx::SetColumnValidator(int column, const QValidator *validator)
{
    return reportModel()->changeColumn(column,
                                       [&](ReportModel::Column &settings) { settings.editor.typed = validator; });
}

bool CListCtrlEx::EditItem(int row, int column)
{
    const QPointer<CListCtrlEx> alive(this);
    if (!reportModel()->cell(row, column) || !EndEdit() || !alive)
        return false;
    SetCurItem(row, column);
    return edit(currentIndex(), AllEditTriggers, nullptr);
}

bool CListCtrlEx::IsEditing() const
{
    return m_delegate->editedCell().isValid();
}

bool CListCtrlEx::EndEdit()
{
    const QPointer<CListCtrlEx> alive(this);
    if (IsEditing())
        closeEditor(m_delegate->editor(), QAbstractItemDelegate::NoHint);
    return !alive || !IsEditing();
}

void CListCtrlEx::CancelEdit()
{
    if (IsEditing())
        closeEditor(m_delegate->editor(), QAbstractItemDelegate::RevertModelCache);
}

bool CListCtrlEx::edit(const QModelIndex &index, EditTrigger trigger, QEvent *event)
{
    // Asked for every new current cell too, in the middle of the removal of rows.
    const bool opens = trigger == AllEditTriggers || editTriggers().testFlag(trigger);
    if (opens && (isColumnHidden(index.column()) || isRowHidden(index.row(), {})))
        return false;
    const QPersistentModelIndex cell(index); // ending another edit may change the rows
    const QPointer<CListCtrlEx> alive(this);
    if (opens && IsEditing() && m_delegate->editedCell() != index && (!EndEdit() || !alive || !cell.isValid()))
        return false;
    if (!CTdListCtrl::edit(cell, trigger, event))
        return false;
    m_dropsDownOnRelease = trigger == DoubleClicked;
    return true;
}

/// Every way out of an editor comes through here.
void CListCtrlEx::closeEditor(QWidget *editor, QAbstractItemDelegate::EndEditHint hint)
{
    if (!editor || editor != m_delegate->editor() || !IsEditing())
        return;
    const QPointer<CListCtrlEx> alive(this);
    if (hint != QAbstractItemDelegate::RevertModelCache && (!m_delegate->settle() || !alive))
        return;
    const QPersistentModelIndex cell = m_delegate->editedCell();
    if (!cell.isValid() || editor != m_delegate->editor())
        return;           // the list was changed under the editor, and has taken it away
    m_delegate->forget(); // before the focus comes back to the list
    CTdListCtrl::closeEditor(editor, QAbstractItemDelegate::NoHint);
    const int step = hint == QAbstractItemDelegate::EditNextItem       ? 1
                     : hint == QAbstractItemDelegate::EditPreviousItem ? -1
                                                                       : 0;
    const QModelIndex next = step && cell.isValid() ? nextCell(cell, step) : QModelIndex();
    if (next.isValid()) {
        SetCurItem(next.row(), next.column());
        edit(next, AllEditTriggers, nullptr);
    }
}

/// The next cell that opens an editor, row by row; none behind the last and before the first.
QModelIndex CListCtrlEx::nextCell(const QModelIndex &from, int step) const
{
    const int columns = GetColumnCount();
    int visual = header()->visualIndex(from.column());
    int row = from.row();
    while (row >= 0 && row < GetItemCount()) {
        visual += step;
        if (visual < 0 || visual >= columns) {
            row += step;
            visual = step > 0 ? -1 : columns;
            continue;
        }
        const int column = header()->logicalIndex(visual);
        const QModelIndex cell = reportModel()->index(row, column);
        if (cell.flags() & Qt::ItemIsEditable && !isColumnHidden(column) && !isRowHidden(row, {}))
            return cell;
    }
    return {};
}

void CListCtrlEx::keyPressEvent(QKeyEvent *event)
{
    if (IsEditing()) {
        // What the editor leaves over comes here too: only the keys that go up and down mean the list.
        constexpr int leaving[] = {Qt::Key_Up, Qt::Key_Down, Qt::Key_PageUp, Qt::Key_PageDown};
        const bool leaves = std::find(std::begin(leaving), std::end(leaving), event->key()) != std::end(leaving);
        if ((m_delegate->editor()->hasFocus() || isHandling()) && !leaves) {
            event->ignore();
            return;
        }
        if (!endEditOrStay()) // before the base class looks at its rows, which a validator may change
            return;
    }
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isEnter && currentIndex().isValid() && edit(currentIndex(), EditKeyPressed, event))
        event->accept();
    else
        CTdListCtrl::keyPressEvent(event);
}

/// EndEdit() for a click elsewhere: an editor that has to stay keeps the keyboard. @return false when it stays, and
/// when the list is no more.
bool CListCtrlEx::endEditOrStay()
{
    const QPointer<CListCtrlEx> alive(this);
    const bool isEnded = EndEdit();
    if (alive && !isEnded)
        m_delegate->editor()->setFocus();
    return alive && isEnded;
}

void CListCtrlEx::mousePressEvent(QMouseEvent *event)
{
    if (endEditOrStay())
        CTdListCtrl::mousePressEvent(event);
}

void CListCtrlEx::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (endEditOrStay())
        CTdListCtrl::mouseDoubleClickEvent(event);
}

/// Clicks on the header do not take the focus from an editor, but sort the rows under it.
bool CListCtrlEx::eventFilter(QObject *watched, QEvent *event)
{
    const bool isPress = event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonDblClick;
    if (isPress && watched == header()->viewport() && !endEditOrStay())
        return true;
    return CTdListCtrl::eventFilter(watched, event);
}

void CListCtrlEx::updateEditorGeometries()
{
    // An editor that has no place would be hidden, and by that lose the focus and settle its entry, in the middle of a
    // change of the rows and columns.
    if (const QModelIndex cell = m_delegate->editedCell(); cell.isValid() && !visualRect(cell).isValid()) {
        if (!isColumnHidden(cell.column()) && !isRowHidden(cell.row(), {}))
            return; // the new layout, which shows the cell again, is still to come
        CancelEdit();
    }
    CTdListCtrl::updateEditorGeometries();
}

void CListCtrlEx::mouseReleaseEvent(QMouseEvent *event)
{
    CTdListCtrl::mouseReleaseEvent(event);
    m_delegate->showMessage(); // of an entry that the press could not end
    // Not at the double click itself: its release would choose from the list that has just come up under the mouse.
    if (std::exchange(m_dropsDownOnRelease, false) && IsEditing()) {
        if (auto *choice = qobject_cast<QComboBox *>(m_delegate->editor()))
            choice->showPopup();
    }
}

void CListCtrlEx::focusInEvent(QFocusEvent *event)
{
    CTdListCtrl::focusInEvent(event);
    if (IsEditing()) // an entry that was refused still waits
        m_delegate->editor()->setFocus(event->reason());
}

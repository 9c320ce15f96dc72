#include "controls/ListCtrlEx.h"

#include "controls/CellDelegate.h"
#include "controls/ReportModel.h"

#include <QComboBox>
#include <QHeaderView>
#include <QKeyEvent>

CListCtrlEx::CListCtrlEx(QWidget *parent)
    : CTdListCtrl(parent), m_delegate(qobject_cast<CellDelegate *>(itemDelegate()))
{
    setEditTriggers(DoubleClicked | EditKeyPressed | AnyKeyPressed);
    SetSortable(true);
}

CListCtrlEx::~CListCtrlEx() = default;

bool CListCtrlEx::SetColumnEditor(int column, CellEditor::Kind kind, const QStringList &choices)
{
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
    if (!reportModel()->cell(row, column) || !EndEdit())
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
    if (IsEditing())
        closeEditor(m_delegate->editor(), QAbstractItemDelegate::NoHint);
    return !IsEditing();
}

void CListCtrlEx::CancelEdit()
{
    if (IsEditing())
        closeEditor(m_delegate->editor(), QAbstractItemDelegate::RevertModelCache);
}

bool CListCtrlEx::edit(const QModelIndex &index, EditTrigger trigger, QEvent *event)
{
    if (IsEditing() && m_delegate->editedCell() != index && !EndEdit())
        return false;
    if (!CTdListCtrl::edit(index, trigger, event))
        return false;
    m_dropsDownOnRelease = trigger == DoubleClicked;
    return true;
}

/// Every way out of an editor comes through here.
void CListCtrlEx::closeEditor(QWidget *editor, QAbstractItemDelegate::EndEditHint hint)
{
    if (!editor || editor != m_delegate->editor() || !IsEditing())
        return;
    if (hint != QAbstractItemDelegate::RevertModelCache && !m_delegate->settle())
        return;
    const QPersistentModelIndex cell = m_delegate->editedCell();
    if (!cell.isValid())
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
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isEnter && !IsEditing() && currentIndex().isValid() && edit(currentIndex(), EditKeyPressed, event))
        event->accept();
    else
        CTdListCtrl::keyPressEvent(event);
}

void CListCtrlEx::mousePressEvent(QMouseEvent *event)
{
    if (EndEdit())
        CTdListCtrl::mousePressEvent(event);
    else
        m_delegate->editor()->setFocus();
}

void CListCtrlEx::mouseReleaseEvent(QMouseEvent *event)
{
    CTdListCtrl::mouseReleaseEvent(event);
    m_delegate->showMessage(); // of an entry that the press could not end
    // Not at the double click itself: its release would choose from the list that has just come up under the mouse.
    if (std::exchange(m_dropsDownOnRelease, false)) {
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

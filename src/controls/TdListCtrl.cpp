#include "controls/TdListCtrl.h"

#include "controls/CellDelegate.h"
#include "controls/ReportModel.h"
#include "controls/RowSelection.h"
#include "controls/TdHeaderCtrl.h"

#include <QItemSelectionModel>
#include <QLoggingCategory>
#include <QPointer>

#include <algorithm>
#include <utility>

Q_LOGGING_CATEGORY(lcListCtrl, "terravox.controls.list")

CTdListCtrl::CTdListCtrl(QWidget *parent)
    : QTreeView(parent), m_model(new ReportModel([this](int row, int column) { return CanEdit(row, column); }, this))
{
    QTreeView::setModel(m_model);
    auto *header = new CTdHeaderCtrl(Qt::Horizontal, this);
    header->setSectionsMovable(true);
    header->setStretchLastSection(true);
    setHeader(header);
    setItemDelegate(new CellDelegate(m_model, this));
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setUniformRowHeights(true);
    setSelectionBehavior(SelectRows);
    setSelectionMode(ExtendedSelection);
    setEditTriggers(NoEditTriggers);
    connect(m_model, &ReportModel::cellEdited, this,
            [this](int row, int column, const QString &before, const QString &after) {
                if (m_isHandling)
                    m_edit = {row, column, before, after};
                else
                    Q_EMIT cellEdited(row, column, before, after);
            });
    connect(m_model, &ReportModel::columnChecked, this, &CTdListCtrl::columnChecked);
    connect(m_model, &QAbstractItemModel::dataChanged, this,
            [this](const QModelIndex &first, const QModelIndex &last, const QList<int> &roles) {
                if (roles.contains(Qt::DisplayRole) || roles.contains(Qt::CheckStateRole))
                    dropSortMark(first.column(), last.column());
            });
    connect(m_model, &QAbstractItemModel::rowsInserted, this, [this] { dropSortMark(0, GetColumnCount() - 1); });
}

CTdListCtrl::~CTdListCtrl() = default;

/// Has the base class handle an event, and only then tells of what the user changed by it: the base class is not made
/// for a list that is deleted meanwhile.
void CTdListCtrl::tellAfterwards(const std::function<void()> &handling)
{
    if (m_isHandling)
        return handling();
    const QPointer<CTdListCtrl> alive(this);
    m_isHandling = true;
    handling();
    if (!alive)
        return;
    m_isHandling = false;
    if (const std::optional<Edit> edit = std::exchange(m_edit, {}))
        Q_EMIT cellEdited(edit->row, edit->column, edit->before, edit->after);
}

void CTdListCtrl::keyPressEvent(QKeyEvent *event)
{
    tellAfterwards([&] { QTreeView::keyPressEvent(event); });
}

void CTdListCtrl::mouseReleaseEvent(QMouseEvent *event)
{
    tellAfterwards([&] { QTreeView::mouseReleaseEvent(event); });
}

CTdHeaderCtrl *CTdListCtrl::GetHeaderCtrl() const
{
    return qobject_cast<CTdHeaderCtrl *>(header());
}

void CTdListCtrl::setModel(QAbstractItemModel *model)
{
    if (model != m_model)
        qCWarning(lcListCtrl) << "a report list keeps its own rows, the model is not taken:" << model;
}

bool CTdListCtrl::CanEdit(int, int) const
{
    return true;
}

void CTdListCtrl::dropSortMark(int firstColumn, int lastColumn)
{
    CTdHeaderCtrl *header = GetHeaderCtrl();
    const int marked = header ? header->GetSortSection() : -1;
    if (marked >= 0 && marked >= firstColumn && marked <= lastColumn)
        header->SetSortMark(-1);
}

int CTdListCtrl::InsertColumn(int column, const QString &title, int width, Qt::Alignment alignment)
{
    ReportModel::Column settings;
    settings.title = title;
    settings.alignment = alignment;
    const int place = m_model->insertColumn(column, std::move(settings));
    setColumnWidth(place, width < 0 ? header()->sectionSizeHint(place) : width);
    return place;
}

bool CTdListCtrl::DeleteColumn(int column)
{
    return m_model->removeColumn(column);
}

int CTdListCtrl::GetColumnCount() const
{
    return m_model->columnCount();
}

bool CTdListCtrl::SetColumnTitle(int column, const QString &title)
{
    return m_model->changeColumn(column, [&](ReportModel::Column &settings) { settings.title = title; });
}

QString CTdListCtrl::GetColumnTitle(int column) const
{
    const ReportModel::Column *settings = m_model->column(column);
    return settings ? settings->title : QString();
}

void CTdListCtrl::SetColumnTitles(const QStringList &titles)
{
    while (GetColumnCount() > titles.size())
        DeleteColumn(GetColumnCount() - 1);
    for (int column = 0; column < GetColumnCount(); ++column)
        SetColumnTitle(column, titles[column]);
    for (qsizetype column = GetColumnCount(); column < titles.size(); ++column)
        InsertColumn(-1, titles[column]);
}

QStringList CTdListCtrl::GetColumnTitles() const
{
    QStringList titles;
    for (int column = 0; column < GetColumnCount(); ++column)
        titles += GetColumnTitle(column);
    return titles;
}

bool CTdListCtrl::SetColumnIcon(int column, const QIcon &icon)
{
    return m_model->changeColumn(column, [&](ReportModel::Column &settings) { settings.icon = icon; });
}

bool CTdListCtrl::SetColumnCheckable(int column, bool checkable)
{
    return m_model->changeColumn(column, [&](ReportModel::Column &settings) {
        settings.editor.kind = checkable ? CellEditor::Check : CellEditor::None;
    });
}

bool CTdListCtrl::SetHeaderCheck(int column, bool shown)
{
    if (!m_model->changeColumn(column, [&](ReportModel::Column &settings) { settings.hasHeaderCheck = shown; }))
        return false;
    // The box takes room that the title had.
    setColumnWidth(column, std::max(columnWidth(column), header()->sectionSizeHint(column)));
    return true;
}

int CTdListCtrl::InsertItem(int row, const QString &text)
{
    return InsertItems(row, {{text}});
}

int CTdListCtrl::InsertItems(int row, const QList<QStringList> &texts)
{
    std::vector<ReportModel::Row> rows(size_t(texts.size()));
    for (size_t i = 0; i < rows.size(); ++i) {
        const QStringList &cells = texts[qsizetype(i)];
        rows[i].cells.resize(size_t(GetColumnCount()));
        for (size_t column = 0; column < rows[i].cells.size() && qsizetype(column) < cells.size(); ++column)
            rows[i].cells[column].text = cells[qsizetype(column)];
    }
    return m_model->insertRows(row, std::move(rows));
}

bool CTdListCtrl::DeleteItem(int row)
{
    return m_model->removeRows({row}) == 1;
}

int CTdListCtrl::DeleteItems(const QList<int> &rows)
{
    if (rows.size() > 1) { // the selection model forgets thousands of ranges one by one
        QList<bool> kept = RowSelection::of(*selectionModel());
        for (const int row : rows) {
            if (row >= 0 && row < kept.size())
                kept[row] = false;
        }
        RowSelection::set(*selectionModel(), kept);
    }
    return m_model->removeRows(rows);
}

void CTdListCtrl::DeleteAllItems()
{
    m_model->clear();
}

int CTdListCtrl::GetItemCount() const
{
    return m_model->rowCount();
}

bool CTdListCtrl::SetItemText(int row, int column, const QString &text)
{
    return m_model->setText(row, column, text);
}

QString CTdListCtrl::GetItemText(int row, int column) const
{
    const ReportModel::Cell *cell = m_model->cell(row, column);
    return cell ? cell->text : QString();
}

bool CTdListCtrl::SetItemIcon(int row, int column, const QIcon &icon)
{
    return m_model->setIcon(row, column, icon);
}

bool CTdListCtrl::SetCheck(int row, int column, bool checked)
{
    return m_model->setChecked(row, column, checked);
}

bool CTdListCtrl::GetCheck(int row, int column) const
{
    const ReportModel::Cell *cell = m_model->cell(row, column);
    return cell && cell->isChecked;
}

bool CTdListCtrl::SetItemData(int row, const QVariant &value)
{
    return m_model->setRowData(row, value);
}

QVariant CTdListCtrl::GetItemData(int row) const
{
    return m_model->rowData(row);
}

int CTdListCtrl::GetSelCount() const
{
    return int(GetSelItems().size());
}

QList<int> CTdListCtrl::GetSelItems() const
{
    QList<int> items;
    const QList<bool> rows = RowSelection::of(*selectionModel());
    for (int row = 0; row < rows.size(); ++row) {
        if (rows[row])
            items.append(row);
    }
    return items;
}

void CTdListCtrl::SetSelItems(const QList<int> &rows)
{
    QList<bool> wanted(GetItemCount(), false);
    for (const int row : rows) {
        if (row >= 0 && row < wanted.size())
            wanted[row] = true;
    }
    RowSelection::set(*selectionModel(), wanted);
}

int CTdListCtrl::GetCurItem() const
{
    return currentIndex().row();
}

bool CTdListCtrl::SetCurItem(int row, int column)
{
    const QModelIndex index = m_model->index(row, column);
    if (!index.isValid())
        return false;
    selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    scrollTo(index);
    return true;
}

void CTdListCtrl::SetSortable(bool sortable)
{
    if (CTdHeaderCtrl *header = GetHeaderCtrl(); header && sortable != isSortingEnabled())
        header->SetSortMark(-1); // or switching it on would sort at once
    setSortingEnabled(sortable);
}

bool CTdListCtrl::SortItems(int column, Qt::SortOrder order)
{
    if (!m_model->column(column))
        return false;
    m_model->sort(column, order);
    if (CTdHeaderCtrl *header = GetHeaderCtrl(); header && isSortingEnabled())
        header->SetSortMark(column, order);
    return true;
}

int CTdListCtrl::neighbourColumn(int column, int step) const
{
    int visual = header()->visualIndex(column) + step;
    while (visual >= 0 && visual < GetColumnCount() && isColumnHidden(header()->logicalIndex(visual)))
        visual += step;
    return visual >= 0 && visual < GetColumnCount() ? header()->logicalIndex(visual) : -1;
}

QModelIndex CTdListCtrl::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers)
{
    const QModelIndex current = currentIndex();
    if (!current.isValid() || (action != MoveLeft && action != MoveRight))
        return QTreeView::moveCursor(action, modifiers);
    // A tree would fold its branches; a list goes along the row.
    const bool isForward = (action == MoveRight) == (layoutDirection() == Qt::LeftToRight);
    const int column = neighbourColumn(current.column(), isForward ? 1 : -1);
    return column < 0 ? current : current.siblingAtColumn(column);
}

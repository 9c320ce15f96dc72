#include "controls/ReportModel.h"

#include "controls/NaturalOrder.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace {

/// @p at, or the end for a place out of range.
int insertionPlace(int at, size_t count)
{
    return at < 0 || size_t(at) > count ? int(count) : at;
}

QString checkText(bool checked)
{
    return checked ? QStringLiteral("1") : QStringLiteral("0");
}

} // namespace

ReportModel::ReportModel(MayEdit mayEdit, QObject *parent) : QAbstractTableModel(parent), m_mayEdit(std::move(mayEdit))
{
}

ReportModel::~ReportModel() = default;

int ReportModel::insertColumn(int at, Column column)
{
    at = insertionPlace(at, m_columns.size());
    column.checkedCount = 0;
    beginInsertColumns({}, at, at);
    m_columns.insert(m_columns.begin() + at, std::move(column));
    for (Row &row : m_rows)
        row.cells.emplace(row.cells.begin() + at);
    endInsertColumns();
    return at;
}

bool ReportModel::removeColumn(int column)
{
    if (column < 0 || column >= columnCount())
        return false;
    beginRemoveColumns({}, column, column);
    m_columns.erase(m_columns.begin() + column);
    for (Row &row : m_rows)
        row.cells.erase(row.cells.begin() + column);
    endRemoveColumns();
    return true;
}

const ReportModel::Column *ReportModel::column(int column) const
{
    return column >= 0 && column < columnCount() ? &m_columns[size_t(column)] : nullptr;
}

bool ReportModel::changeColumn(int column, const std::function<void(Column &)> &change)
{
    if (!this->column(column))
        return false;
    const bool hadCheckBoxes = hasCheckBoxes(column);
    change(m_columns[size_t(column)]);
    Q_EMIT headerDataChanged(Qt::Horizontal, column, column);
    QList<int> roles{Qt::TextAlignmentRole};
    if (hasCheckBoxes(column) != hadCheckBoxes)
        roles += Qt::CheckStateRole;
    if (!m_rows.empty())
        Q_EMIT dataChanged(index(0, column), index(rowCount() - 1, column), roles);
    return true;
}

int ReportModel::insertRows(int at, std::vector<Row> rows)
{
    at = insertionPlace(at, m_rows.size());
    if (rows.empty())
        return at;
    for (Row &row : rows) {
        row.cells.resize(m_columns.size());
        for (size_t column = 0; column < m_columns.size(); ++column)
            m_columns[column].checkedCount += row.cells[column].isChecked;
    }
    beginInsertRows({}, at, at + int(rows.size()) - 1);
    m_rows.insert(m_rows.begin() + at, std::make_move_iterator(rows.begin()), std::make_move_iterator(rows.end()));
    endInsertRows();
    tellHeader();
    return at;
}

int ReportModel::removeRows(QList<int> rows)
{
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    rows.removeIf([this](int row) { return row < 0 || row >= rowCount(); });
    if (rows.isEmpty())
        return 0;
    // Rows that do not stand together are first put at the end, so that all of them go at once.
    int first = rows.first();
    const int count = int(rows.size());
    if (rows.last() - first != count - 1) {
        std::vector<int> order;
        order.reserve(m_rows.size());
        for (int row = 0, passed = 0; row < rowCount(); ++row) {
            if (passed < count && rows[passed] == row)
                ++passed;
            else
                order.push_back(row);
        }
        order.insert(order.end(), rows.begin(), rows.end());
        permute(order);
        first = rowCount() - count;
    }
    beginRemoveRows({}, first, first + count - 1);
    const auto begin = m_rows.begin() + first;
    for (auto row = begin; row != begin + count; ++row) {
        for (size_t column = 0; column < m_columns.size(); ++column)
            m_columns[column].checkedCount -= row->cells[column].isChecked;
    }
    m_rows.erase(begin, begin + count);
    endRemoveRows();
    tellHeader();
    return count;
}

void ReportModel::clear()
{
    if (m_rows.empty())
        return;
    beginRemoveRows({}, 0, rowCount() - 1);
    m_rows.clear();
    for (Column &column : m_columns)
        column.checkedCount = 0;
    endRemoveRows();
    tellHeader();
}

void ReportModel::permute(const std::vector<int> &order)
{
    Q_EMIT layoutAboutToBeChanged({}, VerticalSortHint);
    if (order.size() != m_rows.size()) { // who was told has changed the rows, and the order is no longer one of them
        Q_EMIT layoutChanged({}, VerticalSortHint);
        return;
    }
    std::vector<int> placeOf(order.size());
    std::deque<Row> rows;
    for (size_t place = 0; place < order.size(); ++place) {
        placeOf[size_t(order[place])] = int(place);
        rows.push_back(std::move(m_rows[size_t(order[place])]));
    }
    m_rows = std::move(rows);
    const QModelIndexList before = persistentIndexList();
    QModelIndexList after;
    after.reserve(before.size());
    for (const QModelIndex &old : before)
        after.append(index(placeOf[size_t(old.row())], old.column()));
    changePersistentIndexList(before, after);
    Q_EMIT layoutChanged({}, VerticalSortHint);
}

const ReportModel::Cell *ReportModel::cell(int row, int column) const
{
    return const_cast<ReportModel *>(this)->cellAt(row, column);
}

ReportModel::Cell *ReportModel::cellAt(int row, int column)
{
    if (row < 0 || row >= rowCount() || column < 0 || column >= columnCount())
        return nullptr;
    return &m_rows[size_t(row)].cells[size_t(column)];
}

void ReportModel::tell(int row, int column, int role)
{
    const QModelIndex changed = index(row, column);
    Q_EMIT dataChanged(changed, changed, {role});
}

/// Tells of the columns whose box in the header has come to another state.
void ReportModel::tellHeader()
{
    for (int column = 0; column < columnCount(); ++column) {
        const Qt::CheckState state = checkState(column);
        if (std::exchange(m_columns[size_t(column)].told, state) != state)
            Q_EMIT headerDataChanged(Qt::Horizontal, column, column);
    }
}

bool ReportModel::setText(int row, int column, const QString &text)
{
    Cell *cell = cellAt(row, column);
    if (!cell)
        return false;
    if (cell->text != text) {
        cell->text = text;
        tell(row, column, Qt::DisplayRole);
    }
    return true;
}

bool ReportModel::setIcon(int row, int column, const QIcon &icon)
{
    Cell *cell = cellAt(row, column);
    if (!cell)
        return false;
    cell->icon = icon;
    tell(row, column, Qt::DecorationRole);
    return true;
}

bool ReportModel::setChecked(int row, int column, bool checked)
{
    Cell *cell = cellAt(row, column);
    if (!cell)
        return false;
    if (cell->isChecked != checked) {
        cell->isChecked = checked;
        m_columns[size_t(column)].checkedCount += checked ? 1 : -1;
        tell(row, column, Qt::CheckStateRole);
        tellHeader();
    }
    return true;
}

bool ReportModel::setRowData(int row, const QVariant &data)
{
    if (row < 0 || row >= rowCount())
        return false;
    m_rows[size_t(row)].data = data;
    return true;
}

QVariant ReportModel::rowData(int row) const
{
    return row >= 0 && row < rowCount() ? m_rows[size_t(row)].data : QVariant();
}

int ReportModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

int ReportModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_columns.size());
}

bool ReportModel::hasCheckBoxes(int column) const
{
    return m_columns[size_t(column)].editor.kind == CellEditor::Check;
}

QVariant ReportModel::data(const QModelIndex &index, int role) const
{
    const Cell *cell = index.isValid() ? this->cell(index.row(), index.column()) : nullptr;
    if (!cell)
        return {};
    const Column &column = m_columns[size_t(index.column())];
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
        return cell->text;
    case Qt::DecorationRole:
        return cell->icon.isNull() ? QVariant() : QVariant(cell->icon);
    case Qt::TextAlignmentRole:
        return QVariant(column.alignment | Qt::AlignVCenter);
    case Qt::CheckStateRole:
        return hasCheckBoxes(index.column()) ? QVariant(cell->isChecked ? Qt::Checked : Qt::Unchecked) : QVariant();
    case Qt::AccessibleTextRole: // a bare check box or picture is known by its column
        return cell->text.isEmpty() ? column.title : cell->text;
    case Qt::UserRole:
        return rowData(index.row());
    default:
        return {};
    }
}

bool ReportModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    const int row = index.row();
    const int column = index.column();
    const Cell *cell = index.isValid() && index.model() == this ? this->cell(row, column) : nullptr;
    const bool isCheck = role == Qt::CheckStateRole;
    if (!cell || (!isCheck && role != Qt::EditRole) ||
        !flags(index).testFlag(isCheck ? Qt::ItemIsUserCheckable : Qt::ItemIsEditable))
        return false;
    const QString before = isCheck ? checkText(cell->isChecked) : cell->text;
    const QString after = isCheck ? checkText(value.toInt() == Qt::Checked) : value.toString();
    if (before == after)
        return true;
    if (isCheck)
        setChecked(row, column, value.toInt() == Qt::Checked);
    else
        setText(row, column, after);
    Q_EMIT cellEdited(row, column, before, after);
    return true;
}

Qt::CheckState ReportModel::checkState(int column) const
{
    const int checked = m_columns[size_t(column)].checkedCount;
    return checked == 0 ? Qt::Unchecked : checked == rowCount() ? Qt::Checked : Qt::PartiallyChecked;
}

QVariant ReportModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    const Column *column = orientation == Qt::Horizontal ? this->column(section) : nullptr;
    if (!column)
        return {};
    switch (role) {
    case Qt::DisplayRole:
        return column->title;
    case Qt::DecorationRole:
        return column->icon.isNull() ? QVariant() : QVariant(column->icon);
    case Qt::TextAlignmentRole:
        return QVariant(column->alignment | Qt::AlignVCenter);
    case Qt::CheckStateRole:
        return column->hasHeaderCheck && hasCheckBoxes(section) ? QVariant(checkState(section)) : QVariant();
    default:
        return {};
    }
}

bool ReportModel::checkAll(int column, bool checked)
{
    int first = -1;
    int last = -1;
    for (int row = 0; row < rowCount(); ++row) {
        Cell &cell = m_rows[size_t(row)].cells[size_t(column)];
        if (cell.isChecked == checked || !m_mayEdit(row, column))
            continue;
        cell.isChecked = checked;
        m_columns[size_t(column)].checkedCount += checked ? 1 : -1;
        first = first < 0 ? row : first;
        last = row;
    }
    if (first < 0)
        return false;
    Q_EMIT dataChanged(index(first, column), index(last, column), {Qt::CheckStateRole});
    tellHeader();
    Q_EMIT columnChecked(column, checked);
    return true;
}

bool ReportModel::setHeaderData(int section, Qt::Orientation orientation, const QVariant &value, int role)
{
    if (role != Qt::CheckStateRole || !headerData(section, orientation, Qt::CheckStateRole).isValid())
        return false;
    const bool checked = value.toInt() == Qt::Checked;
    return checkAll(section, checked) || (checked && checkAll(section, false));
}

Qt::ItemFlags ReportModel::flags(const QModelIndex &index) const
{
    Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    const Column *column = index.isValid() ? this->column(index.column()) : nullptr;
    if (!column)
        return flags;
    flags |= Qt::ItemNeverHasChildren;
    const CellEditor &editor = column->editor;
    const bool hasEditor =
        editor.kind == CellEditor::Text || (editor.kind == CellEditor::Choice && !editor.choices.isEmpty());
    if ((hasEditor || editor.kind == CellEditor::Check) && m_mayEdit(index.row(), index.column()))
        flags |= hasEditor ? Qt::ItemIsEditable : Qt::ItemIsUserCheckable;
    return flags;
}

void ReportModel::sort(int column, Qt::SortOrder order)
{
    if (!this->column(column))
        return;
    QStringList texts;
    texts.reserve(rowCount());
    for (const Row &row : m_rows) {
        const Cell &cell = row.cells[size_t(column)];
        texts.append(hasCheckBoxes(column) ? checkText(cell.isChecked) : cell.text);
    }
    permute(naturalOrder(texts, order));
}

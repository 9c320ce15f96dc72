#include "controls/HListBox.h"

#include "common/IconPlateDelegate.h"

#include <QItemSelection>
#include <QSignalBlocker>

CHListBox::CHListBox(QWidget *parent) : QListWidget(parent)
{
    setSelectionMode(ExtendedSelection);
    setItemDelegate(new IconPlateDelegate(this));
    setUniformItemSizes(true); // or thousands of entries are measured one by one
}

CHListBox::~CHListBox() = default;

bool CHListBox::canSelect(int row) const
{
    const Qt::ItemFlags wanted = Qt::ItemIsSelectable | Qt::ItemIsEnabled;
    return (item(row)->flags() & wanted) == wanted && !isRowHidden(row);
}

/// For every row whether it is selected. Asking row by row would search all ranges each time.
QList<bool> CHListBox::selectedRows() const
{
    QList<bool> rows(count(), false);
    for (const QItemSelectionRange &range : selectionModel()->selection()) {
        for (int row = range.top(); row <= range.bottom(); ++row)
            rows[row] = true;
    }
    return rows;
}

void CHListBox::selectRows(const QList<bool> &wanted)
{
    const QList<bool> before = selectedRows();
    const QItemSelection selected = rangesOf(wanted, before);
    const QItemSelection deselected = rangesOf(before, wanted);
    if (selected.isEmpty() && deselected.isEmpty())
        return;
    // The selection model compares every old range with every new one, which takes seconds with thousands of them. So
    // it is emptied and filled anew in silence, and told of here.
    {
        const QSignalBlocker silence(selectionModel());
        selectionModel()->clearSelection();
        selectionModel()->select(rangesOf(wanted, {}), QItemSelectionModel::Select);
    }
    Q_EMIT selectionModel()->selectionChanged(selected, deselected);
}

/// The runs of rows that are in @p rows but not in @p others.
QItemSelection CHListBox::rangesOf(const QList<bool> &rows, const QList<bool> &others) const
{
    const auto isIn = [&](int row) { return row < rows.size() && rows[row] && !(row < others.size() && others[row]); };
    QItemSelection ranges;
    for (int row = 0; row < rows.size(); ++row) {
        if (!isIn(row))
            continue;
        const int first = row;
        while (isIn(row + 1))
            ++row;
        ranges.append(QItemSelectionRange(model()->index(first, 0), model()->index(row, 0)));
    }
    return ranges;
}

void CHListBox::SelectAllItems()
{
    QList<bool> rows(count(), false);
    for (int row = 0; row < rows.size(); ++row)
        rows[row] = canSelect(row);
    selectRows(rows);
}

void CHListBox::ReverseSelect()
{
    QList<bool> rows = selectedRows();
    for (int row = 0; row < rows.size(); ++row)
        rows[row] = !rows[row] && canSelect(row);
    selectRows(rows);
}

int CHListBox::GetSelCount() const
{
    return int(GetSelItems().size());
}

QList<int> CHListBox::GetSelItems() const
{
    QList<int> items;
    const QList<bool> rows = selectedRows();
    for (int row = 0; row < rows.size(); ++row) {
        // A range may span an entry that cannot be selected.
        if (rows[row] && (item(row)->flags() & Qt::ItemIsSelectable) && (item(row)->flags() & Qt::ItemIsEnabled))
            items.append(row);
    }
    return items;
}

#include "controls/HListBox.h"

#include <QItemSelection>

CHListBox::CHListBox(QWidget *parent) : QListWidget(parent)
{
    setSelectionMode(ExtendedSelection);
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
    QItemSelection selection;
    for (int row = 0; row < wanted.size(); ++row) {
        if (!wanted[row])
            continue;
        const int first = row;
        while (row + 1 < wanted.size() && wanted[row + 1])
            ++row;
        selection.append(QItemSelectionRange(model()->index(first, 0), model()->index(row, 0)));
    }
    selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
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

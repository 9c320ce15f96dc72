#include "controls/HListBox.h"

#include "common/IconPlateDelegate.h"
#include "controls/RowSelection.h"

#include <QItemSelectionModel>

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

void CHListBox::SelectAllItems()
{
    QList<bool> rows(count(), false);
    for (int row = 0; row < rows.size(); ++row)
        rows[row] = canSelect(row);
    RowSelection::set(*selectionModel(), rows);
}

void CHListBox::ReverseSelect()
{
    QList<bool> rows = RowSelection::of(*selectionModel());
    for (int row = 0; row < rows.size(); ++row)
        rows[row] = !rows[row] && canSelect(row);
    RowSelection::set(*selectionModel(), rows);
}

int CHListBox::GetSelCount() const
{
    return int(GetSelItems().size());
}

QList<int> CHListBox::GetSelItems() const
{
    QList<int> items;
    const QList<bool> rows = RowSelection::of(*selectionModel());
    for (int row = 0; row < rows.size(); ++row) {
        // A range may span an entry that cannot be selected.
        if (rows[row] && (item(row)->flags() & Qt::ItemIsSelectable) && (item(row)->flags() & Qt::ItemIsEnabled))
            items.append(row);
    }
    return items;
}

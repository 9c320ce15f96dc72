#include "controls/RowSelection.h"

#include <QItemSelectionModel>
#include <QSignalBlocker>

namespace {

/// The runs of rows that are in @p rows but not in @p others.
QItemSelection rangesOf(const QAbstractItemModel &model, const QList<bool> &rows, const QList<bool> &others = {})
{
    const auto isIn = [&](int row) { return row < rows.size() && rows[row] && !(row < others.size() && others[row]); };
    QItemSelection ranges;
    for (int row = 0; row < rows.size(); ++row) {
        if (!isIn(row))
            continue;
        const int first = row;
        while (isIn(row + 1))
            ++row;
        ranges.append(QItemSelectionRange(model.index(first, 0), model.index(row, model.columnCount() - 1)));
    }
    return ranges;
}

} // namespace

QList<bool> RowSelection::of(const QItemSelectionModel &selection)
{
    QList<bool> rows(selection.model()->rowCount(), false);
    for (const QItemSelectionRange &range : selection.selection()) {
        for (int row = range.top(); row <= range.bottom(); ++row)
            rows[row] = true;
    }
    return rows;
}

void RowSelection::set(QItemSelectionModel &selection, const QList<bool> &wanted)
{
    const QAbstractItemModel &model = *selection.model();
    const QList<bool> before = of(selection);
    const QItemSelection selected = rangesOf(model, wanted, before);
    const QItemSelection deselected = rangesOf(model, before, wanted);
    if (selected.isEmpty() && deselected.isEmpty())
        return;
    {
        const QSignalBlocker silence(&selection); // told of below
        selection.clearSelection();
        selection.select(rangesOf(model, wanted), QItemSelectionModel::Select);
    }
    Q_EMIT selection.selectionChanged(selected, deselected);
}

#pragma once

#include <QList>

class QItemSelectionModel;

/// Selections of whole rows, each in one go. The selection model compares every old range with every new one, which
/// takes minutes with tens of thousands of them: for every other row of a long list, say.
namespace RowSelection {

/// For every row of the model whether any of its cells is selected.
QList<bool> of(const QItemSelectionModel &selection);
/// Selects the rows that are true in @p wanted, and no others; told of by one selectionChanged(), by none when nothing
/// changes. The current cell stays.
void set(QItemSelectionModel &selection, const QList<bool> &wanted);

} // namespace RowSelection

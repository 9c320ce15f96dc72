#pragma once

#include "common/TdCommonExport.h"

#include <QListWidget>

/// A list box in which several entries may be selected, with all-at-once operations.
///
/// Each of them is told of by one itemSelectionChanged(), and by none when it changes nothing; entries that are hidden
/// or cannot be selected stay out. The current entry stays.
class TDCOMMON_API CHListBox : public QListWidget
{
    Q_OBJECT

public:
    explicit CHListBox(QWidget *parent = nullptr);
    ~CHListBox() override;

    /// Selects every entry.
    void SelectAllItems();
    /// Selects the entries that are not selected, and unselects the others.
    void ReverseSelect();
    /// How many entries are selected.
    int GetSelCount() const;
    /// The rows of the selected entries, ascending.
    QList<int> GetSelItems() const;

private:
    bool canSelect(int row) const;
};

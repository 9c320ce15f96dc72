#pragma once

#include "common/TdCommonExport.h"

#include <QTreeView>

#include <functional>
#include <optional>

class CTdHeaderCtrl;
class ReportModel;

/// A report list: rows of cells below named columns, tens of thousands of them. The base of the lists that are edited
/// in place and of those whose rows are moved.
///
/// Rows are selected whole, several at once; the current cell moves along its row by Left and Right. The list holds its
/// rows itself: it takes no other model. Rows and columns are counted from 0 as they stand; where one is out of range,
/// a change answers false and a question an empty value.
class TDCOMMON_API CTdListCtrl : public QTreeView
{
    Q_OBJECT
    /// As forms set them: a column each. A column without a title any more goes, with its cells.
    Q_PROPERTY(QStringList columnTitles READ GetColumnTitles WRITE SetColumnTitles)

public:
    explicit CTdListCtrl(QWidget *parent = nullptr);
    ~CTdListCtrl() override;

    /// The header, with its sort mark and check boxes; the list's.
    CTdHeaderCtrl *GetHeaderCtrl() const;

    /// Inserts a column before @p column, or at the end when that is out of range. @param width in pixels; below 0 as
    /// wide as the title wants. @return its place.
    int InsertColumn(int column, const QString &title, int width = -1, Qt::Alignment alignment = Qt::AlignLeft);
    /// Removes the column with its cells.
    bool DeleteColumn(int column);
    int GetColumnCount() const;
    bool SetColumnTitle(int column, const QString &title);
    QString GetColumnTitle(int column) const;
    /// Gives the columns their titles, in their order; missing columns are inserted at the end, surplus ones removed.
    void SetColumnTitles(const QStringList &titles);
    QStringList GetColumnTitles() const;
    /// Shows an icon beside the title.
    bool SetColumnIcon(int column, const QIcon &icon);
    /// Shows a check box in every cell of the column, which the user toggles by click or Space.
    bool SetColumnCheckable(int column, bool checkable);
    /// Shows a box in the column's header that tells whether all, some or no cells are checked, and changes all of
    /// them; only on columns whose cells have check boxes.
    bool SetHeaderCheck(int column, bool shown);

    /// Inserts a row before @p row, or at the end when that is out of range. @return its place.
    int InsertItem(int row, const QString &text);
    /// Inserts many rows at once, each a list of the texts of its cells. @return the place of the first.
    int InsertItems(int row, const QList<QStringList> &texts);
    bool DeleteItem(int row);
    /// Removes @p rows, in whatever order they are named. @return how many there were.
    int DeleteItems(const QList<int> &rows);
    void DeleteAllItems();
    int GetItemCount() const;

    bool SetItemText(int row, int column, const QString &text);
    QString GetItemText(int row, int column) const;
    bool SetItemIcon(int row, int column, const QIcon &icon);
    bool SetCheck(int row, int column, bool checked);
    bool GetCheck(int row, int column) const;
    /// Keeps something of the host with the row, which moves with it: Qt::UserRole of every cell.
    bool SetItemData(int row, const QVariant &value);
    QVariant GetItemData(int row) const;

    int GetSelCount() const;
    /// The selected rows, ascending.
    QList<int> GetSelItems() const;
    /// Selects @p rows and no others, in one go however many they are; those out of range are left out. The current row
    /// stays.
    void SetSelItems(const QList<int> &rows);
    /// The current row, -1 when there is none.
    int GetCurItem() const;
    /// Selects one row only, makes it current and scrolls to it. @return false when out of range.
    bool SetCurItem(int row, int column = 0);

    /// Lets the user sort by a click on a header; off at first.
    void SetSortable(bool sortable);
    /// Sorts the rows in natural order of the cells of @p column, and sets the sort mark where the list is sortable.
    /// Selection and current row go with their rows. The mark goes when the rows change, which do not jump by
    /// themselves.
    bool SortItems(int column, Qt::SortOrder order = Qt::AscendingOrder);

    /// Does nothing: the list shows its own rows only.
    void setModel(QAbstractItemModel *model) override;

Q_SIGNALS:
    /// The user changed a cell from text @p before to @p after; check marks are "1" and "0". Who is told may change the
    /// list as he likes, and even delete it; the same goes for the other signals of the user's changes.
    void cellEdited(int row, int column, const QString &before, const QString &after);
    /// The user checked or unchecked a whole column through its header: one notification for all rows.
    void columnChecked(int column, bool checked);

protected:
    /// Whether the user may change a cell of an editable column; true here. Asked often: be quick.
    virtual bool CanEdit(int row, int column) const;

    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    /// The rows; for the lists that derive from this one.
    ReportModel *reportModel() const { return m_model; }
    /// True while the list handles a key or the release of a button: the key that has opened an editor, and is left
    /// over by it, comes back to the list meanwhile.
    bool isHandling() const { return m_isHandling; }
    /// The next shown column after logical @p column in direction @p step, -1 when there is none.
    int neighbourColumn(int column, int step) const;

private:
    struct Edit
    {
        int row, column;
        QString before, after;
    };

    void dropSortMark(int firstColumn, int lastColumn);
    void tellAfterwards(const std::function<void()> &handling);

    ReportModel *const m_model; // a child
    bool m_isHandling = false;  ///< an event that may toggle a check box
    std::optional<Edit> m_edit; ///< what it changed
};

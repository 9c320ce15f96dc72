#pragma once

#include "common/TdCommonExport.h"
#include "controls/CellEditor.h"

#include <QAbstractTableModel>
#include <QIcon>
#include <QVariant>

#include <deque>
#include <functional>
#include <vector>

/// The rows and columns of a report list.
///
/// Two ways lead in. The named functions are the program's: they change what they are told to. setData() and
/// setHeaderData() are the user's, whose edits go only where the list lets them, and are told of by signals. Rows and
/// columns out of range are refused everywhere.
class TDCOMMON_API ReportModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    struct Column
    {
        QString title;
        QIcon icon;
        Qt::Alignment alignment = Qt::AlignLeft;
        CellEditor editor;
        bool hasHeaderCheck = false;         ///< the header shows whether the cells are checked
        int checkedCount = 0;                ///< kept by the model
        Qt::CheckState told = Qt::Unchecked; ///< what views of the header know; kept by the model
    };
    struct Cell
    {
        QString text;
        QIcon icon;
        bool isChecked = false;
    };
    struct Row
    {
        std::vector<Cell> cells; ///< one a column
        QVariant data;           ///< the host's, Qt::UserRole of every cell
    };
    /// Whether the user may change a cell.
    using MayEdit = std::function<bool(int row, int column)>;

    explicit ReportModel(MayEdit mayEdit, QObject *parent = nullptr);
    ~ReportModel() override;

    /// Inserts @p column before @p at, a place out of range is the end. @return its place.
    int insertColumn(int at, Column column);
    bool removeColumn(int column);
    /// The column; null when out of range. What shows in the header is changed by changeColumn().
    const Column *column(int column) const;
    /// Gives the column to @p change and shows it anew. @return false when out of range.
    bool changeColumn(int column, const std::function<void(Column &)> &change);

    /// Inserts rows before @p at, a place out of range is the end, in one go; missing cells are empty, surplus ones
    /// dropped. @return the place of the first.
    int insertRows(int at, std::vector<Row> rows);
    /// Removes rows in one go; those out of range are left out. @return how many went.
    int removeRows(QList<int> rows);
    void clear();
    /// Puts the rows into a new order, in one go; element i of @p order is the row that comes i-th. What is selected
    /// and what is current goes with the rows.
    void permute(const std::vector<int> &order);

    /// The cell; null when out of range.
    const Cell *cell(int row, int column) const;
    bool setText(int row, int column, const QString &text);
    bool setIcon(int row, int column, const QIcon &icon);
    bool setChecked(int row, int column, bool checked);
    bool setRowData(int row, const QVariant &data);
    /// The host's data of a row; empty when out of range.
    QVariant rowData(int row) const;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    /// Qt::CheckStateRole checks or unchecks the column's cells, as far as the user may. A column that cannot get
    /// fuller because the rest is barred from the user is emptied instead.
    bool setHeaderData(int section, Qt::Orientation orientation, const QVariant &value,
                       int role = Qt::EditRole) override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    void sort(int column, Qt::SortOrder order = Qt::AscendingOrder) override;

Q_SIGNALS:
    /// The user changed a cell; check marks are "1" and "0".
    void cellEdited(int row, int column, const QString &before, const QString &after);
    /// The user checked or unchecked the cells of a column through its header.
    void columnChecked(int column, bool checked);

private:
    Cell *cellAt(int row, int column);
    bool hasCheckBoxes(int column) const;
    Qt::CheckState checkState(int column) const;
    bool checkAll(int column, bool checked);
    void tell(int row, int column, int role);
    void tellHeader();

    const MayEdit m_mayEdit;
    std::vector<Column> m_columns;
    std::deque<Row> m_rows; // lists that show what is newest first grow at the front
};

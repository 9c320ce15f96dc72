#pragma once

#include <QWidget>

class CDatasetVector;
class CTxDataset;
class QLabel;
class QLineEdit;
class QTableView;
class RecordTableModel;

/// The attribute table of a dataset: its records below a line that takes an SQL condition.
///
/// A click on a column's title orders by it (a third click gives the dataset's own order back). Selected cells can be
/// copied as text with tabs between.
class AttributeTable : public QWidget
{
    Q_OBJECT
public:
    explicit AttributeTable(QWidget *parent = nullptr);
    ~AttributeTable() override;

    /// Shows @p dataset (not owned). @return false when it cannot be read; error() tells why.
    bool setDataset(CDatasetVector *dataset);
    CDatasetVector *dataset() const;
    /// Lets go of the dataset; the table is then empty.
    void release();
    /// Lets go of the dataset for a while, with the picture of its records left standing.
    void pause();
    /// Shows the dataset that pause() let go of, by the same condition and order, with the fields it has now.
    void resume();
    /// Why the last condition, order or dataset was refused; empty when it was not.
    QString error() const;

    /// Shows the records for which @p condition holds, as if the user had entered it.
    bool setFilter(const QString &condition);
    /// Reads the records anew.
    void refresh();
    /// Puts the selected cells on the clipboard.
    void copy();

    QTableView *view() const { return m_view; }
    RecordTableModel *model() const { return m_model; }
    QSize sizeHint() const override;

private:
    void applyFilter();
    void sortBy(int column, Qt::SortOrder order);
    void updateStatus();
    void showError();
    void fitColumns();

    RecordTableModel *m_model;
    QLineEdit *m_filter;
    QLabel *m_error;
    QLabel *m_status;
    QTableView *m_view;

    // What pause() let go of.
    CDatasetVector *m_paused = nullptr; // not owned
    QString m_pausedFilter;
    QByteArray m_pausedHeader;
    int m_pausedColumns = 0;
    int m_pausedSort = -1;
    Qt::SortOrder m_pausedOrder = Qt::AscendingOrder;
};

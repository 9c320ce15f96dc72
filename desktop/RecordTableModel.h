#pragma once

#include "RecordIndex.h"
#include "engine/base/TxHandle.h"
#include "engine/base/TxVariant.h"
#include "engine/data/DatasetVector.h"
#include "engine/data/TxFieldInfo.h"
#include "engine/data/TxRecordset.h"

#include <QAbstractTableModel>
#include <QCache>
#include <QTimer>

#include <vector>

class CTxQueryDef;

/// The records of a vector dataset as a table that reads only what is looked at.
///
/// One cursor walks the query's record identifiers in slices between events, and rows appear as they are found; a
/// second one reads the values of the rows that a view asks for, a page at a time, into a cache of bounded size. So a
/// dataset of millions of records is there at once and costs a few bytes a record at most. Both cursors are given back
/// when the model lets go of the dataset: release() is to be called before the dataset closes. Where nobody does, the
/// model notices, and reads no more.
class RecordTableModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    /// The most rows that are shown; a query with more ends there (see isCut()).
    static constexpr qint64 maximumRows = 20'000'000;

    explicit RecordTableModel(QObject *parent = nullptr);
    ~RecordTableModel() override;

    /// Shows the records of @p dataset (not owned), which is opened when it is closed. @return false when it cannot be
    /// read (see error()); the model is then empty.
    bool setDataset(CDatasetVector *dataset);
    /// The dataset shown, null when there is none or it has gone.
    CDatasetVector *dataset() const { return m_dataset.get(); }
    /// Gives the cursors back and becomes empty.
    void release();

    /// Shows only the records for which the SQL condition @p condition holds; an empty one stands for all.
    /// @return false when the condition is not understood (see error()); the rows are then as before.
    bool setFilter(const QString &condition);
    const QString &filter() const { return m_filter; }
    /// Orders the records by a column; -1 gives the dataset's own order back.
    void sort(int column, Qt::SortOrder order = Qt::AscendingOrder) override;
    int sortColumn() const { return m_sortColumn; }
    Qt::SortOrder sortOrder() const { return m_sortOrder; }
    /// Runs the query anew, for records that have changed and for a storage that ended its cursors (a change of its
    /// structure does). @return false when the dataset has closed or gone (see error()).
    bool refresh();

    /// What failed last, for people; empty after a success.
    const QString &error() const { return m_error; }
    /// True when every row is known.
    bool isComplete() const { return !m_walker.get(); }
    /// True when there are more records than maximumRows.
    bool isCut() const { return m_cut; }
    /// The identifier of the record in @p row, -1 when there is no such row.
    qint64 recordId(int row) const;
    /// The whole text of a value, also where the cell shows a part of it; empty for null.
    QString fullText(const QModelIndex &index) const;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

    /// The text that stands for @p value. 64-bit whole numbers are written in full, everything else as the library
    /// writes values.
    static QString valueText(const CTxVariant &value);

Q_SIGNALS:
    /// The walk found further rows or came to its end.
    void walked();

private:
    using Row = std::vector<CTxVariant>;
    using Page = std::vector<Row>;

    bool start(const QString &filter, int sortColumn, Qt::SortOrder order);
    void walk(int milliseconds);
    void showPending();
    void endWalk();
    CTxRecordset *query(const CTxQueryDef &query);
    CTxRecordset *openReader();
    const Row *row(int row) const;
    Page *readPage(int page) const;
    QVariant cell(const CTxVariant &value, const CTxFieldInfo &field, int role) const;

    TxHandle<CDatasetVector> m_dataset;
    TxHandle<CTxRecordset> m_walker; // the dataset's
    TxHandle<CTxRecordset> m_reader; // the dataset's
    CTxFieldInfos m_fields;
    QString m_filter;
    QString m_error;
    int m_sortColumn = -1;
    Qt::SortOrder m_sortOrder = Qt::AscendingOrder;
    bool m_cut = false;
    RecordIndex m_index;
    int m_shown = 0; // rows of m_index that views know of
    int m_pageRows = 1;
    mutable QCache<int, Page> m_pages; // cost in bytes
    QTimer m_timer;
};

#pragma once

#include "engine/data/TxQueryDef.h"
#include "engine/data/TxRecordsetPrivate.h"

#include <QHash>
#include <QStringList>

#include <functional>
#include <optional>
#include <vector>

/// A query with every name looked up: what cursors are made from. A private header.
class TxQueryPlan
{
public:
    /// Gives the name of the column that holds a dataset's identifiers.
    using IdColumn = std::function<QString(TxVectorPrivate &)>;

    /// Looks up the names of @p query. @return nothing, with the engine's last error set, when a dataset or field does
    /// not exist, or the condition is not closed (a quote without its partner).
    static std::optional<TxQueryPlan> make(TxVectorPrivate &vector, const CTxQueryDef &query);

    /// The recordset's fields, TxID first; behind them those that a text's geometry is made of, where they were not
    /// asked for.
    const std::vector<TxRecordsetField> &fields() const { return m_fields; }
    /// How many of the fields were asked for.
    size_t visibleCount() const { return m_visibleCount; }
    /// True when the datasets' own order and records are asked for: no join, no order.
    bool isPlain() const { return m_query.joins.isEmpty() && m_order.empty(); }
    bool wantsGeometry() const { return (m_query.options & CTxQueryDef::SkipGeometry) == 0; }
    const CTxQueryDef &query() const { return m_query; }

    /// Keeps SQL from looking partners up in a joined dataset, so that it reads that dataset whole for each record:
    /// GDAL's SQLite dialect stumbles over a null that it is asked to look up, and does just the same otherwise.
    void readJoinedWhole() { m_readsJoinedWhole = true; }
    /// The same query without its condition and rectangle.
    TxQueryPlan unfiltered() const;

    /// Makes select() walk @p table (its text for FROM) first and look the records up behind it.
    void setLeadingTable(const QString &table) { m_leadingTable = table; }

    /// The condition for OGRLayer::SetAttributeFilter; empty for none. @p idName is what it calls the identifier.
    QString layerFilter(const QString &idName) const;

    /// "SELECT id, fields…[, geometry] FROM … WHERE …". @p idColumn gives the identifier's column of a dataset;
    /// @p geometryColumn is empty for no geometry; @p conditions are added to the query's own.
    QString select(const IdColumn &idColumn, const QString &geometryColumn, const QStringList &conditions) const;
    /// "SELECT COUNT(*) FROM … WHERE …", with the same arguments.
    QString selectCount(const IdColumn &idColumn, const QStringList &conditions) const;
    /// The name under which the queried dataset stands in select(), quoted.
    QString mainAlias() const;

private:
    /// A dataset that takes part, the queried one first.
    struct Source
    {
        TxVectorPrivate *vector;
        QString name; ///< the dataset's
    };
    /// A field of one of them.
    struct Column
    {
        size_t source;     ///< index of m_sources
        int ogrIndex;      ///< -1 for the identifier
        CTxFieldInfo info; ///< under the name that it has in the recordset
    };
    struct OrderKey
    {
        size_t column; ///< index of m_columns
        bool descending;
    };

    TxQueryPlan(TxVectorPrivate &vector, const CTxQueryDef &query);
    void addSource(TxVectorPrivate &vector, const QString &prefix);
    bool addJoins();
    bool chooseFields();
    void addTextFields();
    void addField(size_t place);
    bool knowsNames() const;
    bool readOrder();
    std::optional<size_t> findColumn(const QString &name) const;
    QString columnText(size_t column, const IdColumn &idColumn) const;
    QString fromText(const IdColumn &idColumn, const QStringList &conditions) const;

    CTxQueryDef m_query;
    std::vector<Source> m_sources;
    std::vector<Column> m_columns;      // every field of every source
    QHash<QString, size_t> m_byName;    // their places by case-folded name
    std::vector<size_t> m_fieldColumns; // the column of each of m_fields
    std::vector<TxRecordsetField> m_fields;
    size_t m_visibleCount = 0;
    std::vector<OrderKey> m_order;
    bool m_readsJoinedWhole = false;
    QString m_leadingTable;
};

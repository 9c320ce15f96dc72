#include "engine/data/TxQueryPlan.h"

#include "engine/data/NativeSchema.h"
#include "engine/data/TxFilterText.h"

#include <ogrsf_frmts.h>

#include <algorithm>

namespace {

constexpr int identifier = -1; // TxRecordsetField::ogrIndex of TxID
constexpr int foreign = -2;    // … of a joined dataset's field

bool isIdentifierName(const QString &name)
{
    return name.compare(u"TxID", Qt::CaseInsensitive) == 0;
}

QString ogrName(TxVectorPrivate &vector, int ogrIndex)
{
    OGRLayer *layer = vector.layer();
    return layer ? QString::fromUtf8(layer->GetLayerDefn()->GetFieldDefn(ogrIndex)->GetNameRef()) : QString();
}

} // namespace

TxQueryPlan::TxQueryPlan(TxVectorPrivate &vector, const CTxQueryDef &query) : m_query(query)
{
    addSource(vector, QString());
}

void TxQueryPlan::addSource(TxVectorPrivate &vector, const QString &prefix)
{
    m_sources.push_back({&vector, vector.q->GetName()});
    for (const TxVectorField &field : vector.fields()) {
        CTxFieldInfo info = field.info;
        if (!prefix.isEmpty()) {
            info.SetName(prefix + info.GetName());
            info.SetFlags(info.GetFlags() | CTxFieldInfo::ReadOnly);
        }
        m_byName.insert(info.GetName().toCaseFolded(), m_columns.size());
        m_columns.push_back({m_sources.size() - 1, field.ogrIndex, info});
    }
}

std::optional<TxQueryPlan> TxQueryPlan::make(TxVectorPrivate &vector, const CTxQueryDef &query)
{
    if (!TxFilterText::isWhole(query.filter)) {
        TxGdal::fail(QStringLiteral("“%1” is no condition: a quote, bracket or parenthesis has no partner, or a "
                                    "statement ends in it")
                         .arg(query.filter.left(200)));
        return std::nullopt;
    }
    TxQueryPlan plan(vector, query);
    if (!plan.addJoins() || !plan.knowsNames() || !plan.chooseFields() || !plan.readOrder())
        return std::nullopt;
    plan.addTextFields();
    return plan;
}

bool TxQueryPlan::addJoins()
{
    for (const CTxJoinItem &join : std::as_const(m_query.joins)) {
        CTxDataset *dataset = m_sources.front().vector->dataSource().find(join.foreignDataset);
        if (!dataset || !dataset->IsVector())
            return TxGdal::fail(QStringLiteral("There is no dataset “%1” to join").arg(join.foreignDataset));
        const bool isTwice = std::any_of(m_sources.begin(), m_sources.end(), [dataset](const Source &source) {
            return source.name.compare(dataset->GetName(), Qt::CaseInsensitive) == 0;
        });
        if (isTwice)
            return TxGdal::fail(QStringLiteral("“%1” takes part in the query already").arg(dataset->GetName()));
        if (!findColumn(join.localField))
            return TxGdal::fail(QStringLiteral("There is no field “%1” to join by").arg(join.localField));
        TxVectorPrivate &vector = TxVectorPrivate::of(*static_cast<CDatasetVector *>(dataset));
        addSource(vector, dataset->GetName() + u'.');
        if (!findColumn(dataset->GetName() + u'.' + join.foreignField)) {
            return TxGdal::fail(
                QStringLiteral("“%1” has no field “%2” to join by").arg(dataset->GetName(), join.foreignField));
        }
    }
    return true;
}

void TxQueryPlan::addField(size_t place)
{
    const Column &column = m_columns[place];
    m_fieldColumns.push_back(place);
    m_fields.push_back({column.info, column.source == 0 ? column.ogrIndex : foreign});
}

bool TxQueryPlan::chooseFields()
{
    const auto add = [this](size_t place) { addField(place); };
    add(0); // TxID is always the first
    if ((m_query.options & CTxQueryDef::SkipAttributes) != 0)
        return true;
    if (m_query.fields.isEmpty()) {
        for (size_t place = 0; place < m_columns.size(); ++place) {
            if (m_columns[place].ogrIndex != identifier)
                add(place);
        }
        return true;
    }
    for (const QString &name : std::as_const(m_query.fields)) {
        const std::optional<size_t> place = findColumn(name);
        if (!place)
            return TxGdal::fail(QStringLiteral("“%1” has no field “%2”").arg(m_sources.front().name, name));
        if (*place != 0)
            add(*place);
    }
    return true;
}

void TxQueryPlan::addTextFields()
{
    m_visibleCount = m_fields.size();
    if (!wantsGeometry())
        return;
    for (const char *name : {NativeSchema::text, NativeSchema::textAngle, NativeSchema::textHeight}) {
        const std::optional<size_t> place = findColumn(QString::fromLatin1(name));
        if (place && std::find(m_fieldColumns.begin(), m_fieldColumns.end(), *place) == m_fieldColumns.end())
            addField(*place);
    }
}

bool TxQueryPlan::knowsNames() const
{
    // SQLite takes a quoted name that it does not know for a text, and the misspelling would pass unnoticed.
    QString unknown;
    TxFilterText::replaceNames(m_query.filter, [&](const QString &name, bool isQuoted) {
        if (isQuoted && !findColumn(name))
            unknown = name;
        return QString();
    });
    return unknown.isEmpty() ||
           TxGdal::fail(QStringLiteral("“%1” has no field “%2”").arg(m_sources.front().name, unknown));
}

bool TxQueryPlan::readOrder()
{
    for (const QString &entry : std::as_const(m_query.orderBy)) {
        QString name = entry.trimmed();
        std::optional<size_t> column = findColumn(name); // a field may be called "a DESC"
        bool descending = false;
        if (!column) {
            const QString last = name.section(u' ', -1);
            descending = last.compare(u"DESC", Qt::CaseInsensitive) == 0;
            if (descending || last.compare(u"ASC", Qt::CaseInsensitive) == 0)
                name = name.chopped(last.size()).trimmed();
            column = findColumn(name);
        }
        if (!column)
            return TxGdal::fail(QStringLiteral("There is no field “%1” to order by").arg(entry));
        m_order.push_back({*column, descending});
    }
    return true;
}

std::optional<size_t> TxQueryPlan::findColumn(const QString &name) const
{
    const auto at = m_byName.constFind(name.toCaseFolded());
    return at == m_byName.constEnd() ? std::nullopt : std::optional(*at);
}

TxQueryPlan TxQueryPlan::unfiltered() const
{
    TxQueryPlan plan = *this;
    plan.m_query.filter.clear();
    plan.m_query.bounds = CRect2D();
    plan.m_leadingTable.clear();
    return plan;
}

QString TxQueryPlan::mainAlias() const
{
    return TxGdal::quoteIdentifier(m_sources.front().name);
}

QString TxQueryPlan::layerFilter(const QString &idName) const
{
    return TxFilterText::replaceNames(
        m_query.filter, [&idName](const QString &name, bool) { return isIdentifierName(name) ? idName : QString(); });
}

QString TxQueryPlan::columnText(size_t place, const IdColumn &idColumn) const
{
    const Column &column = m_columns[place];
    const Source &source = m_sources[column.source];
    const QString name =
        column.ogrIndex == identifier ? idColumn(*source.vector) : ogrName(*source.vector, column.ogrIndex);
    return TxGdal::quoteIdentifier(source.name) + u'.' + TxGdal::quoteIdentifier(name);
}

QString TxQueryPlan::fromText(const IdColumn &idColumn, const QStringList &conditions) const
{
    const auto table = [](const Source &source) {
        return TxGdal::quoteIdentifier(QString::fromUtf8(source.vector->source)) + QStringLiteral(" AS ") +
               TxGdal::quoteIdentifier(source.name);
    };
    const QString equals = m_readsJoinedWhole ? QStringLiteral(" = +") : QStringLiteral(" = ");
    QString text = QStringLiteral(" FROM ");
    if (!m_leadingTable.isEmpty())
        text += m_leadingTable + QStringLiteral(" CROSS JOIN "); // which SQLite takes in the order that is written
    text += table(m_sources.front());
    for (size_t i = 1; i < m_sources.size(); ++i) {
        const CTxJoinItem &join = m_query.joins.at(static_cast<qsizetype>(i) - 1);
        const QString words =
            join.kind == CTxJoinItem::InnerJoin ? QStringLiteral(" JOIN ") : QStringLiteral(" LEFT JOIN ");
        text += words + table(m_sources[i]) + QStringLiteral(" ON ") +
                columnText(*findColumn(join.localField), idColumn) + equals +
                columnText(*findColumn(m_sources[i].name + u'.' + join.foreignField), idColumn);
    }
    QStringList all = conditions;
    if (!m_query.filter.trimmed().isEmpty()) {
        // Bare names are those of the queried dataset, also where a joined one has the same; the line end closes a
        // comment that ends the condition.
        const QString filter = TxFilterText::replaceNames(m_query.filter, [&](const QString &name, bool) {
            const std::optional<size_t> place = findColumn(name);
            return place && m_columns[*place].source == 0 ? columnText(*place, idColumn) : QString();
        });
        all.prepend(u'(' + filter + QStringLiteral("\n)"));
    }
    if (!all.isEmpty())
        text += QStringLiteral(" WHERE ") + all.join(QStringLiteral(" AND "));
    return text;
}

QString TxQueryPlan::select(const IdColumn &idColumn, const QString &geometryColumn,
                            const QStringList &conditions) const
{
    QStringList columns;
    for (const size_t place : m_fieldColumns)
        columns.append(columnText(place, idColumn) + QStringLiteral(" AS c%1").arg(columns.size()));
    if (!geometryColumn.isEmpty())
        columns.append(mainAlias() + u'.' + TxGdal::quoteIdentifier(geometryColumn));
    QString text = QStringLiteral("SELECT ") + columns.join(QStringLiteral(", ")) + fromText(idColumn, conditions);
    QStringList keys;
    for (const OrderKey &key : m_order)
        keys.append(columnText(key.column, idColumn) + (key.descending ? QStringLiteral(" DESC") : QString()));
    if (!keys.isEmpty())
        text += QStringLiteral(" ORDER BY ") + keys.join(QStringLiteral(", "));
    return text;
}

QString TxQueryPlan::selectCount(const IdColumn &idColumn, const QStringList &conditions) const
{
    return QStringLiteral("SELECT COUNT(*)") + fromText(idColumn, conditions);
}

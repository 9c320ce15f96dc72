#include "RecordTableModel.h"

#include "common/TdCommMethods.h"
#include "engine/base/TxErrorMsg.h"
#include "engine/data/DatasetVector.h"
#include "engine/data/TxQueryDef.h"
#include "engine/data/TxRecordset.h"

#include <QElapsedTimer>
#include <QFont>
#include <QGuiApplication>
#include <QPalette>

#include <algorithm>

namespace {

constexpr int cacheBytes = 32 << 20;
constexpr int cellsPerPage = 4096;
constexpr int sliceMilliseconds = 8;
constexpr int longestCell = 300; // characters that a cell shows

/// Bytes that @p value takes in the cache, about.
qsizetype cost(const CTxVariant &value)
{
    qsizetype bytes = sizeof(CTxVariant);
    switch (value.GetType()) {
    case CTxVariant::String:
    case CTxVariant::NarrowString:
    case CTxVariant::WideString:
        bytes += value.toText().size() * 2;
        break;
    case CTxVariant::Blob:
    case CTxVariant::BlobObject:
    case CTxVariant::ByteArray:
        bytes += value.toBytes().size();
        break;
    default:
        break;
    }
    return bytes;
}

/// What the cell does not show of @p value: all digits of a real number, the rest of a long text. Else nothing.
QVariant toolTip(const CTxVariant &value)
{
    constexpr int longText = 40;
    constexpr int longestToolTip = 2000;
    if (value.GetType() == CTxVariant::Double)
        return value.toText();
    const QString text = RecordTableModel::valueText(value);
    if (text.size() <= longText)
        return {};
    // Escaped, so that a value that looks like markup is shown as it is; marked as rich text, so that lines are broken.
    return QStringLiteral("<qt>%1</qt>").arg(text.left(longestToolTip).toHtmlEscaped());
}

bool isNumber(const CTxFieldInfo &field)
{
    switch (field.GetType()) {
    case CTxFieldInfo::Byte:
    case CTxFieldInfo::Short:
    case CTxFieldInfo::Long:
    case CTxFieldInfo::Currency:
    case CTxFieldInfo::Single:
    case CTxFieldInfo::Double:
    case CTxFieldInfo::Numeric:
    case CTxFieldInfo::Float:
        return true;
    default:
        return false;
    }
}

/// Gives the recordset back, if it still lives.
void giveBack(TxHandle<CTxRecordset> &handle)
{
    CTxRecordset *recordset = handle.get();
    CTdCommMethods::ReleaseRecordset(recordset);
    handle = {};
}

} // namespace

RecordTableModel::RecordTableModel(QObject *parent) : QAbstractTableModel(parent), m_pages(cacheBytes)
{
    m_timer.setInterval(0);
    connect(&m_timer, &QTimer::timeout, this, [this] { walk(sliceMilliseconds); });
}

RecordTableModel::~RecordTableModel()
{
    giveBack(m_walker);
    giveBack(m_reader);
}

bool RecordTableModel::setDataset(CDatasetVector *dataset)
{
    release();
    m_error.clear();
    if (!dataset)
        return true;
    if (!dataset->Open()) {
        m_error = TxGetErrorMsgObj().GetErrorMessage();
        return false;
    }
    m_dataset = TxHandle(dataset);
    const CTxRecordset *reader = openReader();
    if (!reader) {
        m_dataset = {};
        return false;
    }
    beginResetModel();
    const int fields = reader->GetFieldCount();
    m_fields.reserve(fields);
    for (int i = 0; i < fields; ++i) {
        CTxFieldInfo info;
        reader->GetFieldInfo(i, info);
        m_fields.append(info);
    }
    m_pageRows = std::clamp(cellsPerPage / std::max(fields, 1), 1, 256);
    endResetModel();
    return start(QString(), -1, Qt::AscendingOrder);
}

void RecordTableModel::release()
{
    beginResetModel();
    m_timer.stop();
    giveBack(m_walker);
    giveBack(m_reader);
    m_dataset = {};
    m_fields.clear();
    m_index.clear();
    m_pages.clear();
    m_shown = 0;
    m_filter.clear();
    m_sortColumn = -1;
    m_cut = false;
    endResetModel();
}

bool RecordTableModel::setFilter(const QString &condition)
{
    return start(condition.trimmed(), m_sortColumn, m_sortOrder);
}

void RecordTableModel::sort(int column, Qt::SortOrder order)
{
    if (column != m_sortColumn || (column >= 0 && order != m_sortOrder))
        start(m_filter, column, order);
}

bool RecordTableModel::refresh()
{
    return openReader() && start(m_filter, m_sortColumn, m_sortOrder);
}

/// Runs a query on the dataset. @return null, and error(), when it cannot be read.
CTxRecordset *RecordTableModel::query(const CTxQueryDef &query)
{
    CTxRecordset *recordset = dataset() ? dataset()->Query(query) : nullptr;
    if (!recordset)
        m_error = dataset() ? TxGetErrorMsgObj().GetErrorMessage() : tr("The dataset has gone.");
    return recordset;
}

/// Makes the cursor that reads whole records, in place of the one before.
CTxRecordset *RecordTableModel::openReader()
{
    CTxQueryDef all;
    all.options = CTxQueryDef::SkipGeometry;
    CTxRecordset *reader = query(all);
    giveBack(m_reader);
    m_reader = TxHandle(reader);
    return reader;
}

/// Begins a walk. The one that goes on is dropped only when the new query is understood.
bool RecordTableModel::start(const QString &filter, int sortColumn, Qt::SortOrder order)
{
    CTxQueryDef identifiers;
    identifiers.filter = filter;
    identifiers.options = CTxQueryDef::SkipGeometry;
    identifiers.fields = QStringList{QStringLiteral("TxID")};
    if (sortColumn >= 0 && sortColumn < m_fields.GetCount())
        identifiers.orderBy << m_fields[sortColumn].GetName() +
                                   (order == Qt::AscendingOrder ? QLatin1String(" ASC") : QLatin1String(" DESC"));
    CTxRecordset *walker = query(identifiers);
    if (!walker || (!m_reader.get() && !openReader()))
        return false;
    beginResetModel();
    giveBack(m_walker);
    m_walker = TxHandle(walker);
    m_error.clear();
    m_filter = filter;
    m_sortColumn = sortColumn;
    m_sortOrder = order;
    m_cut = false;
    m_index.clear();
    m_pages.clear();
    m_shown = 0;
    endResetModel();
    walk(sliceMilliseconds); // so that a view has rows in its first picture
    if (m_walker.get())
        m_timer.start();
    return true;
}

/// Takes identifiers from the walking cursor for about @p milliseconds.
void RecordTableModel::walk(int milliseconds)
{
    QElapsedTimer clock;
    clock.start();
    CTxRecordset *walker = m_walker.get();
    bool more = walker && !walker->IsEOF();
    while (more) {
        m_index.append(walker->GetID());
        more = walker->MoveNext();
        if (m_index.size() >= maximumRows) {
            m_cut = more;
            more = false;
        }
        if (m_index.size() % 64 == 0 && clock.hasExpired(milliseconds))
            break;
    }
    if (!more)
        endWalk();
    // Views do work over all rows when rows come, so the portions grow with their number.
    if (!more || m_shown == 0 || m_index.size() - m_shown > std::max(20000, m_shown / 4))
        showPending();
}

void RecordTableModel::endWalk()
{
    m_timer.stop();
    giveBack(m_walker);
}

void RecordTableModel::showPending()
{
    const int rows = static_cast<int>(m_index.size());
    if (rows > m_shown) {
        beginInsertRows({}, m_shown, rows - 1);
        m_shown = rows;
        endInsertRows();
    }
    Q_EMIT walked();
}

qint64 RecordTableModel::recordId(int row) const
{
    return row >= 0 && row < m_shown ? m_index.at(row) : -1;
}

int RecordTableModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_shown;
}

int RecordTableModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_fields.GetCount();
}

const RecordTableModel::Row *RecordTableModel::row(int row) const
{
    Page *page = m_pages.object(row / m_pageRows);
    if (!page)
        page = readPage(row / m_pageRows);
    const size_t place = static_cast<size_t>(row % m_pageRows);
    // A page that was read when fewer rows were known ends early.
    if (page && place >= page->size()) {
        m_pages.remove(row / m_pageRows);
        page = readPage(row / m_pageRows);
    }
    return page && place < page->size() ? &(*page)[place] : nullptr;
}

RecordTableModel::Page *RecordTableModel::readPage(int page) const
{
    CTxRecordset *reader = m_reader.get();
    if (!reader)
        return nullptr;
    const int first = page * m_pageRows;
    const int last = std::min(first + m_pageRows, m_shown);
    auto *rows = new Page;
    qsizetype bytes = 0;
    for (int r = first; r < last; ++r) {
        Row values(static_cast<size_t>(m_fields.GetCount()));
        if (reader->MoveToID(m_index.at(r))) {
            for (int c = 0; c < m_fields.GetCount(); ++c)
                reader->GetFieldValue(c, values[static_cast<size_t>(c)]);
        }
        for (const CTxVariant &value : values)
            bytes += cost(value);
        rows->push_back(std::move(values));
    }
    // A page of giants must not be too dear to be kept at all: the view asks for each of its cells.
    m_pages.insert(page, rows, std::min<qsizetype>(bytes, cacheBytes / 2));
    return rows;
}

QVariant RecordTableModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= m_shown || index.column() >= m_fields.GetCount())
        return {};
    if (role == Qt::TextAlignmentRole)
        return int((isNumber(m_fields[index.column()]) ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    if (role != Qt::DisplayRole && role != Qt::ToolTipRole && role != Qt::FontRole && role != Qt::ForegroundRole)
        return {};
    const Row *values = row(index.row());
    return values ? cell((*values)[static_cast<size_t>(index.column())], m_fields[index.column()], role) : QVariant();
}

QVariant RecordTableModel::cell(const CTxVariant &value, const CTxFieldInfo &field, int role) const
{
    switch (role) {
    case Qt::DisplayRole: {
        if (value.IsNull())
            return QStringLiteral("NULL");
        QString text = valueText(value);
        if (text.size() > longestCell)
            text = text.left(longestCell) + QStringLiteral("…");
        return text.replace(QLatin1Char('\n'), QChar(0x2424));
    }
    case Qt::ToolTipRole:
        if (value.IsNull())
            return tr("%1 has no value").arg(field.GetCaption());
        return toolTip(value);
    case Qt::FontRole:
        if (value.IsNull()) {
            QFont font;
            font.setItalic(true);
            return font;
        }
        return {};
    case Qt::ForegroundRole:
        return value.IsNull() ? QVariant(QGuiApplication::palette().brush(QPalette::PlaceholderText)) : QVariant();
    default:
        return {};
    }
}

QVariant RecordTableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Vertical)
        return role == Qt::DisplayRole ? QVariant(section + 1) : QVariant();
    if (section < 0 || section >= m_fields.GetCount())
        return {};
    const CTxFieldInfo &field = m_fields[section];
    switch (role) {
    case Qt::DisplayRole:
        return field.GetCaption();
    case Qt::ToolTipRole: {
        QString text = tr("%1: %2").arg(field.GetName(), CTdCommMethods::GetFieldNameFromType(field.GetType()));
        if (field.GetSize() > 0)
            text += tr(", size %1").arg(field.GetSize());
        return field.IsSystemField() ? text + tr(" (kept by the system)") : text;
    }
    case Qt::TextAlignmentRole:
        return int((isNumber(field) ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    default:
        return {};
    }
}

QString RecordTableModel::fullText(const QModelIndex &index) const
{
    const Row *values = index.isValid() ? row(index.row()) : nullptr;
    return values ? valueText((*values)[static_cast<size_t>(index.column())]) : QString();
}

QString RecordTableModel::valueText(const CTxVariant &value)
{
    switch (value.GetType()) {
    case CTxVariant::Int64:
    case CTxVariant::UnsignedInt64:
    case CTxVariant::UnsignedLong:
        return value.toText();
    default:
        return CTdCommMethods::VAR2STR(value);
    }
}

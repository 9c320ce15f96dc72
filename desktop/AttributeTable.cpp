#include "AttributeTable.h"

#include "Icons.h"
#include "RecordTableModel.h"
#include "engine/data/DatasetVector.h"
#include "workspace/WaitCursor.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QSignalBlocker>
#include <QTableView>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace {

constexpr int widestColumn = 260;        // pixels that a column gets by itself
constexpr qint64 mostCopied = 1'000'000; // cells

} // namespace

AttributeTable::AttributeTable(QWidget *parent)
    : QWidget(parent), m_model(new RecordTableModel(this)), m_filter(new QLineEdit), m_error(new QLabel),
      m_status(new QLabel), m_view(new QTableView)
{
    auto *label = new QLabel(tr("F&ilter:"));
    label->setBuddy(m_filter);
    m_filter->setPlaceholderText(tr("SQL condition, for example NAME LIKE 'A%'"));
    m_filter->setToolTip(tr("Shows only the records for which this SQL condition holds; press Enter to apply it"));
    m_filter->setAccessibleName(tr("Filter condition"));
    m_filter->setClearButtonEnabled(true);
    m_status->setForegroundRole(QPalette::PlaceholderText);
    m_error->setTextFormat(Qt::PlainText);
    m_error->setWordWrap(true);
    m_error->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_error->setContentsMargins(9, 0, 9, 6);
    m_error->setAccessibleName(tr("Filter error"));
    m_error->hide();

    m_view->setModel(m_model);
    m_view->setAccessibleName(tr("Records"));
    m_view->setFrameShape(QFrame::NoFrame);
    m_view->setAlternatingRowColors(true);
    m_view->setWordWrap(false);
    m_view->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_view->setTabKeyNavigation(false);
    m_view->setCornerButtonEnabled(true);
    m_view->setEditTriggers(QAbstractItemView::NoEditTriggers);
    const int rowHeight = fontMetrics().height() + 6;
    m_view->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    m_view->verticalHeader()->setMinimumSectionSize(rowHeight);
    m_view->verticalHeader()->setDefaultSectionSize(rowHeight);
    m_view->verticalHeader()->setDefaultAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_view->horizontalHeader()->setSectionsMovable(true);
    m_view->horizontalHeader()->setSortIndicatorShown(true);
    m_view->horizontalHeader()->setSortIndicatorClearable(true);
    m_view->horizontalHeader()->setSectionsClickable(true);
    m_view->horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
    m_view->horizontalHeader()->setHighlightSections(false);

    auto *copyAction = new QAction(Icons::action(QStringLiteral("copy")), tr("&Copy"), m_view);
    copyAction->setShortcut(QKeySequence::Copy);
    copyAction->setShortcutContext(Qt::WidgetShortcut);
    m_view->addAction(copyAction);
    m_view->setContextMenuPolicy(Qt::ActionsContextMenu);

    auto *bar = new QHBoxLayout;
    bar->setContentsMargins(9, 6, 9, 6);
    bar->setSpacing(6);
    bar->addWidget(label);
    bar->addWidget(m_filter, 1);
    bar->addSpacing(9);
    bar->addWidget(m_status);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addLayout(bar);
    layout->addWidget(m_error);
    layout->addWidget(m_view, 1);
    setFocusProxy(m_view);

    connect(copyAction, &QAction::triggered, this, &AttributeTable::copy);
    connect(m_filter, &QLineEdit::returnPressed, this, &AttributeTable::applyFilter);
    connect(m_filter, &QLineEdit::textChanged, this, [this](const QString &text) {
        if (text.isEmpty())
            applyFilter(); // the clear button
    });
    connect(m_view->horizontalHeader(), &QHeaderView::sortIndicatorChanged, this, &AttributeTable::sortBy);
    connect(m_model, &RecordTableModel::walked, this, &AttributeTable::updateStatus);
    connect(m_model, &RecordTableModel::modelReset, this, &AttributeTable::updateStatus);
    updateStatus();
}

AttributeTable::~AttributeTable() = default;

bool AttributeTable::setDataset(CDatasetVector *dataset)
{
    const bool ok = m_model->setDataset(dataset);
    {
        const QSignalBlocker headerBlocker(m_view->horizontalHeader());
        const QSignalBlocker filterBlocker(m_filter);
        m_view->horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
        m_filter->clear();
    }
    if (dataset)
        setWindowTitle(dataset->GetName());
    showError();
    updateStatus();
    if (ok)
        fitColumns();
    return ok;
}

CDatasetVector *AttributeTable::dataset() const
{
    return m_model->dataset();
}

void AttributeTable::release()
{
    m_model->release();
    updateStatus();
}

void AttributeTable::pause()
{
    m_paused = m_model->dataset();
    m_pausedFilter = m_model->filter();
    m_pausedHeader = m_view->horizontalHeader()->saveState();
    m_pausedSort = m_model->sortColumn();
    m_pausedOrder = m_model->sortOrder();
    m_pausedColumns = m_view->horizontalHeader()->count();
    setUpdatesEnabled(false); // the picture stays while there are no rows
    release();
}

void AttributeTable::resume()
{
    if (!m_paused)
        return;
    if (setDataset(std::exchange(m_paused, nullptr))) {
        setFilter(m_pausedFilter);
        if (m_view->horizontalHeader()->count() == m_pausedColumns)
            m_view->horizontalHeader()->restoreState(m_pausedHeader);
        sortBy(m_pausedSort, m_pausedOrder);
    }
    setUpdatesEnabled(true);
}

QString AttributeTable::error() const
{
    return m_model->error();
}

bool AttributeTable::setFilter(const QString &condition)
{
    {
        const QSignalBlocker blocker(m_filter);
        m_filter->setText(condition);
    }
    applyFilter();
    return error().isEmpty();
}

void AttributeTable::refresh()
{
    m_model->refresh();
    showError();
}

void AttributeTable::applyFilter()
{
    if (m_model->dataset()) {
        const WaitCursor wait;
        m_model->setFilter(m_filter->text());
    }
    showError();
}

void AttributeTable::sortBy(int column, Qt::SortOrder order)
{
    {
        const WaitCursor wait;
        m_model->sort(column, order);
    }
    showError();
    // A storage that cannot order by the column leaves the rows as they were, and so the mark.
    const QSignalBlocker blocker(m_view->horizontalHeader());
    m_view->horizontalHeader()->setSortIndicator(m_model->sortColumn(), m_model->sortOrder());
}

void AttributeTable::showError()
{
    m_error->setText(m_model->error());
    m_error->setVisible(!m_model->error().isEmpty());
    QPalette palette = m_filter->palette();
    const bool dark = QWidget::palette().color(QPalette::Base).lightness() < 128;
    const QColor red = dark ? QColor(0xff, 0x8a, 0x80) : QColor(0xb0, 0x1c, 0x1c);
    palette.setColor(QPalette::Text, m_error->isVisibleTo(this) ? red : QWidget::palette().color(QPalette::Text));
    m_filter->setPalette(palette);
    QPalette errorPalette = m_error->palette();
    errorPalette.setColor(QPalette::WindowText, red);
    m_error->setPalette(errorPalette);
}

void AttributeTable::updateStatus()
{
    if (!m_model->dataset()) {
        m_status->clear();
        return;
    }
    const QString rows = QLocale().toString(m_model->rowCount());
    if (m_model->isCut())
        m_status->setText(tr("the first %1 records").arg(rows));
    else if (!m_model->isComplete())
        m_status->setText(tr("%1 records so far…").arg(rows));
    else if (m_model->rowCount() == 1)
        m_status->setText(tr("1 record"));
    else if (m_model->filter().isEmpty())
        m_status->setText(tr("%1 records").arg(rows));
    else
        m_status->setText(tr("%1 records found").arg(rows));
}

/// Gives the first columns the width that their titles and first rows need.
void AttributeTable::fitColumns()
{
    const int columns = std::min(m_model->columnCount(), 50);
    const int rows = std::min(m_model->rowCount(), 20);
    const QFontMetrics metrics = m_view->fontMetrics();
    const int margin = metrics.averageCharWidth() * 4;
    for (int c = 0; c < columns; ++c) {
        int width = metrics.horizontalAdvance(m_model->headerData(c, Qt::Horizontal).toString()) + 16;
        for (int r = 0; r < rows; ++r)
            width = std::max(width, metrics.horizontalAdvance(m_model->index(r, c).data().toString()));
        m_view->setColumnWidth(c, std::clamp(width + margin, 60, widestColumn));
    }
}

void AttributeTable::copy()
{
    QModelIndexList cells = m_view->selectionModel()->selectedIndexes();
    if (cells.isEmpty() || cells.size() > mostCopied)
        return;
    std::sort(cells.begin(), cells.end());
    QString text;
    for (qsizetype i = 0; i < cells.size(); ++i) {
        if (i > 0)
            text += cells[i].row() == cells[i - 1].row() ? QLatin1Char('\t') : QLatin1Char('\n');
        text += m_model->fullText(cells[i])
                    .replace(QLatin1Char('\t'), QLatin1Char(' '))
                    .replace(QLatin1Char('\n'), QLatin1Char(' '));
    }
    QGuiApplication::clipboard()->setText(text);
}

QSize AttributeTable::sizeHint() const
{
    return {720, 480};
}

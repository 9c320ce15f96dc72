#include "PropertiesDialog.h"

#include "common/TdCommMethods.h"
#include "engine/base/TxNumberText.h"
#include "engine/data/DatasetRaster.h"
#include "engine/data/DatasetVector.h"
#include "engine/data/TxDataSource.h"
#include "engine/projection/TxPJCoordSys.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QFormLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QTabWidget>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {

QString boundsText(const CRect2D &bounds)
{
    if (bounds.IsVoid())
        return PropertiesDialog::tr("empty");
    const auto number = [](double value) { return TxNumberText::general(value, 10); };
    return PropertiesDialog::tr("left %1, bottom %2\nright %3, top %4")
        .arg(number(bounds.left), number(bounds.bottom), number(bounds.right), number(bounds.top));
}

QString coordSysText(const CTxPJCoordSys &system)
{
    if (system.GetType() == CTxPJCoordSys::None)
        return PropertiesDialog::tr("none (plane coordinates)");
    const qint32 unit = system.GetDistUnits();
    return PropertiesDialog::tr("%1\nunit: %2").arg(system.GetName(), CTdCommMethods::GetDistanceUint(unit));
}

QString storageText(const CTxDataSource &source)
{
    const CTxDataSourceStorage::Entry *entry = CTxDataSourceStorage::find(source.GetEngineType());
    return entry ? entry->caption : PropertiesDialog::tr("unknown");
}

/// A tool tip that wraps, and shows @p text as it stands, whatever looks like markup in it.
QString wholeText(const QString &text)
{
    return text.isEmpty() ? QString() : QStringLiteral("<p>%1</p>").arg(text.toHtmlEscaped());
}

} // namespace

PropertiesDialog::PropertiesDialog(const CTxDataset &dataset, QWidget *parent) : QDialog(parent)
{
    build(dataset.GetName());
    const CTxDataSource &source = *dataset.GetDataSource();
    CTxPJCoordSys system;
    dataset.GetProjection(system);
    addRow(tr("Name"), dataset.GetName());
    addRow(tr("Kind"), CTdCommMethods::GetDatasetTypeName(dataset.GetType()));
    addRow(tr("Datasource"), source.GetAlias());
    addRow(tr("State"), dataset.IsOpen() ? tr("open") : tr("closed"));
    if (dataset.IsVector()) {
        const auto &vector = static_cast<const CDatasetVector &>(dataset);
        const qint64 records = vector.GetRecordCount();
        addRow(tr("Records"), records < 0 ? tr("not known") : QLocale().toString(records));
        addRow(tr("Fields"), QLocale().toString(vector.GetFieldCount()));
    } else {
        const auto &raster = static_cast<const CDatasetRaster &>(dataset);
        const QSize size = raster.GetSize();
        addRow(tr("Size"), tr("%1 × %2 cells").arg(size.width()).arg(size.height()));
        addRow(tr("Bands"), tr("%1 (%2)").arg(raster.GetBandCount()).arg(raster.GetPixelFormat()));
    }
    if (dataset.GetEncType() != CElemDataEnc::NONE)
        addRow(tr("Encoding"), CTdCommMethods::GetEncTypeName(dataset.GetEncType()));
    if (dataset.GetType() != CElemDatasetInfo::Tabular) {
        addRow(tr("Bounds"), boundsText(dataset.GetBounds()));
        addRow(tr("Coordinate system"), coordSysText(system));
    }
    if (dataset.IsVector())
        addFields(static_cast<const CDatasetVector &>(dataset));
}

PropertiesDialog::PropertiesDialog(const CTxDataSource &dataSource, QWidget *parent) : QDialog(parent)
{
    build(dataSource.GetAlias());
    CTxPJCoordSys system;
    dataSource.GetProjection(system);
    addRow(tr("Alias"), dataSource.GetAlias());
    addRow(tr("Storage"), storageText(dataSource));
    addRow(dataSource.IsDatabaseType() ? tr("Connection") : tr("Path"),
           dataSource.IsDatabaseType() ? dataSource.GetPath() : QDir::toNativeSeparators(dataSource.GetPath()));
    addRow(tr("Access"),
           dataSource.GetOpenOptions() & CTxDataSource::OpenReadOnly ? tr("read only") : tr("read and write"));
    addRow(tr("Transaction"), dataSource.IsTransStarted() ? tr("started") : tr("none"));
    addRow(tr("Datasets"), QLocale().toString(dataSource.GetDatasetCount()));
    addRow(tr("Coordinate system"), coordSysText(system));
    addDatasets(dataSource);
}

void PropertiesDialog::build(const QString &name)
{
    setWindowTitle(tr("Properties of %1").arg(name));
    m_tabs = new QTabWidget;
    auto *page = new QWidget;
    m_form = new QFormLayout(page);
    m_form->setFieldGrowthPolicy(QFormLayout::ExpandingFieldsGrow);
    m_form->setHorizontalSpacing(18);
    m_tabs->addTab(page, tr("&General"));
    auto *box = new QDialogButtonBox(QDialogButtonBox::Close);
    connect(box, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_tabs);
    layout->addWidget(box);
    resize(620, 420);
}

void PropertiesDialog::addRow(const QString &caption, const QString &value)
{
    QWidget *field = nullptr;
    if (value.contains(QLatin1Char('\n'))) {
        auto *label = new QLabel(value);
        label->setTextFormat(Qt::PlainText);
        label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
        field = label;
    } else {
        // A long path can be scrolled and copied where a label would be cut.
        auto *line = new QLineEdit(value);
        line->setReadOnly(true);
        line->setFrame(false);
        line->setCursorPosition(0);
        line->setTextMargins(-2, 0, 0, 0);
        line->setToolTip(wholeText(value));
        QPalette palette = line->palette();
        palette.setColor(QPalette::Base, Qt::transparent);
        line->setPalette(palette);
        field = line;
    }
    field->setObjectName(caption);
    field->setAccessibleName(caption);
    m_form->addRow(tr("%1:").arg(caption), field);
}

QString PropertiesDialog::value(const QString &caption) const
{
    const auto *field = findChild<QWidget *>(caption);
    return field ? field->property("text").toString() : QString();
}

QTreeWidget *PropertiesDialog::addList(const QString &title, const QStringList &columns)
{
    auto *list = new QTreeWidget;
    list->setRootIsDecorated(false);
    list->setUniformRowHeights(true);
    list->setAlternatingRowColors(true);
    list->setHeaderLabels(columns);
    auto *page = new QWidget;
    auto *layout = new QVBoxLayout(page);
    layout->addWidget(list);
    m_tabs->addTab(page, title);
    return list;
}

void PropertiesDialog::addFields(const CDatasetVector &dataset)
{
    m_fields = addList(tr("&Fields"), {tr("Name"), tr("Type"), tr("Size"), tr("Notes")});
    QList<QTreeWidgetItem *> items;
    const int count = dataset.GetFieldCount();
    for (int i = 0; i < count; ++i) {
        CTxFieldInfo field;
        if (!dataset.GetFieldInfo(i, field))
            continue;
        QStringList notes;
        if (field.IsSystemField())
            notes << tr("kept by the system");
        if (field.GetFlags() & CTxFieldInfo::Required)
            notes << tr("required");
        if (field.GetFlags() & CTxFieldInfo::Unique)
            notes << tr("unique");
        if (field.GetCaption() != field.GetName())
            notes << tr("shown as %1").arg(field.GetCaption());
        auto *item = new QTreeWidgetItem({field.GetName(), CTdCommMethods::GetFieldNameFromType(field.GetType()),
                                          field.GetSize() > 0 ? QString::number(field.GetSize()) : QString(),
                                          notes.join(QStringLiteral(", "))});
        item->setTextAlignment(2, Qt::AlignRight | Qt::AlignVCenter);
        item->setToolTip(3, wholeText(item->text(3)));
        items << item;
    }
    m_fields->addTopLevelItems(items);
    m_fields->setColumnWidth(0, 160);
    m_fields->setColumnWidth(1, 90);
    m_fields->setColumnWidth(2, 60);
}

void PropertiesDialog::addDatasets(const CTxDataSource &dataSource)
{
    QTreeWidget *list = addList(tr("&Datasets"), {tr("Name"), tr("Kind")});
    QList<QTreeWidgetItem *> items;
    for (qint32 i = 0; i < dataSource.GetDatasetCount(); ++i) {
        const CTxDataset *dataset = dataSource.GetDatasetAt(i);
        items << new QTreeWidgetItem({dataset->GetName(), CTdCommMethods::GetDatasetTypeName(dataset->GetType())});
    }
    list->addTopLevelItems(items);
    list->setColumnWidth(0, 260);
}

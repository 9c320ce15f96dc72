#include "DatasetChooser.h"

#include "engine/data/TxDataSource.h"
#include "engine/data/TxDataset.h"
#include "engine/map/TxWorkspace.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QListView>
#include <QSignalBlocker>

#include <algorithm>

DatasetChooser::DatasetChooser(const CTxWorkspace &workspace, const QString &name, QWidget *parent)
    : QWidget(parent), m_workspace(workspace), m_sources(new QComboBox), m_datasets(new QComboBox)
{
    m_sources->setAccessibleName(tr("%1: datasource").arg(name));
    m_datasets->setAccessibleName(tr("%1: dataset").arg(name));
    for (QComboBox *box : {m_sources, m_datasets}) {
        box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        box->setMinimumContentsLength(20);
        auto *list = new QListView;
        list->setUniformItemSizes(true); // there may be a hundred thousand
        box->setView(list);
    }
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_sources, 2);
    layout->addWidget(m_datasets, 3);
    setFocusProxy(m_datasets);
    connect(m_sources, &QComboBox::currentIndexChanged, this, [this] {
        fillDatasets();
        Q_EMIT changed();
    });
    connect(m_datasets, &QComboBox::currentIndexChanged, this, &DatasetChooser::changed);
}

void DatasetChooser::setFilter(const Filter &fits, const CTxDataset *preferred)
{
    const CTxDataset *before = dataset();
    m_fits = fits;
    {
        const QSignalBlocker blocker(m_sources);
        m_sources->clear();
        const CTxDataSources &sources = m_workspace.GetDataSources();
        for (int s = 0; s < sources.GetCount(); ++s) {
            const CTxDataSource &source = *sources.GetAt(s);
            bool any = false;
            for (qint32 i = 0; i < source.GetDatasetCount() && !any; ++i)
                any = fits(*source.GetDatasetAt(i));
            if (any)
                m_sources->addItem(source.GetAlias());
        }
        fillDatasets();
    }
    choose(before && fits(*before) ? before : preferred);
    Q_EMIT changed();
}

void DatasetChooser::choose(const CTxDataset *dataset)
{
    if (!dataset)
        return;
    const int source = m_sources->findText(dataset->GetDataSource()->GetAlias());
    if (source < 0)
        return;
    m_sources->setCurrentIndex(source);
    m_datasets->setCurrentIndex(
        std::max(0, m_datasets->findText(dataset->GetName(), Qt::MatchExactly | Qt::MatchCaseSensitive)));
}

CTxDataset *DatasetChooser::dataset() const
{
    const CTxDataSource *source = m_workspace.GetDataSources().find(m_sources->currentText());
    return source && m_datasets->count() > 0 ? source->GetDataset(m_datasets->currentText()) : nullptr;
}

void DatasetChooser::fillDatasets()
{
    const QSignalBlocker blocker(m_datasets);
    m_datasets->clear();
    const CTxDataSource *source = m_workspace.GetDataSources().find(m_sources->currentText());
    QStringList names;
    for (qint32 i = 0; source && i < source->GetDatasetCount(); ++i)
        if (const CTxDataset *dataset = source->GetDatasetAt(i); m_fits(*dataset))
            names << dataset->GetName();
    m_datasets->addItems(names);
}

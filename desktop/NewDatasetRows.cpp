#include "NewDatasetRows.h"

#include "common/TdCommMethods.h"
#include "engine/data/TxDataSource.h"
#include "engine/map/TxWorkspace.h"

#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>

#include <algorithm>

NewDatasetRows::NewDatasetRows(const CTxWorkspace &workspace, const QString &proposal,
                               const std::function<bool(const CTxDataSource &)> &canTake, const QString &preferred,
                               QFormLayout *form)
    : QObject(form), m_workspace(workspace), m_proposal(proposal), m_sources(new QComboBox), m_name(new QLineEdit),
      m_problem(new QLabel)
{
    const CTxDataSources &sources = workspace.GetDataSources();
    for (int i = 0; i < sources.GetCount(); ++i) {
        const CTxDataSource &source = *sources.GetAt(i);
        if (source.HasCapability(CTxDataSource::CanCreateDatasets) && canTake(source))
            m_sources->addItem(source.GetAlias());
    }
    m_sources->setCurrentIndex(std::max(0, m_sources->findText(preferred)));
    m_sources->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    m_sources->setMinimumContentsLength(40);
    m_name->setMaxLength(200);
    m_problem->setTextFormat(Qt::PlainText);
    m_problem->setWordWrap(true);
    form->addRow(tr("In &datasource:"), m_sources);
    form->addRow(tr("&Name:"), m_name);
    form->addRow(QString(), m_problem);

    connect(m_sources, &QComboBox::currentIndexChanged, this, [this] {
        propose();
        check();
    });
    connect(m_name, &QLineEdit::textEdited, this, [this] { m_isOwnName = true; });
    connect(m_name, &QLineEdit::textChanged, this, &NewDatasetRows::check);
    propose();
    check();
}

CTxDataSource *NewDatasetRows::dataSource() const
{
    return m_workspace.GetDataSources().find(m_sources->currentText());
}

QString NewDatasetRows::name() const
{
    return m_name->text().trimmed();
}

bool NewDatasetRows::isValid() const
{
    return CTdCommMethods::IsAvailableDatasetName(dataSource(), name());
}

void NewDatasetRows::propose()
{
    if (const CTxDataSource *source = m_isOwnName ? nullptr : dataSource())
        m_name->setText(source->GetUnoccupiedDatasetName(m_proposal));
}

void NewDatasetRows::check()
{
    QString problem;
    if (!dataSource())
        problem = tr("No datasource is open that can take it. Open one that can be written.");
    else if (dataSource()->GetDataset(name()))
        problem = tr("There is a dataset of this name already.");
    else if (!name().isEmpty() && !isValid())
        problem = tr("A name has up to 63 letters, digits and underscores, and no digit first.");
    m_problem->setText(problem);
    m_name->setAccessibleDescription(problem);
    Q_EMIT changed();
}

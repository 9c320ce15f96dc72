#include "ParallelLineDialog.h"

#include "EnteredNumber.h"
#include "NewDatasetRows.h"
#include "common/TdCommMethods.h"
#include "engine/data/DatasetVector.h"
#include "engine/data/TxDataSource.h"
#include "engine/projection/TxPJCoordSys.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

constexpr double smallest = 1e-10; // ParallelLine takes it for none

/// The unit of the dataset's coordinates, for behind the distance.
QString unitText(const CDatasetVector &source)
{
    CTxPJCoordSys system;
    source.GetProjection(system);
    if (system.GetType() == CTxPJCoordSys::None)
        return ParallelLineDialog::tr("map units");
    return CTdCommMethods::GetDistanceUint(system.GetDistUnits());
}

} // namespace

ParallelLineDialog::ParallelLineDialog(const CTxWorkspace &workspace, const CDatasetVector &source, QWidget *parent)
    : QDialog(parent), m_distance(new QLineEdit), m_side(new QComboBox), m_rows(nullptr),
      m_buttons(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel))
{
    setWindowTitle(tr("Make Parallel Line"));
    auto *what = new QLabel(
        tr("Makes a line beside each line of “%1”, with its attributes, in a new dataset.").arg(source.GetName()));
    what->setTextFormat(Qt::PlainText);
    what->setWordWrap(true);
    auto *unit = new QLabel(unitText(source));
    unit->setTextFormat(Qt::PlainText);
    m_distance->setPlaceholderText(tr("required"));
    m_distance->setAccessibleDescription(unit->text());
    m_distance->setMaxLength(40);
    auto *distanceRow = new QHBoxLayout;
    distanceRow->addWidget(m_distance, 1);
    distanceRow->addWidget(unit);
    m_side->addItems({tr("to the left of each line's direction"), tr("to the right"), tr("on both sides")});

    auto *form = new QFormLayout;
    form->addRow(tr("Di&stance:"), distanceRow);
    qobject_cast<QLabel *>(form->labelForField(distanceRow))->setBuddy(m_distance);
    form->addRow(tr("S&ide:"), m_side);
    m_rows = new NewDatasetRows(
        workspace, source.GetName() + QStringLiteral("_parallel"), [](const CTxDataSource &) { return true; },
        source.GetDataSource()->GetAlias(), form);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(what);
    layout->addSpacing(6);
    layout->addLayout(form);
    layout->addStretch();
    layout->addWidget(m_buttons);

    m_buttons->button(QDialogButtonBox::Ok)->setText(tr("Make"));
    connect(m_buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_distance, &QLineEdit::textChanged, this, &ParallelLineDialog::updateButtons);
    connect(m_rows, &NewDatasetRows::changed, this, &ParallelLineDialog::updateButtons);
    m_distance->setFocus();
    updateButtons();
}

std::optional<double> ParallelLineDialog::distance() const
{
    const std::optional<double> value = enteredNumber(m_distance->text());
    return value >= smallest ? value : std::nullopt;
}

DatasetJobs::Side ParallelLineDialog::side() const
{
    return static_cast<DatasetJobs::Side>(m_side->currentIndex());
}

DatasetJobs::Place ParallelLineDialog::place() const
{
    return {m_rows->dataSource(), m_rows->name(), CElemDataEnc::NONE};
}

void ParallelLineDialog::updateButtons()
{
    m_buttons->button(QDialogButtonBox::Ok)->setEnabled(distance() && m_rows->isValid());
}

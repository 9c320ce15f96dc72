#include "CopyDatasetDialog.h"

#include "NewDatasetRows.h"
#include "common/TdCommMethods.h"
#include "engine/data/TxDataSource.h"
#include "engine/data/TxDataset.h"
#include "engine/map/TxWorkspace.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>
#include <array>
#include <functional>

namespace {

// Coordinates are packed in whole numbers, cells by the ways of packing pictures.
constexpr std::array vectorEncodings = {CElemDataEnc::NONE, CElemDataEnc::SBC, CElemDataEnc::SWC, CElemDataEnc::STC,
                                        CElemDataEnc::SDC};
constexpr std::array rasterEncodings = {CElemDataEnc::NONE, CElemDataEnc::DCT, CElemDataEnc::SGL, CElemDataEnc::LZW};

/// Another datasource than that of @p source, if one can take it.
QString firstOther(const CTxWorkspace &workspace, const CTxDataset &source,
                   const std::function<bool(const CTxDataSource &)> &canTake)
{
    const CTxDataSources &sources = workspace.GetDataSources();
    for (int i = 0; i < sources.GetCount(); ++i) {
        const CTxDataSource *other = sources.GetAt(i);
        if (other != source.GetDataSource() && other->HasCapability(CTxDataSource::CanCreateDatasets) &&
            canTake(*other))
            return other->GetAlias();
    }
    return source.GetDataSource()->GetAlias();
}

} // namespace

CopyDatasetDialog::CopyDatasetDialog(const CTxWorkspace &workspace, const CTxDataset &source, QWidget *parent)
    : QDialog(parent), m_form(new QFormLayout), m_rows(nullptr), m_encoding(new QComboBox),
      m_buttons(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel))
{
    setWindowTitle(tr("Copy to Another Datasource"));
    const bool isVector = source.IsVector();
    const auto canTake = [isVector](const CTxDataSource &target) {
        return isVector || target.HasCapability(CTxDataSource::CanHoldRasters);
    };
    auto *what = new QLabel(
        tr("Copies “%1” from “%2” with all its content.").arg(source.GetName(), source.GetDataSource()->GetAlias()));
    what->setTextFormat(Qt::PlainText);
    what->setWordWrap(true);
    m_rows = new NewDatasetRows(workspace, source.GetName(), canTake, firstOther(workspace, source, canTake), m_form);
    const auto addEncoding = [this, &source](CElemDataEnc::encType encoding) {
        m_encoding->addItem(CTdCommMethods::GetEncTypeName(encoding), int(encoding));
        if (encoding == source.GetEncType())
            m_encoding->setCurrentIndex(m_encoding->count() - 1);
    };
    if (isVector)
        std::for_each(vectorEncodings.begin(), vectorEncodings.end(), addEncoding);
    else
        std::for_each(rasterEncodings.begin(), rasterEncodings.end(), addEncoding);
    m_form->insertRow(m_form->rowCount() - 1, tr("&Encoding:"), m_encoding); // what is wrong stays below all
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(what);
    layout->addSpacing(6);
    layout->addLayout(m_form);
    layout->addStretch();
    layout->addWidget(m_buttons);

    m_buttons->button(QDialogButtonBox::Ok)->setText(tr("Copy"));
    connect(m_buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_rows, &NewDatasetRows::changed, this, &CopyDatasetDialog::updateButtons);
    m_rows->nameEdit()->setFocus();
    m_rows->nameEdit()->selectAll();
    updateButtons();
}

void CopyDatasetDialog::updateButtons()
{
    // Other storages do not keep an encoding.
    const CTxDataSource *target = m_rows->dataSource();
    m_form->setRowVisible(m_encoding, target && target->GetEngineType() == CTxDataSourceStorage::Native);
    m_buttons->button(QDialogButtonBox::Ok)->setEnabled(m_rows->isValid());
}

DatasetJobs::Place CopyDatasetDialog::place() const
{
    const bool hasEncoding = m_form->isRowVisible(m_encoding);
    return {m_rows->dataSource(), m_rows->name(),
            hasEncoding ? CElemDataEnc::encType(m_encoding->currentData().toInt()) : CElemDataEnc::NONE};
}

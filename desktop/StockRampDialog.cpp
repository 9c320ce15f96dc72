#include "StockRampDialog.h"

#include "EnteredNumber.h"
#include "LayerColours.h"
#include "engine/base/TxNumberText.h"
#include "engine/symbol/TxStockGradient.h"
#include "engine/ui/TxComboBoxGradientColors.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

namespace {

constexpr int blendedColors = 256; // one for each level that a screen tells apart
constexpr int mostSteps = 100;
constexpr int usualSteps = 12;

} // namespace

StockRampDialog::StockRampDialog(const QString &layerName, const CTxColorsetEx &shown,
                                 const std::optional<std::pair<double, double>> &heights, QWidget *parent)
    : QDialog(parent), m_heights(heights), m_ramp(new CTxComboBoxGradientColors),
      m_reverse(new QCheckBox(tr("Re&versed"))), m_seaLevel(new QCheckBox(tr("Se&a level at 0"))),
      m_floor(new QLineEdit), m_ceiling(new QLineEdit), m_stepped(new QCheckBox(tr("In &steps:"))),
      m_steps(new QSpinBox), m_problem(new QLabel),
      m_buttons(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel))
{
    setWindowTitle(tr("Stock Colour Ramp"));
    m_ramp->InitContent();
    m_ramp->setCurrentIndex(static_cast<int>(TxStockGradient::Hypsometric));
    m_seaLevel->setChecked(true);
    m_seaLevel->setToolTip(tr("Water colours for heights below 0, land colours above"));
    m_steps->setRange(2, mostSteps);
    m_steps->setValue(usualSteps);
    m_steps->setAccessibleName(tr("Number of steps"));
    for (QLineEdit *edit : {m_floor, m_ceiling})
        edit->setMaxLength(40);
    m_okText = m_buttons->button(QDialogButtonBox::Ok)->text();
    makeLayout(layerName);
    showRange(shown.GetZFloor(), shown.GetZCeiling());

    connect(m_buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_ramp, &QComboBox::currentIndexChanged, this, &StockRampDialog::updateState);
    for (QCheckBox *box : {m_reverse, m_seaLevel, m_stepped})
        connect(box, &QCheckBox::toggled, this, &StockRampDialog::updateState);
    for (QLineEdit *edit : {m_floor, m_ceiling})
        connect(edit, &QLineEdit::textChanged, this, &StockRampDialog::updateState);
    connect(m_steps, &QSpinBox::valueChanged, this, &StockRampDialog::updateState);
    m_ramp->setFocus();
    updateState();
}

void StockRampDialog::makeLayout(const QString &layerName)
{
    auto *what = new QLabel(tr("Colours the heights of “%1”.").arg(layerName));
    what->setTextFormat(Qt::PlainText);
    what->setWordWrap(true);
    auto *form = new QFormLayout;
    form->addRow(tr("&Ramp:"), m_ramp);
    auto *ways = new QHBoxLayout;
    ways->addWidget(m_reverse);
    ways->addWidget(m_seaLevel);
    ways->addStretch();
    form->addRow(QString(), ways);
    form->addRow(tr("&Highest:"), m_ceiling);
    form->addRow(tr("&Lowest:"), m_floor);
    if (m_heights) {
        auto *whole = new QPushButton(tr("Range of the &Data"));
        whole->setAutoDefault(false);
        connect(whole, &QPushButton::clicked, this, [this] { showRange(m_heights->first, m_heights->second); });
        form->addRow(QString(), whole);
    }
    auto *steps = new QHBoxLayout;
    steps->addWidget(m_stepped);
    steps->addWidget(m_steps);
    steps->addStretch();
    form->addRow(QString(), steps);
    form->addRow(QString(), m_problem);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(what);
    layout->addSpacing(6);
    layout->addLayout(form);
    layout->addStretch();
    layout->addWidget(m_buttons);
}

void StockRampDialog::showRange(double floor, double ceiling)
{
    constexpr int digits = 10;
    m_ceiling->setText(TxNumberText::general(ceiling, digits));
    m_floor->setText(TxNumberText::general(floor, digits));
}

bool StockRampDialog::wantsCustom() const
{
    return m_ramp->IsCustom();
}

CTxColorsetEx StockRampDialog::colors() const
{
    const std::optional<double> floor = enteredNumber(m_floor->text());
    const std::optional<double> ceiling = enteredNumber(m_ceiling->text());
    if (!floor || !ceiling || !(*floor < *ceiling))
        return {};
    const int count = isStepped() ? m_steps->value() : blendedColors;
    return LayerColours::stock(m_ramp->GetStockGradient(), m_reverse->isChecked(), count, *floor, *ceiling,
                               m_seaLevel->isChecked());
}

bool StockRampDialog::isStepped() const
{
    return m_stepped->isChecked();
}

void StockRampDialog::updateState()
{
    m_seaLevel->setEnabled(TxGetStockGradientTraits(m_ramp->GetStockGradient()).hasSeaLevel && !m_reverse->isChecked());
    m_steps->setEnabled(isStepped());
    const bool isUsable = wantsCustom() || colors().GetSize() > 0;
    QPushButton *ok = m_buttons->button(QDialogButtonBox::Ok);
    ok->setEnabled(isUsable);
    ok->setText(wantsCustom() ? tr("Edit…") : m_okText);
    m_problem->setText(isUsable ? QString() : tr("The lowest height must be below the highest."));
    Q_EMIT changed();
}

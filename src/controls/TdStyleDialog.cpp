#include "controls/TdStyleDialog.h"

#include "common/TdModule.h"
#include "controls/StyleGrid.h"
#include "controls/TdColorButton.h"
#include "engine/ui/TxComboBoxGradientColors.h"
#include "res/StringId.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QSignalBlocker>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

struct ColorRow
{
    TdStyle::Kind kind;
    quint32 label;
    QColor CTxGeoStyle::*color;
    bool mayBeNone;
};

/// The colours of each kind, the one that is always there first.
constexpr ColorRow colorRows[] = {
    {TdStyle::Line, TdStringId::StyleColor, &CTxGeoStyle::lineColor, false},
    {TdStyle::Line, TdStringId::StyleBackColor, &CTxGeoStyle::lineBackColor, true},
    {TdStyle::Fill, TdStringId::StyleColor, &CTxGeoStyle::fillColor, false},
    {TdStyle::Fill, TdStringId::StyleBackColor, &CTxGeoStyle::fillBackColor, true},
    {TdStyle::Symbol, TdStringId::StyleColor, &CTxGeoStyle::symbolColor, false},
    {TdStyle::Symbol, TdStringId::StyleOutlineColor, &CTxGeoStyle::symbolOutlineColor, true},
};

struct NumberRow
{
    TdStyle::Kind kind;
    quint32 label;
    double CTxGeoStyle::*number;
    double minimum, maximum, step;
};

constexpr NumberRow numberRows[] = {
    {TdStyle::Line, TdStringId::StyleLineWidth, &CTxGeoStyle::lineWidth, CTxGeoStyle::minimumLineWidth,
     CTxGeoStyle::maximumLineWidth, 0.5},
    {TdStyle::Fill, TdStringId::StyleSize, &CTxGeoStyle::fillSize, CTxGeoStyle::minimumFillSize,
     CTxGeoStyle::maximumFillSize, 1},
    {TdStyle::Fill, TdStringId::StyleAngle, &CTxGeoStyle::fillAngle, 0, 359.9, 15},
    {TdStyle::Symbol, TdStringId::StyleSize, &CTxGeoStyle::symbolSize, CTxGeoStyle::minimumSymbolSize,
     CTxGeoStyle::maximumSymbolSize, 1},
    {TdStyle::Symbol, TdStringId::StyleOutlineWidth, &CTxGeoStyle::symbolOutlineWidth, 0,
     CTxGeoStyle::maximumOutlineWidth, 0.5},
    {TdStyle::Symbol, TdStringId::StyleAngle, &CTxGeoStyle::symbolAngle, 0, 359.9, 15},
};

constexpr quint32 titles[] = {TdStringId::StyleLineTitle, TdStringId::StyleFillTitle,
                              TdStringId::StyleSymbolTitle}; // by kind

constexpr int rampColors = 16; // of a stock ramp in a style: more are not told apart in an area

/// The colours of @p kind that a style has.
template<class Act>
void forEachColor(TdStyle::Kind kind, const Act &act)
{
    for (const ColorRow &row : colorRows) {
        if (row.kind == kind)
            act(row);
    }
}

CTxColorFolder stockRamp(qint32 stock)
{
    CTxColorFolder colors;
    colors.MakeStockGradient(rampColors, stock);
    return colors;
}

/// The sample in its true size.
class Sample : public QWidget
{
public:
    Sample(TdStyle::Kind kind, const CTxGeoStyle &style) : m_kind(kind), m_style(style)
    {
        const int line = fontMetrics().height();
        setFixedHeight(line * 7);
        setMinimumWidth(line * 11);
        setAccessibleName(CTdModule::LoadString(TdStringId::StyleSample));
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        TdStyle::drawSample(painter, rect(), m_kind, m_style);
    }

private:
    const TdStyle::Kind m_kind;
    const CTxGeoStyle &m_style; ///< the dialog's
};

} // namespace

CTdStyleDialog::CTdStyleDialog(TdStyle::Kind kind, const CTxGeoStyle &style, QWidget *parent)
    : CTdDialog(templateId, parent), m_kind(kind), m_style(style), m_grid(new StyleGrid(kind)),
      m_sample(new Sample(kind, m_style)), m_name(new QLabel)
{
    setWindowTitle(CTdModule::LoadString(titles[kind]));
    setSizeGripEnabled(true);
    auto *title = new QLabel(CTdModule::LoadString(TdStringId::StyleGridLabel));
    title->setBuddy(m_grid);
    auto *left = new QVBoxLayout;
    left->addWidget(title);
    left->addWidget(m_grid, 1);

    m_name->setTextFormat(Qt::PlainText);
    m_name->setAlignment(Qt::AlignHCenter);
    auto *form = new QFormLayout;
    addColors(*form);
    if (kind == TdStyle::Fill)
        addRamp(*form);
    addNumbers(*form);
    addOpacity(*form);
    auto *right = new QVBoxLayout;
    right->addWidget(m_sample);
    right->addWidget(m_name);
    right->addSpacing(6);
    right->addLayout(form);
    right->addStretch();

    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto *top = new QHBoxLayout;
    top->addLayout(left, 1);
    top->addSpacing(6);
    top->addLayout(right);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(top, 1);
    layout->addWidget(buttons);

    m_grid->setCurrentEntry(TdStyle::indexOf(kind, m_style));
    connect(m_grid, &StyleGrid::currentEntryChanged, this, [this](int index) {
        TdStyle::choose(m_kind, index, m_style);
        noteChange();
    });
    connect(m_grid, &QAbstractItemView::doubleClicked, this, &QDialog::accept);
    m_grid->setFocus();
    showStyle();
}

CTdStyleDialog::~CTdStyleDialog() = default;

void CTdStyleDialog::addColors(QFormLayout &form)
{
    forEachColor(m_kind, [&](const ColorRow &row) {
        auto *button = new CTdColorButton;
        const QColor &color = m_style.*row.color;
        button->SetMayBeNone(row.mayBeNone);
        if (row.mayBeNone && color.alpha() == 0)
            button->SetColor(std::nullopt);
        else
            button->SetColor(TxColorRef::fromQColor(color));
        connect(button, &CTdColorButton::colorChosen, this, [this, &row](std::optional<COLORREF> chosen) {
            QColor &changed = m_style.*row.color;
            const int alpha = changed.alpha() == 0 ? m_opacity->value() * 255 / 100 : changed.alpha();
            changed = TxColorRef::toQColor(chosen.value_or(TxColorRef::fromQColor(changed)));
            changed.setAlpha(chosen ? alpha : 0);
            noteChange();
        });
        form.addRow(CTdModule::LoadString(row.label), button);
        m_colors.append(button);
    });
}

void CTdStyleDialog::addRamp(QFormLayout &form)
{
    m_hasRamp = new QCheckBox(CTdModule::LoadString(TdStringId::StyleRamp));
    m_ramp = new CTxComboBoxGradientColors;
    m_ramp->InitContent();
    m_ramp->removeItem(m_ramp->count() - 1); // "Custom…" is for hosts that have a dialog for it
    m_ramp->setMinimumContentsLength(6);
    m_ramp->setIconSize(m_ramp->iconSize() / 2);
    m_hasRamp->setChecked(m_style.gradientColors.GetCount() > 0);
    for (int stock = 0; stock < m_ramp->count(); ++stock) {
        if (stockRamp(stock) == m_style.gradientColors)
            m_ramp->setCurrentIndex(stock);
    }
    connect(m_ramp, &QComboBox::currentIndexChanged, this, &CTdStyleDialog::takeRamp);
    connect(m_hasRamp, &QCheckBox::toggled, this, &CTdStyleDialog::takeRamp);
    form.addRow(m_hasRamp, m_ramp);
}

void CTdStyleDialog::addNumbers(QFormLayout &form)
{
    for (const NumberRow &row : numberRows) {
        if (row.kind != m_kind)
            continue;
        const bool isAngle = row.label == TdStringId::StyleAngle;
        auto *box = new QDoubleSpinBox;
        box->setLocale(QLocale::c()); // numbers are written alike everywhere
        box->setDecimals(1);
        box->setRange(row.minimum, row.maximum);
        box->setSingleStep(row.step);
        box->setWrapping(isAngle);
        box->setSuffix(isAngle ? u"°"_s : u" px"_s);
        box->setValue(m_style.inRange().*row.number);
        connect(box, &QDoubleSpinBox::valueChanged, this, [this, &row](double value) {
            m_style.*row.number = value;
            noteChange();
        });
        form.addRow(CTdModule::LoadString(row.label), box);
        if (isAngle)
            m_angle = box;
        else if (row.label == TdStringId::StyleSize)
            m_size = box;
    }
}

void CTdStyleDialog::addOpacity(QFormLayout &form)
{
    m_opacity = new QSpinBox;
    m_opacity->setLocale(QLocale::c());
    m_opacity->setRange(1, 100); // nothing to be seen of it would be no style
    m_opacity->setSuffix(u" %"_s);
    forEachColor(m_kind, [this](const ColorRow &row) {
        if (!row.mayBeNone)
            m_opacity->setValue(qRound((m_style.*row.color).alphaF() * 100));
    });
    connect(m_opacity, &QSpinBox::valueChanged, this, &CTdStyleDialog::setOpacity);
    form.addRow(CTdModule::LoadString(TdStringId::StyleOpacity), m_opacity);
}

void CTdStyleDialog::setOpacity(int percent)
{
    forEachColor(m_kind, [&](const ColorRow &row) {
        QColor &color = m_style.*row.color;
        if (!row.mayBeNone || color.alpha() > 0)
            color.setAlpha(qRound(percent * 2.55));
    });
    noteChange();
}

void CTdStyleDialog::takeRamp()
{
    if (m_hasRamp->isChecked() && m_ramp->currentIndex() < 0) {
        const QSignalBlocker blocker(m_ramp);
        m_ramp->setCurrentIndex(0);
    }
    m_style.gradientColors = m_hasRamp->isChecked() ? stockRamp(m_ramp->GetStockGradient()) : CTxColorFolder();
    noteChange();
}

void CTdStyleDialog::noteChange()
{
    showStyle();
    Q_EMIT styleChanged(m_style);
}

void CTdStyleDialog::showStyle()
{
    m_grid->setColorsOf(m_style);
    m_name->setText(TdStyle::name(m_kind, m_style));
    m_sample->setAccessibleDescription(m_name->text());
    m_sample->update();
    if (m_kind != TdStyle::Fill)
        return;
    // What a gradient does not have, or has from its ramp.
    const bool isGradient = m_style.fillGradient != TxGradientKind::None;
    m_hasRamp->setEnabled(isGradient);
    m_ramp->setEnabled(isGradient && m_hasRamp->isChecked());
    for (CTdColorButton *button : std::as_const(m_colors))
        button->setEnabled(!m_ramp->isEnabled());
    m_size->setEnabled(!isGradient);
    m_angle->setEnabled(m_style.fillGradient != TxGradientKind::Radial);
}

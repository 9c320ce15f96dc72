#include "LayerStyleDialog.h"

#include "EnteredNumber.h"
#include "LayerStylePreview.h"
#include "controls/TdColorButton.h"
#include "controls/TdNumEdit.h"
#include "controls/TdStyleButton.h"
#include "engine/base/TxNumberText.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QVBoxLayout>

#include <algorithm>

/// A number of a style. Texts are in the translation context "LayerStyleDialog".
struct LayerStyleDialog::Number
{
    quint32 part; ///< TxStyleParts; 0 for the opacity of the layer
    const char *label;
    const char *tip;
    double CTxGeoStyle::*value; ///< null for the opacity
    double minimum;
    double maximum;
};

const LayerStyleDialog::Number LayerStyleDialog::numbers[] = {
    {TxStyleParts::Line, QT_TRANSLATE_NOOP("LayerStyleDialog", "&Width:"),
     QT_TRANSLATE_NOOP("LayerStyleDialog", "Width of the line's strokes in pixels"), &CTxGeoStyle::lineWidth,
     CTxGeoStyle::minimumLineWidth, CTxGeoStyle::maximumLineWidth},
    {TxStyleParts::Fill, QT_TRANSLATE_NOOP("LayerStyleDialog", "&Tile size:"),
     QT_TRANSLATE_NOOP("LayerStyleDialog", "Width of the pattern's tile in pixels"), &CTxGeoStyle::fillSize,
     CTxGeoStyle::minimumFillSize, CTxGeoStyle::maximumFillSize},
    {TxStyleParts::Fill, QT_TRANSLATE_NOOP("LayerStyleDialog", "A&ngle:"),
     QT_TRANSLATE_NOOP("LayerStyleDialog", "Of the pattern or gradient, in degrees counter-clockwise"),
     &CTxGeoStyle::fillAngle, -360, 360},
    {TxStyleParts::Symbol, QT_TRANSLATE_NOOP("LayerStyleDialog", "Si&ze:"),
     QT_TRANSLATE_NOOP("LayerStyleDialog", "Width of the symbol in pixels"), &CTxGeoStyle::symbolSize,
     CTxGeoStyle::minimumSymbolSize, CTxGeoStyle::maximumSymbolSize},
    {TxStyleParts::Symbol, QT_TRANSLATE_NOOP("LayerStyleDialog", "An&gle:"),
     QT_TRANSLATE_NOOP("LayerStyleDialog", "By which the symbol is turned, in degrees counter-clockwise"),
     &CTxGeoStyle::symbolAngle, -360, 360},
    {TxStyleParts::Symbol, QT_TRANSLATE_NOOP("LayerStyleDialog", "Outline wi&dth:"),
     QT_TRANSLATE_NOOP("LayerStyleDialog", "How far the outline reaches around the symbol, in pixels; 0 for none"),
     &CTxGeoStyle::symbolOutlineWidth, 0, CTxGeoStyle::maximumOutlineWidth},
    {0, QT_TRANSLATE_NOOP("LayerStyleDialog", "O&pacity (%):"),
     QT_TRANSLATE_NOOP("LayerStyleDialog", "Of the whole layer: 100 covers what lies below, 0 is not seen"), nullptr, 0,
     100},
};

namespace {

struct Part
{
    quint32 part;
    TdStyle::Kind kind;
    const char *title;
    const char *style;
};

constexpr qint32 noFill = 1; // in the library of fills

constexpr Part parts[] = {
    {TxStyleParts::Line, TdStyle::Line, QT_TRANSLATE_NOOP("LayerStyleDialog", "Line"),
     QT_TRANSLATE_NOOP("LayerStyleDialog", "&Line style:")},
    {TxStyleParts::Fill, TdStyle::Fill, QT_TRANSLATE_NOOP("LayerStyleDialog", "Fill"),
     QT_TRANSLATE_NOOP("LayerStyleDialog", "&Fill style:")},
    {TxStyleParts::Symbol, TdStyle::Symbol, QT_TRANSLATE_NOOP("LayerStyleDialog", "Symbol"),
     QT_TRANSLATE_NOOP("LayerStyleDialog", "&Symbol:")},
};

struct Colour
{
    quint32 part;
    const char *label;
    const char *tip;
    QColor CTxGeoStyle::*value;
};

constexpr Colour colours[] = {
    {TxStyleParts::Line, QT_TRANSLATE_NOOP("LayerStyleDialog", "&Colour:"),
     QT_TRANSLATE_NOOP("LayerStyleDialog", "Of lines, outlines of regions, and texts"), &CTxGeoStyle::lineColor},
    {TxStyleParts::Line, QT_TRANSLATE_NOOP("LayerStyleDialog", "&Between:"),
     QT_TRANSLATE_NOOP("LayerStyleDialog", "Between the casings of roads and the dashes of railways"),
     &CTxGeoStyle::lineBackColor},
    {TxStyleParts::Fill, QT_TRANSLATE_NOOP("LayerStyleDialog", "C&olour:"),
     QT_TRANSLATE_NOOP("LayerStyleDialog", "Of a solid fill, of the marks of a pattern, and first of a gradient"),
     &CTxGeoStyle::fillColor},
    {TxStyleParts::Fill, QT_TRANSLATE_NOOP("LayerStyleDialog", "Bac&k colour:"),
     QT_TRANSLATE_NOOP("LayerStyleDialog", "Behind the marks of a pattern, and last of a gradient"),
     &CTxGeoStyle::fillBackColor},
    {TxStyleParts::Symbol, QT_TRANSLATE_NOOP("LayerStyleDialog", "Colo&ur:"),
     QT_TRANSLATE_NOOP("LayerStyleDialog", "Of the symbol"), &CTxGeoStyle::symbolColor},
    {TxStyleParts::Symbol, QT_TRANSLATE_NOOP("LayerStyleDialog", "Outlin&e:"),
     QT_TRANSLATE_NOOP("LayerStyleDialog", "Of the outline around the symbol"), &CTxGeoStyle::symbolOutlineColor},
    {TxStyleParts::Text, QT_TRANSLATE_NOOP("LayerStyleDialog", "&Colour:"),
     QT_TRANSLATE_NOOP("LayerStyleDialog", "Of the texts"), &CTxGeoStyle::lineColor},
};

/// The label of @p field; null when it has none.
QLabel *labelOf(const QWidget &field)
{
    const QList<QLabel *> labels = field.window()->findChildren<QLabel *>();
    const auto at = std::find_if(labels.begin(), labels.end(), [&](const QLabel *l) { return l->buddy() == &field; });
    return at == labels.end() ? nullptr : *at;
}

QString without(QString label)
{
    return label.remove(u'&').remove(u':');
}

} // namespace

LayerStyleDialog::LayerStyleDialog(const QString &layerName, CElemDatasetInfo::Type kind, const TxLayerStyle &style,
                                   const QColor &background, QWidget *parent)
    : QDialog(parent), m_parts(TxStyleParts::of(kind)), m_style(style),
      m_preview(new LayerStylePreview(m_parts, background)), m_problem(new QLabel),
      m_buttons(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Apply | QDialogButtonBox::Cancel))
{
    setWindowTitle(tr("Layer Style"));
    auto *what = new QLabel(tr("How “%1” is drawn.").arg(layerName));
    what->setTextFormat(Qt::PlainText);
    what->setWordWrap(true);

    auto *left = new QVBoxLayout;
    for (const Part &part : parts) {
        if (!(m_parts & part.part))
            continue;
        auto *group = new QGroupBox(tr(part.title));
        addPart(*new QFormLayout(group), part.part);
        left->addWidget(group);
    }
    auto *rest = new QFormLayout;
    if (m_parts == TxStyleParts::Text)
        addColours(*rest, TxStyleParts::Text);
    addNumber(*rest,
              *std::find_if(std::begin(numbers), std::end(numbers), [](const Number &row) { return !row.part; }));
    left->addLayout(rest);
    left->addStretch();

    auto *both = new QHBoxLayout;
    both->addLayout(left);
    both->addWidget(m_preview, 1);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(what);
    layout->addLayout(both, 1);
    layout->addWidget(m_problem);
    layout->addWidget(m_buttons);
    alignFields();
    m_buttons->button(QDialogButtonBox::Apply)->setText(tr("&Apply"));
    m_buttons->button(QDialogButtonBox::Apply)->setToolTip(tr("Show it on the map; Cancel takes it back"));
    m_buttons->button(QDialogButtonBox::Cancel)->setToolTip(tr("Leave the layer as it was"));

    connect(m_buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_buttons->button(QDialogButtonBox::Apply), &QPushButton::clicked, this, &LayerStyleDialog::applied);
    showStyle();
    if (!m_styleButtons.isEmpty())
        m_styleButtons.first()->setFocus();
}

void LayerStyleDialog::alignFields()
{
    QList<QWidget *> labels;
    for (const auto &[button, value] : std::as_const(m_colours))
        labels.append(labelOf(*button));
    for (const auto &[edit, number] : std::as_const(m_numbers)) {
        if (number->part) // that of the whole stands in no group
            labels.append(labelOf(*edit));
    }
    int widest = 0;
    for (const QWidget *label : std::as_const(labels))
        widest = std::max(widest, label->sizeHint().width());
    for (QWidget *label : std::as_const(labels))
        label->setMinimumWidth(widest);
}

void LayerStyleDialog::addPart(QFormLayout &form, quint32 part)
{
    const Part &row =
        *std::find_if(std::begin(parts), std::end(parts), [part](const Part &p) { return p.part == part; });
    auto *button = new CTdStyleButton(row.kind);
    form.addRow(tr(row.style), button);
    m_styleButtons.append(button);
    connect(button, &CTdStyleButton::styleChosen, this, [this](const CTxGeoStyle &style) {
        m_style.geoStyle = style;
        m_wrong.clear(); // their fields show the chosen ones
        showStyle();
    });
    addColours(form, part);
    for (const Number &number : numbers) {
        if (number.part == part)
            addNumber(form, number);
    }
}

void LayerStyleDialog::addColours(QFormLayout &form, quint32 part)
{
    for (const Colour &row : colours) {
        if (row.part != part)
            continue;
        auto *button = new CTdColorButton;
        button->SetMayBeNone(true);
        form.addRow(tr(row.label), button);
        form.labelForField(button)->setToolTip(tr(row.tip));
        button->setAccessibleName(without(tr(row.label)));
        m_colours.append({button, row.value});
        connect(button, &CTdColorButton::colorChosen, this, [this, value = row.value](std::optional<COLORREF> chosen) {
            QColor &colour = m_style.geoStyle.*value;
            const int alpha = colour.alpha() > 0 ? colour.alpha() : 255;
            if (chosen)
                colour = TxColorRef::toQColor(*chosen);
            colour.setAlpha(chosen ? alpha : 0);
            showStyle();
        });
    }
}

void LayerStyleDialog::addNumber(QFormLayout &form, const Number &number)
{
    auto *edit = new CTdNumEdit;
    // Every text on the way to a number must lie in the range: "0." on the way to 0.5.
    edit->SetRange(std::min(number.minimum, 0.0), number.maximum);
    edit->setMaxLength(12);
    edit->setToolTip(tr(number.tip));
    form.addRow(tr(number.label), edit);
    m_numbers.append({edit, &number});
    connect(edit, &QLineEdit::textChanged, this, [this, edit, &number] { takeNumber(number, *edit); });
}

void LayerStyleDialog::takeNumber(const Number &number, const CTdNumEdit &edit)
{
    if (m_isShowing)
        return;
    const std::optional<double> value = enteredNumber(edit.text());
    if (!value || *value < number.minimum || *value > number.maximum) {
        m_wrong.insert(&number);
    } else {
        m_wrong.remove(&number);
        if (number.value)
            m_style.geoStyle.*number.value = *value;
        else
            m_style.opacity = *value / 100;
    }
    updateState();
}

void LayerStyleDialog::showStyle()
{
    const QScopedValueRollback showing(m_isShowing, true);
    const CTxGeoStyle &style = m_style.geoStyle;
    for (CTdStyleButton *button : std::as_const(m_styleButtons))
        button->SetStyle(style);
    for (const auto &[button, value] : std::as_const(m_colours)) {
        const QColor &colour = style.*value;
        button->SetColor(colour.alpha() > 0 ? std::optional(TxColorRef::fromQColor(colour)) : std::nullopt);
    }
    for (const auto &[edit, number] : std::as_const(m_numbers)) {
        constexpr int digits = 6;
        if (!m_wrong.contains(number))
            edit->setText(TxNumberText::general(number->value ? style.*number->value : m_style.opacity * 100, digits));
    }
    updateState();
}

void LayerStyleDialog::updateState()
{
    QString problem;
    for (const auto &[edit, number] : std::as_const(m_numbers)) {
        if (m_wrong.contains(number) && problem.isEmpty())
            problem = tr("“%1” must be a number from %2 to %3.")
                          .arg(without(tr(number->label)), TxNumberText::general(number->minimum, 6),
                               TxNumberText::general(number->maximum, 6));
    }
    m_problem->setText(problem);
    // What solid fills and gradients do not have.
    const CTxGeoStyle &style = m_style.geoStyle;
    const bool isGradient = style.fillGradient != TxGradientKind::None;
    const bool isPattern = !isGradient && style.fillStyle != 0 && style.fillStyle != noFill;
    const bool hasRamp = isGradient && style.gradientColors.GetCount() > 0;
    for (const auto &[button, value] : std::as_const(m_colours)) {
        if (value == &CTxGeoStyle::fillColor)
            button->setEnabled(!hasRamp && (isGradient || style.fillStyle != noFill));
        else if (value == &CTxGeoStyle::fillBackColor)
            button->setEnabled(!hasRamp && (isGradient || isPattern));
    }
    for (const auto &[edit, number] : std::as_const(m_numbers)) {
        if (number->value == &CTxGeoStyle::fillSize)
            edit->setEnabled(isPattern);
        else if (number->value == &CTxGeoStyle::fillAngle)
            edit->setEnabled(isPattern || (isGradient && style.fillGradient != TxGradientKind::Radial));
    }
    m_buttons->button(QDialogButtonBox::Ok)->setEnabled(problem.isEmpty());
    m_buttons->button(QDialogButtonBox::Apply)->setEnabled(problem.isEmpty());
    m_preview->setStyle(m_style);
}

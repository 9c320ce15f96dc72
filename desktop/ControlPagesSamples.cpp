#include "ControlPages.h"

#include "controls/TdColorButton.h"
#include "controls/TdLabelButton.h"
#include "controls/TdStyleButton.h"
#include "engine/symbol/TxGDIMaker.h"
#include "engine/symbol/TxLineStyleLib.h"
#include "engine/symbol/TxSymbolLib.h"

#include <QCheckBox>
#include <QFontInfo>
#include <QFormLayout>
#include <QLineEdit>
#include <QPainter>
#include <QPainterPath>

#include <array>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

QString nameOf(std::optional<COLORREF> color)
{
    return color ? TxColorRef::toQColor(*color).name()
                 : ControlPages::text(QT_TRANSLATE_NOOP("ControlPages", "no colour"));
}

/// A piece of a map in one style: an area with its outline, a line through it, and symbols.
class StyleSheet : public QWidget
{
public:
    explicit StyleSheet(const CTxGeoStyle &style) : m_style(style)
    {
        setMinimumSize(180, 120);
        setAccessibleName(ControlPages::text(QT_TRANSLATE_NOOP("ControlPages", "Map in this style")));
    }
    const CTxGeoStyle &style() const { return m_style; }
    void setStyle(const CTxGeoStyle &style)
    {
        m_style = style;
        update();
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.fillRect(rect(), Qt::white); // maps are on paper, also among dark windows
        painter.setRenderHint(QPainter::Antialiasing);
        const double w = width(), h = height();
        QPainterPath area;
        area.addPolygon(QPolygonF({{0.06 * w, 0.3 * h},
                                   {0.4 * w, 0.08 * h},
                                   {0.62 * w, 0.3 * h},
                                   {0.56 * w, 0.8 * h},
                                   {0.2 * w, 0.92 * h},
                                   {0.06 * w, 0.3 * h}}));
        const QPolygonF line({{0.7 * w, 0.95 * h}, {0.74 * w, 0.55 * h}, {0.88 * w, 0.4 * h}, {0.95 * w, 0.06 * h}});
        CTxGDIMaker maker;
        if (!maker.PrepareGDIs(&painter, CTxLineStyleLib(), CTxSymbolLib(), m_style))
            return;
        maker.FillPath(area);
        for (const QPolygonF &points : {area.toFillPolygon(), line})
            maker.GetLineStyleObject()->Polyline(&painter, points.constData(), static_cast<qint32>(points.size()));
        for (const QPointF &place : {QPointF(0.3, 0.35), QPointF(0.42, 0.62), QPointF(0.82, 0.75)})
            maker.GetSymbolObject()->Draw(&painter, QPointF(place.x() * w, place.y() * h));
        maker.ReleaseGDIs();
    }

private:
    CTxGeoStyle m_style;
};

/// What the page of styles begins with.
CTxGeoStyle firstStyle()
{
    CTxGeoStyle style;
    TdStyle::choose(TdStyle::Line, 12, style); // a railway
    TdStyle::choose(TdStyle::Fill, 19, style); // a wood
    TdStyle::choose(TdStyle::Symbol, 15, style);
    style.lineColor = QColor(0x5A3A2E);
    style.fillColor = QColor(0x3C7A3C);
    style.fillBackColor = QColor(0xE4EFD8);
    style.fillSize = 24;
    style.symbolColor = QColor(0xB02020);
    style.symbolSize = 26;
    style.symbolOutlineWidth = 2;
    return style;
}

} // namespace

QWidget *ControlPages::makeColorButtons(QWidget *parent, const ShowValue &show)
{
    auto *page = new QWidget(parent);
    auto *form = new QFormLayout(page);
    auto *line = new CTdColorButton;
    line->SetColor(TxColorRef::make(0xB0, 0x20, 0x20));
    auto *area = new CTdColorButton;
    area->SetMayBeNone(true);
    area->SetColor(std::nullopt);
    auto *enabled = new QCheckBox(text(QT_TRANSLATE_NOOP("ControlPages", "&Enabled")));
    enabled->setChecked(true);
    for (CTdColorButton *button : {line, area}) {
        button->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
        QObject::connect(enabled, &QCheckBox::toggled, button, &QWidget::setEnabled);
    }
    form->addRow(text(QT_TRANSLATE_NOOP("ControlPages", "&Line:")), line);
    form->addRow(text(QT_TRANSLATE_NOOP("ControlPages", "&Area, or none:")), area);
    form->addRow(QString(), enabled);
    const auto tell = [line, area, show] {
        show(text(QT_TRANSLATE_NOOP("ControlPages", "line %1 · area %2"))
                 .arg(nameOf(line->GetColor()), nameOf(area->GetColor())));
    };
    for (CTdColorButton *button : {line, area})
        QObject::connect(button, &CTdColorButton::colorChosen, page, tell);
    tell();
    return page;
}

QWidget *ControlPages::makeLabelButton(QWidget *parent, const ShowValue &show)
{
    auto *page = new QWidget(parent);
    auto *form = new QFormLayout(page);
    auto *label = new CTdLabelButton;
    QFont font = page->font();
    font.setPointSize(16);
    font.setItalic(true);
    label->SetLabelFont(font);
    label->setFixedHeight(48);
    auto *color = new CTdColorButton;
    color->SetMayBeNone(true);
    color->SetColor(TxColorRef::make(0x20, 0x60, 0xB0));
    color->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    label->SetLabelColor(color->GetColor());
    auto *sample = new QLineEdit(text(QT_TRANSLATE_NOOP("ControlPages", "Lake Constance")));
    sample->setPlaceholderText(text(QT_TRANSLATE_NOOP("ControlPages", "the usual sample")));
    label->SetSampleText(sample->text());
    form->addRow(text(QT_TRANSLATE_NOOP("ControlPages", "&Font:")), label);
    form->addRow(text(QT_TRANSLATE_NOOP("ControlPages", "&Colour:")), color);
    form->addRow(text(QT_TRANSLATE_NOOP("ControlPages", "&Sample text:")), sample);
    const auto tell = [label, show] {
        const QFont chosen = label->GetLabelFont();
        show(text(QT_TRANSLATE_NOOP("ControlPages", "%1, %2 pt · %3"))
                 .arg(chosen.family())
                 .arg(QFontInfo(chosen).pointSize())
                 .arg(nameOf(label->GetLabelColor())));
    };
    QObject::connect(label, &CTdLabelButton::labelFontChosen, page, tell);
    QObject::connect(color, &CTdColorButton::colorChosen, page, [label, tell](std::optional<COLORREF> chosen) {
        label->SetLabelColor(chosen);
        tell();
    });
    QObject::connect(sample, &QLineEdit::textChanged, label, &CTdLabelButton::SetSampleText);
    tell();
    return page;
}

QWidget *ControlPages::makeStyleButtons(QWidget *parent, const ShowValue &show)
{
    auto *page = new QWidget(parent);
    auto *layout = new QHBoxLayout(page);
    auto *form = new QFormLayout;
    auto *sheet = new StyleSheet(firstStyle());
    const std::array buttons{new CTdStyleButton(TdStyle::Line), new CTdStyleButton(TdStyle::Fill),
                             new CTdStyleButton(TdStyle::Symbol)};
    form->addRow(text(QT_TRANSLATE_NOOP("ControlPages", "&Line:")), buttons[TdStyle::Line]);
    form->addRow(text(QT_TRANSLATE_NOOP("ControlPages", "&Fill:")), buttons[TdStyle::Fill]);
    form->addRow(text(QT_TRANSLATE_NOOP("ControlPages", "&Symbol:")), buttons[TdStyle::Symbol]);
    layout->addLayout(form);
    layout->addSpacing(9);
    layout->addWidget(sheet, 1);
    const auto take = [buttons, sheet, show](const CTxGeoStyle &style) {
        sheet->setStyle(style);
        QStringList names;
        for (CTdStyleButton *button : buttons) {
            button->SetStyle(style); // each knows the parts that the others chose
            names += TdStyle::name(button->GetKind(), style);
        }
        show(names.join(u" · "_s));
    };
    for (CTdStyleButton *button : buttons) {
        button->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
        QObject::connect(button, &CTdStyleButton::styleChosen, page, take);
    }
    take(sheet->style());
    return page;
}

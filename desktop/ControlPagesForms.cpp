#include "ControlPages.h"

#include "basic/TdProfileFile.h"
#include "common/TdCommMethods.h"
#include "common/VocabularyTables.h"
#include "controls/TdAnnotationStandard.h"
#include "controls/TdAutoWidthComboBox.h"
#include "controls/TdNumEdit.h"
#include "controls/TdTabOrder.h"
#include "engine/base/TxNumberText.h"

#include <QFontDatabase>
#include <QFontMetricsF>
#include <QFormLayout>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// A form whose tab order can be mixed up and put in order again; a number beside each field says when it is reached.
class TabOrderPage : public QWidget
{
public:
    TabOrderPage(QWidget *parent, const ShowValue &show);

private:
    void scramble();
    void collate();
    void number();

    const ShowValue m_show;
    QWidget *m_form = new QWidget;
    QList<QLineEdit *> m_fields; ///< in reading order
    QList<QLabel *> m_numbers;   ///< beside the fields
};

TabOrderPage::TabOrderPage(QWidget *parent, const ShowValue &show) : QWidget(parent), m_show(show)
{
    using ControlPages::text;
    constexpr const char *names[] = {
        QT_TRANSLATE_NOOP("ControlPages", "First name"), QT_TRANSLATE_NOOP("ControlPages", "Last name"),
        QT_TRANSLATE_NOOP("ControlPages", "Street"),     QT_TRANSLATE_NOOP("ControlPages", "House number"),
        QT_TRANSLATE_NOOP("ControlPages", "Postcode"),   QT_TRANSLATE_NOOP("ControlPages", "Town")};
    auto *grid = new QGridLayout(m_form);
    for (const char *name : names) {
        auto *field = new QLineEdit;
        field->setPlaceholderText(text(name));
        field->setAccessibleName(text(name));
        auto *place = new QLabel;
        place->setMinimumWidth(2 * fontMetrics().averageCharWidth());
        place->setAlignment(Qt::AlignTrailing | Qt::AlignVCenter);
        const int cell = static_cast<int>(m_fields.size());
        grid->addWidget(place, cell / 2, cell % 2 * 2);
        grid->addWidget(field, cell / 2, cell % 2 * 2 + 1);
        m_fields += field;
        m_numbers += place;
    }
    auto *collateButton = new QPushButton(text(QT_TRANSLATE_NOOP("ControlPages", "&Collate")));
    auto *scrambleButton = new QPushButton(text(QT_TRANSLATE_NOOP("ControlPages", "&Scramble")));
    auto *row = new QHBoxLayout;
    for (QPushButton *button : {collateButton, scrambleButton}) {
        button->setAutoDefault(false);
        row->addWidget(button);
    }
    row->addStretch();
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_form);
    layout->addSpacing(6);
    layout->addLayout(row);
    layout->addStretch();
    connect(collateButton, &QPushButton::clicked, this, &TabOrderPage::collate);
    connect(scrambleButton, &QPushButton::clicked, this, &TabOrderPage::scramble);
    scramble();
}

void TabOrderPage::scramble()
{
    constexpr int mixed[] = {3, 0, 5, 1, 4, 2};
    for (size_t i = 1; i < std::size(mixed); ++i)
        setTabOrder(m_fields[mixed[i - 1]], m_fields[mixed[i]]);
    number();
}

void TabOrderPage::collate()
{
    CTdTabOrder::Apply(m_form);
    number();
}

void TabOrderPage::number()
{
    int place = 0;
    QStringList names;
    for (QWidget *next = m_form->nextInFocusChain(); next != m_form; next = next->nextInFocusChain()) {
        const qsizetype field = m_fields.indexOf(next);
        if (field < 0)
            continue;
        m_numbers[field]->setText(QString::number(++place));
        names += m_fields[field]->accessibleName();
    }
    m_show(names.join(u", "_s));
}

/// A text in the height that it has on paper, or smaller where there is not the room.
class AnnotationSample : public QWidget
{
public:
    AnnotationSample()
    {
        setMinimumHeight(70);
        setAccessibleName(ControlPages::text(QT_TRANSLATE_NOOP("ControlPages", "Sample")));
    }
    void setStandard(const CTdAnnotationStandard &standard)
    {
        constexpr double length = 1234.56789;
        m_standard = standard;
        m_text = standard.IsValid() ? standard.FormatLength(length) : QString();
        setAccessibleDescription(m_text);
        update();
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        constexpr int margin = 6;
        QPainter painter(this);
        painter.fillRect(rect(), Qt::white); // paper, also among dark windows
        painter.setPen(Qt::black);
        QFont shown(m_standard.fontFamily.isEmpty() ? font().family() : m_standard.fontFamily);
        constexpr int unit = 100; // pixels, to measure with
        shown.setPixelSize(unit);
        const QFontMetricsF metrics(shown, this);
        const double wanted = m_standard.textHeight * logicalDpiY() / 25.4 * unit / metrics.capHeight();
        const double fitting =
            std::min(wanted, unit * std::min((width() - 2 * margin) / metrics.horizontalAdvance(m_text),
                                             (height() - 2 * margin) / metrics.height()));
        shown.setPixelSize(std::max(1, static_cast<int>(fitting)));
        painter.setFont(shown);
        painter.drawText(rect(), Qt::AlignCenter, m_text);
    }

private:
    CTdAnnotationStandard m_standard;
    QString m_text;
};

/// The standard of annotations: edited, judged, and kept in the user's profile.
class AnnotationPage : public QWidget
{
public:
    AnnotationPage(QWidget *parent, const ShowValue &show);

private:
    void fill(const CTdAnnotationStandard &standard);
    CTdAnnotationStandard entered() const;
    void judge();
    void store();

    const ShowValue m_show;
    CTdProfileFile m_profile;
    CTdNumEdit *m_height = new CTdNumEdit;
    CTdAutoWidthComboBox *m_font = new CTdAutoWidthComboBox;
    CTdAutoWidthComboBox *m_unit = new CTdAutoWidthComboBox;
    CTdNumEdit *m_precision = new CTdNumEdit;
    AnnotationSample *m_sample = new AnnotationSample;
    QPushButton *m_store;
};

AnnotationPage::AnnotationPage(QWidget *parent, const ShowValue &show) : QWidget(parent), m_show(show)
{
    using ControlPages::text;
    m_precision->SetEditMode(NumberInput::Whole);
    m_font->setEditable(true);
    m_font->setInsertPolicy(QComboBox::NoInsert);
    m_font->addItems(QFontDatabase::families());
    m_font->lineEdit()->setPlaceholderText(text(QT_TRANSLATE_NOOP("ControlPages", "that of the program")));
    for (const TdVocabulary::UnitRow &unit : TdVocabulary::units) {
        if (unit.code > 0) // degrees are no length
            m_unit->addItem(CTdCommMethods::GetDistanceUint(unit.code), unit.code);
    }
    auto *form = new QFormLayout(this);
    form->addRow(text(QT_TRANSLATE_NOOP("ControlPages", "&Height in millimetres:")), m_height);
    form->addRow(text(QT_TRANSLATE_NOOP("ControlPages", "&Font:")), m_font);
    form->addRow(text(QT_TRANSLATE_NOOP("ControlPages", "&Unit:")), m_unit);
    form->addRow(text(QT_TRANSLATE_NOOP("ControlPages", "&Decimals:")), m_precision);
    form->addRow(m_sample);
    m_store = new QPushButton(text(QT_TRANSLATE_NOOP("ControlPages", "&Store")));
    auto *usual = new QPushButton(text(QT_TRANSLATE_NOOP("ControlPages", "&Reset")));
    auto *row = new QHBoxLayout;
    for (QPushButton *button : {m_store, usual}) {
        button->setAutoDefault(false);
        row->addWidget(button);
    }
    row->addStretch();
    form->addRow(row);
    connect(m_store, &QPushButton::clicked, this, &AnnotationPage::store);
    connect(usual, &QPushButton::clicked, this, [this] { fill(CTdAnnotationStandard()); });
    for (QLineEdit *edit :
         {static_cast<QLineEdit *>(m_height), static_cast<QLineEdit *>(m_precision), m_font->lineEdit()})
        connect(edit, &QLineEdit::textChanged, this, &AnnotationPage::judge);
    connect(m_unit, &QComboBox::currentIndexChanged, this, &AnnotationPage::judge);
    fill(CTdAnnotationStandard::Load(m_profile));
}

void AnnotationPage::fill(const CTdAnnotationStandard &standard)
{
    m_height->setText(TxNumberText::shortest(standard.textHeight));
    m_font->setCurrentText(standard.fontFamily);
    m_unit->setCurrentIndex(m_unit->findData(standard.unit));
    m_precision->SetValue(standard.precision);
    judge();
}

CTdAnnotationStandard AnnotationPage::entered() const
{
    CTdAnnotationStandard standard;
    standard.textHeight = m_height->GetValueD();
    standard.fontFamily = m_font->currentText().trimmed();
    standard.unit = m_unit->currentData().toInt();
    standard.precision = m_precision->text().isEmpty() ? -1 : m_precision->GetValueL();
    return standard;
}

void AnnotationPage::judge()
{
    const CTdAnnotationStandard standard = entered();
    const QString problem = standard.GetProblem();
    m_sample->setStandard(standard);
    m_store->setEnabled(problem.isEmpty());
    if (!problem.isEmpty())
        return m_show(problem);
    const bool isStored = standard == CTdAnnotationStandard::Load(m_profile);
    m_show(u"%1 mm · %2 · %3"_s.arg(TxNumberText::shortest(standard.textHeight), standard.FormatLength(1234.56789),
                                    isStored ? ControlPages::text(QT_TRANSLATE_NOOP("ControlPages", "as stored"))
                                             : ControlPages::text(QT_TRANSLATE_NOOP("ControlPages", "not stored"))));
}

void AnnotationPage::store()
{
    if (entered().Save(m_profile))
        return judge();
    m_show(ControlPages::text(QT_TRANSLATE_NOOP("ControlPages", "The profile %1 cannot be written."))
               .arg(m_profile.GetPath()));
}

} // namespace

QWidget *ControlPages::makeTabOrder(QWidget *parent, const ShowValue &show)
{
    return new TabOrderPage(parent, show);
}

QWidget *ControlPages::makeAnnotation(QWidget *parent, const ShowValue &show)
{
    return new AnnotationPage(parent, show);
}

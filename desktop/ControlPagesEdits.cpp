#include "ControlPages.h"

#include "controls/AngleParser.h"
#include "controls/TdDMSMakEdit.h"
#include "controls/TdNumEdit.h"
#include "engine/base/TxNumberText.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QLabel>

using namespace Qt::StringLiterals;

namespace {

/// A field that an angle is typed in freely, with what it reads as, or where it goes wrong, behind it.
void addParserRow(QFormLayout &form)
{
    auto *field = new QLineEdit(u"45°30′15.2″ S"_s);
    auto *answer = new QLabel;
    answer->setTextFormat(Qt::PlainText);
    const auto read = [field, answer] {
        const AngleParser::Result angle = AngleParser::parse(field->text());
        if (angle.ok())
            answer->setText(ControlPages::text(QT_TRANSLATE_NOOP("ControlPages", "reads as %1°"))
                                .arg(TxNumberText::fixed(angle.degrees, 9)));
        else
            answer->setText(ControlPages::text(QT_TRANSLATE_NOOP("ControlPages", "cannot be read from character %1 on"))
                                .arg(angle.errorPosition + 1));
    };
    QObject::connect(field, &QLineEdit::textChanged, answer, read);
    read();
    form.addRow(ControlPages::text(QT_TRANSLATE_NOOP("ControlPages", "&Freely written:")), field);
    form.addRow(QString(), answer);
}

} // namespace

QWidget *ControlPages::makeAngles(QWidget *parent, const ShowValue &show)
{
    auto *page = new QWidget(parent);
    auto *form = new QFormLayout(page);
    auto *edit = new CTdDMSMakEdit;
    edit->SetMask(u"####:##:##.####"_s);
    edit->SetDegree(-45.504222222);
    auto *masked = new QCheckBox(text(QT_TRANSLATE_NOOP("ControlPages", "Under the &mask")));
    masked->setChecked(true);
    auto *pasting = new QCheckBox(text(QT_TRANSLATE_NOOP("ControlPages", "A &paste sets the whole angle")));
    QObject::connect(pasting, &QCheckBox::toggled, edit, &CTdDMSMakEdit::SetPastesAngles);
    auto *range = new QComboBox;
    range->addItem(u"-180 … 180"_s, CTdDMSMakEdit::Range180);
    range->addItem(u"-90 … 90"_s, CTdDMSMakEdit::Range90);
    range->addItem(text(QT_TRANSLATE_NOOP("ControlPages", "any")), CTdDMSMakEdit::AnyRange);
    form->addRow(text(QT_TRANSLATE_NOOP("ControlPages", "&Angle:")), edit);
    form->addRow(QString(), masked);
    form->addRow(QString(), pasting);
    form->addRow(text(QT_TRANSLATE_NOOP("ControlPages", "&Range:")), range);
    addParserRow(*form);

    const auto tell = [edit, range, show] {
        edit->SetEditType(range->currentData().toInt());
        const QString inRange = edit->CheckDataValid(0) != 0
                                    ? ControlPages::text(QT_TRANSLATE_NOOP("ControlPages", "in the range"))
                                    : ControlPages::text(QT_TRANSLATE_NOOP("ControlPages", "out of the range"));
        show(u"%1° · %2° %3′ %4″ · %5"_s.arg(TxNumberText::fixed(edit->GetDegree(), 9))
                 .arg(edit->GetDegreeSection())
                 .arg(edit->GetMinuteSection())
                 .arg(TxNumberText::fixed(static_cast<double>(edit->GetSecondSecion()), 4), inRange));
    };
    QObject::connect(edit, &QLineEdit::textChanged, page, tell);
    QObject::connect(range, &QComboBox::currentIndexChanged, page, tell);
    QObject::connect(masked, &QCheckBox::toggled, page, [edit, tell](bool on) {
        edit->EnableMask(on ? 1 : 0);
        tell();
    });
    tell();
    return page;
}

QWidget *ControlPages::makeNumbers(QWidget *parent, const ShowValue &show)
{
    auto *page = new QWidget(parent);
    auto *form = new QFormLayout(page);
    auto *real = new CTdNumEdit;
    real->SetValue(1.5);
    auto *whole = new CTdNumEdit;
    whole->SetEditMode(NumberInput::Whole);
    whole->SetRange(-100, 100);
    whole->SetValue(42);
    form->addRow(text(QT_TRANSLATE_NOOP("ControlPages", "&Real number:")), real);
    form->addRow(text(QT_TRANSLATE_NOOP("ControlPages", "&Whole number, -100 to 100:")), whole);
    const auto tell = [real, whole, show] {
        show(u"%1 · %2"_s.arg(TxNumberText::fixed(real->GetValueD(), 6)).arg(whole->GetValueL()));
    };
    for (CTdNumEdit *edit : {real, whole})
        QObject::connect(edit, &QLineEdit::textChanged, page, tell);
    tell();
    return page;
}

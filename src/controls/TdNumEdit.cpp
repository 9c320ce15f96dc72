#include "controls/TdNumEdit.h"

#include "engine/base/TxNumberText.h"

#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QValidator>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace {

/// True for a key whose text QLineEdit would insert; control and command keys are none.
bool isTyping(const QKeyEvent &event)
{
    if (event.text().isEmpty())
        return false;
    const QChar::Category category = event.text().at(0).category();
    if (category == QChar::Other_Format) // marks of the writing direction, typed with Ctrl+Shift on some systems
        return true;
    // Ctrl and Alt together are AltGr on some systems, which types.
    const Qt::KeyboardModifiers modifiers = event.modifiers();
    const bool isCommand = modifiers == Qt::ControlModifier || modifiers == (Qt::ControlModifier | Qt::ShiftModifier);
    return !isCommand && category != QChar::Other_Control;
}

/// The number at the beginning of @p text, kept within 32 bits.
qint32 wholeNumber(const QString &text)
{
    using Limits = std::numeric_limits<qint32>;
    return static_cast<qint32>(std::clamp<qint64>(TxNumberText::atoll(text), Limits::min(), Limits::max()));
}

/// The whole part of @p number, kept within 32 bits; 0 when it is none.
qint32 whole(double number)
{
    using Limits = std::numeric_limits<qint32>;
    return std::isnan(number) ? 0 : static_cast<qint32>(std::clamp<double>(number, Limits::min(), Limits::max()));
}

} // namespace

/// Takes a change beyond the range back before the edit tells of it.
class CTdNumEdit::RangeKeeper : public QValidator
{
public:
    explicit RangeKeeper(CTdNumEdit *edit) : QValidator(edit), m_edit(edit) {}

    State validate(QString &text, int &caret) const override
    {
        m_edit->keepInRange(text, caret);
        return Acceptable;
    }

private:
    CTdNumEdit *m_edit;
};

CTdNumEdit::CTdNumEdit(QWidget *parent) : QLineEdit(parent)
{
    setValidator(new RangeKeeper(this));
    setInputMethodHints(Qt::ImhFormattedNumbersOnly);
}

CTdNumEdit::~CTdNumEdit() = default;

void CTdNumEdit::SetRange(qint32 minimum, qint32 maximum)
{
    m_wholeRange = {minimum, maximum};
    m_hasRange = true;
}

void CTdNumEdit::SetRange(double minimum, double maximum)
{
    m_realRange = {minimum, maximum};
    m_hasRange = true;
}

double CTdNumEdit::GetMinimum() const
{
    return m_mode == NumberInput::Whole ? m_wholeRange.minimum : m_realRange.minimum;
}

double CTdNumEdit::GetMaximum() const
{
    return m_mode == NumberInput::Whole ? m_wholeRange.maximum : m_realRange.maximum;
}

void CTdNumEdit::SetMinimum(double minimum)
{
    m_wholeRange.minimum = whole(minimum);
    m_realRange.minimum = minimum;
    m_hasRange = true;
}

void CTdNumEdit::SetMaximum(double maximum)
{
    m_wholeRange.maximum = whole(maximum);
    m_realRange.maximum = maximum;
    m_hasRange = true;
}

void CTdNumEdit::SetValue(qint32 value)
{
    setText(TxNumberText::whole(value));
}

void CTdNumEdit::SetValue(double value)
{
    setText(qIsFinite(value) ? TxNumberText::fixed(value, 6) : QString());
}

qint32 CTdNumEdit::GetValueL() const
{
    return wholeNumber(text());
}

double CTdNumEdit::GetValueD() const
{
    return TxNumberText::atof(text());
}

bool CTdNumEdit::isInRange(const QString &text) const
{
    const auto lies = [](auto value, const auto &range) {
        return !(value < range.minimum) && !(value > range.maximum);
    };
    return m_mode == NumberInput::Real ? lies(TxNumberText::atof(text), m_realRange)
                                       : lies(wholeNumber(text), m_wholeRange);
}

void CTdNumEdit::checkNextChange()
{
    m_checksNext = m_hasRange;
    m_before = text();
    m_caretBefore = cursorPosition();
}

void CTdNumEdit::keepInRange(QString &changed, int &caret)
{
    // Once: what a host sets when it hears of the change is its own matter.
    if (!std::exchange(m_checksNext, false) || isInRange(changed))
        return;
    changed = m_before;
    caret = m_caretBefore;
}

qsizetype CTdNumEdit::beginningOfSelection() const
{
    // Behind an undo QLineEdit may tell of a selection that starts at -1.
    return qMax(0, hasSelectedText() ? selectionStart() : cursorPosition());
}

QString CTdNumEdit::accepted(const QString &typed, qsizetype from, qsizetype length) const
{
    // What is typed replaces the selection, so that must not speak against it: "-3" over a selected "-7" is -3, not 3.
    QString grown = text();
    grown.remove(from, length);
    QString result;
    for (const QChar character : typed) {
        if (!NumberInput::accepts(m_mode, grown, from, character))
            continue;
        grown.insert(from++, character);
        result += character;
    }
    return result;
}

void CTdNumEdit::keyPressEvent(QKeyEvent *event)
{
    const qsizetype from = beginningOfSelection();
    if (isTyping(*event) && !isReadOnly()) {
        const QString typed = event->text();
        const QString changed = text().replace(from, selectionLength(), typed);
        if (accepted(typed, from, selectionLength()) != typed || (m_hasRange && !isInRange(changed))) {
            event->accept(); // dropped: a window above must not take the key for a command
            return;
        }
    } else if (!event->text().isEmpty() && event->key() != Qt::Key_Delete) {
        checkNextChange(); // keys that type control characters are checked: Backspace and shortcuts, but not Delete
    }
    QLineEdit::keyPressEvent(event);
    m_checksNext = false;
}

void CTdNumEdit::inputMethodEvent(QInputMethodEvent *event)
{
    qsizetype from = beginningOfSelection();
    qsizetype length = selectionLength();
    if (length == 0) {
        from = qBound<qsizetype>(0, from + event->replacementStart(), text().size());
        length = event->replacementLength();
    }
    QInputMethodEvent filtered(event->preeditString(), event->attributes());
    filtered.setCommitString(accepted(event->commitString(), from, length), event->replacementStart(),
                             event->replacementLength());
    checkNextChange();
    QLineEdit::inputMethodEvent(&filtered);
    m_checksNext = false;
}

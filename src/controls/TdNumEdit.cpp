#include "controls/TdNumEdit.h"

#include "engine/base/TxNumberText.h"

#include <QInputMethodEvent>
#include <QKeyEvent>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

/// True for a key that types @p event's text; control and command keys do not.
bool isTyping(const QKeyEvent &event)
{
    const Qt::KeyboardModifiers modifiers = event.modifiers();
    // Ctrl and Alt together are AltGr on some systems, which types.
    const bool isCommand = modifiers & (Qt::ControlModifier | Qt::MetaModifier) && !(modifiers & Qt::AltModifier);
    return !isCommand && !event.text().isEmpty() && event.text().at(0).isPrint();
}

/// The whole part of @p number, kept within 32 bits; 0 when it is none.
qint32 whole(double number)
{
    using Limits = std::numeric_limits<qint32>;
    return std::isnan(number) ? 0 : static_cast<qint32>(std::clamp<double>(number, Limits::min(), Limits::max()));
}

} // namespace

CTdNumEdit::CTdNumEdit(QWidget *parent) : QLineEdit(parent)
{
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
    return static_cast<qint32>(std::clamp<qint64>(TxNumberText::atoll(text()), std::numeric_limits<qint32>::min(),
                                                  std::numeric_limits<qint32>::max()));
}

double CTdNumEdit::GetValueD() const
{
    return TxNumberText::atof(text());
}

bool CTdNumEdit::isInRange() const
{
    const auto lies = [](auto value, const auto &range) {
        return !(value < range.minimum) && !(value > range.maximum);
    };
    return m_mode == NumberInput::Real ? lies(GetValueD(), m_realRange) : lies(GetValueL(), m_wholeRange);
}

void CTdNumEdit::keepInRange(const QString &before, int caret)
{
    if (!m_hasRange || isInRange() || text() == before)
        return;
    setText(before);
    setCursorPosition(caret);
}

bool CTdNumEdit::takes(QChar typed) const
{
    // What is typed replaces the selection, so that must not speak against it: "-3" over a selected "-7" is -3, not 3.
    QString left = text();
    qsizetype caret = cursorPosition();
    if (hasSelectedText()) {
        caret = selectionStart();
        left.remove(caret, selectionLength());
    }
    return NumberInput::accepts(m_mode, left, caret, typed);
}

void CTdNumEdit::keyPressEvent(QKeyEvent *event)
{
    const QString before = text();
    const int caret = cursorPosition();
    if (isTyping(*event) && !takes(event->text().at(0)))
        event->accept(); // dropped: a window above must not take the key for a command
    else
        QLineEdit::keyPressEvent(event);
    // Only keys that type or control characters are checked: Delete is none.
    if (!event->text().isEmpty() && event->key() != Qt::Key_Delete)
        keepInRange(before, caret);
}

void CTdNumEdit::inputMethodEvent(QInputMethodEvent *event)
{
    const QString before = text();
    const int caret = cursorPosition();
    QString accepted;
    QString grown = before;
    int at = caret;
    for (const QChar typed : event->commitString()) {
        if (!NumberInput::accepts(m_mode, grown, at, typed))
            continue;
        grown.insert(at++, typed);
        accepted += typed;
    }
    QInputMethodEvent filtered(event->preeditString(), event->attributes());
    filtered.setCommitString(accepted, event->replacementStart(), event->replacementLength());
    QLineEdit::inputMethodEvent(&filtered);
    keepInRange(before, caret);
}

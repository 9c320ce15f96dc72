#include "controls/TdDMSMakEdit.h"

#include "common/TdModule.h"
#include "controls/DegreeText.h"
#include "engine/base/TxNumberText.h"
#include "res/StringId.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QMessageBox>
#include <QPointer>
#include <QScopedValueRollback>

#include <cmath>
#include <cstdlib>

namespace {

/// A range of angles and what the user is told. The texts name the other direction, as users know them.
struct Range
{
    int editType;
    int limit; // degrees
    quint32 beyondText;
    quint32 atLimitText;
};

constexpr Range ranges[] = {
    {CTdDMSMakEdit::Range180, 180, TdStringId::AngleBeyond180, TdStringId::AngleBehind180},
    {CTdDMSMakEdit::Range90, 90, TdStringId::AngleBeyond90, TdStringId::AngleBehind90},
};

} // namespace

CTdDMSMakEdit::CTdDMSMakEdit(QWidget *parent) : QLineEdit(parent)
{
    connect(this, &QLineEdit::textChanged, this, &CTdDMSMakEdit::followChange);
}

CTdDMSMakEdit::~CTdDMSMakEdit() = default;

void CTdDMSMakEdit::SetMask(const QString &mask, QChar prompt)
{
    m_waiting.reset();
    m_mask.setMask(mask, prompt);
    showMask(0);
}

void CTdDMSMakEdit::SetText(const QString &text)
{
    m_waiting.reset();
    m_mask.fill(text);
    showMask(0);
}

QString CTdDMSMakEdit::GetDDMMSS(double degrees) const
{
    return DegreeText::digits(degrees);
}

void CTdDMSMakEdit::EnableMask(int enable)
{
    const bool hasColon = text().contains(u':');
    if (hasColon && enable == 0) {
        m_maskEnabled = false;
        setText(TxNumberText::fixed(DegreeText::plainSum(text()), 9));
    } else if (!hasColon && enable != 0) {
        m_maskEnabled = true;
        SetText(GetDDMMSS(TxNumberText::atof(text())));
    }
}

double CTdDMSMakEdit::GetDegree() const
{
    return m_maskEnabled ? DegreeText::value(m_mask.text()) : TxNumberText::atof(text());
}

void CTdDMSMakEdit::SetDegree(double degrees)
{
    if (m_maskEnabled) {
        SetText(GetDDMMSS(degrees));
        if (GetMask().isEmpty())
            m_waiting = degrees;
        return;
    }
    setText(std::isfinite(degrees) ? TxNumberText::fixed(degrees, 9) : QString());
}

void CTdDMSMakEdit::setFormMask(const QString &mask)
{
    // The code of a form sets texts last, and again when the language changes: what the edit shows must outlast both.
    if (mask == GetMask())
        return;
    const std::optional<double> waiting = m_waiting;
    SetMask(mask);
    if (waiting)
        SetDegree(*waiting);
}

double CTdDMSMakEdit::GetValueDirect() const
{
    return TxNumberText::atof(text());
}

qint32 CTdDMSMakEdit::GetDegreeSection() const
{
    return DegreeText::degreePart(text());
}

qint32 CTdDMSMakEdit::GetMinuteSection() const
{
    return DegreeText::minutePart(text());
}

float CTdDMSMakEdit::GetSecondSecion() const
{
    return DegreeText::secondPart(text());
}

int CTdDMSMakEdit::CheckDataValid(int showMessage)
{
    const qint32 degrees = GetDegreeSection();
    for (const Range &range : ranges) {
        if (range.editType != m_editType)
            continue;
        quint32 failure = 0;
        if (degrees > range.limit || degrees < -range.limit)
            failure = range.beyondText;
        else if (std::abs(degrees) == range.limit &&
                 (GetMinuteSection() != 0 || !(std::abs(static_cast<double>(GetSecondSecion())) <= 1e-10)))
            failure = range.atLimitText;
        if (failure == 0)
            return 1;
        if (showMessage != 0) {
            // On the heap: the edit's window may go while the message is open, and takes it along.
            const QPointer<QMessageBox> box =
                new QMessageBox(QMessageBox::Warning, QGuiApplication::applicationDisplayName(),
                                CTdModule::LoadString(failure), QMessageBox::Ok, window());
            box->exec();
            delete box;
        }
        return 0;
    }
    return 1;
}

void CTdDMSMakEdit::keyPressEvent(QKeyEvent *event)
{
    if (m_maskEnabled) {
        m_key = event->key() == Qt::Key_Delete      ? DegreeMask::Key::Delete
                : event->key() == Qt::Key_Backspace ? DegreeMask::Key::Backspace
                                                    : DegreeMask::Key::Other;
    }
    QLineEdit::keyPressEvent(event);
}

void CTdDMSMakEdit::followChange()
{
    if (m_showing)
        return;
    if (!m_maskEnabled) {
        m_mask.show(text());
        return;
    }
    const int caret = hasSelectedText() ? selectionStart() : cursorPosition();
    if (const int next = m_mask.edited(text(), caret, m_key); next >= 0)
        showMask(next);
}

void CTdDMSMakEdit::showMask(int caret)
{
    const QScopedValueRollback showing(m_showing, true);
    setText(m_mask.text());
    setCursorPosition(caret);
}

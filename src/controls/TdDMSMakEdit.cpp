#include "controls/TdDMSMakEdit.h"

#include "common/TdModule.h"
#include "controls/AngleParser.h"
#include "controls/DegreeText.h"
#include "engine/base/TxNumberText.h"
#include "res/StringId.h"

#include <QAction>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QMessageBox>
#include <QMimeData>
#include <QPointer>
#include <QValidator>

#include <cmath>
#include <cstdlib>
#include <limits>

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

/// Puts the mask over every change before the edit tells of it, whatever made it: keys, pastes, drops, input methods.
class CTdDMSMakEdit::MaskKeeper : public QValidator
{
public:
    explicit MaskKeeper(CTdDMSMakEdit *edit) : QValidator(edit), m_edit(edit) {}

    State validate(QString &text, int &caret) const override
    {
        m_edit->follow(text, caret);
        return Acceptable;
    }

private:
    CTdDMSMakEdit *m_edit;
};

CTdDMSMakEdit::CTdDMSMakEdit(QWidget *parent) : QLineEdit(parent)
{
    setMaxLength(std::numeric_limits<int>::max()); // as long as the mask
    setValidator(new MaskKeeper(this));
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
    if (event->matches(QKeySequence::Undo))
        undo();
    else if (event->matches(QKeySequence::Redo))
        redo();
    else if (event->matches(QKeySequence::Paste))
        paste();
    else
        QLineEdit::keyPressEvent(event);
    m_key = DegreeMask::Key::Other; // what changes the text without a key counts as typing
}

void CTdDMSMakEdit::contextMenuEvent(QContextMenuEvent *event)
{
    struct Row
    {
        const char *text;
        bool enabled;
        void (CTdDMSMakEdit::*run)();
    };
    const Row rows[] = {
        {"&Undo", isUndoAvailable(), &CTdDMSMakEdit::undo},
        {"&Redo", isRedoAvailable(), &CTdDMSMakEdit::redo},
        {"&Paste", !QGuiApplication::clipboard()->text().isEmpty(), &CTdDMSMakEdit::paste},
    };
    QMenu *menu = createStandardContextMenu();
    for (QAction *action : menu->actions()) {
        for (const Row &row : rows) {
            if (!action->text().startsWith(QLineEdit::tr(row.text)))
                continue;
            action->disconnect(this);
            action->setEnabled(row.enabled);
            connect(action, &QAction::triggered, this, row.run);
        }
    }
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->popup(event->globalPos());
}

void CTdDMSMakEdit::dropEvent(QDropEvent *event)
{
    if (pasteAngle(event->mimeData()->text()))
        event->acceptProposedAction();
    else
        QLineEdit::dropEvent(event);
}

void CTdDMSMakEdit::undo()
{
    if (!isUndoAvailable())
        return;
    if (m_maskEnabled)
        showEdited(m_mask.undo());
    else
        QLineEdit::undo();
}

void CTdDMSMakEdit::redo()
{
    if (!isRedoAvailable())
        return;
    if (m_maskEnabled)
        showEdited(m_mask.redo());
    else
        QLineEdit::redo();
}

bool CTdDMSMakEdit::isUndoAvailable() const
{
    return m_maskEnabled ? !isReadOnly() && m_mask.canUndo() : QLineEdit::isUndoAvailable();
}

bool CTdDMSMakEdit::isRedoAvailable() const
{
    return m_maskEnabled ? !isReadOnly() && m_mask.canRedo() : QLineEdit::isRedoAvailable();
}

void CTdDMSMakEdit::paste()
{
    if (!isReadOnly() && !pasteAngle(QGuiApplication::clipboard()->text()))
        QLineEdit::paste();
}

bool CTdDMSMakEdit::pasteAngle(const QString &text)
{
    if (!m_pastesAngles || !m_maskEnabled || isReadOnly() || text.isEmpty())
        return false;
    const AngleParser::Result angle = AngleParser::parse(text);
    const QString digits = angle.ok() ? GetDDMMSS(angle.degrees) : QString();
    if (digits.isEmpty())
        return false;
    m_mask.replace(digits);
    showEdited(0);
    return true;
}

void CTdDMSMakEdit::follow(QString &changed, int &caret)
{
    if (!m_maskEnabled) {
        if (changed != m_mask.text())
            m_mask.show(changed);
        return;
    }
    const int next = m_mask.edited(changed, caret, m_key);
    if (next < 0)
        return;
    changed = m_mask.text();
    caret = qMin(next, static_cast<int>(changed.size()));
}

void CTdDMSMakEdit::showMask(int caret)
{
    setText(m_mask.text());
    setCursorPosition(caret);
}

void CTdDMSMakEdit::showEdited(int caret)
{
    showMask(caret);
    Q_EMIT textEdited(text());
}

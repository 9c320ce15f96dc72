#include "common/TdDialog.h"

#include "basic/TdHostMessage.h"
#include "common/TdModule.h"
#include "common/TdSendMessage.h"
#include "engine/ui/TxWheelGuard.h"

#include <QApplication>
#include <QKeyEvent>
#include <QToolButton>
#include <QWhatsThis>
#include <QWindow>

CTdDialog::CTdDialog(quint32 templateId, QWidget *parent) : QDialog(parent), m_templateId(templateId)
{
    setWindowFlag(Qt::WindowContextHelpButtonHint);
}

CTdDialog::~CTdDialog() = default;

int CTdDialog::DoModal()
{
    // A dialog without a parent stays above the main window, so that it cannot be lost behind the window it blocks.
    const QWidget *mainWnd = CTdModule::GetMainWnd();
    if (!parentWidget() && mainWnd && mainWnd->window() != this) {
        winId(); // makes the native window
        windowHandle()->setTransientParent(mainWnd->window()->windowHandle());
    }
    return exec() == QDialog::Accepted ? IdOk : IdCancel;
}

QWidget *CTdDialog::GetDlgItem(int controlId) const
{
    const QList<QWidget *> controls = findChildren<QWidget *>();
    for (QWidget *control : controls) {
        const QVariant id = control->property("controlId");
        if (id.isValid() && id.toInt() == controlId)
            return control;
    }
    return nullptr;
}

void CTdDialog::accept()
{
    OnOK();
}

void CTdDialog::reject()
{
    OnCancel();
}

void CTdDialog::done(int result)
{
    m_initialised = false;
    QDialog::done(result);
}

void CTdDialog::setVisible(bool visible)
{
    if (visible && !m_initialised) {
        m_initialised = true;
        OnInitDialog();
        TxWheelGuard::installBelow(this);
    }
    QDialog::setVisible(visible);
}

bool CTdDialog::OnInitDialog()
{
    return true;
}

void CTdDialog::OnOK()
{
    QDialog::accept();
}

void CTdDialog::OnCancel()
{
    QDialog::reject();
}

void CTdDialog::OnHelp()
{
    CTdHostMessage message(CTdHostMessage::ContextHelp, GetHelpTopic());
    TdSendMessageToMainWnd(message);
}

bool CTdDialog::event(QEvent *event)
{
    // The caption's help button begins Qt's own mode in which the user points at a control. Every top-level window is
    // told; the one that the user works in answers.
    const QWidget *modal = QApplication::activeModalWidget();
    if (event->type() == QEvent::EnterWhatsThisMode && (!modal || modal == this)) {
        QWhatsThis::leaveWhatsThisMode();
        OnHelp();
        return true;
    }
    return QDialog::event(event);
}

void CTdDialog::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_F1 && event->modifiers() == Qt::NoModifier) {
        event->accept();
        OnHelp();
        return;
    }
    // Tool buttons leave Enter to the dialog, which would close: who stands on Undo means Undo.
    auto *tool = qobject_cast<QToolButton *>(focusWidget());
    if (tool && (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)) {
        event->accept();
        tool->click();
        return;
    }
    QDialog::keyPressEvent(event);
}

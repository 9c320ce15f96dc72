#pragma once

#include "common/TdCommonExport.h"

#include <QDialog>

/// The base of the library's dialogs.
///
/// A dialog has the number of its template, which is also the number of its help topic: F1 and the caption's help
/// button ask the host's main window for topic 0x10000 + number (CTdHostMessage::ContextHelp). The wheel changes no
/// value in it that has not the focus. Enter on a tool button pushes that.
class TDCOMMON_API CTdDialog : public QDialog
{
    Q_OBJECT

public:
    /// What DoModal() answers. Do not change the values.
    enum Result { IdOk = 1, IdCancel = 2 };

    explicit CTdDialog(quint32 templateId, QWidget *parent = nullptr);
    ~CTdDialog() override;

    /// Shows the dialog, above the main window where it has no parent, and waits until it is closed.
    /// @return IdOk or IdCancel.
    virtual int DoModal();

    /// The number of the dialog's template.
    quint32 GetTemplateId() const { return m_templateId; }
    /// The number of the dialog's help topic.
    quint32 GetHelpTopic() const { return 0x10000 + m_templateId; }
    /// The control whose dynamic property "controlId" is @p controlId; null when there is none.
    QWidget *GetDlgItem(int controlId) const;
    /// The same, null also when the control is no @p Control.
    template<class Control>
    Control *GetDlgItem(int controlId) const
    {
        return qobject_cast<Control *>(GetDlgItem(controlId));
    }

    void accept() final;
    void reject() final;
    void done(int result) override;
    void setVisible(bool visible) override;

protected:
    /// Prepares the dialog: runs once before it shows, and again before it shows after it was closed.
    /// @return true; false when it gave the focus to a control itself.
    virtual bool OnInitDialog();
    /// The user accepts (OK, Enter). The base closes the dialog.
    virtual void OnOK();
    /// The user gives up (Cancel, Escape, the caption's close button). The base closes the dialog.
    virtual void OnCancel();
    /// The user asks for help. The base asks the host's main window for the dialog's topic.
    virtual void OnHelp();

    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    const quint32 m_templateId;
    bool m_initialised = false; // OnInitDialog has run since the dialog was last closed
};

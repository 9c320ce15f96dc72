#include "HostWindow.h"

#include "common/TdDialog.h"

#include <QApplication>
#include <QLineEdit>
#include <QTest>
#include <QTimer>
#include <QVBoxLayout>

#include <gtest/gtest.h>

#include <functional>

namespace {

/// A dialog with one edit, that counts what happens to it.
class Dialog : public CTdDialog
{
public:
    Dialog() : CTdDialog(10607), m_edit(new QLineEdit(this))
    {
        m_edit->setProperty("controlId", 7);
        (new QVBoxLayout(this))->addWidget(m_edit);
    }

    QLineEdit *const m_edit;
    int m_initialised = 0;
    bool m_visibleAtInit = false;
    bool m_refuse = false;

    /// Runs the dialog and does @p action as soon as it shows.
    int run(const std::function<void()> &action)
    {
        QTimer::singleShot(0, this, action);
        QTimer::singleShot(10000, this, [this] { done(99); }); // an action that fails to close it must not hang
        return DoModal();
    }

protected:
    bool OnInitDialog() override
    {
        ++m_initialised;
        m_visibleAtInit = isVisible();
        return CTdDialog::OnInitDialog();
    }
    void OnOK() override
    {
        if (!m_refuse)
            CTdDialog::OnOK();
    }
};

TEST(Dialog, AnswersOneForOkAndTwoForCancelAndCanRefuseOk)
{
    const std::pair<std::function<void(Dialog &)>, int> rows[] = {
        {[](Dialog &d) { d.accept(); }, 1},
        {[](Dialog &d) { d.reject(); }, 2},
        {[](Dialog &d) { QTest::keyClick(d.m_edit, Qt::Key_Escape); }, 2},
        {[](Dialog &d) { d.close(); }, 2}, // by the button of the caption
    };
    for (const auto &[close, answer] : rows) {
        for (const bool refuse : {false, true}) {
            Dialog dialog;
            dialog.m_refuse = refuse;
            EXPECT_EQ(dialog.run([&] {
                close(dialog);
                EXPECT_EQ(dialog.isVisible(), refuse && answer == 1) << "OK can be refused";
                if (refuse)
                    dialog.reject();
            }),
                      refuse ? 2 : answer);
        }
    }
}

TEST(Dialog, IsInitialisedOnceBeforeEachRun)
{
    Dialog dialog;
    for (const int run : {1, 2}) {
        dialog.run([&] {
            dialog.hide();
            dialog.show();
            dialog.accept();
        });
        EXPECT_EQ(dialog.m_initialised, run);
        EXPECT_FALSE(dialog.m_visibleAtInit);
    }
}

TEST(Dialog, F1AndTheCaptionsHelpButtonOpenItsTopic)
{
    Dialog dialog;
    const auto askForHelp = [&dialog] {
        QTest::keyClick(dialog.m_edit, Qt::Key_F1);
        QEvent help(QEvent::EnterWhatsThisMode);
        QApplication::sendEvent(&dialog, &help);
        EXPECT_TRUE(dialog.isVisible());
        dialog.accept();
    };
    dialog.run(askForHelp); // without a main window nothing happens
    const HostWindow host;
    EXPECT_TRUE(dialog.windowFlags().testFlag(Qt::WindowContextHelpButtonHint));
    dialog.run(askForHelp);
    EXPECT_EQ(host.m_messages, (QList<int>{CTdHostMessage::ContextHelp, CTdHostMessage::ContextHelp}));
    EXPECT_EQ(host.m_numbers, (QList<qint64>{76143, 76143}));
}

TEST(Dialog, FindsControlsByNumber)
{
    const Dialog dialog;
    EXPECT_EQ(dialog.GetDlgItem(7), dialog.m_edit);
    EXPECT_EQ(dialog.GetDlgItem<QLineEdit>(7), dialog.m_edit);
    EXPECT_EQ(dialog.GetDlgItem<QDialog>(7), nullptr);
    EXPECT_EQ(dialog.GetDlgItem(0), nullptr) << "a control without a number is not number 0";
}

} // namespace

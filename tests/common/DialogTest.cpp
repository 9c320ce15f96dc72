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

TEST(Dialog, AnswersOneForOkAndTwoForCancel)
{
    struct Row
    {
        const char *how;
        std::function<void(Dialog &)> close;
        int answer;
    };
    const Row rows[] = {
        {"accept", [](Dialog &d) { d.accept(); }, 1},
        {"reject", [](Dialog &d) { d.reject(); }, 2},
        {"Escape", [](Dialog &d) { QTest::keyClick(d.m_edit, Qt::Key_Escape); }, 2},
        {"close button of the caption", [](Dialog &d) { d.close(); }, 2},
    };
    for (const Row &row : rows) {
        Dialog dialog;
        EXPECT_EQ(dialog.run([&] { row.close(dialog); }), row.answer) << row.how;
    }
}

TEST(Dialog, CanRefuseToClose)
{
    Dialog dialog;
    dialog.m_refuse = true;
    EXPECT_EQ(dialog.run([&] {
        dialog.accept();
        EXPECT_TRUE(dialog.isVisible());
        dialog.reject();
    }),
              2);
}

TEST(Dialog, IsInitialisedOnceBeforeEachRun)
{
    Dialog dialog;
    dialog.run([&] {
        dialog.hide();
        dialog.show();
        EXPECT_EQ(dialog.m_initialised, 1);
        dialog.accept();
    });
    EXPECT_EQ(dialog.m_initialised, 1);
    EXPECT_FALSE(dialog.m_visibleAtInit);
    dialog.run([&] { dialog.accept(); });
    EXPECT_EQ(dialog.m_initialised, 2);
}

TEST(Dialog, F1AndTheCaptionsHelpButtonOpenItsTopic)
{
    HostWindow host;
    Dialog dialog;
    EXPECT_TRUE(dialog.windowFlags().testFlag(Qt::WindowContextHelpButtonHint));
    dialog.run([&] {
        QTest::keyClick(dialog.m_edit, Qt::Key_F1);
        QEvent help(QEvent::EnterWhatsThisMode);
        QApplication::sendEvent(&dialog, &help);
        dialog.accept();
    });
    EXPECT_EQ(host.m_messages, (QList<int>{CTdHostMessage::ContextHelp, CTdHostMessage::ContextHelp}));
    EXPECT_EQ(host.m_numbers, (QList<qint64>{76143, 76143}));
}

TEST(Dialog, HelpWithoutAMainWindowDoesNothing)
{
    Dialog dialog;
    dialog.run([&] {
        QTest::keyClick(dialog.m_edit, Qt::Key_F1);
        EXPECT_TRUE(dialog.isVisible());
        dialog.accept();
    });
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

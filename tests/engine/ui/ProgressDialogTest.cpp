#include "engine/ui/TxDlgProgress.h"

#include <QApplication>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <thread>

namespace {

struct FormatCase
{
    const char *pattern;
    QStringList args;
    const char *expected;
};

TEST(ProgressDialog, MessagesHavePlacesForArguments)
{
    const FormatCase cases[] = {{"Dealing with the %dst record", {"7"}, "Dealing with the 7st record"},
                                {"%2 before %1, %% and %s", {"a", "b"}, "b before a, % and a"},
                                {"%d of %d, %s", {"1", "2"}, "1 of 2, %s"},
                                {"%1%2", {"%2", "x"}, "%2x"}, // what stands in an argument is no place
                                {"100%", {"1"}, "100%"},
                                {"%q %9 %", {"1"}, "%q %9 %"}};
    for (const FormatCase &c : cases)
        EXPECT_EQ(CTxDlgProgress::Format(c.pattern, c.args).toStdString(), c.expected) << c.pattern;
    CTxDlgProgress dialog;
    dialog.FormatMessage(QStringLiteral("%s: %f of %d"), QStringLiteral("rivers"), 1.5, qint64(3'000'000'000));
    bool isShown = false;
    for (const QLabel *label : dialog.findChildren<QLabel *>())
        isShown = isShown || label->text() == QStringLiteral("rivers: 1.5 of 3000000000");
    EXPECT_TRUE(isShown) << "numbers follow no locale";
}

TEST(ProgressDialog, TellsTheTimeThatIsLeftInRoundNumbers)
{
    const std::pair<double, const char *> cases[] = {{0, "About 5 s left"},
                                                     {12, "About 15 s left"},
                                                     {55, "About 55 s left"},
                                                     {58, "About 1 min left"},
                                                     {95, "About 2 min left"},
                                                     {3500, "About 58 min left"},
                                                     {3599, "About 1 h left"},
                                                     {2.4 * 3600, "About 2 h left"},
                                                     {-1, ""},
                                                     {1e300, ""}};
    for (const auto &[seconds, expected] : cases)
        EXPECT_EQ(CTxDlgProgress::TimeLeftText(seconds).toStdString(), expected) << seconds;
    EXPECT_EQ(CTxDlgProgress::TimeLeftText(std::numeric_limits<double>::quiet_NaN()), QString());
}

/// Calls @p work at once when the dialog handles events next.
template<class Work>
void later(Work &&work)
{
    QTimer::singleShot(0, qApp, std::forward<Work>(work));
}

TEST(ProgressDialog, WorkThatIsSoonDoneShowsNothing)
{
    CTxDlgProgress dialog;
    dialog.SetShowDelay(100'000);
    dialog.Create(nullptr);
    const TxProgress progress = dialog.GetProgress();
    bool handled = false;
    later([&] { handled = true; });
    QTest::qSleep(40);
    EXPECT_TRUE(progress(5, 10));
    dialog.SetProgressPos(60);
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_FALSE(handled) << "without a window that blocks input, nothing may run in the middle of the work";
    EXPECT_EQ(dialog.GetProgressPos(), 60);
    dialog.SetShowDelay(20);
    dialog.Create(nullptr);
    QTest::qSleep(40);
    EXPECT_TRUE(progress(1, 4));
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(dialog.GetProgressPos(), 25);
}

TEST(ProgressDialog, EscapeButtonAndCloseCancelAndTheWindowStays)
{
    for (const int way : {0, 1, 2}) {
        CTxDlgProgress dialog;
        dialog.Create(nullptr);
        ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
        const TxProgress progress = dialog.GetProgress();
        EXPECT_TRUE(progress(1, 10));
        later([&] {
            if (way == 0)
                QTest::keyClick(dialog.windowHandle(), Qt::Key_Escape);
            else if (way == 1)
                QTest::keyClick(dialog.windowHandle(), Qt::Key_Space); // the button has the focus
            else
                dialog.close();
        });
        QTest::qSleep(40);
        progress(2, 10);
        EXPECT_TRUE(dialog.IsCanceled()) << way;
        EXPECT_FALSE(progress(3, 10)) << way;
        EXPECT_TRUE(dialog.isVisible()) << way;
        EXPECT_FALSE(dialog.findChild<QPushButton *>()->isEnabled()) << way;
        dialog.Create(nullptr);
        EXPECT_FALSE(dialog.IsCanceled()) << "a new piece of work begins uncancelled";
    }
}

TEST(ProgressDialog, ReturnDoesNotCancelNorDoesEscapeWhereNothingCanBeCancelled)
{
    CTxDlgProgress dialog;
    dialog.Create(nullptr);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
    QTest::keyClick(dialog.windowHandle(), Qt::Key_Return);
    EXPECT_FALSE(dialog.IsCanceled());
    dialog.SetCancelable(false);
    QTest::keyClick(dialog.windowHandle(), Qt::Key_Escape);
    EXPECT_FALSE(dialog.IsCanceled());
    EXPECT_TRUE(dialog.isVisible());
}

TEST(ProgressDialog, OtherWindowsGetNoInputAndTheirTimersWait)
{
    QPushButton other(QStringLiteral("other"));
    other.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    int clicks = 0, ticks = 0;
    QObject::connect(&other, &QPushButton::clicked, [&] { ++clicks; });
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] { ++ticks; });
    timer.setSingleShot(true);
    timer.start(0);
    {
        CTxDlgProgress dialog;
        dialog.Create(&other);
        for (int i = 1; i <= 5; ++i) {
            later([&] {
                QTest::mouseClick(other.windowHandle(), Qt::LeftButton);
                QTest::keyClick(other.windowHandle(), Qt::Key_Space);
                dialog.SetProgressPos(99); // handles no events within the handling
            });
            dialog.SetProgressPos(i);
        }
        EXPECT_EQ(clicks, 0);
        EXPECT_EQ(ticks, 0);
    }
    QTest::qWait(1);
    EXPECT_EQ(ticks, 1) << "it was held back, not lost";
    QTest::mouseClick(other.windowHandle(), Qt::LeftButton);
    EXPECT_EQ(clicks, 1);
}

TEST(ProgressDialog, WorkStopsWhenTheWindowGoesWithItsParent)
{
    auto parent = std::make_unique<QWidget>();
    auto *dialog = new CTxDlgProgress;
    dialog->Create(parent.get());
    const TxProgress progress = dialog->GetProgress();
    EXPECT_TRUE(progress(1, -1));
    later([&] { parent.reset(); });
    QTest::qSleep(40);
    EXPECT_FALSE(progress(2, -1));
    EXPECT_FALSE(progress(3, -1));
}

TEST(ProgressDialog, NeedsTheThreadOfTheWindows)
{
    EXPECT_TRUE(CTxDlgProgress::IsAvailable());
    bool elsewhere = true;
    std::thread([&] { elsewhere = CTxDlgProgress::IsAvailable(); }).join();
    EXPECT_FALSE(elsewhere);
}

TEST(ProgressDialog, UnknownTotalsShowABusyBarAndPercentsAreKeptIn)
{
    CTxDlgProgress dialog;
    dialog.Create(nullptr);
    const TxProgress progress = dialog.GetProgress();
    QTest::qSleep(40);
    progress(12, -1);
    EXPECT_TRUE(dialog.IsIndeterminate());
    for (const auto &[asked, kept] : {std::pair(0, 0), std::pair(-5, 0), std::pair(250, 100)}) {
        dialog.SetProgressPos(asked);
        EXPECT_EQ(dialog.findChild<QProgressBar *>()->value(), kept);
        EXPECT_FALSE(dialog.IsIndeterminate());
    }
    QTest::qSleep(40);
    progress(5'000'000'000, 4'000'000'000);
    EXPECT_EQ(dialog.GetProgressPos(), 100);
}

} // namespace

#include "common/TdCommonReport.h"

#include <QLabel>
#include <QPlainTextEdit>
#include <QTextOption>
#include <QTimer>

#include <gtest/gtest.h>

namespace {

QString label(const CTdCommonReport &report)
{
    return report.GetDlgItem<QLabel>(39058)->text();
}

QString content(const CTdCommonReport &report)
{
    return report.GetDlgItem<QPlainTextEdit>(39057)->toPlainText();
}

Qt::Alignment shownAlignment(const CTdCommonReport &report)
{
    return report.GetEditCtrl()->document()->defaultTextOption().alignment();
}

TEST(CommonReport, SettersStoreAndGiveTheTextBefore)
{
    CTdCommonReport report(QStringLiteral("Title"), QStringLiteral("Name"), QStringLiteral("Line 1\nLine 2"));
    EXPECT_EQ(report.SetWndName(QStringLiteral("T")), QStringLiteral("Title"));
    EXPECT_EQ(report.SetReportName(QStringLiteral("N")), QStringLiteral("Name"));
    EXPECT_EQ(report.SetReportContent(QStringLiteral("C")), QStringLiteral("Line 1\nLine 2"));
    EXPECT_EQ(report.GetWndName() + report.GetReportName() + report.GetReportContent(), QStringLiteral("TNC"));
    EXPECT_TRUE(content(report).isEmpty()) << "shown at initialisation, not before";
}

TEST(CommonReport, ShowsTheTextsWhenItOpensAndWhenTold)
{
    CTdCommonReport report;
    EXPECT_TRUE(report.GetWndName().isEmpty() && report.GetReportName().isEmpty());
    report.SetWndName(QStringLiteral("Title"));
    report.SetReportName(QStringLiteral("<b>Name</b>"));
    report.SetReportContent(QStringLiteral("1\n2"));
    QTimer::singleShot(0, &report, [&report] {
        EXPECT_EQ(report.windowTitle(), QStringLiteral("Title"));
        EXPECT_EQ(label(report), QStringLiteral("<b>Name</b>"));
        EXPECT_EQ(report.GetDlgItem<QLabel>(39058)->textFormat(), Qt::PlainText);
        EXPECT_EQ(content(report), QStringLiteral("1\n2"));
        EXPECT_EQ(report.focusWidget(), report.GetEditCtrl());
        report.SetReportContent(QStringLiteral("3"));
        EXPECT_EQ(content(report), QStringLiteral("1\n2"));
        report.UpdateAllItemValues();
        EXPECT_EQ(content(report), QStringLiteral("3"));
        report.accept();
    });
    EXPECT_EQ(report.DoModal(), 1);
}

TEST(CommonReport, AlignmentOutOfRangeCountsAsLeft)
{
    CTdCommonReport report;
    EXPECT_EQ(report.SetTextAlign(1), 0);
    EXPECT_EQ(report.SetTextAlign(5), 1);
    EXPECT_EQ(report.GetTextAlign(), 0);
    EXPECT_EQ(report.SetTextAlign(-1), 0);
    EXPECT_EQ(report.GetTextAlign(), 0);
}

TEST(CommonReport, SetTextAlignAddsToEarlierAlignments)
{
    CTdCommonReport report;
    EXPECT_EQ(shownAlignment(report) & Qt::AlignHorizontal_Mask, Qt::AlignLeft);
    report.SetTextAlign(1);
    EXPECT_EQ(shownAlignment(report), Qt::AlignHCenter);
    report.SetTextAlign(0);
    EXPECT_EQ(shownAlignment(report), Qt::AlignHCenter);
    report.SetTextAlign(2);
    EXPECT_EQ(shownAlignment(report), Qt::AlignRight);
    report.SetTextAlign(1);
    EXPECT_EQ(shownAlignment(report), Qt::AlignRight);
    EXPECT_EQ(report.GetTextAlign(), 1);
}

} // namespace

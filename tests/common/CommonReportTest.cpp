#include "common/TdCommonReport.h"

#include <QLabel>
#include <QPlainTextEdit>
#include <QTextOption>
#include <QTimer>

#include <gtest/gtest.h>

namespace {

using namespace Qt::Literals::StringLiterals;

TEST(CommonReport, SettersGiveTheTextBeforeAndItsRunShowsTheTexts)
{
    CTdCommonReport report(u"Title"_s, u"Name"_s, u"Line 1\nLine 2"_s);
    EXPECT_EQ(report.SetWndName(u"T"_s), u"Title"_s);
    EXPECT_EQ(report.SetReportName(u"<b>N</b>"_s), u"Name"_s);
    EXPECT_EQ(report.SetReportContent(u"1\n2"_s), u"Line 1\nLine 2"_s);
    EXPECT_EQ(report.GetWndName() + report.GetReportName() + report.GetReportContent(), u"T<b>N</b>1\n2"_s);
    const auto *label = report.GetDlgItem<QLabel>(39058);
    const auto *content = report.GetDlgItem<QPlainTextEdit>(39057);
    EXPECT_TRUE(content->toPlainText().isEmpty()) << "shown at initialisation, not before";
    QTimer::singleShot(0, &report, [&] {
        EXPECT_EQ(report.windowTitle(), u"T"_s);
        EXPECT_EQ(label->text(), u"<b>N</b>"_s);
        EXPECT_EQ(label->textFormat(), Qt::PlainText);
        EXPECT_EQ(content->toPlainText(), u"1\n2"_s);
        EXPECT_EQ(report.focusWidget(), report.GetEditCtrl());
        report.SetReportContent(u"3"_s);
        EXPECT_EQ(content->toPlainText(), u"1\n2"_s);
        report.UpdateAllItemValues();
        EXPECT_EQ(content->toPlainText(), u"3"_s);
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
    const auto shown = [&report] { return report.GetEditCtrl()->document()->defaultTextOption().alignment(); };
    EXPECT_EQ(shown() & Qt::AlignHorizontal_Mask, Qt::AlignLeft);
    const std::pair<int, Qt::AlignmentFlag> rows[] = {
        {1, Qt::AlignHCenter}, {0, Qt::AlignHCenter}, {2, Qt::AlignRight}, {1, Qt::AlignRight}};
    for (const auto &[alignment, wanted] : rows) {
        report.SetTextAlign(alignment);
        EXPECT_EQ(shown(), wanted);
        EXPECT_EQ(report.GetTextAlign(), alignment);
    }
}

} // namespace

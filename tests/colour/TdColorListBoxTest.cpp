#include "colour/TdColorListBox.h"
#include "engine/symbol/TxColorFolder.h"

#include <QAbstractItemModelTester>
#include <QImage>
#include <QSignalSpy>

#include <gtest/gtest.h>

namespace {

constexpr COLORREF red = 0x0000FF;
constexpr COLORREF green = 0x00FF00;
constexpr COLORREF blue = 0xFF0000;

TEST(ColorListBox, ShowsTheLastColourInTheTopRow)
{
    CTdColorListBox list;
    const QAbstractItemModelTester tester(list.model(), QAbstractItemModelTester::FailureReportingMode::Fatal);
    list.resize(100, 200);
    list.InitColor();
    EXPECT_GT(list.GetVisibleRowCount(), 5);
    for (const COLORREF color : {red, green, blue})
        list.AddColor(color);
    EXPECT_EQ(list.GetSelIndex(), -1);
    list.setCurrentIndex(list.model()->index(0, 0));
    EXPECT_EQ(list.GetSelIndex(), 2);

    list.show();
    const QImage picture = list.viewport()->grab().toImage();
    const COLORREF topDown[] = {blue, green, red};
    for (int row = 0; row < 3; ++row) {
        const QModelIndex index = list.model()->index(row, 0);
        EXPECT_EQ(index.data().toInt(), 2 - row);
        const QPoint middle = list.visualRect(index).center();
        EXPECT_EQ(TxColorRef::fromRgb(picture.pixel(middle)), topDown[row]) << row;
    }
}

TEST(ColorListBox, SelectionFollowsItsColourAndStaysInItsRowWhenTheColourGoes)
{
    CTdColorListBox list;
    for (const COLORREF color : {red, green, blue})
        list.AddColor(color);
    list.SelectIndex(1);
    list.InsertColor(1, 0x111111);
    EXPECT_EQ(list.GetSelIndex(), 2);
    EXPECT_EQ(list.GetColors().GetColors(), (QList<COLORREF>{red, 0x111111, green, blue}));
    list.RemoveColor(-1);
    list.RemoveColor(4);
    EXPECT_EQ(list.GetColors().GetCount(), 4);

    QSignalSpy moved(&list, &CTdColorListBox::selectionMoved);
    const qint32 selectedAfter[] = {1, 0, 0, -1};
    for (const qint32 wanted : selectedAfter) {
        list.RemoveColor(list.GetSelIndex());
        EXPECT_EQ(list.GetSelIndex(), wanted);
    }
    EXPECT_GE(moved.count(), 4);
}

TEST(ColorListBox, CopesWithAMillionColours)
{
    CTdColorListBox list;
    list.resize(100, 200);
    CTxColorFolder colors;
    ASSERT_EQ(colors.MakeGradient(1'000'000, red, blue), 1'000'000);
    list.SetColors(colors);
    list.show();
    list.keyboardSearch(QStringLiteral("123456"));
    EXPECT_EQ(list.GetSelIndex(), 123456);
    list.SelectIndex(0);
    list.InsertColor(500'000, green);
    list.RemoveColor(0);
    EXPECT_EQ(list.GetSelIndex(), 0);
    list.SetColors({});
    EXPECT_EQ(list.GetSelIndex(), -1);
    EXPECT_EQ(list.model()->rowCount(), 0);
}

} // namespace

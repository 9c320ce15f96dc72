#include "colour/TdColors.h"
#include "colour/OleColor.h"
#include "colour/Random15.h"
#include "colour/TdColorsEnum.h"
#include "engine/base/TxVariant.h"
#include "engine/symbol/TxColorFolder.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QPalette>
#include <QTimer>

#include <gtest/gtest.h>

#include <ctime>
#include <functional>
#include <limits>

namespace {

using List = QList<int>;
constexpr int most = std::numeric_limits<int>::max();
constexpr int least = std::numeric_limits<int>::min();

List listOf(const CTdColors &colors)
{
    List list;
    for (int i = 1; i <= colors.GetCount(); ++i)
        list << colors.GetItem(i);
    return list;
}

void fill(CTdColors &colors, const List &list)
{
    colors.RemoveAll();
    for (const int color : list)
        colors.Add(color);
}

/// One operation on a list, what it answers and what it leaves.
struct Operation
{
    const char *name;
    List before;
    std::function<int(CTdColors &)> run;
    int answer;
    List after;
};

void PrintTo(const Operation &row, std::ostream *out)
{
    *out << row.name;
}

class Operations : public testing::TestWithParam<Operation>
{
};

TEST_P(Operations, AnswerAndLeave)
{
    CTdColors colors;
    fill(colors, GetParam().before);
    EXPECT_EQ(GetParam().run(colors), GetParam().answer);
    EXPECT_EQ(listOf(colors), GetParam().after);
}

using C = CTdColors;
INSTANTIATE_TEST_SUITE_P(
    TdColors, Operations,
    testing::Values(
        Operation{"RemoveBeyondTheEnd", {1, 2, 3}, [](C &c) { return c.Remove(2, 10); }, 2, {1}},
        Operation{"RemoveAsManyAsThereAre", {1, 2, 3}, [](C &c) { return c.Remove(3, most); }, 1, {1, 2}},
        Operation{"RemoveAtZero", {1, 2}, [](C &c) { return c.Remove(0, 1); }, 0, {1, 2}},
        Operation{"RemoveBehind", {1, 2}, [](C &c) { return c.Remove(3, 1); }, 0, {1, 2}},
        Operation{"RemoveNone", {1, 2}, [](C &c) { return c.Remove(1, 0); }, 0, {1, 2}},
        Operation{"RemoveLess", {1, 2}, [](C &c) { return c.Remove(1, least); }, 0, {1, 2}},
        Operation{"InsertBefore", {1, 2}, [](C &c) { return c.InsertAt(2, 9); }, 1, {1, 9, 2}},
        Operation{"InsertBelowOne", {1, 2}, [](C &c) { return c.InsertAt(least, 9); }, 1, {9, 1, 2}},
        Operation{"InsertBehind", {1, 2}, [](C &c) { return c.InsertAt(3, 9); }, 1, {1, 2, 9}},
        Operation{"InsertFarBehind", {1, 2}, [](C &c) { return c.InsertAt(most, 9); }, 1, {1, 2, 9}},
        Operation{"InsertIntoNothing", {}, [](C &c) { return c.InsertAt(0, 9); }, 1, {9}},
        Operation{"Exchange", {1, 2, 3}, [](C &c) { return c.Exchange(3, 1); }, 1, {3, 2, 1}},
        Operation{"ExchangeWithItself", {1, 2}, [](C &c) { return c.Exchange(2, 2); }, 1, {1, 2}},
        Operation{"ExchangeWithItselfOutside", {1}, [](C &c) { return c.Exchange(2, 2); }, 0, {1}},
        Operation{"ExchangeWithZero", {1, 2}, [](C &c) { return c.Exchange(0, 2); }, 0, {1, 2}},
        Operation{"GetOutside", {1, 2}, [](C &c) { return c.GetItem(0) | c.GetItem(3) | c.GetItem(least); }, 0, {1, 2}},
        Operation{"SetWithinAndOutside",
                  {1, 2},
                  [](C &c) {
                      for (const int i : {least, 0, 2, 3, most})
                          c.SetItem(i, -1);
                      return c.GetItem(2); // all 32 bits are kept
                  },
                  -1,
                  {1, -1}},
        Operation{
            "Gradient", {5}, [](C &c) { return c.MakeGradientColorset(3, 0, 0x020406); }, 3, {0, 0x010203, 0x020406}},
        Operation{"GradientOfNone", {5}, [](C &c) { return c.MakeGradientColorset(-1, 0, 1); }, 0, {}},
        Operation{"GradientOfTooMany", {5}, [](C &c) { return c.MakeGradientColorset(most, 0, 1); }, 0, {}},
        Operation{
            "GradientTranslates", {5}, [](C &c) { return c.MakeGradientColorset(1, 0x02030201, 0); }, 1, {0x030201}},
        Operation{"GradientOfNoColour", {5}, [](C &c) { return c.MakeGradientColorset(3, 0, 0x01000001); }, 0, {5}},
        Operation{"GradientThroughItself", {0, 4}, [](C &c) { return c.MakeGradientColorsetEx(3, &c); }, 3, {0, 2, 4}},
        Operation{"GradientThroughNothing", {5}, [](C &c) { return c.MakeGradientColorsetEx(3, nullptr); }, 0, {5}},
        Operation{"GradientThroughAnother", {5}, [](C &c) { return c.MakeGradientColorsetEx(3, qApp); }, 0, {5}},
        Operation{"StockStyleThatIsNone", {5}, [](C &c) { return c.MakeStockGradientColorset(3, -1, false); }, 0, {}},
        Operation{"RandomNone", {5}, [](C &c) { return c.MakeRandomColorset(least); }, 0, {}},
        Operation{"RandomTooMany", {5}, [](C &c) { return c.MakeRandomColorset(most); }, 0, {}}),
    [](const auto &row) { return std::string(row.param.name); });

TEST(TdColors, KeepsWhatTheEngineMakes)
{
    CTxColorFolder folder;
    ASSERT_EQ(folder.MakeStockGradient(7, 1, true), 7);
    CTdColors colors;
    EXPECT_EQ(colors.MakeStockGradientColorset(7, 1, true), 7);
    CTxColorFolder back;
    back.Add(1);
    EXPECT_TRUE(colors.ToColorFolder(back));
    EXPECT_EQ(back.GetColors(), folder.GetColors());
    EXPECT_TRUE(colors.FromColorFolder(back));
    EXPECT_EQ(colors.GetCount(), 7);
    EXPECT_FALSE(colors.FromColorFolder({}));
    EXPECT_FALSE(colors.ToColorFolder(back));
    EXPECT_EQ(back.GetCount(), 0);
}

TEST(TdColors, CountIsReadOnlyAndTheClassCanBeMadeByName)
{
    const std::unique_ptr<QObject> object(CTdColors::staticMetaObject.newInstance());
    auto *colors = qobject_cast<CTdColors *>(object.get());
    ASSERT_TRUE(colors);
    EXPECT_EQ(colors->SetCount(3), HResult::CTL_E_SETNOTSUPPORTED);
    EXPECT_FALSE(colors->setProperty("Count", 3));
    EXPECT_EQ(colors->property("Count"), 0);
}

TEST(TdColors, RandomNumbersAreTheRuntimesOfOld)
{
    Random15 random(1);
    for (const int number : {41, 18467, 6334, 26500, 19169, 15724})
        EXPECT_EQ(random.next(), number);
}

TEST(TdColors, RandomColorsOfOneSecondAreAlike)
{
    CTdColors first;
    CTdColors second;
    std::time_t began = 0;
    do { // until both fall into one second
        began = std::time(nullptr);
        EXPECT_EQ(first.MakeRandomColorset(50), 50);
        EXPECT_EQ(second.MakeRandomColorset(50), 50);
    } while (std::time(nullptr) != began);
    EXPECT_EQ(listOf(first), listOf(second));
    Random15 random(static_cast<quint32>(began));
    for (const int color : listOf(first)) { // red, green, blue in this order
        for (const int shift : {0, 8, 16})
            ASSERT_EQ(color >> shift & 0xFF, random.next() * 255 / 32767);
    }
}

TEST(TdColors, OleColorsAreTranslated)
{
    const QPalette palette = QGuiApplication::palette();
    const auto role = [&palette](QPalette::ColorRole r) { return TxColorRef::fromQColor(palette.color(r)); };
    EXPECT_EQ(translateOleColor(0x00030201), 0x030201U);
    EXPECT_EQ(translateOleColor(0x02030201), 0x030201U);
    EXPECT_EQ(translateOleColor(0x80000005), role(QPalette::Base));
    EXPECT_EQ(translateOleColor(0x8000000D), role(QPalette::Highlight));
    EXPECT_EQ(translateOleColor(0x8000000F), role(QPalette::Button));
    EXPECT_EQ(translateOleColor(0x8000001E), role(QPalette::Window));
    for (const quint32 none : {0x01000001U, 0x03000000U, 0x8000001FU, 0x80000105U, 0x81000001U, 0xFFFFFFFFU})
        EXPECT_FALSE(translateOleColor(none)) << none;
}

TEST(TdColorsEnum, TakesPassesAndGoesBack)
{
    CTdColors colors;
    fill(colors, {1, 2, 3, 4, -5});
    const std::unique_ptr<TdColorsEnum> walk = colors.GetNewEnum();
    CTxVariant room[4] = {CTxVariant(QStringLiteral("old")), {}, {}, CTxVariant(7)};
    quint32 fetched = 99;
    EXPECT_EQ(walk->Next(2, room, &fetched), HResult::S_OK);
    EXPECT_EQ(fetched, 2U);
    EXPECT_EQ(room[0], CTxVariant(1)); // of type Long
    EXPECT_EQ(room[1], CTxVariant(2));
    EXPECT_EQ(room[3], CTxVariant(7)); // not asked for

    std::unique_ptr<TdColorsEnum> other;
    EXPECT_EQ(walk->Clone(other), HResult::S_OK);
    EXPECT_EQ(other->Next(1, room), HResult::S_OK); // without a counter
    EXPECT_EQ(room[0], CTxVariant(3));
    EXPECT_EQ(other->Next(2, room), HResult::E_INVALIDARG);
    EXPECT_EQ(other->Next(1, nullptr, &fetched), HResult::E_INVALIDARG);
    EXPECT_EQ(other->Next(0, nullptr), HResult::S_OK);

    EXPECT_EQ(walk->Next(4, room, &fetched), HResult::S_FALSE);
    EXPECT_EQ(fetched, 3U);
    EXPECT_EQ(room[2], CTxVariant(-5));
    EXPECT_EQ(room[3], CTxVariant()); // made empty
    EXPECT_EQ(walk->Next(1, room), HResult::S_FALSE);
    EXPECT_EQ(walk->Skip(0), HResult::S_OK);
    EXPECT_EQ(walk->Skip(1), HResult::S_FALSE);
    EXPECT_EQ(walk->Reset(), HResult::S_OK);
    EXPECT_EQ(walk->Skip(4), HResult::S_OK);
    EXPECT_EQ(walk->Next(1, room), HResult::S_OK);
    EXPECT_EQ(room[0], CTxVariant(-5));
    EXPECT_EQ(other->Next(1, room), HResult::S_OK); // stands where it stood
    EXPECT_EQ(room[0], CTxVariant(4));
}

TEST(TdColorsEnum, OutlivesWhatItWalksThrough)
{
    auto colors = std::make_unique<CTdColors>();
    fill(*colors, {1, 2, 3, 4});
    const std::unique_ptr<TdColorsEnum> walk = colors->GetNewEnum();
    CTxVariant room;
    EXPECT_EQ(walk->Skip(3), HResult::S_OK);
    colors->Remove(1, 2); // fewer are left than were passed
    EXPECT_EQ(walk->Next(1, &room), HResult::S_FALSE);
    EXPECT_EQ(walk->remaining(), 0U);
    fill(*colors, {1, 2, 3, 8});
    EXPECT_EQ(walk->Next(1, &room), HResult::S_OK);
    EXPECT_EQ(room, CTxVariant(8));

    colors.reset();
    std::unique_ptr<TdColorsEnum> other;
    quint32 fetched = 9;
    EXPECT_EQ(walk->Next(1, &room, &fetched), HResult::E_UNEXPECTED);
    EXPECT_EQ(fetched, 0U);
    EXPECT_EQ(walk->Skip(1), HResult::E_UNEXPECTED);
    EXPECT_EQ(walk->Reset(), HResult::E_UNEXPECTED);
    EXPECT_EQ(walk->Clone(other), HResult::E_UNEXPECTED);
    EXPECT_FALSE(other);
}

TEST(TdColors, KeepsTheApplicationRunning)
{
    auto colors = std::make_unique<CTdColors>();
    std::unique_ptr<TdColorsEnum> walk = colors->GetNewEnum();
    bool quitByTimer = false;
    QTimer::singleShot(0, qApp, [&] { colors.reset(); }); // the enumerator still holds it
    QTimer::singleShot(20, qApp, [&] { walk.reset(); });
    QTimer guard;
    QObject::connect(&guard, &QTimer::timeout, qApp, [&] {
        quitByTimer = true;
        QCoreApplication::quit();
    });
    guard.start(10000);
    QCoreApplication::exec();
    EXPECT_FALSE(walk);
    EXPECT_FALSE(quitByTimer);
}

} // namespace

#include "colour/RibbonStops.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

using Target = RibbonStops::Target;

constexpr double inf = std::numeric_limits<double>::infinity();
constexpr double nan = std::numeric_limits<double>::quiet_NaN();

/// A ramp over a band from 20 to 120, with stop i of colour i.
RibbonStops ramp(const std::vector<double> &values, double minimum, double maximum)
{
    RibbonStops::Stops stops;
    for (const double value : values)
        stops.push_back({0, static_cast<COLORREF>(stops.size()), value});
    RibbonStops ribbon;
    ribbon.setBand(20, 100);
    EXPECT_TRUE(ribbon.replaceAll(stops, minimum, maximum));
    ribbon.clearHistory();
    ribbon.setModified(false);
    return ribbon;
}

/// From 0 to 100, so that positions are 20 more than values.
RibbonStops ramp(const std::vector<double> &values)
{
    return ramp(values, 0, 100);
}

template<typename T>
std::vector<T> each(const RibbonStops &ribbon, T RibbonStop::*member)
{
    std::vector<T> found;
    for (const RibbonStop &stop : ribbon.stops())
        found.push_back(stop.*member);
    return found;
}

auto values(const RibbonStops &ribbon)
{
    return each(ribbon, &RibbonStop::value);
}

auto positions(const RibbonStops &ribbon)
{
    return each(ribbon, &RibbonStop::position);
}

auto colors(const RibbonStops &ribbon)
{
    return each(ribbon, &RibbonStop::color);
}

using Values = std::vector<double>;
using Colors = std::vector<COLORREF>;
using Positions = std::vector<qint32>;

TEST(RibbonStops, BeginWithWhiteAt0AndBlackAt1000)
{
    RibbonStops ribbon;
    EXPECT_EQ(colors(ribbon), (Colors{0xFFFFFF, 0}));
    EXPECT_EQ(values(ribbon), (Values{0, 1000}));
    EXPECT_EQ(ribbon.maximum(), 1000);
    EXPECT_EQ(ribbon.selected(), -1);
    EXPECT_EQ(static_cast<int>(ribbon.dragTarget()), -1);
    EXPECT_FALSE(ribbon.isModified());
    ribbon.SetMaxValue(8);
    ribbon.SetMinValue(-8);
    EXPECT_EQ(values(ribbon), (Values{-8, 8}));
    RibbonStops single = ramp({7}, 0, 7);
    single.SetMaxValue(8);
    EXPECT_EQ(values(single), Values{7});
    EXPECT_EQ(single.maximum(), 8);
}

TEST(RibbonStops, EmptyRangeBecomesThePixelsOfTheBand)
{
    for (const auto &[minimum, maximum, isReplaced] : std::initializer_list<std::tuple<double, double, bool>>{
             {5, 5, true}, {5, 4, true}, {nan, 4, true}, {0, inf, true}, {-1e308, 1e308, true}, {4, 5, false}}) {
        RibbonStops ribbon = ramp({minimum, 4.5, maximum}, minimum, maximum);
        EXPECT_EQ(ribbon.replaceEmptyRange(), isReplaced) << minimum << ' ' << maximum;
        EXPECT_EQ(values(ribbon), isReplaced ? (Values{0, 4.5, 100}) : (Values{4, 4.5, 5}));
    }
}

TEST(RibbonStops, PositionsAreCutOffAndCountedFromTheFirstStop)
{
    constexpr qint32 most = std::numeric_limits<qint32>::max();
    constexpr qint32 least = std::numeric_limits<qint32>::min();
    struct Row
    {
        Values values;
        double minimum, maximum;
        Positions positions;
    };
    const Row rows[] = {
        {{0, 1, 2, 3}, 0, 3, {20, 53, 86, 120}},
        {{10, 60, 100}, 0, 100, {20, 70, 110}},                // a file whose first value is not the minimum
        {{100, 60, 0}, 100, 0, {20, 60, 120}},                 // reversed
        {{7, 9, 7}, 7, 7, {20, 20, 20}},                       // no range
        {{0, 1e300, -1e300, 1}, 0, 1, {20, most, least, 120}}, // beyond 32 bits
        {{0, nan, inf, 1}, 0, 1, {20, 20, most, 120}},
        {{0, 5, 1}, nan, 1, {20, 20, 20}},
        {{0, 5, inf}, 0, inf, {20, 20, 20}},
    };
    for (const Row &row : rows)
        EXPECT_EQ(positions(ramp(row.values, row.minimum, row.maximum)), row.positions) << row.minimum << row.maximum;
    RibbonStops ribbon = ramp({-100, 0, 100}, -100, 100);
    EXPECT_EQ(ribbon.Position2Value(70), 0);
    EXPECT_EQ(ribbon.Position2Value(20), -100);
    EXPECT_EQ(ribbon.Position2Value(19), -102);
    ribbon.setBand(20, 0);
    EXPECT_EQ(ribbon.Position2Value(20), -100);
    EXPECT_EQ(ribbon.Position2Value(21), -100);
}

TEST(RibbonStops, OrderIsRestoredOneStepLate)
{
    RibbonStops ribbon = ramp({0, 30, 60, 100});
    ribbon.select(1);
    struct Row
    {
        qint32 x;
        Colors colors;
        Positions positions;
        qint32 selected;
    };
    const Row rows[] = {
        {90, {0, 1, 2, 3}, {20, 90, 80, 120}, 1}, // beyond its neighbour, and not swapped
        {91, {0, 2, 1, 3}, {20, 80, 91, 120}, 2}, // swapped now
        {70, {0, 2, 1, 3}, {20, 80, 70, 120}, 2},
        {95, {0, 1, 2, 3}, {20, 95, 80, 120}, 1}, // swapped back by where it was, though it goes to the other side
        {80, {0, 2, 1, 3}, {20, 80, 80, 120}, 2},
        {80, {0, 2, 1, 3}, {20, 80, 80, 120}, 2}, // equal positions never swap
        {79, {0, 2, 1, 3}, {20, 80, 79, 120}, 2},
    };
    for (const Row &row : rows) {
        ASSERT_TRUE(ribbon.ChangeStopPos(row.x));
        EXPECT_EQ(colors(ribbon), row.colors) << row.x;
        EXPECT_EQ(positions(ribbon), row.positions) << row.x;
        EXPECT_EQ(ribbon.selected(), row.selected) << row.x;
        EXPECT_EQ(ribbon.selectedStop()->value, row.x - 20);
    }
    EXPECT_TRUE(ribbon.isModified());
}

TEST(RibbonStops, EndsNeverMove)
{
    RibbonStops ribbon = ramp({0, 50, 100});
    for (const qint32 index : {-1, 0, 2, 3}) {
        ribbon.select(index);
        EXPECT_FALSE(ribbon.ChangeStopPos(60));
        EXPECT_FALSE(ribbon.step(1));
    }
    EXPECT_EQ(values(ribbon), (Values{0, 50, 100}));
    EXPECT_FALSE(ribbon.canUndo());
    // Keys stop an inner stop at the ends of the band, so none takes an end's place.
    ribbon.select(1);
    for (int i = 0; i < 60; ++i)
        ribbon.step(-1);
    EXPECT_EQ(positions(ribbon), (Positions{20, 20, 120}));
    EXPECT_EQ(ribbon.selected(), 1);
}

TEST(RibbonStops, RemovalOfAnEndTakesTheRangeAlong)
{
    struct Row
    {
        Values before;
        qint32 selected;
        bool isRemoved;
        Values after;
        double minimum, maximum;
        qint32 selectedAfter;
    };
    const Row rows[] = {
        {{0, 100}, 0, false, {0, 100}, 0, 100, 0},
        {{0, 100}, 1, false, {0, 100}, 0, 100, 1}, // of two stops none goes
        {{0, 30, 100}, 1, true, {0, 100}, 0, 100, 1},
        {{0, 30, 100}, 2, true, {0, 30}, 0, 30, 1},
        {{0, 30, 100}, 0, true, {30, 100}, 30, 100, 0},
        {{0, 30, 100}, -1, false, {0, 30, 100}, 0, 100, -1},
    };
    for (const Row &row : rows) {
        RibbonStops ribbon = ramp(row.before);
        ribbon.select(row.selected);
        EXPECT_EQ(ribbon.removeSelected(), row.isRemoved) << row.selected;
        EXPECT_EQ(values(ribbon), row.after) << row.selected;
        EXPECT_EQ(ribbon.minimum(), row.minimum);
        EXPECT_EQ(ribbon.maximum(), row.maximum);
        EXPECT_EQ(ribbon.selected(), row.selectedAfter);
        EXPECT_EQ(positions(ribbon).back(), 120);
        EXPECT_EQ(ribbon.canUndo(), row.isRemoved);
    }
}

TEST(RibbonStops, EditsRefuseWhatWouldBreakTheOrder)
{
    struct Row
    {
        char field; // < minimum, > maximum, 0 to 3: the value of that stop
        double value;
        bool isAccepted;
    };
    const Row rows[] = {
        {'>', 70.5, true}, {'>', 70, false},   {'>', 5, false},     {'>', nan, false}, {'>', inf, false},
        {'<', 29, true},   {'<', 30, false},   {'<', -1e300, true}, {'<', 100, false}, {'<', -inf, false},
        {'1', 30.5, true}, {'1', 70, false},   {'1', 0, false},     {'1', nan, false}, {'2', 99.9, true},
        {'2', 100, false}, {'2', 30, false},   {'0', 0, true},      {'0', 1, false},   {'0', -1, false},
        {'3', 100, true},  {'3', 99.9, false}, {'3', 101, false},   {'3', nan, false},
    };
    for (const Row &row : rows) {
        RibbonStops ribbon = ramp({0, 30, 70, 100});
        ribbon.select(row.field - '0');
        const size_t stop = row.field == '>' ? 3 : row.field == '<' ? 0 : static_cast<size_t>(row.field - '0');
        const double before = ribbon.stops()[stop].value;
        const bool isAccepted = row.field == '>'   ? ribbon.editMaximum(row.value)
                                : row.field == '<' ? ribbon.editMinimum(row.value)
                                                   : ribbon.editSelectedValue(row.value);
        EXPECT_EQ(isAccepted, row.isAccepted) << row.field << ' ' << row.value;
        EXPECT_EQ(ribbon.stops()[stop].value, isAccepted ? row.value : before) << row.field << ' ' << row.value;
        EXPECT_EQ(ribbon.maximum(), ribbon.stops().back().value);
        EXPECT_EQ(ribbon.minimum(), ribbon.stops().front().value);
        EXPECT_EQ(ribbon.canUndo(), ribbon.stops()[stop].value != before);
    }
    // What is accepted recalculates the positions, also when the value is what it was.
    RibbonStops beside = ramp({10, 60, 100}, 0, 100);
    beside.insertStop(90, 7);
    beside.select(2);
    EXPECT_TRUE(beside.editSelectedValue(70));
    EXPECT_EQ(positions(beside)[2], 80);
}

TEST(RibbonStops, ClickBesideTheStopsInsertsBehindTheSecond)
{
    const RibbonStops four = ramp({0, 30, 60, 100});
    const RibbonStops gap = ramp({50, 60, 70}, 0, 100); // at 20, 30 and 40
    const RibbonStops single = ramp({100});
    struct Row
    {
        const RibbonStops &ribbon;
        qint32 x, index;
    };
    const Row rows[] = {{four, 20, 1}, {four, 49, 1},  {four, 50, 1}, {four, 51, 2}, {four, 110, 3},
                        {four, 10, 2}, {four, 121, 2}, {gap, 35, 2},  {gap, 90, 2},  {single, 60, 1}};
    for (const Row &row : rows) {
        RibbonStops ribbon = row.ribbon;
        ribbon.select(ribbon.count() - 1);
        EXPECT_EQ(ribbon.insertStop(row.x, 0xABCDEF), row.index) << row.x;
        const RibbonStop stop = ribbon.stops()[static_cast<size_t>(row.index)];
        EXPECT_EQ(stop, (RibbonStop{row.x, 0xABCDEF, ribbon.Position2Value(row.x)}));
        // The same stop as before is selected.
        EXPECT_EQ(ribbon.selectedStop()->color, row.ribbon.stops().back().color);
    }
}

TEST(RibbonStops, KeysStepTheDragTarget)
{
    RibbonStops ribbon = ramp({0, 30, 60, 100});
    ribbon.select(1);
    EXPECT_TRUE(ribbon.step(1));
    EXPECT_EQ(ribbon.selectedStop()->value, 31);
    for (const auto &[target, low, high] :
         {std::tuple(Target::Red, 0x7F, 0x81), {Target::Green, 0xFD, 0xFF}, {Target::Blue, 0, 2}}) {
        ribbon.setDragTarget(target);
        ribbon.setSelectedColor(0x01FE80);
        ribbon.step(-1);
        EXPECT_EQ(ribbon.channel(target), low);
        ribbon.step(1);
        ribbon.step(1);
        EXPECT_EQ(ribbon.channel(target), high);
        EXPECT_TRUE(ribbon.step(std::numeric_limits<qint32>::max()));
        EXPECT_EQ(ribbon.channel(target), 255);
        EXPECT_TRUE(ribbon.setChannel(target, -1));
        EXPECT_EQ(ribbon.channel(target), 0);
    }
    EXPECT_FALSE(ribbon.setChannel(Target::Stop, 7));
}

TEST(RibbonStops, DragIsOneUndoStep)
{
    RibbonStops ribbon = ramp({0, 30, 60, 100});
    ribbon.select(1);
    ribbon.beginEdit();
    for (qint32 x = 50; x < 100; ++x)
        ribbon.ChangeStopPos(x);
    ribbon.endEdit();
    ribbon.beginEdit(); // a click that drags nothing is no step
    ribbon.endEdit();
    const Values dragged = values(ribbon);
    ribbon.removeSelected();
    EXPECT_TRUE(ribbon.undo());
    EXPECT_EQ(values(ribbon), dragged);
    EXPECT_EQ(ribbon.selected(), 2);
    EXPECT_TRUE(ribbon.undo());
    EXPECT_EQ(values(ribbon), (Values{0, 30, 60, 100}));
    EXPECT_EQ(ribbon.selected(), 1);
    EXPECT_FALSE(ribbon.undo());
    EXPECT_TRUE(ribbon.redo());
    EXPECT_EQ(values(ribbon), dragged);
    ribbon.setSelectedColor(77);
    EXPECT_FALSE(ribbon.redo()); // the other branch is gone
    // Ranges come back too, and positions follow a band that was resized meanwhile.
    ribbon.editMaximum(1000);
    ribbon.setBand(0, 200);
    ribbon.undo();
    EXPECT_EQ(ribbon.maximum(), 100);
    EXPECT_EQ(positions(ribbon).back(), 200);
}

TEST(RibbonStops, HistoryIsBounded)
{
    RibbonStops ribbon = ramp({0, 50, 100});
    const auto undoneOf = [&ribbon](COLORREF edits) {
        ribbon.select(1);
        for (COLORREF i = 1; i <= edits; ++i)
            ribbon.setSelectedColor(i * 3);
        int steps = 0;
        while (ribbon.undo())
            ++steps;
        return steps;
    };
    EXPECT_EQ(undoneOf(150), 100);
    EXPECT_EQ(ribbon.selectedStop()->color, 150U);
    ribbon.replaceAll(RibbonStops::Stops(1000000), 0, 100);
    EXPECT_EQ(undoneOf(10), 4); // of 16 MB each
}

TEST(RibbonStops, AreSpreadTurnedRoundAndRescaled)
{
    RibbonStops ribbon = ramp({0.1, 0.15, 0.2, 0.3}, 0.1, 0.3);
    ribbon.select(1);
    EXPECT_TRUE(ribbon.reverse());
    EXPECT_EQ(colors(ribbon), (Colors{3, 2, 1, 0}));
    EXPECT_EQ(ribbon.stops().front().value, 0.1); // to the bit
    EXPECT_EQ(ribbon.stops().back().value, 0.3);
    EXPECT_NEAR(ribbon.stops()[1].value, 0.2, 1e-15);
    EXPECT_EQ(ribbon.selected(), 2);

    ribbon = ramp({0, 1, 2, 3, 100});
    EXPECT_TRUE(ribbon.distributeEvenly());
    EXPECT_EQ(values(ribbon), (Values{0, 25, 50, 75, 100}));
    EXPECT_EQ(positions(ribbon), (Positions{20, 45, 70, 95, 120}));
    EXPECT_TRUE(ribbon.canUndo());

    ribbon = ramp({10, 20, 30}, 100, 300);
    ribbon.CalcValues();
    EXPECT_EQ(values(ribbon), (Values{100, 200, 300}));
    ribbon = ramp({10, 20, 10}, 100, 300); // no span to rescale from
    ribbon.CalcValues();
    EXPECT_EQ(values(ribbon), (Values{10, 20, 10}));
    EXPECT_FALSE(ramp({0, 1, inf}, 0, inf).distributeEvenly());
}

} // namespace

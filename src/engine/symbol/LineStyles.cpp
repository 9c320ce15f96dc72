#include "engine/symbol/LineStyles.h"

#include <QtGlobal>

#include <algorithm>
#include <cmath>

namespace {

using LineStyles::Ink;
using LineStyles::Mark;
using LineStyles::Stroke;
using LineStyles::Swing;

constexpr Stroke plain[] = {{}};

// dashes
constexpr double dash[] = {6, 4};
constexpr double dots[] = {0, 2.5};
constexpr double dashDot[] = {7, 3, 1.5, 3};
constexpr double dashDotDot[] = {7, 3, 1.5, 2.5, 1.5, 3};
constexpr double longDash[] = {14, 5};
constexpr double shortDash[] = {3, 2};
constexpr double sleepers[] = {7, 7};
constexpr double border[] = {9, 9};
constexpr double borderDot[] = {10, 3.5, 1.5, 3.5};
constexpr Stroke dashed[] = {{Ink::Line, 1, 0, dash}};
constexpr Stroke dotted[] = {{Ink::Line, 1.2, 0, dots}};
constexpr Stroke dashDotted[] = {{Ink::Line, 1, 0, dashDot}};
constexpr Stroke dashTwiceDotted[] = {{Ink::Line, 1, 0, dashDotDot}};
constexpr Stroke longDashed[] = {{Ink::Line, 1, 0, longDash}};
constexpr Stroke shortDashed[] = {{Ink::Line, 1, 0, shortDash}};

// ways
constexpr Stroke twoLines[] = {{Ink::Line, 1, -1.75}, {Ink::Line, 1, 1.75}};
constexpr Stroke road[] = {{Ink::Line, 6}, {Ink::Back, 4}};
constexpr Stroke motorway[] = {{Ink::Line, 7.5}, {Ink::Back, 5.5}, {Ink::Line, 0.8}};
constexpr Stroke track[] = {{Ink::Line, 1, -1.75}, {Ink::Line, 1, 1.75, shortDash}};
constexpr Stroke tunnel[] = {{Ink::Line, 1, -1.75, dash}, {Ink::Line, 1, 1.75, dash}};
constexpr Stroke railway[] = {{Ink::Line, 4}, {Ink::Back, 2.2, 0, sleepers}};
constexpr Mark railTies[] = {{{"M 0 -3 L 0 3", 1}, 10, 5}};
constexpr Mark tramTies[] = {{{"M -1 -3 L -1 3 M 1 -3 L 1 3", 0.9}, 16, 8}};
constexpr Mark cableMarks[] = {{{"O 0 0 2.2"}, 18, 9}};

// works
constexpr Mark powerMarks[] = {{{"M -5.4 -2.4 L -2 0 L -5.4 2.4 M 5.4 -2.4 L 2 0 L 5.4 2.4", 0.9}, 26, 13}};

constexpr Mark pipeMarks[] = {{{"O 0 0 2.6"}, 18, 9, Ink::Back}, {{"O 0 0 2.6", 0.9}, 18, 9}};
constexpr Mark fenceMarks[] = {{{"M -1.9 -1.9 L 1.9 1.9 M 1.9 -1.9 L -1.9 1.9", 0.9}, 12, 6}};
constexpr Swing battlements[] = {{0, -1.5}, {4, -1.5}, {4, 1.5}, {8, 1.5}, {8, -1.5}};
constexpr Stroke wall[] = {{Ink::Line, 1, 0, {}, battlements}};

// land forms
constexpr Mark tickMarks[] = {{{"M 0 0 L 0 4", 0.9}, 5, 2.5}};
constexpr Mark bankMarks[] = {{{"M 0 0 L 0 5", 0.9}, 6, 1.5}, {{"M 0 0 L 0 2.6", 0.9}, 6, 4.5}};
constexpr Mark teeth[] = {{{"M -2.2 0 L 2.2 0 L 0 4.2 Z"}, 7, 3.5}};
constexpr Mark halfRounds[] = {{{"M -2.4 0 C -2.4 4.2 2.4 4.2 2.4 0 Z"}, 10, 5}};
constexpr Mark dikeTicks[] = {{{"M 0 -3.2 L 0 3.2", 0.8}, 4, 2}};

// directions and waters
constexpr Mark arrows[] = {{{"M -3 -2.6 L 3 0 L -3 2.6 L -1.6 0 Z"}, 20, 12}};
constexpr Swing wave[] = {{0, 0},     {1, 0.99},  {2, 1.73}, {3, 2.0},    {4, 1.73},   {5, 0.99}, {6, 0},
                          {7, -0.99}, {8, -1.73}, {9, -2.0}, {10, -1.73}, {11, -0.99}, {12, 0}};
constexpr Swing teethOfSaw[] = {{0, 0}, {2.5, 2}, {7.5, -2}, {10, 0}};
constexpr Stroke waving[] = {{Ink::Line, 1, 0, {}, wave}};
constexpr Stroke sawing[] = {{Ink::Line, 1, 0, {}, teethOfSaw}};

// borders
constexpr Stroke stateBorder[] = {{Ink::Line, 1.2, 0, border}};
constexpr Mark borderCrosses[] = {{{"M 0 -2 L 0 2 M -2 0 L 2 0", 1}, 18, 13.5}};
constexpr Stroke tintedBorder[] = {{Ink::Tint, 6}, {Ink::Line, 1, 0, borderDot}};

constexpr LineStyles::Row table[] = {
    {{0, QT_TRANSLATE_NOOP("TdCommon", "Solid")}, plain},
    {{1, QT_TRANSLATE_NOOP("TdCommon", "Dash")}, dashed},
    {{2, QT_TRANSLATE_NOOP("TdCommon", "Dot")}, dotted},
    {{3, QT_TRANSLATE_NOOP("TdCommon", "Dash, Dot")}, dashDotted},
    {{4, QT_TRANSLATE_NOOP("TdCommon", "Dash, Dot, Dot")}, dashTwiceDotted},
    {{5, QT_TRANSLATE_NOOP("TdCommon", "Long Dash")}, longDashed},
    {{6, QT_TRANSLATE_NOOP("TdCommon", "Short Dash")}, shortDashed},
    {{7, QT_TRANSLATE_NOOP("TdCommon", "Double Line")}, twoLines},
    {{8, QT_TRANSLATE_NOOP("TdCommon", "Road")}, road},
    {{9, QT_TRANSLATE_NOOP("TdCommon", "Motorway")}, motorway},
    {{10, QT_TRANSLATE_NOOP("TdCommon", "Track")}, track},
    {{11, QT_TRANSLATE_NOOP("TdCommon", "Tunnel")}, tunnel},
    {{12, QT_TRANSLATE_NOOP("TdCommon", "Railway")}, railway},
    {{13, QT_TRANSLATE_NOOP("TdCommon", "Railway with Ties")}, plain, railTies},
    {{14, QT_TRANSLATE_NOOP("TdCommon", "Tramway")}, plain, tramTies},
    {{15, QT_TRANSLATE_NOOP("TdCommon", "Cableway")}, plain, cableMarks},
    {{16, QT_TRANSLATE_NOOP("TdCommon", "Power Line")}, plain, powerMarks},
    {{17, QT_TRANSLATE_NOOP("TdCommon", "Pipeline")}, plain, pipeMarks},
    {{18, QT_TRANSLATE_NOOP("TdCommon", "Fence")}, plain, fenceMarks},
    {{19, QT_TRANSLATE_NOOP("TdCommon", "Wall")}, wall},
    {{20, QT_TRANSLATE_NOOP("TdCommon", "Ticks")}, plain, tickMarks},
    {{21, QT_TRANSLATE_NOOP("TdCommon", "Embankment")}, plain, bankMarks},
    {{22, QT_TRANSLATE_NOOP("TdCommon", "Dike")}, plain, dikeTicks},
    {{23, QT_TRANSLATE_NOOP("TdCommon", "Cliff")}, plain, teeth},
    {{24, QT_TRANSLATE_NOOP("TdCommon", "Front")}, plain, halfRounds},
    {{25, QT_TRANSLATE_NOOP("TdCommon", "Arrows")}, plain, arrows},
    {{26, QT_TRANSLATE_NOOP("TdCommon", "Wave")}, waving},
    {{27, QT_TRANSLATE_NOOP("TdCommon", "Zigzag")}, sawing},
    {{28, QT_TRANSLATE_NOOP("TdCommon", "State Border")}, stateBorder, borderCrosses},
    {{29, QT_TRANSLATE_NOOP("TdCommon", "Border with Tint")}, tintedBorder},
};

} // namespace

std::span<const LineStyles::Row> LineStyles::rows()
{
    return table;
}

const LineStyles::Row &LineStyles::row(qint32 id)
{
    const auto *at = std::ranges::find(table, id, [](const Row &row) { return row.key.id; });
    return at == std::end(table) ? table[0] : *at;
}

double LineStyles::reach(const Row &row)
{
    double reach = 0;
    for (const Stroke &stroke : row.strokes) {
        double aside = 0;
        for (const Swing &swing : stroke.swings)
            aside = std::max(aside, std::abs(swing.aside));
        reach = std::max(reach, std::abs(stroke.offset) + aside + stroke.width / 2);
    }
    for (const Mark &mark : row.marks) {
        const QRectF bounds = StyleDrawing::parsed(mark.shape.path).boundingRect();
        reach = std::max(reach, std::max(-bounds.top(), bounds.bottom()) + mark.shape.pen / 2);
    }
    return reach;
}

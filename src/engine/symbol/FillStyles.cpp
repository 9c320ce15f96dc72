#include "engine/symbol/FillStyles.h"

#include <QtGlobal>

#include <algorithm>

namespace {

constexpr auto Solid = FillStyles::Kind::Solid;
constexpr auto Empty = FillStyles::Kind::Empty;
constexpr auto Pattern = FillStyles::Kind::Pattern;

// Lines that go on in the next tile end where it begins: edges that lie on one another would be darker.

// hatches
constexpr StyleShape horizontal[] = {{"R 0 7 16 2"}};
constexpr StyleShape vertical[] = {{"R 7 0 2 16"}};
constexpr StyleShape rising[] = {{"M 0 16 L 16 0", 1.6}};
constexpr StyleShape falling[] = {{"M 0 0 L 16 16", 1.6}};
constexpr StyleShape grid[] = {{"R 0 7 16 2 R 7 0 2 7 R 7 9 2 7"}};
constexpr StyleShape diagonalGrid[] = {{"M 0 16 L 16 0", 1.6}, {"M 0 0 L 16 16", 1.6}};
constexpr StyleShape pairs[] = {{"M 0 16 L 16 0 M 5 16 L 21 0", 1.6}};
constexpr StyleShape dashes[] = {{"R 1 3 9 2 R 9 11 9 2"}};
constexpr StyleShape zigzag[] = {{"M 0 8 L 8 0 L 16 8", 1.6}};
constexpr StyleShape checks[] = {{"R 0 0 8 8 R 8 8 8 8"}};

// marks
constexpr StyleShape dots[] = {{"O 8 8 2.6"}};
constexpr StyleShape staggeredDots[] = {{"O 4 4 2 O 12 12 2"}};
constexpr StyleShape sand[] = {{"O 2.2 3 1 O 8.6 1.6 0.9 O 13.4 5 1 O 5.6 7.4 0.9 O 10.6 9.4 1 O 2.8 12 0.9 "
                                "O 7.4 13.6 1 O 13.8 13 0.9"}};
constexpr StyleShape rings[] = {{"O 4 4 2.6 O 12 12 2.6", 1.3}};
constexpr StyleShape pluses[] = {{"M 4 1.5 L 4 6.5 M 1.5 4 L 6.5 4 M 12 9.5 L 12 14.5 M 9.5 12 L 14.5 12", 1.4}};
constexpr StyleShape bricks[] = {{"R 0 3 16 1.4 R 0 11 16 1.4 R 3 4.4 1.4 6.6 R 11 12.4 1.4 3.6 R 11 0 1.4 3"}};
constexpr StyleShape stones[] = {
    {"M 1.6 3.6 Q 2 1 5 1.2 Q 7.6 1.6 7 4.2 Q 6.2 6.4 3.6 6 Q 1.6 5.6 1.6 3.6 Z "
     "M 9.8 6.8 Q 10.6 4.6 13 5 Q 15.4 5.8 14.6 8.2 Q 13.4 9.8 11.4 9.2 Q 9.4 8.6 9.8 6.8 Z "
     "M 3 12.4 Q 3.4 10 6 10.2 Q 9 10.4 8.4 13 Q 7.4 15 5 14.6 Q 2.8 14.2 3 12.4 Z",
     1.1}};

// land cover
constexpr StyleShape broadLeaved[] = {
    {"M 3.5 8 L 3.5 6 Q 0.6 6 0.8 3.6 Q 1 1 4 0.8 Q 7 1 7.2 3.6 Q 7.4 6 4.5 6 L 4.5 8 Z "
     "M 11.5 16 L 11.5 14 Q 8.6 14 8.8 11.6 Q 9 9 12 8.8 Q 15 9 15.2 11.6 "
     "Q 15.4 14 12.5 14 L 12.5 16 Z"}};
constexpr StyleShape conifers[] = {{"M 4 0.4 L 7 6 L 4.6 6 L 4.6 7.6 L 3.4 7.6 L 3.4 6 L 1 6 Z "
                                    "M 12 8.4 L 15 14 L 12.6 14 L 12.6 15.6 L 11.4 15.6 L 11.4 14 L 9 14 Z"}};
constexpr StyleShape orchard[] = {{"O 8 8 4.4", 1.4}, {"O 8 8 1.1"}};
constexpr StyleShape meadow[] = {{"M 4 6.5 L 4 2 M 2.8 6.5 L 1.2 3.4 M 5.2 6.5 L 6.8 3.4 "
                                  "M 12 14.5 L 12 10 M 10.8 14.5 L 9.2 11.4 M 13.2 14.5 L 14.8 11.4",
                                  1.1}};
constexpr StyleShape marsh[] = {{"M 0.5 7 L 8.5 7 M 8.5 15 L 16.5 15 M 4.5 6.4 L 4.5 2.4 M 3 6.4 L 1.8 3.8 "
                                 "M 6 6.4 L 7.2 3.8 M 12.5 14.4 L 12.5 10.4 M 11 14.4 L 9.8 11.8 "
                                 "M 14 14.4 L 15.2 11.8",
                                 1.1}};
constexpr StyleShape vineyard[] = {
    {"M 4 7.6 L 4 0.8 M 4 3 Q 8.6 1.6 7.2 5.4 M 12 15.6 L 12 8.8 M 12 11 Q 16.6 9.6 15.2 13.4", 1.2}};
constexpr StyleShape waves[] = {{"M 4 8 Q 8 14 12 8 Q 16 2 20 8", 1.5}};
constexpr StyleShape graves[] = {{"M 4 0.8 L 4 7.2 M 2 2.8 L 6 2.8 M 12 8.8 L 12 15.2 M 10 10.8 L 14 10.8", 1.3}};
constexpr StyleShape tiles[] = {
    {"M 0 0 Q 0 8 8 8 Q 16 8 16 0 M -8 8 Q -8 16 0 16 Q 8 16 8 8 Q 8 16 16 16 Q 24 16 24 8", 1.2}};

constexpr FillStyles::Row table[] = {
    {{0, QT_TRANSLATE_NOOP("TdCommon", "Solid")}, Solid},
    {{1, QT_TRANSLATE_NOOP("TdCommon", "No Fill")}, Empty},
    {{2, QT_TRANSLATE_NOOP("TdCommon", "Horizontal Lines")}, Pattern, 16, horizontal},
    {{3, QT_TRANSLATE_NOOP("TdCommon", "Vertical Lines")}, Pattern, 16, vertical},
    {{4, QT_TRANSLATE_NOOP("TdCommon", "Rising Lines")}, Pattern, 16, rising},
    {{5, QT_TRANSLATE_NOOP("TdCommon", "Falling Lines")}, Pattern, 16, falling},
    {{6, QT_TRANSLATE_NOOP("TdCommon", "Grid")}, Pattern, 16, grid},
    {{7, QT_TRANSLATE_NOOP("TdCommon", "Diagonal Grid")}, Pattern, 16, diagonalGrid},
    {{8, QT_TRANSLATE_NOOP("TdCommon", "Rising Pairs of Lines")}, Pattern, 16, pairs},
    {{9, QT_TRANSLATE_NOOP("TdCommon", "Dashes")}, Pattern, 16, dashes},
    {{10, QT_TRANSLATE_NOOP("TdCommon", "Zigzag")}, Pattern, 10, zigzag},
    {{11, QT_TRANSLATE_NOOP("TdCommon", "Checks")}, Pattern, 16, checks},
    {{12, QT_TRANSLATE_NOOP("TdCommon", "Dots")}, Pattern, 16, dots},
    {{13, QT_TRANSLATE_NOOP("TdCommon", "Staggered Dots")}, Pattern, 16, staggeredDots},
    {{14, QT_TRANSLATE_NOOP("TdCommon", "Sand")}, Pattern, 16, sand},
    {{15, QT_TRANSLATE_NOOP("TdCommon", "Rings")}, Pattern, 16, rings},
    {{16, QT_TRANSLATE_NOOP("TdCommon", "Plus Signs")}, Pattern, 16, pluses},
    {{17, QT_TRANSLATE_NOOP("TdCommon", "Bricks")}, Pattern, 16, bricks},
    {{18, QT_TRANSLATE_NOOP("TdCommon", "Stones")}, Pattern, 16, stones},
    {{19, QT_TRANSLATE_NOOP("TdCommon", "Broad-Leaved Wood")}, Pattern, 16, broadLeaved},
    {{20, QT_TRANSLATE_NOOP("TdCommon", "Coniferous Wood")}, Pattern, 16, conifers},
    {{21, QT_TRANSLATE_NOOP("TdCommon", "Orchard")}, Pattern, 16, orchard},
    {{22, QT_TRANSLATE_NOOP("TdCommon", "Meadow")}, Pattern, 16, meadow},
    {{23, QT_TRANSLATE_NOOP("TdCommon", "Marsh")}, Pattern, 16, marsh},
    {{24, QT_TRANSLATE_NOOP("TdCommon", "Vineyard")}, Pattern, 16, vineyard},
    {{25, QT_TRANSLATE_NOOP("TdCommon", "Water")}, Pattern, 12, waves},
    {{26, QT_TRANSLATE_NOOP("TdCommon", "Cemetery")}, Pattern, 16, graves},
    {{27, QT_TRANSLATE_NOOP("TdCommon", "Scales")}, Pattern, 16, tiles},
};

} // namespace

std::span<const FillStyles::Row> FillStyles::rows()
{
    return table;
}

const FillStyles::Row &FillStyles::row(qint32 id)
{
    const auto *at = std::ranges::find(table, id, [](const Row &row) { return row.key.id; });
    return at == std::end(table) ? table[0] : *at;
}

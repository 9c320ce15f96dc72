#include "engine/symbol/PointSymbols.h"

#include <QtGlobal>

#include <algorithm>

namespace {

// plain marks
constexpr StyleShape circle[] = {{"O 0 0 12"}};
constexpr StyleShape ring[] = {{"O 0 0 12 O 0 0 8.5"}};
constexpr StyleShape ringWithDot[] = {{"O 0 0 12 O 0 0 8.5 O 0 0 4.5"}};
constexpr StyleShape square[] = {{"R -12 -12 24 24"}};
constexpr StyleShape frame[] = {{"R -12 -12 24 24 R -8.5 -8.5 17 17"}};
constexpr StyleShape triangle[] = {{"M 0 -11 L 12 10 L -12 10 Z"}};
constexpr StyleShape diamond[] = {{"M 0 -12 L 12 0 L 0 12 L -12 0 Z"}};
constexpr StyleShape hexagon[] = {{"M -6 -10.39 L 6 -10.39 L 12 0 L 6 10.39 L -6 10.39 L -12 0 Z"}};
constexpr StyleShape star[] = {{"M 0 -12 L 2.82 -3.88 L 11.41 -3.71 L 4.57 1.48 L 7.05 9.71 L 0 4.8 L -7.05 9.71 "
                                "L -4.57 1.48 L -11.41 -3.71 L -2.82 -3.88 Z"}};
constexpr StyleShape cross[] = {{"M -4 -12 L 4 -12 L 4 -4 L 12 -4 L 12 4 L 4 4 L 4 12 L -4 12 L -4 4 L -12 4 L -12 -4 "
                                 "L -4 -4 Z"}};
constexpr StyleShape saltire[] = {{"M -11 -11 L 11 11 M 11 -11 L -11 11", 2}};
constexpr StyleShape plus[] = {{"M 0 -11 L 0 11 M -11 0 L 11 0", 2}};
constexpr StyleShape asterisk[] = {{"M 0 -11 L 0 11 M -9.53 -5.5 L 9.53 5.5 M 9.53 -5.5 L -9.53 5.5", 2}};
constexpr StyleShape arrow[] = {{"M 0 -12 L 9 0 L 3 -2.2 L 3 12 L -3 12 L -3 -2.2 L -9 0 Z"}};

// settlements and buildings
constexpr StyleShape capital[] = {{"O 0 0 12 O 0 0 10"},
                                  {"M 0 -9 L 2.12 -2.91 L 8.56 -2.78 L 3.42 1.11 L 5.29 7.28 L 0 3.6 L -5.29 7.28 "
                                   "L -3.42 1.11 L -8.56 -2.78 L -2.12 -2.91 Z"}};
constexpr StyleShape church[] = {{"M -1.4 -12 L 1.4 -12 L 1.4 -9.6 L 4 -9.6 L 4 -7 L 1.4 -7 L 1.4 -4.2 L 8 1.5 L 8 12 "
                                  "L 2.5 12 L 2.5 6.5 Q 2.5 4 0 4 Q -2.5 4 -2.5 6.5 L -2.5 12 L -8 12 L -8 1.5 "
                                  "L -1.4 -4.2 L -1.4 -7 L -4 -7 L -4 -9.6 L -1.4 -9.6 Z"}};
constexpr StyleShape school[] = {{"M -0.8 -12 L 0.8 -12 L 7 -9.7 L 0.8 -7.4 L 0.8 -6 L 6 -2 L 12 -2 L 12 11 L 2.5 11 "
                                  "L 2.5 5 L -2.5 5 L -2.5 11 L -12 11 L -12 -2 L -6 -2 L -0.8 -6 Z "
                                  "M -9.5 1 L -6.5 1 L -6.5 4.5 L -9.5 4.5 Z M 6.5 1 L 9.5 1 L 9.5 4.5 L 6.5 4.5 Z "
                                  "O 0 -0.8 1.9"}};
constexpr StyleShape hospital[] = {{"M -9 -12 L 9 -12 Q 12 -12 12 -9 L 12 9 Q 12 12 9 12 L -9 12 Q -12 12 -12 9 "
                                    "L -12 -9 Q -12 -12 -9 -12 Z "
                                    "M -2.6 -8.5 L 2.6 -8.5 L 2.6 -2.6 L 8.5 -2.6 L 8.5 2.6 L 2.6 2.6 L 2.6 8.5 "
                                    "L -2.6 8.5 L -2.6 2.6 L -8.5 2.6 L -8.5 -2.6 L -2.6 -2.6 Z"}};
constexpr StyleShape house[] = {{"M 0 -11 L 12 0 L 9 0 L 9 11 L 2.5 11 L 2.5 3 L -2.5 3 L -2.5 11 L -9 11 L -9 0 "
                                 "L -12 0 Z"}};
constexpr StyleShape castle[] = {{"M -12 -9 L -8.5 -9 L -8.5 -6 L -5.5 -6 L -5.5 -9 L -2 -9 L -2 -1 L 2 -1 L 2 -9 "
                                  "L 5.5 -9 L 5.5 -6 L 8.5 -6 L 8.5 -9 L 12 -9 L 12 10 L 3 10 L 3 6.5 Q 3 3.5 0 3.5 "
                                  "Q -3 3.5 -3 6.5 L -3 10 L -12 10 Z"}};
constexpr StyleShape museum[] = {{"M 0 -11 L 12 -4.5 L 12 -2 L -12 -2 L -12 -4.5 Z R -10 0 3.5 7 R -1.75 0 3.5 7 "
                                  "R 6.5 0 3.5 7 R -12 8.5 24 2.5"}};
constexpr StyleShape factory[] = {{"M -12 11 L -11 -11 L -6.5 -11 L -6 -1 L 0 -5.5 L 0 -1 L 6 -5.5 L 6 -1 L 12 -5.5 "
                                   "L 12 11 Z R -6.5 3.5 3 3.5 R -0.5 3.5 3 3.5 R 5.5 3.5 3 3.5"}};

// works
constexpr StyleShape airport[] = {{"M 0 -12 Q 1.9 -11 1.9 -7.5 L 1.9 -3.6 L 12 3 L 12 5.8 L 1.9 2.4 L 1.5 8 L 4.8 10.3 "
                                   "L 4.8 12 L 0 10.8 L -4.8 12 L -4.8 10.3 L -1.5 8 L -1.9 2.4 L -12 5.8 L -12 3 "
                                   "L -1.9 -3.6 L -1.9 -7.5 Q -1.9 -11 0 -12 Z"}};
constexpr StyleShape harbour[] = {{"O 0 -9 2.2", 1.6},
                                  {"M 0 -6.8 L 0 10.5 M -5 -3.6 L 5 -3.6", 2},
                                  {"M -10.2 3 Q -8.5 10.8 0 11 Q 8.5 10.8 10.2 3", 2},
                                  {"M -12 5.6 L -10.6 0 L -6.8 4.4 Z M 12 5.6 L 10.6 0 L 6.8 4.4 Z"}};
constexpr StyleShape mine[] = {{"M -8.4 10.4 L 5.4 -5.4 M 8.4 10.4 L -5.4 -5.4", 2.6},
                               {"M 0.3 -8.9 L 3.4 -11.8 L 11.8 -4.4 L 10.6 -0.6 Z"},
                               {"M -0.3 -8.9 L -3.4 -11.8 L -11.8 -4.4 L -10.6 -0.6 Z"}};
constexpr StyleShape tower[] = {{"M 0 -6 L -7 11 M 0 -6 L 7 11 M -3 1.4 L 3 1.4 M -5 6.2 L 3 1.4 M 5 6.2 L -3 1.4 "
                                 "M -5 6.2 L 5 6.2",
                                 1.6},
                                {"O 0 -6.5 2.2"},
                                {"M -4.4 -10.4 Q -6.6 -6.5 -4.4 -2.6 M 4.4 -10.4 Q 6.6 -6.5 4.4 -2.6", 1.6}};
constexpr StyleShape lighthouse[] = {{"M -3.4 -8.5 L 0 -12 L 3.4 -8.5 L 3.4 -5 L 4.4 -5 L 4.4 -3.2 L 3.4 -3.2 L 5.4 12 "
                                      "L -5.4 12 L -3.4 -3.2 L -4.4 -3.2 L -4.4 -5 L -3.4 -5 Z R -1.8 -8 3.6 2.8 "
                                      "M -3.2 1.5 L 3.2 1.5 L 3.7 5.5 L -3.7 5.5 Z"},
                                     {"M 6.6 -6.8 L 11 -6.8 M 6.4 -9 L 10 -11 M 6.4 -4.6 L 10 -2.6 "
                                      "M -6.6 -6.8 L -11 -6.8 M -6.4 -9 L -10 -11 M -6.4 -4.6 L -10 -2.6",
                                      1.4}};
constexpr StyleShape windTurbine[] = {{"M -1 -0.6 L 1 -0.6 L 2 12 L -2 12 Z O 0 -3 2"},
                                      {"M -1.3 -5.6 Q -2 -9 0.6 -12 Q 2.4 -9 1.3 -5.6 Z"},
                                      {"M 2.8 -2.9 Q 6.6 -2.4 8.6 2.2 Q 4.2 2 1.6 -0.7 Z"},
                                      {"M -2.8 -2.9 Q -6.6 -2.4 -8.6 2.2 Q -4.2 2 -1.6 -0.7 Z"}};
constexpr StyleShape bridge[] = {
    {"M -12 -5.5 L 12 -5.5 L 12 -1.5 L 9.5 -1.5 L 9.5 8 L 6.5 8 Q 6.5 1 0 1 Q -6.5 1 -6.5 8 "
     "L -9.5 8 L -9.5 -1.5 L -12 -1.5 Z"}};
constexpr StyleShape fuel[] = {{"M -10 12 L -10 -9 Q -10 -12 -7 -12 L 0 -12 Q 3 -12 3 -9 L 3 12 Z R -7 -9 7 6"},
                               {"M 3.8 0.5 L 5.4 0.5 Q 6.6 0.5 6.6 2 L 6.6 6.5 Q 6.6 8.8 8.6 8.8 Q 10.6 8.8 10.6 6.5 "
                                "L 10.6 -4.5 L 6.8 -8.8",
                                1.8}};
constexpr StyleShape campsite[] = {{"M 0 -8 L 11 10.5 L 5 10.5 L 0 1.5 L -5 10.5 L -11 10.5 Z"},
                                   {"M -2 -11 L 0 -8 L 2 -11", 1.8}};

// nature
constexpr StyleShape tree[] = {{"M -1.5 12 L -1.5 4.6 Q -9 6 -9.6 -0.6 Q -9.6 -5 -6.2 -6 Q -5.6 -12 0 -12 Q 5.6 -12 "
                                "6.2 -6 Q 9.6 -5 9.6 -0.6 Q 9 6 1.5 4.6 L 1.5 12 Z"}};
constexpr StyleShape conifer[] = {{"M 0 -12 L 5.5 -4 L 2.8 -4 L 7.5 2.4 L 4 2.4 L 9 9 L 1.5 9 L 1.5 12 L -1.5 12 "
                                   "L -1.5 9 L -9 9 L -4 2.4 L -7.5 2.4 L -2.8 -4 L -5.5 -4 Z"}};
constexpr StyleShape palm[] = {{"M 0.4 -3.6 Q 2.8 4 0.4 10.8", 2.2},
                               {"M 0.4 -4 Q -3.6 -6.4 -8.6 0.4 Q -8.8 -8 -2.6 -7.6 Q -6 -9 -8.6 -7.6 Q -4.4 -13 0.4 -8 "
                                "Q 4.6 -13 9.2 -7.6 Q 6.4 -9 3.4 -7.6 Q 9.6 -8 9.2 0.4 Q 4.4 -6.4 0.4 -4 Z"}};
constexpr StyleShape spring[] = {{"O 0 -6.8 5.2 O 0 -6.8 2.2"},
                                 {"M 0 -1.6 C -6.4 1.4 -6.4 4 0 5 C 6.4 6 6.4 8.6 0 11", 2.2}};
constexpr StyleShape waterfall[] = {{"M -11 -11 L -2 -11 Q 1 -11 1 -8 L 1 4 M -11 -6 L -6 -6 Q -4 -6 -4 -4 L -4 4 "
                                     "M 6 -6.5 L 6 4 M 6 -11 L 6 -10.8",
                                     2},
                                    {"M -11 9 Q -8 6 -5 9 Q -2 12 1 9 Q 4 6 7 9 Q 9 11 11 9.4", 2}};
constexpr StyleShape summit[] = {{"M -3.2 -10.5 L 12 10.5 L -12 10.5 Z M -3.2 -5.4 L -8.2 8 L -3.8 4.6 L -1.4 7.4 "
                                  "L 1.4 3.4 Z"}};
constexpr StyleShape cave[] = {
    {"M -12 10 L -12 2 Q -12 -11 0 -11 Q 12 -11 12 2 L 12 10 L 6.5 10 L 6.5 3.5 Q 6.5 -4 0 -4 "
     "Q -6.5 -4 -6.5 3.5 L -6.5 10 Z"}};
constexpr StyleShape volcano[] = {{"M -12 11 L -4 -2 L -1.5 0 L 1.5 0 L 4 -2 L 12 11 Z"},
                                  {"M 0 -4.5 L 0 -11 M -4 -6 L -7 -10 M 4 -6 L 7 -10", 2}};

// signs
constexpr StyleShape survey[] = {{"M 0 -12 L 12 9.6 L -12 9.6 Z M 0 -7.8 L -8.4 7.4 L 8.4 7.4 Z O 0 2.6 2.4"}};
constexpr StyleShape flag[] = {{"M -8 -10.8 L -8 10.8", 2.4}, {"M -6.4 -11 L 10 -6 L -6.4 -1 Z"}};
constexpr StyleShape pin[] = {{"M 0 12 Q -8.4 2.4 -8.4 -3.6 C -8.4 -8.2 -4.6 -12 0 -12 C 4.6 -12 8.4 -8.2 8.4 -3.6 "
                               "Q 8.4 2.4 0 12 Z O 0 -3.6 3.2"}};
constexpr StyleShape parking[] = {{"M -9 -12 L 9 -12 Q 12 -12 12 -9 L 12 9 Q 12 12 9 12 L -9 12 Q -12 12 -12 9 "
                                   "L -12 -9 Q -12 -12 -9 -12 Z "
                                   "M -5 8.5 L -5 -8.5 L 1 -8.5 Q 7 -8.5 7 -3 Q 7 2.5 1 2.5 L -1.4 2.5 L -1.4 8.5 Z "
                                   "M -1.4 -0.8 L 0.8 -0.8 Q 3.4 -0.8 3.4 -3 Q 3.4 -5.2 0.8 -5.2 L -1.4 -5.2 Z"}};
constexpr StyleShape information[] = {
    {"O 0 0 12 O 0 -6.3 2 M -3.4 -2.8 L 1.8 -2.8 L 1.8 6 L 3.8 6 L 3.8 8.4 L -3.8 8.4 "
     "L -3.8 6 L -1.8 6 L -1.8 -0.4 L -3.4 -0.4 Z"}};
constexpr StyleShape ruin[] = {{"R -12 8 24 3 M -10 6.5 L -10 -8 L -7.5 -5 L -5 -10 L -3.5 -6 L -3.5 6.5 Z "
                                "M 2.5 6.5 L 2.5 -2 L 5 1 L 7 -4 L 10 0.5 L 10 6.5 Z"}};

constexpr PointSymbols::Row table[] = {
    {{0, QT_TRANSLATE_NOOP("TdCommon", "Circle")}, circle},
    {{1, QT_TRANSLATE_NOOP("TdCommon", "Ring")}, ring},
    {{2, QT_TRANSLATE_NOOP("TdCommon", "Ring with Dot")}, ringWithDot},
    {{3, QT_TRANSLATE_NOOP("TdCommon", "Square")}, square},
    {{4, QT_TRANSLATE_NOOP("TdCommon", "Square, Open")}, frame},
    {{5, QT_TRANSLATE_NOOP("TdCommon", "Triangle")}, triangle},
    {{6, QT_TRANSLATE_NOOP("TdCommon", "Diamond")}, diamond},
    {{7, QT_TRANSLATE_NOOP("TdCommon", "Hexagon")}, hexagon},
    {{8, QT_TRANSLATE_NOOP("TdCommon", "Star")}, star},
    {{9, QT_TRANSLATE_NOOP("TdCommon", "Cross")}, cross},
    {{10, QT_TRANSLATE_NOOP("TdCommon", "Diagonal Cross")}, saltire},
    {{11, QT_TRANSLATE_NOOP("TdCommon", "Plus")}, plus},
    {{12, QT_TRANSLATE_NOOP("TdCommon", "Asterisk")}, asterisk},
    {{13, QT_TRANSLATE_NOOP("TdCommon", "Arrow")}, arrow},
    {{14, QT_TRANSLATE_NOOP("TdCommon", "Capital")}, capital},
    {{15, QT_TRANSLATE_NOOP("TdCommon", "House")}, house},
    {{16, QT_TRANSLATE_NOOP("TdCommon", "Church")}, church},
    {{17, QT_TRANSLATE_NOOP("TdCommon", "School")}, school},
    {{18, QT_TRANSLATE_NOOP("TdCommon", "Hospital")}, hospital},
    {{19, QT_TRANSLATE_NOOP("TdCommon", "Museum")}, museum},
    {{20, QT_TRANSLATE_NOOP("TdCommon", "Castle")}, castle},
    {{21, QT_TRANSLATE_NOOP("TdCommon", "Ruin")}, ruin},
    {{22, QT_TRANSLATE_NOOP("TdCommon", "Factory")}, factory},
    {{23, QT_TRANSLATE_NOOP("TdCommon", "Mine")}, mine},
    {{24, QT_TRANSLATE_NOOP("TdCommon", "Tower")}, tower},
    {{25, QT_TRANSLATE_NOOP("TdCommon", "Wind Turbine")}, windTurbine},
    {{26, QT_TRANSLATE_NOOP("TdCommon", "Airport")}, airport},
    {{27, QT_TRANSLATE_NOOP("TdCommon", "Harbour")}, harbour},
    {{28, QT_TRANSLATE_NOOP("TdCommon", "Lighthouse")}, lighthouse},
    {{29, QT_TRANSLATE_NOOP("TdCommon", "Bridge")}, bridge},
    {{30, QT_TRANSLATE_NOOP("TdCommon", "Filling Station")}, fuel},
    {{31, QT_TRANSLATE_NOOP("TdCommon", "Parking")}, parking},
    {{32, QT_TRANSLATE_NOOP("TdCommon", "Information")}, information},
    {{33, QT_TRANSLATE_NOOP("TdCommon", "Campsite")}, campsite},
    {{34, QT_TRANSLATE_NOOP("TdCommon", "Broad-Leaved Tree")}, tree},
    {{35, QT_TRANSLATE_NOOP("TdCommon", "Conifer")}, conifer},
    {{36, QT_TRANSLATE_NOOP("TdCommon", "Palm")}, palm},
    {{37, QT_TRANSLATE_NOOP("TdCommon", "Spring")}, spring},
    {{38, QT_TRANSLATE_NOOP("TdCommon", "Waterfall")}, waterfall},
    {{39, QT_TRANSLATE_NOOP("TdCommon", "Summit")}, summit},
    {{40, QT_TRANSLATE_NOOP("TdCommon", "Volcano")}, volcano},
    {{41, QT_TRANSLATE_NOOP("TdCommon", "Cave")}, cave},
    {{42, QT_TRANSLATE_NOOP("TdCommon", "Survey Point")}, survey},
    {{43, QT_TRANSLATE_NOOP("TdCommon", "Flag")}, flag},
    {{44, QT_TRANSLATE_NOOP("TdCommon", "Pin")}, pin},
};

} // namespace

std::span<const PointSymbols::Row> PointSymbols::rows()
{
    return table;
}

const PointSymbols::Row &PointSymbols::row(qint32 id)
{
    const auto *at = std::ranges::find(table, id, [](const Row &row) { return row.key.id; });
    return at == std::end(table) ? table[0] : *at;
}

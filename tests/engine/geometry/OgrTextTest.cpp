#include "engine/geometry/OgrText.h"
#include "Rows.h"

#include <gtest/gtest.h>

namespace {

struct LabelCase
{
    const char *name;
    const char *style;
    const char *text; ///< null: no text at all
    double height;
    double angle;
};

using OgrTextTest = testing::TestWithParam<LabelCase>;

const LabelCase labelCases[] = {{"Ground", R"(LABEL(f:"Arial",t:"A b",s:2.5g,a:30,c:#ff0000))", "A b", 2.5, 30},
                                {"PointsAreNoHeight", R"(LABEL(t:"A",s:12pt))", "A", 0, 0},
                                {"MillimetresAreNoHeight", R"(LABEL(t:"A",s:3mm))", "A", 0, 0},
                                {"WithoutSize", R"(LABEL(t:"A"))", "A", 0, 0},
                                {"BehindAPen", R"(PEN(c:#000000);LABEL(t:"A",s:1g))", "A", 1, 0},
                                {"PenAlone", R"(PEN(c:#000000))", nullptr, 0, 0},
                                {"LabelWithoutText", R"(LABEL(s:1g))", nullptr, 0, 0},
                                {"Cut", R"(LABEL(t:"A)", "A", 0, 0},
                                {"Empty", "", nullptr, 0, 0}};

} // namespace

TEST_P(OgrTextTest, SaysWhatTheStyleSays)
{
    const LabelCase &expected = GetParam();
    const auto element = OgrText::fromStyle(expected.style, CGeoPoint(1, 2, 3));
    ASSERT_EQ(element != nullptr, expected.text != nullptr);
    if (!element)
        return;
    ASSERT_EQ(element->GetType(), CElemGeometry::Text3D);
    const auto &text = static_cast<const CGeoText &>(*element);
    EXPECT_EQ(text.GetText(), QString::fromUtf8(expected.text));
    EXPECT_DOUBLE_EQ(text.GetHeight(), expected.height);
    EXPECT_DOUBLE_EQ(text.GetAngle(), expected.angle);
    EXPECT_EQ(text.GetAnchor().GetZ(), 3.0);
}

INSTANTIATE_TEST_SUITE_P(Labels, OgrTextTest, testing::ValuesIn(labelCases), rowNames(&LabelCase::name));

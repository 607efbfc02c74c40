// Arrow heads, over a host whose commands draw what a test tells them to.
#include "tools/arrow_head.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdarg>
#include <cstdio>
#include <limits>
#include <string>
#include <vector>

#include "common/variables.h"
#include "hostapi/ads.h"
#include "tests/drawing/drawing_case.h"
#include "tools/curve.h"
#include "tools/drawn_objects.h"

namespace
{

// The commands that were sent, and what each draws.
struct commands {
    std::vector<std::string> sent;
    bool draws_points = true;
    std::string leader; // objects of DIM1, lists parted by '|'
    std::vector<int> snaps;
};
commands host_commands;

void make_all(std::string_view lists)
{
    while (!lists.empty()) {
        const std::size_t end = std::min(lists.find('|'), lists.size());
        const host::list_ptr list = host::db::testing_lists::list_of(lists.substr(0, end));
        EXPECT_EQ(acdbEntMake(list.get()), RTNORM) << lists;
        lists.remove_prefix(std::min(end + 1, lists.size()));
    }
}

constexpr const char* LINE = "0 LINE;10 0,0,0;11 5,0,0";
constexpr const char* TEXT = "0 TEXT;10 5,0,0;40 2.5;1 5.0";
constexpr const char* HEAD = "0 SOLID;10 0,0,0;11 1,1,0;12 1,-1,0;13 1,-1,0";

std::string all_of(std::initializer_list<const char*> lists)
{
    std::string text;
    for (const char* list : lists)
        text += (text.empty() ? "" : "|") + std::string(list);
    return text;
}

} // namespace

extern "C" int acedCommand(int restype, ...)
{
    va_list values;
    va_start(values, restype);
    std::string text;
    ads_point at = {};
    for (int type = restype; type != RTNONE; type = va_arg(values, int)) {
        if (!text.empty())
            text += ' ';
        if (type == RT3DPOINT) {
            const double* p = va_arg(values, const double*);
            std::copy(p, p + 3, at);
            char number[100];
            std::snprintf(number, sizeof number, "%.6g,%.6g,%.6g", p[0], p[1], p[2]);
            text += number;
        } else {
            EXPECT_EQ(type, RTSTR);
            text += '"' + std::string(va_arg(values, const char*)) + '"';
        }
    }
    va_end(values);
    host_commands.sent.push_back(text);
    host_commands.snaps.push_back(static_cast<int>(variable_number("OSMODE", -1)));
    if (text.starts_with("\"_.POINT\"") && host_commands.draws_points) {
        char point[100];
        std::snprintf(point, sizeof point, "0 POINT;10 %.17g,%.17g,%.17g", at[0], at[1], at[2]);
        make_all(point);
    }
    if (text.starts_with("\"_.DIM1\""))
        make_all(host_commands.leader);
    return RTNORM;
}

extern "C" int acedGetReal(const char*, ads_real*)
{
    return RTCAN;
}

namespace
{

struct ArrowHead : drawing_case {
    ArrowHead()
    {
        host_commands = {};
        host_commands.leader = all_of({HEAD, LINE, LINE, TEXT});
        variable_set_real("DIMASZ", 2.0);
        variable_set_real("DIMSCALE", 1.0);
        variable_set_short("OSMODE", 37);
    }
    ~ArrowHead() override { EXPECT_EQ(variable_number("OSMODE", -1), 37); }

    static vertex_chain user_chain(const std::vector<corner>& points)
    {
        vertex_chain chain = make_vertices(points);
        for (pl_vertex* v = chain.get(); v; v = v->next)
            v->type = USER_POINT;
        return chain;
    }
    static void draw(const std::vector<corner>& points) { draw_arrow_head(make_vertices(points).get()); }
    using words = std::vector<std::string>;
};

TEST_F(ArrowHead, IsWhatStaysOfALeader)
{
    draw({{0, 0}, {10, 0}});
    EXPECT_EQ(host_commands.sent,
              (words{"\"_.POINT\" 10,0,0", "\"_.DIM1\" \"_LEADER\" 0,0,0 4.2,0,0 \"\" \"\""}));
    EXPECT_EQ(types(), (words{"SOLID"}));
}

TEST_F(ArrowHead, RunsWithoutObjectSnapAndPutsItBack)
{
    draw({{0, 0}, {10, 0}});
    EXPECT_EQ(host_commands.snaps, (std::vector<int>{0, 0}));
}

TEST_F(ArrowHead, HasTheSizeOfTheDimensions)
{
    struct size_case {
        double dimasz, dimscale;
        const char* leader;
    };
    const size_case cases[] = {
        {2.0, 1.0, "\"_.DIM1\" \"_LEADER\" 0,0,0 4.2,0,0 \"\" \"\""},
        {2.0, 10.0, "\"_.DIM1\" \"_LEADER\" 0,0,0 42,0,0 \"\" \"\""},
        {2.0, 0.0, "\"_.DIM1\" \"_LEADER\" 0,0,0 4.2,0,0 \"\" \"\""}, // a scale of 0.0 counts as 1.0
    };
    for (const size_case& c : cases) {
        variable_set_real("DIMASZ", c.dimasz);
        variable_set_real("DIMSCALE", c.dimscale);
        draw({{0, 0}, {100, 0}});
        EXPECT_EQ(host_commands.sent.back(), c.leader) << c.dimscale;
    }
}

TEST_F(ArrowHead, KeepsTheHeightOfTheTip)
{
    draw({{1, 2, 7}, {1, -100, 9}});
    EXPECT_EQ(host_commands.sent[0], "\"_.POINT\" 1,-100,9");
    EXPECT_EQ(host_commands.sent[1], "\"_.DIM1\" \"_LEADER\" 1,2,7 1,-2.2,7 \"\" \"\"");
}

TEST_F(ArrowHead, AimsAtAboutOneArrowLengthFromTheTip)
{
    struct aim_case {
        const char* name;
        std::vector<corner> points;
        double size;
        const char* aim;
    };
    // Distances are each from the tip and add up: 1, 1 + 2, 1 + 2 + 3.
    const std::vector<corner> run = {{0, 0}, {1, 0}, {2, 0}, {3, 0}, {4, 0}};
    const aim_case cases[] = {
        {"the first point is far enough", run, 0.5, "1,0,0"},
        {"exactly far enough", run, 1.0, "1,0,0"},
        {"the next one", run, 1.5, "2,0,0"},
        {"what was passed counts along", run, 3.0, "2,0,0"},
        {"and on", run, 3.5, "3,0,0"},
        {"to the end", run, 100.0, "4,0,0"},
        {"no size, the next point", run, 0.0, "1,0,0"},
        {"below no size, the next point", run, -1.0, "1,0,0"},
        {"points in one place are passed over", {{0, 0}, {0, 0}, {0, 0}, {5, 5}, {9, 9}}, 1.0, "5,5,0"},
        {"heights don't count", {{0, 0, 0}, {0, 1, 50}, {0, 2, 50}, {0, 3, 50}}, 2.0, "0,2,50"},
    };
    for (const aim_case& c : cases) {
        variable_set_real("DIMASZ", c.size);
        host_commands.sent.clear();
        draw(c.points);
        ASSERT_EQ(host_commands.sent.size(), 2u) << c.name;
        EXPECT_EQ(host_commands.sent[0], std::string("\"_.POINT\" ") + c.aim) << c.name;
    }
}

TEST_F(ArrowHead, ComesToAnEndWhereTheChainCreepsBackToItsTip)
{
    // A sum of distances that a tiny one no longer changes would be waited for without end.
    variable_set_real("DIMASZ", 1.0);
    const double less = std::nextafter(1.0, 0.0);
    draw({{0, 0}, {less, 0}, {1e-16, 0}, {1e-17, 0}, {5, 0}});
    EXPECT_EQ(host_commands.sent.size(), 2u);
}

TEST_F(ArrowHead, CurvesAChainThatHasNoCurveYet)
{
    const auto chain = user_chain({{0, 0}, {10, 0}});
    draw_arrow_head(chain.get());
    const std::vector<corner> got = corners_of(chain.get());
    ASSERT_EQ(got.size(), 8u) << "the line that is drawn from it afterwards has these points too";
    EXPECT_DOUBLE_EQ(got[1].x, 10 * (3 * 0.15 * 0.15 * 0.85 + 0.15 * 0.15 * 0.15));
    EXPECT_EQ(host_commands.sent[0], "\"_.POINT\" 2.16,0,0") << "0.6075 and 2.16 from the tip";
}

TEST_F(ArrowHead, LeavesACurvedChainAlone)
{
    const auto chain = user_chain({{0, 0}, {10, 5}, {20, 0}});
    chain_curve(chain.get(), 2.1, 0.15);
    const std::vector<corner> before = corners_of(chain.get());
    draw_arrow_head(chain.get());
    EXPECT_EQ(corners_of(chain.get()), before);
}

TEST_F(ArrowHead, LiesAlongTheChordOfACurvesStart)
{
    const auto chain = user_chain({{0, 0}, {0, 30}, {30, 30}});
    chain_curve(chain.get(), 2.1, 0.15);
    draw_arrow_head(chain.get());
    double x = 0, y = 0, qx = 0, qy = 0;
    ASSERT_EQ(std::sscanf(host_commands.sent[0].c_str(), "\"_.POINT\" %lf,%lf", &x, &y), 2);
    ASSERT_EQ(std::sscanf(host_commands.sent[1].c_str(), "\"_.DIM1\" \"_LEADER\" 0,0,0 %lf,%lf", &qx, &qy), 2);
    EXPECT_NEAR(std::atan2(y, x), std::atan2(qy, qx), 1e-5);
    EXPECT_NEAR(std::hypot(qx, qy), 4.2, 1e-5);
}

TEST_F(ArrowHead, OnlyWhatTheLeaderDrewIsErased)
{
    struct leader_case {
        const char* name;
        std::string leader;
        words left; // behind the two objects that were there
    };
    const char* const mtext = "0 MTEXT;100 AcDbEntity;100 AcDbMText;10 5,0,0;40 2.5;1 5.0";
    const leader_case cases[] = {
        {"head, lines and text", all_of({HEAD, LINE, LINE, TEXT}), {"SOLID"}},
        {"a text of the other kind", all_of({HEAD, LINE, mtext}), {"SOLID"}},
        {"no head", all_of({LINE, LINE, TEXT}), {}},
        {"a head alone", HEAD, {"SOLID"}},
        {"nothing", "", {}},
        {"lines before the head stay with it", all_of({LINE, HEAD, LINE}), {"LINE", "SOLID"}},
        {"a head of a kind of its own", all_of({"0 CIRCLE;10 0,0,0;40 1", LINE, TEXT}), {"CIRCLE"}},
    };
    for (const bool is_marked : {true, false})
        for (const leader_case& c : cases) {
            while (last())
                acdbEntDel(last_name());
            make_all(all_of({TEXT, LINE}));
            host_commands.draws_points = is_marked;
            host_commands.leader = c.leader;
            draw({{0, 0}, {10, 0}});
            words expected = {"TEXT", "LINE"};
            expected.insert(expected.end(), c.left.begin(), c.left.end());
            EXPECT_EQ(types(), expected) << c.name << (is_marked ? "" : ", without a marker");
        }
}

TEST_F(ArrowHead, ErasingEndsInADrawingThatIsEmpty)
{
    host_commands.draws_points = false;
    host_commands.leader = all_of({LINE, LINE, TEXT});
    draw({{0, 0}, {10, 0}});
    EXPECT_EQ(types(), words{});
}

TEST_F(ArrowHead, NeedsTwoVerticesAndFiniteNumbers)
{
    constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();
    draw_arrow_head(nullptr);
    draw({{0, 0}});
    for (const double bad : {HUGE_VAL, -HUGE_VAL, NOT_A_NUMBER}) {
        draw({{bad, 0}, {10, 0}});
        draw({{0, bad}, {10, 0}});
        draw({{0, 0}, {10, bad}});
        draw({{0, 0}, {10, 0, bad}});
        draw({{0, 0}, {10, 0}, {bad, 0}, {20, 0}});
    }
    EXPECT_EQ(host_commands.sent,
              (words{"\"_.POINT\" 10,0,0", "\"_.DIM1\" \"_LEADER\" 0,0,0 4.2,0,0 \"\" \"\"",
                     "\"_.POINT\" 10,0,0", "\"_.DIM1\" \"_LEADER\" 0,0,0 4.2,0,0 \"\" \"\"",
                     "\"_.POINT\" 10,0,0", "\"_.DIM1\" \"_LEADER\" 0,0,0 4.2,0,0 \"\" \"\""}))
        << "what lies behind the aim doesn't matter";
    host_commands.sent.clear();
    variable_set_real("DIMASZ", 1e308);
    variable_set_real("DIMSCALE", 1e308);
    draw({{0, 0}, {10, 0}});
    EXPECT_EQ(host_commands.sent, words{});
}

TEST_F(ArrowHead, IsDrawnAlongTheFirstSegmentWhenTheHeapGivesNoMore)
{
    const auto chain = user_chain({{0, 0}, {10, 0}});
    host::heap_refuse(1);
    draw_arrow_head(chain.get());
    EXPECT_EQ(host::heap_refuse(0), 0);
    EXPECT_EQ(corners_of(chain.get()).size(), 2u);
    EXPECT_EQ(types(), (words{"SOLID"}));
}

TEST_F(ArrowHead, SizeIsThatOfTheVariablesTogether)
{
    variable_set_real("DIMASZ", 2.5);
    variable_set_real("DIMSCALE", 4.0);
    EXPECT_EQ(arrow_size(), 10.0);
    set_arrow_size(2.0);
    EXPECT_EQ(variable_number("DIMASZ", 0), 0.5);
    variable_set_real("DIMSCALE", 0.0);
    EXPECT_EQ(arrow_size(), 0.5);
    set_arrow_size(3.0);
    EXPECT_EQ(variable_number("DIMASZ", 0), 3.0);
    set_arrow_size(HUGE_VAL);
    set_arrow_size(std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(variable_number("DIMASZ", 0), 3.0);
}

// ---- what was drawn ---------------------------------------------------------------------------------

struct DrawnObjects : drawing_case {
};

TEST_F(DrawnObjects, NewestIsOnlyOneThatCameSince)
{
    ads_name name;
    const newest_object before_all;
    EXPECT_FALSE(before_all.added(name));
    make(LINE);
    EXPECT_TRUE(before_all.added(name));
    EXPECT_EQ(name[0], last_name().name[0]);
    const newest_object between;
    EXPECT_FALSE(between.added(name));
    make(TEXT);
    EXPECT_TRUE(between.added(name));
    acdbEntDel(last_name());
    EXPECT_FALSE(between.added(name)) << "the line was there before";
}

} // namespace

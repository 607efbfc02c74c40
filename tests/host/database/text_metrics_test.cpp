// How much room letters take, and where a line of text stands about its alignment point.
#include "host/database/text_metrics.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <string>

#include "host/core/document.h"
#include "host/database/geometry.h"
#include "tests/growth.h"
#include "tests/host/database/lists.h"

namespace host::db
{

namespace
{

using namespace testing_lists;

constexpr double PI = std::numbers::pi;

// ---- letters ---------------------------------------------------------------------------------------------

TEST(TextLetters, CodesAreOneLetterOrNone)
{
    const struct {
        const char *text, *letters;
    } cases[] = {
        {"abc", "abc"},
        {"%%d%%p%%c", "\xB0\xB1\xD8"},
        {"%%D%%P%%C", "\xB0\xB1\xD8"},
        {"%%uunder%%u %%Oover%%o%%k", "under over"},
        {"50%%%", "50%"},
        {"%%065%%0661", "AB1"},
        {"%%65x", "Ax"},
        {"%%999", "?"},
        {"%%x", "x"},
        {"%%", "%%"},
        {"%", "%"},
        {"a%%", "a%%"},
        {"\\U+00B0\\U+20AC", "\xB0\x80"},
        {"\\u+00b0", "\\u+00b0"},
        {"\\U+4E00", "?"},
        {"\\U+12", "\\U+12"},
        {"\\U+00G0", "\\U+00G0"},
        {"", ""},
    };
    for (const auto& c : cases)
        EXPECT_EQ(shown_letters(c.text), c.letters) << c.text;
}

struct room_case {
    const char* text;
    font_kind font;
    double width, bottom, top;
};

TEST(TextRoom, OfLetters)
{
    constexpr double CAP = 716;
    const font_kind stroke = font_kind::stroke, outline = font_kind::outline;
    const room_case cases[] = {
        {"", stroke, 0, 0, 0},
        {"A", stroke, 2 / 3.0, 0, 1},
        {"i", stroke, 2 / 3.0, 0, 1},
        {"AB", stroke, 5 / 3.0, 0, 1},
        {"AB ", stroke, 8 / 3.0, 0, 1},
        {" ", stroke, 2 / 3.0, 0, 0},
        {"acorn", stroke, 14 / 3.0, 0, 2 / 3.0},
        {"gym", stroke, 8 / 3.0, -1 / 3.0, 2 / 3.0},
        {"Ag", stroke, 5 / 3.0, -1 / 3.0, 1},
        {".", stroke, 2 / 3.0, 0, 1 / 6.0},
        {"_", stroke, 2 / 3.0, -1 / 3.0, 1 / 6.0},
        {"%%uAB", stroke, 5 / 3.0, 0, 1},
        {"90%%d", stroke, 8 / 3.0, 0, 1},
        {"", outline, 0, 0, 0},
        {"A", outline, 667 / CAP, 0, 1},
        {"i", outline, 222 / CAP, 0, 1},
        {"Wi", outline, (944 + 222) / CAP, 0, 1},
        {"0123456789", outline, 5560 / CAP, 0, 1},
        {"gym", outline, (556 + 500 + 833) / CAP, -212 / CAP, 519 / CAP},
        {"%%d%%p%%c", outline, (400 + 584 + 778) / CAP, 0, 1},
        {"\x80", outline, 556 / CAP, 0, 1},
        {"\xFF", outline, 500 / CAP, -212 / CAP, 1},
        {"\t", outline, 0, 0, 1},
        {"\xDE", stroke, 2 / 3.0, 0, 1},        // capital thorn has no tail,
        {"\xFE", stroke, 2 / 3.0, -1 / 3.0, 1}, // the small one has
        {"\xC7", stroke, 2 / 3.0, -1 / 3.0, 1}, // the cedilla
        {"\xB5", stroke, 2 / 3.0, -1 / 3.0, 2 / 3.0},
        {"\x9C", stroke, 2 / 3.0, 0, 2 / 3.0},
        {"\x85", stroke, 2 / 3.0, 0, 1 / 6.0},
        {"\x84", stroke, 2 / 3.0, -1 / 3.0, 1 / 6.0},
        {"a b", outline, (556 + 278 + 556) / CAP, 0, 1},
    };
    for (const room_case& c : cases) {
        const text_room room = room_of(c.text, c.font);
        EXPECT_NEAR(room.width, c.width, 1e-12) << c.text;
        EXPECT_NEAR(room.bottom, c.bottom, 1e-12) << c.text;
        EXPECT_NEAR(room.top, c.top, 1e-12) << c.text;
    }
}

TEST(TextRoom, GrowsWithTheText)
{
    EXPECT_TRUE(grows_in_proportion(
        [](int size) { room_of(std::string(static_cast<std::size_t>(size), 'g'), font_kind::outline); },
        20'000'00));
}

TEST(TextFonts, AreOutlinesByTheirFiles)
{
    for (const char* file : {"arial.ttf", "ARIAL.TTF", "a.b.ttc", "x.otf"})
        EXPECT_TRUE(is_outline_font(file)) << file;
    for (const char* file : {"txt", "txt.shx", "", "ttf", "romans.SHX", "x.ttf.shx"})
        EXPECT_FALSE(is_outline_font(file)) << file;
    EXPECT_DOUBLE_EQ(descent_of(font_kind::stroke), 1 / 3.0);
    EXPECT_DOUBLE_EQ(descent_of(font_kind::outline), 212 / 716.0);
}

// ---- lines in a drawing ------------------------------------------------------------------------------------

class TextLines : public testing::Test
{
protected:
    document* doc = &open_document();
    database& db = database_of(*doc);

    TextLines() { add("0 STYLE;2 SANS;70 0;40 0;41 1;50 0;71 0;3 arial.ttf", "STYLE", "SANS"); }
    ~TextLines() override { close_all_documents(); }

    void add(const char* list, const char* table, const char* name)
    {
        const object_id id = add_record(db, table, name);
        group_list groups;
        ASSERT_TRUE(groups_of_list(db, list_of(list).get(), groups, nullptr));
        for (const group& each : groups)
            if (group* there = find(db.modify(id), each.code); there && each.code != 0)
                *there = each;
    }
    group_list parsed(const std::string& list)
    {
        group_list groups;
        EXPECT_TRUE(groups_of_list(db, list_of(list).get(), groups, nullptr)) << list;
        return groups;
    }
    object_id made(const std::string& list)
    {
        std::string error;
        const object_id id = make_entity(db, parsed(list), &error);
        EXPECT_NE(id, 0u) << list << ": " << error;
        return id;
    }
    void change(object_id id, std::initializer_list<group> with)
    {
        group_list groups = db.at(id).groups;
        for (const group& each : with)
            *find(groups, each.code) = each;
        std::string error;
        EXPECT_TRUE(change_entity(db, id, std::move(groups), &error)) << error;
    }
    vec place(object_id id, int code)
    {
        const group* g = find(db.at(id).groups, code);
        return {g->point[0], g->point[1], g->point[2]};
    }
    double real(object_id id, int code) { return real_of(db.at(id).groups, code, -99); }
};

void expect_place(const vec& got, double x, double y, double z, const std::string& what)
{
    EXPECT_NEAR(got.x, x, 1e-9) << what;
    EXPECT_NEAR(got.y, y, 1e-9) << what;
    EXPECT_NEAR(got.z, z, 1e-9) << what;
}

// "Ag" at height 3 is 5 wide, from -1 to 3; the descent is 1.
struct stand_case {
    const char* name;
    int across, up;
    double left, base; // of the base line's start, from the alignment point
};
constexpr stand_case STANDS[] = {
    {"Left", 0, 0, 0, 0},     {"Center", 1, 0, -2.5, 0},     {"Right", 2, 0, -5, 0}, {"Middle", 4, 0, -2.5, -1},
    {"BL", 0, 1, 0, 1},       {"BC", 1, 1, -2.5, 1},         {"BR", 2, 1, -5, 1},    {"ML", 0, 2, 0, -1.5},
    {"MC", 1, 2, -2.5, -1.5}, {"MR", 2, 2, -5, -1.5},        {"TL", 0, 3, 0, -3},    {"TC", 1, 3, -2.5, -3},
    {"TR", 2, 3, -5, -3},     {"MiddleAny", 4, 3, -2.5, -1},
};

std::string list_of_stand(const stand_case& c, const std::string& more)
{
    return "0 TEXT;10 100,200,7;11 100,200,7;40 3;1 Ag;72 " + std::to_string(c.across) + ";73 " +
           std::to_string(c.up) + more;
}

TEST_F(TextLines, StandAboutTheirAlignmentPoint)
{
    for (const stand_case& c : STANDS) {
        const object_id id = made(list_of_stand(c, ""));
        expect_place(place(id, 10), 100 + c.left, 200 + c.base, 7, c.name);
        expect_place(place(id, 11), 100, 200, 7, c.name);
        const box b = extents_of(db, id);
        EXPECT_NEAR(b.low[0], 100 + c.left, 1e-9) << c.name;
        EXPECT_NEAR(b.high[0], 100 + c.left + 5, 1e-9) << c.name;
        EXPECT_NEAR(b.low[1], 200 + c.base - 1, 1e-9) << c.name;
        EXPECT_NEAR(b.high[1], 200 + c.base + 3, 1e-9) << c.name;
    }
}

TEST_F(TextLines, TurnedOnesStandSoInTheirOwnDirections)
{
    for (const stand_case& c : STANDS)
        for (const double angle : {PI / 2, 1.0, 4.0}) {
            const object_id id = made(list_of_stand(c, ";50 " + std::to_string(angle)));
            const double a = std::atof(std::to_string(angle).c_str());
            const vec base{100 + c.left * std::cos(a) - c.base * std::sin(a),
                           200 + c.left * std::sin(a) + c.base * std::cos(a), 7};
            expect_place(place(id, 10), base.x, base.y, 7, c.name);
            const auto runs = outline_of(db, id, 1e-3);
            ASSERT_EQ(runs.size(), 1u);
            // Lower left and upper right corner, from the base line's start.
            const auto expect_corner = [&](std::size_t i, double x, double y) {
                EXPECT_NEAR(runs[0][i].first, base.x + x * std::cos(a) - y * std::sin(a), 1e-9) << c.name;
                EXPECT_NEAR(runs[0][i].second, base.y + x * std::sin(a) + y * std::cos(a), 1e-9) << c.name;
            };
            expect_corner(0, 0, -1);
            expect_corner(2, 5, 3);
        }
}

TEST_F(TextLines, BackwardsAndUpsideDownAreMirroredAtTheAlignmentPoint)
{
    for (const stand_case& c : STANDS)
        for (const int generation : {2, 4, 6}) {
            const std::string what = std::string(c.name) + " " + std::to_string(generation);
            const object_id id = made(list_of_stand(c, ";71 " + std::to_string(generation)));
            const double sx = generation & 2 ? -1 : 1, sy = generation & 4 ? -1 : 1;
            if (c.across || c.up)
                expect_place(place(id, 10), 100 + sx * c.left, 200 + sy * c.base, 7, what);
            const box b = extents_of(db, id);
            EXPECT_NEAR(b.low[0], 100 + std::min(sx * c.left, sx * (c.left + 5)), 1e-9) << what;
            EXPECT_NEAR(b.low[1], 200 + std::min(sy * (c.base - 1), sy * (c.base + 3)), 1e-9) << what;
        }
}

TEST_F(TextLines, WidthFactorsAndFontsAreOfTheStyleAndTheText)
{
    expect_place(place(made("0 TEXT;10 0,0,0;11 10,0,0;40 3;1 Ag;41 2;72 2"), 10), 0, 0, 0, "factor 2");
    const object_id sans = made("0 TEXT;10 0,0,0;11 0,0,0;40 716;1 Ag;7 SANS;72 2;73 1");
    expect_place(place(sans, 10), -(667 + 556), 212, 0, "outline");
    const object_id attribute = made("0 ATTDEF;10 0,0,0;11 0,0,0;40 3;1 Ag;2 T;3 ;70 0;72 1;74 3");
    expect_place(place(attribute, 10), -2.5, -3, 0, "attribute");
}

TEST_F(TextLines, MiddleIsThatOfTheLettersThatAreThere)
{
    const struct {
        const char* text;
        double base;
    } cases[] = {{"AB", -1.5}, {"ace", -1}, {"gym", -0.5}, {"Ag", -1}};
    for (const auto& c : cases)
        expect_place(place(made("0 TEXT;10 0,0,0;11 0,0,0;40 3;72 4;1 " + std::string(c.text)), 10),
                     -3 * room_of(c.text, font_kind::stroke).width / 2, c.base, 0, c.text);
}

TEST_F(TextLines, ObliqueBoxesLean)
{
    const object_id id = made("0 TEXT;10 0,0,0;40 3;1 Ag;51 0.785398163397448");
    const auto runs = outline_of(db, id, 1e-3);
    ASSERT_EQ(runs.size(), 1u);
    const std::pair<double, double> corners[] = {{-1, -1}, {4, -1}, {8, 3}, {3, 3}, {-1, -1}};
    ASSERT_EQ(runs[0].size(), 5u);
    for (std::size_t i = 0; i < 5; ++i) {
        EXPECT_NEAR(runs[0][i].first, corners[i].first, 1e-9) << i;
        EXPECT_NEAR(runs[0][i].second, corners[i].second, 1e-9) << i;
    }
}

TEST_F(TextLines, FitTextTakesItsWidthFactorAndAlignedTextItsHeightFromTheirPoints)
{
    const object_id fit = made("0 TEXT;10 0,0,0;11 0,20,0;40 3;1 Ag;72 5");
    EXPECT_DOUBLE_EQ(real(fit, 41), 4.0);
    EXPECT_DOUBLE_EQ(real(fit, 40), 3.0);
    EXPECT_NEAR(real(fit, 50), PI / 2, 1e-12);
    const object_id aligned = made("0 TEXT;10 20,0,0;11 0,0,0;40 3;41 2;1 Ag;72 3");
    EXPECT_DOUBLE_EQ(real(aligned, 40), 6.0);
    EXPECT_DOUBLE_EQ(real(aligned, 41), 2.0);
    EXPECT_NEAR(real(aligned, 50), PI, 1e-12);
    EXPECT_NEAR(extents_of(db, fit).high[1], 20, 1e-9);
    EXPECT_NEAR(extents_of(db, fit).low[1], 0, 1e-9);
    EXPECT_NEAR(extents_of(db, aligned).high[0], 20, 1e-9);
    EXPECT_NEAR(extents_of(db, aligned).low[0], 0, 1e-9);
    // Nothing to go by: they stay as they are.
    const object_id one_place = made("0 TEXT;10 5,5,0;11 5,5,0;40 3;41 2;50 1;1 Ag;72 5");
    EXPECT_EQ(real(one_place, 41), 2.0);
    EXPECT_EQ(real(one_place, 50), 1.0);
    const object_id no_letters = made("0 TEXT;10 5,5,0;11 9,5,0;40 3;41 2;50 1;1 ;72 3");
    EXPECT_EQ(real(no_letters, 40), 3.0);
}

TEST_F(TextLines, BackwardFitTextStaysBetweenItsPoints)
{
    const box b = extents_of(db, made("0 TEXT;10 0,0,0;11 20,0,0;40 3;1 Ag;72 5;71 2"));
    EXPECT_NEAR(b.low[0], 0, 1e-9);
    EXPECT_NEAR(b.high[0], 20, 1e-9);
}

// ---- changes ----------------------------------------------------------------------------------------------

TEST_F(TextLines, ANewHeightMovesTheDerivedPoint)
{
    const object_id id = made("0 TEXT;10 0,0,0;11 10,10,5;40 3;1 Ag;72 2;73 3");
    expect_place(place(id, 10), 5, 7, 0, "made");
    change(id, {real_group(40, 6)});
    expect_place(place(id, 10), 0, 4, 0, "higher");
    change(id, {real_group(50, PI)});
    expect_place(place(id, 10), 20, 16, 0, "turned");
    change(id, {real_group(50, 0), db.text_group(1, "Agg")});
    expect_place(place(id, 10), -6, 4, 0, "longer");
    change(id, {point_group(11, 20, 10, 5)});
    expect_place(place(id, 10), 4, 4, 0, "moved");
    change(id, {point_group(10, 99, 99, 99)}); // follows from 11, but for the height it lies at
    expect_place(place(id, 10), 4, 4, 99, "10 alone");
    change(id, {int_group(72, 0), int_group(73, 0)});
    expect_place(place(id, 10), 4, 4, 99, "no longer justified");
}

TEST_F(TextLines, OtherChangesLeaveItWhereItIs)
{
    const object_id id = made("0 TEXT;10 0,0,0;11 10,10,0;40 3;1 Ag;72 2;8 A");
    *find(db.modify(id), 10) = point_group(10, 5.5, 10, 0); // as another program with other fonts has it
    change(id, {db.text_group(8, "B")});
    expect_place(place(id, 10), 5.5, 10, 0, "layer");
    const object_id left = made("0 TEXT;10 3,4,0;40 3;1 Ag");
    change(left, {real_group(40, 9)});
    expect_place(place(left, 10), 3, 4, 0, "left");
}

TEST_F(TextLines, ANewHeightOfFitTextNarrowsItAndOfAlignedTextDoesNotLast)
{
    const object_id fit = made("0 TEXT;10 0,0,0;11 20,0,0;40 3;1 Ag;72 5");
    change(fit, {real_group(40, 6)});
    EXPECT_DOUBLE_EQ(real(fit, 40), 6.0);
    EXPECT_DOUBLE_EQ(real(fit, 41), 2.0);
    const object_id aligned = made("0 TEXT;10 0,0,0;11 20,0,0;40 3;1 Ag;72 3");
    change(aligned, {real_group(40, 99)});
    EXPECT_DOUBLE_EQ(real(aligned, 40), 12.0);
}

TEST_F(TextLines, OtherKindsAreLeftAlone)
{
    for (const char* list :
         {"0 LINE;10 1,2,3;11 4,5,6", "0 INSERT;2 X;10 1,2,3;72 1", "10 1,2,3;72 1;11 4,4,4"}) {
        group_list groups = parsed(list);
        const group_list before = groups;
        settle_text(db, groups);
        ASSERT_EQ(groups.size(), before.size());
        EXPECT_FALSE(differs_in_place(before, groups)) << list;
    }
}

TEST_F(TextLines, MadeByTheThousandInProportion)
{
    EXPECT_TRUE(grows_in_proportion(
        [&](int size) {
            for (int i = 0; i < size; ++i)
                made("0 TEXT;10 0,0,0;11 10,10,0;40 3;1 Ag;72 2;73 3");
        },
        32000));
}

} // namespace

} // namespace host::db

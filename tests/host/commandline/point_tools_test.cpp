// What tools for survey points ask of the host: crossing windows with nested filters, blocks taken apart and
// put back, attributes changed in place, drags from a base point, moves by height, commands of one word.
#include <cstring>

#include "host/commandline/screen.h"
#include "hostapi/editor.h"
#include "tests/growth.h"
#include "tests/host/commandline/session.h"
#include "tests/host/database/lists.h"

namespace host::commandline
{

namespace
{

using db::testing_lists::list_of;

class point_tools : public session
{
protected:
    void make(std::string_view lists)
    {
        while (!lists.empty()) {
            const std::size_t end = std::min(lists.find('|'), lists.size());
            const list_ptr list = list_of(lists.substr(0, end));
            ASSERT_EQ(acdbEntMake(list.get()), RTNORM) << lists;
            lists.remove_prefix(std::min(end + 1, lists.size()));
        }
    }
    void name_of(db::object_id id, ads_name name) { db::make_name(data(), id, name); }
    int found(const char* mode, const point3& a, const point3& b, const resbuf* filter)
    {
        ads_name set;
        std::int32_t length = 0;
        if (acedSSGet(mode, a.data(), b.data(), filter, set) != RTNORM)
            return 0;
        acedSSLength(set, &length);
        acedSSFree(set);
        return length;
    }
    // The types and texts behind an object, as far as they belong to it.
    std::string parts_behind(const ads_name from)
    {
        std::string out;
        ads_name at;
        std::memcpy(at, from, sizeof at);
        while (acdbEntNext(at, at) == RTNORM) {
            const db::object_id id = db::id_of_name(data(), at);
            out += std::string(data().type_of(id)) + " ";
            if (data().is(id, "SEQEND"))
                break;
        }
        return out;
    }
};

// ---- windows

constexpr const char* LINES_AND_POLYLINES = "-4 <OR;0 LINE;-4 <OR;0 POLYLINE;0 LWPOLYLINE;-4 OR>;-4 OR>";

TEST_F(point_tools, ASmallCrossingWindowFindsTheLinesThroughAPointByANestedFilter)
{
    make("0 LINE;10 0,0,0;11 10,10,7|0 LWPOLYLINE;100 AcDbPolyline;90 2;70 0;38 3;10 5,0;10 5,9|"
         "0 POLYLINE;66 1;70 8|0 VERTEX;10 0,5,1;70 32|0 VERTEX;10 9,5,4;70 32|0 SEQEND|"
         "0 CIRCLE;10 5,5,0;40 0.005|0 POINT;10 5,5,0|0 LINE;10 5.02,0,0;11 5.02,9,0");
    const list_ptr filter = list_of(LINES_AND_POLYLINES);
    const point3 low{4.99, 4.99, 0}, high{5.01, 5.01, 0}, left{4.99, 5.01, 0}, right{5.01, 4.99, 0};
    EXPECT_EQ(found("C", low, high, filter.get()), 3);
    EXPECT_EQ(found("C", high, low, filter.get()), 3);
    EXPECT_EQ(found("C", left, right, filter.get()), 3);
    EXPECT_EQ(found("C", right, left, filter.get()), 3);
    EXPECT_EQ(found("C", {5, 5, 0}, {5, 5, 0}, filter.get()), 3) << "without a size too";
    EXPECT_EQ(found("C", {4.99, 4.99, 900}, {5.01, 5.01, -900}, filter.get()), 3) << "heights don't count";
    EXPECT_EQ(found("C", low, high, nullptr), 5);
    send("DVIEW||TW|30|");
    EXPECT_EQ(found("C", low, high, filter.get()), 3);
    EXPECT_EQ(found("C", right, left, filter.get()), 3);
}

TEST_F(point_tools, AFilterOfEitherApplicationTakesBlocksWithTheDataOfOne)
{
    make("0 BLOCK;2 B;70 0;10 0,0,0|0 POINT;10 0,0,0|0 ENDBLK");
    for (const char* name : {"COREHOLE", "CHANNEL", "OTHER"})
        acdbRegApp(name);
    for (const char* data_of : {"", ";1001 COREHOLE;1000 a", ";1001 CHANNEL;1000 b", ";1001 OTHER;1000 c"})
        make("0 INSERT;2 B;10 1,1,0" + std::string(data_of));
    make("0 POINT;10 1,1,0;1001 CHANNEL;1000 d");
    const list_ptr filter =
        list_of("0 INSERT;-4 <OR;-4 <AND;-3 ;1001 COREHOLE;-4 AND>;-4 <AND;-3 ;1001 CHANNEL;"
                "-4 AND>;-4 OR>");
    ads_name set;
    ASSERT_EQ(acedSSGet("X", nullptr, nullptr, filter.get(), set), RTNORM);
    std::int32_t length = 0;
    acedSSLength(set, &length);
    EXPECT_EQ(length, 2);
    acedSSFree(set);
}

// ---- moves and one-word commands

TEST_F(point_tools, AMoveBetweenTwoPointsOfOnePlaceRaisesEachKind)
{
    make("0 LINE;10 0,0,1;11 10,10,2|0 LWPOLYLINE;100 AcDbPolyline;90 2;70 0;38 3;10 5,0;10 5,9|"
         "0 POLYLINE;66 1;70 0;10 0,0,4|0 VERTEX;10 0,5,4|0 VERTEX;10 9,5,4;42 1|0 SEQEND|"
         "0 POLYLINE;66 1;70 8|0 VERTEX;10 0,5,1;70 32|0 VERTEX;10 9,5,4;70 32|0 SEQEND|"
         "0 TEXT;10 1,1,5;40 1;50 0.3;1 A|0 ARC;10 1,1,6;40 1;50 0.1;51 5.9");
    const point3 from{5, 5, 3}, to{5, 5, 13.5};
    for (int i = 0; i < 6; ++i) {
        ads_name name;
        name_of(nth(i), name);
        EXPECT_EQ(acedCommand(RTSTR, "_.MOVE", RTENAME, name, RTSTR, "", RT3DPOINT, from.data(), RT3DPOINT,
                              to.data(), 0),
                  RTNORM);
    }
    EXPECT_EQ(objects({10, 11, 38, 42}),
              "LINE 10=0,0,11.5 11=10,10,12.5 / LWPOLYLINE 38=13.5 10=5,0 42=0 10=5,9 42=0 / "
              "POLYLINE 10=0,0,14.5 (VERTEX 10=0,5,14.5 42=0) (VERTEX 10=9,5,14.5 42=1) / "
              "POLYLINE 10=0,0,0 (VERTEX 10=0,5,11.5) (VERTEX 10=9,5,14.5) / TEXT 10=1,1,15.5 11=0,0,0 / "
              "ARC 10=1,1,16.5");
    // What isn't a place keeps its last digit.
    EXPECT_EQ(db::real_of(data().at(nth(4)).groups, 50, 0), 0.3);
    EXPECT_EQ(db::real_of(data().at(nth(5)).groups, 50, 0), 0.1);
    EXPECT_EQ(db::real_of(data().at(nth(5)).groups, 51, 0), 5.9);
}

TEST_F(point_tools, RegenAndRedrawAreCommandsOfOneWord)
{
    const ads_point a = {0, 0, 0}, b = {1, 0, 0};
    for (const char* word : {"_.REGEN", "_.REDRAW"}) {
        acedGrDraw(a, b, 1, 0);
        EXPECT_EQ(screen_vectors(doc()).size(), 1u);
        EXPECT_EQ(acedCommand(RTSTR, word, RTNONE), RTNORM);
        EXPECT_TRUE(screen_vectors(doc()).empty()) << word;
        EXPECT_EQ(acedCommand(RTSTR, "_.POINT", RT3DPOINT, a, 0), RTNORM) << "no command was left open";
    }
    EXPECT_EQ(count(), 2);
    EXPECT_EQ(shown, "");
}

TEST_F(point_tools, HighlightIsReadSetAndPutBack)
{
    resbuf value = {}, off = {};
    ASSERT_EQ(acedGetVar("HIGHLIGHT", &value), RTNORM);
    EXPECT_EQ(value.restype, RTSHORT);
    EXPECT_EQ(value.resval.rint, 1);
    off.restype = RTSHORT;
    EXPECT_EQ(acedSetVar("HIGHLIGHT", &off), RTNORM);
    EXPECT_EQ(db::int_variable(doc(), "HIGHLIGHT"), 0);
    EXPECT_EQ(acedSetVar("HIGHLIGHT", &value), RTNORM);
    EXPECT_EQ(db::int_variable(doc(), "HIGHLIGHT"), 1);
}

// ---- drags

ads_point base_of_drag;
int drag_from_base(ads_point point, ads_matrix matrix)
{
    for (int i = 0; i < 3; ++i)
        matrix[i][3] = point[i] - base_of_drag[i];
    return RTNORM;
}

struct drag_case {
    const char* name;
    int last_point_type;
    const char* answers;
    int status;
    point3 at;
};

const drag_case DRAGS[] = {
    {"Absolute", RT3DPOINT, "12,34,5", RTNORM, {12, 34, 5}},
    {"RelativeToA3DPoint", RT3DPOINT, "@3,4", RTNORM, {13, 24, 7}},
    {"RelativeToAPoint", RTPOINT, "@3,4", RTNORM, {13, 24, 0}},
    {"Polar", RTPOINT, "@10<90", RTNORM, {10, 30, 0}},
    {"NoPointThenOne", RTPOINT, "nonsense|1,2,3", RTNORM, {1, 2, 3}},
    {"Expression", RTPOINT, "(list 4 5 6)", RTNORM, {4, 5, 6}},
    {"Enter", RTPOINT, "", RTNONE, {}},
    {"Cancel", RTPOINT, "^C", RTCAN, {}},
};

class drag_cases : public point_tools, public testing::WithParamInterface<drag_case>
{
};

TEST_P(drag_cases, StartsAtLastpoint)
{
    const drag_case& row = GetParam();
    resbuf last = {};
    last.restype = static_cast<short>(row.last_point_type);
    const double base[3] = {10, 20, 7};
    std::memcpy(last.resval.rpoint, base, sizeof base);
    std::memcpy(base_of_drag, base, sizeof base);
    ASSERT_EQ(acedSetVar("LASTPOINT", &last), RTNORM);
    answer(row.answers);
    ads_name none = {0, 0};
    ads_point at = {-1, -1, -1};
    EXPECT_EQ(acedDragGen(none, "\nSelect Second Point: ", 0, drag_from_base, at), row.status);
    if (row.status == RTNORM) {
        EXPECT_NEAR(at[0], row.at.x, 1e-9);
        EXPECT_NEAR(at[1], row.at.y, 1e-9);
        EXPECT_NEAR(at[2], row.at.z, 1e-9);
    } else {
        EXPECT_EQ(at[0], -1) << "nothing is written";
    }
    EXPECT_TRUE(has_shown("Select Second Point: "));
}

INSTANTIATE_TEST_SUITE_P(Dragging, drag_cases, testing::ValuesIn(DRAGS), name_of_case());

TEST_F(point_tools, AKeyWordEndsADragAsItEndsOtherPrompts)
{
    ads_name none = {0, 0};
    ads_point at = {-1, -1, -1};
    char word[ADS_TEXT_SIZE];
    answer("R");
    acedInitGet(0, "Rotate");
    EXPECT_EQ(acedDragGen(none, "\nWhere: ", 0, drag_from_base, at), RTKWORD);
    EXPECT_EQ(acedGetInput(word), RTNORM);
    EXPECT_STREQ(word, "Rotate");
    answer("|5,5");
    acedInitGet(RSG_NONULL, "");
    EXPECT_EQ(acedDragGen(none, "\nWhere: ", 0, drag_from_base, at), RTNORM) << "Enter is refused";
    EXPECT_EQ(at[0], 5);
}

// ---- blocks with attributes

class survey_points : public point_tools
{
protected:
    void SetUp() override
    {
        point_tools::SetUp();
        make("0 BLOCK;2 SRVPN1;70 2;10 0,0,0|0 CIRCLE;10 0,0,0;40 1|0 ATTDEF;10 1,0,0;40 1;1 ;2 PT#;3 ;70 0|"
             "0 ATTDEF;10 1,1,0;40 1;1 ;2 ELEV2;3 ;70 0|0 ENDBLK");
        insert(10);
        acdbEntLast(block);
        make("0 LINE;10 0,0,0;11 1,1,0");
    }
    void insert(int x)
    {
        const std::string at = std::to_string(x) + ",10,";
        make("0 INSERT;66 1;2 SRVPN1;10 " + at + "5|0 ATTRIB;10 " + at + "5;40 1;1 7;2 PT#;70 0|0 ATTRIB;10 " +
             at + "5;11 " + at + "5;72 1;40 1;1 100.5;2 ELEV2;70 0|0 SEQEND");
    }
    // Changes groups of a list by `change` and puts it back.
    template <class Change>
    int modify(const ads_name name, Change change)
    {
        const list_ptr list(acdbEntGet(name));
        for (resbuf* node = list.get(); node; node = node->rbnext)
            change(*node);
        return acdbEntMod(list.get());
    }
    ads_name block;
};

TEST_F(survey_points, AttributesAreChangedInTheirPlaces)
{
    ads_name number, elevation;
    ASSERT_EQ(acdbEntNext(block, number), RTNORM);
    ASSERT_EQ(acdbEntNext(number, elevation), RTNORM);
    static char text[] = "101.25";
    EXPECT_EQ(modify(elevation,
                     [](resbuf& node) {
                         if (node.restype == 1) {
                             acad_free(node.resval.rstring);
                             acutNewString(text, &node.resval.rstring);
                         } else if (node.restype == 10 || node.restype == 11) {
                             node.resval.rpoint[2] = 6;
                         } else if (node.restype == 50) {
                             node.resval.rreal = 0.75;
                         }
                     }),
              RTNORM);
    EXPECT_EQ(acdbEntUpd(block), RTNORM);
    EXPECT_EQ(acdbEntUpd(elevation), RTNORM);
    EXPECT_EQ(described(nth(0), {1, 2, 10, 11, 50}),
              "INSERT 2=SRVPN1 10=10,10,5 50=0 (ATTRIB 10=10,10,5 1=7 50=0 11=0,0,0 2=PT#) "
              "(ATTRIB 10=7.92688,8.06869,6 1=101.25 50=0.75 11=10,10,6 2=ELEV2)");
    // The walk is what it was, and the list still begins with the same name.
    EXPECT_EQ(parts_behind(block), "ATTRIB ATTRIB SEQEND ");
    const list_ptr again(acdbEntGet(elevation));
    EXPECT_EQ(again->restype, -1);
    EXPECT_EQ(again->resval.rlname[0], elevation[0]);
}

TEST_F(survey_points, TheReferenceIsChangedWithoutItsAttributes)
{
    EXPECT_EQ(modify(block,
                     [](resbuf& node) {
                         if (node.restype == 10)
                             node.resval.rpoint[2] = 50;
                         else if (node.restype == 50)
                             node.resval.rreal = 1.5;
                     }),
              RTNORM);
    EXPECT_EQ(described(nth(0), {10, 50, 66}),
              "INSERT 66=1 10=10,10,50 50=1.5 (ATTRIB 10=10,10,5 50=0) (ATTRIB 10=7.66667,10,5 50=0)");
}

TEST_F(survey_points, AnAttributeCannotBecomeAnotherKindOrBeErasedAlone)
{
    ads_name number;
    acdbEntNext(block, number);
    const list_ptr list(acdbEntGet(number));
    for (resbuf* node = list.get(); node; node = node->rbnext)
        if (node->restype == RTDXF0 || node->restype == 0) {
            acad_free(node->resval.rstring);
            acutNewString("TEXT", &node->resval.rstring);
        }
    EXPECT_EQ(acdbEntMod(list.get()), RTERROR);
    EXPECT_EQ(acdbEntDel(number), RTERROR);
    EXPECT_EQ(parts_behind(block), "ATTRIB ATTRIB SEQEND ");
}

TEST_F(survey_points, TheWalkGoesOnBehindAnErasedOne)
{
    ads_name end;
    std::memcpy(end, block, sizeof end);
    for (int i = 0; i < 3; ++i)
        ASSERT_EQ(acdbEntNext(end, end), RTNORM);
    acdbEntDel(block);
    EXPECT_EQ(acdbEntGet(end), nullptr);
    ads_name next;
    ASSERT_EQ(acdbEntNext(end, next), RTNORM);
    EXPECT_TRUE(data().is(db::id_of_name(data(), next), "LINE"));
}

// A symbol that was taken apart comes back from the lists that were kept before.
TEST_F(survey_points, AReferenceComesBackWithItsAttributesFromTheirLists)
{
    std::vector<list_ptr> kept;
    ads_name at;
    std::memcpy(at, block, sizeof at);
    do
        kept.emplace_back(acdbEntGet(at));
    while (acdbEntNext(at, at) == RTNORM && !data().is(db::id_of_name(data(), at), "LINE"));
    ASSERT_EQ(kept.size(), 4u); // INSERT, two ATTRIB, SEQEND
    const std::string before = described(nth(0), {1, 2, 10, 11, 40, 50, 66, 72});
    ASSERT_EQ(acedCommand(RTSTR, "_.EXPLODE", RTENAME, block, 0), RTNORM);
    send("ERASE|P|");
    EXPECT_EQ(objects({}), "LINE");
    for (const list_ptr& list : kept)
        EXPECT_EQ(acdbEntMake(list->rbnext), RTNORM);
    EXPECT_EQ(described(nth(1), {1, 2, 10, 11, 40, 50, 66, 72}), before);
    EXPECT_EQ(acdbEntGet(block), nullptr) << "the erased one stays erased: the new one has a name of its own";
    send("U");
    EXPECT_EQ(objects({}), "LINE / CIRCLE / ATTDEF / ATTDEF") << "one step back: the pieces are there again";
}

TEST_F(survey_points, AReferenceFromItsListAloneComesBackWhenTheExpressionEnds)
{
    const list_ptr list(acdbEntGet(block));
    acedCommand(RTSTR, "_.EXPLODE", RTENAME, block, 0);
    send("ERASE|P|");
    EXPECT_EQ(acdbEntMake(list->rbnext), RTNORM);
    EXPECT_EQ(objects({}), "LINE");
    expression_ended();
    EXPECT_EQ(objects({2, 10, 66}), "LINE 10=0,0,0 / INSERT 2=SRVPN1 10=10,10,5");
}

// ---- size

void explode_block_of(int parts)
{
    close_all_documents();
    document& doc = open_document();
    db::database& data = db::database_of(doc);
    db::set_int(doc, "CMDECHO", 0);
    const db::object_id block = db::add_block(data, "BIG");
    for (int i = 0; i < parts; ++i)
        db::append_entity(
            data, block,
            {data.text_group(0, "LINE"), db::point_group(10, i, 0, 0), db::point_group(11, i, 1, 0)}, nullptr);
    std::string error;
    const db::object_id id = db::make_entity(data,
                                             {data.text_group(0, "INSERT"), data.text_group(2, "BIG"),
                                              db::point_group(10, 5, 5, 0), db::real_group(50, 0.5)},
                                             &error);
    ads_name name;
    db::make_name(data, id, name);
    EXPECT_EQ(acedCommand(RTSTR, "_.EXPLODE", RTENAME, name, 0), RTNORM);
    EXPECT_EQ(acdbEntGet(name), nullptr);
}

TEST_F(point_tools, ABigBlockFallsApartInProportionToItsSize)
{
    EXPECT_TRUE(grows_in_proportion(explode_block_of, 100'000));
}

} // namespace

} // namespace host::commandline

// EXPLODE: what block references, polylines, meshes and dimensions fall into, and what a program finds behind
// it.
#include <algorithm>
#include <cstring>

#include "host/commandline/explode_parts.h"
#include "host/commandline/picks.h"
#include "host/commandline/selection.h"
#include "tests/host/commandline/session.h"
#include "tests/host/database/lists.h"

namespace host::commandline
{

namespace
{

using db::testing_lists::list_of;

class exploding : public session
{
protected:
    void TearDown() override
    {
        db::set_int(doc(), "EXPLMODE", 1);
        db::set_int(doc(), "QAFLAGS", 0);
        session::TearDown();
    }
    // Lists parted by '|'.
    void make(std::string_view lists)
    {
        while (!lists.empty()) {
            const std::size_t end = std::min(lists.find('|'), lists.size());
            const list_ptr list = list_of(lists.substr(0, end));
            EXPECT_EQ(acdbEntMake(list.get()), RTNORM) << lists;
            lists.remove_prefix(std::min(end + 1, lists.size()));
        }
    }
    void define(std::string_view name, std::string_view contents, std::string_view base = "0,0,0")
    {
        make("0 BLOCK;2 " + std::string(name) + ";70 0;10 " + std::string(base) + "|" + std::string(contents) +
             "|0 ENDBLK");
    }
    int explode_last()
    {
        ads_name last;
        EXPECT_EQ(acdbEntLast(last), RTNORM);
        return acedCommand(RTSTR, "_.EXPLODE", RTENAME, last, 0);
    }
};

// ---- block references

struct insert_case {
    const char* name;
    const char* contents;
    const char* insert; // group 2 is B
    std::vector<int> codes;
    const char* expected;
};

const insert_case INSERTS[] = {
    {"PlainLine", "0 LINE;10 0,0,0;11 2,1,0", "10 5,5,1", {10, 11}, "LINE 10=5,5,1 11=7,6,1"},
    {"Turned",
     "0 LINE;10 0,0,0;11 2,1,0",
     "10 5,5,0;50 1.5707963267948966",
     {10, 11},
     "LINE 10=5,5,0 11=4,7,0"},
    {"Scaled", "0 CIRCLE;10 1,0,0;40 1", "10 5,5,0;41 2;42 2;43 2", {10, 40}, "CIRCLE 10=7,5,0 40=2"},
    {"ScaledInThePlane", "0 CIRCLE;10 1,0,0;40 1", "10 5,5,0;41 2;42 2", {10, 40}, "CIRCLE 10=7,5,0 40=2"},
    {"Thickness", "0 CIRCLE;39 3;10 1,0,0;40 1", "10 5,5,0;41 2;42 2;43 0.5", {39, 40}, "CIRCLE 39=1.5 40=2"},
    {"MirroredArc",
     "0 ARC;10 0,0,0;40 1;50 0;51 1.5707963267948966",
     "10 5,5,0;41 -1",
     {10, 40, 50, 51, 210},
     "ARC 10=5,5,0 40=1 210=0,0,1 50=1.5708 51=3.14159"},
    {"HalfTurnByTwoMirrors",
     "0 ARC;10 0,0,0;40 1;50 0;51 1.5707963267948966",
     "10 5,5,0;41 -1;42 -1",
     {50, 51},
     "ARC 50=3.14159 51=4.71239"},
    {"CircleUnequal",
     "0 CIRCLE;10 1,0,0;40 1",
     "10 5,5,0;41 3;42 2;43 2",
     {10, 11, 40, 41, 42, 210},
     "ELLIPSE 10=8,5,0 11=3,0,0 210=0,0,1 40=0.666667 41=0 42=6.28319"},
    {"CircleUnequalHigh",
     "0 CIRCLE;10 0,0,0;40 1",
     "10 5,5,0;42 4",
     {10, 11, 40},
     "ELLIPSE 10=5,5,0 11=0,4,0 40=0.25"},
    {"ArcUnequal",
     "0 ARC;10 0,0,0;40 1;50 0;51 1.5707963267948966",
     "10 0,0,0;41 2",
     {11, 40, 41, 42},
     "ELLIPSE 11=2,0,0 40=0.5 41=0 42=1.5708"},
    {"ArcUnequalHigh",
     "0 ARC;10 0,0,0;40 1;50 0;51 1.5707963267948966",
     "10 0,0,0;42 2",
     {11, 40, 41, 42},
     "ELLIPSE 11=0,2,0 40=0.5 41=4.71239 42=6.28319"},
    {"ArcUnequalMirrored",
     "0 ARC;10 0,0,0;40 1;50 0;51 1.5707963267948966",
     "10 0,0,0;41 -2",
     {11, 40, 41, 42, 210},
     "ELLIPSE 11=-2,0,0 210=0,0,1 40=0.5 41=4.71239 42=6.28319"},
    {"EllipseStaysOne",
     "0 ELLIPSE;10 0,0,0;11 2,0,0;40 0.5;41 0;42 3.14159265358979",
     "10 1,1,0;41 2;42 2;43 2",
     {10, 11, 40, 41, 42},
     "ELLIPSE 10=1,1,0 11=4,0,0 40=0.5 41=0 42=3.14159"},
    {"BulgeMirrored",
     "0 LWPOLYLINE;100 AcDbEntity;100 AcDbPolyline;90 2;70 0;10 0,0;42 1;10 2,0",
     "10 0,0,0;41 -1",
     {10, 42},
     "LWPOLYLINE 10=0,0 42=-1 10=-2,0 42=0"},
    {"BulgeUnequal",
     "0 LWPOLYLINE;100 AcDbEntity;100 AcDbPolyline;90 3;70 0;10 0,0;42 1;10 2,0;10 2,2",
     "10 0,0,0;42 2",
     {10, 11, 40},
     "ELLIPSE 10=1,0,0 11=0,2,0 40=0.5 / LINE 10=2,0,0 11=2,4,0"},
    {"BulgeUnequalKeepsItsProperties",
     "0 LWPOLYLINE;100 AcDbEntity;8 FENCE;62 3;6 CONTINUOUS;48 2;370 25;100 AcDbPolyline;90 3;70 0;10 0,0;42 "
     "1;10 "
     "2,0;10 2,2",
     "8 TREES;10 0,0,0;42 2",
     {6, 8, 48, 62, 370},
     "ELLIPSE 8=FENCE 62=3 6=CONTINUOUS 48=2 370=25 / LINE 8=FENCE 62=3 6=CONTINUOUS 48=2 370=25"},
    {"StraightUnequal",
     "0 LWPOLYLINE;100 AcDbEntity;100 AcDbPolyline;90 2;70 0;38 3;10 0,0;10 2,1",
     "10 0,0,1;41 2;43 3",
     {10, 38},
     "LWPOLYLINE 38=10 10=0,0 10=4,1"},
    {"OldPolyline",
     "0 POLYLINE;66 1;70 0;10 0,0,2|0 VERTEX;10 0,0,2|0 VERTEX;10 3,0,2;42 1|0 SEQEND",
     "10 1,1,1;42 -1",
     {10, 42},
     "POLYLINE 10=0,0,3 (VERTEX 10=1,1,3 42=0) (VERTEX 10=4,1,3 42=-1)"},
    {"SpacePolyline",
     "0 POLYLINE;66 1;70 8;10 0,0,0|0 VERTEX;10 0,0,2;70 32|0 VERTEX;10 3,0,4;70 32|0 SEQEND",
     "10 1,1,1;41 2;43 5",
     {10},
     "POLYLINE 10=0,0,0 (VERTEX 10=1,1,11) (VERTEX 10=7,1,21)"},
    {"Text",
     "0 TEXT;10 1,0,0;40 1;1 A",
     "10 0,0,0;41 2;42 2;43 2",
     {10, 40, 41, 50},
     "TEXT 10=2,0,0 40=2 50=0 41=1"},
    {"TextWide", "0 TEXT;10 1,0,0;40 1;1 A", "10 0,0,0;41 3", {10, 40, 41, 51}, "TEXT 10=3,0,0 40=1 41=3 51=0"},
    {"TextBackwards", "0 TEXT;10 1,0,0;40 1;1 A", "10 0,0,0;41 -1", {10, 50, 71}, "TEXT 10=-1,0,0 50=0 71=2"},
    {"TextUpsideDown", "0 TEXT;10 1,0,0;40 1;1 A", "10 0,0,0;42 -1", {10, 50, 71}, "TEXT 10=1,0,0 50=0 71=4"},
    {"TextSlants",
     "0 TEXT;10 0,0,0;40 1;50 0.7853981633974483;1 A",
     "10 0,0,0;41 2",
     {40, 41, 50, 51},
     "TEXT 40=1.26491 50=0.463648 41=1.25 51=-0.643501"},
    {"Solid",
     "0 SOLID;10 0,0,0;11 1,0,0;12 0,1,0;13 1,1,0",
     "10 0,0,0;41 2;42 3",
     {10, 11, 12, 13},
     "SOLID 10=0,0,0 11=2,0,0 12=0,3,0 13=2,3,0"},
    {"OnItsHead", "0 LINE;10 1,0,0;11 2,1,3", "10 0,0,0;210 0,0,-1", {10, 11}, "LINE 10=-1,0,0 11=-2,1,-3"},
    {"UprightPlane",
     "0 CIRCLE;10 1,0,0;40 1",
     "10 0,0,0;210 0,-1,0",
     {10, 40, 210},
     "CIRCLE 10=1,0,0 40=1 210=0,-1,0"},
    {"DefinitionsForAttributes",
     "0 ATTDEF;10 1,1,0;40 1;1 0;2 ELEV2;3 Elevation;70 0|0 ATTDEF;10 1,2,0;40 1;1 fixed;2 KIND;3 ;70 2",
     "66 1;10 5,5,0;41 2;42 2;43 2|0 ATTRIB;10 7,7,0;40 2;1 100.5;2 ELEV2;70 0|0 SEQEND",
     {1, 2, 3, 10, 40, 70},
     "ATTDEF 10=7,7,0 40=2 1=0 3=Elevation 2=ELEV2 70=0 / ATTDEF 10=7,9,0 40=2 1=fixed 3= 2=KIND 70=2"},
    {"LayerColourAndLinetypeStay",
     "0 LINE;8 0;62 0;6 BYBLOCK;10 0,0,0;11 1,0,0|0 LINE;8 ROADS;62 3;10 0,0,0;11 1,0,0",
     "8 TREES;62 5;10 0,0,0",
     {6, 8, 62},
     "LINE 8=0 62=0 6=BYBLOCK / LINE 8=ROADS 62=3"},
    {"Erased", "0 POINT;10 1,1,0", "10 0,0,0;41 1", {10}, "POINT 10=1,1,0"},
};

class insert_cases : public exploding, public testing::WithParamInterface<insert_case>
{
};

TEST_P(insert_cases, FallsIntoTheContentsOfItsBlock)
{
    define("B", GetParam().contents);
    make("0 INSERT;2 B;" + std::string(GetParam().insert));
    EXPECT_EQ(explode_last(), RTNORM);
    EXPECT_EQ(objects(GetParam().codes), GetParam().expected) << shown;
    send("U");
    EXPECT_EQ(count(), 1);
    EXPECT_TRUE(data().is(nth(0), "INSERT"));
}

TEST_P(insert_cases, LooksAsItDidBefore)
{
    define("B", GetParam().contents);
    make("0 INSERT;2 B;" + std::string(GetParam().insert));
    const db::box before = db::extents_of(data(), nth(0));
    explode_last();
    db::box after = db::box::empty();
    for (db::object_id id = nth(0); id; id = db::next_entity(data(), id)) {
        if (data().is(id, "ATTDEF"))
            continue;
        const db::box each = db::extents_of(data(), id);
        after.add(each.low[0], each.low[1], each.low[2]);
        after.add(each.high[0], each.high[1], each.high[2]);
    }
    if (std::string_view(GetParam().name) == "DefinitionsForAttributes")
        return;                                                            // the values are gone
    const bool slants = std::string_view(GetParam().name) == "TextSlants"; // boxes of texts stand upright
    for (int i = 0; i < 3 && !slants; ++i) {
        EXPECT_NEAR(before.low[i], after.low[i], 1e-6);
        EXPECT_NEAR(before.high[i], after.high[i], 1e-6);
    }
}

INSTANTIATE_TEST_SUITE_P(Exploding, insert_cases, testing::ValuesIn(INSERTS), name_of_case());

TEST_F(exploding, TheBasePointOfTheBlockLiesAtTheInsertionPoint)
{
    define("B", "0 POINT;10 3,4,5", "1,1,1");
    make("0 INSERT;2 B;10 10,10,10;41 2;42 2;43 2");
    explode_last();
    EXPECT_EQ(objects({10}), "POINT 10=14,16,18");
}

TEST_F(exploding, ReferencesInsideStayReferences)
{
    define("LEAF", "0 CIRCLE;10 1,0,0;40 1|0 ATTDEF;10 0,0,0;40 1;1 ;2 TAG;3 ;70 0");
    define("TREE",
           "0 INSERT;66 1;2 LEAF;10 1,0,0;50 1.5707963267948966|0 ATTRIB;10 1,1,0;40 1;1 old;2 TAG;70 0|"
           "0 SEQEND|0 INSERT;2 LEAF;10 2,0,0");
    make("0 INSERT;2 TREE;10 10,10,0;41 2;42 2;43 2");
    explode_last();
    EXPECT_EQ(objects({1, 2, 10, 41, 42, 43, 50}),
              "INSERT 2=LEAF 10=12,10,0 41=2 42=2 43=2 50=1.5708 (ATTRIB 10=12,12,0 1=old 50=0 41=1 2=TAG) / "
              "INSERT 2=LEAF 10=14,10,0 41=2 42=2 43=2 50=0");
}

TEST_F(exploding, AReferenceInsideIsMirroredWithItsContents)
{
    define("LEAF", "0 LINE;10 0,0,0;11 2,1,0");
    define("TREE", "0 INSERT;2 LEAF;10 1,0,0;50 0.5");
    for (const char* scales : {"41 -1", "42 -1", "43 -1", "41 -2;42 3;50 1", "41 -1;42 -1;43 -1"}) {
        SCOPED_TRACE(scales);
        make("0 INSERT;2 TREE;10 10,10,0;" + std::string(scales));
        const db::box before = db::extents_of(data(), last_object(data()));
        explode_last();
        const db::box after = db::extents_of(data(), last_object(data()));
        for (int i = 0; i < 3; ++i) {
            EXPECT_NEAR(before.low[i], after.low[i], 1e-9);
            EXPECT_NEAR(before.high[i], after.high[i], 1e-9);
        }
    }
}

// A turned reference under unequal scales would stand aslant, which none can.
TEST_F(exploding, AReferenceThatWouldStandAslantFallsIntoItsContents)
{
    define("LEAF", "0 LINE;10 0,0,0;11 1,1,0|0 POINT;10 1,0,0");
    define("TREE", "0 INSERT;2 LEAF;10 0,0,0;50 0.7853981633974483|0 INSERT;2 LEAF;10 0,0,0");
    make("0 INSERT;2 TREE;10 0,0,0;41 2");
    explode_last();
    EXPECT_EQ(objects({10, 11, 41, 42}), "LINE 10=0,0,0 11=0,1.41421,0 / POINT 10=1.41421,0.707107,0 / "
                                         "INSERT 10=0,0,0 41=2 42=1");
}

TEST_F(exploding, AHatchIsTurnedAndMirroredWithItsBlock)
{
    define("B", "0 HATCH;100 AcDbEntity;8 0;100 AcDbHatch;10 0,0,0;210 0,0,1;2 SOLID;70 1;71 0;91 2;92 2;72 1;"
                "73 1;93 2;10 0,0,0;42 1;10 2,0,0;42 0;97 0;92 1;93 1;72 2;10 1,0,0;40 2;50 0;"
                "51 1.5707963267948966;73 1;97 0;75 0;76 1;98 1;10 1,1,0");
    make("0 INSERT;2 B;10 5,5,1;41 -2;42 2;43 2");
    const db::box before = db::extents_of(data(), nth(0));
    explode_last();
    EXPECT_EQ(objects({10, 40, 42, 50, 51, 73}),
              "HATCH 10=0,0,1 73=1 10=5,5 42=-1 10=1,5 42=0 10=3,5 40=4 50=3.14159 51=4.71239 73=0 10=3,7");
    const db::box after = db::extents_of(data(), nth(0));
    for (int i = 0; i < 2; ++i) {
        EXPECT_NEAR(before.low[i], after.low[i], 1e-6);
        EXPECT_NEAR(before.high[i], after.high[i], 1e-6);
    }
}

// A hatch whose boundary isn't exploded with it would name an object inside a block.
TEST_F(exploding, AHatchNamesTheCopiesOfItsBoundaryOrNone)
{
    const struct {
        const char* boundary;
        bool is_kept;
    } cases[] = {{"inside", true}, {"elsewhere", false}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.boundary);
        const std::string name = c.boundary;
        define(name,
               "0 CIRCLE;10 0,0,0;40 1|0 HATCH;100 AcDbEntity;8 0;100 AcDbHatch;10 0,0,0;210 0,0,1;"
               "2 SOLID;70 1;71 1;91 1;92 1;93 1;72 2;10 0,0;40 1;50 0;51 6.283185307179586;73 1;97 1;75 0;"
               "76 1;98 1;10 0,0");
        define(name + "2", "0 CIRCLE;10 0,0,0;40 1");
        const db::object_id circle = db::first_entity(data(), data().record("BLOCK_RECORD", name));
        const db::object_id hatch = db::next_entity(data(), circle);
        const db::object_id other = db::first_entity(data(), data().record("BLOCK_RECORD", name + "2"));
        db::group_list& groups = data().modify(hatch);
        const auto count =
            std::find_if(groups.begin(), groups.end(), [](const db::group& g) { return g.code == 97; });
        groups.insert(count + 1, db::handle_group(330, data().at(c.is_kept ? circle : other).handle));
        make("0 INSERT;2 " + name + ";10 5,5,0;50 1");
        explode_last();
        const db::object_id copy = last_object(data());
        ASSERT_TRUE(data().is(copy, "HATCH"));
        std::vector<std::uint64_t> named;
        bool is_body = false;
        for (const db::group& g : data().at(copy).groups) {
            is_body = is_body || g.code == 100;
            if (is_body && g.code == 330)
                named.push_back(g.handle);
        }
        const std::vector<std::uint64_t> expected = {data().at(nth(0)).handle};
        EXPECT_EQ(named, c.is_kept ? expected : std::vector<std::uint64_t>{});
        EXPECT_EQ(db::int_of(data().at(copy).groups, 71, -1), c.is_kept);
        EXPECT_EQ(db::int_of(data().at(copy).groups, 97, -1), c.is_kept);
        send("ERASE|ALL|");
    }
}

// ---- what stays whole

struct refused_case {
    const char* name;
    const char* lists; // made before
    const char* why;
};

const refused_case REFUSED[] = {
    {"Line", "0 LINE;10 0,0,0;11 1,0,0", "1 could not be exploded: a LINE is not taken apart."},
    {"Text", "0 TEXT;10 0,0,0;40 1;1 A", "a TEXT is not taken apart."},
    {"Ellipse", "0 ELLIPSE;10 0,0,0;11 1,0,0;40 0.5", "an ELLIPSE is not taken apart."},
    {"Rows", "0 BLOCK;2 B;70 0;10 0,0,0|0 POINT;10 1,1,0|0 ENDBLK|0 INSERT;2 B;10 0,0,0;71 3;45 2",
     "1 could not be exploded: it was minserted."},
    {"Columns", "0 BLOCK;2 B;70 0;10 0,0,0|0 POINT;10 1,1,0|0 ENDBLK|0 INSERT;2 B;10 0,0,0;70 2;44 2",
     "it was minserted."},
    {"External", "0 BLOCK;2 B;70 4;10 0,0,0;1 b.dwg|0 POINT;10 1,1,0|0 ENDBLK|0 INSERT;2 B;10 0,0,0",
     "block B is an external reference."},
    {"ZeroScale", "0 BLOCK;2 B;70 0;10 0,0,0|0 POINT;10 1,1,0|0 ENDBLK|0 INSERT;2 B;10 0,0,0;42 0",
     "a scale of it is zero."},
    {"ZeroScaleInsideAslant",
     "0 BLOCK;2 A;70 0;10 0,0,0|0 POINT;10 1,1,0|0 ENDBLK|0 BLOCK;2 B;70 0;10 0,0,0|0 INSERT;2 A;10 0,0,0;42 "
     "0;50 0.5|"
     "0 ENDBLK|0 INSERT;2 B;10 0,0,0;41 2",
     "a scale of a reference in its block is zero."},
    {"HugeScale", "0 BLOCK;2 B;70 0;10 0,0,0|0 POINT;10 1,1,0|0 ENDBLK|0 INSERT;2 B;10 0,0,0;41 1e200;42 1e200",
     "its scales are too large."},
    {"UnequalHatch",
     "0 BLOCK;2 B;70 0;10 0,0,0|0 POINT;10 1,1,0|0 HATCH;100 AcDbEntity;8 0;100 AcDbHatch;10 0,0,0;2 SOLID;70 "
     "1;"
     "91 0;75 0|0 ENDBLK|0 INSERT;2 B;10 0,0,0;42 2",
     "its block holds a HATCH that can't be drawn at its scales."},
    {"Strange",
     "0 BLOCK;2 B;70 0;10 0,0,0|0 STRANGE;100 AcDbEntity;100 AcDbStrange;10 1,1,0|0 ENDBLK|0 INSERT;2 B;10 "
     "1,0,0",
     "its block holds a STRANGE that can't be drawn at its scales."},
    {"RowsAslant",
     "0 BLOCK;2 A;70 0;10 0,0,0|0 POINT;10 1,1,0|0 ENDBLK|0 BLOCK;2 B;70 0;10 0,0,0|0 INSERT;2 A;10 0,0,0;50 "
     "1;70 2;"
     "44 5|0 ENDBLK|0 INSERT;2 B;10 0,0,0;41 2",
     "its block holds an INSERT that can't be drawn at its scales."},
    {"OneVertex", "0 POLYLINE;66 1;70 0;10 0,0,0|0 VERTEX;10 1,1,0|0 SEQEND",
     "a polyline of one vertex has no parts."},
    {"EmptyMesh", "0 POLYLINE;66 1;70 16;71 2;72 2|0 VERTEX;10 1,1,0;70 64|0 SEQEND",
     "a mesh without faces has no parts."},
};

class refused_cases : public exploding, public testing::WithParamInterface<refused_case>
{
};

TEST_P(refused_cases, StaysWholeAndIsTold)
{
    make(GetParam().lists);
    const std::string before = objects({2, 10, 11, 41, 42, 70, 71});
    const std::string handle_before = handle(0);
    db::set_int(doc(), "CMDECHO", 1);
    EXPECT_EQ(explode_last(), RTNORM);
    EXPECT_TRUE(has_shown(GetParam().why)) << shown;
    EXPECT_EQ(objects({2, 10, 11, 41, 42, 70, 71}), before);
    EXPECT_EQ(handle(0), handle_before);
}

INSTANTIATE_TEST_SUITE_P(Exploding, refused_cases, testing::ValuesIn(REFUSED), name_of_case());

TEST_F(exploding, WithExplmodeOffReferencesOfUnequalScalesStay)
{
    define("B", "0 POINT;10 1,1,0");
    make("0 INSERT;2 B;10 0,0,0;42 2|0 INSERT;2 B;10 0,0,0;42 -1");
    db::set_int(doc(), "EXPLMODE", 0);
    type("X|ALL|");
    EXPECT_TRUE(has_shown("1 could not be exploded: its scales differ, and EXPLMODE is 0.")) << shown;
    EXPECT_EQ(objects({10}), "INSERT 10=0,0,0 / POINT 10=1,-1,0");
}

TEST_F(exploding, WhatLiesOnALockedLayerStays)
{
    define("B", "0 POINT;10 1,1,0");
    send("LAYER|N|SAFE|");
    make("0 INSERT;8 SAFE;2 B;10 0,0,0|0 INSERT;2 B;10 5,0,0");
    send("LAYER|LO|SAFE|");
    type("EXPLODE|ALL|");
    EXPECT_TRUE(has_shown("1 on a locked layer.")) << shown;
    EXPECT_EQ(objects({10}), "INSERT 10=0,0,0 / POINT 10=6,1,0");
}

TEST_F(exploding, APartThatCannotBeDrawnLeavesTheReferenceWhole)
{
    define("B", "0 POINT;10 1,1,0|0 POINT;10 2,2,0");
    make("0 INSERT;2 B;10 0,0,0");
    // As from a damaged drawing: the application of the second point's data is not registered.
    const db::object_id second =
        db::next_entity(data(), db::first_entity(data(), data().record("BLOCK_RECORD", "B")));
    db::group_list& groups = data().modify(second);
    groups.push_back(data().text_group(1001, "NOBODY"));
    groups.push_back(data().text_group(1000, "x"));
    db::set_int(doc(), "CMDECHO", 1);
    explode_last();
    EXPECT_EQ(objects({10}), "INSERT 10=0,0,0");
    EXPECT_TRUE(has_shown("1 could not be exploded: application NOBODY is not registered.")) << shown;
}

// ---- polylines

struct polyline_case {
    const char* name;
    const char* lists;
    std::vector<int> codes;
    const char* expected;
};

const polyline_case POLYLINES[] = {
    {"Lightweight",
     "0 LWPOLYLINE;8 FENCE;62 3;100 AcDbPolyline;90 3;70 0;38 4;39 2;10 0,0;10 2,0;42 1;10 4,0",
     {8, 62, 39, 10, 11, 40, 50, 51},
     "LINE 8=FENCE 62=3 39=2 10=0,0,4 11=2,0,4 / ARC 8=FENCE 62=3 39=2 10=3,0,4 40=1 50=3.14159 51=0"},
    {"ClosedWithRightArc",
     "0 LWPOLYLINE;100 AcDbPolyline;90 2;70 1;10 0,0;10 2,0;42 -1",
     {10, 11, 40, 50, 51},
     "LINE 10=0,0,0 11=2,0,0 / ARC 10=1,0,0 40=1 50=3.14159 51=0"},
    {"OnItsHead",
     "0 LWPOLYLINE;100 AcDbPolyline;90 3;70 0;38 1;10 0,0;10 2,0;42 1;10 4,0;210 0,0,-1",
     {10, 11, 210},
     "LINE 10=0,0,-1 11=-2,0,-1 210=0,0,-1 / ARC 10=3,0,1 210=0,0,-1"},
    {"RepeatedVertex",
     "0 LWPOLYLINE;100 AcDbPolyline;90 3;70 0;10 0,0;42 1;10 0,0;10 2,0",
     {10, 11},
     "LINE 10=0,0,0 11=0,0,0 / LINE 10=0,0,0 11=2,0,0"},
    {"Old",
     "0 POLYLINE;66 1;70 1;10 0,0,2|0 VERTEX;10 0,0,2|0 VERTEX;10 3,0,2|0 VERTEX;10 3,3,2;42 1|0 SEQEND",
     {10, 11, 40},
     "LINE 10=0,0,2 11=3,0,2 / LINE 10=3,0,2 11=3,3,2 / ARC 10=1.5,1.5,2 40=2.12132"},
    {"CurveWithoutItsFrame",
     "0 POLYLINE;66 1;70 4;75 6|0 VERTEX;10 0,0,0;70 16|0 VERTEX;10 1,1,0;70 8|0 VERTEX;10 2,1,0;70 8|"
     "0 VERTEX;10 9,9,0;70 16|0 SEQEND",
     {10, 11},
     "LINE 10=1,1,0 11=2,1,0"},
    {"InSpace",
     "0 POLYLINE;66 1;70 9|0 VERTEX;10 0,0,1;70 32|0 VERTEX;10 3,0,2;70 32|0 VERTEX;10 3,3,3;70 32|0 SEQEND",
     {10, 11},
     "LINE 10=0,0,1 11=3,0,2 / LINE 10=3,0,2 11=3,3,3 / LINE 10=3,3,3 11=0,0,1"},
    {"Mesh",
     "0 POLYLINE;66 1;70 16;71 2;72 3|0 VERTEX;10 0,0,0;70 64|0 VERTEX;10 1,0,0;70 64|0 VERTEX;10 2,0,0;70 64|"
     "0 VERTEX;10 0,1,5;70 64|0 VERTEX;10 1,1,5;70 64|0 VERTEX;10 2,1,5;70 64|0 SEQEND",
     {10, 11, 12, 13},
     "3DFACE 10=0,0,0 11=1,0,0 12=1,1,5 13=0,1,5 / 3DFACE 10=1,0,0 11=2,0,0 12=2,1,5 13=1,1,5"},
    {"FaceMesh",
     "0 POLYLINE;66 1;70 64;71 3;72 3|0 VERTEX;10 0,0,0;70 192|0 VERTEX;10 1,0,0;70 192|0 VERTEX;10 0,1,0;70 "
     "192|"
     "0 VERTEX;8 RED;10 0,0,0;70 128;71 1;72 -2;73 3|0 VERTEX;10 0,0,0;70 128;71 1;72 3|"
     "0 VERTEX;10 0,0,0;70 128;71 2|0 SEQEND",
     {8, 10, 11, 12, 13, 70},
     "3DFACE 8=RED 10=0,0,0 11=1,0,0 12=0,1,0 13=0,1,0 70=2 / LINE 8=0 10=0,0,0 11=0,1,0 / POINT 8=0 10=1,0,0"},
};

class polyline_cases : public exploding, public testing::WithParamInterface<polyline_case>
{
};

TEST_P(polyline_cases, FallsIntoSegments)
{
    make(GetParam().lists);
    EXPECT_EQ(explode_last(), RTNORM);
    EXPECT_EQ(objects(GetParam().codes), GetParam().expected) << shown;
    send("U");
    EXPECT_EQ(count(), 1);
}

INSTANTIATE_TEST_SUITE_P(Exploding, polyline_cases, testing::ValuesIn(POLYLINES), name_of_case());

TEST_F(exploding, LostWidthsAreTold)
{
    make("0 LWPOLYLINE;100 AcDbPolyline;90 2;70 0;43 0.5;10 0,0;10 2,0|"
         "0 POLYLINE;66 1;70 0|0 VERTEX;10 0,0,0;40 1;41 2|0 VERTEX;10 3,0,0|0 SEQEND|"
         "0 LWPOLYLINE;100 AcDbPolyline;90 2;70 0;10 0,0;10 2,0");
    type("EXPLODE|ALL|");
    EXPECT_TRUE(has_shown("Widths of polylines are lost: 2. U brings them back.")) << shown;
    EXPECT_EQ(count(), 3);
}

// ---- dimensions

constexpr const char* PICTURE = "0 BLOCK;2 *D;70 1;10 0,0,0|0 LINE;8 0;62 0;10 0,1,0;11 5,1,0|"
                                "0 POINT;8 DEFPOINTS;10 0,0,0|0 ENDBLK";
constexpr const char* DIMENSION = "0 DIMENSION;8 MEASURES;100 AcDbDimension;2 *D1;10 5,1,0;11 2,1,0;70 1;"
                                  "100 AcDbAlignedDimension;13 0,0,0;14 5,0,0";

TEST_F(exploding, ADimensionFallsIntoWhatIsSeenOfIt)
{
    make(PICTURE);
    make(DIMENSION);
    explode_last();
    EXPECT_EQ(objects({8, 62, 10, 11}), "LINE 8=MEASURES 62=0 10=0,1,0 11=5,1,0 / POINT 8=DEFPOINTS 10=0,0,0");
}

TEST_F(exploding, ADimensionOfABlockGetsAPictureOfItsOwn)
{
    make(PICTURE);
    define("B", DIMENSION);
    make("0 INSERT;2 B;10 100,0,0;41 2;42 2;43 2");
    explode_last();
    EXPECT_EQ(objects({2, 8, 13, 14}), "DIMENSION 8=MEASURES 2=*D2 13=100,0,0 14=110,0,0");
    const db::box seen = db::extents_of(data(), nth(0));
    EXPECT_DOUBLE_EQ(seen.low[0], 100);
    EXPECT_DOUBLE_EQ(seen.high[0], 110);
    EXPECT_DOUBLE_EQ(seen.high[1], 2);
    const db::object_id first = db::first_entity(data(), data().record("BLOCK_RECORD", "*D1"));
    EXPECT_EQ(described(first, {10, 11}), "LINE 10=0,1,0 11=5,1,0");
}

TEST_F(exploding, ALeaderOfABlockNamesTheCopyOfItsText)
{
    define("B", "0 MTEXT;100 AcDbMText;10 5,5,0;40 1;1 A|0 LEADER;100 AcDbLeader;3 STANDARD;71 1;76 2;10 0,0,0;"
                "10 5,5,0");
    const db::object_id text = db::first_entity(data(), data().record("BLOCK_RECORD", "B"));
    const db::object_id leader = db::next_entity(data(), text);
    data().modify(leader).push_back(db::handle_group(340, data().at(text).handle));
    make("0 INSERT;2 B;10 1,0,0");
    explode_last();
    ASSERT_EQ(objects({10}), "MTEXT 10=6,5,0 / LEADER 10=1,0,0 10=6,5,0");
    EXPECT_EQ(db::find(data().at(nth(1)).groups, 340)->handle, data().at(nth(0)).handle);
}

// The block that was made for the dimension goes again too.
TEST_F(exploding, ADimensionThatCannotBeDrawnLeavesNoPicture)
{
    make(PICTURE);
    define("B", std::string(DIMENSION) + "|0 POINT;10 1,1,0");
    make("0 INSERT;2 B;10 100,0,0|0 INSERT;2 B;10 200,0,0");
    const db::object_id point =
        db::next_entity(data(), db::first_entity(data(), data().record("BLOCK_RECORD", "B")));
    data().modify(point).push_back(data().text_group(1001, "NOBODY"));
    data().modify(point).push_back(data().text_group(1000, "x"));
    type("EXPLODE|ALL|");
    EXPECT_TRUE(has_shown("2 could not be exploded: application NOBODY is not registered.")) << shown;
    EXPECT_EQ(data().record("BLOCK_RECORD", "*D2"), 0u);
    EXPECT_EQ(data().record("BLOCK_RECORD", "*D3"), 0u);
    EXPECT_NE(data().record("BLOCK_RECORD", "*D1"), 0u);
}

// ---- programs

struct ids {
    static std::string behind(const db::database& data, ads_name from)
    {
        std::string out;
        while (acdbEntNext(from, from) == RTNORM)
            out += std::string(data.type_of(db::id_of_name(data, from))) + " ";
        return out;
    }
};

// What a program does that wants the pieces: it notes the last sub-object, explodes, and walks on from there.
TEST_F(exploding, ThePiecesLieBehindTheFormerLastObjectInTheOrderOfTheBlock)
{
    define("B", "0 CIRCLE;10 0,0,0;40 1|0 ATTDEF;10 0,0,0;40 1;1 ;2 TAG;3 ;70 0|"
                "0 POLYLINE;66 1;70 0|0 VERTEX;10 0,0,0|0 VERTEX;10 1,0,0|0 SEQEND|0 LINE;10 0,0,0;11 1,0,0");
    make("0 LINE;10 0,0,0;11 1,0,0|0 INSERT;66 1;2 B;10 0,0,0|0 ATTRIB;10 0,0,0;40 1;1 x;2 TAG;70 0|0 SEQEND");
    ads_name block, noted, next;
    acdbEntLast(block);
    std::memcpy(noted, block, sizeof noted);
    while (acdbEntNext(noted, next) == RTNORM)
        std::memcpy(noted, next, sizeof noted);
    EXPECT_TRUE(data().is(db::id_of_name(data(), noted), "SEQEND"));
    EXPECT_EQ(acedCommand(RTSTR, "_.EXPLODE", RTENAME, block, 0), RTNORM);
    EXPECT_EQ(acdbEntGet(block), nullptr);
    EXPECT_EQ(ids::behind(data(), noted), "CIRCLE ATTDEF POLYLINE VERTEX VERTEX SEQEND LINE ");
}

TEST_F(exploding, TakesASetANameWithAndWithoutEnterAndSeveralNames)
{
    define("B", "0 POINT;10 0,0,0");
    ads_name name[3], set;
    const auto fresh = [&] {
        send("ERASE|ALL|");
        make("0 INSERT;2 B;10 1,0,0|0 INSERT;2 B;10 2,0,0|0 INSERT;2 B;10 3,0,0");
        for (int i = 0; i < 3; ++i)
            db::make_name(data(), nth(i), name[i]);
    };
    fresh();
    EXPECT_EQ(acedCommand(RTSTR, "_.EXPLODE", RTENAME, name[1], 0), RTNORM);
    EXPECT_EQ(objects({10}), "INSERT 10=1,0,0 / INSERT 10=3,0,0 / POINT 10=2,0,0");
    fresh();
    EXPECT_EQ(acedCommand(RTSTR, "_.EXPLODE", RTENAME, name[1], RTSTR, "", 0), RTNORM);
    EXPECT_EQ(objects({10}), "INSERT 10=1,0,0 / INSERT 10=3,0,0 / POINT 10=2,0,0");
    fresh();
    EXPECT_EQ(acedCommand(RTSTR, "_.EXPLODE", RTENAME, name[2], RTENAME, name[0], RTSTR, "", 0), RTNORM);
    EXPECT_EQ(objects({10}), "INSERT 10=2,0,0 / POINT 10=3,0,0 / POINT 10=1,0,0");
    fresh();
    ASSERT_EQ(acedSSAdd(name[1], nullptr, set), RTNORM);
    acedSSAdd(name[2], set, set);
    EXPECT_EQ(acedCommand(RTSTR, "_.EXPLODE", RTPICKS, set, 0), RTNORM);
    EXPECT_EQ(objects({10}), "INSERT 10=1,0,0 / POINT 10=2,0,0 / POINT 10=3,0,0");
    acedSSFree(set);
    fresh();
    EXPECT_EQ(acedCommand(RTSTR, "_.EXPLODE", RTENAME, name[0], RTSTR, "_.MOVE", RTENAME, name[1], RTSTR, "",
                          RTSTR, "0,0", RTSTR, "0,7", 0),
              RTNORM);
    EXPECT_EQ(objects({10}), "INSERT 10=2,7,0 / INSERT 10=3,0,0 / POINT 10=1,0,0");
}

TEST_F(exploding, WhatIsNamedTwiceIsExplodedOnce)
{
    define("B", "0 POINT;10 0,0,0");
    make("0 INSERT;2 B;10 1,0,0");
    ads_name name;
    acdbEntLast(name);
    EXPECT_EQ(acedCommand(RTSTR, "_.EXPLODE", RTENAME, name, RTENAME, name, 0), RTNORM);
    EXPECT_EQ(objects({10}), "POINT 10=1,0,0");
}

TEST_F(exploding, AsksUntilEnterWhereQaflagsSaysSo)
{
    define("B", "0 POINT;10 0,0,0");
    make("0 INSERT;2 B;10 1,0,0|0 INSERT;2 B;10 2,0,0");
    db::set_int(doc(), "QAFLAGS", 1);
    send("EXPLODE|" + handle(0));
    EXPECT_EQ(objects({10}), "INSERT 10=1,0,0 / INSERT 10=2,0,0");
    send(handle(1) + "|");
    EXPECT_EQ(objects({10}), "POINT 10=1,0,0 / POINT 10=2,0,0");
}

TEST_F(exploding, ThePiecesAreThePreviousSelection)
{
    define("B", "0 POINT;10 0,0,0|0 POINT;10 1,0,0");
    make("0 LINE;10 0,0,0;11 1,0,0|0 INSERT;2 B;10 5,0,0");
    explode_last();
    EXPECT_EQ(previous_selection(doc()), (object_list{nth(1), nth(2)}));
    explode_last(); // a POINT: nothing is exploded
    EXPECT_EQ(previous_selection(doc()), object_list{nth(2)});
}

TEST_F(exploding, AMissAndACancelLeaveEverything)
{
    make("0 LWPOLYLINE;100 AcDbPolyline;90 2;70 0;10 0,0;10 2,0");
    EXPECT_EQ(send("EXPLODE|50,50"), RTNORM);
    type("EXPLODE|^C");
    EXPECT_EQ(objects({10}), "LWPOLYLINE 10=0,0 10=2,0");
}

TEST_F(exploding, InPaperSpaceThePiecesStayThere)
{
    define("B", "0 POINT;10 1,1,0");
    make("0 INSERT;67 1;2 B;10 5,0,0");
    const db::object_id insert = db::first_entity(data(), data().paper_space());
    ASSERT_TRUE(data().is(insert, "INSERT"));
    ads_name name;
    db::make_name(data(), insert, name);
    acedCommand(RTSTR, "_.EXPLODE", RTENAME, name, 0);
    EXPECT_EQ(count(), 0);
    EXPECT_EQ(described(db::first_entity(data(), data().paper_space()), {10}), "POINT 10=6,1,0");
}

TEST_F(exploding, ABlockThatHoldsItselfIsRefused)
{
    define("B", "0 POINT;10 0,0,0|0 LINE;10 0,0,0;11 1,0,0");
    // No program can make it so; a file can.
    define("LEAF", "0 POINT;10 0,0,0");
    define("C", "0 INSERT;2 LEAF;10 0,0,0;50 1");
    const db::object_id inner = db::first_entity(data(), data().record("BLOCK_RECORD", "C"));
    *db::find(data().modify(inner), 2) = data().text_group(2, "C");
    make("0 INSERT;2 C;10 0,0,0;41 2");
    db::set_int(doc(), "CMDECHO", 1);
    explode_last();
    EXPECT_EQ(objects({2}), "INSERT 2=C");
    EXPECT_TRUE(has_shown("could not be exploded: its block holds itself.")) << shown;
}

// Two references in each block, each aslant in the next: more with each level than any drawing holds. Also when
// the innermost block is empty, and nothing is made at all.
TEST_F(exploding, BlocksThatHoldTooManyAreRefused)
{
    for (const char* innermost : {"0 POINT;10 1,0,0", "0 INSERT;2 BARE;10 0,0,0;50 0.3"}) {
        SCOPED_TRACE(innermost);
        send("ERASE|ALL|");
        make("0 BLOCK;2 BARE;70 0;10 0,0,0|0 ENDBLK");
        define("L0", innermost);
        for (int level = 1; level <= 24; ++level) {
            const std::string inner = "0 INSERT;2 L" + std::to_string(level - 1) + ";10 1,0,0;42 2;50 0.3";
            define("L" + std::to_string(level), inner + "|" + inner);
        }
        make("0 INSERT;2 L4;10 0,0,0;41 2|0 INSERT;2 L24;10 0,0,0;41 2");
        EXPECT_EQ(explode_object(data(), nth(0), true, 1000).refusal, "");
        const explosion many = explode_object(data(), nth(1), true, 1000);
        EXPECT_EQ(many.refusal, "it has too many parts");
        EXPECT_TRUE(many.parts.empty());
    }
}

} // namespace

} // namespace host::commandline

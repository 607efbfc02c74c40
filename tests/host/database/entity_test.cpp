#include "host/core/heap.h"
#include "tests/host/database/lists.h"

namespace host::db
{
namespace
{

using namespace testing_lists;
using Entities = Drawing;

constexpr const char* HEAD = ";100 AcDbEntity;67 0;410 Model;8 0;";

struct kind_case {
    const char *made, *type, *rest; // the list given; the type, and what is got behind the common groups
};

const kind_case KINDS[] = {
    {"0 LINE;10 1,2,3;11 4,5,6", "LINE", "100 AcDbLine;10 1,2,3;11 4,5,6;210 0,0,1"},
    {"0 line;11 4,5,6;39 2;10 1,2,3", "LINE", "100 AcDbLine;39 2;10 1,2,3;11 4,5,6;210 0,0,1"},
    {"0 POINT;10 1,2,3", "POINT", "100 AcDbPoint;10 1,2,3;210 0,0,1;50 0"},
    {"0 CIRCLE;10 1,2,3;40 5", "CIRCLE", "100 AcDbCircle;10 1,2,3;40 5;210 0,0,1"},
    {"0 ARC;10 1,2,3;40 5;50 0;51 1.5", "ARC",
     "100 AcDbCircle;10 1,2,3;40 5;210 0,0,1;100 AcDbArc;50 0;51 1.5"},
    {"0 TEXT;1 Fence;10 1,2,0;40 2.5", "TEXT",
     "100 AcDbText;10 1,2,0;40 2.5;1 Fence;50 0;41 1;51 0;7 Standard;71 0;72 0;11 0,0,0;210 0,0,1;100 AcDbText;"
     "73 0"},
    {"0 LWPOLYLINE;100 AcDbEntity;100 AcDbPolyline;90 2;70 1;10 1,2;10 3,4;42 0.5", "LWPOLYLINE",
     "100 AcDbPolyline;90 2;70 1;43 0;38 0;39 0;10 1,2,0;40 0;41 0;42 0;10 3,4,0;40 0;41 0;42 0.5;210 0,0,1"},
    {"0 LWPOLYLINE;90 7;43 2;38 9;10 1,2;10 3,4", "LWPOLYLINE",
     "100 AcDbPolyline;90 2;70 0;43 2;38 9;39 0;10 1,2,0;40 2;41 2;42 0;10 3,4,0;40 2;41 2;42 0;210 0,0,1"},
    {"0 LWPOLYLINE;90 2;10 1,2;40 1;41 2;10 3,4", "LWPOLYLINE",
     "100 AcDbPolyline;90 2;70 0;38 0;39 0;10 1,2,0;40 1;41 2;42 0;10 3,4,0;40 0;41 0;42 0;210 0,0,1"},
    {"0 ELLIPSE;10 0,0,0;11 2,0,0;40 0.5", "ELLIPSE",
     "100 AcDbEllipse;10 0,0,0;11 2,0,0;210 0,0,1;40 0.5;41 0;42 6.283185307"},
    {"0 SOLID;10 0,0,0;11 1,0,0;12 0,1,0", "SOLID",
     "100 AcDbTrace;10 0,0,0;11 1,0,0;12 0,1,0;13 0,1,0;210 0,0,1"},
    {"0 TRACE;10 0,0,0;11 1,0,0;12 0,1,0;13 1,1,0", "TRACE",
     "100 AcDbTrace;10 0,0,0;11 1,0,0;12 0,1,0;13 1,1,0;210 0,0,1"},
    {"0 3DFACE;10 0,0,0;11 1,0,0;12 0,1,5;13 1,1,0", "3DFACE",
     "100 AcDbFace;10 0,0,0;11 1,0,0;12 0,1,5;13 1,1,0;70 0"},
    {"0 MTEXT;100 AcDbEntity;100 AcDbMText;10 1,2,0;40 3;3 first;3 second;1 last", "MTEXT",
     "100 AcDbMText;10 1,2,0;40 3;71 1;72 5;3 first;3 second;1 last;7 Standard;210 0,0,1;50 0;73 1;44 1"},
    {"0 SPLINE;100 AcDbEntity;100 AcDbSpline;70 8;71 3;72 0;73 0;74 2;11 0,0,0;11 1,1,0", "SPLINE",
     "100 AcDbSpline;70 8;71 3;72 0;73 0;74 2;11 0,0,0;11 1,1,0"},
    {"0 RAY;10 0,0,0;11 1,0,0", "RAY", "100 AcDbRay;10 0,0,0;11 1,0,0"},
    {"0 XLINE;10 0,0,0;11 1,0,0", "XLINE", "100 AcDbXline;10 0,0,0;11 1,0,0"},
    {"0 ATTDEF;10 0,0,0;1 5;2 TAG;3 prompt;70 1;40 0.2", "ATTDEF",
     "100 AcDbText;10 0,0,0;40 0.2;1 5;50 0;41 1;51 0;7 Standard;71 0;72 0;11 0,0,0;210 0,0,1;"
     "100 AcDbAttributeDefinition;3 prompt;2 TAG;70 1;73 0;74 0"},
    {"0 DIMENSION;2 *D1;10 1,1,0;11 0,0,0;70 33;13 0,0,0;14 5,0,0", "DIMENSION",
     "100 AcDbDimension;2 *D1;10 1,1,0;11 0,0,0;70 33;1 ;210 0,0,1;3 Standard;100 AcDbAlignedDimension;13 "
     "0,0,0;"
     "14 5,0,0"},
    {"0 LEADER;10 0,0,0;10 5,5,0;71 1", "LEADER", "100 AcDbLeader;10 0,0,0;10 5,5,0;71 1"},
    {"0 SURFPATCH;100 AcDbEntity;100 AcDbSurfPatch;90 3;10 1,1,1", "SURFPATCH",
     "100 AcDbSurfPatch;90 3;10 1,1,1"},
};

TEST_F(Entities, EachKindIsGotInItsStoredForm)
{
    for (const kind_case& each : KINDS)
        EXPECT_EQ(got(made(each.made)), "0 " + std::string(each.type) + HEAD + each.rest) << each.made;
}

TEST_F(Entities, ListsThatAreMadeAgainAreTheSame)
{
    for (const kind_case& each : KINDS) {
        const std::string first = got(made(each.made));
        const object_id again = made(first);
        EXPECT_EQ(got(again), first);
    }
}

TEST_F(Entities, MissingGroupMakesNothing)
{
    const char* lists[] = {
        "0 LINE;10 1,2,3",           "0 LINE;11 1,2,3",        "0 POINT;8 0",
        "0 CIRCLE;10 0,0,0",         "0 ARC;10 0,0,0;40 1",    "0 TEXT;10 0,0,0;1 a",
        "0 TEXT;10 0,0,0;40 1",      "0 LWPOLYLINE;90 2;70 0", "0 INSERT;10 0,0,0",
        "0 INSERT;2 NONE;10 0,0,0",  "0 SURFPATCH;10 0,0,0",   "8 0;10 1,1,1",
        "0 SOLID;10 0,0,0;11 1,1,1", "0 POINT;8 ;10 0,0,0",    "0 ;10 0,0,0",
    };
    const std::size_t before = db.size();
    for (const char* list : lists)
        EXPECT_EQ(make(list), RTERROR) << list;
    EXPECT_EQ(acdbEntMake(nullptr), RTERROR);
    EXPECT_EQ(last(), 0u);
    EXPECT_EQ(db.size(), before);
}

TEST_F(Entities, NumbersThatAreNotFiniteMakeAndChangeNothing)
{
    const char* lists[] = {
        "0 LINE;10 nan,0,0;11 1,1,1",
        "0 LINE;10 0,0,inf;11 1,1,1",
        "0 CIRCLE;10 0,0,0;40 inf",
        "0 ARC;10 0,0,0;40 1;50 nan;51 1",
        "0 LINE;10 0,0,0;11 1,1,1;48 -inf",
        "0 LWPOLYLINE;100 AcDbEntity;8 0;100 AcDbPolyline;90 2;70 0;10 0,0;42 nan;10 5,0",
    };
    for (const char* list : lists)
        EXPECT_EQ(make(list), RTERROR) << list;
    EXPECT_EQ(last(), 0u);
    // Of a sequence nothing is made when one of its parts is bad.
    make("0 POLYLINE;66 1;70 0");
    make("0 VERTEX;10 0,0,0");
    EXPECT_EQ(make("0 VERTEX;10 inf,0,0"), RTERROR);
    EXPECT_EQ(make("0 SEQEND"), RTERROR);
    EXPECT_EQ(last(), 0u);

    const object_id id = made("0 LINE;10 0,0,0;11 1,1,1");
    const std::string before = got(id);
    EXPECT_EQ(change(id, "0 LINE;10 0,0,0;11 inf,1,1"), RTERROR);
    EXPECT_EQ(got(id), before);
    std::string error;
    EXPECT_FALSE(check_numbers({point_group(10, 0, 0, 0), real_group(40, HUGE_VAL)}, &error));
    EXPECT_EQ(error, "group 40 is no finite number");
    EXPECT_TRUE(check_numbers({point_group(10, 0, 1e308), real_group(40, -1e308)}, nullptr));
}

TEST_F(Entities, ErrorNamesTheGroupThatIsMissing)
{
    std::string error;
    EXPECT_EQ(make_entity(db, {db.text_group(0, "LINE"), point_group(10, 0, 0, 0)}, &error), 0u);
    EXPECT_EQ(error, "LINE needs group 11");
}

TEST_F(Entities, CommonGroupsComeInFrontWhereverTheyStood)
{
    EXPECT_EQ(got(made("0 POINT;10 1,2,3;48 2;62 3;8 FENCE;6 DASHED")),
              "0 POINT;100 AcDbEntity;67 0;410 Model;8 FENCE;62 3;6 DASHED;48 2;100 AcDbPoint;10 1,2,3;210 "
              "0,0,1;50 0");
    EXPECT_NE(db.record("LAYER", "fence"), 0u);
    EXPECT_NE(db.record("LTYPE", "dashed"), 0u);
}

TEST_F(Entities, NameIsFirstAndLeadsBack)
{
    const object_id id = made("0 POINT;10 1,2,3");
    ads_name name;
    make_name(db, id, name);
    const list_ptr list(acdbEntGet(name));
    ASSERT_TRUE(list);
    EXPECT_EQ(list->restype, -1);
    EXPECT_EQ(id_of_name(db, list->resval.rlname), id);
    const resbuf* owner = rb_find_code(list.get(), 330);
    ASSERT_TRUE(owner);
    EXPECT_EQ(id_of_name(db, owner->resval.rlname), db.model_space());
}

TEST_F(Entities, HandleLeadsToTheObject)
{
    const object_id id = made("0 POINT;10 1,2,3");
    char text[20];
    std::snprintf(text, sizeof text, "%llx", static_cast<unsigned long long>(db.at(id).handle));
    ads_name name;
    ASSERT_EQ(acdbHandEnt(text, name), RTNORM);
    EXPECT_EQ(id_of_name(db, name), id);
    for (const char* wrong : {"", "FFFFFF", "zz", "1F ", "0"})
        EXPECT_EQ(acdbHandEnt(wrong, name), RTERROR) << wrong;
}

TEST_F(Entities, PaperSpaceIsNamedByEitherGroup)
{
    for (const char* list : {"0 POINT;67 1;10 1,2,3", "0 POINT;410 layout1;10 1,2,3"}) {
        ASSERT_EQ(make(list), RTNORM);
        const object_id id = first_entity(db, db.paper_space());
        ASSERT_NE(id, 0u);
        EXPECT_EQ(got(id).substr(0, 47), "0 POINT;100 AcDbEntity;67 1;410 Layout1;8 0;100");
        erase(id);
    }
    EXPECT_EQ(last(), 0u);
}

TEST_F(Entities, ErasedNameGivesNothingUntilItComesBack)
{
    const object_id id = made("0 POINT;10 1,2,3");
    EXPECT_EQ(erase(id), RTNORM);
    EXPECT_EQ(got(id), "");
    EXPECT_EQ(change(id, "0 POINT;10 1,1,1"), RTERROR);
    EXPECT_EQ(erase(id), RTNORM);
    EXPECT_NE(got(id), "");
}

// ---- POLYLINE and INSERT

constexpr const char* VERTICES[] = {"0 POLYLINE;70 1", "0 VERTEX;10 1,1,0", "0 VERTEX;10 2,1,0;42 0.5",
                                    "0 SEQEND"};

TEST_F(Entities, PolylineIsMadeWithItsVertices)
{
    for (const char* list : VERTICES)
        EXPECT_EQ(make(list), RTNORM) << list;
    const object_id id = last();
    ASSERT_TRUE(db.is(id, "POLYLINE"));
    EXPECT_EQ(got(id),
              "0 POLYLINE;100 AcDbEntity;67 0;410 Model;8 0;100 AcDb2dPolyline;66 1;10 0,0,0;70 1;40 0;"
              "41 0;210 0,0,1;71 0;72 0;73 0;74 0;75 0");
    const object_id vertex = next(next(id));
    EXPECT_EQ(got(vertex),
              "0 VERTEX;100 AcDbEntity;67 0;410 Model;8 0;100 AcDbVertex;100 AcDb2dVertex;10 2,1,0;40 0;"
              "41 0;42 0.5;70 0;50 0");
    const object_id end = next(vertex);
    EXPECT_EQ(got(end), "0 SEQEND;100 AcDbEntity;67 0;410 Model;8 0;-2 #" + std::to_string(id));
}

TEST_F(Entities, VerticesFollowTheKindOfTheirPolyline)
{
    make("0 POLYLINE;70 8;8 PIPE");
    make("0 VERTEX;10 1,1,5");
    make("0 SEQEND");
    const object_id id = last();
    EXPECT_NE(got(id).find("AcDb3dPolyline"), std::string::npos);
    EXPECT_EQ(got(next(id)),
              "0 VERTEX;100 AcDbEntity;67 0;410 Model;8 PIPE;100 AcDbVertex;100 AcDb3dPolylineVertex;"
              "10 1,1,5;70 32");
}

TEST_F(Entities, NextWalksIntoWhatAnObjectOwns)
{
    make("0 POINT;10 0,0,0");
    for (const char* list : VERTICES)
        make(list);
    const object_id line = made("0 LINE;10 0,0,0;11 1,1,1");
    make("0 CIRCLE;10 0,0,0;40 1");
    EXPECT_EQ(walk(0), "POINT POLYLINE VERTEX VERTEX SEQEND LINE CIRCLE");
    EXPECT_EQ(erase(line), RTNORM);
    EXPECT_EQ(walk(0), "POINT POLYLINE VERTEX VERTEX SEQEND CIRCLE");
    EXPECT_EQ(walk(line), "CIRCLE") << "an erased object still has a place";
}

TEST_F(Entities, PartsCannotBeErasedAlone)
{
    for (const char* list : VERTICES)
        make(list);
    const object_id id = last(), vertex = next(id);
    EXPECT_EQ(erase(vertex), RTERROR);
    EXPECT_EQ(erase(next(next(vertex))), RTERROR); // SEQEND
    EXPECT_EQ(erase(id), RTNORM);
    EXPECT_EQ(got(vertex), "") << "parts go with what they belong to";
    EXPECT_EQ(last(), 0u);
}

TEST_F(Entities, ListWithoutALayerGoesOnTheCurrentOne)
{
    make("0 LAYER;2 FENCE;70 0");
    db.set_header("$CLAYER", {db.text_group(8, "FENCE")});
    const auto layer = [&](object_id id) { return std::string(db.text_of(db.at(id).groups, 8)); };
    EXPECT_EQ(layer(made("0 LINE;10 0,0,0;11 1,1,1")), "FENCE");
    EXPECT_EQ(layer(made("0 LINE;8 HEDGE;10 0,0,0;11 1,1,1")), "HEDGE");
    for (const char* list : {"0 POLYLINE;8 HEDGE", "0 VERTEX;10 0,0,0", "0 SEQEND",
                             "0 BLOCK;2 TREE;70 0;10 0,0,0", "0 POINT;10 0,0,0", "0 ENDBLK"})
        EXPECT_EQ(make(list), RTNORM) << list;
    EXPECT_EQ(layer(next(last())), "HEDGE") << "a part follows what it belongs to";
    EXPECT_EQ(layer(first_entity(db, db.record("BLOCK_RECORD", "TREE"))), "FENCE");
}

TEST_F(Entities, WrongSequenceFailsAndDropsWhatIsPending)
{
    const struct {
        std::vector<const char*> before; // taken
        const char* wrong;
    } cases[] = {
        {{}, "0 VERTEX;10 1,1,0"},
        {{}, "0 SEQEND"},
        {{}, "0 ATTRIB;10 0,0,0;40 1;1 a;2 T;70 0"},
        {{}, "0 ENDBLK"},
        {{"0 POLYLINE"}, "0 SEQEND"},
        {{"0 POLYLINE", "0 VERTEX;10 1,1,0"}, "0 LINE;10 0,0,0;11 1,1,1"},
        {{"0 POLYLINE", "0 VERTEX;10 1,1,0"}, "0 VERTEX;40 1"},
        {{"0 POLYLINE"}, "0 ATTRIB;10 0,0,0;40 1;1 a;2 T;70 0"},
        {{"0 BLOCK;2 B;70 0;10 0,0,0"}, "0 BLOCK;2 C;70 0;10 0,0,0"},
        {{"0 BLOCK;2 B;70 0;10 0,0,0", "0 POINT;10 0,0,0"}, "0 LINE;10 0,0,0"},
        {{"0 BLOCK;2 B;70 0;10 0,0,0", "0 INSERT;2 B;10 0,0,0"}, "0 ENDBLK"},
        {{}, "0 BLOCK;2 *Model_Space;70 0;10 0,0,0"},
        {{}, "0 BLOCK;70 0;10 0,0,0"},
    };
    const std::size_t before = db.size();
    for (const auto& each : cases) {
        for (const char* list : each.before)
            EXPECT_EQ(make(list), RTNORM) << list;
        EXPECT_EQ(make(each.wrong), RTERROR) << each.wrong;
        EXPECT_EQ(make("0 SEQEND"), RTERROR) << "still pending after " << each.wrong;
    }
    EXPECT_EQ(db.size(), before);
}

// ---- blocks

struct Blocks : Entities {
    void define(const char* name, std::vector<const char*> contents, const char* rest = "70 0;10 0,0,0")
    {
        EXPECT_EQ(make("0 BLOCK;2 " + std::string(name) + ';' + rest), RTNORM);
        for (const char* list : contents)
            EXPECT_EQ(make(list), RTNORM) << list;
        EXPECT_EQ(make("0 ENDBLK"), RTNORM);
    }
    std::string contents(const char* name) const
    {
        std::string types;
        for (object_id at = first_entity(db, db.record("BLOCK_RECORD", name)); at; at = next_entity(db, at))
            types += std::string(db.type_of(at)) + ' ';
        return types;
    }
    std::string found(const char* table, const char* name) const
    {
        return shown(list_ptr(acdbTblSearch(table, name, 0)).get(), false);
    }
};

TEST_F(Blocks, DefinitionIsThereAfterItsEnd)
{
    make("0 BLOCK;2 TREE;70 0;10 1,2,0");
    make("0 CIRCLE;10 0,0,0;40 1");
    EXPECT_EQ(found("BLOCK", "TREE"), "");
    make("0 POINT;10 0,0,0");
    make("0 ENDBLK");
    const object_id first = first_entity(db, db.record("BLOCK_RECORD", "tree"));
    EXPECT_EQ(found("BLOCK", "Tree"), "0 BLOCK;2 TREE;70 0;10 1,2,0;-2 #" + std::to_string(first));
    EXPECT_EQ(contents("TREE"), "CIRCLE POINT ");
    EXPECT_EQ(last(), 0u) << "a definition draws nothing";
    EXPECT_EQ(walk(first), "POINT");
}

TEST_F(Blocks, NewDefinitionReplacesTheOldOne)
{
    define("ZENTSETV",
           {"0 ATTDEF;10 0,0,0;1 B;2 bearoraz;3 prompt;70 1;40 0.2",
            "0 ATTDEF;10 0,0,0;1 1;2 ppon;3 prompt;70 1;40 0.2"},
           "70 2;10 0,0,0");
    const object_id record = db.record("BLOCK_RECORD", "ZENTSETV");
    define("ZENTSETV", {"0 ATTDEF;10 0,0,0;1 A;2 bearoraz;3 prompt;70 1;40 0.2"}, "70 2;10 5,0,0");
    EXPECT_EQ(db.record("BLOCK_RECORD", "ZENTSETV"), record);
    EXPECT_EQ(contents("ZENTSETV"), "ATTDEF ");
    EXPECT_EQ(db.text_of(db.at(first_entity(db, record)).groups, 1), "A");
    EXPECT_EQ(found("BLOCK", "ZENTSETV").substr(0, 36), "0 BLOCK;2 ZENTSETV;70 2;10 5,0,0;-2 ");
}

TEST_F(Blocks, FailedDefinitionLeavesTheOldOne)
{
    define("TREE", {"0 POINT;10 0,0,0"});
    make("0 BLOCK;2 TREE;70 0;10 0,0,0");
    EXPECT_EQ(make("0 LINE;10 0,0,0"), RTERROR);
    EXPECT_EQ(make("0 ENDBLK"), RTERROR);
    EXPECT_EQ(contents("TREE"), "POINT ");
}

TEST_F(Blocks, DefinitionHoldsPolylinesWithTheirVertices)
{
    define("FENCE", {VERTICES[0], VERTICES[1], VERTICES[2], VERTICES[3], "0 POINT;10 0,0,0"});
    EXPECT_EQ(contents("FENCE"), "POLYLINE POINT ");
    const object_id polyline = first_entity(db, db.record("BLOCK_RECORD", "FENCE"));
    EXPECT_EQ(walk(polyline), "VERTEX VERTEX SEQEND POINT");
}

TEST_F(Blocks, AnonymousNamesAreGivenOutInTurn)
{
    define("*U", {"0 POINT;10 0,0,0"}, "70 1;10 0,0,0");
    define("*U", {"0 POINT;10 0,0,0"}, "70 1;10 0,0,0");
    EXPECT_NE(db.record("BLOCK_RECORD", "*U1"), 0u);
    EXPECT_NE(db.record("BLOCK_RECORD", "*U2"), 0u);
}

TEST_F(Blocks, EndOfADefinitionNamesItsBlock)
{
    make("0 BLOCK;2 *U;70 1;10 0,0,0");
    make("0 POINT;10 0,0,0");
    ads_name name;
    ASSERT_EQ(acdbEntMakeX(list_of("0 ENDBLK").get(), name), RTNORM);
    EXPECT_EQ(db.text_of(db.at(id_of_name(db, name)).groups, 2), "*U1");
}

TEST_F(Blocks, InsertIsMadeWithItsAttributes)
{
    define("SRVPNO1", {"0 ATTDEF;10 0,0,0;1 0;2 ELEV2;3 prompt;70 0;40 1"}, "70 2;10 0,0,0");
    EXPECT_EQ(make("0 INSERT;66 1;2 SRVPNO1;10 5,5,0"), RTNORM);
    EXPECT_EQ(last(), 0u);
    EXPECT_EQ(make("0 ATTRIB;10 5,6,0;40 1;1 100.5;2 ELEV2;70 0"), RTNORM);
    EXPECT_EQ(make("0 SEQEND"), RTNORM);
    const object_id id = last();
    EXPECT_EQ(got(id),
              "0 INSERT;100 AcDbEntity;67 0;410 Model;8 0;100 AcDbBlockReference;66 1;2 SRVPNO1;10 5,5,0;"
              "41 1;42 1;43 1;50 0;70 0;71 0;44 0;45 0;210 0,0,1");
    EXPECT_EQ(walk(id), "ATTRIB SEQEND");
    const object_id attribute = next(id);
    EXPECT_EQ(change(attribute, "0 ATTRIB;10 5,6,0;40 1;1 101.25;2 ELEV2;70 0"), RTNORM);
    EXPECT_EQ(db.text_of(db.at(attribute).groups, 1), "101.25");
    EXPECT_EQ(db.at(attribute).owner, id);
}

// A program that takes a reference away and puts it back from its list doesn't always give the attributes.
TEST_F(Blocks, InsertWhoseAttributesNeverComeIsMadeWithoutThem)
{
    define("SPT1", {"0 POINT;10 0,0,0"});
    EXPECT_EQ(make("0 INSERT;66 1;2 SPT1;10 5,5,0"), RTNORM);
    EXPECT_EQ(last(), 0u);
    EXPECT_EQ(make("0 INSERT;66 1;2 SPT1;10 6,5,0"), RTNORM);
    const object_id first = last();
    EXPECT_EQ(got(first), "0 INSERT;100 AcDbEntity;67 0;410 Model;8 0;100 AcDbBlockReference;2 SPT1;10 5,5,0;"
                          "41 1;42 1;43 1;50 0;70 0;71 0;44 0;45 0;210 0,0,1");
    EXPECT_EQ(walk(first), "");
    const object_id line = made("0 LINE;10 0,0,0;11 1,0,0");
    EXPECT_EQ(last(), line);
    EXPECT_EQ(next(first), line - 1);
    settle_pending(db); // nothing waits
    EXPECT_EQ(last(), line);
}

TEST_F(Blocks, InsertThatWaitsAtTheEndOfAnExpressionIsMade)
{
    define("SPT1", {"0 POINT;10 0,0,0"});
    make("0 INSERT;66 1;2 SPT1;10 5,5,0");
    settle_pending(db);
    EXPECT_EQ(walk(last()), "");
    EXPECT_EQ(make("0 ATTRIB;10 5,6,0;40 1;1 100.5;2 ELEV2;70 0"), RTERROR);
    EXPECT_EQ(make("0 INSERT;66 1;2 SPT1;10 6,5,0"), RTNORM);
    EXPECT_EQ(make("0 ATTRIB;10 5,6,0;40 1;1 100.5;2 ELEV2;70 0"), RTNORM);
    settle_pending(db); // this one has begun: it waits for its SEQEND
    EXPECT_EQ(make("0 SEQEND"), RTNORM);
    EXPECT_EQ(walk(last()), "ATTRIB SEQEND");
}

TEST_F(Blocks, WaitingInsertIsDroppedByAnEmptyList)
{
    define("SPT1", {"0 POINT;10 0,0,0"});
    make("0 INSERT;66 1;2 SPT1;10 5,5,0");
    EXPECT_EQ(make(""), RTERROR);
    settle_pending(db);
    EXPECT_EQ(last(), 0u);
}

TEST_F(Blocks, PlainInsertIsMadeAtOnce)
{
    define("TREE", {"0 POINT;10 0,0,0"});
    const object_id id = made("0 INSERT;2 TREE;10 5,5,0");
    EXPECT_TRUE(db.is(id, "INSERT"));
    EXPECT_EQ(walk(id), "");
}

TEST_F(Blocks, NestedDefinitionMayReferToAnEarlierOne)
{
    define("LEAF", {"0 POINT;10 0,0,0"});
    define("TREE", {"0 INSERT;2 LEAF;10 1,0,0"});
    EXPECT_EQ(contents("TREE"), "INSERT ");
}

TEST_F(Blocks, NameOfABlockLeadsToItsBeginning)
{
    define("TREE", {"0 POINT;10 0,0,0", "0 CIRCLE;10 0,0,0;40 1"});
    ads_name name;
    ASSERT_EQ(acdbTblObjName("BLOCK", "tree", name), RTNORM);
    const object_id begin = id_of_name(db, name);
    EXPECT_TRUE(db.is(begin, "BLOCK"));
    EXPECT_EQ(walk(begin), "POINT CIRCLE");
    const object_id first = first_entity(db, db.record("BLOCK_RECORD", "TREE"));
    EXPECT_EQ(got(begin), "0 BLOCK;100 AcDbEntity;67 0;8 0;100 AcDbBlockBegin;2 TREE;70 0;10 0,0,0;1 ;-2 #" +
                              std::to_string(first));
}

// ---- last

TEST_F(Entities, LastIsTheNewestThatIsNotErased)
{
    EXPECT_EQ(last(), 0u);
    const object_id a = made("0 POINT;10 1,0,0"), b = made("0 POINT;10 2,0,0");
    EXPECT_EQ(last(), b);
    erase(b);
    EXPECT_EQ(last(), a);
    const object_id c = made("0 POINT;10 3,0,0");
    EXPECT_EQ(last(), c);
    erase(c);
    EXPECT_EQ(last(), a);
    erase(b);
    EXPECT_EQ(last(), b);
    erase(b);
    erase(a);
    EXPECT_EQ(last(), 0u);
    erase(a);
    EXPECT_EQ(last(), a);
}

// The remembered place must give what a plain walk from the end gives, whatever came between.
TEST_F(Entities, LastIsRightAfterAnyChanges)
{
    std::vector<object_id> ids;
    std::uint32_t seed = 99;
    const auto random = [&](std::size_t below) {
        return (seed = seed * 1664525u + 1013904223u) / 65536u % static_cast<std::uint32_t>(below);
    };
    for (int i = 0; i < 3000; ++i) {
        if (ids.empty() || random(3) == 0)
            ids.push_back(made("0 POINT;10 1,0,0"));
        else
            erase(ids[ids.size() - 1 - random(std::min<std::size_t>(ids.size(), 8))]);
        object_id expected = 0;
        for (std::size_t j = ids.size(); j-- > 0 && !expected;)
            expected = db.at(ids[j]).erased ? 0 : ids[j];
        ASSERT_EQ(last(), expected) << i;
    }
}

TEST_F(Entities, FirstIsTheOldestThatIsNotErased)
{
    EXPECT_EQ(next(0), 0u);
    const object_id a = made("0 POINT;10 1,0,0"), b = made("0 POINT;10 2,0,0");
    EXPECT_EQ(next(0), a);
    erase(a);
    EXPECT_EQ(next(0), b);
    erase(b);
    EXPECT_EQ(next(0), 0u);
    const object_id c = made("0 POINT;10 3,0,0");
    EXPECT_EQ(next(0), c);
    erase(a);
    EXPECT_EQ(next(0), a);
}

// Files leave out what has its standard value; programs meet it all the same.
TEST_F(Entities, GroupsThatAFileLeftOutAreGot)
{
    const auto from_file = [&](std::string_view list) {
        group_list groups;
        EXPECT_TRUE(groups_of_list(db, list_of(list).get(), groups, nullptr));
        return db.append(db.model_space(), object_class::entity, std::move(groups));
    };
    EXPECT_EQ(
        got(from_file("0 TEXT;100 AcDbEntity;8 0;100 AcDbText;10 1,2,0;40 2;1 abc;100 AcDbText")),
        "0 TEXT;100 AcDbEntity;67 0;410 Model;8 0;100 AcDbText;10 1,2,0;40 2;1 abc;50 0;41 1;51 0;7 Standard;"
        "71 0;72 0;11 0,0,0;210 0,0,1;100 AcDbText;73 0");
    EXPECT_EQ(
        got(from_file("0 LWPOLYLINE;100 AcDbEntity;8 0;100 AcDbPolyline;90 2;70 0;43 1.5;10 1,2;42 1;10 3,4")),
        "0 LWPOLYLINE;100 AcDbEntity;67 0;410 Model;8 0;100 AcDbPolyline;90 2;70 0;43 1.5;38 0;39 0;10 1,2,0;"
        "40 1.5;41 1.5;42 1;10 3,4,0;40 1.5;41 1.5;42 0;210 0,0,1");
    const object_id broken = from_file("0 LINE;100 AcDbEntity;8 0;100 AcDbLine;10 1,2,3");
    EXPECT_EQ(got(broken), "0 LINE;100 AcDbEntity;67 0;410 Model;8 0;100 AcDbLine;10 1,2,3");
    const std::size_t stored = db.at(broken).groups.size();
    EXPECT_EQ(stored, 5u) << "what is stored stays as the file has it";
}

// ---- changing

TEST_F(Entities, ChangePutsTheListInPlaceOfTheGroups)
{
    const object_id id = made("0 LINE;8 FENCE;62 1;10 0,0,0;11 1,1,1");
    const std::uint64_t handle = db.at(id).handle;
    EXPECT_EQ(change(id, "0 LINE;330 #1;5 ABC;8 HEDGE;10 5,5,5;11 1,1,1"), RTNORM);
    EXPECT_EQ(got(id), "0 LINE;100 AcDbEntity;67 0;410 Model;8 HEDGE;100 AcDbLine;10 5,5,5;11 1,1,1;210 0,0,1");
    EXPECT_EQ(db.at(id).handle, handle);
    EXPECT_EQ(find(db.at(id).groups, 5)->handle, handle);
    EXPECT_EQ(find(db.at(id).groups, 330)->handle, db.at(db.model_space()).handle);
    EXPECT_NE(db.record("LAYER", "HEDGE"), 0u);
}

TEST_F(Entities, ChangeOfTypeOrKindIsRefused)
{
    const object_id id = made("0 LINE;10 0,0,0;11 1,1,1");
    const std::string before = got(id);
    EXPECT_EQ(change(id, "0 CIRCLE;10 0,0,0;40 1"), RTERROR);
    EXPECT_EQ(change(id, "10 0,0,0;11 2,2,2"), RTERROR);
    EXPECT_EQ(change(id, "0 LINE;10 0,0,0"), RTERROR);
    EXPECT_EQ(acdbEntMod(list_of("0 LINE;10 0,0,0;11 5,5,5").get()), RTERROR);
    EXPECT_EQ(acdbEntMod(nullptr), RTERROR);
    EXPECT_EQ(got(id), before);
    for (const char* list : VERTICES)
        make(list);
    const object_id polyline = last();
    EXPECT_EQ(change(polyline, "0 POLYLINE;70 8"), RTERROR);
    EXPECT_EQ(change(polyline, "0 POLYLINE;70 0"), RTNORM);
    EXPECT_EQ(int_of(db.at(polyline).groups, 70, -1), 0);
}

TEST_F(Entities, ChangedLightweightPolylineCountsItsVertices)
{
    const object_id id = made("0 LWPOLYLINE;90 2;70 0;10 1,2;10 3,4");
    EXPECT_EQ(change(id, "0 LWPOLYLINE;90 2;70 1;10 1,2;10 3,4;10 5,6"), RTNORM);
    EXPECT_EQ(int_of(db.at(id).groups, 90, 0), 3);
    EXPECT_EQ(find(db.at(id).groups, 10)->dimensions, 2);
}

TEST_F(Entities, UpdateWantsALivingObject)
{
    const object_id id = made("0 POINT;10 0,0,0");
    ads_name name;
    make_name(db, id, name);
    EXPECT_EQ(acdbEntUpd(name), RTNORM);
    erase(id);
    EXPECT_EQ(acdbEntUpd(name), RTERROR);
}

// ---- extended data

TEST_F(Entities, ExtendedDataWantsARegisteredApplication)
{
    EXPECT_EQ(make("0 POINT;10 0,0,0;-3;1001 SURVEY;1000 a"), RTERROR);
    EXPECT_EQ(acdbRegApp("SURVEY"), RTNORM);
    EXPECT_EQ(acdbRegApp("survey"), RTERROR);
    EXPECT_EQ(acdbRegApp(""), RTERROR);
    EXPECT_EQ(acdbRegApp("A*B"), RTERROR);
    const object_id id = made("0 POINT;10 0,0,0;-3;1001 SURVEY;1000 a;1070 5;1040 1.5;1010 1,2,3;1071 70000");
    EXPECT_EQ(got(id).find("1001"), std::string::npos);
    const std::string with = got(id, "*");
    EXPECT_EQ(with.substr(with.find("-3")), "-3;1001 SURVEY;1000 a;1070 5;1040 1.5;1010 1,2,3;1071 70000");
    EXPECT_EQ(got(id, "sur*"), with);
    EXPECT_EQ(got(id, "OTHER"), got(id));
}

TEST_F(Entities, ExtendedDataIsReplacedByApplication)
{
    acdbRegApp("ONE");
    acdbRegApp("TWO");
    const object_id id = made("0 POINT;10 0,0,0;-3;1001 ONE;1000 a;1001 TWO;1000 b");
    const auto extended = [&] {
        const std::string all = got(id, "*");
        const std::size_t at = all.find("-3");
        return at == std::string::npos ? std::string() : all.substr(at);
    };
    EXPECT_EQ(change(id, "0 POINT;10 0,0,0"), RTNORM);
    EXPECT_EQ(extended(), "-3;1001 ONE;1000 a;1001 TWO;1000 b");
    EXPECT_EQ(change(id, "0 POINT;10 0,0,0;-3;1001 ONE;1000 c"), RTNORM);
    EXPECT_EQ(extended(), "-3;1001 ONE;1000 c;1001 TWO;1000 b");
    EXPECT_EQ(change(id, "0 POINT;10 0,0,0;-3;1001 TWO"), RTNORM);
    EXPECT_EQ(extended(), "-3;1001 ONE;1000 c");
    EXPECT_EQ(change(id, "0 POINT;10 0,0,0;-3;1001 NONE;1000 x"), RTERROR);
    EXPECT_EQ(change(id, "0 POINT;10 0,0,0;-3;1001 ONE"), RTNORM);
    EXPECT_EQ(extended(), "");
}

// ---- tables

struct Tables : Blocks {
    std::string names(const char* table)
    {
        std::string all;
        for (list_ptr each(acdbTblNext(table, 1)); each; each.reset(acdbTblNext(table, 0)))
            all += std::string(rb_find_code(each.get(), 2)->resval.rstring) + ' ';
        return all;
    }
};

TEST_F(Tables, RecordsAreMadeFromListsOfEitherForm)
{
    EXPECT_EQ(make("0 LAYER;100 AcDbSymbolTableRecord;100 AcDbLayerTableRecord;2 Fence;70 0;62 3;6 DASHED"),
              RTNORM);
    EXPECT_EQ(found("LAYER", "FENCE"), "0 LAYER;2 Fence;70 0;62 3;6 DASHED;370 -3");
    EXPECT_NE(db.record("LTYPE", "DASHED"), 0u);
    EXPECT_EQ(make("0 LTYPE;2 DOTS;70 0;3 . . .;72 65;73 2;40 0.75;49 0.5;49 -0.25"), RTNORM);
    EXPECT_EQ(found("LTYPE", "dots"), "0 LTYPE;2 DOTS;70 0;3 . . .;72 65;73 2;40 0.75;49 0.5;49 -0.25");
    EXPECT_EQ(make("0 STYLE;2 ROMAN;3 romans;40 2"), RTNORM);
    EXPECT_EQ(found("STYLE", "ROMAN"), "0 STYLE;2 ROMAN;70 0;40 2;41 1;50 0;71 0;42 0.2;3 romans;4 ");
    EXPECT_EQ(make("0 APPID;2 SURVEY;70 0"), RTNORM);
    EXPECT_NE(found("APPID", "SURVEY"), "");
    EXPECT_EQ(make("0 LAYER;2 fence;70 0"), RTERROR) << "it is there already";
    EXPECT_EQ(make("0 LAYER;70 0"), RTERROR);
    EXPECT_EQ(make("0 BLOCK_RECORD;2 X"), RTERROR);
}

TEST_F(Tables, NextGoesThroughATable)
{
    add_layer(db, "A", 1);
    add_layer(db, "B", 2);
    EXPECT_EQ(names("LAYER"), "0 A B ");
    EXPECT_EQ(acdbTblNext("LAYER", 0), nullptr);
    db.set_erased(db.record("LAYER", "A"), true);
    EXPECT_EQ(names("LAYER"), "0 B ");
    EXPECT_EQ(acdbTblNext("NOTABLE", 1), nullptr);
    define("TREE", {"0 POINT;10 0,0,0"});
    EXPECT_EQ(names("BLOCK"), "TREE ");
}

TEST_F(Tables, SearchCanMoveNext)
{
    for (const char* name : {"A", "B", "C"})
        add_layer(db, name, 1);
    list_ptr(acdbTblSearch("LAYER", "A", 1));
    const list_ptr behind(acdbTblNext("LAYER", 0));
    EXPECT_STREQ(rb_find_code(behind.get(), 2)->resval.rstring, "B");
    list_ptr(acdbTblSearch("LAYER", "A", 0));
    const list_ptr third(acdbTblNext("LAYER", 0));
    EXPECT_STREQ(rb_find_code(third.get(), 2)->resval.rstring, "C");
}

TEST_F(Tables, RecordIsGotAndChangedByItsName)
{
    add_layer(db, "FENCE", 3);
    ads_name name;
    ASSERT_EQ(acdbTblObjName("LAYER", "fence", name), RTNORM);
    const object_id id = id_of_name(db, name);
    EXPECT_EQ(got(id),
              "0 LAYER;100 AcDbSymbolTableRecord;100 AcDbLayerTableRecord;2 FENCE;70 0;62 3;6 Continuous;"
              "370 -3");
    EXPECT_EQ(
        change(id,
               "0 LAYER;100 AcDbSymbolTableRecord;100 AcDbLayerTableRecord;2 HEDGE;70 1;62 -5;6 Continuous"),
        RTNORM);
    EXPECT_EQ(db.record("LAYER", "HEDGE"), id);
    EXPECT_EQ(found("LAYER", "HEDGE"), "0 LAYER;2 HEDGE;70 1;62 -5;6 Continuous");
    EXPECT_EQ(change(id, "0 LAYER;100 AcDbSymbolTableRecord;100 AcDbLayerTableRecord;2 0;70 0;62 1"), RTERROR)
        << "layer 0 is there already";
    EXPECT_EQ(acdbTblObjName("LAYER", "FENCE", name), RTERROR);
}

TEST_F(Tables, DictionariesAreSearchedAndWalked)
{
    ads_name root;
    ASSERT_EQ(acdbNamedObjDict(root), RTNORM);
    const list_ptr layouts(acdbDictSearch(root, "acad_layout", 1));
    ASSERT_TRUE(layouts);
    EXPECT_STREQ(rb_find_code(layouts.get(), 0)->resval.rstring, "DICTIONARY");
    const list_ptr behind(acdbDictNext(root, 0));
    ASSERT_TRUE(behind) << "the one behind ACAD_LAYOUT";
    EXPECT_EQ(acdbDictNext(root, 0), nullptr);
    const list_ptr first(acdbDictNext(root, 1));
    EXPECT_TRUE(first);
    EXPECT_EQ(acdbDictSearch(root, "NONE", 0), nullptr);
    const list_ptr model(acdbDictSearch(layouts->resval.rlname, "Model", 0));
    ASSERT_TRUE(model);
    EXPECT_STREQ(rb_find_code(model.get(), 0)->resval.rstring, "LAYOUT");
    ads_name point;
    make_name(db, made("0 POINT;10 0,0,0"), point);
    EXPECT_EQ(acdbDictSearch(point, "Model", 0), nullptr);
}

// ---- memory

TEST_F(Blocks, CallsGiveBackWhatTheyTake)
{
    define("TREE", {"0 POINT;10 0,0,0"});
    acdbRegApp("SURVEY");
    const std::size_t before = heap_live_blocks();
    const object_id id = made("0 POINT;10 0,0,0;-3;1001 SURVEY;1000 a;1004 ");
    got(id, "*");
    change(id, "0 POINT;10 5,0,0");
    change(id, "0 LINE;10 5,0,0");
    found("BLOCK", "TREE");
    found("LAYER", "0");
    list_ptr(acdbTblNext("STYLE", 1));
    EXPECT_EQ(heap_live_blocks(), before);
}

} // namespace
} // namespace host::db

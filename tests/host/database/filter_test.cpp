#include "tests/host/database/lists.h"

namespace host::db
{
namespace
{

using namespace testing_lists;

struct Filters : Drawing {
    Filters()
    {
        acdbRegApp("SURVEY");
        acdbRegApp("TRAVERSE");
        make("0 BLOCK;2 SRVPNO1;70 0;10 0,0,0");
        make("0 ENDBLK");
    }
    bool fits(object_id id, std::string_view filter) { return matches(db, id, list_of(filter, &db).get()); }
};

struct filter_case {
    const char* filter;
    bool fits;
};

TEST_F(Filters, GroupsOfALine)
{
    const object_id line = made("0 LINE;8 FENCE;62 3;10 1,2,3;11 4,5,6;39 2.5;-3;1001 SURVEY;1000 a");
    const filter_case cases[] = {
        {"", true},
        {"0 LINE", true},
        {"0 line", true},
        {"0 CIRCLE", false},
        {"0 CIRCLE,L*", true},
        {"0 *POLYLINE", false},
        {"0 ~LINE", false},
        {"5020 LINE", true},
        {"8 fence", true},
        {"8 FEN*", true},
        {"8 F?NCE", true},
        {"8 HEDGE,FENCE", true},
        {"8 FEN", false},
        {"62 3", true},
        {"62 256", false},
        {"10 1,2,3", true},
        {"10 1,2,3.000000001", true},
        {"10 1,2,3.001", false},
        {"10 1,2", false},
        {"39 2.5", true},
        {"39 2.500000001", true},
        {"39 2.51", false},
        {"0 LINE;8 FENCE;62 3", true},
        {"0 LINE;8 HEDGE", false},
        {"100 AcDbLine", true},
        {"100 AcDbCircle", false},
        {"1 text", false},
        // what the object leaves out
        {"6 BYLAYER", true},
        {"6 ByLayer", true},
        {"6 DASHED", false},
        {"48 1.0", true},
        {"48 2.0", false},
        {"60 0", true},
        {"67 0", true},
        {"67 1", false},
        {"410 Model", true},
        {"410 model", true},
        {"410 Layout1", false},
        {"370 -1", true},
        {"38 0.0", true},
        {"210 0,0,1", true},
        // relations
        {"-4 >;62 2", true},
        {"-4 >;62 3", false},
        {"-4 >=;62 3", true},
        {"-4 <;62 3", false},
        {"-4 <=;62 3", true},
        {"-4 =;62 3", true},
        {"-4 !=;62 3", false},
        {"-4 /=;62 4", true},
        {"-4 <>;62 4", true},
        {"-4 *;62 99", true},
        {"-4 &;62 2", true},
        {"-4 &;62 4", false},
        {"-4 &=;62 3", true},
        {"-4 &=;62 7", false},
        {"-4 >;39 2.4", true},
        {"-4 >;39 2.5", false},
        {"-4 >=;39 2.500000000001", true},
        {"-4 >,>,*;10 0,1,99", true},
        {"-4 >,>,*;10 1,1,0", false},
        {"-4 *,=;10 99,2,99", true},
        {"-4 >,*,*;10 0,0,0;-4 <,*,*;10 2,0,0", true},
        {"-4 !=;10 1,2,3", false},
        {"-4 =;10 1,2,3", true},
        {"-4 !=;8 FENCE", false},
        {"-4 !=;8 HEDGE", true},
        // operators
        {"-4 <OR;0 CIRCLE;0 LINE;-4 OR>", true},
        {"-4 <OR;0 CIRCLE;0 ARC;-4 OR>", false},
        {"-4 <or;0 circle;0 line;-4 or>", true},
        {"-4 <AND;0 LINE;62 3;-4 AND>", true},
        {"-4 <AND;0 LINE;62 4;-4 AND>", false},
        {"-4 <NOT;0 LINE;-4 NOT>", false},
        {"-4 <NOT;0 CIRCLE;-4 NOT>", true},
        {"-4 <XOR;0 LINE;62 4;-4 XOR>", true},
        {"-4 <XOR;0 LINE;62 3;-4 XOR>", false},
        {"8 FENCE;-4 <OR;-4 <AND;0 CIRCLE;40 1;-4 AND>;-4 <AND;0 LINE;-4 >;62 2;-4 AND>;-4 OR>", true},
        {"-4 <NOT;-4 <OR;0 CIRCLE;0 ARC;-4 OR>;-4 NOT>", true},
        // extended data
        {"-3;1001 SURVEY", true},
        {"-3;1001 survey", true},
        {"-3;1001 SUR*", true},
        {"-3;1001 TRAVERSE", false},
        {"-3;1001 TRAVERSE,SURVEY", true},
        {"-3;1001 SURVEY;1001 TRAVERSE", false},
        {"-3;5016;5005 SURVEY;5017", true},
        {"0 LINE;-3;1001 SURVEY", true},
        {"-4 <NOT;-3;1001 SURVEY;-4 NOT>", false},
    };
    for (const filter_case& each : cases) {
        EXPECT_EQ(fits(line, each.filter), each.fits) << each.filter;
        EXPECT_TRUE(is_valid_filter(list_of(each.filter).get())) << each.filter;
    }
}

TEST_F(Filters, TextsAreComparedAsTheyAre)
{
    const object_id text = made("0 TEXT;10 0,0,0;40 1;1 Corner 5;7 Standard");
    const filter_case cases[] = {{"1 Corner 5", true}, {"1 corner 5", false}, {"1 Corner*", true},
                                 {"1 *#", true},       {"7 STANDARD", true},  {"-4 !=;1 Corner 5", false},
                                 {"1 ", false}};
    for (const filter_case& each : cases)
        EXPECT_EQ(fits(text, each.filter), each.fits) << each.filter;
}

TEST_F(Filters, AnyOfSeveralGroupsOfACodeIsEnough)
{
    const object_id line = made("0 LWPOLYLINE;90 2;70 1;10 1,2;10 3,4");
    EXPECT_TRUE(fits(line, "10 1,2,0"));
    EXPECT_TRUE(fits(line, "10 3,4,0"));
    EXPECT_TRUE(fits(line, "10 3,4,99")) << "a plane point has no z to compare";
    EXPECT_FALSE(fits(line, "10 1,4,0"));
    EXPECT_TRUE(fits(line, "-4 &;70 1"));
    EXPECT_TRUE(fits(line, "43 0.0"));
    EXPECT_TRUE(fits(line, "-4 >,*;10 2,0,0"));
}

TEST_F(Filters, GroupsThatAFileLeftOutHaveTheirStandardValues)
{
    group_list groups{db.text_group(0, "TEXT"), db.text_group(8, "0"), point_group(10, 1, 2, 0),
                      real_group(40, 2), db.text_group(1, "abc")};
    const object_id text = db.append(db.model_space(), object_class::entity, std::move(groups));
    for (const char* filter : {"41 1.0", "7 standard", "72 0", "50 0.0", "210 0,0,1"})
        EXPECT_TRUE(fits(text, filter)) << filter;
    for (const char* filter : {"41 2.0", "7 ROMAN", "72 1", "2 TAG"})
        EXPECT_FALSE(fits(text, filter)) << filter;
}

TEST_F(Filters, BlocksByNameAndAttributesFollowing)
{
    const object_id block = made("0 INSERT;2 SRVPNO1;10 0,0,0");
    EXPECT_TRUE(fits(block, "0 INSERT;2 SRVPN*"));
    EXPECT_TRUE(fits(block, "66 0"));
    EXPECT_FALSE(fits(block, "66 1"));
}

TEST_F(Filters, PaperSpaceIsKnownByItsPlace)
{
    make("0 POINT;67 1;10 0,0,0");
    const object_id point = first_entity(db, db.paper_space());
    EXPECT_TRUE(fits(point, "67 1"));
    EXPECT_FALSE(fits(point, "67 0"));
    EXPECT_TRUE(fits(point, "410 layout?"));
}

TEST_F(Filters, NameAndHandleFindTheObjectItself)
{
    const object_id a = made("0 POINT;10 0,0,0"), b = made("0 POINT;10 0,0,0");
    EXPECT_TRUE(fits(a, "-1 #" + std::to_string(a)));
    EXPECT_FALSE(fits(b, "-1 #" + std::to_string(a)));
    EXPECT_TRUE(fits(a, "330 #" + std::to_string(db.model_space())));
    char handle[32];
    std::snprintf(handle, sizeof handle, "5 %llX", static_cast<unsigned long long>(db.at(a).handle));
    EXPECT_TRUE(fits(a, handle));
    EXPECT_FALSE(fits(b, handle));
}

TEST_F(Filters, MalformedFilterMatchesNothing)
{
    const object_id line = made("0 LINE;10 1,2,3;11 4,5,6");
    const char* filters[] = {
        "-4 <OR;0 LINE",
        "-4 <OR;-4 OR>",
        "-4 <AND;-4 AND>",
        "-4 OR>",
        "0 LINE;-4 AND>",
        "-4 <OR;0 LINE;-4 AND>",
        "-4 <NOT;-4 NOT>",
        "-4 <NOT;0 LINE;8 0;-4 NOT>",
        "-4 <XOR;0 LINE;-4 XOR>",
        "-4 <XOR;0 LINE;8 0;62 256;-4 XOR>",
        "-4 <NAND;0 LINE;-4 NAND>",
        "-4 >",
        "-4 ?;62 3",
        "-4 ;62 3",
        "-4 =,=,=,=;10 1,2,3",
        "-4 >;-4 >;62 3",
        "-4 >;-4 <OR;62 3;-4 OR>",
        "-3",
        "-3;0 LINE",
        "5002 1,2,3",
    };
    for (const char* filter : filters) {
        EXPECT_FALSE(is_valid_filter(list_of(filter).get())) << filter;
        EXPECT_FALSE(fits(line, filter)) << filter;
    }
}

TEST_F(Filters, DeepNestingIsRefusedNotFollowed)
{
    const auto nested = [](int depth) {
        std::string text;
        for (int i = 0; i < depth; ++i)
            text += "-4 <AND;";
        text += "0 LINE";
        for (int i = 0; i < depth; ++i)
            text += ";-4 AND>";
        return text;
    };
    const object_id line = made("0 LINE;10 1,2,3;11 4,5,6");
    EXPECT_TRUE(fits(line, nested(100)));
    EXPECT_FALSE(is_valid_filter(list_of(nested(101)).get()));
    EXPECT_FALSE(is_valid_filter(list_of(nested(200'000)).get()));
}

TEST_F(Filters, UnknownObjectMatchesNothing)
{
    EXPECT_FALSE(fits(0, ""));
}

} // namespace
} // namespace host::db

#include <gtest/gtest.h>

#include "host/core/document.h"
#include "host/database/entities.h"
#include "tests/host/database/dxf_binary.h"
#include "tests/host/database/dxf_dump.h"

namespace host::db
{
namespace
{

using test::sample;

struct DxfRead : testing::Test {
    document doc{3};

    std::unique_ptr<database> parse(const std::string& bytes)
    {
        dxf_error error;
        auto made = parse_dxf(bytes, "x.dxf", doc, &error);
        EXPECT_TRUE(made) << error.text();
        return made;
    }
    std::string refusal(const std::string& bytes)
    {
        dxf_error error;
        EXPECT_EQ(parse_dxf(bytes, "x.dxf", doc, &error), nullptr);
        return error.text();
    }
};

object_id nth(const database& db, object_id space, int n)
{
    object_id id = first_entity(db, space);
    while (id && n-- > 0)
        id = next_entity(db, id);
    return id;
}

std::string markers(const database& db, object_id id)
{
    std::string out;
    for (const group& each : db.at(id).groups)
        if (each.code == 100)
            out += std::string(db.text(each.text)) + ' ';
    return out;
}

// ---- old files

TEST_F(DxfRead, FileWithoutHeaderTablesAndHandlesIsUpgraded)
{
    const auto db = parse(sample("r12_minimal.dxf"));
    ASSERT_TRUE(db);
    EXPECT_EQ(db->comments, std::vector<std::string>{"hand-written, no header, no handles"});
    const object_id model = db->model_space();
    ASSERT_TRUE(model);
    const object_id line = nth(*db, model, 0);
    EXPECT_EQ(markers(*db, line), "AcDbEntity AcDbLine ");
    EXPECT_EQ(db->at(line).owner, model);
    const group_list& groups = db->at(line).groups;
    ASSERT_TRUE(find(groups, 5) && find(groups, 330));
    EXPECT_EQ(find(groups, 5)->handle, db->at(line).handle);
    EXPECT_EQ(find(groups, 330)->handle, db->at(model).handle);
    EXPECT_EQ(db->by_handle(db->at(line).handle), line);
    EXPECT_EQ(find(groups, 10)->dimensions, 3);
    EXPECT_EQ(find(groups, 11)->point[0], 10.5);
    EXPECT_EQ(db->text_of(groups, 8), "WALLS");
}

TEST_F(DxfRead, ElevationOfTheOldestFilesGoesIntoThePoints)
{
    const auto db = parse(sample("r12_minimal.dxf"));
    ASSERT_TRUE(db);
    const object_id point = nth(*db, db->model_space(), 4);
    ASSERT_EQ(db->type_of(point), "POINT");
    EXPECT_EQ(find(db->at(point).groups, 10)->point[2], 12.5);
    EXPECT_FALSE(find(db->at(point).groups, 38));
    EXPECT_EQ(db->type_of(nth(*db, db->model_space(), 5)), "LINE") << "3DLINE";
}

TEST_F(DxfRead, AnglesAreRadians)
{
    const auto db = parse(sample("r12_minimal.dxf"));
    ASSERT_TRUE(db);
    const group_list& arc = db->at(nth(*db, db->model_space(), 3)).groups;
    EXPECT_DOUBLE_EQ(real_of(arc, 50, 0), 0.5235987755982988);
    EXPECT_DOUBLE_EQ(real_of(arc, 51, 0), 1.5707963267948966);
}

TEST_F(DxfRead, LeadingBlanksOfTextsStay)
{
    const auto db = parse(sample("r12_minimal.dxf"));
    ASSERT_TRUE(db);
    EXPECT_EQ(db->text_of(db->at(nth(*db, db->model_space(), 6)).groups, 1), " leading blank");
}

TEST_F(DxfRead, VerticesBelongToTheirPolyline)
{
    const auto db = parse(sample("r12_minimal.dxf"));
    ASSERT_TRUE(db);
    const object_id polyline = nth(*db, db->model_space(), 7);
    ASSERT_EQ(db->type_of(polyline), "POLYLINE");
    EXPECT_EQ(next_entity(*db, polyline), 0u);
    object_id child = first_child(*db, polyline);
    int count = 0;
    for (; child; child = next_child(*db, child), ++count) {
        EXPECT_EQ(db->type_of(child), "VERTEX");
        EXPECT_EQ(find(db->at(child).groups, 330)->handle, db->at(polyline).handle);
        EXPECT_EQ(markers(*db, child), "AcDbEntity AcDbVertex AcDb2dVertex ");
    }
    EXPECT_EQ(count, 3);
    EXPECT_EQ(db->type_of(db->at(polyline).last), "SEQEND");
}

TEST_F(DxfRead, BlocksOfOldFilesGetRecords)
{
    const auto db = parse(sample("r12_blocks.dxf"));
    ASSERT_TRUE(db);
    const object_id peg = db->record("BLOCK_RECORD", "peg");
    ASSERT_TRUE(peg);
    EXPECT_EQ(db->type_of(db->at(peg).first), "BLOCK");
    EXPECT_EQ(db->type_of(db->at(peg).last), "ENDBLK");
    EXPECT_EQ(markers(*db, db->at(peg).first), "AcDbEntity AcDbBlockBegin ");
    EXPECT_EQ(db->type_of(nth(*db, peg, 0)), "CIRCLE");
    EXPECT_EQ(db->type_of(nth(*db, peg, 1)), "ATTDEF");
    EXPECT_EQ(db->by_handle(0x20), nth(*db, peg, 0));
    // The block that old files keep for the space is the space.
    EXPECT_FALSE(db->record("BLOCK_RECORD", "$MODEL_SPACE"));
    EXPECT_TRUE(db->record("BLOCK_RECORD", "*D1"));
}

TEST_F(DxfRead, AttributesBelongToTheirInsert)
{
    const auto db = parse(sample("r12_blocks.dxf"));
    ASSERT_TRUE(db);
    const object_id insert = db->by_handle(0x30);
    EXPECT_EQ(nth(*db, db->model_space(), 0), insert);
    EXPECT_EQ(first_child(*db, insert), db->by_handle(0x31));
    EXPECT_EQ(db->at(insert).last, db->by_handle(0x32));
    EXPECT_EQ(next_entity(*db, insert), db->by_handle(0x33));
    EXPECT_EQ(db->at(db->by_handle(0x33)).first, 0u) << "an INSERT without attributes owns nothing";
}

TEST_F(DxfRead, PaperSpaceIsTold)
{
    const auto db = parse(sample("r12_blocks.dxf"));
    ASSERT_TRUE(db);
    EXPECT_EQ(db->at(db->by_handle(0x51)).owner, db->paper_space());
    EXPECT_EQ(db->text_of(db->at(db->by_handle(0x52)).groups, 1), "Caf\xE9 %%d\n two");
}

TEST_F(DxfRead, RecordsOfOldFilesGetMarkersAndOwners)
{
    const auto db = parse(sample("r12_blocks.dxf"));
    ASSERT_TRUE(db);
    const object_id layer = db->record("LAYER", "site");
    ASSERT_TRUE(layer);
    EXPECT_EQ(markers(*db, layer), "AcDbSymbolTableRecord AcDbLayerTableRecord ");
    EXPECT_EQ(int_of(db->at(layer).groups, 62, 0), -3);
    EXPECT_EQ(find(db->at(layer).groups, 330)->handle, db->at(db->table("LAYER")).handle);
    const object_id style = db->record("DIMSTYLE", "STANDARD");
    EXPECT_EQ(db->at(style).handle, 0x27u);
    EXPECT_EQ(db->text_of(db->at(style).groups, 5), "DOT");
    const group_list* ours = db->header_value("$OURVARIABLE");
    ASSERT_TRUE(ours);
    EXPECT_EQ(real_of(*ours, 40, 0), 1.5);
}

TEST_F(DxfRead, NewHandlesAreBehindThoseOfTheFile)
{
    const auto db = parse(sample("r12_blocks.dxf"));
    ASSERT_TRUE(db);
    for (object_id id = 1; id < db->size(); ++id) {
        const std::uint64_t handle = db->at(id).handle;
        EXPECT_EQ(db->by_handle(handle), id);
        if (handle > 0x52) {
            EXPECT_GE(handle, 0x100u) << "HANDSEED";
        }
    }
}

TEST_F(DxfRead, SequenceWithoutSeqendIsEnded)
{
    const auto db = parse("0\nSECTION\n2\nENTITIES\n0\nPOLYLINE\n8\nA\n66\n1\n0\nVERTEX\n8\nA\n10\n0\n20\n0\n"
                          "0\nPOINT\n8\nA\n10\n0\n20\n0\n0\nENDSEC\n0\nEOF\n");
    ASSERT_TRUE(db);
    const object_id polyline = nth(*db, db->model_space(), 0);
    EXPECT_EQ(db->type_of(db->at(polyline).last), "SEQEND");
    EXPECT_EQ(db->type_of(next_entity(*db, polyline)), "POINT");
}

// ---- newer files

TEST_F(DxfRead, OwnersAndHandlesOfTheFileAreKept)
{
    const auto db = parse(sample("r2000.dxf"));
    ASSERT_TRUE(db);
    EXPECT_EQ(db->model_space(), db->by_handle(0x1F));
    EXPECT_EQ(db->paper_space(), db->by_handle(0x1B));
    EXPECT_EQ(db->root_dictionary(), db->by_handle(0xC));
    EXPECT_EQ(db->at(db->by_handle(0x70)).owner, db->by_handle(0x1C)) << "another layout's entity";
    EXPECT_EQ(db->at(db->by_handle(0x47)).owner, db->paper_space());
    EXPECT_EQ(db->next_handle() >= 0x200, true);
    EXPECT_FALSE(db->modified());
}

TEST_F(DxfRead, GroupsStandAsProgramsSeeThem)
{
    const auto db = parse(sample("r2000.dxf"));
    ASSERT_TRUE(db);
    const group_list& groups = db->at(db->by_handle(0x40)).groups;
    const int codes[] = {0,  330, 5,  102, 330, 102, 102, 360, 102,  100,  8,    62,   370,  100,  90,   70,
                         43, 38,  39, 10,  10,  42,  10,  210, 1001, 1000, 1002, 1040, 1071, 1004, 1002, 999};
    ASSERT_EQ(groups.size(), std::size(codes));
    for (std::size_t i = 0; i < groups.size(); ++i)
        EXPECT_EQ(groups[i].code, codes[i]) << i;
    EXPECT_EQ(groups[19].dimensions, 2);
    EXPECT_EQ(groups[23].dimensions, 3);
    EXPECT_EQ(db->text_of(groups, 1000), "lot ^5") << "a caret stands before a blank in files";
    EXPECT_EQ(db->text_of(groups, 1004), std::string("\x00\xFF\x10", 3));
}

TEST_F(DxfRead, PointsAreTakenOnlyWhereTheyAre)
{
    const auto db = parse(sample("r2018_unknown.dxf"));
    ASSERT_TRUE(db);
    const group_list& groups = db->at(db->by_handle(0x300)).groups;
    std::string seen;
    for (const group& each : groups)
        if (each.kind == group_kind::point ||
            (each.code >= 10 && each.code < 60 && each.kind == group_kind::real) || each.code > 1000)
            seen += std::to_string(each.code) +
                    (each.kind == group_kind::point ? "/" + std::to_string(each.dimensions) : "r") + ' ';
    EXPECT_EQ(seen, "10r 40r 20r 10/2 11/3 110/3 38r 39r 1010/3 1011r 58r 59r ");
    EXPECT_EQ(find(groups, 110)->dimensions, 3);
    EXPECT_EQ(find(groups, 211)->kind, group_kind::real);
    EXPECT_EQ(db->text_of(groups, 150), "odd text");
    EXPECT_EQ(find(groups, 160)->integer, 0);
    EXPECT_EQ(find(groups, 310)->kind, group_kind::binary);
    EXPECT_EQ(db->text_of(groups, 311), "not hex");
}

TEST_F(DxfRead, UnknownSectionsTablesAndClassesAreKept)
{
    const auto db = parse(sample("r2018_unknown.dxf"));
    ASSERT_TRUE(db);
    ASSERT_EQ(db->raw_sections.size(), 3u);
    EXPECT_EQ(db->raw_sections[0].name, "THUMBNAILIMAGE");
    EXPECT_EQ(db->raw_sections[1].name, "ACDSDATA");
    EXPECT_EQ(db->raw_sections[2].name, "NEVERHEARDOF");
    EXPECT_EQ(real_of(db->raw_sections[1].groups, 50, 0), 45.5) << "no angle is meant there";
    EXPECT_TRUE(db->table("GADGETS"));
    EXPECT_EQ(db->by_handle(4), db->record("GADGETS", "FIRST"));
    ASSERT_EQ(db->classes.size(), 1u);
    EXPECT_EQ(db->text_of(db->classes[0], 1), "GIZMO");
}

TEST_F(DxfRead, Utf8OfNewerFilesIsConverted)
{
    const auto db = parse(sample("r2007_utf8.dxf"));
    ASSERT_TRUE(db);
    EXPECT_EQ(db->text_of(db->at(db->by_handle(0x30)).groups, 8), "H\xF6he");
    EXPECT_EQ(db->text_of(db->at(db->by_handle(0x30)).groups, 1),
              "Caf\xE9 \x80 \\U+03A9 \\U+D83D\\U+DE00 \\U+03a9 \\U+00E9");
    EXPECT_EQ(db->text_of(*db->header_value("$PROJECTNAME"), 1), "Stra\xDF"
                                                                 "e \\U+03A9");
}

TEST_F(DxfRead, DoubleHandlesAreGivenAnew)
{
    const auto db = parse("0\nSECTION\n2\nENTITIES\n0\nPOINT\n5\n30\n8\nA\n10\n1\n20\n0\n"
                          "0\nPOINT\n5\n30\n8\nA\n10\n2\n20\n0\n0\nENDSEC\n0\nEOF\n");
    ASSERT_TRUE(db);
    const object_id second = nth(*db, db->model_space(), 1);
    EXPECT_EQ(db->by_handle(0x30), nth(*db, db->model_space(), 0));
    EXPECT_GT(db->at(second).handle, 0x30u);
    EXPECT_EQ(find(db->at(second).groups, 5)->handle, db->at(second).handle);
}

// ---- forms of files

TEST_F(DxfRead, LineEndsMakeNoDifference)
{
    for (const char* name : {"r12_blocks.dxf", "r2000.dxf", "r2018_unknown.dxf"}) {
        const std::string text = sample(name);
        const std::string expected = test::dump(*parse(text));
        for (const char* line_end : {"\r\n", "\r"}) {
            std::string other;
            for (const char c : text)
                other += c == '\n' ? std::string(line_end) : std::string(1, c);
            EXPECT_EQ(test::dump(*parse(other)), expected) << name;
        }
    }
}

TEST_F(DxfRead, BinaryFilesReadAsTheirText)
{
    for (const char* name : {"r12_minimal.dxf", "r12_blocks.dxf", "r2000.dxf", "r2007_utf8.dxf"}) {
        const std::string text = sample(name);
        const auto db = parse(test::binary_dxf(text, true));
        ASSERT_TRUE(db);
        EXPECT_EQ(test::difference(test::dump(*db), test::dump(*parse(text))), "") << name;
    }
    for (const char* name : {"r12_minimal.dxf", "r12_blocks.dxf"}) {
        const std::string text = sample(name);
        const auto db = parse(test::binary_dxf(text, false));
        ASSERT_TRUE(db);
        EXPECT_EQ(test::difference(test::dump(*db), test::dump(*parse(text))), "") << name;
    }
}

TEST_F(DxfRead, LastLineNeedsNoLineEnd)
{
    EXPECT_TRUE(parse("0\nSECTION\n2\nENTITIES\n0\nENDSEC\n0\nEOF"));
    EXPECT_TRUE(parse("\xEF\xBB\xBF  0\nSECTION\n2\nENTITIES\n0\nENDSEC\n0\nEOF\n\n\x1A"));
    EXPECT_TRUE(parse("0\nEOF\n")) << "a drawing with nothing in it";
}

// ---- damage

TEST_F(DxfRead, DamageIsToldByFileAndLine)
{
    const std::string head = "0\nSECTION\n2\nENTITIES\n";
    const struct {
        std::string bytes;
        const char* message;
    } cases[] = {
        {"", "x.dxf: the file is empty"},
        {"\n\n", "x.dxf: this is not a DXF file: nothing is in it"},
        {"hello\nworld\n", "x.dxf:1: this is not a DXF file: it starts with \"hello\""},
        {"AC1015\0\0\0\0junk", "x.dxf: this is a DWG file, not a DXF file"},
        {"5\nSECTION\n", "x.dxf:1: this is not a DXF file: it starts with group 5 with \"SECTION\""},
        {"0\nLINE\n8\n0\n", "x.dxf:1: this is not a DXF file: it starts with group 0 with \"LINE\""},
        {head + "0\nLINE\n8\n0\n10\n1.0\n20\n", "x.dxf:12: the file ends in the middle of a pair"},
        {head + "0\nLINE\n8\n0\n10", "x.dxf:9: the file ends in the middle of a pair"},
        {head + "0\nLINE\n8\n0\n", "x.dxf:8: the file ends in section ENTITIES"},
        {head + "0\nLINE\n8\n0\n10\n1.0x\n", "x.dxf:10: group 10: \"1.0x\" is no number"},
        {head + "0\nLINE\n8\n0\n10\n1.0\n20\nWALL\n", "x.dxf:12: group 20: \"WALL\" is no number"},
        {head + "0\nLINE\n8\n0\n62\nred\n", "x.dxf:10: group 62: \"red\" is no whole number"},
        {head + "0\nLINE\n8\n0\n62\n1.5\n", "x.dxf:10: group 62: \"1.5\" is no whole number"},
        {head + "0\nLINE\n5\nXYZ\n", "x.dxf:8: group 5: \"XYZ\" is no handle (a hexadecimal number)"},
        {head + "0\nLINE\n8\n0\nLAYER\n0\n", "x.dxf:9: \"LAYER\" stands where a group code should be"},
        {head + "0\nLINE\n8\n0\n-5\n0\n", "x.dxf:9: \"-5\" stands where a group code should be"},
        {head + "0\nLINE\n8\n0\n\n0\n", "x.dxf:9: \"\" stands where a group code should be"},
        {head + "0\nENDSEC\n", "x.dxf:6: the file ends without EOF"},
        {head + "0\nEOF\n", "x.dxf:5: section ENTITIES is not ended by ENDSEC"},
        {head + "0\nLINE\n8\n0\n0\nSECTION\n", "x.dxf:9: section ENTITIES is not ended by ENDSEC"},
        {head + "0\nENDBLK\n", "x.dxf:5: ENDBLK outside of section BLOCKS"},
        {"0\nSECTION\n8\nENTITIES\n", "x.dxf:3: the name of a section (group 2) was expected, not group 8"},
        {"0\nSECTION\n2\nHEADER\n70\n1\n", "x.dxf:5: a header variable (group 9) was expected, not group 70"},
        {"0\nSECTION\n2\nTABLES\n0\nLAYER\n", "x.dxf:5: TABLE was expected, not \"LAYER\""},
        {"0\nSECTION\n2\nTABLES\n0\nTABLE\n2\nLAYER\n0\nLAYER\n2\n0\n0\nENDSEC\n",
         "x.dxf:13: table LAYER is not ended by ENDTAB"},
        {"0\nSECTION\n2\nTABLES\n0\nTABLE\n70\n1\n0\nENDTAB\n", "x.dxf:5: a table without a name"},
        {"0\nSECTION\n2\nBLOCKS\n0\nLINE\n8\n0\n", "x.dxf:5: BLOCK was expected, not \"LINE\""},
        {"0\nSECTION\n2\nBLOCKS\n0\nBLOCK\n2\nA\n0\nENDSEC\n", "x.dxf:9: a block is not ended by ENDBLK"},
        {"0\nSECTION\n2\nBLOCKS\n0\nBLOCK\n8\nA\n0\nENDBLK\n0\nENDSEC\n0\nEOF\n",
         "x.dxf:5: a block without a name"},
        {"0\nSECTION\n2\nENTITIES\n0\nENDSEC\n0\nLINE\n",
         "x.dxf:7: SECTION or EOF was expected, not group 0 with \"LINE\""},
        {head + "0\nLINE\n5\nFFFFFFFFFFFFFFFF\n0\nENDSEC\n0\nEOF\n",
         "x.dxf:5: the handle of this object is too large"},
    };
    for (const auto& each : cases)
        EXPECT_EQ(refusal(each.bytes), each.message);
}

TEST_F(DxfRead, LinesAreCountedWithAllLineEnds)
{
    EXPECT_EQ(refusal("0\r\nSECTION\r\n2\r\nENTITIES\r\n0\r\nLINE\r\nx\r\n1\r\n"),
              "x.dxf:7: \"x\" stands where a group code should be");
    EXPECT_EQ(refusal("0\rSECTION\r2\rENTITIES\r0\rLINE\rx\r1\r"),
              "x.dxf:7: \"x\" stands where a group code should be");
}

TEST_F(DxfRead, DamageOfBinaryFilesIsToldByByte)
{
    const std::string whole =
        test::binary_dxf("0\nSECTION\n2\nENTITIES\n0\nPOINT\n10\n1.0\n20\n2.0\n0\nENDSEC\n0\nEOF\n", true);
    EXPECT_EQ(refusal(whole.substr(0, 22)),
              "x.dxf: this is not a DXF file: nothing is in it (the place is a byte of the file)");
    EXPECT_EQ(refusal(whole.substr(0, 30)),
              "x.dxf:30: the file ends in the middle of a pair (the place is a byte of the file)");
    std::string unknown = whole.substr(0, 22 + 10 + 11) + std::string("\xD0\x07", 2);
    EXPECT_EQ(refusal(unknown),
              "x.dxf:43: 2000 is no group code of a binary file (the place is a byte of the file)");
}

TEST_F(DxfRead, WhatIsNoFileIsRefused)
{
    dxf_error error;
    EXPECT_EQ(read_dxf("/nowhere/at/all.dxf", doc, &error), nullptr);
    EXPECT_EQ(error.text(), "/nowhere/at/all.dxf: the file can't be read: No such file or directory");
    EXPECT_EQ(read_dxf("/tmp", doc, &error), nullptr);
    EXPECT_EQ(error.text(), "/tmp: this is a directory, not a file");
}

} // namespace
} // namespace host::db

#include <gtest/gtest.h>

#include <sys/resource.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <random>

#include "host/core/document.h"
#include "host/database/entities.h"
#include "tests/host/database/dxf_dump.h"

namespace host::db
{
namespace
{

using test::sample;

constexpr const char* SAMPLES[] = {"r12_minimal.dxf",   "r12_blocks.dxf",
                                   "r2000.dxf",         "r2007_utf8.dxf",
                                   "r2018_unknown.dxf", "../../../../share/samples/site.dxf"};

struct DxfWrite : testing::Test {
    document doc{3};

    std::unique_ptr<database> parse(const std::string& bytes)
    {
        dxf_error error;
        auto made = parse_dxf(bytes, "x.dxf", doc, &error);
        EXPECT_TRUE(made) << error.text();
        return made;
    }
    std::unique_ptr<database> with_entity(const std::string& pairs, const std::string& more = "")
    {
        return parse("0\nSECTION\n2\nHEADER\n9\n$ACADVER\n1\nAC1015\n0\nENDSEC\n" + more +
                     "0\nSECTION\n2\nENTITIES\n" + pairs + "0\nENDSEC\n0\nEOF\n");
    }
    // Type and groups of the model's entities in an R12 file, as short text.
    std::string in_r12(database& db)
    {
        const std::string text = dxf_text(db, dxf_version::r12);
        const std::size_t from = text.find("ENTITIES\n") + 9;
        return text.substr(from, text.find("  0\nENDSEC", from) - from);
    }
};

// ---- round trips

TEST_F(DxfWrite, ReadWrittenAndReadAgainIsTheSame)
{
    for (const char* name : SAMPLES)
        for (const dxf_version version : {dxf_version::r2000, dxf_version::r2007}) {
            const auto first = parse(sample(name));
            ASSERT_TRUE(first);
            const std::string text = dxf_text(*first, version);
            const auto second = parse(text);
            ASSERT_TRUE(second) << name;
            EXPECT_EQ(test::difference(test::dump(*second), test::dump(*first)), "") << name;
            EXPECT_EQ(test::difference(dxf_text(*second, version), text), "") << name;
        }
}

TEST_F(DxfWrite, SameDrawingGivesTheSameBytes)
{
    for (const char* name : SAMPLES)
        for (const dxf_version version : {dxf_version::r12, dxf_version::r2000, dxf_version::r2007}) {
            const auto db = parse(sample(name));
            ASSERT_TRUE(db);
            const std::string text = dxf_text(*db, version);
            EXPECT_EQ(dxf_text(*db, version), text) << name;
            EXPECT_EQ(dxf_text(*parse(sample(name)), version), text) << name;
        }
}

// Lines of a modern file come back out as they went in.
TEST_F(DxfWrite, ModernObjectsComeOutAsTheyWentIn)
{
    for (const char* name : {"r2000.dxf", "r2018_unknown.dxf"}) {
        const std::string in = sample(name);
        const std::string out = dxf_text(*parse(in), dxf_version::r2000);
        for (const char* objects : {"ENTITIES", "OBJECTS"}) {
            const std::size_t from = in.find(objects);
            const std::string expected = in.substr(from, in.find("  0\nENDSEC", from) - from);
            EXPECT_NE(out.find(expected), std::string::npos) << name << '\n' << expected;
        }
    }
}

TEST_F(DxfWrite, NewDrawingGoesOutAndComesBack)
{
    database& db = database_of(doc);
    const auto back = parse(dxf_text(db, dxf_version::r2000));
    ASSERT_TRUE(back);
    EXPECT_EQ(test::difference(test::dump(*back), test::dump(db)), "");
}

TEST_F(DxfWrite, VersionAndNextHandleAreTold)
{
    const auto db = parse(sample("r2000.dxf"));
    ASSERT_TRUE(db);
    EXPECT_NE(dxf_text(*db, dxf_version::r12).find("$ACADVER\n  1\nAC1009\n"), std::string::npos);
    EXPECT_NE(dxf_text(*db, dxf_version::r2000).find("$ACADVER\n  1\nAC1015\n"), std::string::npos);
    EXPECT_NE(dxf_text(*db, dxf_version::r2007).find("$ACADVER\n  1\nAC1021\n"), std::string::npos);
    for (const dxf_version version : {dxf_version::r12, dxf_version::r2000}) {
        const auto back = parse(dxf_text(*db, version));
        ASSERT_TRUE(back);
        for (object_id id = 1; id < back->size(); ++id)
            EXPECT_EQ(back->by_handle(back->at(id).handle), id);
        EXPECT_GE(back->next_handle(), db->next_handle());
    }
}

TEST_F(DxfWrite, ErasedObjectsStayOut)
{
    const auto db = parse(sample("r12_blocks.dxf"));
    ASSERT_TRUE(db);
    db->set_erased(db->by_handle(0x40), true);
    db->set_erased(db->by_handle(0x31), true);
    const auto back = parse(dxf_text(*db, dxf_version::r2000));
    ASSERT_TRUE(back);
    EXPECT_EQ(back->by_handle(0x40), 0u);
    EXPECT_EQ(back->by_handle(0x41), 0u) << "what it owned";
    EXPECT_EQ(back->by_handle(0x31), 0u);
    EXPECT_NE(back->by_handle(0x30), 0u);
}

TEST_F(DxfWrite, TextOfSeveralLinesStaysOneLineOfTheFile)
{
    const auto db = with_entity("0\nTEXT\n100\nAcDbEntity\n8\n0\n1\nx\n");
    ASSERT_TRUE(db);
    const object_id text = first_entity(*db, db->model_space());
    *find(db->modify(text), 1) = db->text_group(1, "one\ntwo\r\tthree^J");
    const auto back = parse(dxf_text(*db, dxf_version::r2000));
    ASSERT_TRUE(back);
    EXPECT_EQ(test::difference(test::dump(*back), test::dump(*db)), "");
}

TEST_F(DxfWrite, ValuesThatAreNoNumbersDoNoHarm)
{
    const auto db = with_entity("0\nCIRCLE\n100\nAcDbEntity\n8\n0\n10\n1.0\n20\n1.0\n30\n0.0\n40\n2.0\n");
    ASSERT_TRUE(db);
    const object_id circle = first_entity(*db, db->model_space());
    find(db->modify(circle), 40)->real = std::numeric_limits<double>::quiet_NaN();
    const auto back = parse(dxf_text(*db, dxf_version::r2000));
    ASSERT_TRUE(back);
    EXPECT_EQ(real_of(back->at(first_entity(*back, back->model_space())).groups, 40, 9), 0.0);
}

// ---- drawings at random

class generator
{
public:
    explicit generator(unsigned seed) : random_(seed) {}

    void fill(database& db)
    {
        for (int i = below(6); i > 0; --i)
            add_layer(db, "L" + word() + std::to_string(i), below(255));
        std::vector<object_id> owners{db.model_space(), db.paper_space()};
        for (int i = below(4); i > 0; --i)
            owners.push_back(add_block(db, "B" + std::to_string(i)));
        for (int i = below(60); i > 0; --i)
            entity(db, owners[static_cast<std::size_t>(below(owners.size()))]);
        for (int i = below(10); i > 0; --i) {
            group_list groups{db.text_group(0, "OBJ" + word()), handle_group(5, 0), handle_group(330, 0),
                              db.text_group(100, "AcDb" + word())};
            data(db, groups, below(12));
            db.append(0, object_class::object, std::move(groups));
        }
        group_list raw;
        data(db, raw, below(20));
        if (!raw.empty())
            db.raw_sections.push_back({"SECTION" + word(), raw});
        group_list value;
        data(db, value, 1);
        db.set_header("$OURS", value);
        group_list made{db.text_group(0, "CLASS")};
        data(db, made, 4);
        db.classes.push_back(made);
    }

private:
    int below(auto n) { return static_cast<int>(random_() % static_cast<unsigned>(n)); }

    double number()
    {
        switch (below(4)) {
        case 0:
            return below(2000) - 1000;
        case 1:
            return (below(2000000) - 1000000) / 1000.0;
        case 2:
            return std::ldexp(static_cast<double>(random_()), below(120) - 60);
        default:
            return std::uniform_real_distribution<double>(-7, 7)(random_);
        }
    }

    std::string word()
    {
        std::string out;
        for (int n = below(6); n > 0; --n)
            out += static_cast<char>('A' + below(26));
        return out;
    }

    std::string any_text()
    {
        static const char* const pieces[] = {"^",    " ",  "\n",  "\\P", "\\U+03A9", "\xE9",
                                             "\x80", "\t", "%%c", "x",   "0"};
        std::string out;
        for (int n = below(7); n > 0; --n)
            out += pieces[below(std::size(pieces))];
        return out;
    }

    group any_group(database& db)
    {
        static const int texts[] = {1, 2, 3, 4, 7, 300, 410, 430, 470, 1000, 1001, 1003};
        static const int reals[] = {40, 41, 42, 48, 50, 51, 58, 59, 140, 460, 1040};
        static const int points[] = {10, 11, 12, 17, 110, 210, 1010, 1011, 1013};
        static const int integers[] = {62, 70, 71, 90, 91, 160, 170, 270, 280, 290, 370, 420, 440, 1070, 1071};
        static const int handles[] = {320, 331, 340, 350, 360, 390, 480, 1005};
        const auto of = [this](auto& list) { return list[below(std::size(list))]; };
        switch (below(7)) {
        case 0:
        case 1:
            return db.text_group(of(texts), any_text());
        case 2:
            return real_group(of(reals), number());
        case 3:
            return below(2) ? point_group(of(points), number(), number())
                            : point_group(of(points), number(), number(), number());
        case 4:
            return int_group(of(integers), static_cast<std::int64_t>(random_()) >> below(64));
        case 5:
            return handle_group(of(handles), static_cast<std::uint64_t>(random_()) >> below(64));
        default: {
            group made = db.text_group(below(2) ? 310 : 1004, any_text());
            made.kind = group_kind::binary;
            return made;
        }
        }
    }

    void data(database& db, group_list& groups, int count)
    {
        for (; count > 0; --count)
            groups.push_back(any_group(db));
    }

    object_id one(database& db, object_id owner, const std::string& type)
    {
        group_list groups{db.text_group(0, type), handle_group(330, 0), handle_group(5, 0)};
        if (below(4) == 0)
            groups.insert(groups.end(), {db.text_group(102, "{APP"), handle_group(330, random_() >> 40),
                                         db.text_group(102, "}")});
        groups.push_back(db.text_group(100, "AcDbEntity"));
        if (owner == db.paper_space())
            groups.push_back(int_group(67, 1));
        groups.push_back(db.text_group(8, "0"));
        data(db, groups, below(15));
        return db.append(owner, object_class::entity, std::move(groups));
    }

    void entity(database& db, object_id owner)
    {
        const int kind = below(6);
        const object_id made = one(db, owner, kind == 0 ? "POLYLINE" : kind == 1 ? "INSERT" : "ANY" + word());
        const int children = kind > 1 ? 0 : below(4);
        for (int i = 0; i < children; ++i)
            one(db, made, kind == 0 ? "VERTEX" : "ATTRIB");
        if (kind == 0 || children)
            one(db, made, "SEQEND");
    }

    std::mt19937_64 random_;
};

TEST_F(DxfWrite, DrawingsAtRandomComeBackTheSame)
{
    for (unsigned seed = 0; seed < 150; ++seed) {
        const auto first = parse("0\nEOF\n");
        ASSERT_TRUE(first);
        generator(seed).fill(*first);
        for (const dxf_version version : {dxf_version::r2000, dxf_version::r2007}) {
            const std::string text = dxf_text(*first, version);
            const auto second = parse(text);
            ASSERT_TRUE(second) << seed;
            ASSERT_EQ(test::difference(test::dump(*second), test::dump(*first)), "") << seed;
            ASSERT_EQ(test::difference(dxf_text(*second, version), text), "") << seed;
        }
        // R12 takes what it knows, and the result is a good file (with remarks about groups that lack).
        if (seed % 30)
            continue;
        const auto old = parse(dxf_text(*first, dxf_version::r12));
        ASSERT_TRUE(old) << seed;
    }
}

// ---- R12

TEST_F(DxfWrite, LightweightPolylineBecomesAnOldOne)
{
    const auto db = with_entity(
        "0\nLWPOLYLINE\n5\n40\n100\nAcDbEntity\n8\nA\n62\n3\n370\n25\n100\nAcDbPolyline\n90\n3\n70\n129\n"
        "43\n0.5\n38\n7.5\n39\n1.0\n10\n0.0\n20\n0.0\n10\n10.0\n20\n0.0\n42\n1.0\n10\n10.0\n20\n5.0\n"
        "1001\nOURS\n1070\n7\n");
    ASSERT_TRUE(db);
    const std::string head =
        "  0\nPOLYLINE\n  5\n40\n  8\nA\n 62\n3\n 39\n1.0\n 66\n1\n 10\n0.0\n 20\n0.0\n 30\n7.5\n"
        " 70\n129\n 40\n0.5\n 41\n0.5\n1001\nOURS\n1070\n7\n  0\nVERTEX\n  5\n";
    EXPECT_EQ(in_r12(*db).substr(0, head.size()), head);
    const auto back = parse(dxf_text(*db, dxf_version::r12));
    ASSERT_TRUE(back);
    const object_id polyline = back->by_handle(0x40);
    ASSERT_EQ(back->type_of(polyline), "POLYLINE");
    std::string seen;
    for (object_id v = first_child(*back, polyline); v; v = next_child(*back, v)) {
        const group* at = find(back->at(v).groups, 10);
        seen += std::to_string(at->point[0]).substr(0, 4) + ',' + std::to_string(at->point[1]).substr(0, 3) +
                ',' + std::to_string(at->point[2]).substr(0, 3) + '~' +
                std::to_string(real_of(back->at(v).groups, 42, 9)).substr(0, 3) + ' ';
    }
    EXPECT_EQ(seen, "0.00,0.0,7.5~0.0 10.0,0.0,7.5~1.0 10.0,5.0,7.5~0.0 ");
    EXPECT_EQ(int_of(back->at(polyline).groups, 1070, 0), 7);
}

TEST_F(DxfWrite, ParagraphTextBecomesLinesOfText)
{
    const struct {
        const char *text, *lines;
    } cases[] = {
        {"one\\Ptwo", "one|two|"},
        {"{\\fArial|b0|i0;Big} {\\H2.5x;small}", "Big small|"},
        {"\\S1^ 2; in \\S3/4;", "1/2 in 3/4|"},
        {"a\\~b \\\\ \\{c\\}", "a b \\ {c}|"},
        {"\\LUnder\\l \\Oover\\o", "Under over|"},
        {"\\pxqc;\\A1;mid", "mid|"},
        {"\\U+03A9 %%d", "\\U+03A9 %%d|"},
        {"first\\P\\Pthird", "first|third|"},
        {"end\\", "end\\|"},
        {"\\C1", "|"},
    };
    for (const auto& each : cases) {
        const auto db = with_entity(
            "0\nMTEXT\n5\n40\n100\nAcDbEntity\n8\nA\n100\nAcDbMText\n10\n1.0\n20\n2.0\n30\n0.0\n40\n0.3\n1\n" +
            std::string(each.text) + "\n7\nROMAN\n");
        ASSERT_TRUE(db);
        const auto back = parse(dxf_text(*db, dxf_version::r12));
        ASSERT_TRUE(back);
        std::string lines;
        for (object_id id = first_entity(*back, back->model_space()); id; id = next_entity(*back, id)) {
            EXPECT_EQ(back->type_of(id), "TEXT");
            EXPECT_EQ(back->text_of(back->at(id).groups, 7), "ROMAN");
            lines += std::string(back->text_of(back->at(id).groups, 1)) + '|';
        }
        EXPECT_EQ(lines.empty() ? "|" : lines, each.lines) << each.text;
    }
}

TEST_F(DxfWrite, LinesOfParagraphTextStandWhereTheyStood)
{
    const struct {
        int attachment;
        double first, second; // base lines, up from the insertion point
    } cases[] = {{1, -3.0, -8.0}, {4, 1.0, -4.0}, {7, 5.0, 0.0}, {9, 5.0, 0.0}};
    for (const auto& each : cases) {
        const auto db = with_entity(
            "0\nMTEXT\n5\n40\n100\nAcDbEntity\n8\nA\n100\nAcDbMText\n10\n1.0\n20\n2.0\n30\n0.0\n40\n3.0\n71\n" +
            std::to_string(each.attachment) + "\n1\none\\Ptwo\n50\n0.0\n");
        ASSERT_TRUE(db);
        const auto back = parse(dxf_text(*db, dxf_version::r12));
        ASSERT_TRUE(back);
        const object_id one = back->by_handle(0x40), two = next_entity(*back, one);
        EXPECT_DOUBLE_EQ(find(back->at(one).groups, 10)->point[1], 2.0 + each.first) << each.attachment;
        EXPECT_DOUBLE_EQ(find(back->at(two).groups, 10)->point[1], 2.0 + each.second) << each.attachment;
        EXPECT_EQ(int_of(back->at(one).groups, 72, 9), each.attachment == 9 ? 2 : 0);
    }
}

TEST_F(DxfWrite, OldFilesHaveNothingThatOldProgramsRefuse)
{
    for (const char* name : SAMPLES) {
        const auto db = parse(sample(name));
        ASSERT_TRUE(db);
        std::istringstream lines(dxf_text(*db, dxf_version::r12));
        std::string code, value;
        while (std::getline(lines, code) && std::getline(lines, value)) {
            const int number = std::stoi(code);
            EXPECT_TRUE(number < 80 || number == 105 || (number >= 140 && number < 180) || number == 210 ||
                        number == 220 || number == 230 || number >= 999)
                << name << ' ' << code << ' ' << value;
            for (const char* newer : {"CLASSES", "OBJECTS", "BLOCK_RECORD", "LWPOLYLINE", "MTEXT", "HATCH",
                                      "GIZMO", "GADGET", "*Model_Space", "$DIMDEC", "ACDSDATA"})
                EXPECT_NE(value, newer) << name;
        }
    }
}

TEST_F(DxfWrite, OldFileComesBackFromAnOldFile)
{
    for (const char* name : {"r12_minimal.dxf", "r12_blocks.dxf"}) {
        const auto first = parse(sample(name));
        ASSERT_TRUE(first);
        const std::string text = dxf_text(*first, dxf_version::r12);
        const auto second = parse(text);
        ASSERT_TRUE(second);
        // Handles of what R12 files don't number (tables, block records) are given anew.
        const auto entities_of = [](const database& db) {
            std::string out;
            for (object_id id = 1; id < db.size(); ++id)
                if (db.at(id).family == object_class::entity)
                    for (const group& each : db.at(id).groups)
                        if (each.code != 330)
                            out += test::dump(db, each) + '\n';
            return out;
        };
        EXPECT_EQ(test::difference(entities_of(*second), entities_of(*first)), "") << name;
    }
}

TEST_F(DxfWrite, ArrowBlocksOfDimensionStylesGoByName)
{
    const auto db = parse(sample("r2000.dxf"));
    ASSERT_TRUE(db);
    const object_id dot = add_block(*db, "_DOT");
    db->modify(db->record("DIMSTYLE", "STANDARD")).push_back(handle_group(342, db->at(dot).handle));
    const std::string text = dxf_text(*db, dxf_version::r12);
    EXPECT_NE(text.find("  5\n_DOT\n"), std::string::npos);
}

// ---- files

struct DxfFile : DxfWrite {
    std::filesystem::path folder;
    DxfFile()
    {
        std::string name = (std::filesystem::temp_directory_path() / "zent_dxf_XXXXXX").string();
        folder = mkdtemp(name.data());
    }
    ~DxfFile() override { std::filesystem::remove_all(folder); }
    std::string contents(const std::string& name) const
    {
        std::ifstream in(folder / name, std::ios::binary);
        std::stringstream all;
        all << in.rdbuf();
        return all.str();
    }
};

TEST_F(DxfFile, IsWrittenWholeAndKeepsTheOldOne)
{
    const auto db = parse(sample("r2000.dxf"));
    const std::string path = (folder / "site.dxf").string();
    dxf_error error;
    ASSERT_TRUE(write_dxf(*db, path, dxf_version::r2000, true, &error)) << error.text();
    EXPECT_FALSE(std::filesystem::exists(folder / "site.bak"));
    const std::string first = contents("site.dxf");
    EXPECT_EQ(first, dxf_text(*db, dxf_version::r2000));
    ASSERT_TRUE(write_dxf(*db, path, dxf_version::r2007, true, &error));
    EXPECT_EQ(contents("site.bak"), first);
    const auto back = read_dxf(path, doc, &error);
    ASSERT_TRUE(back) << error.text();
    EXPECT_EQ(test::difference(test::dump(*back), test::dump(*db)), "");
}

TEST_F(DxfFile, StaysAsItWasWhenWritingFails)
{
    const auto db = parse(sample("r2000.dxf"));
    const std::string path = (folder / "site.dxf").string();
    std::ofstream(path) << "old";
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    const auto was = std::signal(SIGXFSZ, SIG_IGN);
    rlimit small = before;
    small.rlim_cur = 1000;
    setrlimit(RLIMIT_FSIZE, &small);
    dxf_error error;
    const bool written = write_dxf(*db, path, dxf_version::r2000, true, &error);
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, was);
    EXPECT_FALSE(written);
    EXPECT_EQ(error.file, path);
    EXPECT_FALSE(error.message.empty());
    EXPECT_EQ(contents("site.dxf"), "old");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder), {}), 1) << "nothing is left beside it";
}

TEST_F(DxfFile, CannotBeWrittenIntoNowhere)
{
    const auto db = parse(sample("r2000.dxf"));
    dxf_error error;
    EXPECT_FALSE(write_dxf(*db, (folder / "no" / "site.dxf").string(), dxf_version::r2000, false, &error));
    EXPECT_FALSE(write_dxf(*db, folder.string(), dxf_version::r2000, false, &error));
}

} // namespace
} // namespace host::db

// Lines of polyline files as chains.
#include <gtest/gtest.h>

#include "interchange/polyline_file.h"
#include "tests/drawing/chains.h"
#include "tests/fakes/fake_host.h"

namespace
{

struct polyline {
    int color;
    std::vector<corner> corners; // in file order
    bool operator==(const polyline&) const = default;
};
using polylines = std::vector<polyline>;

std::ostream& operator<<(std::ostream& out, const polyline& p)
{
    out << "color " << p.color << ":";
    for (const corner& c : p.corners)
        out << " " << c.x << "," << c.y << "," << c.z;
    return out;
}

// In file order; checks that both lists come in reverse.
polylines parsed(const std::string& text, int format)
{
    host_session session;
    const std::string path = session.directory() + "test.txt";
    write_text(path, text);
    polylines result;
    file_chain* list = parse_polyline_file(path.c_str(), format);
    for (const file_chain* chain = list; chain; chain = chain->next) {
        polyline p{chain->color, corners_of(chain->head)};
        for (const pl_vertex* v = chain->head; v; v = v->next)
            EXPECT_EQ(v->type, 1);
        std::reverse(p.corners.begin(), p.corners.end());
        result.push_back(p);
    }
    free_file_chains(list);
    EXPECT_TRUE(session.heap_is_as_before());
    std::reverse(result.begin(), result.end());
    return result;
}

struct parse_case {
    const char* name;
    const char* text;
    polylines expected;
};

TEST(ParseOwn, Cases)
{
    const parse_case cases[] = {
        {"with z", "POLYLINE,4\n1,2,3\n4,5,6\n", {{1, {{1, 2, 3}, {4, 5, 6}}}}},
        {"without z", "POLYLINE,14\n1,2\n4,5\n", {{2, {{1, 2, 0}, {4, 5, 0}}}}},
        {"two polylines, no end line between",
         "POLYLINE,2\n1,2\nPOLYLINE,99\n3,4\n",
         {{3, {{1, 2}}}, {99, {{3, 4}}}}},
        {"no colour", "POLYLINE\n1,2\n", {{0, {{1, 2}}}}},
        {"colour that is no number", "POLYLINE,red\n1,2\n", {{0, {{1, 2}}}}},
        {"more words on the header", "old POLYLINE of 1999, 3 and more,7\n1,2\n", {{4, {{1, 2}}}}},
        {"the first comma decides", "a,5 POLYLINE,3\n1,2\n", {{6, {{1, 2}}}}},
        {"header in lower case is no header",
         "POLYLINE,4\n1,2\npolyline,4\n3,4\n",
         {{1, {{1, 2}, {0, 4}, {3, 4}}}}},
        {"vertices before any header", "1,2\n3,4\nPOLYLINE,4\n5,6\n", {{1, {{5, 6}}}}},
        {"line with one field", "POLYLINE,4\n1,2\n7\n\nEND\n3,4\n", {{1, {{1, 2}, {3, 4}}}}},
        {"line that ends in its comma", "POLYLINE,4\n1,\n3,4\n", {{1, {{3, 4}}}}},
        {"junk reads as 0", "POLYLINE,4\nx,y,z\n1e2x,-.5,+3\n", {{1, {{0, 0, 0}, {100, -0.5, 3}}}}},
        {"two signs are junk", "POLYLINE,4\n+-5,-+5,++5\n+,-,+7\n", {{1, {{0, 0, 0}, {0, 0, 7}}}}},
        {"signed colours",
         "POLYLINE,+4\n1,2\nPOLYLINE,-3\n1,2\nPOLYLINE,+-4\n1,2\n",
         {{1, {{1, 2, 0}}}, {-3, {{1, 2, 0}}}, {0, {{1, 2, 0}}}}},
        {"commas in a row count as one", "POLYLINE,4\n1,,3\n,1,2\n", {{1, {{1, 3, 0}, {1, 2, 0}}}}},
        {"no number holds it", "POLYLINE,4\nnan,inf,1e999\n", {{1, {{0, 0, 0}}}}},
        {"blanks around numbers", "POLYLINE, 4\n 1 , 2 , 3 \n", {{1, {{1, 2, 3}}}}},
        {"fields behind z", "POLYLINE,4\n1,2,3,4,5,6\n", {{1, {{1, 2, 3}}}}},
        {"carriage returns", "POLYLINE,4\r\n1,2,3\r\n", {{1, {{1, 2, 3}}}}},
        {"no line end at the end", "POLYLINE,4\n1,2,3", {{1, {{1, 2, 3}}}}},
        {"header alone", "POLYLINE,4\n", {{1, {}}}},
        {"empty file", "", {}},
    };
    for (const parse_case& c : cases)
        EXPECT_EQ(parsed(c.text, POLYLINE_FORMAT_OWN), c.expected) << c.name;
}

TEST(ParseDtm, Cases)
{
    const parse_case cases[] = {
        {"one polyline", "2\n1,2,3\n4,5,6\nEND\n", {{0, {{1, 2, 3}, {4, 5, 6}}}}},
        {"two, the end line is passed over",
         "2\n1,2,3\nEND\n2\n4,5,6\nEND\n",
         {{0, {{1, 2, 3}}}, {0, {{4, 5, 6}}}}},
        {"a line of 3 is a header as well", "3\n1,2,3\n", {{0, {{1, 2, 3}}}}},
        {"with carriage returns", "2\r\n1,2,3\r\nEND\r\n", {{0, {{1, 2, 3}}}}},
        {"an empty line is a header too", "2\n1,2,3\n\n4,5,6\n", {{0, {{1, 2, 3}}}, {0, {{4, 5, 6}}}}},
        {"three characters are no header", "2\n12\n1,2,3\n", {{0, {{1, 2, 3}}}}},
        {"two characters at the very end are one", "2\n1,2,3\n12", {{0, {{1, 2, 3}}}, {0, {}}}},
        {"without z", "2\n1,2\n", {{0, {{1, 2, 0}}}}},
        {"vertices before any header", "1,2,3\n2\n4,5,6\n", {{0, {{4, 5, 6}}}}},
    };
    for (const parse_case& c : cases)
        EXPECT_EQ(parsed(c.text, POLYLINE_FORMAT_DTM), c.expected) << c.name;
}

TEST(ParseMicroStation, Cases)
{
    const parse_case cases[] = {
        {"one polyline", "1   2   3   1\n4   5   6   0\n", {{0, {{1, 2, 3}, {4, 5, 6}}}}},
        {"two", "1 2 3 1\n4 5 6 0\n7 8 9  1\n", {{0, {{1, 2, 3}, {4, 5, 6}}}, {0, {{7, 8, 9}}}}},
        {"no flag on the first vertex", "1 2 3 0\n4 5 6 0\n", {{0, {{1, 2, 3}, {4, 5, 6}}}}},
        {"blanks alone part the fields", "1\t2\t3\t1\n1,2,3,1\n4 5 6 0\n", {{0, {{4, 5, 6}}}}},
        {"empty lines", "\n1 2 3 1\n   \n4 5 6 0\n", {{0, {{1, 2, 3}, {4, 5, 6}}}}},
        {"three fields are skipped", "1 2 3 1\n4 5 6\n7 8 9 0\n", {{0, {{1, 2, 3}, {7, 8, 9}}}}},
        {"a blank at the end is no field", "1 2 3 1\n4 5 6 \n", {{0, {{1, 2, 3}}}}},
        {"blanks in front", "   1 2 3 1\n", {{0, {{1, 2, 3}}}}},
        {"flag of another number", "1 2 3 1\n4 5 6 2\n", {{0, {{1, 2, 3}, {4, 5, 6}}}}},
        {"flag as a real", "1 2 3 1.0\n4 5 6 1.0\n", {{0, {{1, 2, 3}}}, {0, {{4, 5, 6}}}}},
        {"more fields", "1 2 3 1 9 9\n", {{0, {{1, 2, 3}}}}},
        {"junk", "a b c d\n", {{0, {{0, 0, 0}}}}},
    };
    for (const parse_case& c : cases)
        EXPECT_EQ(parsed(c.text, POLYLINE_FORMAT_MICROSTATION), c.expected) << c.name;
}

TEST(Parse, LinesAreCutAt112Characters)
{
    // The rest of a longer line is a line of its own.
    const auto with_length = [](std::size_t length) {
        std::string line = "1,2,3,";
        line.resize(length - 1, 'x');
        return "2\n" + line + "9\n"; // `length` characters and the line end
    };
    // 111 characters and the line end, and 112 with the line end left over: a header.
    EXPECT_EQ(parsed(with_length(111), POLYLINE_FORMAT_DTM).size(), 1u);
    EXPECT_EQ(parsed(with_length(112), POLYLINE_FORMAT_DTM).size(), 2u);
    EXPECT_EQ(parsed(with_length(113), POLYLINE_FORMAT_DTM).size(), 2u);
    EXPECT_EQ(parsed(with_length(114), POLYLINE_FORMAT_DTM).size(), 1u);
}

TEST(Parse, FileThatDoesNotOpenGivesNothing)
{
    host_session session;
    EXPECT_EQ(parse_polyline_file((session.directory() + "none.pln").c_str(), POLYLINE_FORMAT_OWN), nullptr);
    EXPECT_EQ(session.printed, "");
}

TEST(Parse, ComesInReverseFileOrder)
{
    host_session session;
    const std::string path = session.directory() + "a.pln";
    write_text(path, "POLYLINE,4\n1,1\n2,2\nPOLYLINE,14\n3,3\n");
    file_chain* list = parse_polyline_file(path.c_str(), POLYLINE_FORMAT_OWN);
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->color, 2);
    ASSERT_NE(list->next, nullptr);
    EXPECT_EQ(list->next->color, 1);
    EXPECT_EQ(corners_of(list->next->head), (std::vector<corner>{{2, 2}, {1, 1}}));
    free_file_chains(list);
    EXPECT_TRUE(session.heap_is_as_before());
}

} // namespace

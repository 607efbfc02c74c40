// Texts and buffers: cuts at their edges, trims, the order of names with numbers.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "common/text.h"
#include "common/text_buffer.h"
#include "hostapi/ads.h"
#include "tests/fakes/fake_host.h"

namespace
{

TEST(TextBuffer, TextThatFitsIsWhole)
{
    char out[4];
    text_set(out, "abc");
    EXPECT_STREQ(out, "abc");
}

TEST(TextBuffer, LongTextIsCutAndEnded)
{
    char out[5] = {'x', 'x', 'x', 'x', 'x'};
    text_set({out, 4}, "abcdef");
    EXPECT_STREQ(out, "abc");
    EXPECT_EQ(out[4], 'x');
}

TEST(TextBuffer, SizeZeroIsLeftAlone)
{
    char out[1] = {'x'};
    text_set({out, 0}, "abc");
    text_add({out, 0}, "abc");
    text_format({out, 0}, "%d", 1);
    EXPECT_EQ(out[0], 'x');
}

TEST(TextBuffer, SetTakesAPartOfItsOwnBuffer)
{
    char out[16] = "PROJECT=ABC";
    text_set(out, out + 8);
    EXPECT_STREQ(out, "ABC");
}

TEST(TextBuffer, AddStopsAtTheEnd)
{
    char out[6] = "abc";
    text_add(out, "defgh");
    EXPECT_STREQ(out, "abcde");
    text_add(out, "i");
    EXPECT_STREQ(out, "abcde");
}

TEST(TextBuffer, FormatIsCut)
{
    char out[6];
    text_format(out, "%s=%d", "ab", 12345);
    EXPECT_STREQ(out, "ab=12");
}

TEST(NewStrings, DupCopiesAndReleasesTheOldOne)
{
    host_session session;
    char* text = str_dup(nullptr, "one");
    EXPECT_STREQ(text, "one");
    text = str_dup(text, "three");
    EXPECT_STREQ(text, "three");
    text = str_dup(text, text + 2);
    EXPECT_STREQ(text, "ree");
    text = str_dup(text, nullptr);
    EXPECT_STREQ(text, "");
    acad_free(text);
    EXPECT_TRUE(session.heap_is_as_before());
}

TEST(NewStrings, AppendJoinsAndReleasesTheHead)
{
    host_session session;
    char* text = str_append(nullptr, "ab");
    EXPECT_STREQ(text, "ab");
    text = str_append(text, "cd");
    EXPECT_STREQ(text, "abcd");
    text = str_append(text, nullptr);
    EXPECT_STREQ(text, "abcd");
    acad_free(text);
    text = str_append(nullptr, nullptr);
    EXPECT_STREQ(text, "");
    acad_free(text);
    EXPECT_TRUE(session.heap_is_as_before());
}

struct change {
    const char* from;
    const char* to;
};

std::string changed(void (*operation)(char*), const char* from)
{
    std::string text = from;
    operation(text.data());
    return text.c_str();
}

TEST(InPlace, StripTakesOutEverySpace)
{
    const change cases[] = {{"", ""}, {" ", ""}, {" a b  c ", "abc"}, {"a\tb", "a\tb"}, {"abc", "abc"}};
    for (const change& c : cases)
        EXPECT_EQ(changed(str_strip_spaces, c.from), c.to) << c.from;
}

TEST(InPlace, TrimTakesSpacesAtTheHeadAndLineEndsAtTheEnd)
{
    const change cases[] = {{"", ""},       {"   ", ""},       {"  a b  ", "a b"},
                            {"a\r\n", "a"}, {"a \r \n ", "a"}, {"\na", "\na"}, // only spaces go at the head
                            {"\r\n", ""},   {"a\t", "a\t"}};
    for (const change& c : cases)
        EXPECT_EQ(changed(str_trim, c.from), c.to) << c.from;
}

TEST(InPlace, CaseChangesLettersOfTheCLocaleOnly)
{
    EXPECT_EQ(changed(str_upper, "aZ9_\xE9"), "AZ9_\xE9");
    EXPECT_EQ(changed(str_lower, "aZ9_\xC9"), "az9_\xC9");
}

struct order {
    const char* a;
    const char* b;
    int sign;
};

int sign_of(int value)
{
    return value < 0 ? -1 : value > 0 ? 1 : 0;
}

TEST(CompareNumeric, NumbersGoByValueAndTheRestByBytes)
{
    const order cases[] = {
        {"", "", 0},
        {"", "A", -1},
        {"A", "", 1},
        {"PT10", "PT9", 1},
        {"PT9", "PT10", -1},
        {"PT9", "PT9", 0},
        {"PT9", "PT9A", -1},
        {"PT9A", "PT9", 1},
        {"A", "B", -1},
        {"B", "A", 1},
        {"A1", "AB", -1},                  // a digit against a letter: by bytes
        {"A01", "A1", -1},                 // equal values go on: then the whole texts decide
        {"A1B2", "A1B10", -1},             // the second number counts too
        {"99999999999", "9", 1},           // beyond an int
        {"99999999999", "88888888888", 1}, // both beyond
        {"10000000000", "9999999999", 1},  // both beyond, of other lengths
        {"PT1B", "PT01A", 1},              // equal values: then character by character
        {"PT00", "PT0", 1},
    };
    for (const order& c : cases)
        EXPECT_EQ(sign_of(str_compare_numeric(c.a, c.b)), c.sign) << c.a << " " << c.b;
}

TEST(CompareNumeric, NumbersAnswerExactlyOne)
{
    EXPECT_EQ(str_compare_numeric("PT10", "PT9"), 1);
    EXPECT_EQ(str_compare_numeric("PT9", "PT10"), -1);
}

} // namespace

// Names that the host keeps, look-ups in lists, wild cards.
#include <gtest/gtest.h>

#include <string>

#include "common/names.h"
#include "hostapi/ads.h"
#include "tests/fakes/fake_host.h"

namespace
{

TEST(Names, EachForbiddenCharacterMakesANameBad)
{
    const std::string forbidden = "<>/\\\":?|,=`~*";
    ASSERT_EQ(forbidden.size(), 13u);
    for (int c = 1; c < 256; ++c) {
        if (c == ' ' || c == '\r' || c == '\n')
            continue;
        std::string name = "a?b";
        name[1] = static_cast<char>(c);
        const bool is_forbidden = forbidden.find(static_cast<char>(c)) != std::string::npos;
        EXPECT_EQ(name_is_bad(name.data()), is_forbidden ? 1 : 0) << c;
        EXPECT_EQ(name_clean(name.data()), 1);
        EXPECT_EQ(name[1], is_forbidden ? '_' : static_cast<char>(c)) << c;
    }
}

TEST(Names, BlankNameIsBadAndEmptyAfterwards)
{
    char blank[] = "  ";
    EXPECT_EQ(name_is_bad(blank), 1);
    EXPECT_STREQ(blank, "");
    char empty[] = " \r\n";
    EXPECT_EQ(name_clean(empty), 0);
    EXPECT_STREQ(empty, "");
}

TEST(Names, AreTrimmedInPlace)
{
    char name[] = " a;b ";
    EXPECT_EQ(name_is_bad(name), 0); // the semicolon is a good character
    EXPECT_STREQ(name, "a;b");
    char dirty[] = "  *a:b? ";
    EXPECT_EQ(name_clean(dirty), 1);
    EXPECT_STREQ(dirty, "_a_b_");
}

TEST(Lists, FindGivesTheFirstNodeOfACode)
{
    resbuf* list = acutBuildList(RTDXF0, "LINE", 8, "A", 8, "B", 0);
    EXPECT_STREQ(rb_find(list, 8)->resval.rstring, "A");
    EXPECT_STREQ(rb_find(list, 0)->resval.rstring, "LINE");
    EXPECT_EQ(rb_find(list, 62), nullptr);
    EXPECT_EQ(rb_find(static_cast<resbuf*>(nullptr), 8), nullptr);
    EXPECT_EQ(rb_find(static_cast<const resbuf*>(list), 8), list->rbnext);
    acutRelRb(list);
}

struct layer_case {
    std::string name, stored, printed;
};

TEST(EntityLayer, IsUpperCaseAndCutAt31)
{
    const std::string a31(31, 'a'), a32(32, 'a'), A31(31, 'A'), A32(32, 'A');
    const layer_case cases[] = {
        {"fence", "FENCE", ""},
        {a31, A31, ""},
        {a32, A31, "\nWarning: layer name " + A32 + " truncated to" + A31},
    };
    for (const layer_case& c : cases) {
        host_session session;
        resbuf* list = acutBuildList(RTDXF0, "LINE", 8, c.name.c_str(), 0);
        const resbuf* node = entity_layer(list);
        ASSERT_EQ(node, list->rbnext);
        EXPECT_EQ(node->resval.rstring, c.stored);
        EXPECT_EQ(session.printed, c.printed);
        acutRelRb(list);
        EXPECT_TRUE(session.heap_is_as_before());
    }
}

TEST(EntityLayer, ListWithoutALayerGivesNull)
{
    resbuf* list = acutBuildList(RTDXF0, "LINE", 0);
    EXPECT_EQ(entity_layer(list), nullptr);
    EXPECT_EQ(entity_layer(nullptr), nullptr);
    acutRelRb(list);
}

TEST(Application, KnownOneIsNotRegisteredAgain)
{
    host_session session;
    fake.applications = {"ZENT"};
    fake.registering_fails = true;
    EXPECT_EQ(zent_regapp("ZENT"), 1);
    EXPECT_EQ(session.printed, "");
    EXPECT_TRUE(session.heap_is_as_before());
}

TEST(Application, NewOneIsRegistered)
{
    host_session session;
    EXPECT_EQ(zent_regapp("ZENT"), 1);
    EXPECT_EQ(fake.applications, std::vector<std::string>{"ZENT"});
}

TEST(Application, RefusalIsTold)
{
    host_session session;
    fake.registering_fails = true;
    EXPECT_EQ(zent_regapp("ZENT"), 0);
    EXPECT_EQ(session.printed, "\nError: unable to register ZENT.");
}

TEST(WildMatch, PatternOrEqualTexts)
{
    EXPECT_EQ(wild_match(nullptr, "A"), RTNONE);
    EXPECT_EQ(wild_match("A", nullptr), RTNONE);
    EXPECT_EQ(wild_match("ABC", "A*"), RTNORM);
    EXPECT_EQ(wild_match("A#", "A#"), RTNORM); // no match of the pattern, but the same text
    EXPECT_EQ(wild_match("ABC", "B*"), acutWcMatch("ABC", "B*"));
    EXPECT_NE(wild_match("ABC", "B*"), RTNORM);
}

} // namespace

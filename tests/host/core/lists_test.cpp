#include <gtest/gtest.h>

#include "host/core/heap.h"
#include "host/core/resbuf.h"
#include "host/core/trace.h"

namespace
{

TEST(Lists, BuildListTakesAllKindsAndReleaseGivesAllBack)
{
    const std::size_t blocks = host::heap_live_blocks();
    const ads_point p = {1, 2, 3};
    const ads_name n = {7, 1};
    resbuf* list = acutBuildList(RTLB, RTSTR, "text", RTREAL, 2.5, RTSHORT, 7, RTLONG, 70000L, RT3DPOINT, p,
                                 RTENAME, n, RTNIL, RTT, RTLE, RTNONE);
    EXPECT_EQ(host::printed_list(list, false), "((\"text\" 2.5 7 70000 (1.0 2.0 3.0) <Entity name: 7> nil T))");
    acutRelRb(list);
    EXPECT_EQ(host::heap_live_blocks(), blocks);
}

TEST(Lists, GroupZeroStandsInAnEntityListByItsOwnCode)
{
    const ads_point p = {1, 2, 0};
    const host::list_ptr list(acutBuildList(RTDXF0, "POINT", 8, "WALLS", 10, p, 62, 3, 40, 0.5, 0));
    ASSERT_TRUE(list);
    EXPECT_EQ(list->restype, 0);
    EXPECT_EQ(host::printed_list(list.get(), true),
              "((0 . \"POINT\") (8 . \"WALLS\") (10 1.0 2.0 0.0) (62 . 3) (40 . 0.5))");
}

TEST(Lists, UnknownTypeGivesNoListAndLeavesNothingBehind)
{
    const std::size_t blocks = host::heap_live_blocks();
    EXPECT_EQ(acutBuildList(RTSTR, "a", 5099, 1, RTNONE), nullptr);
    EXPECT_EQ(host::heap_live_blocks(), blocks);
}

TEST(Lists, ExtendedDataPrintsNestedByApplication)
{
    const host::list_ptr list(
        acutBuildList(RTDXF0, "LINE", -3, 1001, "CHANNEL", 1070, 5, 1001, "COREHOLE", 1000, "x", RTNONE));
    EXPECT_EQ(host::printed_list(list.get(), true),
              "((0 . \"LINE\") (-3 (\"CHANNEL\" (1070 . 5)) (\"COREHOLE\" (1000 . \"x\"))))");
}

TEST(Lists, CopyIsIndependentOfTheOriginal)
{
    host::list_ptr first(acutBuildList(RTSTR, "abc", RTSHORT, 1, RTNONE));
    const host::list_ptr copy(host::rb_copy(first.get()));
    first.reset();
    EXPECT_EQ(host::printed_list(copy.get(), false), "(\"abc\" 1)");
}

struct code_type {
    int code;
    host::value_type type;
};
class CodeTypes : public testing::TestWithParam<code_type>
{
};
TEST_P(CodeTypes, GroupCodeHasItsType)
{
    EXPECT_EQ(host::type_of_code(GetParam().code), GetParam().type);
}
using enum host::value_type;
INSTANTIATE_TEST_SUITE_P(
    Table, CodeTypes,
    testing::Values(code_type{0, text}, code_type{5, text}, code_type{9, text}, code_type{10, point},
                    code_type{18, point}, code_type{38, real}, code_type{59, real}, code_type{60, int16},
                    code_type{79, int16}, code_type{90, int32}, code_type{99, int32}, code_type{100, text},
                    code_type{102, text}, code_type{110, point}, code_type{140, real}, code_type{170, int16},
                    code_type{210, point}, code_type{280, int16}, code_type{290, int16}, code_type{300, text},
                    code_type{310, binary}, code_type{320, text}, code_type{330, name}, code_type{360, name},
                    code_type{370, int16}, code_type{410, text}, code_type{420, int32}, code_type{1000, text},
                    code_type{1004, binary}, code_type{1010, point}, code_type{1040, real},
                    code_type{1070, int16}, code_type{1071, int32}, code_type{-1, name}, code_type{-4, text},
                    code_type{-3, none}, code_type{5005, text}, code_type{5009, point}));

} // namespace

// Host variables that a tool reads, changes and puts back, in the host's own table of variables.
#include "common/variables.h"

#include <gtest/gtest.h>

#include <string>

#include "host/core/heap.h"
#include "host/database/sysvars.h"
#include "hostapi/ads.h"
#include "tests/host/database/lists.h"

namespace
{

using host::db::int_variable;
using host::db::real_variable;
using host::db::text_variable;

struct Variables : host::db::testing_lists::Drawing {
    const std::size_t blocks = host::heap_live_blocks();
    ~Variables() override { EXPECT_EQ(host::heap_live_blocks(), blocks); }
    static host::document& here() { return host::current_document(); }
};

TEST_F(Variables, RealsAndShortsAreNumbers)
{
    EXPECT_EQ(variable_number("DIMASZ", -1.0), 0.18);
    host::db::set_int(here(), "OSMODE", 35);
    EXPECT_EQ(variable_number("OSMODE", -1.0), 35.0);
}

TEST_F(Variables, WhatIsNoNumberIsTheStandard)
{
    EXPECT_EQ(variable_number("CLAYER", -1.0), -1.0);
    EXPECT_EQ(variable_number("EXTMIN", -1.0), -1.0);
    EXPECT_EQ(variable_number("NOSUCHNAME", -1.0), -1.0);
}

TEST_F(Variables, AreSetByTheirType)
{
    EXPECT_TRUE(variable_set_real("DIMASZ", 2.5));
    EXPECT_EQ(real_variable(here(), "DIMASZ"), 2.5);
    EXPECT_TRUE(variable_set_short("OSMODE", 1));
    EXPECT_EQ(int_variable(here(), "OSMODE"), 1);
    EXPECT_FALSE(variable_set_real("NOSUCHNAME", 2.5));
    EXPECT_FALSE(variable_set_short("ACADVER", 1));
}

TEST_F(Variables, AKeptOneIsPutBackAtTheEndOfItsScope)
{
    host::db::set_int(here(), "OSMODE", 35);
    host::db::set_real(here(), "ANGBASE", 0.5);
    host::db::set_text(here(), "MODEMACRO", "LOT 17");
    const double old_place[3] = {1.0, 2.0, 3.0};
    host::db::set_point(here(), "LASTPOINT", old_place);
    {
        const kept_variable osmode("OSMODE"), base("ANGBASE"), macro("MODEMACRO"), place("LASTPOINT");
        EXPECT_EQ(osmode.value().restype, RTSHORT);
        EXPECT_EQ(osmode.value().resval.rint, 35);
        EXPECT_EQ(base.value().resval.rreal, 0.5);
        EXPECT_STREQ(macro.value().resval.rstring, "LOT 17");
        variable_set_short("OSMODE", 0);
        variable_set_real("ANGBASE", 0.0);
        host::db::set_text(here(), "MODEMACRO", "");
        const double new_place[3] = {7.0, 8.0, 9.0};
        host::db::set_point(here(), "LASTPOINT", new_place);
        EXPECT_EQ(int_variable(here(), "OSMODE"), 0);
    }
    EXPECT_EQ(int_variable(here(), "OSMODE"), 35);
    EXPECT_EQ(real_variable(here(), "ANGBASE"), 0.5);
    EXPECT_EQ(text_variable(here(), "MODEMACRO"), "LOT 17");
    const host::list_ptr place = host::db::get_variable(here(), "LASTPOINT");
    EXPECT_EQ(place->resval.rpoint[0], 1.0);
    EXPECT_EQ(place->resval.rpoint[2], 3.0);
}

TEST_F(Variables, KeptOnesAreNestedLikeTheirScopes)
{
    host::db::set_int(here(), "OSMODE", 1);
    {
        const kept_variable outer("OSMODE");
        variable_set_short("OSMODE", 2);
        {
            const kept_variable inner("OSMODE");
            variable_set_short("OSMODE", 3);
        }
        EXPECT_EQ(int_variable(here(), "OSMODE"), 2);
    }
    EXPECT_EQ(int_variable(here(), "OSMODE"), 1);
}

TEST_F(Variables, ADroppedOneStaysAsItIs)
{
    host::db::set_text(here(), "MODEMACRO", "LOT 17");
    {
        kept_variable macro("MODEMACRO");
        host::db::set_text(here(), "MODEMACRO", "LOT 18");
        macro.drop();
        EXPECT_STREQ(macro.value().resval.rstring, "LOT 17");
    }
    EXPECT_EQ(text_variable(here(), "MODEMACRO"), "LOT 18");
}

TEST_F(Variables, AnUnknownOneIsNotKept)
{
    const kept_variable none("NOSUCHNAME");
    EXPECT_EQ(none.value().restype, 0);
}

TEST_F(Variables, AKeptOneThatCannotBeSetDoesNoHarm)
{
    {
        const kept_variable release("ACADVER");
        EXPECT_EQ(release.value().restype, RTSTR);
    }
    EXPECT_EQ(text_variable(here(), "ACADVER"), "15.0");
}

} // namespace

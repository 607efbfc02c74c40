// The view of a drawing: kept in files, sound whatever a file says, and back and forth between drawing and
// screen.
#include "host/database/active_view.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <limits>
#include <numbers>

#include "host/core/document.h"
#include "host/database/dxf.h"
#include "host/database/dxf_numbers.h"
#include "host/database/entities.h"
#include "host/database/sysvars.h"
#include "tests/host/database/dxf_binary.h"

namespace host::db
{
namespace
{

constexpr double PI = std::numbers::pi;

class ActiveView : public testing::Test
{
protected:
    void SetUp() override { open_document(); }
    void TearDown() override { close_all_documents(); }
    document& doc() { return current_document(); }
    database& drawing() { return database_of(doc()); }
    group_list& record() { return drawing().modify(drawing().record("VPORT", "*ACTIVE")); }

    // A drawing with a VPORT table that has the groups given ("40\n0.0\n"), taken as the current one.
    bool open(const std::string& groups, bool as_binary = false)
    {
        std::string text = "0\nSECTION\n2\nTABLES\n0\nTABLE\n2\nVPORT\n70\n1\n0\nVPORT\n2\n*ACTIVE\n70\n0\n" +
                           groups + "0\nENDTAB\n0\nENDSEC\n0\nEOF\n";
        if (as_binary)
            text = test::binary_dxf(text, true);
        dxf_error error;
        std::unique_ptr<database> made = parse_dxf(text, "x.dxf", doc(), &error);
        if (made)
            replace_database(doc(), std::move(made));
        return made == nullptr && error.message.empty();
    }
};

TEST_F(ActiveView, DamagedRecordsStillGiveAViewWithASize)
{
    constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();
    constexpr double INFINITE = std::numeric_limits<double>::infinity();
    for (const double damage : {0.0, -5.0, -0.0, NOT_A_NUMBER, INFINITE, -INFINITE}) {
        SCOPED_TRACE(damage);
        find(record(), 40)->real = damage;
        find(record(), 41)->real = damage;
        EXPECT_EQ(real_variable(doc(), "VIEWSIZE"), 9.0);
        const list_ptr high = get_variable(doc(), "VSMAX");
        ASSERT_TRUE(high);
        EXPECT_TRUE(std::isfinite(high->resval.rpoint[0]));
    }
    find(record(), 12)->point[0] = NOT_A_NUMBER;
    find(record(), 16)->point[2] = 0.0; // looks nowhere
    find(record(), 17)->point[1] = INFINITE;
    find(record(), 51)->real = NOT_A_NUMBER;
    for (const char* name : {"VIEWCTR", "VSMIN", "VSMAX", "VIEWDIR", "TARGET"}) {
        const list_ptr value = get_variable(doc(), name);
        ASSERT_TRUE(value) << name;
        for (const double each : value->resval.rpoint)
            EXPECT_TRUE(std::isfinite(each)) << name;
    }
    EXPECT_EQ(real_variable(doc(), "VIEWTWIST"), 0.0);
    EXPECT_TRUE(active_view_of(drawing()).is_plan());
}

TEST_F(ActiveView, ADrawingWithoutARecordHasTheUsualViewAndGetsOneWithTheFirstChange)
{
    drawing().set_erased(drawing().record("VPORT", "*ACTIVE"), true);
    ASSERT_EQ(drawing().record("VPORT", "*ACTIVE"), 0u);
    EXPECT_EQ(real_variable(doc(), "VIEWSIZE"), 9.0);
    active_view view = active_view_of(drawing());
    view.height = 120;
    view.turn_to(1.0);
    put_active_view(drawing(), view);
    ASSERT_NE(drawing().record("VPORT", "*ACTIVE"), 0u);
    EXPECT_EQ(real_variable(doc(), "VIEWSIZE"), 120.0);
    EXPECT_EQ(real_variable(doc(), "VIEWTWIST"), 1.0);
}

TEST_F(ActiveView, FilesWithPoorRecordsGiveWhatTheyHave)
{
    struct {
        const char* groups;
        double height, x;
    } const cases[] = {
        {"", 9, 6},
        {"40\n0.0\n", 9, 6},
        {"40\n-12.5\n12\n3.0\n22\n4.0\n", 9, 3},
        {"40\n50.0\n", 50, 6},
        {"40\n1e-300\n", 1e-300, 6},
        {"12\n100.0\n22\n50.0\n40\n25.0\n51\n30.0\n", 25, 100 * std::cos(PI / 6) + 50 * std::sin(PI / 6)},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.groups);
        ASSERT_TRUE(open(c.groups));
        EXPECT_EQ(real_variable(doc(), "VIEWSIZE"), c.height);
        const list_ptr center = get_variable(doc(), "VIEWCTR");
        EXPECT_NEAR(center->resval.rpoint[0], c.x, 1e-9);
    }
}

// Texts of numbers that are none are refused; binary files can hold such numbers.
TEST_F(ActiveView, BinaryFilesWithHeightsThatAreNoNumbersGiveAViewWithASize)
{
    for (const char* height : {"nan", "inf", "-inf", "0", "-3", "1e-310"}) {
        SCOPED_TRACE(height);
        if (open("40\n" + std::string(height) + "\n51\nnan\n", true)) {
            EXPECT_GT(real_variable(doc(), "VIEWSIZE"), 0.0);
            EXPECT_TRUE(std::isfinite(real_variable(doc(), "VIEWSIZE")));
            EXPECT_EQ(real_variable(doc(), "VIEWTWIST"), 0.0);
        }
    }
    ASSERT_TRUE(open("40\n-3\n51\n30\n", true));
    EXPECT_EQ(real_variable(doc(), "VIEWSIZE"), 9.0);
    EXPECT_NEAR(real_variable(doc(), "VIEWTWIST"), PI / 6, 1e-15);
}

TEST_F(ActiveView, TheTwistStandsInFilesInDegreesAndComesBack)
{
    active_view view = active_view_of(drawing());
    view.height = 75;
    view.turn_to(radians_of(30));
    put_active_view(drawing(), view);
    for (const dxf_version version : {dxf_version::r12, dxf_version::r2000, dxf_version::r2007}) {
        const std::string text = dxf_text(drawing(), version);
        EXPECT_NE(text.find("\n 51\n30.0\n"), std::string::npos);
        dxf_error error;
        const std::unique_ptr<database> again = parse_dxf(text, "again.dxf", doc(), &error);
        ASSERT_TRUE(again) << error.text();
        const active_view back = active_view_of(*again);
        EXPECT_EQ(back.twist, view.twist);
        EXPECT_EQ(back.height, 75);
        EXPECT_EQ(back.center.x, view.center.x);
        EXPECT_EQ(back.center.y, view.center.y);
    }
}

TEST_F(ActiveView, PlacesGoToTheScreenAndBackForAllViews)
{
    active_view view;
    view.target[0] = 100;
    view.target[1] = -40;
    for (const double twist : {0.0, 0.3, PI / 2, 4.0}) {
        view.twist = twist;
        double world[3];
        view.in_world({12, 34}, world);
        const plane_place back = view.on_screen(world);
        EXPECT_NEAR(back.x, 12, 1e-12);
        EXPECT_NEAR(back.y, 34, 1e-12);
    }
    // From the south-east, above: what is higher is seen further up.
    view.twist = 0.0;
    view.direction[0] = 1, view.direction[1] = -1, view.direction[2] = 1;
    const double low[3] = {5, 6, 0}, high[3] = {5, 6, 10};
    EXPECT_NEAR(view.on_screen(low).x, view.on_screen(high).x, 1e-12);
    EXPECT_GT(view.on_screen(high).y, view.on_screen(low).y);
    EXPECT_FALSE(view.is_plan());
}

TEST_F(ActiveView, TurningKeepsTheMiddle)
{
    active_view view;
    view.center = {50, 20};
    double before[3], after[3];
    view.in_world(view.center, before);
    for (const double twist : {1.0, 2.5, 6.0, 0.0}) {
        view.turn_to(twist);
        view.in_world(view.center, after);
        EXPECT_NEAR(before[0], after[0], 1e-12);
        EXPECT_NEAR(before[1], after[1], 1e-12);
        EXPECT_EQ(view.twist, twist);
    }
}

TEST_F(ActiveView, TheSameViewAgainIsNoChange)
{
    drawing().set_modified(false);
    put_active_view(drawing(), active_view_of(drawing()));
    EXPECT_FALSE(drawing().modified());
}

} // namespace
} // namespace host::db

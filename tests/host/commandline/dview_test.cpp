// DVIEW, and what a twisted view means for pixels, windows and picks.
#include <array>
#include <numbers>

#include "host/commandline/picks.h"
#include "host/commandline/screen_window.h"
#include "host/commandline/selection.h"
#include "host/commandline/views.h"
#include "hostapi/ads.h"
#include "tests/host/commandline/session.h"

namespace host::commandline
{

namespace
{

constexpr double PI = std::numbers::pi;

class dviews : public session
{
protected:
    double twist() { return db::real_variable(doc(), "VIEWTWIST"); }
    double twist_deg() { return twist() * 180 / PI; }
    void set_twist(double degrees)
    {
        char line[60];
        std::snprintf(line, sizeof line, "DVIEW||TW|%.12f|", degrees);
        ASSERT_EQ(send(line), RTNORM);
    }
    std::array<int, 2> pixel(double x, double y)
    {
        const ads_point at = {x, y, 0};
        std::array<int, 2> out{};
        EXPECT_EQ(acedCoordFromWorldToPixel(2, at, out.data(), &out[1]), 1);
        return out;
    }
    // Direction on the screen, counter-clockwise from its right side, from one place of the drawing to another.
    double screen_angle_deg(const double* from, const double* to)
    {
        const view now = view_of(doc());
        const db::plane_place a = now.on_screen(from), b = now.on_screen(to);
        return std::atan2(b.y - a.y, b.x - a.x) * 180 / PI;
    }
    int made_horizontal(double direction)
    {
        ads_point low, high;
        resbuf value{};
        acedGetVar("EXTMIN", &value);
        std::copy_n(value.resval.rpoint, 3, low);
        acedGetVar("EXTMAX", &value);
        std::copy_n(value.resval.rpoint, 3, high);
        char text[ADS_TEXT_SIZE];
        if (acdbAngToS(2 * PI - direction, -1, 9, text) != RTNORM)
            return RTERROR;
        return acedCommand(RTSTR, "_.DVIEW", RTSTR, "_C", RT3DPOINT, low, RT3DPOINT, high, RTSTR, "", RTSTR,
                           "_TW", RTSTR, text, RTSTR, "", 0);
    }
    int find(const char* mode, double x1, double y1, double x2, double y2)
    {
        const ads_point a = {x1, y1, 0}, b = {x2, y2, 0};
        ads_name set;
        if (acedSSGet(mode, a, b, nullptr, set) != RTNORM)
            return 0;
        int n = 0;
        acedSSLength(set, &n);
        acedSSFree(set);
        return n;
    }
};

struct angle_rules {
    const char* name;
    int aunits, angdir;
    double angbase_deg;
};

TEST_F(dviews, ATwistAgainstALineMakesItHorizontalInAllUnitsOfAngles)
{
    const angle_rules rules[] = {
        {"degrees", 0, 0, 0},
        {"minutes and seconds", 1, 0, 0},
        {"grads", 2, 0, 0},
        {"radians", 3, 0, 0},
        {"bearings", 4, 0, 0},
        {"from north", 0, 0, 90},
        {"clockwise", 0, 1, 0},
        {"azimuths", 0, 1, 90},
        {"dms azimuths", 1, 1, 90},
        {"grads from 30", 2, 1, 30},
        {"radians from 200", 3, 0, 200},
        {"bearings from north", 4, 0, 90},
        {"clockwise bearings", 4, 1, 90},
    };
    send("LINE|0,0|1000,500|");
    for (const angle_rules& r : rules) {
        SCOPED_TRACE(r.name);
        db::set_int(doc(), "AUNITS", r.aunits);
        db::set_int(doc(), "ANGDIR", r.angdir);
        db::set_real(doc(), "ANGBASE", r.angbase_deg * PI / 180);
        for (int k = 0; k < 72; ++k) {
            const double t = (k * 5 + (k % 3) * 0.0123456) * PI / 180;
            ASSERT_EQ(made_horizontal(t), RTNORM) << shown;
            const ads_point a = {100, 50, 0}, b = {100 + 200 * std::cos(t), 50 + 200 * std::sin(t), 0};
            EXPECT_NEAR(screen_angle_deg(a, b), 0.0, 1e-6) << k;
            const std::array<int, 2> p = pixel(a[0], a[1]), q = pixel(b[0], b[1]);
            EXPECT_LE(std::abs(p[1] - q[1]), 1) << "not level at " << k;
            EXPECT_GT(q[0], p[0]) << "not to the right at " << k;
        }
    }
    EXPECT_EQ(count(), 1);
}

TEST_F(dviews, TheTwistIsKeptInTheDrawingInRadiansAndUndone)
{
    set_twist(30);
    EXPECT_NEAR(twist(), PI / 6, 1e-12);
    const db::group* held = db::find(data().at(data().record("VPORT", "*ACTIVE")).groups, 51);
    ASSERT_TRUE(held);
    EXPECT_NEAR(held->real, PI / 6, 1e-12);
    set_twist(-90);
    EXPECT_NEAR(twist(), 1.5 * PI, 1e-12);
    send("U");
    EXPECT_NEAR(twist(), PI / 6, 1e-12);
    send("U");
    EXPECT_EQ(twist(), 0.0);
    send("REDO");
    EXPECT_NEAR(twist(), PI / 6, 1e-12);
    set_twist(360);
    EXPECT_EQ(twist(), 0.0);
}

TEST_F(dviews, TheMiddleAndTheSizeOfTheScreenStayWhenItTurns)
{
    send("ZOOM|C|100,50|40");
    const std::array<int, 2> middle = pixel(100, 50);
    for (const double degrees : {30.0, 90.0, 217.5, 0.0}) {
        set_twist(degrees);
        resbuf center{};
        ASSERT_EQ(acedGetVar("VIEWCTR", &center), RTNORM);
        EXPECT_NEAR(center.resval.rpoint[0], 100, 1e-9);
        EXPECT_NEAR(center.resval.rpoint[1], 50, 1e-9);
        EXPECT_NEAR(db::real_variable(doc(), "VIEWSIZE"), 40, 1e-12);
        EXPECT_EQ(pixel(100, 50), middle);
    }
}

struct option_case {
    const char* name;
    const char* values;
    double x, y, height, twist_deg; // from a view 10 high about 0,0
    const char* says;
};

TEST_F(dviews, EachOptionDoesItsPartOrSaysThatItCannot)
{
    const option_case cases[] = {
        {"nothing", "DVIEW||", 0, 0, 10, 0, ""},
        {"exit", "DVIEW||X", 0, 0, 10, 0, ""},
        {"twist", "DVIEW||TWist|45|", 0, 0, 10, 45, ""},
        {"twist kept by Enter", "DVIEW||TW|45|TW||", 0, 0, 10, 45, ""},
        {"twist by two points", "DVIEW||_TW|0,5|", 0, 0, 10, 90, ""},
        {"grads", "DVIEW||_TW|50g|", 0, 0, 10, 45, ""},
        {"zoom", "DVIEW||Z|2|", 0, 0, 5, 0, ""},
        {"zoom kept by Enter", "DVIEW||Z||", 0, 0, 10, 0, ""},
        {"pan", "DVIEW||PA|0,0|3,4|", -3, -4, 10, 0, ""},
        {"pan in a twisted view", "DVIEW||TW|90|PA|0,0|3,4|", -3, -4, 10, 90, ""},
        {"points", "DVIEW||PO|7,8|7,8,1|", 7, 8, 10, 0, ""},
        {"points aslant", "DVIEW||PO|7,8|9,9,9|Z|2|", 0, 0, 5, 0, "Only plan views"},
        {"camera by angles", "DVIEW||CA|30|45|Z|2|", 0, 0, 5, 0, "Only plan views"},
        {"camera by a toggle", "DVIEW||CA|T|30|45|Z|2|", 0, 0, 5, 0, "Only plan views"},
        {"camera by a point", "DVIEW||CA|1,2,3|Z|2|", 0, 0, 5, 0, "Only plan views"},
        {"target", "DVIEW||TA|30|45|Z|2|", 0, 0, 5, 0, "Only plan views"},
        {"distance", "DVIEW||D|30|Z|2|", 0, 0, 5, 0, "Perspective is not"},
        {"clip", "DVIEW||CL|B|30|Z|2|", 0, 0, 5, 0, "Clipping is not"},
        {"clip off", "DVIEW||CL||Z|2|", 0, 0, 5, 0, ""},
        {"hide", "DVIEW||H|Z|2|", 0, 0, 5, 0, "Hiding is not"},
        {"off", "DVIEW||O|Z|2|", 0, 0, 5, 0, ""},
        {"undo", "DVIEW||Z|2|TW|30|U|", 0, 0, 5, 0, ""},
        {"undo of all", "DVIEW||Z|2|TW|30|U|U|U|", 0, 0, 10, 0, "has been undone"},
    };
    for (const option_case& c : cases) {
        SCOPED_TRACE(c.name);
        send("ZOOM|C|0,0|10");
        set_twist(0);
        shown.clear();
        EXPECT_EQ(send(c.values), RTNORM) << shown;
        resbuf center{};
        acedGetVar("VIEWCTR", &center);
        EXPECT_NEAR(center.resval.rpoint[0], c.x, 1e-9);
        EXPECT_NEAR(center.resval.rpoint[1], c.y, 1e-9);
        EXPECT_NEAR(db::real_variable(doc(), "VIEWSIZE"), c.height, 1e-9);
        EXPECT_NEAR(twist_deg(), c.twist_deg, 1e-9);
        EXPECT_TRUE(has_shown(c.says)) << shown;
        set_twist(0);
    }
}

TEST_F(dviews, OffEndsThePerspectiveOfAFileAndLeavesItsOtherModes)
{
    constexpr int PERSPECTIVE = 1, FOLLOWS_UCS = 8;
    db::find(data().modify(data().record("VPORT", "*ACTIVE")), 71)->integer = PERSPECTIVE + FOLLOWS_UCS;
    EXPECT_EQ(db::int_variable(doc(), "VIEWMODE"), PERSPECTIVE + FOLLOWS_UCS);
    set_twist(30);
    EXPECT_EQ(db::int_variable(doc(), "VIEWMODE"), PERSPECTIVE + FOLLOWS_UCS);
    send("DVIEW||O|");
    EXPECT_EQ(db::int_variable(doc(), "VIEWMODE"), FOLLOWS_UCS);
    EXPECT_NEAR(twist_deg(), 30, 1e-9);
}

// A view that doesn't look straight down: pixels follow it, and its direction stays.
TEST_F(dviews, ATiltedViewOfAFileIsTurnedAsItIs)
{
    db::group* direction = db::find(data().modify(data().record("VPORT", "*ACTIVE")), 16);
    direction->point[0] = 1;
    direction->point[1] = -1;
    direction->point[2] = 1;
    set_twist(30);
    const std::array<int, 2> low = pixel(5, 5);
    const ads_point above = {5, 5, 2};
    int x = 0, y = 0;
    ASSERT_EQ(acedCoordFromWorldToPixel(2, above, &x, &y), 1);
    EXPECT_NEAR(std::atan2(low[1] - y, x - low[0]) * 180 / PI, 120, 1) << "up, turned by 30 degrees";
    const list_ptr kept = db::get_variable(doc(), "VIEWDIR");
    EXPECT_EQ(kept->resval.rpoint[1], -1);
    send("POINT|50,50");
    EXPECT_EQ(find("W", 49, 49, 51, 51), 1);
    send("ZOOM|E");
    EXPECT_GT(db::real_variable(doc(), "VIEWSIZE"), 0.0);
    EXPECT_EQ(send("DVIEW||PO|7,8|7,8,1|"), RTNORM);
    EXPECT_TRUE(has_shown("Only plan views")) << shown;
}

TEST_F(dviews, WrongAnswersAreToldAndTheRestGoesOn)
{
    db::set_int(doc(), "CMDECHO", 1); // refusals are told with the prompts
    EXPECT_EQ(send("DVIEW||XYZ|TW|north-east|30|Z|0|-1|abc|2|"), RTERROR);
    EXPECT_NEAR(twist_deg(), 30, 1e-9);
    EXPECT_TRUE(has_shown("Invalid option keyword.")) << shown;
    EXPECT_TRUE(has_shown("Requires valid numeric angle")) << shown;
    EXPECT_TRUE(has_shown("Value must be positive and nonzero.")) << shown;
    EXPECT_EQ(send("DVIEW||Z|1e300|Z|1e300|"), RTNORM);
    EXPECT_GT(db::real_variable(doc(), "VIEWSIZE"), 0.0);
}

TEST_F(dviews, ACancelledCommandLeavesTheView)
{
    send("ZOOM|C|0,0|10");
    type("DVIEW||TW|30|Z|2|^C");
    EXPECT_EQ(twist(), 0.0);
    EXPECT_DOUBLE_EQ(db::real_variable(doc(), "VIEWSIZE"), 10.0);
    EXPECT_TRUE(has_shown("Select objects or <use DVIEWBLOCK>: ")) << shown;
    EXPECT_TRUE(has_shown("New view twist <0>: ")) << shown;
}

TEST_F(dviews, PreviousGoesBackOverTheWholeCommand)
{
    send("ZOOM|C|5,6|10");
    send("DVIEW||TW|30|Z|2|PA|0,0|1,1|");
    send("ZOOM|P");
    EXPECT_EQ(twist(), 0.0);
    const view now = view_of(doc());
    EXPECT_NEAR(now.center.x, 5, 1e-12);
    EXPECT_NEAR(now.height, 10, 1e-12);
}

TEST_F(dviews, AnEmptyDrawingHasNothingToSelectAndTwistsAllTheSame)
{
    resbuf low{};
    acedGetVar("EXTMIN", &low);
    ASSERT_EQ(low.resval.rpoint[0], 1e20);
    ASSERT_EQ(made_horizontal(PI / 3), RTNORM);
    EXPECT_NEAR(twist_deg(), 300, 1e-6);
    EXPECT_EQ(made_horizontal(PI / 3), RTNORM) << "in a twisted view";
}

TEST_F(dviews, EachWayOfSelectingLeadsToTheOptionsAndLeavesThePreviousSelection)
{
    send("LINE|0,0|10,0|");
    send("POINT|50,50");
    send("SELECT|L|");
    const object_list before = previous_selection(doc());
    double degrees = 0;
    for (const std::string& way :
         {std::string("5,0|"), std::string("_C|-1,-1|60,60|"), std::string("W|-1,-1|60,60|"),
          std::string("ALL|"), std::string("WP|-1,-1|60,0|60,60||"), std::string("F|5,-5|5,5||"),
          std::string("L|R|P|"), std::string("200,200|300,300|"), std::string("SI|5,0"), std::string("#0|xyz|"),
          handle(0) + "|"}) {
        SCOPED_TRACE(way);
        degrees += 10;
        send("DVIEW|" + way + "|TW|" + std::to_string(degrees) + "|");
        EXPECT_NEAR(twist_deg(), degrees, 1e-9);
        EXPECT_EQ(previous_selection(doc()), before);
    }
}

TEST_F(dviews, AWindowIsARectangleOfTheScreen)
{
    // A cross of points about 10,10 at a distance of 5, seen turned by 45 degrees.
    send("POINT|15,10");
    send("POINT|10,15");
    send("POINT|5,10");
    send("POINT|10,5");
    EXPECT_EQ(find("W", 4, 9, 16, 11), 2);
    set_twist(45);
    // From the lower left corner of the screen's square to its upper right one: straight up in the drawing.
    EXPECT_EQ(find("W", 9.99, 4.99, 9.99, 4.99), 0);
    EXPECT_EQ(find("W", 3, 10, 17, 10), 4) << "a square with the corners 10,17 and 10,3 too";
    EXPECT_EQ(find("C", 17, 10, 3, 10), 4);
    EXPECT_EQ(find("W", 5, 10, 10, 15), 2) << "a window without height holds what is on it";
    EXPECT_EQ(find("W", 9, 14, 16, 11), 2) << "the drawing's own rectangle would hold one";
    set_twist(90);
    EXPECT_EQ(find("W", 4, 9, 16, 11), 2) << "a quarter turn makes the same rectangle";
}

TEST_F(dviews, CrossingWindowsCutLinesBySidesOfTheScreen)
{
    send("LINE|0,0|10,0|");
    set_twist(45);
    EXPECT_EQ(find("C", 12, -1, 12, 1), 0);
    EXPECT_EQ(find("C", 9.5, -1, 9.5, 1), 1);
    EXPECT_EQ(find("W", -1, 0, 11, 0), 1);
    EXPECT_EQ(find("W", 1, 0, 11, 0), 0);
}

TEST_F(dviews, ABoxOfTwoPicksGoesByTheScreensLeftAndRight)
{
    send("LINE|0,0|10,0|");
    set_twist(180);
    // To the right in the drawing is to the left on the screen: crossing, so the cut line is taken.
    send("SELECT|5,-2|12,2|");
    EXPECT_EQ(previous_selection(doc()).size(), 1u);
    db::set_int(doc(), "CMDECHO", 1);
    send("SELECT|12,-2|5,2|");
    EXPECT_TRUE(has_shown("0 found")) << shown;
}

TEST_F(dviews, PicksReachByThePickBoxOfTheScreen)
{
    send("ZOOM|C|0,0|100");
    send("LINE|0,0|10,0|");
    const double reach = pick_reach(doc());
    set_twist(45);
    EXPECT_NE(object_at(doc(), {5, reach * 0.9, 0}), 0u);
    // Beside the end the corner of the turned box reaches further along the line than its half side.
    EXPECT_NE(object_at(doc(), {10 + reach * 1.3, 0, 0}), 0u);
    EXPECT_EQ(object_at(doc(), {10 + reach * 1.5, 0, 0}), 0u);
    set_twist(0);
    EXPECT_EQ(object_at(doc(), {10 + reach * 1.3, 0, 0}), 0u);
}

TEST_F(dviews, ExtentsOfATwistedViewFitWhatIsSeen)
{
    // A line at 30 degrees, made horizontal: as wide as it is long, and without height.
    send("LINE|0,0|173.205080756887729,100|");
    set_twist(-30);
    send("ZOOM|E");
    const view now = view_of(doc());
    resbuf size{};
    acedGetVar("SCREENSIZE", &size);
    const double aspect = size.resval.rpoint[0] / size.resval.rpoint[1];
    EXPECT_NEAR(now.height, 200 / aspect * 1.02, 1e-6);
    resbuf center{};
    acedGetVar("VIEWCTR", &center);
    EXPECT_NEAR(center.resval.rpoint[0], 86.602540378, 1e-6);
    EXPECT_NEAR(center.resval.rpoint[1], 50, 1e-6);
    EXPECT_NEAR(twist_deg(), 330, 1e-9) << "zooming keeps the twist";
    send("LINE|0,0|0,1|");
    send("ZOOM|O|L|");
    EXPECT_LT(view_of(doc()).height, 2.0);
}

TEST_F(dviews, ZoomWindowShowsItsCornersAtTheScreensCorners)
{
    set_twist(30);
    send("ZOOM|W|10,10|40,10");
    const std::array<int, 2> a = pixel(10, 10), b = pixel(40, 10);
    resbuf size{};
    acedGetVar("SCREENSIZE", &size);
    EXPECT_NEAR((a[0] + b[0]) / 2.0, size.resval.rpoint[0] / 2, 1.0);
    EXPECT_NEAR((a[1] + b[1]) / 2.0, size.resval.rpoint[1] / 2, 1.0);
    EXPECT_GE(std::min({a[0], a[1], b[0], b[1]}), 0);
    EXPECT_NEAR(std::atan2(a[1] - b[1], b[0] - a[0]) * 180 / PI, 30, 0.2);
}

TEST_F(dviews, TypedCoordinatesAreTheDrawingsWhateverTheTwist)
{
    set_twist(30);
    send("LINE|0,0|@10<0|@0,5|");
    EXPECT_EQ(objects({10, 11}), "LINE 10=0,0,0 11=10,0,0 / LINE 10=10,0,0 11=10,5,0");
}

} // namespace

} // namespace host::commandline

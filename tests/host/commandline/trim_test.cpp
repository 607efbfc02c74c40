// TRIM: each kind of object at each kind of edge, picks on either side, the command's words and what programs
// send.
#include <array>
#include <random>

#include "host/commandline/cutting_edges.h"
#include "host/commandline/picks.h"
#include "tests/host/commandline/session.h"

namespace host::commandline
{

namespace
{

// Of all objects what a cut changes.
const std::vector<int> SHAPE = {10, 11, 40, 41, 42, 50, 51, 70};

struct trim_case {
    const char* name;
    const char*
        lists; // objects as "LINE 10=0,0,0 11=5,0,0", parted by '/': the first is trimmed, the others are edges
    const char* pick;
    const char* expected;
};

class trimming : public session
{
protected:
    void TearDown() override
    {
        db::set_int(doc(), "EDGEMODE", 0);
        db::set_int(doc(), "PROJMODE", 1);
        session::TearDown();
    }
    static db::group group_of(db::database& db, std::string_view text)
    {
        const std::size_t sign = text.find('=');
        const int code = std::atoi(std::string(text.substr(0, sign)).c_str());
        const std::string value(text.substr(sign + 1));
        switch (db::kind_of_code(code)) {
        case db::group_kind::real:
            return db::real_group(code, std::atof(value.c_str()));
        case db::group_kind::point: {
            double p[3] = {0, 0, 0};
            const int count = std::sscanf(value.c_str(), "%lf,%lf,%lf", &p[0], &p[1], &p[2]);
            return count == 2 ? db::point_group(code, p[0], p[1]) : db::point_group(code, p[0], p[1], p[2]);
        }
        case db::group_kind::text:
            return db.text_group(code, value);
        default:
            return db::int_group(code, std::atoi(value.c_str()));
        }
    }
    static std::vector<std::string> parts(std::string_view text, char at)
    {
        std::vector<std::string> out;
        while (!text.empty()) {
            const std::size_t end = std::min(text.find(at), text.size());
            if (end)
                out.emplace_back(text.substr(0, end));
            text.remove_prefix(std::min(end + 1, text.size()));
        }
        return out;
    }
    db::group_list groups_of(std::string_view text)
    {
        db::group_list groups;
        for (const std::string& part : parts(text, ' '))
            groups.push_back(part.find('=') == std::string::npos ? data().text_group(0, part)
                                                                 : group_of(data(), part));
        return groups;
    }
    // "POLYLINE 70=1 : 10=0,0,0 42=1 : 10=..." has its vertices behind colons.
    db::object_id made(std::string_view text)
    {
        const std::vector<std::string> all = parts(text, ':');
        std::vector<db::group_list> children;
        for (std::size_t i = 1; i < all.size(); ++i) {
            children.push_back(groups_of("VERTEX " + all[i]));
        }
        std::string error;
        const db::object_id id =
            children.empty() ? db::make_entity(data(), groups_of(all[0]), &error)
                             : db::make_sequence(data(), groups_of(all[0]), std::move(children), &error);
        EXPECT_NE(id, 0u) << text << ": " << error;
        return id;
    }
    std::vector<db::object_id> all_made(std::string_view lists)
    {
        std::vector<db::object_id> out;
        for (const std::string& each : parts(lists, '/'))
            out.push_back(made(each));
        return out;
    }
    std::string handle_of(db::object_id id)
    {
        char out[24];
        std::snprintf(out, sizeof out, "#%lX", static_cast<unsigned long>(data().at(id).handle));
        return out;
    }
    // What becomes of the first object, trimmed at the others: it and what follows the last of them.
    std::string trimmed(const std::vector<db::object_id>& ids, std::string_view pick)
    {
        std::string line = "TRIM";
        for (std::size_t i = 1; i < ids.size(); ++i)
            line += "|" + handle_of(ids[i]);
        type(line + "||" + handle_of(ids[0]) + " " + std::string(pick) + "|");
        std::string out = described(ids[0], SHAPE);
        for (db::object_id id = db::next_entity(data(), ids.back()); id; id = db::next_entity(data(), id))
            out += " / " + described(id, SHAPE);
        return out;
    }
};

class trim_table : public trimming, public testing::WithParamInterface<trim_case>
{
};

TEST_P(trim_table, Trims)
{
    const trim_case& row = GetParam();
    EXPECT_EQ(trimmed(all_made(row.lists), row.pick), row.expected);
}

#define X_AXIS "LINE 10=-10,0,0 11=10,0,0"
#define UPRIGHT(x) "/LINE 10=" x ",-5,0 11=" x ",5,0"

const trim_case LINES[] = {
    {"LineAtLineStart", X_AXIS UPRIGHT("2"), "-5,0", "LINE 10=2,0,0 11=10,0,0"},
    {"LineAtLineEnd", X_AXIS UPRIGHT("2"), "5,0", "LINE 10=-10,0,0 11=2,0,0"},
    {"LineBetweenLines", X_AXIS UPRIGHT("2") UPRIGHT("4"), "3,0",
     "LINE 10=-10,0,0 11=2,0,0 / LINE 10=4,0,0 11=10,0,0"},
    {"LineAtArc", X_AXIS "/ARC 10=0,0,0 40=3 50=5 51=1", "8,0", "LINE 10=-10,0,0 11=3,0,0"},
    {"LineBesideArc", X_AXIS "/ARC 10=0,0,0 40=3 50=1 51=2", "8,0", "LINE 10=-10,0,0 11=10,0,0"},
    {"LineInCircle", X_AXIS "/CIRCLE 10=0,0,0 40=3", "1,0",
     "LINE 10=-10,0,0 11=-3,0,0 / LINE 10=3,0,0 11=10,0,0"},
    {"LineOutsideCircle", X_AXIS "/CIRCLE 10=0,0,0 40=3", "7,0", "LINE 10=-10,0,0 11=3,0,0"},
    {"LineTouchesCircle", X_AXIS "/CIRCLE 10=1,3,0 40=3", "7,0", "LINE 10=-10,0,0 11=1,0,0"},
    {"LineInEllipse", X_AXIS "/ELLIPSE 10=0,0,0 11=4,0,0 40=0.5", "1,0",
     "LINE 10=-10,0,0 11=-4,0,0 / LINE 10=4,0,0 11=10,0,0"},
    {"LineAtPartOfEllipse", X_AXIS "/ELLIPSE 10=0,0,0 11=4,0,0 40=0.5 41=-1 42=1", "1,0",
     "LINE 10=4,0,0 11=10,0,0"},
    {"LineAtLightweight", X_AXIS "/LWPOLYLINE 90=3 10=1,-1 10=1,1 10=5,-3", "1.5,0",
     "LINE 10=-10,0,0 11=1,0,0 / LINE 10=2,0,0 11=10,0,0"},
    {"LineAtBulge", X_AXIS "/LWPOLYLINE 90=2 10=2,-2 42=1 10=2,2", "8,0", "LINE 10=-10,0,0 11=4,0,0"},
    {"LineAtPolyline", X_AXIS "/POLYLINE 70=0 : 10=1,-1,0 : 10=1,1,0 : 10=5,-3,0", "1.5,0",
     "LINE 10=-10,0,0 11=1,0,0 / LINE 10=2,0,0 11=10,0,0"},
    {"LineAt3DPolyline", X_AXIS "/POLYLINE 70=8 : 10=1,-1,5 70=32 : 10=1,1,9 70=32", "3,0",
     "LINE 10=-10,0,0 11=1,0,0"},
    {"LineAtFitCurve", X_AXIS "/POLYLINE 70=2 : 10=1,-1,0 42=1 : 10=3,-1,0 70=1 : 10=3,1,0", "9,0",
     "LINE 10=-10,0,0 11=3,0,0"},
    {"LineNotAtSplineFrame",
     X_AXIS "/POLYLINE 70=4 : 10=1,-1,0 70=16 : 10=1,1,0 70=16 : 10=2,-1,0 70=8 : 10=2,1,0 70=8", "9,0",
     "LINE 10=-10,0,0 11=2,0,0"},
    {"LineAtSpline", X_AXIS "/SPLINE 70=8 71=1 72=4 73=2 40=0 40=0 40=1 40=1 10=3,-1,0 10=3,1,0", "9,0",
     "LINE 10=-10,0,0 11=3,0,0"},
    {"LineAtRay", X_AXIS "/RAY 10=2,-9,0 11=0,1,0", "9,0", "LINE 10=-10,0,0 11=2,0,0"},
    {"LineBehindRay", X_AXIS "/RAY 10=2,9,0 11=0,1,0", "9,0", "LINE 10=-10,0,0 11=10,0,0"},
    {"LineAtXline", X_AXIS "/XLINE 10=2,900,0 11=0,1,0", "9,0", "LINE 10=-10,0,0 11=2,0,0"},
    {"LineKeepsItsSlope", "LINE 10=0,0,0 11=10,0,20/LINE 10=4,-5,0 11=4,5,0", "9,0", "LINE 10=0,0,0 11=4,0,8"},
    {"LineAtItsEnd", X_AXIS UPRIGHT("10"), "0,0", "LINE 10=-10,0,0 11=10,0,0"},
    {"LineAtAnEdgesEnd", X_AXIS "/LINE 10=2,0,0 11=2,5,0", "9,0", "LINE 10=-10,0,0 11=2,0,0"},
    {"LineJustShortOfAnEdge", X_AXIS "/LINE 10=2,1e-9,0 11=2,5,0", "9,0", "LINE 10=-10,0,0 11=2,0,0"},
    {"LineShortOfAnEdge", X_AXIS "/LINE 10=2,1e-6,0 11=2,5,0", "9,0", "LINE 10=-10,0,0 11=10,0,0"},
    {"LineOnALine", X_AXIS "/LINE 10=-3,0,0 11=4,0,0", "0,0",
     "LINE 10=-10,0,0 11=-3,0,0 / LINE 10=4,0,0 11=10,0,0"},
    {"LineBesideALineOnIt", X_AXIS "/LINE 10=-3,0,0 11=4,0,0", "5,0", "LINE 10=-10,0,0 11=4,0,0"},
    {"LineUnderALongerLine", X_AXIS "/LINE 10=-30,0,0 11=40,0,0", "5,0", "LINE 10=-10,0,0 11=10,0,0"},
    {"LineUnderAPolylineWithAJoint", X_AXIS "/LWPOLYLINE 90=3 10=-20,0 10=1,0 10=20,0", "5,0",
     "LINE 10=-10,0,0 11=10,0,0"},
    {"LinePickedAtACrossing", X_AXIS UPRIGHT("2") UPRIGHT("4"), "2,0",
     "LINE 10=-10,0,0 11=2,0,0 / LINE 10=4,0,0 11=10,0,0"},
    {"LinePickedBeside", X_AXIS UPRIGHT("2"), "5,3", "LINE 10=-10,0,0 11=2,0,0"},
    {"LinePickedBeyondItsEnd", X_AXIS UPRIGHT("2"), "50,3", "LINE 10=-10,0,0 11=2,0,0"},
    {"LineAtTextIsNoEdge", X_AXIS "/TEXT 10=0,-1,0 40=2 1=X" UPRIGHT("7"), "0,0", "LINE 10=7,0,0 11=10,0,0"},
    {"RayAtItsStart", "RAY 10=0,0,0 11=1,0,0/LINE 10=4,-5,0 11=4,5,0", "1,0", "RAY 10=4,0,0 11=1,0,0"},
    {"RayAtItsFarSide", "RAY 10=0,0,0 11=1,0,0/LINE 10=4,-5,0 11=4,5,0", "9,0", "LINE 10=0,0,0 11=4,0,0"},
    {"RayInTheMiddle", "RAY 10=0,0,0 11=1,0,0/CIRCLE 10=5,0,0 40=2", "5,0",
     "LINE 10=0,0,0 11=3,0,0 / RAY 10=7,0,0 11=1,0,0"},
    {"XlineAtOneSide", "XLINE 10=0,0,0 11=1,0,0/LINE 10=4,-5,0 11=4,5,0", "-9,0", "RAY 10=4,0,0 11=1,0,0"},
    {"XlineAtTheOther", "XLINE 10=0,0,0 11=1,0,0/LINE 10=4,-5,0 11=4,5,0", "9,0", "RAY 10=4,0,0 11=-1,0,0"},
    {"XlineInTheMiddle", "XLINE 10=0,0,0 11=1,0,0/CIRCLE 10=5,0,0 40=2", "5,0",
     "RAY 10=3,0,0 11=-1,0,0 / RAY 10=7,0,0 11=1,0,0"},
};
INSTANTIATE_TEST_SUITE_P(Lines, trim_table, testing::ValuesIn(LINES), name_of_case());

const trim_case ROUND[] = {
    {"CircleAbove", "CIRCLE 10=0,0,0 40=5/" X_AXIS, "0,5", "ARC 10=0,0,0 40=5 50=3.14159 51=0"},
    {"CircleBelow", "CIRCLE 10=0,0,0 40=5/" X_AXIS, "0,-5", "ARC 10=0,0,0 40=5 50=0 51=3.14159"},
    {"CircleSeenFromBelow", "CIRCLE 10=0,0,0 40=5 210=0,0,-1/LINE 10=3,-9,0 11=3,9,0", "9,0",
     "ARC 10=0,0,0 40=5 50=4.06889 51=2.2143"},
    {"CircleAtOneCrossing", "CIRCLE 10=0,0,0 40=5/LINE 10=0,0,0 11=9,0,0", "0,5", "CIRCLE 10=0,0,0 40=5"},
    {"CircleTouched", "CIRCLE 10=0,0,0 40=5/LINE 10=5,-9,0 11=5,9,0", "0,5", "CIRCLE 10=0,0,0 40=5"},
    {"CircleAtCircle", "CIRCLE 10=0,0,0 40=5/CIRCLE 10=6,0,0 40=5", "4,0",
     "ARC 10=0,0,0 40=5 50=0.927295 51=5.35589"},
    {"CircleAtItsTwin", "CIRCLE 10=0,0,0 40=5/CIRCLE 10=0,0,0 40=5", "4,0", "CIRCLE 10=0,0,0 40=5"},
    {"CircleAtAnArcOnIt", "CIRCLE 10=0,0,0 40=5/ARC 10=0,0,0 40=5 50=0 51=1", "5,1",
     "ARC 10=0,0,0 40=5 50=1 51=0"},
    {"CircleAtEllipse", "CIRCLE 10=0,0,0 40=3/ELLIPSE 10=0,0,0 11=5,0,0 40=0.4", "0,3",
     "ARC 10=0,0,0 40=3 50=2.52051 51=0.621081"},
    {"CircleAtSquare", "CIRCLE 10=0,0,0 40=5/LWPOLYLINE 90=4 70=1 10=3,-9 10=20,-9 10=20,9 10=3,9", "5,0",
     "ARC 10=0,0,0 40=5 50=0.927295 51=5.35589"},
    {"ArcAtItsStart", "ARC 10=0,0,0 40=5 50=0 51=3/LINE 10=0,0,0 11=0,9,0", "5,1",
     "ARC 10=0,0,0 40=5 50=1.5708 51=3"},
    {"ArcAtItsEnd", "ARC 10=0,0,0 40=5 50=0 51=3/LINE 10=0,0,0 11=0,9,0", "-5,1",
     "ARC 10=0,0,0 40=5 50=0 51=1.5708"},
    {"ArcInTheMiddle", "ARC 10=0,0,0 40=5 50=0 51=3.14159265358979/LINE 10=-9,4,0 11=9,4,0", "0,5",
     "ARC 10=0,0,0 40=5 50=0 51=0.927295 / ARC 10=0,0,0 40=5 50=2.2143 51=3.14159"},
    {"ArcOverEast", "ARC 10=0,0,0 40=5 50=5 51=1/" X_AXIS, "4,-2", "ARC 10=0,0,0 40=5 50=0 51=1"},
    {"EllipseAbove", "ELLIPSE 10=0,0,0 11=5,0,0 40=0.5/" X_AXIS, "0,3",
     "ELLIPSE 10=0,0,0 11=5,0,0 40=0.5 41=3.14159 42=6.28319"},
    {"EllipseAtLeft", "ELLIPSE 10=0,0,0 11=5,0,0 40=0.5/LINE 10=0,-9,0 11=0,9,0", "-5,0",
     "ELLIPSE 10=0,0,0 11=5,0,0 40=0.5 41=4.71239 42=7.85398"},
    {"PartOfEllipse", "ELLIPSE 10=0,0,0 11=5,0,0 40=0.5 41=0 42=3/LINE 10=0,0,0 11=0,9,0", "5,1",
     "ELLIPSE 10=0,0,0 11=5,0,0 40=0.5 41=1.5708 42=3"},
    {"EllipseAtEllipse", "ELLIPSE 10=0,0,0 11=5,0,0 40=0.5/ELLIPSE 10=0,0,0 11=0,5,0 40=0.5", "0,2.5",
     "ELLIPSE 10=0,0,0 11=5,0,0 40=0.5 41=2.03444 42=7.39033"},
};
INSTANTIATE_TEST_SUITE_P(Round, trim_table, testing::ValuesIn(ROUND), name_of_case());

const trim_case POLYLINES[] = {
    {"LightweightStart", "LWPOLYLINE 90=3 10=0,0 10=10,0 10=10,10" UPRIGHT("4"), "1,0",
     "LWPOLYLINE 70=0 10=4,0 40=0 41=0 42=0 10=10,0 40=0 41=0 42=0 10=10,10 40=0 41=0 42=0"},
    {"LightweightMiddle", "LWPOLYLINE 90=2 10=0,0 10=10,0" UPRIGHT("4") UPRIGHT("6"), "5,0",
     "LWPOLYLINE 70=0 10=0,0 40=0 41=0 42=0 10=4,0 40=0 41=0 42=0 / "
     "LWPOLYLINE 70=0 10=6,0 40=0 41=0 42=0 10=10,0 40=0 41=0 42=0"},
    {"LightweightAtAVertex", "LWPOLYLINE 90=3 10=0,0 10=5,0 10=5,5/LINE 10=3,-2,0 11=7,2,0", "5,3",
     "LWPOLYLINE 70=0 10=0,0 40=0 41=0 42=0 10=5,0 40=0 41=0 42=0"},
    {"LightweightWidths", "LWPOLYLINE 90=2 10=0,0 40=1 41=3 10=10,0 40=0 41=0" UPRIGHT("4") UPRIGHT("5"),
     "4.5,0",
     "LWPOLYLINE 70=0 10=0,0 40=1 41=1.8 42=0 10=4,0 40=1.8 41=1.8 42=0 / "
     "LWPOLYLINE 70=0 10=5,0 40=2 41=3 42=0 10=10,0 40=0 41=0 42=0"},
    {"LightweightOneWidth", "LWPOLYLINE 90=2 43=2 10=0,0 10=10,0" UPRIGHT("4"), "8,0",
     "LWPOLYLINE 70=0 10=0,0 40=2 41=2 42=0 10=4,0 40=2 41=2 42=0"},
    {"LightweightBulge", "LWPOLYLINE 90=2 10=0,0 42=1 10=10,0/LINE 10=5,-9,0 11=5,0,0", "9,-3",
     "LWPOLYLINE 70=0 10=0,0 40=0 41=0 42=0.414214 10=5,-5 40=0 41=0 42=0"},
    {"LightweightBulgeToTheRight", "LWPOLYLINE 90=2 10=0,0 42=-1 10=10,0/LINE 10=5,9,0 11=5,0,0", "1,3",
     "LWPOLYLINE 70=0 10=5,5 40=0 41=0 42=-0.414214 10=10,0 40=0 41=0 42=0"},
    {"ClosedLightweight", "LWPOLYLINE 90=4 70=1 10=0,0 10=10,0 10=10,10 10=0,10/LINE 10=6,-5,0 11=6,15,0",
     "10,5",
     "LWPOLYLINE 70=0 10=6,10 40=0 41=0 42=0 10=0,10 40=0 41=0 42=0 10=0,0 40=0 41=0 42=0 10=6,0 40=0 41=0 "
     "42=0"},
    {"ClosedLightweightOverTheSeam",
     "LWPOLYLINE 90=4 70=1 10=0,0 10=10,0 10=10,10 10=0,10/LINE 10=6,-5,0 11=6,15,0", "0,5",
     "LWPOLYLINE 70=0 10=6,0 40=0 41=0 42=0 10=10,0 40=0 41=0 42=0 10=10,10 40=0 41=0 42=0 10=6,10 40=0 41=0 "
     "42=0"},
    {"ClosedLightweightWithinASegment", "LWPOLYLINE 90=3 70=1 10=0,0 10=10,0 10=5,8" UPRIGHT("4") UPRIGHT("6"),
     "5,0",
     "LWPOLYLINE 70=0 10=6,0 40=0 41=0 42=0 10=10,0 40=0 41=0 42=0 10=5,8 40=0 41=0 42=0 10=0,0 40=0 41=0 42=0 "
     "10=4,0 40=0 41=0 42=0"},
    {"ClosedAtOneCrossing", "LWPOLYLINE 90=3 70=1 10=0,0 10=10,0 10=5,8/LINE 10=4,-1,0 11=4,1,0", "5,0",
     "LWPOLYLINE 70=1 10=0,0 40=0 41=0 42=0 10=10,0 40=0 41=0 42=0 10=5,8 40=0 41=0 42=0"},
    {"Polyline", "POLYLINE 70=0 10=0,0,7 : 10=0,0,7 40=1 41=3 : 10=10,0,7" UPRIGHT("4"), "9,0",
     "POLYLINE 10=0,0,7 70=0 40=0 41=0 (VERTEX 10=0,0,7 40=1 41=1.8 42=0 70=0 50=0) "
     "(VERTEX 10=4,0,7 40=1.8 41=1.8 42=0 70=0 50=0)"},
    {"PolylineMiddle", "POLYLINE 70=0 : 10=0,0,0 : 10=10,0,0" UPRIGHT("4") UPRIGHT("6"), "5,0",
     "POLYLINE 10=0,0,0 70=0 40=0 41=0 (VERTEX 10=0,0,0 40=0 41=0 42=0 70=0 50=0) (VERTEX 10=4,0,0 40=0 41=0 "
     "42=0 "
     "70=0 50=0) / POLYLINE 10=0,0,0 70=0 40=0 41=0 (VERTEX 10=6,0,0 40=0 41=0 42=0 70=0 50=0) (VERTEX "
     "10=10,0,0 40=0 "
     "41=0 42=0 70=0 50=0)"},
    {"ClosedPolyline", "POLYLINE 70=1 : 10=0,0,0 42=1 : 10=10,0,0 42=1/LINE 10=5,-9,0 11=5,9,0", "0,0",
     "POLYLINE 10=0,0,0 70=0 40=0 41=0 (VERTEX 10=5,-5,0 40=0 41=0 42=0.414214 70=0 50=0) (VERTEX 10=10,0,0 "
     "40=0 41=0 "
     "42=0.414214 70=0 50=0) (VERTEX 10=5,5,0 40=0 41=0 42=0 70=0 50=0)"},
    {"Polyline3D", "POLYLINE 70=8 : 10=0,0,0 70=32 : 10=10,0,20 70=32" UPRIGHT("4"), "9,0",
     "POLYLINE 10=0,0,0 70=8 (VERTEX 10=0,0,0 70=32) (VERTEX 10=4,0,8 70=32)"},
    {"FitCurveIsPlainThen",
     "POLYLINE 70=2 75=0 : 10=0,0,0 70=2 50=1 : 10=5,0,0 70=1 : 10=10,0,0 70=0" UPRIGHT("8"), "9,0",
     "POLYLINE 10=0,0,0 70=0 40=0 41=0 (VERTEX 10=0,0,0 40=0 41=0 42=0 70=0 50=1) (VERTEX 10=5,0,0 40=0 41=0 "
     "42=0 "
     "70=0 50=0) (VERTEX 10=8,0,0 40=0 41=0 42=0 70=0 50=0)"},
    {"SplineFrameGoes",
     "POLYLINE 70=4 75=6 : 10=0,9,0 70=16 : 10=0,0,0 70=8 : 10=10,0,0 70=8 : 10=9,9,0 70=16" UPRIGHT("8"),
     "9,0",
     "POLYLINE 10=0,0,0 70=0 40=0 41=0 (VERTEX 10=0,0,0 40=0 41=0 42=0 70=0 50=0) (VERTEX 10=8,0,0 40=0 41=0 "
     "42=0 70=0 "
     "50=0)"},
};
INSTANTIATE_TEST_SUITE_P(Polylines, trim_table, testing::ValuesIn(POLYLINES), name_of_case());

// ---- the command

TEST_F(trimming, SaysWhatItIsAboutAndAsksOn)
{
    const auto ids = all_made(X_AXIS UPRIGHT("2"));
    type("TRIM|" + handle_of(ids[1]) + "||" + handle_of(ids[0]) + " 5,0|");
    EXPECT_EQ(shown, "Current settings: Projection=UCS Edge=None\n"
                     "Select cutting edges ...\n"
                     "Select objects: " +
                         handle_of(ids[1]) +
                         "\n1 found\n"
                         "Select objects: \n"
                         "Select object to trim or [Project/Edge/Undo]: " +
                         handle_of(ids[0]) +
                         " 5,0\n"
                         "Select object to trim or [Project/Edge/Undo]: \n");
}

TEST_F(trimming, EnterTakesAllObjectsForEdges)
{
    const auto ids = all_made(X_AXIS UPRIGHT("2") UPRIGHT("4") UPRIGHT("6"));
    type("TR||5,0|1,3|");
    EXPECT_EQ(described(ids[0], {10, 11}), "LINE 10=-10,0,0 11=4,0,0");
    EXPECT_EQ(count(), 5);
    EXPECT_EQ(described(nth(4), {10, 11}), "LINE 10=6,0,0 11=10,0,0");
}

TEST_F(trimming, APickBesideEverythingIsAskedForAgain)
{
    const auto ids = all_made(X_AXIS UPRIGHT("2"));
    type("TRIM||500,500|5,0|");
    EXPECT_EQ(described(ids[0], {10, 11}), "LINE 10=-10,0,0 11=2,0,0");
}

struct words_case {
    const char *lists, *pick, *words;
};

TEST_F(trimming, SaysWhyNot)
{
    const words_case cases[] = {
        {X_AXIS UPRIGHT("20"), "5,0", "Object does not intersect an edge."},
        {"CIRCLE 10=0,0,0 40=5/LINE 10=0,0,0 11=9,0,0", "0,5", "Circle must intersect twice."},
        {"ELLIPSE 10=0,0,0 11=5,0,0 40=0.5/LINE 10=0,0,0 11=9,0,0", "0,5", "Ellipse must intersect twice."},
        {"LWPOLYLINE 90=3 70=1 10=0,0 10=9,0 10=9,9/LINE 10=5,-1,0 11=5,1,0", "5,0",
         "Closed polyline must intersect twice."},
        {"TEXT 10=0,0,0 40=2 1=X/LINE 10=0,-5,0 11=0,9,0", "0,0", "Cannot TRIM this object."},
        {"POINT 10=0,0,0/LINE 10=0,-5,0 11=0,9,0", "0,0", "Cannot TRIM this object."},
        {"SPLINE 70=8 71=1 72=4 73=2 40=0 40=0 40=1 40=1 10=0,0,0 10=9,0,0" UPRIGHT("4"), "0,0",
         "Cannot TRIM this object."},
        {"CIRCLE 10=0,0,0 40=5 210=1,0,0/LINE 10=-5,0,0 11=5,0,0", "0,3", "Cannot TRIM this object."},
        {"LINE 10=0,0,0 11=0,0,9/LINE 10=-5,0,0 11=5,0,0", "0,0", "Cannot TRIM this object."},
    };
    for (const words_case& each : cases) {
        const auto ids = all_made(each.lists);
        const std::string before = described(ids[0], SHAPE);
        shown.clear();
        EXPECT_EQ(trimmed(ids, each.pick), before) << each.lists;
        EXPECT_TRUE(has_shown("\n" + std::string(each.words) + "\n")) << each.lists << "\n" << shown;
        for (const db::object_id id : ids)
            data().set_erased(id, true);
    }
}

TEST_F(trimming, EdgesThatAreNoneEndIt)
{
    const auto ids = all_made("TEXT 10=0,0,0 40=2 1=X/" X_AXIS);
    type("TRIM|" + handle_of(ids[0]) + "||" + handle_of(ids[1]) + " 5,0|");
    EXPECT_TRUE(has_shown("No edges selected.\n"));
    EXPECT_EQ(acedCommand(RTSTR, "_.TRIM", RTENAME, std::array<std::int32_t, 2>{0, 0}.data(), RTSTR, "", 0),
              RTERROR);
}

TEST_F(trimming, LockedLayersRefuseFrozenOnesAreNotThere)
{
    const db::object_id locked = db::add_layer(data(), "LOCKED", 7),
                        frozen = db::add_layer(data(), "FROZEN", 7);
    db::find(data().modify(locked), 70)->integer = 4;
    db::find(data().modify(frozen), 70)->integer = 1;
    const auto ids = all_made("LINE 8=LOCKED 10=-10,0,0 11=10,0,0/LINE 8=FROZEN 10=-10,1,0 11=10,1,0" UPRIGHT(
        "2") "/LINE 8=FROZEN 10=4,-5,0 11=4,5,0/LINE 8=LOCKED 10=6,-5,0 11=6,5,0/LINE 10=-10,2,0 11=10,2,0");
    type("TRIM||" + handle_of(ids[0]) + " 5,0|" + handle_of(ids[1]) + " 5,1|" + handle_of(ids[5]) + " 3,2|");
    EXPECT_TRUE(has_shown("\n1 on a locked layer.\n"));
    EXPECT_TRUE(has_shown("\nCannot TRIM this object.\n"));
    EXPECT_EQ(described(ids[0], {10, 11}), "LINE 10=-10,0,0 11=10,0,0");
    EXPECT_EQ(described(ids[1], {10, 11}), "LINE 10=-10,1,0 11=10,1,0");
    // A locked edge cuts, a frozen one doesn't.
    EXPECT_EQ(described(ids[5], {10, 11}), "LINE 10=-10,2,0 11=2,2,0");
    EXPECT_EQ(described(nth(count() - 1), {10, 11}), "LINE 10=6,2,0 11=10,2,0");
}

TEST_F(trimming, BothHalvesKeepAllProperties)
{
    db::add_layer(data(), "WALLS", 3);
    db::add_record(data(), "APPID", "SURVEY");
    const auto ids = all_made("LINE 8=WALLS 62=5 6=Continuous 48=2 370=30 39=4 10=0,0,0 11=10,0,0 1001=SURVEY "
                              "1000=kept 1040=1.5" UPRIGHT("4") UPRIGHT("6"));
    const std::uint64_t handle = data().at(ids[0]).handle;
    trimmed(ids, "5,0");
    const std::vector<int> all = {8, 62, 6, 48, 370, 39, 10, 11, 1001, 1000, 1040};
    const std::string tail = " 1001=SURVEY 1000=kept 1040=1.5";
    EXPECT_EQ(described(ids[0], all),
              "LINE 8=WALLS 62=5 6=Continuous 48=2 370=30 39=4 10=0,0,0 11=4,0,0" + tail);
    EXPECT_EQ(described(nth(3), all),
              "LINE 8=WALLS 62=5 6=Continuous 48=2 370=30 39=4 10=6,0,0 11=10,0,0" + tail);
    EXPECT_EQ(data().by_handle(handle), ids[0]);
    EXPECT_EQ(db::find(data().at(ids[0]).groups, 5)->handle, handle);
    EXPECT_EQ(db::find(data().at(nth(3)).groups, 5)->handle, data().at(nth(3)).handle);
}

TEST_F(trimming, UndoTakesBackOneCutAfterTheOther)
{
    const auto ids = all_made(X_AXIS UPRIGHT("2") UPRIGHT("4") "/CIRCLE 10=0,0,0 40=1");
    const std::string before = objects(SHAPE);
    const std::string edges =
        "TRIM|" + handle_of(ids[0]) + "|" + handle_of(ids[1]) + "|" + handle_of(ids[2]) + "||";
    const std::string picks = handle_of(ids[0]) + " 3,0|" + handle_of(ids[3]) + " 0,1|";
    type(edges + picks + "U|U|U|" + handle_of(ids[3]) + " 0,-1|");
    EXPECT_TRUE(has_shown("\nCommand has been completely undone.\n"));
    EXPECT_EQ(described(ids[0], {10, 11}), "LINE 10=-10,0,0 11=10,0,0");
    EXPECT_EQ(described(ids[3], SHAPE), "ARC 10=0,0,0 40=1 50=0 51=3.14159");
    EXPECT_EQ(count(), 4);
    type("U");
    EXPECT_EQ(objects(SHAPE), before);
}

TEST_F(trimming, ACommandIsOneStepOfUndo)
{
    const auto ids = all_made("POLYLINE 70=1 : 10=0,0,0 : 10=10,0,0 : 10=5,8,0" UPRIGHT("4")
                                  UPRIGHT("6") "/CIRCLE 10=5,0,0 40=1");
    const std::string before = objects(SHAPE);
    type("TRIM||" + handle_of(ids[0]) + " 5,0|" + handle_of(ids[3]) + " 5,1|" + handle_of(ids[1]) + " 4,-5|");
    EXPECT_NE(objects(SHAPE), before);
    type("U");
    EXPECT_EQ(objects(SHAPE), before);
    type("REDO");
    EXPECT_NE(objects(SHAPE), before);
    EXPECT_TRUE(data().is(ids[3], "ARC"));
}

TEST_F(trimming, EdgesMayBeTrimmedAndTheirHalvesStayEdges)
{
    // The first line is cut in two at the circle; its new half then cuts the upright.
    const auto ids = all_made("LINE 10=-10,0,0 11=10,0,0/CIRCLE 10=0,0,0 40=2/LINE 10=6,-5,0 11=6,5,0");
    type("TRIM|" + handle_of(ids[0]) + "|" + handle_of(ids[1]) + "||" + handle_of(ids[0]) + " 0,0|" +
         handle_of(ids[2]) + " 6,5|");
    EXPECT_EQ(described(ids[2], {10, 11}), "LINE 10=6,-5,0 11=6,0,0");
}

TEST_F(trimming, AnObjectCutsItselfOnlyWhenItIsAnEdge)
{
    const char* loop = "LWPOLYLINE 90=4 70=0 10=0,0 10=10,0 10=5,5 10=5,-5";
    const db::object_id id = made(loop), far = made("LINE 10=90,0,0 11=90,9,0");
    type("TRIM|" + handle_of(far) + "||" + handle_of(id) + " 5,-5|");
    EXPECT_TRUE(has_shown("Object does not intersect an edge."));
    type("TRIM|" + handle_of(id) + "||" + handle_of(id) + " 5,-5|");
    EXPECT_EQ(described(id, {10}), "LWPOLYLINE 10=0,0 10=10,0 10=5,5 10=5,0");
    // Its new end touches it now.
    type("TRIM||" + handle_of(id) + " 1,0|");
    EXPECT_EQ(described(id, {10}), "LWPOLYLINE 10=5,0 10=10,0 10=5,5 10=5,0");
}

TEST_F(trimming, ExtendedEdges)
{
    const auto ids = all_made(X_AXIS "/LINE 10=2,3,0 11=2,5,0/ARC 10=0,0,0 40=6 50=1 51=2");
    type("TRIM|" + handle_of(ids[1]) + "|" + handle_of(ids[2]) + "||E|E|" + handle_of(ids[0]) + " 4,0|");
    EXPECT_TRUE(has_shown("\nEnter an implied edge extension mode [Extend/No extend] <No extend>: E\n"));
    EXPECT_EQ(db::int_variable(doc(), "EDGEMODE"), 1);
    EXPECT_EQ(described(ids[0], {10, 11}), "LINE 10=-10,0,0 11=2,0,0");
    EXPECT_EQ(described(nth(3), {10, 11}), "LINE 10=6,0,0 11=10,0,0");
    type("TRIM||E||E|N|" + handle_of(ids[0]) + " -9,0|");
    EXPECT_TRUE(has_shown("<Extend>: \n"));
    EXPECT_EQ(db::int_variable(doc(), "EDGEMODE"), 0);
    EXPECT_EQ(described(ids[0], {10, 11}), "LINE 10=-10,0,0 11=2,0,0");
}

TEST_F(trimming, WithoutProjectionOnlyEdgesAtOneHeightCut)
{
    const auto ids = all_made("LINE 10=-10,0,0 11=10,0,20/LINE 10=2,-5,12 11=2,5,12/LINE 10=4,-5,0 11=4,5,0");
    type("TRIM||P|N|" + handle_of(ids[0]) + " 9,0|");
    EXPECT_TRUE(has_shown("\nEnter a projection option [None/Ucs/View] <Ucs>: N\n"));
    EXPECT_EQ(described(ids[0], {10, 11}), "LINE 10=-10,0,0 11=2,0,12");
    type("U");
    type("TRIM||P|U|" + handle_of(ids[0]) + " 9,0|P|V||");
    EXPECT_EQ(described(ids[0], {10, 11}), "LINE 10=-10,0,0 11=4,0,14");
    EXPECT_EQ(db::int_variable(doc(), "PROJMODE"), 2);
}

TEST_F(trimming, ACancelKeepsWhatHasBeenCut)
{
    const auto ids = all_made(X_AXIS UPRIGHT("2"));
    type("TRIM||" + handle_of(ids[0]) + " 5,0|^C");
    EXPECT_EQ(described(ids[0], {10, 11}), "LINE 10=-10,0,0 11=2,0,0");
}

// ---- programs

struct sent_names {
    ads_name edge, line;
    sent_names(const db::database& db, db::object_id e, db::object_id l)
    {
        db::make_name(db, e, edge);
        db::make_name(db, l, line);
    }
};

TEST_F(trimming, AProgramSendsNamesAndAListWithThePick)
{
    const auto ids = all_made(X_AXIS "/CIRCLE 10=3,0,0 40=1");
    const sent_names names(data(), ids[1], ids[0]);
    const ads_point at = {3, 0, 0};
    EXPECT_EQ(acedCommand(RTSTR, "_.TRIM", RTENAME, names.edge, RTSTR, "", RTLB, RTENAME, names.line, RT3DPOINT,
                          at, RTLE, RTSTR, "", 0),
              RTNORM);
    EXPECT_EQ(objects({10, 11, 40}),
              "LINE 10=-10,0,0 11=2,0,0 / CIRCLE 10=3,0,0 40=1 / LINE 10=4,0,0 11=10,0,0");
    EXPECT_EQ(shown, "");
    // Nothing waits: the next value names a command.
    EXPECT_EQ(acedCommand(RTSTR, "_.POINT", RT3DPOINT, at, 0), RTNORM);
    EXPECT_EQ(count(), 4);
}

TEST_F(trimming, ASymbolsOutlineCutsEveryLineThroughIt)
{
    // A line that ends in the symbol, one through it, and a polyline with a vertex there.
    const auto ids =
        all_made("LINE 10=0,0,5 11=10,0,5/LINE 10=-10,-10,0 11=10,10,0/LWPOLYLINE 90=3 10=0,10 10=0,0 10=-10,0"
                 "/CIRCLE 10=0,0,0 40=1");
    const ads_point at = {0, 0, 0};
    for (int i = 0; i < 3; ++i) {
        const sent_names names(data(), ids[3], ids[static_cast<std::size_t>(i)]);
        EXPECT_EQ(acedCommand(RTSTR, "_.TRIM", RTENAME, names.edge, RTSTR, "", RTLB, RTENAME, names.line,
                              RT3DPOINT, at, RTLE, RTSTR, "", 0),
                  RTNORM);
    }
    EXPECT_EQ(described(ids[0], {10, 11}), "LINE 10=1,0,5 11=10,0,5");
    EXPECT_EQ(described(ids[1], {10, 11}), "LINE 10=-10,-10,0 11=-0.707107,-0.707107,0");
    EXPECT_EQ(described(ids[2], {10}), "LWPOLYLINE 10=0,10 10=0,1");
    EXPECT_EQ(described(nth(4), {10, 11}), "LINE 10=0.707107,0.707107,0 11=10,10,0");
    EXPECT_EQ(described(nth(5), {10}), "LWPOLYLINE 10=-1,0 10=-10,0");
}

TEST_F(trimming, AProgramMaySendPointsAndGoOnInALaterCall)
{
    const auto ids = all_made(X_AXIS UPRIGHT("2"));
    const sent_names names(data(), ids[1], ids[0]);
    const ads_point at = {5, 0, 0};
    EXPECT_EQ(acedCommand(RTSTR, "TRIM", RTENAME, names.edge, 0), RTNORM);
    EXPECT_EQ(acedCommand(RTSTR, "", RTPOINT, at, 0), RTNORM);
    EXPECT_EQ(described(ids[0], {10, 11}), "LINE 10=-10,0,0 11=2,0,0");
    EXPECT_EQ(acedCommand(RTSTR, "", 0), RTNORM);
    EXPECT_EQ(acedCommand(RTSTR, "TRIM", RTENAME, names.edge, RTSTR, "", RTLB, RTENAME, names.line, RT3DPOINT,
                          at, RTLE, RTSTR, "", 0),
              RTNORM); // does not intersect any more: told, and no refusal
    EXPECT_EQ(described(ids[0], {10, 11}), "LINE 10=-10,0,0 11=2,0,0");
}

// ---- many objects

// Looking outward from the pick must bound the same part as trying every edge.
TEST_F(trimming, EdgesNearThePickAreEnough)
{
    std::mt19937 random{7};
    std::uniform_real_distribution<double> at(0, 100), step(-8, 8), turn(0, 6.28), share(0, 1);
    object_list all;
    const auto add = [&](db::group_list groups) {
        all.push_back(db::make_entity(data(), std::move(groups), nullptr));
        ASSERT_NE(all.back(), 0u);
    };
    for (int i = 0; i < 400; ++i) {
        const double x = at(random), y = at(random);
        const db::group layer = data().text_group(8, "0");
        if (i % 4 == 0)
            add({data().text_group(0, "CIRCLE"), layer, db::point_group(10, x, y, 0),
                 db::real_group(40, 1 + i % 7)});
        else if (i % 4 == 1)
            add({data().text_group(0, "ARC"), layer, db::point_group(10, x, y, 0),
                 db::real_group(40, 1 + i % 9), db::real_group(50, turn(random)),
                 db::real_group(51, turn(random))});
        else if (i % 40 == 2)
            add({data().text_group(0, "LWPOLYLINE"), layer, db::int_group(70, i % 3 == 0),
                 db::point_group(10, x, y), db::point_group(10, at(random), at(random)),
                 db::real_group(42, 0.4), db::point_group(10, at(random), at(random))});
        else
            add({data().text_group(0, "LINE"), layer, db::point_group(10, x, y, 0),
                 db::point_group(11, x + step(random), y + step(random), 0)});
    }
    const cutting_edges every(data(), {}), chosen(data(), all);
    for (const db::object_id id : all) {
        const db::plan_curve curve = *db::plan_curve_of(data(), id);
        const db::curve_place place = curve.place_at(curve.first() + curve.size() * share(random));
        const double tolerance = db::place_tolerance(curve);
        std::vector<db::crossing> brute;
        const db::crossing_finder finder(curve);
        for (const db::object_id edge : all) {
            const auto some = finder.with(*db::plan_curve_of(data(), edge));
            brute.insert(brute.end(), some.begin(), some.end());
        }
        std::sort(brute.begin(), brute.end(), [](const auto& a, const auto& b) { return a.along < b.along; });
        const db::part_between expected = db::part_around(curve, brute, place, tolerance);
        for (const cutting_edges* edges : {&every, &chosen}) {
            const db::part_between got =
                db::part_around(curve, edges->around(curve, place, {}), place, tolerance);
            ASSERT_EQ(got.count, expected.count) << described(id, SHAPE);
            if (expected.count == 0 || (curve.is_closed && expected.count < 2))
                continue;
            EXPECT_EQ(got.is_start, expected.is_start);
            EXPECT_EQ(got.is_end, expected.is_end);
            EXPECT_NEAR(curve.along(got.from), curve.along(expected.from), tolerance) << described(id, SHAPE);
            EXPECT_NEAR(curve.along(got.to), curve.along(expected.to), tolerance) << described(id, SHAPE);
        }
    }
}

} // namespace

} // namespace host::commandline

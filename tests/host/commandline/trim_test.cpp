// TRIM: each kind of object at each kind of edge, picks on either side, the command's words and what programs
// send.
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

} // namespace

} // namespace host::commandline

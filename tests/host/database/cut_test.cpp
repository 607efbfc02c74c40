// Crossings of curves and what cuts leave of objects: by the thousand against many points along them, and the
// cases that rounding makes hard.
#include "host/database/cut.h"

#include <random>

#include "host/database/crossings.h"
#include "tests/host/database/lists.h"
#include "tests/host/database/plain_curves.h"

namespace host::db
{
namespace
{

using namespace testing_lists;
constexpr double PI = std::numbers::pi;

std::vector<curve_stretch> left_of(const plan_curve& curve, const part_between& gone)
{
    if (curve.is_closed)
        return {{gone.to, gone.from}};
    std::vector<curve_stretch> left;
    if (!gone.is_start)
        left.push_back({{0, curve.pieces.front().low}, gone.from});
    if (!gone.is_end)
        left.push_back({gone.to, {curve.pieces.size() - 1, curve.pieces.back().high}});
    return left;
}

struct Cut : Drawing {
    std::vector<crossing> crossings(object_id subject, const std::vector<object_id>& edges)
    {
        const plan_curve curve = *plan_curve_of(db, subject);
        const crossing_finder finder(curve);
        std::vector<crossing> all;
        for (const object_id edge : edges) {
            const std::vector<crossing> some = finder.with(*plan_curve_of(db, edge));
            all.insert(all.end(), some.begin(), some.end());
        }
        std::sort(all.begin(), all.end(),
                  [](const crossing& a, const crossing& b) { return a.along < b.along; });
        return all;
    }
    // What is left of an object without the part at a place; nothing when no edge bounds it.
    std::vector<object_id> trimmed(object_id subject, const std::vector<object_id>& edges, double x, double y)
    {
        const plan_curve curve = *plan_curve_of(db, subject);
        const part_between gone =
            part_around(curve, crossings(subject, edges), curve.nearest(x, y), place_tolerance(curve));
        if (gone.count == 0 || (curve.is_closed && gone.count < 2))
            return {};
        std::vector<object_id> out{subject};
        EXPECT_TRUE(keep_stretches(db, curve, left_of(curve, gone), &out));
        return out;
    }
    // Places at which edges meet the subject, as "x,y x,y", those closer than the tolerance once.
    std::string places(object_id subject, const std::vector<object_id>& edges)
    {
        const plan_curve curve = *plan_curve_of(db, subject);
        std::string out;
        double first = HUGE_VAL, before = -HUGE_VAL;
        for (const crossing& each : crossings(subject, edges)) {
            const vec p = curve.point(each.on);
            first = std::min(first, each.along);
            const bool over_seam =
                curve.is_closed && each.along >= first + curve.size() - place_tolerance(curve);
            if (each.along > before + place_tolerance(curve) && !over_seam) {
                char text[80];
                const auto clean = [](double v) { return std::round(v * 1e7) / 1e7 + 0.0; };
                std::snprintf(text, sizeof text, "%s%.6g,%.6g", out.empty() ? "" : " ", clean(p.x), clean(p.y));
                out += text;
            }
            before = each.along;
        }
        return out;
    }
    object_id sequence(std::vector<std::string> lists)
    {
        for (const std::string& list : lists)
            EXPECT_EQ(make(list), RTNORM) << list;
        EXPECT_EQ(make("0 SEQEND"), RTNORM);
        return last();
    }
};

// ---- random ones

struct RandomCuts : Cut {
    std::mt19937 random{20261121};

    double from_to(double low, double high)
    {
        return std::uniform_real_distribution<double>(low, high)(random);
    }
    int one_of(int count) { return std::uniform_int_distribution<int>(0, count - 1)(random); }
    static std::string text(const char* format, double a, double b, double c = 0, double d = 0)
    {
        char out[200];
        std::snprintf(out, sizeof out, format, a, b, c, d);
        return out;
    }
    std::string upside() { return one_of(4) == 0 ? ";210 0,0,-1" : ""; }
    object_id straight()
    {
        return made(text("0 LINE;10 %.17g,%.17g,1;11 %.17g,%.17g,5", place(), place(), place(), place()));
    }
    object_id round()
    {
        const std::string centre =
            text(";10 %.17g,%.17g,0;40 %.17g", place(), place(), from_to(1, 8)) + upside();
        if (one_of(2))
            return made("0 CIRCLE" + centre);
        return made("0 ARC" + centre + text(";50 %.17g;51 %.17g", from_to(0, 2 * PI), from_to(0, 2 * PI)));
    }
    object_id ellipse()
    {
        std::string list = text("0 ELLIPSE;10 %.17g,%.17g,0;11 %.17g,%.17g,0", place(), place(), from_to(-8, 8),
                                from_to(1, 8)) +
                           text(";40 %.17g", from_to(0.05, 1), 0);
        const double start = from_to(0, 2 * PI);
        if (one_of(2))
            list += text(";41 %.17g;42 %.17g", start, start + from_to(0.3, 6));
        return made(list);
    }
    object_id lightweight()
    {
        const int count = 2 + one_of(5);
        std::string list = "0 LWPOLYLINE;90 " + std::to_string(count) + ";70 " + std::to_string(one_of(2));
        for (int i = 0; i < count; ++i)
            list += text(";10 %.17g,%.17g;42 %.17g", place(), place(), one_of(2) ? from_to(-1.5, 1.5) : 0);
        return made(list + upside());
    }
    object_id polyline()
    {
        const bool in_space = one_of(2);
        std::vector<std::string> lists{"0 POLYLINE;66 1;70 " + std::to_string(one_of(2) + (in_space ? 8 : 0))};
        const int count = 3 + one_of(4);
        for (int i = 0; i < count; ++i)
            lists.push_back(text("0 VERTEX;10 %.17g,%.17g,%.17g", place(), place(), in_space ? place() : 0) +
                            (in_space ? ";70 32" : text(";42 %.17g", one_of(2) ? from_to(-1, 1) : 0, 0)));
        return sequence(lists);
    }
    double place() { return from_to(-10, 10) + origin; }
    object_id any()
    {
        switch (one_of(5)) {
        case 0:
            return straight();
        case 1:
            return round();
        case 2:
            return ellipse();
        case 3:
            return lightweight();
        default:
            return polyline();
        }
    }
    double origin = 0;
};

// What is gone and what stays by points along the curve: [from, to) of the chords, by counting to either side
// of one until a chord crosses an edge. Closed curves: the indices are taken round.
struct sampled_part {
    std::vector<plain::point> points;
    long from = 0, to = 0;
    bool bounded = false;
};

sampled_part part_by_samples(const plain::curve& curve, const std::vector<plain::curve>& edges, double s,
                             int per_piece)
{
    sampled_part out;
    out.points = curve.samples(per_piece);
    const long chords = static_cast<long>(out.points.size()) - 1;
    std::vector<std::vector<plain::point>> lines;
    for (const plain::curve& edge : edges)
        lines.push_back(edge.samples(per_piece));
    const auto crossed = [&](long chord) {
        const long i = ((chord % chords) + chords) % chords;
        for (const auto& line : lines)
            for (std::size_t k = 1; k < line.size(); ++k)
                if (plain::chords_cross(out.points[static_cast<std::size_t>(i)],
                                        out.points[static_cast<std::size_t>(i + 1)], line[k - 1], line[k]))
                    return true;
        return false;
    };
    const long middle = static_cast<long>(s * static_cast<double>(chords));
    // The chord of the pick itself is not to be crossed.
    if (crossed(middle))
        return out;
    const long low = curve.is_closed ? middle - chords : 0, high = curve.is_closed ? middle + chords : chords;
    for (out.from = middle; out.from > low && !crossed(out.from - 1);)
        --out.from;
    for (out.to = middle + 1; out.to < high && !crossed(out.to);)
        ++out.to;
    out.bounded = true;
    return out;
}

struct judged {
    bool same = false;
    std::string why;
};

judged judge(const plain::curve& before, const sampled_part& part, const std::vector<plain::curve>& left)
{
    const long chords = static_cast<long>(part.points.size()) - 1;
    const bool no_bound =
        before.is_closed ? part.to - part.from >= chords - 1 : part.from == 0 && part.to == chords;
    if (no_bound || left.empty())
        return {no_bound && left.empty(), no_bound ? "cut without an edge" : "not cut"};
    double gone = 0, longest = 0;
    const auto at = [&](long i) {
        return part.points[static_cast<std::size_t>(((i % chords) + chords) % chords)];
    };
    for (long i = part.from; i < part.to; ++i) {
        const plain::point a = before.is_closed ? at(i) : part.points[static_cast<std::size_t>(i)];
        const plain::point b = before.is_closed ? at(i + 1) : part.points[static_cast<std::size_t>(i + 1)];
        gone += plain::distance(a, b);
    }
    for (long i = 0; i < chords; ++i)
        longest = std::max(longest, plain::distance(part.points[static_cast<std::size_t>(i)],
                                                    part.points[static_cast<std::size_t>(i + 1)]));
    double stays = 0;
    for (const plain::curve& each : left)
        stays += each.length();
    const double whole = before.length();
    if (std::fabs(whole - gone - stays) >
        2.5 * longest + 1e-3 * whole / static_cast<double>(chords) + 1e-4 * whole)
        return {false, "lengths: whole " + number(whole) + " gone " + number(gone) + " left " + number(stays)};
    // Every eighth point that stays.
    for (long i = before.is_closed ? part.to - chords + 1 : 0; i < part.from; i += 8) {
        const plain::point p = before.is_closed ? at(i) : part.points[static_cast<std::size_t>(i)];
        double nearest = HUGE_VAL;
        for (const plain::curve& each : left)
            nearest = std::min(nearest, each.distance_to(p));
        if (nearest > 1e-6)
            return {false, "a point is lost"};
    }
    for (long i = part.to + 1; !before.is_closed && i <= chords; i += 8) {
        double nearest = HUGE_VAL;
        for (const plain::curve& each : left)
            nearest = std::min(nearest, each.distance_to(part.points[static_cast<std::size_t>(i)]));
        if (nearest > 1e-6)
            return {false, "a point behind is lost"};
    }
    return {true, {}};
}

std::string listed(const RandomCuts& in, const std::vector<object_id>& ids)
{
    std::string out;
    for (const object_id id : ids) {
        out += in.got(id) + "\n";
        for (object_id child = first_child(in.db, id); child; child = next_child(in.db, child))
            out += "   " + in.got(child) + "\n";
    }
    return out;
}

void check_random(RandomCuts& in, int count, double origin)
{
    in.origin = origin;
    int cut = 0, on_a_crossing = 0;
    for (int round = 0; round < count && !testing::Test::HasFailure(); ++round) {
        SCOPED_TRACE("case " + std::to_string(round));
        const object_id subject = in.any();
        std::vector<object_id> edges;
        for (int i = 1 + in.one_of(3); i > 0; --i)
            edges.push_back(in.any());
        if (in.db.is(subject, "LWPOLYLINE") && in.one_of(3) == 0)
            edges.push_back(subject); // it may cut itself
        const plain::curve before = plain::curve_of(in.db, subject);
        std::vector<plain::curve> lines;
        const bool self = edges.back() == subject;
        if (self)
            edges.pop_back(); // points can't tell a curve's crossings with itself from its own chords
        for (const object_id edge : edges)
            lines.push_back(plain::curve_of(in.db, edge));
        const double s = in.from_to(0.01, 0.99);
        const double place = s * static_cast<double>(before.pieces.size());
        const std::size_t index = static_cast<std::size_t>(place);
        const plain::point pick = before.pieces[index].at(place - static_cast<double>(index));
        const std::string text = in.got(subject);
        const std::vector<object_id> out = in.trimmed(subject, edges, pick.x, pick.y);
        std::vector<plain::curve> left;
        for (const object_id each : out) {
            left.push_back(plain::curve_of(in.db, each));
            EXPECT_GT(left.back().length(), 1e-9);
            EXPECT_TRUE(check_numbers(in.db.at(each).groups, nullptr));
            EXPECT_FALSE(left.back().is_closed);
            for (const plain::point& end :
                 {left.back().pieces.front().at(0), left.back().pieces.back().at(1)}) {
                const bool is_own =
                    !before.is_closed && (plain::distance(end, before.pieces.front().at(0)) < 1e-7 ||
                                          plain::distance(end, before.pieces.back().at(1)) < 1e-7);
                double off = HUGE_VAL;
                for (const plain::curve& line : lines)
                    off = std::min(off, line.distance_to(end));
                EXPECT_TRUE(is_own || off < 1e-7 + 1e-13 * std::fabs(origin))
                    << "end off an edge by " << off << "\n"
                    << text << "\n"
                    << listed(in, edges);
            }
        }
        // Finer where coarse points may have missed a crossing: near misses and touches.
        judged verdict;
        bool decided = false;
        for (const int per_piece : {90, 720, 5760}) {
            const sampled_part part = part_by_samples(before, lines, s, per_piece);
            decided = part.bounded; // else the pick is next to a crossing
            if (!decided)
                continue;
            verdict = judge(before, part, left);
            if (verdict.same)
                break;
        }
        // Two crossings between neighbouring points are none to them.
        if (!left.empty() && (before.is_closed || left.size() == 2)) {
            const plain::point from = left.front().pieces.back().at(1), to = left.back().pieces.front().at(0);
            decided = decided && plain::distance(from, to) > 2 * before.length() / 5760;
        }
        on_a_crossing += decided ? 0 : 1;
        EXPECT_TRUE(!decided || verdict.same)
            << verdict.why << "\n"
            << text << "\n"
            << listed(in, edges) << "pick " << number(pick.x) << ' ' << number(pick.y);
        cut += out.empty() ? 0 : 1;
        for (const object_id each : edges)
            in.erase(each);
        for (const object_id each : out)
            in.erase(each);
    }
    EXPECT_GT(cut, count / 3);
    EXPECT_LT(on_a_crossing, count / 20);
}

TEST_F(RandomCuts, LeaveWhatPointsAlongTheCurveSay)
{
    check_random(*this, 2000, 0);
}

TEST_F(RandomCuts, FarFromTheOriginToo)
{
    check_random(*this, 250, 640000);
}

// On whole numbers nearly everything touches, ends at or lies on something else. What is left must be sound all
// the same: shorter than the whole by what went, ending at edges or where the object ended, nothing without a
// length.
TEST_F(RandomCuts, OnWholeNumbersLeaveSoundObjects)
{
    const auto whole = [&](int low, int high) { return static_cast<double>(low + one_of(high - low + 1)); };
    const auto shape = [&] {
        const double x = whole(-4, 4), y = whole(-4, 4);
        switch (one_of(6)) {
        case 0:
            return made(text("0 LINE;10 %g,%g,0;11 %g,%g,0", x, y, x + whole(1, 4), whole(-4, 4)));
        case 1:
            return made(text("0 CIRCLE;10 %g,%g,0;40 %g", x, y, whole(1, 4)));
        case 2:
            return made(text("0 ARC;10 %g,%g,0;40 %g", x, y, whole(1, 4)) +
                        text(";50 %.17g;51 %.17g", whole(0, 3) * PI / 2, whole(0, 5) * PI / 3));
        case 3:
            return made(text("0 ELLIPSE;10 %g,%g,0;11 %g,0,0;40 0.5", x, y, whole(1, 4)) +
                        text(";41 0;42 %.17g", whole(1, 4) * PI / 2, 0));
        default: {
            std::string list = "0 LWPOLYLINE;90 5;70 " + std::to_string(one_of(2));
            for (int i = 0; i < 5; ++i)
                list += text(";10 %g,%g;42 %g", whole(-4, 4), whole(-4, 4), one_of(3) ? 0 : whole(-1, 1));
            return made(list);
        }
        }
    };
    int cut = 0;
    for (int round = 0; round < 4000 && !HasFailure(); ++round) {
        std::vector<object_id> ids;
        for (int i = 0; i < 5; ++i)
            ids.push_back(shape());
        const object_id subject = ids[0];
        if (one_of(2))
            ids.erase(ids.begin()); // else it is an edge too
        if (!plan_curve_of(db, subject))
            continue; // all its vertices in one place
        std::erase_if(ids, [&](object_id id) { return !plan_curve_of(db, id); });
        const plain::curve before = plain::curve_of(db, subject);
        std::vector<plain::curve> lines;
        for (const object_id id : ids)
            lines.push_back(plain::curve_of(db, id));
        const std::string context = listed(*this, ids) + "subject " + got(subject);
        const plain::point pick = before.pieces[0].at(from_to(0, 1));
        const std::vector<object_id> out = trimmed(subject, ids, pick.x, pick.y);
        double stays = 0;
        for (const object_id id : out) {
            EXPECT_TRUE(check_numbers(db.at(id).groups, nullptr)) << context;
            const plain::curve left = plain::curve_of(db, id);
            EXPECT_GT(left.length(), 1e-7) << context;
            stays += left.length();
            for (const plain::point& end : {left.pieces.front().at(0), left.pieces.back().at(1)}) {
                double off = HUGE_VAL;
                for (const plain::curve& line : lines)
                    off = std::min(off, line.distance_to(end));
                const bool is_own =
                    !before.is_closed && (plain::distance(end, before.pieces.front().at(0)) < 1e-7 ||
                                          plain::distance(end, before.pieces.back().at(1)) < 1e-7);
                EXPECT_TRUE(is_own || off < 1e-7) << off << "\n" << context;
            }
        }
        EXPECT_LT(stays, before.length() - 1e-7) << context;
        cut += out.empty() ? 0 : 1;
        for (const std::vector<object_id>& all : {ids, out})
            for (const object_id id : all)
                db.set_erased(id, true);
        db.set_erased(subject, true);
    }
    EXPECT_GT(cut, 2000);
}

// ---- hard ones

struct crossing_case {
    const char *subject, *edge, *places;
};

TEST_F(Cut, PlacesWhereCurvesMeet)
{
    const char* axis = "0 LINE;10 -10,0,0;11 10,0,0";
    const char* unit = "0 CIRCLE;10 0,0,0;40 1";
    const char* oval = "0 ELLIPSE;10 0,0,0;11 2,0,0;40 0.5";
    const crossing_case cases[] = {
        // touching
        {axis, "0 CIRCLE;10 3,2,0;40 2", "3,0"},
        {axis, "0 CIRCLE;10 3,2.000000001,0;40 2", "3,0"},
        {axis, "0 CIRCLE;10 3,1.999999999,0;40 2", "3,0"},
        {axis, "0 CIRCLE;10 3,2.000001,0;40 2", ""},
        {axis, "0 ELLIPSE;10 3,2,0;11 5,0,0;40 0.4", "3,0"},
        {unit, "0 CIRCLE;10 3,0,0;40 2", "1,0"},
        {unit, "0 CIRCLE;10 1,0,0;40 2", "-1,0"},
        {"0 CIRCLE;10 1,0,0;40 2", unit, "-1,0"},
        {oval, "0 CIRCLE;10 0,0,0;40 1", "0,1 0,-1"},
        {oval, "0 CIRCLE;10 0,0,0;40 2", "2,0 -2,0"},
        {unit, oval, "0,1 0,-1"},
        {oval, "0 ELLIPSE;10 4,0,0;11 2,0,0;40 0.5", "2,0"},
        {oval, "0 ELLIPSE;10 4.001,0,0;11 2,0,0;40 0.5", ""},
        // the circle that bends as the oval does at its top and at its end
        {oval, "0 CIRCLE;10 0,-3,0;40 4", "0,1"},
        {oval, "0 CIRCLE;10 1.5,0,0;40 0.5", "2,0"},
        // one on the other
        {unit, unit, ""},
        {oval, oval, ""},
        {oval, "0 ELLIPSE;10 0,0,0;11 0,1,0;40 2", ""},
        {unit, "0 ELLIPSE;10 0,0,0;11 0,1,0;40 1", ""},
        {unit, "0 ARC;10 0,0,0;40 1;50 0;51 3.141592653589793", "1,0 -1,0"},
        {"0 ARC;10 0,0,0;40 1;50 0;51 3.141592653589793", "0 ARC;10 0,0,0;40 1;50 1.570796326794897;51 5",
         "0,1 -1,0"},
        {oval, "0 ELLIPSE;10 0,0,0;11 2,0,0;40 0.5;41 1.570796326794897;42 3.141592653589793", "0,1 -2,0"},
        {axis, "0 LINE;10 10,0,0;11 -10,0,0", "-10,0 10,0"},
        {axis, "0 LINE;10 5,0,0;11 50,0,0", "5,0 10,0"},
        {axis, "0 LINE;10 10,0,0;11 50,0,0", "10,0"},
        {axis, "0 LINE;10 11,0,0;11 50,0,0", ""},
        {axis, "0 XLINE;10 11,0,0;11 1,0,0", "-10,0 10,0"},
        {"0 XLINE;10 11,0,0;11 1,0,0", "0 XLINE;10 -11,0,0;11 -1,0,0", ""},
        {axis, "0 LINE;10 -10,1,0;11 10,1,0", ""},
        // nearly the same way
        {axis, "0 LINE;10 -10,-1e-4,0;11 10,1e-4,0", "0,0"},
        {axis, "0 LINE;10 2,1e-12,0;11 4,-1e-12,0", "2,0 4,0"},
        // ends at the curve
        {axis, "0 LINE;10 3,0,0;11 3,5,0", "3,0"},
        {axis, "0 ARC;10 3,1,0;40 1;50 4.712388980384690;51 6", "3,0"},
        {unit, "0 LINE;10 0,0,0;11 0.6,0.8,0", "0.6,0.8"},
        {unit, "0 LINE;10 0,0,0;11 1,0,0", "1,0"},
        // planes that stand aslant
        {axis, "0 CIRCLE;10 0,0,0;40 2;210 1,0,1", "-1.41421,0 1.41421,0"},
        {axis, "0 CIRCLE;10 0,0,5;40 2;210 1,0,0", "5,0"},
        {axis, "0 CIRCLE;10 0,0,0;40 2;210 0,1,0", "-2,0 2,0"},
        {axis, "0 LWPOLYLINE;90 2;70 0;10 0,-1;10 0,1;210 0,0,-1", "0,0"},
        {axis, "0 LINE;10 3,0,0;11 3,0,9", ""},
        // four crossings, and sizes that are far apart
        {oval, "0 ELLIPSE;10 0,0,0;11 0,2,0;40 0.5",
         "0.894427,0.894427 -0.894427,0.894427 -0.894427,-0.894427 0.894427,-0.894427"},
        {"0 CIRCLE;10 0,-1000000,0;40 1000000", "0 ELLIPSE;10 0,0,0;11 2,0,0;40 0.5", "2,-2e-06 -2,-2e-06"},
        {"0 ELLIPSE;10 0,0,0;11 2,0,0;40 0.5", "0 CIRCLE;10 0,-1000000,0;40 1000000", "-2,-2e-06 2,-2e-06"},
        {"0 ELLIPSE;10 0,0,0;11 2,0,0;40 0.000001", "0 LINE;10 1,-1,0;11 1,1,0", "1,1.7e-06 1,-1.7e-06"},
        // itself
        {"0 LWPOLYLINE;90 4;70 0;10 0,0;10 10,0;10 5,5;10 5,-5", "", "5,0 5,0"},
        {"0 LWPOLYLINE;90 3;70 0;10 0,0;10 10,0;42 1;10 10,4", "", ""},
        {"0 LWPOLYLINE;90 4;70 1;10 0,0;10 4,4;10 4,0;10 0,4", "", "2,2 2,2"},
        {"0 LWPOLYLINE;90 2;70 1;10 0,0;42 1;10 4,0;42 1", "", ""},
        {"0 LWPOLYLINE;90 4;70 0;10 0,0;10 10,0;10 10,0;10 10,5", "", ""},
    };
    for (const crossing_case& each : cases) {
        const object_id subject = made(each.subject);
        const object_id edge = *each.edge ? made(each.edge) : subject;
        if (!plan_curve_of(db, edge)) {
            EXPECT_STREQ(each.places, "") << each.edge;
            continue;
        }
        EXPECT_EQ(places(subject, {edge}), each.places) << each.subject << "  and  " << each.edge;
    }
}

// Crossings don't depend on which of the two is asked, nor on where in the world they are.
TEST_F(RandomCuts, PlacesAreTheSameFromEitherSideAndElsewhere)
{
    for (int round = 0; round < 2000; ++round) {
        const object_id a = any(), b = any();
        const plan_curve one = *plan_curve_of(db, a), other = *plan_curve_of(db, b);
        const std::vector<crossing> there = crossing_finder(one).with(other),
                                    back = crossing_finder(other).with(one);
        ASSERT_EQ(there.size(), back.size()) << got(a) << "\n" << got(b);
        for (const crossing& each : there) {
            const vec p = one.point(each.on), q = other.point(each.edge);
            EXPECT_LT(std::hypot(p.x - q.x, p.y - q.y), 1e-7) << got(a) << "\n" << got(b);
        }
        erase(a);
        erase(b);
    }
}

TEST_F(Cut, KeepsNoPartThatIsShorterThanTheTolerance)
{
    // Two edges a hair apart are one; so is an edge at the very end.
    const object_id line = made("0 LINE;10 0,0,0;11 10,0,0");
    const object_id a = made("0 LINE;10 4,-1,0;11 4,1,0"),
                    b = made("0 LINE;10 4.000000000001,-1,0;11 4.000000000001,1,0");
    const object_id end = made("0 LINE;10 9.9999999999,-1,0;11 9.9999999999,1,0");
    EXPECT_EQ(trimmed(line, {end}, 5, 0).size(), 0u);
    EXPECT_EQ(trimmed(line, {a, b, end}, 4.0000000000005, 0).size(), 1u);
    EXPECT_EQ(got(line), "0 LINE;100 AcDbEntity;67 0;410 Model;8 0;100 AcDbLine;10 0,0,0;11 4,0,0;210 0,0,1");
}

TEST_F(Cut, WhatCannotBeCutStaysWhole)
{
    const object_id edge_on = made("0 CIRCLE;10 0,0,0;40 5;210 1,0,0");
    const object_id spline =
        made("0 SPLINE;100 AcDbSpline;70 8;71 1;72 4;73 2;74 0;40 0;40 0;40 1;40 1;10 0,0,0;10 9,9,0");
    for (const object_id each : {edge_on, spline}) {
        const std::string before = got(each);
        const plan_curve curve = *plan_curve_of(db, each);
        EXPECT_FALSE(can_be_cut(db, curve));
        EXPECT_FALSE(keep_stretches(db, curve, {{{0, 0}, {0, 0.5}}}, nullptr));
        EXPECT_EQ(got(each), before);
    }
    EXPECT_FALSE(plan_curve_of(db, made("0 LINE;10 1,1,0;11 1,1,9"))); // seen as a point
    EXPECT_FALSE(plan_curve_of(db, made("0 TEXT;10 1,1,0;40 1;1 a")));
    EXPECT_FALSE(plan_curve_of(db, made("0 LWPOLYLINE;90 1;70 0;10 1,1")));
    EXPECT_FALSE(plan_curve_of(db, made("0 CIRCLE;10 1,1,0;40 0")));
    EXPECT_FALSE(plan_curve_of(db, 0));
}

TEST_F(Cut, ACircleThatIsCutIsAnArcUnderItsHandle)
{
    db.command_boundary("TEST");
    const object_id circle = made("0 CIRCLE;62 3;10 0,0,0;40 5;39 2");
    const object_id edge = made("0 LINE;10 -9,0,0;11 9,0,0");
    const std::string before = got(circle);
    db.command_boundary("TEST");
    EXPECT_EQ(trimmed(circle, {edge}, 0, 5), std::vector<object_id>{circle});
    const std::string after =
        "0 ARC;100 AcDbEntity;67 0;410 Model;8 0;62 3;100 AcDbCircle;39 2;10 0,0,0;40 5;210 0,0,1;"
        "100 AcDbArc;50 3.141592654;51 0";
    EXPECT_EQ(got(circle), after);
    EXPECT_TRUE(db.is(circle, "ARC"));
    EXPECT_TRUE(db.undo_back());
    EXPECT_EQ(got(circle), before);
    EXPECT_TRUE(db.is(circle, "CIRCLE"));
    EXPECT_TRUE(db.redo());
    EXPECT_EQ(got(circle), after);
    EXPECT_TRUE(db.is(circle, "ARC"));
}

TEST_F(Cut, APolylinesVerticesComeBackWithUndo)
{
    db.command_boundary("TEST");
    const object_id line =
        sequence({"0 POLYLINE;66 1;70 1", "0 VERTEX;10 0,0,0", "0 VERTEX;10 10,0,0", "0 VERTEX;10 5,8,0"});
    const object_id edge = made("0 LINE;10 4,-1,0;11 4,1,0"), other = made("0 LINE;10 6,-1,0;11 6,1,0");
    const auto vertices = [&] {
        int count = 0;
        for (object_id child = first_child(db, line); child; child = next_child(db, child))
            ++count;
        return count;
    };
    db.command_boundary("TEST");
    EXPECT_EQ(trimmed(line, {edge, other}, 5, 0).size(), 1u);
    EXPECT_EQ(vertices(), 5);
    EXPECT_EQ(walk(line), "VERTEX VERTEX VERTEX VERTEX VERTEX SEQEND LINE LINE");
    EXPECT_TRUE(db.undo_back());
    EXPECT_EQ(vertices(), 3);
    EXPECT_TRUE(db.redo());
    EXPECT_EQ(vertices(), 5);
}

TEST_F(Cut, AnImagePutsACutBack)
{
    const object_id line =
        sequence({"0 POLYLINE;66 1;70 1", "0 VERTEX;10 0,0,0", "0 VERTEX;10 10,0,0", "0 VERTEX;10 5,8,0"});
    const object_id edge = made("0 LINE;10 4,-1,0;11 4,1,0"), other = made("0 LINE;10 5.5,-1,0;11 5.5,10,0");
    const auto all = [&] {
        std::string out = got(line);
        for (object_id child = first_child(db, line); child; child = next_child(db, child))
            out += "\n" + got(child);
        return out;
    };
    const std::string before = all();
    for (const double x : {5.0, 0.0, 9.0}) {
        const object_image image = image_of(db, line);
        EXPECT_EQ(trimmed(line, {edge, other}, x, 0).size(), 1u);
        EXPECT_NE(all(), before);
        put_back(db, image);
        EXPECT_EQ(all(), before);
    }
}

} // namespace
} // namespace host::db

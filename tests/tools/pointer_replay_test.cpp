// Sessions of chance, with steps that leave chains without length, stubs and doubled vertices among them: after
// every answer the tool's arrow stands and looks as in the replay, and the objects are the same to the last
// bit.
#include "tests/tools/pointer_replay.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <random>
#include <sstream>

#include "hostapi/ads.h"
#include "tests/tools/pointer_session.h"

// Every vector that the tool draws.
static std::vector<double> vectors;
extern "C" int __real_acedGrDraw(const ads_point from, const ads_point to, int color, int highlight);
extern "C" int __wrap_acedGrDraw(const ads_point from, const ads_point to, int color, int highlight)
{
    vectors.insert(vectors.end(), {from[0], from[1], from[2], to[0], to[1], to[2]});
    return __real_acedGrDraw(from, to, color, highlight);
}

namespace
{

using chance = std::mt19937;
using answer_lines = std::vector<std::string>;

template <typename T, std::size_t N>
const T& any_of(chance& dice, const T (&all)[N])
{
    return all[dice() % N];
}

// ---- the drawing ---------------------------------------------------------------------------------

// Objects 0 to 2 of each session: to align to and to extend to.
const replay_object TARGETS[] = {
    {"LINE", {{130, 90}, {160, 131}}},
    {"LW", {{170, 80}, {190, 95}, {185, 140}}, true},
    {"LW", {{-900, -800}, {1000, -850}, {1100, 900}, {-950, 1000}}, true},
};

const replay_object SHAPES[] = {
    {"LINE", {{100, 100}, {110, 100}}},
    {"LINE", {{0, 0, 3}, {3, 4, 5.5}}},
    {"LW", {{0, 0}, {10, 0}}},
    {"LW", {{100, 100}, {107, 103, 0, 0.5}, {112, 96}, {118, 101}}},
    {"LW", {{0, 0}, {10, 0}, {10, 10}, {0, 10}}, true},
    {"LW", {{5, 5}, {10, 0, 0, 1}, {10, 10, 0, -0.25}}, true},
    {"LW", {{100, 100}, {110, 100}, {110, 100.0015}}},
    {"LW", {{110, 100.0015}, {110, 100}, {100, 100}, {90, 80}}},
    {"LW", {{1, 1}, {1, 1}, {11, 1}}},
    {"LW", {{1, 1}, {11, 1}, {11, 7}, {11, 7}}},
    {"P2D", {{0, 0}, {10, 0, 0, 0.5}, {15.25, 8.5}}},
    {"P2D", {{100, 100}, {110, 100}, {105, 108}}, true},
    {"P3D", {{0, 0, 1}, {10, 0, 2}, {10, 10, 4}}},
    {"P3D", {{100, 100, 1}, {110, 100, 2}, {110, 110, 4}, {110, 110, 9}}, true},
};

std::string number_text(double value)
{
    char text[64];
    std::snprintf(text, sizeof text, "%.17g", value);
    return std::string(text).find_first_of(".e") == std::string::npos ? std::string(text) + ".0" : text;
}

std::string lisp_of(const replay_object& object)
{
    const bool spatial = object.kind == "LINE" || object.kind == "P3D";
    std::string points;
    for (const replay_place& p : object.places)
        points +=
            "(" + number_text(p.x) + " " + number_text(p.y) + " " + number_text(spatial ? p.z : p.bulge) + ")";
    const std::string flags = object.closed ? "1" : "0";
    if (object.kind == "LINE")
        return "(apply 'line (append '(" + points + ") '(nil)))";
    if (object.kind == "LW")
        return "(lw " + flags + " '(" + points + ") nil)";
    if (object.kind == "P2D")
        return "(p2d " + flags + " '(" + points + ") 0.0 0.0 0.0)";
    return "(p3d " + flags + " '(" + points + "))";
}

// The objects of the drawing as they are stored.
std::vector<replay_object> stored_objects()
{
    std::vector<replay_object> all;
    ads_name name;
    for (int status = acdbEntNext(nullptr, name); status == RTNORM; status = acdbEntNext(name, name)) {
        resbuf* list = acdbEntGet(name);
        std::string type;
        bool spatial = false;
        for (const resbuf* at = list; at; at = at->rbnext) {
            const auto& value = at->resval;
            if (at->restype == 0) {
                type = value.rstring;
                if (type == "VERTEX")
                    all.back().places.emplace_back();
                else if (type != "SEQEND")
                    all.push_back({type == "LWPOLYLINE" ? "LW" : type, {}, false});
            }
            const bool corner = type == "LINE" ? at->restype == 10 || at->restype == 11
                                               : type == "LWPOLYLINE" && at->restype == 10;
            spatial = type == "LINE" || (!all.empty() && all.back().kind == "P3D");
            if (corner)
                all.back().places.emplace_back();
            if (corner || (type == "VERTEX" && at->restype == 10)) {
                replay_place& p = all.back().places.back();
                p = {value.rpoint[0], value.rpoint[1], spatial ? value.rpoint[2] : 0.0, 0.0};
            }
            if (at->restype == 42 && (type == "VERTEX" || type == "LWPOLYLINE"))
                all.back().places.back().bulge = value.rreal;
            if (at->restype == 70 && type != "VERTEX") {
                all.back().closed = (value.rint & 1) != 0;
                if (type == "POLYLINE")
                    all.back().kind = value.rint & 8 ? "P3D" : "P2D";
            }
        }
        acutRelRb(list);
    }
    return all;
}

std::string text_of(const std::vector<replay_object>& objects)
{
    std::string text;
    for (const replay_object& object : objects) {
        text += object.kind + (object.closed ? " closed" : "");
        for (const replay_place& p : object.places) {
            text += " " + number_text(p.x) + "," + number_text(p.y);
            text += "," + number_text(p.z) + (p.bulge != 0.0 ? "b" + number_text(p.bulge) : "");
        }
        text += "\n";
    }
    return text;
}

// ---- the answers ---------------------------------------------------------------------------------

std::string any_number(chance& dice)
{
    static const std::string NUMBERS[] = {"5",  "10", "2.5", "-4",   "0",     "-10",    "7.",  ".5",     "+3",
                                          "15", "-5", "100", "-2.5", "0.001", "-0.001", "3.3", "-17.125"};
    return any_of(dice, NUMBERS);
}

std::string any_angle(chance& dice)
{
    static const std::string ANGLES[] = {"30",       "90", "-12.3456", "180", "45.3", ".0030",
                                         "359.5959", "0",  "60",       "270", "450",  "+15.59599999"};
    return any_of(dice, ANGLES);
}

std::string any_bearing(chance& dice)
{
    static const std::string BEARINGS[] = {"1", "2", "3", "4", "5", "6", "7", "8", "9", "0", "X", "a"};
    return dice() % 8 ? any_of(dice, BEARINGS) + any_angle(dice) : any_of(dice, BEARINGS);
}

std::string any_target(chance& dice)
{
    static const std::string PICKS[] = {"0 132 93",  "0 158.5 128", "0 145 110.5", "1 171 81",  "1 189.5 100",
                                        "1 186 138", "1 300 20",    "2 900 -850",  "2 1090 800"};
    return any_of(dice, PICKS);
}

answer_lines any_answer(chance& dice)
{
    static const std::string OTHERS[] = {"R", "L", "S", "N", "P", "M", "D", "C", "O", "X",
                                         "r", "l", "s", "n", "p", "d", "D", "c", "o", "?"};
    switch (dice() % 14) {
    case 0:
    case 1:
    case 2:
        return {"U"};
    case 3:
    case 4:
    case 5:
        return {any_number(dice)};
    case 6:
        return {(dice() % 2 ? "R" : "l") + any_number(dice)};
    case 7:
        return {"T" + any_number(dice)};
    case 8:
        return {"A" + any_angle(dice)};
    case 9:
        return {"b" + any_bearing(dice)};
    case 10:
        switch (dice() % 6) {
        case 0:
            return {"B", dice() % 4 ? any_bearing(dice) : ""};
        case 1:
            return {"T", dice() % 4 ? any_number(dice) : ""};
        case 2:
            return {"A", dice() % 4 ? any_target(dice) : ""};
        case 3:
            return {"E", "2 900 -850"};
        case 4:
            return {"H", ""};
        default:
            return {std::to_string(dice() % 200) + "," + std::to_string(dice() % 200)};
        }
    default:
        return {any_of(dice, OTHERS)};
    }
}

answer_lines any_end(chance& dice)
{
    static const answer_lines ENDS[] = {{""}, {"^C"}, {"T", "^C"}, {"E", ""}, {"E", "1 171 81"}};
    return any_of(dice, ENDS);
}

// As the tool is given it: a pick as a list of the object and the point.
std::string typed(const std::string& line)
{
    std::istringstream words(line);
    std::string object, x, y;
    if (!(words >> object >> x >> y))
        return line;
    return "(list (nth " + object + " targets) (list (atof \"" + x + "\") (atof \"" + y + "\")))";
}

// What the tool told beside its prompts and its help; the total's prompt counts, for its number.
std::vector<std::string> told_lines(const std::string& printed)
{
    std::vector<std::string> told;
    std::istringstream lines(printed);
    for (std::string line; std::getline(lines, line);)
        for (const char* start :
             {"Unable", "Error", "New ", "Draw mode", "Move mode", "Nothing", "Enter the total"})
            if (line.starts_with(start))
                told.push_back(line);
    return told;
}

struct chance_session {
    std::vector<replay_object> drawing{std::begin(TARGETS), std::end(TARGETS)};
    std::string pick, answers;
    std::vector<answer_lines> lines;
};

chance_session any_session(unsigned seed)
{
    chance dice(seed);
    chance_session session;
    const replay_object& shape = any_of(dice, SHAPES);
    session.drawing.push_back(shape);
    const std::size_t count = shape.places.size();
    std::size_t i = 0;
    do
        i = dice() % (shape.closed ? count : count - 1);
    while (shape.places[i].x == shape.places[(i + 1) % count].x &&
           shape.places[i].y == shape.places[(i + 1) % count].y);
    const replay_place &a = shape.places[i], &b = shape.places[(i + 1) % count];
    static const double PARTS[] = {0.125, 0.25, 0.5, 0.75, 0.875};
    const double part = any_of(dice, PARTS);
    session.pick = number_text(a.x + part * (b.x - a.x)) + "," + number_text(a.y + part * (b.y - a.y));
    session.answers = "#last " + session.pick;
    for (std::size_t length = 1 + dice() % 20; length > 0; --length)
        session.lines.push_back(any_answer(dice));
    session.lines.push_back(any_end(dice));
    session.lines.push_back({"^C"}); // behind an edge that was found after all
    return session;
}

pointer_replay replayed(chance_session& session)
{
    double x = 0, y = 0;
    EXPECT_EQ(std::sscanf(session.pick.c_str(), "%lf,%lf", &x, &y), 2);
    pointer_replay replay(session.drawing, x, y, VIEW_HEIGHT / 19.0);
    bool runs = true;
    for (std::size_t i = 0; runs; ++i) {
        for (const std::string& line : session.lines[i])
            session.answers += "|" + typed(line);
        runs = replay.answer(session.lines[i]);
    }
    return replay;
}

// Drawn and wiped at each prompt: three sides twice.
void expect_arrows(const std::vector<double>& corners)
{
    ASSERT_EQ(vectors.size(), corners.size() * 4);
    for (std::size_t prompt = 0; prompt * 9 < corners.size(); ++prompt)
        for (std::size_t side = 0; side < 6; ++side)
            for (std::size_t i = 0; i < 3; ++i) {
                const double* drawn = &vectors[(prompt * 6 + side) * 6];
                const double* corner = &corners[prompt * 9];
                ASSERT_EQ(drawn[i], corner[side % 3 * 3 + i]) << "arrow " << prompt << " side " << side;
                ASSERT_EQ(drawn[3 + i], corner[(side + 1) % 3 * 3 + i])
                    << "arrow " << prompt << " side " << side;
            }
}

TEST(PointerReplay, SessionsOfChanceComeOutTheSameToTheLastBit)
{
    constexpr unsigned SESSIONS = 1500;
    std::string drawing = "(setq targets nil)";
    for (const replay_object& target : TARGETS)
        drawing += lisp_of(target) + "(setq targets (append targets (list (entlast))))";
    int events[REPLAY_EVENTS] = {};
    for (unsigned seed = 1; seed <= SESSIONS; ++seed) {
        chance_session session = any_session(seed);
        const pointer_replay replay = replayed(session);
        SCOPED_TRACE("seed " + std::to_string(seed) + ": " + session.answers);
        pointer_session tool(drawing + lisp_of(session.drawing.back()));
        vectors.clear();
        const std::string printed = tool.run(session.answers);
        ASSERT_EQ(told_lines(printed), replay.told()) << printed;
        ASSERT_NO_FATAL_FAILURE(expect_arrows(replay.arrows()));
        ASSERT_EQ(text_of(stored_objects()), text_of(replay.objects()));
        for (int event = 0; event < REPLAY_EVENTS; ++event)
            events[event] += replay.count(event);
    }
    for (int event = 0; event < REPLAY_EVENTS; ++event)
        EXPECT_GE(events[event], 50) << event;
}

} // namespace

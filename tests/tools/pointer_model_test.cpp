// Sessions of chance: the tool leaves what the same session on paper leaves.
#include <gtest/gtest.h>

#include <random>

#include "tests/tools/pointer_model.h"
#include "tests/tools/pointer_session.h"

namespace
{

using chance = std::mt19937;

std::size_t below(chance& dice, std::size_t count)
{
    return dice() % count;
}

struct start_shape {
    const char* drawing;
    model_object object;
};

const std::vector<start_shape>& shapes()
{
    static const std::vector<start_shape> ALL = {
        {"(line '(100 100 0) '(110 100 0) nil)", {"LINE", {{100, 100}, {110, 100}}}},
        {"(line '(100 100 3) '(103 104 5) nil)", {"LINE", {{100, 100, 3}, {103, 104, 5}}}},
        {"(lw 0 '((100 100) (110 100)) nil)", {"LW", {{100, 100}, {110, 100}}}},
        {"(lw 0 '((100 100) (110 100) (110 110) (120 110)) nil)",
         {"LW", {{100, 100}, {110, 100}, {110, 110}, {120, 110}}}},
        {"(lw 0 '((100 100) (107 103 0.5) (112 96) (118 101)) nil)",
         {"LW", {{100, 100}, {107, 103, 0, 0.5}, {112, 96}, {118, 101}}}},
        {"(lw 1 '((100 100) (110 100) (110 110) (100 110)) nil)",
         {"LW", {{100, 100}, {110, 100}, {110, 110}, {100, 110}}, true}},
        {"(p2d 0 '((100 100) (110 100) (115 108)) 0.0 0.0 0.0)", {"P2D", {{100, 100}, {110, 100}, {115, 108}}}},
        {"(p2d 1 '((100 100) (110 100) (105 108)) 0.0 0.0 0.0)",
         {"P2D", {{100, 100}, {110, 100}, {105, 108}}, true}},
        {"(p3d 0 '((100 100 1) (110 100 2) (110 110 4)))",
         {"P3D", {{100, 100, 1}, {110, 100, 2}, {110, 110, 4}}}},
        {"(p3d 1 '((100 100 1) (110 100 2) (110 110 4)))",
         {"P3D", {{100, 100, 1}, {110, 100, 2}, {110, 110, 4}}, true}},
        {"(lw 0 '((100 100) (110 100) (110 100.0015)) nil)", {"LW", {{100, 100}, {110, 100}, {110, 100.0015}}}},
    };
    return ALL;
}

// What is there besides: a line to align to and a closed boundary around everything.
const std::vector<model_object>& surroundings()
{
    static const std::vector<model_object> ALL = {
        {"LINE", {{130, 90}, {160, 130}}},
        {"LW", {{-900, -800}, {1000, -850}, {1100, 900}, {-950, 1000}}, true},
    };
    return ALL;
}
constexpr const char* SURROUNDINGS =
    "(line '(130 90 0) '(160 130 0) nil)(setq target (entlast) at_start '(132.0 92.0) at_end '(158.0 128.0))"
    "(lw 1 '((-900 -800) (1000 -850) (1100 900) (-950 1000)) nil)(setq edge (entlast))";

// One answer at the tool's prompt with those behind it. Keys that other keys undo come often.
std::vector<std::string> any_command(chance& dice)
{
    static const std::vector<std::vector<std::string>> COMMANDS = {
        {"5"},
        {"10"},
        {"2.5"},
        {"-4"},
        {"0"},
        {".5"},
        {"+3"},
        {"-10"},
        {"7."},
        {"R"},
        {"L"},
        {"r5"},
        {"L10"},
        {"R-2"},
        {"l2.5"},
        {"S"},
        {"N"},
        {"P"},
        {"n"},
        {"p"},
        {"M"},
        {"D"},
        {"C"},
        {"O"},
        {"T15"},
        {"t6"},
        {"T", ""},
        {"T", "12"},
        {"A30"},
        {"a-12.3456"},
        {"A90"},
        {"A", ""},
        {"B130.1005"},
        {"b215"},
        {"B3201.5959"},
        {"B", "445"},
        {"B", ""},
        {"B8100"},
        {"B760"},
        {"BX12"},
        {"B1"},
        {"X"},
        {"H", ""},
        {"U"},
        {"u"},
        {"E", "!edge"},
        {"A", "(list target at_start)"},
        {"A", "(list target at_end)"},
        {"B690.3"},
        {"B50"},
        {"B9179.5959"},
        {"s"},
    };
    if (below(dice, 4) == 0)
        return {"U"};
    return COMMANDS[below(dice, COMMANDS.size())];
}

std::vector<std::string> any_end(chance& dice)
{
    static const std::vector<std::vector<std::string>> ENDS = {
        {""}, {"^C"}, {"T", "^C"}, {"E", ""}, {"E", "^C"}};
    return ENDS[below(dice, ENDS.size())];
}

struct session_on_paper {
    std::string drawing, answers, objects, messages;
    bool unclear = false;
};

session_on_paper any_session(unsigned seed)
{
    chance dice(seed);
    const start_shape& shape = shapes()[below(dice, shapes().size())];
    std::vector<model_place> places = shape.object.places;
    if (shape.object.closed)
        places.push_back(places.front());
    const std::size_t segment = below(dice, places.size() - 1);
    const double part = below(dice, 2) ? 0.875 : 0.125;
    const model_place &a = places[segment], &b = places[segment + 1];
    session_on_paper session;
    session.drawing = std::string(SURROUNDINGS) + shape.drawing;
    session.answers =
        "#last " + std::to_string(a.x + part * (b.x - a.x)) + "," + std::to_string(a.y + part * (b.y - a.y));
    pointer_model model(shape.object, segment, part, surroundings());
    const std::size_t length = 1 + below(dice, 12);
    bool runs = true;
    for (std::size_t i = 0; runs && i <= length; ++i) {
        const std::vector<std::string> lines = i < length ? any_command(dice) : any_end(dice);
        for (const std::string& line : lines)
            session.answers += "|" + line;
        runs = model.answer(lines);
        session.unclear = session.unclear || model.unclear();
    }
    session.objects = model.objects();
    session.messages = model.messages();
    return session;
}

// The help text isn't what is looked at here.
std::string without_help(const std::string& messages)
{
    std::string text;
    std::size_t from = 0;
    while (from <= messages.size()) {
        const std::size_t end = std::min(messages.find('|', from), messages.size());
        const std::string line = messages.substr(from, end - from);
        const bool told = line.starts_with("Unable") || line.starts_with("Error") || line.starts_with("New ") ||
                          line.ends_with(" mode") || line.starts_with("Nothing");
        if (told)
            text += (text.empty() ? "" : "|") + line;
        from = end + 1;
    }
    return text;
}

TEST(PointerModel, SessionsOfChanceLeaveWhatTheyLeaveOnPaper)
{
    constexpr unsigned SESSIONS = 400;
    unsigned clear = 0;
    for (unsigned seed = 1; seed <= SESSIONS; ++seed) {
        const session_on_paper paper = any_session(seed);
        SCOPED_TRACE("seed " + std::to_string(seed) + ": " + paper.answers);
        pointer_session session(paper.drawing);
        const std::string printed = session.run(paper.answers, paper.unclear);
        const std::string objects = objects_text();
        ASSERT_EQ(objects.find("nan"), std::string::npos) << objects;
        ASSERT_EQ(objects.find("inf"), std::string::npos) << objects;
        if (paper.unclear)
            continue; // it did no harm
        ++clear;
        ASSERT_EQ(objects, paper.objects) << printed;
        ASSERT_EQ(without_help(messages_of(printed)), paper.messages) << printed;
    }
    EXPECT_GT(clear, SESSIONS * 3 / 4);
}

} // namespace

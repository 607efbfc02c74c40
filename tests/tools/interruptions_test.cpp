// The drafting tools left at each of their prompts in turn, and with a heap that gives no more: what they
// took is given back, variables are as they were, and the drawing holds nothing that is broken.
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "host/commandline/screen.h"
#include "host/core/console.h"
#include "host/core/document.h"
#include "host/core/heap.h"
#include "host/core/module.h"
#include "host/core/trace.h"
#include "host/database/entities.h"
#include "host/database/selection_sets.h"
#include "host/database/sysvars.h"
#include "tests/shell/module_session.h"

namespace
{

// Objects in fixed places, so that a point picks each: LINE (0,0)-(10,0); LWPOLYLINE (0,10)-(10,10)-(10,20);
// closed LWPOLYLINE (30,0)-(40,0)-(40,10)-(30,10) whose first side is an arc; 2D POLYLINE (0,-10)-(10,-10)-
// (10,-20); 3D POLYLINE (0,-30)-(10,-30)-(10,-40); ARC about (20,0) from 0 to 90 degrees; a TEXT that no
// tool touches comes last.
const char* const DRAWING = R"((progn (setq do_ini 0)
    (entmake '((0 . "LINE") (10 0.0 0.0 0.0) (11 10.0 0.0 0.0)))
    (entmake '((0 . "LWPOLYLINE") (100 . "AcDbEntity") (8 . "KERB") (48 . 2.0) (100 . "AcDbPolyline") (90 . 3) (70 . 0)
               (10 0.0 10.0) (10 10.0 10.0) (10 10.0 20.0)))
    (entmake '((0 . "LWPOLYLINE") (100 . "AcDbEntity") (8 . "0") (100 . "AcDbPolyline") (90 . 4) (70 . 1)
               (10 30.0 0.0) (42 . 0.5) (10 40.0 0.0) (10 40.0 10.0) (10 30.0 10.0)))
    (entmake '((0 . "POLYLINE") (66 . 1) (70 . 0) (10 0.0 0.0 0.0)))
    (entmake '((0 . "VERTEX") (10 0.0 -10.0 0.0))) (entmake '((0 . "VERTEX") (10 10.0 -10.0 0.0)))
    (entmake '((0 . "VERTEX") (10 10.0 -20.0 0.0))) (entmake '((0 . "SEQEND")))
    (entmake '((0 . "POLYLINE") (66 . 1) (70 . 8) (10 0.0 0.0 0.0)))
    (entmake '((0 . "VERTEX") (70 . 32) (10 0.0 -30.0 1.0))) (entmake '((0 . "VERTEX") (70 . 32) (10 10.0 -30.0 2.0)))
    (entmake '((0 . "VERTEX") (70 . 32) (10 10.0 -40.0 3.0))) (entmake '((0 . "SEQEND")))
    (entmake '((0 . "ARC") (10 20.0 0.0 0.0) (40 . 5.0) (50 . 0.0) (51 . 1.5707963267948966)))
    (entmake '((0 . "TEXT") (10 -50.0 -50.0 0.0) (40 . 1.0) (1 . "label")))
    (setq untouched (entlast) shape (entget untouched))
    (setvar "OSMODE" 39) (setvar "ANGDIR" 1) (setvar "ANGBASE" 0.5) (setvar "DIMASZ" 0.75) (setvar "HIGHLIGHT" 1)))";

struct interrupted_case {
    const char* name;
    const char* call;    // what stands behind the directory
    const char* answers; // '|' behind each
    // A DIMASZ that was chosen and stays when the tool ends with "Function cancelled."; null: none.
    const char* size_kept = nullptr;
};

std::ostream& operator<<(std::ostream& out, const interrupted_case& c)
{
    return out << c.name;
}

const interrupted_case CASES[] = {
    {"LevelViewWithLine", "0", "7,0|"},
    {"LevelViewWithPolyline", "0", "10,18|"},
    {"LevelViewWithOldPolyline", "0", "10,-18|"},
    {"PointerOnLine", "1", "9,0|5|U|R3|C|O|L|U|T|20|A|10,18|2|B|130.1005|1|T|-4|S|N|P|u||"},
    {"PointerOnPolyline", "1", "10,19|5|R5|C|3|O|E|7,0||"},
    {"PointerToEdge", "1", "9,0|E|40,5|2|E|40,5|H||M|3|D|2|A45.3030|B945.0|4||"},
    {"PointerOnClosedPolyline", "1", "40,8|2|U|N|N|R4|M|5|@3,4|D|6|H||B|1|T||A|20,5|A||7||"},
    {"PointerOnOldPolyline", "1", "10,-19|5|L5|U|P|3|C|O||"},
    {"PointerOnOldPolylineInSpace", "1", "10,-39|5|L5|U|S|3|C|2|O||"},
    {"ExtendArc", "2", "25,0|No|2|-1|U|T10|3|U|U|U|20,9||"},
    {"ExtendArcAndBreak", "2", "20,5|Yes|2|-1|U|100||"},
    {"SymbolsToTrimAt", "3", "all||"},
    {"Leader", "4", "No|Yes|0.5|0,50|20,50|10,55|15,45|U|U|U|15,52||Yes|0,60|20,60||No|", "0.5"},
    {"LeaderWithoutArrow", "4", "No|No|0,50|20,50|10,55||No|"},
    {"Zorro", "4", "Yes|0.5|0,50|20,50||0,60|20,60|No|", "0.5"},
    {"WordsAlongArc", "6 2.0", "MAIN STREET|1.5|0.5|Inside|Yes|25,0|NORTH|20,5||"},
    {"WordsAlongPolyline", "6 2.0", "A B|||Outside|No|35,-2.5||"},
    {"ArrowToSide", "5 1.0 2.0 (list 0.0 50.0 0.0) (list 20.0 50.0 0.0) 25.0 0 \"ARROWS\" nil", ""},
    {"ArrowToSideInParts", "5 1.0 2.0 (list 0.0 50.0 0.0) (list 20.0 50.0 0.0) 25.0 1 \"\" nil", ""},
    {"ArrowToSideOnMendedLayer", "5 -1.0 2.0 (list 0.0 50.0 0.0) (list 20.0 50.0 0.0) 25.0 2 \"a<b\" nil",
     "newnam=GOOD|!ok|"},
    {"ArrowPair", "9 1.0 2.0 (list 0.0 50.0 0.0) (list 20.0 50.0 0.0) 5.0", ""},
    {"EndsOfASegment", "10 (entnext (entnext)) (list 9.0 11.0 0.0)", ""},
    {"DirectionOfASegment", "11 (entnext (entnext)) (list 9.0 11.0 0.0)", ""},
    {"TextsAlongAPolyline", "12 (entnext (entnext)) (ssget \"X\" '((0 . \"ARC,LINE\"))) 0.0", ""},
    {"Drag", "16 (ssadd (entnext)) (list 0.0 0.0 0.0) \"\\nDrop: \"", "5,5|"},
    {"VerticesOfAPolyline", "23 (entnext (entnext)) 1", ""},
    {"HolesAndChannels", "28", "all||"},
    {"SecondPoint", "29 (ssadd (entnext)) (list 0.0 0.0 0.0)", "5,5|"},
    {"ArrowsOnObjects", "30", "0.5|9,0|10,19|10,-19|-50,-50|10,-39||"},
};

std::vector<std::string> lines_of(const std::string& answers)
{
    std::vector<std::string> lines(1);
    for (const char c : answers) {
        if (c == '|')
            lines.emplace_back();
        else
            lines.back() += c;
    }
    lines.pop_back();
    return lines;
}

std::string text_of(const std::vector<std::string>& lines, std::size_t count)
{
    std::string text;
    for (std::size_t i = 0; i < count; ++i)
        text += lines[i] + "\n";
    return text;
}

struct state {
    std::size_t blocks, bytes, views, sets;
    std::map<std::string, std::string> variables;
};

std::string variable(const char* name)
{
    const host::list_ptr value = host::db::get_variable(host::current_document(), name);
    return value ? host::printed_value(*value) : "none";
}

state state_now()
{
    state now{host::heap_live_blocks(), host::heap_live_bytes(), host::live_views(), host::db::live_sets(), {}};
    for (const char* name : {"ANGBASE", "ANGDIR", "OSMODE", "HIGHLIGHT", "CMDECHO", "DIMSCALE", "DIMASZ"})
        now.variables[name] = variable(name);
    return now;
}

void expect_whole_objects()
{
    const host::db::database& data = host::db::current_database();
    for (host::db::object_id id = 1; id < data.size(); ++id) {
        if (data.at(id).family != host::db::object_class::entity || host::db::is_erased(data, id))
            continue;
        std::string error;
        host::db::group_list groups = data.at(id).groups;
        EXPECT_TRUE(host::db::complete_entity(data, groups, &error)) << data.type_of(id) << ": " << error;
        EXPECT_EQ(groups.size(), data.at(id).groups.size()) << data.type_of(id);
        if (data.is(id, "POLYLINE")) {
            EXPECT_TRUE(data.is(data.at(id).last, "SEQEND"));
            EXPECT_NE(host::db::first_child(data, id), 0u);
        }
    }
}

class InterruptedTools : public testing::TestWithParam<interrupted_case>
{
protected:
    struct outcome {
        std::string told;
        bool took_all_answers; // and asked for no more
        bool is_refused;       // the request for memory that was to be refused has come
    };
    // One call in a drawing of its own.
    static outcome run(const std::string& answers, long refused_request = 0)
    {
        module_session session;
        session.lisp(DRAWING);
        session.lisp("(setq lspdir$ \"" ZENT_SOURCE_DIR "/share/dialogs/\")");
        session.printed();
        state before = state_now();
        host::answers_from_text(answers);
        host::heap_refuse(refused_request);
        session.lisp("(cf:zentutil \"\" " + std::string(GetParam().call) + ")");
        const bool is_refused = refused_request && host::heap_refuse(0) == 0;
        const std::string told = session.printed();
        const bool was_told = told.find("Function cancelled.") != std::string::npos;
        if (const char* size = GetParam().size_kept;
            size && was_told && answers.find(size + std::string("\n")) != std::string::npos)
            before.variables["DIMASZ"] = size;
        const state after = state_now();
        EXPECT_EQ(after.blocks, before.blocks);
        EXPECT_EQ(after.bytes, before.bytes);
        EXPECT_EQ(after.views, before.views);
        // What operations 5 and 9 answer may live as long as AutoLISP holds it.
        EXPECT_LE(after.sets - before.sets, is_value_a_set() ? 1u : 0u);
        EXPECT_EQ(after.variables, before.variables);
        EXPECT_TRUE(host::commandline::screen_vectors(host::current_document()).empty());
        expect_whole_objects();
        EXPECT_EQ(session.lisp("(equal (entget untouched) shape)"), "T");
        const bool ran_out = host::answers_ended();
        // A next answer would be one too many.
        const bool took_all = !host::next_answer("").has_value();
        return {told, took_all && !ran_out, is_refused};
    }

    static bool is_value_a_set() { return GetParam().call[0] == '5' || GetParam().call[0] == '9'; }
    static void leave_at_each_prompt(const std::string& leaving)
    {
        const std::vector<std::string> lines = lines_of(GetParam().answers);
        for (std::size_t at = 0; at < lines.size(); ++at) {
            SCOPED_TRACE("left at prompt " + std::to_string(at + 1));
            run(text_of(lines, at) + leaving);
        }
    }
};

TEST_P(InterruptedTools, TakesTheseAnswersAndNoMore)
{
    const std::vector<std::string> lines = lines_of(GetParam().answers);
    const outcome whole = run(text_of(lines, lines.size()));
    EXPECT_TRUE(whole.took_all_answers) << whole.told;
}

TEST_P(InterruptedTools, CancelLeavesNothingBehind)
{
    leave_at_each_prompt("^C\n^C\n");
}

TEST_P(InterruptedTools, EnterLeavesNothingBehind)
{
    leave_at_each_prompt("\n");
}

TEST_P(InterruptedTools, EndOfTheAnswersLeavesNothingBehind)
{
    leave_at_each_prompt("");
}

// The answers are there; what the module asks of the heap is refused once, each time a request later. Whatever
// the tool then leaves undone, it leaves nothing behind.
TEST_P(InterruptedTools, AHeapThatGivesNoMoreLeavesNothingBehind)
{
    const std::vector<std::string> lines = lines_of(GetParam().answers);
    const std::string answers = text_of(lines, lines.size());
    bool is_refused = true;
    for (long request = 1; is_refused && !HasFailure(); ++request) {
        SCOPED_TRACE("request " + std::to_string(request) + " refused");
        is_refused = run(answers, request).is_refused;
    }
}

std::string case_name(const testing::TestParamInfo<interrupted_case>& row)
{
    return row.param.name;
}
INSTANTIATE_TEST_SUITE_P(Tools, InterruptedTools, testing::ValuesIn(CASES), case_name);

} // namespace

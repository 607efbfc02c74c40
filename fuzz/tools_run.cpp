// tools_run.cpp: one drawing, one call, and the rules that hold behind it.
#include "fuzz/tools_run.h"

#include <sys/time.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <vector>

#include "host/commandline/screen.h"
#include "host/core/console.h"
#include "host/core/document.h"
#include "host/core/heap.h"
#include "host/core/module.h"
#include "host/core/session.h"
#include "host/core/trace.h"
#include "host/database/entities.h"
#include "host/database/selection_sets.h"
#include "host/database/sysvars.h"
#include "host/lisp/api.h"
#include "hostapi/editor.h"

using namespace host;

namespace
{

constexpr int LONGEST_RUN = 30; // seconds of processor time
constexpr std::size_t MOST_OBJECTS_AN_ANSWER = 1000;

tool_input running;

} // namespace

void print_tool_input()
{
    std::fprintf(stderr, "operation %d, break after %ld, request %ld refused\n%s\n%s\nanswers:\n%s",
                 running.operation, running.break_after, running.refused_request, running.settings.c_str(),
                 running.call.c_str(), running.answers.c_str());
}

namespace
{

void expect(bool holds, const std::string& what)
{
    if (holds)
        return;
    std::fprintf(stderr, "tools_fuzz: %s\n", what.c_str());
    print_tool_input();
    std::abort();
}

// A run that doesn't end is a fault as others are.
void watch(int seconds)
{
    std::signal(SIGVTALRM, [](int) {
        const char text[] = "tools_fuzz: the run doesn't end\n";
        [[maybe_unused]] const auto written = write(STDERR_FILENO, text, sizeof text - 1);
        print_tool_input();
        std::abort();
    });
    const itimerval timer{{0, 0}, {seconds, 0}};
    setitimer(ITIMER_VIRTUAL, &timer, nullptr);
}

const char* const OBJECTS = "(setq lspdir$ \"" ZENT_DIALOGS "\")"
                            R"LISP(
(entmake '((0 . "LAYER") (100 . "AcDbSymbolTableRecord") (100 . "AcDbLayerTableRecord") (2 . "OFF") (70 . 0) (62 . -3) (6 . "Continuous")))
(entmake '((0 . "LAYER") (100 . "AcDbSymbolTableRecord") (100 . "AcDbLayerTableRecord") (2 . "FROZEN") (70 . 1) (62 . 3) (6 . "Continuous")))
(entmake '((0 . "LAYER") (100 . "AcDbSymbolTableRecord") (100 . "AcDbLayerTableRecord") (2 . "LOCKED") (70 . 4) (62 . 3) (6 . "Continuous")))
(entmake '((0 . "BLOCK") (2 . "MARK") (70 . 0) (10 0.0 0.0 0.0)))
(entmake '((0 . "LINE") (10 0.0 0.0 0.0) (11 1.0 1.0 0.0)))
(entmake '((0 . "ENDBLK")))
(entmake '((0 . "LINE") (10 0.0 0.0 0.0) (11 10.0 0.0 0.0)))
(entmake '((0 . "LINE") (10 5.0 5.0 0.0) (11 5.0 5.0 0.0)))
(entmake '((0 . "LINE") (62 . 1) (48 . 2.0) (10 -5.0 -5.0 1.0) (11 -2.0 -1.0 6.0)))
(entmake '((0 . "LINE") (10 1e300 0.0 0.0) (11 -1e300 0.0 0.0)))
(entmake '((0 . "ARC") (10 20.0 0.0 0.0) (40 . 5.0) (50 . 0.0) (51 . 1.5707963267948966)))
(entmake '((0 . "ARC") (10 30.0 0.0 3.0) (40 . 1e-12) (50 . 1.0) (51 . 4.0)))
(entmake '((0 . "ARC") (8 . "LOCKED") (10 0.0 0.0 0.0) (40 . 1e12) (50 . 6.0) (51 . 0.5)))
(entmake '((0 . "LWPOLYLINE") (100 . "AcDbEntity") (8 . "0") (48 . 0.5) (100 . "AcDbPolyline") (90 . 3) (70 . 0)
  (10 0.0 10.0) (10 10.0 10.0) (10 10.0 20.0)))
(entmake '((0 . "LWPOLYLINE") (100 . "AcDbEntity") (8 . "KERB") (100 . "AcDbPolyline") (90 . 4) (70 . 129) (38 . 2.5) (39 . 1.0)
  (10 40.0 0.0) (40 . 0.5) (41 . 0.5) (42 . 0.5) (10 50.0 0.0) (42 . -1.0) (10 50.0 10.0) (42 . 0.0) (10 40.0 10.0) (42 . 25.0)))
(entmake '((0 . "LWPOLYLINE") (100 . "AcDbEntity") (8 . "0") (100 . "AcDbPolyline") (90 . 5) (70 . 1)
  (10 0.0 30.0) (10 0.0 30.0) (10 5.0 30.0) (42 . 1.0) (10 5.0 30.0) (10 0.0 30.0)))
(entmake '((0 . "LWPOLYLINE") (100 . "AcDbEntity") (8 . "0") (100 . "AcDbPolyline") (90 . 2) (70 . 0)
  (10 7.0 7.0) (42 . 1e-300) (10 7.0 7.0)))
(entmake '((0 . "LWPOLYLINE") (100 . "AcDbEntity") (8 . "0") (100 . "AcDbPolyline") (90 . 1) (70 . 1) (10 9.0 9.0)))
(entmake '((0 . "LWPOLYLINE") (100 . "AcDbEntity") (8 . "0") (100 . "AcDbPolyline") (90 . 3) (70 . 0)
  (10 640000.0 5120000.0) (42 . 0.41421356237309503) (10 640010.0 5120000.0) (10 640010.0 5120010.0)))
(entmake '((0 . "POLYLINE") (66 . 1) (70 . 1) (10 0.0 0.0 4.0) (40 . 0.25) (41 . 0.25)))
(entmake '((0 . "VERTEX") (10 -10.0 10.0 4.0) (42 . 0.7)))
(entmake '((0 . "VERTEX") (10 -20.0 10.0 4.0)))
(entmake '((0 . "VERTEX") (10 -20.0 20.0 4.0) (42 . -0.2)))
(entmake '((0 . "SEQEND")))
(entmake '((0 . "POLYLINE") (66 . 1) (70 . 8) (10 0.0 0.0 0.0)))
(entmake '((0 . "VERTEX") (70 . 32) (10 -10.0 -10.0 0.0)))
(entmake '((0 . "VERTEX") (70 . 32) (10 -20.0 -10.0 5.0)))
(entmake '((0 . "VERTEX") (70 . 32) (10 -20.0 -10.0 9.0)))
(entmake '((0 . "VERTEX") (70 . 32) (10 -30.0 -15.0 1e6)))
(entmake '((0 . "SEQEND")))
(entmake '((0 . "POLYLINE") (66 . 1) (70 . 4) (75 . 6) (10 0.0 0.0 0.0)))
(entmake '((0 . "VERTEX") (70 . 16) (10 0.0 40.0 0.0)))
(entmake '((0 . "VERTEX") (70 . 16) (10 10.0 50.0 0.0)))
(entmake '((0 . "VERTEX") (70 . 8) (10 0.0 40.0 0.0)))
(entmake '((0 . "VERTEX") (70 . 8) (10 10.0 50.0 0.0)))
(entmake '((0 . "SEQEND")))
(entmake '((0 . "CIRCLE") (10 60.0 0.0 0.0) (40 . 3.0)))
(entmake '((0 . "POINT") (10 1.0 1.0 0.0)))
(entmake '((0 . "INSERT") (2 . "MARK") (10 15.0 15.0 0.0)))
(entmake '((0 . "TEXT") (10 -1.0 -1.0 0.0) (40 . 1.0) (1 . "label")))
(entmake '((0 . "SPLINE") (100 . "AcDbEntity") (100 . "AcDbSpline") (70 . 8) (71 . 3) (72 . 0) (73 . 0) (74 . 2) (11 70.0 0.0 0.0) (11 71.0 1.0 0.0)))
)LISP";

std::vector<db::object_id> objects_of(const db::database& data)
{
    std::vector<db::object_id> out;
    for (db::object_id id = db::first_entity(data, data.current_space()); id; id = db::next_entity(data, id))
        out.push_back(id);
    return out;
}

// Children of polylines too: users type handles that they have read somewhere.
std::vector<std::string> handles_of(const db::database& data)
{
    std::vector<std::string> out;
    const auto add = [&](db::object_id id) {
        char text[24];
        std::snprintf(text, sizeof text, "#%llX", static_cast<unsigned long long>(data.at(id).handle));
        out.push_back(text);
    };
    const std::vector<db::object_id> objects = objects_of(data);
    for (const db::object_id id : objects)
        add(id);
    for (const db::object_id id : objects)
        if (const db::object_id child = db::first_child(data, id))
            add(child);
    return out;
}

std::string with_handles(const std::string& answers, const std::vector<std::string>& handles)
{
    std::string out;
    for (std::size_t at = 0; at < answers.size();) {
        if (answers.compare(at, 2, "#%") != 0) {
            out += answers[at++];
            continue;
        }
        const std::size_t end = answers.find('%', at + 2);
        out += handles[static_cast<std::size_t>(std::atoi(answers.c_str() + at + 2))];
        at = end + 1;
    }
    return out;
}

// ---- what must hold -------------------------------------------------------------------------------------

// Kinds that no tool makes or takes: they stay as they are.
bool is_bystander(std::string_view type)
{
    return type == "INSERT" || type == "TEXT" || type == "SPLINE" || type == "CIRCLE" || type == "POINT";
}

// Groups as text, by which two states of an object are compared.
std::string dump_of(const db::database& data, db::object_id id)
{
    std::string out;
    for (const db::group& g : data.at(id).groups) {
        char text[120] = "";
        if (g.kind == db::group_kind::real)
            std::snprintf(text, sizeof text, "%.17g", g.real);
        else if (g.kind == db::group_kind::point)
            std::snprintf(text, sizeof text, "%.17g,%.17g,%.17g", g.point[0], g.point[1],
                          g.dimensions == 3 ? g.point[2] : 0.0);
        else if (g.kind != db::group_kind::text && g.kind != db::group_kind::binary)
            std::snprintf(text, sizeof text, "%lld", static_cast<long long>(g.integer));
        out += std::to_string(g.code) + " " + text + std::string(data.text(g.text)) + "\n";
    }
    return out;
}

std::map<db::object_id, std::string> bystanders_of(const db::database& data)
{
    std::map<db::object_id, std::string> out;
    for (const db::object_id id : objects_of(data))
        if (is_bystander(data.type_of(id)))
            out[id] = dump_of(data, id);
    return out;
}

void check_object(const db::database& data, db::object_id id)
{
    const db::group_list& groups = data.at(id).groups;
    const std::string type(data.type_of(id)), what = type + ":\n" + dump_of(data, id);
    std::string error;
    expect(db::check_numbers(groups, &error), error + ", " + what);
    db::group_list again = groups;
    expect(db::complete_entity(data, again, &error), error + ", " + what);
    expect(again.size() == groups.size(), "an object isn't whole: " + what);
    if (type == "LWPOLYLINE") {
        std::int64_t vertices = 0;
        for (const db::group& g : groups)
            vertices += g.code == 10;
        expect(vertices > 0 && vertices == db::int_of(groups, 90, -1), "vertices are missing, " + what);
    }
    if (type == "POLYLINE") {
        expect(db::first_child(data, id) != 0, "a polyline without a vertex, " + what);
        expect(data.is(data.at(id).last, "SEQEND"), "a polyline without an end, " + what);
    }
    if (type == "ARC" || type == "CIRCLE")
        expect(db::real_of(groups, 40, 0.0) > 0.0, "a radius that is none, " + what);
    if (type == "TEXT")
        expect(db::real_of(groups, 40, 0.0) > 0.0, "a height that is none, " + what);
}

void check_objects(const db::database& data, std::size_t most)
{
    std::size_t count = 0;
    for (db::object_id id = 1; id < data.size(); ++id) {
        if (data.at(id).family != db::object_class::entity || db::is_erased(data, id))
            continue;
        check_object(data, id);
        ++count;
    }
    expect(count <= most, "there are " + std::to_string(count) + " objects");
}

std::string variable_text(document& doc, const char* name)
{
    const list_ptr value = db::get_variable(doc, name);
    return value ? printed_value(*value) : "none";
}

// What each tool gives back at every end of it. DIMASZ: at a normal end alone where the tool is one of those
// that keep the size while a person goes on.
std::map<std::string, std::string> variables_of(document& doc, int operation)
{
    std::map<std::string, std::string> out;
    for (const char* name : {"ANGBASE", "ANGDIR", "OSMODE", "HIGHLIGHT", "CMDECHO", "DIMSCALE", "AUNITS",
                             "LUNITS", "REGENMODE", "TEXTSTYLE", "PICKBOX", "ELEVATION"})
        out[name] = variable_text(doc, name);
    if (operation != 4 && operation != 5)
        out["DIMASZ"] = variable_text(doc, "DIMASZ");
    return out;
}

void check_view(document& doc)
{
    for (const char* name : {"VIEWSIZE", "VIEWTWIST", "DIMASZ", "TEXTSIZE"})
        expect(std::isfinite(db::real_variable(doc, name)), std::string(name) + " is no finite number");
    expect(db::real_variable(doc, "VIEWSIZE") > 0.0, "the view has no size");
    for (const char* name : {"VIEWCTR", "LASTPOINT", "EXTMIN", "EXTMAX"}) {
        const list_ptr value = db::get_variable(doc, name);
        for (int i = 0; value && i < 3; ++i)
            expect(std::isfinite(value->resval.rpoint[i]), std::string(name) + " is no finite point");
    }
}

// Everything up to the call: a new drawing with its objects, and the input with their handles.
document& prepare(std::string_view bytes)
{
    run_settings() = settings();
    run_settings().clock = "20260102.030405";
    run_settings().no_shell = true;
    answers_from_text("");
    document& doc = open_document();
    load_module(acrxEntryPoint, "zentutil");
    expect(lisp::evaluate_text(doc, OBJECTS, "objects").how == lisp::ending::done, "the objects can't be made");
    const std::vector<std::string> handles = handles_of(db::database_of(doc));
    running = tool_input_of(bytes, static_cast<int>(handles.size()));
    running.answers = with_handles(running.answers, handles);
    expect(lisp::evaluate_text(doc, running.settings, "settings").how == lisp::ending::done,
           "the settings can't be made");
    return doc;
}

void call_tool(document& doc)
{
    const db::database& data = db::database_of(doc);
    const std::map<db::object_id, std::string> bystanders = bystanders_of(data);
    const std::map<std::string, std::string> variables = variables_of(doc, running.operation);
    const std::size_t blocks = heap_live_blocks(), bytes = heap_live_bytes(), views = live_views();
    const std::size_t sets = db::live_sets();
    const bool returns_set = running.operation == 5 || running.operation == 9;

    run_settings().break_after = running.break_after;
    answers_from_text(running.answers);
    watch(LONGEST_RUN);
    heap_refuse(running.refused_request);
    const lisp::outcome outcome = lisp::evaluate_text(doc, running.call, "call");
    heap_refuse(0);
    watch(0);
    run_settings().break_after = 0;
    clear_break();

    expect(outcome.how == lisp::ending::done || outcome.how == lisp::ending::stopped,
           "the call ended in an error: " + outcome.message);
    expect(heap_live_blocks() == blocks && heap_live_bytes() == bytes, "something is left on the heap");
    expect(live_views() == views, "an object is left open");
    expect(returns_set || db::live_sets() == sets, "a selection set is left");
    for (const auto& [name, value] : variables)
        expect(variable_text(doc, name.c_str()) == value,
               name + " was " + value + " and is " + variable_text(doc, name.c_str()));
    expect(commandline::screen_vectors(doc).empty(), "vectors are left on the screen");
    for (const auto& [id, dump] : bystanders)
        expect(!db::is_erased(data, id) && dump_of(data, id) == dump, "a bystander was changed:\n" + dump);
    const auto lines =
        static_cast<std::size_t>(std::count(running.answers.begin(), running.answers.end(), '\n'));
    check_objects(data, MOST_OBJECTS_AN_ANSWER * (lines + 1));
    check_view(doc);
}

} // namespace

std::string run_tool(std::string_view bytes)
{
    const std::size_t views = live_views();
    std::string history;
    capture_history(&history);
    document& doc = prepare(bytes);
    history.clear();
    call_tool(doc);
    unload_all_modules();
    close_all_documents();
    capture_history(nullptr);
    expect(live_views() == views && db::live_sets() == 0, "something outlives the drawing");
    return history;
}

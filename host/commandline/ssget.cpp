// ssget.cpp: acedSSGet: the ways of finding a set, by a table of modes.
#include <cstring>

#include "host/commandline/pending_rules.h"
#include "host/commandline/picks.h"
#include "host/commandline/selection.h"
#include "host/core/document.h"
#include "host/core/text.h"
#include "host/core/trace.h"
#include "host/database/selection_sets.h"
#include "host/database/sysvars.h"

namespace host::commandline
{

namespace
{

constexpr int EMPTY_ANSWER = 52; // ERRNO

// The mode taken apart: a word ("X", "WP") and marks behind colons (":S:E:L"). A leading "_" and the
// point mark "+." mean nothing here.
struct mode_parts {
    std::string word;
    selection_rules rules;
    bool known = true;
};

mode_parts parts_of(const char* mode)
{
    mode_parts out;
    std::string_view left = mode ? mode : "";
    if (left.starts_with('_'))
        left.remove_prefix(1);
    while (!left.empty()) {
        if (left.starts_with("+.")) {
            left.remove_prefix(2);
        } else if (left.front() == ':') {
            const std::size_t end = left.find_first_of(":+", 1);
            const std::string mark = upper(left.substr(1, end == std::string_view::npos ? end : end - 1));
            out.rules.single = out.rules.single || mark == "S";
            out.rules.every = out.rules.every || mark == "E";
            out.rules.no_locked = out.rules.no_locked || mark == "L";
            if (mark == "A")             // all, of this space, in one word with its mark
                out.word.assign(1, 'A'); // a text literal draws a false warning of the optimiser
            left.remove_prefix(end == std::string_view::npos ? left.size() : end);
        } else {
            const std::size_t end = left.find_first_of(":+");
            out.word = upper(left.substr(0, end));
            left.remove_prefix(end == std::string_view::npos ? left.size() : end);
        }
    }
    return out;
}

std::vector<point3> points_of(const void* list)
{
    std::vector<point3> points;
    for (const resbuf* node = static_cast<const resbuf*>(list); node; node = node->rbnext)
        if (type_of_code(node->restype) == value_type::point)
            points.push_back(point3{node->resval.rpoint[0], node->resval.rpoint[1],
                                    node->restype == RTPOINT ? 0.0 : node->resval.rpoint[2]});
    return points;
}

struct search {
    document& doc;
    db::database& data;
    const void* first;
    const void* second;
    point3 a() const { return point3::of(static_cast<const double*>(first)); }
    point3 b() const { return point3::of(static_cast<const double*>(second)); }
};

object_list last_alone(const search& s)
{
    const db::object_id id = last_object(s.data);
    return id ? object_list{id} : object_list();
}

struct way {
    const char* word;
    int arguments; // points, or one list of points for 1
    object_list (*find)(const search&);
};

constexpr way WAYS[] = {
    {"X", 0, [](const search& s) { return drawing_objects(s.data); }},
    {"A", 0, [](const search& s) { return all_objects(s.data); }},
    {"ALL", 0, [](const search& s) { return all_objects(s.data); }},
    {"L", 0, last_alone},
    {"P", 0, [](const search& s) { return previous_selection(s.doc); }},
    {"I", 0, [](const search& s) { return db::chosen(s.data); }},
    {"W", 2, [](const search& s) { return objects_in_window(s.doc, s.a(), s.b(), region::inside); }},
    {"C", 2, [](const search& s) { return objects_in_window(s.doc, s.a(), s.b(), region::crossing); }},
    {"WP", 1, [](const search& s) { return objects_in_polygon(s.data, points_of(s.first), region::inside); }},
    {"CP", 1, [](const search& s) { return objects_in_polygon(s.data, points_of(s.first), region::crossing); }},
    {"F", 1, [](const search& s) { return objects_on_fence(s.data, points_of(s.first)); }},
};

const way* way_of(std::string_view word)
{
    for (const way& w : WAYS)
        if (word == w.word)
            return &w;
    return nullptr;
}

// The dialogue; RTCAN when the user cancels it.
int ask_set(document& doc, const selection_rules& rules, object_list* found)
{
    command_io io(doc, "", nullptr, true);
    task<object_list> asking = select_objects(io, rules, "\nSelect objects: ");
    asking.start();
    try {
        *found = asking.result();
    } catch (const cancelled_by_user&) {
        return RTCAN;
    }
    return RTNORM;
}

int find_set(document& doc, const mode_parts& mode, const void* first, const void* second, object_list* found)
{
    search where{doc, db::database_of(doc), first, second};
    if (mode.word.empty() && !first)
        return ask_set(doc, mode.rules, found);
    if (mode.word.empty()) {
        const db::object_id id = object_at(doc, where.a());
        *found = mode.rules.every ? objects_touching(doc, where.a()) : id ? object_list{id} : object_list();
    } else {
        const way* w = way_of(mode.word);
        if (!w || (w->arguments >= 1 && !first) || (w->arguments == 2 && !second))
            return RTERROR;
        *found = w->find(where);
    }
    *found = admitted(where.data, *found, mode.rules);
    // A search becomes the previous selection as a selection by hand does, the drawing-wide one too.
    if (!found->empty())
        set_previous_selection(doc, *found);
    return RTNORM;
}

void trace_place(trace_line& t, const void* place, bool is_list)
{
    if (is_list && place)
        t.arguments(static_cast<const resbuf*>(place));
    else
        t.point(static_cast<const double*>(place));
}

} // namespace

} // namespace host::commandline

using namespace host::commandline;

extern "C" int acedSSGet(const char* mode, const void* point1, const void* point2, const resbuf* filter,
                         ads_name set)
{
    mode_parts parts = parts_of(mode);
    const way* w = way_of(parts.word);
    host::trace_line t("acedSSGet");
    t.text(mode);
    trace_place(t, point1, w && w->arguments == 1);
    t.point(static_cast<const double*>(point2));
    if (filter)
        t.list(filter);
    else
        t.word("nil");
    set[0] = set[1] = 0;
    drop_pending_rules();
    parts.rules.filter = filter;
    host::document& doc = host::current_document();
    object_list found;
    const int status = find_set(doc, parts, point1, point2, &found);
    if (status != RTNORM)
        return t.status(status);
    if (found.empty()) {
        host::db::set_errno(EMPTY_ANSWER);
        return t.status(RTERROR);
    }
    host::db::make_set(host::db::database_of(doc), found, set);
    return t.status(RTNORM);
}

// selection.cpp: the dialogue "Select objects:". It keeps the set as a list in the order of picking with
// the place of each object in it, so that adding and taking away stay cheap for large sets.
#include "host/commandline/selection.h"

#include <algorithm>
#include <cmath>
#include <unordered_map>
#include <unordered_set>

#include "host/commandline/picks.h"
#include "host/commandline/screen_window.h"
#include "host/core/document.h"
#include "host/core/text.h"
#include "host/database/entities.h"
#include "host/database/sysvars.h"

namespace host::commandline
{

namespace
{

struct selection_memory {
    explicit selection_memory(document&) {}
    object_list previous;
};

db::run run_of(const std::vector<point3>& points)
{
    db::run run;
    for (const point3& p : points)
        run.emplace_back(p.x, p.y);
    return run;
}

db::box box_of(const std::vector<point3>& points)
{
    db::box box = db::box::empty();
    for (const point3& p : points)
        box.add(p.x, p.y, 0.0);
    box.low[2] = -HUGE_VAL;
    box.high[2] = HUGE_VAL;
    return box;
}

template <class Test>
object_list visible_near(db::database& db, const db::box& box, Test test)
{
    object_list found;
    for (const db::object_id id : db::near_window(db, db.current_space(), box))
        if (is_visible(db, id) && test(id))
            found.push_back(id);
    return found;
}

bool is_layout(std::string_view name)
{
    return same_text(name, "*Model_Space") || same_text(name.substr(0, 12), "*Paper_Space");
}

template <class Take>
void each_of_space_newest_first(const db::database& db, db::object_id space, Take take)
{
    for (db::object_id id = db.at(space).last; id; id = db.at(id).previous)
        if (!db.at(id).erased && !db.is(id, "BLOCK") && !db.is(id, "ENDBLK"))
            take(id);
}

bool is_on_frozen_layer(const db::database& db, db::object_id id)
{
    const db::object_id layer = db.record("LAYER", db.text_of(db.at(id).groups, 8));
    return layer && db::int_of(db.at(layer).groups, 70, 0) & 1;
}

// The set that grows and shrinks under the dialogue.
class growing_set
{
public:
    // Those of `found` that were not in the set.
    object_list add(const object_list& found)
    {
        object_list added;
        for (const db::object_id id : found)
            if (members_.insert(id).second)
                added.push_back(id);
        order_.insert(order_.end(), added.begin(), added.end());
        return added;
    }
    // Those of `found` that were in the set.
    object_list remove(const object_list& found)
    {
        object_list removed;
        for (const db::object_id id : found)
            if (members_.erase(id))
                removed.push_back(id);
        if (!removed.empty())
            std::erase_if(order_, [&](db::object_id id) { return !members_.contains(id); });
        return removed;
    }
    std::size_t size() const { return order_.size(); }
    object_list take() { return std::move(order_); }

private:
    object_list order_;
    std::unordered_set<db::object_id> members_;
};

constexpr std::string_view SELECTION_WORDS =
    "Window Crossing BOX ALL Fence WPolygon CPolygon Add Remove Multiple Previous Undo AUto SIngle Last";

// A word at the head of an answer and what stands behind it ("w 0,0 10,10").
struct selection_word {
    std::string word;
    std::vector<std::string> rest;
};

selection_word word_of(std::string_view text)
{
    selection_word out;
    const std::vector<std::string_view> parts = split_blanks(text);
    const std::optional<std::string> word = match_key_word(SELECTION_WORDS, parts.front());
    if (word)
        out.word = *word;
    for (std::size_t i = 1; i < parts.size(); ++i)
        out.rest.emplace_back(parts[i]);
    return out;
}

class dialogue
{
public:
    dialogue(command_io& io, selection_rules rules, std::string prompt)
        : io_(io), rules_(rules), prompt_(std::move(prompt))
    {
    }
    task<object_list> run();

private:
    task<bool> step(); // false: Enter
    task<> take_word(selection_word said);
    task<point3> corner(selection_word& said, std::string_view prompt);
    task<std::vector<point3>> points(selection_word& said, std::string_view first, std::string_view next);
    task<> take_point(point3 point);
    void take(const object_list& found, bool filtered = true);
    template <class Search>
    void take_by(Search search) // a search can be long
    {
        take(rules_.unused ? object_list() : search());
    }

    command_io& io_;
    selection_rules rules_;
    std::string prompt_;
    growing_set set_;
    struct change {
        bool removed;
        object_list objects;
    };
    std::vector<change> history_; // what each answer did to the set, for Undo
    bool removing_ = false;
    bool single_ = false;
    bool answered_ = false; // something was found
    std::optional<answer> put_back_;
};

void dialogue::take(const object_list& found, bool filtered)
{
    if (rules_.unused) {
        answered_ = true;
        return;
    }
    const object_list admitted_now = filtered ? admitted(io_.data(), found, rules_) : found;
    const std::size_t held = set_.size();
    object_list changed = removing_ ? set_.remove(admitted_now) : set_.add(admitted_now);
    const std::size_t count = changed.size();
    if (!admitted_now.empty()) {
        history_.push_back({removing_, std::move(changed)});
        answered_ = true;
    }
    std::string message = std::to_string(found.size()) + " found";
    if (removing_)
        message += ", " + std::to_string(count) + " removed, " + std::to_string(set_.size()) + " total";
    else if (held && !admitted_now.empty()) {
        if (count < admitted_now.size())
            message += " (" + std::to_string(admitted_now.size() - count) + " duplicate)";
        message += ", " + std::to_string(set_.size()) + " total";
    }
    io_.say(message);
    if (admitted_now.size() < found.size())
        io_.say(std::to_string(found.size() - admitted_now.size()) + " were filtered out.");
}

task<point3> dialogue::corner(selection_word& said, std::string_view prompt)
{
    if (!said.rest.empty()) {
        const std::string text = said.rest.front();
        said.rest.erase(said.rest.begin());
        if (const std::optional<point3> point = parse_point(text, reading_rules_of(io_.doc())))
            co_return *point;
    }
    question q = ask_point(prompt);
    q.with(RSG_NONULL);
    const answer given = co_await io_.ask(std::move(q));
    co_return given.point;
}

task<std::vector<point3>> dialogue::points(selection_word& said, std::string_view first, std::string_view next)
{
    std::vector<point3> all;
    while (!said.rest.empty()) {
        const point3 p = co_await corner(said, first);
        all.push_back(p);
    }
    if (all.size() >= 2)
        co_return all; // given whole on the line
    for (;;) {
        question q = ask_point(all.empty() ? first : next, all.size() > 1 ? "Undo" : "");
        const answer given = co_await io_.ask(std::move(q));
        if (given.none())
            break;
        if (given.is("Undo"))
            all.pop_back();
        else
            all.push_back(given.point);
    }
    co_return all;
}

// A pick; beside everything it begins a box, if the next answer is a point too: to the right a window, to
// the left a crossing one.
task<> dialogue::take_point(point3 point)
{
    object_list found;
    if (rules_.every) {
        found = objects_touching(io_.doc(), point);
    } else if (const db::object_id id = object_at(io_.doc(), point)) {
        found.push_back(id);
    }
    if (!found.empty() || rules_.single || single_ || !db::int_variable(io_.doc(), "PICKAUTO")) {
        take(found);
        co_return;
    }
    const answer other = co_await io_.ask(question(want::selection, "Specify opposite corner: "));
    if (!other.has_point) {
        take({});
        put_back_ = other;
        co_return;
    }
    const bool to_the_left = is_to_the_left(io_.doc(), other.point, point);
    const region how = to_the_left ? region::crossing : region::inside;
    take_by([&] { return objects_in_window(io_.doc(), point, other.point, how); });
}

task<> dialogue::take_word(selection_word said)
{
    static constexpr std::string_view FIRST = "Specify first corner: ", OPPOSITE = "Specify opposite corner: ";
    const std::string& word = said.word;
    if (word == "Window" || word == "Crossing" || word == "BOX") {
        const point3 a = co_await corner(said, FIRST);
        const point3 b = co_await corner(said, OPPOSITE);
        const bool crossing = word == "Crossing" || (word == "BOX" && is_to_the_left(io_.doc(), b, a));
        const region how = crossing ? region::crossing : region::inside;
        take_by([&] { return objects_in_window(io_.doc(), a, b, how); });
    } else if (word == "WPolygon" || word == "CPolygon") {
        const std::vector<point3> all =
            co_await points(said, "First polygon point: ", "Specify endpoint of line or [Undo]: ");
        const region how = word == "CPolygon" ? region::crossing : region::inside;
        take_by([&] { return all.size() < 3 ? object_list() : objects_in_polygon(io_.data(), all, how); });
    } else if (word == "Fence") {
        const std::vector<point3> all =
            co_await points(said, "Specify first fence point: ", "Specify next fence point or [Undo]: ");
        take_by([&] { return all.size() < 2 ? object_list() : objects_on_fence(io_.data(), all); });
    } else if (word == "ALL") {
        take_by([&] { return all_objects(io_.data()); });
    } else if (word == "Last") {
        const db::object_id id = last_object(io_.data());
        take(id ? object_list{id} : object_list());
    } else if (word == "Previous") {
        take(previous_selection(io_.doc()));
    } else if (word == "Remove") {
        removing_ = true;
    } else if (word == "Add") {
        removing_ = false;
    } else if (word == "SIngle") {
        single_ = true;
    } else if (word == "Undo" && !history_.empty()) {
        const change& last = history_.back();
        if (last.removed)
            set_.add(last.objects);
        else
            set_.remove(last.objects);
        history_.pop_back();
    } else if (word.empty()) {
        io_.say("*Invalid selection*");
        io_.say("Expects a point or Window/Last/Crossing/BOX/ALL/Fence/WPolygon/CPolygon/Add/Remove/Previous/"
                "Undo/SIngle");
    }
}

task<bool> dialogue::step()
{
    answer given;
    if (put_back_) {
        given = std::move(*put_back_);
        put_back_.reset();
    } else {
        // A choice made inside the awaited expression is destroyed twice by GCC 12.
        const std::string prompt = removing_ ? "Remove objects: " : prompt_;
        given = co_await io_.ask(question(want::selection, prompt));
    }
    if (given.none())
        co_return false;
    if (!given.objects.empty()) {
        std::erase_if(given.objects, [&](db::object_id id) { return io_.data().at(id).erased; });
        take(given.objects);
    } else if (given.has_point) {
        co_await take_point(given.point);
    } else if (!given.text.empty()) {
        co_await take_word(word_of(given.text));
    } else {
        take({});
    }
    co_return true;
}

task<object_list> dialogue::run()
{
    for (;;) {
        const bool more = co_await step();
        if (!more || rules_.single || (single_ && answered_))
            break;
    }
    object_list all = set_.take();
    if (!all.empty())
        set_previous_selection(io_.doc(), all);
    co_return all;
}

} // namespace

object_list objects_in_window(document& doc, const point3& a, const point3& b, region how)
{
    db::database& db = db::database_of(doc);
    const screen_window window(doc, a, b);
    return visible_near(db, window.bounds(), [&](db::object_id id) {
        return how == region::inside ? window.holds(db, id) : window.crosses(db, id);
    });
}

object_list objects_in_polygon(db::database& db, const std::vector<point3>& corners, region how)
{
    const db::run polygon = run_of(corners);
    return visible_near(db, box_of(corners), [&](db::object_id id) {
        return how == region::inside ? db::inside_polygon(db, id, polygon)
                                     : db::crosses_polygon(db, id, polygon);
    });
}

object_list objects_on_fence(db::database& db, const std::vector<point3>& points)
{
    const db::run fence = run_of(points);
    return visible_near(db, box_of(points), [&](db::object_id id) { return db::crosses_fence(db, id, fence); });
}

object_list objects_touching(document& doc, const point3& point)
{
    db::database& db = db::database_of(doc);
    const screen_window window = screen_window::around(doc, point, pick_reach(doc));
    return visible_near(db, window.bounds(), [&](db::object_id id) { return window.crosses(db, id); });
}

object_list all_objects(const db::database& db)
{
    object_list all;
    each_of_space_newest_first(db, db.current_space(), [&](db::object_id id) {
        if (!is_on_frozen_layer(db, id))
            all.push_back(id);
    });
    return all;
}

object_list drawing_objects(const db::database& db)
{
    object_list all;
    const db::object_id records = db.table("BLOCK_RECORD");
    for (db::object_id space = records ? db.at(records).first : 0; space; space = db.at(space).next)
        if (!db.at(space).erased && is_layout(db.text_of(db.at(space).groups, 2)))
            each_of_space_newest_first(db, space, [&](db::object_id id) { all.push_back(id); });
    std::sort(all.begin(), all.end(), std::greater<>());
    return all;
}

object_list admitted(const db::database& db, const object_list& found, const selection_rules& rules)
{
    object_list in;
    for (const db::object_id id : found)
        if (!(rules.no_locked && is_on_locked_layer(db, id)) &&
            (!rules.filter || db::matches(db, id, rules.filter)))
            in.push_back(id);
    return in;
}

object_list previous_selection(document& doc)
{
    const db::database& db = db::database_of(doc);
    object_list left = doc.part<selection_memory>().previous;
    std::erase_if(left, [&](db::object_id id) { return !db.valid(id) || db.at(id).erased; });
    return left;
}

void set_previous_selection(document& doc, const object_list& objects)
{
    doc.part<selection_memory>().previous = objects;
}

task<object_list> select_objects(command_io& io, selection_rules rules, std::string prompt)
{
    dialogue asking(io, rules, std::move(prompt));
    co_return co_await asking.run();
}

task<object_list> select_to_change(command_io& io, selection_rules rules)
{
    object_list all = co_await select_objects(io, rules);
    const std::size_t before = all.size();
    const db::database& db = io.data();
    std::erase_if(all, [&](db::object_id id) { return is_on_locked_layer(db, id); });
    if (all.size() < before)
        io.say(std::to_string(before - all.size()) + " on a locked layer.");
    co_return all;
}

} // namespace host::commandline

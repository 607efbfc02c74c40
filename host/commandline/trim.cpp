// trim.cpp: TRIM: parts of objects between edges are taken out.
#include "host/commandline/cutting_edges.h"
#include "host/commandline/edit_commands.h"
#include "host/commandline/picks.h"
#include "host/core/document.h"
#include "host/database/cut.h"
#include "host/database/sysvars.h"

namespace host::commandline
{

namespace
{

constexpr std::string_view PROJECTIONS[] = {"None", "UCS", "View"}; // by PROJMODE
constexpr int NO_PROJECTION = 0;

struct trimming {
    db::object_image before;
    object_list made;
};

std::vector<db::curve_stretch> what_is_left(const db::plan_curve& curve, const db::part_between& gone)
{
    if (curve.is_closed)
        return {{gone.to, gone.from}};
    std::vector<db::curve_stretch> left;
    if (!gone.is_start)
        left.push_back({{0, curve.pieces.front().low}, gone.from});
    if (!gone.is_end)
        left.push_back({gone.to, {curve.pieces.size() - 1, curve.pieces.back().high}});
    return left;
}

std::string_view closed_name(const db::database& db, db::object_id id)
{
    return db.is(id, "CIRCLE") ? "Circle" : db.is(id, "ELLIPSE") ? "Ellipse" : "Closed polyline";
}

class trimmer
{
public:
    trimmer(command_io& io, cutting_edges& edges) : io_(io), edges_(edges) {}
    // Takes out the part of an object around a place. What stands in the way is told.
    void trim(db::object_id id, const point3& at);
    void undo();

private:
    std::optional<db::plan_curve> curve_to_trim(db::object_id id) const;

    command_io& io_;
    cutting_edges& edges_;
    std::vector<trimming> done_;
};

std::optional<db::plan_curve> trimmer::curve_to_trim(db::object_id id) const
{
    db::database& db = io_.data();
    if (is_on_locked_layer(db, id)) {
        io_.say("1 on a locked layer.");
        return std::nullopt;
    }
    std::optional<db::plan_curve> curve = db::plan_curve_of(db, id);
    const bool is_there = db.at(id).owner == db.current_space() && is_visible(db, id);
    if (!is_there || !curve || !db::can_be_cut(db, *curve)) {
        io_.say("Cannot TRIM this object.");
        return std::nullopt;
    }
    return curve;
}

void trimmer::trim(db::object_id id, const point3& at)
{
    db::database& db = io_.data();
    const std::optional<db::plan_curve> curve = curve_to_trim(id);
    if (!curve)
        return;
    const cutting_edges::rules how{db::int_variable(io_.doc(), "EDGEMODE") != 0,
                                   db::int_variable(io_.doc(), "PROJMODE") == NO_PROJECTION};
    const db::curve_place place = curve->nearest(at.x, at.y);
    const db::part_between gone =
        db::part_around(*curve, edges_.around(*curve, place, how), place, db::place_tolerance(*curve));
    if (gone.count == 0) {
        io_.say("Object does not intersect an edge.");
        return;
    }
    if (curve->is_closed && gone.count < 2) {
        io_.say(std::string(closed_name(db, id)) + " must intersect twice.");
        return;
    }
    trimming step{db::image_of(db, id), {}};
    const bool was_edge = edges_.has(id);
    if (!db::keep_stretches(db, *curve, what_is_left(*curve, gone), &step.made)) {
        io_.say("Cannot TRIM this object.");
        return;
    }
    for (const db::object_id made : step.made)
        if (was_edge)
            edges_.add(made);
    done_.push_back(std::move(step));
}

void trimmer::undo()
{
    if (done_.empty()) {
        io_.say("Command has been completely undone.");
        return;
    }
    for (const db::object_id made : done_.back().made)
        io_.data().set_erased(made, true);
    db::put_back(io_.data(), done_.back().before);
    done_.pop_back();
}

task<> ask_projection(command_io& io)
{
    const int now = db::int_variable(io.doc(), "PROJMODE");
    question q(want::key_word, "\n" + with_default("Enter a projection option [None/Ucs/View]",
                                                   now == 1 ? "Ucs" : PROJECTIONS[now]));
    q.keys("None Ucs View");
    const answer given = co_await io.ask(std::move(q));
    if (given.ok())
        db::set_int(io.doc(), "PROJMODE", given.text == "None" ? 0 : given.text == "Ucs" ? 1 : 2);
}

task<> ask_edge_mode(command_io& io)
{
    const bool now = db::int_variable(io.doc(), "EDGEMODE") != 0;
    question q(want::key_word, "\n" + with_default("Enter an implied edge extension mode [Extend/No extend]",
                                                   now ? "Extend" : "No extend"));
    q.keys("Extend No");
    const answer given = co_await io.ask(std::move(q));
    if (given.ok())
        db::set_int(io.doc(), "EDGEMODE", given.text == "Extend" ? 1 : 0);
}

} // namespace

task<> trim_command(command_io& io)
{
    io.say("Current settings: Projection=" + std::string(PROJECTIONS[db::int_variable(io.doc(), "PROJMODE")]) +
           " Edge=" + (db::int_variable(io.doc(), "EDGEMODE") ? "Extend" : "None"));
    io.say("Select cutting edges ...");
    const object_list chosen = co_await select_objects(io);
    cutting_edges edges(io.data(), chosen);
    if (edges.none()) {
        io.say("No edges selected.");
        co_return;
    }
    trimmer work(io, edges);
    for (;;) {
        question q(want::object, "\nSelect object to trim or [Project/Edge/Undo]: ");
        q.keys("Project Edge Undo");
        const answer given = co_await io.ask(std::move(q));
        if (given.none())
            co_return;
        if (given.is("Project"))
            co_await ask_projection(io);
        else if (given.is("Edge"))
            co_await ask_edge_mode(io);
        else if (given.is("Undo"))
            work.undo();
        else if (given.ok())
            work.trim(given.object, given.point);
    }
}

} // namespace host::commandline

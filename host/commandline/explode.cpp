// explode.cpp: EXPLODE. A program's call takes one answer (an object, or a set) or as many objects as stand in
// the call one behind the other, and is done without an Enter; while QAFLAGS is 1 it asks until Enter, as a
// user is asked.
#include <algorithm>
#include <map>
#include <unordered_map>
#include <unordered_set>

#include "host/commandline/edit_commands.h"
#include "host/commandline/explode_parts.h"
#include "host/commandline/selection.h"
#include "host/core/document.h"
#include "host/database/entities.h"
#include "host/database/sysvars.h"

namespace host::commandline
{

namespace
{

task<object_list> select_to_explode(command_io& io)
{
    const bool asks_on = io.is_typed() || db::int_variable(io.doc(), "QAFLAGS") & 1;
    if (asks_on)
        co_return co_await select_to_change(io);
    selection_rules one;
    one.single = true;
    object_list all;
    std::unordered_set<db::object_id> seen; // a program may name an object twice
    do {
        for (const db::object_id id : co_await select_to_change(io, one))
            if (seen.insert(id).second)
                all.push_back(id);
    } while (io.has_object_waiting());
    co_return all;
}

// Puts parts into the drawing, all or none: a part of a damaged drawing may be refused. `last_picture`: number
// of the last block for a dimension that was named, of all drawers of a command.
class drawer
{
public:
    drawer(db::database& db, int& last_picture) : db_(db), last_picture_(last_picture) {}

    bool draw(const std::vector<part>& parts, db::object_id owner, std::string* error)
    {
        for (const part& each : parts)
            if (!draw_one(each, owner, error)) {
                for (const object_list& half : {made_, pictures_})
                    for (const db::object_id made : half)
                        db_.set_erased(made, true);
                return false;
            }
        for (const db::object_id id : made_) {
            if (db_.is(id, "LEADER"))
                link_leader(id);
            else if (db_.is(id, "HATCH"))
                link_hatch(id);
        }
        return true;
    }
    object_list take() { return std::move(made_); }

private:
    bool draw_one(const part& each, db::object_id owner, std::string* error)
    {
        db::group_list groups = each.groups;
        if (!each.picture.empty() && !draw_picture(each, groups, error))
            return false;
        const db::object_id made = db::append_entity(db_, owner, std::move(groups), error);
        if (!made)
            return false;
        made_.push_back(made);
        if (each.from)
            copies_[db_.at(each.from).handle] = made;
        for (const db::group_list& child : each.children)
            if (!db::append_entity(db_, made, child, error))
                return false;
        if (!each.is_sequence)
            return true;
        db::group_list end{db_.text_group(0, "SEQEND")};
        if (const db::group* layer = db::find(each.groups, 8))
            end.push_back(*layer);
        return db::append_entity(db_, made, std::move(end), error) != 0;
    }

    bool draw_picture(const part& dimension, db::group_list& groups, std::string* error)
    {
        std::string name;
        do
            name = "*D" + std::to_string(++last_picture_);
        while (db_.record("BLOCK_RECORD", name));
        const db::object_id block = db::add_block(db_, name);
        pictures_.push_back(block);
        db::group* named = db::find(groups, 2);
        *named = db_.text_group(2, name);
        drawer inner(db_, last_picture_);
        const bool is_drawn = inner.draw(dimension.picture, block, error);
        pictures_.insert(pictures_.end(), inner.pictures_.begin(), inner.pictures_.end());
        return is_drawn;
    }

    // Handle of the copy of an object of the block, 0 when there is none.
    std::uint64_t copy_of(std::uint64_t handle) const
    {
        const auto copy = copies_.find(handle);
        return copy == copies_.end() ? 0 : db_.at(copy->second).handle;
    }

    // A leader names the text at its end by handle: that of the copy, not that in the block.
    void link_leader(db::object_id id)
    {
        if (db::group* text = db::find(db_.modify(id), 340))
            text->handle = copy_of(text->handle);
    }

    // A hatch names the objects of its boundary: their copies, or none when one of them has no copy. Its own
    // list of edges holds its shape.
    void link_hatch(db::object_id id)
    {
        db::group_list& groups = db_.modify(id);
        const auto body =
            std::find_if(groups.begin(), groups.end(), [](const db::group& g) { return g.code == 100; });
        const auto is_lost = [this](const db::group& g) { return g.code == 330 && !copy_of(g.handle); };
        if (std::none_of(body, groups.end(), is_lost)) {
            for (auto g = body; g != groups.end(); ++g)
                if (g->code == 330)
                    g->handle = copy_of(g->handle);
            return;
        }
        for (auto g = body; g != groups.end(); ++g)
            if (g->code == 97 && g + 1 != groups.end() && (g + 1)->code == 330)
                g->integer = 0;
        groups.erase(std::remove_if(body, groups.end(), [](const db::group& g) { return g.code == 330; }),
                     groups.end());
        if (db::group* is_associative = db::find(groups, 71))
            is_associative->integer = 0;
    }

    db::database& db_;
    int& last_picture_;
    object_list made_, pictures_;
    std::unordered_map<std::uint64_t, db::object_id> copies_; // by the handle of what they are copies of
};

} // namespace

task<> explode_command(command_io& io)
{
    const object_list chosen = co_await select_to_explode(io);
    db::database& db = io.data();
    const bool unequal = db::int_variable(io.doc(), "EXPLMODE") != 0;
    object_list pieces;
    std::map<std::string, int> refused;
    int widths_lost = 0, last_picture = 0;
    for (const db::object_id id : chosen) {
        explosion parts = explode_object(db, id, unequal);
        drawer pen(db, last_picture);
        if (parts.refusal.empty() && pen.draw(parts.parts, db.at(id).owner, &parts.refusal)) {
            db.set_erased(id, true);
            const object_list made = pen.take();
            pieces.insert(pieces.end(), made.begin(), made.end());
            widths_lost += parts.loses_width;
        } else {
            ++refused[parts.refusal];
        }
    }
    for (const auto& [why, count] : refused)
        io.say(std::to_string(count) + " could not be exploded: " + why + ".");
    if (widths_lost)
        io.say("Widths of polylines are lost: " + std::to_string(widths_lost) + ". U brings them back.");
    if (!pieces.empty())
        set_previous_selection(io.doc(), pieces);
}

} // namespace host::commandline

// explode.cpp: EXPLODE. A program's call takes one answer (an object, or a set) or as many objects as stand in
// the call one behind the other, and is done without an Enter; while QAFLAGS is 1 it asks until Enter, as a
// user is asked.
#include <map>
#include <unordered_map>

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
    do {
        const object_list more = co_await select_to_change(io, one);
        all.insert(all.end(), more.begin(), more.end());
    } while (io.has_object_waiting());
    co_return all;
}

// Puts parts into the drawing, all or none: a part of a damaged drawing may be refused.
class drawer
{
public:
    explicit drawer(db::database& db) : db_(db) {}

    bool draw(const std::vector<part>& parts, db::object_id owner, std::string* error)
    {
        for (const part& each : parts)
            if (!draw_one(each, owner, error)) {
                for (const db::object_id made : made_)
                    db_.set_erased(made, true);
                return false;
            }
        link_leaders();
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
        db::group* named = db::find(groups, 2);
        *named = db_.text_group(2, name);
        drawer inner(db_);
        return inner.draw(dimension.picture, block, error);
    }

    // A leader names the text at its end by handle: that of the copy, not that in the block.
    void link_leaders()
    {
        for (const db::object_id id : made_) {
            if (!db_.is(id, "LEADER"))
                continue;
            db::group* text = db::find(db_.modify(id), 340);
            const auto copy = text ? copies_.find(text->handle) : copies_.end();
            if (text)
                text->handle = copy == copies_.end() ? 0 : db_.at(copy->second).handle;
        }
    }

    db::database& db_;
    object_list made_;
    std::unordered_map<std::uint64_t, db::object_id> copies_; // by the handle of what they are copies of
    int last_picture_ = 0;
};

} // namespace

task<> explode_command(command_io& io)
{
    const object_list chosen = co_await select_to_explode(io);
    db::database& db = io.data();
    const bool unequal = db::int_variable(io.doc(), "EXPLMODE") != 0;
    object_list pieces;
    std::map<std::string, int> refused;
    int widths_lost = 0;
    for (const db::object_id id : chosen) {
        explosion parts = explode_object(db, id, unequal);
        drawer pen(db);
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

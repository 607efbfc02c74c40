// Undo and redo over the journal; see journal.h.
#include "host/core/text.h"
#include "host/database/journal.h"

namespace host::db
{

bool database::journal::first_in_stage(object_id id)
{
    if (kept.size() <= id)
        kept.resize(id + id / 2 + 64);
    if (kept[id] == stage)
        return false;
    kept[id] = stage;
    return true;
}

void database::journal::push(entry made)
{
    undone.clear();
    done.push_back(std::move(made));
}

void database::journal::note_added(object_id id)
{
    if (!keeps())
        return;
    first_in_stage(id);
    entry made(what::added);
    made.id = id;
    push(std::move(made));
}

void database::journal::note_modified(object_id id, const group_list& groups)
{
    if (!keeps() || !first_in_stage(id))
        return;
    entry made(what::modified);
    made.id = id;
    made.before = std::make_unique<image>();
    made.before->value = groups;
    push(std::move(made));
}

void database::journal::note_erased(object_id id, bool was)
{
    if (!keeps())
        return;
    entry made(what::erased);
    made.id = id;
    made.was_erased = was;
    push(std::move(made));
}

void database::journal::note_header(std::string_view name, const group_list* before)
{
    if (!keeps())
        return;
    entry made(what::header);
    made.before = std::make_unique<image>();
    made.before->name = name;
    if (before)
        made.before->value = *before;
    push(std::move(made));
}

// Boundaries leave what may be redone alone: REDO is itself a command that starts with one.
void database::journal::boundary(what kind)
{
    begun = true;
    if (!enabled)
        return;
    ++stage;
    if (kind == what::step && !done.empty() && done.back().kind == what::step)
        return;
    count_groups(kind, 1);
    done.emplace_back(kind);
}

void database::journal::count_groups(what kind, int direction)
{
    open_groups += kind == what::group_start ? direction : kind == what::group_end ? -direction : 0;
}

void database::journal::swap_change(database& db, entry& change, bool undoing)
{
    switch (change.kind) {
    case what::added:
        db.put_erased(change.id, undoing);
        break;
    case what::erased:
        db.put_erased(change.id, undoing ? change.was_erased : !change.was_erased);
        break;
    case what::modified:
        db.restore_groups(change.id, *change.before->value);
        break;
    case what::header: {
        image& kept_value = *change.before;
        std::optional<group_list> now;
        if (const group_list* value = db.header_value(kept_value.name))
            now = *value;
        if (kept_value.value)
            db.set_header(kept_value.name, std::move(*kept_value.value));
        else
            std::erase_if(db.header, [&](const auto& each) { return each.first == kept_value.name; });
        kept_value.value = std::move(now);
        break;
    }
    default:
        break;
    }
}

void database::journal::take_back(database& db, std::size_t from)
{
    replaying = true;
    for (std::size_t i = done.size(); i > from; --i) {
        count_groups(done[i - 1].kind, -1);
        swap_change(db, done[i - 1], true);
    }
    undone.emplace_back(std::make_move_iterator(done.begin() + static_cast<std::ptrdiff_t>(from)),
                        std::make_move_iterator(done.end()));
    done.erase(done.begin() + static_cast<std::ptrdiff_t>(from), done.end());
    replaying = false;
    ++stage;
}

namespace
{

template <class Entry>
bool is_change(const Entry& each)
{
    return each.kind >= decltype(each.kind)::added;
}

} // namespace

void database::command_boundary(std::string_view)
{
    journal_->boundary(journal::what::step);
}

void database::undo_mark(bool group_start)
{
    journal_->boundary(group_start ? journal::what::group_start : journal::what::mark);
}

void database::undo_group_end()
{
    // An end without a start would swallow what was done before.
    if (journal_->open_groups > 0)
        journal_->boundary(journal::what::group_end);
}

// Goes back over a closed group as a whole, and otherwise to the start of the last step that changed
// something. Boundaries with nothing behind them go on the way.
bool database::undo_back()
{
    using kind = journal::what;
    const auto& done = journal_->done;
    std::size_t at = done.size();
    int depth = 0;
    bool changes = false;
    while (at > 0) {
        const auto& each = done[--at];
        changes = changes || is_change(each);
        if (each.kind == kind::group_end)
            ++depth;
        else if (each.kind == kind::group_start && depth > 0)
            --depth;
        if (depth == 0 && changes && !is_change(each))
            break;
    }
    if (!changes)
        return false;
    journal_->take_back(*this, at);
    return true;
}

bool database::undo_to_mark()
{
    const auto& done = journal_->done;
    std::size_t at = done.size();
    while (at > 0 && done[at - 1].kind != journal::what::mark)
        --at;
    if (at == 0)
        return false;
    journal_->take_back(*this, at - 1);
    return true;
}

void database::undo_enable(bool on)
{
    journal_->enabled = on;
    journal_->begun = on;
    journal_->done.clear();
    journal_->undone.clear();
    journal_->open_groups = 0;
    ++journal_->stage;
}

bool database::undo_enabled() const
{
    return journal_->enabled;
}

bool database::redo()
{
    if (journal_->undone.empty())
        return false;
    journal::chunk again = std::move(journal_->undone.back());
    journal_->undone.pop_back();
    journal_->replaying = true;
    for (auto& each : again) {
        journal_->count_groups(each.kind, 1);
        journal_->swap_change(*this, each, false);
        journal_->done.push_back(std::move(each));
    }
    journal_->replaying = false;
    ++journal_->stage;
    return true;
}

} // namespace host::db

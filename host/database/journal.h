// journal.h: what undo keeps. Inner header of store.cpp and undo.cpp.
//
// The journal is one row of entries, oldest first: boundaries (steps, marks, starts and ends of groups) with
// the changes that came behind them. A change holds what was there before; undoing it swaps the two, so
// that the same entry, in the chunk for redo, holds what was there after.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/database/database.h"

namespace host::db
{

struct database::journal {
    enum class what : std::uint8_t { step, mark, group_start, group_end, added, modified, erased, header };
    struct image {
        std::string name;                // header: the variable
        std::optional<group_list> value; // nothing: there was no such variable
    };
    struct entry {
        what kind;
        bool was_erased = false;
        object_id id = 0;
        std::unique_ptr<image> before; // modified, header
        explicit entry(what of_kind) : kind(of_kind) {}
    };
    using chunk = std::vector<entry>;

    chunk done;
    std::vector<chunk> undone; // for redo, the last undone at the end
    // Per object the stage in which it was last kept or added: one image a stage is enough. A stage
    // ends with each boundary and each undo.
    std::vector<std::uint32_t> kept;
    std::uint32_t stage = 1;
    bool enabled = true;
    bool begun = false; // whether changes are kept already
    bool replaying = false;
    int open_groups = 0; // starts in `done` that have no end yet

    bool keeps() const { return enabled && begun && !replaying; }
    void boundary(what kind);
    void count_groups(what kind, int direction);
    void note_added(object_id id);
    void note_modified(object_id id, const group_list& groups);
    void note_erased(object_id id, bool was);
    void note_header(std::string_view name, const group_list* before);
    bool first_in_stage(object_id id);
    void push(entry made);

    // Undoes all from `from` on, as one chunk for redo.
    void take_back(database& db, std::size_t from);
    void swap_change(database& db, entry& change, bool undoing);
};

} // namespace host::db

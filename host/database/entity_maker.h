// entity_maker.h: objects that programs make by one list after the other: a POLYLINE with its vertices, an
// INSERT with its attributes, a block definition. Inner header.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/database/database.h"

namespace host::db
{

// What a program has begun and not ended. Nothing is in the drawing before the SEQEND or ENDBLK; a list that
// doesn't fit drops what is pending.
//
// One thing waits without being dropped: an INSERT that announces attributes (66) of which none has come.
// Programs put a reference that they have taken away back from its acdbEntGet list alone. When something else
// is made, or the program's expression ends, the reference is made, without the mark and without attributes:
// those come back only if the program gives their lists and the SEQEND behind it.
class entity_maker
{
public:
    explicit entity_maker(database& db) : db_(db) {}

    struct made {
        bool done = false; // the list was taken
        object_id id = 0;  // what it made, or finished: with ENDBLK the BLOCK object; 0 while more is to come
        std::string error; // when not done
    };
    made take(group_list groups);
    // Makes the reference that still waits for its first attribute, if there is one.
    void settle();

private:
    struct sequence {
        group_list main;
        std::vector<group_list> children;
    };
    made take_child(group_list groups, std::string_view type);
    made end_sequence();
    made begin_block(group_list groups);
    made end_block();
    made take_record(group_list groups, std::string_view table);
    made take_object(group_list groups);
    made finish(sequence whole);
    made fail(std::string error);
    bool check(group_list groups, std::string* error);
    void put_on_current_layer(group_list& groups) const;
    object_id block_record_for(const std::string& name);
    std::string anonymous_name(std::string_view asked) const;

    database& db_;
    std::optional<sequence> sequence_;
    std::optional<group_list> block_;
    std::vector<sequence> contents_; // of the block; main without children: a single entity
};

} // namespace host::db

// dxf_downgrade.h: the store's objects in the form of R12 files. Inner header.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "host/database/database.h"

namespace host::db
{

// What had no place in an R12 file: objects by kind.
using loss_count = std::map<std::string, long>;

class downgrader
{
public:
    explicit downgrader(database& db) : db_(db), next_handle_(db.next_handle()) {}

    // The objects that stand for an entity, those that it owns included. Empty: R12 has nothing for it.
    std::vector<group_list> entity(object_id id);
    // A record or BLOCK or ENDBLK, reduced to what R12 knows.
    group_list record(object_id id) const;
    group_list block_end(object_id id) const;
    static bool has_table(std::string_view name);
    static bool has_variable(std::string_view name);

    const loss_count& lost() const { return lost_; }
    std::uint64_t next_handle() const { return next_handle_; } // behind those given to new objects

private:
    group_list reduced(const group_list& from) const;
    group_list companion(const group_list& from, const char* type);
    std::vector<group_list> polyline(object_id id);
    std::vector<group_list> text_lines(object_id id);

    database& db_;
    std::uint64_t next_handle_;
    loss_count lost_;
};

} // namespace host::db

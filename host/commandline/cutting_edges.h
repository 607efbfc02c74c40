// cutting_edges.h: the objects that TRIM cuts at, and where they meet a curve near a place on it.
#pragma once

#include <unordered_set>
#include <vector>

#include "host/commandline/selection.h"
#include "host/database/crossings.h"

namespace host::commandline
{

class cutting_edges
{
public:
    // Those of `chosen` that can be edges; when none was chosen at all, all visible objects of the current
    // space.
    cutting_edges(db::database& db, const object_list& chosen);

    bool none() const { return !all_ && set_.empty(); }
    bool has(db::object_id id) const { return all_ || set_.contains(id); }
    void add(db::object_id id); // what came out of an edge; nothing to do when all are edges

    struct rules {
        bool drawn_out = false; // edges count as if they went on beyond their ends
        bool in_space = false;  // only where they meet at one height
    };
    // At least the crossings that bound the part of the curve around a place, sorted along the curve.
    std::vector<db::crossing> around(const db::plan_curve& curve, const db::curve_place& at, rules how) const;

private:
    object_list everything() const;
    object_list near(const db::box& window) const;

    db::database& db_;
    bool all_;
    object_list list_; // chosen ones, in their order
    std::unordered_set<db::object_id> set_;
};

} // namespace host::commandline

// Polylines. Flat ones go by the host's own command, which keeps all that they are; a polyline in space has
// elevations of its own at each vertex and is made again from them.
#include <memory>
#include <utility>

#include "common/held_list.h"
#include "common/names.h"
#include "common/variables.h"
#include "drawing/read.h"
#include "drawing/write.h"
#include "tools/drawn_objects.h"
#include "tools/elevation_objects.h"

namespace
{

constexpr int EXTENDED_DATA = -3;

struct nodes_release {
    void operator()(pg_node* nodes) const { pl_free_nodes(nodes); }
};
using node_chain = std::unique_ptr<pg_node, nodes_release>;

const char* type_of(const resbuf* list)
{
    const resbuf* type = rb_find(list, 0);
    return type ? type->resval.rstring : "";
}

// Whether a polyline has left an elevation. The host refuses to move what lies on a locked layer.
bool has_left(const ads_name name, double z)
{
    const node_chain now(pl_read_nodes(name, 1));
    return now && now->z != z;
}

void move_flat(const ads_name name, const pg_node& first, const char* type, const elevation_rule& rule,
               elevation_tally* tally)
{
    if (rule.leaves(first.z))
        return;
    const ads_point from = {first.x, first.y, first.z}, to = {first.x, first.y, rule.applied_to(first.z)};
    if (!std::isfinite(to[2] - from[2])) {
        tell_out_of_range(type);
        return;
    }
    const int status =
        acedCommand(RTSTR, "_.MOVE", RTENAME, name, RTSTR, "", RT3DPOINT, from, RT3DPOINT, to, RTNONE);
    if (status == RTNORM && (to[2] == from[2] || has_left(name, from[2])))
        ++tally->polylines;
}

bool change_nodes(pg_node* nodes, const elevation_rule& rule)
{
    for (pg_node* node = nodes; node; node = node->next) {
        if (rule.leaves(node->z))
            continue;
        node->z = rule.applied_to(node->z);
        if (!std::isfinite(node->z))
            return false;
    }
    return true;
}

// -3 and what follows it; null when an object has none.
held_list extended_data_of(const ads_name name)
{
    char every[] = "*";
    resbuf applications{nullptr, RTSTR, {}};
    applications.resval.rstring = every;
    const held_list list(acdbEntGetX(name, &applications));
    resbuf* last = list.get();
    while (last && last->rbnext && last->rbnext->restype != EXTENDED_DATA)
        last = last->rbnext;
    return held_list(last ? std::exchange(last->rbnext, nullptr) : nullptr);
}

void give_extended_data(const ads_name name, held_list data)
{
    const held_list list(acdbEntGet(name));
    resbuf* last = list.get();
    while (last && last->rbnext)
        last = last->rbnext;
    if (!last || !data)
        return;
    last->rbnext = data.release();
    acdbEntMod(list.get());
}

// Also when no vertex has changed: programs count on a new object.
void remake_in_space(const ads_name name, pg_node* nodes, const pline_props& props, const char* type,
                     const elevation_rule& rule, elevation_tally* tally)
{
    if (!change_nodes(nodes, rule)) {
        tell_out_of_range(type);
        return;
    }
    const kept_variable layer("CLAYER"); // the new object makes its own the current one
    held_list data = extended_data_of(name);
    if (acdbEntDel(name) != RTNORM)
        return;
    const newest_object before;
    pl_make_entity(nodes, props, 1, 0);
    ads_name made;
    if (!before.added(made)) {
        acdbEntDel(name); // comes back
        return;
    }
    ++tally->polylines;
    give_extended_data(made, std::move(data));
}

} // namespace

void change_polyline(const ads_name name, resbuf* list, const elevation_rule& rule, elevation_tally* tally)
{
    const pline_props props = pl_get_props(name);
    const node_chain nodes(pl_read_nodes(name, 1));
    if (!nodes)
        return;
    if (props.kind == KIND_P3D)
        remake_in_space(name, nodes.get(), props, type_of(list), rule, tally);
    else
        move_flat(name, *nodes, type_of(list), rule, tally);
}

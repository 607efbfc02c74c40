#include "polygon/centre_lines.h"

#include <algorithm>
#include <cmath>

#include "polygon/centre_branch.h"
#include "polygon/centre_merge.h"
#include "polygon/centre_outline.h"
#include "polygon/points.h"
#include "polygon/tolerances.h"

namespace
{

struct work {
    cl_outline outline;
    cl_network net;
    double slope = 1.0;
};

// ---- finishing

bool is_live(const cl_branch& b)
{
    return b.state == CL_NETWORK || b.state == CL_RAY;
}

// Nodes that lie on the one before, and spikes, as pg_clean takes them out.
void clean(cl_path& path)
{
    for (bool changed = true; changed;) {
        changed = false;
        std::size_t kept = 0;
        for (std::size_t i = 1; i < path.size(); ++i) {
            if (pg_dist_sq(path[kept].data(), path[i].data()) < PG_LENGTH_SQ_TOL)
                changed = true;
            else
                path[++kept] = path[i];
        }
        path.resize(kept + 1);
        for (std::size_t i = 0; i + 2 < path.size(); ++i) {
            if (pg_dist_sq(path[i].data(), path[i + 2].data()) >= PG_LENGTH_SQ_TOL)
                continue;
            path.erase(path.begin() + static_cast<long>(i) + 1, path.begin() + static_cast<long>(i) + 3);
            changed = true;
        }
    }
}

struct place_finder {
    const cl_places& places;
    std::vector<std::int32_t> near;

    // The places within the squared tolerance, ascending.
    const std::vector<std::int32_t>& at(const cl_point& point)
    {
        cl_places_near(places, point, &near);
        std::erase_if(near, [&](std::int32_t i) {
            return pg_dist_sq(places.places[static_cast<std::size_t>(i)].data(), point.data()) >
                   PG_LENGTH_SQ_TOL;
        });
        return near;
    }
};

void settle_states(work& w, place_finder& side_ends)
{
    for (cl_branch& b : w.net.branches) {
        if (b.left_id == b.right_id)
            b.state = CL_ONE_ITEM;
        if (is_live(b)) {
            cl_coarsen(&b);
            clean(b.chain);
            if (b.chain.size() < 2)
                b.state = CL_MERGED;
        }
        if (b.state == CL_RAY && !side_ends.at(b.chain.front()).empty())
            b.state = CL_TOUCHING;
        if (is_live(b) && b.flag == 1)
            b.state = CL_TOUCHING;
    }
}

// Elevations along a branch: where the surfaces of its items meet.
void raise(work& w)
{
    for (cl_branch& b : w.net.branches)
        if (is_live(b) || b.state == CL_TOUCHING)
            for (cl_point& p : b.chain)
                p[2] = cl_height(w.outline.item(b.left_id), w.slope, p.data());
}

// Branches that go on from one another become one.
void extend_branches(work& w, place_finder& side_ends)
{
    std::vector<cl_branch>& branches = w.net.branches;
    place_finder starts{w.net.starts, {}};
    for (std::size_t i = 0; i < branches.size(); ++i) {
        cl_branch& b = branches[i];
        if (b.state != CL_NETWORK)
            continue;
        for (bool goes_on = true; goes_on;) {
            goes_on = false;
            for (std::int32_t number : starts.at(b.chain.back())) {
                cl_branch& other = branches[static_cast<std::size_t>(number)];
                if (&other == &b || !is_live(other) || !side_ends.at(other.chain.back()).empty())
                    continue;
                b.chain.insert(b.chain.end(), other.chain.begin() + 1, other.chain.end());
                other.state = CL_MERGED;
                goes_on = true;
                break;
            }
        }
    }
}

pg_node* nodes_of(const cl_path& path)
{
    pg_node* head = nullptr;
    pg_node** end = &head;
    for (const cl_point& p : path) {
        *end = pg_node_new(p.data());
        if (!*end) {
            pl_free_nodes(head);
            return nullptr;
        }
        end = &(*end)->next;
    }
    return head;
}

pg_ring* rings_of(const std::vector<cl_branch>& branches, bool with_touching)
{
    pg_ring* head = nullptr;
    for (const cl_branch& b : branches) {
        if (!is_live(b) && !(b.state == CL_TOUCHING && with_touching))
            continue;
        pg_ring* ring = pg_ring_new();
        if (ring) {
            ring->kind = b.state;
            ring->next = head;
            head = ring;
            ring->nodes = nodes_of(b.chain);
        }
        if (!ring || !ring->nodes) {
            pg_free_rings(&head);
            return nullptr;
        }
    }
    return head;
}

} // namespace

void cl_foot(const double* a, const double* b, const double* p, double* out)
{
    const double dx = b[0] - a[0], dy = b[1] - a[1];
    const double length_sq = dx * dx + dy * dy;
    const double share = length_sq > 0.0 ? ((p[0] - a[0]) * dx + (p[1] - a[1]) * dy) / length_sq : 0.0;
    const double x = a[0] + share * dx, y = a[1] + share * dy;
    out[0] = x;
    out[1] = y;
    out[2] = 0.0;
}

pg_ring* pg_centre_lines(const pg_node* chain, double slope, int orientation, int with_touching)
{
    if (!std::isfinite(slope) || slope == 0.0)
        return nullptr;
    work w;
    w.slope = slope;
    w.outline = cl_take_outline(chain, orientation);
    if (w.outline.runs.empty())
        return nullptr;
    cl_network_init(&w.net, w.outline);
    if (!cl_merge_runs(w.outline, w.slope, &w.net))
        return nullptr;
    cl_places ends;
    cl_places_init(&ends, 2 * w.outline.items.size());
    for (const cl_item& item : w.outline.items)
        if (item.kind == CL_SIDE) {
            cl_places_add(&ends, item.from);
            cl_places_add(&ends, item.to);
        }
    place_finder side_ends{ends, {}};
    settle_states(w, side_ends);
    raise(w);
    extend_branches(w, side_ends);
    return rings_of(w.net.branches, with_touching == 1);
}

// chains.h: vertex chains for tests, and where they are tried.
#pragma once

#include <memory>
#include <vector>

#include "drawing/vertex_chain.h"

struct corner {
    double x, y, z = 0.0, bulge = 0.0;
    bool operator==(const corner&) const = default;
};

struct free_vertices {
    void operator()(pl_vertex* head) const { pl_free_vertices(head); }
};
using vertex_chain = std::unique_ptr<pl_vertex, free_vertices>;

// `x` and `y` are added to every position.
inline vertex_chain make_vertices(const std::vector<corner>& corners, double x = 0.0, double y = 0.0)
{
    pl_vertex* head = nullptr;
    pl_vertex** end = &head;
    for (const corner& c : corners) {
        *end = pl_vertex_new(c.x + x, c.y + y, c.z);
        (*end)->bulge = c.bulge;
        end = &(*end)->next;
    }
    return vertex_chain(head);
}

inline std::vector<corner> corners_of(const pl_vertex* chain)
{
    std::vector<corner> corners;
    for (; chain; chain = chain->next)
        corners.push_back({chain->x, chain->y, chain->z, chain->bulge});
    return corners;
}

struct place {
    double x, y;
};
constexpr place PLACES[] = {{0.0, 0.0}, {640000.0, 5120000.0}};

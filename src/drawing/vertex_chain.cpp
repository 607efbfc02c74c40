#include "drawing/vertex_chain.h"

#include <algorithm>
#include <cmath>

#include "common/tolerances.h"
#include "hostapi/ads.h"

namespace
{

constexpr double SHORTEST_PICKED = 0.0001; // segments of this length or less can't be picked

} // namespace

pl_vertex* pl_vertex_new(double x, double y, double z)
{
    auto* vertex = static_cast<pl_vertex*>(acad_malloc(sizeof(pl_vertex)));
    if (vertex)
        *vertex = pl_vertex{1, x, y, z, 0.0, nullptr, nullptr};
    return vertex;
}

void pl_free_vertices(pl_vertex* head)
{
    while (head) {
        pl_vertex* next = head->next;
        acad_free(head);
        head = next;
    }
}

void pl_link_back(pl_vertex* head)
{
    pl_vertex* before = nullptr;
    for (pl_vertex* v = head; v; v = v->next) {
        v->prev = before;
        before = v;
    }
}

pl_vertex* pl_last(pl_vertex* head)
{
    while (head && head->next)
        head = head->next;
    return head;
}

double pl_plan_distance(const pl_vertex& a, const pl_vertex& b)
{
    const double dx = b.x - a.x, dy = b.y - a.y;
    return std::sqrt(dx * dx + dy * dy);
}

pl_vertex* pl_nearest_segment(pl_vertex* head, const ads_point point)
{
    double best_sq = NO_VALUE;
    pl_vertex* best = nullptr;
    for (pl_vertex* a = head; a && a->next; a = a->next) {
        const pl_vertex* b = a->next;
        const double dx = b->x - a->x, dy = b->y - a->y;
        const double length_sq = dx * dx + dy * dy;
        if (!(std::sqrt(length_sq) > SHORTEST_PICKED))
            continue;
        const double t = (dx * (point[0] - a->x) + dy * (point[1] - a->y)) / length_sq;
        const double foot_x = a->x + t * dx, foot_y = a->y + t * dy;
        const bool in_box =
            foot_x >= std::min(a->x, b->x) - LENGTH_TOL && foot_x <= std::max(a->x, b->x) + LENGTH_TOL &&
            foot_y >= std::min(a->y, b->y) - LENGTH_TOL && foot_y <= std::max(a->y, b->y) + LENGTH_TOL;
        const double off_x = foot_x - point[0], off_y = foot_y - point[1];
        const double off_sq = off_x * off_x + off_y * off_y;
        if (in_box && off_sq <= best_sq) {
            best_sq = off_sq;
            best = a;
        }
    }
    return best;
}

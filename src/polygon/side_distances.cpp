#include "polygon/side_distances.h"

#include <cmath>

#include "polygon/measures.h"
#include "polygon/tolerances.h"

namespace
{

double segment_distance_sq(const pg_node& start, const double* point)
{
    pg_node p = start, q = *start.next;
    p.next = &q;
    q.next = nullptr;
    double nearest[3] = {};
    return pg_closest(point, &p, nullptr, nearest);
}

} // namespace

side_distances::side_distances(const pg_node* chain) : chain_(chain)
{
    pg_box_scale scale{};
    for (const pg_node* n = chain; n && n->next; n = n->next) {
        starts_.push_back(n);
        pg_scale_add(&scale, pg_segment_at(*n));
    }
    boxes_ = pg_boxes_new(static_cast<int>(starts_.size()));
    if (!boxes_.nodes)
        return;
    for (std::size_t i = 0; i < starts_.size(); ++i)
        pg_boxes_set(&boxes_, static_cast<int>(i), pg_segment_box(pg_segment_at(*starts_[i]), scale));
}

side_distances::~side_distances()
{
    pg_boxes_free(&boxes_);
}

double side_distances::from(double x, double y)
{
    const double point[3] = {x, y, 0.0};
    if (starts_.empty() || !boxes_.nodes) {
        double nearest[3] = {};
        return std::sqrt(pg_closest(point, chain_, nullptr, nearest));
    }
    double best = PG_NO_VALUE * PG_NO_VALUE;
    const auto try_segment = [&](std::size_t i) {
        const double d = segment_distance_sq(*starts_[i], point);
        if (d < best) {
            best = d;
            nearest_ = i;
        }
    };
    try_segment(nearest_);
    for (int i = 0;; ++i) {
        const double reach = std::sqrt(best);
        i = pg_boxes_next(boxes_, {x - reach, y - reach, x + reach, y + reach}, i);
        if (i < 0)
            return std::sqrt(best);
        try_segment(static_cast<std::size_t>(i));
    }
}

// Ray and segments are lines y = slope x + intercept, those along y excepted. Which place a nearly parallel
// or a touching pair gives is part of the operation's behaviour, so the arithmetic is this one and no other.
#include "tools/ray_hit_chain.h"

#include <algorithm>

namespace
{

constexpr double RAY_LENGTHS = 99999999.9;     // the ray goes on behind a by so many times its length
constexpr double PARALLEL_SLOPE = 1e-8;        // difference that equal slopes are given
constexpr double OFF_THE_RANGE = 9999999999.9; // takes a miss out of every range of x

struct place {
    double x, y;
};

struct straight {
    place from, to;
    bool vertical;
    double slope, intercept; // 0 of a vertical one
};

straight straight_between(place from, place to)
{
    straight line{from, to, from.x == to.x, 0.0, 0.0};
    if (!line.vertical) {
        line.slope = (to.y - from.y) / (to.x - from.x);
        line.intercept = from.y - line.slope * from.x;
    }
    return line;
}

bool between(double value, double end, double other_end)
{
    return value >= std::min(end, other_end) && value <= std::max(end, other_end);
}

// Off both ranges of x when there is no hit.
place crossing(const straight& ray, const straight& segment)
{
    double difference = ray.slope - segment.slope;
    if (difference == 0.0)
        difference = PARALLEL_SLOPE;
    place hit{(segment.intercept - ray.intercept) / difference, 0.0};
    hit.y = ray.slope * hit.x + ray.intercept;
    if (ray.vertical) {
        hit = {ray.from.x, segment.slope * ray.from.x + segment.intercept};
        // Two verticals have no place in common that could be named.
        if (segment.vertical || !between(hit.y, ray.from.y, ray.to.y))
            hit.x -= OFF_THE_RANGE;
    } else if (segment.vertical) {
        hit = {segment.from.x, ray.slope * segment.from.x + ray.intercept};
        if (!between(hit.y, segment.from.y, segment.to.y))
            hit.x -= OFF_THE_RANGE;
    }
    return hit;
}

double height_on_ray(const pl_vertex& a, const pl_vertex& b, bool vertical, place hit)
{
    return vertical ? a.z + (hit.y - a.y) * (b.z - a.z) / (b.y - a.y)
                    : a.z + (hit.x - a.x) * (b.z - a.z) / (b.x - a.x);
}

} // namespace

pl_vertex* ray_hit_chain(const pl_vertex& a, const pl_vertex& b, const pl_vertex* chain)
{
    const place far{a.x + (a.x - b.x) * RAY_LENGTHS, a.y + (a.y - b.y) * RAY_LENGTHS};
    const straight ray = straight_between({b.x, b.y}, far);
    for (const pl_vertex* s = chain; s && s->next; s = s->next) {
        const straight segment = straight_between({s->x, s->y}, {s->next->x, s->next->y});
        const place hit = crossing(ray, segment);
        if (between(hit.x, segment.from.x, segment.to.x) && between(hit.x, ray.from.x, ray.to.x))
            return pl_vertex_new(hit.x, hit.y, height_on_ray(a, b, ray.vertical, hit));
    }
    return nullptr;
}

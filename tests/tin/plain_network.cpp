#include "tests/tin/plain_network.h"

#include <cmath>

plain::point* plain::new_point(network& n, double x, double y, double z)
{
    point& p = n.own_points.emplace_back();
    p.x = x;
    p.y = y;
    p.z = z;
    return &p;
}

plain::barrier* plain::new_barrier(network& n, point* from, point* to)
{
    barrier& b = n.own_barriers.emplace_back();
    b.from = from;
    b.to = to;
    return &b;
}

plain::point* plain::add_point(network& n, point* p)
{
    if (n.skip_zero == 1 && p->z >= -1e-6 && p->z <= 1e-6) {
        n.zero_count += 1;
        return p;
    }
    if (n.contour_interval != 0) {
        double whole;
        const double fraction = std::modf(p->z / n.contour_interval, &whole);
        if (fraction < 1e-6 || fraction > 0.999999)
            p->z += 1e-7;
    }
    p->next = nullptr;
    p->less = nullptr;
    p->more = nullptr;
    p->tri = nullptr;
    if (n.points == nullptr) {
        n.points = p;
        n.point_count += 1;
        return nullptr;
    }
    n.box[0] = p->x - 1e-6;
    n.box[1] = p->x + 1e-6;
    n.box[2] = p->y - 1e-6;
    n.box[3] = p->y + 1e-6;
    point* node = n.points;
    for (;;) {
        if (n.box[0] < node->x && node->x < n.box[1] && n.box[2] < node->y && node->y < n.box[3])
            return node;
        point*& down = p->x > node->x ? node->more : node->less;
        if (down == nullptr) {
            down = p;
            break;
        }
        node = down;
    }
    n.point_count += 1;
    n.tick += 1;
    if (n.tick == 100) {
        n.hundreds += 1;
        n.tick = 0;
        if (!n.quiet)
            n.said += "\rReading points ... " + std::to_string(n.hundreds * 100L);
    }
    return nullptr;
}

void plain::build_frame(network& n)
{
    const double w = n.x_max - n.x_min, h = n.y_max - n.y_min;
    n.frame[0] = new_point(n, -2 * w, 3 * h, 0);
    n.frame[1] = new_point(n, 3 * w, 3 * h, 0);
    n.frame[2] = new_point(n, 3 * w, -2 * h, 0);
    n.frame[3] = new_point(n, -2 * w, -2 * h, 0);
    triangle* first = &n.own_triangles.emplace_back();
    triangle* second = &n.own_triangles.emplace_back();
    first->corner[0] = n.frame[1];
    first->corner[1] = n.frame[0];
    first->corner[2] = n.frame[3];
    first->side[2] = second;
    second->corner[0] = n.frame[3];
    second->corner[1] = n.frame[2];
    second->corner[2] = n.frame[1];
    second->side[2] = first;
    n.triangles = first;
    first->next = second;
}

bool plain::poll_break(network& n)
{
    if (!n.broken && n.break_at > 0 && --n.break_at == 0)
        n.broken = true;
    return n.broken;
}

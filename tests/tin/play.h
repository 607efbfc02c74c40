// play.h: one input given to a network of any making, and all that comes of it as text.
#pragma once

#include <cstdio>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "tests/tin/inputs.h"
#include "tests/tin/plain_network.h"

// A side has `net`, a type `point`, and what `play` calls below.
struct plain_side {
    using point = plain::point;
    plain::network net{};

    point* make(double x, double y, double z) { return plain::new_point(net, x, y, z); }
    point* offer(point* p) { return plain::add_point(net, p); }
    void bar(point* from, point* to)
    {
        plain::barrier* const b = plain::new_barrier(net, from, to);
        b->next = net.barriers;
        net.barriers = b;
        plain::link_barrier(net, b);
    }
    int run() { return plain::triangulate(net); }
    void break_at(int poll) { net.break_at = poll; }
    std::string said() { return net.said; }
};

inline std::string exact(double value)
{
    char text[40];
    std::snprintf(text, sizeof text, "%a", value);
    return text;
}

// Names of the records: input points by number, frame corners, and midpoints in the order met.
class names
{
public:
    void give(const void* p, const std::string& name) { named.emplace(p, name); }
    std::string of(const void* p)
    {
        if (p == nullptr)
            return "-";
        const auto at = named.find(p);
        return at == named.end() ? named.emplace(p, "m" + std::to_string(++extra)).first->second : at->second;
    }

private:
    std::map<const void*, std::string> named;
    int extra = 0;
};

template <class Point>
std::string one_point(const Point* p, names& ids, const std::map<const void*, int>& numbers)
{
    std::string out = ids.of(p) + " " + exact(p->x) + " " + exact(p->y) + " " + exact(p->z) + " tri ";
    const auto at = numbers.find(p->tri);
    out += p->tri == nullptr ? "-" : at == numbers.end() ? "?" : std::to_string(at->second);
    out += " partners";
    for (auto* l = p->partners; l != nullptr; l = l->next)
        out += " " + ids.of(l->point);
    return out + "\n";
}

template <class Net>
std::string write_down(const Net& n, names& ids)
{
    std::map<const void*, int> numbers;
    for (auto* t = n.triangles; t != nullptr; t = t->next)
        numbers.emplace(t, static_cast<int>(numbers.size()));
    std::string out;
    for (auto* t = n.triangles; t != nullptr; t = t->next) {
        out += "triangle";
        for (int i = 0; i < 3; ++i)
            out += " " + ids.of(t->corner[i]);
        for (int i = 0; i < 3; ++i)
            out += " " + (t->side[i] ? std::to_string(numbers.at(t->side[i])) : std::string("-"));
        // Buckets hold points only after a break; in what order says nothing to a reader of the network.
        std::set<std::string> waiting;
        for (auto* l = t->bucket; l != nullptr; l = l->next)
            waiting.insert(ids.of(l->point));
        out += " bucket";
        for (const std::string& name : waiting)
            out += " " + name;
        out += "\n";
    }
    out += "barriers";
    for (auto* b = n.barriers; b != nullptr; b = b->next)
        out += " " + ids.of(b->from) + "/" + ids.of(b->to);
    out += "\n";
    std::map<std::string, std::string> corners; // midpoints are on no list but on triangles
    for (auto* t = n.triangles; t != nullptr; t = t->next)
        for (int i = 0; i < 3; ++i)
            corners[ids.of(t->corner[i])] = one_point(t->corner[i], ids, numbers);
    for (const auto& [name, text] : corners)
        out += text;
    out += "points";
    for (auto* p = n.points; p != nullptr; p = p->next)
        out += " " + ids.of(p);
    out += "\nzero " + std::to_string(n.zero_count) + " failed " + std::to_string(n.failed_barriers) +
           " tick " + std::to_string(n.tick) + " hundreds " + std::to_string(n.hundreds) + " count " +
           std::to_string(n.point_count) + "\nz " + exact(n.z_min) + " " + exact(n.z_max) + "\n";
    return out;
}

// Reads the points, links the barriers and runs; `taken` gets the record of each input point, null where the
// point was dropped.
template <class Side>
std::string play(const tin_inputs::input& in, Side& side, std::vector<typename Side::point*>& taken)
{
    using point = typename Side::point;
    auto& n = side.net;
    n.skip_zero = in.skip_zero;
    n.contour_interval = in.interval;
    n.quiet = in.quiet;
    n.split_on_barriers = in.split;
    side.break_at(in.break_at);
    names ids;
    std::string out;
    point* pending = nullptr;
    for (const tin_inputs::spot& s : in.points) {
        point* p = side.make(s.x, s.y, s.z);
        ids.give(p, std::to_string(taken.size()));
        point* const earlier = side.offer(p);
        out += exact(p->z) + (earlier == nullptr ? " taken\n" : " is " + ids.of(earlier) + "\n");
        if (earlier != nullptr) {
            taken.push_back(earlier == p ? nullptr : earlier);
            continue;
        }
        taken.push_back(p);
        p->next = pending;
        pending = p;
        n.x_min = s.x < n.x_min ? s.x : n.x_min;
        n.x_max = s.x > n.x_max ? s.x : n.x_max;
        n.y_min = s.y < n.y_min ? s.y : n.y_min;
        n.y_max = s.y > n.y_max ? s.y : n.y_max;
    }
    out += "tick " + std::to_string(n.tick) + " hundreds " + std::to_string(n.hundreds) + "\n";
    for (const tin_inputs::ends& e : in.barriers) {
        point *from = taken[static_cast<std::size_t>(e[0])], *to = taken[static_cast<std::size_t>(e[1])];
        if (from != nullptr && to != nullptr && from != to)
            side.bar(from, to);
    }
    n.points = pending;
    out += "result " + std::to_string(side.run()) + "\n";
    for (int i = 0; i < 4; ++i)
        if (n.frame[i] != nullptr)
            ids.give(n.frame[i], "f" + std::to_string(i));
    out += write_down(n, ids);
    std::map<const void*, int> numbers;
    for (auto* t = n.triangles; t != nullptr; t = t->next)
        numbers.emplace(t, static_cast<int>(numbers.size()));
    for (const point* p : taken) // also those that were never inserted
        if (p != nullptr)
            out += one_point(p, ids, numbers);
    return out + side.said();
}

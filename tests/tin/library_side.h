// library_side.h: the network of src/tin as play.h wants it.
#pragma once

#include <memory>
#include <string>
#include <type_traits>

#include "common/user_break.h"
#include "hostapi/ads.h"
#include "tests/tin/compare_host.h"
#include "tin/network.h"

// The one place that knows how src/tin is called.
struct library_side {
    using point = tin_point;
    tin_network& net;

    explicit library_side(tin_network& n) : net(n) { user_break_clear(); }

    point* make(double x, double y, double z)
    {
        point* const p = static_cast<point*>(acad_malloc(sizeof(point)));
        *p = {};
        p->x = x;
        p->y = y;
        p->z = z;
        return p;
    }
    point* offer(point* p) { return tin_add_point(&net, p); }
    void bar(point* from, point* to) { tin_add_barrier(&net, from, to); }
    int run() { return tin_triangulate(&net); }
    void break_at(int poll) { compare_host::break_at(poll); }
    std::string said() { return compare_host::take_text(); }
};

// Records aren't released one by one here; the host takes back its whole heap behind each network. Hence no
// destructor is run either.
struct library_network {
    std::aligned_storage_t<sizeof(tin_network), alignof(tin_network)> room{};
    tin_network* net = new (&room) tin_network;
    library_network() = default;
    library_network(const library_network&) = delete;
    library_network& operator=(const library_network&) = delete;
    ~library_network()
    {
        compare_host::break_at(0);
        compare_host::take_text();
        compare_host::give_all_back();
        user_break_clear();
    }
};

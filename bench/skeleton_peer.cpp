// skeleton_peer: the straight skeleton of the same outlines by CGAL (Debian's libcgal-dev); milliseconds.
//
//     skeleton_peer KIND COUNT          0 convex, 1 wavy, 2 jagged
//
// A straight skeleton has no curves, so on outlines with reflex corners it is the lesser work of the two.
#include <CGAL/Exact_predicates_inexact_constructions_kernel.h>
#include <CGAL/create_straight_skeleton_2.h>

#include <cstdio>
#include <cstdlib>
#include <ctime>

#include "tests/polygon/outlines.h"

int main(int argc, char** argv)
{
    if (argc != 3)
        return 2;
    using kernel = CGAL::Exact_predicates_inexact_constructions_kernel;
    const int kind = std::atoi(argv[1]), count = std::atoi(argv[2]);
    CGAL::Polygon_2<kernel> polygon;
    for (const spot& s :
         kind == 0 ? outlines::convex(1, count) : outlines::star(1, count, kind == 1 ? 0.9 : 0.3))
        polygon.push_back({s.x, s.y});
    const std::clock_t before = std::clock();
    const auto skeleton = CGAL::create_interior_straight_skeleton_2(polygon);
    const double ms = 1000.0 * static_cast<double>(std::clock() - before) / CLOCKS_PER_SEC;
    std::printf("%.1f %zu\n", ms, skeleton ? skeleton->size_of_halfedges() / 2 : 0u);
    return skeleton ? 0 : 1;
}

// tin_peer: the triangulations of tin_bench by CGAL (Debian's libcgal-dev); milliseconds.
//
//     tin_peer KIND COUNT HOW           KIND 0 scattered, 1 sorted, 2 cross sections, 3 grid, 4 with breaklines
//                                       HOW 0 one by one, 1 one by one constrained, 2 as a range, 3 so,
//                                       constrained
//
// A range is put into a good order first, which an insertion one by one can't.
#include <CGAL/Constrained_Delaunay_triangulation_2.h>
#include <CGAL/Delaunay_triangulation_2.h>
#include <CGAL/Exact_predicates_inexact_constructions_kernel.h>

#include <cstdio>
#include <cstdlib>
#include <ctime>

#include "bench/clouds.h"

namespace
{

using kernel = CGAL::Exact_predicates_inexact_constructions_kernel;
using delaunay = CGAL::Delaunay_triangulation_2<kernel>;
using constrained = CGAL::Constrained_Delaunay_triangulation_2<kernel>;

template <class triangulation>
std::size_t triangulate(const std::vector<kernel::Point_2>& points, bool as_range)
{
    triangulation t;
    if (as_range)
        t.insert(points.begin(), points.end());
    else
        for (const kernel::Point_2& p : points)
            t.insert(p);
    return t.number_of_faces();
}

// The ends of breaklines are inserted first, as with us.
std::size_t with_breaklines(const std::vector<kernel::Point_2>& points,
                            const std::vector<std::array<int, 2>>& lines, bool as_range)
{
    constrained t;
    for (const auto& line : lines)
        t.insert_constraint(points[static_cast<std::size_t>(line[0])],
                            points[static_cast<std::size_t>(line[1])]);
    if (as_range)
        t.insert(points.begin(), points.end());
    else
        for (const kernel::Point_2& p : points)
            t.insert(p);
    return t.number_of_faces();
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 4)
        return 2;
    const int kind = std::atoi(argv[1]), count = std::atoi(argv[2]), how = std::atoi(argv[3]);
    const auto spots = clouds::cloud(kind == 4 ? clouds::scattered : kind, count);
    const auto lines = clouds::breaklines(spots, kind == 4 ? count / 10 : 4);
    std::vector<kernel::Point_2> points;
    for (const clouds::spot& s : spots)
        points.push_back({s.x, s.y});
    const std::clock_t before = std::clock();
    const std::size_t faces = kind == 4 ? with_breaklines(points, lines, how >= 2)
                              : how % 2 ? triangulate<constrained>(points, how >= 2)
                                        : triangulate<delaunay>(points, how >= 2);
    const double ms = 1000.0 * static_cast<double>(std::clock() - before) / CLOCKS_PER_SEC;
    std::printf("%.1f %zu\n", ms, faces);
    return faces ? 0 : 1;
}

// ground.cpp: a ground from an edge file: elevations, cut and fill to a level, a path laid on it, and a grid of
// its elevations.
#include <algorithm>
#include <array>
#include <cstdio>
#include <utility>
#include <vector>

#include "common/tolerances.h"
#include "grid/grid.h"
#include "grid/interpolate.h"
#include "polygon/node.h"
#include "topology/surface_net.h"

namespace
{

struct earthwork {
    double cut = 0, cut_area = 0, fill = 0, fill_area = 0;
};

// NO_ELEVATION outside the ground.
double elevation(SurfaceNet& ground, double x, double y)
{
    const double at[3] = {x, y, 0};
    const std::int32_t id = ground.find_triangle(at);
    return id > 0 ? ground.triangle_elevation(id, at) : NO_ELEVATION;
}

// Between the ground and a level plane: cut is the ground above it, fill the room below it.
earthwork volumes(const SurfaceNet& ground, double level)
{
    earthwork sum;
    for (std::int32_t id = 1; id <= ground.triangles.count; ++id) {
        earthwork part; // stays clear where a triangle was taken out
        ground.triangle_volume(id, level, &part.cut, &part.cut_area, &part.fill, &part.fill_area);
        sum.cut += part.cut;
        sum.cut_area += part.cut_area;
        sum.fill += part.fill;
        sum.fill_area += part.fill_area;
    }
    return sum;
}

void print(const char* what, const earthwork& work)
{
    std::printf("%s: cut %.3f on %.3f, fill %.3f on %.3f\n", what, work.cut, work.cut_area, work.fill,
                work.fill_area);
}

// The path and its crossings with the edges of the ground become edges of a ground of its own.
void lay_path(SurfaceNet& ground, double level)
{
    pg_node* path = nullptr; // a chain is built from its end
    for (const auto& at : {std::array{1055.0, 2050.0, 0.0}, {1028.0, 2040.0, 0.0}, {1005.0, 2005.0, 0.0}})
        path = pg_node_push(at.data(), path, 0.0);
    pg_ring paths{path, 0, 0, nullptr};
    SurfaceNet* draped = ground.drape(&paths);
    pl_free_nodes(path);
    if (!draped)
        return;

    // The ground's nodes come first, with the same ids.
    std::vector<const NodeObj*> profile;
    for (std::int32_t id = ground.nodes.count + 1; id <= draped->nodes.count; ++id)
        if (const NodeObj* node = draped->node(id))
            profile.push_back(node);
    std::sort(profile.begin(), profile.end(), [](const auto* a, const auto* b) { return a->x < b->x; });
    for (const NodeObj* node : profile)
        std::printf("path %.3f %.3f %.3f\n", node->x, node->y, node->z);
    print("with the path", volumes(*draped, level));
    delete draped;
}

// A cell each 5 m, null where there is no ground. 1 if the file was written.
int save_grid(SurfaceNet& ground, const char* path)
{
    grid* cells = grid_create(1000, 2000, 5, 5, 13, 12);
    if (!cells)
        return 0;
    for (std::int32_t i = 0; i < grid_cell_count(cells); ++i) {
        const double z = elevation(ground, grid_cell_x(cells, i), grid_cell_y(cells, i));
        grid_write_cell(cells, i, z == NO_ELEVATION ? grid_cell() : grid_cell{z, CELL_VALUE});
    }
    const int saved = grid_save(cells, path);
    grid_free(&cells);
    return saved;
}

} // namespace

int main()
{
    SurfaceNet ground;
    if (!ground.load_edges("ground.txt", 1)) // 1: closes the faces
        return 1;
    for (const auto& [x, y] :
         {std::pair{1010.0, 2010.0}, {1045.0, 2040.0}, {1003.0, 2055.0}, {1100.0, 2000.0}}) {
        const double z = elevation(ground, x, y);
        if (z == NO_ELEVATION)
            std::printf("elevation %.1f %.1f: none\n", x, y);
        else
            std::printf("elevation %.1f %.1f: %.3f\n", x, y, z);
    }
    constexpr double LEVEL = 52.5;
    print("ground", volumes(ground, LEVEL));
    lay_path(ground, LEVEL);

    if (!save_grid(ground, "ground.grd"))
        return 1;
    grid* cells = grid_load("ground.grd");
    if (!cells)
        return 1;
    std::printf("grid: %d cells, %d of them null\n", grid_cell_count(cells), grid_null_count);
    const double at[3] = {1012.5, 2017.5, 0};
    std::printf("grid %.1f %.1f: %.3f\n", at[0], at[1], grid_interpolate(at, cells));
    grid_free(&cells);
}

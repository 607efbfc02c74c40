// Something of each folder, so that a function of the host that one of them wants and nobody gives fails to
// link.
#include "grid/fill.h"
#include "grid/interpolate.h"
#include "polygon/offset.h"
#include "spatial/kd_tree.h"
#include "tin/network.h"
#include "topology/min_heap.h"
#include "topology/shape_net.h"
#include "topology/surface_net.h"

int main()
{
    const double at[3] = {1, 2, 3};
    pg_node* point = pg_node_new(at);
    pg_node* parallel = pg_offset(point, 1.0, 1, 0, 1);
    pl_free_nodes(point);
    pl_free_nodes(parallel);

    kd_tree* tree = kd_create(1, 2, 10);
    const int known = tree && kd_add(tree, 1, 2, 3, 7, nullptr) == 7;
    kd_free_list(&tree);

    grid* cells = grid_constant(nullptr, 1.0);
    grid_fill_nulls(cells, 0, 'A');
    grid_free(&cells);
    tin_network network;
    network.points = nullptr;
    tin_triangulate(&network);
    ShapeNet shapes(2);
    shapes.cut_crossings();
    SurfaceNet surface;
    surface.close_faces();
    MinHeap heap;
    return known && heap.count == 0 && surface.find_triangle(at) == -1 ? 0 : 1;
}

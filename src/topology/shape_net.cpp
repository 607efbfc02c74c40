#include "topology/shape_net.h"

#include "topology/walk.h"

std::int32_t ShapeNet::add_shape(ShapeObj* shape)
{
    if (!shape)
        return 0;
    const std::int32_t id = shapes.add(shape);
    if (id == 0)
        return 0;
    shape->id = id;
    for (std::int32_t i = first_of(shape->edges); i != 0; i = shape->edges.next(i))
        if (ShapeEdge* member = edge(shape->edges.get(i)->id))
            member->link(id);
    return id;
}

void ShapeNet::remove_shape(std::int32_t id)
{
    const ShapeObj* gone = shape(id);
    if (!gone)
        return;
    for (std::int32_t i = first_of(gone->edges); i != 0; i = gone->edges.next(i))
        if (ShapeEdge* member = edge(gone->edges.get(i)->id))
            member->unlink(id);
    shapes.remove(id);
}

std::int32_t ShapeNet::add_edge(ShapeEdge* edge)
{
    return take_edge(edge);
}

void ShapeNet::remove_edge(std::int32_t id)
{
    const ShapeEdge* gone = edge(id);
    if (!gone)
        return;
    for (std::int32_t i = first_of(gone->shapes); i != 0; i = gone->shapes.next(i))
        if (ShapeObj* of = shape(gone->shapes.get(i)->id))
            of->unlink(id);
    let_edge_go(*gone);
}

void ShapeNet::remove_node(std::int32_t id)
{
    nodes.remove(id);
}

std::int32_t ShapeNet::intern_node(double x, double y, double z)
{
    auto* made = new NodeObj(x, y, z);
    std::int32_t id = find_node(made);
    if (id == 0 && (id = add_node(made)) != 0)
        return id;
    delete made;
    return id;
}

std::int32_t ShapeNet::intern_edge(std::int32_t node1, std::int32_t node2, double bulge)
{
    auto* made = new ShapeEdge(node1, node2, bulge);
    std::int32_t id = find_edge(made);
    if (id == 0 && (id = add_edge(made)) != 0)
        return id;
    delete made;
    return id;
}

std::int32_t ShapeNet::connect(std::int32_t node1, std::int32_t node2, double bulge, ShapeObj* shape,
                               std::int32_t shape_id)
{
    const std::int32_t id = intern_edge(node1, node2, bulge);
    ShapeEdge* between = edge(id);
    if (!between || !shape)
        return id;
    between->link(shape_id);
    shape->link(id);
    return id;
}

void ShapeNet::add_chain(ShapeObj* shape, const pg_node* vertices, std::uint8_t color, std::uint8_t closed)
{
    if (!shape) {
        shape = new ShapeObj;
        if (add_shape(shape) == 0) {
            delete shape;
            return;
        }
        shape->color = color;
    }
    shape->kind = ShapeKind::POLYLINE;
    shape->closed = closed;
    std::int32_t first = 0, last = 0;
    double bulge = 0;
    for (const pg_node* v = vertices; v; v = v->next) {
        const std::int32_t here = intern_node(v->x, v->y, v->z);
        if (here == 0)
            return;
        if (v == vertices)
            first = here;
        else
            connect(last, here, bulge, shape, shape->id);
        last = here;
        bulge = v->bulge;
    }
    if (closed && first != 0)
        connect(last, first, bulge, shape, shape->id);
}

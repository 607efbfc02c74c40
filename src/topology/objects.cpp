#include "topology/objects.h"

#include <algorithm>
#include <limits>

#include "common/tolerances.h"
#include "hostapi/ads.h"

namespace
{

void add_holder(ObjectArray* holders, std::int32_t id)
{
    TopoObject* holder = new TopoObject;
    if (!holder)
        return;
    holder->id = id;
    if (!holders->add(holder))
        delete holder;
}

void remove_holder(ObjectArray* holders, std::int32_t id)
{
    holders->remove(holders->find(id));
}

// Cut off towards 0; what doesn't fit becomes the nearest number that does, and what is no number 0.
std::int32_t whole(double value)
{
    if (value != value)
        return 0;
    constexpr double least = std::numeric_limits<std::int32_t>::min();
    constexpr double most = std::numeric_limits<std::int32_t>::max();
    return static_cast<std::int32_t>(std::clamp(value, least, most));
}

} // namespace

double NodeObj::get(std::int32_t i) const
{
    return i == 0 ? x : i == 1 ? y : i == 2 ? z : NO_VALUE;
}

void NodeObj::set(std::int32_t i, double value)
{
    if (i == 0)
        x = value;
    else if (i == 1)
        y = value;
    else if (i == 2)
        z = value;
}

void NodeObj::link(std::int32_t edge)
{
    edges.add(edge);
}

void NodeObj::unlink(std::int32_t edge)
{
    edges.remove(edges.find(edge));
}

TopoObject* NodeObj::clone() const
{
    return new NodeObj(x, y, z);
}

double EdgeKey::get(std::int32_t i) const
{
    switch (i) {
    case 0:
        return std::min(node1, node2);
    case 1:
        return std::max(node1, node2);
    case 2:
        return node1 < node2 ? bulge : -bulge;
    default:
        return NO_VALUE;
    }
}

void EdgeKey::set(std::int32_t i, double value)
{
    if (i == 0)
        node1 = whole(value);
    else if (i == 1)
        node2 = whole(value);
    else if (i == 2)
        bulge = value;
}

TopoObject* EdgeKey::clone() const
{
    return new EdgeKey(node1, node2, bulge);
}

void EdgeObj::link(std::int32_t triangle)
{
    (triangle < 1 ? left : right) = triangle;
}

void EdgeObj::unlink(std::int32_t triangle)
{
    (triangle < 1 ? left : right) = 0;
}

void ShapeEdge::link(std::int32_t shape)
{
    if (shape < 0)
        acutPrintf("Connects to %d\n", shape);
    add_holder(&shapes, shape);
}

void ShapeEdge::unlink(std::int32_t shape)
{
    remove_holder(&shapes, shape);
}

void ShapeObj::link(std::int32_t edge)
{
    add_holder(&edges, edge);
}

void ShapeObj::unlink(std::int32_t edge)
{
    remove_holder(&edges, edge);
}

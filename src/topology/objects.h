// objects.h: the objects of networks: nodes, edges, shapes and triangles.
//
// They refer to each other by id. A network owns its objects through its arrays; an object that was only made
// for a look-up is released by who made it. Where the heap is exhausted `link` notes nothing.
#pragma once

#include "hostapi/adsdef.h"
#include "topology/holder_array.h"
#include "topology/id_list.h"
#include "topology/object.h"
#include "topology/object_array.h"

struct TopoNet; // the network that an object belongs to; set by it

// A point with the edges that end there. Key: x, y, z.
class NodeObj : public TopoObject
{
public:
    double x = 0, y = 0, z = 0;
    IdList edges; // of which some may be gone, see IdList::remove
    TopoNet* owner = nullptr;
    std::uint8_t mark = 0; // for a walk

    NodeObj() : TopoObject(3) {}
    NodeObj(double px, double py, double pz) : TopoObject(3), x(px), y(py), z(pz) {}

    double get(std::int32_t i) const override;
    void set(std::int32_t i, double value) override;
    void link(std::int32_t edge) override;
    void unlink(std::int32_t edge) override;
    TopoObject* clone() const override;
};

// An edge between two nodes, as a point among edges: its key is the smaller node id, the greater one, and the
// bulge as seen from the smaller one. So an edge has one key from either end.
class EdgeKey : public TopoObject
{
public:
    std::int32_t node1 = 0, node2 = 0; // in the direction in which the edge was made
    double bulge = 0;                  // tangent of a quarter of the arc's angle, seen from node1; 0 straight
    TopoNet* owner = nullptr;
    std::uint8_t mark = 0;

    EdgeKey() : TopoObject(3) {}
    EdgeKey(std::int32_t from, std::int32_t to, double b) : TopoObject(3), node1(from), node2(to), bulge(b) {}

    double get(std::int32_t i) const override;
    // Stores as it stands: 0 node1, 1 node2 (whole numbers, cut off), 2 bulge.
    void set(std::int32_t i, double value) override;
    // A plain key with the same values.
    TopoObject* clone() const override;
};

// An edge of a surface. Ids of triangles are signed: negative where the triangle walks against the edge.
class EdgeObj : public EdgeKey
{
public:
    std::int32_t left = 0, right = 0; // the triangle on each side, 0 none
    std::int64_t walk = 0;            // the last walk round a face that came along

    using EdgeKey::EdgeKey;
    void link(std::int32_t triangle) override; // below 1 on the left, otherwise on the right
    void unlink(std::int32_t triangle) override;
};

// An edge of a shape network.
class ShapeEdge : public EdgeKey
{
public:
    ObjectArray shapes; // holders of shape ids
    // The arc, while `arc_ready` is 1; angles in radians, counter-clockwise from start to end.
    double center[3] = {};
    double radius = 0, start_angle = 0, end_angle = 0;
    std::uint8_t arc_ready = 0;
    std::int32_t left_shape = 0, right_shape = 0; // 0: that side hasn't been traced

    using EdgeKey::EdgeKey;
    void link(std::int32_t shape) override; // a negative id is told, and noted all the same
    void unlink(std::int32_t shape) override;
};

enum class ShapeKind : std::uint8_t { NONE = 0, LINE = 1, POLYLINE = 2, CLOSED_FACE = 3, OPEN_FACE = 4 };

// What a drawing object or a cell of a grid has brought, or a face that was traced. No key.
class ShapeObj : public TopoObject
{
public:
    HolderArray edges; // of edge ids
    ShapeKind kind = ShapeKind::NONE;
    std::uint8_t closed = 0;
    std::uint8_t visible = 1;
    std::uint8_t color = 0; // of what it was made from
    ads_name entity = {};

    void link(std::int32_t edge) override;
    void unlink(std::int32_t edge) override;
};

// A triangle of a surface. No key.
class TriangleObj : public TopoObject
{
public:
    std::int32_t edge[3] = {}; // negative: walked against its direction
};

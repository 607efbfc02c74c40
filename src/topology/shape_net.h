// shape_net.h: drawing objects and grids as a planar graph. Every vertex becomes a node, every segment or arc
// an edge, what they came from a shape; crossing edges are cut, and closed faces are traced.
//
//     ShapeNet net(3);
//     net.add_chain(nullptr, outline, color, 1);
//     net.add_chain(nullptr, road, color, 0);
//     net.cut_crossings();
//     net.cut_at_near_nodes();
//     pg_ring* faces = net.trace_faces();
//
// Objects are found by id, from 1; 0 is none. Objects that are the caller's go back with `delete`. Where the
// heap is exhausted an operation does what it can: a node or edge that has no room isn't there, and nothing is
// lost that was.
#pragma once

#include <cstdint>

#include "hostapi/adsdef.h"
#include "polygon/node.h"
#include "topology/topo_net.h"

struct grid;

// Fields in order: nodes, edges (of TopoNet), shapes, tolerance. Edges are ShapeEdge, shapes ShapeObj.
class ShapeNet : public TopoNet
{
public:
    ObjectArray shapes;
    double tolerance = 1e-6; // of cut_at_near_nodes

    // How many values of the keys of nodes and edges count: 3, or 2, where places of any height are one node
    // and all edges between two nodes are one.
    explicit ShapeNet(std::int32_t dimensions) : TopoNet(dimensions) {}

    // ---- objects one by one. What `add` takes is the network's, and gets its id; the answer is that id, or 0
    // without memory, with the object still the caller's. Nodes and edges are looked for before they are added
    // (KdSet::find).
    std::int32_t add_shape(ShapeObj* shape); // edges that it holds are linked back to it
    void remove_shape(std::int32_t id);      // from its edges too
    std::int32_t add_edge(ShapeEdge* edge);  // linked into its end nodes
    void remove_edge(std::int32_t id);       // from its nodes and shapes too
    void remove_node(std::int32_t id);       // edges that end there stay
    std::int32_t find_node(NodeObj* node) { return nodes.find(node); }
    std::int32_t find_edge(EdgeKey* edge) { return edges.find(edge); }

    ShapeEdge* edge(std::int32_t id) const { return static_cast<ShapeEdge*>(edges.get(id)); }
    ShapeObj* shape(std::int32_t id) const { return static_cast<ShapeObj*>(shapes.get(id)); }

    // Found, or made; 0 without memory.
    std::int32_t intern_node(double x, double y, double z);
    std::int32_t intern_edge(std::int32_t node1, std::int32_t node2, double bulge);
    // An edge found or made, and, unless `shape` is null, in the shape. The edge's id.
    std::int32_t connect(std::int32_t node1, std::int32_t node2, double bulge, ShapeObj* shape,
                         std::int32_t shape_id);

    // ---- whole inputs
    // The chain as edges of `shape`, or of a new one of that colour. `closed`: also from its end to its head,
    // with the last node's bulge. Vertices on one place make an edge from a node to itself.
    void add_chain(ShapeObj* shape, const pg_node* vertices, std::uint8_t color, std::uint8_t closed);
    // A LINE, 3DFACE or polyline of the drawing; its colour is that of its layer for by layer. Faces are open
    // chains: their closing edge is never made. For programs in a CAD host: a library of its own.
    void add_entity(const ads_name entity);
    // A node for each cell with a value, and a shape for each square between four cells: the open chain through
    // its corners, without edges where fewer than three have a value. Colours are the heights of `grid_attr`,
    // `mark` is whether the shapes are visible. A break is told, and ends it with what there is.
    void add_grid(grid* grid_z, grid* grid_attr, std::uint8_t mark);

    // ---- cutting
    // How many points, 0 to 2, two edges have in common in the plane; writes that many (x, y, z), at the height
    // of the first edge.
    int edge_crossings(ShapeEdge* edge, ShapeEdge* other, double* first, double* second);
    // How far a place lies along an edge: from its first node on a straight one, on an arc (other than one
    // that stays within 1e-6 of its chord) counter-clockwise from the arc's start. With 2 dimensions the first
    // node counts as at height 0. NO_VALUE for an edge of no network.
    double edge_position(ShapeEdge* edge, const double* point, std::int32_t dimensions);
    // Puts two edges that meet at the node in the place of one; in its shapes they stand at the end. The id of
    // the first of them; 0, with the edge as it was, where the node is an end of it or something is missing.
    std::int32_t split_edge(std::int32_t edge_id, std::int32_t node_id);
    // Cuts edges where they cross, overlap or touch.
    void cut_crossings();
    // Cuts edges at nodes that lie within `tolerance` of their chord.
    void cut_at_near_nodes();

    // ---- faces
    // The edges round the face on the left of an edge, walked from its lower node to its higher one if
    // `forward`; the caller's. The face's id stands on the side of each. Null for a face that doesn't close.
    ShapeObj* trace_face(std::int32_t edge_id, std::int32_t face_id, bool forward);
    // All faces that close, the last one first: inner ones counter-clockwise, outer ones clockwise and marked
    // so. A side of an edge that has its face isn't walked again, so a second call gives none. The caller's
    // (pg_free_rings).
    pg_ring* trace_faces();
    pg_node* face_to_chain(const ShapeObj* face) const;
    // 0 outside, 1 inside, 2 on the boundary. Arcs count as chords.
    int point_in_face(const ShapeObj* face, const double* point) const;

private:
    bool cut_pair(std::int32_t first, std::int32_t second);
    void cut_near_node(std::int32_t edge_id);
};

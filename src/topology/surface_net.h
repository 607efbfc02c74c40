// surface_net.h: a triangulated surface: nodes with elevations, straight edges with a triangle on each side,
// triangles that name their edges.
//
//     SurfaceNet surface;
//     surface.load_edges("ground.txt", 1);
//     const std::int32_t at = surface.find_triangle(point);
//     const double z = at > 0 ? surface.triangle_elevation(at, point) : NO_ELEVATION;
//
// Objects are found by id, from 1; 0 is none. The surface owns all that is added to it. Points are three
// doubles x, y, z; triangles are looked at in the plane of x and y. Nodes that stand in a surface don't move in
// x and y. Objects and surfaces that are the caller's go back with `delete`.
//
// Where the heap is exhausted an operation does what it can: a node, edge or triangle for which there is no
// room isn't there, and nothing is lost that was.
#pragma once

#include <cstdint>

#include "polygon/node.h"
#include "polygon/segment_boxes.h"
#include "topology/topo_net.h"

constexpr int TRIANGLE_CACHE_SIZE = 20;

// Triangles that find_triangle has found, the newest last. One for all surfaces.
struct triangle_id_cache {
    std::int32_t ids[TRIANGLE_CACHE_SIZE];
    std::int32_t count;
};
extern triangle_id_cache triangle_cache;

class BoxIndex;
struct face_closing;

// Fields in order: nodes, edges (of TopoNet), triangles. Edges are EdgeObj with bulge 0, triangles TriangleObj.
//
// An edge runs from its lower node to its higher one. Whatever walks it in that direction names it by its id,
// and what walks it against that by -id: triangles their edges, and edges their triangles, `right` those that
// walk it forward and `left` those that walk it backward. Triangles that are made from faces run
// counter-clockwise.
class SurfaceNet : public TopoNet
{
public:
    ObjectArray triangles;

    SurfaceNet() : TopoNet(3) {}
    SurfaceNet(const SurfaceNet&) = delete;
    SurfaceNet& operator=(const SurfaceNet&) = delete;
    ~SurfaceNet();

    EdgeObj* edge(std::int32_t id) const { return static_cast<EdgeObj*>(edges.get(id)); } // without sign
    TriangleObj* triangle(std::int32_t id) const { return static_cast<TriangleObj*>(triangles.get(id)); }

    // ---- objects one by one. What `add` takes is the surface's, and gets its id; the answer is that id, or 0
    // without memory, with the object still the caller's. Nodes and edges are looked for before they are added
    // (KdSet::find). What is removed is taken out of the objects that name it, but not these with it.
    void remove_node(std::int32_t id);
    std::int32_t add_edge(EdgeObj* edge);             // linked into its end nodes
    void remove_edge(std::int32_t id);                // from them too
    std::int32_t add_triangle(TriangleObj* triangle); // linked into its edges
    void remove_triangle(std::int32_t id);            // from them too

    std::int32_t find_node(NodeObj* node) { return nodes.find(node); }
    // Whether an edge with that key stands at its lower node, 1 or 0.
    int find_edge(const EdgeKey* edge) const;

    // ---- found, or made. The id; 0 without memory.
    std::int32_t intern_node(const double* point);
    std::int32_t intern_edge(std::int32_t node1, std::int32_t node2, double bulge);
    // intern_edge; unless `triangle` is null the edge is linked to it, too, and the id is negative where the
    // edge runs from node2 to node1.
    std::int32_t connect(std::int32_t node1, std::int32_t node2, double bulge, TriangleObj* triangle,
                         std::int32_t triangle_id);

    // ---- triangles from edges, named without sign
    // 1 if there is a triangle that all three edges name.
    int triangle_exists(std::int32_t edge1, std::int32_t edge2, std::int32_t edge3) const;
    // The triangle that walks three edges in this order; its id, 0 if an edge is missing.
    std::int32_t new_triangle(std::int32_t edge1, std::int32_t edge2, std::int32_t edge3);
    // The same from its corners, with nodes and edges as needed, unless it exists. Its id in either case; 0 for
    // corners on one place.
    std::int32_t triangle_from_points(const double* p1, const double* p2, const double* p3);

    // ---- asking
    // The corners as node ids. 1, or 0 with a message when the triangle or one of its first two edges is gone.
    int triangle_corners(std::int32_t id, std::int32_t* a, std::int32_t* b, std::int32_t* c) const;
    // 1 if the areas that the point spans with the corners add up to the triangle's within 1e-6: so thin
    // triangles reach beyond their edges, and one without area holds all of its line.
    int point_in_triangle(std::int32_t id, const double* point) const;
    // Of the triangle's plane above the point. NO_ELEVATION without corners, with a message, or without area.
    double triangle_elevation(std::int32_t id, const double* point) const;
    // A triangle that holds the point: the first of `triangle_cache`, else that with the least id, which enters
    // the cache; -1 if there is none.
    std::int32_t find_triangle(const double* point);
    // Volumes and plan areas between the triangle and a level plane, above it (cut) and below it (fill). All
    // four are 0 for a triangle that isn't there. Of a clockwise triangle they are negative, and volumes are 0
    // where the level cuts it.
    void triangle_volume(std::int32_t id, double level, double* volume_above, double* area_above,
                         double* volume_below, double* area_below) const;

    // ---- faces
    // The edges round the face on the left of an edge, walked from its lower node to its higher one if
    // `forward`; the caller's. A walk that comes back to one of its own edges ends there. Null when there is no
    // way on.
    ShapeObj* trace_face(std::int32_t edge_id, bool forward);
    pg_node* face_to_chain(const ShapeObj* shape) const;
    // Makes triangles of all faces: of three edges as they are (the outer face of a lone triangle is one, too,
    // and runs clockwise), of inner ones with more after new edges have been put in.
    void close_faces();

    // ---- cutting
    // Puts two edges that meet at the node in the place of one; its triangles go. The id of the first of them;
    // 0, with nothing changed, where the node is an end of the edge or something is missing.
    std::int32_t split_edge(std::int32_t edge_id, std::int32_t node_id);
    // Cuts edges where they cross, overlap or touch in the plane, at the height of the one with the lower id.
    // Triangles at edges that are cut go, here and in merge_chain: close_faces makes new ones.
    void cut_crossings();
    // Cuts edges where the chain crosses them, at their own height. The crossings become vertices of the chain;
    // between two that follow each other there is an edge. Arcs count as chords.
    void merge_chain(pg_node* chain);

    // ---- whole inputs
    // Edges from a text file: a title line, then two lines an edge, each a free character and x, y, z. Pairs
    // that are no edge are told by their line and left out. `make_triangles` not 0: close_faces. 1 if the file
    // opened.
    int load_edges(const char* path, int make_triangles);
    // A new surface with the same nodes and edges, without triangles; the caller's. Null without memory.
    SurfaceNet* copy_edges() const;
    // A new surface with the edges of this one and those of the polylines, laid on this one, cut where they
    // cross, and with triangles; the caller's. Vertices outside keep their height. Null without memory.
    SurfaceNet* drape(const pg_ring* polylines);

private:
    BoxIndex* index_ = nullptr;    // of the triangles, made by find_triangle
    pg_box index_domain_{};        // points for which its boxes hold
    std::int32_t index_start_ = 0; // triangles when it was made
    std::int64_t walks_ = 0;       // numbers of walks round faces given so far
    bool has_overlaid_ = false;    // a side of an edge was taken over by another triangle

    std::int32_t common_triangle(std::int32_t edge1, std::int32_t edge2, std::int32_t edge3) const;
    int corners_of(std::int32_t id, std::int32_t (&corners)[3]) const;
    bool corner_nodes(std::int32_t id, const NodeObj* (&corners)[3]) const;
    pg_box reach_of(std::int32_t id) const;
    pg_box domain_of_triangles() const;
    bool bring_index_up_to_date();
    std::int32_t first_holding(const double* point);
    void drop_index();
    void close_face(std::int32_t edge_id, bool forward, face_closing* work);
};

// Puts edges into the surface so that the inside of the chain, whose vertices are nodes of it, falls into
// triangles.
void tin_fill_face(SurfaceNet* surface, const pg_node* chain);

// Networks beside the plain transcription, on inputs of chance: the same ids, places, references, sides and
// faces to the last bit.
#include <cmath>
#include <cstdio>
#include <numbers>
#include <random>

#include "grid/grid.h"
#include "tests/topology/plain_shape_net.h"
#include "tests/topology/shape_nets.h"
#include "topology/walk.h"

namespace
{

using plain_shapes::net;

// ---- both as text

std::string number(double v)
{
    char text[40];
    std::snprintf(text, sizeof text, "%.17g ", v + 0.0);
    return text;
}

std::string list_of(const std::vector<int>& ids)
{
    std::string text;
    for (const int id : ids)
        text += (text.empty() ? "" : " ") + std::to_string(id);
    return text;
}

std::string dump(const net& plain)
{
    std::string text;
    int id = 0;
    for (const plain_shapes::node& n : plain.nodes)
        text += "node " + std::to_string(++id) + " " + number(n.x) + number(n.y) + number(n.z) + " " +
                list_of(n.edges) + "\n";
    id = 0;
    for (const plain_shapes::edge& e : plain.edges)
        text += "edge " + std::to_string(++id) + (e.deleted ? " gone " : " ") + std::to_string(e.node1) + " " +
                std::to_string(e.node2) + " " + number(e.bulge) + "shapes " + list_of(e.shapes) + " sides " +
                std::to_string(e.left) + " " + std::to_string(e.right) + "\n";
    id = 0;
    for (const plain_shapes::shape& s : plain.shapes)
        text += "shape " + std::to_string(++id) + " kind " + std::to_string(s.kind) + " " +
                std::to_string(s.closed) + std::to_string(s.visible) + " " + std::to_string(s.color) +
                " edges " + list_of(s.edges) + "\n";
    return text;
}

std::string dump_of(const ShapeNet& shapes)
{
    std::string text;
    for (std::int32_t i = 1; i <= shapes.nodes.count; ++i) {
        const NodeObj& n = *shapes.node(i);
        std::vector<int> edges;
        for (std::int32_t k = 1; k <= n.edges.count; ++k)
            edges.push_back(n.edges.get(k));
        text += "node " + std::to_string(i) + " " + number(n.x) + number(n.y) + number(n.z) + " " +
                list_of(edges) + "\n";
    }
    for (std::int32_t i = 1; i <= shapes.edges.count; ++i) {
        const auto& e = *static_cast<const ShapeEdge*>(shapes.edges.items[i - 1]);
        text += "edge " + std::to_string(i) + (e.deleted ? " gone " : " ") + std::to_string(e.node1) + " " +
                std::to_string(e.node2) + " " + number(e.bulge) + "shapes " + held_by(e.shapes) + " sides " +
                std::to_string(e.left_shape) + " " + std::to_string(e.right_shape) + "\n";
    }
    for (std::int32_t i = first_of(shapes.shapes); i != 0; i = shapes.shapes.next(i)) {
        const ShapeObj& s = *shapes.shape(i);
        text += "shape " + std::to_string(i) + " kind " + std::to_string(static_cast<int>(s.kind)) + " " +
                std::to_string(s.closed) + std::to_string(s.visible) + " " + std::to_string(s.color) +
                " edges " + held_by(s.edges) + "\n";
    }
    return text;
}

std::string exact_text(const pg_ring* rings)
{
    std::string text;
    for (const pg_ring* r = rings; r; r = r->next) {
        text += r->clockwise ? "! " : "";
        for (const pg_node* n = r->nodes; n; n = n->next)
            text += number(n->x) + number(n->y) + number(n->z) + number(n->bulge) + ", ";
        text += "\n";
    }
    return text;
}

std::string exact_text(const std::vector<plain_shapes::ring>& rings)
{
    std::string text;
    for (const plain_shapes::ring& r : rings) {
        text += r.clockwise ? "! " : "";
        for (const plain_shapes::vertex& v : r.vertices)
            text += number(v.x) + number(v.y) + number(v.z) + number(v.bulge) + ", ";
        text += "\n";
    }
    return text;
}

// ---- inputs

enum class input {
    SCATTERED,
    ARCS,
    WHOLE_ARCS, // ends on whole places, half circles and more
    ROUGH,      // ends on whole places: T junctions, shared ends, doubles
    LINES,
    COLLINEAR,
    CHAINS,
    CHAINS_WITH_ARCS,
    BULGES, // from next to none to nearly whole circles
    FAR_AWAY,
    STAR,
    HEIGHTS,
    RECTANGLES,
    KINDS
};

struct polyline {
    std::vector<plain_shapes::vertex> vertices;
    bool closed;
};

class source
{
public:
    source(input kind, unsigned seed) : kind_(kind), random_(seed * 64 + static_cast<unsigned>(kind)) {}

    std::vector<polyline> lines()
    {
        const bool has_chains =
            kind_ == input::CHAINS || kind_ == input::CHAINS_WITH_ARCS || kind_ == input::RECTANGLES;
        std::vector<polyline> made;
        for (int count = has_chains ? whole(1, 6) : whole(2, 18); count > 0; --count)
            made.push_back(line(count));
        if (whole(0, 3) == 0)
            made.push_back(made.front());
        return made;
    }
    double real(double a, double b) { return std::uniform_real_distribution<double>(a, b)(random_); }
    int whole(int a, int b) { return std::uniform_int_distribution<int>(a, b)(random_); }

private:
    input kind_;
    std::mt19937 random_;

    polyline segment(double x0, double y0, double x1, double y1, double bulge = 0, double z0 = 0, double z1 = 0)
    {
        return {{{x0, y0, z0, bulge}, {x1, y1, z1, 0}}, false};
    }
    double any_bulge()
    {
        const double size = std::pow(10.0, real(-9, 3));
        return whole(0, 1) ? size : -size;
    }
    polyline chain(double arcs)
    {
        polyline made{{}, whole(0, 1) != 0};
        for (int k = whole(2, 7); k > 0; --k)
            made.vertices.push_back(
                {whole(0, 40) * 0.25, whole(0, 40) * 0.25, 0, real(0, 1) < arcs ? real(-1.5, 1.5) : 0});
        return made;
    }
    polyline line(int at)
    {
        switch (kind_) {
        case input::ARCS:
            return segment(real(0, 12), real(0, 12), real(0, 12), real(0, 12), whole(0, 3) ? real(-3, 3) : 0);
        case input::WHOLE_ARCS:
            return segment(whole(0, 4), whole(0, 4), whole(0, 4), whole(0, 4), whole(-3, 3) * 0.5);
        case input::ROUGH:
            return segment(whole(0, 4), whole(0, 4), whole(0, 4), whole(0, 4));
        case input::LINES: {
            const double across = whole(0, 9), from = whole(-1, 3), to = whole(6, 10);
            return at % 2 ? segment(across, from, across, to) : segment(from, across, to, across);
        }
        case input::COLLINEAR: {
            const int a = whole(0, 12), b = whole(0, 12), turn = whole(0, 2);
            return segment(a, turn * a * 0.5, b, turn * b * 0.5);
        }
        case input::CHAINS:
            return chain(0);
        case input::CHAINS_WITH_ARCS:
            return chain(0.4);
        case input::BULGES:
            return segment(real(0, 12), real(0, 12), real(0, 12), real(0, 12), any_bulge());
        case input::FAR_AWAY: {
            const double x = 640000 + real(0, 50), y = 5120000 + real(0, 50);
            return segment(x, y, x + real(-30, 30), y + real(-30, 30), whole(0, 3) ? 0 : real(-1, 1));
        }
        case input::STAR: {
            const double angle = whole(0, 23) * std::numbers::pi / 12, r = whole(1, 3) * 5;
            return segment(-r * std::cos(angle), -r * std::sin(angle), 10 * std::cos(angle),
                           10 * std::sin(angle));
        }
        case input::HEIGHTS:
            return segment(whole(0, 6), whole(0, 6), whole(0, 6), whole(0, 6), whole(0, 4) ? 0 : real(-1, 1),
                           whole(0, 2), whole(0, 2));
        case input::RECTANGLES: {
            const double x = whole(0, 8), y = whole(0, 8), w = whole(1, 6), h = whole(1, 6);
            return {{{x, y, 0, 0}, {x + w, y, 0, 0}, {x + w, y + h, 0, 0}, {x, y + h, 0, 0}}, true};
        }
        default:
            return segment(real(0, 20), real(0, 20), real(0, 20), real(0, 20));
        }
    }
};

void fill(ShapeNet* shapes, net* plain, const std::vector<polyline>& lines)
{
    for (const polyline& line : lines) {
        path same;
        for (const plain_shapes::vertex& v : line.vertices)
            same.push_back({v.x, v.y, v.z, v.bulge});
        add_path(shapes, same, line.closed);
        plain->add_chain(0, line.vertices, 7, line.closed);
    }
}

template <class Test>
void for_all_inputs(unsigned seeds, Test test)
{
    for (int kind = 0; kind < static_cast<int>(input::KINDS); ++kind)
        for (unsigned seed = 1; seed <= seeds; ++seed) {
            source from(static_cast<input>(kind), seed);
            test(from);
            ASSERT_FALSE(testing::Test::HasFailure()) << "kind " << kind << " seed " << seed;
        }
}

using ShapePlain = Collection;

void expect_same_faces(ShapeNet* shapes, net* plain)
{
    pg_ring* rings = shapes->trace_faces();
    ASSERT_EQ(exact_text(rings), exact_text(plain->trace_faces()));
    pg_free_rings(&rings);
    ASSERT_EQ(dump_of(*shapes), dump(*plain));
    for (std::int32_t i = first_of(shapes->edges); i != 0; i = shapes->edges.next(i))
        ASSERT_EQ(shapes->edge(i)->mark, 0) << i; // a walk takes its marks away again
}

TEST_F(ShapePlain, CutsAndFacesAreThoseOfAllPairs)
{
    for_all_inputs(60, [](source& from) {
        const std::vector<polyline> lines = from.lines();
        for (const int dimensions : {3, 2}) {
            ShapeNet shapes(dimensions);
            net plain(dimensions);
            fill(&shapes, &plain, lines);
            ASSERT_EQ(dump_of(shapes), dump(plain));
            const bool nodes_first = from.whole(0, 3) == 0;
            if (nodes_first) {
                shapes.cut_at_near_nodes();
                plain.cut_at_near_nodes();
                ASSERT_EQ(dump_of(shapes), dump(plain));
            }
            plain.cut_crossings();
            ASSERT_FALSE(plain.is_stuck);
            shapes.cut_crossings();
            ASSERT_EQ(dump_of(shapes), dump(plain));
            expect_sound(shapes);
            shapes.cut_at_near_nodes();
            plain.cut_at_near_nodes();
            ASSERT_EQ(dump_of(shapes), dump(plain));
            expect_same_faces(&shapes, &plain);
        }
    });
    EXPECT_EQ(printed_text(), "");
}

TEST_F(ShapePlain, FacesOfUncutNetsAreTheSame)
{
    for_all_inputs(60, [](source& from) {
        ShapeNet shapes(3);
        net plain(3);
        fill(&shapes, &plain, from.lines());
        expect_same_faces(&shapes, &plain);
    });
}

// Walks asked for one by one, with places in the faces that come out.
TEST_F(ShapePlain, SingleWalksAndPlacesInThemAreTheSame)
{
    for_all_inputs(40, [](source& from) {
        ShapeNet shapes(3);
        net plain(3);
        fill(&shapes, &plain, from.lines());
        shapes.cut_crossings();
        plain.cut_crossings();
        for (int face_id = 1; face_id <= 12; ++face_id) {
            const int id = from.whole(1, shapes.edges.count);
            const bool forward = from.whole(0, 1) != 0;
            const ShapeEdge* edge = shapes.edge(id);
            if (!edge || (forward ? edge->right_shape : edge->left_shape) != 0)
                continue;
            ShapeObj* face = shapes.trace_face(id, face_id, forward);
            const std::vector<int> same = plain.trace_face(id, face_id, forward);
            ASSERT_EQ(face ? held_by(face->edges) : "", list_of(same));
            for (int k = 0; k < 20 && face; ++k) {
                const double at[3] = {from.whole(0, 1) ? from.real(0, 12) : from.whole(0, 24) * 0.5,
                                      from.whole(0, 1) ? from.real(0, 12) : from.whole(0, 24) * 0.5, 0};
                ASSERT_EQ(shapes.point_in_face(face, at), plain.point_in_face(same, at[0], at[1]));
            }
            delete face;
        }
        ASSERT_EQ(dump_of(shapes), dump(plain));
    });
}

// Shapes whose edges are in no order at all.
TEST_F(ShapePlain, ChainsOfAnyEdgesAreTheSame)
{
    for_all_inputs(50, [](source& from) {
        ShapeNet shapes(3);
        net plain(3);
        fill(&shapes, &plain, from.lines());
        std::vector<int> ids;
        ShapeObj face;
        for (int k = from.whole(1, 5); k > 0; --k) {
            ids.push_back(from.whole(1, shapes.edges.count));
            face.link(ids.back());
        }
        pg_ring ring{shapes.face_to_chain(&face), 0, 0, nullptr};
        ASSERT_EQ(exact_text(&ring), exact_text({{plain.face_to_chain(ids), false}}));
        pl_free_nodes(ring.nodes);
    });
}

TEST_F(ShapePlain, GridsAreTheSame)
{
    for (unsigned seed = 1; seed <= 300; ++seed) {
        source from(input::KINDS, seed);
        plain_shapes::raster same{from.whole(-5, 5) * 0.5, from.whole(0, 9) * 0.5, 0.5, 0.25,
                                  from.whole(1, 6),        from.whole(1, 6),       {},  {}};
        grid* heights = grid_create(same.x0, same.y0, same.step_x, same.step_y, same.columns, same.rows);
        grid* colors = grid_constant(heights, 0);
        for (std::int32_t i = 0; i < grid_cell_count(heights); ++i) {
            same.cells.push_back({from.whole(0, 3) * 1.0, from.whole(0, 4) != 0});
            same.attributes.push_back(from.whole(0, 255));
            grid_write_cell(heights, i, {same.cells.back().z, same.cells.back().has_value ? '1' : '0'});
            grid_write_cell(colors, i, {same.attributes.back(), '1'});
        }
        ShapeNet shapes(3);
        net plain(3);
        if (from.whole(0, 1)) // nodes that are already there
            fill(&shapes, &plain, {{{{0, 1, 0, 0}, {1, 1, 1, 0}, {2, 2, 2, 0}}, false}});
        shapes.add_grid(heights, colors, static_cast<std::uint8_t>(seed % 2));
        plain.add_grid(same, static_cast<int>(seed % 2));
        ASSERT_EQ(dump_of(shapes), dump(plain)) << seed;
        expect_same_faces(&shapes, &plain);
        ASSERT_FALSE(HasFailure()) << seed;
        grid_free(&heights);
        grid_free(&colors);
    }
}

} // namespace

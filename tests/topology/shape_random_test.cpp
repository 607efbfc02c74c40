// Cutting and faces beside plain transcriptions that compare each edge with each and remember nothing.
#include <cmath>
#include <numbers>
#include <random>
#include <utility>

#include "tests/growth.h"
#include "tests/topology/shape_nets.h"
#include "topology/edge_arcs.h"
#include "topology/walk.h"

namespace
{

// ---- the plain ones

bool has_no_extent(const ShapeNet& net, const ShapeEdge& e)
{
    const NodeObj &a = *net.node(e.node1), &b = *net.node(e.node2);
    return std::fabs(a.x - b.x) <= 1e-6 && std::fabs(a.y - b.y) <= 1e-6;
}

// Splits unless the node lies on an end.
std::int32_t plain_split(ShapeNet* net, std::int32_t id, std::int32_t node)
{
    const ShapeEdge* e = net->edge(id);
    const NodeObj* at = net->node(node);
    if (at->matches(net->node(e->node1)) || at->matches(net->node(e->node2)))
        return 0;
    return net->split_edge(id, node);
}

// Splits and goes on with the piece on which the farther node lies.
void plain_cut_twice(ShapeNet* net, std::int32_t id, std::int32_t nearer, std::int32_t farther)
{
    const ShapeEdge* edge = net->edge(id);
    const std::int32_t node1 = edge->node1, node2 = edge->node2;
    const NodeObj* end = net->node(farther);
    const bool is_done = end->matches(net->node(node1)) || end->matches(net->node(node2));
    double bulge = 0;
    if (edge->bulge != 0)
        bulge = arc_piece_bulge(*edge, *net->node(nearer), *net->node(node2));
    const bool backwards = edge->bulge < 0;
    const std::int32_t first = plain_split(net, id, nearer);
    if (is_done)
        return;
    if (first == 0)
        plain_split(net, id, farther);
    else
        plain_split(net, backwards ? first : net->intern_edge(nearer, node2, bulge), farther);
}

bool plain_cut_pair(ShapeNet* net, std::int32_t i, std::int32_t j)
{
    double at[2][3];
    std::int32_t node[2];
    if (has_no_extent(*net, *net->edge(i)) || has_no_extent(*net, *net->edge(j)))
        return false;
    const int count = net->edge_crossings(net->edge(i), net->edge(j), at[0], at[1]);
    if (count == 0)
        return false;
    for (int k = 0; k < count; ++k)
        node[k] = net->intern_node(at[k][0], at[k][1], at[k][2]);
    if (count == 1) {
        plain_split(net, j, node[0]);
        return net->edge(i) && plain_split(net, i, node[0]) != 0;
    }
    at[0][2] = at[1][2] = 0;
    if (net->edge_position(net->edge(j), at[1], 2) < net->edge_position(net->edge(j), at[0], 2))
        std::swap(node[0], node[1]);
    plain_cut_twice(net, j, node[0], node[1]);
    if (!net->edge(i))
        return true;
    return plain_split(net, i, node[1]) != 0 || plain_split(net, i, node[0]) != 0;
}

void plain_cut(ShapeNet* net)
{
    for (std::int32_t i = 1; i <= net->edges.count; ++i) {
        const std::int32_t last = net->edges.count;
        for (std::int32_t j = i + 1; j <= last && net->edge(i); ++j)
            if (net->edge(j))
                plain_cut_pair(net, i, j);
    }
}

// Each side from trace_face alone, which remembers nothing from one walk to the next.
std::string plain_faces(ShapeNet* net)
{
    std::string text;
    std::int32_t face_id = 1;
    for (std::int32_t i = 1; i <= net->edges.count; ++i)
        for (const bool forward : {true, false}) {
            const ShapeEdge* edge = net->edge(i);
            if (!edge || (forward ? edge->right_shape : edge->left_shape) != 0)
                continue;
            ShapeObj* face = net->trace_face(i, face_id, forward);
            if (!face)
                continue;
            ++face_id;
            pg_node* chain = net->face_to_chain(face);
            text = (pg_orientation(chain) == 1 ? "! " : "") + text_of(chain) + "\n" + text;
            pl_free_nodes(chain);
            delete face;
        }
    return text;
}

// ---- inputs

enum class net_kind { SCATTERED, ARCS, ROUGH_GRID, LINES, COLLINEAR, CHAINS, FAR_AWAY, STAR, KINDS };

void fill(ShapeNet* net, net_kind kind, unsigned seed)
{
    std::mt19937 random(seed * 8 + static_cast<unsigned>(kind));
    const auto real = [&](double a, double b) { return std::uniform_real_distribution<double>(a, b)(random); };
    const auto whole = [&](int a, int b) { return std::uniform_int_distribution<int>(a, b)(random); };
    const int count = kind == net_kind::CHAINS ? whole(1, 5) : whole(2, 16);
    for (int i = 0; i < count; ++i)
        switch (kind) {
        case net_kind::ARCS:
            add_segment(net, whole(0, 12), whole(0, 12), whole(0, 12), whole(0, 12),
                        whole(0, 3) ? real(-1.8, 1.8) : whole(-1, 1));
            break;
        case net_kind::ROUGH_GRID: // ends on whole places: T junctions, shared ends, doubles
            add_segment(net, whole(0, 4), whole(0, 4), whole(0, 4), whole(0, 4));
            break;
        case net_kind::LINES: {
            const double at = whole(0, 9), from = whole(-1, 3), to = whole(6, 10);
            i % 2 ? add_segment(net, at, from, at, to) : add_segment(net, from, at, to, at);
            break;
        }
        case net_kind::COLLINEAR: {
            const int a = whole(0, 12), b = whole(0, 12), turn = whole(0, 2);
            add_segment(net, a, turn * a * 0.5, b, turn * b * 0.5);
            break;
        }
        case net_kind::CHAINS: {
            path line;
            for (int k = whole(2, 6); k > 0; --k)
                line.push_back({whole(0, 40) * 0.25, whole(0, 40) * 0.25, 0, whole(0, 2) ? 0 : real(-1, 1)});
            add_path(net, line, whole(0, 1) != 0);
            break;
        }
        case net_kind::FAR_AWAY: {
            const double x = 640000 + real(0, 50), y = 5120000 + real(0, 50);
            add_segment(net, x, y, x + real(-30, 30), y + real(-30, 30), whole(0, 3) ? 0 : real(-1, 1));
            break;
        }
        case net_kind::STAR: {
            const double angle = whole(0, 23) * std::numbers::pi / 12, r = whole(1, 3) * 5;
            add_segment(net, -r * std::cos(angle), -r * std::sin(angle), 10 * std::cos(angle),
                        10 * std::sin(angle));
            break;
        }
        default:
            add_segment(net, real(0, 20), real(0, 20), real(0, 20), real(0, 20));
        }
}

template <class Test>
void for_all_nets(unsigned seeds, Test test)
{
    for (int kind = 0; kind < static_cast<int>(net_kind::KINDS); ++kind)
        for (unsigned seed = 1; seed <= seeds; ++seed) {
            test(static_cast<net_kind>(kind), seed);
            ASSERT_FALSE(testing::Test::HasFailure()) << "kind " << kind << " seed " << seed;
        }
}

using ShapeRandom = Collection;

TEST_F(ShapeRandom, CutsAreThoseOfThePlainScan)
{
    for_all_nets(250, [](net_kind kind, unsigned seed) {
        for (const int dimensions : {2, 3}) {
            ShapeNet net(dimensions), plain(dimensions);
            fill(&net, kind, seed);
            fill(&plain, kind, seed);
            net.cut_crossings();
            plain_cut(&plain);
            ASSERT_EQ(dump(net), dump(plain));
            expect_sound(net);
        }
    });
    EXPECT_EQ(printed_text(), "");
}

TEST_F(ShapeRandom, CutsWithoutMemoryForBoxesAreTheSame)
{
    for_all_nets(40, [](net_kind kind, unsigned seed) {
        ShapeNet net(3), plain(3);
        fill(&net, kind, seed);
        fill(&plain, kind, seed);
        test_heap::fail_at(1); // the boxes come first
        net.cut_crossings();
        test_heap::fail_at(0);
        plain_cut(&plain);
        ASSERT_EQ(dump(net), dump(plain));
    });
}

TEST_F(ShapeRandom, NothingCrossesOnceItIsCut)
{
    for_all_nets(100, [](net_kind kind, unsigned seed) {
        if (kind == net_kind::ARCS || kind == net_kind::CHAINS || kind == net_kind::FAR_AWAY)
            return; // near tangents leave points just off an end
        ShapeNet net(3);
        fill(&net, kind, seed);
        net.cut_crossings();
        const std::string before = edges_of(net);
        net.cut_crossings();
        ASSERT_EQ(edges_of(net), before);
    });
}

TEST_F(ShapeRandom, FacesAreThoseOfThePlainWalks)
{
    for_all_nets(250, [](net_kind kind, unsigned seed) {
        ShapeNet net(3), plain(3);
        fill(&net, kind, seed);
        fill(&plain, kind, seed);
        net.cut_crossings();
        plain.cut_crossings();
        ASSERT_EQ(traced_faces(&net), plain_faces(&plain));
        for (std::int32_t i = first_of(net.edges); i != 0; i = net.edges.next(i)) {
            ASSERT_EQ(net.edge(i)->left_shape, plain.edge(i)->left_shape);
            ASSERT_EQ(net.edge(i)->right_shape, plain.edge(i)->right_shape);
            ASSERT_EQ(net.edge(i)->mark, 0);
        }
    });
}

TEST_F(ShapeRandom, EachFailureOfTheHeapIsSurvived)
{
    for (const net_kind kind : {net_kind::SCATTERED, net_kind::ARCS, net_kind::LINES})
        for (const bool for_good : {false, true})
            for (int n = 1;; n += for_good ? 7 : 1) {
                bool is_last = true;
                {
                    ShapeNet net(3);
                    (for_good ? test_heap::fail_from : test_heap::fail_at)(n);
                    fill(&net, kind, 5);
                    net.cut_crossings();
                    net.cut_at_near_nodes();
                    pg_ring* rings = net.trace_faces();
                    is_last = for_good ? n > 4000 : !test_heap::has_failed();
                    test_heap::fail_at(0);
                    test_heap::fail_from(0);
                    pg_free_rings(&rings);
                }
                ASSERT_EQ(test_heap::live_blocks(), 0) << n;
                if (is_last)
                    break;
            }
    printed_text();
}

// ---- cost

void lines_of_chance(int count)
{
    std::mt19937 random{3};
    const double width = 10 * std::sqrt(count);
    std::uniform_real_distribution<double> place(0, width), reach(-15, 15);
    ShapeNet net(3);
    for (int i = 0; i < count; ++i) {
        const double x = place(random), y = place(random);
        add_segment(&net, x, y, x + reach(random), y + reach(random));
    }
    net.cut_crossings();
    net.cut_at_near_nodes();
    pg_ring* rings = net.trace_faces();
    pg_free_rings(&rings);
}

TEST_F(ShapeRandom, OverlayGrowsWithTheNumberOfSegments)
{
    EXPECT_TRUE(grows_in_proportion(lines_of_chance, 32000));
}

// A comb: a long chain, cut at each tooth, with a dangling end at each.
TEST_F(ShapeRandom, OverlayOfOneLongChainGrowsWithIt)
{
    EXPECT_TRUE(grows_in_proportion(
        [](int count) {
            ShapeNet net(3);
            path chain;
            for (int i = 0; i <= count; ++i)
                chain.push_back({i * 1.0, i % 2 * 0.25});
            add_path(&net, chain);
            for (int i = 0; i < count; ++i)
                add_segment(&net, i + 0.5, -1, i + 0.5, 1);
            net.cut_crossings();
            net.cut_at_near_nodes();
            pg_ring* rings = net.trace_faces();
            pg_free_rings(&rings);
        },
        16000));
}

} // namespace

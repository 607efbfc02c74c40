// All faces at once beside faces traced one by one, on nets with all that keeps a walk from closing.
#include <cmath>
#include <functional>
#include <numbers>
#include <random>

#include "tests/growth.h"
#include "tests/topology/shape_nets.h"
#include "topology/walk.h"

namespace
{

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

std::string sides_of(const ShapeNet& net)
{
    std::string text;
    for (std::int32_t i = first_of(net.edges); i != 0; i = net.edges.next(i))
        text += std::to_string(net.edge(i)->right_shape) + "/" + std::to_string(net.edge(i)->left_shape) + " ";
    return text;
}

// ---- inputs

struct place {
    double x, y;
};

struct net_maker {
    ShapeNet* net;
    std::mt19937 random;

    int whole(int a, int b) { return std::uniform_int_distribution<int>(a, b)(random); }
    double real(double a, double b) { return std::uniform_real_distribution<double>(a, b)(random); }

    void edge(place a, place b, double bulge = 0)
    {
        const std::int32_t from = net->intern_node(a.x, a.y, 0), to = net->intern_node(b.x, b.y, 0);
        net->intern_edge(from, to, bulge);
    }
    // Edges in an order of chance, so that walks start anywhere.
    void edges(std::vector<std::pair<place, place>> all)
    {
        if (whole(0, 2))
            std::shuffle(all.begin(), all.end(), random);
        for (const auto& [a, b] : all)
            whole(0, 1) ? edge(a, b) : edge(b, a);
    }

    // An outline with trees that grow on it inside and outside, loops at some of their ends.
    void trees()
    {
        std::vector<std::pair<place, place>> all;
        const int n = whole(3, 12);
        std::vector<place> ends;
        for (int i = 0; i < n; ++i) {
            const double a = 2 * std::numbers::pi * i / n, b = 2 * std::numbers::pi * (i + 1) / n;
            const place p{100 * std::cos(a), 100 * std::sin(a)};
            all.push_back({p, {100 * std::cos(b), 100 * std::sin(b)}});
            ends.push_back(p);
        }
        for (int i = whole(0, 14); i > 0; --i) {
            const place from = ends[static_cast<std::size_t>(whole(0, static_cast<int>(ends.size()) - 1))];
            const place to{from.x + real(-9, 9), from.y + real(-9, 9)};
            all.push_back({from, to});
            ends.push_back(to);
            if (whole(0, 2) == 0) {
                const place a{to.x + real(-3, 3), to.y + real(-3, 3)},
                    b{to.x + real(-3, 3), to.y + real(-3, 3)};
                all.insert(all.end(), {{to, a}, {a, b}, {b, to}});
                ends.push_back(a);
            }
        }
        edges(all);
    }

    // Chords and arcs between few places, in any number and not cut.
    void tangle()
    {
        const int reach = whole(1, 4);
        for (int i = whole(3, 30); i > 0; --i)
            edge({1.0 * whole(0, reach), 1.0 * whole(0, reach)}, {1.0 * whole(0, reach), 1.0 * whole(0, reach)},
                 whole(0, 2) ? 0 : whole(-2, 2) * 0.25);
    }

    // Spokes, some in nearly or just the same direction, joined at some of their ends.
    void hub()
    {
        std::vector<std::pair<place, place>> all;
        std::vector<place> rim;
        const int n = whole(5, 40);
        const double first = whole(0, 2) ? real(-3, 3) : 0.0;
        for (int i = 0; i < n; ++i) {
            const double steps[] = {0, 1e-16, 1e-15, 4e-14, 1e-9, 1e-3};
            const double angle =
                first + whole(-8, 8) * std::numbers::pi / 8 + steps[whole(0, 5)] * whole(-3, 3);
            const double r = whole(1, 4);
            rim.push_back({r * std::cos(angle), whole(0, 5) ? r * std::sin(angle) : 0.0});
            all.push_back({{0, 0}, rim.back()});
            if (i > 0 && whole(0, 2))
                all.push_back({rim[static_cast<std::size_t>(whole(0, i - 1))], rim.back()});
        }
        edges(all);
    }

    // Spokes in line, so that directions are the same or differ in their last bits, with a rim each.
    void spokes_in_line()
    {
        std::vector<std::pair<place, place>> all;
        for (int i = 0; i < 12; ++i) {
            const double x = real(-1, 1), y = real(-1, 1), far = real(1, 3);
            const place near_end{x, y}, far_end{x * far, y * far}, side{x - 0.2 * y, y + 0.2 * x};
            all.insert(all.end(), {{{0, 0}, near_end}, {{0, 0}, far_end}, {near_end, side}, {side, far_end}});
        }
        edges(all);
    }

    // Squares side by side, in islands, with teeth.
    void squares()
    {
        std::vector<std::pair<place, place>> all;
        for (int i = whole(2, 30); i > 0; --i) {
            const double x = whole(0, 5), y = whole(0, 5);
            const place corner[] = {{x, y}, {x + 1, y}, {x + 1, y + 1}, {x, y + 1}};
            for (int k = whole(0, 5) ? 3 : whole(0, 3); k >= 0; --k)
                all.push_back({corner[k], corner[(k + 1) % 4]});
            if (whole(0, 4) == 0)
                all.push_back({corner[0], {x + real(-0.4, 0.4), y + real(-0.4, 0.4)}});
        }
        edges(all);
    }

    // Circles that hang on each other at single nodes, one inside the other or not.
    void flower()
    {
        std::vector<std::pair<place, place>> all;
        std::vector<place> at{{0, 0}};
        for (int i = whole(2, 8); i > 0; --i) {
            const place from = at[static_cast<std::size_t>(whole(0, static_cast<int>(at.size()) - 1))];
            place last = from;
            const double turn = real(0, 6), size = real(1, 9);
            for (int k = 1; k < 5; ++k) {
                const place p{from.x + size * (std::cos(turn + k) - std::cos(turn)),
                              from.y + size * (std::sin(turn + k) - std::sin(turn))};
                all.push_back({last, p});
                at.push_back(p);
                last = p;
            }
            all.push_back({last, from});
        }
        edges(all);
    }

    void some_gone()
    {
        for (int i = whole(0, 3); i > 0; --i)
            net->remove_edge(whole(1, net->edges.count));
        if (whole(0, 4) == 0)
            net->remove_node(whole(1, net->nodes.count));
    }

    void some_taken()
    {
        for (int i = whole(1, 4); i > 0; --i)
            if (ShapeEdge* edge = net->edge(whole(1, net->edges.count)))
                (whole(0, 1) ? edge->right_shape : edge->left_shape) = 90000;
    }
};

using maker_step = void (net_maker::*)();

void make(ShapeNet* net, maker_step kind, unsigned seed)
{
    net_maker maker{net, std::mt19937(seed)};
    for (unsigned i = 0; i <= seed % 2; ++i)
        (maker.*kind)();
    if (seed % 4 == 2)
        net->cut_crossings();
    if (seed % 5 == 1)
        maker.some_gone();
    if (seed % 3 == 1)
        maker.some_taken();
}

class ShapeFaces : public Collection, public testing::WithParamInterface<maker_step>
{
};

TEST_P(ShapeFaces, AllAtOnceAreThoseOneByOne)
{
    std::size_t text = 0;
    for (unsigned seed = 1; seed <= 3000; ++seed) {
        ShapeNet net(3), plain(3);
        make(&net, GetParam(), seed);
        make(&plain, GetParam(), seed);
        const std::string faces = traced_faces(&net);
        ASSERT_EQ(faces, plain_faces(&plain)) << "seed " << seed;
        ASSERT_EQ(sides_of(net), sides_of(plain)) << "seed " << seed;
        text += faces.size();
    }
    EXPECT_GT(text, 100000u); // there were faces
}

TEST_P(ShapeFaces, WithoutMemoryForAllTheyAreTracedOneByOne)
{
    for (unsigned seed = 1; seed <= 20; ++seed)
        for (int n = 1; n < 40; ++n) {
            ShapeNet net(3), plain(3);
            make(&net, GetParam(), seed);
            make(&plain, GetParam(), seed);
            test_heap::fail_at(n);
            const std::string faces = traced_faces(&net);
            const bool has_failed = test_heap::has_failed();
            test_heap::fail_at(0);
            const std::string expected = plain_faces(&plain);
            if (n == 1 || !has_failed)
                ASSERT_EQ(faces, expected) << "seed " << seed;
            else
                ASSERT_LE(faces.size(), expected.size()) << "seed " << seed << " failure " << n;
        }
}

std::string name_of(const testing::TestParamInfo<maker_step>& kind)
{
    const char* names[] = {"Trees", "Tangles", "Hubs", "SpokesInLine", "Squares", "Flowers"};
    return names[kind.index];
}

INSTANTIATE_TEST_SUITE_P(Nets, ShapeFaces,
                         testing::Values(&net_maker::trees, &net_maker::tangle, &net_maker::hub,
                                         &net_maker::spokes_in_line, &net_maker::squares, &net_maker::flower),
                         name_of);

// An edge that a node lists though it ends elsewhere: the faces are traced one by one.
TEST_F(Collection, NodesThatListOthersEdgesAreWalkedAsTheyStand)
{
    ShapeNet net(3), plain(3);
    for (ShapeNet* each : {&net, &plain}) {
        add_path(each, {{0, 0}, {4, 0}, {4, 4}, {0, 4}}, true);
        add_path(each, {{9, 9}, {12, 9}, {12, 12}}, true);
        each->node(1)->link(6);
    }
    EXPECT_EQ(traced_faces(&net), plain_faces(&plain));
    EXPECT_EQ(sides_of(net), sides_of(plain));
}

// ---- cost

place on_circle(double radius, int i, int count)
{
    const double angle = i * 2 * std::numbers::pi / count;
    return {radius * std::cos(angle), radius * std::sin(angle)};
}

void trace(ShapeNet* net)
{
    pg_ring* rings = net->trace_faces();
    pg_free_rings(&rings);
}

TEST_F(Collection, OutlineWithSpursIsNotWalkedFromEachOfItsEdges)
{
    EXPECT_TRUE(grows_in_proportion(
        [](int count) {
            ShapeNet net(3);
            path ring;
            for (int i = 0; i < count; ++i)
                ring.push_back({on_circle(1000, i, count).x, on_circle(1000, i, count).y});
            add_path(&net, ring, true);
            add_segment(&net, 1000, 0, 1010, 0);
            add_segment(&net, 1000, 0, 990, 0);
            trace(&net);
        },
        64000));
}

// The outline's sides are taken by a face that leaves the stem out; the stem's edges are never taken.
TEST_F(Collection, LongStemWithALoopIsNotWalkedFromEachOfItsEdges)
{
    for (const bool outward : {false, true})
        EXPECT_TRUE(grows_in_proportion(
            [outward](int count) {
                ShapeNet net(3);
                path stem;
                for (int i = 0; i <= count; ++i)
                    stem.push_back({outward ? 1.0 * i : 1.0 * (count - i), 0.25 * (i % 3)});
                add_path(&net, stem);
                const double x = count, y = net.node(outward ? count + 1 : 1)->y;
                add_path(&net, {{x, y}, {x + 1, y - 1}, {x + 1, y + 1}}, true);
                const double y0 = net.node(outward ? 1 : count + 1)->y;
                add_path(&net, {{0, y0}, {-5, -5}, {2.0 * count, -5}, {2.0 * count, 9}, {-5, 9}}, true);
                trace(&net);
            },
            32000));
}

// Loops on stems inside an outline come before it: each walk from a loop would go round the outline.
TEST_F(Collection, LoopsInsideAnOutlineAreNotWalkedRoundIt)
{
    EXPECT_TRUE(grows_in_proportion(
        [](int count) {
            ShapeNet net(3);
            for (int i = 0; i < count; ++i) {
                const place a = on_circle(500, 3 * i, 3 * count), b = on_circle(499, 3 * i + 1, 3 * count),
                            c = on_circle(499, 3 * i, 3 * count);
                add_path(&net, {{b.x, b.y}, {c.x, c.y}, {a.x, a.y}}, true);
            }
            path ring;
            for (int i = 0; i < count; ++i) {
                const place a = on_circle(500, 3 * i, 3 * count), p = on_circle(1000, 3 * i, 3 * count);
                add_segment(&net, a.x, a.y, p.x, p.y);
                ring.push_back({p.x, p.y});
            }
            add_path(&net, ring, true);
            trace(&net);
        },
        16000));
}

TEST_F(Collection, HubIsTurnedAtInProportion)
{
    EXPECT_TRUE(grows_in_proportion(
        [](int count) {
            ShapeNet net(3);
            path ring;
            for (int i = 0; i < count; ++i)
                ring.push_back({on_circle(1000, i, count).x, on_circle(1000, i, count).y});
            add_path(&net, ring, true);
            for (const vertex& v : ring)
                add_segment(&net, v.x, v.y, 0, 0);
            trace(&net);
        },
        32000));
}

} // namespace

// Whole surfaces against what must hold of them, whatever the way to it.
#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "tests/topology/surface_fixture.h"
#include "tests/topology/surface_host.h"

namespace
{
double hill(double x, double y)
{
    return 20 - std::hypot(x - 4.1, y - 3.3);
}

pg_ring* ring_of(std::initializer_list<place> places, pg_ring* next = nullptr)
{
    pg_node* chain = nullptr;
    for (const place* p = places.end(); p != places.begin();)
        chain = pg_node_push((--p)->at, chain, 0.0);
    pg_ring* ring = pg_ring_new();
    ring->nodes = chain;
    ring->next = next;
    return ring;
}

// The lines cross each other between the edges of the surface, and their pieces there are laid on it last.
TEST_F(Surface, DrapedNodesAreFoundAgain)
{
    for (unsigned seed = 0; seed < 50; ++seed) {
        std::mt19937 random(seed);
        std::uniform_real_distribution<> number(0.1, 7.9);
        SurfaceNet net;
        add_grid(&net, 8, hill);
        pg_ring* rings = nullptr;
        for (int i = 0; i < 6; ++i)
            rings =
                ring_of({{{number(random), number(random), 0}}, {{number(random), number(random), 0}}}, rings);
        SurfaceNet* draped = net.drape(rings);
        const std::int32_t nodes = draped->nodes.count;
        for (std::int32_t id = 1; id <= nodes; ++id) {
            const NodeObj* n = draped->node(id);
            const double at[3] = {n->x, n->y, n->z};
            ASSERT_EQ(draped->intern_node(at), id) << "seed " << seed;
        }
        delete draped;
        pg_free_rings(&rings);
        printed_text();
    }
}

// Facets of a plane and of a cone; the lines run over edges, through nodes, along edges and beyond the border.
TEST_F(Surface, DrapedLinesKeepTheSurface)
{
    const auto plane = [](double x, double y) { return 100 + 0.3 * x - 0.7 * y; };
    const std::function<double(double, double)> grounds[] = {plane, hill};
    for (const auto& z : grounds) {
        SurfaceNet net;
        add_grid(&net, 8, z);
        pg_ring* rings = ring_of({{{0.3, 0.4, 0}}, {{7.7, 6.9, 0}}, {{7.7, 0.2, 0}}, {{0.3, 0.4, 0}}});
        rings = ring_of({{{1, 1, 0}}, {{5, 5, 0}}, {{5, 2, 0}}}, rings);
        rings = ring_of({{{2, 0, 0}}, {{2, 8, 0}}}, rings);
        rings = ring_of({{{-3, 4.5, 7}}, {{12, 4.7, 7}}}, rings);
        SurfaceNet* draped = net.drape(rings);
        // Every triangle of it lies in one facet: the middle of it is as high as the surface there.
        double area = 0;
        for (std::int32_t id = 1; id <= draped->triangles.count; ++id) {
            std::int32_t c[3];
            if (!draped->triangle(id))
                continue;
            ASSERT_EQ(draped->triangle_corners(id, &c[0], &c[1], &c[2]), 1);
            const NodeObj *p = draped->node(c[0]), *q = draped->node(c[1]), *r = draped->node(c[2]);
            const double middle[3] = {(p->x + q->x + r->x) / 3, (p->y + q->y + r->y) / 3,
                                      (p->z + q->z + r->z) / 3};
            const std::int32_t under = net.find_triangle(middle);
            ASSERT_GT(under, 0);
            EXPECT_NEAR(net.triangle_elevation(under, middle), middle[2], 1e-9);
            area += pg_tri_area(p->x, p->y, q->x, q->y, r->x, r->y);
        }
        EXPECT_NEAR(area, 64, 1e-9);
        delete draped;
        pg_free_rings(&rings);
    }
}

// Cut a triangle by a level as a polygon, and take the prisms over the pieces.
double prism_above(const place (&p)[3], double level)
{
    std::vector<place> kept;
    for (int i = 0; i < 3; ++i) {
        const double *a = p[i].at, *b = p[(i + 1) % 3].at;
        if (a[2] >= level)
            kept.push_back(p[i]);
        if ((a[2] < level) != (b[2] < level)) {
            const double t = (level - a[2]) / (b[2] - a[2]);
            kept.push_back({{a[0] + t * (b[0] - a[0]), a[1] + t * (b[1] - a[1]), level}});
        }
    }
    double volume = 0;
    for (size_t i = 2; i < kept.size(); ++i) {
        const double *a = kept[0].at, *b = kept[i - 1].at, *c = kept[i].at;
        volume +=
            std::fabs(pg_tri_area(a[0], a[1], b[0], b[1], c[0], c[1])) * ((a[2] + b[2] + c[2]) / 3 - level);
    }
    return volume;
}

TEST_F(Surface, VolumesAreThoseOfTheCutPieces)
{
    std::mt19937 random(5);
    std::uniform_int_distribution<> number(0, 4);
    int sides[3] = {};
    for (int i = 0; i < 20000; ++i) {
        place p[3];
        for (place& corner : p)
            corner = {{1.0 * number(random), 1.0 * number(random), 1.0 * number(random)}};
        if (i % 3 == 0)
            p[0].at[0] += 1e-7; // slivers
        const double area = pg_tri_area(p[0].at[0], p[0].at[1], p[1].at[0], p[1].at[1], p[2].at[0], p[2].at[1]);
        if (area < 0)
            std::swap(p[0], p[1]);
        SurfaceNet net;
        if (add_triangle(&net, p[0], p[1], p[2]) == 0)
            continue;
        const double level = number(random) + 0.5 * (i % 2) - 0.5;
        double above, area_above, below, area_below;
        net.triangle_volume(1, level, &above, &area_above, &below, &area_below);
        EXPECT_NEAR(above, prism_above(p, level), 1e-12);
        place upside_down[3];
        for (int k = 0; k < 3; ++k)
            upside_down[k] = {{p[k].at[0], p[k].at[1], -p[k].at[2]}};
        EXPECT_NEAR(below, prism_above(upside_down, -level), 1e-12);
        EXPECT_NEAR(area_above + area_below, std::fabs(area), 1e-12);
        ++sides[above > 0 && below > 0 ? 2 : above > 0 ? 1 : 0];
    }
    EXPECT_GT(sides[0], 1000);
    EXPECT_GT(sides[1], 1000);
    EXPECT_GT(sides[2], 1000);
}

// ---- faces that are filled

double area_of(const std::vector<place>& outline)
{
    double area = 0;
    for (size_t i = 0; i < outline.size(); ++i) {
        const double *o = outline[0].at, *p = outline[i].at, *q = outline[(i + 1) % outline.size()].at;
        area += pg_tri_area(o[0], o[1], p[0], p[1], q[0], q[1]);
    }
    return area;
}

// The edges in an order of chance, so that the walk starts anywhere.
void add_outline(SurfaceNet* net, const std::vector<place>& outline, unsigned seed)
{
    std::vector<size_t> order(outline.size());
    for (size_t i = 0; i < order.size(); ++i)
        order[i] = i;
    std::shuffle(order.begin(), order.end(), std::mt19937(seed));
    for (const size_t i : order)
        add_line(net, outline[i], outline[(i + 1) % outline.size()]);
}

std::vector<place> comb(int teeth, double width)
{
    std::vector<place> outline;
    for (int i = 0; i < teeth; ++i) {
        outline.push_back({{1.0 * i, 10, 5}});
        outline.push_back({{i + width, 10, 6}});
        if (i + 1 < teeth) {
            outline.push_back({{i + width, 1, 5}});
            outline.push_back({{i + 1.0, 1, 5.5}});
        }
    }
    outline.push_back({{teeth - 1 + width, 0, 5}});
    outline.push_back({{0, 0, 5}});
    std::reverse(outline.begin(), outline.end());
    return outline;
}

std::vector<place> spiral(int turns, int steps)
{
    std::vector<place> out, back;
    for (int i = 0; i <= turns * steps; ++i) {
        const double angle = 2 * 3.141592653589793 * i / steps, r = 2 + 1.0 * i / steps;
        out.push_back({{r * std::cos(angle), r * std::sin(angle), 7}});
        back.push_back({{(r + 0.4) * std::cos(angle), (r + 0.4) * std::sin(angle), 8}});
    }
    std::reverse(back.begin(), back.end());
    out.insert(out.end(), back.begin(), back.end());
    std::reverse(out.begin(), out.end());
    return out;
}

std::vector<place> square_with_points_on_its_sides(int n)
{
    std::vector<place> outline;
    const double corners[5][2] = {{0, 0}, {1, 0}, {1, 1}, {0, 1}, {0, 0}};
    for (int side = 0; side < 4; ++side)
        for (int i = 0; i < n; ++i) {
            const double t = 1.0 * i / n;
            outline.push_back({{corners[side][0] + t * (corners[side + 1][0] - corners[side][0]),
                                corners[side][1] + t * (corners[side + 1][1] - corners[side][1]), 3}});
        }
    return outline;
}

std::vector<place> thin_strip()
{
    return {{{0, 0, 1}}, {{50, 0, 1}}, {{100, 0, 1}}, {{100, 0.001, 1}}, {{50, 0.001, 1}}, {{0, 0.001, 1}}};
}

struct outline_case {
    const char* name;
    std::vector<place> outline; // either way round
    double noise;
};

// Counter-clockwise, with noise, and but for the first one turned and far from the origin.
std::vector<place> placed(const outline_case& c, unsigned seed)
{
    std::vector<place> outline = c.outline;
    if (area_of(outline) < 0)
        std::reverse(outline.begin(), outline.end());
    std::mt19937 random(seed);
    std::uniform_real_distribution<> off(-c.noise, c.noise);
    const double angle = seed * 0.7;
    for (place& p : outline) {
        const double x = p.at[0] + off(random), y = p.at[1] + off(random);
        if (seed == 0) {
            p.at[0] = x, p.at[1] = y;
            continue;
        }
        p.at[0] = 640000 + x * std::cos(angle) - y * std::sin(angle);
        p.at[1] = 5120000 + x * std::sin(angle) + y * std::cos(angle);
    }
    return outline;
}

// No three corners in line and no four on a circle: of those the triangulation may leave barriers unforced.
TEST_F(Surface, OutlinesAreFilledWhateverTheirShape)
{
    const outline_case cases[] = {
        {"comb", comb(12, 0.5), 0.01},
        {"large comb", comb(40, 0.5), 0.1},
        {"narrow teeth", comb(12, 0.01), 0.001},
        {"narrow gaps", comb(12, 0.99), 0.001},
        {"spiral", spiral(3, 24), 0},
        {"thin strip", thin_strip(), 0},
        {"arrow", {{{0, 0, 1}}, {{10, 5, 2}}, {{0, 10, 3}}, {{9.9, 5, 4}}}, 0},
    };
    for (const outline_case& c : cases)
        for (unsigned seed = 0; seed < 40; ++seed) {
            SCOPED_TRACE(std::string(c.name) + " " + std::to_string(seed));
            const std::vector<place> outline = placed(c, seed);
            SurfaceNet net;
            add_outline(&net, outline, seed);
            net.close_faces();
            EXPECT_EQ(printed_text(), "");
            EXPECT_EQ(net.triangles.count, static_cast<int>(outline.size()) - 2);
            EXPECT_NEAR(whole_area(net), area_of(outline), 1e-6);
        }
}

// Along a side there may be triangles without area, and what the triangulation can't force is told.
TEST_F(Surface, OutlinesWithCornersInLineAreCovered)
{
    const outline_case square = {"square", square_with_points_on_its_sides(5), 0};
    int told = 0;
    for (unsigned seed = 0; seed < 40; ++seed) {
        const std::vector<place> outline = placed(square, seed);
        SurfaceNet net;
        add_outline(&net, outline, seed);
        net.close_faces();
        if (printed_text().empty())
            EXPECT_NEAR(whole_area(net), 1, 1e-6) << "seed " << seed;
        else
            ++told;
    }
    EXPECT_LT(told, 20);
}

TEST_F(Surface, LargeOutlinesAreFilled)
{
    std::vector<place> outline;
    constexpr int COUNT = 10000;
    std::mt19937 random(1);
    std::uniform_real_distribution<> radius(800, 1000);
    for (int i = 0; i < COUNT; ++i) {
        const double angle = 2 * 3.141592653589793 * i / COUNT, r = radius(random);
        outline.push_back({{r * std::cos(angle), r * std::sin(angle), r}});
    }
    SurfaceNet net;
    add_outline(&net, outline, 1);
    net.close_faces();
    EXPECT_EQ(net.triangles.count, COUNT - 2);
    EXPECT_NEAR(whole_area(net), area_of(outline), 1e-3);
    printed_text();
}
} // namespace

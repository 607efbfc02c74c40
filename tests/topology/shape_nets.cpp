#include "tests/topology/shape_nets.h"

#include <cstdio>

#include "topology/walk.h"

namespace
{

std::string number(double v, const char* format)
{
    char text[64];
    std::snprintf(text, sizeof text, format, v + 0.0);
    return text;
}

std::string short_number(double v)
{
    std::string text = number(v, "%.2f");
    while (text.back() == '0')
        text.pop_back();
    if (text.back() == '.')
        text.pop_back();
    return text == "-0" ? "0" : text;
}

std::string exact(double v)
{
    return number(v, "%.17g") + " ";
}

} // namespace

std::int32_t add_path(ShapeNet* net, const path& line, bool closed)
{
    pg_node* chain = nullptr;
    for (auto v = line.rbegin(); v != line.rend(); ++v) {
        const double at[3] = {v->x, v->y, v->z};
        pg_node* longer = pg_node_push(at, chain, v->bulge);
        if (!longer)
            break;
        chain = longer;
    }
    net->add_chain(nullptr, chain, 7, closed);
    pl_free_nodes(chain);
    return net->shapes.count;
}

void add_segment(ShapeNet* net, double x0, double y0, double x1, double y1, double bulge)
{
    add_path(net, {{x0, y0, 0, bulge}, {x1, y1}});
}

std::string ids_in(const ObjectArray& array)
{
    std::string ids;
    for (std::int32_t i = first_of(array); i != 0; i = array.next(i))
        ids += (ids.empty() ? "" : " ") + std::to_string(i);
    return ids;
}

std::string held_by(const ObjectArray& holders)
{
    std::string ids;
    for (std::int32_t i = first_of(holders); i != 0; i = holders.next(i))
        ids += (ids.empty() ? "" : " ") + std::to_string(holders.get(i)->id);
    return ids;
}

std::string dump(const ShapeNet& net)
{
    std::string text;
    for (std::int32_t i = 1; i <= net.nodes.count; ++i) {
        const auto* n = static_cast<const NodeObj*>(net.nodes.items[i - 1]);
        text += "node " + std::to_string(i) + (n->deleted ? " gone " : " ") + exact(n->x) + exact(n->y) +
                exact(n->z);
        for (std::int32_t k = 1; k <= n->edges.count; ++k)
            text += " " + std::to_string(n->edges.get(k));
        text += "\n";
    }
    for (std::int32_t i = 1; i <= net.edges.count; ++i) {
        const auto* e = static_cast<const ShapeEdge*>(net.edges.items[i - 1]);
        text += "edge " + std::to_string(i) + (e->deleted ? " gone " : " ") + std::to_string(e->node1) + " " +
                std::to_string(e->node2) + " " + exact(e->bulge) + "shapes " + held_by(e->shapes) + "\n";
    }
    for (std::int32_t i = 1; i <= net.shapes.count; ++i) {
        const auto* s = static_cast<const ShapeObj*>(net.shapes.items[i - 1]);
        text += "shape " + std::to_string(i) + (s->deleted ? " gone " : " ") + held_by(s->edges) + "\n";
    }
    return text;
}

std::string edges_of(const ShapeNet& net)
{
    std::string text;
    for (std::int32_t i = first_of(net.edges); i != 0; i = net.edges.next(i)) {
        const ShapeEdge& e = *net.edge(i);
        text += (text.empty() ? "" : " ") + std::to_string(e.node1) + "-" + std::to_string(e.node2);
        if (e.bulge != 0)
            text += "(" + short_number(e.bulge) + ")";
    }
    return text;
}

std::string text_of(const pg_node* chain)
{
    std::string text;
    for (const pg_node* n = chain; n; n = n->next) {
        text += (text.empty() ? "" : " ") + short_number(n->x) + "," + short_number(n->y);
        if (n->next && n->bulge != 0)
            text += "(" + short_number(n->bulge) + ")";
    }
    return text;
}

std::string text_of(const pg_ring* rings)
{
    std::string text;
    for (const pg_ring* r = rings; r; r = r->next)
        text += (r->clockwise ? "! " : "") + text_of(r->nodes) + "\n";
    return text;
}

std::string traced_faces(ShapeNet* net)
{
    pg_ring* rings = net->trace_faces();
    const std::string text = text_of(rings);
    pg_free_rings(&rings);
    return text;
}

void expect_sound(const ShapeNet& net)
{
    for (std::int32_t i = first_of(net.edges); i != 0; i = net.edges.next(i)) {
        const ShapeEdge& e = *net.edge(i);
        ASSERT_EQ(e.id, i);
        ASSERT_EQ(e.owner, &net);
        for (const std::int32_t end : {e.node1, e.node2}) {
            ASSERT_TRUE(net.node(end)) << "edge " << i;
            ASSERT_NE(net.node(end)->edges.find(i), 0) << "edge " << i << " node " << end;
        }
        for (std::int32_t k = first_of(e.shapes); k != 0; k = e.shapes.next(k)) {
            const ShapeObj* s = net.shape(e.shapes.get(k)->id);
            ASSERT_TRUE(s) << "edge " << i;
            ASSERT_NE(s->edges.find(i), 0) << "edge " << i;
        }
    }
    for (std::int32_t i = first_of(net.shapes); i != 0; i = net.shapes.next(i))
        for (std::int32_t k = first_of(net.shape(i)->edges); k != 0; k = net.shape(i)->edges.next(k)) {
            const ShapeEdge* e = net.edge(net.shape(i)->edges.get(k)->id);
            ASSERT_TRUE(e) << "shape " << i;
            ASSERT_NE(e->shapes.find(i), 0) << "shape " << i;
        }
}

int live_edges(const ShapeNet& net)
{
    int count = 0;
    for (std::int32_t i = first_of(net.edges); i != 0; i = net.edges.next(i))
        ++count;
    return count;
}

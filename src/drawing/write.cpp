#include "drawing/write.h"

#include <cstring>
#include <memory>

#include "common/text_buffer.h"
#include "drawing/open.h"
#include "drawing/tables.h"
#include "hostapi/ads.h"

namespace
{

bool has_layer(const pline_props& props)
{
    return props.layer[0] != '\0' && std::strcmp(props.layer, CURRENT_LAYER) != 0;
}

void set_layer_and_color(AcDbEntity& entity, const pline_props& props)
{
    if (has_layer(props))
        entity.setLayer(props.layer);
    entity.setColorIndex(static_cast<std::uint16_t>(props.color));
}

void set_linetype(AcDbEntity& entity, const pline_props& props)
{
    entity.setLinetype(props.linetype);
    entity.setLinetypeScale(props.ltscale);
}

bool z_differs(const pg_node* nodes)
{
    for (const pg_node* n = nodes; n; n = n->next)
        if (n->z != nodes->z)
            return true;
    return false;
}

bool has_flag(const pline_props& props, int flag)
{
    return (props.flags & flag) != 0;
}

AcDb::Poly2dType type_2d(const pline_props& props)
{
    const bool spline = has_flag(props, PLINE_SPLINE_FIT);
    if (props.curve_type == CURVE_NONE && has_flag(props, PLINE_CURVE_FIT))
        return AcDb::k2dFitCurvePoly;
    if (props.curve_type == CURVE_QUADRATIC && spline)
        return AcDb::k2dQuadSplinePoly;
    if (props.curve_type == CURVE_CUBIC && spline)
        return AcDb::k2dCubicSplinePoly;
    return AcDb::k2dSimplePoly;
}

AcDb::Poly3dType type_3d(const pline_props& props)
{
    const bool spline = has_flag(props, PLINE_SPLINE_FIT);
    if (props.curve_type == CURVE_QUADRATIC && spline)
        return AcDb::k3dQuadSplinePoly;
    if (props.curve_type == CURVE_CUBIC && spline)
        return AcDb::k3dCubicSplinePoly;
    return AcDb::k3dSimplePoly;
}

void make_lightweight(AcDbBlockTableRecord& space, const pg_node* nodes, const pline_props& props,
                      bool with_bulges)
{
    auto pline = std::make_unique<AcDbPolyline>(static_cast<unsigned>(pg_count(nodes)));
    pline->setElevation(nodes->z);
    unsigned index = pline->numVerts();
    for (const pg_node* n = nodes; n; n = n->next, ++index) {
        pline->addVertexAt(index, AcGePoint2d(n->x, n->y), with_bulges ? n->bulge : 0.0, 0.0, 0.0);
        pline->setWidthsAt(index, props.start_width, props.end_width);
    }
    set_layer_and_color(*pline, props);
    pline->setClosed(has_flag(props, PLINE_CLOSED));
    pline->setPlinegen(has_flag(props, PLINE_LINETYPE_GENERATION));
    pline->setThickness(props.thickness);
    set_linetype(*pline, props);
    append_and_close(space, std::move(pline));
}

template <class Polyline, class Vertex>
void append_vertex(Polyline& pline, std::unique_ptr<Vertex> vertex)
{
    if (pline.appendVertex(vertex.get()) == Acad::eOk)
        vertex.release()->close();
}

void make_2d(AcDbBlockTableRecord& space, const pg_node* nodes, const pline_props& props, bool with_bulges)
{
    AcGePoint3dArray no_points(0, 8);
    auto pline =
        std::make_unique<AcDb2dPolyline>(type_2d(props), no_points, nodes->z, has_flag(props, PLINE_CLOSED),
                                         props.start_width, props.end_width, nullptr);
    pline->setDefaultStartWidth(props.start_width);
    pline->setDefaultEndWidth(props.end_width);
    for (const pg_node* n = nodes; n; n = n->next) {
        auto vertex =
            std::make_unique<AcDb2dVertex>(AcGePoint3d(n->x, n->y, n->z), with_bulges ? n->bulge : 0.0);
        set_layer_and_color(*vertex, props);
        vertex->setStartWidth(props.start_width);
        vertex->setEndWidth(props.end_width);
        append_vertex(*pline, std::move(vertex));
    }
    set_layer_and_color(*pline, props);
    pline->setThickness(props.thickness);
    set_linetype(*pline, props);
    if (has_flag(props, PLINE_LINETYPE_GENERATION))
        pline->setLinetypeGenerationOn();
    else
        pline->setLinetypeGenerationOff();
    append_and_close(space, std::move(pline));
}

void make_3d(AcDbBlockTableRecord& space, const pg_node* nodes, const pline_props& props)
{
    AcGePoint3dArray no_points(0, 8);
    auto pline = std::make_unique<AcDb3dPolyline>(type_3d(props), no_points, has_flag(props, PLINE_CLOSED));
    for (const pg_node* n = nodes; n; n = n->next) {
        auto vertex = std::make_unique<AcDb3dPolylineVertex>(AcGePoint3d(n->x, n->y, n->z));
        set_layer_and_color(*vertex, props);
        append_vertex(*pline, std::move(vertex));
    }
    set_layer_and_color(*pline, props);
    set_linetype(*pline, props);
    append_and_close(space, std::move(pline));
}

pline_props simple_props(const char* layer, int flags, int color)
{
    pline_props props;
    props.flags = flags;
    props.color = color < 0 ? COLOR_BY_LAYER : color;
    text_set(props.layer, layer ? layer : "");
    return props;
}

// Cuts off and releases a last vertex that lies exactly on the first.
void drop_closing_vertex(pl_vertex* head)
{
    pl_vertex* before = head;
    while (before->next->next)
        before = before->next;
    pl_vertex* last = before->next;
    if (last->x != head->x || last->y != head->y || last->z != head->z)
        return;
    before->next = nullptr;
    acad_free(last);
}

} // namespace

void pl_make_entity(const pg_node* nodes, pline_props props, int with_bulges, int auto_kind)
{
    if (props.layer[0] != '\0')
        layer_make_current(props.layer, props.color);
    if (!nodes)
        return;
    if (has_flag(props, PLINE_3D))
        props.kind = KIND_P3D;
    if (props.kind == KIND_P3D)
        props.flags |= PLINE_3D;
    const bool spatial = props.kind == KIND_P3D || (auto_kind != 0 && z_differs(nodes));
    const auto space = opened_current_space();
    if (!space)
        return;
    if (spatial)
        make_3d(*space, nodes, props);
    else if ((props.curve_type == CURVE_NONE && auto_kind == 1) || props.kind == KIND_LW)
        make_lightweight(*space, nodes, props, with_bulges == 1);
    else
        make_2d(*space, nodes, props, with_bulges == 1);
}

void pl_write_vertices(pl_vertex* head, pline_props props, int choose_kind, int drop_closing, int with_bulges)
{
    if (!head || !head->next)
        return;
    if (drop_closing == 1)
        drop_closing_vertex(head);
    pg_node* nodes = nullptr;
    pg_node** end = &nodes;
    bool differs = false;
    for (const pl_vertex* v = head; v; v = v->next) {
        const double point[3] = {v->x, v->y, v->z};
        pg_node* node = pg_node_new(point);
        if (!node) { // without a vertex it would be another line
            pl_free_nodes(nodes);
            return;
        }
        node->bulge = v->bulge;
        *end = node;
        end = &node->next;
        differs = differs || v->z != head->z;
    }
    if (choose_kind == 1)
        props.kind = differs ? KIND_P3D : KIND_LW;
    pl_make_entity(nodes, props, with_bulges, 0);
    pl_free_nodes(nodes);
}

void pl_write_simple(pl_vertex* head, const char* layer, int flags, int color, int with_bulges)
{
    pl_write_vertices(head, simple_props(layer, flags, color), 1, flags, with_bulges);
}

void pl_make_nodes_simple(const pg_node* nodes, const char* layer, int flags, int color, int force_3d)
{
    if (!nodes || !nodes->next)
        return;
    pline_props props = simple_props(layer, flags, color);
    props.kind = force_3d != 0 ? KIND_P3D : KIND_LW;
    pl_make_entity(nodes, props, 1, 0);
}

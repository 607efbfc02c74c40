#include "drawing/read.h"

#include <memory>

#include "common/text_buffer.h"
#include "drawing/open.h"

namespace
{

// The curve kind and flags that a polyline's type stands for.
struct curve_kind {
    int curve_type, flags;
};
constexpr curve_kind KINDS_2D[] = {{CURVE_NONE, 0},
                                   {CURVE_NONE, PLINE_CURVE_FIT},
                                   {CURVE_QUADRATIC, PLINE_SPLINE_FIT},
                                   {CURVE_CUBIC, PLINE_SPLINE_FIT}};
constexpr curve_kind KINDS_3D[] = {{CURVE_NONE, PLINE_3D},
                                   {CURVE_QUADRATIC, PLINE_3D | PLINE_SPLINE_FIT},
                                   {CURVE_CUBIC, PLINE_3D | PLINE_SPLINE_FIT}};

// Vertex types of a 3D polyline that aren't read: fit points; simple and control points are.
constexpr int SKIPPED_3D_TYPES = 0xD2;

template <std::size_t N>
void set_curve(pline_props& props, const curve_kind (&kinds)[N], int type)
{
    if (type < 0 || type >= static_cast<int>(N))
        return;
    props.curve_type = kinds[type].curve_type;
    props.flags = kinds[type].flags;
}

// Takes over a text that the host returned; null leaves the field as it is.
void take_text(text_out field, char* text)
{
    if (!text)
        return;
    text_set(field, text);
    acad_free(text);
}

void get_props_2d(pline_props& props, const AcDb2dPolyline& pline)
{
    props.kind = KIND_P2D;
    set_curve(props, KINDS_2D, pline.polyType());
    if (pline.isClosed())
        props.flags |= PLINE_CLOSED;
    if (pline.isLinetypeGenerationOn())
        props.flags |= PLINE_LINETYPE_GENERATION;
    props.thickness = pline.thickness();
    props.start_width = pline.defaultStartWidth();
    props.end_width = pline.defaultEndWidth();
}

void get_props_lw(pline_props& props, const AcDbPolyline& pline)
{
    props.kind = KIND_LW;
    if (pline.isClosed())
        props.flags |= PLINE_CLOSED;
    if (pline.hasPlinegen())
        props.flags |= PLINE_LINETYPE_GENERATION;
    props.thickness = pline.thickness();
    // A polyline without a constant width leaves 0.
    pline.getConstantWidth(props.start_width);
    props.end_width = props.start_width;
}

void get_props_3d(pline_props& props, const AcDb3dPolyline& pline)
{
    props.kind = KIND_P3D;
    set_curve(props, KINDS_3D, pline.polyType());
    if (pline.isClosed())
        props.flags |= PLINE_CLOSED;
}

// A chain that is built by appending.
struct growing_chain {
    pg_node* head = nullptr;
    pg_node* tail = nullptr;

    // False when the heap is exhausted; the chain is then released, as it lacks a vertex.
    bool append(const AcGePoint3d& at, double bulge)
    {
        const double point[3] = {at.x, at.y, at.z};
        pg_node* node = pg_node_new(point);
        if (!node) {
            pl_free_nodes(head);
            head = tail = nullptr;
            return false;
        }
        node->bulge = bulge;
        (tail ? tail->next : head) = node;
        tail = node;
        return true;
    }
};

void tell_unwanted_arc()
{
    acutPrintf("\nError: unable to handle a polyline with an arc.");
}

pg_node* read_2d(const AcDb2dPolyline& pline, bool arcs_allowed)
{
    growing_chain chain;
    const std::unique_ptr<AcDbObjectIterator> at(pline.vertexIterator());
    for (; at && !at->done(); at->step()) {
        const auto vertex = opened<AcDb2dVertex>(at->objectId(), AcDb::kForRead);
        if (!vertex)
            continue;
        const double bulge = vertex->bulge();
        if (!arcs_allowed && bulge != 0.0) {
            tell_unwanted_arc();
            pl_free_nodes(chain.head);
            return nullptr;
        }
        if (vertex->vertexType() != AcDb::k2dSplineCtlVertex &&
            !chain.append(pline.vertexPosition(*vertex), bulge))
            return nullptr;
    }
    return chain.head;
}

pg_node* read_3d(const AcDb3dPolyline& pline)
{
    growing_chain chain;
    const std::unique_ptr<AcDbObjectIterator> at(pline.vertexIterator());
    for (; at && !at->done(); at->step()) {
        const auto vertex = opened<AcDb3dPolylineVertex>(at->objectId(), AcDb::kForRead);
        if (vertex && (static_cast<int>(vertex->vertexType()) & SKIPPED_3D_TYPES) == 0 &&
            !chain.append(vertex->position(), 0.0))
            return nullptr;
    }
    return chain.head;
}

pg_node* read_lw(const AcDbPolyline& pline, bool arcs_allowed)
{
    pg_node* head = nullptr;
    for (unsigned i = pline.numVerts(); i-- > 0;) {
        double bulge = 0.0;
        pline.getBulgeAt(i, bulge);
        if (!arcs_allowed && bulge != 0.0) {
            tell_unwanted_arc();
            pl_free_nodes(head);
            return nullptr;
        }
        AcGePoint3d at;
        pline.getPointAt(i, at);
        const double point[3] = {at.x, at.y, at.z};
        pg_node* node = pg_node_push(point, head, bulge);
        if (!node) {
            pl_free_nodes(head);
            return nullptr;
        }
        head = node;
    }
    return head;
}

} // namespace

pline_props pl_get_props(const ads_name name)
{
    pline_props props;
    const auto entity = opened<AcDbEntity>(name, AcDb::kForRead);
    if (!entity)
        return props;
    take_text(props.layer, entity->layer());
    take_text(props.linetype, entity->linetype());
    props.ltscale = entity->linetypeScale();
    props.color = entity->colorIndex();
    if (const auto* flat = object_cast<AcDb2dPolyline>(entity.get()))
        get_props_2d(props, *flat);
    else if (const auto* light = object_cast<AcDbPolyline>(entity.get()))
        get_props_lw(props, *light);
    else if (const auto* spatial = object_cast<AcDb3dPolyline>(entity.get()))
        get_props_3d(props, *spatial);
    return props;
}

pg_node* pl_read_nodes(const ads_name name, int allow_arcs)
{
    auto object = opened<AcDbObject>(name, AcDb::kForRead);
    if (!object)
        return nullptr;
    const bool arcs_allowed = allow_arcs == 1;
    if (const auto* flat = object_cast<AcDb2dPolyline>(object.get()))
        return read_2d(*flat, arcs_allowed);
    if (const auto* spatial = object_cast<AcDb3dPolyline>(object.get()))
        return read_3d(*spatial);
    if (const auto* light = object_cast<AcDbPolyline>(object.get()))
        return read_lw(*light, arcs_allowed);
    object.reset();
    acutPrintf("\nSelected entity is not a 2d or 3d polyline");
    return nullptr;
}

pl_vertex* pl_read_vertices(const ads_name name)
{
    pg_node* nodes = pl_read_nodes(name, 1);
    pl_vertex* head = nullptr;
    pl_vertex** end = &head;
    for (const pg_node* n = nodes; n; n = n->next) {
        pl_vertex* vertex = pl_vertex_new(n->x, n->y, n->z);
        if (!vertex) {
            pl_free_vertices(head);
            head = nullptr;
            break;
        }
        vertex->bulge = n->bulge;
        *end = vertex;
        end = &vertex->next;
    }
    pl_free_nodes(nodes);
    return head;
}

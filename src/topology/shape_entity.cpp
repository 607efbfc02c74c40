// Drawing objects as shapes. This is all of a shape network that wants a drawing.
#include <algorithm>

#include "drawing/object_list.h"
#include "drawing/read.h"
#include "drawing/tables.h"
#include "hostapi/ads.h"
#include "topology/shape_net.h"

namespace
{

// The node at a point group of an object; 0 when it has none.
std::int32_t intern_group(ShapeNet* net, const object_list& list, int group)
{
    const resbuf* point = list.find(group);
    return point ? net->intern_node(point->resval.rpoint[0], point->resval.rpoint[1], point->resval.rpoint[2])
                 : 0;
}

void connect_line(ShapeNet* net, ShapeObj* shape, const object_list& list)
{
    shape->kind = ShapeKind::LINE;
    const std::int32_t from = intern_group(net, list, 10), to = intern_group(net, list, 11);
    if (from != 0 && to != 0)
        net->connect(from, to, 0.0, shape, shape->id);
}

// A face is read as the open chain of its corners: the side that closes it is never made.
void connect_face(ShapeNet* net, ShapeObj* shape, const object_list& list)
{
    std::int32_t corner[4];
    for (int i = 0; i < 4; ++i)
        corner[i] = intern_group(net, list, 10 + i);
    const bool has_fourth = corner[3] != 0 && corner[3] != corner[0];
    shape->kind = has_fourth ? ShapeKind::CLOSED_FACE : ShapeKind::OPEN_FACE;
    for (int i = 1; i < (has_fourth ? 4 : 3); ++i)
        if (corner[i - 1] != 0 && corner[i] != 0)
            net->connect(corner[i - 1], corner[i], 0.0, shape, shape->id);
}

// The shape of a drawing object, in the network; null without memory.
ShapeObj* add_shape_of(ShapeNet* net, const ads_name entity)
{
    auto* shape = new ShapeObj;
    if (net->add_shape(shape) == 0) {
        delete shape;
        return nullptr;
    }
    std::copy_n(entity, 2, shape->entity);
    shape->color = static_cast<std::uint8_t>(entity_color(entity));
    return shape;
}

} // namespace

void ShapeNet::add_entity(const ads_name entity)
{
    const pline_props props = pl_get_props(entity);
    if (props.kind != KIND_NONE) {
        pg_node* chain = pl_read_nodes(entity, 1);
        ShapeObj* shape = chain ? add_shape_of(this, entity) : nullptr;
        if (shape)
            add_chain(shape, chain, shape->color, (props.flags & PLINE_CLOSED) != 0);
        pl_free_nodes(chain);
        return;
    }
    const object_list list(entity);
    const bool is_line = list && list.type() == "LINE", is_face = list && list.type() == "3DFACE";
    ShapeObj* shape = is_line || is_face ? add_shape_of(this, entity) : nullptr;
    if (shape)
        (is_line ? connect_line : connect_face)(this, shape, list);
}

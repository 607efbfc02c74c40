#include "shell/tool_handlers.h"

#include "shell/operations.h"
#include "tools/add_arrow_tool.h"
#include "tools/arrow_pair.h"
#include "tools/curved_text.h"
#include "tools/drag_move.h"
#include "tools/extend_tools.h"
#include "tools/leader_tool.h"
#include "tools/pointer_tool.h"
#include "tools/polyline_vertices.h"
#include "tools/rotate_to_chain.h"
#include "tools/segment_queries.h"
#include "tools/select_hole_symbols.h"
#include "tools/side_arrow.h"
#include "tools/trim_at_symbols.h"

void op_horizontal_view(op_call&)
{
    extend_tools(0);
}

void op_pointer(op_call&)
{
    pointer_tool();
}

void op_extend_arc(op_call&)
{
    extend_tools(2);
}

void op_leader(op_call&)
{
    leader_tool();
}

void op_side_arrow(op_call& call)
{
    side_arrow(call.args);
}

void op_curved_text(op_call& call)
{
    curved_text(call.args);
}

void op_arrow_pair(op_call& call)
{
    arrow_pair(call.args);
}

void op_add_arrow(op_call&)
{
    add_arrow_tool();
}

void op_trim_symbols(op_call&)
{
    trim_at_symbols();
}

void op_segment_at_pick(op_call& call)
{
    segment_at_pick(call.args);
}

void op_angle_at_pick(op_call& call)
{
    angle_at_pick(call.args);
}

void op_rotate_to_chain(op_call& call)
{
    rotate_to_chain(call.args);
}

void op_drag_move(op_call& call)
{
    drag_move(call.args);
}

void op_polyline_vertices(op_call& call)
{
    polyline_vertices(call.args);
}

void op_select_hole_symbols(op_call&)
{
    select_hole_symbols();
}

void op_second_point(op_call& call)
{
    second_point(call.args);
}

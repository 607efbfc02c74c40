// tool_handlers.h: the operations that start a drafting tool.
#pragma once

struct op_call;

void op_horizontal_view(op_call& call);
void op_pointer(op_call& call);
void op_extend_arc(op_call& call);
void op_leader(op_call& call);
void op_side_arrow(op_call& call);
void op_curved_text(op_call& call);
void op_arrow_pair(op_call& call);
void op_add_arrow(op_call& call);
void op_trim_symbols(op_call& call);
void op_segment_at_pick(op_call& call);
void op_angle_at_pick(op_call& call);
void op_rotate_to_chain(op_call& call);
void op_drag_move(op_call& call);
void op_polyline_vertices(op_call& call);
void op_select_hole_symbols(op_call& call);
void op_second_point(op_call& call);

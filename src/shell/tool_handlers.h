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

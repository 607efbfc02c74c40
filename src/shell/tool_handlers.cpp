#include "shell/tool_handlers.h"

#include "shell/operations.h"
#include "tools/extend_tools.h"

void op_horizontal_view(op_call&)
{
    extend_tools(0);
}

void op_pointer(op_call&) {}

void op_extend_arc(op_call&) {}

void op_leader(op_call&) {}

void op_side_arrow(op_call&) {}

void op_curved_text(op_call&) {}

void op_arrow_pair(op_call&) {}

void op_add_arrow(op_call&) {}

#include "shell/tool_handlers.h"

#include "shell/operations.h"
#include "tools/add_arrow_tool.h"
#include "tools/arrow_pair.h"
#include "tools/curved_text.h"
#include "tools/extend_tools.h"
#include "tools/leader_tool.h"
#include "tools/pointer_tool.h"
#include "tools/side_arrow.h"

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

#include "tools/extend_tools.h"

#include "hostapi/adsdef.h"
#include "tools/extend_arc.h"
#include "tools/horizontal_view.h"

namespace
{

constexpr int EXTEND_ARC = 2;

} // namespace

int extend_tools(int mode)
{
    if (mode == EXTEND_ARC)
        extend_arc_tool();
    else
        horizontal_view_tool();
    return RTNORM;
}

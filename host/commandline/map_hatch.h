// map_hatch.h: a hatch under a map that keeps its shape. Inner header of map_objects.cpp.
#pragma once

#include "host/commandline/map_objects.h"

namespace host::commandline
{

// `plane` is similar (plane_change::is_similar); it may flip.
void map_hatch(db::group_list& groups, const plane_change& plane);

} // namespace host::commandline

// fill_face.h: tin_fill_face, for those who go on afterwards.
#pragma once

#include "topology/surface_net.h"

// tin_fill_face; false when the user broke off, and was told.
bool fill_face(SurfaceNet* surface, const pg_node* chain);

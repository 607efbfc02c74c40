// read_points.h: what helps tin_add_point to its places.
#pragma once

#include "tin/network.h"

void tin_reading_free(tin_network* network);

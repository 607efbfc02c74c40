// reading_index.h: finds places in the tree of points that is being read without walking down it.
#pragma once

#include "tin/network.h"

// An index for the tree whose root has just been put in; on an exhausted heap there is none.
void reading_index_begin(tin_network* network);
// The network has an index and it knows the whole tree.
bool reading_index_stands(const tin_network* network);
// What a walk down the tree for the point would find: the duplicate within network->box that it meets first;
// else null with the link where the point belongs.
tin_point* reading_index_find(const tin_network* network, const tin_point* point, tin_point*** place);
// Makes a point known that was hung there. Without room for it the index is given up.
void reading_index_add(tin_network* network, tin_point* point);
void reading_index_free(tin_network* network);

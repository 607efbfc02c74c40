// face_chain.h: the edges round a face as a chain of the polygon kernel.
#pragma once

#include "polygon/node.h"
#include "topology/topo_net.h"

// The chain through the edges of a shape of `net`, in their order and in the direction in which the first one
// leads into the second; closed edges give a closed chain, with the first place again at its end. Arcs keep
// their side. Of two edges that don't join, the second is reached by a straight segment; edges and nodes that
// are gone are passed over. The caller's (pl_free_nodes); null for a shape without edges and when the heap is
// exhausted.
pg_node* face_to_chain(const TopoNet& net, const ShapeObj& shape);

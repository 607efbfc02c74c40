#include "topology/topo_net.h"

#include <initializer_list>

std::int32_t TopoNet::add_node(NodeObj* node)
{
    const std::int32_t id = node ? nodes.add(node) : 0;
    if (id == 0)
        return 0;
    node->id = id;
    node->owner = this;
    return id;
}

std::int32_t TopoNet::take_edge(EdgeKey* edge)
{
    const std::int32_t id = edge ? edges.add(edge) : 0;
    if (id == 0)
        return 0;
    edge->id = id;
    edge->owner = this;
    for (const std::int32_t end : {edge->node1, edge->node2})
        if (NodeObj* at = node(end))
            at->link(id);
    return id;
}

void TopoNet::let_edge_go(const EdgeKey& edge)
{
    for (const std::int32_t end : {edge.node1, edge.node2})
        if (NodeObj* at = node(end))
            at->unlink(edge.id);
    edges.remove(edge.id);
}

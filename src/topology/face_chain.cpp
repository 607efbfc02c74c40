// The chain is made from its far end, node before node, and then turned round by the kernel. Until then each
// node stands before the one that it was reached from, and so has the bulge of the way back.
#include "topology/face_chain.h"

#include "hostapi/ads.h"

namespace
{

// An edge as it is walked.
struct walked_edge {
    std::int32_t from, to;
    double bulge;
};

class backward_chain
{
public:
    explicit backward_chain(const TopoNet& net) : net_(net) {}

    // Walks the edge from its end at the free end of the chain.
    void walk(const walked_edge& edge)
    {
        if (!head_ || edge.from != free_)
            push(edge.from, 0.0);
        push(edge.to, -edge.bulge);
        free_ = edge.to;
    }

    std::int32_t free_end() const { return free_; }

    pg_node* taken()
    {
        if (failed_) {
            pl_free_nodes(head_);
            return nullptr;
        }
        return pg_reverse(head_);
    }

private:
    void push(std::int32_t id, double bulge)
    {
        const auto* node = static_cast<const NodeObj*>(net_.nodes.get(id));
        if (!node || failed_)
            return;
        const double at[3] = {node->x, node->y, node->z};
        pg_node* head = pg_node_push(at, head_, bulge);
        failed_ = !head;
        head_ = head ? head : head_;
    }

    const TopoNet& net_;
    pg_node* head_ = nullptr;
    std::int32_t free_ = 0;
    bool failed_ = false;
};

walked_edge turned(const walked_edge& edge)
{
    return {edge.to, edge.from, -edge.bulge};
}

bool joins(std::int32_t node, const walked_edge& edge)
{
    return node == edge.from || node == edge.to;
}

} // namespace

pg_node* face_to_chain(const TopoNet& net, const ShapeObj& shape)
{
    backward_chain chain(net);
    walked_edge first{};
    int seen = 0;
    for (std::int32_t i = 1; i != 0; i = shape.edges.next(i)) {
        const TopoObject* holder = shape.edges.get(i);
        const auto* key = holder ? static_cast<const EdgeKey*>(net.edges.get(holder->id)) : nullptr;
        if (!key)
            continue;
        const walked_edge edge{key->node1, key->node2, key->bulge};
        if (++seen == 1) {
            first = edge;
            continue;
        }
        // The first edge's ends wait for the second one.
        if (seen == 2)
            chain.walk(joins(first.to, edge) ? first : turned(first));
        chain.walk(edge.from == chain.free_end() || edge.to != chain.free_end() ? edge : turned(edge));
    }
    if (seen == 1)
        chain.walk(first);
    return chain.taken();
}

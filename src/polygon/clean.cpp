// Removal of double nodes and spikes.
//
// The rule is a run of passes over the whole chain: first drop each node that lies on the node before
// it, then drop each pair of nodes that leads out and back, until a pass changes nothing. A removal
// can only bring forth new ones at the link that it made, so after the first pass the later ones
// look at those places alone, in chain order. The outcome is that of the full passes, node for node,
// and the work is in proportion to the chain.
#include <vector>

#include "hostapi/ads.h"
#include "polygon/node.h"
#include "polygon/points.h"
#include "polygon/tolerances.h"

namespace
{

using nodes = std::vector<pg_node*>;

// Removed nodes wait on a list of their own until the end, each marked by a `prev` that is itself, so
// that a place which was noted and has gone since is known as such.
struct cleaning {
    pg_node* removed = nullptr;

    static bool is_removed(const pg_node* node) { return node->prev == node; }

    void remove_next(pg_node* node)
    {
        pg_node* gone = node->next;
        node->next = gone->next;
        if (gone->next)
            gone->next->prev = node;
        gone->prev = gone;
        gone->next = removed;
        removed = gone;
    }
};

bool close_together(const pg_node* a, const pg_node* b)
{
    return pg_dist_sq(*a, *b) < PG_LENGTH_SQ_TOL;
}

void drop_doubles_behind(cleaning& work, pg_node* node)
{
    while (node->next && close_together(node, node->next))
        work.remove_next(node);
}

bool drop_spike_behind(cleaning& work, pg_node* node)
{
    if (!node->next || !node->next->next || !close_together(node, node->next->next))
        return false;
    work.remove_next(node);
    work.remove_next(node);
    return true;
}

void set_prev(pg_node* chain)
{
    pg_node* before = nullptr;
    for (pg_node* n = chain; n; n = n->next) {
        n->prev = before;
        before = n;
    }
}

// The first pass; the nodes behind which a spike was taken out.
nodes clean_all(cleaning& work, pg_node* chain)
{
    for (pg_node* n = chain; n; n = n->next)
        drop_doubles_behind(work, n);
    nodes changed;
    for (pg_node* n = chain; n; n = n->next)
        if (drop_spike_behind(work, n))
            changed.push_back(n);
    return changed;
}

// A later pass, over the links that the pass before it made.
nodes clean_again(cleaning& work, const nodes& links)
{
    nodes places;
    for (pg_node* n : links)
        if (!cleaning::is_removed(n))
            drop_doubles_behind(work, n);
    for (pg_node* n : links) {
        if (cleaning::is_removed(n))
            continue;
        if (n->prev && (places.empty() || places.back() != n->prev))
            places.push_back(n->prev);
        places.push_back(n);
    }
    nodes changed;
    for (pg_node* n : places)
        if (!cleaning::is_removed(n) && drop_spike_behind(work, n))
            changed.push_back(n);
    return changed;
}

} // namespace

void pg_clean(pg_node* chain)
{
    cleaning work;
    set_prev(chain);
    nodes changed = clean_all(work, chain);
    while (!changed.empty())
        changed = clean_again(work, changed);
    pl_free_nodes(work.removed);
}

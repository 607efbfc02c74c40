#include "tests/polygon/chains.h"

chain_ptr make_chain(const std::vector<spot>& spots, double x, double y)
{
    pg_node* head = nullptr;
    pg_node** end = &head;
    for (const spot& s : spots) {
        const double point[3] = {s.x + x, s.y + y, s.z};
        *end = pg_node_new(point);
        (*end)->bulge = s.bulge;
        end = &(*end)->next;
    }
    return chain_ptr(head);
}

std::vector<spot> spots_of(const pg_node* chain)
{
    std::vector<spot> spots;
    for (; chain; chain = chain->next)
        spots.push_back({chain->x, chain->y, chain->bulge, chain->z});
    return spots;
}

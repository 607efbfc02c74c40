// chains.h: chains for tests, and where they are tried.
#pragma once

#include <memory>
#include <vector>

#include "polygon/node.h"

struct spot {
    double x, y, bulge = 0.0, z = 0.0;
    bool operator==(const spot&) const = default;
};

struct free_nodes {
    void operator()(pg_node* head) const { pl_free_nodes(head); }
};
using chain_ptr = std::unique_ptr<pg_node, free_nodes>;

// Made of nodes of pg_node_new; `x` and `y` are added to every position.
chain_ptr make_chain(const std::vector<spot>& spots, double x = 0.0, double y = 0.0);
std::vector<spot> spots_of(const pg_node* chain);

// The origin, and a survey grid far from it.
struct place {
    double x, y;
};
constexpr place PLACES[] = {{0.0, 0.0}, {640000.0, 5120000.0}};

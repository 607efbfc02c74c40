// chain_index.h: chain_normal_at for many points of one chain, in a time that hardly grows with the chain.
#pragma once

#include <cstddef>
#include <vector>

#include "drawing/vertex_chain.h"

class chain_index
{
public:
    // The chain may be null. It must live as long as the index, and stay as it is.
    explicit chain_index(const pl_vertex* chain);
    // The very same as chain_normal_at; `normal` stays as it was when the answer is 0.
    int normal_at(const ads_point point, double tolerance, double* normal) const;

private:
    // All feet on the segments of a run, or of two runs, lie in its box.
    struct box {
        double low[2], high[2];
        void add(const box& other);
        double distance(const ads_point point) const;
    };
    struct search;
    static box box_of(const pl_vertex& a, const pl_vertex& b);
    void visit(std::size_t node, search* now) const;
    void scan(std::size_t run, search* now) const;

    std::vector<const pl_vertex*> starts_; // the vertex at which each segment begins
    std::vector<box> boxes_;    // a tree: those of node i are 2 i + 1 and 2 i + 2; the runs come last
    std::size_t first_run_ = 0; // node of the first run; their number is a power of 2
};

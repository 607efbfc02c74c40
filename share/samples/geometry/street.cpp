// street.cpp: the kerbs of a street from its axis, a rounded corner of two kerbs, and the middle line of a lot.
#include <cstdio>
#include <initializer_list>

#include "polygon/centre_lines.h"
#include "polygon/measures.h"
#include "polygon/node.h"
#include "polygon/offset.h"
#include "polygon/rounding.h"

namespace
{

struct vertex {
    double x, y, bulge;
};

// A chain is built from its end: each new node stands in front of the others.
template <int N>
pg_node* chain_of(const vertex (&vertices)[N])
{
    pg_node* head = nullptr;
    for (int i = N - 1; i >= 0; --i) {
        const double at[3] = {vertices[i].x, vertices[i].y, 0.0};
        head = pg_node_push(at, head, vertices[i].bulge);
    }
    return head;
}

void print(const char* what, const pg_node* chain)
{
    std::printf("%s, length %.3f\n", what, pg_length(chain));
    for (const pg_node* node = chain; node; node = node->next)
        std::printf("  %9.3f %9.3f  bulge %7.4f\n", node->x, node->y, node->bulge);
}

} // namespace

int main()
{
    // Straight, a bend of a quarter circle to the left, straight again.
    pg_node* axis = chain_of({{0, 0, 0}, {60, 0, 0.41421356237309503}, {80, 20, 0}, {80, 70, 0}});
    print("axis", axis);
    constexpr double HALF_WIDTH = 3.25;
    pg_node* right = pg_offset(axis, HALF_WIDTH, 1, 0, 1);
    pg_node* left = pg_offset(axis, HALF_WIDTH, 0, 0, 1);
    print("right kerb", right);
    print("left kerb", left);

    // Two kerbs that meet at a corner, rounded with 6 m.
    pg_node* corner = chain_of({{0, 40, 0}, {50, 40, 0}, {50, 90, 0}});
    const double at[3] = {50, 40, 0};
    pg_node* rounded = pg_round_corner(&corner, at, 6.0);
    print("rounded corner", rounded);

    pg_node* lot = chain_of({{0, 0, 0}, {30, 0, 0}, {30, 12, 0}, {0, 12, 0}, {0, 0, 0}});
    pg_ring* lines = pg_centre_lines(lot, 1.0, -1, 0);
    for (const pg_ring* line = lines; line; line = line->next)
        print("centre line", line->nodes);

    pg_free_rings(&lines);
    for (pg_node* chain : {axis, right, left, corner, rounded, lot})
        pl_free_nodes(chain);
}

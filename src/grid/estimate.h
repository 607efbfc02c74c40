// estimate.h: the numbers of one estimate; nothing is read or written here but the cells handed in.
#pragma once

#include "grid/cells_around.h"

// Sums over triangles: their normals, and how many they are.
struct normal_sums {
    double x = 0, y = 0, z = 0;
    double count = 0;
};

// Of a grid whose nodes lie alike as their coordinates round, as they do where origin and steps have few
// digits: all triangles are of one shape then.
struct even_steps {
    double x, y;
    double z_sums[65]; // by the count of triangles, added one by one
};

struct estimate_rules {
    char mode; // 'A', 'P', 'C'
    double step_x, step_y, step_diagonal;
    const even_steps* even; // of the grid; null where it isn't, or wasn't looked at
};

// Adds the triangles of the cell in the middle and its four neighbours.
void add_normals(const grid* g, std::int32_t column, std::int32_t row, const cells_around& around,
                 normal_sums* sums);

// The estimate for the cell in the middle; false when it can't be had. Works with and sets grid_slope.
bool estimate(const grid* g, std::int32_t column, std::int32_t row, const cells_around& around,
              const estimate_rules& rules, double* z);

estimate_rules rules_of(char mode, double step_x, double step_y, double step_diagonal);
// False when the grid has none.
bool find_even_steps(const grid* g, even_steps* out);

// random_segments.h: chains of lines and arcs of all sizes and shapes, from a seed.
#pragma once

#include <random>

#include "tests/polygon/chains.h"

// Steps of ordinary size about `x`, `y`, with arcs flat and full, half circles, corners on a lattice (so that
// places and lines coincide), double nodes and spikes.
std::vector<spot> ordinary_chain(std::mt19937& random, int nodes);
// The same with some steps from 1e-160 to 1e12 long, bulges from 1e-20 to 1e8, and numbers that are none.
std::vector<spot> nasty_chain(std::mt19937& random, int nodes);

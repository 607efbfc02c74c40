// centre_merge.h: the diagrams of an outline's runs made one.
#pragma once

#include "polygon/centre_network.h"

// Merges the runs, whose starting rays are in the network. False when the user broke off.
bool cl_merge_runs(const cl_outline& outline, double slope, cl_network* net);

// survey.h: networks for tests: points and barriers by number, what was printed, and a check of the structure.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "tin/network.h"

struct place {
    double x, y, z = 0.5;
};

// A network with the points and barriers that a program would give it.
class survey
{
public:
    tin_network network;
    // What tin_add_point said of a point; taken points go on the list and widen the extents.
    tin_point* offer(double x, double y, double z = 0.5);
    // The taken points by number; a duplicate is its first one again.
    std::vector<tin_point*> points;
    void offer_all(const std::vector<place>& places);
    void barrier(int from, int to);
    // Hands the list over and runs.
    void run();

private:
    tin_point* list = nullptr;

public:
    survey();
    ~survey();
};

// What was printed since this was last asked, by all networks.
std::string printed();
// From the time that this text is printed on, the break key is down; "" lets it go.
void break_at_text(const std::string& text);

// What is wrong with the structure: links that aren't mutual, corners that aren't counter-clockwise (a
// sliver of no more than `sliver` area may be), points in a bucket that is not theirs. "" when all is well.
std::string faults(const tin_network& network, double sliver = 0);
// The same of a run that was left in the middle: points are still in the network's coordinates.
std::string faults_inside_run(const tin_network& network, double sliver = 0);

int triangle_count(const tin_network& network);
// Sum of the areas of all triangles, the frame's included.
double total_area(const tin_network& network);
// Some triangle has the edge.
bool has_edge(const tin_network& network, const tin_point* p, const tin_point* q);
// Waiting points in the buckets of all triangles.
int waiting_count(const tin_network& network);
// The triangles by the numbers of their points, in the order of the list; frame corners are -1 to -4,
// midpoints of barriers have numbers from 1000000 on.
std::vector<std::vector<int>> triangles_by_number(const survey& s);

// Points of chance in a square of the given size; `grid` above 0 rounds them to that many steps.
std::vector<place> random_places(unsigned seed, int count, double size, int grid = 0);

// side_distances.h: the distance from one chain of many places that follow one another.
#pragma once

#include <vector>

#include "polygon/node.h"
#include "polygon/segment_boxes.h"

// Answers as pg_closest does on the whole chain, but looks only at segments whose boxes come near. The chain
// must stay as it is.
class side_distances
{
public:
    explicit side_distances(const pg_node* chain);
    ~side_distances();
    side_distances(const side_distances&) = delete;
    side_distances& operator=(const side_distances&) = delete;

    double from(double x, double y);

private:
    const pg_node* chain_;
    std::vector<const pg_node*> starts_; // of the segments
    pg_box_tree boxes_;
    std::size_t nearest_ = 0; // segment of the last answer: the next place is likely near it as well
};

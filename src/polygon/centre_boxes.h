// centre_boxes.h: boxes round places and paths of centre lines.
#pragma once

#include <algorithm>
#include <cmath>
#include <limits>

#include "polygon/centre_parts.h"

struct cl_box {
    double low[2], high[2];
};

constexpr cl_box CL_NO_BOX{
    {std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity()},
    {-std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity()}};

inline void cl_extend(cl_box& box, const cl_box& by)
{
    for (int i = 0; i < 2; ++i) {
        box.low[i] = std::min(box.low[i], by.low[i]);
        box.high[i] = std::max(box.high[i], by.high[i]);
    }
}

inline cl_box cl_box_of(const cl_point& a, const cl_point& b, double margin)
{
    return {{std::min(a[0], b[0]) - margin, std::min(a[1], b[1]) - margin},
            {std::max(a[0], b[0]) + margin, std::max(a[1], b[1]) + margin}};
}

inline bool cl_apart(const cl_box& a, const cl_box& b)
{
    return a.low[0] > b.high[0] || a.high[0] < b.low[0] || a.low[1] > b.high[1] || a.high[1] < b.low[1];
}

// Whether a segment passes a box by, on one side of its line.
inline bool cl_passes(const cl_point& from, const cl_point& to, const cl_box& box)
{
    const double dx = to[0] - from[0], dy = to[1] - from[1];
    const double cx = (box.low[0] + box.high[0]) / 2.0 - from[0],
                 cy = (box.low[1] + box.high[1]) / 2.0 - from[1];
    const double hx = (box.high[0] - box.low[0]) / 2.0, hy = (box.high[1] - box.low[1]) / 2.0;
    return std::fabs(dx * cy - dy * cx) > std::fabs(dx) * hy + std::fabs(dy) * hx;
}

#include "tools/zorro_line.h"

#include <cmath>

#include "tools/arrow_head.h"
#include "tools/curve.h"

namespace
{

constexpr double ZORRO_TENSION = 2.7;
constexpr double ZORRO_STEP = 0.08;
constexpr double FAR_BEND = 0.58, NEAR_BEND = 0.42; // along the run
constexpr double BEND_WIDTH = 0.075;                // of the run's length, to either side
constexpr double LEAN = 5.0;
constexpr double LEAST = 1e-10;

// The unit vector (1, w) / |(1, w)| with w = (1 - 5 ux) / (5 uy): the zigzag leans and isn't square to its
// run. Written so that it holds however small uy is.
void zigzag_direction(double ux, double uy, double* out)
{
    const double x = std::fabs(LEAN * uy);
    const double y = std::copysign(1.0, uy) * (1.0 - LEAN * ux);
    const double length = std::hypot(x, y);
    out[0] = x / length;
    out[1] = y / length;
}

} // namespace

void zorro_line(const ads_point start, const ads_point end, bool with_arrow)
{
    const double dx = end[0] - start[0], dy = end[1] - start[1];
    double length = std::hypot(dx, dy);
    if (length == 0.0)
        length = LEAST;
    const double ux = dx / length;
    const double uy = dy / length == 0.0 ? LEAST : dy / length;
    double n[2];
    zigzag_direction(ux, uy, n);
    const double across = BEND_WIDTH * length;
    const ads_point points[4] = {
        {start[0], start[1], start[2]},
        {start[0] + FAR_BEND * length * ux - across * n[0], start[1] + FAR_BEND * length * uy - across * n[1],
         start[2]},
        {start[0] + NEAR_BEND * length * ux + across * n[0], start[1] + NEAR_BEND * length * uy + across * n[1],
         start[2]},
        {end[0], end[1], end[2]},
    };
    pl_vertex* chain = chain_of_points(points, 4);
    if (chain && chain_curve(chain, ZORRO_TENSION, ZORRO_STEP)) {
        chain_write_plain(chain);
        if (with_arrow)
            draw_arrow_head(chain);
    }
    pl_free_vertices(chain);
}

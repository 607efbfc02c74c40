#include "tools/arrow_pair.h"

#include "common/arguments.h"
#include "common/variables.h"
#include "tools/arrow_head.h"
#include "tools/curve.h"
#include "tools/drawn_objects.h"

namespace
{

constexpr double STANDARD_SIZE = 25.0;

// The chain has been curved for the head: the line has the curve's points on its straight run.
void draw_head_and_line(pl_vertex* chain, drawn_set* drawn)
{
    const newest_object before_head;
    draw_arrow_head(chain);
    drawn->add_new(before_head);
    const newest_object before_line;
    chain_write_plain(chain);
    drawn->add_new(before_line);
}

} // namespace

int arrow_pair(const resbuf* args)
{
    ads_point ends[2] = {};
    next_real(&args, 0.0);
    next_real(&args, 0.0);
    next_point(&args, ends[0]);
    next_point(&args, ends[1]);
    ends[0][2] = ends[1][2] = 0.0;
    const double size = next_real(&args, STANDARD_SIZE);
    const kept_variable size_before("DIMASZ");
    set_arrow_size(size / 2.0);
    drawn_set drawn;
    pl_vertex* chain = chain_of_points(ends, 2);
    if (chain)
        draw_head_and_line(chain, &drawn);
    pl_free_vertices(chain);
    drawn.answer();
    return RTNORM;
}

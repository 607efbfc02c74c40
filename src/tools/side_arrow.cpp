#include "tools/side_arrow.h"

#include <cmath>

#include "common/arguments.h"
#include "common/variables.h"
#include "drawing/segment_arc.h"
#include "drawing/stroke.h"
#include "drawing/tables.h"
#include "hostapi/ads.h"
#include "tools/arrow_head.h"
#include "tools/curve.h"
#include "tools/drawn_objects.h"

namespace
{

constexpr double STANDARD_SIZE = 25.0;
constexpr double HEAD_PART = 0.2;       // of the size
constexpr double SHORTEST_PART = 0.25;  // of the size
constexpr double BOW_PART = 0.25;       // of the offset
constexpr double THIN_TOLERANCE = 0.01; // squared
constexpr int LAYER_COLOR = 1;

constexpr int STYLE_ARC_WITH_HEAD = 0;
constexpr int STYLE_CURVES_WITH_POINT = 1;
constexpr int STYLE_ARC = 3;

struct arrow_request {
    double side, offset;
    ads_point start{}, end{};
    double size;
    int style;
    const char* layer;
};

arrow_request read_request(const resbuf* args)
{
    arrow_request want;
    want.side = next_real(&args, 0.0);
    want.offset = next_real(&args, 0.0);
    next_point(&args, want.start);
    next_point(&args, want.end);
    want.size = next_real(&args, STANDARD_SIZE);
    want.style = next_short(&args, 0);
    want.layer = next_text(&args, "");
    ads_name replaced;
    if (next_name(&args, replaced))
        acedSSFree(replaced);
    return want;
}

// The line from points[0] to points[2], bowed at points[1].
struct bowed_line {
    ads_point points[3];
};

void move_aside(double* point, const double* direction, double by)
{
    double d[2] = {direction[0], direction[1]}, normal[2];
    scaled_normal(d, normal);
    point[0] += by * normal[0];
    point[1] += by * normal[1];
}

// False when start and end are too close together for an arrow of that size.
bool bow_of(const arrow_request& want, bowed_line* line)
{
    double d[2] = {want.start[0] - want.end[0], want.start[1] - want.end[1]};
    const double length = std::hypot(d[0], d[1]);
    if (want.size * SHORTEST_PART > length)
        return false;
    if (length > want.size && length > 0.0) {
        d[0] *= want.size / length;
        d[1] *= want.size / length;
    }
    auto& [a, m, b] = line->points;
    b[0] = want.end[0];
    b[1] = want.end[1];
    a[0] = b[0] + d[0];
    a[1] = b[1] + d[1];
    a[2] = m[2] = b[2] = 0.0;
    double along[2] = {a[0] - b[0], a[1] - b[1]};
    move_aside(a, along, want.side * want.offset);
    along[0] = a[0] - b[0];
    along[1] = a[1] - b[1];
    m[0] = (a[0] + b[0]) / 2.0;
    m[1] = (a[1] + b[1]) / 2.0;
    move_aside(m, along, want.side * want.offset * BOW_PART);
    return true;
}

bool is_finite(const bowed_line& line)
{
    for (const ads_point& p : line.points)
        if (!point_is_finite(p))
            return false;
    return true;
}

// ---- the styles ------------------------------------------------------------------------------------

// From end to start, the middle in between; straight or curved. Null when the heap is exhausted.
pl_vertex* chain_of_bow(const bowed_line& line, bool curved)
{
    pl_vertex* chain = chain_of_points(line.points, 3);
    if (curved && chain && !chain_curve(chain, LEADER_TENSION, LEADER_STEP)) {
        pl_free_vertices(chain);
        return nullptr;
    }
    chain = chain_reverse(chain);
    pl_link_back(chain);
    return chain;
}

void draw_arc(const bowed_line& line, drawn_set* drawn)
{
    const newest_object before;
    const auto& [a, m, b] = line.points;
    acedCommand(RTSTR, "_.ARC", RT3DPOINT, a, RT3DPOINT, m, RT3DPOINT, b, RTNONE);
    drawn->add_new(before);
}

// Draws the vertices from one to another; a lone one draws nothing.
void draw_piece(pl_vertex* from, pl_vertex* to, drawn_set* drawn)
{
    pl_vertex* behind = to->next;
    to->next = nullptr;
    const newest_object before;
    chain_write_plain(from);
    drawn->add_new(before);
    to->next = behind;
}

void draw_arc_with_head(const bowed_line& line, drawn_set* drawn)
{
    pl_vertex* chain = chain_of_bow(line, false);
    if (!chain)
        return;
    chain_thin(chain, THIN_TOLERANCE);
    const newest_object before;
    draw_arrow_head(chain);
    drawn->add_new(before);
    pl_free_vertices(chain);
    draw_arc(line, drawn);
}

pl_vertex* middle_of(pl_vertex* chain)
{
    for (pl_vertex* v = chain; v && v->next; v = v->next)
        if (v != chain && v->type == USER_POINT)
            return v;
    return nullptr;
}

// Thinned up to the middle and from behind it, each for itself.
void thin_beside(pl_vertex* head, pl_vertex* middle)
{
    middle->prev->next = nullptr;
    chain_thin(head, THIN_TOLERANCE);
    chain_thin(middle->next, THIN_TOLERANCE);
    middle->next->prev = middle;
    middle->prev = pl_last(head);
    middle->prev->next = middle;
}

void draw_curves_with_point(const bowed_line& line, drawn_set* drawn)
{
    pl_vertex* chain = chain_thin(chain_of_bow(line, true), THIN_TOLERANCE);
    pl_vertex* middle = middle_of(chain);
    if (chain && !middle) {
        // A flat bow is thinned to next to nothing. Its middle is where the line is cut and must stay.
        pl_free_vertices(chain);
        chain = chain_of_bow(line, true);
        middle = middle_of(chain);
        if (middle)
            thin_beside(chain, middle);
    }
    if (middle) {
        draw_piece(chain, middle->prev, drawn);
        const newest_object before;
        acedCommand(RTSTR, "_.POINT", RT3DPOINT, line.points[1], RTNONE);
        drawn->add_new(before);
        draw_piece(middle->next, pl_last(middle), drawn);
    }
    pl_free_vertices(chain);
}

void draw_dashes(const bowed_line& line, drawn_set* drawn)
{
    pl_vertex* chain = chain_thin(chain_of_bow(line, true), THIN_TOLERANCE);
    constexpr double CUTS[4] = {0.25, 0.375, 0.625, 0.75};
    pl_vertex* cut[4];
    bool all = true;
    for (int i = 0; i < 4; ++i) {
        cut[i] = chain_split_at(chain, CUTS[i]);
        all = all && cut[i];
    }
    if (all) {
        draw_piece(chain, cut[0], drawn);
        draw_piece(cut[1], cut[2], drawn);
        draw_piece(cut[3], pl_last(cut[3]), drawn);
    }
    pl_free_vertices(chain);
}

void draw_style(int style, const bowed_line& line, drawn_set* drawn)
{
    switch (style) {
    case STYLE_ARC_WITH_HEAD:
        draw_arc_with_head(line, drawn);
        break;
    case STYLE_ARC:
        drawn->add_last(); // programs that erase the set count on it
        draw_arc(line, drawn);
        break;
    case STYLE_CURVES_WITH_POINT:
        draw_curves_with_point(line, drawn);
        break;
    default:
        draw_dashes(line, drawn);
        break;
    }
}

} // namespace

int side_arrow(const resbuf* args)
{
    const arrow_request want = read_request(args);
    kept_variable layer("CLAYER"), size("DIMASZ");
    set_arrow_size(want.size * HEAD_PART);
    if (want.layer[0] != '\0')
        layer_by_command(want.layer, LAYER_COLOR);
    bowed_line line;
    if (!bow_of(want, &line)) {
        // Programs ask again with another place and go on with this layer and size.
        layer.drop();
        size.drop();
        return RTNORM;
    }
    drawn_set drawn;
    if (is_finite(line))
        draw_style(want.style, line, &drawn);
    drawn.answer();
    return RTNORM;
}

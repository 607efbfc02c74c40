#include "drawing/segment_arc.h"

#include "common/angle_text.h"

#include <cmath>

namespace
{

constexpr double LEAST_NORMAL_PART = 1e-7;
constexpr double TANGENT_LENGTH = 5.0;

double polar_angle(const double* centre, const pl_vertex& v)
{
    const double angle = std::atan2(v.y - centre[1], v.x - centre[0]);
    return angle < 0.0 ? angle + TWO_PI : angle;
}

} // namespace

void scaled_normal(double* d, double* normal)
{
    if (d[1] == 0.0)
        d[1] = d[0] <= 0.0 ? LEAST_NORMAL_PART : -LEAST_NORMAL_PART;
    double length = std::sqrt(d[0] * d[0] + d[1] * d[1]);
    if (length == 0.0)
        length = LEAST_NORMAL_PART;
    normal[0] = d[1] / length;
    normal[1] = -d[0] / length;
    d[0] *= TANGENT_LENGTH / length;
    d[1] *= TANGENT_LENGTH / length;
}

segment_arc arc_of_segment(const pl_vertex& a, const pl_vertex& b)
{
    const double dx = b.x - a.x, dy = b.y - a.y;
    const double chord = std::sqrt(dx * dx + dy * dy);
    const double sagitta = std::fabs(chord * a.bulge / 2.0);
    // From the centre to the chord; negative for more than a half circle.
    double to_chord = std::fabs(chord / (2.0 * std::tan(2.0 * std::atan(a.bulge))));
    if (chord / 2.0 < sagitta)
        to_chord = -to_chord;
    // The centre lies off the chord's middle, to the left for a positive bulge.
    const double off = a.bulge > 0.0 ? -to_chord : to_chord;
    double direction[2] = {dx, dy}, normal[2];
    scaled_normal(direction, normal);
    segment_arc arc;
    arc.centre[0] = (a.x + b.x) / 2.0 + off * normal[0];
    arc.centre[1] = (a.y + b.y) / 2.0 + off * normal[1];
    arc.radius = sagitta + to_chord;
    arc.from = polar_angle(arc.centre, a.bulge > 0.0 ? a : b);
    arc.to = polar_angle(arc.centre, a.bulge > 0.0 ? b : a);
    if (arc.from > arc.to)
        arc.to += TWO_PI;
    return arc;
}

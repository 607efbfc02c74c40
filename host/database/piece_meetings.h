// piece_meetings.h: where two pieces of curves meet, as seen from above. Inner header of crossings.cpp.
#pragma once

#include <vector>

#include "host/database/plan_curve.h"

namespace host::db
{

struct piece_meetings {
    struct place {
        double a, b; // parts of the two pieces
    };
    struct stretch {
        double from, to; // parts of the first piece, rising
    };
    std::vector<place> places;
    std::vector<stretch> shared; // where one lies on the other; its ends are among the places

    void clear()
    {
        places.clear();
        shared.clear();
    }
};

// Appends to `out`; a place may come more than once. Pieces that touch, or end within `tolerance` of each
// other, meet.
void find_meetings(const curve_piece& a, const curve_piece& b, double tolerance, piece_meetings& out);

// conic_meetings.cpp: the parts of `a` at which it meets the whole ellipse of `b`; neither is that of the
// other.
std::vector<double> parts_on_ellipse(const curve_piece& a, const curve_piece& b, double tolerance);

} // namespace host::db

// crossings.h: where curves meet as seen from above, and the part of a curve between such places.
#pragma once

#include <vector>

#include "host/database/plan_curve.h"

namespace host::db
{

struct crossing {
    curve_place on, edge; // places on the curve and on the edge
    double along = 0;     // of `on`
};

// Where edges meet one curve. The curve must outlive it.
class crossing_finder
{
public:
    explicit crossing_finder(const plan_curve& curve);

    // Sorted along the curve. Places at the curve's own ends count too. Where the edge touches the curve is a
    // crossing; where it runs along it, both ends of the shared stretch are, and what lies between them only if
    // the edge crosses there by another piece. An edge that is the curve itself (the same object): where it
    // crosses itself.
    std::vector<crossing> with(const plan_curve& edge) const;
    double tolerance() const { return tolerance_; }

private:
    void build(std::size_t at, std::size_t from, std::size_t to);
    template <class Visit>
    void visit(std::size_t at, std::size_t from, std::size_t to, const box& window, const Visit& take) const;
    bool is_own_joint(std::size_t i, std::size_t j, double on_i, double on_j) const;

    const plan_curve& curve_;
    double tolerance_;
    std::vector<box> boxes_; // of runs of pieces: a tree, the root first
};

// The part of a curve around a place, between the nearest of the crossings on either side. `crossings` sorted
// by `along`. A crossing at an end of an open curve doesn't count, and those within ten times the tolerance are
// one. A place in a crossing counts as just behind it.
struct part_between {
    int count = 0; // crossings that bound the part; two of an open curve, or in a closed one
    bool is_start = false, is_end = false; // an open curve's own start or end bounds it
    curve_place from, to;
};
part_between part_around(const plan_curve& curve, const std::vector<crossing>& crossings, const curve_place& at,
                         double tolerance);

} // namespace host::db

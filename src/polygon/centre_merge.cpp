// The diagram of the whole outline is merged from those of its runs. Where two runs meet, at a convex corner,
// a branch is led from the corner between the last item of the first and the first item of the second. The
// first branch of either diagram that it crosses ends there, and so does it; across that branch lies the
// region of another item, and the next branch goes on between that item and the other run's. What the
// diagrams held beyond is retired. A ring is closed by one more such pass at the corner where it starts.
//
// Where the bisector crosses the edge of a run, the ray from its last convex corner, the side's end point is
// nearest from there on, as far as that run goes. The run that follows at the corner will take that region;
// until then these branches keep others from being led through it.
//
// Every step moves on the left to a lower id or on the right to a higher one, or across an edge, so each pass
// ends: branches of the closing pass itself, the only ones whose left id is the higher, are not searched.
#include "polygon/centre_merge.h"

#include <algorithm>

#include "hostapi/ads.h"
#include "polygon/centre_branch.h"
#include "polygon/centre_lines.h"
#include "polygon/tolerances.h"

namespace
{

struct work {
    const cl_outline& outline;
    cl_network& net;
    double slope;
};

// One side of the bisector: the item that is nearest there, and how it counts.
struct front {
    std::int32_t id;
    std::int16_t relation;
    // Whether the bisector has left the region of the side across the run's edge: from there on the side's end
    // point is nearest, as far as this run goes.
    bool is_past_edge = false;

    bool can_meet_edge() const { return relation == CL_AS_SIDE && !is_past_edge; }
};

// A crossing just at the reach counts, whatever the last bits of its length are.
bool is_within_reach(const work& w, const cl_hit& hit)
{
    return hit.branch >= 0 && hit.length <= w.outline.reach + PG_LENGTH_TOL;
}

struct hit_on {
    cl_hit hit;
    bool on_left;
};

bool parts_same_pair(const cl_branch& a, const cl_branch& b)
{
    return std::minmax(a.left_id, a.right_id) == std::minmax(b.left_id, b.right_id);
}

// Puts a crossing where the lines themselves cross. Those of one pair of items are the same line: it goes
// there.
void settle(const work& w, const cl_branch& lead, cl_hit* hit)
{
    if (!is_within_reach(w, *hit))
        return;
    const cl_branch& crossed = w.net.branches[static_cast<std::size_t>(hit->branch)];
    if (parts_same_pair(lead, crossed))
        cl_settle_on_branch(w.outline, w.slope, lead, &hit->at);
    else
        hit->length += cl_settle_crossing(w.outline, w.slope, lead, crossed, hit->beyond, &hit->at);
}

// The nearer of the crossings on both sides; of equal ones that on the right. Chords alone would often tell the
// wrong order where both are close.
hit_on nearest_hit(const work& w, const cl_run& run, const front& left, const front& right,
                   const cl_branch& lead)
{
    const cl_probe probe = cl_make_probe(lead);
    cl_hit on_left = cl_search_left(w.net, run, left.id, left.can_meet_edge(), probe);
    cl_hit on_right = cl_search_right(w.net, run, right.id, right.can_meet_edge(), probe);
    settle(w, lead, &on_left);
    settle(w, lead, &on_right);
    const bool goes_left = on_left.length < on_right.length - CL_TIE * w.outline.reach;
    return {goes_left ? on_left : on_right, goes_left};
}

// Goes on across a branch that was crossed at `at`. The other side of the bisector stays where it is: it is
// still in the region of its item.
void cross_over(const work& w, const cl_branch& crossed, const cl_point& at, bool on_left, front* f)
{
    const cl_item& item = w.outline.item(on_left ? crossed.left_id : crossed.right_id);
    if (crossed.left_id == crossed.right_id) {
        const bool at_from = crossed.chain.front() == item.from;
        *f = {item.id, at_from ? CL_AS_FROM : CL_AS_TO, true};
    } else {
        *f = {item.id, cl_relation(item, at)};
    }
}

// The relation anew at the place where the bisector has come to.
void stand_at(const work& w, const cl_point& at, front* f)
{
    if (!f->is_past_edge)
        f->relation = cl_relation(w.outline.item(f->id), at);
}

// Follows the bisector of two runs, now joined as `run`, from where they meet. False when the user broke off.
bool merge(work& w, const cl_run& run, std::int32_t left_id, std::int32_t right_id, bool is_closing)
{
    cl_network* net = &w.net;
    cl_point at = w.outline.item(right_id).from;
    cl_retire_from(net, run, at);
    front left{left_id, CL_AS_SIDE}, right{right_id, CL_AS_SIDE};
    std::int16_t flag = 0; // of the branch that was crossed last
    for (;;) {
        if (acedUsrBrk() > 0)
            return false;
        stand_at(w, at, &left);
        stand_at(w, at, &right);
        cl_branch lead;
        if (!cl_lead_branch({&w.outline.item(left.id), &w.outline.item(right.id), at, w.slope, w.outline.reach,
                             left.relation, right.relation},
                            &lead))
            return true;
        lead.flag = lead.flag == 1 ? lead.flag : flag;
        const auto [hit, on_left] = nearest_hit(w, run, left, right, lead);
        if (!is_within_reach(w, hit)) {
            if (!is_closing)
                cl_add_branch(net, std::move(lead), true);
            return true;
        }
        const cl_branch& crossed = net->branches[static_cast<std::size_t>(hit.branch)];
        flag = crossed.flag;
        const bool same_pair = parts_same_pair(lead, crossed);
        at = hit.at;
        cross_over(w, crossed, at, on_left, on_left ? &left : &right);
        const std::int32_t made = cl_add_branch(net, std::move(lead), !is_closing);
        cl_cut_branch(net, run, made, at);
        cl_cut_branch(net, run, hit.branch, at);
        if (same_pair)
            return true;
    }
}

} // namespace

bool cl_merge_runs(const cl_outline& outline, double slope, cl_network* net)
{
    work w{outline, *net, slope};
    std::vector<cl_run> runs = outline.runs;
    while (runs.size() > 1) {
        std::vector<cl_run> joined;
        for (std::size_t i = 0; i + 1 < runs.size(); i += 2) {
            const cl_run both{runs[i].first_id, runs[i + 1].last_id};
            if (!merge(w, both, runs[i].last_id, runs[i + 1].first_id, false))
                return false;
            joined.push_back(both);
        }
        if (runs.size() % 2 == 1)
            joined.push_back(runs.back());
        runs = std::move(joined);
    }
    const cl_run& whole = runs.front();
    return !outline.is_ring || merge(w, whole, whole.last_id, whole.first_id, true);
}

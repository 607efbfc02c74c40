// cutting_edges.cpp: from the place on the curve it goes along it in both directions, in windows that grow,
// until an edge has crossed on either side: in a large drawing few objects are looked at. A few chosen edges
// are simply all tried, without an index of the drawing; so are edges that count beyond their ends, as they may
// come from anywhere.
#include "host/commandline/cutting_edges.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "host/commandline/picks.h"
#include "host/database/entities.h"

namespace host::commandline
{

namespace
{

constexpr std::size_t FEW = 64;
constexpr double FIRST_WINDOW = 1.0 / 64.0; // of the curve

class gathering
{
public:
    gathering(db::database& db, const db::plan_curve& curve, cutting_edges::rules how)
        : db_(db), curve_(curve), how_(how), finder_(curve)
    {
    }
    double tolerance() const { return finder_.tolerance(); }
    void take(db::object_id id)
    {
        if (!seen_.insert(id).second)
            return;
        std::optional<db::plan_curve> edge = db::plan_curve_of(db_, id);
        if (!edge)
            return;
        if (how_.drawn_out)
            edge = db::drawn_out(db_, std::move(*edge));
        for (const db::crossing& each : finder_.with(*edge))
            if (!how_.in_space || is_level(each, *edge))
                found_.push_back(each);
    }
    bool has_between(double low, double high) const
    {
        return std::any_of(found_.begin(), found_.end(),
                           [&](const db::crossing& each) { return each.along >= low && each.along <= high; });
    }
    std::vector<db::crossing> result()
    {
        std::sort(found_.begin(), found_.end(),
                  [](const db::crossing& a, const db::crossing& b) { return a.along < b.along; });
        return std::move(found_);
    }

private:
    bool is_level(const db::crossing& at, const db::plan_curve& edge) const
    {
        constexpr double ROUNDING = 64 * std::numeric_limits<double>::epsilon();
        const double a = curve_.point(at.on).z, b = edge.point(at.edge).z;
        return std::fabs(a - b) <= tolerance() + ROUNDING * std::max(std::fabs(a), std::fabs(b));
    }

    db::database& db_;
    const db::plan_curve& curve_;
    cutting_edges::rules how_;
    db::crossing_finder finder_;
    std::unordered_set<db::object_id> seen_;
    std::vector<db::crossing> found_;
};

db::box widened(db::box window, double by)
{
    for (int i = 0; i < 2; ++i) {
        window.low[i] -= by;
        window.high[i] += by;
    }
    window.low[2] = -HUGE_VAL;
    window.high[2] = HUGE_VAL;
    return window;
}

} // namespace

cutting_edges::cutting_edges(db::database& db, const object_list& chosen) : db_(db), all_(chosen.empty())
{
    for (const db::object_id id : chosen)
        if (db::is_plan_curve(db, id) && db.at(id).owner == db.current_space())
            add(id);
}

void cutting_edges::add(db::object_id id)
{
    if (!all_ && set_.insert(id).second)
        list_.push_back(id);
}

object_list cutting_edges::everything() const
{
    object_list out = all_ ? all_objects(db_) : list_;
    std::erase_if(out, [&](db::object_id id) { return db_.at(id).erased || (all_ && !is_visible(db_, id)); });
    return out;
}

object_list cutting_edges::near(const db::box& window) const
{
    object_list out = db::near_window(db_, db_.current_space(), window);
    std::erase_if(out, [&](db::object_id id) { return all_ ? !is_visible(db_, id) : !set_.contains(id); });
    return out;
}

std::vector<db::crossing> cutting_edges::around(const db::plan_curve& curve, const db::curve_place& at,
                                                rules how) const
{
    gathering found(db_, curve, how);
    const double first = curve.first(), last = curve.last(), middle = curve.along(at);
    const double tolerance = found.tolerance();
    if (how.drawn_out || (!all_ && list_.size() <= FEW) || !std::isfinite(last - first)) {
        for (const db::object_id id : everything())
            found.take(id);
        return found.result();
    }
    // Whether something has crossed in a window; crossings at an open curve's ends don't count.
    const auto crossed = [&](double from, double to) {
        for (const db::object_id id : near(widened(curve.bounds(from, to), tolerance)))
            found.take(id);
        const double inset = curve.is_closed ? 0 : 2 * tolerance;
        return found.has_between(std::max(from, first + inset), std::min(to, last - inset));
    };
    const auto ahead = [&](double from, double to) {
        for (double step = (last - first) * FIRST_WINDOW; from < to; from += step, step *= 2)
            if (crossed(from, std::min(to, from + step)))
                return true;
        return false;
    };
    const auto behind = [&](double from, double to) {
        for (double step = (last - first) * FIRST_WINDOW; to > from; to -= step, step *= 2)
            if (crossed(std::max(from, to - step), to))
                return true;
        return false;
    };
    // What lies within the tolerance of the place counts as behind it.
    if (!ahead(middle + tolerance, last) && curve.is_closed)
        ahead(first, middle + tolerance);
    if (!behind(first, std::min(last, middle + tolerance)) && curve.is_closed)
        behind(middle + tolerance, last);
    return found.result();
}

} // namespace host::commandline

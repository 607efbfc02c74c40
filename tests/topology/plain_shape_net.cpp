#include "tests/topology/plain_shape_net.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <set>
#include <utility>

#include "polygon/arcs.h"
#include "polygon/intersect.h"
#include "polygon/node.h"
#include "polygon/points.h"

namespace plain_shapes
{

namespace
{

constexpr double PI = 3.141592653589793;
constexpr int MOST_EDGES = 10000;

} // namespace

int net::intern_node(double x, double y, double z)
{
    auto* object = new NodeObj(x, y, z);
    if (const int id = node_set_.find(object); id != 0) {
        delete object;
        return id;
    }
    node_set_.add(object);
    nodes.push_back({x, y, z, {}});
    return static_cast<int>(nodes.size());
}

int net::intern_edge(int node1, int node2, double bulge)
{
    auto* object = new EdgeKey(node1, node2, bulge);
    if (const int id = edge_set_.find(object); id != 0) {
        delete object;
        return id;
    }
    edge_set_.add(object);
    edges.push_back({node1, node2, bulge, false, {}});
    node_at(node1).edges.push_back(edge_count());
    node_at(node2).edges.push_back(edge_count());
    return edge_count();
}

int net::connect(int node1, int node2, double bulge, int shape_id)
{
    const int id = intern_edge(node1, node2, bulge);
    if (shape_id != 0) {
        edge_at(id).shapes.push_back(shape_id);
        shape_at(shape_id).edges.push_back(id);
    }
    return id;
}

int net::new_shape()
{
    shapes.push_back({});
    return static_cast<int>(shapes.size());
}

// A list of a node keeps what stands in its last place.
void net::remove_edge(int edge_id)
{
    edge& e = edge_at(edge_id);
    for (const int end : {e.node1, e.node2}) {
        std::vector<int>& list = node_at(end).edges;
        const auto found = std::find(list.begin(), list.end(), edge_id);
        if (found != list.end() && found + 1 != list.end())
            *found = 0;
    }
    for (const int shape_id : e.shapes) {
        std::vector<int>& list = shape_at(shape_id).edges;
        if (const auto found = std::find(list.begin(), list.end(), edge_id); found != list.end())
            list.erase(found);
    }
    e.deleted = true;
    edge_set_.remove(edge_id);
}

int net::add_chain(int shape_id, const std::vector<vertex>& vertices, int color, bool closed)
{
    if (shape_id == 0) {
        shape_id = new_shape();
        shape_at(shape_id).color = color;
    }
    shape_at(shape_id).kind = 2;
    shape_at(shape_id).closed = closed;
    int first = 0, before = 0;
    double bulge = 0;
    for (const vertex& v : vertices) {
        const int id = intern_node(v.x, v.y, v.z);
        if (first == 0)
            first = id;
        else
            connect(before, id, bulge, shape_id);
        before = id;
        bulge = v.bulge;
    }
    if (closed && first != 0)
        connect(before, first, bulge, shape_id);
    return shape_id;
}

void net::add_grid(const raster& grid, int mark)
{
    const int wide = grid.columns + 1;
    std::vector<int> ids(grid.cells.size());
    for (std::size_t i = 0; i < ids.size(); ++i) {
        const int at = static_cast<int>(i);
        if (grid.cells[i].has_value)
            ids[i] = intern_node(at % wide * grid.step_x + grid.x0, at / wide * grid.step_y + grid.y0,
                                 grid.cells[i].z);
    }
    for (int row = 0; row < grid.rows; ++row)
        for (int column = 0; column < grid.columns; ++column) {
            const auto at = static_cast<std::size_t>(row * wide + column);
            const auto up = at + static_cast<std::size_t>(wide);
            const int shape_id = new_shape();
            shape& s = shape_at(shape_id);
            s.color = static_cast<int>(grid.attributes[at]);
            s.visible = mark;
            s.closed = true;
            std::vector<int> corners;
            for (const std::size_t corner : {at, at + 1, up, up + 1})
                if (ids[corner] != 0)
                    corners.push_back(ids[corner]);
            if (corners.size() < 3)
                continue;
            connect(corners[0], corners[2], 0, shape_id);
            if (corners.size() == 3) {
                connect(corners[2], corners[1], 0, shape_id);
                shape_at(shape_id).kind = 4;
            } else {
                connect(corners[2], corners[3], 0, shape_id);
                connect(corners[3], corners[1], 0, shape_id);
                shape_at(shape_id).kind = 3;
            }
        }
}

arc net::arc_of(const edge& e) const
{
    const node &a = node_at(e.node1), &b = node_at(e.node2);
    const double from[3] = {a.x, a.y, a.z}, to[3] = {b.x, b.y, b.z};
    const double c = pg_dist(from, to);
    double s = c * e.bulge / 2;
    double sign = -1;
    if (s < 0) {
        sign = 1;
        s = -s;
    }
    arc made{};
    made.radius = (c * c / 4 + s * s) / (2 * s);
    pg_frame_point(from, to, c / 2, (s - made.radius) * sign, made.center);
    made.start = pg_angle(made.center, sign < 0 ? from : to);
    made.end = pg_angle(made.center, sign < 0 ? to : from);
    return made;
}

// Arcs that stay within the tolerance of their chord meet others as that does.
bool net::is_curved(const edge& e) const
{
    const double dx = node_at(e.node2).x - node_at(e.node1).x, dy = node_at(e.node2).y - node_at(e.node1).y;
    return std::fabs(e.bulge) * std::sqrt(dx * dx + dy * dy) / 2 > 1e-6;
}

// Of an edge above or below a place on it, by the way from its first node.
double net::height_on(const edge& e, const double* at) const
{
    const node &a = node_at(e.node1), &b = node_at(e.node2);
    if (a.z == b.z)
        return a.z;
    const double from[3] = {a.x, a.y, 0}, to[3] = {b.x, b.y, 0};
    double share = pg_dist(from, at) / pg_dist(from, to);
    if (is_curved(e)) {
        const arc r = arc_of(e);
        const double all = r.end < r.start ? r.end - r.start + 2 * PI : r.end - r.start;
        double turn = pg_angle(r.center, at) - r.start;
        turn = turn < 0 ? turn + 2 * PI : turn;
        if (turn > all)
            turn = turn - all < 2 * PI - turn ? all : 0; // beside one of its ends
        share = e.bulge < 0 ? 1 - turn / all : turn / all;
    }
    return a.z + std::min(share, 1.0) * (b.z - a.z);
}

std::vector<vertex> net::edge_crossings(int first, int second) const
{
    const edge &e = edge_at(first), &o = edge_at(second);
    const node &e1 = node_at(e.node1), &e2 = node_at(e.node2);
    const node &o1 = node_at(o.node1), &o2 = node_at(o.node2);
    const double a[3] = {e1.x, e1.y, e1.z}, b[3] = {e2.x, e2.y, e2.z};
    const double c[3] = {o1.x, o1.y, o1.z}, d[3] = {o2.x, o2.y, o2.z};
    double p[3] = {}, q[3] = {};
    int count = 0;
    if (!is_curved(e) && !is_curved(o)) {
        for (const int k : {1, 0}) {
            const double least = std::min(a[k], b[k]), most = std::max(a[k], b[k]);
            if ((c[k] < least && d[k] < least) || (c[k] > most && d[k] > most))
                return {};
        }
        count = pg_seg_intersect(a, b, c, d, p, q);
    } else if (!is_curved(e)) {
        const arc r = arc_of(o);
        count = pg_line_arc_intersect(a, b, r.center, r.radius, r.start, r.end, p, q);
    } else if (!is_curved(o)) {
        const arc r = arc_of(e);
        count = pg_line_arc_intersect(c, d, r.center, r.radius, r.start, r.end, p, q);
    } else {
        const arc r = arc_of(e), t = arc_of(o);
        count =
            pg_arc_arc_intersect(r.center, r.radius, r.start, r.end, t.center, t.radius, t.start, t.end, p, q);
    }
    if (is_curved(e) || is_curved(o)) {
        p[2] = height_on(e, p);
        q[2] = height_on(e, q);
    }
    std::vector<vertex> points;
    if (count > 0)
        points.push_back({p[0], p[1], p[2], 0});
    if (count > 1)
        points.push_back({q[0], q[1], q[2], 0});
    return points;
}

double net::edge_position(int edge_id, const vertex& point) const
{
    const edge& e = edge_at(edge_id);
    const double at[3] = {point.x, point.y, point.z};
    if (is_curved(e)) {
        const arc r = arc_of(e);
        double turn = pg_angle(r.center, at) - r.start;
        if (turn < 0)
            turn += 6.283185307179586;
        return turn * r.radius;
    }
    const node& n = node_at(e.node1);
    const double dz = point.z - (dimensions_ == 2 ? 0 : n.z);
    const double dx = point.x - n.x, dy = point.y - n.y;
    return std::sqrt(dx * dx + dy * dy + dz * dz);
}

bool net::is_end(int edge_id, int node_id) const
{
    return edge_at(edge_id).node1 == node_id || edge_at(edge_id).node2 == node_id;
}

// Of the piece of an arc between two of its nodes, in the arc's own direction, so that it stays on the arc:
// the long way round where the piece is over half a circle.
double net::half_bulge(const edge& e, int from, int to) const
{
    if (e.bulge == 0)
        return 0;
    const arc r = arc_of(e);
    const double a[3] = {node_at(from).x, node_at(from).y, 0}, b[3] = {node_at(to).x, node_at(to).y, 0};
    const double d = pg_dist(a, b);
    if (d < 1e-6)
        return 0;
    double turn = pg_angle(r.center, e.bulge > 0 ? b : a) - pg_angle(r.center, e.bulge > 0 ? a : b);
    if (turn < 0)
        turn += 2 * PI;
    const double half = d / 2, root = half < r.radius ? std::sqrt((r.radius - half) * (r.radius + half)) : 0;
    const double size = turn > PI ? (r.radius + root) / half : half / (r.radius + root);
    return e.bulge > 0 ? size : -size;
}

int net::split_edge(int edge_id, int node_id)
{
    if (is_end(edge_id, node_id) || edge_at(edge_id).deleted)
        return 0;
    const edge old = edge_at(edge_id);
    const int first = intern_edge(old.node1, node_id, half_bulge(old, old.node1, node_id));
    const int second = intern_edge(node_id, old.node2, half_bulge(old, node_id, old.node2));
    for (const int shape_id : old.shapes)
        for (const int half : {first, second}) {
            const std::vector<int>& had = edge_at(half).shapes;
            if (std::find(had.begin(), had.end(), shape_id) != had.end())
                continue;
            edge_at(half).shapes.push_back(shape_id);
            shape_at(shape_id).edges.push_back(half);
        }
    remove_edge(edge_id);
    return first;
}

// Two nodes may lie within the tolerance of each other where the set that finds them has parted them.
bool net::lies_at_end(const edge& e, int node_id) const
{
    const node& p = node_at(node_id);
    for (const int end : {e.node1, e.node2}) {
        const node& q = node_at(end);
        if (std::fabs(p.x - q.x) < 1e-6 && std::fabs(p.y - q.y) < 1e-6 && std::fabs(p.z - q.z) < 1e-6)
            return true;
    }
    return false;
}

int net::cut_at(int edge_id, int node_id)
{
    return lies_at_end(edge_at(edge_id), node_id) ? 0 : split_edge(edge_id, node_id);
}

bool net::is_a_place(const edge& e) const
{
    const node &a = node_at(e.node1), &b = node_at(e.node2);
    return std::fabs(a.x - b.x) <= 1e-6 && std::fabs(a.y - b.y) <= 1e-6;
}

// Cuts j where i meets it, and then i at one place. Whether i was cut.
bool net::cut_pair(int i, int j)
{
    if (is_a_place(edge_at(i)) || is_a_place(edge_at(j)))
        return false;
    const std::vector<vertex> points = edge_crossings(i, j);
    if (points.empty())
        return false;
    std::vector<std::pair<double, int>> cuts;
    for (const vertex& p : points)
        cuts.push_back({0, intern_node(p.x, p.y, p.z)});
    if (points.size() == 2) {
        for (std::size_t k = 0; k < 2; ++k)
            cuts[k].first = edge_position(j, {points[k].x, points[k].y, 0, 0});
        if (cuts[1].first < cuts[0].first)
            std::swap(cuts[0], cuts[1]);
    }
    const edge old = edge_at(j);
    const int half = cut_at(j, cuts.front().second);
    if (cuts.size() == 2 && !lies_at_end(old, cuts[1].second)) {
        int piece = j; // the one that holds the farther place: positions on clockwise arcs count from node2
        if (half != 0)
            piece = is_curved(old) && old.bulge < 0
                        ? half
                        : intern_edge(cuts[0].second, old.node2, half_bulge(old, cuts[0].second, old.node2));
        cut_at(piece, cuts[1].second);
    }
    if (edge_at(i).deleted || cut_at(i, cuts.back().second) != 0)
        return true;
    return cuts.size() == 2 && cut_at(i, cuts.front().second) != 0;
}

void net::cut_crossings()
{
    for (int i = 1; i <= edge_count() && !is_stuck; ++i) {
        const int count = edge_count();
        for (int j = i + 1; j <= count && !edge_at(i).deleted; ++j)
            if (!edge_at(j).deleted && cut_pair(i, j))
                break;
        is_stuck = edge_count() > MOST_EDGES;
    }
}

double net::squared_distance(const node& a, const node& b) const
{
    const double dx = a.x - b.x, dy = a.y - b.y, dz = dimensions_ == 2 ? 0 : a.z - b.z;
    return dx * dx + dy * dy + dz * dz;
}

// The first node that lies on a straight edge, in the order in which the set gives those around it; or 0.
int net::near_node(const edge& e) const
{
    const node &a = node_at(e.node1), &b = node_at(e.node2);
    const double length = std::sqrt(squared_distance(a, b));
    const NodeObj middle((a.x + b.x) / 2, (a.y + b.y) / 2, (a.z + b.z) / 2);
    const std::unique_ptr<KdSet> around(node_set_.within(&middle, length + tolerance));
    for (int k = 1; k <= around->count; ++k) {
        const int id = around->get(k)->id;
        if (id == e.node1 || id == e.node2)
            continue;
        const node& p = node_at(id);
        const double ab[3] = {b.x - a.x, b.y - a.y, dimensions_ == 2 ? 0 : b.z - a.z};
        const double ap[3] = {p.x - a.x, p.y - a.y, dimensions_ == 2 ? 0 : p.z - a.z};
        const double t =
            (ab[0] * ap[0] + ab[1] * ap[1] + ab[2] * ap[2]) / (ab[0] * ab[0] + ab[1] * ab[1] + ab[2] * ab[2]);
        const node foot = {a.x + t * ab[0], a.y + t * ab[1], a.z + t * ab[2], {}};
        const double from_a = std::sqrt(squared_distance(p, a)), from_b = std::sqrt(squared_distance(p, b));
        if (squared_distance(p, foot) < tolerance * tolerance && std::fabs(from_a + from_b - length) < 1e-6 &&
            from_a < length && from_b < length) // pieces no shorter than the edge would be cut for ever
            return id;
    }
    return 0;
}

// Places on the chord of an arc are none of the arc's: arcs are left alone.
void net::cut_at_near_nodes()
{
    for (int i = 1; i <= edge_count(); ++i) {
        const edge e = edge_at(i);
        if (e.deleted || is_curved(e))
            continue;
        if (const int id = near_node(e); id != 0)
            split_edge(i, id);
    }
}

double net::turn_angle(int before, int at, int after) const
{
    double directions[2];
    int k = 0;
    for (const int to : {before, after}) {
        const double dx = node_at(to).x - node_at(at).x, dy = node_at(to).y - node_at(at).y;
        directions[k++] = std::fabs(dx) >= 1e-6 ? std::atan2(dy, dx)
                          : dy < 0              ? -1.5707963267948966
                                                : 1.5707963267948966;
    }
    if (directions[0] < directions[1])
        directions[0] += 6.283185307179586;
    const double turn = 360 - (directions[0] - directions[1]) * 180 / PI;
    return turn >= 360 ? turn - 360 : turn;
}

int& net::side(int edge_id, bool forward)
{
    return forward ? edge_at(edge_id).right : edge_at(edge_id).left;
}

// The edge by which a walk goes on, and the node to which it leads; 0 where it doesn't.
int net::outermost_edge(int before, int at, int walked, int* far) const
{
    int chosen = 0;
    double greatest = 0;
    for (const int id : node_at(at).edges) {
        if (id == 0 || id == walked || edge_at(id).deleted || edge_at(id).node1 == edge_at(id).node2)
            continue;
        const int other = edge_at(id).node1 == at ? edge_at(id).node2 : edge_at(id).node1;
        if (const double turn = turn_angle(before, at, other); turn > greatest) {
            greatest = turn;
            chosen = id;
            *far = other;
        }
    }
    return chosen;
}

std::vector<int> net::trace_face(int edge_id, int face_id, bool forward)
{
    struct step {
        int edge;
        bool forward;
    };
    std::vector<step> walk;
    std::set<std::pair<int, bool>> walked{{edge_id, forward}};
    const edge& start = edge_at(edge_id);
    const int first = forward ? low(start) : high(start);
    int previous = first, current = forward ? high(start) : low(start);
    step now{edge_id, forward};
    if (start.node1 == start.node2)
        return {};
    side(edge_id, forward) = face_id;
    bool is_face = false, is_counted = true;
    for (;;) {
        if (is_counted)
            walk.push_back(now);
        int far = 0;
        const int chosen = outermost_edge(previous, current, now.edge, &far);
        if (chosen == 0)
            break;
        const step next{chosen, current == low(edge_at(chosen))};
        if (far == first && walk.size() == 1 && walk[0].edge == chosen)
            break; // all that came between was taken out
        if (far == first) {
            walk.push_back(next);
            is_face = side(chosen, next.forward) == 0;
            if (is_face)
                side(chosen, next.forward) = face_id;
            break;
        }
        // An edge that is walked back is taken out again with all that came after it; one walked twice the
        // same way would go on for ever.
        const auto seen =
            std::find_if(walk.begin(), walk.end(), [&](const step& s) { return s.edge == chosen; });
        if (!walked.insert({next.edge, next.forward}).second)
            break;
        if (seen != walk.end()) {
            for (auto undone = seen; undone != walk.end(); ++undone)
                side(undone->edge, undone->forward) = 0;
            walk.erase(seen, walk.end());
            is_counted = false;
        } else {
            if (side(chosen, next.forward) != 0)
                break;
            side(chosen, next.forward) = face_id;
            is_counted = true;
        }
        previous = current;
        current = far;
        now = next;
    }
    if (!is_face)
        for (const step& s : walk)
            for (const bool way : {false, true})
                if (side(s.edge, way) == face_id)
                    side(s.edge, way) = 0;
    std::vector<int> face;
    for (const step& s : walk)
        if (is_face)
            face.push_back(s.edge);
    return face;
}

std::vector<vertex> net::face_to_chain(const std::vector<int>& face) const
{
    std::vector<vertex> chain;
    int free_end = 0;
    auto emit = [&](int id, double bulge) {
        const node& n = node_at(id);
        chain.push_back({n.x, n.y, n.z, bulge});
        free_end = id;
    };
    for (std::size_t k = 0; k < face.size(); ++k) {
        const edge& e = edge_at(face[k]);
        bool is_turned = k > 0 && e.node1 != free_end && e.node2 == free_end;
        if (k == 0 && face.size() > 1) {
            const edge& second = edge_at(face[1]);
            is_turned = e.node2 != second.node1 && e.node2 != second.node2;
        }
        const int from = is_turned ? e.node2 : e.node1;
        if (k == 0 || from != free_end)
            emit(from, 0);
        chain.back().bulge = is_turned ? -e.bulge : e.bulge;
        emit(is_turned ? e.node1 : e.node2, 0);
    }
    // What the kernel's reversal leaves at the end of a chain.
    if (chain.size() > 1)
        chain.back().bulge = -0.0;
    return chain;
}

std::vector<ring> net::trace_faces()
{
    std::vector<ring> rings;
    int face_id = 1;
    for (int i = 1; i <= edge_count(); ++i)
        for (const bool forward : {true, false}) {
            if (edge_at(i).deleted || side(i, forward) != 0)
                continue;
            const std::vector<int> face = trace_face(i, face_id, forward);
            if (face.empty())
                continue;
            ++face_id;
            const std::vector<vertex> vertices = face_to_chain(face);
            pg_node* chain = nullptr;
            for (auto v = vertices.rbegin(); v != vertices.rend(); ++v) {
                const double at[3] = {v->x, v->y, v->z};
                chain = pg_node_push(at, chain, v->bulge);
            }
            rings.insert(rings.begin(), {vertices, pg_orientation(chain) == 1});
            pl_free_nodes(chain);
        }
    return rings;
}

int net::point_in_face(const std::vector<int>& face, double x, double y) const
{
    int inside = 0;
    for (const int id : face) {
        const node *a = &node_at(edge_at(id).node1), *b = &node_at(edge_at(id).node2);
        if (a->y > b->y)
            std::swap(a, b);
        if (y < a->y || y >= b->y)
            continue;
        const double crossing = a->x + (y - a->y) / (b->y - a->y) * (b->x - a->x);
        if (std::fabs(crossing - x) < 1e-6)
            return 2;
        if (crossing < x)
            inside = 1 - inside;
    }
    return inside;
}

} // namespace plain_shapes

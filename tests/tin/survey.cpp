#include "tests/tin/survey.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <map>
#include <random>
#include <set>
#include <utility>

#include "common/user_break.h"
#include "host/core/plain_host.h"
#include "hostapi/ads.h"

namespace
{

std::string text_so_far, break_text;

void take_text(const char* text)
{
    text_so_far += text;
    if (!break_text.empty() && break_text == text)
        host::plain_break(true);
}

bool on_frame(const tin_network& network, const tin_point* p)
{
    return std::find(network.frame, network.frame + 4, p) != network.frame + 4;
}

// Places relative to the run's origin.
struct places_of {
    const tin_network& network;
    bool points_are_moved;
    double x(const tin_point* p) const
    {
        return points_are_moved || on_frame(network, p) ? p->x : p->x - network.x_min;
    }
    double y(const tin_point* p) const
    {
        return points_are_moved || on_frame(network, p) ? p->y : p->y - network.y_min;
    }
    double area(const tin_triangle* t) const
    {
        const tin_point *a = t->corner[0], *b = t->corner[1], *c = t->corner[2];
        return ((x(b) - x(a)) * (y(c) - y(a)) - (y(b) - y(a)) * (x(c) - x(a))) / 2;
    }
};

std::string faults_of(const tin_network& network, const places_of& places, double sliver)
{
    std::set<const tin_triangle*> all;
    for (const tin_triangle* t = network.triangles; t; t = t->next)
        if (!all.insert(t).second)
            return "a triangle is twice in the list";
    for (const tin_triangle* t : all) {
        if (places.area(t) < -sliver)
            return "a triangle is clockwise: " + std::to_string(places.area(t));
        for (int i = 0; i < 3; ++i) {
            const tin_triangle* other = t->side[i];
            if (!other)
                continue;
            if (!all.count(other))
                return "a neighbour is not in the list";
            bool answers = false;
            for (int k = 0; k < 3; ++k)
                answers = answers || (other->side[k] == t && other->corner[k] == t->corner[(i + 1) % 3] &&
                                      other->corner[(k + 1) % 3] == t->corner[i]);
            if (!answers)
                return "a neighbour does not answer";
        }
        for (const tin_link* link = t->bucket; link; link = link->next)
            if (link->point->tri != t)
                return "a waiting point names another triangle";
    }
    return "";
}

} // namespace

survey::survey()
{
    host::plain_print_to(take_text);
}

survey::~survey()
{
    if (!network.kept_points && !network.triangles && network.points != list) // a tree is not the list
        network.points = list;
    break_at_text("");
    text_so_far.clear();
}

tin_point* survey::offer(double x, double y, double z)
{
    tin_point* point = tin_point_new(x, y, z);
    if (!point)
        return nullptr;
    tin_point* answer = tin_add_point(&network, point);
    if (answer == point || answer) {
        acad_free(point);
        points.push_back(answer == point ? nullptr : answer);
        return answer == point ? nullptr : answer;
    }
    points.push_back(point);
    tin_keep_point(&network, point, &list);
    return point;
}

void survey::offer_all(const std::vector<place>& places)
{
    for (const place& p : places)
        offer(p.x, p.y, p.z);
}

void survey::barrier(int from, int to)
{
    tin_add_barrier(&network, points[std::size_t(from)], points[std::size_t(to)]);
}

void survey::run()
{
    network.points = list;
    tin_triangulate(&network);
}

std::string printed()
{
    return std::exchange(text_so_far, {});
}

void break_at_text(const std::string& text)
{
    break_text = text;
    host::plain_break(false);
    user_break_clear();
}

std::string faults(const tin_network& network, double sliver)
{
    return faults_of(network, {network, false}, sliver);
}

std::string faults_inside_run(const tin_network& network, double sliver)
{
    return faults_of(network, {network, true}, sliver);
}

int triangle_count(const tin_network& network)
{
    int count = 0;
    for (const tin_triangle* t = network.triangles; t; t = t->next)
        ++count;
    return count;
}

double total_area(const tin_network& network)
{
    const places_of places{network, false};
    double sum = 0;
    for (const tin_triangle* t = network.triangles; t; t = t->next)
        sum += places.area(t);
    return sum;
}

bool has_edge(const tin_network& network, const tin_point* p, const tin_point* q)
{
    for (const tin_triangle* t = network.triangles; t; t = t->next)
        if (std::find(t->corner, t->corner + 3, p) != t->corner + 3 &&
            std::find(t->corner, t->corner + 3, q) != t->corner + 3)
            return true;
    return false;
}

int waiting_count(const tin_network& network)
{
    int count = 0;
    for (const tin_triangle* t = network.triangles; t; t = t->next)
        for (const tin_link* link = t->bucket; link; link = link->next)
            ++count;
    return count;
}

std::vector<std::vector<int>> triangles_by_number(const survey& s)
{
    std::map<const tin_point*, int> number;
    for (std::size_t i = s.points.size(); i-- > 0;)
        number[s.points[i]] = int(i);
    for (int i = 0; i < 4; ++i)
        number[s.network.frame[i]] = -1 - i;
    int middle = 1000000;
    for (const tin_point* p = s.network.barrier_points; p; p = p->next)
        if (!number.count(p))
            number[p] = middle++;
    std::vector<std::vector<int>> found;
    for (const tin_triangle* t = s.network.triangles; t; t = t->next)
        found.push_back({number.at(t->corner[0]), number.at(t->corner[1]), number.at(t->corner[2])});
    return found;
}

std::vector<place> random_places(unsigned seed, int count, double size, int grid)
{
    std::mt19937 chance(seed);
    const auto number = [&] {
        const double whole = double(chance()) / 4294967296.0;
        return grid > 0 ? std::floor(whole * grid) / grid * size : whole * size;
    };
    std::vector<place> places;
    for (int i = 0; i < count; ++i) {
        const double x = number();
        places.push_back({x, number(), number() + 0.25});
    }
    return places;
}

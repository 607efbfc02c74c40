#include "topology/way_forest.h"

// What making the forest works with.
struct WayForest::climb {
    HeapArray<std::int32_t> child, sibling; // by way
    HeapArray<std::int32_t> nearest;        // by node: the deepest way above the one at hand that leads there
    HeapArray<std::int32_t> hidden;         // by way: what it has hidden in `nearest`
    HeapArray<std::int32_t> in_circle;      // by node: the first way from the foot on that leads there,
    HeapArray<std::int32_t> circle;         // in the circle of this root
    std::int32_t numbers = 0;

    bool make(const Ways& ways)
    {
        const std::int32_t n = ways.count(), nodes = ways.node_count();
        if (!child.fill_up(n, 0) || !sibling.fill_up(n, 0) || !hidden.fill_up(n, 0) ||
            !nearest.fill_up(nodes, 0) || !in_circle.fill_up(nodes, 0) || !circle.fill_up(nodes, 0))
            return false;
        for (std::int32_t way = n - 1; way >= 2; --way)
            if (const std::int32_t next = ways.next(way)) {
                sibling.items[way] = child.items[next];
                child.items[next] = way;
            }
        return true;
    }
};

bool WayForest::is_above(std::int32_t way, std::int32_t low) const
{
    return begin_.items[way] <= begin_.items[low] && begin_.items[low] < end_.items[way];
}

std::int32_t WayForest::steps(std::int32_t way, std::int32_t to) const
{
    const std::int32_t root = root_.items[way];
    if (root_.items[to] != root || root == 0)
        return -1;
    if (is_above(to, way))
        return depth_.items[way] - depth_.items[to];
    const std::int32_t foot = foot_.items[root];
    if (foot == 0 || !is_above(to, foot))
        return -1;
    return depth_.items[way] + 1 + depth_.items[foot] - depth_.items[to];
}

void WayForest::enter(const Ways& ways, std::int32_t way, climb* work)
{
    const std::int32_t start = ways.from(way), end = ways.to(way);
    begin_.items[way] = work->numbers++;
    home_.items[way] = work->nearest.items[start];
    if (home_.items[way] == 0 && work->circle.items[start] == root_.items[way])
        home_.items[way] = work->in_circle.items[start];
    work->hidden.items[way] = work->nearest.items[end];
    work->nearest.items[end] = way;
}

void WayForest::make_tree(const Ways& ways, std::int32_t root, climb* work)
{
    foot_.items[root] = ways.next(root);
    for (std::int32_t way = foot_.items[root]; way != 0; way = way == root ? 0 : ways.next(way))
        if (const std::int32_t node = ways.to(way); work->circle.items[node] != root) {
            work->circle.items[node] = root;
            work->in_circle.items[node] = way;
        }
    root_.items[root] = root;
    enter(ways, root, work);
    for (std::int32_t way = root; way != 0;) {
        std::int32_t& child = work->child.items[way]; // the first that wasn't entered
        if (child == root)
            child = work->sibling.items[root];
        if (child != 0) {
            const std::int32_t below = child;
            child = work->sibling.items[below];
            root_.items[below] = root;
            depth_.items[below] = depth_.items[way] + 1;
            enter(ways, below, work);
            way = below;
        } else {
            end_.items[way] = work->numbers;
            work->nearest.items[ways.to(way)] = work->hidden.items[way];
            way = way == root ? 0 : ways.next(way);
        }
    }
}

bool WayForest::make(const Ways& ways)
{
    const std::int32_t n = ways.count();
    climb work;
    if (!work.make(ways))
        return false;
    for (HeapArray<std::int32_t>* array : {&root_, &depth_, &home_, &begin_, &end_, &foot_})
        if (!array->fill_up(n, 0))
            return false;
    if (!marks_.fill_up(2 * n, 0))
        return false;
    for (std::int32_t way = 2; way < n; ++way)
        if (ways.to(way) != 0 && ways.next(way) == 0)
            make_tree(ways, way, &work);
    // What is left leads into circles.
    HeapArray<std::int32_t>& passed = work.hidden;
    for (std::int32_t way = 2; way < n; ++way) {
        if (ways.to(way) == 0 || root_.items[way] != 0)
            continue;
        std::int32_t at = way;
        for (; passed.items[at] != -way; at = ways.next(at))
            passed.items[at] = -way;
        make_tree(ways, at, &work);
    }
    return true;
}

std::int32_t WayForest::deeper(std::int32_t a, std::int32_t b) const
{
    return a == 0 || (b != 0 && depth_.items[b] > depth_.items[a]) ? b : a;
}

void WayForest::mark(std::int32_t way)
{
    const std::int32_t n = marks_.count / 2;
    std::int32_t low = begin_.items[way] + n, high = end_.items[way] + n;
    for (; low < high; low /= 2, high /= 2) {
        if (low % 2 == 1) {
            marks_.items[low] = deeper(marks_.items[low], way);
            ++low;
        }
        if (high % 2 == 1) {
            --high;
            marks_.items[high] = deeper(marks_.items[high], way);
        }
    }
}

std::int32_t WayForest::marked_above(std::int32_t way) const
{
    std::int32_t best = 0;
    for (std::int32_t at = begin_.items[way] + marks_.count / 2; at > 0; at /= 2)
        best = deeper(best, marks_.items[at]);
    return best;
}

std::int32_t WayForest::first_marked(std::int32_t way) const
{
    const std::int32_t found = marked_above(way), foot = foot_.items[root_.items[way]];
    return found != 0 || foot == 0 ? found : marked_above(foot);
}

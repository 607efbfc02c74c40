// Which objects of a space may lie in a window: a loose quadtree a space.
//
// An object stands in a node by the middle of its box, and no deeper than nodes of its own size: so its box
// never reaches further than half a node beyond the node it stands in, and a node (with what is under it) is
// passed over when the window misses it by more than that. Nodes divide when they hold many; the root grows
// outwards. Changes are noted as they are told and worked in when the index is next asked, since objects
// are told before they have changed. A change inside a block concerns every object that refers to it.
#include <algorithm>
#include <cmath>
#include <optional>
#include <unordered_map>
#include <unordered_set>

#include "host/core/text.h"
#include "host/database/entities.h"
#include "host/database/geometry.h"
#include "host/database/shapes.h"

namespace host::db
{

namespace
{

constexpr std::size_t FULL = 24;  // objects in a node before it divides
constexpr int DEEPEST = 48;       // nodes under the root
constexpr double FARTHEST = 1e15; // boxes beyond it are not in the tree
constexpr std::uint32_t NONE = UINT32_MAX;

struct flat_box {
    double low[2], high[2];
    bool meets(const box& window) const
    {
        return low[0] <= window.high[0] && high[0] >= window.low[0] && low[1] <= window.high[1] &&
               high[1] >= window.low[1];
    }
    double size() const { return std::max(high[0] - low[0], high[1] - low[1]); }
};

class quadtree
{
public:
    void put(object_id id, const box& extents)
    {
        take(id);
        if (const std::optional<item> made = item_of(id, extents)) {
            const std::uint32_t at = place_for(made->place);
            add(at, *made);
            divide(at);
        }
    }
    // The same for objects of an empty tree, with the dividing left to finish(): much quicker for
    // many, since all of them then go down the tree together.
    void put_later(object_id id, const box& extents)
    {
        if (const std::optional<item> made = item_of(id, extents)) {
            grow_for(made->place);
            waiting_.push_back(*made);
        }
    }
    void finish()
    {
        if (nodes_.empty())
            return;
        // The steps in which the root grew are of no use any more.
        const node grown = nodes_[root_];
        nodes_.clear();
        root_ = add_node(grown.x, grown.y, grown.half, grown.depth_left);
        for (const item& each : waiting_)
            add(root_, each);
        waiting_ = {};
        divide(root_);
    }
    void put_everywhere(object_id id)
    {
        take(id);
        everywhere_.insert(id);
    }
    void take(object_id id)
    {
        everywhere_.erase(id);
        if (id >= node_of_.size() || node_of_[id] == NONE)
            return;
        auto& items = nodes_[node_of_[id]].items;
        const auto at =
            std::find_if(items.begin(), items.end(), [id](const item& each) { return each.id == id; });
        *at = items.back();
        items.pop_back();
        node_of_[id] = NONE;
    }
    void collect(const box& window, std::vector<object_id>& out) const
    {
        out.insert(out.end(), everywhere_.begin(), everywhere_.end());
        if (!nodes_.empty())
            collect(root_, window, out);
    }

private:
    struct item {
        object_id id;
        flat_box place;
    };
    struct node {
        double x, y, half; // middle and half of the side
        int depth_left;
        bool divided;
        std::uint32_t children[4];
        std::vector<item> items;
    };

    static bool in_reach(double value) { return std::fabs(value) <= FARTHEST; }

    // Nothing, and the object is taken for near everywhere, when its box is out of reach.
    std::optional<item> item_of(object_id id, const box& extents)
    {
        const item made{id, {{extents.low[0], extents.low[1]}, {extents.high[0], extents.high[1]}}};
        const bool fits = std::all_of(made.place.low, made.place.low + 2, in_reach) &&
                          std::all_of(made.place.high, made.place.high + 2, in_reach);
        if (!fits) {
            everywhere_.insert(id);
            return std::nullopt;
        }
        if (node_of_.size() <= id)
            node_of_.resize(id + id / 2 + 64, NONE);
        return made;
    }

    std::uint32_t add_node(double x, double y, double half, int depth_left)
    {
        nodes_.push_back({x, y, half, depth_left, false, {NONE, NONE, NONE, NONE}, {}});
        return static_cast<std::uint32_t>(nodes_.size() - 1);
    }
    void add(std::uint32_t at, const item& made)
    {
        nodes_[at].items.push_back(made);
        node_of_[made.id] = at;
    }

    static double middle(const flat_box& of, int axis) { return of.low[axis] / 2 + of.high[axis] / 2; }

    bool holds(const node& in, const flat_box& of) const
    {
        return std::fabs(middle(of, 0) - in.x) <= in.half && std::fabs(middle(of, 1) - in.y) <= in.half &&
               of.size() <= 2 * in.half;
    }

    // The root that holds a box: a bigger one is put around the old as often as it takes.
    void grow_for(const flat_box& of)
    {
        if (nodes_.empty())
            root_ = add_node(middle(of, 0), middle(of, 1), std::max(of.size(), 1.0), DEEPEST);
        while (!holds(nodes_[root_], of)) {
            const double half = nodes_[root_].half, old_x = nodes_[root_].x, old_y = nodes_[root_].y;
            const double x = old_x + (middle(of, 0) >= old_x ? half : -half);
            const double y = old_y + (middle(of, 1) >= old_y ? half : -half);
            const std::uint32_t bigger = add_node(x, y, 2 * half, nodes_[root_].depth_left + 1);
            nodes_[bigger].children[quarter_of(x, y, old_x, old_y)] = root_;
            nodes_[bigger].divided = true;
            root_ = bigger;
        }
    }
    static int quarter_of(double x, double y, double px, double py)
    {
        return (px >= x ? 1 : 0) + (py >= y ? 2 : 0);
    }

    std::uint32_t child_for(std::uint32_t parent, const flat_box& of)
    {
        const int quarter = quarter_of(nodes_[parent].x, nodes_[parent].y, middle(of, 0), middle(of, 1));
        if (nodes_[parent].children[quarter] == NONE) {
            const double half = nodes_[parent].half / 2;
            const double x = nodes_[parent].x + (quarter & 1 ? half : -half);
            const double y = nodes_[parent].y + (quarter & 2 ? half : -half);
            const std::uint32_t made = add_node(x, y, half, nodes_[parent].depth_left - 1);
            nodes_[parent].children[quarter] = made;
        }
        return nodes_[parent].children[quarter];
    }

    std::uint32_t place_for(const flat_box& of)
    {
        grow_for(of);
        std::uint32_t at = root_;
        while (nodes_[at].divided && of.size() <= nodes_[at].half)
            at = child_for(at, of);
        return at;
    }

    void divide(std::uint32_t at)
    {
        if (nodes_[at].divided || nodes_[at].items.size() <= FULL || nodes_[at].depth_left <= 0)
            return;
        nodes_[at].divided = true;
        const std::vector<item> all = std::move(nodes_[at].items);
        nodes_[at].items.clear();
        for (const item& each : all)
            add(each.place.size() <= nodes_[at].half ? child_for(at, each.place) : at, each);
        for (const int quarter : {0, 1, 2, 3})
            if (nodes_[at].children[quarter] != NONE)
                divide(nodes_[at].children[quarter]);
    }

    void collect(std::uint32_t at, const box& window, std::vector<object_id>& out) const
    {
        const node& from = nodes_[at];
        // What stands in a node or under it reaches half a side beyond the node.
        const double reach = 2 * from.half;
        if (window.low[0] > from.x + reach || window.high[0] < from.x - reach ||
            window.low[1] > from.y + reach || window.high[1] < from.y - reach)
            return;
        for (const item& each : from.items)
            if (each.place.meets(window))
                out.push_back(each.id);
        for (const std::uint32_t child : from.children)
            if (child != NONE)
                collect(child, window, out);
    }

    std::vector<node> nodes_;
    std::uint32_t root_ = 0;
    std::vector<item> waiting_;          // for finish()
    std::vector<std::uint32_t> node_of_; // by object
    std::unordered_set<object_id> everywhere_;
};

class spatial_index : public change_listener
{
public:
    explicit spatial_index(database& db) : db_(db) { db_.add_listener(this); }
    spatial_index(const spatial_index&) = delete;
    spatial_index& operator=(const spatial_index&) = delete;
    ~spatial_index() override { db_.remove_listener(this); }

    void object_changed(object_id id, change_kind) override
    {
        if (!trees_.empty() && (changed_.empty() || changed_.back() != id))
            changed_.push_back(id);
    }

    const quadtree& tree_of(object_id space)
    {
        settle();
        const auto found = trees_.find(space);
        if (found != trees_.end())
            return found->second;
        if (trees_.empty())
            note_all_users();
        quadtree& made = trees_[space];
        for (object_id at = first_entity(db_, space); at; at = next_entity(db_, at)) {
            const box extents = extents_of(db_, at);
            if (is_endless(db_, at))
                made.put_everywhere(at);
            else if (!extents.is_empty())
                made.put_later(at, extents);
        }
        made.finish();
        return made;
    }

private:
    static bool refers(std::string_view type)
    {
        return type == "INSERT" || type == "DIMENSION" || type == "ACAD_TABLE";
    }
    void note_user(object_id id)
    {
        if (!refers(db_.type_of(id)))
            return;
        if (const object_id block = db_.record("BLOCK_RECORD", db_.text_of(db_.at(id).groups, 2)))
            users_[block].insert(id);
    }
    void note_all_users()
    {
        for (object_id id = 1; id < db_.size(); ++id)
            note_user(id);
    }
    void put(quadtree& tree, object_id id)
    {
        if (db_.at(id).erased) {
            tree.take(id);
        } else if (is_endless(db_, id)) {
            tree.put_everywhere(id);
        } else if (const box extents = extents_of(db_, id); extents.is_empty()) {
            tree.take(id);
        } else {
            tree.put(id, extents);
        }
    }

    // The object that stands in a block itself: parts lead to what they belong to. 0: none.
    object_id main_of(object_id id) const
    {
        while (id && db_.at(id).family == object_class::entity) {
            const object_id owner = db_.at(id).owner;
            if (owner && db_.at(owner).family == object_class::record)
                return id;
            id = owner;
        }
        return 0;
    }

    void settle()
    {
        std::vector<object_id> work;
        std::swap(work, changed_);
        std::unordered_set<object_id> done, blocks;
        for (std::size_t i = 0; i < work.size(); ++i) {
            const object_id id = main_of(work[i]);
            if (!id || !done.insert(id).second)
                continue;
            note_user(id);
            const object_id block = db_.at(id).owner;
            const auto tree = trees_.find(block);
            const bool is_part = db_.is(id, "BLOCK") || db_.is(id, "ENDBLK");
            if (tree != trees_.end() && !is_part)
                put(tree->second, id);
            if (blocks.insert(block).second)
                if (const auto users = users_.find(block); users != users_.end())
                    work.insert(work.end(), users->second.begin(), users->second.end());
        }
    }

    database& db_;
    std::unordered_map<object_id, quadtree> trees_;
    std::unordered_map<object_id, std::unordered_set<object_id>> users_; // of blocks
    std::vector<object_id> changed_;
};

} // namespace

std::vector<object_id> near_window(database& db, object_id block_record, const box& window)
{
    std::vector<object_id> found;
    if (!db.valid(block_record))
        return found;
    db.part<spatial_index>().tree_of(block_record).collect(window, found);
    std::sort(found.begin(), found.end(), std::greater<>()); // objects are numbered as they come
    return found;
}

} // namespace host::db

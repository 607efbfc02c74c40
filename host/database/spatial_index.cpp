// Which objects of a space may lie in a window: a loose quadtree a space.
//
// An object stands in a node by the middle of its box, and no deeper than nodes of its own size: so its box
// never reaches further than half a node beyond the node it stands in, and a node (with what is under it) is
// passed over when the window misses it by more than that. Nodes divide when they hold many; the root grows
// outwards. Changes are noted as they are told and worked in when the index is next asked, since objects
// are told before they have changed. A change inside a block concerns every object that refers to it.
#include <algorithm>
#include <cmath>
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
        slot made{};
        for (int i = 0; i < 2; ++i) {
            made.box.low[i] = extents.low[i];
            made.box.high[i] = extents.high[i];
        }
        const bool fits = std::all_of(made.box.low, made.box.low + 2, in_reach) &&
                          std::all_of(made.box.high, made.box.high + 2, in_reach);
        if (!fits) {
            everywhere_.insert(id);
            return;
        }
        made.node = place_for(made.box);
        nodes_[made.node].items.push_back(id);
        slots_[id] = made;
        divide(made.node);
    }
    void put_everywhere(object_id id)
    {
        take(id);
        everywhere_.insert(id);
    }
    void take(object_id id)
    {
        everywhere_.erase(id);
        const auto found = slots_.find(id);
        if (found == slots_.end())
            return;
        auto& items = nodes_[found->second.node].items;
        const auto at = std::find(items.begin(), items.end(), id);
        *at = items.back();
        items.pop_back();
        slots_.erase(found);
    }
    void collect(const box& window, std::vector<object_id>& out) const
    {
        out.insert(out.end(), everywhere_.begin(), everywhere_.end());
        if (!nodes_.empty())
            collect(root_, window, out);
    }

private:
    struct node {
        double x, y, half; // middle and half of the side
        int depth_left;
        std::uint32_t children[4] = {NONE, NONE, NONE, NONE};
        bool divided = false;
        std::vector<object_id> items;
    };
    struct slot {
        flat_box box;
        std::uint32_t node;
    };

    static bool in_reach(double value) { return std::fabs(value) <= FARTHEST; }

    std::uint32_t add_node(double x, double y, double half, int depth_left)
    {
        node made{};
        made.x = x;
        made.y = y;
        made.half = half;
        made.depth_left = depth_left;
        for (std::uint32_t& child : made.children)
            child = NONE;
        nodes_.push_back(std::move(made));
        return static_cast<std::uint32_t>(nodes_.size() - 1);
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
            const node& old = nodes_[root_];
            const double half = old.half;
            const double x = old.x + (middle(of, 0) >= old.x ? half : -half);
            const double y = old.y + (middle(of, 1) >= old.y ? half : -half);
            const int quarter = quarter_of(x, y, old.x, old.y);
            const std::uint32_t bigger = add_node(x, y, 2 * half, old.depth_left + 1);
            nodes_[bigger].children[quarter] = root_;
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
        const node& from = nodes_[parent];
        const int quarter = quarter_of(from.x, from.y, middle(of, 0), middle(of, 1));
        if (from.children[quarter] == NONE) {
            const double half = from.half / 2;
            const std::uint32_t made =
                add_node(from.x + (quarter & 1 ? half : -half), from.y + (quarter & 2 ? half : -half), half,
                         from.depth_left - 1);
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
        std::vector<object_id> stay, go;
        for (const object_id id : nodes_[at].items)
            (slots_[id].box.size() <= nodes_[at].half ? go : stay).push_back(id);
        nodes_[at].items = std::move(stay);
        for (const object_id id : go) {
            slot& moved = slots_[id];
            moved.node = child_for(at, moved.box);
            nodes_[moved.node].items.push_back(id);
        }
        for (const std::uint32_t child :
             std::vector<std::uint32_t>(nodes_[at].children, nodes_[at].children + 4))
            if (child != NONE)
                divide(child);
    }

    void collect(std::uint32_t at, const box& window, std::vector<object_id>& out) const
    {
        const node& from = nodes_[at];
        // Items reach half a side beyond the node; so do those of its children, whose sides are smaller.
        const double reach = 2 * from.half;
        if (window.low[0] > from.x + reach || window.high[0] < from.x - reach ||
            window.low[1] > from.y + reach || window.high[1] < from.y - reach)
            return;
        for (const object_id id : from.items)
            if (slots_.at(id).box.meets(window))
                out.push_back(id);
        for (const std::uint32_t child : from.children)
            if (child != NONE)
                collect(child, window, out);
    }

    std::vector<node> nodes_;
    std::uint32_t root_ = 0;
    std::unordered_map<object_id, slot> slots_;
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
        for (object_id at = first_entity(db_, space); at; at = next_entity(db_, at))
            put(made, at);
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

// Trimming at point symbols, one symbol after the other. Nobody can trim at a block, so each is exploded for
// the time: its pieces are the cutting edges, and go again. What is needed to put the block back is read before
// it is touched; where that isn't to be had the block stays out of it.
#include "tools/trim_at_symbols.h"

#include <algorithm>
#include <iterator>
#include <vector>

#include "common/names.h"
#include "common/variables.h"
#include "drawing/object_list.h"
#include "drawing/selection.h"
#include "hostapi/ads.h"

namespace
{

constexpr short TYPE_GROUP = 0;
constexpr short OPERATOR_GROUP = -4;
constexpr int NAME_GROUP = 2;
constexpr int POINT_GROUP = 10;
constexpr int ATTRIBUTES_FOLLOW_GROUP = 66;

constexpr double REACH = 0.01; // a line through the point only has to touch the window

struct object_name {
    ads_name words;
};

resbuf filter_node(short code, const char* text, resbuf* next)
{
    resbuf node{next, code, {}};
    node.resval.rstring = const_cast<char*>(text); // the host only reads it
    return node;
}

// A selection set that is given back at the end of its scope.
class object_set
{
public:
    object_set() = default;
    object_set(const object_set&) = delete;
    object_set& operator=(const object_set&) = delete;
    ~object_set()
    {
        if (owned_)
            acedSSFree(name_);
    }

    // To be called once, either of them. False when nothing is found; there is no set then.
    bool select(const char* mode, const double* corner, const double* opposite, const resbuf* filter)
    {
        return owned_ = acedSSGet(mode, corner, opposite, filter, name_) == RTNORM;
    }
    bool begin(const std::int32_t* member) { return owned_ = acedSSAdd(member, nullptr, name_) == RTNORM; }

    void add(const ads_name object) { acedSSAdd(object, name_, name_); }
    const std::int32_t* name() const { return name_; }
    std::vector<object_name> objects() const
    {
        std::int32_t length = 0;
        if (owned_)
            acedSSLength(name_, &length);
        std::vector<object_name> all;
        for (std::int32_t i = 0; i < length; ++i)
            if (object_name each; acedSSName(name_, i, each.words) == RTNORM)
                all.push_back(each);
        return all;
    }

private:
    ads_name name_{};
    bool owned_ = false;
};

// ---- the block --------------------------------------------------------------------------------------

// A block reference with all that makes it anew.
class kept_block
{
public:
    explicit kept_block(const ads_name name) : list_(object_list::with_extended_data(name))
    {
        const resbuf* follow = list_.find(ATTRIBUTES_FOLLOW_GROUP);
        is_whole_ = list_.find(POINT_GROUP) && (!follow || follow->resval.rint == 0 || read_attributes(name));
    }

    bool is_point_symbol() const { return in_capitals(list_.text(NAME_GROUP)).starts_with("SPT"); }
    bool is_whole() const { return is_whole_; } // all could be read
    const double* point() const { return list_.find(POINT_GROUP)->resval.rpoint; }

    // A new block reference with its attributes. False when the drawing doesn't take it.
    bool make() const
    {
        return acdbEntMake(list_.without_name()) == RTNORM &&
               std::all_of(parts_.begin(), parts_.end(),
                           [](const object_list& part) { return acdbEntMake(part.without_name()) == RTNORM; });
    }

private:
    bool read_attributes(const ads_name name)
    {
        ads_name at = {name[0], name[1]};
        while (acdbEntNext(at, at) == RTNORM) {
            parts_.push_back(object_list::with_extended_data(at));
            if (parts_.back().type() != "ATTRIB")
                return parts_.back().type() == "SEQEND";
        }
        return false;
    }

    object_list list_;
    std::vector<object_list> parts_; // ATTRIB objects and SEQEND
    bool is_whole_;
};

// What was erased comes back by being erased again.
void put_back(const kept_block& block, const ads_name name)
{
    if (!object_list(name) && !block.make())
        acdbEntDel(name);
}

// ---- its pieces ---------------------------------------------------------------------------------------

bool is_one_of(std::string_view type, std::initializer_list<const char*> types)
{
    return std::find(types.begin(), types.end(), type) != types.end();
}

// The last object of the drawing, or the last part of it.
bool last_part(ads_name out)
{
    if (acdbEntLast(out) != RTNORM)
        return false;
    while (acdbEntNext(out, out) == RTNORM) {
    }
    return true;
}

// Puts what has come behind an object into a set, and the names of what can be trimmed at into `edges`.
void collect_pieces(const ads_name before, object_set* pieces, std::vector<object_name>* edges)
{
    object_name at{{before[0], before[1]}};
    while (acdbEntNext(at.words, at.words) == RTNORM) {
        const object_list list(at.words);
        if (list.type() != "VERTEX") // goes with its polyline
            pieces->add(at.words);
        if (is_one_of(list.type(), {"CIRCLE", "ELLIPSE", "POLYLINE", "LWPOLYLINE"}))
            edges->push_back(at);
    }
}

// ---- lines --------------------------------------------------------------------------------------------

// Lines and polylines through a point.
void select_lines(const double* point, object_set* lines)
{
    resbuf close = filter_node(OPERATOR_GROUP, "OR>", nullptr), polylines;
    pl_filter_polylines(&polylines, &close);
    if (!polylines.resval.rstring)
        return;
    resbuf line = filter_node(TYPE_GROUP, "LINE", &polylines);
    const resbuf open = filter_node(OPERATOR_GROUP, "<OR", &line);
    const ads_point low = {point[0] - REACH, point[1] - REACH, point[2]};
    const ads_point high = {point[0] + REACH, point[1] + REACH, point[2]};
    lines->select("C", low, high, &open);
    acad_free(polylines.resval.rstring);
}

std::vector<object_name> lines_to_trim(const object_set& set)
{
    std::vector<object_name> lines = set.objects();
    std::erase_if(lines, [](const object_name& each) {
        return !is_one_of(object_list(each.words).type(), {"LINE", "POLYLINE", "LWPOLYLINE"});
    });
    return lines;
}

bool is_same(const object_name& a, const object_name& b)
{
    return std::equal(std::begin(a.words), std::end(a.words), std::begin(b.words));
}

void trim(const std::vector<object_name>& lines, const std::vector<object_name>& edges, const double* point)
{
    for (const object_name& edge : edges)
        for (const object_name& line : lines)
            if (!is_same(line, edge))
                acedCommand(RTSTR, "_.TRIM", RTENAME, edge.words, RTSTR, "", RTLB, RTENAME, line.words,
                            RT3DPOINT, point, RTLE, RTSTR, "", 0);
}

// ---- all together -------------------------------------------------------------------------------------

void trim_at_block(const ads_name name)
{
    const kept_block block(name);
    if (!block.is_point_symbol() || !block.is_whole())
        return;
    object_set lines, exploded, pieces;
    select_lines(block.point(), &lines);
    ads_name before;
    if (!last_part(before) || !exploded.begin(name) || !pieces.begin(nullptr))
        return;
    acedCommand(RTSTR, "_.EXPLODE", RTPICKS, exploded.name(), 0);
    std::vector<object_name> edges;
    collect_pieces(before, &pieces, &edges);
    trim(lines_to_trim(lines), edges, block.point());
    for (const object_name& piece : pieces.objects())
        acdbEntDel(piece.words);
    put_back(block, name);
}

// False when the user broke it off.
bool trim_at_blocks(const object_set& blocks)
{
    const kept_variable highlight("HIGHLIGHT");
    variable_set_short("HIGHLIGHT", 0);
    for (const object_name& block : blocks.objects()) {
        if (acedUsrBrk() > 0)
            return false;
        trim_at_block(block.words);
    }
    return true;
}

} // namespace

int trim_at_symbols()
{
    acutPrintf("\nSelect %s point symbols to trim against.", "Zentrik");
    const resbuf filter = filter_node(TYPE_GROUP, "INSERT", nullptr);
    const char* told = "Nothing selected";
    {
        object_set blocks;
        if (blocks.select(nullptr, nullptr, nullptr, &filter))
            told = trim_at_blocks(blocks) ? "\nDone." : "\nFunction cancelled at user request.";
    }
    acutPrintf("%s", told);
    return RTNORM;
}

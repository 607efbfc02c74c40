// Selection sets. A set keeps its members in order with their places, so that a look-up is quick; a member that
// is taken out leaves a gap that is closed when an index is next asked for.
#include "host/database/selection_sets.h"

#include <algorithm>
#include <map>

#include "host/core/document.h"
#include "host/core/trace.h"
#include "host/database/entities.h"

namespace host::db
{

namespace
{

std::size_t live = 0;
std::int32_t last_number = 0; // over all drawings, so that no set is taken for another's

struct selection_set {
    std::vector<object_id> members; // 0: taken out
    std::size_t front = 0;          // before it all are taken out: programs empty sets from the front
    std::unordered_map<object_id, std::size_t> places;

    bool add(object_id id)
    {
        if (!places.emplace(id, members.size()).second)
            return false;
        members.push_back(id);
        return true;
    }
    bool remove(object_id id)
    {
        const auto found = places.find(id);
        if (found == places.end())
            return false;
        members[found->second] = 0;
        while (!members.empty() && members.back() == 0)
            members.pop_back();
        while (front < members.size() && members[front] == 0)
            ++front;
        front = std::min(front, members.size());
        places.erase(found);
        return true;
    }
    object_id at(std::size_t index)
    {
        if (members.size() - front != places.size())
            close_gaps();
        return index < places.size() ? members[front + index] : 0;
    }
    void close_gaps()
    {
        std::erase(members, 0u);
        front = 0;
        for (std::size_t i = 0; i < members.size(); ++i)
            places[members[i]] = i;
    }
};

struct set_table {
    std::map<std::int32_t, selection_set> sets;
    std::vector<object_id> chosen;
    explicit set_table(database&) {}
    set_table(const set_table&) = delete;
    set_table& operator=(const set_table&) = delete;
    ~set_table() { live -= sets.size(); }

    selection_set* find(const std::int32_t* name)
    {
        if (!name || name[1] != -1)
            return nullptr;
        const auto found = sets.find(name[0]);
        return found == sets.end() ? nullptr : &found->second;
    }
};

selection_set& new_set(database& db, std::int32_t* name)
{
    name[0] = ++last_number;
    name[1] = -1;
    ++live;
    return db.part<set_table>().sets[name[0]];
}

selection_set* current_set(const std::int32_t* name)
{
    return has_document() ? current_database().part<set_table>().find(name) : nullptr;
}

// An object that can be in a set: an entity itself, not a part of one.
object_id member_of_name(const std::int32_t* name)
{
    database& db = current_database();
    const object_id id = id_of_name(db, name);
    if (!id || db.at(id).family != object_class::entity || is_erased(db, id))
        return 0;
    return id;
}

} // namespace

void make_set(database& db, const std::vector<object_id>& ids, std::int32_t* name)
{
    selection_set& made = new_set(db, name);
    for (const object_id id : ids)
        made.add(id);
}

std::vector<object_id> set_members(database& db, const std::int32_t* name)
{
    std::vector<object_id> members;
    selection_set* set = db.part<set_table>().find(name);
    if (!set)
        return members;
    for (const object_id id : set->members)
        if (id && !is_erased(db, id))
            members.push_back(id);
    return members;
}

void set_chosen(database& db, std::vector<object_id> ids)
{
    db.part<set_table>().chosen = std::move(ids);
}

std::vector<object_id> chosen(database& db)
{
    std::vector<object_id> there = db.part<set_table>().chosen;
    std::erase_if(there, [&db](object_id id) { return is_erased(db, id); });
    return there;
}

bool is_set(database& db, const std::int32_t* name)
{
    return db.part<set_table>().find(name) != nullptr;
}

std::size_t live_sets()
{
    return live;
}

} // namespace host::db

using namespace host;
using namespace host::db;

extern "C" {

int acedSSFree(const ads_name set)
{
    trace_line line("acedSSFree");
    line.name(set);
    if (!current_set(set))
        return line.status(RTERROR);
    current_database().part<set_table>().sets.erase(set[0]);
    --live;
    return line.status(RTNORM);
}

int acedSSLength(const ads_name set, std::int32_t* length)
{
    selection_set* found = current_set(set);
    if (!found || !length)
        return RTERROR;
    *length = static_cast<std::int32_t>(found->places.size());
    return RTNORM;
}

int acedSSName(const ads_name set, std::int32_t index, ads_name entity)
{
    selection_set* found = current_set(set);
    if (!found || !entity || index < 0)
        return RTERROR;
    const object_id id = found->at(static_cast<std::size_t>(index));
    make_name(current_database(), id, entity);
    return id ? RTNORM : RTERROR;
}

int acedSSAdd(const ads_name entity, const ads_name set, ads_name out)
{
    if (!has_document() || !out)
        return RTERROR;
    const object_id id = entity ? member_of_name(entity) : 0;
    selection_set* found = set ? current_set(set) : nullptr;
    if ((entity && !id) || (set && !found))
        return RTERROR;
    if (found) {
        if (id)
            found->add(id);
        const std::int32_t same[2] = {set[0], set[1]};
        out[0] = same[0];
        out[1] = same[1];
        return RTNORM;
    }
    trace_line line("acedSSAdd");
    line.name(entity).name(nullptr);
    selection_set& made = new_set(current_database(), out);
    if (id)
        made.add(id);
    return line.status(RTNORM);
}

int acedSSDel(const ads_name entity, const ads_name set)
{
    selection_set* found = current_set(set);
    const object_id id = found ? id_of_name(current_database(), entity) : 0;
    return id && found->remove(id) ? RTNORM : RTERROR;
}

int acedSSMemb(const ads_name entity, const ads_name set)
{
    selection_set* found = current_set(set);
    const object_id id = found ? id_of_name(current_database(), entity) : 0;
    return id && found->places.contains(id) ? RTNORM : RTERROR;
}
}

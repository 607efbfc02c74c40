#include "tools/elevation_change.h"

#include <cstring>

#include "common/held_list.h"
#include "common/names.h"
#include "tools/elevation_objects.h"
#include "tools/elevation_questions.h"

namespace
{

struct changer_of_type {
    const char* type;
    elevation_changer change;
};
constexpr changer_of_type CHANGERS[] = {
    {"INSERT", change_insert},
    {"POLYLINE", change_polyline},
    {"LWPOLYLINE", change_polyline},
    {"LINE", change_line},
};

elevation_changer changer_for(const char* type)
{
    for (const changer_of_type& row : CHANGERS)
        if (std::strcmp(type, row.type) == 0)
            return row.change;
    return change_points;
}

// The set that the user selects. Given back at the end.
class selected_objects
{
public:
    selected_objects() : selected_(acedSSGet(nullptr, nullptr, nullptr, nullptr, name_) == RTNORM) {}
    ~selected_objects()
    {
        if (selected_)
            acedSSFree(name_);
    }
    selected_objects(const selected_objects&) = delete;
    selected_objects& operator=(const selected_objects&) = delete;

    bool is_selected() const { return selected_; }
    std::int32_t count() const
    {
        std::int32_t length = 0;
        return acedSSLength(name_, &length) == RTNORM ? length : 0;
    }
    bool object(std::int32_t index, ads_name object) const
    {
        return acedSSName(name_, index, object) == RTNORM;
    }

private:
    ads_name name_{};
    bool selected_;
};

void change_object(const ads_name name, const elevation_rule& rule, elevation_tally* tally)
{
    const held_list list(acdbEntGet(name));
    const resbuf* type = rb_find(list.get(), 0);
    if (type && type->resval.rstring)
        changer_for(type->resval.rstring)(name, list.get(), rule, tally);
}

// False when the user breaks it off. A break falls between two objects, so each is changed or as it was.
bool change_all(const selected_objects& selected, std::int32_t count, const elevation_rule& rule,
                elevation_tally* tally)
{
    for (std::int32_t i = 0; i < count; ++i) {
        acutPrintf("\rTesting Entity> %ld  ", static_cast<long>(i) + 1);
        if (acedUsrBrk() > 0)
            return false;
        ads_name name;
        if (selected.object(i, name))
            change_object(name, rule, tally);
    }
    return true;
}

void tell_count(const char* words, std::int32_t count)
{
    if (count > 0)
        acutPrintf("\n%s%ld", words, static_cast<long>(count));
}

void tell_tally(std::int32_t tested, const elevation_tally& tally)
{
    acutPrintf("\rTested %ld Entities\n", static_cast<long>(tested));
    tell_count("PolyLine Entities Changed> ", tally.polylines);
    tell_count("Other Entities Changed>    ", tally.others);
    tell_count("Zentrik Points Changed>   ", tally.points);
}

void answer(const elevation_request& want)
{
    // A factor is no standard for a next time.
    const char* mode = want.rule.mode == 'S' ? "Absolute" : want.mode_text.c_str();
    const held_list list(acutBuildList(RTSTR, mode, RTREAL, want.rule.value, RTNONE));
    if (list)
        acedRetList(list.get());
}

elevation_request request_of_call()
{
    elevation_request want;
    const held_list args(acedGetArgs());
    read_elevation_defaults(args.get(), &want);
    return want;
}

} // namespace

void elevation_change()
{
    elevation_request want = request_of_call();
    if (!ask_elevation_request(&want))
        return;
    acutPrintf("\nSelect Entities for Elevation Change.");
    elevation_tally tally;
    {
        const selected_objects selected;
        if (!selected.is_selected()) {
            acutPrintf("\nNo selection set created!");
            return;
        }
        const std::int32_t count = selected.count();
        if (count == 0) {
            acutPrintf("\nNo Entities selected.");
            return;
        }
        if (!change_all(selected, count, want.rule, &tally))
            return;
        acedCommand(RTSTR, tally.need_regen ? "_.REGEN" : "_.REDRAW", RTNONE);
        tell_tally(count, tally);
    }
    answer(want);
}

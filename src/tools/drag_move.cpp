#include "tools/drag_move.h"

#include <algorithm>

#include "common/arguments.h"
#include "drawing/object_list.h"
#include "hostapi/ads.h"
#include "tools/curve.h"

namespace
{

constexpr int NO_CURSOR_FLAG = 0;
constexpr int FIRST_POINT_GROUP = 10, LAST_POINT_GROUP = 13;

// The host calls `follow` without any word of whose drag it is.
ads_point base_point;

int follow(ads_point point, ads_matrix matrix)
{
    for (int axis = 0; axis < 3; ++axis)
        matrix[axis][3] = point[axis] - base_point[axis];
    return RTNORM;
}

// Keeps the base point. False when the call has none that a drawing could hold.
bool take_base_point(const resbuf** args)
{
    ads_point base;
    if (!next_point(args, base) || !point_is_finite(base))
        return false;
    std::copy_n(base, 3, base_point);
    return true;
}

void move_object(const ads_name name, const ads_point offset)
{
    const object_list list(name);
    if (!list)
        return;
    for (resbuf* node = list.get(); node; node = node->rbnext)
        if (node->restype >= FIRST_POINT_GROUP && node->restype <= LAST_POINT_GROUP)
            for (int axis = 0; axis < 3; ++axis)
                node->resval.rpoint[axis] += offset[axis];
    acdbEntMod(list.get());
    acdbEntUpd(name);
}

// One that is gone would come back by being erased again.
void erase_object(const ads_name name)
{
    const object_list list(name);
    if (list)
        acdbEntDel(name);
}

// In the set as it is now: an answer may have been an expression that changed it.
template <class Work>
void for_each_object(const ads_name set, Work work)
{
    std::int32_t length = 0;
    acedSSLength(set, &length);
    for (std::int32_t i = 0; i < length; ++i) {
        ads_name name;
        if (acedSSName(set, i, name) == RTNORM)
            work(name);
    }
}

} // namespace

int drag_move(const resbuf* args)
{
    ads_name set;
    std::int32_t length;
    if (!next_name(&args, set) || !take_base_point(&args) || acedSSLength(set, &length) != RTNORM)
        return RTNORM;
    const ads_point from = {base_point[0], base_point[1], base_point[2]};
    ads_point to;
    const int status = acedDragGen(set, next_text(&args, ""), NO_CURSOR_FLAG, follow, to);
    if (status == RTNORM) {
        const ads_point offset = {to[0] - from[0], to[1] - from[1], to[2] - from[2]};
        for_each_object(set, [&](const ads_name name) { move_object(name, offset); });
    } else {
        for_each_object(set, [](const ads_name name) { erase_object(name); });
    }
    acedRetInt(status == RTCAN ? 0 : 1);
    return RTNORM;
}

int second_point(const resbuf* args)
{
    acedRetNil();
    ads_name set;
    if (!next_name(&args, set) || !take_base_point(&args))
        return RTNORM;
    resbuf last{nullptr, RTPOINT, {}};
    std::copy_n(base_point, 3, last.resval.rpoint);
    acedSetVar("LASTPOINT", &last);
    ads_point point;
    if (acedDragGen(set, "\nSelect Second Point: ", NO_CURSOR_FLAG, follow, point) == RTNORM)
        acedRetPoint(point);
    return RTNORM;
}

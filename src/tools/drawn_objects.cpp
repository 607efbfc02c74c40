#include "tools/drawn_objects.h"

#include "hostapi/ads.h"

newest_object::newest_object() : any_(acdbEntLast(name_) == RTNORM) {}

bool newest_object::added(ads_name name) const
{
    if (acdbEntLast(name) != RTNORM)
        return false;
    return !any_ || name[0] != name_[0] || name[1] != name_[1];
}

drawn_set::drawn_set() : owned_(acedSSAdd(nullptr, nullptr, name_) == RTNORM) {}

drawn_set::~drawn_set()
{
    if (owned_)
        acedSSFree(name_);
}

void drawn_set::add_new(const newest_object& before)
{
    ads_name object;
    if (owned_ && before.added(object))
        acedSSAdd(object, name_, name_);
}

void drawn_set::add_last()
{
    ads_name object;
    if (owned_ && acdbEntLast(object) == RTNORM)
        acedSSAdd(object, name_, name_);
}

void drawn_set::answer()
{
    if (owned_ && acedRetName(name_, RTPICKS) == RTNORM)
        owned_ = false;
}

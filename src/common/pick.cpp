#include "common/pick.h"

#include <algorithm>
#include <string_view>

#include "common/names.h"
#include "common/text.h"
#include "hostapi/ads.h"

namespace
{

constexpr int TYPE_GROUP = 0;
constexpr int ERRNO_PICK_MISSED = 7;

bool pick_missed()
{
    resbuf value{};
    return acedGetVar("ERRNO", &value) == RTNORM && value.resval.rint == ERRNO_PICK_MISSED;
}

bool is_listed(std::string_view types, std::string_view wanted)
{
    for (std::size_t at = 0; at < types.size();) {
        const std::size_t end = std::min(types.find(' ', at), types.size());
        if (end > at && types.substr(at, end - at) == wanted)
            return true;
        at = end + 1;
    }
    return false;
}

// RTNORM when the object's type is listed, RTNONE when it isn't, RTERROR when it has none.
int check_type(const char* types, const ads_name name)
{
    resbuf* list = acdbEntGet(name);
    resbuf* type = rb_find(list, TYPE_GROUP);
    int status = RTERROR;
    if (type && type->resval.rstring) {
        str_trim(type->resval.rstring);
        str_upper(type->resval.rstring);
        status = is_listed(types, type->resval.rstring) ? RTNORM : RTNONE;
    }
    if (list)
        acutRelRb(list);
    return status;
}

} // namespace

int entsel_of_type(const char* types, const char* prompt, ads_name name, ads_point point)
{
    for (;;) {
        const int status = acedEntSel(prompt, name, point);
        if (status == RTERROR) {
            if (!pick_missed())
                return RTNONE;
            continue;
        }
        if (status != RTNORM)
            return status;
        const int match = check_type(types, name);
        if (match != RTNONE)
            return match;
        acutPrintf("\nSelection is not one of '%s'.", types);
    }
}

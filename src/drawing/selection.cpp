#include "drawing/selection.h"

#include "common/pick.h"
#include "hostapi/ads.h"

namespace
{

constexpr short TYPE_GROUP = 0;
constexpr short OPERATOR_GROUP = -4;

} // namespace

int pick_entity_of_types(const char* types, const char* prompt, ads_name name, ads_point point)
{
    return entsel_of_type(types, prompt, name, point);
}

void pl_filter_polylines(resbuf* head, resbuf* tail)
{
    static char old_style[] = "POLYLINE", lightweight[] = "LWPOLYLINE", close[] = "OR>";
    static resbuf kinds[3];
    kinds[0] = {&kinds[1], TYPE_GROUP, {}};
    kinds[0].resval.rstring = old_style;
    kinds[1] = {&kinds[2], TYPE_GROUP, {}};
    kinds[1].resval.rstring = lightweight;
    kinds[2] = {tail, OPERATOR_GROUP, {}};
    kinds[2].resval.rstring = close;
    *head = {&kinds[0], OPERATOR_GROUP, {}};
    acutNewString("<OR", &head->resval.rstring);
}

#include "tools/elevation_objects.h"

#include "common/names.h"
#include "hostapi/ads.h"

void change_line(const ads_name, resbuf* list, const elevation_rule& rule, elevation_tally* tally)
{
    resbuf* start = rb_find(list, 10);
    if (start && rule.leaves(start->resval.rpoint[2]))
        return; // whatever its end's z is: lines from the datum stay as they are
    resbuf* end = start ? rb_find(list, 11) : nullptr;
    if (!end) {
        acutPrintf("\nError getting coordinate of ");
        return;
    }
    if (!change_z(start, rule) || (!rule.leaves(end->resval.rpoint[2]) && !change_z(end, rule))) {
        tell_out_of_range("LINE");
        return;
    }
    if (acdbEntMod(list) == RTNORM)
        ++tally->others;
}

// The numbers mean what the object makes of them. Group 11 of an MTEXT, ELLIPSE, RAY or XLINE is a direction
// and tilts when zeros aren't ignored; groups 12 and 13 of a 3DFACE stay.
void change_points(const ads_name, resbuf* list, const elevation_rule& rule, elevation_tally* tally)
{
    bool is_changed = false;
    for (resbuf* node = list; node; node = node->rbnext) {
        if ((node->restype != 10 && node->restype != 11) || rule.leaves(node->resval.rpoint[2]))
            continue;
        if (!change_z(node, rule)) {
            const resbuf* type = rb_find(list, 0);
            tell_out_of_range(type ? type->resval.rstring : "object");
            return;
        }
        is_changed = true;
    }
    if (is_changed && acdbEntMod(list) == RTNORM)
        ++tally->others;
}

#include "tools/elevation_rule.h"

#include "hostapi/ads.h"

void tell_out_of_range(const char* type)
{
    acutPrintf("\nNew elevation of %s is out of range, left as it is.", type);
}

bool change_z(resbuf* group, const elevation_rule& rule)
{
    const double z = rule.applied_to(group->resval.rpoint[2]);
    if (!std::isfinite(z))
        return false;
    group->resval.rpoint[2] = z;
    return true;
}

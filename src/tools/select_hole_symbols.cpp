#include "tools/select_hole_symbols.h"

#include <iterator>

#include "common/names.h"
#include "hostapi/ads.h"

namespace
{

constexpr short TYPE_GROUP = 0;
constexpr short OPERATOR_GROUP = -4;
constexpr short EXTENDED_DATA = -3;
constexpr short APPLICATION_NAME = 1001;

struct filter_node {
    short code;
    const char* text;
};

constexpr filter_node FILTER[] = {
    {TYPE_GROUP, "INSERT"},   {OPERATOR_GROUP, "<OR"},        {OPERATOR_GROUP, "<AND"},
    {EXTENDED_DATA, nullptr}, {APPLICATION_NAME, "COREHOLE"}, {OPERATOR_GROUP, "AND>"},
    {OPERATOR_GROUP, "<AND"}, {EXTENDED_DATA, nullptr},       {APPLICATION_NAME, "CHANNEL"},
    {OPERATOR_GROUP, "AND>"}, {OPERATOR_GROUP, "OR>"},
};

} // namespace

int select_hole_symbols()
{
    zent_regapp("COREHOLE");
    zent_regapp("CHANNEL");
    resbuf filter[std::size(FILTER)];
    for (std::size_t i = 0; i < std::size(FILTER); ++i) {
        filter[i] = {i + 1 < std::size(FILTER) ? &filter[i + 1] : nullptr, FILTER[i].code, {}};
        filter[i].resval.rstring = const_cast<char*>(FILTER[i].text); // the host only reads it
    }
    ads_name set;
    if (acedSSGet(nullptr, nullptr, nullptr, filter, set) != RTNORM) {
        acedRetNil();
        return RTNORM;
    }
    if (acedRetName(set, RTPICKS) != RTNORM)
        acedSSFree(set);
    return RTNORM;
}

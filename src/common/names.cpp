#include "common/names.h"

#include <cstring>

#include "common/text.h"
#include "hostapi/ads.h"

namespace
{

constexpr int LAYER_GROUP = 8;
constexpr std::size_t LONGEST_LAYER = 31;

} // namespace

int name_is_bad(char* text)
{
    str_trim(text);
    return text[0] == '\0' || std::strpbrk(text, FORBIDDEN_IN_NAMES) ? 1 : 0;
}

int name_clean(char* text)
{
    str_trim(text);
    if (text[0] == '\0')
        return 0;
    for (char* bad = text; (bad = std::strpbrk(bad, FORBIDDEN_IN_NAMES)) != nullptr;)
        *bad = '_';
    return 1;
}

resbuf* rb_find(resbuf* list, int code)
{
    while (list && list->restype != code)
        list = list->rbnext;
    return list;
}

const resbuf* rb_find(const resbuf* list, int code)
{
    while (list && list->restype != code)
        list = list->rbnext;
    return list;
}

resbuf* entity_layer(resbuf* entity_list)
{
    resbuf* node = rb_find(entity_list, LAYER_GROUP);
    if (!node || !node->resval.rstring)
        return nullptr;
    char* name = node->resval.rstring;
    str_upper(name);
    if (std::strlen(name) > LONGEST_LAYER) {
        acutPrintf("\nWarning: layer name %s truncated to", name);
        name[LONGEST_LAYER] = '\0';
        acutPrintf("%s", name);
    }
    return node;
}

int zent_regapp(const char* name)
{
    resbuf* record = acdbTblSearch("APPID", name, 0);
    if (record) {
        acutRelRb(record);
        return 1;
    }
    if (acdbRegApp(name) == RTNORM)
        return 1;
    acutPrintf("\nError: unable to register %s.", name);
    return 0;
}

int wild_match(const char* text, const char* pattern)
{
    if (!text || !pattern)
        return RTNONE;
    const int status = acutWcMatch(text, pattern);
    if (status != RTNORM && std::strcmp(text, pattern) == 0)
        return RTNORM;
    return status;
}

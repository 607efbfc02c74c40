#include "common/lisp_vars.h"

#include "hostapi/ads.h"

void lisp_get_text(text_out out, const char* name)
{
    text_set(out, "");
    resbuf* value = nullptr;
    if (acedGetSym(name, &value) == RTNORM && value) {
        if (value->restype == RTSTR && value->resval.rstring)
            text_set(out, value->resval.rstring);
        else if (value->restype == RTSHORT)
            text_format(out, "%d", value->resval.rint);
        else if (value->restype == RTREAL)
            text_format(out, "%f", value->resval.rreal);
    }
    if (value)
        acutRelRb(value);
}

void lisp_set_text(const char* name, const char* value)
{
    resbuf* list = acutBuildList(RTSTR, value, 0);
    if (!list || acedPutSym(name, list) != RTNORM)
        acutPrintf("Unable to set AutoLisp variable\n");
    if (list)
        acutRelRb(list);
}

bool lisp_is_integer(const char* name, int value)
{
    resbuf* set = nullptr;
    const bool is =
        acedGetSym(name, &set) == RTNORM && set && set->restype == RTSHORT && set->resval.rint == value;
    if (set)
        acutRelRb(set);
    return is;
}

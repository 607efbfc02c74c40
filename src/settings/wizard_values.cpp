#include "settings/wizard_values.h"

#include <cstdlib>

#include "common/lisp_vars.h"
#include "hostapi/ads.h"

int lisp_integer(const char* name)
{
    char text[64];
    lisp_get_text(text, name);
    return std::atoi(text);
}

double lisp_real(const char* name)
{
    char text[ADS_TEXT_SIZE];
    lisp_get_text(text, name);
    return std::atof(text);
}

void lisp_set_short(const char* name, int value)
{
    resbuf node{nullptr, RTSHORT, {}};
    node.resval.rint = static_cast<short>(value);
    acedPutSym(name, &node);
}

void lisp_set_real(const char* name, double value)
{
    resbuf node{nullptr, RTREAL, {}};
    node.resval.rreal = value;
    acedPutSym(name, &node);
}

#include "common/variables.h"

#include "hostapi/ads.h"

double variable_number(const char* name, double standard)
{
    resbuf value{};
    if (acedGetVar(name, &value) != RTNORM)
        return standard;
    if (value.restype == RTSTR)
        acad_free(value.resval.rstring);
    return value.restype == RTREAL    ? value.resval.rreal
           : value.restype == RTSHORT ? value.resval.rint
                                      : standard;
}

bool variable_set_real(const char* name, double value)
{
    resbuf node{nullptr, RTREAL, {}};
    node.resval.rreal = value;
    return acedSetVar(name, &node) == RTNORM;
}

bool variable_set_short(const char* name, int value)
{
    resbuf node{nullptr, RTSHORT, {}};
    node.resval.rint = static_cast<short>(value);
    return acedSetVar(name, &node) == RTNORM;
}

kept_variable::kept_variable(const char* name) : name_(name), restore_(acedGetVar(name, &value_) == RTNORM)
{
    if (!restore_)
        value_ = resbuf{};
}

kept_variable::~kept_variable()
{
    if (restore_)
        acedSetVar(name_, &value_);
    if (value_.restype == RTSTR)
        acad_free(value_.resval.rstring);
}

void kept_variable::drop()
{
    restore_ = false;
}

// variables.h: host variables that a tool reads, changes and puts back.
#pragma once

#include "hostapi/adsdef.h"

// A real or 16-bit variable as a number; `standard` when the host has none of that name or it is of
// another type.
double variable_number(const char* name, double standard);
bool variable_set_real(const char* name, double value);
bool variable_set_short(const char* name, int value);

// The value of a variable at a certain time. Restored when this goes out of scope, unless it was dropped.
class kept_variable
{
public:
    explicit kept_variable(const char* name); // `name` must outlive it
    ~kept_variable();
    kept_variable(const kept_variable&) = delete;
    kept_variable& operator=(const kept_variable&) = delete;

    void drop();                                   // the variable stays as it is
    const resbuf& value() const { return value_; } // restype 0 when the host refused it

private:
    const char* name_;
    resbuf value_{};
    bool restore_;
};

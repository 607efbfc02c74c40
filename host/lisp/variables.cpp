// variables.cpp: the host's variables and those of the environment.
#include "host/lisp/variables.h"

#include <cstdlib>
#include <map>

#include "host/core/text.h"
#include "host/lisp/builtins.h"
#include "host/lisp/convert.h"
#include "host/lisp/printer.h"

namespace host::lisp
{

namespace
{

// The variable's value as a node of our own; false for an unknown name.
bool get(const char* name, resbuf* held)
{
    *held = resbuf{};
    return acedGetVar(name, held) == RTNORM;
}

void give_back(resbuf* held)
{
    if (held->restype == RTSTR)
        acad_free(held->resval.rstring);
}

value get_variable(interpreter& l, arguments a)
{
    resbuf held;
    if (!get(a.text(0).c_str(), &held))
        return value::nil();
    value result = value_of_node(l, held);
    give_back(&held);
    return result;
}

value set_variable(interpreter& l, arguments a)
{
    double point[3];
    const int dimensions = point_of(a[1], point);
    const list_ptr node(dimensions ? rb_point(dimensions == 2 ? RTPOINT : RT3DPOINT, point) : plain_of(a[1]));
    const int status = acedSetVar(a.text(0).c_str(), node.get());
    l.throw_kept_stop();
    if (status != RTNORM)
        l.fail("variable setting rejected: " + prin1_text(a[0]) + " " + short_text(a[1], 60));
    return a[1];
}

// What setenv has set in this run goes before the process's own environment.
std::map<std::string, std::string>& environment()
{
    static std::map<std::string, std::string> values;
    return values;
}

value get_environment(interpreter&, arguments a)
{
    const auto found = environment().find(upper(a.text(0)));
    if (found != environment().end())
        return value::text(found->second);
    const char* text = std::getenv(a.text(0).c_str());
    return text ? value::text(cp1252_with_escapes(text)) : value::nil();
}

value set_environment(interpreter&, arguments a)
{
    environment()[upper(a.text(0))] = a.text(1);
    return a[1];
}

constexpr builtin TABLE[] = {
    {"getvar", get_variable, 1, 1, "s"},
    {"setvar", set_variable, 2, 2, "s."},
    {"getenv", get_environment, 1, 1, "s"},
    {"setenv", set_environment, 2, 2, "s"},
};

} // namespace

void point_variable(const char* name, double* point)
{
    resbuf held;
    if (!get(name, &held))
        return;
    if (held.restype == RT3DPOINT || held.restype == RTPOINT)
        for (int i = 0; i < (held.restype == RTPOINT ? 2 : 3); ++i)
            point[i] = held.resval.rpoint[i];
    give_back(&held);
}

double real_variable(const char* name)
{
    resbuf held;
    if (!get(name, &held))
        return 0;
    const double result = held.restype == RTREAL ? held.resval.rreal : 0;
    give_back(&held);
    return result;
}

std::span<const builtin> variable_table()
{
    return TABLE;
}

} // namespace host::lisp

// value.cpp: releasing and comparing values.
#include "host/lisp/value.h"

#include <cmath>
#include <vector>

#include "host/lisp/interpreter.h"
#include "host/lisp/objects.h"

namespace host::lisp
{

namespace
{

void destroy(counted* object)
{
    switch (object->type) {
    case kind::string:
        delete static_cast<string_object*>(object);
        break;
    case kind::cell:
        delete static_cast<cell*>(object);
        break;
    case kind::function:
        delete static_cast<function_object*>(object);
        break;
    case kind::file:
        delete static_cast<file_object*>(object);
        break;
    case kind::pickset:
        delete static_cast<pickset_object*>(object);
        break;
    case kind::caught:
        delete static_cast<caught_object*>(object);
        break;
    default:
        break;
    }
}

} // namespace

// Taking a cell apart releases its two values, which come back here: they wait in a list until the
// object at hand is gone, so a list of any length or depth takes no stack.
void release(counted* object)
{
    static std::vector<counted*> waiting;
    static bool busy = false;
    waiting.push_back(object);
    if (busy)
        return;
    busy = true;
    while (!waiting.empty()) {
        counted* next = waiting.back();
        waiting.pop_back();
        destroy(next);
    }
    busy = false;
}

value value::text(std::string_view bytes)
{
    return of(static_cast<counted*>(new string_object(bytes)));
}

const value& nil_value()
{
    static const value nothing = value::nil();
    return nothing;
}

bool same(const value& a, const value& b)
{
    if (a.is_nil() || b.is_nil())
        return a.is_nil() && b.is_nil();
    if (a.type() != b.type())
        return false;
    switch (a.type()) {
    case kind::integer:
        return a.as_integer() == b.as_integer();
    case kind::real:
        return a.as_real() == b.as_real();
    case kind::entity:
        return a.name()[0] == b.name()[0] && a.name()[1] == b.name()[1];
    case kind::string:
        return a.object() == b.object() || a.as_string() == b.as_string();
    case kind::symbol:
    case kind::external:
        return a.as_symbol() == b.as_symbol();
    case kind::builtin:
        return a.as_builtin() == b.as_builtin();
    case kind::special:
        return a.as_special() == b.as_special();
    default:
        return a.object() == b.object();
    }
}

bool equal(const value& a, const value& b, double fuzz)
{
    if (a.is_number() && b.is_number())
        return a.number() == b.number() || std::fabs(a.number() - b.number()) <= fuzz;
    const value *p = &a, *q = &b;
    if (p->is_cell() && q->is_cell())
        check_stack();
    while (p->is_cell() && q->is_cell()) {
        if (p->object() == q->object())
            return true;
        if (!equal(p->car(), q->car(), fuzz))
            return false;
        p = &p->cdr();
        q = &q->cdr();
    }
    if (p->is_cell() || q->is_cell())
        return false;
    return p == &a ? same(*p, *q) : equal(*p, *q, fuzz);
}

} // namespace host::lisp

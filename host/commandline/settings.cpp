// settings.cpp: SETVAR, and variables typed by name.
#include "host/commandline/settings.h"

#include "host/commandline/new_objects.h"
#include "host/core/document.h"
#include "host/core/text.h"
#include "host/core/trace.h"
#include "host/database/sysvars.h"

namespace host::commandline
{

namespace
{

bool is_angle(std::string_view name)
{
    return name == "ANGBASE" || name == "SNAPANG";
}

std::string shown_value(const resbuf& value)
{
    if (value.restype == RTPOINT)
        return lisp_real(value.resval.rpoint[0]) + "," + lisp_real(value.resval.rpoint[1]);
    if (value.restype == RT3DPOINT)
        return lisp_real(value.resval.rpoint[0]) + "," + lisp_real(value.resval.rpoint[1]) + "," +
               lisp_real(value.resval.rpoint[2]);
    return printed_value(value);
}

want kind_of(std::string_view name, int restype)
{
    switch (restype) {
    case RTSHORT:
    case RTLONG:
        return want::integer;
    case RTREAL:
        return is_angle(name) ? want::angle : want::distance;
    case RTPOINT:
    case RT3DPOINT:
        return want::point;
    default:
        return want::text;
    }
}

list_ptr value_of(const answer& given, int restype)
{
    switch (restype) {
    case RTSHORT:
    case RTLONG:
        return list_ptr(rb_int(restype, given.integer));
    case RTREAL:
        return list_ptr(rb_real(restype, given.real));
    case RTPOINT:
    case RT3DPOINT:
        return list_ptr(rb_point(restype, given.point.data()));
    default:
        return list_ptr(rb_text(RTSTR, given.text == "." ? "" : given.text));
    }
}

std::string_view words_of(db::set_result result)
{
    switch (result) {
    case db::set_result::read_only:
        return " is read only.";
    case db::set_result::out_of_range:
        return ": the value is out of its range.";
    case db::set_result::wrong_type:
        return ": a value of another kind is wanted.";
    default:
        return " is unknown.";
    }
}

task<> ask_value(command_io& io, std::string name)
{
    for (;;) {
        const list_ptr now = db::get_variable(io.doc(), name);
        if (!now)
            co_return;
        const int restype = now->restype;
        question q(kind_of(name, restype), with_default("\nEnter new value for " + name, shown_value(*now)));
        q.with(RSG_NOLIM);
        const answer given = co_await io.ask(std::move(q));
        if (given.none())
            co_return;
        const list_ptr value = value_of(given, restype);
        const db::set_result result = db::set_variable(io.doc(), name, *value);
        if (result == db::set_result::done)
            co_return;
        io.say(name + std::string(words_of(result)));
        if (result == db::set_result::read_only)
            co_return;
    }
}

} // namespace

task<> setvar_command(command_io& io)
{
    for (;;) {
        const answer name = co_await io.ask(ask_word("\nEnter variable name or [?]: "));
        if (name.none())
            co_return;
        if (db::get_variable(io.doc(), name.text)) {
            co_await ask_value(io, upper(name.text));
            co_return;
        }
        io.refuse("Unknown variable name \"" + name.text + "\".");
    }
}

task<> set_variable_command(command_io& io)
{
    co_await ask_value(io, io.name());
}

} // namespace host::commandline

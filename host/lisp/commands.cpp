// commands.cpp: the host's commands.
#include "host/lisp/builtins.h"
#include "host/lisp/convert.h"

namespace host::lisp
{

namespace
{

// The arguments for the command processor. nil among others is passed over; when there is nothing else,
// the list is empty, which cancels the command that waits.
resbuf* command_arguments(arguments a)
{
    list_builder out;
    for (int i = 0; i < a.count; ++i) {
        double point[3];
        if (a[i].is_nil())
            continue;
        const int dimensions = point_of(a[i], point);
        out.add(dimensions ? rb_point(dimensions == 2 ? RTPOINT : RT3DPOINT, point) : plain_of(a[i]));
    }
    return out.take();
}

int run(interpreter& l, arguments a)
{
    const list_ptr list(command_arguments(a));
    const int status = acedCmd(list.get());
    l.throw_kept_stop();
    l.poll();
    if (status == RTCAN && list)
        l.cancel();
    return status;
}

value command(interpreter& l, arguments a)
{
    run(l, a);
    return value::nil();
}

value command_status(interpreter& l, arguments a)
{
    return l.truth(run(l, a) == RTNORM);
}

value menu(interpreter&, arguments a)
{
    acedMenuCmd(a.text(0).c_str());
    return value::nil();
}

value command_version(interpreter&, arguments)
{
    return value::nil();
}

constexpr builtin TABLE[] = {
    {"command", command, 0, -1, "."},
    {"command-s", command, 0, -1, "."},
    {"vl-cmdf", command_status, 0, -1, "."},
    {"menucmd", menu, 1, 1, "s"},
    {"initcommandversion", command_version, 0, 1, "i"},
};

} // namespace

std::span<const builtin> command_table()
{
    return TABLE;
}

} // namespace host::lisp

#include "host/core/plain_host.h"

#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>

#include "host/core/formatted.h"
#include "host/core/resbuf.h"

namespace host
{

namespace
{

volatile std::sig_atomic_t break_wanted = 0;
void (*print_text)(const char*) = nullptr;

std::map<std::string, list_ptr>& variables()
{
    static std::map<std::string, list_ptr> table;
    return table;
}

} // namespace

void plain_print_to(void (*print)(const char* text))
{
    print_text = print;
}

void plain_break(bool wanted)
{
    break_wanted = wanted;
}

} // namespace host

extern "C" {

int acutPrintf(const char* format, ...)
{
    va_list values;
    va_start(values, format);
    const std::string text = host::formatted(format, values);
    va_end(values);
    if (host::print_text)
        host::print_text(text.c_str());
    else
        std::fputs(text.c_str(), stdout);
    return RTNORM;
}

int acedAlert(const char* text)
{
    return acutPrintf("%s\n", text ? text : "");
}

void acrx_abort(const char* format, ...)
{
    va_list values;
    va_start(values, format);
    std::fprintf(stderr, "%s\n", host::formatted(format, values).c_str());
    va_end(values);
    std::abort();
}

int acedUsrBrk()
{
    return host::break_wanted;
}

int acedGetSym(const char* name, resbuf** value)
{
    const auto found = host::variables().find(name);
    *value = found == host::variables().end() ? nullptr : host::rb_copy(found->second.get());
    return RTNORM;
}

int acedPutSym(const char* name, const resbuf* value)
{
    host::variables()[name].reset(value ? host::rb_copy(value) : nullptr);
    return RTNORM;
}
}

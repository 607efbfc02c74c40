// objects.h: the larger values: functions, open files, selection sets, caught errors.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "host/lisp/value.h"
#include "hostapi/files.h"

namespace host::lisp
{

struct function_object : counted {
    symbol* name = nullptr; // null for a lambda
    std::vector<symbol*> parameters, locals;
    value body;                          // list of forms
    const std::string* source = nullptr; // file that it was read from; null: none
    int number = 0;                      // stands for an address where the function is printed
    function_object() : counted(kind::function) {}
};

struct file_object : counted {
    host_file* file = nullptr; // null: closed
    std::string path;
    char mode = 'r';
    std::string pending; // of a line that read-char has begun
    file_object() : counted(kind::file) {}
    ~file_object() { close(); }
    file_object(const file_object&) = delete;
    file_object& operator=(const file_object&) = delete;
    bool close(); // false when what was written may not be on disk
};

// The one owner of a selection set that AutoLISP was given; the set goes with its last reference.
struct pickset_object : counted {
    std::int32_t name[2];
    interpreter* owner; // null when the drawing has been closed
    pickset_object(interpreter& l, const std::int32_t* set);
    ~pickset_object();
    pickset_object(const pickset_object&) = delete;
    pickset_object& operator=(const pickset_object&) = delete;
};

struct caught_object : counted {
    std::string message;
    explicit caught_object(std::string text) : counted(kind::caught), message(std::move(text)) {}
};

inline function_object* value::as_function() const
{
    return static_cast<function_object*>(object_);
}
inline file_object* value::as_file() const
{
    return static_cast<file_object*>(object_);
}
inline pickset_object* value::as_pickset() const
{
    return static_cast<pickset_object*>(object_);
}
inline const caught_object* value::as_caught() const
{
    return static_cast<const caught_object*>(object_);
}

} // namespace host::lisp

// resbuf.h: the host's own handling of result buffer lists.
#pragma once

#include <cstdarg>
#include <memory>
#include <string_view>

#include "hostapi/ads.h"

namespace host
{

struct list_release {
    void operator()(resbuf* list) const { acutRelRb(list); }
};
using list_ptr = std::unique_ptr<resbuf, list_release>;

// What a restype's value is: the codes of values, or the group codes of drawing objects.
enum class value_type { none, real, point, int16, int32, text, name, binary };
value_type type_of_code(int restype);

// Group codes of a kind of object whose points have no z, so that programs see two numbers. By the
// kind in group 0 of a list; none for other kinds.
struct flat_points {
    int first, last;
    bool has(int code) const { return code >= first && code <= last; }
};
flat_points flat_points_of(const resbuf* list);

// Nodes; a text in them is a new string.
resbuf* rb_new(int restype);
resbuf* rb_text(int restype, std::string_view text);
resbuf* rb_real(int restype, double value);
resbuf* rb_int(int restype, int value); // 16 or 32 bits by the code
resbuf* rb_point(int restype, const double* point);
resbuf* rb_name(int restype, const std::int32_t* name);
resbuf* rb_copy(const resbuf* list); // the whole list
resbuf* rb_copy_one(const resbuf* node);
const resbuf* rb_find_code(const resbuf* list, int code);

// The value of one (type, value) pair of a C argument list as a new node; null when the type isn't
// one that has a meaning.
resbuf* rb_from_arguments(int restype, va_list* values);

// Builds a list by appending.
class list_builder
{
public:
    list_builder& add(resbuf* node); // or a whole list
    resbuf* take();
    bool empty() const { return !head_; }

private:
    resbuf* head_ = nullptr;
    resbuf* tail_ = nullptr;

public:
    list_builder() = default;
    list_builder(const list_builder&) = delete;
    list_builder& operator=(const list_builder&) = delete;
    ~list_builder() { acutRelRb(head_); }
};

} // namespace host

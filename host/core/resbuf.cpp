// resbuf.cpp: result buffer lists: types by code, building, copying, releasing.
#include "host/core/resbuf.h"

#include <cstdarg>
#include <cstring>

#include "host/core/heap.h"
#include "host/core/text.h"

namespace host
{

namespace
{

char* new_text(std::string_view text)
{
    auto* copy = static_cast<char*>(heap_take(text.size() + 1));
    if (!copy)
        return nullptr;
    if (!text.empty())
        std::memcpy(copy, text.data(), text.size());
    copy[text.size()] = 0;
    return copy;
}

} // namespace

value_type type_of_code(int code)
{
    switch (code) {
    case RTREAL:
    case RTANG:
    case RTORINT:
        return value_type::real;
    case RTPOINT:
    case RT3DPOINT:
        return value_type::point;
    case RTSHORT:
        return value_type::int16;
    case RTLONG:
        return value_type::int32;
    case RTSTR:
    case RTDXF0:
        return value_type::text;
    case RTENAME:
    case RTPICKS:
        return value_type::name;
    default:
        break;
    }
    if (code >= 5000)
        return value_type::none;
    if (code < 0)
        return code == -1 || code == -2 ? value_type::name : code == -4 ? value_type::text : value_type::none;
    struct range {
        int last;
        value_type type;
    };
    // Up to which code each type holds, as drawing files number their groups.
    static constexpr range ranges[] = {
        {9, value_type::text},     {18, value_type::point},    {37, value_type::real},
        {59, value_type::real},    {79, value_type::int16},    {99, value_type::int32},
        {102, value_type::text},   {105, value_type::text},    {109, value_type::none},
        {112, value_type::point},  {149, value_type::real},    {159, value_type::none},
        {169, value_type::int32},  {179, value_type::int16},   {209, value_type::none},
        {213, value_type::point},  {239, value_type::real},    {269, value_type::none},
        {289, value_type::int16},  {299, value_type::int16},   {309, value_type::text},
        {319, value_type::binary}, {329, value_type::text},    {369, value_type::name},
        {389, value_type::int16},  {399, value_type::name},    {409, value_type::int16},
        {419, value_type::text},   {429, value_type::int32},   {439, value_type::text},
        {449, value_type::int32},  {459, value_type::int32},   {469, value_type::real},
        {479, value_type::text},   {481, value_type::name},    {999, value_type::none},
        {1003, value_type::text},  {1004, value_type::binary}, {1005, value_type::text},
        {1009, value_type::text},  {1013, value_type::point},  {1039, value_type::real},
        {1059, value_type::real},  {1070, value_type::int16},  {1071, value_type::int32},
    };
    for (const range& r : ranges)
        if (code <= r.last)
            return r.type;
    return value_type::none;
}

flat_points flat_points_of(const resbuf* list)
{
    struct kind {
        std::string_view type;
        flat_points codes;
    };
    static constexpr kind kinds[] = {{"LWPOLYLINE", {10, 10}},
                                     {"VPORT", {10, 15}},
                                     {"VIEW", {10, 10}},
                                     {"VIEWPORT", {12, 15}},
                                     {"HATCH", {11, 18}}};
    const resbuf* type = rb_find_code(list, 0);
    if (type && type->resval.rstring)
        for (const kind& k : kinds)
            if (same_text(k.type, type->resval.rstring))
                return k.codes;
    return {0, -1};
}

resbuf* rb_new(int restype)
{
    auto* node = static_cast<resbuf*>(heap_take(sizeof(resbuf)));
    if (node) {
        std::memset(node, 0, sizeof *node);
        node->restype = static_cast<short>(restype);
    }
    return node;
}

resbuf* rb_text(int restype, std::string_view text)
{
    resbuf* node = rb_new(restype);
    if (node)
        node->resval.rstring = new_text(text);
    return node;
}

resbuf* rb_real(int restype, double value)
{
    resbuf* node = rb_new(restype);
    if (node)
        node->resval.rreal = value;
    return node;
}

resbuf* rb_int(int restype, int value)
{
    resbuf* node = rb_new(restype);
    if (node && type_of_code(restype) == value_type::int32)
        node->resval.rlong = value;
    else if (node)
        node->resval.rint = static_cast<short>(value);
    return node;
}

resbuf* rb_point(int restype, const double* point)
{
    resbuf* node = rb_new(restype);
    if (node)
        std::memcpy(node->resval.rpoint, point, (restype == RTPOINT ? 2 : 3) * sizeof(double));
    return node;
}

resbuf* rb_name(int restype, const std::int32_t* name)
{
    resbuf* node = rb_new(restype);
    if (node) {
        node->resval.rlname[0] = name[0];
        node->resval.rlname[1] = name[1];
    }
    return node;
}

resbuf* rb_copy_one(const resbuf* from)
{
    resbuf* node = rb_new(from->restype);
    if (!node)
        return nullptr;
    node->resval = from->resval;
    switch (type_of_code(from->restype)) {
    case value_type::text:
        if (from->resval.rstring)
            node->resval.rstring = new_text(from->resval.rstring);
        break;
    case value_type::binary:
        if (from->resval.rbinary.buf) {
            const auto size = static_cast<std::size_t>(from->resval.rbinary.clen);
            node->resval.rbinary.buf = static_cast<char*>(heap_take(size ? size : 1));
            if (node->resval.rbinary.buf)
                std::memcpy(node->resval.rbinary.buf, from->resval.rbinary.buf, size);
        }
        break;
    default:
        break;
    }
    return node;
}

resbuf* rb_copy(const resbuf* list)
{
    list_builder out;
    for (; list; list = list->rbnext)
        out.add(rb_copy_one(list));
    return out.take();
}

const resbuf* rb_find_code(const resbuf* list, int code)
{
    while (list && list->restype != code)
        list = list->rbnext;
    return list;
}

list_builder& list_builder::add(resbuf* node)
{
    if (!node)
        return *this;
    (tail_ ? tail_->rbnext : head_) = node;
    while (node->rbnext)
        node = node->rbnext;
    tail_ = node;
    return *this;
}

resbuf* list_builder::take()
{
    resbuf* list = head_;
    head_ = tail_ = nullptr;
    return list;
}

resbuf* rb_from_arguments(int restype, va_list* values)
{
    switch (type_of_code(restype)) {
    case value_type::real:
        return rb_real(restype, va_arg(*values, double));
    case value_type::point:
        return rb_point(restype, va_arg(*values, const double*));
    case value_type::int16:
        return rb_int(restype, va_arg(*values, int));
    case value_type::int32:
        return rb_int(restype, static_cast<int>(va_arg(*values, long)));
    case value_type::text: {
        const char* text = va_arg(*values, const char*);
        return rb_text(restype, text ? text : "");
    }
    case value_type::name:
        return rb_name(restype, va_arg(*values, const std::int32_t*));
    case value_type::binary: {
        resbuf source{nullptr, static_cast<short>(restype), {}};
        source.resval.rbinary = *va_arg(*values, const ads_binary*);
        return rb_copy_one(&source);
    }
    case value_type::none:
        break;
    }
    switch (restype) {
    case RTLB:
    case RTLE:
    case RTDOTE:
    case RTNIL:
    case RTT:
    case RTVOID:
    case -3:
        return rb_new(restype);
    default:
        return nullptr;
    }
}

} // namespace host

resbuf* acutNewRb(int restype)
{
    return host::heap_refuses() ? nullptr : host::rb_new(restype);
}

resbuf* acutBuildList(int restype, ...)
{
    if (host::heap_refuses())
        return nullptr;
    host::list_builder out;
    va_list values;
    va_start(values, restype);
    bool good = true;
    for (int code = restype; good && code != 0 && code != RTNONE;) {
        resbuf* node = host::rb_from_arguments(code, &values);
        good = node != nullptr;
        if (good && code == RTDXF0)
            node->restype = 0; // 0 ends an argument list, so group 0 has a code of its own there
        out.add(node);
        if (good)
            code = va_arg(values, int);
    }
    va_end(values);
    return good ? out.take() : nullptr;
}

int acutRelRb(resbuf* list)
{
    while (list) {
        resbuf* next = list->rbnext;
        switch (host::type_of_code(list->restype)) {
        case host::value_type::text:
            acad_free(list->resval.rstring);
            break;
        case host::value_type::binary:
            acad_free(list->resval.rbinary.buf);
            break;
        default:
            break;
        }
        acad_free(list);
        list = next;
    }
    return RTNORM;
}

int acutNewString(const char* text, char** copy)
{
    *copy = host::heap_refuses() ? nullptr : host::new_text(text ? text : "");
    return *copy ? RTNORM : RTERROR;
}

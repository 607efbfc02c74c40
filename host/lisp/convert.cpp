// convert.cpp: values to and from result lists.
#include "host/lisp/convert.h"

#include <cmath>
#include <cstring>

#include "host/core/heap.h"
#include "host/core/text.h"
#include "host/lisp/printer.h"

namespace host::lisp
{

namespace
{

constexpr int XDATA = -3;
constexpr int APPLICATION = 1001;

int number_code(std::int32_t n)
{
    return n >= -32768 && n <= 32767 ? RTSHORT : RTLONG;
}

bool has_real(const value& list)
{
    for (const value* p = &list; p->is_cell(); p = &p->cdr())
        if (p->car().is(kind::real))
            return true;
    return false;
}

void add_plain(host::list_builder& out, const value& v);

void add_list(host::list_builder& out, const value& v)
{
    double point[3];
    const int dimensions = has_real(v) ? point_of(v, point) : 0;
    if (dimensions) {
        out.add(rb_point(dimensions == 2 ? RTPOINT : RT3DPOINT, point));
        return;
    }
    check_stack();
    out.add(rb_new(RTLB));
    const value* p = &v;
    for (; p->is_cell(); p = &p->cdr())
        add_plain(out, p->car());
    if (p->is_true()) {
        out.add(rb_new(RTDOTE));
        add_plain(out, *p);
    }
    out.add(rb_new(RTLE));
}

void add_plain(host::list_builder& out, const value& v)
{
    switch (v.type()) {
    case kind::integer:
        out.add(rb_int(number_code(v.as_integer()), v.as_integer()));
        break;
    case kind::real:
        out.add(rb_real(RTREAL, v.as_real()));
        break;
    case kind::string:
        out.add(rb_text(RTSTR, v.as_string()));
        break;
    case kind::entity:
        out.add(rb_name(RTENAME, v.name()));
        break;
    case kind::pickset:
        out.add(rb_name(RTPICKS, v.as_pickset()->name));
        break;
    case kind::symbol:
        if (v.as_symbol()->name == "T")
            out.add(rb_new(RTT));
        else if (v.as_symbol()->name.empty())
            out.add(rb_new(RTVOID));
        else
            out.add(rb_text(RTSTR, v.as_symbol()->name));
        break;
    case kind::cell:
        add_list(out, v);
        break;
    default:
        out.add(rb_new(RTNIL));
        break;
    }
}

std::string hex_of(const ads_binary& bytes)
{
    static constexpr char digits[] = "0123456789ABCDEF";
    std::string out;
    for (int i = 0; bytes.buf && i < bytes.clen; ++i) {
        const auto byte = static_cast<unsigned char>(bytes.buf[i]);
        out += digits[byte >> 4];
        out += digits[byte & 15];
    }
    return out;
}

int hex_digit(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    c = static_cast<char>(c | 32);
    return c >= 'a' && c <= 'f' ? c - 'a' + 10 : -1;
}

// Values of a plain list from `*at` up to RTLE or the end.
value plain_items(interpreter& l, const resbuf** at)
{
    check_stack();
    list_maker items;
    while (*at) {
        const resbuf* node = *at;
        *at = node->rbnext;
        if (node->restype == RTLE)
            break;
        if (node->restype == RTLB) {
            items.add(plain_items(l, at));
        } else if (node->restype == RTDOTE && *at) {
            const resbuf* last = *at;
            *at = last->rbnext;
            items.end_with(last->restype == RTLB ? plain_items(l, at) : value_of_node(l, *last));
            if (*at && (*at)->restype == RTLE)
                *at = (*at)->rbnext;
            break;
        } else {
            items.add(value_of_node(l, *node));
        }
    }
    return items.take();
}

// ---- group lists

[[noreturn]] void bad_group(interpreter& l, const value& group)
{
    l.fail("bad DXF group: " + short_text(group, 60));
}

resbuf* binary_group(int code, const std::string& hex)
{
    if (hex.size() % 2 || hex.size() / 2 > 32767)
        return nullptr;
    std::string bytes;
    for (std::size_t i = 0; i < hex.size(); i += 2) {
        const int high = hex_digit(hex[i]), low = hex_digit(hex[i + 1]);
        if (high < 0 || low < 0)
            return nullptr;
        bytes += static_cast<char>(high * 16 + low);
    }
    resbuf* node = rb_new(code);
    node->resval.rbinary.clen = static_cast<short>(bytes.size());
    node->resval.rbinary.buf = static_cast<char*>(heap_take(bytes.size() + 1));
    std::memcpy(node->resval.rbinary.buf, bytes.data(), bytes.size());
    return node;
}

// Null when the value isn't of the code's type.
resbuf* group_node(int code, const value& v)
{
    switch (type_of_code(code)) {
    case value_type::real:
        return v.is_number() ? rb_real(code, v.number()) : nullptr;
    case value_type::int16:
    case value_type::int32:
        return v.is(kind::integer) ? rb_int(code, v.as_integer()) : nullptr;
    case value_type::text:
        return v.is_string() ? rb_text(code, v.as_string()) : nullptr;
    case value_type::name:
        return v.is(kind::entity) ? rb_name(code, v.name()) : nullptr;
    case value_type::binary:
        return v.is_string() ? binary_group(code, v.as_string()) : nullptr;
    case value_type::point: {
        double point[3];
        return point_of(v, point) ? rb_point(code, point) : nullptr;
    }
    case value_type::none:
        break;
    }
    return nullptr;
}

void add_groups(interpreter& l, const value& list, host::list_builder& out);

// (-3 ("APP" (1000 . "x") ...) ...)
void add_extended(interpreter& l, const value& group, host::list_builder& out)
{
    out.add(rb_new(XDATA));
    for (const value* p = &group.cdr(); p->is_cell(); p = &p->cdr()) {
        const value& application = p->car();
        if (!application.is_cell() || !application.car().is_string())
            bad_group(l, group);
        out.add(rb_text(APPLICATION, application.car().as_string()));
        add_groups(l, application.cdr(), out);
    }
}

void add_groups(interpreter& l, const value& list, host::list_builder& out)
{
    for (const value* p = &list; p->is_cell(); p = &p->cdr()) {
        const value& group = p->car();
        if (!group.is_cell() || !group.car().is(kind::integer))
            bad_group(l, group);
        const std::int32_t code = group.car().as_integer();
        if (code < -32768 || code > 4999)
            bad_group(l, group);
        if (code == XDATA) {
            add_extended(l, group, out);
            continue;
        }
        const value& rest = group.cdr();
        // (40 5.0) is taken for (40 . 5.0) only where the value can't be a list.
        resbuf* node = group_node(code, rest);
        if (!node)
            bad_group(l, group);
        out.add(node);
    }
}

value group_value(interpreter& l, const resbuf& node, const flat_points& flat)
{
    const value code = value::integer(node.restype);
    if (type_of_code(node.restype) == value_type::point) {
        return cons(code, point_value(node.resval.rpoint, flat.has(node.restype) ? 2 : 3));
    }
    return cons(code, value_of_node(l, node));
}

} // namespace

int point_of(const value& v, double* point)
{
    int count = 0;
    point[0] = point[1] = point[2] = 0;
    const value* p = &v;
    for (; p->is_cell() && count < 3; p = &p->cdr()) {
        if (!p->car().is_number())
            return 0;
        point[count++] = p->car().number();
    }
    return p->is_nil() && count >= 2 ? count : 0;
}

value point_value(const double* point, int dimensions)
{
    list_maker list;
    for (int i = 0; i < dimensions; ++i)
        list.add(value::real(point[i]));
    return list.take();
}

resbuf* plain_of(const value& v)
{
    host::list_builder out;
    add_plain(out, v);
    return out.take();
}

resbuf* plain_arguments(arguments a)
{
    host::list_builder out;
    for (int i = 0; i < a.count; ++i)
        add_plain(out, a[i]);
    return out.take();
}

value value_of_node(interpreter& l, const resbuf& node)
{
    switch (type_of_code(node.restype)) {
    case value_type::real:
        return value::real(node.resval.rreal);
    case value_type::point:
        return point_value(node.resval.rpoint, node.restype == RTPOINT ? 2 : 3);
    case value_type::int16:
        return value::integer(node.resval.rint);
    case value_type::int32:
        return value::integer(node.resval.rlong);
    case value_type::text:
        return node.resval.rstring ? value::text(node.resval.rstring) : value::nil();
    case value_type::name:
        return node.restype == RTPICKS ? l.pickset(node.resval.rlname) : value::entity(node.resval.rlname);
    case value_type::binary:
        return value::text(hex_of(node.resval.rbinary));
    case value_type::none:
        break;
    }
    if (node.restype == RTT)
        return l.t();
    return node.restype == RTVOID ? l.silence() : value::nil();
}

value value_of_plain(interpreter& l, const resbuf* list)
{
    if (!list)
        return value::nil();
    const resbuf* at = list;
    if (list->restype == RTLB) {
        at = list->rbnext;
        value first = plain_items(l, &at);
        if (!at)
            return first;
        at = list;
    } else if (!list->rbnext) {
        return value_of_node(l, *list);
    }
    return plain_items(l, &at);
}

value list_of_plain(interpreter& l, const resbuf* list)
{
    return plain_items(l, &list);
}

resbuf* groups_of(interpreter& l, const value& list)
{
    host::list_builder out;
    add_groups(l, list, out);
    return out.take();
}

value value_of_groups(interpreter& l, const resbuf* list)
{
    const flat_points flat = flat_points_of(list);
    list_maker out;
    const resbuf* node = list;
    for (; node && node->restype != XDATA; node = node->rbnext)
        out.add(group_value(l, *node, flat));
    if (!node)
        return out.take();
    list_maker extended;
    extended.add(value::integer(XDATA));
    node = node->rbnext;
    while (node) {
        list_maker application;
        application.add(value::text(node->resval.rstring ? node->resval.rstring : ""));
        for (node = node->rbnext; node && node->restype != APPLICATION; node = node->rbnext)
            application.add(group_value(l, *node, {0, -1}));
        extended.add(application.take());
    }
    out.add(extended.take());
    return out.take();
}

} // namespace host::lisp

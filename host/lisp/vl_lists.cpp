// vl_lists.cpp: lists by predicates: searching, removing, sorting.
#include <algorithm>
#include <vector>

#include "host/lisp/builtins.h"
#include "host/lisp/printer.h"

namespace host::lisp
{

namespace
{

bool holds(interpreter& l, const value& predicate, const value& item)
{
    l.poll();
    return l.call(predicate, {item}).is_true();
}

value filtered(interpreter& l, arguments a, bool keep)
{
    const value predicate = l.callable(a[0]);
    list_maker out;
    for (const value* p = &a[1]; p->is_cell(); p = &p->cdr())
        if (holds(l, predicate, p->car()) == keep)
            out.add(p->car());
    return out.take();
}
value remove_if(interpreter& l, arguments a)
{
    return filtered(l, a, false);
}
value remove_if_not(interpreter& l, arguments a)
{
    return filtered(l, a, true);
}

value remove(interpreter&, arguments a)
{
    list_maker out;
    for (const value* p = &a[1]; p->is_cell(); p = &p->cdr())
        if (!equal(a[0], p->car()))
            out.add(p->car());
    return out.take();
}

value rest_where(interpreter& l, arguments a, bool wanted)
{
    const value predicate = l.callable(a[0]);
    for (const value* p = &a[1]; p->is_cell(); p = &p->cdr())
        if (holds(l, predicate, p->car()) == wanted)
            return *p;
    return value::nil();
}
value member_if(interpreter& l, arguments a)
{
    return rest_where(l, a, true);
}
value member_if_not(interpreter& l, arguments a)
{
    return rest_where(l, a, false);
}

value position(interpreter&, arguments a)
{
    std::int32_t at = 0;
    for (const value* p = &a[1]; p->is_cell(); p = &p->cdr(), ++at)
        if (equal(a[0], p->car()))
            return value::integer(at);
    return value::nil();
}

// Calls a predicate with the first elements of all lists, the second ones ... until `stop` says so
// of a result or the shortest list ends.
template <class Stop>
bool walk_lists(interpreter& l, arguments a, value* result, Stop stop)
{
    const value predicate = l.callable(a[0]);
    std::vector<const value*> at;
    for (int i = 1; i < a.count; ++i)
        at.push_back(&a[i]);
    for (;;) {
        argument_list row;
        for (const value*& p : at) {
            if (!p->is_cell())
                return false;
            row.add(p->car());
            p = &p->cdr();
        }
        l.poll();
        *result = l.apply(predicate, row.all());
        if (stop(*result))
            return true;
    }
}

value some(interpreter& l, arguments a)
{
    value result;
    const bool found = walk_lists(l, a, &result, [](const value& v) { return v.is_true(); });
    return found ? result : value::nil();
}

value every(interpreter& l, arguments a)
{
    value result;
    return l.truth(!walk_lists(l, a, &result, [](const value& v) { return v.is_nil(); }));
}

value list_star(interpreter&, arguments a)
{
    value list = a[a.count - 1];
    for (int i = a.count - 1; i-- > 0;)
        list = cons(a[i], std::move(list));
    return list;
}

// nil for what isn't a list closed by nil.
value list_length(interpreter&, arguments a)
{
    std::int32_t count = 0;
    const value* p = &a[0];
    for (; p->is_cell(); p = &p->cdr())
        ++count;
    return p->is_true() ? value::nil() : value::integer(count);
}

// ---- sorting

struct entry {
    value item;
    std::int32_t index;
};

// A merge sort: it keeps the order of equal elements and comes to an end whatever the program's
// comparison answers.
void sort_entries(interpreter& l, const value& before, std::vector<entry>& all)
{
    std::vector<entry> merged(all.size());
    for (std::size_t run = 1; run < all.size(); run *= 2) {
        for (std::size_t begin = 0; begin < all.size(); begin += 2 * run) {
            const std::size_t middle = std::min(begin + run, all.size());
            const std::size_t end = std::min(begin + 2 * run, all.size());
            std::size_t left = begin, right = middle;
            for (std::size_t out = begin; out < end; ++out) {
                bool take_right = left == middle;
                if (left < middle && right < end) {
                    l.poll();
                    take_right = l.call(before, {all[right].item, all[left].item}).is_true();
                }
                merged[out] = take_right ? std::move(all[right++]) : std::move(all[left++]);
            }
        }
        all.swap(merged);
    }
}

std::vector<entry> sorted(interpreter& l, arguments a)
{
    std::vector<entry> all;
    for (const value* p = &a[0]; p->is_cell(); p = &p->cdr())
        all.push_back({p->car(), static_cast<std::int32_t>(all.size())});
    sort_entries(l, l.callable(a[1]), all);
    return all;
}

// An integer or symbol that comes twice stands once in the result: programs use this to drop doubles.
value sort(interpreter& l, arguments a)
{
    list_maker out;
    const value* before = nullptr;
    const std::vector<entry> all = sorted(l, a);
    for (const entry& e : all) {
        const bool single = e.item.is(kind::integer) || e.item.is(kind::symbol);
        if (!before || !single || !same(*before, e.item))
            out.add(e.item);
        before = &e.item;
    }
    return out.take();
}

value sort_indices(interpreter& l, arguments a)
{
    list_maker out;
    for (const entry& e : sorted(l, a))
        out.add(value::integer(e.index));
    return out.take();
}

value sort_texts(interpreter& l, arguments a)
{
    std::vector<std::string> texts;
    for (const value* p = &a[0]; p->is_cell(); p = &p->cdr()) {
        if (!p->car().is_string())
            l.wrong_type("stringp", p->car());
        texts.push_back(p->car().as_string());
    }
    std::stable_sort(texts.begin(), texts.end());
    list_maker out;
    for (const std::string& t : texts)
        out.add(value::text(t));
    return out.take();
}

constexpr builtin TABLE[] = {
    {"vl-remove", remove, 2, 2, ".l"},
    {"vl-remove-if", remove_if, 2, 2, ".l"},
    {"vl-remove-if-not", remove_if_not, 2, 2, ".l"},
    {"vl-member-if", member_if, 2, 2, ".l"},
    {"vl-member-if-not", member_if_not, 2, 2, ".l"},
    {"vl-position", position, 2, 2, ".l"},
    {"vl-some", some, 2, -1, ".l"},
    {"vl-every", every, 2, -1, ".l"},
    {"vl-list*", list_star, 1, -1, "."},
    {"vl-list-length", list_length, 1, 1, "l"},
    {"vl-sort", sort, 2, 2, "l."},
    {"vl-sort-i", sort_indices, 2, 2, "l."},
    {"acad_strlsort", sort_texts, 1, 1, "l"},
};

} // namespace

std::span<const builtin> vl_list_table()
{
    return TABLE;
}

} // namespace host::lisp

// prompts.cpp: questions to the user. ^C at one of them cancels the program.
#include "host/lisp/answers.h"
#include "host/lisp/builtins.h"
#include "host/lisp/convert.h"
#include "hostapi/ads.h"

namespace host::lisp
{

namespace
{

// Arguments of a question: a base point and a text, either of which may be missing or nil.
struct question {
    double point[3] = {0, 0, 0};
    bool based = false;
    std::string text;
    const double* base() const { return based ? point : nullptr; }
};

question question_of(interpreter& l, arguments a)
{
    question q;
    for (int i = 0; i < a.count; ++i) {
        if (a[i].is_string())
            q.text = a[i].as_string();
        else if (point_of(a[i], q.point))
            q.based = true;
        else if (a[i].is_true())
            l.wrong_type(i ? "stringp" : "2D/3D point:", a[i]);
    }
    return q;
}

value init_get(interpreter&, arguments a)
{
    int rules = 0;
    const char* words = nullptr;
    for (int i = 0; i < a.count; ++i) {
        if (a[i].is(kind::integer))
            rules = a.integer(i);
        else if (a[i].is_string())
            words = a.text(i).c_str();
    }
    acedInitGet(rules, words);
    return value::nil();
}

value get_integer(interpreter& l, arguments a)
{
    int out = 0;
    const question q = question_of(l, a);
    return answer(l, acedGetInt(q.text.c_str(), &out), [&] { return value::integer(out); });
}

value get_real(interpreter& l, arguments a)
{
    double out = 0;
    const question q = question_of(l, a);
    return answer(l, acedGetReal(q.text.c_str(), &out), [&] { return value::real(out); });
}

using ask_number = int (*)(const ads_point base, const char* prompt, ads_real* out);

template <ask_number Ask>
value get_number(interpreter& l, arguments a)
{
    double out = 0;
    const question q = question_of(l, a);
    return answer(l, Ask(q.base(), q.text.c_str(), &out), [&] { return value::real(out); });
}

value get_point(interpreter& l, arguments a)
{
    double out[3] = {0, 0, 0};
    const question q = question_of(l, a);
    return answer(l, acedGetPoint(q.base(), q.text.c_str(), out), [&] { return point_value(out); });
}

value get_corner(interpreter& l, arguments a)
{
    double out[3] = {0, 0, 0};
    const question q = question_of(l, a);
    if (!q.based)
        l.wrong_type("2D/3D point:", a[0]);
    return answer(l, acedGetCorner(q.base(), q.text.c_str(), out), [&] { return point_value(out); });
}

value get_keyword(interpreter& l, arguments a)
{
    char word[ADS_TEXT_SIZE] = "";
    const question q = question_of(l, a);
    return answer(l, acedGetKword(q.text.c_str(), word), [&] { return value::text(word); });
}

// The first of two arguments says whether blanks belong to the text.
value get_string(interpreter& l, arguments a)
{
    const value* text = a.count == 2 ? &a[1] : a.count == 1 && a[0].is_string() ? &a[0] : nullptr;
    const bool blanks = a.count > 0 && text != &a[0] && a[0].is_true();
    if (text && !text->is_string())
        l.wrong_type("stringp", *text);
    char out[ADS_TEXT_SIZE] = "";
    const int status = acedGetString(blanks, text ? text->as_string().c_str() : "", out);
    if (status == RTNONE)
        return value::text("");
    return answer(l, status, [&] { return value::text(out); });
}

value picked(const ads_name name, const double* point)
{
    return cons(value::entity(name), cons(point_value(point), value::nil()));
}

value entity_pick(interpreter& l, arguments a)
{
    ads_name name = {0, 0};
    double point[3] = {0, 0, 0};
    const question q = question_of(l, a);
    return answer(l, acedEntSel(q.text.c_str(), name, point), [&] { return picked(name, point); });
}

// (name point), and for a part of a block the matrix and the entities that hold it, innermost first.
// nentsel gives the matrix as three axes and an origin, nentselp as four rows of four.
value nested_pick(interpreter& l, arguments a, bool rows)
{
    ads_name name = {0, 0};
    ads_matrix m = {};
    resbuf* containers = nullptr;
    question q = question_of(l, a);
    const int status = acedNEntSelP(q.text.c_str(), name, q.point, rows && q.based, m, &containers);
    const list_ptr held(containers);
    return answer(l, status, [&] {
        list_maker out;
        out.add(value::entity(name));
        out.add(point_value(q.point));
        if (!containers)
            return out.take();
        list_maker matrix;
        for (int i = 0; i < 4; ++i) {
            const double column[3] = {m[0][i], m[1][i], m[2][i]};
            list_maker row;
            for (int j = 0; j < 4; ++j)
                row.add(value::real(m[i][j]));
            matrix.add(rows ? row.take() : point_value(column));
        }
        out.add(matrix.take());
        const value list = value_of_plain(l, containers);
        out.add(list.is_cell() ? list : cons(list, value::nil()));
        return out.take();
    });
}
value nested_entity_pick(interpreter& l, arguments a)
{
    return nested_pick(l, a, false);
}
value nested_entity_pick_at(interpreter& l, arguments a)
{
    return nested_pick(l, a, true);
}

value snapped(interpreter&, arguments a)
{
    double p[3], out[3];
    point_of(a[0], p);
    return acedOsnap(p, a.text(1).c_str(), out) == RTNORM ? point_value(out) : value::nil();
}

// One input from the pointer or the keyboard: (3 point) or (2 code); without a pointer that moves, an
// answer that is a point is a click, and of another text the first character is a key.
value read_input(interpreter& l, arguments)
{
    double p[3] = {0, 0, 0};
    const auto pair = [](int code, value v) {
        return cons(value::integer(code), cons(std::move(v), value::nil()));
    };
    acedInitGet(RSG_OTHER | RSG_NOLIM, nullptr);
    const int status = acedGetPoint(nullptr, "", p);
    if (status == RTNONE)
        return pair(2, value::integer('\r'));
    value got = answer(l, status, [&] { return pair(3, point_value(p)); });
    if (!got.is_string())
        return got;
    const std::string& text = got.as_string();
    return pair(2, value::integer(text.empty() ? '\r' : static_cast<unsigned char>(text[0])));
}

constexpr builtin TABLE[] = {
    {"initget", init_get, 0, 2, "."},
    {"getint", get_integer, 0, 1, "S"},
    {"getreal", get_real, 0, 1, "S"},
    {"getdist", get_number<acedGetDist>, 0, 2, "."},
    {"getangle", get_number<acedGetAngle>, 0, 2, "."},
    {"getorient", get_number<acedGetOrient>, 0, 2, "."},
    {"getpoint", get_point, 0, 2, "."},
    {"getcorner", get_corner, 1, 2, "."},
    {"getkword", get_keyword, 0, 1, "S"},
    {"getstring", get_string, 0, 2, "."},
    {"entsel", entity_pick, 0, 1, "S"},
    {"nentsel", nested_entity_pick, 0, 1, "S"},
    {"nentselp", nested_entity_pick_at, 0, 2, "."},
    {"osnap", snapped, 2, 2, "ds"},
    {"grread", read_input, 0, 3, "."},
};

} // namespace

std::span<const builtin> prompt_table()
{
    return TABLE;
}

} // namespace host::lisp

// screen.cpp: text and graphics screens, temporary vectors.
#include "host/lisp/builtins.h"
#include "host/lisp/convert.h"
#include "host/lisp/printer.h"

namespace host::lisp
{

namespace
{

value graphics(interpreter&, arguments)
{
    acedGraphScr();
    return value::nil();
}
value text(interpreter&, arguments)
{
    acedTextScr();
    return value::nil();
}
value text_page(interpreter&, arguments)
{
    acedTextPage();
    return value::nil();
}

value redraw(interpreter&, arguments a)
{
    acedRedraw(a.given(0) ? a[0].name() : nullptr, a.count > 1 ? a.integer(1) : 1);
    return value::nil();
}

value draw(interpreter&, arguments a)
{
    double from[3], to[3];
    point_of(a[0], from);
    point_of(a[1], to);
    acedGrDraw(from, to, a.integer(2), a.count > 3 ? a.integer(3) : 0);
    return a[0];
}

// Four rows of four numbers; the identity when there is no list.
void matrix_of(interpreter& l, const value& v, double (&m)[4][4])
{
    const value* row = &v;
    for (int i = 0; i < 4; ++i) {
        const value* item = &row->car();
        for (int j = 0; j < 4; ++j) {
            m[i][j] = i == j;
            if (v.is_nil())
                continue;
            if (!item->is_cell() || !item->car().is_number())
                l.fail("bad argument value: matrix " + short_text(v, 60));
            m[i][j] = item->car().number();
            item = &item->cdr();
        }
        row = &row->cdr();
    }
}

// ([colour] from to [colour] from to ...): a colour holds until the next; negative: highlighted.
value draw_many(interpreter& l, arguments a)
{
    double m[4][4];
    matrix_of(l, a.count > 1 ? a[1] : value::nil(), m);
    int color = 7;
    double ends[2][3];
    int have = 0;
    for (const value* p = &a[0]; p->is_cell(); p = &p->cdr()) {
        if (p->car().is(kind::integer) && have == 0) {
            color = p->car().as_integer();
            continue;
        }
        double local[3];
        if (!point_of(p->car(), local))
            l.fail("bad argument value: vector list " + short_text(p->car(), 60));
        for (int i = 0; i < 3; ++i)
            ends[have][i] = m[i][0] * local[0] + m[i][1] * local[1] + m[i][2] * local[2] + m[i][3];
        if (++have == 2) {
            acedGrDraw(ends[0], ends[1], color < 0 ? -color : color, color < 0);
            have = 0;
        }
    }
    return value::nil();
}

// There are no text areas on this host's screen.
value screen_text(interpreter&, arguments)
{
    return value::nil();
}

value help(interpreter&, arguments a)
{
    acedHelp(a.given(0) ? a.text(0).c_str() : nullptr, a.given(1) ? a.text(1).c_str() : nullptr, 0);
    return a.given(0) ? a[0] : value::nil();
}

constexpr builtin TABLE[] = {
    {"graphscr", graphics, 0, 0, ""},   {"textscr", text, 0, 0, ""},    {"textpage", text_page, 0, 0, ""},
    {"redraw", redraw, 0, 2, "Ei"},     {"grdraw", draw, 3, 4, "ddii"}, {"grvecs", draw_many, 1, 2, "lL"},
    {"grtext", screen_text, 0, 3, "."}, {"help", help, 0, 3, "SS."},
};

} // namespace

std::span<const builtin> screen_table()
{
    return TABLE;
}

} // namespace host::lisp

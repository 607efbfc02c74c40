// convert.h: values to and from result lists.
#pragma once

#include "host/core/resbuf.h"
#include "host/lisp/interpreter.h"

namespace host::lisp
{

// Coordinates of a list of two or three numbers: how many (z is 0 where there are two); 0: not a point.
int point_of(const value& v, double* point);
value point_value(const double* point, int dimensions = 3);

// Plain lists, as arguments and results of external functions and values of variables: a list is
// RTLB ... RTLE with RTDOTE before a last element behind a dot. A list of two or three reals is a
// point; an integer of 16 bits is RTSHORT, another RTLONG. Functions and files are nil there.
resbuf* plain_of(const value& v);
resbuf* plain_arguments(arguments a);
// One value, or a list when there are several; nil for none.
value value_of_plain(interpreter& l, const resbuf* list);
// Always a list, of all values.
value list_of_plain(interpreter& l, const resbuf* list);
value value_of_node(interpreter& l, const resbuf& node);

// Group lists of drawing objects: ((0 . "LINE") (10 1.0 2.0 3.0) (-3 ("APP" (1070 . 1)))).
// A group that can't be one is the error "bad DXF group".
resbuf* groups_of(interpreter& l, const value& list);
value value_of_groups(interpreter& l, const resbuf* list);

} // namespace host::lisp

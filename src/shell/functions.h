// functions.h: the functions that the module gives to AutoLISP. A function's place in the table is the
// code by which the host calls it.
#pragma once

// What becomes of the value: a function that leaves none is seen as nil by AutoLISP.
enum class nil_answer {
    none,   // the handler answers by itself
    before, // nil first, which the handler may replace
    after   // nil whatever the handler did
};

struct lisp_function {
    const char* name;
    void (*run)(); // null: nothing to run yet, the value is nil
    nil_answer nil;
};

constexpr int LISP_FUNCTION_COUNT = 7;
extern const lisp_function LISP_FUNCTIONS[LISP_FUNCTION_COUNT];

// 1 while cf:map_zentutil runs.
extern int in_map_call;

// Defines all functions in the current drawing: RTNORM, or RTERROR at the first that the host refuses.
int lisp_defun_all();
// Takes them back. RTNORM.
int lisp_undef_all();
// Runs the function that the host is calling. 1, or 0 when there is none of its code.
int lisp_dispatch();

#include "shell/functions.h"

#include "common/user_break.h"
#include "hostapi/ads.h"
#include "shell/operations.h"
#include "tools/elevation_change.h"
#include "tools/text_scaling.h"

int in_map_call = 0;

namespace
{

void run_operation()
{
    op_dispatch();
}

void run_map_operation()
{
    in_map_call = 1;
    op_dispatch();
    in_map_call = 0;
}

void run_text_scaling()
{
    resbuf* args = acedGetArgs();
    text_scaling(args);
    if (args)
        acutRelRb(args);
}

} // namespace

// LISP programs tell success by cf:chgpnts' value, so its nil comes first and may be replaced; the four
// behind it are called for what they do, and their value is nil in all cases.
const lisp_function LISP_FUNCTIONS[LISP_FUNCTION_COUNT] = {
    {"cf:zentutil", run_operation, nil_answer::none},
    {"cf:chgpnts", elevation_change, nil_answer::before},
    {"cf:ztedit", nullptr, nil_answer::after},
    {"cf:txtenl", run_text_scaling, nil_answer::after},
    {"cf:print_line", nullptr, nil_answer::after},
    {"cf:report_up", nullptr, nil_answer::after},
    {"cf:map_zentutil", run_map_operation, nil_answer::none},
};

int lisp_defun_all()
{
    for (int code = 0; code < LISP_FUNCTION_COUNT; ++code)
        if (acedDefun(LISP_FUNCTIONS[code].name, code) == 0)
            return RTERROR;
    return RTNORM;
}

int lisp_undef_all()
{
    for (int code = 0; code < LISP_FUNCTION_COUNT; ++code)
        acedUndef(LISP_FUNCTIONS[code].name, code);
    return RTNORM;
}

int lisp_dispatch()
{
    const int code = acedGetFunCode();
    if (code < 0)
        return 0;
    // A break that ended an earlier function must not end this one.
    user_break_clear();
    if (code >= LISP_FUNCTION_COUNT) {
        acdbFail("Received nonexistent function code.");
        return 0;
    }
    const lisp_function& function = LISP_FUNCTIONS[code];
    if (function.nil == nil_answer::before)
        acedRetNil();
    if (function.run)
        function.run();
    if (function.nil == nil_answer::after)
        acedRetNil();
    return 1;
}

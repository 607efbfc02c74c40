// answers.h: what a question's answer is to a program, by the status of the host's call.
#pragma once

#include "host/lisp/builtins.h"
#include "hostapi/ads.h"

namespace host::lisp
{

// The word of a call that answered RTKWORD.
inline value word_given()
{
    char word[ADS_TEXT_SIZE] = "";
    acedGetInput(word);
    return value::text(word);
}

// `normal` makes the value from what was asked for. ^C cancels the program; an empty answer is nil.
template <class Normal>
value answer(interpreter& l, int status, Normal normal)
{
    l.throw_kept_stop();
    if (status == RTNORM)
        return normal();
    if (status == RTCAN)
        l.cancel();
    l.poll();
    return status == RTKWORD ? word_given() : value::nil();
}

} // namespace host::lisp

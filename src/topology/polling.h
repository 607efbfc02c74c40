// polling.h: the break key in long loops.
#pragma once

#include "common/user_break.h"
#include "hostapi/ads.h"

constexpr int STEPS_A_POLL = 100;

class BreakPoll
{
public:
    // Asked at each step. True, with a message, once the user has pressed the break key.
    bool is_cancelled()
    {
        if (++steps_ % STEPS_A_POLL != 0 || user_break() <= 0)
            return false;
        acutPrintf("\nFunction cancelled at user request.");
        return true;
    }

private:
    int steps_ = 0;
};

#include "common/user_break.h"

#include "hostapi/ads.h"

namespace
{

int latch = 0;

} // namespace

int user_break()
{
    if (!latch)
        latch = acedUsrBrk();
    return latch;
}

void user_break_set()
{
    latch = 1;
}

void user_break_clear()
{
    latch = 0;
}

// arrow_heads.h: the block that DIMLDRBLK and DIMBLK name for the heads of leaders.
#pragma once

#include <string>

#include "host/commandline/command_io.h"

namespace host::commandline
{

struct arrow_head {
    enum class form { filled, block, none };
    form how = form::filled;
    std::string block;        // its name in the drawing
    bool line_to_tip = false; // the line isn't cut back behind it
};

// What the variables ask for: DIMLDRBLK, where that is empty or "." DIMBLK, where both are the filled head.
// Makes the block of a standard head ("_DOT") that the drawing lacks. A name that means neither is told,
// and the filled head stands in.
arrow_head leader_head(command_io& io);

} // namespace host::commandline

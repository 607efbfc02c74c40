// both_texts.h: an input played in the plain network and in that of src/tin, each written down.
#pragma once

#include <string>
#include <vector>

#include "tests/tin/library_side.h"
#include "tests/tin/play.h"

inline std::string plain_text(const tin_inputs::input& in, bool backwards)
{
    plain_side side;
    side.net.backwards = backwards;
    std::vector<plain::point*> taken;
    return play(in, side, taken);
}

inline std::string library_text(const tin_inputs::input& in)
{
    library_network n;
    library_side side(*n.net);
    std::vector<tin_point*> taken;
    return play(in, side, taken);
}

// text_styles.h: what a text style says of the texts that have it.
#pragma once

#include <string_view>

#include "host/database/database.h"

namespace host::commandline
{

struct text_style {
    double height = 0.0; // 0: each text has its own
    double width = 1.0, oblique = 0.0;
    int generation = 0; // group 71
};

// The standard values for a name that the drawing lacks.
text_style text_style_of(const db::database& db, std::string_view name);

} // namespace host::commandline

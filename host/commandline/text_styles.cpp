// text_styles.cpp: see the header.
#include "host/commandline/text_styles.h"

namespace host::commandline
{

text_style text_style_of(const db::database& db, std::string_view name)
{
    text_style out;
    if (const db::object_id id = db.record("STYLE", name)) {
        const db::group_list& groups = db.at(id).groups;
        out.height = db::real_of(groups, 40, 0.0);
        out.width = db::real_of(groups, 41, 1.0);
        out.oblique = db::real_of(groups, 50, 0.0);
        out.generation = static_cast<int>(db::int_of(groups, 71, 0));
    }
    return out;
}

} // namespace host::commandline

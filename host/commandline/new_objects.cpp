// new_objects.cpp: the parts that drawing commands share.
#include "host/commandline/new_objects.h"

#include "host/core/document.h"
#include "host/core/text.h"
#include "host/database/entities.h"
#include "host/database/sysvars.h"

namespace host::commandline
{

namespace
{

constexpr std::string_view COLOR_WORDS[] = {"BYBLOCK", "red",  "yellow",  "green",
                                            "cyan",    "blue", "magenta", "white"};
constexpr int BY_LAYER = 256;

} // namespace

db::group_list begin_object(document& doc, std::string_view type, bool thick)
{
    db::database& db = db::database_of(doc);
    db::group_list groups;
    add_text(db, groups, 0, type);
    add_text(db, groups, 8, db::text_variable(doc, "CLAYER"));
    const std::string linetype = db::text_variable(doc, "CELTYPE");
    if (!linetype.empty() && !same_text(linetype, "BYLAYER"))
        add_text(db, groups, 6, linetype);
    const int color = color_of_text(db::text_variable(doc, "CECOLOR"));
    if (color >= 0 && color != BY_LAYER)
        add_int(groups, 62, color);
    const double scale = db::real_variable(doc, "CELTSCALE");
    if (scale > 0.0 && scale != 1.0)
        add_real(groups, 48, scale);
    const double thickness = thick ? db::real_variable(doc, "THICKNESS") : 0.0;
    if (thickness != 0.0)
        add_real(groups, 39, thickness);
    return groups;
}

void add_point(db::group_list& groups, int code, const point3& p)
{
    groups.push_back(db::point_group(code, p.x, p.y, p.z));
}

void add_point_2d(db::group_list& groups, int code, const point3& p)
{
    groups.push_back(db::point_group(code, p.x, p.y));
}

void add_real(db::group_list& groups, int code, double value)
{
    groups.push_back(db::real_group(code, value));
}

void add_int(db::group_list& groups, int code, int value)
{
    groups.push_back(db::int_group(code, value));
}

void add_text(db::database& db, db::group_list& groups, int code, std::string_view text)
{
    groups.push_back(db.text_group(code, text));
}

db::object_id make_object(command_io& io, db::group_list groups)
{
    std::string error;
    const db::object_id made = db::make_entity(io.data(), std::move(groups), &error);
    if (!made)
        throw command_failed{io.name() + ": " + error};
    return made;
}

db::object_id make_object(command_io& io, db::group_list groups, std::vector<db::group_list> children)
{
    std::string error;
    const db::object_id made = db::make_sequence(io.data(), std::move(groups), std::move(children), &error);
    if (!made)
        throw command_failed{io.name() + ": " + error};
    return made;
}

int color_of_text(std::string_view text)
{
    text = trimmed(text);
    if (same_text(text, "BYLAYER"))
        return BY_LAYER;
    for (int i = 0; i < 8; ++i)
        if (same_text(text, COLOR_WORDS[i]))
            return i;
    // R, Y, G, C, B, M, W, as key words are shortened.
    if (text.size() == 1)
        for (int i = 1; i < 8; ++i)
            if (lower(text)[0] == COLOR_WORDS[i][0])
                return i;
    const std::optional<int> number = parse_int(text);
    return number && *number >= 0 && *number <= BY_LAYER ? *number : -1;
}

std::string color_text(int color)
{
    if (color == BY_LAYER)
        return "BYLAYER";
    if (color == 0)
        return "BYBLOCK";
    const std::string number = std::to_string(color);
    return color < 8 ? number + " (" + std::string(COLOR_WORDS[color]) + ")" : number;
}

std::string length_text(document&, double value)
{
    char out[ADS_TEXT_SIZE];
    return acdbRToS(value, -1, -1, out) == RTNORM ? out : lisp_real(value);
}

std::string angle_text(document&, double radians)
{
    char out[ADS_TEXT_SIZE];
    return acdbAngToS(radians, -1, -1, out) == RTNORM ? out : lisp_real(radians);
}

} // namespace host::commandline

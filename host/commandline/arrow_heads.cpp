// arrow_heads.cpp: heads of leaders. Heads made of blocks have the tip at the block's origin and lie along
// its x axis from -1 to 0, so that a reference at the tip, scaled by the size and turned along the leader,
// is the head. A part takes the colour of the reference.
#include "host/commandline/arrow_heads.h"

#include <span>

#include "host/commandline/new_objects.h"
#include "host/core/document.h"
#include "host/core/text.h"
#include "host/database/entities.h"
#include "host/database/sysvars.h"

namespace host::commandline
{

namespace
{

struct head_part {
    enum class kind { line, circle, disc, band } what;
    // line, band: both ends; circle, disc: centre and radius. A band has a width.
    double a[2], b[2];
    double width = 0.0;
};
using enum head_part::kind;

constexpr double TAN_15 = 0.2679491924311227, SIXTH = 1.0 / 6.0;

constexpr head_part CLOSED[] = {{line, {0, 0}, {-1, SIXTH}},
                                {line, {-1, SIXTH}, {-1, -SIXTH}},
                                {line, {-1, -SIXTH}, {0, 0}},
                                {line, {-1, 0}, {0, 0}}};
constexpr head_part OPEN[] = {
    {line, {-1, SIXTH}, {0, 0}}, {line, {0, 0}, {-1, -SIXTH}}, {line, {0, 0}, {-1, 0}}};
constexpr head_part OPEN30[] = {
    {line, {-1, TAN_15}, {0, 0}}, {line, {0, 0}, {-1, -TAN_15}}, {line, {0, 0}, {-1, 0}}};
constexpr head_part OPEN90[] = {
    {line, {-0.5, 0.5}, {0, 0}}, {line, {0, 0}, {-0.5, -0.5}}, {line, {0, 0}, {-1, 0}}};
constexpr head_part DOT[] = {{disc, {0, 0}, {0.5, 0}}, {line, {-0.5, 0}, {-1, 0}}};
constexpr head_part DOT_BLANK[] = {{circle, {0, 0}, {0.5, 0}}, {line, {-0.5, 0}, {-1, 0}}};
constexpr head_part OBLIQUE[] = {{line, {-0.5, -0.5}, {0.5, 0.5}}};
constexpr head_part TICK[] = {{band, {-0.5, -0.5}, {0.5, 0.5}, 0.15}};

struct standard_head {
    std::string_view name; // as the block is called
    std::span<const head_part> parts;
    bool line_to_tip = false;
};

constexpr standard_head STANDARD[] = {
    {"_Closed", CLOSED}, {"_Dot", DOT},       {"_DotBlank", DOT_BLANK},    {"_Open", OPEN},
    {"_Open30", OPEN30}, {"_Open90", OPEN90}, {"_Oblique", OBLIQUE, true}, {"_ArchTick", TICK, true},
};

void add_part(db::database& db, db::object_id owner, const head_part& part)
{
    db::group_list groups;
    const auto begin = [&](std::string_view type) {
        add_text(db, groups, 0, type);
        add_text(db, groups, 8, "0");
        add_int(groups, 62, 0);
    };
    const auto band_from_to = [&](point3 from, point3 to, double width, double bulge, bool closed) {
        begin("LWPOLYLINE");
        add_text(db, groups, 100, "AcDbEntity");
        add_text(db, groups, 100, "AcDbPolyline");
        add_int(groups, 90, 2);
        add_int(groups, 70, closed ? 1 : 0);
        add_real(groups, 43, width);
        for (const point3& p : {from, to}) {
            add_point_2d(groups, 10, p);
            add_real(groups, 42, bulge);
        }
    };
    const point3 a{part.a[0], part.a[1], 0.0}, b{part.b[0], part.b[1], 0.0};
    const double radius = part.b[0];
    switch (part.what) {
    case line:
        begin("LINE");
        add_point(groups, 10, a);
        add_point(groups, 11, b);
        break;
    case circle:
        begin("CIRCLE");
        add_point(groups, 10, a);
        add_real(groups, 40, radius);
        break;
    case disc: // a ring of two half circles as wide as its radius leaves no hole
        band_from_to({a.x - radius / 2, a.y, 0}, {a.x + radius / 2, a.y, 0}, radius, 1.0, true);
        break;
    case band:
        band_from_to(a, b, part.width, 0.0, false);
        break;
    }
    std::string error;
    if (!db::append_entity(db, owner, std::move(groups), &error))
        throw command_failed{"An arrow head could not be made: " + error};
}

std::string block_wanted(document& doc)
{
    for (const char* variable : {"DIMLDRBLK", "DIMBLK"}) {
        const std::string name = db::text_variable(doc, variable);
        if (!name.empty() && name != ".")
            return name;
    }
    return {};
}

const standard_head* standard_of(std::string_view name)
{
    for (const standard_head& each : STANDARD)
        if (same_text(name, each.name))
            return &each;
    return nullptr;
}

} // namespace

arrow_head leader_head(command_io& io)
{
    using form = arrow_head::form;
    const std::string name = block_wanted(io.doc());
    if (name.empty() || same_text(name, "_ClosedFilled"))
        return {};
    if (same_text(name, "_None"))
        return {form::none, {}, true};
    db::database& db = io.data();
    const standard_head* standard = standard_of(name);
    const bool to_tip = standard && standard->line_to_tip;
    if (db.record("BLOCK_RECORD", name))
        return {form::block, name, to_tip};
    if (!standard) {
        io.say("There is no block \"" + name + "\" for the arrow head: the filled head is drawn.");
        return {};
    }
    const db::object_id record = db::add_block(db, standard->name);
    for (const head_part& part : standard->parts)
        add_part(db, record, part);
    return {form::block, std::string(standard->name), to_tip};
}

} // namespace host::commandline

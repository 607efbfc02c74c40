// Block references. A survey point block is the reference and its attributes, and what one of them tells is the
// elevation: all is worked out before the first of them is written, so that they stay in step.
#include <charconv>
#include <cstdlib>
#include <cstring>
#include <string_view>
#include <vector>

#include "common/held_list.h"
#include "common/names.h"
#include "tools/elevation_objects.h"

namespace
{

constexpr int DECIMAL = 2;         // LUNITS
constexpr int UNIT_PRECISION = -1; // the drawing's own

constexpr int TYPE = 0, TEXT = 1, NAME = 2; // groups; of an attribute NAME is the tag

// A part of a survey point block; its text is the new one already.
struct block_part {
    held_list list;
    bool is_elevation;
};

bool begins_with(const resbuf* text, std::string_view start)
{
    return text && text->resval.rstring && std::strncmp(text->resval.rstring, start.data(), start.size()) == 0;
}

// The number at the head of a text, 0 of any other text.
double number_at_head(std::string_view text)
{
    while (!text.empty() && std::strchr(" \t", text[0]))
        text.remove_prefix(1);
    std::string_view digits = text;
    if (!digits.empty() && std::strchr("+-", digits[0]))
        digits.remove_prefix(1);
    if (digits.empty() || !std::strchr("0123456789.", digits[0]))
        return 0.0;
    if (text[0] == '+')
        text = digits;
    double value = 0.0;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), value);
    if (read.ec == std::errc::result_out_of_range)
        return std::atof(text.data()); // next to nothing, or infinite
    return value;
}

// False when there is no room for it, the node as it was.
bool set_text(resbuf* node, const char* text)
{
    char* old = node->resval.rstring;
    const std::size_t size = std::strlen(text) + 1;
    if (!old || size > std::strlen(old) + 1) {
        char* grown = static_cast<char*>(acad_realloc(old, size));
        if (!grown)
            return false;
        node->resval.rstring = grown;
    }
    std::memcpy(node->resval.rstring, text, size);
    return true;
}

// The new elevation in place of the old one. False when no text can tell it.
bool change_told_elevation(resbuf* list, const elevation_rule& rule)
{
    resbuf* told = rb_find(list, TEXT);
    if (!told)
        return false;
    const char* old = told->resval.rstring;
    const double elevation = rule.applied_to(old ? number_at_head(old) : 0.0);
    char text[ADS_TEXT_SIZE];
    return std::isfinite(elevation) && acdbRToS(elevation, DECIMAL, UNIT_PRECISION, text) == RTNORM &&
           set_text(told, text);
}

// Both places of an object go to the new z of the first. Heights of 0 count here like all others: the caller
// has looked at them where they matter.
bool change_places(resbuf* list, const elevation_rule& rule)
{
    resbuf* place = rb_find(list, 10);
    if (!place || !change_z(place, rule))
        return !place;
    if (resbuf* second = rb_find(list, 11))
        second->resval.rpoint[2] = place->resval.rpoint[2];
    return true;
}

// The attributes of a block, their texts changed. False when one can't be.
bool read_parts(const ads_name block, const elevation_rule& rule, std::vector<block_part>* parts)
{
    ads_name at = {block[0], block[1]};
    while (acdbEntNext(at, at) == RTNORM) {
        held_list list(acdbEntGet(at));
        // Behind the last attribute comes SEQEND; a block without attributes is followed by the next object.
        if (!list || !begins_with(rb_find(list.get(), TYPE), "ATTRIB"))
            break;
        const bool is_elevation = begins_with(rb_find(list.get(), NAME), "EL");
        if (is_elevation && !change_told_elevation(list.get(), rule))
            return false;
        const resbuf* place = rb_find(list.get(), 10);
        if (place && !std::isfinite(rule.applied_to(place->resval.rpoint[2])))
            return false;
        parts->push_back({std::move(list), is_elevation});
    }
    return true;
}

void write_part(const block_part& part, const elevation_rule& rule, elevation_tally* tally)
{
    resbuf* list = part.list.get();
    if (part.is_elevation) {
        tally->need_regen = true;
        if (acdbEntMod(list) == RTNORM)
            ++tally->points;
    }
    if (rb_find(list, 10) && change_places(list, rule))
        acdbEntMod(list);
}

} // namespace

void change_insert(const ads_name name, resbuf* list, const elevation_rule& rule, elevation_tally* tally)
{
    if (rule.mode == 'S')
        return;
    const resbuf* place = rb_find(list, 10);
    if (!place) {
        acutPrintf("\nError getting coordinate of Insert");
        return;
    }
    if (rule.leaves(place->resval.rpoint[2]))
        return;
    const bool is_survey_point = begins_with(rb_find(list, NAME), "SRVPN");
    std::vector<block_part> parts;
    if (!change_places(list, rule) || (is_survey_point && !read_parts(name, rule, &parts))) {
        tell_out_of_range("INSERT");
        return;
    }
    if (acdbEntMod(list) != RTNORM)
        return;
    if (!is_survey_point)
        ++tally->others;
    for (const block_part& part : parts)
        write_part(part, rule, tally);
}

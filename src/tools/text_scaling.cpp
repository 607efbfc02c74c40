// A paragraph (MTEXT) is changed in place. A line of text is drawn anew by the host's own commands, so that
// layer, style and place are settled as for any new text, and the old object goes when the new one is there.
// Layer and style stay those of the last text.
#include "tools/text_scaling.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string>

#include "common/names.h"
#include "hostapi/ads.h"

namespace
{

constexpr int TYPE_GROUP = 0;
constexpr int TEXT_GROUP = 1;
constexpr int STYLE_GROUP = 7;
constexpr int FIRST_POINT_GROUP = 10;
constexpr int SECOND_POINT_GROUP = 11;
constexpr int HEIGHT_GROUP = 40;
constexpr int WIDTH_GROUP = 41;
constexpr int ROTATION_GROUP = 50;
constexpr int OBLIQUE_GROUP = 51;
constexpr int GENERATION_GROUP = 71;
constexpr int ACROSS_GROUP = 72;
constexpr int UP_GROUP = 73;
constexpr int OPERATOR_GROUP = -4;

constexpr int UPSIDE_DOWN = 4; // of group 71, alone

// Rows: group 72 from 0 on, and any other; columns: group 73 of 1, 2, 3, and any other.
constexpr std::string_view CODES[6][4] = {
    {"BL", "ML", "TL", "L"}, {"BC", "MC", "TC", "C"}, {"BR", "MR", "TR", "R"},
    {"A", "A", "A", "A"},    {"M", "M", "M", "M"},    {"F", "F", "F", "F"},
};

// ---- a line of text ---------------------------------------------------------------------------------------

struct text_line {
    ads_name name = {};
    std::string text, layer, style;
    ads_point first = {}, second = {};
    double height = 0.0; // of the new text
    double width = 1.0, oblique = 0.0, rotation = 0.0;
    int generation = 0, across = 0, up = 0;
};

double real_in(const resbuf* list, int group, double standard)
{
    const resbuf* node = rb_find(list, group);
    return node ? node->resval.rreal : standard;
}

int short_in(const resbuf* list, int group)
{
    const resbuf* node = rb_find(list, group);
    return node ? node->resval.rint : 0;
}

const char* text_in(const resbuf* list, int group, const char* standard)
{
    const resbuf* node = rb_find(list, group);
    return node && node->resval.rstring ? node->resval.rstring : standard;
}

bool point_in(const resbuf* list, int group, ads_point point)
{
    const resbuf* node = rb_find(list, group);
    if (node)
        std::copy_n(node->resval.rpoint, 3, point);
    return node != nullptr;
}

text_line line_of(const ads_name name, resbuf* list, double multiplier)
{
    text_line line;
    std::copy_n(name, 2, line.name);
    const resbuf* layer = entity_layer(list);
    line.layer = layer ? layer->resval.rstring : "0";
    line.text = text_in(list, TEXT_GROUP, "");
    line.style = text_in(list, STYLE_GROUP, "STANDARD");
    point_in(list, FIRST_POINT_GROUP, line.first);
    if (!point_in(list, SECOND_POINT_GROUP, line.second))
        std::copy_n(line.first, 3, line.second);
    line.height = real_in(list, HEIGHT_GROUP, 0.0) * multiplier;
    line.width = real_in(list, WIDTH_GROUP, 1.0);
    line.oblique = real_in(list, OBLIQUE_GROUP, 0.0);
    line.rotation = real_in(list, ROTATION_GROUP, 0.0);
    line.generation = short_in(list, GENERATION_GROUP);
    line.across = short_in(list, ACROSS_GROUP);
    line.up = short_in(list, UP_GROUP);
    return line;
}

bool is_refusal(int status)
{
    return status == RTERROR || status == RTCAN || status == RTREJ;
}

bool set_layer(const text_line& line)
{
    const int status = acedCommand(RTSTR, ".layer", RTSTR, "_S", RTSTR, line.layer.c_str(), RTSTR, "", RTNONE);
    if (is_refusal(status))
        acutPrintf("\n\nError accessing layer> %s", line.layer.c_str());
    return !is_refusal(status);
}

// The style's height becomes 0, so that the text command asks for one. Only upside down carries over: a style
// that was given it keeps it for the texts that follow, and backwards stays as the style has it.
bool set_style(const text_line& line)
{
    const char* style = line.style.c_str();
    const int status =
        line.generation == UPSIDE_DOWN
            ? acedCommand(RTSTR, ".style", RTSTR, style, RTSTR, "", RTREAL, 0.0, RTREAL, line.width, RTREAL,
                          line.oblique, RTSTR, "", RTSTR, "_Y", RTNONE)
            : acedCommand(RTSTR, ".style", RTSTR, style, RTSTR, "", RTREAL, 0.0, RTREAL, line.width, RTREAL,
                          line.oblique, RTSTR, "", RTSTR, "", RTSTR, "", RTNONE);
    if (is_refusal(status))
        acutPrintf("\n\nError accessing style> %s", style);
    return !is_refusal(status);
}

// The rotation goes as the object stores it, in radians, and the command reads it in the drawing's unit of
// angles: programs that call this have always got texts turned by that number.
int send_text(const text_line& line, const char* code)
{
    const char* text = line.text.c_str();
    if (std::strcmp(code, "L") == 0)
        return acedCommand(RTSTR, ".text", RT3DPOINT, line.first, RTREAL, line.height, RTREAL, line.rotation,
                           RTSTR, text, RTNONE);
    if (std::strcmp(code, "F") == 0)
        return acedCommand(RTSTR, ".text", RTSTR, "_J", RTSTR, code, RT3DPOINT, line.first, RT3DPOINT,
                           line.second, RTREAL, line.height, RTSTR, text, RTNONE);
    return acedCommand(RTSTR, ".text", RTSTR, "_J", RTSTR, code, RT3DPOINT, line.second, RTREAL, line.height,
                       RTREAL, line.rotation, RTSTR, text, RTNONE);
}

bool is_live(const ads_name name)
{
    resbuf* list = acdbEntGet(name);
    if (list)
        acutRelRb(list);
    return list != nullptr;
}

bool remove_old(const text_line& line, const char* code)
{
    if (std::strcmp(code, "L") != 0)
        return acdbEntDel(line.name) == RTNORM;
    acedCommand(RTSTR, ".erase", RTENAME, line.name, RTSTR, "", RTNONE);
    return !is_live(line.name); // the command passes over what it may not erase
}

// The new text and the end of the old one, or nothing: a command can end well without drawing, and the old
// object can be kept by a locked layer.
bool redraw(const text_line& line, const char* code)
{
    ads_name before = {}, after = {};
    acdbEntLast(before);
    const int status = send_text(line, code);
    acdbEntLast(after);
    const bool drawn = !std::equal(before, before + 2, after);
    if (status == RTNORM && drawn && remove_old(line, code))
        return true;
    if (drawn)
        acdbEntDel(after);
    acutPrintf("\n\nError drawing text> \n%s", line.text.c_str());
    return false;
}

// ---- the run ----------------------------------------------------------------------------------------------

// False ends the run; it has been told why. `count` goes up by 1 for a text that was drawn anew.
bool scale_line(const text_line& line, int* count)
{
    if (!set_layer(line) || !set_style(line))
        return false;
    const std::string_view code = justification_code(line.across, line.up);
    if (code == "A") {
        acutPrintf("\n\nAligned text '%s' not changed!\n", line.text.c_str());
        return true;
    }
    if (!redraw(line, code.data()))
        return false;
    ++*count;
    return true;
}

void scale_paragraph(const ads_name name, resbuf* list, double multiplier, int* count)
{
    resbuf* height = rb_find(list, HEIGHT_GROUP);
    if (!height)
        return;
    height->resval.rreal *= multiplier;
    if (acdbEntMod(list) != RTNORM)
        return;
    acdbEntUpd(name);
    ++*count;
}

bool scale_object(const ads_name name, double multiplier, int* count)
{
    resbuf* list = acdbEntGet(name);
    if (!list)
        return true; // erased since it was selected
    const std::string type = text_in(list, TYPE_GROUP, "");
    std::optional<text_line> line;
    if (type == "TEXT")
        line = line_of(name, list, multiplier);
    else if (type == "MTEXT")
        scale_paragraph(name, list, multiplier, count);
    acutRelRb(list);
    return !line || scale_line(*line, count);
}

void scale_set(const ads_name set, double multiplier)
{
    std::int32_t length = 0;
    if (acedSSLength(set, &length) != RTNORM) {
        acutPrintf("\nNo selection set created!");
        return;
    }
    int count = 0;
    for (std::int32_t i = 0; i < length; ++i) {
        acutPrintf("\rTesting Entity> %d  ", static_cast<int>(i) + 1);
        if (acedUsrBrk() > 0) {
            acutPrintf("\nFunction cancelled at user request.");
            return;
        }
        ads_name name = {};
        if (acedSSName(set, i, name) == RTNORM && !scale_object(name, multiplier, &count))
            return;
    }
    acutPrintf("\n\nNumber of text entities changed> %d", count);
}

void ask_and_scale()
{
    ads_real multiplier = 0.0;
    acedInitGet(RSG_NONULL | RSG_NOZERO | RSG_NONEG, nullptr);
    if (acedGetReal("\nScaling Multiplier: ", &multiplier) != RTNORM)
        return;
    acutPrintf("\nSelect Text for Scaling.");
    char either[] = "<OR", paragraph[] = "MTEXT", line[] = "TEXT", end[] = "OR>";
    resbuf filter[4] = {};
    const int codes[] = {OPERATOR_GROUP, TYPE_GROUP, TYPE_GROUP, OPERATOR_GROUP};
    char* const texts[] = {either, paragraph, line, end};
    for (int i = 0; i < 4; ++i) {
        filter[i].restype = static_cast<short>(codes[i]);
        filter[i].resval.rstring = texts[i];
        filter[i].rbnext = i < 3 ? &filter[i + 1] : nullptr;
    }
    ads_name set = {};
    if (acedSSGet(nullptr, nullptr, nullptr, filter, set) != RTNORM) {
        acutPrintf("\nNo selection set created!");
        return;
    }
    scale_set(set, multiplier);
    acedSSFree(set);
}

std::optional<double> number_of(const resbuf& node)
{
    switch (node.restype) {
    case RTREAL:
        return node.resval.rreal;
    case RTSHORT:
        return node.resval.rint;
    case RTLONG:
        return node.resval.rlong;
    default:
        return std::nullopt;
    }
}

} // namespace

std::string_view justification_code(int across, int up)
{
    const std::size_t row = across >= 0 && across < 6 ? static_cast<std::size_t>(across) : 0;
    const std::size_t column = up >= 1 && up <= 3 ? static_cast<std::size_t>(up) - 1 : 3;
    return CODES[row][column];
}

int text_scaling(const resbuf* args)
{
    const resbuf* first = args;
    const resbuf* second = args ? args->rbnext : nullptr;
    if (!second || (second->restype != RTPICKS && second->restype != RTENAME)) {
        ask_and_scale();
        return RTNORM;
    }
    const std::optional<double> multiplier = number_of(*first);
    if (multiplier && std::isfinite(*multiplier) && *multiplier > 0.0)
        scale_set(second->resval.rlname, *multiplier);
    else
        acutPrintf("\nError: the multiplier must be a number above zero.");
    return RTNORM;
}

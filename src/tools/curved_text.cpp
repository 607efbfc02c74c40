#include "tools/curved_text.h"

#include <cmath>
#include <cstring>
#include <numbers>
#include <string_view>

#include "common/angle_text.h"
#include "common/arguments.h"
#include "common/key_word.h"
#include "common/names.h"
#include "common/text_buffer.h"
#include "drawing/chain_queries.h"
#include "drawing/object_list.h"
#include "drawing/picked_segment.h"
#include "drawing/read.h"
#include "drawing/segment_arc.h"
#include "hostapi/ads.h"

namespace
{

constexpr int CENTRE_GROUP = 10;
constexpr int RADIUS_GROUP = 40;

constexpr double LEAST_DX = 1e-6;          // of a pick exactly above or below the centre
constexpr double LEAST_NORMAL_PART = 1e-7; // of a direction exactly along x
constexpr double TANGENT_LENGTH = 3.0;
constexpr double CLOCKWISE = 1.0, COUNTER_CLOCKWISE = -1.0;
constexpr std::size_t NUMBER_PROMPT_SIZE = 400; // the largest double has 309 digits before its point

// Shares of offset and text size in the distance of the base line from the arc. Letters that run clockwise
// stand with their tops away from the centre, the others with their tops towards it.
struct base_line_shares {
    bool inside;
    double turn, offset, size;
};
constexpr base_line_shares BASE_LINES[] = {
    {true, COUNTER_CLOCKWISE, -1.0, 0.0},
    {true, CLOCKWISE, -1.0, -1.0},
    {false, COUNTER_CLOCKWISE, 1.0, 1.0},
    {false, CLOCKWISE, 1.0, 0.0},
};

// ---- questions -----------------------------------------------------------------------------------

// `format` shows the standard value, which an empty answer keeps. False: cancelled.
bool ask_number(const char* format, double* value)
{
    char prompt[NUMBER_PROMPT_SIZE];
    text_format(prompt, format, *value);
    double given = 0.0;
    const int status = acedGetReal(prompt, &given);
    if (status == RTNORM)
        *value = given;
    return status != RTCAN;
}

// Asks until letters can have that size.
bool ask_size(double* size)
{
    for (;;) {
        double given = *size;
        if (!ask_number("\nText size <%.2f>: ", &given))
            return false;
        if (given > 0.0 && std::isfinite(given)) {
            *size = given;
            return true;
        }
        acutPrintf("\nError: the text size must be above zero");
    }
}

// *is_word: whether the answer is this one of the key words. False: cancelled.
bool ask_word(const char* words, const char* prompt, const char* word, bool* is_word)
{
    char given[ADS_TEXT_SIZE];
    const int status = ask_key_word(words, prompt, given);
    *is_word = std::strcmp(given, word) == 0;
    return status != RTCAN;
}

bool ask_style(letter_style* style)
{
    if (!ask_size(&style->size))
        return false;
    style->offset = style->size / 2.0;
    bool counter_clockwise = false;
    if (!ask_number("\nOffset from arc <%.2f>: ", &style->offset) ||
        !ask_word("Inside Outside", "\nDraw text inside or outside arc [Inside/<Outside>]? ", "Inside",
                  &style->inside) ||
        !ask_word("Yes No", "\nDraw text clockwise [<Yes>/No]? ", "No", &counter_clockwise))
        return false;
    style->turn = counter_clockwise ? COUNTER_CLOCKWISE : CLOCKWISE;
    return true;
}

bool ask_text(const char* prompt, char (&text)[ADS_TEXT_SIZE])
{
    text[0] = '\0';
    return acedGetString(1, prompt, text) == RTNORM && text[0] != '\0';
}

// ---- the arc ---------------------------------------------------------------------------------------

bool circle_of_polyline(const ads_name name, const ads_point pick, text_circle* circle)
{
    pl_vertex* chain = pl_read_vertices(name);
    const pl_vertex* a = chain_locate_pick(chain, pick);
    const bool found = a && a->next && a->bulge != 0.0;
    if (found) {
        const segment_arc arc = arc_of_segment(*a, *a->next);
        *circle = {{arc.centre[0], arc.centre[1]}, arc.radius};
    } else {
        acutPrintf("\nError: unable to locate arc on polyline");
    }
    pl_free_vertices(chain);
    return found;
}

bool circle_of_arc(const resbuf* list, text_circle* circle)
{
    const resbuf* centre = rb_find(list, CENTRE_GROUP);
    const resbuf* radius = rb_find(list, RADIUS_GROUP);
    if (!is_arc_list(list) || !centre || !radius) {
        acutPrintf("\nError: selection must be an ARC or POLYLINE");
        return false;
    }
    *circle = {{centre->resval.rpoint[0], centre->resval.rpoint[1]}, radius->resval.rreal};
    return true;
}

// False, with a message, when what was picked is no arc.
bool picked_circle(const ads_name name, const ads_point pick, text_circle* circle)
{
    const object_list list(name);
    return is_polyline_list(list.get()) ? circle_of_polyline(name, pick, circle)
                                        : circle_of_arc(list.get(), circle);
}

// ---- letters ---------------------------------------------------------------------------------------

// False: cancelled, which the command can be only where it asks the user: at a backslash while TEXTEVAL is 1.
bool draw_letter(const letter_place& place, double size, char letter)
{
    const char text[] = {letter, '\0'};
    return acedCommand(RTSTR, "_.TEXT", RT3DPOINT, place.at, RTREAL, size, RT3DPOINT, place.toward, RTSTR, text,
                       0) != RTCAN;
}

// Each letter takes one text height of arc, however wide it is. The end of the arc doesn't end the word.
bool draw_word(const text_circle& circle, const letter_style& style, const ads_point pick,
               std::string_view word)
{
    const double step = TWO_PI * style.size / (TWO_PI * circle.radius);
    double angle = letter_angle(circle, pick);
    for (const char letter : word) {
        if (!draw_letter(place_letter(circle, style, angle), style.size, letter))
            return false;
        angle -= style.turn * step;
    }
    return true;
}

// A circle of no radius, or numbers too far apart for each other, have no place for a letter.
bool has_place(const text_circle& circle, const letter_style& style)
{
    if (std::isfinite(style.size / circle.radius) && std::isfinite(base_line_radius(circle, style)))
        return true;
    acutPrintf("\nError: text of this size and offset can't follow an arc of this radius");
    return false;
}

} // namespace

double letter_angle(const text_circle& circle, const ads_point pick)
{
    double dx = pick[0] - circle.centre[0];
    if (dx == 0.0)
        dx = LEAST_DX;
    const double angle = std::atan((pick[1] - circle.centre[1]) / dx);
    return dx < 0.0 ? angle + std::numbers::pi : angle;
}

double base_line_radius(const text_circle& circle, const letter_style& style)
{
    for (const base_line_shares& line : BASE_LINES)
        if (line.inside == style.inside && line.turn == style.turn)
            return circle.radius + line.offset * style.offset + line.size * style.size;
    return circle.radius;
}

letter_place place_letter(const text_circle& circle, const letter_style& style, double angle)
{
    const double distance = base_line_radius(circle, style);
    letter_place place;
    place.at[0] = circle.centre[0] + distance * std::cos(angle);
    place.at[1] = circle.centre[1] + distance * std::sin(angle);
    place.at[2] = 0.0;
    double outward[2] = {place.at[0] - circle.centre[0], place.at[1] - circle.centre[1]};
    if (const double length = std::hypot(outward[0], outward[1]); length != 0.0) {
        outward[0] /= length;
        outward[1] /= length;
    }
    if (outward[1] == 0.0)
        outward[1] = LEAST_NORMAL_PART;
    double tangent[2];
    scaled_normal(outward, tangent);
    for (int i = 0; i < 2; ++i)
        place.toward[i] = place.at[i] + style.turn * TANGENT_LENGTH * tangent[i];
    place.toward[2] = 0.0;
    return place;
}

int curved_text(const resbuf* args)
{
    letter_style style{};
    style.size = next_real(&args, 0.0);
    char text[ADS_TEXT_SIZE];
    if (!ask_text("\nEnter text: ", text) || !ask_style(&style))
        return RTNORM;
    do {
        ads_name name;
        ads_point pick;
        text_circle circle;
        if (acedEntSel("\nPick arc at point to start text (Enter to end): ", name, pick) != RTNORM ||
            !picked_circle(name, pick, &circle) || !has_place(circle, style) ||
            !draw_word(circle, style, pick, text))
            break;
    } while (ask_text("\nEnter text (Blank to end): ", text));
    return RTNORM;
}

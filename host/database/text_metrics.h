// text_metrics.h: how much room lines of text take, and where they stand about their alignment point.
//
// This host has no font files. Two sets of measures stand for all fonts: a fixed cell for the stroke fonts
// (shape files, as txt), and for outline fonts (a style whose font file is a .ttf, .ttc or .otf) the advance
// widths of the common sans serif. Lengths are in heights of the text, which is the height of a capital letter,
// unless said otherwise. Styles for vertical text are measured as level ones.
#pragma once

#include <string>
#include <string_view>

#include "host/database/database.h"
#include "host/database/transform.h"

namespace host::db
{

enum class font_kind { stroke, outline };

bool is_outline_font(std::string_view file);
// The kind of a text style's font; stroke for a style that the drawing lacks.
font_kind font_of_style(const database& db, std::string_view style);

// How far tails (g, p, y) go below the base line.
double descent_of(font_kind font);

// Room of one line: from the base line's start to the right edge of the last letter, and from the lowest part
// of its letters to the highest. All 0 for no letters; blanks alone have a width only.
struct text_room {
    double width = 0, bottom = 0, top = 0;
};
// `text` as group 1 has it: %%d %%p %%c %%% %%nnn and \U+XXXX are a letter, %%u %%o %%k none.
text_room room_of(std::string_view text, font_kind font);
// The same for letters without codes, a byte each.
text_room room_of_letters(std::string_view letters, font_kind font);
// The letters that a text with such codes shows; '?' for those that Windows-1252 lacks.
std::string shown_letters(std::string_view text);

// What a TEXT, ATTRIB or ATTDEF is as its groups say it; lengths in drawing units. What a list leaves out has
// its standard value.
struct text_line {
    vec start, aligned; // groups 10 and 11, in the object's plane
    double height = 0, width_factor = 1, rotation = 0, oblique = 0;
    int generation = 0;     // group 71: 2 backwards, 4 upside down
    int across = 0, up = 0; // group 72; 73 of a TEXT, 74 of an attribute
    text_room room;
    font_kind font = font_kind::stroke;

    bool is_between() const { return across == 3 || across == 5; } // aligned and fit
    bool is_justified() const { return across != 0 || up != 0; }
    vec anchor() const { return is_justified() && !is_between() ? aligned : start; }
    // Rotation; of aligned and fit texts from point to point, as far as they are two.
    double direction() const;
    // As drawn; an aligned or fit text fills the room between its points, whichever font its factors are from.
    double width() const;
};
bool is_text_line(std::string_view type);
text_line line_of(const database& db, const group_list& groups);

// From a line's anchor to the start of its base line, in the line's own directions: x along it, y up.
vec base_line_offset(const text_line& line);
// The four corners about the letters in the line's own directions, from its anchor; counter-clockwise from the
// lower left, as letters that aren't mirrored have it. The box of an oblique line leans.
struct text_corners {
    vec at[4];
};
text_corners corners_of(const text_line& line);

// Brings what follows from other groups in line with them: 10 of a justified text, but for its z, from 11; of
// an aligned one rotation and height, of a fit one rotation and width factor from its two points. Other
// objects' lists and plain left texts stay as they are.
void settle_text(const database& db, group_list& groups);
// Whether two lists of an object differ in a group on which these depend.
bool differs_in_place(const group_list& before, const group_list& after);

} // namespace host::db

// curved_text.h: words along arcs, a text object a letter.
#pragma once

#include "drawing/vertex_chain.h"
#include "hostapi/adsdef.h"

struct text_circle {
    double centre[2];
    double radius;
};

struct letter_style {
    double size;   // text height, and the length of arc that each letter takes
    double offset; // from the arc to the nearer side of the letters
    bool inside;
    double turn; // 1 clockwise, -1 counter-clockwise
};

// Where a letter goes: its insertion point, and a point in the direction of its base line.
struct letter_place {
    ads_point at, toward;
};

// Polar angle of a pick about the centre, from -pi/2 to 3/2 pi.
double letter_angle(const text_circle& circle, const ads_point pick);
// Distance of base lines from the centre.
double base_line_radius(const text_circle& circle, const letter_style& style);
letter_place place_letter(const text_circle& circle, const letter_style& style, double angle);

// Asks for words and the arcs to set them along. The first argument is the standard text size, a real. RTNORM
// in all cases; what has been drawn stays.
int curved_text(const resbuf* args);

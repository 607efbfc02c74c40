// screen_window.h: a rectangle of the screen and what lies in it. Its sides are those of the screen, so in a
// twisted view it stands aslant in the drawing. Views that don't look straight down on the drawing are
// taken as if they did, without a twist.
#pragma once

#include "host/commandline/answers.h"
#include "host/database/geometry.h"

namespace host::commandline
{

class screen_window
{
public:
    // Between two opposite corners, which are places of the drawing.
    screen_window(document& doc, const point3& a, const point3& b);
    // A square about a place, `reach` to each side.
    static screen_window around(document& doc, const point3& middle, double reach);

    const db::box& bounds() const { return bounds_; }             // in the drawing, of any height
    bool holds(const db::database& db, db::object_id id) const;   // the whole object
    bool crosses(const db::database& db, db::object_id id) const; // any part of it

private:
    screen_window() = default;
    void set(double twist, const point3& low, const point3& high);
    bool has_box_inside(const db::box& box) const;

    double sine_ = 0.0, cosine_ = 1.0;
    double low_[2] = {0, 0}, high_[2] = {0, 0}; // on the screen's plane
    db::box bounds_ = db::box::empty();
    db::run corners_; // in the drawing; empty when the sides are those of the drawing too
};

// The twist by which windows and picks are turned: 0 in views that don't look straight down.
double screen_turn(document& doc);
// Whether `b` lies to the left of `a` on the screen.
bool is_to_the_left(document& doc, const point3& b, const point3& a);

} // namespace host::commandline

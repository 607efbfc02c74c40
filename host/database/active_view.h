// active_view.h: what the screen shows of the drawing: the record *ACTIVE of the table VPORT.
//
// The screen has a plane of its own: x to the right, y up, in drawing units, the view's target at 0,0. A
// place of the drawing gets there along the view's direction and by the twist, counter-clockwise: in a plan
// view a line that points in the direction t is seen at t + twist.
#pragma once

#include "host/database/database.h"

namespace host::db
{

struct plane_place {
    double x = 0.0, y = 0.0;
};

struct active_view {
    plane_place center = {6.0, 4.5}; // of the screen, in its own plane
    double height = 9.0;             // above zero
    double aspect = 4.0 / 3.0;       // width by height, above zero
    double twist = 0.0;              // radians
    int mode = 0;                    // VIEWMODE: 1 perspective, 2 and 4 clipping in front and behind
    double direction[3] = {0, 0, 1}; // from the target to the viewer
    double target[3] = {0, 0, 0};

    plane_place on_screen(const double world[3]) const;
    void in_world(const plane_place& at, double world[3]) const; // at the target's depth
    bool is_plan() const { return direction[0] == 0.0 && direction[1] == 0.0 && direction[2] > 0.0; }
    // Counter-clockwise by so many radians about the middle of the screen.
    void turn_to(double to);
};

// What a record lacks or holds damaged (a height that is not above zero, what is no number) is as it is in
// a new drawing.
active_view active_view_of(const database& db);
// Middle, height, twist, mode, direction and target; groups that hold the same already stay as they are. Makes
// the record where there is none.
void put_active_view(database& db, const active_view& view);

} // namespace host::db

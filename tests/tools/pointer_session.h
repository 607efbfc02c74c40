// pointer_session.h: a run of the pointer tool in the real host, and what it left in the drawing.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "tests/shell/module_session.h"

// The view of every run is so high that the arrow is one unit long.
constexpr double VIEW_HEIGHT = 19.0;

// One run of the tool, with what it is to leave behind.
struct pointer_run {
    const char* name;
    const char* drawing;  // LISP that makes the objects, with the functions below
    const char* answers;  // from the pick on, one behind the other with '|' between; an empty one is Enter
    const char* objects;  // as objects_text gives them
    const char* messages; // as messages_of gives them; "" for none
};

// A drawing of its own with the module loaded and these LISP functions:
//   (line A B PROPS...)                    a LINE
//   (lw FLAGS POINTS PROPS...)             an LWPOLYLINE; a point is (x y) or (x y bulge)
//   (p2d FLAGS POINTS ELEVATION W1 W2)     an old-style 2D polyline with two default widths
//   (p3d FLAGS POINTS)                     a 3D polyline
// PROPS is a list of groups, or nil.
class pointer_session
{
public:
    explicit pointer_session(std::string_view drawing);

    // Runs the tool with these answers; what was printed. All answers must have been asked for, the screen
    // must be as before, and so must the host's variables and the module's heap. With `may_end_early` some of
    // the answers may be left.
    std::string run(std::string_view answers, bool may_end_early = false);
    // The same, with the trace of host operations.
    std::vector<std::string> trace(std::string_view answers);
    std::string lisp(std::string_view forms) { return session_.lisp(forms); }

private:
    void before(std::string_view answers);
    void after(bool may_end_early);

    module_session session_;
    std::string variables_;
};

// The objects in the order in which they were made, a line each:
//   LINE 0,0 10,0,5          z only where it isn't 0
//   LW 0,0 10,0b0.5 10,10 closed elev=7     a bulge behind the vertex where its segment starts
//   P2D ..., P3D ...
// behind them what isn't standard: closed gen layer= color= ltype= ltscale= width=start/end thick= elev=.
// Coordinates have four decimals.
std::string objects_text();
std::string coordinate_text(double value);

// What the tool said beside its prompts, '|' between the lines.
std::string messages_of(std::string_view printed);

void check_runs(std::span<const pointer_run> runs);

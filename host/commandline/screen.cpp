// screen.cpp: temporary graphics, the two screens, dragging, and pixel positions.
#include "host/commandline/screen.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "host/commandline/pending_rules.h"
#include "host/commandline/views.h"
#include "host/core/document.h"
#include "host/core/trace.h"
#include "host/database/sysvars.h"

namespace host::commandline
{

namespace
{

struct screen {
    explicit screen(document&) {}
    std::vector<screen_vector> vectors;
};

bool same_place(const screen_vector& a, const screen_vector& b)
{
    return std::memcmp(a.from.data(), b.from.data(), sizeof(point3)) == 0 &&
           std::memcmp(a.to.data(), b.to.data(), sizeof(point3)) == 0;
}

void draw(document& doc, const screen_vector& v)
{
    std::vector<screen_vector>& all = doc.part<screen>().vectors;
    if (v.color == COMPLEMENT_COLOR) {
        const auto there = std::find_if(all.begin(), all.end(), [&](const screen_vector& old) {
            return old.color == COMPLEMENT_COLOR && same_place(old, v);
        });
        if (there != all.end()) {
            all.erase(there);
            return;
        }
    }
    all.push_back(v);
}

} // namespace

const std::vector<screen_vector>& screen_vectors(document& doc)
{
    return doc.part<screen>().vectors;
}

void clear_screen_vectors(document& doc)
{
    doc.part<screen>().vectors.clear();
}

} // namespace host::commandline

using namespace host::commandline;
using host::current_document;
using host::trace_line;

extern "C" {

int acedGrDraw(const ads_point from, const ads_point to, int color, int highlight)
{
    trace_line t("acedGrDraw");
    t.point(from).point(to).integer(color).integer(highlight);
    draw(current_document(), {point3::of(from), point3::of(to), color, highlight != 0});
    return RTNORM;
}

int acedRedraw(const ads_name entity, int mode)
{
    const bool whole_view = !entity || (entity[0] == 0 && entity[1] == 0);
    if (whole_view && mode <= 1)
        clear_screen_vectors(current_document());
    return RTNORM;
}

int acedUpdateDisplay()
{
    return RTNORM;
}

int acedTextScr()
{
    trace_line("acedTextScr");
    return RTNORM;
}

int acedGraphScr()
{
    trace_line("acedGraphScr");
    return RTNORM;
}

int acedTextPage()
{
    trace_line("acedTextPage");
    return RTNORM;
}

// There are no menus: a program that changes one loses nothing.
int acedMenuCmd(const char* text)
{
    return text ? RTNORM : RTERROR;
}

int acedCoordFromWorldToPixel(int viewport, const ads_point world, int* x, int* y)
{
    host::document& doc = current_document();
    const host::list_ptr size = host::db::get_variable(doc, "SCREENSIZE");
    if (viewport < 0 || !size || !(size->resval.rpoint[1] > 0.0))
        return 0;
    const view now = view_of(doc);
    const double pixels = size->resval.rpoint[1] / now.height;
    const host::db::plane_place at = now.on_screen(world);
    const double px = size->resval.rpoint[0] / 2.0 + (at.x - now.center.x) * pixels;
    const double py = size->resval.rpoint[1] / 2.0 - (at.y - now.center.y) * pixels;
    if (!(std::abs(px) < 1e9) || !(std::abs(py) < 1e9))
        return 0;
    *x = static_cast<int>(std::lround(px));
    *y = static_cast<int>(std::lround(py));
    return 1;
}

int acedDragGen(const ads_name set, const char* prompt, int cursor,
                int (*follow)(ads_point point, ads_matrix matrix), ads_point dropped)
{
    trace_line t("acedDragGen");
    t.name(set).text(prompt).integer(cursor);
    question what(want::point, prompt ? prompt : "");
    apply_pending_rules(what);
    const answer given = ask_user(current_document(), what);
    note_input(given);
    if (!given.ok())
        return t.status(given.status);
    // The pointer has come to that place before the button went down. The matrix is for what is shown on the
    // way alone: whatever stands in it, the program moves its objects by the point.
    ads_point at;
    std::memcpy(at, given.point.data(), sizeof at);
    ads_matrix matrix = {{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}};
    if (follow && follow(at, matrix) == RTERROR)
        return t.status(RTERROR);
    std::memcpy(dropped, given.point.data(), sizeof(ads_point));
    return t.status(RTNORM);
}
}

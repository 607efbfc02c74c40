// screen.cpp: temporary graphics, the two screens, dragging, and pixel positions.
#include "host/commandline/screen.h"

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <unordered_map>

#include "host/commandline/pending_rules.h"
#include "host/commandline/views.h"
#include "host/core/document.h"
#include "host/core/trace.h"
#include "host/database/sysvars.h"
#include "host/dialogs/message_loop.h"
#include "host/dialogs/windows.h"

namespace host::commandline
{

namespace
{

// A vector's two ends, the lesser one first: where it lies, whichever end it was drawn from.
struct place {
    std::array<double, 6> ends;

    explicit place(const screen_vector& v)
    {
        std::array<double, 3> a = {v.from.x, v.from.y, v.from.z}, b = {v.to.x, v.to.y, v.to.z};
        if (b < a)
            std::swap(a, b);
        for (std::size_t i = 0; i < 3; ++i) {
            ends[i] = a[i] + 0.0; // a negative zero is a zero
            ends[i + 3] = b[i] + 0.0;
        }
    }
    bool operator==(const place&) const = default;
};

struct place_hash {
    std::size_t operator()(const place& p) const
    {
        std::uint64_t mixed = 0;
        for (const double end : p.ends) {
            mixed = (mixed ^ std::bit_cast<std::uint64_t>(end)) * 0x9e3779b97f4a7c15u;
            mixed ^= mixed >> 29;
        }
        return mixed;
    }
};

// The vectors, with the places of those in the complement colour. A wiped one is only marked; the marked are
// swept out when they are the half of all, or when somebody looks.
class vector_list
{
public:
    void draw(const screen_vector& v)
    {
        if (v.color == COMPLEMENT_COLOR) {
            const auto [there, is_new] = complements_.emplace(place(v), all_.size());
            if (!is_new) {
                wiped_[there->second] = true;
                complements_.erase(there);
                if (++wiped_count_ * 2 > all_.size())
                    sweep();
                return;
            }
        }
        all_.push_back(v);
        wiped_.push_back(false);
    }
    const std::vector<screen_vector>& shown()
    {
        if (wiped_count_)
            sweep();
        return all_;
    }
    void clear() { *this = {}; }

private:
    void sweep()
    {
        std::size_t kept = 0;
        for (std::size_t i = 0; i < all_.size(); ++i) {
            if (wiped_[i])
                continue;
            all_[kept] = all_[i];
            if (all_[kept].color == COMPLEMENT_COLOR)
                complements_[place(all_[kept])] = kept;
            ++kept;
        }
        all_.resize(kept);
        wiped_.assign(kept, false);
        wiped_count_ = 0;
    }

    std::vector<screen_vector> all_;
    std::vector<bool> wiped_;
    std::size_t wiped_count_ = 0;
    std::unordered_map<place, std::size_t, place_hash> complements_;
};

struct screen {
    explicit screen(document&) {}
    vector_list vectors;
};

text_screen text;

} // namespace

const std::vector<screen_vector>& screen_vectors(document& doc)
{
    return doc.part<screen>().vectors.shown();
}

void clear_screen_vectors(document& doc)
{
    doc.part<screen>().vectors.clear();
    dialogs::invalidate(dialogs::DRAWING_WINDOW, nullptr, true);
}

const text_screen& shown_text_screen()
{
    return text;
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
    const screen_vector drawn{point3::of(from), point3::of(to), color, highlight != 0};
    if (!is_finite(drawn.from) || !is_finite(drawn.to))
        return RTERROR; // lies nowhere
    current_document().part<screen>().vectors.draw(drawn);
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
    host::dialogs::run_paints();
    return RTNORM;
}

int acedTextScr()
{
    trace_line("acedTextScr");
    text.is_in_front = true;
    return RTNORM;
}

int acedGraphScr()
{
    trace_line("acedGraphScr");
    text.is_in_front = false;
    return RTNORM;
}

int acedTextPage()
{
    trace_line("acedTextPage");
    text.is_in_front = true;
    ++text.pages;
    return RTNORM;
}

// There are no menus: a program that changes one loses nothing.
int acedMenuCmd(const char* text)
{
    return text ? RTNORM : RTERROR;
}

int acedCoordFromWorldToPixel(int viewport, const ads_point world, int* x, int* y)
{
    if (!host::has_document())
        return 0; // a hook may ask while the last drawing closes
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

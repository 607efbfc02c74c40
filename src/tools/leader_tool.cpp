#include "tools/leader_tool.h"

#include <cmath>
#include <cstring>

#include "common/key_word.h"
#include "common/variables.h"
#include "drawing/object_list.h"
#include "hostapi/ads.h"
#include "tools/arrow_head.h"
#include "tools/curve.h"
#include "tools/drawn_objects.h"
#include "tools/zorro_line.h"

namespace
{

constexpr int FIRST_INTERMEDIATE = USER_POINT + 1;
constexpr double FARTHEST = 999999999.9;

// ---- where an intermediate point goes ----------------------------------------------------------

// The vertex nearest to v, of equal ones the earlier; the head when all are farther than any drawing is wide.
pl_vertex* nearest_vertex(pl_vertex* head, const pl_vertex& v)
{
    pl_vertex* nearest = head;
    double best = FARTHEST;
    for (pl_vertex* at = head; at; at = at->next)
        if (const double distance = chain_distance(*at, v); distance < best) {
            best = distance;
            nearest = at;
        }
    return nearest;
}

// Squared length of the sum of the unit vectors from a and from b to v. Opposed directions sum to a short
// vector: v lies between a and b then.
double sum_of_directions_sq(const pl_vertex& a, const pl_vertex& b, const pl_vertex& v)
{
    const double to_a = chain_distance(a, v), to_b = chain_distance(b, v);
    const double fa = to_a == 0.0 ? 0.0 : 1.0 / to_a, fb = to_b == 0.0 ? 0.0 : 1.0 / to_b;
    const double x = fa * (v.x - a.x) + fb * (v.x - b.x), y = fa * (v.y - a.y) + fb * (v.y - b.y),
                 z = fa * (v.z - a.z) + fb * (v.z - b.z);
    return x * x + y * y + z * z;
}

// The vertex behind which v belongs, in a chain of user's points.
pl_vertex* place_in_chain(pl_vertex* head, const pl_vertex& v)
{
    pl_vertex* nearest = nearest_vertex(head, v);
    if (!nearest->next)
        return nearest->prev;
    if (!nearest->prev)
        return nearest;
    const bool is_behind =
        sum_of_directions_sq(*nearest, *nearest->prev, v) >= sum_of_directions_sq(*nearest, *nearest->next, v);
    return is_behind ? nearest : nearest->prev;
}

// A point that the heap has no room for is passed over.
void insert_point(pl_vertex* head, const ads_point at, int type)
{
    pl_vertex* v = pl_vertex_new(at[0], at[1], at[2]);
    if (!v)
        return;
    v->type = type;
    pl_vertex* before = place_in_chain(head, *v);
    v->prev = before;
    v->next = before->next;
    before->next->prev = v;
    before->next = v;
}

// Marks the point that was given last as taken back.
void take_back_last(pl_vertex* head)
{
    pl_vertex* last = nullptr;
    for (pl_vertex* v = head; v; v = v->next)
        if (v->type >= FIRST_INTERMEDIATE && (!last || v->type > last->type))
            last = v;
    if (last)
        last->type = CONTROL_POINT;
    else
        acutPrintf("Unable to UNDO anymore\n");
}

// ---- one leader ------------------------------------------------------------------------------------

struct leader_line {
    pl_vertex* chain;
    int next_type = FIRST_INTERMEDIATE;
    bool is_drawn = false;
    ads_name drawn{}; // the polyline, when there is one
};

// An answer may have been an expression that erased it before; erased again it would come back.
void erase_line(leader_line* line)
{
    if (line->is_drawn && object_list(line->drawn))
        acdbEntDel(line->drawn);
    line->is_drawn = false;
}

void redraw_line(leader_line* line)
{
    erase_line(line);
    const newest_object before;
    chain_write_plain(line->chain);
    line->is_drawn = before.added(line->drawn);
}

bool input_is_undo()
{
    char word[ADS_TEXT_SIZE] = "";
    acedGetInput(word);
    return word[0] == 'U' || word[0] == 'u';
}

enum class leader_end { done, cancelled, broken };

// Bends the line by points until an answer is neither a point nor a key word.
leader_end bend_line(leader_line* line)
{
    for (;;) {
        ads_point at;
        acedInitGet(0, "Undo");
        const int status = acedGetPoint(nullptr, "\nPick an intermediate point (U to Undo):", at);
        if (status != RTNORM && status != RTKWORD)
            return status == RTCAN ? leader_end::cancelled : leader_end::done;
        if (status == RTKWORD) {
            if (!input_is_undo())
                continue;
            take_back_last(line->chain);
        }
        chain_uncurve(line->chain);
        if (status == RTNORM)
            insert_point(line->chain, at, line->next_type++);
        const bool is_curved = chain_curve(line->chain, LEADER_TENSION, LEADER_STEP);
        // Asked of the host anew: a break that ended a program in an answer isn't one of this line.
        if (status == RTNORM && acedUsrBrk())
            return leader_end::broken;
        if (is_curved)
            redraw_line(line);
    }
}

// False when the user broke it off.
bool draw_leader(const ads_point start, const ads_point end, bool with_arrow)
{
    const ads_point points[2] = {{start[0], start[1], start[2]}, {end[0], end[1], end[2]}};
    leader_line line{chain_of_points(points, 2)};
    if (!line.chain)
        return true;
    redraw_line(&line);
    const leader_end how = bend_line(&line);
    if (how == leader_end::broken)
        acutPrintf("\nFunction cancelled at user request.");
    else if (how == leader_end::cancelled)
        erase_line(&line);
    else if (with_arrow)
        draw_arrow_head(line.chain);
    pl_free_vertices(line.chain);
    return how != leader_end::broken;
}

// ---- the questions ---------------------------------------------------------------------------------

struct leader_choice {
    bool zorro = false;
    bool arrow = true;
};

int ask_yes_no(const char* prompt, char (&word)[ADS_TEXT_SIZE])
{
    return ask_key_word("Yes No", prompt, word);
}

// RTCAN when the user cancels.
int ask_choice(leader_choice* choice)
{
    char word[ADS_TEXT_SIZE];
    if (ask_yes_no("\nCreate a Zorro [Yes/<No>]? ", word) == RTCAN)
        return RTCAN;
    choice->zorro = std::strcmp(word, "Yes") == 0;
    if (!choice->zorro) {
        if (ask_yes_no("Include an arrow [<Yes>/No]? ", word) == RTCAN)
            return RTCAN;
        choice->arrow = std::strcmp(word, "No") != 0;
    }
    return choice->arrow ? ask_arrow_size() : RTNORM;
}

// False when it was broken off.
bool draw_one(const leader_choice& choice)
{
    ads_point start, end;
    if (acedGetPoint(nullptr, "\nPick a starting point:", start) != RTNORM ||
        acedGetPoint(start, "\nPick an ending point:", end) != RTNORM) {
        acutPrintf("\nFunction cancelled.");
        return false;
    }
    if (!choice.zorro)
        return draw_leader(start, end, choice.arrow);
    zorro_line(start, end, choice.arrow);
    return true;
}

bool wants_another()
{
    char word[ADS_TEXT_SIZE];
    const int status = ask_yes_no("\nDraw another to match [<Yes>/No]? ", word);
    return status != RTCAN && std::strcmp(word, "No") != 0;
}

// True when the user said at the end that there is no more to draw.
bool draw_leaders()
{
    leader_choice choice;
    if (ask_choice(&choice) == RTCAN)
        return false;
    do {
        if (!draw_one(choice))
            return false;
    } while (wants_another());
    return true;
}

} // namespace

int leader_tool()
{
    kept_variable arrow_size_before("DIMASZ");
    if (!draw_leaders())
        arrow_size_before.drop(); // the size that was chosen stays for the next call
    return RTNORM;
}

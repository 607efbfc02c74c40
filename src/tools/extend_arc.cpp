// An arc never changes its shape in place: the object is erased and made again from its own group list, in
// which only the angles differ, so that all its properties stay. The list and the steps that can be taken back
// live as long as one run of the tool.
#include "tools/extend_arc.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <optional>
#include <string_view>

#include "common/angle_text.h"
#include "common/key_word.h"
#include "common/names.h"
#include "common/text_buffer.h"
#include "drawing/object_list.h"
#include "drawing/picked_segment.h"
#include "drawing/selection.h"
#include "hostapi/ads.h"

namespace
{

constexpr double CLOSING_GAP = 0.01; // radians that stay open when an arc is extended to its whole circle
constexpr double WHOLE = 1.0;
constexpr double LONGEST_TOTAL = 0.999;

constexpr int CENTRE_GROUP = 10;
constexpr int RADIUS_GROUP = 40;
constexpr int START_GROUP = 50;
constexpr int END_GROUP = 51;

constexpr int DECIMAL = 2; // unit and precision of a picked distance's text
constexpr int DISTANCE_PRECISION = 9;

constexpr const char* CANT_CHANGE = "\nError: the arc can't be changed.";

// A step that can be taken back: the angles before it.
struct arc_undo {
    double start_angle, end_angle;
    arc_undo* next; // the older step
};

double not_negative(double angle)
{
    return angle < 0.0 ? angle + TWO_PI : angle;
}

double not_above_turn(double angle)
{
    return angle > TWO_PI ? angle - TWO_PI : angle;
}

// The whole text as a finite number.
std::optional<double> number_of(std::string_view text)
{
    const auto is_blank = [](char c) { return c == ' ' || c == '\t'; };
    while (!text.empty() && is_blank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && is_blank(text.back()))
        text.remove_suffix(1);
    if (text.size() > 1 && text[0] == '+' && text[1] != '-')
        text.remove_prefix(1);
    double value = 0.0;
    const char* const end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, value);
    if (text.empty() || read.ec != std::errc() || read.ptr != end || !std::isfinite(value))
        return std::nullopt;
    return value;
}

bool begins_with(const char* text, char upper)
{
    return text[0] == upper || text[0] == upper - 'A' + 'a';
}

bool is_live(const ads_name name)
{
    return static_cast<bool>(object_list(name));
}

class arc_run
{
public:
    arc_run() = default;
    ~arc_run();
    arc_run(const arc_run&) = delete;
    arc_run& operator=(const arc_run&) = delete;

    bool read(const ads_name name, const ads_point pick);
    // Until the user ends it.
    void extend(bool break_arc);

private:
    bool ask(char (&text)[ADS_TEXT_SIZE]) const;
    bool step(const char* text);
    bool take_back();
    bool set_total(double part);
    bool add_length(double part);
    bool add_broken(double part, const arc_angles& grown);
    bool cut(const arc_angles& kept, const arc_angles& rest);

    bool push();
    void point_at(double angle, ads_point point) const;
    void set_groups(double start, double end);
    bool make();
    bool remake();

    ads_name name_{};
    resbuf* list_ = nullptr; // of the arc as it was picked, but for its angles and what `remake` says
    resbuf* start_group_ = nullptr;
    resbuf* end_group_ = nullptr;
    double centre_[2] = {};
    double radius_ = 0.0;
    arc_angles arc_{}; // what the next step starts from
    bool at_start_ = false, break_arc_ = false;
    arc_undo* undo_ = nullptr; // the newest step first
};

arc_run::~arc_run()
{
    while (undo_) {
        arc_undo* older = undo_->next;
        acad_free(undo_);
        undo_ = older;
    }
    if (list_)
        acutRelRb(list_);
}

bool arc_run::read(const ads_name name, const ads_point pick)
{
    std::copy_n(name, 2, name_);
    list_ = acdbEntGet(name);
    const resbuf* centre = rb_find(list_, CENTRE_GROUP);
    const resbuf* radius = rb_find(list_, RADIUS_GROUP);
    start_group_ = rb_find(list_, START_GROUP);
    end_group_ = rb_find(list_, END_GROUP);
    if (!is_arc_list(list_) || !centre || !radius || !start_group_ || !end_group_) {
        acutPrintf("\nError: selection must be an ARC");
        return false;
    }
    std::copy_n(centre->resval.rpoint, 2, centre_);
    radius_ = radius->resval.rreal;
    arc_ = {start_group_->resval.rreal, end_group_->resval.rreal};
    const auto distance_sq = [&](double angle) {
        ads_point end;
        point_at(angle, end);
        const double dx = end[0] - pick[0], dy = end[1] - pick[1];
        return dx * dx + dy * dy;
    };
    at_start_ = distance_sq(arc_.start) < distance_sq(arc_.end);
    return true;
}

void arc_run::point_at(double angle, ads_point point) const
{
    point[0] = centre_[0] + radius_ * std::cos(angle);
    point[1] = centre_[1] + radius_ * std::sin(angle);
    point[2] = 0.0;
}

// The next answer as text; false when the user ends.
bool arc_run::ask(char (&text)[ADS_TEXT_SIZE]) const
{
    ads_point base, point;
    point_at(at_start_ ? arc_.start : arc_.end, base);
    acedInitGet(RSG_OTHER, "");
    const int status = acedGetPoint(base,
                                    undo_ ? "\nEnter or pick the distance to extend ('U' to Undo): "
                                          : "\nEnter or pick the distance to extend: ",
                                    point);
    if (status == RTCAN)
        return false;
    text[0] = '\0';
    if (status != RTNORM) {
        acedGetInput(text);
        return text[0] != '\0';
    }
    const double distance = std::hypot(point[0] - base[0], point[1] - base[1]);
    if (acdbRToS(distance, DECIMAL, DISTANCE_PRECISION, text) != RTNORM)
        text_set(text, "?"); // no text can hold it
    return true;
}

void arc_run::extend(bool break_arc)
{
    break_arc_ = break_arc;
    char text[ADS_TEXT_SIZE];
    while (ask(text) && step(text)) {
    }
}

// One answer. False when the tool can't go on; it has said so.
bool arc_run::step(const char* text)
{
    text += std::strspn(text, " \t");
    if (begins_with(text, 'U'))
        return take_back();
    const bool total = begins_with(text, 'T');
    const std::optional<double> length = number_of(total ? text + 1 : text);
    const double part = length ? circle_part(*length, radius_, total ? LONGEST_TOTAL : WHOLE) : NAN;
    if (!std::isfinite(part)) {
        acutPrintf("\nError: '%s' is not a length along this arc.", text);
        return true;
    }
    return total ? set_total(part) : add_length(part);
}

bool arc_run::take_back()
{
    if (!undo_) {
        acutPrintf("\nUnable to UNDO anymore.");
        return true;
    }
    arc_undo* newest = undo_;
    undo_ = newest->next;
    arc_ = {newest->start_angle, newest->end_angle};
    acad_free(newest);
    set_groups(arc_.start, arc_.end);
    return remake();
}

// The object is made again with the angles that it had: the drawing shows the new ones with the
// next length only, which then adds to this total.
bool arc_run::set_total(double part)
{
    if (!push())
        return false;
    arc_ = total_angles(arc_, part, at_start_);
    return remake();
}

bool arc_run::add_length(double part)
{
    if (!push())
        return false;
    const arc_angles grown = extended_angles(arc_, part, at_start_);
    if (break_arc_)
        return add_broken(part, grown);
    arc_ = grown;
    set_groups(arc_.start, arc_.end);
    return remake();
}

// The extension as an arc of its own beside the old one; a negative one cuts the arc in two at its new end.
bool arc_run::add_broken(double part, const arc_angles& grown)
{
    const double edge_a = at_start_ ? grown.start : arc_.end;
    const double edge_b = at_start_ ? arc_.start : grown.end;
    arc_ = grown;
    if (part < 0.0)
        return cut(grown, {edge_b, edge_a});
    set_groups(edge_a, edge_b);
    return make();
}

// The object that the list names keeps one piece, and a new one has the rest. It is whole again when that can't
// be made.
bool arc_run::cut(const arc_angles& kept, const arc_angles& rest)
{
    resbuf* whole = acdbEntGet(list_->resval.rlname);
    set_groups(kept.start, kept.end);
    bool done = acdbEntMod(list_) == RTNORM;
    if (!done) {
        acutPrintf("%s", CANT_CHANGE);
    } else {
        set_groups(rest.start, rest.end);
        done = make();
        if (!done && whole)
            acdbEntMod(whole);
    }
    if (whole)
        acutRelRb(whole);
    return done;
}

// Breaking takes nothing back: its pieces are objects of their own.
bool arc_run::push()
{
    if (break_arc_)
        return true;
    auto* newest = static_cast<arc_undo*>(acad_malloc(sizeof(arc_undo)));
    if (!newest) {
        acutPrintf("\nError: no memory for another step.");
        return false;
    }
    *newest = {arc_.start, arc_.end, undo_};
    undo_ = newest;
    return true;
}

void arc_run::set_groups(double start, double end)
{
    start_group_->resval.rreal = start;
    end_group_->resval.rreal = end;
}

// A new object from the list, which is then the one that is worked on.
bool arc_run::make()
{
    if (acdbEntMake(list_->rbnext) != RTNORM || acdbEntLast(name_) != RTNORM) {
        acutPrintf("\nError: the arc can't be made.");
        return false;
    }
    return true;
}

// The list goes on naming its object, which a cut changes in place. An object that an answer has erased doesn't
// come back: to erase it once more would do that.
bool arc_run::remake()
{
    const ads_name old = {name_[0], name_[1]};
    if (!is_live(old) || acdbEntDel(old) != RTNORM) {
        acutPrintf("%s", CANT_CHANGE);
        return false;
    }
    if (!make()) {
        acdbEntDel(old); // comes back
        return false;
    }
    if (std::equal(old, old + 2, list_->resval.rlname))
        std::copy_n(name_, 2, list_->resval.rlname);
    return true;
}

} // namespace

double circle_part(double length, double radius, double most)
{
    const double part = length / (TWO_PI * radius);
    return part > 1.0 ? most : part;
}

arc_angles extended_angles(const arc_angles& arc, double part, bool at_start)
{
    if (at_start)
        return {part == WHOLE ? arc.end + CLOSING_GAP : not_negative(arc.start - TWO_PI * part), arc.end};
    return {arc.start, part == WHOLE ? arc.start - CLOSING_GAP : not_above_turn(arc.end + TWO_PI * part)};
}

arc_angles total_angles(const arc_angles& arc, double part, bool at_start)
{
    if (at_start)
        return {not_negative(arc.end - TWO_PI * part), arc.end};
    return {arc.start, not_above_turn(arc.start + TWO_PI * part)};
}

int extend_arc_tool()
{
    ads_name name;
    ads_point pick;
    if (pick_entity_of_types("ARC", "\nPick arc to extend: ", name, pick) != RTNORM) {
        acutPrintf("\nFunction cancelled.");
        return RTNORM;
    }
    extend_arc(name, pick);
    return RTNORM;
}

void extend_arc(const ads_name name, const ads_point pick)
{
    char word[ADS_TEXT_SIZE];
    if (ask_key_word("Yes No", "\nBreak Arc at Extension [Yes/<No>]? ", word) == RTCAN)
        return;
    arc_run run;
    if (run.read(name, pick))
        run.extend(std::strcmp(word, "Yes") == 0);
}

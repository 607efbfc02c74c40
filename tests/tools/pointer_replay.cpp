#include "tests/tools/pointer_replay.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <optional>

namespace
{

constexpr double DEGREES = 57.29577951308232;

double length_of(const replay_place& a, const replay_place& b)
{
    return std::sqrt((b.x - a.x) * (b.x - a.x) + (b.y - a.y) * (b.y - a.y));
}

double direction(const replay_place& a, const replay_place& b) // radians
{
    const double length = length_of(a, b);
    if (length == 0.0)
        return 0.0;
    const double angle = std::acos(std::max(-1.0, std::min(1.0, (b.x - a.x) / length)));
    return b.y - a.y < 0.0 ? 6.283185307179586 - angle : angle;
}

double rotated(double angle, double delta)
{
    double sum = angle + delta;
    if (sum > 360.0)
        sum -= 360.0;
    if (sum < 0.0)
        sum += 360.0;
    return sum;
}

// 0 up to, not with, 360.
double normalised(double angle)
{
    if (angle < 0.0)
        angle += 360.0;
    if (angle >= 360.0)
        angle -= 360.0;
    return angle;
}

bool same_place(const replay_place& a, const replay_place& b)
{
    return a.x == b.x && a.y == b.y;
}

bool in_range(double value, double a, double b)
{
    return (a <= value && value <= b) || (b <= value && value <= a);
}

char capital(const std::string& text)
{
    const char c = text.empty() ? '\0' : text[0];
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c;
}

bool starts_number(char c)
{
    return c != '\0' && std::strchr("+-.0123456789", c);
}

std::string cut_text(const char* format, double value)
{
    char text[400];
    std::snprintf(text, sizeof text, format, value);
    return {text, std::strcspn(text, ".")};
}

// The vertices as the tool reads them: with the first one behind the last of a closed polyline.
replay_chain with_closing(const replay_object& object)
{
    replay_chain chain = object.places;
    if (object.closed)
        chain.push_back({chain[0].x, chain[0].y, chain[0].z, 0.0});
    return chain;
}

std::optional<std::size_t> nearest_segment(const replay_chain& chain, double x, double y)
{
    double best = 98765432.1;
    std::optional<std::size_t> found;
    for (std::size_t i = 0; i + 1 < chain.size(); ++i) {
        const replay_place &a = chain[i], &b = chain[i + 1];
        const double dx = b.x - a.x, dy = b.y - a.y;
        if (!(length_of(a, b) > 0.0001))
            continue;
        const double t = (dx * (x - a.x) + dy * (y - a.y)) / (dx * dx + dy * dy);
        const double fx = a.x + t * dx, fy = a.y + t * dy;
        const bool inside = fx >= std::min(a.x, b.x) - 1e-6 && fx <= std::max(a.x, b.x) + 1e-6 &&
                            fy >= std::min(a.y, b.y) - 1e-6 && fy <= std::max(a.y, b.y) + 1e-6;
        const double off = (fx - x) * (fx - x) + (fy - y) * (fy - y);
        if (inside && off <= best) {
            best = off;
            found = i;
        }
    }
    return found;
}

std::optional<replay_place> ray_hit(const replay_place& a, const replay_place& b, const replay_chain& chain)
{
    const double far_x = a.x + (a.x - b.x) * 99999999.9, far_y = a.y + (a.y - b.y) * 99999999.9;
    const bool upright = far_x == b.x;
    double m1 = 0, c1 = 0;
    if (!upright) {
        m1 = (far_y - b.y) / (far_x - b.x);
        c1 = b.y - m1 * b.x;
    }
    for (std::size_t i = 0; i + 1 < chain.size(); ++i) {
        const replay_place &s = chain[i], &t = chain[i + 1];
        double m2 = 0, c2 = 0;
        if (s.x != t.x) {
            m2 = (t.y - s.y) / (t.x - s.x);
            c2 = s.y - m2 * s.x;
        }
        const double dm = m1 - m2 == 0.0 ? 1e-8 : m1 - m2;
        double x = (c2 - c1) / dm, y = m1 * x + c1;
        if (upright && s.x == t.x)
            continue;
        if (upright) {
            x = b.x;
            y = m2 * x + c2;
            x = in_range(y, b.y, far_y) ? x : x - 9999999999.9;
        } else if (s.x == t.x) {
            x = s.x;
            y = m1 * x + c1;
            x = in_range(y, s.y, t.y) ? x : x - 9999999999.9;
        }
        if (in_range(x, s.x, t.x) && in_range(x, b.x, far_x))
            return replay_place{x, y, 0, 0};
    }
    return {};
}

} // namespace

struct pointer_replay::pick {
    std::size_t object;
    double x, y;

    static std::optional<pick> of(const std::string& text)
    {
        pick p{};
        if (std::sscanf(text.c_str(), "%zu %lf %lf", &p.object, &p.x, &p.y) != 3)
            return {};
        return p;
    }
};

pointer_replay::pointer_replay(std::vector<replay_object> drawing, double pick_x, double pick_y,
                               double arrow_size)
    : arrow_size_(arrow_size)
{
    for (replay_object& object : drawing)
        drawing_.push_back({std::move(object), false});
    ent_ = drawing_.size() - 1;
    const replay_object& picked = drawing_[ent_].object;
    kind_ = picked.kind;
    closed_ = picked.closed;
    chain_ = with_closing(picked);
    cur_ = kind_ == "LINE" ? 0 : nearest_segment(chain_, pick_x, pick_y).value();
    other_ = cur_ + 1;
    const double f = length_of(chain_[cur_], {pick_x, pick_y}) / length_of(chain_[cur_], chain_[other_]);
    if (f > 0.5)
        std::swap(cur_, other_);
    tip_ = chain_[cur_];
    draw_arrow();
}

std::vector<replay_object> pointer_replay::objects() const
{
    std::vector<replay_object> all;
    for (const drawn& one : drawing_)
        if (!one.erased)
            all.push_back(one.object);
    return all;
}

void pointer_replay::draw_arrow()
{
    const double a = normalised(rel_angle_ + direction(chain_[other_], chain_[cur_]) * DEGREES);
    const double b = rotated(a, 90.0);
    const double h = arrow_size_ / 2.7;
    const double x = tip_.x - arrow_size_ * std::cos(a / DEGREES);
    const double y = tip_.y - arrow_size_ * std::sin(a / DEGREES);
    const double hx = h * std::cos(b / DEGREES), hy = h * std::sin(b / DEGREES);
    arrows_.insert(arrows_.end(), {tip_.x, tip_.y, tip_.z, x + hx, y + hy, tip_.z, x - hx, y - hy, tip_.z});
}

// ---- a step --------------------------------------------------------------------------------------

void pointer_replay::mark_beginning()
{
    if (last_cmd_.empty())
        last_cmd_ = "U";
    last_cmd_[0] = 'U';
}

// Takes out a vertex that isn't the pointer's; the segment is then that to the next one.
void pointer_replay::leave_out(std::size_t index)
{
    chain_.erase(chain_.begin() + static_cast<std::ptrdiff_t>(index));
    if (index < cur_)
        --cur_;
    other_ = cur_ + 1 == chain_.size() ? cur_ - 1 : cur_ + 1;
}

void pointer_replay::extend(const replay_place& n, double given)
{
    if (ent_drawn_)
        drawing_[ent_].erased = true;
    else
        ++events_[NOT_DRAWN];
    ent_drawn_ = false;
    const bool tail = cur_ + 1 == chain_.size();
    ++events_[given == 0.0 ? SLID : BENT];
    if (given == 0.0) {
        chain_[cur_] = n;
    } else if (tail) {
        chain_.push_back(n);
        other_ = cur_++;
    } else {
        chain_.insert(chain_.begin(), n);
        other_ = cur_ + 1;
    }
    if (!same_place(chain_[cur_], chain_[other_]))
        return;
    if (chain_.size() == 2) {
        ++events_[NOTHING_BEYOND];
        return;
    }
    ++events_[DROPPED_OUT];
    leave_out(other_);
}

void pointer_replay::begin_chain(const replay_place& n)
{
    ++events_[NEW_CHAIN];
    if (kind_ != "LINE")
        say("New Polyline");
    mark_beginning();
    chain_ = {{tip_.x, tip_.y, tip_.z, 0.0}, n};
    cur_ = 1;
    other_ = 0;
    ent_drawn_ = false;
}

double pointer_replay::step(double dist, double given)
{
    const replay_place cur = chain_[cur_], other = chain_[other_];
    const double angle = normalised(given + direction(other, cur) * DEGREES) / DEGREES;
    const double old_len = length_of(cur, other);
    events_[WITHOUT_LENGTH] += old_len == 0.0;
    const double slope = old_len == 0.0 ? 0.0 : (cur.z - other.z) / old_len;
    const replay_place n = {tip_.x + dist * std::cos(angle), tip_.y + dist * std::sin(angle),
                            cur.z + dist * slope, 0.0};
    if (!draw_mode_) {
        ++events_[MOVED];
        tip_ = n;
        return given;
    }
    bool at_pointer = same_place(tip_, cur);
    if (kind_ == "LINE" && given != 0.0) {
        at_pointer = false;
        mark_beginning();
    }
    if (at_pointer && (cur_ == 0 || cur_ + 1 == chain_.size()))
        extend(n, given);
    else
        begin_chain(n);
    tip_ = chain_[cur_];
    if (same_place(chain_[0], chain_[1])) {
        if (chain_.size() == 2) {
            ++events_[NOTHING_TO_DRAW];
            return given;
        }
        ++events_[HEAD_TIDIED];
        leave_out(1);
    }
    if (arrow_size_ / 500.0 > old_len && chain_.size() > 2) {
        ++events_[STUB_DROPPED];
        leave_out(other_);
    }
    drawing_.push_back({{kind_, chain_, closed_}, false});
    ent_ = drawing_.size() - 1;
    ent_drawn_ = true;
    return 0.0;
}

// ---- keys ----------------------------------------------------------------------------------------

void pointer_replay::close_or_open(bool close)
{
    if (kind_ == "LINE") {
        say(close ? "Error: unable to close line" : "Error: unable to open line");
        return;
    }
    closed_ = close;
    rel_angle_ = step(0.0, 0.0);
}

void pointer_replay::undo_turn(double back)
{
    if (dist_ > 0.0)
        step_on(-dist_);
    else
        rel_angle_ = rotated(rel_angle_, back);
}

void pointer_replay::undo(std::string& text)
{
    const char last = capital(last_cmd_);
    if (last == '\0' || last == 'U')
        return say("Unable to undo.");
    if (last == 'C' || last == 'O')
        close_or_open(last == 'C');
    static constexpr const char* INSTEAD[] = {"MD", "DM", "CO", "OC", "SS", "NP", "PN"};
    for (const char* pair : INSTEAD)
        if (last == pair[0]) {
            text = pair[1];
            return;
        }
    if (last == 'R')
        undo_turn(90.0);
    if (last == 'L')
        undo_turn(-90.0);
    if (last == 'A' || last == 'B')
        rel_angle_ = rotated(rel_angle_, -aux_);
    if (starts_number(last) || last == 'T' || last == 'E')
        step_on(-dist_);
    text = "U";
}

void pointer_replay::walk(bool forward)
{
    const bool backward_look = cur_ + 1 == other_;
    const std::size_t end = forward ? cur_ : other_;
    // where the vertices go on from that end: away from `other` forward, away from cur backward
    const bool down = forward == backward_look;
    const bool more = down ? end > 0 : end + 1 < chain_.size();
    const std::size_t beyond = down ? end - 1 : end + 1;
    if (!more) {
        std::swap(cur_, other_);
    } else if (forward) {
        other_ = cur_;
        cur_ = beyond;
    } else {
        cur_ = other_;
        other_ = beyond;
    }
    tip_ = chain_[cur_];
}

bool pointer_replay::total(const std::vector<std::string>& lines)
{
    dist_ = length_of(chain_[other_], chain_[cur_]);
    aux_ = std::atof(lines[0].c_str() + 1);
    if (lines[0].size() == 1) {
        char text[400];
        std::snprintf(text, sizeof text, "Enter the total distance <%.2f>: %s", dist_, lines[1].c_str());
        say(text);
        if (lines[1] == "^C")
            return false;
        aux_ = lines[1].empty() ? dist_ : std::atof(lines[1].c_str());
    }
    dist_ = aux_ - dist_;
    step_on(dist_);
    return true;
}

bool pointer_replay::extend_to_edge(const std::string& edge)
{
    dist_ = length_of(chain_[other_], chain_[cur_]);
    const std::optional<pick> picked = pick::of(edge);
    if (!picked) {
        say("Nothing selected.");
        return false;
    }
    const auto hit = ray_hit(chain_[cur_], chain_[other_], with_closing(drawing_[picked->object].object));
    if (!hit) {
        say("Unable to find intersection.");
        return false;
    }
    aux_ = length_of(chain_[other_], *hit);
    dist_ = aux_ - dist_;
    step_on(dist_);
    return true;
}

void pointer_replay::align(const std::string& target)
{
    rel_angle_ = 0.0;
    const std::optional<pick> picked = pick::of(target);
    if (!picked)
        return;
    const replay_object& object = drawing_[picked->object].object;
    std::size_t i = 0;
    if (object.kind != "LINE") {
        const auto found = nearest_segment(object.places, picked->x, picked->y);
        if (!found)
            return say("Error: no segment of the polyline at that point");
        i = *found;
    }
    replay_place u = object.places[i], w = object.places[(i + 1) % object.places.size()];
    aux_ = length_of(u, w);
    if (!(length_of(u, {picked->x, picked->y}) / aux_ < 0.5))
        std::swap(u, w);
    rel_angle_ = rotated((direction(u, w) - direction(chain_[cur_], chain_[other_])) * DEGREES, 0.0);
}

void pointer_replay::turn_by_angle(const std::string& number)
{
    aux_ = std::atof(number.c_str());
    double degrees = std::atof(cut_text("%.9f", aux_).c_str());
    double rest = (aux_ - degrees) * 100.0;
    last_cmd_ = cut_text("%.7f", rest);
    const double minutes = std::atof(last_cmd_.c_str());
    degrees += minutes / 60.0;
    rest = (rest - minutes) * 100.0;
    degrees += rest / 3600.0;
    rel_angle_ = rotated(rel_angle_, -degrees);
}

void pointer_replay::bearing(std::string text)
{
    last_cmd_ = text;
    if (text.size() < 2)
        return;
    const int q = text[0] >= '1' && text[0] <= '9' ? text[0] - '0' : 5;
    const std::string angle = text.substr(1);
    const double value = std::atof(angle.c_str());
    double d = std::atof(angle.substr(0, angle.find('.')).c_str());
    double rest = (value - d) * 100.0;
    last_cmd_ = cut_text("%.9f", rest);
    const double minutes = std::atof(last_cmd_.c_str());
    d += minutes / 60.0;
    rest = (rest - minutes) * 100.0;
    d += rest / 3600.0;
    const double base = direction(chain_[other_], chain_[cur_]) * DEGREES;
    const double turns[] = {90.0 - d - base,
                            270.0 + d - base,
                            270.0 - d - base,
                            90.0 + d - base,
                            (360.0 - d) - 270.0 - base,
                            d - 180.0,
                            -d - 180.0,
                            d,
                            -d};
    rel_angle_ = rotated(turns[q - 1], 0.0);
}

void pointer_replay::step_of_turn(double turn, const std::string& number)
{
    rel_angle_ = rotated(rel_angle_, turn);
    dist_ = std::atof(number.c_str());
    if (dist_ > 0.0)
        step_on(dist_);
}

bool pointer_replay::run_key(const std::vector<std::string>& lines, const std::string& text)
{
    const std::string behind = text.substr(1);
    switch (const char key = capital(text)) {
    case 'D':
    case 'M':
        draw_mode_ = key == 'D';
        say(draw_mode_ ? "Draw mode" : "Move mode");
        break;
    case 'R':
        step_of_turn(-90.0, behind);
        break;
    case 'L':
        step_of_turn(90.0, behind);
        break;
    case 'T':
        return total(lines);
    case 'E':
        return extend_to_edge(lines[1]);
    case 'A':
        behind.empty() ? align(lines[1]) : turn_by_angle(behind);
        break;
    case 'B':
        bearing(!behind.empty() ? behind : lines[1] == "^C" ? "" : lines[1]);
        break;
    case 'S':
        std::swap(cur_, other_);
        tip_ = chain_[cur_];
        break;
    case 'N':
    case 'P':
        walk(key == 'N');
        break;
    default:
        if (starts_number(key)) {
            dist_ = std::atof(text.c_str());
            step_on(dist_);
        }
    }
    return true;
}

bool pointer_replay::answer(const std::vector<std::string>& lines)
{
    std::string text = lines[0];
    if (text.empty() || text == "^C")
        return false;
    double x = 0, y = 0;
    if (std::sscanf(text.c_str(), "%lf,%lf", &x, &y) == 2) {
        char distance[400];
        std::snprintf(distance, sizeof distance, "%.14f", length_of(tip_, {x, y}));
        text = distance;
    }
    if (capital(text) == 'U')
        undo(text);
    if (capital(text) == 'C' || capital(text) == 'O')
        close_or_open(capital(text) == 'C');
    bool goes_on = true;
    if (capital(text) != 'H') {
        last_cmd_ = text;
        goes_on = run_key(lines, text);
    }
    if (goes_on)
        draw_arrow();
    return goes_on;
}

#include "tests/tools/pointer_model.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdlib>

#include "tests/tools/pointer_session.h"

namespace
{

constexpr double DEGREE = 57.29577951308232;
constexpr double ARROW = 1.0; // of a view as high as pointer_session's

double plan_length(const model_place& a, const model_place& b)
{
    return std::sqrt((b.x - a.x) * (b.x - a.x) + (b.y - a.y) * (b.y - a.y));
}

double direction(const model_place& a, const model_place& b) // radians
{
    const double length = plan_length(a, b);
    if (length == 0.0)
        return 0.0;
    const double angle = std::acos((b.x - a.x) / length);
    return b.y < a.y ? 6.283185307179586 - angle : angle;
}

double brought_back(double degrees)
{
    if (degrees > 360.0)
        degrees -= 360.0;
    return degrees < 0.0 ? degrees + 360.0 : degrees;
}

// Apart by rounding only: whether they count as one place is the last bit's business.
bool nearly_same(const model_place& a, const model_place& b)
{
    const double length = plan_length(a, b);
    return length > 0.0 && length < 1e-6;
}

bool same_in_plan(const model_place& a, const model_place& b)
{
    return a.x == b.x && a.y == b.y;
}

// dd.mmss as degrees, by the digits rather than by arithmetic.
double degrees_of(const std::string& text)
{
    std::string digits = text;
    const bool below = !digits.empty() && digits[0] == '-';
    digits.erase(0, digits.find_first_not_of("+-"));
    const std::size_t point = digits.find('.');
    std::string behind = point == std::string::npos ? "" : digits.substr(point + 1);
    behind.resize(std::max<std::size_t>(behind.size(), 4), '0');
    const double minutes = std::atof(behind.substr(0, 2).c_str());
    const double seconds = std::atof((behind.substr(2, 2) + "." + behind.substr(4)).c_str());
    const double degrees = std::atof(digits.substr(0, point).c_str()) + minutes / 60 + seconds / 3600;
    return below ? -degrees : degrees;
}

// Where the ray from b through a meets a chain first, in the chain's order.
bool ray_hit(const model_place& a, const model_place& b, const std::vector<model_place>& chain,
             model_place* hit)
{
    const double ux = a.x - b.x, uy = a.y - b.y;
    for (std::size_t i = 0; i + 1 < chain.size(); ++i) {
        const model_place &s = chain[i], &t = chain[i + 1];
        const double vx = t.x - s.x, vy = t.y - s.y;
        const double cross = ux * vy - uy * vx;
        if (cross == 0.0)
            continue;
        const double along_ray = ((s.x - b.x) * vy - (s.y - b.y) * vx) / cross;
        const double along_edge = ((s.x - b.x) * uy - (s.y - b.y) * ux) / cross;
        if (along_ray < 0.0 || along_edge < 0.0 || along_edge > 1.0)
            continue;
        *hit = {b.x + along_ray * ux, b.y + along_ray * uy, 0, 0};
        return true;
    }
    return false;
}

bool touches(const model_place& p, const std::vector<model_place>& chain)
{
    for (std::size_t i = 0; i + 1 < chain.size(); ++i) {
        const double length = plan_length(chain[i], chain[i + 1]);
        const double longer = plan_length(chain[i], p) + plan_length(p, chain[i + 1]);
        if (longer < length + 1e-6)
            return true;
    }
    return false;
}

std::string text_of(const model_object& object)
{
    std::string text = object.kind;
    for (const model_place& p : object.places) {
        text += " " + coordinate_text(p.x) + "," + coordinate_text(p.y);
        const bool spatial = object.kind == "LINE" || object.kind == "P3D";
        if (spatial && coordinate_text(p.z) != "0")
            text += "," + coordinate_text(p.z);
        if (!spatial && p.bulge != 0.0)
            text += "b" + coordinate_text(p.bulge);
    }
    return text + (object.closed ? " closed" : "");
}

} // namespace

pointer_model::pointer_model(model_object object, std::size_t segment, double part,
                             std::vector<model_object> others)
    : chain_(object.places), closed_(object.closed), kind_(object.kind)
{
    for (model_object& other : others)
        drawing_.push_back({std::move(other)});
    worked_on_ = drawing_.size();
    drawing_.push_back({std::move(object)});
    if (closed_) {
        chain_.push_back(chain_.front());
        chain_.back().bulge = 0.0;
    }
    cur_ = segment;
    other_ = segment + 1;
    if (part > 0.5)
        std::swap(cur_, other_);
    tip_ = chain_[cur_];
}

std::string pointer_model::objects() const
{
    std::string text;
    for (const drawn& one : drawing_)
        if (!one.erased)
            text += (text.empty() ? "" : "\n") + text_of(one.object);
    return text;
}

void pointer_model::say(const char* text)
{
    messages_ += (messages_.empty() ? "" : "|") + std::string(text);
}

// ---- a step --------------------------------------------------------------------------------------

void pointer_model::take_place(std::size_t index)
{
    chain_.erase(chain_.begin() + static_cast<std::ptrdiff_t>(index));
    if (cur_ > index)
        --cur_;
    other_ = cur_ == 0 ? 1 : cur_ - 1;
}

// At an end: the end slides, or the chain bends there.
bool pointer_model::extend(const model_place& place, double given)
{
    drawing_[worked_on_].erased = true;
    const bool at_end = cur_ + 1 == chain_.size();
    if (given == 0.0) {
        chain_[cur_] = place;
    } else if (at_end) {
        chain_.push_back(place);
        other_ = cur_;
        cur_ = chain_.size() - 1;
    } else {
        chain_.insert(chain_.begin(), place);
        cur_ = 0;
        other_ = 1;
    }
    unclear_ = unclear_ || nearly_same(chain_[cur_], chain_[other_]);
    if (!same_in_plan(chain_[cur_], chain_[other_]))
        return true;
    if (chain_.size() == 2)
        return false;
    take_place(other_);
    return true;
}

void pointer_model::begin_chain(const model_place& place)
{
    if (kind_ != "LINE")
        say("New Polyline");
    last_command_[0] = 'U';
    tip_.bulge = 0.0;
    chain_ = {tip_, place};
    cur_ = 1;
    other_ = 0;
}

void pointer_model::drop_stub(double old_length)
{
    if (ARROW / 500.0 <= old_length)
        return;
    const bool beyond = cur_ == 0 ? other_ + 1 < chain_.size() : other_ > 0;
    if (beyond)
        take_place(other_);
}

void pointer_model::make_object()
{
    worked_on_ = drawing_.size();
    drawing_.push_back({{kind_, chain_, closed_}});
}

double pointer_model::step(double distance, double given)
{
    const model_place cur = chain_[cur_], other = chain_[other_];
    const double heading = brought_back(given + direction(other, cur) * DEGREE) / DEGREE;
    const double length = plan_length(cur, other);
    const double slope = (cur.z - other.z) / length;
    unclear_ = unclear_ || length < 1e-6;
    const model_place place = {tip_.x + distance * std::cos(heading), tip_.y + distance * std::sin(heading),
                               cur.z + distance * slope, 0.0};
    if (!draws_) {
        tip_ = place;
        return given;
    }
    unclear_ = unclear_ || nearly_same(tip_, cur);
    bool at_pointer = same_in_plan(tip_, cur);
    if (kind_ == "LINE" && given != 0.0) {
        at_pointer = false;
        last_command_[0] = 'U';
    }
    if (at_pointer && (cur_ == 0 || cur_ + 1 == chain_.size())) {
        if (!extend(place, given)) {
            unclear_ = true;
            return given;
        }
    } else {
        begin_chain(place);
    }
    if (same_in_plan(chain_[0], chain_[1])) {
        if (chain_.size() == 2)
            return given; // nothing to draw yet
        unclear_ = true;
    }
    drop_stub(length);
    make_object();
    tip_ = chain_[cur_];
    return 0.0;
}

void pointer_model::step_by(double distance)
{
    turn_ = step(distance, turn_);
}

// ---- keys ----------------------------------------------------------------------------------------

void pointer_model::close_or_open(char key)
{
    if (kind_ == "LINE") {
        say(key == 'C' ? "Error: unable to close line" : "Error: unable to open line");
        return;
    }
    closed_ = key == 'C';
    turn_ = step(0.0, 0.0);
}

void pointer_model::undo(std::string& text)
{
    const std::size_t places_before = chain_.size();
    const char key = last_command_.empty()
                         ? 'U'
                         : static_cast<char>(std::toupper(static_cast<unsigned char>(last_command_[0])));
    switch (key) {
    case 'U':
        say("Unable to undo.");
        text = "U";
        break;
    case 'M':
        text = "D";
        break;
    case 'D':
        text = "M";
        break;
    case 'S':
        text = "S";
        break;
    case 'N':
        text = "P";
        break;
    case 'P':
        text = "N";
        break;
    case 'C':
    case 'O':
        close_or_open(key);
        text = key == 'C' ? "O" : "C";
        break;
    case 'R':
    case 'L':
        if (distance_ > 0.0)
            step_by(-distance_);
        else
            turn_ = brought_back(turn_ + (key == 'R' ? 90.0 : -90.0));
        text = "U";
        break;
    case 'A':
        turn_ = brought_back(turn_ - aux_);
        text = "U";
        break;
    default:
        if (std::isdigit(static_cast<unsigned char>(key)) ||
            std::string("+-.TE").find(key) != std::string::npos)
            step_by(-distance_);
        // back from an edge that was worked out another way: on the vertex or beside it
        unclear_ = unclear_ || (key == 'E' && turn_ == 0.0 && places_before != chain_.size());
        text = "U";
    }
}

void pointer_model::next()
{
    const bool backwards = other_ == cur_ + 1;
    const bool more = backwards ? cur_ > 0 : cur_ + 1 < chain_.size();
    const std::size_t was = cur_;
    cur_ = more ? (backwards ? cur_ - 1 : cur_ + 1) : other_;
    other_ = was;
}

void pointer_model::previous()
{
    const bool backwards = other_ == cur_ + 1;
    const bool more = backwards ? other_ + 1 < chain_.size() : other_ > 0;
    const std::size_t was = cur_;
    cur_ = other_;
    other_ = more ? (backwards ? cur_ + 1 : cur_ - 1) : was;
}

void pointer_model::bearing(std::string text)
{
    last_command_ = text;
    if (text.size() < 2)
        return;
    last_command_ = "0";
    int code = std::isdigit(static_cast<unsigned char>(text[0])) ? text[0] - '0' : 5;
    if (code == 0)
        code = 5;
    const double d = degrees_of(text.substr(1));
    const double base = direction(chain_[other_], chain_[cur_]) * DEGREE;
    const double turns[] = {90 - d - base,
                            270 + d - base,
                            270 - d - base,
                            90 + d - base,
                            (360 - d) - 270 - base,
                            d - 180,
                            -d - 180,
                            d,
                            -d};
    turn_ = brought_back(turns[code - 1]);
}

// The target is a line of the drawing, from its first place or its second.
void pointer_model::align(const std::string& target)
{
    turn_ = 0.0;
    if (target.empty() || target == "^C")
        return;
    const bool at_start = target.find("start") != std::string::npos;
    model_place u = drawing_[0].object.places[0], w = drawing_[0].object.places[1];
    aux_ = plan_length(u, w);
    if (!at_start)
        std::swap(u, w);
    turn_ = brought_back((direction(u, w) - direction(chain_[cur_], chain_[other_])) * DEGREE);
}

bool pointer_model::run_to_edge(const std::string& edge)
{
    if (edge.empty() || edge == "^C") {
        say("Nothing selected.");
        return false;
    }
    std::vector<model_place> chain = drawing_[1].object.places;
    if (drawing_[1].object.closed)
        chain.push_back(chain.front());
    model_place hit;
    // The tool's slope of a ray that is all but upright has no digits left.
    const double across = std::fabs(chain_[cur_].x - chain_[other_].x);
    const bool all_but_upright = across > 0.0 && across < 1e-6 * plan_length(chain_[cur_], chain_[other_]);
    unclear_ = unclear_ || all_but_upright || touches(chain_[cur_], chain) || touches(chain_[other_], chain);
    if (!ray_hit(chain_[cur_], chain_[other_], chain, &hit)) {
        say("Unable to find intersection.");
        return false;
    }
    aux_ = plan_length(chain_[other_], hit);
    distance_ = aux_ - plan_length(chain_[other_], chain_[cur_]);
    step_by(distance_);
    return true;
}

// The total distance that is typed or asked for.
double pointer_model::total(const std::vector<std::string>& lines)
{
    const double length = plan_length(chain_[other_], chain_[cur_]);
    const std::string text = lines[0].size() > 1 ? lines[0].substr(1) : lines[1];
    return text.empty() ? length : std::atof(text.c_str());
}

bool pointer_model::run_key(const std::string& text, const std::vector<std::string>& lines)
{
    const char key = static_cast<char>(std::toupper(static_cast<unsigned char>(text[0])));
    const std::string behind = text.substr(1);
    switch (key) {
    case 'D':
        draws_ = true;
        say("Draw mode");
        break;
    case 'M':
        draws_ = false;
        say("Move mode");
        break;
    case 'R':
    case 'L':
        turn_ = brought_back(turn_ + (key == 'R' ? -90.0 : 90.0));
        distance_ = std::atof(behind.c_str());
        if (distance_ > 0.0)
            step_by(distance_);
        break;
    case 'T':
        if (behind.empty() && lines[1] == "^C")
            return false;
        aux_ = total(lines);
        distance_ = aux_ - plan_length(chain_[other_], chain_[cur_]);
        step_by(distance_);
        break;
    case 'E':
        return run_to_edge(lines[1]);
    case 'A':
        if (behind.empty()) {
            align(lines[1]);
            break;
        }
        aux_ = std::atof(behind.c_str());
        last_command_ = "0";
        turn_ = brought_back(turn_ - degrees_of(behind));
        break;
    case 'B':
        bearing(!behind.empty() ? behind : lines[1] == "^C" ? "" : lines[1]);
        break;
    case 'S':
        std::swap(cur_, other_);
        tip_ = chain_[cur_];
        break;
    case 'N':
        next();
        tip_ = chain_[cur_];
        break;
    case 'P':
        previous();
        tip_ = chain_[cur_];
        break;
    default:
        if (std::isdigit(static_cast<unsigned char>(key)) ||
            std::string("+-.").find(key) != std::string::npos) {
            distance_ = std::atof(text.c_str());
            step_by(distance_);
        }
    }
    return true;
}

bool pointer_model::answer(const std::vector<std::string>& lines)
{
    std::string text = lines[0];
    if (text.empty() || text == "^C")
        return false;
    if (text[0] == 'U' || text[0] == 'u')
        undo(text);
    const char key = static_cast<char>(std::toupper(static_cast<unsigned char>(text[0])));
    if (key == 'C' || key == 'O')
        close_or_open(key);
    if (key == 'H')
        return true;
    last_command_ = text;
    return run_key(text, lines);
}

// question.cpp: understanding of answers, by the kind of the prompt. Each answer is tried as a key word
// first, then as what the prompt wants; what fits neither is refused in words that say what is wanted.
#include "host/commandline/question.h"

#include "host/commandline/commands.h"

#include <charconv>
#include <cmath>

#include "host/commandline/picks.h"
#include "host/core/console.h"
#include "host/core/document.h"
#include "host/core/session.h"
#include "host/core/text.h"
#include "host/core/trace.h"
#include "host/database/selection_sets.h"
#include "host/database/sysvars.h"
#include "host/dialogs/message_loop.h"
#include "host/lisp/api.h"

namespace host::commandline
{

namespace
{

struct refusal {
    std::string_view plain, with_key_words;
};

refusal refusal_of(want kind)
{
    switch (kind) {
    case want::point:
        return {"Invalid point.", "Point or option keyword required."};
    case want::distance:
        return {"Requires numeric distance or two points.",
                "Requires numeric distance, two points, or option keyword."};
    case want::angle:
    case want::orientation:
        return {"Requires valid numeric angle or two points.",
                "Requires valid numeric angle, two points, or option keyword."};
    case want::real:
        return {"Requires numeric value.", "Requires numeric value or option keyword."};
    case want::integer:
        return {"Requires an integer value.", "Requires an integer value or option keyword."};
    case want::key_word:
        return {"Invalid option keyword.", "Invalid option keyword."};
    case want::object:
        return {"Invalid selection.", "Invalid selection or option keyword."};
    case want::selection:
        return {"*Invalid selection*", "*Invalid selection*"};
    case want::word:
    case want::text:
        return {"Requires a text.", "Requires a text or option keyword."};
    }
    return {};
}

std::optional<double> number_in(const resbuf& node)
{
    switch (type_of_code(node.restype)) {
    case value_type::real:
        return node.resval.rreal;
    case value_type::int16:
        return node.resval.rint;
    case value_type::int32:
        return node.resval.rlong;
    default:
        return std::nullopt;
    }
}

bool is_whole(const resbuf& node)
{
    return type_of_code(node.restype) != value_type::real;
}

// LISP can work out numbers that nobody could type.
bool all_finite(const resbuf* atoms)
{
    for (const resbuf* node = atoms; node; node = node->rbnext) {
        const value_type type = type_of_code(node->restype);
        if (type == value_type::real && !std::isfinite(node->resval.rreal))
            return false;
        if (type == value_type::point && !is_finite(point3::of(node->resval.rpoint)))
            return false;
    }
    return true;
}

// A point atom, or two or three numbers.
std::optional<point3> point_in(const resbuf* atoms, double elevation)
{
    if (!atoms)
        return std::nullopt;
    if (atoms->restype == RTPOINT && !atoms->rbnext)
        return point3{atoms->resval.rpoint[0], atoms->resval.rpoint[1], elevation};
    if (type_of_code(atoms->restype) == value_type::point && !atoms->rbnext)
        return point3::of(atoms->resval.rpoint);
    double xyz[3] = {0, 0, elevation};
    int count = 0;
    for (const resbuf* node = atoms; node; node = node->rbnext, ++count) {
        const std::optional<double> value = count < 3 ? number_in(*node) : std::nullopt;
        if (!value)
            return std::nullopt;
        xyz[count] = *value;
    }
    return count >= 2 ? std::optional(point3::of(xyz)) : std::nullopt;
}

// As LISP prints it where it is to be a text; else with all its digits, since it is read as a number again.
std::string number_text(const resbuf& node, want kind)
{
    const std::optional<double> value = number_in(node);
    if (!value)
        return {};
    if (is_whole(node))
        return std::to_string(static_cast<long>(*value));
    if (kind == want::word || kind == want::text)
        return lisp_real(*value);
    char digits[40];
    return {digits, std::to_chars(digits, digits + sizeof digits, *value).ptr};
}

// Commands take LASTPOINT further; prompts for objects don't.
void note_last_point(document& doc, const point3& point)
{
    db::set_point(doc, "LASTPOINT", point.data());
}

bool outside_limits(document& doc, const point3& point)
{
    if (!db::int_variable(doc, "LIMCHECK"))
        return false;
    const list_ptr low = db::get_variable(doc, "LIMMIN"), high = db::get_variable(doc, "LIMMAX");
    if (!low || !high)
        return false;
    return point.x < low->resval.rpoint[0] || point.y < low->resval.rpoint[1] ||
           point.x > high->resval.rpoint[0] || point.y > high->resval.rpoint[1];
}

} // namespace

// ---- inputs ------------------------------------------------------------------------------

input input::of_text(std::string_view line)
{
    input in;
    in.text = line;
    return in;
}

input input::cancelled()
{
    input in;
    in.cancel = true;
    return in;
}

input input::of_value(list_ptr list)
{
    if (list && list->restype == RTSTR && !list->rbnext)
        return of_text(list->resval.rstring ? list->resval.rstring : "");
    input in;
    in.is_text = false;
    list_builder atoms;
    for (const resbuf* node = list.get(); node; node = node->rbnext)
        if (node->restype != RTLB && node->restype != RTLE && node->restype != RTDOTE)
            atoms.add(rb_copy_one(node));
    in.value.reset(atoms.take());
    return in;
}

std::string input::shown() const
{
    if (is_text)
        return text;
    if (!value)
        return "nil";
    if (!value->rbnext && type_of_code(value->restype) == value_type::point)
        return lisp_point(value->resval.rpoint);
    return value->rbnext ? printed_list(value.get(), false) : printed_value(*value);
}

// ---- asker ----------------------------------------------------------------------------------

std::string asker::prompt() const
{
    return first_ ? "Specify second point: " : question_.prompt;
}

bool asker::refuse(std::string_view why)
{
    message = why;
    understood_ = true;
    return false;
}

bool asker::wrong()
{
    const refusal words = refusal_of(question_.kind);
    message = question_.key_words.empty() ? words.plain : words.with_key_words;
    understood_ = false;
    return false;
}

bool asker::finish(int status)
{
    message.clear();
    result.status = status;
    return true;
}

bool asker::measures() const
{
    return question_.kind == want::distance || question_.kind == want::angle ||
           question_.kind == want::orientation;
}

bool asker::feed(const input& given)
{
    if (given.cancel)
        return finish(RTCAN);
    if (given.is_text)
        return feed_text(given.text);
    return given.value ? feed_value(given.value.get()) : wrong();
}

bool asker::feed_text(std::string_view text)
{
    if (question_.kind == want::word || question_.kind == want::text)
        return take_text(text);
    const std::string_view bare = trimmed(text);
    const bool takes_any_text = question_.rules & RSG_OTHER && !first_;
    if (bare.empty()) {
        if (!(question_.rules & RSG_NONULL || first_))
            return finish(RTNONE);
        return takes_any_text ? finish_with_text(bare) : wrong();
    }
    if (!first_ && take_key_word(bare))
        return true;
    if (question_.kind == want::selection)
        return take_selection_text(bare);
    if (question_.kind == want::object &&
        (bare.front() == '#' || same_text(bare, "l") || same_text(bare, "last")))
        return take_handle(bare);
    if (take_plain(bare))
        return true;
    // A number or point that the rules refuse is asked for again: as a text it would get round them.
    return takes_any_text && !understood_ && finish_with_text(bare);
}

bool asker::finish_with_text(std::string_view text)
{
    result.text = text;
    return finish(question_.kind == want::key_word ? RTNORM : RTKWORD);
}

bool asker::take_key_word(std::string_view text)
{
    const std::optional<std::string> word = match_key_word(question_.key_words, text);
    return word && finish_with_text(*word);
}

// A text that is no key word, for prompts that want numbers, points or picks.
bool asker::take_plain(std::string_view text)
{
    const reading_rules rules = reading_rules_of(*doc_);
    switch (question_.kind) {
    case want::key_word:
        return wrong();
    case want::integer:
        if (const std::optional<int> value = parse_int(text))
            return take_number(*value, true);
        return wrong();
    case want::real:
        if (const std::optional<double> value = parse_length(text, rules))
            return take_number(*value, false);
        return wrong();
    case want::distance:
        if (const std::optional<double> value = first_ ? std::nullopt : parse_length(text, rules))
            return take_number(*value, false);
        break;
    case want::angle:
    case want::orientation:
        if (const std::optional<typed_angle> value = first_ ? std::nullopt : parse_angle(text, rules)) {
            const bool from_base = question_.kind == want::angle;
            return take_turn(from_base ? relative_angle(*value, rules) : absolute_angle(*value, rules),
                             value->radians);
        }
        break;
    default:
        break;
    }
    if (const std::optional<point3> point = parse_point(text, rules))
        return question_.kind == want::object ? take_pick(*point) : take_point(*point);
    return wrong();
}

bool asker::take_text(std::string_view text)
{
    if (question_.kind == want::word) {
        text = trimmed(text);
        text = text.substr(0, text.find(' '));
    }
    if (text.empty() && question_.rules & RSG_NONULL)
        return wrong();
    if (!text.empty() && take_key_word(text))
        return true;
    result.text = text;
    return finish(text.empty() ? RTNONE : RTNORM);
}

// What the bits say of the sign and of zero; nothing: the value may be.
std::string_view asker::refusal_of_value(double value) const
{
    const bool zero = question_.rules & RSG_NOZERO && value == 0.0;
    const bool below = question_.rules & RSG_NONEG && value < 0.0;
    if (!zero && !below)
        return {};
    const bool both = question_.rules & RSG_NOZERO && question_.rules & RSG_NONEG;
    return both   ? "Value must be positive and nonzero."
           : zero ? "Value must be nonzero."
                  : "Value must be positive.";
}

// `typed`: the number that the bits are about.
bool asker::take_turn(double radians, double typed)
{
    if (!std::isfinite(radians))
        return wrong();
    if (const std::string_view why = refusal_of_value(result.has_point ? radians : typed); !why.empty())
        return refuse(why);
    result.turn = radians;
    result.real = normal_angle(radians);
    return finish(RTNORM);
}

bool asker::take_number(double value, bool whole)
{
    if (!std::isfinite(value)) // the distance of two points that are as far apart as numbers go
        return wrong();
    if (question_.kind == want::integer && (!whole || value < -32768.0 || value > 32767.0))
        return refuse(whole ? "Requires an integer between -32768 and 32767."
                            : refusal_of(want::integer).plain);
    if (const std::string_view why = refusal_of_value(value); !why.empty())
        return refuse(why);
    result.real = value;
    if (question_.kind == want::integer)
        result.integer = static_cast<int>(value);
    return finish(RTNORM);
}

bool asker::take_point(const point3& point)
{
    if (!is_finite(point)) // a step from the last point can go too far
        return wrong();
    if (!(question_.rules & RSG_NOLIM) && outside_limits(*doc_, point))
        return refuse("**Outside limits");
    note_last_point(*doc_, point);
    result.point = point;
    result.has_point = true;
    if (!measures())
        return finish(RTNORM);
    const std::optional<point3> start = first_ ? first_ : question_.base;
    if (!start) {
        first_ = point;
        return refuse("");
    }
    first_.reset();
    if (question_.kind == want::distance) {
        const bool flat = question_.rules & RSG_2D;
        const double dz = flat ? 0.0 : point.z - start->z;
        return take_number(std::hypot(point.x - start->x, point.y - start->y, dz), false);
    }
    const double direction = std::atan2(point.y - start->y, point.x - start->x);
    const double zero = question_.kind == want::angle ? db::real_variable(*doc_, "ANGBASE") : 0.0;
    return take_turn(normal_angle(direction - zero), 0.0);
}

bool asker::take_pick(const point3& point)
{
    result.point = point;
    result.has_point = true;
    result.object = object_at(*doc_, point);
    return finish(result.object ? RTNORM : RTERROR);
}

bool asker::take_object(db::object_id id, const std::optional<point3>& at)
{
    result.object = id;
    if (id)
        result.point = at ? *at : some_point_on(db::database_of(*doc_), id);
    result.has_point = at.has_value();
    return finish(id ? RTNORM : RTERROR);
}

// "#1F", "#1F 10,20", "#last", "last".
bool asker::take_handle(std::string_view text)
{
    const std::size_t gap = text.find(' ');
    std::optional<point3> at;
    if (gap != std::string_view::npos) {
        at = parse_point(text.substr(gap + 1), reading_rules_of(*doc_));
        if (!at)
            return wrong();
    }
    return take_object(object_by_text(*doc_, text.substr(0, gap)), at);
}

bool asker::take_selection_text(std::string_view text)
{
    if (text.front() == '#') {
        for (const std::string_view name : split_blanks(text)) {
            const db::object_id id = object_by_text(*doc_, name);
            if (!id)
                return wrong();
            result.objects.push_back(id);
        }
        return finish(RTNORM);
    }
    if (const std::optional<point3> point = parse_point(text, reading_rules_of(*doc_))) {
        result.point = *point;
        result.has_point = true;
        return finish(RTNORM);
    }
    result.text = text; // a word of the selection itself
    return finish(RTNORM);
}

bool asker::feed_value(const resbuf* atoms)
{
    if (!all_finite(atoms))
        return wrong();
    db::database& db = db::database_of(*doc_);
    if (atoms->restype == RTENAME) {
        const db::object_id id = object_of_name(db, atoms->resval.rlname);
        if (question_.kind == want::object)
            return take_object(id, point_in(atoms->rbnext, 0.0));
        if (question_.kind != want::selection || !id)
            return wrong();
        result.objects.push_back(id);
        return finish(RTNORM);
    }
    if (atoms->restype == RTPICKS) {
        if (question_.kind != want::selection)
            return wrong();
        if (!db::is_set(db, atoms->resval.rlname))
            return wrong();
        result.objects = db::set_members(db, atoms->resval.rlname);
        return finish(RTNORM);
    }
    const double elevation = db::real_variable(*doc_, "ELEVATION");
    if (const std::optional<point3> point = point_in(atoms, elevation)) {
        if (question_.kind == want::object)
            return take_pick(*point);
        if (question_.kind == want::selection) {
            result.point = *point;
            result.has_point = true;
            return finish(RTNORM);
        }
        if (question_.kind == want::point || measures())
            return take_point(*point);
        if (question_.kind == want::word || question_.kind == want::text) {
            result.has_point = true;
            result.point = *point;
            return take_text(lisp_point(point->data()));
        }
        return wrong();
    }
    if (atoms->rbnext)
        return wrong();
    if (atoms->restype == RTSTR)
        return feed_text(atoms->resval.rstring ? atoms->resval.rstring : "");
    const std::optional<double> number = number_in(*atoms);
    if (!number)
        return wrong();
    if ((atoms->restype == RTANG || atoms->restype == RTORINT) && !first_ &&
        (question_.kind == want::angle || question_.kind == want::orientation)) {
        return take_turn(*number, *number);
    }
    if (question_.kind == want::distance || question_.kind == want::real || question_.kind == want::integer)
        return first_ ? wrong() : take_number(*number, is_whole(*atoms) || *number == std::floor(*number));
    return feed_text(number_text(*atoms, question_.kind));
}

// ---- the user -------------------------------------------------------------------------------------

void show_prompt(std::string_view prompt)
{
    if (history_at_line_start() && prompt.starts_with('\n'))
        prompt.remove_prefix(1);
    history(prompt);
}

bool run_in_place_of_answer(document& doc, const question& what, std::string_view given)
{
    // A text may begin with any letter.
    const bool takes_any = what.kind == want::text || what.kind == want::word || what.rules & RSG_OTHER;
    return !takes_any && trimmed(given).starts_with('\'') && run_transparent(doc, given);
}

std::optional<input> user_input(document& doc, const question& what, std::string_view prompt)
{
    const std::optional<std::string> line = dialogs::wait_for_answer(prompt, dialogs::loop::prompt);
    if (!line || same_text(trimmed(*line), "^C"))
        return input::cancelled();
    const std::string_view bare = trimmed(*line);
    if (run_in_place_of_answer(doc, what, bare))
        return std::nullopt;
    const bool is_lisp = bare.starts_with('(') || (bare.size() > 1 && bare.front() == '!');
    if (!is_lisp)
        return input::of_text(*line);
    list_ptr value;
    if (!lisp::answer_value(doc, bare, &value))
        return std::nullopt;
    return input::of_value(std::move(value));
}

answer ask_user(document& doc, const question& what)
{
    asker asking(doc, what);
    for (;;) {
        const std::string prompt = asking.prompt();
        show_prompt(prompt);
        const std::optional<input> given = user_input(doc, asking.asked(), prompt);
        if (!given)
            continue;
        if (asking.feed(*given))
            return std::move(asking.result);
        if (!asking.message.empty())
            history_line(asking.message);
    }
}

} // namespace host::commandline

// draw_text.cpp: TEXT. What the last text looked like is kept with the drawing, so that an empty first
// answer goes on in the next line under it. A program gives one line a command; a user as many as he
// likes.
#include <array>
#include <cmath>

#include "host/commandline/draw_commands.h"
#include "host/commandline/new_objects.h"
#include "host/commandline/text_styles.h"
#include "host/core/document.h"
#include "host/core/text.h"
#include "host/database/sysvars.h"

namespace host::commandline
{

namespace
{

// Distance of lines of text in heights.
constexpr double LINE_STEP = 5.0 / 3.0;

struct justification {
    std::string_view words;   // short and long name, as answers give them
    int horizontal, vertical; // groups 72 and 73
    std::string_view place;   // what the prompt asks for
};

constexpr std::array<justification, 15> JUSTIFICATIONS{{
    {"Left", 0, 0, "start point of text"},
    {"Center", 1, 0, "center point of text"},
    {"Right", 2, 0, "right endpoint of text baseline"},
    {"Align,A", 3, 0, "first endpoint of text baseline"},
    {"Middle", 4, 0, "middle point of text"},
    {"Fit", 5, 0, "first endpoint of text baseline"},
    {"TL,TLeft", 0, 3, "top-left point of text"},
    {"TC,TCenter", 1, 3, "top-center point of text"},
    {"TR,TRight", 2, 3, "top-right point of text"},
    {"ML,MLeft", 0, 2, "middle-left point of text"},
    {"MC,MCenter", 1, 2, "middle-center point of text"},
    {"MR,MRight", 2, 2, "middle-right point of text"},
    {"BL,BLeft", 0, 1, "bottom-left point of text"},
    {"BC,BCenter", 1, 1, "bottom-center point of text"},
    {"BR,BRight", 2, 1, "bottom-right point of text"},
}};
constexpr int ALIGNED = 3, FIT = 5;

struct text_place {
    explicit text_place(document&) {}
    bool any = false;
    std::string style;
    justification how = JUSTIFICATIONS[0];
    point3 at, second; // second: of aligned and fit text
    double height = 0.0, rotation = 0.0;
    double dropped = 0.0; // how far the next line is below `at`
};

// Long names of the list above ("TLeft") as well as the short ones; "Aligned" too.
std::optional<justification> justification_of(std::string_view text)
{
    if (text.starts_with('_'))
        text.remove_prefix(1);
    for (const justification& j : JUSTIFICATIONS) {
        const std::size_t comma = j.words.find(',');
        const std::string_view first = j.words.substr(0, comma);
        const std::string_view other =
            comma == std::string_view::npos ? first.substr(0, 1) : j.words.substr(comma + 1);
        if (same_text(text, first) || same_text(text, other))
            return j;
    }
    if (same_text(text, "Aligned"))
        return JUSTIFICATIONS[ALIGNED];
    return std::nullopt;
}

constexpr std::string_view WORDS =
    "Align Aligned Fit Left Center Middle Right TL TC TR ML MC MR BL BC BR TLeft "
    "TCenter TRight MLeft MCenter MRight BLeft BCenter BRight";

point3 moved(const point3& p, double direction, double distance)
{
    return {p.x + distance * std::cos(direction), p.y + distance * std::sin(direction), p.z};
}

double direction(const point3& from, const point3& to)
{
    return normal_angle(std::atan2(to.y - from.y, to.x - from.x));
}

bool between_points(const justification& j)
{
    return j.horizontal == ALIGNED || j.horizontal == FIT;
}

// The base line's start, and what else follows from the alignment, comes with the object.
void place_line(command_io& io, text_place& place, std::string_view text)
{
    const double down = place.rotation - 1.5707963267948966;
    const point3 anchor = moved(place.at, down, place.dropped);
    const point3 second = moved(place.second, down, place.dropped);
    double height = place.height;
    if (!text.empty()) { // else only the place is taken
        const text_style style = text_style_of(io.data(), place.style);
        const bool plain = place.how.horizontal == 0 && place.how.vertical == 0;
        db::database& db = io.data();
        db::group_list groups = begin_object(io.doc(), "TEXT");
        add_point(groups, 10, anchor);
        add_real(groups, 40, height);
        add_text(db, groups, 1, text);
        add_real(groups, 50, place.rotation);
        add_real(groups, 41, style.width);
        add_real(groups, 51, style.oblique);
        add_text(db, groups, 7, place.style);
        add_int(groups, 71, style.generation);
        add_int(groups, 72, place.how.horizontal);
        add_point(groups, 11, plain ? point3{} : between_points(place.how) ? second : anchor);
        add_int(groups, 73, place.how.vertical);
        const db::object_id made = make_object(io, std::move(groups));
        height = db::real_of(db.at(made).groups, 40, height);
    }
    place.dropped += height * LINE_STEP;
}

class text_dialogue
{
public:
    explicit text_dialogue(command_io& io) : io_(io), place_(io.doc().part<text_place>()) {}

    task<> run()
    {
        const bool goes_on = co_await ask_start();
        if (!goes_on) {
            co_await ask_height();
            co_await ask_rotation();
            place_.any = true;
            place_.dropped = 0.0;
        }
        co_await ask_lines();
    }

private:
    // True: under the last text, with all that it had.
    task<bool> ask_start();
    task<> ask_points(justification how);
    task<> ask_height();
    task<> ask_rotation();
    task<answer> ask_line();
    task<> ask_lines();
    task<> ask_style();

    command_io& io_;
    text_place& place_;
    text_place next_{io_.doc()}; // what is being asked; taken over when the height is known
};

task<> text_dialogue::ask_style()
{
    const answer name = co_await io_.ask(ask_text(with_default("\nEnter style name", next_.style)));
    if (name.none())
        co_return;
    if (!io_.data().record("STYLE", name.text)) {
        io_.refuse("Cannot find text style \"" + name.text + "\".");
        co_return;
    }
    next_.style = name.text;
    db::set_text(io_.doc(), "TEXTSTYLE", name.text);
}

task<> text_dialogue::ask_points(justification how)
{
    next_.how = how;
    question first = ask_point("\nSpecify " + std::string(how.place) + ": ");
    first.with(RSG_NONULL);
    const answer at = co_await io_.ask(std::move(first));
    next_.at = at.point;
    if (!between_points(how))
        co_return;
    question other = ask_point("\nSpecify second endpoint of text baseline: ");
    other.with(RSG_NONULL).from(next_.at);
    const answer second = co_await io_.ask(std::move(other));
    next_.second = second.point;
    next_.rotation = direction(next_.at, next_.second);
}

task<bool> text_dialogue::ask_start()
{
    next_.style = db::text_variable(io_.doc(), "TEXTSTYLE");
    for (;;) {
        question q = ask_point("\nSpecify start point of text or [Justify/Style]: ",
                               "Justify Style " + std::string(WORDS));
        if (!place_.any)
            q.with(RSG_NONULL);
        const answer first = co_await io_.ask(std::move(q));
        if (first.none())
            co_return true;
        if (first.ok()) {
            next_.at = first.point;
            co_return false;
        }
        if (first.is("Style")) {
            co_await ask_style();
            continue;
        }
        std::optional<justification> how = justification_of(first.text);
        if (first.is("Justify")) {
            question words(want::key_word,
                           "\nEnter an option [Left/Align/Fit/Center/Middle/Right/TL/TC/TR/ML/MC/MR/"
                           "BL/BC/BR]: ");
            words.keys(WORDS).with(RSG_NONULL);
            const answer word = co_await io_.ask(std::move(words));
            how = justification_of(word.text);
        }
        co_await ask_points(how.value_or(JUSTIFICATIONS[0]));
        co_return false;
    }
}

task<> text_dialogue::ask_height()
{
    const double fixed = text_style_of(io_.data(), next_.style).height;
    next_.height = fixed;
    if (fixed == 0.0 && next_.how.horizontal != ALIGNED) {
        const double before = db::real_variable(io_.doc(), "TEXTSIZE");
        question q(want::distance, with_default("\nSpecify height", length_text(io_.doc(), before)));
        q.with(RSG_NOZERO | RSG_NONEG).from(next_.at);
        const answer height = co_await io_.ask(std::move(q));
        next_.height = height.ok() ? height.real : before;
        db::set_real(io_.doc(), "TEXTSIZE", next_.height);
    }
}

task<> text_dialogue::ask_rotation()
{
    if (!between_points(next_.how)) {
        question q(want::orientation,
                   with_default("\nSpecify rotation angle of text", angle_text(io_.doc(), place_.rotation)));
        q.from(next_.at);
        const answer angle = co_await io_.ask(std::move(q));
        next_.rotation = angle.ok() ? angle.real : place_.rotation;
    }
    place_ = next_;
}

// Programs give place, height, rotation and line whether or not the style has a height and whether or not
// two points have given the rotation. One value too many puts the point that shows the rotation here: it is
// not the line. Where the style has a height, what was taken for the rotation was the height.
task<answer> text_dialogue::ask_line()
{
    for (;;) {
        question q = ask_text("\nEnter text: ");
        q.free_text();
        answer line = co_await io_.ask(std::move(q));
        if (!line.has_point)
            co_return line;
        if (!between_points(place_.how) && text_style_of(io_.data(), place_.style).height > 0.0)
            place_.rotation = direction(place_.at, line.point);
    }
}

task<> text_dialogue::ask_lines()
{
    for (;;) {
        const answer line = co_await ask_line();
        if (line.none() && io_.is_typed())
            break;
        place_line(io_, place_, line.text);
        if (!io_.is_typed())
            break;
    }
}

} // namespace

task<> text_command(command_io& io)
{
    text_dialogue dialogue(io);
    co_await dialogue.run();
}

} // namespace host::commandline

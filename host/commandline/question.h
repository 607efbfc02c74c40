// question.h: one prompt, what it takes, and what an answer to it means. The same rules serve prompts of
// programs and of commands, and answers typed by a user, given by LISP or sent by a program.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/commandline/answers.h"
#include "host/core/resbuf.h"
#include "host/database/database.h"

namespace host::commandline
{

enum class want {
    point,
    distance,
    angle,       // from ANGBASE
    orientation, // from east
    real,
    integer,
    key_word,
    word,      // a text that a blank ends
    text,      // a text with blanks
    object,    // a pick
    selection, // one answer at "Select objects:"
};

struct question {
    want kind = want::point;
    std::string prompt;
    std::string key_words;
    int rules = 0; // RSG_... bits of hostapi/adsdef.h
    std::optional<point3> base;
    bool is_free_text = false; // of TEXT or an attribute: "\\" of a program is a letter, while TEXTEVAL is 0

    question(want what, std::string_view text) : kind(what), prompt(text) {}
    question& keys(std::string_view list)
    {
        key_words = list;
        return *this;
    }
    question& with(int bits)
    {
        rules |= bits;
        return *this;
    }
    question& free_text()
    {
        is_free_text = true;
        return *this;
    }
    question& from(const point3& point)
    {
        base = point;
        return *this;
    }
};

// status: RTNORM with a value, RTNONE (Enter), RTKWORD with `text`, RTCAN, RTERROR: a pick hit nothing.
struct answer {
    int status = RTCAN;
    point3 point;      // also where an object was picked
    double real = 0.0; // distance, angle (radians, 0 to two pi), real
    double turn = 0.0; // an angle with the sign and the turns that were typed
    int integer = 0;
    std::string text;                   // key word or text
    db::object_id object = 0;           // of a pick
    std::vector<db::object_id> objects; // of a selection, when the answer names them
    bool has_point = false;

    bool ok() const { return status == RTNORM; }
    bool none() const { return status == RTNONE; }
    bool is(std::string_view word) const { return status == RTKWORD && text == word; }
};

// An answer before it is understood: a line of text, or a value (an atom, or the atoms of a list).
struct input {
    bool is_text = true;
    bool cancel = false;
    std::string text;
    list_ptr value;

    static input of_text(std::string_view line);
    static input of_value(list_ptr list); // a text value becomes a text; a list loses its outer marks
    static input cancelled();
    std::string shown() const; // as it stands behind the prompt
};

// A prompt that is being answered. Lengths and angles may take two points, one after the other.
class asker
{
public:
    asker(document& doc, question what) : doc_(&doc), question_(std::move(what)) {}

    std::string prompt() const;
    const question& asked() const { return question_; }
    // True when the answer is complete; else `message` says what was wrong (it may be empty), and the
    // prompt is to be shown again.
    bool feed(const input& given);
    answer result;
    std::string message;

private:
    bool refuse(std::string_view why);
    bool wrong();
    bool finish(int status);
    bool finish_with_text(std::string_view text); // a key word, or any text where that is taken
    bool feed_text(std::string_view text);
    bool feed_value(const resbuf* atoms);
    bool take_key_word(std::string_view text);
    std::string_view refusal_of_value(double value) const;
    bool take_turn(double radians, double typed);
    bool take_number(double value, bool whole);
    bool take_point(const point3& point);
    bool take_pick(const point3& point);
    bool take_object(db::object_id id, const std::optional<point3>& at);
    bool take_handle(std::string_view text);
    bool take_selection_text(std::string_view text);
    bool take_plain(std::string_view text);
    bool take_text(std::string_view text);
    bool measures() const;

    document* doc_;
    question question_;
    std::optional<point3> first_; // of two points
    bool understood_ = false;     // the last answer was a value of the kind that is wanted, but one refused
};

// Asks the user by the stream of answers until the answer is right: RTCAN on ^C and when the answers have
// run out.
answer ask_user(document& doc, const question& what);
// The prompt in the history. One line feed in front is left out at the start of a line, where the answer
// before has already ended it.
void show_prompt(std::string_view prompt);
// "'NAME" of a command, where no text is asked for: runs it, or tells that it may not run here. False: it is
// an answer as any other.
bool run_in_place_of_answer(document& doc, const question& what, std::string_view given);
// One line of the user for a prompt that has been shown, as an input; LISP in it is evaluated. Nothing:
// a command was given in its place, or the LISP failed: ask again.
std::optional<input> user_input(document& doc, const question& what, std::string_view prompt);

} // namespace host::commandline

// inputs.cpp: the prompts of programs: acedInitGet and the acedGet... calls.
#include <cstring>

#include "host/commandline/pending_rules.h"
#include "host/commandline/question.h"
#include "host/core/document.h"
#include "host/core/trace.h"
#include "host/database/sysvars.h"

namespace host::commandline
{

namespace
{

struct rules_for_next {
    int bits = 0;
    std::string key_words;
};
rules_for_next next_rules;
std::string last_input; // of the last prompt that was answered by a key word

constexpr int EMPTY_ANSWER = 52; // ERRNO

} // namespace

void apply_pending_rules(question& what)
{
    last_input.clear();
    const rules_for_next rules = std::move(next_rules);
    next_rules = {};
    what.rules |= rules.bits;
    what.key_words = rules.key_words;
}

void drop_pending_rules()
{
    last_input.clear();
    next_rules = {};
}

void note_input(const answer& given)
{
    last_input = given.status == RTKWORD ? given.text : "";
    if (given.status == RTNONE)
        db::set_errno(EMPTY_ANSWER);
}

void copy_text(char* into, const std::string& text)
{
    const std::size_t length = std::min<std::size_t>(text.size(), ADS_TEXT_SIZE - 1);
    std::memcpy(into, text.data(), length);
    into[length] = '\0';
}

std::optional<point3> base_of(const double* base)
{
    return base ? std::optional(point3::of(base)) : std::nullopt;
}

namespace
{

answer ask_for(want kind, const double* base, const char* prompt)
{
    question what(kind, prompt ? prompt : "");
    apply_pending_rules(what);
    what.base = base_of(base);
    const answer given = ask_user(current_document(), what);
    note_input(given);
    return given;
}

int ask_point_for(const char* name, const double* base, const char* prompt, double* value)
{
    trace_line t(name);
    t.point(base).text(prompt);
    const answer given = ask_for(want::point, base, prompt);
    if (given.ok())
        std::memcpy(value, given.point.data(), sizeof(ads_point));
    return t.status(given.status);
}

int ask_measure(const char* name, want kind, const double* base, const char* prompt, double* value)
{
    trace_line t(name);
    t.point(base).text(prompt);
    const answer given = ask_for(kind, base, prompt);
    if (given.ok())
        *value = given.real;
    return t.status(given.status);
}

} // namespace

} // namespace host::commandline

using namespace host::commandline;
using host::trace_line;

extern "C" {

int acedInitGet(int rules, const char* key_words)
{
    trace_line t("acedInitGet");
    t.integer(rules).text(key_words);
    next_rules = {rules, key_words ? key_words : ""};
    return RTNORM;
}

int acedGetInt(const char* prompt, int* value)
{
    trace_line t("acedGetInt");
    t.text(prompt);
    const answer given = ask_for(want::integer, nullptr, prompt);
    if (given.ok())
        *value = given.integer;
    return t.status(given.status);
}

int acedGetReal(const char* prompt, ads_real* value)
{
    trace_line t("acedGetReal");
    t.text(prompt);
    const answer given = ask_for(want::real, nullptr, prompt);
    if (given.ok())
        *value = given.real;
    return t.status(given.status);
}

int acedGetDist(const ads_point base, const char* prompt, ads_real* value)
{
    return ask_measure("acedGetDist", want::distance, base, prompt, value);
}

int acedGetAngle(const ads_point base, const char* prompt, ads_real* value)
{
    return ask_measure("acedGetAngle", want::angle, base, prompt, value);
}

int acedGetOrient(const ads_point base, const char* prompt, ads_real* value)
{
    return ask_measure("acedGetOrient", want::orientation, base, prompt, value);
}

int acedGetPoint(const ads_point base, const char* prompt, ads_point value)
{
    return ask_point_for("acedGetPoint", base, prompt, value);
}

int acedGetCorner(const ads_point base, const char* prompt, ads_point value)
{
    return ask_point_for("acedGetCorner", base, prompt, value);
}

int acedGetKword(const char* prompt, char* word)
{
    trace_line t("acedGetKword");
    t.text(prompt);
    word[0] = '\0';
    if (next_rules.key_words.empty() && !(next_rules.bits & RSG_OTHER)) {
        drop_pending_rules();
        return t.status(RTERROR); // no answer could ever be right
    }
    const answer given = ask_for(want::key_word, nullptr, prompt);
    if (given.ok())
        copy_text(word, given.text);
    return t.status(given.status);
}

int acedGetString(int with_blanks, const char* prompt, char* text)
{
    trace_line t("acedGetString");
    t.integer(with_blanks).text(prompt);
    drop_pending_rules(); // a text has no rules
    text[0] = '\0';
    const answer given = ask_for(with_blanks ? want::text : want::word, nullptr, prompt);
    if (given.status == RTCAN)
        return t.status(RTCAN);
    copy_text(text, given.text);
    return t.status(RTNORM);
}

int acedGetInput(char* word)
{
    copy_text(word, last_input);
    return RTNORM;
}
}

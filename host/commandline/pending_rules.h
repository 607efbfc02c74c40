// pending_rules.h: what acedInitGet has set for the next prompt of a program, shared by the prompts for
// values and for objects.
#pragma once

#include <optional>
#include <string>

#include "host/commandline/question.h"

namespace host::commandline
{

// A new prompt begins: the rules and key words move into the question, or are dropped, and are gone
// afterwards. What acedGetInput gave of the prompt before is gone too.
void apply_pending_rules(question& what);
void drop_pending_rules();
// Keeps the key word for acedGetInput, and sets ERRNO on an empty answer.
void note_input(const answer& given);
// Into a text of ADS_TEXT_SIZE bytes, cut to fit.
void copy_text(char* into, const std::string& text);
std::optional<point3> base_of(const double* base); // null: none

} // namespace host::commandline

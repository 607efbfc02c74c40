// tools_run.h: any bytes as one run of a drafting tool in a drawing full of odd objects, with all that must
// hold behind it. Shared by the reader of the corpus and by the run with inputs of chance.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// What the bytes stand for: a LISP call of the module, settings made in front of it, and the answers.
struct tool_input {
    int operation = 0;
    std::string settings;     // LISP forms
    long break_after = 0;     // poll that is answered by the break key; 0: none
    long refused_request = 0; // of memory by the module, counted from 1; 0: none
    std::string call;
    std::string answers; // UTF-8, a line each
};

// The first byte chooses the operation, the next three the settings, then come the values of a call
// that takes some; each further byte or two is an answer.
tool_input tool_input_of(std::string_view bytes, int object_count);

// Runs it in a new drawing and answers what the user saw. Prints the input and aborts where a rule is broken:
// the heap, open views, host variables and objects are as they should be afterwards, and every object is
// whole and finite.
std::string run_tool(std::string_view bytes);
// The input that ran last, to standard error.
void print_tool_input();

// run.h: "zentrik run": programs and expressions over a drawing, without a window.
#pragma once

#include <string>
#include <vector>

namespace app
{

// Exit statuses of the program.
constexpr int status_done = 0;
constexpr int status_failed = 1; // a LISP error that nothing caught, or a file that failed
constexpr int status_usage = 2;
constexpr int status_no_answers = 3; // a prompt found no answer left

struct step {
    bool is_program;  // a file of LISP; else an expression
    std::string text; // its path, or the expression (UTF-8)
};

struct run_request {
    std::string drawing;       // empty: a new, unnamed one
    std::string output;        // empty: the drawing isn't saved at the end
    std::string answers = "-"; // file; "-" is standard input
    std::string trace;
    bool with_module = true;
    std::vector<step> steps; // in the order in which they run
};

int run(const run_request& request);

} // namespace app

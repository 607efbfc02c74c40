// Any bytes as a LISP program, those behind the first zero byte as answers. What was read prints so that it
// reads as the same again; what is run ends, in a value or in a message, and leaves nothing on the heap.
#include <sys/time.h>

#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "host/core/console.h"
#include "host/core/document.h"
#include "host/core/heap.h"
#include "host/core/session.h"
#include "host/lisp/api.h"
#include "host/lisp/builtins.h"
#include "host/lisp/interpreter.h"
#include "host/lisp/printer.h"
#include "host/lisp/reader.h"

using namespace host;

static void expect(bool holds, const char* what)
{
    if (holds)
        return;
    std::fprintf(stderr, "lisp_fuzz: %s\n", what);
    std::abort();
}

static std::string printed_again(lisp::interpreter& l, const std::string& text)
{
    try {
        lisp::reader forms(l, text, "printed");
        lisp::value form, more;
        expect(forms.next(&form), "what was printed is no form");
        expect(!forms.next(&more), "what was printed is more than a form");
        return lisp::prin1_text(form);
    } catch (const lisp::lisp_error& e) {
        return "error: " + e.message;
    }
}

static void read_and_print(lisp::interpreter& l, std::string_view text)
{
    try {
        lisp::reader forms(l, text, "fuzz.lsp");
        for (lisp::value form; forms.next(&form);) {
            const std::string once = lisp::prin1_text(form), twice = printed_again(l, once);
            if (once != twice)
                std::fprintf(stderr, "%s\n%s\n", once.c_str(), twice.c_str());
            expect(once == twice, "printed and read again it is something else");
        }
    } catch (const lisp::lisp_error& e) {
        expect(!e.message.empty(), "a refusal without a message");
    }
}

// Programs of chance must not write files, start programs or run commands that do; and what they put on the
// blackboard would outlive their drawing.
static void take_away_the_machine(lisp::interpreter& l)
{
    for (const auto table :
         {lisp::file_table(), lisp::vl_file_table(), lisp::system_table(), lisp::command_table()})
        for (const lisp::builtin& b : table)
            l.intern(b.name)->bound = lisp::value::nil();
    for (const char* name : {"load", "autoload", "setenv", "vl-bb-set"})
        l.intern(name)->bound = lisp::value::nil();
}

// The break key is pressed again and again once a program has run for too long, in its *error* function too.
static void press_break_after(int milliseconds)
{
    std::signal(SIGVTALRM, [](int) { request_break(); });
    const timeval time{milliseconds / 1000, milliseconds % 1000 * 1000L};
    const itimerval timer{time, time};
    setitimer(ITIMER_VIRTUAL, &timer, nullptr);
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const std::size_t zero = bytes.find('\0');
    const std::string_view program = bytes.substr(0, zero);
    const std::size_t blocks = heap_live_blocks(), views = live_views();
    std::string history;
    capture_history(&history);
    answers_from_text(zero == std::string_view::npos ? "" : bytes.substr(zero + 1));
    document& doc = open_document();
    lisp::interpreter& l = lisp::interpreter_of(doc);
    read_and_print(l, program);
    take_away_the_machine(l);
    press_break_after(200);
    const lisp::outcome outcome = lisp::evaluate_text(doc, program, "fuzz.lsp");
    press_break_after(0);
    clear_break();
    expect(outcome.how != lisp::ending::error || !outcome.message.empty() || outcome.reported,
           "an error without a message");
    close_all_documents();
    capture_history(nullptr);
    expect(heap_live_blocks() == blocks, "something is left on the heap");
    expect(live_views() == views, "an object is left open");
    return 0;
}

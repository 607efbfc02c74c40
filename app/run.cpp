#include "app/run.h"

#include "app/setup.h"
#include "host/commandline/commands.h"
#include "host/core/console.h"
#include "host/core/document.h"
#include "host/core/module.h"
#include "host/core/text.h"
#include "host/core/trace.h"
#include "host/files/paths.h"
#include "host/lisp/api.h"

namespace app
{

namespace
{

int failed(const std::string& why)
{
    host::complain(why);
    return status_failed;
}

// Everything that has to be open before the first step.
int prepare(const run_request& request)
{
    if (!request.trace.empty() && !host::trace_to(request.trace))
        return failed("cannot write " + request.trace);
    if (!host::answers_from_file(request.answers))
        return failed("cannot read " + request.answers);
    host::open_document();
    if (!request.drawing.empty()) {
        std::string error;
        if (!host::commandline::open_drawing(host::current_document(),
                                             host::cp1252_with_escapes(request.drawing), &error))
            return failed(error);
    }
    if (request.with_module && (!load_product_module() || !load_product_commands()))
        return status_failed;
    // What the module has handed to the command line when it was loaded.
    return host::commandline::run_command_text() ? status_done : status_failed;
}

int run_step(const step& s)
{
    using host::lisp::ending;
    if (!host::has_document())
        return failed("no drawing is open for: " + host::cp1252_with_escapes(s.text));
    host::document& doc = host::current_document();
    host::lisp::outcome result;
    if (s.is_program) {
        const std::string path = host::real_path(host::cp1252_with_escapes(s.text));
        result = host::lisp::load_program(doc, path);
    } else {
        result = host::lisp::evaluate_typed(doc, host::cp1252_with_escapes(s.text));
        if (result.how == ending::done && !result.printed.empty()) // (princ) shows nothing
            host::history_line(result.printed);
    }
    host::commandline::expression_ended();
    const bool text_ran = host::commandline::run_command_text();
    if (host::answers_ended()) {
        host::complain("the answers ran out at the prompt: " + host::answers_ended_at());
        return status_no_answers;
    }
    const bool ended_well = result.how != ending::error && result.how != ending::stopped && text_ran;
    return ended_well ? status_done : status_failed;
}

int finish(const run_request& request, int status)
{
    if (!request.output.empty() && status == status_done) {
        std::string error;
        if (!host::commandline::save_drawing(host::current_document(),
                                             host::cp1252_with_escapes(request.output), &error))
            status = failed(error);
    } else if (!request.output.empty()) {
        host::complain("not saved because of the failure: " + request.output);
    }
    return status == status_done && host::file_failed() ? status_failed : status;
}

} // namespace

int run(const run_request& request)
{
    int status = prepare(request);
    for (std::size_t i = 0;
         i < request.steps.size() && status == status_done && !host::commandline::quit_requested(); ++i)
        status = run_step(request.steps[i]);
    if (host::has_document())
        status = finish(request, status);
    if (!host::history_at_line_start())
        host::history("\n");
    host::unload_all_modules();
    host::close_all_documents();
    host::trace_to({});
    host::flush_history();
    return status;
}

} // namespace app

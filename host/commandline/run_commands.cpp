// run_commands.cpp: starting, feeding and ending of commands. A drawing has at most one command open: one
// that a program has begun and not finished. Values of a program go to it first; when there is none, the
// next value names a command.
#include <cstdarg>
#include <deque>
#include <memory>

#include "host/commandline/command_io.h"
#include "host/commandline/commands.h"
#include "host/commandline/open_drawings.h"
#include "host/commandline/settings.h"
#include "host/core/command_queue.h"
#include "host/core/console.h"
#include "host/core/context.h"
#include "host/core/document.h"
#include "host/core/module.h"
#include "host/core/reactors.h"
#include "host/core/session.h"
#include "host/core/text.h"
#include "host/core/trace.h"
#include "host/database/entities.h"
#include "host/database/sysvars.h"
#include "host/dialogs/message_loop.h"
#include "host/lisp/api.h"

namespace host::commandline
{

namespace
{

enum class ending { waits, done, cancelled, failed };

struct running_command {
    command_io io;
    task<> body;
    run_context context;
    bool executing = false;
    running_command(document& doc, std::string name, int flags, program_values* queue, bool shown)
        : io(doc, std::move(name), queue, shown),
          context(flags & COMMAND_APPLICATION ? run_context::application : run_context::document)
    {
    }
};

// What a drawing keeps of its command line.
struct open_command {
    explicit open_command(document&) {}
    std::unique_ptr<running_command> running;
    int of_modules = 0;     // commands of modules that work on it now
    std::string last_typed; // repeated by Enter
};

program_values sent;

std::unique_ptr<running_command>& open_in(document& doc)
{
    return doc.part<open_command>().running;
}

// Tells how a command has ended, lets it go and does what it has left for afterwards. The drawing may be
// closed then.
ending finish(std::unique_ptr<running_command> gone)
{
    ending how = ending::done;
    try {
        gone->body.result();
    } catch (const cancelled_by_user&) {
        how = ending::cancelled;
        clear_break();
        gone->io.say("*Cancel*");
    } catch (const command_failed& failure) {
        how = ending::failed;
        history_line(failure.message);
    }
    const std::string name = gone->io.name();
    const std::function<void()> afterwards = std::move(gone->io.afterwards);
    gone->body = {};
    tell_command(how == ending::done        ? command_event::ended
                 : how == ending::cancelled ? command_event::cancelled
                                            : command_event::failed,
                 name);
    if (afterwards)
        afterwards();
    dialogs::run_paints();
    close_idle_drawings();
    return how;
}

ending after_step(document& doc)
{
    std::unique_ptr<running_command>& running = open_in(doc);
    running->executing = false;
    return running->body.done() ? finish(std::move(running)) : ending::waits;
}

ending begin(document& doc, const command_entry& entry, const std::string& name, program_values* queue,
             bool shown)
{
    tell_command(command_event::will_start, name);
    if (!(entry.flags & COMMAND_NO_STEP))
        db::database_of(doc).command_boundary(name);
    auto& running = open_in(doc);
    running = std::make_unique<running_command>(doc, name, entry.flags, queue, shown);
    running->body = entry.run(running->io);
    running->executing = true;
    {
        const context_scope here(running->context);
        running->body.start();
    }
    return after_step(doc);
}

ending go_on(document& doc)
{
    running_command& running = *open_in(doc);
    running.executing = true;
    {
        const context_scope here(running.context);
        running.io.resume();
    }
    return after_step(doc);
}

void cancel_open(document& doc)
{
    if (!open_in(doc) || open_in(doc)->executing)
        return;
    open_in(doc)->io.cancel();
    go_on(doc);
}

bool is_executing(document& doc)
{
    const open_command& line = doc.part<open_command>();
    return line.of_modules > 0 || (line.running && line.running->executing);
}

// A copy, since a command may take its own group away. Session commands work on no drawing: the one in
// front may be closed under them.
ending run_module_command(document& doc, const module_command command)
{
    const bool transparent = command.flags & COMMAND_TRANSPARENT, session = command.flags & COMMAND_SESSION;
    const bool inside = is_executing(doc) || open_in(doc);
    if (is_executing(doc) && !transparent) {
        history_line("** " + command.name + " may not run while another command runs **");
        return ending::failed;
    }
    tell_command(command_event::will_start, command.name);
    if (!inside)
        db::database_of(doc).command_boundary(command.name);
    {
        const context_scope here(session ? run_context::application : run_context::document);
        const module_call call(command.owner);
        if (!session)
            ++doc.part<open_command>().of_modules;
        command.run();
        if (!session)
            --doc.part<open_command>().of_modules;
    }
    tell_command(command_event::ended, command.name);
    close_idle_drawings();
    return ending::done;
}

std::string_view bare_name(std::string_view typed)
{
    typed = trimmed(typed);
    while (!typed.empty() && std::string_view("_.-'").find(typed.front()) != std::string_view::npos)
        typed.remove_prefix(1);
    return typed;
}

std::string global_name(const command_entry& entry)
{
    const std::string_view words = entry.words;
    return std::string(words.substr(0, words.find(' ')));
}

void tell_unknown(std::string_view typed)
{
    history_line("Unknown command \"" + upper(typed) + "\".  Press F1 for help.");
}

// Built-in, of a module, or a variable's name. False: no such thing.
bool start(document& doc, std::string_view typed, program_values* queue, bool shown, ending* how)
{
    static constexpr command_entry variable = {"", set_variable_command};
    const std::string_view name = bare_name(typed);
    if (const command_entry* entry = find_command(name))
        *how = begin(doc, *entry, global_name(*entry), queue, shown);
    else if (const module_command* command = find_module_command(name))
        *how = run_module_command(doc, *command);
    else if (!name.empty() && db::get_variable(doc, name))
        *how = begin(doc, variable, upper(name), queue, shown);
    else
        return false;
    return true;
}

// Runs a command of the host at a prompt of another one, which keeps its place.
void run_inside(document& doc, const command_entry& entry)
{
    const std::string name = global_name(entry);
    tell_command(command_event::will_start, name);
    auto inner = std::make_unique<running_command>(doc, name, entry.flags, nullptr, true);
    inner->body = entry.run(inner->io);
    inner->body.start();
    finish(std::move(inner));
}

// "'NAME", also behind the other marks.
bool is_marked_transparent(std::string_view typed)
{
    typed = trimmed(typed);
    return typed.substr(0, typed.size() - bare_name(typed).size()).find('\'') != std::string_view::npos;
}

// A value that begins a call while a command waits: a command's name that cannot be its answer. "_U" is
// the key word of a prompt that has it, and a command's name only elsewhere.
bool starts_anew(document& doc, const input& in)
{
    if (!in.is_text)
        return false;
    const std::string_view name = bare_name(in.text);
    if (!find_command(name) && !find_module_command(name))
        return false;
    const bool marked = name.size() < trimmed(in.text).size();
    return marked ? !open_in(doc)->io.takes_key_word(in) : !open_in(doc)->io.takes(in);
}

// Feeds the values of one call. RTERROR when one was refused or named no command.
int run_values(std::deque<input> values)
{
    const bool had_values = !values.empty();
    while (!values.empty() && values.front().is_text && is_marked_transparent(values.front().text) &&
           (open_in(current_document()) || is_executing(current_document())) &&
           run_transparent(current_document(), values.front().text))
        values.pop_front();
    if (had_values && values.empty())
        return RTNORM;
    if (open_in(current_document()) && open_in(current_document())->executing)
        return RTERROR; // from an expression that answers a prompt of the very command
    if (values.empty()) {
        cancel_open(current_document());
        return RTNORM;
    }
    if (open_in(current_document()) && starts_anew(current_document(), values.front()))
        cancel_open(current_document());
    sent = {std::move(values), 0};
    bool failed = false;
    while (!sent.waiting.empty()) {
        document& doc = current_document();
        ending how = ending::done;
        if (open_in(doc)) {
            how = go_on(doc);
        } else {
            const input name = std::move(sent.waiting.front());
            sent.waiting.pop_front();
            if (!name.is_text || bare_name(name.text).empty())
                continue; // Enter, or what a command that has ended did not need
            const bool shown = db::int_variable(doc, "CMDECHO") != 0;
            if (!start(doc, name.text, &sent, shown, &how)) {
                tell_unknown(name.text);
                failed = true;
            }
        }
        // The rest was meant for that command: it must not act as names of others.
        if (how == ending::cancelled || how == ending::failed) {
            sent.waiting.clear();
            return how == ending::cancelled ? RTCAN : RTERROR;
        }
    }
    return failed || sent.refused ? RTERROR : RTNORM;
}

// ---- the values of acedCommand and acedCmd --------------------------------------------------

// Atoms and lists: what stands between RTLB and RTLE is one value.
std::deque<input> values_of(const resbuf* list)
{
    std::deque<input> values;
    for (const resbuf* node = list; node && node->restype != RTNONE && node->restype != 0;
         node = node->rbnext) {
        list_builder atoms;
        if (node->restype == RTLB) {
            int depth = 1;
            for (node = node->rbnext; node; node = node->rbnext) {
                depth += node->restype == RTLB ? 1 : node->restype == RTLE ? -1 : 0;
                if (depth == 0)
                    break;
                atoms.add(rb_copy_one(node));
            }
        } else {
            atoms.add(rb_copy_one(node));
        }
        values.push_back(input::of_value(list_ptr(atoms.take())));
        if (!node)
            break;
    }
    return values;
}

} // namespace

bool is_busy(document& doc)
{
    return is_executing(doc) || lisp::is_running(doc);
}

void cancel_open_command(document& doc)
{
    cancel_open(doc);
}

bool run_transparent(document& doc, std::string_view typed)
{
    const std::string_view name = bare_name(typed);
    const command_entry* entry = find_command(name);
    const module_command* command = entry ? nullptr : find_module_command(name);
    if (!entry && !command)
        return false;
    if (entry && entry->flags & COMMAND_INSIDE)
        run_inside(doc, *entry);
    else if (command && command->flags & COMMAND_TRANSPARENT)
        run_module_command(doc, *command);
    else
        history_line("** " + upper(name) + " may not be used transparently **");
    return true;
}

namespace
{

// False: an error of LISP that nothing caught.
bool run_name(document& doc, std::string_view name)
{
    const int number = doc.number();
    ending how = ending::done;
    const std::string_view bare = bare_name(name);
    if (bare.empty())
        return true;
    if (open_in(doc))
        cancel_open(doc);
    if (!document_of_number(number))
        return true;
    doc.part<open_command>().last_typed = bare;
    if (start(doc, name, nullptr, true, &how))
        return true;
    if (lisp::has_command(doc, bare)) {
        db::database_of(doc).command_boundary(upper(bare));
        const lisp::outcome out = lisp::run_command(doc, bare);
        close_idle_drawings();
        return out.how != lisp::ending::error;
    }
    tell_unknown(bare);
    return true;
}

bool run_form(document& doc, std::string_view text)
{
    const lisp::outcome out = lisp::evaluate_typed(doc, text.front() == '!' ? text.substr(1) : text);
    if (out.how == lisp::ending::done && !out.printed.empty())
        history_line(out.printed);
    // A command that the expression has left open goes on with the user's answers.
    if (has_document() && open_in(current_document())) {
        open_in(current_document())->io.hand_to_user();
        go_on(current_document());
    }
    close_idle_drawings();
    return out.how != lisp::ending::error;
}

// A line at "Command: ".
bool run_line(document& doc, std::string_view line)
{
    const std::string_view text = trimmed(line);
    if (same_text(text, "^C")) {
        history_line("*Cancel*");
        return true;
    }
    if (text.starts_with('(') || text.starts_with('!'))
        return run_form(doc, text);
    return run_name(doc, text.empty() ? std::string(doc.part<open_command>().last_typed) : std::string(text));
}

constexpr std::string_view COMMAND_PROMPT = "\nCommand: ";

} // namespace

void run_typed(document& doc, std::string_view name)
{
    run_name(doc, name);
}

void expression_ended()
{
    for (const int number : document_numbers()) {
        if (document* doc = document_of_number(number); doc && open_in(*doc)) {
            const while_current here(*doc);
            cancel_open(*doc);
        }
        if (document* doc = document_of_number(number))
            db::settle_pending(db::database_of(*doc));
    }
    close_idle_drawings();
}

bool run_command_text()
{
    bool fine = true;
    for (;;) {
        release_command_text();
        if (!has_document() || quit_requested() || answers_ended())
            return fine;
        const std::optional<std::string> input = take_command_input();
        if (!input)
            return fine;
        show_prompt(COMMAND_PROMPT);
        history(*input + "\n");
        fine = run_line(current_document(), *input) && fine;
    }
}

void run_session(document& first)
{
    bring_to_front(first);
    while (has_document() && !quit_requested()) {
        run_command_text();
        if (!has_document() || quit_requested())
            return;
        const std::string begun = take_unfinished_input();
        show_prompt(COMMAND_PROMPT);
        history(begun);
        const std::optional<std::string> line = dialogs::wait_for_answer("Command: ", dialogs::loop::prompt);
        if (!line)
            return;
        run_line(current_document(), begun + *line);
    }
}

std::vector<std::string> command_names()
{
    std::vector<std::string> names;
    for (const command_entry& entry : all_commands())
        names.push_back(global_name(entry));
    return names;
}

} // namespace host::commandline

// ---- what the module calls -------------------------------------------------------------------

namespace
{

// The pairs of acedCommand as a list: each type says how its value is passed.
resbuf* list_of_pairs(int restype, va_list values)
{
    host::list_builder list;
    for (int type = restype; type != 0 && type != RTNONE; type = va_arg(values, int)) {
        switch (host::type_of_code(type)) {
        case host::value_type::real:
            list.add(host::rb_real(type, va_arg(values, double)));
            break;
        case host::value_type::point:
            list.add(host::rb_point(type, va_arg(values, const double*)));
            break;
        case host::value_type::int16:
        case host::value_type::int32:
            list.add(host::rb_int(type, va_arg(values, int)));
            break;
        case host::value_type::text: {
            const char* text = va_arg(values, const char*);
            list.add(host::rb_text(type, text ? text : ""));
            break;
        }
        case host::value_type::name:
            list.add(host::rb_name(type, va_arg(values, const std::int32_t*)));
            break;
        default:
            list.add(host::rb_new(type));
            break;
        }
    }
    return list.take();
}

int run_list(const char* name, const resbuf* list)
{
    host::trace_line t(name);
    t.arguments(list);
    if (!host::has_document())
        return t.status(RTREJ);
    return t.status(host::commandline::run_values(host::commandline::values_of(list)));
}

} // namespace

extern "C" {

int acedCommand(int restype, ...)
{
    va_list values;
    va_start(values, restype);
    const host::list_ptr list(list_of_pairs(restype, values));
    va_end(values);
    return run_list("acedCommand", list.get());
}

int acedCmd(const resbuf* list)
{
    return run_list("acedCmd", list);
}
}

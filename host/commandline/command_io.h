// command_io.h: how a command asks. A command is a task that gets a command_io; each prompt is awaited:
//
//     const answer first = co_await io.ask(question(want::point, "Specify first point: "));
//
// A typed command is answered by the user at once. One that a program sends takes the program's values,
// and waits where they have run out; it goes on with the program's next call. A cancel comes out of the
// await as an exception, so that a command needs no code for it; what it has done up to there stays.
#pragma once

#include <coroutine>
#include <deque>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "host/commandline/question.h"
#include "host/commandline/task.h"

namespace host::commandline
{

struct cancelled_by_user {
};
struct command_failed {
    std::string message;
};

// What a program sends to commands: what is still to be taken, and how many values were refused.
struct program_values {
    std::deque<input> waiting;
    int refused = 0;
};

class command_io
{
public:
    // `queue`: the program's values, null for a typed command. Prompts and messages are written when `shown`.
    command_io(document& owner, std::string name, program_values* queue, bool shown)
        : doc_(owner), name_(std::move(name)), queue_(queue), shown_(shown)
    {
    }
    command_io(const command_io&) = delete;
    command_io& operator=(const command_io&) = delete;

    document& doc() { return doc_; }
    db::database& data() { return db::database_of(doc_); }
    const std::string& name() const { return name_; }
    bool is_typed() const { return !queue_; }

    // A message on a line of its own.
    void say(std::string_view text) const;
    // What is wrong with an answer that the command has looked up itself. A user is told, and the command
    // asks again; a program's next value was meant for another prompt, so there the command fails.
    void refuse(const std::string& why) const;

    class waiter
    {
    public:
        waiter(command_io& io, question what) : io_(io), asking_(io.doc_, std::move(what)) {}
        bool await_ready() { return advance(); }
        void await_suspend(std::coroutine_handle<> waiting);
        answer await_resume();

    private:
        friend class command_io;
        bool advance(); // true when the answer is there or the command is cancelled
        command_io& io_;
        asker asking_;
        bool cancelled_ = false;
        bool user_answers_ = false; // after a pause, until the user's answer is right
        bool prompt_shown_ = false;
    };
    waiter ask(question what) { return {*this, std::move(what)}; }

    // ---- for whoever runs the command
    bool is_waiting() const { return pending_ != nullptr; }
    // The prompt that waits, and goes on when there is an answer for it. False: it still waits.
    bool resume();
    void cancel() { cancel_requested_ = true; }
    // Whether `in` would be an answer to the prompt that waits.
    bool takes(const input& in) const;
    bool takes_key_word(const input& in) const; // one of its key words
    // Whether the program's next value is one object or more, and no text.
    bool has_object_waiting() const;
    // From here on the user answers.
    void hand_to_user()
    {
        queue_ = nullptr;
        shown_ = true;
    }
    // Run when the command has ended and is gone (it may close the drawing).
    std::function<void()> afterwards;

private:
    document& doc_;
    std::string name_;
    program_values* queue_;
    bool shown_;
    bool cancel_requested_ = false;
    waiter* pending_ = nullptr;
    std::coroutine_handle<> waiting_;
};

// The usual prompts.
question ask_point(std::string_view prompt, std::string_view key_words = {});
question ask_text(std::string_view prompt); // with blanks
question ask_word(std::string_view prompt);
// "PROMPT <default>: "
std::string with_default(std::string_view prompt, std::string_view value);

// A command of the host. `words`: its name and other names for it, blank-separated.
struct command_entry {
    const char* words;
    task<> (*run)(command_io& io);
    int flags = 0;
};
constexpr int COMMAND_NO_STEP = 1;     // makes no step of undo (UNDO itself)
constexpr int COMMAND_INSIDE = 2;      // may run at a prompt of another one: asks nothing, changes nothing
constexpr int COMMAND_APPLICATION = 4; // works on no drawing in particular
const command_entry* find_command(std::string_view name);
const std::vector<command_entry>& all_commands();

} // namespace host::commandline

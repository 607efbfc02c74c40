// command_io.cpp: the wait of a command for its next answer.
#include "host/commandline/command_io.h"

#include "host/core/console.h"
#include "host/core/session.h"
#include "host/core/text.h"
#include "host/database/sysvars.h"

namespace host::commandline
{

namespace
{

bool takes_backslash(document& doc, const question& what)
{
    return what.is_free_text && db::int_variable(doc, "TEXTEVAL") == 0;
}

} // namespace

void command_io::say(std::string_view text) const
{
    if (shown_)
        history_line(text);
}

void command_io::refuse(const std::string& why) const
{
    if (!is_typed())
        throw command_failed{name_ + ": " + why};
    say(why);
}

void command_io::waiter::await_suspend(std::coroutine_handle<> waiting)
{
    io_.pending_ = this;
    io_.waiting_ = waiting;
}

answer command_io::waiter::await_resume()
{
    if (cancelled_)
        throw cancelled_by_user();
    return std::move(asking_.result);
}

bool command_io::waiter::advance()
{
    for (;;) {
        if (io_.cancel_requested_ || break_requested()) {
            cancelled_ = true;
            return true;
        }
        const std::string prompt = asking_.prompt();
        if (io_.shown_ && !prompt_shown_)
            show_prompt(prompt);
        prompt_shown_ = true;
        std::optional<input> given;
        const bool user = !io_.queue_ || user_answers_;
        if (user) {
            given = user_input(io_.doc_, asking_.asked(), prompt);
            if (!given) {
                prompt_shown_ = false;
                continue;
            }
        } else {
            std::deque<input>& values = io_.queue_->waiting;
            if (values.empty())
                return false;
            given = std::move(values.front());
            values.pop_front();
            if (given->is_text && given->text == "\\" && !takes_backslash(io_.doc_, asking_.asked())) {
                // a pause: the next answer is the user's
                user_answers_ = true;
                continue;
            }
            if (io_.shown_) {
                history(given->shown());
                history("\n");
            }
            if (given->is_text && run_in_place_of_answer(io_.doc_, asking_.asked(), given->text)) {
                prompt_shown_ = false;
                continue;
            }
        }
        prompt_shown_ = false;
        if (given->cancel) {
            cancelled_ = true;
            return true;
        }
        if (asking_.feed(*given))
            return true;
        if (!asking_.message.empty()) {
            if (!user)
                ++io_.queue_->refused;
            if (io_.shown_ || user)
                history_line(asking_.message);
        }
    }
}

bool command_io::resume()
{
    if (!pending_ || !pending_->advance())
        return false;
    pending_ = nullptr;
    waiting_.resume();
    return true;
}

bool command_io::takes(const input& in) const
{
    if (!pending_)
        return false;
    asker trial(doc_, pending_->asking_.asked());
    return trial.feed(in);
}

bool command_io::has_object_waiting() const
{
    if (!queue_ || queue_->waiting.empty() || queue_->waiting.front().is_text)
        return false;
    const resbuf* value = queue_->waiting.front().value.get();
    return value && (value->restype == RTENAME || value->restype == RTPICKS);
}

bool command_io::takes_key_word(const input& in) const
{
    return pending_ && in.is_text && match_key_word(pending_->asking_.asked().key_words, in.text);
}

question ask_point(std::string_view prompt, std::string_view key_words)
{
    return question(want::point, prompt).keys(key_words);
}

question ask_text(std::string_view prompt)
{
    return question(want::text, prompt);
}

question ask_word(std::string_view prompt)
{
    return question(want::word, prompt);
}

std::string with_default(std::string_view prompt, std::string_view value)
{
    return std::string(prompt) + " <" + std::string(value) + ">: ";
}

} // namespace host::commandline

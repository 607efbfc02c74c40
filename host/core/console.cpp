// console.cpp: history out, answers in.
#include "host/core/console.h"

#include <cstdio>
#include <deque>
#include <iostream>
#include <vector>

#include <unistd.h>

#include "host/core/command_queue.h"
#include "host/core/text.h"

namespace host
{

namespace
{

struct history_state {
    std::string* capture = nullptr;
    bool line_start = true;
};

struct answer_state {
    std::function<std::optional<std::string>()> next;
    std::deque<std::string> put_back;
    bool ended = false;
    std::string ended_at;
    bool echoed = false; // typed at the terminal that shows the history, which has shown the line already
};

history_state out;
answer_state in;
bool any_file_failure = false;

// Lines of a text, with any kind of line end.
class text_lines
{
public:
    explicit text_lines(std::string text) : text_(std::move(text)) {}
    std::optional<std::string> operator()()
    {
        if (pos_ >= text_.size())
            return std::nullopt;
        const std::size_t end = text_.find('\n', pos_);
        std::string line = text_.substr(pos_, end == std::string::npos ? end : end - pos_);
        pos_ = end == std::string::npos ? text_.size() : end + 1;
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        return line;
    }

private:
    std::string text_;
    std::size_t pos_ = 0;
};

std::optional<std::string> line_of_input()
{
    std::string line;
    if (!std::getline(std::cin, line))
        return std::nullopt;
    if (!line.empty() && line.back() == '\r')
        line.pop_back();
    return line;
}

void start_answers(std::function<std::optional<std::string>()> next, bool echoed = false)
{
    in = {std::move(next), {}, false, {}, echoed};
}

void show_answer(std::string_view line)
{
    if (in.echoed && !out.capture) {
        out.line_start = true;
        return;
    }
    history(line);
    history("\n");
}

} // namespace

void history(std::string_view text)
{
    if (text.empty())
        return;
    const std::string bytes = utf8_of(text);
    if (out.capture)
        *out.capture += bytes;
    else
        std::fwrite(bytes.data(), 1, bytes.size(), stdout);
    out.line_start = bytes.back() == '\n';
}

void history_line(std::string_view text)
{
    if (!out.line_start)
        history("\n");
    history(text);
    history("\n");
}

bool history_at_line_start()
{
    return out.line_start;
}

void capture_history(std::string* into)
{
    flush_history();
    out.capture = into;
    out.line_start = true;
}

void flush_history()
{
    std::fflush(stdout);
}

bool answers_from_file(const std::string& path)
{
    if (path == "-") {
        start_answers(line_of_input, isatty(STDIN_FILENO) && isatty(STDOUT_FILENO));
        return true;
    }
    std::FILE* file = std::fopen(path.c_str(), "rb");
    if (!file)
        return false;
    std::string text;
    char block[65536];
    for (std::size_t n; (n = std::fread(block, 1, sizeof block, file)) > 0;)
        text.append(block, n);
    const bool failed = std::ferror(file) != 0;
    std::fclose(file);
    if (failed)
        return false;
    answers_from_text(text);
    return true;
}

void answers_from_text(std::string_view utf8)
{
    if (utf8.starts_with("\xEF\xBB\xBF"))
        utf8.remove_prefix(3);
    start_answers(text_lines(std::string(utf8)));
}

void answers_from(std::function<std::optional<std::string>()> next)
{
    start_answers(std::move(next));
}

std::optional<std::string> next_answer(std::string_view prompt)
{
    for (;;) {
        std::string line;
        if (!in.put_back.empty()) {
            line = std::move(in.put_back.front());
            in.put_back.pop_front();
            return line; // it was shown when it first came
        }
        if (std::optional<std::string> queued = take_command_input()) {
            history(*queued + "\n"); // no terminal has shown it
            return queued;
        }
        flush_history();
        std::optional<std::string> read = in.ended || !in.next ? std::nullopt : in.next();
        if (!read) {
            if (!in.ended) {
                in.ended = true;
                in.ended_at = trimmed(prompt);
            }
            history("\n");
            return std::nullopt;
        }
        if (read->starts_with(';'))
            continue;
        const std::optional<std::string> inside = cp1252_of(*read);
        if (!inside) {
            show_answer("");
            complain("the answer '" + cp1252_with_escapes(*read) +
                     "' has a character without a place in Windows-1252");
            history(prompt.substr(prompt.find_first_not_of('\n') == 1 ? 1 : 0));
            continue;
        }
        show_answer(*inside);
        return inside;
    }
}

void unread_answer(std::string line)
{
    in.put_back.push_front(std::move(line));
}
bool answers_ended()
{
    return in.ended;
}
const std::string& answers_ended_at()
{
    return in.ended_at;
}

void complain(std::string_view text)
{
    flush_history();
    const std::string bytes = "zentrik: " + utf8_of(text) + "\n";
    std::fwrite(bytes.data(), 1, bytes.size(), stderr);
}

void note_file_failure()
{
    any_file_failure = true;
}
bool file_failed()
{
    return any_file_failure;
}

} // namespace host

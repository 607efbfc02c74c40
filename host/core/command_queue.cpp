#include "host/core/command_queue.h"

#include <utility>

namespace host
{

namespace
{

std::string queued, released;

constexpr char ESCAPE = 0x1B, CTRL_C = 0x03;

// The characters of the next input, without what ends it, and the place behind that.
struct input_end {
    std::size_t length, next;
    bool cancels = false;
};

std::optional<input_end> end_of_input(std::string_view text)
{
    int depth = 0;
    bool in_string = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (c == ESCAPE || c == CTRL_C)
            return input_end{0, i + 1, true};
        if (depth == 0 && (c == '\n' || c == '\r'))
            return input_end{i, i + (text.substr(i).starts_with("\r\n") ? 2 : 1)};
        if (in_string) {
            if (c == '\\' && depth > 0) // elsewhere it parts a path
                ++i;
            else if (c == '"')
                in_string = false;
        } else if (c == '"') {
            in_string = true;
        } else if (c == '(') {
            ++depth;
        } else if (c == ')' && depth > 0) {
            --depth;
        } else if (depth == 0 && (c == ' ' || c == '\t')) {
            return input_end{i, i + 1};
        }
    }
    return std::nullopt;
}

} // namespace

void queue_command_text(std::string_view text)
{
    queued += text;
}

void release_command_text()
{
    released += std::exchange(queued, {});
}

std::optional<std::string> take_command_input()
{
    const std::optional<input_end> end = end_of_input(released);
    if (!end)
        return std::nullopt;
    std::string input = end->cancels ? "^C" : released.substr(0, end->length);
    released.erase(0, end->next);
    return input;
}

std::string take_unfinished_input()
{
    return std::exchange(released, {});
}

void clear_command_text()
{
    queued.clear();
    released.clear();
}

} // namespace host

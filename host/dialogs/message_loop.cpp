// message_loop.cpp: messages, hooks and timers.
//
// A hook may add and remove hooks, send messages and run a loop of its own. So a hook that is removed is only
// marked while any hook runs, and a message has left the queue before it is handled.
#include "host/dialogs/message_loop.h"

#include <algorithm>
#include <cstring>
#include <deque>

#include "host/core/console.h"
#include "host/core/document.h"
#include "host/core/module.h"
#include "host/core/session.h"
#include "host/core/text.h"
#include "host/core/trace.h"
#include "host/dialogs/windows.h"
#include "hostapi/ads.h"

namespace host::dialogs
{

namespace
{

constexpr int DEEPEST = 64;             // messages sent while one is handled
constexpr std::size_t LONGEST = 10'000; // messages that wait
constexpr int MOST_A_TURN = 1'000;      // messages handled in one, so that a loop comes to its answer
constexpr unsigned SHORTEST_TIMER = 10; // milliseconds
constexpr int PAUSE = 1'000;            // milliseconds that a person takes to answer
constexpr unsigned WM_KEYUP = 257;

struct hook {
    HHOOK number;
    int kind;
    HOOKPROC procedure; // null: removed
    loaded_module* owner;
};

struct timer {
    HWND window;
    std::uintptr_t id;
    unsigned period;
    std::int64_t due;
    void* procedure;
};

struct loop_state {
    std::vector<hook> hooks; // oldest first
    std::vector<HHOOK> running;
    HHOOK last_hook = 0;
    std::deque<MSG> queue;
    std::vector<timer> timers;
    std::uintptr_t last_timer = 0;
    std::int64_t passed = 0; // beside the host's clock
    int depth = 0;
    int drawing = 0;          // number of the drawing that was in front at the last turn
    std::vector<WPARAM> keys; // that no hook has swallowed
    int turns = 0;            // loops that are at work, one in the other
};

loop_state& state()
{
    static loop_state all;
    return all;
}

std::int64_t now()
{
    return clock_milliseconds() + state().passed;
}

void sweep_hooks()
{
    if (state().running.empty())
        std::erase_if(state().hooks, [](const hook& one) { return !one.procedure; });
}

// The newest hook of a kind among the first `end`.
LRESULT call_hook_before(std::size_t end, int kind, int code, WPARAM wparam, LPARAM lparam)
{
    loop_state& s = state();
    for (std::size_t i = end; i-- > 0;) {
        const hook one = s.hooks[i];
        if (one.kind != kind || !one.procedure)
            continue;
        s.running.push_back(one.number);
        const module_call inside(one.owner);
        const LRESULT answer = one.procedure(code, wparam, lparam);
        s.running.pop_back();
        return answer;
    }
    return 0;
}

LRESULT call_hooks(int kind, int code, WPARAM wparam, LPARAM lparam)
{
    const LRESULT answer = call_hook_before(state().hooks.size(), kind, code, wparam, lparam);
    sweep_hooks();
    return answer;
}

std::size_t place_of_hook(HHOOK number)
{
    const std::vector<hook>& all = state().hooks;
    for (std::size_t i = 0; i < all.size(); i++)
        if (all[i].number == number)
            return i;
    return all.size();
}

void post(HWND window, unsigned message, WPARAM wparam, LPARAM lparam)
{
    state().queue.push_back({window, message, wparam, lparam, static_cast<DWORD>(now()), 0, 0});
}

// True: a hook has swallowed it.
bool is_filtered(MSG& message, loop where)
{
    return call_hooks(WH_MSGFILTER, static_cast<int>(where), 0, reinterpret_cast<LPARAM>(&message)) != 0;
}

void handle(MSG message, loop where)
{
    if (is_filtered(message, where))
        return;
    if (message.message == WM_KEYDOWN)
        state().keys.push_back(message.wParam);
    send_message(message.hwnd, message.message, message.wParam, message.lParam);
}

bool handle_posted(loop where)
{
    if (state().queue.empty())
        return false;
    const MSG message = state().queue.front();
    state().queue.pop_front();
    handle(message, where);
    return true;
}

bool paint_next(loop where)
{
    if (windows_to_paint().empty())
        return false;
    const HWND window = windows_to_paint().front();
    MSG message{window, WM_PAINT, 0, 0, static_cast<DWORD>(now()), 0, 0};
    if (!is_filtered(message, where))
        paint_window(window);
    else
        validate(window);
    return true;
}

// Each window that waits now, once: painting may ask for more.
void paint_all(loop where)
{
    for (std::size_t left = windows_to_paint().size(); left > 0 && paint_next(where); left--) {
    }
}

timer* find_timer(HWND window, std::uintptr_t id)
{
    for (timer& one : state().timers)
        if (one.window == window && one.id == id)
            return &one;
    return nullptr;
}

using timer_procedure = void (*)(HWND, unsigned, std::uintptr_t, DWORD);

// However many periods have passed, one message.
void run_timer(timer& due, loop where)
{
    const timer one = due;
    due.due = now() + due.period;
    MSG message{
        one.window, WM_TIMER, one.id, reinterpret_cast<LPARAM>(one.procedure), static_cast<DWORD>(now()), 0, 0};
    if (is_filtered(message, where))
        return;
    if (one.procedure)
        reinterpret_cast<timer_procedure>(one.procedure)(one.window, WM_TIMER, one.id, message.time);
    else
        send_message(one.window, WM_TIMER, one.id, 0);
}

bool run_first_due_timer(loop where)
{
    const std::int64_t time = now();
    timer* first = nullptr;
    for (timer& one : state().timers)
        if (one.due <= time && (!first || one.due < first->due))
            first = &one;
    if (first)
        run_timer(*first, where);
    return first;
}

void run_due_timers(loop where)
{
    const std::int64_t time = now();
    std::vector<timer> due;
    for (const timer& one : state().timers)
        if (one.due <= time)
            due.push_back(one);
    std::stable_sort(due.begin(), due.end(), [](const timer& a, const timer& b) { return a.due < b.due; });
    // One before may have killed it.
    for (const timer& one : due)
        if (timer* still = find_timer(one.window, one.id); still && still->due <= time)
            run_timer(*still, where);
}

void run_posted(loop where)
{
    for (int i = 0; i < MOST_A_TURN && handle_posted(where); i++) {
    }
}

// Another drawing in front is another picture in the drawing's window.
void notice_drawing()
{
    const int in_front = has_document() ? current_document().number() : 0;
    if (in_front == state().drawing)
        return;
    state().drawing = in_front;
    invalidate(DRAWING_WINDOW, nullptr, true);
}

void show_again(std::string_view prompt)
{
    if (!history_at_line_start())
        history("\n");
    history(prompt.starts_with('\n') ? prompt.substr(1) : prompt);
}

struct key_name {
    std::string_view name;
    WPARAM key;
};
constexpr key_name KEYS[] = {
    {"Esc", VK_ESCAPE}, {"Enter", VK_RETURN}, {"Tab", 9},   {"Space", 32}, {"Backspace", 8},
    {"Insert", 45},     {"Delete", 46},       {"Home", 36}, {"End", 35},   {"PageUp", 33},
    {"PageDown", 34},   {"Left", 37},         {"Up", 38},   {"Right", 39}, {"Down", 40},
};

std::optional<WPARAM> key_of_name(std::string_view name)
{
    for (const key_name& one : KEYS)
        if (same_text(one.name, name))
            return one.key;
    if (name.size() == 1 && std::isalnum(static_cast<unsigned char>(name[0])))
        return static_cast<WPARAM>(std::toupper(static_cast<unsigned char>(name[0])));
    if (name.size() >= 2 && (name[0] == 'F' || name[0] == 'f'))
        if (const auto number = parse_int(name.substr(1)); number && *number >= 1 && *number <= 12)
            return VK_F1 + static_cast<WPARAM>(*number) - 1;
    return std::nullopt;
}

} // namespace

LRESULT send_message(HWND window, unsigned message, WPARAM wparam, LPARAM lparam)
{
    loop_state& s = state();
    if (!find_window(window) || s.depth >= DEEPEST)
        return 0;
    s.depth++;
    if (!s.hooks.empty()) {
        const CWPSTRUCT shown{lparam, wparam, message, window};
        call_hooks(WH_CALLWNDPROC, 0, 0, reinterpret_cast<LPARAM>(&shown));
    }
    const LRESULT answer = window_procedure(window, message, wparam, lparam);
    s.depth--;
    return answer;
}

std::string copied_text(const COPYDATASTRUCT& data)
{
    const char* text = static_cast<const char*>(data.lpData);
    return text ? std::string(text, strnlen(text, data.cbData)) : std::string();
}

void forget_messages_of(HWND window)
{
    std::erase_if(state().queue, [window](const MSG& one) { return one.hwnd == window; });
    std::erase_if(state().timers, [window](const timer& one) { return one.window == window; });
}

std::vector<WPARAM> run_messages(loop where)
{
    loop_state& s = state();
    std::vector<WPARAM> outer; // keys of the loop around this one are not its own
    if (s.turns++ > 0)
        outer = std::exchange(s.keys, {});
    notice_drawing();
    run_posted(where);
    paint_all(where);
    if (!s.timers.empty()) {
        pass_time(PAUSE);
        run_due_timers(where);
        run_posted(where);
        paint_all(where);
    }
    s.turns--;
    return std::exchange(s.keys, std::move(outer));
}

void run_paints()
{
    for (std::size_t left = windows_to_paint().size(); left > 0 && !windows_to_paint().empty(); left--)
        paint_window(windows_to_paint().front());
}

bool pump_message()
{
    notice_drawing();
    return handle_posted(loop::prompt) || paint_next(loop::prompt) || run_first_due_timer(loop::prompt);
}

void pass_time(int milliseconds)
{
    state().passed += milliseconds;
}

bool take_key_line(std::string_view line)
{
    constexpr std::string_view mark = "@key";
    line = trimmed(line);
    if (!same_text(line.substr(0, mark.size()), mark) ||
        (line.size() > mark.size() && line[mark.size()] != ' '))
        return false;
    const std::string_view name = trimmed(line.substr(mark.size()));
    if (const std::optional<WPARAM> key = key_of_name(name)) {
        const HWND window = GetActiveWindow();
        post(window, WM_KEYDOWN, *key, 0);
        post(window, WM_KEYUP, *key, 0);
    } else {
        history_line("There is no key '" + std::string(name) +
                     "': a key is F1 to F12, a letter, a digit, Enter, Esc, Tab, Space, Backspace, Insert, "
                     "Delete, Home, End, PageUp, PageDown, Left, Right, Up or Down.");
    }
    return true;
}

void show_host_help()
{
    acedHelp(nullptr, "", 0);
}

std::optional<std::string> wait_for_answer(std::string_view prompt, loop where)
{
    for (bool is_hidden = false;;) {
        const bool was_at_start = history_at_line_start();
        for (const WPARAM key : run_messages(where)) {
            if (key == VK_F1)
                show_host_help();
            else if (key == VK_ESCAPE || key == VK_RETURN)
                return key == VK_ESCAPE ? "^C" : "";
        }
        if (is_hidden || (!was_at_start && history_at_line_start()))
            show_again(prompt);
        const std::optional<std::string> line = next_answer(prompt);
        if (!line || !take_key_line(*line))
            return line;
        is_hidden = true;
    }
}

int hook_count()
{
    return static_cast<int>(std::count_if(state().hooks.begin(), state().hooks.end(),
                                          [](const hook& one) { return one.procedure != nullptr; }));
}

int timer_count()
{
    return static_cast<int>(state().timers.size());
}

namespace
{

std::string drop_hooks(const loaded_module* leaving)
{
    int count = 0;
    for (hook& one : state().hooks)
        if (one.owner == leaving && one.procedure) {
            one.procedure = nullptr;
            ++count;
        }
    sweep_hooks();
    return count == 0 ? "" : std::to_string(count) + (count == 1 ? " hook" : " hooks");
}

[[maybe_unused]] const bool dropper_is_set = add_leftovers_dropper(drop_hooks);

} // namespace

} // namespace host::dialogs

using namespace host::dialogs;
using host::trace_line;

extern "C" {

HHOOK SetWindowsHookExA(int kind, HOOKPROC procedure, HINSTANCE, DWORD)
{
    trace_line line("SetWindowsHookExA");
    line.integer(kind);
    const bool is_known = (kind == WH_MSGFILTER || kind == WH_CALLWNDPROC) && procedure;
    const HHOOK made = is_known ? ++state().last_hook : 0;
    if (made)
        state().hooks.push_back({made, kind, procedure, host::running_module()});
    line.result(std::to_string(made));
    return made;
}

int UnhookWindowsHookEx(HHOOK number)
{
    trace_line line("UnhookWindowsHookEx");
    line.integer(number);
    const std::size_t at = place_of_hook(number);
    const bool there = at < state().hooks.size() && state().hooks[at].procedure;
    if (there)
        state().hooks[at].procedure = nullptr;
    sweep_hooks();
    line.result(there ? "1" : "0");
    return there ? 1 : 0;
}

LRESULT CallNextHookEx(HHOOK number, int code, WPARAM wparam, LPARAM lparam)
{
    // Callers may name no hook: then it is the one that runs.
    if (!number && !state().running.empty())
        number = state().running.back();
    const std::size_t at = place_of_hook(number);
    return at < state().hooks.size() ? call_hook_before(at, state().hooks[at].kind, code, wparam, lparam) : 0;
}

LRESULT SendMessageA(HWND window, unsigned message, WPARAM wparam, LPARAM lparam)
{
    trace_line line("SendMessageA");
    line.integer(window).integer(message);
    if (message == WM_COPYDATA && lparam)
        line.text(copied_text(*reinterpret_cast<const COPYDATASTRUCT*>(lparam)));
    const LRESULT answer = send_message(window, message, wparam, lparam);
    line.result(std::to_string(answer));
    return answer;
}

int PostMessageA(HWND window, unsigned message, WPARAM wparam, LPARAM lparam)
{
    trace_line line("PostMessageA");
    line.integer(window).integer(message);
    const bool can = find_window(window) && state().queue.size() < LONGEST;
    if (can)
        post(window, message, wparam, lparam);
    line.result(can ? "1" : "0");
    return can ? 1 : 0;
}

std::uintptr_t SetTimer(HWND window, std::uintptr_t id, unsigned milliseconds, void* procedure)
{
    trace_line line("SetTimer");
    line.integer(window).integer(static_cast<long>(id)).integer(milliseconds);
    std::uintptr_t made = 0;
    if (window == 0 || find_window(window)) {
        // Without a window the number is the host's.
        if (window == 0 && !find_timer(0, id))
            id = ++state().last_timer;
        made = id ? id : 1;
        const unsigned period = std::max(milliseconds, SHORTEST_TIMER);
        const timer set{window, id, period, now() + period, procedure};
        if (timer* same = find_timer(window, id))
            *same = set;
        else
            state().timers.push_back(set);
    }
    line.result(std::to_string(made));
    return made;
}

int KillTimer(HWND window, std::uintptr_t id)
{
    trace_line line("KillTimer");
    line.integer(window).integer(static_cast<long>(id));
    const bool there = std::erase_if(state().timers, [&](const timer& one) {
                           return one.window == window && one.id == id;
                       }) > 0;
    line.result(there ? "1" : "0");
    return there ? 1 : 0;
}
}

// Questions that are no dialogs of DCL: alerts, message boxes, file dialogs.
#include <cstring>
#include <string>
#include <vector>

#include "host/core/console.h"
#include "host/core/text.h"
#include "host/core/trace.h"
#include "host/dialogs/message_loop.h"
#include "host/dialogs/windows.h"
#include "hostapi/ads.h"
#include "hostapi/files.h"
#include "hostapi/windows.h"

namespace
{

struct box_button {
    int id;
    const char* word;
};

// By the lowest four bits of the style.
struct box_style {
    std::vector<box_button> buttons;
    int cancelled; // what Esc and the end of the answers give
};

constexpr int IDABORT = 3, IDRETRY = 4, IDIGNORE = 5;
constexpr unsigned STYLE_MASK = 0xF;
constexpr unsigned DEFAULT_MASK = 0x300, DEFAULT_SECOND = 0x100, DEFAULT_THIRD = 0x200;

const box_style& style_of(unsigned style)
{
    // The platform's box of Yes and No can't be cancelled; here No stands for it, the answer that
    // changes nothing.
    static const box_style styles[] = {
        {{{IDOK, "ok"}}, IDOK},
        {{{IDOK, "ok"}, {IDCANCEL, "cancel"}}, IDCANCEL},
        {{{IDABORT, "abort"}, {IDRETRY, "retry"}, {IDIGNORE, "ignore"}}, IDABORT},
        {{{IDYES, "yes"}, {IDNO, "no"}, {IDCANCEL, "cancel"}}, IDCANCEL},
        {{{IDYES, "yes"}, {IDNO, "no"}}, IDNO},
        {{{IDRETRY, "retry"}, {IDCANCEL, "cancel"}}, IDCANCEL},
    };
    const unsigned kind = style & STYLE_MASK;
    return styles[kind < std::size(styles) ? kind : 0];
}

std::size_t default_button(const box_style& box, unsigned style)
{
    const std::size_t place = (style & DEFAULT_MASK) == DEFAULT_SECOND  ? 1
                              : (style & DEFAULT_MASK) == DEFAULT_THIRD ? 2
                                                                        : 0;
    return place < box.buttons.size() ? place : 0;
}

// 0: no button of the box.
int button_of_answer(const box_style& box, unsigned style, std::string_view answer)
{
    if (answer.empty())
        return box.buttons[default_button(box, style)].id;
    if (host::same_text(answer, "^C"))
        return box.cancelled;
    for (const box_button& button : box.buttons)
        if (host::same_text(answer, button.word))
            return button.id;
    return 0;
}

std::string words_of(const box_style& box)
{
    std::string out;
    for (const box_button& button : box.buttons)
        out += (out.empty() ? "" : "/") + std::string(button.word);
    return out;
}

void start_line(const std::string& text)
{
    if (!host::history_at_line_start())
        host::history("\n");
    host::history(text);
}

bool names_a_file(const char* path)
{
    return path && *path && !std::strchr("/\\:", path[std::strlen(path) - 1]) && !file_is_directory(path);
}

int ask_box(const std::string& text, const std::string& title, unsigned style)
{
    const box_style& box = style_of(style);
    const std::string prompt = "[message] " + title + ": " + text + " (" + words_of(box) + ") ";
    for (;;) {
        start_line(prompt);
        const auto answer = host::dialogs::wait_for_answer(prompt, host::dialogs::loop::dialog);
        if (!answer)
            return box.cancelled;
        if (const int id = button_of_answer(box, style, host::trimmed(*answer)))
            return id;
        host::history_line("The message box has no button '" + std::string(host::trimmed(*answer)) + "'.");
    }
}

} // namespace

extern "C" {

int acedAlert(const char* text)
{
    host::history_line("[alert] " + std::string(text ? text : ""));
    return RTNORM;
}

int MessageBoxA(HWND owner, const char* text, const char* title, unsigned style)
{
    host::trace_line line("MessageBoxA");
    line.integer(owner).text(text).text(title).integer(style);
    const int id = ask_box(text ? text : "", title ? title : "Error", style);
    host::dialogs::uncover_active_window();
    line.result(std::to_string(id));
    return id;
}

int acedGetFileD(const char* title, const char* default_path, const char* extension, int flags, resbuf* result)
{
    host::trace_line line("acedGetFileD");
    line.text(title).text(default_path).text(extension).integer(flags);
    if (!result)
        return line.status(RTERROR);
    const std::string prompt = "[file] " + std::string(title ? title : "") + " ";
    start_line(prompt);
    const auto answer = host::dialogs::wait_for_answer(prompt, host::dialogs::loop::dialog);
    host::dialogs::uncover_active_window();
    std::string path = answer ? *answer : "^C";
    // Enter takes the name that the dialog offers, if it offers a name.
    if (path.empty() && names_a_file(default_path))
        path = default_path;
    if (path.empty() || host::same_text(host::trimmed(path), "^C"))
        return line.status(RTCAN);
    result->rbnext = nullptr;
    result->restype = RTSTR;
    if (acutNewString(path.c_str(), &result->resval.rstring) != RTNORM)
        return line.status(RTERROR);
    line.result(host::lisp_string(path));
    return RTNORM;
}
}

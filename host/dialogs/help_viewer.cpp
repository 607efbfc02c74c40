#include "host/dialogs/help_viewer.h"

#include <cstdint>
#include <filesystem>

#include "host/core/console.h"
#include "host/core/session.h"
#include "host/core/text.h"
#include "host/core/trace.h"
#include "host/dialogs/html_page.h"
#include "host/files/libraries.h"
#include "host/files/paths.h"
#include "host/files/programs.h"
#include "hostapi/ads.h"
#include "hostapi/framework.h"

namespace host::dialogs
{

namespace
{

constexpr std::string_view PRODUCT_HELP = "zentrik.chm";
constexpr std::string_view START_PAGE = "index.html";
constexpr std::string_view HOST_PAGE = "host.html";
constexpr std::string_view PARTING = "::";

struct help_target {
    std::string file, page;
};

help_target parted(std::string_view target)
{
    const std::size_t at = target.find(PARTING);
    if (at == std::string_view::npos)
        return {std::string(target), {}};
    std::string page(target.substr(at + PARTING.size()));
    for (char& c : page)
        c = c == '\\' ? '/' : c;
    page.erase(0, page.find_first_not_of('/'));
    return {std::string(target.substr(0, at)), page};
}

bool leaves_its_directory(std::string_view page)
{
    while (!page.empty()) {
        const std::size_t end = page.find('/');
        if (page.substr(0, end) == "..")
            return true;
        page.remove_prefix(end == std::string_view::npos ? page.size() : end + 1);
    }
    return false;
}

// The file of a page; nothing when there is none in the directory.
std::optional<std::string> page_file(const std::string& pages, std::string_view page)
{
    const std::string name(page.substr(0, page.find_first_of("#?"))); // a place on the page shows the page
    if (leaves_its_directory(name))
        return std::nullopt;
    const auto found = existing_path(pages + (name.empty() ? std::string(START_PAGE) : name));
    std::error_code error;
    return found && std::filesystem::is_regular_file(*found, error) ? found : std::nullopt;
}

void tell(const std::string& text)
{
    history_line("[help] " + text);
}

bool show_page(const std::string& help_file, const std::string& pages, const std::string& page)
{
    const auto file = page_file(pages, page);
    const auto bytes = file ? read_whole(*file) : std::nullopt;
    if (!bytes) {
        tell("there is no page '" + (page.empty() ? std::string(START_PAGE) : page) + "' in " +
             file_name_of(help_file));
        return false;
    }
    tell(page.empty() ? std::string(START_PAGE) : page);
    history(cp1252_with_escapes(html_text(parse_html(*bytes))));
    return true;
}

std::string product_pages()
{
    return run_settings().share + "help/";
}

bool is_product_help(std::string_view help_file)
{
    return same_text(file_name_of(help_file), PRODUCT_HELP);
}

// Of a page of help as LISP programs ask for it, without its extension.
std::string page_of_topic(const std::string& pages, const std::string& topic)
{
    const std::string named = lower(topic) + ".html";
    return page_file(pages, named) ? named : topic;
}

// The control's own entry: what HTML Help calls.
HWND html_help_entry(HWND caller, const char* file, unsigned command, std::uintptr_t data)
{
    trace_line line("HtmlHelpA");
    line.integer(caller).text(file).integer(command).integer(static_cast<long>(data));
    bool shown = false;
    // Another program's help counts as starting a program. The product's own is a part of this run.
    const std::string name = file ? parted(file).file : "";
    if (file && (is_product_help(name) || may_start_programs(name)))
        shown = show_help(file);
    const HWND window = shown ? adsw_acadMainWnd() : 0;
    line.result(std::to_string(window));
    return window;
}

[[maybe_unused]] const bool registered = [] {
    constexpr unsigned HTML_HELP_ORDINAL = 14;
    register_library("hhctrl.ocx",
                     {{HTML_HELP_ORDINAL, "HtmlHelpA", reinterpret_cast<void*>(html_help_entry)}});
    return true;
}();

} // namespace

std::optional<std::string> help_pages(std::string_view help_file)
{
    const std::string name = file_name_of(help_file);
    const std::string stem = name.substr(0, name.rfind('.'));
    std::error_code unknown; // what can't be looked at is no directory of pages
    if (!stem.empty() && stem != name)
        if (const auto beside = existing_path(directory_of(help_file) + stem + "/");
            beside && std::filesystem::is_directory(*beside, unknown))
            return *beside + "/";
    if (is_product_help(help_file))
        return product_pages();
    return std::nullopt;
}

bool show_help(std::string_view target)
{
    const help_target wanted = parted(target);
    if (const auto pages = help_pages(wanted.file))
        return show_page(wanted.file, *pages, wanted.page);
    tell(wanted.file + " can't be shown: there is no directory of its pages beside it");
    return false;
}

} // namespace host::dialogs

extern "C" int acedHelp(const char* file, const char* topic, int command)
{
    using namespace host::dialogs;
    host::trace_line line("acedHelp");
    line.text(file).text(topic).integer(command);
    const std::string help_file = file ? file : "", asked = topic ? topic : "";
    bool shown = false;
    if (help_file.empty()) {
        const std::string page = asked.empty() ? std::string(HOST_PAGE) : page_of_topic(product_pages(), asked);
        shown = show_page(std::string(PRODUCT_HELP), product_pages(), page);
    } else if (const auto pages = help_pages(help_file)) {
        shown = show_page(help_file, *pages, page_of_topic(*pages, asked));
    } else {
        shown = show_help(help_file);
    }
    return line.status(shown ? RTNORM : RTERROR);
}

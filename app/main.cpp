// main.cpp: the command line of the program `zentrik`.
#include <CLI/CLI.hpp>
#include <csignal>
#include <cstdio>

#include "app/list.h"
#include "app/run.h"
#include "app/setup.h"
#include "host/core/session.h"
#include "host/core/text.h"
#include "host/files/names.h"

namespace
{

constexpr const char* EXIT_STATUS =
    "Exit status: 0 done, 1 a LISP error that nothing caught or a file that failed,\n"
    "2 wrong usage, 3 the answers ran out.";

struct run_options {
    app::run_request request;
    std::vector<std::string> programs, expressions, drives;
    std::string share;
    bool no_module = false;
};

std::string check_drive(const std::string& text)
{
    const bool good = text.size() > 2 && std::isalpha(static_cast<unsigned char>(text[0])) && text[1] == '=';
    return good ? "" : "a drive is given as LETTER=DIRECTORY, not '" + text + "'";
}

std::string check_clock(const std::string& text)
{
    int year, month, day, hour, minute, second, used = 0;
    const bool good = text.size() == 15 &&
                      std::sscanf(text.c_str(), "%4d%2d%2d.%2d%2d%2d%n", &year, &month, &day, &hour, &minute,
                                  &second, &used) == 6 &&
                      used == 15 && month >= 1 && month <= 12 && day >= 1 && day <= 31 && hour < 24 &&
                      minute < 60 && second < 60;
    return good ? "" : "a clock is given as YYYYMMDD.HHMMSS, not '" + text + "'";
}

std::string check_program(const std::string& text)
{
    const std::string extension = host::lower(host::extension_of(text));
    return extension == ".dxf" || extension == ".dwg" ? "'" + text + "' is a drawing: it is opened with -d"
                                                      : "";
}

void add_run(CLI::App& program, run_options& options)
{
    host::settings& settings = host::run_settings();
    CLI::App* run = program.add_subcommand("run", "Run LISP programs over a drawing, without a window");
    run->add_option("-d,--drawing", options.request.drawing, "Drawing to open (default: a new one)")
        ->type_name("FILE");
    run->add_option("-e,--eval", options.expressions, "Evaluate an expression and print its value")
        ->type_name("EXPR")
        ->expected(1)
        ->allow_extra_args(false) // what follows the one value is a program
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    run->add_option("-i,--input", options.request.answers, "Answers to prompts (default: standard input)")
        ->type_name("FILE");
    run->add_option("-o,--output", options.request.output, "Save the drawing there at the end")
        ->type_name("FILE");
    run->add_option("--trace", options.request.trace, "Write one line for each host operation")
        ->type_name("FILE");
    run->add_option("--break-after", settings.break_after, "The N-th break poll answers yes")
        ->type_name("N")
        ->check(CLI::Range(1, 1000000000));
    run->add_option("--clock", settings.clock, "Fixed date and time, YYYYMMDD.HHMMSS")->check(check_clock);
    run->add_option("--drive", options.drives, "Directory of a drive letter, as C=DIR")
        ->type_name("L=DIR")
        ->expected(1)
        ->allow_extra_args(false) // what follows the one value is a program
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
        ->check(check_drive);
    run->add_flag("--no-module", options.no_module, "Leave the module and the product's commands out");
    run->add_option("--share", options.share, "Directory of the product files")->type_name("DIR");
    run->add_option("--registry", settings.registry, "Registry of this run, a text file")->type_name("FILE");
    run->add_flag("--crlf", settings.crlf, "Write text files with carriage returns and line feeds");
    run->add_flag("--no-shell", settings.no_shell, "Refuse to start other programs");
    run->add_option("--dxf-version", settings.dxf_version, "Version of the drawings that are written")
        ->check(CLI::IsMember({"R12", "R2000", "R2007"}))
        ->capture_default_str();
    run->add_option("PROGRAM", options.programs, "LISP programs, run in order with the expressions")
        ->type_name("")
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
        ->check(check_program, "");
    run->footer(
        "Commands of the module, for -e as '(c:pointer)' or for a program:\n"
        "  plwrite, plread            polyline files\n"
        "  wizard                     begins a drawing that has no name yet: opens one, or sets one up\n"
        "  open_dwg, start_wiz        what the wizard does at its end: opens the drawing that it is given,\n"
        "                             and saves a new one as dwg_filenm\n"
        "  pointer                    draws on from a line or polyline by distances and bearings\n"
        "  horizview                  turns the view level with a line\n"
        "  extendarc                  makes an arc longer or shorter\n"
        "  curveleader, addarrow      leaders, zorro lines, arrow heads\n"
        "  arctext                    text along an arc\n"
        "  trimsymbols                ends lines at the symbols that they run through\n"
        "  chgelev                    changes elevations\n"
        "  txtscale                   texts larger or smaller where they stand\n\n" +
        std::string(EXIT_STATUS));
}

// Programs and expressions in the order in which they stand on the command line.
std::vector<app::step> steps_in_order(const CLI::App& run, const run_options& options)
{
    std::vector<app::step> steps;
    std::size_t programs = 0, expressions = 0;
    for (const CLI::Option* option : run.parse_order()) {
        if (option->get_name() == "--eval" && expressions < options.expressions.size())
            steps.push_back({false, options.expressions[expressions++]});
        else if (option->get_name() == "PROGRAM" && programs < options.programs.size())
            steps.push_back({true, options.programs[programs++]});
    }
    return steps;
}

int start_run(const CLI::App& run, run_options& options)
{
    host::settings& settings = host::run_settings();
    settings.share = app::share_directory(options.share);
    for (const std::string& drive : options.drives)
        settings.drives[static_cast<char>(std::toupper(static_cast<unsigned char>(drive[0])))] =
            drive.substr(2);
    options.request.with_module = !options.no_module;
    options.request.steps = steps_in_order(run, options);
    std::signal(SIGINT, [](int) { host::request_break(); });
    return app::run(options.request);
}

} // namespace

int main(int argc, char** argv)
{
    CLI::App program("zentrik: drawings, AutoLISP and the surveyor's module zentutil");
    program.set_version_flag("--version", "zentrik " ZENT_VERSION);
    program.require_subcommand(1);
    program.footer(EXIT_STATUS);

    run_options options;
    add_run(program, options);

    std::string list_file, list_type;
    CLI::App* list = program.add_subcommand("list", "Print a drawing's objects, one group list a line");
    list->add_option("FILE", list_file, "Drawing")->required()->type_name("");
    list->add_option("--type", list_type, "Only objects of this type, as LINE or LAYER")->type_name("T");

    try {
        program.parse(argc, argv);
    } catch (const CLI::RequiredError& error) {
        // The reader of the command line would only say that a subcommand is missing.
        const std::vector<std::string> extra = program.remaining();
        if (!program.get_subcommands().empty() || extra.empty())
            return program.exit(error), app::status_usage;
        std::fprintf(stderr, "'%s' is no command of this program.\nRun with --help for more information.\n",
                     extra.front().c_str());
        return app::status_usage;
    } catch (const CLI::ParseError& error) {
        return program.exit(error) == 0 ? app::status_done : app::status_usage;
    }
    if (list->parsed())
        return app::list_objects(list_file, list_type);
    return start_run(*program.get_subcommand("run"), options);
}

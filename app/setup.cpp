#include "app/setup.h"

#include <filesystem>

#include "host/commandline/open_drawings.h"
#include "host/core/console.h"
#include "host/core/document.h"
#include "host/core/module.h"
#include "host/core/session.h"
#include "host/core/text.h"
#include "host/lisp/api.h"

namespace fs = std::filesystem;

namespace app
{

namespace
{

fs::path program_directory()
{
    std::error_code error;
    const fs::path program = fs::read_symlink("/proc/self/exe", error);
    return error ? fs::current_path() : program.parent_path();
}

std::string start_file()
{
    return host::run_settings().share + "lisp/zentrik.lsp";
}

// The product's LISP files find their fellows by the variable: they have no other way to learn where they lie.
bool load_start_file(host::document& doc)
{
    const host::list_ptr value(host::rb_text(RTSTR, host::cp1252_with_escapes(host::run_settings().share)));
    host::lisp::set_variable(doc, "*zentrik-share*", value.get());
    return host::lisp::load_program(doc, start_file()).how == host::lisp::ending::done;
}

} // namespace

std::string share_directory(const std::string& wanted)
{
    std::error_code error;
    const fs::path place = wanted.empty() ? program_directory() / "../share/zentrik" : fs::path(wanted);
    const fs::path whole = fs::weakly_canonical(place, error);
    return (error ? place : whole).string() + "/";
}

bool load_product_module()
{
    const fs::path program = program_directory();
    host::run_settings().modules = {program.string() + "/", (program / "../lib/zentrik/").string(),
                                    (program / "../lib/x86_64-linux-gnu/zentrik/").string()};
    for (const fs::path place : host::run_settings().modules)
        if (fs::exists(place / "zentutil.so"))
            return host::load_module((place / "zentutil.so").string());
    host::complain("cannot find the module zentutil.so beside the program");
    return false;
}

bool load_product_commands()
{
    if (!fs::exists(start_file())) {
        host::complain("cannot find the product's commands: " + start_file());
        return false;
    }
    if (!load_start_file(host::current_document()))
        return false;
    host::commandline::set_start_file([](host::document& doc) { load_start_file(doc); });
    return true;
}

} // namespace app

#include "app/setup.h"

#include <filesystem>

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

// Lets the product's LISP files find their fellows: it has no other way to learn where they lie.
void set_share_variable()
{
    const host::list_ptr value(host::rb_text(RTSTR, host::cp1252_with_escapes(host::run_settings().share)));
    host::lisp::set_variable(host::current_document(), "*zentrik-share*", value.get());
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
    for (const fs::path& place :
         {program_directory() / "zentutil.so", program_directory() / "../lib/zentrik/zentutil.so",
          program_directory() / "../lib/x86_64-linux-gnu/zentrik/zentutil.so"})
        if (fs::exists(place))
            return host::load_module(place.string());
    host::complain("cannot find the module zentutil.so beside the program");
    return false;
}

bool load_product_commands()
{
    set_share_variable();
    const std::string file = host::run_settings().share + "lisp/zentrik.lsp";
    if (!fs::exists(file)) {
        host::complain("cannot find the product's commands: " + file);
        return false;
    }
    return host::lisp::load_program(host::current_document(), file).how == host::lisp::ending::done;
}

} // namespace app

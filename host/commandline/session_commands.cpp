// session_commands.cpp: ARX and HELP, which touch no drawing.
#include "host/commandline/edit_commands.h"
#include "host/core/module.h"
#include "host/core/reactors.h"
#include "host/files/paths.h"
#include "hostapi/ads.h"

namespace host::commandline
{

namespace
{

// Lines of a listing, or one line that there is nothing.
void list_names(const command_io& io, const char* title, const std::vector<std::string>& names,
                const char* nothing)
{
    if (names.empty())
        return io.say(nothing);
    io.say(title);
    for (const std::string& name : names)
        io.say("  " + name);
}

void load(const command_io& io, const std::string& name)
{
    const std::optional<std::string> file = find_module_file(name);
    if (!file)
        throw command_failed{"Cannot find the module " + name + "."};
    std::string why;
    if (!load_module(*file, &why))
        throw command_failed{why};
    io.say(file_name_of(*file) + " is loaded.");
}

void unload(const command_io& io, const std::string& name)
{
    std::string why;
    if (!unload_module(name, &why))
        throw command_failed{why};
    io.say(name + " is unloaded.");
}

} // namespace

task<> arx_command(command_io& io)
{
    question option(want::key_word, "\nEnter an option [?/Load/Unload/Commands/Options]: ");
    option.keys("? Load Unload Commands Options");
    const answer chosen = co_await io.ask(std::move(option));
    if (chosen.text == "Load") {
        const answer name = co_await io.ask(ask_text("\nEnter name of module to load: "));
        if (name.ok())
            load(io, name.text);
    } else if (chosen.text == "Unload") {
        const answer name = co_await io.ask(ask_text("\nEnter name of module to unload: "));
        if (name.ok())
            unload(io, name.text);
    } else if (chosen.text == "Commands") {
        list_names(io, "Commands of modules, behind their group:", module_command_names(),
                   "No module has a command.");
    } else if (chosen.text == "Options") {
        io.say("This host has no options for modules.");
    } else if (chosen.ok()) {
        list_names(io, "Loaded modules:", loaded_modules(), "No module is loaded.");
    }
}

task<> help_command(command_io&)
{
    acedHelp(nullptr, "", 0);
    co_return;
}

} // namespace host::commandline

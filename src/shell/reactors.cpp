#include "shell/reactors.h"

#include <cstring>
#include <optional>

#include "common/lisp_vars.h"
#include "common/paths.h"
#include "common/text.h"
#include "common/tracking.h"
#include "common/variables.h"
#include "hostapi/ads.h"
#include "settings/drawing_settings.h"
#include "settings/title.h"
#include "shell/status_pane.h"

namespace
{

constexpr int TRACKED_SIZE = sizeof current_function; // longer names are cut

std::optional<ZentDocReactor> doc_reactor;
std::optional<ZentCommandReactor> command_reactor;
std::optional<ZentSaveReactor> save_reactor;

AcEditor* host_editor()
{
    return static_cast<AcEditor*>(acrxSysRegistry()->at("AcEditor"));
}

// Makes the reactor at its first use.
template <class Reactor>
void add_to_editor(std::optional<Reactor>& reactor)
{
    if (!reactor)
        reactor.emplace();
    if (AcEditor* editor = host_editor())
        editor->addReactor(&*reactor);
}

template <class Reactor>
void remove_from_editor(std::optional<Reactor>& reactor)
{
    if (!reactor)
        return;
    if (AcEditor* editor = host_editor())
        editor->removeReactor(&*reactor);
    reactor.reset();
}

bool is_one_of(const char* name, std::initializer_list<const char*> names)
{
    for (const char* one : names)
        if (std::strcmp(name, one) == 0)
            return true;
    return false;
}

// The name of what runs stays while either of the two kinds does.
void command_is_over()
{
    cmd_active = 0;
    if (!lisp_active)
        current_function[0] = '\0';
}

void lisp_is_over()
{
    lisp_active = 0;
    if (!cmd_active)
        current_function[0] = '\0';
}

// A point of the job behind its sign, or blanks of its width.
void job_point(text_out out, const char* variable, const char* sign)
{
    char point[256];
    lisp_get_text(point, variable);
    if (point[0] == '\0')
        text_set(out, "    ");
    else
        text_format(out, "%s%s", sign, point);
}

// The job's data directory follows a drawing that is saved elsewhere, where the user wants it so. A bare
// name tells no directory.
void follow_saved_drawing(const char* path)
{
    if (!lisp_is_integer("data2dwg", 1) || !std::strpbrk(path, "\\/"))
        return;
    char directory[ADS_PATH_SIZE];
    path_directory(path, directory);
    lisp_set_text("tmpdir$", directory);
}

} // namespace

void ZentDocReactor::documentBecameCurrent(AcApDocument*)
{
    char occupied[264], backsight[264], both[528];
    job_point(occupied, "ocptnm", "OP-");
    job_point(backsight, "bsptnm", "   BS-");
    text_format(both, "%s%s", occupied, backsight);
    status_text(both);
    title_refresh();
}

// Any name that holds HELP is left out, MYHELPER too: asking for help must not change what help is for.
void ZentCommandReactor::commandWillStart(const char* name)
{
    char upper[TRACKED_SIZE];
    text_set(upper, name);
    str_upper(upper);
    if (!std::strstr(upper, "HELP"))
        cmd_active = 1;
    if (is_one_of(name, {"OPEN", "NEW"}))
        variable_set_short("LISPINIT", 1); // each drawing has variables of its own
}

void ZentCommandReactor::commandEnded(const char* name)
{
    command_is_over();
    if (is_one_of(name, {"OPEN", "NEW", "QSAVE", "SAVE", "SAVEAS"}))
        title_refresh();
}

void ZentCommandReactor::commandCancelled(const char*)
{
    command_is_over();
}

// The name is what stands behind the first three characters, wherever the "(C:" is: a line with something
// in front of it gives a name with a part of its head, and help finds no topic for it.
void ZentCommandReactor::lispWillStart(const char* first_line)
{
    char line[TRACKED_SIZE];
    text_set(line, first_line);
    str_upper(line);
    line[std::strcspn(line, ")")] = '\0';
    if (!std::strstr(line, "(C:"))
        return;
    const char* name = line + 3;
    if (std::strcmp(name, "HELP") == 0)
        return;
    text_set(current_function, name);
    lisp_active = 1;
}

void ZentCommandReactor::lispEnded()
{
    lisp_is_over();
    if (lisp_is_integer("had_map", 1))
        acedMenuCmd("Gacmap.pop2=-"); // the host's map menu goes out of the menu bar
}

void ZentCommandReactor::lispCancelled()
{
    lisp_is_over();
}

// A save that no tracked command started, as one by another program, stores nothing beside the drawing.
void ZentSaveReactor::saveComplete(AcDbDatabase*, const char* actual_name)
{
    if (cmd_active != 1)
        return;
    save_drawing_settings(actual_name);
    follow_saved_drawing(actual_name);
}

void doc_reactor_add()
{
    if (!doc_reactor)
        doc_reactor.emplace();
    if (AcApDocManager* manager = acDocManagerPtr())
        manager->addReactor(&*doc_reactor);
}

void doc_reactor_remove()
{
    if (!doc_reactor)
        return;
    if (AcApDocManager* manager = acDocManagerPtr())
        manager->removeReactor(&*doc_reactor);
    doc_reactor.reset();
}

void editor_reactors_add()
{
    add_to_editor(command_reactor);
    add_to_editor(save_reactor);
}

void editor_reactors_remove()
{
    remove_from_editor(command_reactor);
    remove_from_editor(save_reactor);
}

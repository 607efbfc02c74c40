#include "shell/commands.h"

#include <memory>

#include "common/lisp_vars.h"
#include "hostapi/ads.h"
#include "hostapi/editor.h"
#include "hostapi/framework.h"
#include "launch/help.h"

namespace
{

constexpr const char* GROUP = "ZENT_DICTIONARY_COMMANDS";

constexpr int MODAL = 0;
constexpr int TRANSPARENT = 1;
constexpr int SESSION = 0x200000; // outside of any drawing, so that it may open and close them
constexpr int NO_CODE = -1;

AcEdCommandStack* command_stack()
{
    return static_cast<AcEdCommandStack*>(acrxSysRegistry()->at("ACAD_REGISTERED_COMMANDS"));
}

// ---- ZTCLOSE ------------------------------------------------------------------------------------------

void close_others(void*)
{
    AcApDocManager* manager = acDocManagerPtr();
    const std::unique_ptr<AcApDocumentIterator> documents(manager->newAcApDocumentIterator());
    for (; documents && !documents->done(); documents->step()) {
        AcApDocument* document = documents->document();
        if (!document || document == manager->curDocument())
            continue;
        manager->closeDocument(document);
        // The window of the drawing goes by messages.
        if (CWinApp* application = acedGetAcadWinApp())
            application->PumpMessage();
    }
}

void close_all()
{
    AcApDocManager* manager = acDocManagerPtr();
    manager->executeInApplicationContext(close_others, nullptr);
    if (AcApDocument* current = manager->curDocument())
        manager->closeDocument(current);
}

bool current_drawing_is_unchanged()
{
    resbuf modified{};
    return acedGetVar("DBMOD", &modified) == RTNORM && modified.resval.rint == 0;
}

// An unchanged drawing closes at once and leaves another one in front, which the second round is for.
void close_command()
{
    if (current_drawing_is_unchanged())
        close_all();
    close_all();
}

// ---- ZTOPEN -------------------------------------------------------------------------------------------

// True when the drawing to open is named and was opened, or can't be: nothing is left to do.
bool open_in_application_context()
{
    char name[ADS_PATH_SIZE];
    lisp_get_text(name, "opendwgname");
    if (name[0] == '\0') {
        acutPrintf("Please set 'opendwgname' to name of the drawing to be open.\n");
        return true;
    }
    if (!acDocManagerPtr()->isApplicationContext())
        return false;
    acDocManagerPtr()->appContextOpenDocument(name);
    return true;
}

void open_step(void*)
{
    open_in_application_context();
}

void open_command()
{
    if (open_in_application_context())
        return;
    AcApDocManager* manager = acDocManagerPtr();
    if (manager->curDocument())
        manager->executeInApplicationContext(open_step, nullptr);
}

struct command {
    const char* name;
    int flags;
    void (*run)();
};
constexpr command COMMANDS[] = {
    {"ZTHELP", TRANSPARENT, help_show},
    {"ZTCLOSE", MODAL, close_command},
    {"ZTOPEN", SESSION, open_command},
};

} // namespace

void commands_register()
{
    AcEdCommandStack* stack = command_stack();
    for (const command& c : COMMANDS)
        if (stack)
            stack->addCommand(GROUP, c.name, c.name, c.flags, c.run, nullptr, NO_CODE, nullptr);
}

void commands_remove()
{
    if (AcEdCommandStack* stack = command_stack())
        stack->removeGroup(GROUP);
}

// A guest that only keeps reactors, of the editor and of the documents, and a command of its own.
#include <string>

#include "guest.h"

namespace
{

std::string heard;

struct listener : AcEditorReactor {
    void commandWillStart(const char* name) override { note("start", name); }
    void commandEnded(const char* name) override { note("end", name); }
    void commandCancelled(const char* name) override { note("cancel", name); }
    void commandFailed(const char* name) override { note("fail", name); }
    void lispWillStart(const char* text) override { note("lisp", text); }
    void lispEnded() override { note("lisp-end", ""); }
    void lispCancelled() override { note("lisp-cancel", ""); }
    static void note(const char* what, const char* name) { heard += std::string(what) + "(" + name + ")"; }
};
listener the_listener;

AcEditor* editor()
{
    return static_cast<AcEditor*>(acrxSysRegistry()->at("AcEditor"));
}
AcEdCommandStack* commands()
{
    return static_cast<AcEdCommandStack*>(acrxSysRegistry()->at("ACAD_REGISTERED_COMMANDS"));
}

void run_command()
{
    heard += "[command]";
}

void started()
{
    editor()->addReactor(&the_listener);
    editor()->addReactor(&the_listener); // twice is once
    commands()->addCommand("GUESTS", "LISTEN", "LISTEN", 0, run_command);
}

void ended()
{
    editor()->removeReactor(&the_listener);
    commands()->removeGroup("GUESTS");
}

// (r:heard): what was told since the last call.
int what_was_heard(const resbuf*)
{
    const int status = acedRetStr(heard.c_str());
    heard.clear();
    return status;
}

// (r:leave): from inside of a call.
int leave(const resbuf*)
{
    editor()->removeReactor(&the_listener);
    return acedRetT();
}

// (r:registry): names that mean nothing are nothing.
int registry(const resbuf*)
{
    return acrxSysRegistry()->at("NoSuchThing") ? acedRetNil() : acedRetT();
}

constexpr guest_function FUNCTIONS[] = {
    {"r:heard", what_was_heard},
    {"r:leave", leave},
    {"r:registry", registry},
};

} // namespace

// Called by the host before the first message and behind the last one.
GUEST_EXPORT int DllMain(unsigned module, unsigned reason, void*)
{
    if (module == 0)
        return 0;
    heard += reason == 1 ? "attached" : "detached";
    return 1;
}

GUEST_EXPORT int acrxEntryPoint(int message, void* packet)
{
    return guest_entry(FUNCTIONS, message, packet, started, ended);
}

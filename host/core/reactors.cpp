// reactors.cpp: reactors of modules, the command stack, and the objects that modules ask for by name.
#include "host/core/reactors.h"

#include <algorithm>
#include <string>
#include <vector>

#include "host/core/module.h"
#include "host/core/text.h"
#include "host/core/trace.h"

namespace host
{

namespace
{

template <class Reactor>
class reactor_list
{
public:
    void add(Reactor* reactor)
    {
        if (reactor && !has(reactor))
            all_.push_back({reactor, running_module()});
    }
    void remove(Reactor* reactor)
    {
        std::erase_if(all_, [&](const entry& e) { return e.reactor == reactor; });
    }
    std::size_t drop(const loaded_module* leaving)
    {
        return std::erase_if(all_, [&](const entry& e) { return e.owner == leaving; });
    }

    // A reactor may take itself or others away while it is being told.
    template <class Call>
    void tell(Call call)
    {
        const std::vector<entry> told = all_;
        for (const entry& e : told)
            if (has(e.reactor)) {
                const module_call inside(e.owner);
                call(*e.reactor);
            }
    }

private:
    struct entry {
        Reactor* reactor;
        loaded_module* owner;
    };
    bool has(const Reactor* reactor) const
    {
        return std::any_of(all_.begin(), all_.end(), [&](const entry& e) { return e.reactor == reactor; });
    }
    std::vector<entry> all_;
};

reactor_list<AcEditorReactor> editor_reactors;
reactor_list<AcApDocManagerReactor> document_reactors;

class editor final : public AcEditor
{
public:
    void addReactor(AcEditorReactor* reactor) override
    {
        trace_line("AcEditor::addReactor");
        editor_reactors.add(reactor);
    }
    void removeReactor(AcEditorReactor* reactor) override
    {
        trace_line("AcEditor::removeReactor");
        editor_reactors.remove(reactor);
    }
};

class linker final : public AcRxDynamicLinker
{
public:
    // Nothing follows from it: this host has several drawings open whoever is loaded.
    void registerAppMDIAware(void*) override { trace_line("registerAppMDIAware"); }
};

class command_stack final : public AcEdCommandStack
{
public:
    // 1: a group has each name once.
    int addCommand(const char* group, const char* global_name, const char* local_name, int flags, void (*run)(),
                   void*, int, void*) override
    {
        trace_line("addCommand").text(group).text(global_name).integer(flags);
        if (!group || !global_name || !*global_name || !run)
            return 1;
        for (const entry& e : entries_)
            if (same_text(e.group, group) && same_text(e.command.name, global_name))
                return 1;
        entries_.push_back({group,
                            upper(local_name && *local_name ? local_name : global_name),
                            {upper(global_name), flags, run, running_module()}});
        return 0;
    }
    int removeGroup(const char* group) override
    {
        trace_line("removeGroup").text(group);
        return group && std::erase_if(entries_, [&](const entry& e) { return same_text(e.group, group); }) ? 0
                                                                                                           : 1;
    }
    const module_command* find(std::string_view name) const
    {
        // What was registered last covers what was there.
        for (auto e = entries_.rbegin(); e != entries_.rend(); ++e)
            if (same_text(e->command.name, name) || same_text(e->local_name, name))
                return &e->command;
        return nullptr;
    }
    std::vector<std::string> names() const
    {
        std::vector<std::string> out;
        for (const entry& e : entries_)
            out.push_back(e.group + " " + e.command.name);
        return out;
    }
    std::size_t drop(const loaded_module* leaving)
    {
        return std::erase_if(entries_, [&](const entry& e) { return e.command.owner == leaving; });
    }

private:
    struct entry {
        std::string group, local_name;
        module_command command;
    };
    std::vector<entry> entries_;
};

editor the_editor;
linker the_linker;
command_stack the_stack;

std::string counted(std::size_t count, const char* what)
{
    return count == 0 ? "" : std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

std::string drop_reactors(const loaded_module* leaving)
{
    return counted(editor_reactors.drop(leaving) + document_reactors.drop(leaving), "reactor");
}
std::string drop_commands(const loaded_module* leaving)
{
    return counted(the_stack.drop(leaving), "command");
}
[[maybe_unused]] const bool droppers_are_set =
    add_leftovers_dropper(drop_reactors) && add_leftovers_dropper(drop_commands);

class system_registry final : public AcRxDictionary
{
public:
    void* at(const char* name) const override
    {
        const std::string_view wanted = name;
        if (wanted == "DynamicLinker")
            return static_cast<AcRxDynamicLinker*>(&the_linker);
        if (wanted == "AcEditor")
            return static_cast<AcEditor*>(&the_editor);
        if (wanted == "ACAD_REGISTERED_COMMANDS")
            return static_cast<AcEdCommandStack*>(&the_stack);
        return nullptr;
    }
};
system_registry the_registry;

} // namespace

void tell_command(command_event event, std::string_view name)
{
    const std::string text(name);
    editor_reactors.tell([&](AcEditorReactor& r) {
        switch (event) {
        case command_event::will_start:
            r.commandWillStart(text.c_str());
            break;
        case command_event::ended:
            r.commandEnded(text.c_str());
            break;
        case command_event::cancelled:
            r.commandCancelled(text.c_str());
            break;
        case command_event::failed:
            r.commandFailed(text.c_str());
            break;
        }
    });
}

void tell_lisp(lisp_event event, std::string_view first_line)
{
    const std::string text(first_line);
    editor_reactors.tell([&](AcEditorReactor& r) {
        switch (event) {
        case lisp_event::will_start:
            r.lispWillStart(text.c_str());
            break;
        case lisp_event::ended:
            r.lispEnded();
            break;
        case lisp_event::cancelled:
            r.lispCancelled();
            break;
        }
    });
}

void tell_saved(AcDbDatabase* database, std::string_view name)
{
    const std::string text(name);
    editor_reactors.tell([&](AcEditorReactor& r) { r.saveComplete(database, text.c_str()); });
}

void add_document_reactor(AcApDocManagerReactor* reactor)
{
    trace_line("AcApDocManager::addReactor");
    document_reactors.add(reactor);
}
void remove_document_reactor(AcApDocManagerReactor* reactor)
{
    trace_line("AcApDocManager::removeReactor");
    document_reactors.remove(reactor);
}

void tell_document_created(AcApDocument* document)
{
    document_reactors.tell([&](AcApDocManagerReactor& r) { r.documentCreated(document); });
}
void tell_document_destroyed(std::string_view name)
{
    const std::string text(name);
    document_reactors.tell([&](AcApDocManagerReactor& r) { r.documentDestroyed(text.c_str()); });
}
void tell_document_became_current(AcApDocument* document)
{
    document_reactors.tell([&](AcApDocManagerReactor& r) { r.documentBecameCurrent(document); });
}

std::vector<std::string> module_command_names()
{
    return the_stack.names();
}

const module_command* find_module_command(std::string_view name)
{
    return the_stack.find(name);
}

} // namespace host

AcRxDictionary* acrxSysRegistry()
{
    return &host::the_registry;
}

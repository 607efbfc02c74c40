// reactors.cpp: reactors of modules, the command stack, and the objects that modules ask for by name.
#include "host/core/reactors.h"

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

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
        if (reactor && std::find(all_.begin(), all_.end(), reactor) == all_.end())
            all_.push_back(reactor);
    }
    void remove(Reactor* reactor) { std::erase(all_, reactor); }

    // A reactor may take itself or others away while it is being told.
    template <class Call>
    void tell(Call call)
    {
        const std::vector<Reactor*> told = all_;
        for (Reactor* reactor : told)
            if (std::find(all_.begin(), all_.end(), reactor) != all_.end())
                call(*reactor);
    }

private:
    std::vector<Reactor*> all_;
};

reactor_list<AcEditorReactor> editor_reactors;

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
    void registerAppMDIAware(void*) override {}
};

class command_stack final : public AcEdCommandStack
{
public:
    int addCommand(const char* group, const char* global_name, const char*, int flags, void (*run)(), void*,
                   int, void*) override
    {
        trace_line("addCommand").text(group).text(global_name).integer(flags);
        entries_.push_back({group, std::make_unique<std::string>(upper(global_name)), {nullptr, flags, run}});
        entries_.back().command.name = entries_.back().name->c_str();
        return 0;
    }
    int removeGroup(const char* group) override
    {
        trace_line("removeGroup").text(group);
        return std::erase_if(entries_, [&](const entry& e) { return same_text(e.group, group); }) ? 0 : 1;
    }
    const module_command* find(std::string_view name) const
    {
        for (const entry& e : entries_)
            if (same_text(*e.name, name))
                return &e.command;
        return nullptr;
    }

private:
    struct entry {
        std::string group;
        std::unique_ptr<std::string> name;
        module_command command;
    };
    std::vector<entry> entries_;
};

editor the_editor;
linker the_linker;
command_stack the_stack;

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

const module_command* find_module_command(std::string_view name)
{
    return the_stack.find(name);
}

} // namespace host

AcRxDictionary* acrxSysRegistry()
{
    return &host::the_registry;
}

// module.cpp: modules and calls into them. A call is a frame: the function's code, its arguments
// and what the module has left as the value. Frames nest, since a function may run AutoLISP.
#include "host/core/module.h"

#include <dlfcn.h>

#include <algorithm>
#include <map>
#include <memory>

#include "host/core/console.h"
#include "host/core/document.h"
#include "host/core/text.h"
#include "host/core/trace.h"
#include "hostapi/editor.h"
#include "hostapi/processes.h"

namespace host
{

struct loaded_module {
    std::string name; // of its file
    module_entry entry = nullptr;
    void* library = nullptr;
    HINSTANCE instance = 0;
    bool locked = true;
    int running = 0; // calls into it that have not come back
};

namespace
{

using library_entry = int (*)(HINSTANCE, DWORD, void*);
constexpr DWORD ATTACHED = 1, DETACHED = 0; // reasons of DllMain

struct call_frame {
    int code;
    const resbuf* arguments;
    list_ptr result;
};

// External functions of a drawing, by upper-case name.
struct external_table {
    struct function {
        loaded_module* owner;
        int code;
    };
    explicit external_table(document&) {}
    std::map<std::string, function> functions;
};

std::vector<std::unique_ptr<loaded_module>> modules;
std::vector<call_frame*> frames;
loaded_module* entered = nullptr; // whose code runs now
lisp_invoker invoke_lisp = nullptr;

std::vector<leftovers_dropper>& droppers()
{
    static std::vector<leftovers_dropper> all;
    return all;
}

int send(loaded_module& m, int message)
{
    const module_call inside(&m);
    if (message == AcRx::kInvkSubrMsg) // what it answers is in the trace
        return m.entry(message, &m);
    trace_line line("acrxEntryPoint");
    line.integer(message).text(std::string_view(m.name));
    const int answer = m.entry(message, &m);
    line.result(std::to_string(answer));
    return answer;
}

// One message for each open drawing, which is current in the meantime.
void send_for_drawings(loaded_module& m, int message)
{
    for (const int number : document_numbers())
        if (document* doc = document_of_number(number)) {
            const while_current here(*doc);
            send(m, message);
        }
}

std::string_view without_extension(std::string_view name)
{
    return name.substr(0, name.rfind('.'));
}

loaded_module* find_loaded(std::string_view name)
{
    const std::string_view file = name.substr(name.find_last_of("/\\:") + 1); // npos + 1 is 0
    for (const auto& m : modules)
        if (const std::string_view stem = without_extension(m->name);
            same_text(m->name, file) || same_text(stem, file) || same_text(stem, without_extension(file)))
            return m.get();
    return nullptr;
}

bool refuse(std::string* why, const std::string& reason)
{
    if (why)
        *why = reason;
    else
        complain(reason);
    return false;
}

bool start(std::unique_ptr<loaded_module> m)
{
    modules.push_back(std::move(m));
    loaded_module& loaded = *modules.back();
    send(loaded, AcRx::kInitAppMsg);
    send_for_drawings(loaded, AcRx::kLoadDwgMsg);
    return true;
}

void drop_leftovers(const loaded_module& leaving)
{
    for (const leftovers_dropper drop : droppers())
        if (const std::string left = drop(&leaving); !left.empty())
            complain("the module " + leaving.name + " has left " + left + " behind");
}

external_table& externals()
{
    return current_document().part<external_table>();
}

int give(resbuf* value, const char* name)
{
    trace_line line(name);
    if (value && value->restype != RTNIL && value->restype != RTT && value->restype != RTVOID) {
        if (value->rbnext)
            line.arguments(value);
        else
            line.word(printed_value(*value));
    }
    list_ptr owned(value);
    if (frames.empty())
        return RTERROR;
    frames.back()->result = std::move(owned);
    return RTNORM;
}

} // namespace

module_call::module_call(loaded_module* called) : called_(called), before_(entered)
{
    if (!called_)
        return;
    entered = called_;
    ++called_->running;
}

module_call::~module_call()
{
    if (!called_)
        return;
    --called_->running;
    entered = before_;
}

loaded_module* running_module()
{
    return entered;
}

bool add_leftovers_dropper(leftovers_dropper drop)
{
    droppers().push_back(drop);
    return true;
}

bool load_module(module_entry entry, const std::string& name, std::string* why)
{
    if (find_loaded(name))
        return refuse(why, name + " is already loaded.");
    auto m = std::make_unique<loaded_module>();
    m->name = name;
    m->entry = entry;
    return start(std::move(m));
}

bool load_module(const std::string& path, std::string* why)
{
    const std::size_t slash = path.rfind('/');
    auto m = std::make_unique<loaded_module>();
    m->name = slash == std::string::npos ? path : path.substr(slash + 1);
    if (find_loaded(m->name))
        return refuse(why, m->name + " is already loaded.");
    m->library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!m->library)
        return refuse(why, "cannot load module " + path + ": " + dlerror());
    m->entry = reinterpret_cast<module_entry>(dlsym(m->library, "acrxEntryPoint"));
    const auto attach = reinterpret_cast<library_entry>(dlsym(m->library, "DllMain"));
    static HINSTANCE last_instance = 0x10000000;
    m->instance = last_instance += 0x10000;
    std::string fault;
    if (!m->entry)
        fault = "it has no acrxEntryPoint";
    else if (attach && attach(m->instance, ATTACHED, nullptr) == 0)
        fault = "its DllMain refuses";
    if (fault.empty())
        return start(std::move(m));
    dlclose(m->library);
    return refuse(why, "cannot load module " + path + ": " + fault);
}

bool unload_module(std::string_view name, std::string* why)
{
    loaded_module* const leaving = find_loaded(name);
    if (!leaving)
        return refuse(why, std::string(name) + " is not loaded.");
    if (leaving->locked)
        return refuse(why, leaving->name + " is locked and cannot be unloaded.");
    // Programs that a module runs may ask for its unloading: its code must outlive the call.
    if (leaving->running > 0)
        return refuse(why, leaving->name + " is at work and cannot be unloaded.");
    send_for_drawings(*leaving, AcRx::kUnloadDwgMsg);
    send(*leaving, AcRx::kUnloadAppMsg);
    for (const auto& doc : documents())
        std::erase_if(doc->part<external_table>().functions,
                      [&](const auto& f) { return f.second.owner == leaving; });
    drop_leftovers(*leaving);
    if (leaving->library) {
        if (const auto detach = reinterpret_cast<library_entry>(dlsym(leaving->library, "DllMain")))
            detach(leaving->instance, DETACHED, nullptr);
        dlclose(leaving->library);
    }
    std::erase_if(modules, [&](const auto& m) { return m.get() == leaving; });
    return true;
}

void unload_all_modules()
{
    while (!modules.empty()) {
        modules.back()->locked = false;
        if (!unload_module(std::string(modules.back()->name)))
            return;
    }
}

std::vector<std::string> loaded_modules()
{
    std::vector<std::string> names;
    for (const auto& m : modules)
        names.push_back(m->name);
    return names;
}

bool is_loaded(std::string_view name)
{
    return find_loaded(name) != nullptr;
}

void tell_drawing_loaded(document& doc)
{
    const while_current here(doc);
    for (std::size_t i = 0; i < modules.size(); ++i)
        send(*modules[i], AcRx::kLoadDwgMsg);
}

void tell_drawing_unloaded(document& doc)
{
    const while_current here(doc);
    for (std::size_t i = 0; i < modules.size(); ++i)
        send(*modules[i], AcRx::kUnloadDwgMsg);
}

bool is_external(std::string_view name)
{
    return has_document() && externals().functions.count(upper(name)) > 0;
}

std::vector<std::string> external_names()
{
    std::vector<std::string> names;
    for (const auto& [name, function] : externals().functions)
        names.push_back(name);
    return names;
}

list_ptr call_external(std::string_view name, const resbuf* arguments)
{
    const auto found = externals().functions.find(upper(name));
    if (found == externals().functions.end())
        return nullptr;
    const external_table::function function = found->second;
    call_frame frame{function.code, arguments, nullptr};
    frames.push_back(&frame);
    send(*function.owner, AcRx::kInvkSubrMsg);
    frames.pop_back();
    if (!frame.result)
        frame.result.reset(rb_new(RTNIL));
    return std::move(frame.result);
}

void set_lisp_invoker(lisp_invoker invoker)
{
    invoke_lisp = invoker;
}

} // namespace host

using namespace host;

void acrxUnlockApplication(void* packet)
{
    trace_line line("acrxUnlockApplication");
    if (!packet)
        return;
    line.text(std::string_view(static_cast<loaded_module*>(packet)->name));
    static_cast<loaded_module*>(packet)->locked = false;
}

int acedDefun(const char* name, int code)
{
    trace_line line("acedDefun");
    line.text(name).integer(code);
    if (!name || !*name || !entered || !has_document())
        return line.status(0);
    externals().functions[upper(name)] = {entered, code};
    return line.status(RTNORM);
}

int acedUndef(const char* name, int code)
{
    trace_line line("acedUndef");
    line.text(name).integer(code);
    if (!name || !has_document())
        return line.status(RTERROR);
    auto& functions = externals().functions;
    const auto found = functions.find(upper(name));
    if (found == functions.end() || found->second.owner != entered || found->second.code != code)
        return line.status(RTERROR);
    functions.erase(found);
    return line.status(RTNORM);
}

int acedGetFunCode()
{
    return frames.empty() ? RTERROR : frames.back()->code;
}
resbuf* acedGetArgs()
{
    return frames.empty() ? nullptr : rb_copy(frames.back()->arguments);
}

int acedRetNil()
{
    return give(rb_new(RTNIL), "acedRetNil");
}
int acedRetT()
{
    return give(rb_new(RTT), "acedRetT");
}
int acedRetVoid()
{
    return give(rb_new(RTVOID), "acedRetVoid");
}
int acedRetInt(int value)
{
    return give(rb_int(RTLONG, value), "acedRetInt");
}
int acedRetReal(ads_real value)
{
    return give(rb_real(RTREAL, value), "acedRetReal");
}
int acedRetStr(const char* text)
{
    return give(rb_text(RTSTR, text ? text : ""), "acedRetStr");
}
int acedRetPoint(const ads_point point)
{
    return give(rb_point(RT3DPOINT, point), "acedRetPoint");
}
int acedRetName(const ads_name name, int type)
{
    return give(rb_name(type, name), "acedRetName");
}
int acedRetVal(const resbuf* value)
{
    return give(value ? rb_copy_one(value) : rb_new(RTNIL), "acedRetVal");
}

int acedRetList(const resbuf* list)
{
    if (!list)
        return acedRetNil();
    // A bare chain of values is a list all the same.
    list_builder out;
    if (list->restype != RTLB)
        out.add(rb_new(RTLB)).add(rb_copy(list)).add(rb_new(RTLE));
    else
        out.add(rb_copy(list));
    return give(out.take(), "acedRetList");
}

int acedInvoke(const resbuf* call, resbuf** result)
{
    *result = nullptr;
    if (!call || call->restype != RTSTR || !call->resval.rstring)
        return RTERROR;
    if (is_external(call->resval.rstring)) {
        list_ptr value = call_external(call->resval.rstring, call->rbnext);
        *result = value.release();
        return RTNORM;
    }
    return invoke_lisp ? invoke_lisp(call, result) : RTERROR;
}

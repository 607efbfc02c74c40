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

namespace host
{

namespace
{

struct module {
    std::string name;
    module_entry entry = nullptr;
    void* library = nullptr;
    bool locked = true;
    int running = 0; // messages that it is working on
};

struct call_frame {
    int code;
    const resbuf* arguments;
    list_ptr result;
};

// External functions of a drawing, by upper-case name.
struct external_table {
    struct function {
        module* owner;
        int code;
    };
    explicit external_table(document&) {}
    std::map<std::string, function> functions;
};

std::vector<std::unique_ptr<module>> modules;
std::vector<call_frame*> frames;
module* entered = nullptr; // whose entry point runs now
lisp_invoker invoke_lisp = nullptr;

int send(module& m, int message)
{
    module* const before = entered;
    entered = &m;
    ++m.running;
    const int answer = m.entry(message, &m);
    --m.running;
    entered = before;
    return answer;
}

bool start(std::unique_ptr<module> m)
{
    modules.push_back(std::move(m));
    module& loaded = *modules.back();
    send(loaded, AcRx::kInitAppMsg);
    for (const auto& doc : documents()) {
        document& current = current_document();
        make_current(*doc);
        send(loaded, AcRx::kLoadDwgMsg);
        make_current(current);
    }
    return true;
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

bool load_module(module_entry entry, const std::string& name)
{
    auto m = std::make_unique<module>();
    m->name = name;
    m->entry = entry;
    return start(std::move(m));
}

bool load_module(const std::string& path)
{
    auto m = std::make_unique<module>();
    m->library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!m->library) {
        complain("cannot load module " + path + ": " + dlerror());
        return false;
    }
    void* entry = dlsym(m->library, "acrxEntryPoint");
    if (!entry) {
        complain("cannot load module " + path + ": it has no acrxEntryPoint");
        dlclose(m->library);
        return false;
    }
    m->entry = reinterpret_cast<module_entry>(entry);
    const std::size_t slash = path.rfind('/');
    m->name = slash == std::string::npos ? path : path.substr(slash + 1);
    return start(std::move(m));
}

bool unload_module(std::string_view name)
{
    const auto place = std::find_if(modules.begin(), modules.end(), [&](const auto& m) {
        return same_text(m->name, name) || same_text(m->name.substr(0, m->name.rfind('.')), name);
    });
    // Programs that a module runs may ask for its unloading: its code must outlive the call.
    if (place == modules.end() || (*place)->locked || (*place)->running > 0)
        return false;
    send(**place, AcRx::kUnloadAppMsg);
    for (const auto& doc : documents())
        std::erase_if(doc->part<external_table>().functions,
                      [&](const auto& f) { return f.second.owner == place->get(); });
    if ((*place)->library)
        dlclose((*place)->library);
    modules.erase(place);
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

void tell_drawing_loaded(document& doc)
{
    make_current(doc);
    for (std::size_t i = 0; i < modules.size(); ++i)
        send(*modules[i], AcRx::kLoadDwgMsg);
}

void tell_drawing_unloaded(document& doc)
{
    make_current(doc);
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
    if (packet)
        static_cast<module*>(packet)->locked = false;
}

int acedDefun(const char* name, int code)
{
    if (!name || !*name || !entered || !has_document())
        return 0;
    externals().functions[upper(name)] = {entered, code};
    return RTNORM;
}

int acedUndef(const char* name, int code)
{
    if (!name || !has_document())
        return RTERROR;
    auto& functions = externals().functions;
    const auto found = functions.find(upper(name));
    if (found == functions.end() || found->second.owner != entered || found->second.code != code)
        return RTERROR;
    functions.erase(found);
    return RTNORM;
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

#include "tests/fakes/fake_host.h"

#include <algorithm>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>

#include <sys/resource.h>
#include <unistd.h>

#include "host/core/console.h"
#include "host/core/heap.h"
#include "host/core/resbuf.h"
#include "host/core/trace.h"
#include "hostapi/ads.h"
#include "hostapi/editor.h"
#include "hostapi/framework.h"

fake_host fake;

namespace
{

std::vector<std::string> tile_keys; // tile handle - 1
std::map<std::string, ads_callback> actions;
int running_result = 0;
bool running = false;
int next_errno = 0;

resbuf* node_of(const fake_value& value)
{
    switch (value.type) {
    case RTSTR:
        return host::rb_text(RTSTR, value.text);
    case RTREAL:
        return host::rb_real(RTREAL, value.real);
    case RTSHORT:
    case RTLONG:
        return host::rb_int(value.type, value.integer);
    case RTLB:
        return acutBuildList(RTLB, RTREAL, 1.0, RTLE, 0);
    default:
        return nullptr;
    }
}

bool is_absent(const char* key)
{
    return std::find(fake.absent_tiles.begin(), fake.absent_tiles.end(), key) != fake.absent_tiles.end();
}

fake_value value_of(const resbuf& node)
{
    return node.restype == RTSTR    ? text_value(node.resval.rstring)
           : node.restype == RTREAL ? real_value(node.resval.rreal)
                                    : short_value(node.resval.rint);
}

std::string filled_list, image_key; // tiles that are being filled

ads_htile tile_of(const std::string& key)
{
    const auto found = std::find(tile_keys.begin(), tile_keys.end(), key);
    if (found != tile_keys.end())
        return static_cast<ads_htile>(found - tile_keys.begin() + 1);
    tile_keys.push_back(key);
    return static_cast<ads_htile>(tile_keys.size());
}

} // namespace

fake_value text_value(std::string text)
{
    fake_value value;
    value.type = RTSTR;
    value.text = std::move(text);
    return value;
}
fake_value short_value(int integer)
{
    fake_value value;
    value.type = RTSHORT;
    value.integer = integer;
    return value;
}
fake_value long_value(int integer)
{
    fake_value value;
    value.type = RTLONG;
    value.integer = integer;
    return value;
}
fake_value real_value(double real)
{
    fake_value value;
    value.type = RTREAL;
    value.real = real;
    return value;
}
fake_value list_value()
{
    fake_value value;
    value.type = RTLB;
    return value;
}

bool has_action(const std::string& key)
{
    return actions.count(key) != 0;
}

void enter(const std::string& key, const std::string& value)
{
    fake.tiles[key] = value;
    press(key);
}

void press(const std::string& key, int reason)
{
    const auto action = actions.find(key);
    if (action == actions.end()) {
        fake.unknown_tiles.push_back(key);
        return;
    }
    ads_callback_packet packet{1, tile_of(key), "", reason, 0, 0, nullptr};
    action->second(&packet);
}

host_session::host_session() : blocks_(host::heap_live_blocks())
{
    fake = fake_host();
    host::capture_history(&printed);
}

host_session::~host_session()
{
    host::capture_history(nullptr);
    if (!directory_.empty())
        std::filesystem::remove_all(directory_);
}

bool host_session::heap_is_as_before() const
{
    return host::heap_live_blocks() == blocks_;
}

const std::string& host_session::directory()
{
    if (directory_.empty()) {
        std::string pattern = (std::filesystem::temp_directory_path() / "zent_XXXXXX").string();
        if (mkdtemp(pattern.data()))
            directory_ = pattern + "/";
    }
    return directory_;
}

std::string read_text(const std::string& path)
{
    std::ifstream in(path, std::ios::binary);
    if (!in)
        return "<none>";
    std::stringstream text;
    text << in.rdbuf();
    return text.str();
}

void write_text(const std::string& path, const std::string& text)
{
    std::ofstream(path, std::ios::binary) << text;
}

extern "C" {

int acedGetSym(const char* name, resbuf** value)
{
    const auto found = fake.lisp.find(name);
    *value = found == fake.lisp.end() ? nullptr : node_of(found->second);
    return RTNORM;
}

int acedPutSym(const char* name, const resbuf* value)
{
    if (fake.lisp_refuses)
        return RTERROR;
    fake.lisp[name] = value_of(*value);
    fake.set_order.push_back(std::string(name) + "=" + host::printed_value(*value));
    return RTNORM;
}

int acedGetVar(const char* name, resbuf* value)
{
    fake_value held = short_value(next_errno);
    if (std::strcmp(name, "ERRNO") != 0) {
        const auto found = fake.variables.find(name);
        if (found == fake.variables.end())
            return RTERROR;
        held = found->second;
    }
    *value = resbuf{nullptr, static_cast<short>(held.type), {}};
    if (held.type == RTSTR)
        return acutNewString(held.text.c_str(), &value->resval.rstring);
    value->resval.rint = static_cast<short>(held.integer);
    return RTNORM;
}

int acedSetVar(const char* name, const resbuf* value)
{
    fake.variables[name] = value_of(*value);
    fake.set_order.push_back(std::string(name) + "=" + host::printed_value(*value));
    return RTNORM;
}

int acedEntSel(const char* prompt, ads_name name, ads_point picked)
{
    fake.prompts.push_back(prompt);
    if (fake.picks.empty())
        return RTCAN;
    const fake_pick& pick = fake.picks.front();
    next_errno = pick.error;
    const int status = pick.status;
    if (status != RTNORM) {
        fake.picks.pop_front();
        return status;
    }
    name[0] = 7;
    name[1] = static_cast<std::int32_t>(fake.prompts.size());
    picked[0] = 1.0;
    picked[1] = 2.0;
    picked[2] = 3.0;
    return RTNORM;
}

resbuf* acdbEntGet(const ads_name)
{
    const std::string type = fake.picks.empty() ? "-" : fake.picks.front().type;
    if (!fake.picks.empty())
        fake.picks.pop_front();
    if (type == "-")
        return acutBuildList(8, "LAYER", 0);
    return acutBuildList(RTDXF0, type.c_str(), 8, "LAYER", 0);
}

resbuf* acdbTblSearch(const char* table, const char* name, int)
{
    const bool known =
        std::strcmp(table, "APPID") == 0 &&
        std::find(fake.applications.begin(), fake.applications.end(), name) != fake.applications.end();
    return known ? acutBuildList(RTDXF0, table, 2, name, 0) : nullptr;
}

int acdbRegApp(const char* name)
{
    if (fake.registering_fails)
        return RTERROR;
    fake.applications.push_back(name);
    return RTNORM;
}

int acdbEntMake(const resbuf* list)
{
    fake.made.push_back(host::printed_list(list, true));
    return fake.making_fails ? RTERROR : RTNORM;
}

int acedAlert(const char* text)
{
    fake.alerts.push_back(text);
    return RTNORM;
}

int acedGetFileD(const char* title, const char* default_path, const char* extension, int flags, resbuf* result)
{
    fake.file_dialogs.push_back(std::string(title) + "|" + (default_path ? default_path : "<null>") + "|" +
                                extension + "|" + std::to_string(flags));
    if (fake.file_answers.empty() || fake.file_answers.front().empty())
        return RTCAN;
    *result = resbuf{nullptr, RTSTR, {}};
    acutNewString(fake.file_answers.front().c_str(), &result->resval.rstring);
    fake.file_answers.pop_front();
    return RTNORM;
}

// ---- windows ---------------------------------------------------------------------------------
int MessageBoxA(HWND, const char* text, const char* title, unsigned style)
{
    fake.messages.push_back(std::string(title) + "|" + text + "|" + std::to_string(style));
    if (fake.message_answers.empty())
        return IDCANCEL;
    const int answer = fake.message_answers.front();
    fake.message_answers.pop_front();
    return answer;
}

HWND GetActiveWindow()
{
    return fake.active_window;
}

int SetWindowTextA(HWND, const char* text)
{
    fake.window_title = text;
    return 1;
}

void GlobalMemoryStatus(MEMORYSTATUS* status)
{
    status->dwAvailPhys = fake.free_physical;
    status->dwAvailVirtual = fake.free_virtual;
}

namespace
{

std::vector<std::string> keys; // path of a key, handle - 1

std::string root_of(HKEY key)
{
    switch (key) {
    case HKEY_LOCAL_MACHINE:
        return "";
    case HKEY_CURRENT_USER:
        return "HKCU\\";
    case HKEY_CLASSES_ROOT:
        return "HKCR\\";
    default:
        return keys[key - 1] + "\\";
    }
}

// The index-th of the names that stand behind `start`, up to the next of `ends`.
std::string name_behind(const std::string& start, const char* ends, DWORD index)
{
    std::vector<std::string> names;
    for (const auto& [name, value] : fake.registry) {
        if (name.compare(0, start.size(), start) != 0)
            continue;
        const std::string found =
            name.substr(start.size(), name.find_first_of(ends, start.size()) - start.size());
        if (names.empty() || names.back() != found)
            names.push_back(found);
    }
    return index < names.size() ? names[index] : std::string();
}

long hand_out(const std::string& text, void* out, DWORD* size)
{
    const DWORD needed = static_cast<DWORD>(text.size() + 1);
    const bool fits = *size >= needed;
    *size = needed;
    if (!fits)
        return ERROR_MORE_DATA;
    std::memcpy(out, text.c_str(), needed);
    return ERROR_SUCCESS;
}

} // namespace

long RegOpenKeyExA(HKEY parent, const char* path, DWORD, DWORD, HKEY* key)
{
    const std::string wanted = root_of(parent) + path;
    for (const auto& [name, value] : fake.registry)
        if (name.compare(0, wanted.size(), wanted) == 0 &&
            (name[wanted.size()] == '|' || name[wanted.size()] == '\\')) {
            keys.push_back(wanted);
            *key = static_cast<HKEY>(keys.size());
            ++fake.open_keys;
            return ERROR_SUCCESS;
        }
    return ERROR_FILE_NOT_FOUND;
}

long RegCloseKey(HKEY)
{
    --fake.open_keys;
    return ERROR_SUCCESS;
}

long RegQueryValueExA(HKEY key, const char* name, DWORD*, DWORD* type, unsigned char* data, DWORD* size)
{
    const auto found = fake.registry.find(keys[key - 1] + "|" + name);
    if (found == fake.registry.end())
        return ERROR_FILE_NOT_FOUND;
    *type = found->second.first;
    return hand_out(found->second.second, data, size);
}

long RegEnumKeyExA(HKEY key, DWORD index, char* name, DWORD* name_size)
{
    const std::string found = name_behind(root_of(key), "\\|", index);
    return found.empty() ? ERROR_NO_MORE_ITEMS : hand_out(found, name, name_size);
}

long RegEnumValueA(HKEY key, DWORD index, char* name, DWORD* name_size, DWORD* type, unsigned char* data,
                   DWORD* size)
{
    const std::string found = name_behind(keys[key - 1] + "|", "|", index);
    if (found.empty())
        return ERROR_NO_MORE_ITEMS;
    const auto& value = fake.registry.at(keys[key - 1] + "|" + found);
    *type = value.first;
    const long named = hand_out(found, name, name_size);
    const long given = hand_out(value.second, data, size);
    return named != ERROR_SUCCESS ? named : given;
}

// ---- dialogs ------------------------------------------------------------------------------------
int ads_load_dialog(const char* file, int* id)
{
    const auto found = fake.dialogs.find(file);
    if (found == fake.dialogs.end()) {
        *id = -1;
        return RTERROR;
    }
    *id = static_cast<int>(std::distance(fake.dialogs.begin(), found));
    ++fake.loaded_files;
    return RTNORM;
}

int ads_unload_dialog(int)
{
    --fake.loaded_files;
    return RTNORM;
}

int ads_new_dialog(const char* name, int id, ads_callback, ads_hdlg* dialog)
{
    auto file = fake.dialogs.begin();
    std::advance(file, id < 0 ? 0 : id);
    const bool known = file != fake.dialogs.end() &&
                       std::find(file->second.begin(), file->second.end(), name) != file->second.end();
    *dialog = known ? 1 : 0;
    actions.clear();
    fake.tiles.clear();
    fake.lists.clear();
    fake.modes.clear();
    return known ? RTNORM : RTERROR;
}

int ads_start_dialog(ads_hdlg dialog, int* result)
{
    if (dialog == 0)
        return RTERROR;
    running = true;
    running_result = DLGCANCEL;
    if (fake.person)
        fake.person();
    running = false;
    *result = running_result;
    return RTNORM;
}

int ads_done_dialog(ads_hdlg, int result)
{
    if (running)
        running_result = result;
    return RTNORM;
}

int ads_action_tile(ads_hdlg, const char* key, ads_callback action)
{
    actions[key] = action;
    return RTNORM;
}

int ads_set_tile(ads_hdlg, const char* key, const char* value)
{
    if (is_absent(key))
        return RTERROR;
    fake.tiles[key] = value;
    return RTNORM;
}

int ads_get_tile(ads_hdlg, const char* key, char* value, int size)
{
    if (is_absent(key))
        return RTERROR;
    const std::string text = fake.tiles[key].substr(0, static_cast<std::size_t>(size - 1));
    std::memcpy(value, text.c_str(), text.size() + 1);
    return RTNORM;
}

int ads_get_attr_string(ads_htile tile, const char* attribute, char* value, int size)
{
    if (std::strcmp(attribute, "key") != 0 || tile == 0 || tile > tile_keys.size())
        return RTERROR;
    const std::string text = tile_keys[tile - 1].substr(0, static_cast<std::size_t>(size - 1));
    std::memcpy(value, text.c_str(), text.size() + 1);
    return RTNORM;
}

int ads_mode_tile(ads_hdlg, const char* key, int mode)
{
    fake.modes[key] = mode;
    fake.mode_calls.push_back(std::string(key) + "=" + std::to_string(mode));
    return RTNORM;
}

int ads_start_list(ads_hdlg, const char* key, int, int)
{
    filled_list = key;
    fake.lists[key].clear();
    return RTNORM;
}

int ads_add_list(const char* item)
{
    fake.lists[filled_list].push_back(item);
    return RTNORM;
}

int ads_end_list()
{
    return RTNORM;
}

int ads_dimensions_tile(ads_hdlg, const char*, int* width, int* height)
{
    *width = 120;
    *height = 65;
    return RTNORM;
}

int ads_start_image(ads_hdlg, const char* key)
{
    image_key = key;
    return RTNORM;
}

int ads_fill_image(int x, int y, int width, int height, int color)
{
    fake.fills.push_back(image_key + ": " + std::to_string(x) + " " + std::to_string(y) + " " +
                         std::to_string(width) + " " + std::to_string(height) + " " + std::to_string(color));
    return RTNORM;
}

int ads_end_image()
{
    return RTNORM;
}
}

// ---- the application -------------------------------------------------------------------------------
namespace
{

struct fake_document : AcApDocument {
    AcDbDatabase* database() const override { return nullptr; }
    const char* fileName() const override { return ""; }
};

struct fake_documents : AcApDocManager {
    mutable fake_document document;
    void addReactor(AcApDocManagerReactor*) override {}
    void removeReactor(AcApDocManagerReactor*) override {}
    AcApDocument* curDocument() const override { return fake.document_open ? &document : nullptr; }
    bool isApplicationContext() const override { return true; }
    int appContextOpenDocument(const char*) override { return 0; }
    void executeInApplicationContext(void (*step)(void*), void* data) override { step(data); }
    int closeDocument(AcApDocument*) override { return 0; }
    AcApDocumentIterator* newAcApDocumentIterator() override { return nullptr; }
};

} // namespace

AcApDocManager* acDocManagerPtr()
{
    static fake_documents all;
    return &all;
}

CWnd* acedGetAcadFrame()
{
    static CWnd frame;
    frame.m_hWnd = adsw_acadMainWnd();
    return &frame;
}

nearly_full_disk::nearly_full_disk(std::uint64_t bytes) : handler_(std::signal(SIGXFSZ, SIG_IGN))
{
    rlimit limit{};
    getrlimit(RLIMIT_FSIZE, &limit);
    limit_ = limit.rlim_cur;
    limit.rlim_cur = bytes;
    setrlimit(RLIMIT_FSIZE, &limit);
}

nearly_full_disk::~nearly_full_disk()
{
    rlimit limit{};
    getrlimit(RLIMIT_FSIZE, &limit);
    limit.rlim_cur = limit_;
    setrlimit(RLIMIT_FSIZE, &limit);
    std::signal(SIGXFSZ, handler_);
}

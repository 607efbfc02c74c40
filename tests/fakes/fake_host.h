// fake_host.h: a host without drawing, dialogs and registry for tests of the module's lower folders. Each
// call is answered from the fields of `fake` and noted there, so that a test can make any of them fail.
// Lists, heap, printing, files and external functions are the real host's.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "hostapi/adsdef.h"
#include "hostapi/dcl.h"
#include "hostapi/messages.h"

struct fake_value {
    int type = 0; // RTNORM type codes; RTLB: a list of one real
    std::string text;
    double real = 0.0;
    int integer = 0;
};
fake_value text_value(std::string text);
fake_value short_value(int value);
fake_value long_value(int value);
fake_value real_value(double value);
fake_value list_value();

struct fake_pick {
    int status;
    int error;        // ERRNO behind it
    std::string type; // of the object that was picked; "-": an object without a type
};

struct fake_host {
    std::map<std::string, fake_value> lisp, variables;
    bool lisp_refuses = false; // acedPutSym fails

    std::deque<fake_pick> picks;
    std::vector<std::string> prompts; // of the picks

    std::vector<std::string> applications; // known to the drawing
    bool registering_fails = false;
    std::vector<std::string> made; // lists given to acdbEntMake, as LISP prints them
    bool making_fails = false;

    std::vector<std::string> alerts;

    // File dialogs: what is answered, "" for a cancel; and "title|default|extensions|flags" of each.
    std::deque<std::string> file_answers;
    std::vector<std::string> file_dialogs;
    std::deque<int> message_answers;
    std::vector<std::string> messages; // "caption|text|style"

    // "key|name": type and value. Keys of the user begin with "HKCU\", those of the classes root with "HKCR\",
    // all others are the machine's.
    std::map<std::string, std::pair<std::uint32_t, std::string>> registry;
    int open_keys = 0;
    std::string started_as; // command line of the process

    // Dialogs: the files that can be loaded with the dialogs in them; what a person does once one runs.
    std::map<std::string, std::vector<std::string>> dialogs;
    std::function<void()> person;
    std::map<std::string, std::string> tiles;
    std::vector<std::string> unknown_tiles;
    std::vector<std::string> absent_tiles;                 // keys that the dialogs don't have
    std::map<std::string, std::vector<std::string>> lists; // of list tiles
    std::map<std::string, int> modes;                      // the last one set of a tile
    std::vector<std::string> mode_calls;                   // "key=mode" in the order of the calls
    std::vector<std::string> fills;                        // "tile: x y width height color"
    std::string window_title;
    int loaded_files = 0; // loaded and not unloaded

    // Variables set, of LISP and of the host, each "name=value" in the order of the calls.
    std::vector<std::string> set_order;
    std::vector<std::string> typed; // texts handed to the command line, terminators included
    bool document_open = true;

    std::uint64_t free_physical = 0, free_virtual = 0;

    // Other programs and libraries: each call as "name argument ...", in their order.
    std::vector<std::string> calls;
    bool programs_start = true;
    int polls_until_the_end = 0;                                // of a program
    int open_programs = 0;                                      // process and thread handles not given back
    std::map<std::string, std::string> environment;             // for %NAME%
    std::map<std::string, std::map<unsigned, void*>> libraries; // by name: functions by ordinal

    // Windows: the classes of the active window's children, 101, 102, ... in their order; drawings that have
    // a picture; what is drawn goes to `calls`.
    HWND active_window = 1;
    std::vector<std::string> child_classes;
    std::vector<std::string> pictures;
    int open_contexts = 0;
};
extern fake_host fake;

// What CreateBitmap made of a bitmap, in any test: rows of '#' and ' ', a line feed each.
std::string bitmap_rows(HBITMAP bitmap);

// For `person`: press a tile's button, as its action sees it; give a tile a value and run its action.
void press(const std::string& key, int reason = CBR_SELECT);
void enter(const std::string& key, const std::string& value);
bool has_action(const std::string& key);

// What the module printed since the object was made; heap_is_as_before() when all was given back.
class host_session
{
public:
    host_session();
    ~host_session();
    host_session(const host_session&) = delete;
    host_session& operator=(const host_session&) = delete;
    std::string printed; // grows
    bool heap_is_as_before() const;
    // A directory of its own, with a separator, removed at the end.
    const std::string& directory();

private:
    std::size_t blocks_;
    std::string directory_;
};

std::string read_text(const std::string& path); // "<none>" when there is no such file
void write_text(const std::string& path, const std::string& text);

// While it lives a file that grows longer than `bytes` fails to be written, as on a disk that is nearly full.
class nearly_full_disk
{
public:
    explicit nearly_full_disk(std::uint64_t bytes);
    ~nearly_full_disk();
    nearly_full_disk(const nearly_full_disk&) = delete;
    nearly_full_disk& operator=(const nearly_full_disk&) = delete;

private:
    std::uint64_t limit_;
    void (*handler_)(int);
};

// stand_ins.h: stand-ins of the host and of the module's lower floors for the shell's life: each call is
// noted in order and answered from the fields of `life`, so that any of them can fail.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "hostapi/adsdef.h"
#include "hostapi/messages.h"

struct life_state {
    std::vector<std::string> calls;
    std::map<std::string, std::string> texts; // LISP variables
    std::map<std::string, int> integers;      // LISP variables
    std::string printed;

    int modified = 0; // DBMOD; below 0: the host doesn't tell
    std::vector<int> documents = {1};
    int current = 1; // 0 none
    bool application_context = false;
    bool steps_run_in_application_context = true;
    std::function<void()> pumped;

    LRESULT next_hook = 0;
    bool tile_is_due = false;
    int pending_in_help = 99;
    bool process_starts = true;
    STARTUPINFO startup{};

    HWND status_bar = 7;
    RECT bar{0, 0, 1000, 20};
    bool windows_can_be_made = true;
    bool pixel_known = true;
    int pixel_x = 100, pixel_y = 50;
    std::map<std::pair<int, int>, COLORREF> pixels;
    int contexts = 0; // taken and not given back
    bool framework_works = true;
};
extern life_state life;

// Puts all back as in a module that has just been loaded, and takes down what a test leaves.
class life_session
{
public:
    life_session();
    ~life_session();
    life_session(const life_session&) = delete;
    life_session& operator=(const life_session&) = delete;
};

std::string noted(); // calls since the last time, each behind a blank

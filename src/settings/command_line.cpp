#include "settings/command_line.h"

#include <cstring>

#include "hostapi/framework.h"

void send_to_command_line(const char* text)
{
    constexpr std::uintptr_t COMMAND_TEXT = 1;
    const COPYDATASTRUCT data{COMMAND_TEXT, static_cast<DWORD>(std::strlen(text) + 1), text};
    SendMessageA(adsw_acadMainWnd(), WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&data));
}

// dialogs.h: what AutoLISP keeps for a dialog that it has made ready.
#pragma once

#include <map>
#include <string>

#include "hostapi/dcl.h"

namespace host::lisp
{

struct dialog_record {
    ads_hdlg handle = 0;
    int file = -1; // the DCL file's number
    bool running = false;
    std::string default_action;
    std::map<std::string, std::string> actions, data; // by the tile's key
};

} // namespace host::lisp

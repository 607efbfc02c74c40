// dialog_session.h: a DCL text, answers and a captured history for a test.
#pragma once

#include <string>

#include <gtest/gtest.h>

#include "host/core/console.h"
#include "host/core/document.h"
#include "host/core/trace.h"
#include "host/dialogs/dialog.h"
#include "hostapi/ads.h"
#include "hostapi/dcl.h"
#include "tests/host/files/temporary_directory.h"

class dialog_session : public testing::Test
{
protected:
    dialog_session() { host::capture_history(&history); }
    ~dialog_session() override
    {
        host::dialogs::end_all_dialogs();
        host::trace_to("");
        host::capture_history(nullptr);
        host::answers_from_text("");
    }

    // A dialog of the name "d" with these tiles.
    ads_hdlg made(const std::string& tiles, ads_callback default_action = nullptr)
    {
        tmp.write("t.dcl", "d : dialog { " + tiles + " }");
        int id = -1;
        EXPECT_EQ(ads_load_dialog("t.dcl", &id), RTNORM);
        ads_hdlg dialog = 0;
        EXPECT_EQ(ads_new_dialog("d", id, default_action, &dialog), RTNORM);
        return dialog;
    }
    int run(ads_hdlg dialog, const std::string& answers)
    {
        host::answers_from_text(answers);
        int result = -99;
        EXPECT_EQ(ads_start_dialog(dialog, &result), RTNORM);
        return result;
    }
    static std::string value(ads_hdlg dialog, const char* key)
    {
        char text[300];
        return ads_get_tile(dialog, key, text, sizeof text) == RTNORM ? text : "?";
    }

    temporary_directory tmp;
    std::string history;
};

// What actions have seen, "key=value reason" each with a blank behind.
inline std::string& seen()
{
    static std::string log;
    return log;
}

inline void note(ads_callback_packet* packet)
{
    char key[40] = "";
    ads_get_attr_string(packet->tile, "key", key, sizeof key);
    seen() += std::string(key) + "=" + packet->value + " " + std::to_string(packet->reason) + "; ";
}

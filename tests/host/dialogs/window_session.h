// window_session.h: windows of a test: what the host holds for programs must be the same before and after.
#pragma once

#include <string>
#include <vector>

#include "host/core/session.h"
#include "host/dialogs/drawing_contexts.h"
#include "host/dialogs/framework.h"
#include "host/dialogs/message_loop.h"
#include "host/dialogs/windows.h"
#include "tests/host/dialogs/dialog_session.h"

// What hooks and procedures have seen, "name message window" each, parted by "; ".
inline std::vector<std::string>& heard()
{
    static std::vector<std::string> log;
    return log;
}

class window_session : public dialog_session
{
protected:
    window_session()
    {
        host::close_all_documents();
        host::open_document();
        host::dialogs::run_messages(host::dialogs::loop::prompt); // the new drawing is painted
        heard().clear();
        before_ = held();
    }
    ~window_session() override
    {
        host::dialogs::end_all_dialogs();
        host::close_all_documents();
        EXPECT_EQ(held(), before_)
            << "windows, hooks, timers, contexts, drawing objects, extensions, libraries";
    }

    static std::vector<int> held()
    {
        using namespace host::dialogs;
        return {window_count(),         hook_count(),      timer_count(),  context_count(),
                drawing_object_count(), extension_count(), library_count()};
    }
    static void turn(host::dialogs::loop where = host::dialogs::loop::dialog)
    {
        host::dialogs::run_messages(where);
    }
    static std::string log()
    {
        std::string out;
        for (const std::string& one : heard())
            out += (out.empty() ? "" : "; ") + one;
        heard().clear();
        return out;
    }
    // The trace of what is done between this and the next call of it.
    std::string traced()
    {
        host::trace_to("");
        const std::string text = tmp.read("trace.txt");
        host::trace_to(tmp.path + "/trace.txt");
        return text;
    }
    std::string class_of(HWND window)
    {
        char name[40] = "?";
        return GetClassNameA(window, name, sizeof name) ? name : "";
    }

private:
    std::vector<int> before_;
};

// session.h: a drawing, answers and a history for tests of the command line, and objects as short texts.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "host/commandline/answers.h"
#include "host/commandline/closing.h"
#include "host/commandline/commands.h"
#include "host/core/console.h"
#include "host/core/document.h"
#include "host/core/resbuf.h"
#include "host/core/session.h"
#include "host/database/database.h"
#include "host/database/entities.h"
#include "host/database/sysvars.h"
#include "tests/host/files/temporary_directory.h"

namespace host::commandline
{

// Tests of a table are named by its rows.
struct name_of_case {
    template <class Case>
    std::string operator()(const testing::TestParamInfo<Case>& row) const
    {
        return row.param.name;
    }
};

class session : public testing::Test
{
protected:
    void SetUp() override
    {
        close_all_documents();
        run_settings().registry = registry_.path + "/registry.reg"; // the user's own stays as it is
        answers_from_text("");
        request_quit(false);
        open_document();
        db::set_int(doc(), "CMDECHO", 0);
        capture_history(&shown);
    }
    void TearDown() override
    {
        capture_history(nullptr);
        close_all_documents();
        clear_break();
    }

    document& doc() { return current_document(); }
    db::database& data() { return db::database_of(doc()); }

    // Answers from here on; '|' parts them.
    static void answer(std::string_view lines)
    {
        std::string text;
        for (const char c : lines)
            text += c == '|' ? '\n' : c;
        answers_from_text(text + "\n");
    }
    // A call of acedCmd with text values; '|' parts them.
    static int send(std::string_view values)
    {
        list_builder list;
        for (;;) {
            const std::size_t end = values.find('|');
            list.add(rb_text(RTSTR, values.substr(0, end)));
            if (end == std::string_view::npos)
                break;
            values.remove_prefix(end + 1);
        }
        const list_ptr whole(list.take());
        return acedCmd(whole.get());
    }
    // The command as a user types it: name and answers.
    void type(std::string_view line)
    {
        const std::size_t end = line.find('|');
        answer(end == std::string_view::npos ? "" : line.substr(end + 1));
        run_typed(doc(), line.substr(0, end));
    }

    static std::string number(double value)
    {
        char out[40];
        std::snprintf(out, sizeof out, "%.6g", std::abs(value) < 1e-9 ? 0.0 : value);
        return out;
    }
    static std::string place(const db::group& g)
    {
        std::string out = number(g.point[0]) + "," + number(g.point[1]);
        if (g.dimensions == 3)
            out += "," + number(g.point[2]);
        return out;
    }

    // "LINE 10=0,0,0 11=5,0,0": the groups of `codes` in the order in which the object has them.
    std::string described(db::object_id id, const std::vector<int>& codes)
    {
        std::string out(data().type_of(id));
        for (const db::group& g : data().at(id).groups) {
            if (std::find(codes.begin(), codes.end(), g.code) == codes.end())
                continue;
            out += " " + std::to_string(g.code) + "=";
            switch (g.kind) {
            case db::group_kind::real:
                out += number(g.real);
                break;
            case db::group_kind::point:
                out += place(g);
                break;
            case db::group_kind::text:
                out += data().text(g.text);
                break;
            default:
                out += std::to_string(g.integer);
                break;
            }
        }
        for (db::object_id child = db::first_child(data(), id); child; child = db::next_child(data(), child))
            out += " (" + described(child, codes) + ")";
        return out;
    }
    // The objects of the current space, oldest first, parted by " / ".
    std::string objects(const std::vector<int>& codes)
    {
        std::string out;
        for (db::object_id id = db::first_entity(data(), data().current_space()); id;
             id = db::next_entity(data(), id))
            out += (out.empty() ? "" : " / ") + described(id, codes);
        return out;
    }
    int count()
    {
        int n = 0;
        for (db::object_id id = db::first_entity(data(), data().current_space()); id;
             id = db::next_entity(data(), id))
            ++n;
        return n;
    }
    db::object_id nth(int index)
    {
        db::object_id id = db::first_entity(data(), data().current_space());
        while (index-- > 0 && id)
            id = db::next_entity(data(), id);
        return id;
    }
    std::string handle(int index)
    {
        char out[24];
        std::snprintf(out, sizeof out, "#%lX", static_cast<unsigned long>(data().at(nth(index)).handle));
        return out;
    }
    int errno_now() { return db::int_variable(doc(), "ERRNO"); }
    bool has_shown(std::string_view text) const { return shown.find(text) != std::string::npos; }

    std::string shown;

private:
    temporary_directory registry_;
};

} // namespace host::commandline

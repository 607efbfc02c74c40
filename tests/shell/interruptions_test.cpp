// Operations that ask the user, left at each of their prompts in turn, and with a heap that gives no more:
// whatever they have begun is put back.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "host/core/console.h"
#include "host/core/document.h"
#include "host/core/heap.h"
#include "host/core/session.h"
#include "host/database/database.h"
#include "host/database/dxf.h"
#include "host/database/selection_sets.h"
#include "tests/shell/module_session.h"

namespace
{

const std::string DIALOGS = ZENT_SOURCE_DIR "/share/dialogs/";

// In texts %f is the file and %o another that isn't there.
struct interrupted_case {
    const char* name;
    const char* call;     // what stands behind the directory; %d is the directory, %l that of the dialogs
    const char* answers;  // a line each
    const char* contents; // of the file before; null: there is none
    const char* expected; // end of what a whole run prints, or its value
};

std::ostream& operator<<(std::ostream& out, const interrupted_case& c)
{
    return out << c.name;
}

const char* const OWN = "POLYLINE,4\n1,2,5\n3,4,5\n7,8,5\n";
const char* const DTM = "2\n1,2,5\n3,4,6\nEND\n2\n1,2,5\n3,4,5\nEND\n";
const char* const MICROSTATION = "1 2 5 1\n3 4 5 0\n";
const char* const WRITE = "15 \"%d\" \"%l\"";
const char* const READ = "27 \"%d\" \"%l\"";
const char* const PICK = "48 \"Choose\" \"%d\" \"pln\" 1";
const char* const DONE = "\nDone.";

const interrupted_case CASES[] = {
    {"WriteOwn", WRITE, "Zentrik\n!new\n%f\nYes\nall\n\n", nullptr, DONE},
    {"WriteOwnOverAnother", WRITE, "Zentrik\n!new\n%f\nyes\nNo\nall\n\n", "old\n", DONE},
    {"WriteOwnNotOverAnother", WRITE, "Zentrik\n!new\n%f\nno\n%o\nNo\nall\n\n", "old\n", DONE},
    {"AppendOwn", WRITE, "\n!append\n%f\n\nall\n\n", OWN, DONE},
    {"AppendOwnToNoFile", WRITE, "\n!append\n%f\n\nall\n\n", nullptr, DONE},
    {"WriteDtm", WRITE, "Dtm\n!new\n%f\nall\n\n", nullptr, DONE},
    {"WriteDtmOverAnother", WRITE, "Dtm\n!new\n%f\nyes\nall\n\n", "old\n", DONE},
    {"AppendDtm", WRITE, "Dtm\n!append\n%f\nall\n\n", DTM, DONE},
    {"WriteMicroStation", WRITE, "Microstation\n!new\n%f\nall\n\n", nullptr, DONE},
    {"WriteMicroStationOverAnother", WRITE, "Microstation\n!new\n%f\nyes\nall\n\n", "old\n", DONE},
    {"AppendMicroStation", WRITE, "Microstation\n!append\n%f\nall\n\n", MICROSTATION, DONE},
    {"ReadOwn", READ, "Zentrik\n%f\n", OWN, DONE},
    {"ReadDtm", READ, "Dtm\n%f\n", DTM, DONE},
    {"ReadMicroStation", READ, "Microstation\n%f\n", MICROSTATION, DONE},
    {"PickFile", PICK, "%f\n", nullptr, "\"%f\""},
    {"PickFileToReplace", PICK, "%f\nyes\n", "old\n", "\"%f\""},
    {"PickAnotherFileThanTheOneToReplace", PICK, "%f\nno\n%o\n", "old\n", "\"%o\""},
    {"SelectOfApplication", "24 \"SURVEY\"", "all\n\n", nullptr, "<Selection set: "},
};

class Interrupted : public testing::TestWithParam<interrupted_case>
{
protected:
    module_session session;
    const std::string file = session.directory() + "site.pln";

    Interrupted()
    {
        host::run_settings().clock = "20260102.030405"; // drawings hold the time
        session.lisp(R"((progn (setq do_ini 0) (regapp "SURVEY")
            (entmake '((0 . "POLYLINE") (66 . 1) (70 . 8) (10 0.0 0.0 0.0)))
            (entmake '((0 . "VERTEX") (70 . 32) (10 1.0 2.0 3.0)))
            (entmake '((0 . "VERTEX") (70 . 32) (10 4.0 5.0 6.0))) (entmake '((0 . "SEQEND")))
            (entmake '((0 . "LWPOLYLINE") (100 . "AcDbEntity") (8 . "0") (100 . "AcDbPolyline") (90 . 2) (70 . 1)
                       (10 0.0 0.0) (42 . 0.5) (10 9.0 0.0) (10 9.0 9.0) (-3 ("SURVEY" (1000 . "kerb")))))))");
        put_file();
        session.printed();
    }

    struct state {
        std::size_t blocks, bytes, views, sets;
        std::string drawing, contents, other;
    };
    state now() const
    {
        host::db::database& data = host::db::database_of(host::current_document());
        return {host::heap_live_blocks(),
                host::heap_live_bytes(),
                host::live_views(),
                host::db::live_sets(),
                host::db::dxf_text(data, host::db::dxf_version::r2000),
                read_text(file),
                read_text(file + "2")};
    }
    static void expect_same_objects(const state& before, const state& after)
    {
        EXPECT_EQ(after.blocks, before.blocks);
        EXPECT_EQ(after.bytes, before.bytes);
        EXPECT_EQ(after.views, before.views);
        EXPECT_EQ(after.sets, before.sets);
    }
    static void expect_same(const state& before, const state& after)
    {
        expect_same_objects(before, after);
        EXPECT_EQ(after.drawing, before.drawing);
        EXPECT_EQ(after.contents, before.contents);
        EXPECT_EQ(after.other, before.other);
    }

    void put_file() const
    {
        std::filesystem::remove(file);
        std::filesystem::remove(file + "2");
        if (GetParam().contents)
            write_text(file, GetParam().contents);
    }
    std::string filled(std::string text) const
    {
        for (const auto& [mark, value] :
             {std::pair{"%f", file}, {"%o", file + "2"}, {"%d", session.directory()}, {"%l", DIALOGS}})
            if (const std::size_t at = text.find(mark); at != std::string::npos)
                text.replace(at, 2, value);
        return text;
    }
    std::vector<std::string> answers() const
    {
        std::vector<std::string> lines(1);
        for (const char c : filled(GetParam().answers)) {
            lines.back() += c;
            if (c == '\n')
                lines.emplace_back();
        }
        lines.pop_back();
        return lines;
    }
    // What is printed, with the value behind it.
    std::string run(const std::string& answers)
    {
        host::answers_from_text(answers);
        const std::string value =
            session.lisp(filled("(cf:zentutil \"%d\" " + std::string(GetParam().call) + ")"));
        return session.printed() + (value == "nil" ? "" : value);
    }
    bool is_whole(const std::string& told) const
    {
        const std::string expected = filled(GetParam().expected);
        return expected == DONE ? told.ends_with(expected) : told.find(expected) != std::string::npos;
    }
};

class InterruptedPrompts : public Interrupted
{
protected:
    // Leaves the operation at each prompt by what `leaving` answers, then lets it work.
    void leave_at_each_prompt(const std::string& leaving)
    {
        const std::vector<std::string> lines = answers();
        const state before = now();
        std::string given;
        for (std::size_t at = 0; at < lines.size(); given += lines[at++]) {
            SCOPED_TRACE("left at prompt " + std::to_string(at + 1));
            EXPECT_FALSE(is_whole(run(given + leaving)));
            expect_same(before, now());
        }
        EXPECT_TRUE(is_whole(run(given)));
        expect_same_objects(before, now());
    }
};

TEST_P(InterruptedPrompts, CancelLeavesAllAsItWas)
{
    leave_at_each_prompt("^C\n^C\n"); // one who doesn't replace a file is asked for another
}

TEST_P(InterruptedPrompts, EndOfTheAnswersLeavesAllAsItWas)
{
    leave_at_each_prompt("");
}

std::string case_name(const testing::TestParamInfo<interrupted_case>& row)
{
    return row.param.name;
}
INSTANTIATE_TEST_SUITE_P(Operations, InterruptedPrompts, testing::ValuesIn(CASES), case_name);

// ---- a heap that gives no more ----------------------------------------------------------------------

class ExhaustedHeap : public Interrupted
{
protected:
    ExhaustedHeap() { session.lisp("(setq newest (entlast))"); }
    void erase_new() { session.lisp("(while (not (equal newest (entlast))) (entdel (entlast)))"); }
};

TEST_P(ExhaustedHeap, GivesBackWhatItHadTaken)
{
    std::string all;
    for (const std::string& line : answers())
        all += line;
    // The places of the polylines that have come since the start, each a list.
    session.lisp(R"((defun shapes (/ e g p out)
        (setq e newest)
        (while (setq e (entnext e))
          (setq g (entget e)
                p (mapcar 'cdr (vl-remove-if-not '(lambda (x) (= (car x) 10)) g)))
          (if (= (cdr (assoc 0 g)) "LWPOLYLINE")
            (setq out (cons p out))
            (while (and (= (cdr (assoc 0 g)) "POLYLINE") (setq e (entnext e))
                        (= (cdr (assoc 0 (entget e))) "VERTEX"))
              (setq p (append p (list (cdr (assoc 10 (entget e)))))
                    out (if (= (length p) 2) (cons p out) (cons p (cdr out)))))))
        out))");
    EXPECT_TRUE(is_whole(run(all)));
    session.lisp("(setq whole (shapes))");
    erase_new();
    put_file();
    const state before = now();
    long requests = 0;
    for (bool is_refused = true; is_refused; ++requests) {
        SCOPED_TRACE("request " + std::to_string(requests + 1) + " refused");
        put_file();
        host::heap_refuse(requests + 1);
        const std::string told = run(all);
        is_refused = host::heap_refuse(0) == 0;
        EXPECT_TRUE(is_refused || is_whole(told)) << told;
        const state after = now();
        expect_same_objects(before, after);
        // Without one of its vertices a polyline would be another line.
        EXPECT_EQ(session.lisp("(vl-every '(lambda (s) (member s whole)) (shapes))"), "T")
            << session.lisp("(shapes)");
        erase_new();
    }
    EXPECT_GT(requests, 5) << "it takes more than that";
}

INSTANTIATE_TEST_SUITE_P(Operations, ExhaustedHeap,
                         testing::ValuesIn(std::vector<interrupted_case>(CASES, std::end(CASES) - 4)),
                         case_name);

} // namespace

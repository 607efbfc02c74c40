// Several drawings: what a module hears of them and in which order, the document manager, the context, and
// commands of modules.
#include <filesystem>

#include "host/commandline/open_drawings.h"
#include "host/core/command_queue.h"
#include "host/core/context.h"
#include "host/core/heap.h"
#include "host/core/module.h"
#include "host/core/reactors.h"
#include "host/files/installation.h"
#include "host/files/registry.h"
#include "host/lisp/api.h"
#include "tests/host/commandline/session.h"
#include "tests/host/files/temporary_directory.h"

namespace host::commandline
{

namespace
{

std::string told; // of the guest below
int first_number = 1;
bool leaves_everything = false;

// File name; "Drawing12.dwg" counts from the first drawing of the test, as D1.
std::string short_name(std::string_view full)
{
    const std::string name(full.substr(full.find_last_of("/\\") + 1));
    int number = 0;
    if (std::sscanf(name.c_str(), "Drawing%d.dwg", &number) == 1)
        return "D" + std::to_string(number - first_number + 1);
    return name;
}

void note(std::string_view what, std::string_view name)
{
    told += (told.empty() ? "" : " ") + std::string(what) + "(" + std::string(name) + ")";
}

std::string current_name()
{
    return has_document() ? short_name(acDocManagerPtr()->curDocument()->fileName()) : "none";
}

struct document_listener final : AcApDocManagerReactor {
    void documentCreated(AcApDocument* doc) override { note("created", short_name(doc->fileName())); }
    void documentDestroyed(const char* name) override { note("destroyed", short_name(name)); }
    void documentBecameCurrent(AcApDocument* doc) override
    {
        EXPECT_EQ(doc, acDocManagerPtr()->curDocument());
        note("front", short_name(doc->fileName()));
    }
};
struct editor_listener final : AcEditorReactor {
    void commandWillStart(const char* name) override { note("start", name); }
    void commandEnded(const char* name) override { note("end", name); }
    void commandCancelled(const char* name) override { note("cancel", name); }
    void commandFailed(const char* name) override { note("fail", name); }
    void lispWillStart(const char* text) override { note("lisp", text); }
    void lispEnded() override { note("lisp-end", ""); }
    void lispCancelled() override { note("lisp-cancel", ""); }
    void saveComplete(AcDbDatabase* saved, const char* name) override
    {
        EXPECT_EQ(saved, acDocManagerPtr()->curDocument()->database());
        note("saved", short_name(name));
    }
};
document_listener of_documents;
editor_listener of_editor;

AcEditor* editor()
{
    return static_cast<AcEditor*>(acrxSysRegistry()->at("AcEditor"));
}
AcEdCommandStack* stack()
{
    return static_cast<AcEdCommandStack*>(acrxSysRegistry()->at("ACAD_REGISTERED_COMMANDS"));
}

std::string context()
{
    return acDocManagerPtr()->isApplicationContext() ? "application" : "document";
}
void note_context()
{
    note("run", context());
}
void call_itself()
{
    note("run", "modal");
    acedCommand(RTSTR, "_.GMODAL", RTNONE);
    acedCommand(RTSTR, "_.POINT", RTSTR, "1,1", RTNONE);
}
void close_others(void*)
{
    note("step", context());
    AcApDocument* const here = acDocManagerPtr()->curDocument();
    AcApDocumentIterator* walk = acDocManagerPtr()->newAcApDocumentIterator();
    for (; !walk->done(); walk->step())
        if (walk->document() != here)
            acDocManagerPtr()->closeDocument(walk->document());
    delete walk;
}
void close_all()
{
    acDocManagerPtr()->executeInApplicationContext(close_others, nullptr);
    acDocManagerPtr()->closeDocument(acDocManagerPtr()->curDocument());
    note("still", current_name());
}

int guest(int message, void* packet)
{
    switch (message) {
    case AcRx::kInitAppMsg:
        acrxUnlockApplication(packet);
        acDocManagerPtr()->addReactor(&of_documents);
        acDocManagerPtr()->addReactor(&of_documents); // twice is once
        editor()->addReactor(&of_editor);
        stack()->addCommand("GUESTS", "GHELP", "GHELP", 1, note_context);
        stack()->addCommand("GUESTS", "GMODAL", "GMODAL", 0, call_itself);
        stack()->addCommand("GUESTS", "GSESSION", "GSESSION", 0x200000, note_context);
        stack()->addCommand("GUESTS", "GCLOSE", "GCLOSE", 0, close_all);
        break;
    case AcRx::kLoadDwgMsg:
        note("load", current_name());
        acedDefun("g:context", 1);
        acedDefun("g:close", 2);
        break;
    case AcRx::kUnloadDwgMsg:
        note("unload", current_name());
        break;
    case AcRx::kUnloadAppMsg:
        if (leaves_everything)
            break;
        acDocManagerPtr()->removeReactor(&of_documents);
        editor()->removeReactor(&of_editor);
        stack()->removeGroup("GUESTS");
        break;
    case AcRx::kInvkSubrMsg:
        if (acedGetFunCode() == 1)
            acedRetStr(context().c_str());
        else
            acedRetInt(acDocManagerPtr()->closeDocument(acDocManagerPtr()->curDocument()));
        break;
    default:
        break;
    }
    return 0;
}

class Documents : public session
{
protected:
    void SetUp() override
    {
        session::SetUp();
        first_number = doc().number();
        leaves_everything = false;
        clear_command_text();
        ASSERT_TRUE(load_module(guest, "guest"));
        told.clear();
    }
    void TearDown() override
    {
        unload_all_modules();
        session::TearDown();
    }
    std::string heard()
    {
        std::string out;
        out.swap(told);
        return out;
    }
    std::string value_of(std::string_view form)
    {
        const lisp::outcome out = lisp::evaluate_typed(doc(), form);
        expression_ended();
        return out.printed;
    }
    // Drawing NAME.dwg, saved and in front.
    void make(const std::string& name)
    {
        send("NEW|.");
        send("SAVEAS||" + path(name));
        told.clear();
    }
    std::string path(std::string_view name) { return (std::filesystem::path(tmp.path) / name).string(); }
    document& named(std::string_view name)
    {
        for (const auto& d : documents())
            if (short_name(shown_name(*d)) == name)
                return *d;
        ADD_FAILURE() << name << " is not open";
        return doc();
    }

    temporary_directory tmp;
};

// ---- order of events

TEST_F(Documents, NewSavesAndClosesAreToldInOrder)
{
    send("NEW|.");
    EXPECT_EQ(heard(), "start(NEW) created(D2) load(D2) front(D2) end(NEW)");
    send("SAVEAS||" + path("b"));
    EXPECT_EQ(heard(), "start(SAVEAS) saved(b.dwg) end(SAVEAS)");
    send("QSAVE");
    EXPECT_EQ(heard(), "start(QSAVE) saved(b.dwg) end(QSAVE)");
    send("CLOSE");
    EXPECT_EQ(heard(), "start(CLOSE) end(CLOSE) unload(b.dwg) destroyed(b.dwg) front(D1)");
    send("OPEN|" + path("b.dwg"));
    EXPECT_EQ(heard(), "start(OPEN) created(b.dwg) load(b.dwg) front(b.dwg) end(OPEN)");
}

TEST_F(Documents, ASaveUnderAnotherNameIsToldByTheNameOfTheCopy)
{
    make("a");
    send("SAVE|" + path("copy"));
    EXPECT_EQ(heard(), "start(SAVE) saved(copy.dwg) end(SAVE)");
    EXPECT_EQ(current_name(), "a.dwg");
    type("SAVE||Y"); // its own
    EXPECT_EQ(heard(), "start(SAVE) saved(a.dwg) end(SAVE)");
}

TEST_F(Documents, OneThatIsOpenComesToTheFrontAndIsNotLoadedAgain)
{
    make("a");
    make("b");
    send("OPEN|" + path("../" + std::filesystem::path(tmp.path).filename().string() + "/a.dwg"));
    EXPECT_EQ(heard(), "start(OPEN) front(a.dwg) end(OPEN)");
    send("OPEN|" + path("a.dwg")); // in front already
    EXPECT_EQ(heard(), "start(OPEN) end(OPEN)");
    EXPECT_EQ(documents().size(), 3u);
}

TEST_F(Documents, AFailedOpenTellsOfNoDrawing)
{
    send("OPEN|" + path("missing.dwg"));
    EXPECT_EQ(heard(), "start(OPEN) fail(OPEN)");
    type("OPEN|^C");
    EXPECT_EQ(heard(), "start(OPEN) cancel(OPEN)");
    EXPECT_EQ(current_name(), "D1");
}

TEST_F(Documents, TheLastOneIsFollowedByANewOne)
{
    type("CLOSE");
    EXPECT_EQ(heard(), "start(CLOSE) end(CLOSE) unload(D1) destroyed(D1) created(D2) load(D2) front(D2)");
}

TEST_F(Documents, CloseInEitherOrder)
{
    make("a");
    make("b");
    acDocManagerPtr()->closeDocument(module_view(named("a.dwg")));
    EXPECT_EQ(heard(), "unload(a.dwg) destroyed(a.dwg)"); // not the one in front
    acDocManagerPtr()->closeDocument(module_view(named("b.dwg")));
    EXPECT_EQ(heard(), "unload(b.dwg) destroyed(b.dwg) front(D1)");
}

TEST_F(Documents, SwitchesForAWhileAreNotTold)
{
    make("a");
    make("b");
    unload_module("guest");
    EXPECT_EQ(heard(), "unload(D1) unload(a.dwg) unload(b.dwg)");
    load_module(guest, "guest");
    EXPECT_EQ(heard(), "load(D1) load(a.dwg) load(b.dwg)");
    EXPECT_EQ(current_name(), "b.dwg");
}

TEST_F(Documents, EachLoadsTheStartFileBetweenLoadAndFront)
{
    set_start_file([](document& d) {
        note("file", current_name());
        lisp::evaluate_text(d, "(setq started T)", "start");
    });
    send("NEW|.");
    set_start_file({});
    EXPECT_EQ(heard(), "start(NEW) created(D2) load(D2) file(D2) front(D2) end(NEW)");
    EXPECT_EQ(value_of("started"), "T");
}

TEST_F(Documents, TheLastOnesStandInTheListOfRecentFiles)
{
    const auto first_recent = [] {
        const auto key = run_registry()->find(recent_drawings_key());
        const registry_value* value = key ? key->value("File1") : nullptr;
        return value ? short_name(value->data) : std::string();
    };
    send("NEW|.");
    EXPECT_EQ(first_recent(), "");
    send("SAVEAS||" + path("a"));
    EXPECT_EQ(first_recent(), "a.dwg");
    make("b");
    EXPECT_EQ(first_recent(), "b.dwg");
    send("OPEN|" + path("a.dwg"));
    EXPECT_EQ(first_recent(), "a.dwg");
    send("OPEN|" + path("missing.dwg"));
    EXPECT_EQ(first_recent(), "a.dwg");
    send("QSAVE");
    acDocManagerPtr()->appContextOpenDocument(path("b.dwg").c_str());
    EXPECT_EQ(first_recent(), "b.dwg");
}

// ---- names and variables

TEST_F(Documents, EachHasItsOwnNamesAndItsOwnChanges)
{
    value_of("(setq here 1)");
    send("POINT|1,1");
    make("b");
    EXPECT_EQ(value_of("(list here (getvar \"DBMOD\"))"), "(nil 0)");
    bring_to_front(named("D1"));
    EXPECT_EQ(value_of("(list here (/= 0 (getvar \"DBMOD\")))"), "(1 T)");
}

TEST_F(Documents, AnExpressionGoesOnInItsOwnNamesOverTheDrawingInFront)
{
    make("b");
    bring_to_front(named("D1"));
    told.clear();
    EXPECT_EQ(value_of("(progn (setq here 1) (command \"_.OPEN\" \"" + path("b.dwg") +
                       "\") (entmake '((0 . \"POINT\") (10 1.0 2.0 0.0))) (list here (getvar \"DWGNAME\")))"),
              "(1 \"b.dwg\")");
    EXPECT_EQ(current_name(), "b.dwg");
    EXPECT_EQ(count(), 1);
    EXPECT_EQ(value_of("here"), "nil");
    bring_to_front(named("D1"));
    EXPECT_EQ(count(), 0);
    EXPECT_EQ(value_of("here"), "1");
}

TEST_F(Documents, ACommandLeftOpenInAnotherDrawingIsCancelledToo)
{
    make("b");
    bring_to_front(named("D1"));
    told.clear();
    value_of("(command \"_.OPEN\" \"" + path("b.dwg") + "\" \"_.LINE\" \"0,0\")");
    EXPECT_NE(told.find("start(LINE) lisp-end() cancel(LINE)"), std::string::npos) << told;
    told.clear();
}

// ---- LISP

TEST_F(Documents, LispIsToldOncePerForm)
{
    value_of("(defun c:foo () 1)");
    EXPECT_EQ(heard(), "lisp((defun c:foo () 1)) lisp-end()");
    type("FOO");
    EXPECT_EQ(heard(), "lisp((C:FOO)) lisp-end()");
    value_of("(car 1)");
    EXPECT_EQ(heard(), "lisp((car 1)) lisp-cancel()");
    value_of("(command \"_.POINT\" \"1,1\")");
    EXPECT_EQ(heard(), "lisp((command \"_.POINT\" \"1,1\")) start(POINT) end(POINT) lisp-end()");
}

// ---- the document manager

TEST_F(Documents, TheContextFollowsWhatRuns)
{
    EXPECT_EQ(context(), "application");
    EXPECT_EQ(value_of("(g:context)"), "\"document\"");
    told.clear();
    type("GHELP");
    EXPECT_EQ(heard(), "start(GHELP) run(document) end(GHELP)");
    type("GSESSION");
    EXPECT_EQ(heard(), "start(GSESSION) run(application) end(GSESSION)");
    value_of("(command \"GSESSION\")");
    EXPECT_NE(heard().find("run(application)"), std::string::npos);
    EXPECT_EQ(context(), "application");
}

TEST_F(Documents, OpensOnlyInApplicationContext)
{
    make("b");
    send("CLOSE");
    told.clear();
    {
        const context_scope inside(run_context::document);
        EXPECT_NE(acDocManagerPtr()->appContextOpenDocument(path("b.dwg").c_str()), 0);
    }
    EXPECT_EQ(heard(), "");
    EXPECT_EQ(acDocManagerPtr()->appContextOpenDocument(path("b.dwg").c_str()), 0);
    EXPECT_EQ(heard(), "created(b.dwg) load(b.dwg) front(b.dwg)");
    EXPECT_NE(acDocManagerPtr()->appContextOpenDocument(path("none.dwg").c_str()), 0);
    EXPECT_NE(acDocManagerPtr()->appContextOpenDocument(nullptr), 0);
    EXPECT_TRUE(has_shown("none")) << shown;
    EXPECT_EQ(current_name(), "b.dwg");
}

TEST_F(Documents, AModalCommandMayCloseAllAndItsOwnLast)
{
    make("a");
    make("b");
    type("GCLOSE");
    EXPECT_EQ(heard(),
              "start(GCLOSE) step(application) unload(D1) destroyed(D1) unload(a.dwg) destroyed(a.dwg) "
              "still(b.dwg) end(GCLOSE) unload(b.dwg) destroyed(b.dwg) created(D4) load(D4) front(D4)");
}

TEST_F(Documents, AWalkPassesOverWhatIsClosed)
{
    make("a");
    make("b");
    AcApDocumentIterator* walk = acDocManagerPtr()->newAcApDocumentIterator();
    close_when_idle(named("D1"));
    EXPECT_EQ(walk->document(), nullptr);
    EXPECT_FALSE(walk->done());
    walk->step();
    EXPECT_EQ(walk->document(), module_view(named("a.dwg")));
    close_when_idle(named("b.dwg"));
    walk->step();
    EXPECT_TRUE(walk->done());
    EXPECT_EQ(walk->document(), nullptr);
    walk->step();
    delete walk;
}

TEST_F(Documents, ADrawingWhoseExpressionClosesItStaysUntilItsEnd)
{
    make("b");
    EXPECT_EQ(value_of("(list (g:close) (g:close) (getvar \"DWGNAME\"))"), "(0 0 \"b.dwg\")");
    EXPECT_EQ(current_name(), "D1");
    EXPECT_NE(acDocManagerPtr()->closeDocument(nullptr), 0);
}

struct close_case {
    const char* name;
    const char* answers;
    bool named;
    const char* heard;
    bool is_open, is_saved;
};
class Closing : public Documents, public testing::WithParamInterface<close_case>
{
};

TEST_P(Closing, AsksWhatIsToBecomeOfTheChanges)
{
    const close_case& c = GetParam();
    if (c.named)
        make("b");
    else
        send("NEW|.");
    send("POINT|1,1");
    told.clear();
    const int number = doc().number();
    std::string lines = c.answers;
    if (const std::size_t at = lines.find('@'); at != std::string::npos)
        lines.replace(at, 1, path("new.dwg"));
    answer(lines);
    acDocManagerPtr()->closeDocument(module_view(doc()));
    EXPECT_EQ(heard(), c.heard) << shown;
    EXPECT_EQ(document_of_number(number) != nullptr, c.is_open);
    EXPECT_EQ(std::filesystem::exists(path(c.named ? "b.bak" : "new.dxf")), c.is_saved);
    EXPECT_TRUE(has_shown("Save changes to ")) << shown;
    EXPECT_TRUE(has_shown("(yes/no/cancel)")) << shown;
}

INSTANTIATE_TEST_SUITE_P(
    Changes, Closing,
    testing::Values(
        close_case{"Yes", "yes", true, "saved(b.dwg) unload(b.dwg) destroyed(b.dwg) front(D1)", false, true},
        close_case{"No", "no", true, "unload(b.dwg) destroyed(b.dwg) front(D1)", false, false},
        close_case{"Cancel", "cancel", true, "", true, false},
        close_case{"NoAnswerLeft", "", true, "saved(b.dwg) unload(b.dwg) destroyed(b.dwg) front(D1)", false,
                   true},
        close_case{"YesAndAName", "yes|@", false, "saved(new.dwg) unload(new.dwg) destroyed(new.dwg) front(D1)",
                   false, true},
        close_case{"YesAndNoName", "yes|^C", false, "", true, false},
        close_case{"YesWhereNothingCanBeWritten", "yes|/no/such/dir/x.dwg", false, "", true, false}),
    name_of_case());

// ---- commands of modules

TEST_F(Documents, TransparentOnesRunAtThePromptOfAnother)
{
    type("LINE|0,0|'GHELP|5,5|");
    EXPECT_EQ(heard(), "start(LINE) start(GHELP) run(document) end(GHELP) end(LINE)");
    EXPECT_EQ(objects({10, 11}), "LINE 10=0,0,0 11=5,5,0");
    send("LINE|0,0|'_GHELP|6,6|");
    EXPECT_EQ(heard(), "start(LINE) start(GHELP) run(document) end(GHELP) end(LINE)");
    EXPECT_EQ(count(), 2);
    answer("'GHELP|7,7");
    EXPECT_EQ(value_of("(getpoint \"Where: \")"), "(7.0 7.0 0.0)");
    answer("'GHELP");
    EXPECT_EQ(value_of("(getstring T \"Text: \")"), "\"'GHELP\"");
}

TEST_F(Documents, OthersAreRefusedThere)
{
    type("LINE|0,0|'GMODAL|'ZOOM|5,5|");
    EXPECT_EQ(heard(), "start(LINE) end(LINE)");
    EXPECT_TRUE(has_shown("** GMODAL may not be used transparently **")) << shown;
    EXPECT_TRUE(has_shown("** ZOOM may not be used transparently **")) << shown;
    EXPECT_EQ(count(), 1);
}

TEST_F(Documents, AModalOneIsRefusedWhileAnotherRuns)
{
    type("GMODAL");
    EXPECT_EQ(heard(), "start(GMODAL) run(modal) start(POINT) end(POINT) end(GMODAL)");
    EXPECT_TRUE(has_shown("** GMODAL may not run while another command runs **")) << shown;
}

TEST_F(Documents, AModalOneCancelsWhatAProgramHasLeftOpen)
{
    send("LINE|0,0");
    send("GSESSION");
    EXPECT_EQ(heard(), "start(LINE) cancel(LINE) start(GSESSION) run(application) end(GSESSION)");
}

TEST_F(Documents, HelpIsTransparentAndAsksTheHost)
{
    type("LINE|0,0|'?|5,5|");
    EXPECT_EQ(heard(), "start(LINE) start(HELP) end(HELP) end(LINE)");
    send("HELP");
    EXPECT_EQ(heard(), "start(HELP) end(HELP)");
}

TEST_F(Documents, AGroupGoesWhole)
{
    EXPECT_NE(stack()->addCommand("guests", "ghelp", "ghelp", 1, note_context), 0); // there is one
    EXPECT_EQ(stack()->removeGroup("Guests"), 0);
    EXPECT_NE(stack()->removeGroup("Guests"), 0);
    type("GHELP");
    EXPECT_TRUE(has_shown("Unknown command \"GHELP\"")) << shown;
    EXPECT_EQ(heard(), "");
}

// ---- text for the command line

TEST_F(Documents, TextIsTypedWhenTheExpressionHasEnded)
{
    queue_command_text("(setq a 1)\nLINE 0,0 5,5 \n'GHELP\n(car 5)\n");
    EXPECT_EQ(count(), 0);
    EXPECT_FALSE(run_command_text());
    EXPECT_EQ(heard(),
              "lisp((setq a 1)) lisp-end() start(LINE) end(LINE) start(GHELP) run(document) end(GHELP) "
              "lisp((car 5)) lisp-cancel()");
    EXPECT_EQ(count(), 1);
    EXPECT_TRUE(has_shown("Command: LINE\n")) << shown;
    EXPECT_TRUE(run_command_text());
}

TEST_F(Documents, ASessionTakesTextBeforeTheNextAnswer)
{
    queue_command_text("POINT\n1,1\n(+ 1");
    answer(" 2)|QUIT|Y");
    run_session(doc());
    EXPECT_EQ(count(), 1);
    EXPECT_TRUE(has_shown("\n3\n")) << shown;
}

// ---- modules

TEST_F(Documents, WhatAModuleLeavesIsDropped)
{
    leaves_everything = true;
    const std::size_t blocks = heap_live_blocks();
    testing::internal::CaptureStderr();
    EXPECT_TRUE(unload_module("guest"));
    const std::string complaints = testing::internal::GetCapturedStderr();
    EXPECT_NE(complaints.find("the module guest has left 2 reactors behind"), std::string::npos) << complaints;
    EXPECT_NE(complaints.find("the module guest has left 4 commands behind"), std::string::npos) << complaints;
    EXPECT_EQ(heap_live_blocks(), blocks);
    told.clear();
    send("NEW|.");
    type("GHELP");
    EXPECT_EQ(heard(), "");
    EXPECT_FALSE(is_external("g:close"));
}

TEST_F(Documents, ArxLoadsUnloadsAndLists)
{
    type("ARX|?");
    EXPECT_TRUE(has_shown("Loaded modules:\n  guest\n")) << shown;
    type("ARX|C");
    EXPECT_TRUE(has_shown("GUESTS GHELP")) << shown;
    type("ARX|U|nobody");
    EXPECT_TRUE(has_shown("nobody is not loaded.")) << shown;
    type("ARX|L|nobody");
    EXPECT_TRUE(has_shown("Cannot find the module nobody.")) << shown;
    type("ARX|U|C:\\BIN\\GUEST.arx");
    EXPECT_TRUE(has_shown("is unloaded.")) << shown;
    type("ARX|?");
    EXPECT_TRUE(has_shown("No module is loaded.")) << shown;
    type("ARX|C");
    EXPECT_TRUE(has_shown("No module has a command.")) << shown;
}

} // namespace

} // namespace host::commandline

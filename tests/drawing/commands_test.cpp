// What asks the user: picks, selection filters and a layer by the host's command.
#include <gtest/gtest.h>

#include "drawing/selection.h"
#include "drawing/tables.h"
#include "host/core/console.h"
#include "host/core/document.h"
#include "host/core/heap.h"
#include "host/core/module.h"
#include "host/core/trace.h"
#include "hostapi/ads.h"
#include "hostapi/editor.h"
#include "tests/shell/module_session.h"

namespace
{

class Asking : public testing::Test
{
protected:
    module_session session;
    std::size_t blocks = 0;

    Asking()
    {
        session.lisp("(setq lspdir$ \"" ZENT_SOURCE_DIR "/share/dialogs/\")");
        session.lisp(
            "(entmake '((0 . \"LINE\") (10 0.0 0.0 0.0) (11 10.0 0.0 0.0)))"
            "(entmake '((0 . \"CIRCLE\") (10 50.0 0.0 0.0) (40 . 5.0)))"
            "(entmake '((0 . \"LWPOLYLINE\") (100 . \"AcDbEntity\") (8 . \"0\") (100 . \"AcDbPolyline\") "
            "(90 . 2) (70 . 0) (10 0.0 20.0) (10 9.0 20.0)))"
            "(entmake '((0 . \"POLYLINE\") (66 . 1) (70 . 0) (10 0.0 0.0 0.0)))"
            "(entmake '((0 . \"VERTEX\") (10 0.0 30.0 0.0)))(entmake '((0 . \"VERTEX\") (10 9.0 30.0 0.0)))"
            "(entmake '((0 . \"SEQEND\")))");
        session.printed();
        blocks = host::heap_live_blocks();
    }
    void TearDown() override { EXPECT_EQ(host::heap_live_blocks(), blocks); }
    static std::string type_of(const ads_name name)
    {
        resbuf* list = acdbEntGet(name);
        std::string type;
        for (const resbuf* at = list; at; at = at->rbnext)
            if (at->restype == 0)
                type = at->resval.rstring;
        acutRelRb(list);
        return type;
    }
    std::string layer_commands(const char* name, int color, const std::string& answers = "")
    {
        const std::string file = session.directory() + "trace";
        host::answers_from_text(answers + "left over\n");
        host::trace_to(file);
        layer_by_command(name, color);
        host::trace_to("");
        EXPECT_EQ(host::next_answer("").value_or("none"), "left over");
        return read_text(file);
    }
};

TEST_F(Asking, FilterTakesPolylinesOfEitherKind)
{
    for (int round = 0; round < 2; ++round) { // its nodes are used again
        resbuf head;
        pl_filter_polylines(&head, nullptr);
        ads_name set;
        ASSERT_EQ(acedSSGet("X", nullptr, nullptr, &head, set), RTNORM);
        std::int32_t length = 0;
        acedSSLength(set, &length);
        EXPECT_EQ(length, 2);
        acedSSFree(set);
        acad_free(head.resval.rstring);
    }
}

TEST_F(Asking, FilterGoesOnWithTheCallersTail)
{
    char layer[] = "ELSEWHERE";
    resbuf tail{nullptr, 8, {}}, head;
    tail.resval.rstring = layer;
    pl_filter_polylines(&head, &tail);
    EXPECT_EQ(head.restype, -4);
    EXPECT_STREQ(head.resval.rstring, "<OR");
    EXPECT_STREQ(head.rbnext->resval.rstring, "POLYLINE");
    EXPECT_STREQ(head.rbnext->rbnext->resval.rstring, "LWPOLYLINE");
    EXPECT_STREQ(head.rbnext->rbnext->rbnext->resval.rstring, "OR>");
    EXPECT_EQ(head.rbnext->rbnext->rbnext->rbnext, &tail);
    ads_name set;
    EXPECT_NE(acedSSGet("X", nullptr, nullptr, &head, set), RTNORM);
    acad_free(head.resval.rstring);
}

TEST_F(Asking, PickGoesOnUntilAListedTypeIsHit)
{
    ads_name name;
    ads_point point;
    host::answers_from_text("5,0\n500,500\n55,0\n");
    EXPECT_EQ(pick_entity_of_types("ARC CIRCLE", "\nPick: ", name, point), RTNORM);
    EXPECT_EQ(type_of(name), "CIRCLE");
    const std::string told = session.printed();
    EXPECT_NE(told.find("\nSelection is not one of 'ARC CIRCLE'."), std::string::npos) << told;
    host::answers_from_text("^C\n");
    EXPECT_EQ(pick_entity_of_types("LINE", "\nPick: ", name, point), RTCAN);
    host::answers_from_text("\n");
    EXPECT_EQ(pick_entity_of_types("LINE", "\nPick: ", name, point), RTNONE);
}

TEST_F(Asking, LayerThatIsThereIsThawedAndSet)
{
    session.lisp(
        "(entmake '((0 . \"LAYER\") (100 . \"AcDbSymbolTableRecord\") (100 . \"AcDbLayerTableRecord\") "
        "(2 . \"KERB\") (70 . 1) (62 . 3) (6 . \"Continuous\")))");
    const std::string trace = layer_commands("kerb", 5);
    EXPECT_NE(trace.find("acedCommand (\"_.LAYER\" \"_T\" \"KERB\" \"_S\" \"KERB\" \"\")"), std::string::npos)
        << trace;
    EXPECT_EQ(trace.find("REGENMODE"), std::string::npos);
    EXPECT_EQ(session.lisp("(list (getvar \"CLAYER\") (cdr (assoc 70 (tblsearch \"LAYER\" \"KERB\"))))"),
              "(\"KERB\" 0)");
}

TEST_F(Asking, NewLayerIsMadeWithRegenerationOff)
{
    session.lisp("(setvar \"REGENMODE\" 1)");
    const std::string trace = layer_commands("fence", 5);
    const auto off = trace.find("acedSetVar \"REGENMODE\" 0");
    const auto make = trace.find("acedCommand (\"_.LAYER\" \"_M\" \"FENCE\" \"_C\" 5 \"FENCE\" \"\")");
    const auto back = trace.find("acedSetVar \"REGENMODE\" 1");
    EXPECT_LT(off, make) << trace;
    EXPECT_LT(make, back) << trace;
    EXPECT_NE(back, std::string::npos) << trace;
    EXPECT_EQ(session.lisp("(list (getvar \"CLAYER\") (cdr (assoc 62 (tblsearch \"LAYER\" \"FENCE\"))) "
                           "(getvar \"REGENMODE\"))"),
              "(\"FENCE\" 5 1)");
}

TEST_F(Asking, CurrentLayerAsANameDoesNothing)
{
    EXPECT_EQ(layer_commands("clayer", 5), "");
}

TEST_F(Asking, BadLayerNameIsPutToTheUserUntilItIsGood)
{
    const std::string trace = layer_commands("a:b", 5, "!ok\nnewnam=\n!ok\nnewnam=good\n!ok\n");
    for (const char* line : {"\"badnam\" \"Invalid Layer Name - A:B\"", "\"newnam\" \"A:B\"",
                             "\"badnam\" \"Invalid Layer Name - \"", "\"newnam\" 2 -> RTNORM",
                             "\"newnam\" 3 -> RTNORM", "(\"_.LAYER\" \"_M\" \"good\" \"_C\" 5 \"good\" \"\")"})
        EXPECT_NE(trace.find(line), std::string::npos) << line << " in " << trace;
}

TEST_F(Asking, EmptyLayerNameIsPutToTheUser)
{
    const std::string trace = layer_commands("", 5, "newnam=KERB\n!ok\n");
    EXPECT_NE(trace.find("(\"_.LAYER\" \"_M\" \"KERB\""), std::string::npos) << trace;
}

TEST_F(Asking, BadLayerNameIsOfferedAsItCame)
{
    const std::string trace = layer_commands(" a:b ", 5, "!ok\nnewnam= KERB LINE \n!ok\n");
    const auto came = trace.find("\"newnam\" \" A:B \""), trimmed = trace.find("\"newnam\" \"A:B\"");
    EXPECT_LT(came, trimmed) << trace;
    EXPECT_NE(trimmed, std::string::npos) << trace;
    EXPECT_NE(trace.find("(\"_.LAYER\" \"_M\" \"KERB LINE\""), std::string::npos) << trace;
    EXPECT_EQ(session.lisp("(getvar \"CLAYER\")"), "\"KERB LINE\"");
}

int helped = 0;

// Stands in for what answers calls for help.
int helper_entry(int message, void*)
{
    if (message == AcRx::kLoadDwgMsg)
        acedDefun("cf:zentutil", 0);
    if (message != AcRx::kInvkSubrMsg)
        return 0;
    resbuf* args = acedGetArgs();
    for (const resbuf* at = args; at; at = at->rbnext)
        helped += at->restype != RTSTR && at->resval.rint == 38;
    acutRelRb(args);
    return acedRetNil();
}

TEST_F(Asking, HelpOfTheLayerDialogAsksForHelpAndTheDialogStays)
{
    host::load_module(helper_entry, "helper");
    helped = 0;
    const std::string trace = layer_commands("a:b", 5, "!help\nnewnam=KERB\n!ok\n");
    EXPECT_EQ(helped, 1);
    EXPECT_NE(trace.find("(\"_.LAYER\" \"_M\" \"KERB\""), std::string::npos) << trace;
}

TEST_F(Asking, LayerDialogThatIsLeftMakesNoLayer)
{
    const std::string trace = layer_commands("a:b", 5, "!cancel\n");
    EXPECT_EQ(trace.find("acedCommand"), std::string::npos) << trace;
    EXPECT_NE(trace.find("ads_unload_dialog"), std::string::npos) << trace;
}

TEST_F(Asking, EditedLayerNameIsCutAt78Characters)
{
    for (const std::size_t length : {77u, 78u, 79u}) {
        const std::string name(length, 'N');
        layer_commands("a:b", 5, "newnam=" + name + "\n!ok\n");
        EXPECT_EQ(session.lisp("(getvar \"CLAYER\")"), "\"" + name.substr(0, 78) + "\"") << length;
    }
}

TEST_F(Asking, MissingLayerDialogIsToldWithAPause)
{
    session.lisp("(setq lspdir$ \"" + session.directory() + "\")");
    blocks = host::heap_live_blocks();
    session.printed();
    std::string trace = layer_commands("a:b", 5, "\n");
    EXPECT_EQ(trace.find("acedCommand"), std::string::npos) << trace;
    std::string told = session.printed();
    EXPECT_NE(told.find("\nError: Unable to open " + session.directory() + "zentfile.dcl dialog."),
              std::string::npos)
        << told;
    EXPECT_NE(told.find("\nPress ENTER to continue."), std::string::npos) << told;

    write_text(session.directory() + "zentfile.dcl",
               "other : dialog { : button { key = \"ok\"; label = \"OK\"; is_cancel = true; } }\n");
    trace = layer_commands("", 5, "\n");
    told = session.printed();
    EXPECT_NE(told.find("\nLoad Dialog Error in zentfile.dcl"), std::string::npos) << told;
    EXPECT_NE(told.find("\nPress ENTER to continue."), std::string::npos) << told;
    EXPECT_NE(trace.find("ads_unload_dialog"), std::string::npos) << trace;

    // A name that nobody could mend is refused, and no other value of the call becomes a layer.
    trace = layer_commands("a:b", 5, "\n");
    EXPECT_NE(trace.find("(\"_.LAYER\" \"_M\" \"A:B\" \"_C\" 5 \"A:B\" \"\") -> RTERROR"), std::string::npos)
        << trace;
    EXPECT_EQ(
        session.lisp("(list (getvar \"CLAYER\") (cdr (assoc 2 (tblnext \"LAYER\" t))) (tblnext \"LAYER\"))"),
        "(\"0\" \"0\" nil)");
}

TEST_F(Asking, ColourThatIsNoLayersLeavesNoCommandOpen)
{
    const std::string trace = layer_commands("fence", 256);
    EXPECT_NE(trace.find("\"_C\" 256 \"FENCE\" \"\") -> RTERROR"), std::string::npos) << trace;
    EXPECT_EQ(session.lisp("(list (getvar \"CLAYER\") (cdr (assoc 62 (tblsearch \"LAYER\" \"FENCE\"))))"),
              "(\"FENCE\" 7)");
    layer_commands("0", 7);
    EXPECT_EQ(session.lisp("(getvar \"CLAYER\")"), "\"0\"");
}

} // namespace

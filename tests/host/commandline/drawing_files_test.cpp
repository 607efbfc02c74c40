// Drawings from and to files.
#include <filesystem>

#include "host/commandline/closing.h"
#include "host/lisp/api.h"
#include "tests/host/commandline/session.h"
#include "tests/host/files/temporary_directory.h"

namespace host::commandline
{

namespace
{

namespace fs = std::filesystem;

class drawing_files : public session
{
protected:
    std::string path(std::string_view name) { return (fs::path(tmp.path) / name).string(); }
    bool modified() { return db::int_variable(doc(), "DBMOD") != 0; }

    temporary_directory tmp;
};

TEST_F(drawing_files, SaveasNamesTheDrawingAndQsaveKeepsABackup)
{
    send("POINT|1,2");
    EXPECT_TRUE(modified());
    EXPECT_EQ(send("SAVEAS||" + path("site.dwg")), RTNORM) << shown;
    EXPECT_FALSE(modified());
    EXPECT_TRUE(fs::exists(path("site.dxf")));
    EXPECT_EQ(doc().file, path("site.dxf"));
    EXPECT_EQ(db::text_variable(doc(), "DWGNAME"), "site.dwg");
    send("POINT|3,4");
    EXPECT_EQ(send("QSAVE"), RTNORM);
    EXPECT_FALSE(modified());
    EXPECT_TRUE(fs::exists(path("site.bak")));
}

TEST_F(drawing_files, QsaveOfAnUnnamedDrawingAsksForAName)
{
    type("QSAVE|" + path("first"));
    EXPECT_TRUE(fs::exists(path("first.dxf"))) << shown;
    EXPECT_TRUE(has_shown("Save drawing as <")) << shown;
}

TEST_F(drawing_files, AnotherDrawingIsReplacedOnlyWithYes)
{
    send("SAVEAS||" + path("a.dwg"));
    send("POINT|1,2");
    send("SAVEAS|2000|" + path("b.dwg"));
    send("POINT|3,4");
    send("SAVEAS||" + path("a.dwg") + "|N");
    EXPECT_EQ(doc().file, path("b.dxf"));
    EXPECT_TRUE(modified());
    type("SAVEAS||" + path("a.dwg") + "|Y");
    EXPECT_EQ(doc().file, path("a.dxf"));
    EXPECT_TRUE(has_shown("Do you want to replace it? [Yes/No] <N>: Y")) << shown;
}

TEST_F(drawing_files, WhatIsSavedOpensAgainInADocumentOfItsOwn)
{
    send("LAYER|M|FENCE|");
    send("LINE|0,0|5,6,7|");
    send("SAVEAS||" + path("site.dwg"));
    const int first = doc().number();
    send("NEW|.");
    EXPECT_NE(doc().number(), first);
    EXPECT_EQ(count(), 0);
    send("SAVEAS||" + path("other.dwg"));
    close_document(*documents().front());
    EXPECT_EQ(send("OPEN|" + path("site.dwg")), RTNORM) << shown;
    EXPECT_EQ(documents().size(), 2u);
    EXPECT_EQ(objects({8, 10, 11}), "LINE 8=FENCE 10=0,0,0 11=5,6,7");
    EXPECT_FALSE(modified());
    EXPECT_EQ(db::text_variable(doc(), "DWGNAME"), "site.dwg");
}

TEST_F(drawing_files, ADrawingThatIsOpenBecomesCurrent)
{
    send("SAVEAS||" + path("site.dwg"));
    const int first = doc().number();
    send("NEW|.");
    send("OPEN|" + path("site.dwg"));
    EXPECT_EQ(doc().number(), first);
    EXPECT_EQ(documents().size(), 2u);
}

TEST_F(drawing_files, AMissingFileLeavesEverythingAsItIs)
{
    send("POINT|1,2");
    const int before = doc().number();
    EXPECT_EQ(send("OPEN|" + path("nowhere.dwg")), RTERROR);
    EXPECT_EQ(doc().number(), before);
    EXPECT_EQ(documents().size(), 1u);
    EXPECT_EQ(count(), 1);
    EXPECT_TRUE(has_shown("nowhere")) << shown;
}

TEST_F(drawing_files, AFileThatCannotBeWrittenKeepsTheNameAndTheChanges)
{
    send("POINT|1,2");
    EXPECT_EQ(send("SAVEAS||" + path("no/such/dir/site.dwg")), RTERROR);
    EXPECT_EQ(doc().file, "");
    EXPECT_TRUE(modified());
}

TEST_F(drawing_files, ABlockIsReadFromADrawing)
{
    send("LAYER|M|SYMBOL|C|2||");
    send("CIRCLE|0,0|1");
    send("SAVEAS||" + path("mark.dwg"));
    send("NEW|.");
    EXPECT_EQ(send("INSERT|" + path("mark.dwg") + "|5,5|1|1|0"), RTNORM) << shown;
    EXPECT_EQ(objects({2, 10}), "INSERT 2=mark 10=5,5,0");
    const db::object_id block = data().record("BLOCK_RECORD", "mark");
    ASSERT_NE(block, 0u);
    EXPECT_EQ(described(db::first_entity(data(), block), {8, 40}), "CIRCLE 8=SYMBOL 40=1");
    const db::object_id layer = data().record("LAYER", "SYMBOL");
    ASSERT_NE(layer, 0u);
    EXPECT_EQ(db::int_of(data().at(layer).groups, 62, 0), 2);
}

TEST_F(drawing_files, CloseWaitsForTheEndOfTheExpression)
{
    send("NEW|.");
    const int closing = doc().number();
    lisp::evaluate_typed(doc(), "(progn (command \"CLOSE\") (setq still (getvar \"DWGNAME\")) (princ still))");
    EXPECT_TRUE(has_shown("Drawing" + std::to_string(closing) + ".dwg")) << shown;
    EXPECT_EQ(doc().number(), closing);
    expression_ended();
    EXPECT_NE(doc().number(), closing);
    EXPECT_EQ(documents().size(), 1u);
}

TEST_F(drawing_files, ClosingTheLastDrawingLeavesANewOne)
{
    const int closing = doc().number();
    type("CLOSE");
    ASSERT_TRUE(has_document());
    EXPECT_NE(doc().number(), closing);
}

TEST_F(drawing_files, QuitAsksBeforeChangesAreLost)
{
    send("POINT|1,2");
    type("QUIT|N");
    EXPECT_FALSE(quit_requested());
    type("QUIT|Y");
    EXPECT_TRUE(quit_requested());
    request_quit(false);
    send("UNDO|1");
    type("END|" + path("ended.dwg"));
    EXPECT_TRUE(quit_requested());
    EXPECT_TRUE(fs::exists(path("ended.dxf")));
}

} // namespace

} // namespace host::commandline

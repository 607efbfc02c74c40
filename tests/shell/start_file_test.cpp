// The LISP file that the host loads behind the module.
#include <gtest/gtest.h>

#include <string>

#include "host/core/document.h"
#include "host/lisp/api.h"
#include "tests/shell/module_session.h"

namespace
{

void load_start_file()
{
    const host::lisp::outcome outcome =
        host::lisp::load_program(host::current_document(), ZENT_SOURCE_DIR "/share/lisp/zentrik.lsp");
    EXPECT_EQ(outcome.how, host::lisp::ending::done) << outcome.message;
}

TEST(StartFile, SetsTheProductsDirectories)
{
    module_session session;
    session.name_drawing();
    session.lisp("(setq *zentrik-share* \"/opt/zentrik/\")");
    load_start_file();
    EXPECT_EQ(session.lisp("(list lspdir$ psname)"), "(\"/opt/zentrik/dialogs/\" \"/opt/zentrik/symbols/\")");
    EXPECT_EQ(
        session.lisp("(equal (list usrdir$ tmpdir$) (list (getvar \"DWGPREFIX\") (getvar \"DWGPREFIX\")))"),
        "T");
    EXPECT_EQ(session.printed(), "");
}

TEST(StartFile, LeavesWhatIsSet)
{
    module_session session;
    session.lisp("(setq *zentrik-share* \"/opt/zentrik/\" usrdir$ \"C:/U/\" lspdir$ \"C:/L/\" psname \"C:/P/\""
                 " tmpdir$ \"C:/T/\")");
    load_start_file();
    EXPECT_EQ(session.lisp("(list usrdir$ lspdir$ psname tmpdir$)"),
              "(\"C:/U/\" \"C:/L/\" \"C:/P/\" \"C:/T/\")");
}

TEST(StartFile, DefinesACommandForEachTool)
{
    module_session session;
    session.lisp("(setq *zentrik-share* \"/opt/zentrik/\")");
    load_start_file();
    for (const char* name :
         {"PLWRITE", "PLREAD", "HORIZVIEW", "EXTENDARC", "ARCTEXT", "CURVELEADER", "ADDARROW"})
        EXPECT_TRUE(host::lisp::has_command(host::current_document(), name)) << name;
}

} // namespace

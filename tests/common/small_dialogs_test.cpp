// The small dialogs: tiles, answers, and what happens without them.
#include <gtest/gtest.h>

#include <string>

#include "common/small_dialogs.h"
#include "tests/fakes/fake_host.h"

namespace
{

void give_dialogs()
{
    fake.lisp["lspdir$"] = text_value("C:\\LSP\\");
    fake.dialogs["C:\\LSP\\zentfile.dcl"] = {"zent_alert", "zent_get_string", "zent_yesnoall"};
}

TEST(AlertBox, ShortTextIsShownInTheDialog)
{
    for (const std::size_t length : {std::size_t{0}, std::size_t{5}, std::size_t{50}}) {
        host_session session;
        give_dialogs();
        std::string shown = "<none>";
        fake.person = [&] {
            shown = fake.tiles["msg"];
            press("ok");
        };
        const std::string text(length, 'x');
        zent_alert_box(text.c_str());
        EXPECT_EQ(shown, text);
        EXPECT_TRUE(fake.alerts.empty());
        EXPECT_TRUE(fake.unknown_tiles.empty());
        EXPECT_EQ(fake.loaded_files, 0);
        EXPECT_TRUE(session.heap_is_as_before());
    }
}

TEST(AlertBox, LongTextOrSeveralLinesGoToTheHost)
{
    for (const std::string& text : {std::string(51, 'x'), std::string("two\nlines")}) {
        host_session session;
        give_dialogs();
        bool ran = false;
        fake.person = [&] { ran = true; };
        zent_alert_box(text.c_str());
        EXPECT_EQ(fake.alerts, std::vector<std::string>{text});
        EXPECT_FALSE(ran);
    }
}

TEST(AlertBox, NoDirectoryOrNoDialogGoesToTheHost)
{
    host_session session;
    fake.dialogs["zentfile.dcl"] = {"zent_alert"};
    zent_alert_box("unset directory");
    fake.lisp["lspdir$"] = text_value("C:\\LSP\\");
    zent_alert_box("no file");
    fake.dialogs["C:\\LSP\\zentfile.dcl"] = {"another"};
    zent_alert_box("no such dialog");
    EXPECT_EQ(fake.alerts, (std::vector<std::string>{"unset directory", "no file", "no such dialog"}));
    EXPECT_EQ(fake.loaded_files, 0);
}

TEST(InputBox, OkTakesTheTextCutToItsSize)
{
    host_session session;
    give_dialogs();
    std::string prompt;
    fake.person = [&] {
        prompt = fake.tiles["prompt"];
        fake.tiles["value"] = "abcdef";
        press("ok");
    };
    char out[5] = {'x', 'x', 'x', 'x', 'x'};
    EXPECT_EQ(zent_input_box("Name:", "Title", out, 4), RTNORM);
    EXPECT_STREQ(out, "abc");
    EXPECT_EQ(out[4], 'x');
    EXPECT_EQ(prompt, "Name:");
    EXPECT_EQ(fake.window_title, "Title");
    EXPECT_EQ(fake.loaded_files, 0);
    EXPECT_TRUE(session.heap_is_as_before());
}

TEST(InputBox, CancelLeavesTheText)
{
    host_session session;
    give_dialogs();
    fake.person = [] { fake.tiles["value"] = "abcdef"; };
    char out[8] = "before";
    EXPECT_EQ(zent_input_box("Name:", "Title", out, sizeof out), RTCAN);
    EXPECT_STREQ(out, "before");
    EXPECT_EQ(fake.loaded_files, 0);
}

TEST(InputBox, MissingDialogIsTold)
{
    host_session session;
    fake.lisp["lspdir$"] = text_value("C:\\LSP\\");
    char out[8] = "before";
    EXPECT_EQ(zent_input_box("Name:", "Title", out, sizeof out), RTERROR);
    EXPECT_EQ(session.printed, "Can not load a dialog definition\n");
    fake.dialogs["C:\\LSP\\zentfile.dcl"] = {"another"};
    EXPECT_EQ(zent_input_box("Name:", "Title", out, sizeof out), RTERROR);
    EXPECT_STREQ(out, "before");
}

TEST(YesNoAll, EachButtonHasItsNumber)
{
    const std::pair<const char*, int> cases[] = {{"yes", 1}, {"yesall", 2}, {"no", 3}, {"noall", 4}};
    for (const auto& [key, answer] : cases) {
        host_session session;
        give_dialogs();
        std::string prompt;
        fake.person = [&, k = key] {
            prompt = fake.tiles["prompt"];
            press(k);
        };
        EXPECT_EQ(zent_yes_no_all("Copy it?"), answer) << key;
        EXPECT_EQ(prompt, "Copy it?");
        EXPECT_EQ(fake.loaded_files, 1) << "the file stays loaded";
        EXPECT_TRUE(fake.unknown_tiles.empty());
    }
}

TEST(YesNoAll, ClosedWithoutAButtonIsNoToAll)
{
    host_session session;
    give_dialogs();
    EXPECT_EQ(zent_yes_no_all("Copy it?"), 4);
}

TEST(YesNoAll, MissingDialogIsToldAndCountsAsYes)
{
    host_session session;
    fake.lisp["lspdir$"] = text_value("C:\\LSP\\");
    EXPECT_EQ(zent_yes_no_all("Copy it?"), 1);
    EXPECT_EQ(session.printed, "Error loading dialog");
    fake.dialogs["C:\\LSP\\zentfile.dcl"] = {"another"};
    EXPECT_EQ(zent_yes_no_all("Copy it?"), 1);
    EXPECT_EQ(fake.loaded_files, 0);
}

} // namespace

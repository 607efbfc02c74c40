// The small dialogs with the dialog file that the product delivers.
#include <gtest/gtest.h>

#include <string>

#include "common/small_dialogs.h"
#include "host/core/console.h"
#include "hostapi/adsdef.h"
#include "tests/shell/module_session.h"

namespace
{

struct dialogs_session : module_session {
    dialogs_session() { lisp("(setq lspdir$ \"" ZENT_SOURCE_DIR "/share/dialogs/\")"); }
};

TEST(DeliveredDialogs, AlertShowsItsText)
{
    dialogs_session session;
    host::answers_from_text("!ok\n");
    zent_alert_box("Nothing to do.");
    const std::string printed = session.printed();
    EXPECT_NE(printed.find("[dialog zent_alert]"), std::string::npos) << printed;
    EXPECT_EQ(printed.find("[alert]"), std::string::npos) << printed;
    zent_alert_box("Two\nlines");
    EXPECT_NE(session.printed().find("[alert] Two"), std::string::npos);
}

TEST(DeliveredDialogs, InputBoxTakesAText)
{
    dialogs_session session;
    char out[8] = "before";
    host::answers_from_text("value=LOT 17\n!ok\n");
    EXPECT_EQ(zent_input_box("Name:", "Lots", out, sizeof out), RTNORM);
    EXPECT_STREQ(out, "LOT 17");
    host::answers_from_text("value=LOT 18\n!cancel\n");
    EXPECT_EQ(zent_input_box("Name:", "Lots", out, sizeof out), RTCAN);
    EXPECT_STREQ(out, "LOT 17");
    host::answers_from_text("^C\n");
    EXPECT_EQ(zent_input_box("Name:", "Lots", out, sizeof out), RTCAN);
}

TEST(DeliveredDialogs, YesNoAllHasItsFourButtons)
{
    dialogs_session session;
    const std::pair<const char*, int> cases[] = {
        {"!yes\n", 1}, {"!yesall\n", 2}, {"!no\n", 3}, {"!noall\n", 4}, {"^C\n", 4}};
    for (const auto& [answer, number] : cases) {
        host::answers_from_text(answer);
        EXPECT_EQ(zent_yes_no_all("Copy it?"), number) << answer;
    }
}

} // namespace

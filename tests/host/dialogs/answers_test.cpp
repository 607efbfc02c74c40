#include "tests/host/dialogs/dialog_session.h"

namespace
{

class DialogAnswers : public dialog_session
{
protected:
    // The actions and the history of a dialog whose tiles are all watched.
    std::string acted(const std::string& tiles, const std::string& answers)
    {
        seen().clear();
        history.clear();
        last_result = run(made(tiles, note), answers);
        return seen();
    }
    int last_result = 0;
};

TEST_F(DialogAnswers, SettingATileRunsItsAction)
{
    const char* const tiles =
        ": edit_box { key = \"e\"; edit_limit = 5; } : edit_box { key = \"f\"; }"
        ": toggle { key = \"t\"; } : slider { key = \"s\"; min_value = 1; max_value = 9; }"
        ": popup_list { key = \"p\"; list = \"a\\nb\"; } : list_box { key = \"l\"; list = \"a\\nb\"; }"
        ": list_box { key = \"m\"; list = \"a\\nb\\nc\"; multiple_select = true; }"
        ": image_button { key = \"i\"; } : button { key = \"b\"; }";
    struct {
        const char *answer, *seen;
    } const cases[] = {
        {"e=text", "e=text 1; "},
        {"e=", "e= 1; "},
        {" e =  a=b ", "e=  a=b 1; "},
        {"e=too long", "e=too l 1; "}, // edit_limit
        {"t=1", "t=1 1; "},
        {"t=0", "t=0 1; "},
        {"s=9", "s=9 1; "},
        {"p=1", "p=1 1; "},
        {"l=0", "l=0 1; "},
        {"l=", "l= 1; "},
        {"m=0 2", "m=0 2 1; "},
        {"!b", "b= 1; "},
        {"!b 4", "b= 4; "},
        {"!e 2", "e= 2; "},
        {"!t", "t=1 1; "},
        {"!t\n!t", "t=1 1; t=0 1; "},
        {"!l 4", "l= 4; "},
        {"!s 3", "s= 3; "},
        {"; a comment\n!b", "b= 1; "},
    };
    for (const auto& one : cases)
        EXPECT_EQ(acted(tiles, one.answer), one.seen) << one.answer;
}

TEST_F(DialogAnswers, LongTextsAreCutToTheUsualLimit)
{
    const std::string text(200, 'x');
    EXPECT_EQ(acted(": edit_box { key = \"e\"; }", "e=" + text), "e=" + text.substr(0, 132) + " 1; ");
}

TEST_F(DialogAnswers, WhatCannotBeDoneIsTold)
{
    const char* const tiles =
        ": edit_box { key = \"e\"; is_enabled = false; } : toggle { key = \"t\"; } : text { key = \"x\"; }"
        ": slider { key = \"s\"; min_value = 1; max_value = 9; } : button { key = \"b\"; }"
        ": list_box { key = \"l\"; list = \"a\\nb\"; } : popup_list { key = \"p\"; }"
        ": list_box { key = \"m\"; list = \"a\\nb\"; multiple_select = true; }"
        ": radio_row { key = \"r\"; : radio_button { key = \"r1\"; } : radio_button { key = \"r2\"; } }";
    struct {
        const char *answer, *told;
    } const cases[] = {
        {"e=5", "The tile 'e' is switched off."},
        {"!e", "The tile 'e' is switched off."},
        {"none=5", "The dialog d has no tile 'none'; it has: e, t, s, b, l, p, m, r, r1, r2."},
        {"!none", "The dialog d has no tile 'none'; it has: e, t, s, b, l, p, m, r, r1, r2."},
        {"!", "The dialog d has no tile ''; it has: e, t, s, b, l, p, m, r, r1, r2."},
        {"t=yes", "The tile 't' takes 0 or 1."},
        {"s=0", "The tile 's' takes a whole number from 1 to 9."},
        {"s=x", "The tile 's' takes a whole number from 1 to 9."},
        {"l=2", "The tile 'l' takes the number of a line, 0 to 1."},
        {"l=0 1", "The tile 'l' takes the number of a line, 0 to 1."},
        {"m=0 2", "The tile 'm' takes the number of a line, 0 to 1, or several."},
        {"p=0", "The tile 'p' takes no value, its list is empty."},
        {"r=x", "The tile 'r' takes one of: r1, r2."},
        {"b=1", "The tile 'b' takes no value: press it with !b."},
        {"x=1", "The tile 'x' can't be pressed or set."},
        {"!x", "The tile 'x' can't be pressed or set."},
        {"!b 5", "A tile is pressed with !key, !key REASON or !key REASON X,Y; the reason is 1 to 4."},
        {"!b 0", "A tile is pressed with !key, !key REASON or !key REASON X,Y; the reason is 1 to 4."},
        {"!b x", "A tile is pressed with !key, !key REASON or !key REASON X,Y; the reason is 1 to 4."},
        {"!b 1 2", "A tile is pressed with !key, !key REASON or !key REASON X,Y; the reason is 1 to 4."},
        {"what", "A dialog is answered with key=text, !key, an empty line for Enter, ^C to cancel, or ? for "
                 "its tiles."},
    };
    for (const auto& one : cases) {
        EXPECT_EQ(acted(tiles, one.answer), "") << one.answer;
        EXPECT_EQ(history, "[dialog d]\n" + std::string(one.answer) + "\n" + one.told + "\n\n") << one.answer;
    }
}

TEST_F(DialogAnswers, AGroupThatIsOffSwitchesItsTilesOff)
{
    const ads_hdlg dialog = made(": row { key = \"g\"; : column { : button { key = \"b\"; } } }", note);
    EXPECT_EQ(ads_mode_tile(dialog, "g", MODE_DISABLE), RTNORM);
    seen().clear();
    run(dialog, "!b");
    EXPECT_EQ(seen(), "");
    const ads_hdlg other = made(": row { key = \"g\"; : button { key = \"b\"; } }", note);
    ads_mode_tile(other, "g", MODE_DISABLE);
    ads_mode_tile(other, "g", MODE_ENABLE);
    run(other, "!b");
    EXPECT_EQ(seen(), "b= 1; ");
}

TEST_F(DialogAnswers, RadioButtonsClearTheirSiblings)
{
    const char* const tiles =
        ": radio_row { key = \"r\"; : radio_button { key = \"a\"; value = \"1\"; } : column { : radio_button "
        "{ key = \"b\"; } } } : radio_column { : radio_button { key = \"c\"; value = \"1\"; } }"
        ": row { : radio_button { key = \"x\"; value = \"1\"; } : radio_button { key = \"y\"; } }";
    ads_hdlg dialog = 0;
    struct {
        const char *answer, *seen;
    } const cases[] = {
        {"b=1", "r=b 1; "}, // the group's action, with the button's key
        {"!b", "r=b 1; "},  {"r=b", "r=b 1; "},
        {"c=1", "c=1 1; "}, // a group without a key leaves it to the button
        {"y=1", "y=1 1; "},
    };
    for (const auto& one : cases)
        EXPECT_EQ(acted(tiles, one.answer), one.seen) << one.answer;

    dialog = made(tiles);
    static std::string values;
    ads_action_tile(dialog, "y", [](ads_callback_packet* packet) {
        for (const char* key : {"a", "b", "c", "x", "y"})
            values += value(packet->dialog, key);
        ads_done_dialog(packet->dialog, 1);
    });
    run(dialog, "b=1\ny=1");
    EXPECT_EQ(values, "01101") << "each group for itself";
}

TEST_F(DialogAnswers, AButtonsOwnActionGoesBeforeItsGroups)
{
    const ads_hdlg dialog = made(": radio_row { key = \"r\"; : radio_button { key = \"a\"; } }");
    ads_action_tile(dialog, "a", note);
    ads_action_tile(dialog, "r", [](ads_callback_packet*) { seen() += "group; "; });
    seen().clear();
    run(dialog, "a=1");
    EXPECT_EQ(seen(), "a=1 1; ");
}

TEST_F(DialogAnswers, ImageButtonsTellWhereTheyWerePressed)
{
    const auto place = [](ads_callback_packet* packet) {
        seen() += std::to_string(packet->x) + "," + std::to_string(packet->y) + "; ";
    };
    const ads_hdlg dialog =
        made(": image_button { key = \"i\"; width = 10; height = 2; } : button { key = \"b\"; }", place);
    seen().clear();
    run(dialog, "!i\n!i 1 3,4\n!i 4 5,6\n!b");
    EXPECT_EQ(seen(), "30,13; 3,4; 5,6; 0,0; ");
}

TEST_F(DialogAnswers, StandardButtonsEndTheDialog)
{
    struct {
        const char *tiles, *answers;
        int result;
        const char* seen;
    } const cases[] = {
        {"ok_cancel;", "!accept", DLGOK, ""},
        {"ok_cancel;", "!cancel", DLGCANCEL, ""},
        {"ok_only;", "!accept", DLGOK, ""},
        {"ok_cancel;", "", DLGCANCEL, ""},
        {"ok_cancel;", "^C", DLGCANCEL, ""},
        {"ok_cancel;", "^c", DLGCANCEL, ""},
        {"ok_cancel;", "\n", DLGOK, ""},
        {"ok_cancel; : edit_box { key = \"e\"; allow_accept = true; }", "e=x\n\n", DLGOK, ""},
        {"ok_cancel; : edit_box { key = \"e\"; }", "e=x\n\n\n", DLGOK, ""},
        {"ok_cancel; : toggle { key = \"t\"; }", "t=1\n\n", DLGOK, ""},
        {"ok_cancel; : list_box { key = \"l\"; list = \"a\"; allow_accept = true; }", "l=0\n!l 4", DLGOK, ""},
        {"ok_cancel; : list_box { key = \"l\"; list = \"a\"; }", "l=0\n!l 4\n!cancel", DLGCANCEL, ""},
        {"initial_focus = \"e\"; ok_cancel; : edit_box { key = \"e\"; }", "\n^C", DLGCANCEL, ""},
        {": button { key = \"b\"; }", "!b", DLGCANCEL, ""}, // does nothing; the answers end
    };
    for (const auto& one : cases)
        EXPECT_EQ(run(made(one.tiles), one.answers), one.result) << one.tiles << " " << one.answers;
}

TEST_F(DialogAnswers, EnterThatOnlyLeavesAFieldIsTold)
{
    run(made("ok_cancel; : edit_box { key = \"e\"; }"), "e=x\n\n\n");
    EXPECT_EQ(history,
              "[dialog d]\ne=x\n\nEnter has left the tile 'e'; the next Enter presses the default button.\n\n");
    history.clear();
    run(made(""), "\n");
    EXPECT_EQ(history, "[dialog d]\n\nThe dialog d has no default button: press one with !key.\n\n");
    history.clear();
    run(made(": button { key = \"b\"; is_default = true; is_enabled = false; }"), "\n");
    EXPECT_EQ(history, "[dialog d]\n\nThe tile 'b' is switched off.\n\n");
}

TEST_F(DialogAnswers, ADefaultButtonWithAnActionEndsByItOnly)
{
    ads_hdlg dialog = made("ok_cancel;");
    ads_action_tile(dialog, "accept", note);
    seen().clear();
    EXPECT_EQ(run(dialog, "!accept\n!cancel"), DLGCANCEL);
    EXPECT_EQ(seen(), "accept= 1; ");
}

TEST_F(DialogAnswers, ACancelButtonEndsAfterItsAction)
{
    for (const char* answers : {"!cancel", "^C", ""}) {
        ads_hdlg dialog = made("ok_cancel;");
        ads_action_tile(dialog, "cancel", note);
        seen().clear();
        EXPECT_EQ(run(dialog, answers), DLGCANCEL);
        EXPECT_EQ(seen(), "cancel= 1; ") << answers;
    }
}

TEST_F(DialogAnswers, TheDefaultActionIsForTilesWithoutOne)
{
    ads_hdlg dialog = made(": button { key = \"a\"; } : button { key = \"b\"; } ok_only;", note);
    ads_action_tile(dialog, "b", [](ads_callback_packet*) { seen() += "own; "; });
    seen().clear();
    EXPECT_EQ(run(dialog, "!a\n!b\n!accept"), DLGOK);
    EXPECT_EQ(seen(), "a= 1; own; accept= 1; ");
}

TEST_F(DialogAnswers, TheEndOfTheAnswersIsKept)
{
    run(made("ok_cancel;"), "");
    EXPECT_TRUE(host::answers_ended());
    EXPECT_EQ(host::answers_ended_at(), "[dialog d]");
}

TEST_F(DialogAnswers, AQuestionMarkShowsTheTiles)
{
    const ads_hdlg dialog =
        made("label = \"Title\"; : text { key = \"m\"; label = \"Some text\"; }"
             ": boxed_row { label = \"Box\"; : edit_box { key = \"e\"; label = \"&Name:\"; value = \"x\"; } }"
             ": popup_list { key = \"p\"; list = \"one\\ntwo\"; } : toggle { key = \"t\"; is_enabled = false; }"
             "spacer; ok_only;");
    ads_set_tile(dialog, "m", "Now this");
    run(dialog, "?");
    EXPECT_EQ(history,
              "[dialog d]\n?\nTitle\n  Now this\n  Box\n  e (edit_box) Name: = x\n  p (popup_list) = 0\n"
              "    0  one\n    1  two\n  t (toggle) = 0 (off)\n  accept (button) OK\n\n");
}

} // namespace

// The product's own dialog file, each dialog run through.
#include "tests/host/dialogs/dialog_session.h"

namespace
{

class ProductDialogs : public dialog_session
{
protected:
    ads_hdlg made_by_name(const char* name)
    {
        int id = -1;
        EXPECT_EQ(ads_load_dialog(ZENT_SOURCE_DIR "/share/dialogs/zentfile.dcl", &id), RTNORM);
        ads_hdlg dialog = 0;
        EXPECT_EQ(ads_new_dialog(name, id, nullptr, &dialog), RTNORM);
        ads_unload_dialog(id);
        return dialog;
    }
    // Each button ends the dialog with its place in the list, from 1 on.
    static void end_by_place(ads_callback_packet* packet)
    {
        ads_done_dialog(packet->dialog, static_cast<int>(reinterpret_cast<std::intptr_t>(packet->client_data)));
    }
    ads_hdlg with_buttons(const char* name, std::initializer_list<const char*> buttons)
    {
        const ads_hdlg dialog = made_by_name(name);
        std::intptr_t place = 0;
        for (const char* key : buttons) {
            EXPECT_EQ(ads_action_tile(dialog, key, end_by_place), RTNORM) << name << " " << key;
            EXPECT_EQ(ads_client_data_tile(dialog, key, reinterpret_cast<void*>(++place)), RTNORM);
        }
        return dialog;
    }
};

TEST_F(ProductDialogs, AlertShowsALine)
{
    for (const char* answer : {"!ok", "\n", "^C"}) {
        const ads_hdlg dialog = with_buttons("zent_alert", {"ok"});
        EXPECT_EQ(ads_set_tile(dialog, "msg", "Something"), RTNORM);
        EXPECT_EQ(run(dialog, answer), 1) << answer;
    }
    EXPECT_EQ(history.substr(0, history.find('\n')), "[dialog zent_alert]");
}

TEST_F(ProductDialogs, GetStringTakesALine)
{
    static std::string taken;
    const auto take = [](ads_callback_packet* packet) {
        taken = value(packet->dialog, "value");
        ads_done_dialog(packet->dialog, DLGOK);
    };
    for (const char* answers : {"value=some text\n!ok", "value=some text\n\n"}) {
        taken.clear();
        const ads_hdlg dialog = made_by_name("zent_get_string");
        EXPECT_EQ(ads_set_tile(dialog, "prompt", "Name"), RTNORM);
        EXPECT_EQ(ads_action_tile(dialog, "ok", take), RTNORM);
        EXPECT_EQ(run(dialog, answers), DLGOK);
        EXPECT_EQ(taken, "some text");
    }
    for (const char* answers : {"value=x\n!cancel", "^C", ""})
        EXPECT_EQ(run(made_by_name("zent_get_string"), answers), DLGCANCEL);
    const ads_hdlg dialog = made_by_name("zent_get_string");
    ads_action_tile(dialog, "ok", take);
    run(dialog, "value=" + std::string(300, 'x') + "\n!ok");
    EXPECT_EQ(taken.size(), 254u);
}

TEST_F(ProductDialogs, YesNoAllHasFourAnswers)
{
    struct {
        const char* answer;
        int result;
    } const cases[] = {{"!yes", 1}, {"!yesall", 2}, {"!no", 3}, {"!noall", 4}, {"\n", 1}, {"^C", 4}, {"", 4}};
    for (const auto& one : cases) {
        const ads_hdlg dialog = with_buttons("zent_yesnoall", {"yes", "yesall", "no", "noall"});
        EXPECT_EQ(ads_set_tile(dialog, "prompt", "Erase it?"), RTNORM);
        EXPECT_EQ(run(dialog, one.answer), one.result) << one.answer;
    }
}

TEST_F(ProductDialogs, NewAppendHasThreeAnswers)
{
    struct {
        const char* answer;
        int result;
    } const cases[] = {{"!new", 1}, {"!append", 2}, {"!cancel", 3}, {"^C", 3}, {"", 3}};
    for (const auto& one : cases) {
        const ads_hdlg dialog = with_buttons("zt_newappend", {"new", "append", "cancel"});
        EXPECT_EQ(ads_set_tile(dialog, "type", "File type> Polyline"), RTNORM);
        EXPECT_EQ(run(dialog, one.answer), one.result) << one.answer;
    }
}

TEST_F(ProductDialogs, BadLayerStaysUntilTheNameIsGood)
{
    static std::string name;
    const auto check = [](ads_callback_packet* packet) {
        name = value(packet->dialog, "newnam");
        if (name.find('?') == std::string::npos)
            ads_done_dialog(packet->dialog, DLGOK);
        else
            ads_set_tile(packet->dialog, "badnam", ("Invalid Layer Name - " + name).c_str());
    };
    const ads_hdlg dialog = made_by_name("zt_badlayer");
    EXPECT_EQ(ads_set_tile(dialog, "badnam", "Invalid Layer Name - A:B"), RTNORM);
    EXPECT_EQ(ads_set_tile(dialog, "newnam", "A:B"), RTNORM);
    EXPECT_EQ(ads_mode_tile(dialog, "newnam", MODE_SETSEL), RTNORM);
    EXPECT_EQ(ads_action_tile(dialog, "ok", check), RTNORM);
    EXPECT_EQ(ads_action_tile(dialog, "help", note), RTNORM);
    seen().clear();
    EXPECT_EQ(run(dialog, "newnam=A?B\n!ok\n!help\nnewnam=" + std::string(90, 'A') + "\n\n"), DLGOK);
    EXPECT_EQ(name, std::string(78, 'A'));
    EXPECT_EQ(seen(), "help= 1; ");
    EXPECT_EQ(run(made_by_name("zt_badlayer"), "!cancel"), DLGCANCEL);
}

} // namespace

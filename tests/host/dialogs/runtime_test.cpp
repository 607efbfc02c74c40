#include "tests/host/dialogs/dialog_session.h"

#include "host/dialogs/windows.h"
#include "hostapi/windows.h"

namespace
{

using host::dialogs::find_dialog;

class Runtime : public dialog_session
{
};

TEST_F(Runtime, FilesAreLoadedAndUnloaded)
{
    tmp.write("Sub/One.DCL", "d : dialog { } proto : row { }");
    int id = -5;
    EXPECT_EQ(ads_load_dialog("SUB\\one", &id), RTNORM);
    EXPECT_GE(id, 0);
    ads_hdlg dialog = 9;
    testing::internal::CaptureStderr();
    EXPECT_EQ(ads_new_dialog("none", id, nullptr, &dialog), RTERROR);
    EXPECT_EQ(dialog, 0u);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "zentrik: the dialog file has no dialog 'none'\n");
    testing::internal::CaptureStderr();
    EXPECT_EQ(ads_new_dialog("proto", id, nullptr, &dialog), RTERROR) << "a row is no dialog";
    testing::internal::GetCapturedStderr();
    EXPECT_EQ(ads_new_dialog("d", id, nullptr, &dialog), RTNORM);
    EXPECT_NE(dialog, 0u);
    EXPECT_EQ(ads_unload_dialog(id), RTNORM);
    EXPECT_EQ(ads_unload_dialog(id), RTERROR);
    ads_hdlg other = 0;
    EXPECT_EQ(ads_new_dialog("d", id, nullptr, &other), RTERROR);
    EXPECT_EQ(run(dialog, "^C"), DLGCANCEL) << "what is open outlives its file";
    EXPECT_EQ(ads_start_dialog(dialog, nullptr), RTERROR) << "a dialog runs once";
}

TEST_F(Runtime, FilesThatCannotBeReadGiveMinusOne)
{
    tmp.write("bad.dcl", "d : dialog {\n oops\n}");
    struct {
        const char *file, *complaint;
    } const cases[] = {
        {"none.dcl", "zentrik: none.dcl: there is no such dialog file\n"},
        {"bad.dcl", "bad.dcl:2: '=' or ';' is missing behind 'oops', before '}'\n"},
        {"", "zentrik: : there is no such dialog file\n"},
        {nullptr, "zentrik: : there is no such dialog file\n"},
    };
    for (const auto& one : cases) {
        int id = 5;
        testing::internal::CaptureStderr();
        EXPECT_EQ(ads_load_dialog(one.file, &id), RTERROR);
        EXPECT_EQ(id, -1);
        EXPECT_NE(testing::internal::GetCapturedStderr().find(one.complaint), std::string::npos);
    }
}

TEST_F(Runtime, InitialValuesComeFromTheFile)
{
    const ads_hdlg dialog =
        made(": edit_box { key = \"e\"; value = \"text\"; } : toggle { key = \"t1\"; value = \"1\"; }"
             ": toggle { key = \"t0\"; } : popup_list { key = \"p\"; list = \"one\\ntwo\"; value = 1; }"
             ": popup_list { key = \"p0\"; list = \"a\"; } : list_box { key = \"l\"; list = \"x\\n\\nz\"; }"
             ": slider { key = \"s\"; value = 30; } : text { key = \"x\"; value = \"shown\"; }"
             ": radio_column { key = \"r\"; value = \"r2\"; : radio_button { key = \"r1\"; } : radio_button { "
             "key = \"r2\"; } }"
             ": radio_row { key = \"q\"; : radio_button { key = \"q1\"; value = \"1\"; } : radio_button { key "
             "= \"q2\"; } }");
    struct {
        const char *key, *value;
    } const cases[] = {{"e", "text"}, {"t1", "1"}, {"t0", "0"},    {"p", "1"},  {"p0", "0"},
                       {"l", ""},     {"s", "30"}, {"x", "shown"}, {"r", "r2"}, {"r1", "0"},
                       {"r2", "1"},   {"q", "q1"}, {"q1", "1"},    {"q2", "0"}};
    for (const auto& one : cases)
        EXPECT_EQ(value(dialog, one.key), one.value) << one.key;
    EXPECT_EQ(find_dialog(dialog)->tiles[find_dialog(dialog)->find("l")].lines,
              (std::vector<std::string>{"x", "", "z"}));
}

TEST_F(Runtime, ProgramsSetAndGetTiles)
{
    const ads_hdlg dialog =
        made(": edit_box { key = \"e\"; } : radio_row { key = \"r\"; : radio_button { key = \"a\"; }"
             ": radio_button { key = \"b\"; } }");
    EXPECT_EQ(ads_set_tile(dialog, "e", "abcdef"), RTNORM);
    char text[4];
    EXPECT_EQ(ads_get_tile(dialog, "e", text, sizeof text), RTNORM);
    EXPECT_STREQ(text, "abc") << "cut to the caller's room";
    EXPECT_EQ(ads_set_tile(dialog, "none", "x"), RTERROR);
    EXPECT_EQ(ads_set_tile(dialog, "e", nullptr), RTERROR);
    EXPECT_EQ(ads_set_tile(dialog, nullptr, "x"), RTERROR);
    EXPECT_EQ(ads_set_tile(12345, "e", "x"), RTERROR);
    EXPECT_EQ(ads_get_tile(dialog, "none", text, sizeof text), RTERROR);
    EXPECT_STREQ(text, "");
    EXPECT_EQ(ads_get_tile(dialog, "e", text, 0), RTERROR);

    ads_set_tile(dialog, "a", "1");
    EXPECT_EQ(value(dialog, "r"), "a");
    ads_set_tile(dialog, "b", "1");
    EXPECT_EQ(value(dialog, "a"), "0") << "siblings are cleared";
    ads_set_tile(dialog, "r", "a");
    EXPECT_EQ(value(dialog, "a") + value(dialog, "b"), "10") << "a group is set by a button's key";
    ads_set_tile(dialog, "r", "e");
    EXPECT_EQ(value(dialog, "r"), "a");
}

TEST_F(Runtime, AttributesAreReadAsTheyStand)
{
    const ads_hdlg dialog = made(": edit_box { key = \"e\"; edit_width = 12; label = \"L\"; }");
    char text[10];
    EXPECT_EQ(ads_get_attr(dialog, "e", "edit_width", text, sizeof text), RTNORM);
    EXPECT_STREQ(text, "12");
    EXPECT_EQ(ads_get_attr(dialog, "e", "none", text, sizeof text), RTERROR);
    EXPECT_STREQ(text, "");
    EXPECT_EQ(ads_get_attr(dialog, "none", "key", text, sizeof text), RTERROR);
    EXPECT_EQ(ads_get_attr_string(999999, "key", text, sizeof text), RTERROR);
    seen().clear();
    ads_action_tile(dialog, "e", note);
    run(dialog, "e=x");
    EXPECT_EQ(seen(), "e=x 1; ") << "by the tile of a callback";
}

TEST_F(Runtime, ListsAreFilledAddedToAndChanged)
{
    const ads_hdlg dialog = made(": list_box { key = \"l\"; list = \"old\"; } : edit_box { key = \"e\"; }");
    const auto lines = [&] {
        std::string out;
        for (const std::string& line : find_dialog(dialog)->tiles[find_dialog(dialog)->find("l")].lines)
            out += line + ",";
        return out;
    };
    const auto fill = [&](int operation, int index, std::initializer_list<const char*> items) {
        const int started = ads_start_list(dialog, "l", operation, index);
        for (const char* item : items)
            ads_add_list(item);
        ads_end_list();
        return started;
    };
    EXPECT_EQ(fill(LIST_NEW, 0, {"a", "b", "c"}), RTNORM);
    EXPECT_EQ(lines(), "a,b,c,");
    EXPECT_EQ(fill(LIST_APPEND, 0, {"d"}), RTNORM);
    EXPECT_EQ(lines(), "a,b,c,d,");
    EXPECT_EQ(fill(LIST_CHANGE, 1, {"B"}), RTNORM);
    EXPECT_EQ(lines(), "a,B,c,d,");
    EXPECT_EQ(fill(LIST_CHANGE, 4, {"x"}), RTERROR);
    EXPECT_EQ(fill(LIST_CHANGE, -1, {"x"}), RTERROR);
    EXPECT_EQ(fill(4, 0, {"x"}), RTERROR);
    EXPECT_EQ(lines(), "a,B,c,d,");
    EXPECT_EQ(ads_start_list(dialog, "e", LIST_NEW, 0), RTERROR) << "an edit box has no list";
    EXPECT_EQ(ads_start_list(dialog, "none", LIST_NEW, 0), RTERROR);
    EXPECT_EQ(ads_add_list("x"), RTERROR);
    EXPECT_EQ(ads_end_list(), RTERROR);
    EXPECT_EQ(fill(LIST_NEW, 0, {}), RTNORM);
    EXPECT_EQ(lines(), "");
}

TEST_F(Runtime, ImagesKeepWhatWasDrawn)
{
    const ads_hdlg dialog =
        made(": image { key = \"i\"; width = 20; height = 4; } : image_button { key = \"b\"; "
             "width = 10; aspect_ratio = 0.5; } : image { key = \"h\"; height = 2; aspect_ratio = 2; }"
             ": image { key = \"n\"; } : text { key = \"t\"; }");
    int width = 0, height = 0;
    EXPECT_EQ(ads_dimensions_tile(dialog, "i", &width, &height), RTNORM);
    EXPECT_EQ(std::to_string(width) + "x" + std::to_string(height), "120x52");
    ads_dimensions_tile(dialog, "b", &width, &height);
    EXPECT_EQ(std::to_string(width) + "x" + std::to_string(height), "60x120");
    ads_dimensions_tile(dialog, "h", &width, &height);
    EXPECT_EQ(std::to_string(width) + "x" + std::to_string(height), "52x26");
    EXPECT_EQ(ads_dimensions_tile(dialog, "none", &width, &height), RTERROR);

    EXPECT_EQ(ads_start_image(dialog, "t"), RTERROR) << "a text is no image";
    EXPECT_EQ(ads_fill_image(0, 0, 1, 1, 1), RTERROR) << "none is open";
    EXPECT_EQ(ads_start_image(dialog, "i"), RTNORM);
    EXPECT_EQ(ads_fill_image(0, 0, 120, 52, -2), RTNORM);
    EXPECT_EQ(ads_vector_image(1, 2, 3, 4, 5), RTNORM);
    EXPECT_EQ(ads_slide_image(6, 7, 8, 9, "lib(name)"), RTNORM);
    EXPECT_EQ(ads_slide_image(6, 7, 8, 9, nullptr), RTERROR);
    EXPECT_EQ(ads_end_image(), RTNORM);
    EXPECT_EQ(ads_end_image(), RTERROR);
    const auto* d = find_dialog(dialog);
    const auto& drawn = d->tiles[d->find("i")].drawn;
    ASSERT_EQ(drawn.size(), 3u);
    EXPECT_EQ(drawn[0].what, host::dialogs::image_item::fill);
    EXPECT_EQ(drawn[0].color, -2);
    EXPECT_EQ(drawn[1].what, host::dialogs::image_item::vector);
    EXPECT_EQ(drawn[1].y2, 4);
    EXPECT_EQ(drawn[2].name, "lib(name)");
    EXPECT_EQ(ads_mode_tile(dialog, "i", MODE_FLIP), RTNORM);
    EXPECT_TRUE(d->tiles[d->find("i")].highlighted);
}

void open_inner(ads_callback_packet* packet)
{
    ads_hdlg inner = 0;
    ads_new_dialog("d", *static_cast<int*>(packet->client_data), nullptr, &inner);
    int result = -1;
    ads_start_dialog(inner, &result);
    seen() += "inner ended with " + std::to_string(result) + "; ";
}

TEST_F(Runtime, DialogsMayOpenDialogs)
{
    tmp.write("n.dcl", "outer : dialog { : button { key = \"more\"; } ok_cancel; } d : dialog { ok_cancel; }");
    int id = 0;
    ads_load_dialog("n.dcl", &id);
    ads_hdlg outer = 0;
    ads_new_dialog("outer", id, nullptr, &outer);
    ads_action_tile(outer, "more", open_inner);
    ads_client_data_tile(outer, "more", &id);
    seen().clear();
    EXPECT_EQ(run(outer, "!more\n!accept\n!cancel\n"), DLGCANCEL);
    EXPECT_EQ(seen(), "inner ended with 1; ");
    EXPECT_EQ(history, "[dialog outer]\n!more\n[dialog d]\n!accept\n!cancel\n");
}

void end_with_seven(ads_callback_packet* packet)
{
    int x = 0, y = 0;
    ads_done_positioned_dialog(packet->dialog, 7, &x, &y);
    seen() += std::to_string(x) + "," + std::to_string(y) + "; ";
}

void end_all(ads_callback_packet*)
{
    ads_term_dialog();
}

TEST_F(Runtime, DialogsEndByTheirActions)
{
    seen().clear();
    ads_hdlg dialog = made(": button { key = \"b\"; }");
    ads_action_tile(dialog, "b", end_with_seven);
    EXPECT_EQ(run(dialog, "!b"), 7);
    EXPECT_EQ(seen(), "-1,-1; ");
    dialog = made(": button { key = \"b\"; }");
    ads_action_tile(dialog, "b", end_all);
    EXPECT_EQ(run(dialog, "!b"), DLGCANCEL);
    EXPECT_EQ(ads_done_dialog(dialog, 1), RTERROR) << "it is gone";
    dialog = made("");
    EXPECT_EQ(ads_term_dialog(), RTNORM);
    EXPECT_EQ(ads_start_dialog(dialog, nullptr), RTERROR) << "ended before it was started";
    dialog = made("");
    EXPECT_EQ(ads_done_dialog(dialog, 4), RTNORM);
    EXPECT_EQ(run(dialog, "ignored"), 4) << "ended before it was started, by name";
}

TEST_F(Runtime, ADialogIsTheActiveWindow)
{
    const HWND before = GetActiveWindow();
    EXPECT_EQ(before, host::dialogs::MAIN_WINDOW);
    const ads_hdlg dialog = made("label = \"First\";");
    EXPECT_NE(GetActiveWindow(), before);
    EXPECT_EQ(find_dialog(dialog)->title(), "First");
    EXPECT_EQ(SetWindowTextA(GetActiveWindow(), "Second"), 1);
    EXPECT_EQ(find_dialog(dialog)->title(), "Second");
    EXPECT_EQ(SetWindowTextA(99999, "x"), 0);
    run(dialog, "^C");
    EXPECT_EQ(GetActiveWindow(), before);
}

TEST_F(Runtime, EverythingIsTraced)
{
    host::trace_to("trace.txt");
    const ads_hdlg dialog = made(": list_box { key = \"l\"; } : image { key = \"i\"; } ok_only;");
    ads_set_tile(dialog, "l", "0");
    ads_mode_tile(dialog, "l", MODE_DISABLE);
    ads_mode_tile(dialog, "l", 9);
    ads_start_list(dialog, "l", LIST_NEW, 0);
    ads_add_list("item \"x\"");
    ads_end_list();
    ads_start_image(dialog, "i");
    ads_fill_image(0, 0, 5, 5, 1);
    ads_vector_image(0, 0, 5, 5, 1);
    ads_slide_image(0, 0, 5, 5, "s");
    ads_end_image();
    SetWindowTextA(find_dialog(dialog)->window, "T");
    const std::string window = std::to_string(find_dialog(dialog)->window);
    ads_action_tile(dialog, "accept", end_with_seven);
    run(dialog, "!accept");
    ads_unload_dialog(1000000);
    ads_term_dialog();
    host::trace_to("");
    const std::string d = std::to_string(dialog);
    std::string trace = tmp.read("trace.txt");
    // The number of the file depends on the tests before.
    const std::string id = trace.substr(trace.find("-> ") + 3, trace.find('\n') - trace.find("-> ") - 3);
    EXPECT_EQ(trace, "ads_load_dialog \"t.dcl\" -> " + id +
                         "\n"
                         "ads_new_dialog \"d\" " +
                         id +
                         " -> RTNORM\n"
                         "ads_set_tile " +
                         d +
                         " \"l\" \"0\" -> RTNORM\n"
                         "ads_mode_tile " +
                         d +
                         " \"l\" 1 -> RTNORM\n"
                         "ads_mode_tile " +
                         d +
                         " \"l\" 9 -> RTERROR\n"
                         "ads_start_list " +
                         d +
                         " \"l\" 3 0 -> RTNORM\n"
                         "ads_add_list \"item \\\"x\\\"\" -> RTNORM\n"
                         "ads_end_list -> RTNORM\n"
                         "ads_start_image " +
                         d +
                         " \"i\" -> RTNORM\n"
                         "ads_fill_image 0 0 5 5 1 -> RTNORM\n"
                         "ads_vector_image 0 0 5 5 1 -> RTNORM\n"
                         "ads_slide_image 0 0 5 5 \"s\" -> RTNORM\n"
                         "ads_end_image -> RTNORM\n"
                         "SetWindowTextA " +
                         window +
                         " \"T\" -> 1\n"
                         "ads_done_dialog " +
                         d +
                         " 7 -> RTNORM\n"
                         "ads_start_dialog " +
                         d +
                         " -> 7\n"
                         "ads_unload_dialog 1000000 -> RTERROR\n"
                         "ads_term_dialog -> RTNORM\n");
}

} // namespace

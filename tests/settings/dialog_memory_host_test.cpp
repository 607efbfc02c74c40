// The dialog memory from callbacks of a dialog that the host runs by answers.
#include "settings/dialog_memory.h"

#include "host/core/heap.h"
#include "tests/host/dialogs/dialog_session.h"

namespace
{

const char* const POINTS_DCL = "points : dialog {\n"
                               "  label = \"Points\";\n"
                               "  : edit_box { key = \"pt\"; }\n"
                               "  : toggle { key = \"snap\"; }\n"
                               "  : button { label = \"Keep\";\n"
                               "    key = \"keep\"; }\n"
                               "  // key = \"ghost\"; is in no dialog\n"
                               "  ok_cancel;\n"
                               "}\n"
                               "other : dialog {\n"
                               "  label = \"Other\";\n"
                               "  : edit_box { key = \"o\"; }\n"
                               "  ok_cancel;\n"
                               "}\n";

class DialogMemoryInHost : public dialog_session
{
protected:
    DialogMemoryInHost()
    {
        host::open_document();
        tmp.write("lsp/pts.dcl", POINTS_DCL);
        tmp.write("usr/kept", "");
        set("usrdir$", tmp.path + "/usr/");
        set("lspdir$", tmp.path + "/lsp/");
        blocks_ = host::heap_live_blocks();
    }
    ~DialogMemoryInHost() override { host::close_all_documents(); }

    static void set(const char* name, const std::string& value)
    {
        resbuf* list = acutBuildList(RTSTR, value.c_str(), 0);
        EXPECT_EQ(acedPutSym(name, list), RTNORM);
        acutRelRb(list);
    }
    // Opens the dialog, fills it with what is stored, lets the answers run it, and saves on OK.
    int session(const char* name, const std::string& answers)
    {
        int id = -1;
        EXPECT_EQ(ads_load_dialog((tmp.path + "/lsp/pts.dcl").c_str(), &id), RTNORM);
        ads_hdlg dialog = 0;
        EXPECT_EQ(ads_new_dialog(name, id, nullptr, &dialog), RTNORM);
        loaded = dlg_load_all(dialog, "pts", name, DIALOG_MEMORY_BOTH);
        ads_action_tile(dialog, "accept", save_and_end);
        ads_action_tile(dialog, "keep", keep_pt);
        name_of_dialog = name;
        const int result = run(dialog, answers);
        ads_unload_dialog(id);
        return result;
    }
    static void save_and_end(ads_callback_packet* packet)
    {
        dlg_save_all(packet->dialog, "pts", name_of_dialog, DIALOG_MEMORY_SHARED);
        ads_done_dialog(packet->dialog, DLGOK);
    }
    static void keep_pt(ads_callback_packet* packet)
    {
        dlg_save_tile(packet->dialog, "pts", name_of_dialog, "pt", 0);
    }

    static inline const char* name_of_dialog = "";
    int loaded = -1;
    std::size_t blocks_ = 0;
};

TEST_F(DialogMemoryInHost, ValuesOfOneSessionStandInTheNext)
{
    EXPECT_EQ(session("points", "pt=it's 12\nsnap=1\n!accept\n"), DLGOK);
    EXPECT_EQ(loaded, 0);
    EXPECT_EQ(tmp.read("usr/dialogs.ini"),
              "pts,points,pt,'it's 12'\npts,points,snap,'1'\npts,points,keep,''\npts,points,ghost,''\n");
    EXPECT_FALSE(tmp.has("usr/dialogs.new"));

    EXPECT_EQ(session("other", "o=7\n!accept\n"), DLGOK);
    EXPECT_EQ(tmp.read("usr/dialogs.ini"),
              "pts,other,o,'7'\n"
              "pts,points,pt,'it's 12'\npts,points,snap,'1'\npts,points,keep,''\npts,points,ghost,''\n");

    // The dialog shows what was stored: pressed as it comes up it stores the same again.
    EXPECT_EQ(session("points", "!accept\n"), DLGOK);
    EXPECT_EQ(loaded, 1);
    EXPECT_EQ(tmp.read("usr/dialogs.ini"), "pts,points,pt,'it's 12'\npts,points,snap,'1'\npts,points,keep,''\n"
                                           "pts,points,ghost,''\npts,other,o,'7'\n");
    EXPECT_EQ(host::heap_live_blocks(), blocks_);
}

TEST_F(DialogMemoryInHost, CancelledSessionsStoreNothingButWhatWasKept)
{
    EXPECT_EQ(session("points", "pt=5\n!keep\npt=6\n!cancel\n"), DLGCANCEL);
    EXPECT_EQ(tmp.read("usr/pts.ini"), "pts,points,pt,'5'\n");
    EXPECT_FALSE(tmp.has("usr/dialogs.ini"));
    char value[128];
    EXPECT_EQ(dlg_read_tile("pts", "points", DIALOG_MEMORY_BOTH, "pt", value, sizeof value), 1);
    EXPECT_STREQ(value, "5");
}

TEST_F(DialogMemoryInHost, StoredValuesOfUnknownTilesSurvive)
{
    tmp.write("usr/dialogs.ini", "pts,points,ghost,'boo'\npts,points,stale,'x'\n");
    session("points", "!accept\n");
    EXPECT_EQ(tmp.read("usr/dialogs.ini"),
              "pts,points,pt,''\npts,points,snap,'0'\npts,points,keep,''\npts,points,ghost,'boo'\n");
}

TEST_F(DialogMemoryInHost, LineEndsOfTheUserAreWrittenAndRead)
{
    host::run_settings().crlf = true;
    session("points", "pt=1\n!accept\n");
    session("points", "!accept\n");
    EXPECT_EQ(tmp.read("usr/dialogs.ini"),
              "pts,points,pt,'1'\r\npts,points,snap,'0'\r\npts,points,keep,''\r\npts,points,ghost,''\r\n");
}

TEST_F(DialogMemoryInHost, AllTilesAreEnabled)
{
    int id = -1;
    ASSERT_EQ(ads_load_dialog((tmp.path + "/lsp/pts.dcl").c_str(), &id), RTNORM);
    ads_hdlg dialog = 0;
    ASSERT_EQ(ads_new_dialog("points", id, nullptr, &dialog), RTNORM);
    ads_mode_tile(dialog, "pt", MODE_DISABLE);
    ads_mode_tile(dialog, "accept", MODE_DISABLE);
    dlg_enable_all(dialog, "pts", "points");
    const host::dialogs::dialog* open = host::dialogs::find_dialog(dialog);
    EXPECT_TRUE(open->tiles[open->find("pt")].enabled);
    EXPECT_FALSE(open->tiles[open->find("accept")].enabled) << "the file has no line with its key";
    EXPECT_EQ(run(dialog, "pt=1\n^C"), DLGCANCEL);
}

TEST_F(DialogMemoryInHost, FilesAreFoundAsTheProductWritesTheirPaths)
{
    tmp.write("lsp/Caps.DCL", POINTS_DCL);
    set("usrdir$", "USR\\");
    set("lspdir$", "LSP\\");
    session("points", "^C");
    dlg_save_all(0, "caps", "other", 0);
    EXPECT_EQ(tmp.read("usr/caps.ini"), "caps,other,o,''\n") << "a dialog that is gone gives no values";
}

} // namespace

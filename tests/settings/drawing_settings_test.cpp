// The save of a drawing's settings: the file beside the drawing and the block in it.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "common/directories.h"
#include "common/text_buffer.h"
#include "hostapi/files.h"
#include "settings/drawing_settings.h"
#include "settings/settings_file.h"
#include "tests/fakes/fake_host.h"

namespace
{

const std::vector<std::string> FILE_VARIABLES = {"basef",
                                                 "cclfil",
                                                 "cfoutf",
                                                 "chdeffile",
                                                 "chole_nm",
                                                 "clfil",
                                                 "clnfil",
                                                 "crdfile",
                                                 "csect_nm",
                                                 "edfil",
                                                 "equatenm",
                                                 "ewfil",
                                                 "fermfile",
                                                 "file1",
                                                 "file2",
                                                 "finalf",
                                                 "fname",
                                                 "ftf_name",
                                                 "ftrfil",
                                                 "gis_name",
                                                 "grdfil",
                                                 "grdfile",
                                                 "gridfnm",
                                                 "hdrfil",
                                                 "hydro_file",
                                                 "lotfile",
                                                 "mapfil",
                                                 "masfil",
                                                 "mxsfil",
                                                 "ocrdfil",
                                                 "osctfil",
                                                 "outfil",
                                                 "outname",
                                                 "pitname",
                                                 "pond_nm",
                                                 "precalc_nm",
                                                 "profil",
                                                 "proffil",
                                                 "profilx",
                                                 "rawfile",
                                                 "rock_file",
                                                 "zent_attributes",
                                                 "zent_calendar",
                                                 "zent_equipment",
                                                 "zent_equip_options",
                                                 "zent_horizon_codes",
                                                 "zent_panel_attrs",
                                                 "zent_pit_attrs",
                                                 "zent_time_table",
                                                 "zent_weight_table",
                                                 "secfil",
                                                 "secfil1$",
                                                 "secfil2",
                                                 "slayf",
                                                 "stab$",
                                                 "stage_nm",
                                                 "stratafnm",
                                                 "supfil",
                                                 "surf_nm",
                                                 "swrfile",
                                                 "tfil",
                                                 "tmpdir$",
                                                 "tptfil",
                                                 "tplfil"};

const std::vector<std::pair<std::string, std::string>> OPTIONS = {
    {"bearoraz", "B"},      {"ppon", "1"},    {"prpel", "Y"},     {"realz", "Y"},      {"prpds", "Y"},
    {"autoon", "Y"},        {"autosyb", "Y"}, {"pntnoon", "Y"},   {"verton", "1"},     {"ihrhon", "N"},
    {"pnl", "SRVPNO1"},     {"ptemp", "4"},   {"eorm$", "E"},     {"sv:sm", "50.0"},   {"sv:vs", "50.0"},
    {"sv:ts", "0.1"},       {"sv:ps", "0.1"}, {"is_metric", "0"}, {"low_elev", "1.0"}, {"high_elev", "20000.0"},
    {"ltscaler", "20000.0"}};

std::string attribute(const std::string& tag, const std::string& value)
{
    return "((0 . \"ATTDEF\") (10 0.0 0.0 0.0) (1 . \"" + value + "\") (2 . \"" + tag +
           "\") (3 . \"prompt\") (70 . 1) (40 . 0.2))";
}

// A session whose small files lie in a directory of its own.
struct job : host_session {
    job()
    {
        text_set(data_dir, directory() + "user_");
        drawing = directory() + "SITE.DWG";
        settings = directory() + "SITE.ini";
        scratch = directory() + "user_temp.txt";
    }
    std::string drawing, settings, scratch;
};

struct named {
    const char* drawing;
    const char* settings;
};

TEST(SettingsPath, TakesThePlaceOfTheLastDotOfTheWholePath)
{
    const named cases[] = {{"X:\\JOB\\SITE.DWG", "X:\\JOB\\SITE.ini"},
                           {"C:\\A\\B.C\\NAME", "C:\\A\\B.ini"}, // a dot in a directory counts
                           {"SITE", "SITE.ini"},
                           {".hidden", ".hidden.ini"},
                           {"a.b.c", "a.b.ini"},
                           {".a.b", ".a.ini"},
                           {"", ".ini"}};
    for (const named& c : cases) {
        char out[64];
        settings_path(c.drawing, out);
        EXPECT_STREQ(out, c.settings) << c.drawing;
    }
}

TEST(SettingsPath, UnnamedDrawingsAreToldByAPartOfThePath)
{
    for (const char* path : {"C:\\drawing.dwg", "Drawing1.dwg", "DRAWING2.DWG", "C:\\MYDRAWING.DWG",
                             "C:\\DRAWING.DWG.OLD\\SITE.DWG"})
        EXPECT_TRUE(is_unnamed_drawing(path)) << path;
    for (const char* path : {"C:\\DRAWING3.DWG", "C:\\DRAWING\\SITE.DWG", "DRAWING1", ""})
        EXPECT_FALSE(is_unnamed_drawing(path)) << path;
}

TEST(SettingsPath, OfTheCurrentDrawing)
{
    host_session session;
    char out[64] = "before";
    EXPECT_FALSE(current_settings_path(out));
    EXPECT_STREQ(out, "");
    fake.variables = {{"DWGPREFIX", text_value("C:\\JOB\\")}, {"DWGNAME", text_value("site.dwg")}};
    EXPECT_TRUE(current_settings_path(out));
    EXPECT_STREQ(out, "C:\\JOB\\site.ini");
    fake.variables["DWGNAME"] = text_value("Drawing1.dwg");
    EXPECT_FALSE(current_settings_path(out));
    EXPECT_STREQ(out, "");
    EXPECT_TRUE(session.heap_is_as_before());
}

TEST(SettingLine, OneForEachTypeThatHasOne)
{
    job session;
    fake.lisp = {{"real", real_value(1.0)},   {"short", short_value(-3)},  {"text", text_value(" a b \r\n")},
                 {"blank", text_value("  ")}, {"long", long_value(70000)}, {"list", list_value()}};
    host_file* out = file_open(session.settings.c_str(), "w");
    for (const char* name : {"real", "short", "text", "blank", "long", "list", "unset"})
        write_setting_line(out, name);
    file_close(out);
    EXPECT_EQ(read_text(session.settings), "real=1.000000\nshort=-3\ntext=a b\nblank=\n");
    EXPECT_EQ(fake.lisp["text"].text, " a b \r\n");
    EXPECT_TRUE(session.heap_is_as_before());
}

TEST(SaveSettings, WritesAll64FileVariablesInOrder)
{
    job session;
    std::string expected;
    for (const std::string& name : FILE_VARIABLES) {
        fake.lisp[name] = text_value("of " + name);
        expected += name + "=of " + name + "\n";
    }
    ASSERT_EQ(FILE_VARIABLES.size(), 64u);
    save_drawing_settings(session.drawing.c_str());
    EXPECT_EQ(read_text(session.settings), expected);
    EXPECT_EQ(session.printed, "");
    EXPECT_TRUE(session.heap_is_as_before());
}

TEST(SaveSettings, BlockHoldsTheDefaultsInOrder)
{
    job session;
    fake.making_fails = true; // what the host says to it is not looked at
    save_drawing_settings(session.drawing.c_str());
    std::vector<std::string> expected = {"((0 . \"BLOCK\") (2 . \"ZENTSETV\") (70 . 2) (10 0.0 0.0 0.0))"};
    for (const auto& [tag, value] : OPTIONS)
        expected.push_back(attribute(tag, value));
    expected.push_back("((0 . \"ENDBLK\"))");
    EXPECT_EQ(fake.made, expected);
    EXPECT_TRUE(session.heap_is_as_before());
}

TEST(SaveSettings, BlockHoldsTheVariables)
{
    job session;
    fake.lisp = {{"bearoraz", text_value("A")},
                 {"ppon", short_value(0)},
                 {"sv:sm", real_value(100.0)},
                 {"pnl", text_value("")},
                 {"ptemp", list_value()}};
    save_drawing_settings(session.drawing.c_str());
    ASSERT_EQ(fake.made.size(), 23u);
    EXPECT_EQ(fake.made[1], attribute("bearoraz", "A"));
    EXPECT_EQ(fake.made[2], attribute("ppon", "0"));
    EXPECT_EQ(fake.made[11], attribute("pnl", "SRVPNO1")); // an empty text counts as unset
    EXPECT_EQ(fake.made[12], attribute("ptemp", "4"));
    EXPECT_EQ(fake.made[14], attribute("sv:sm", "100.000000"));
}

TEST(SaveSettings, ZeroOfDoIniSavesNothing)
{
    job session;
    fake.lisp["do_ini"] = short_value(0);
    save_drawing_settings(session.drawing.c_str());
    EXPECT_EQ(read_text(session.settings), "<none>");
    EXPECT_TRUE(fake.made.empty());
    fake.lisp["do_ini"] = short_value(1);
    save_drawing_settings(session.drawing.c_str());
    EXPECT_EQ(read_text(session.settings), "");
    EXPECT_EQ(fake.made.size(), 23u);
}

TEST(SaveSettings, UnnamedDrawingSavesNothing)
{
    job session;
    for (const char* name : {"drawing.dwg", "Drawing1.dwg", "MYDRAWING2.DWG"}) {
        save_drawing_settings((session.directory() + name).c_str());
        EXPECT_TRUE(fake.made.empty()) << name;
    }
    EXPECT_TRUE(std::filesystem::is_empty(session.directory()));
}

TEST(SaveSettings, ProjectLinesStandBehindTheVariablesThroughAnyNumberOfSaves)
{
    job session;
    write_text(session.settings, "PROJECT=C:\\B.PLN\nclfil=old\n; a note\nPROJECT=C:\\A.TXT\n");
    fake.lisp["clfil"] = text_value("new");
    for (int i = 0; i < 3; ++i) {
        save_drawing_settings(session.drawing.c_str());
        EXPECT_EQ(read_text(session.settings), "clfil=new\nPROJECT=C:\\B.PLN\nPROJECT=C:\\A.TXT\n");
    }
    EXPECT_EQ(read_text(session.scratch), "PROJECT=C:\\B.PLN\nPROJECT=C:\\A.TXT\n");
}

TEST(SaveSettings, LinesAreReadInPiecesOf122Characters)
{
    job session;
    const std::string fits = "PROJECT=" + std::string(113, 'A'); // 121 and its line feed
    const std::string full = "PROJECT=" + std::string(114, 'B'); // 122: the line feed is a piece of its own
    const std::string longer = "PROJECT=" + std::string(150, 'C');
    write_text(session.settings, fits + "\n" + full + "\n" + longer + "\nPROJECT=D\n");
    save_drawing_settings(session.drawing.c_str());
    EXPECT_EQ(read_text(session.settings), fits + "\n" + full + longer.substr(0, 122) + "PROJECT=D\n");
}

TEST(SaveSettings, LinesOfAnotherDrawingDoNotComeIn)
{
    job session;
    write_text(session.scratch, "PROJECT=C:\\OTHER.PLN\n");
    save_drawing_settings(session.drawing.c_str());
    EXPECT_EQ(read_text(session.settings), "");
    EXPECT_EQ(read_text(session.scratch), "");
}

TEST(SaveSettings, NoScratchFileLosesTheProjectLines)
{
    job session;
    write_text(session.settings, "PROJECT=C:\\A.PLN\n");
    text_set(data_dir, session.directory() + "none/");
    fake.lisp["clfil"] = text_value("new");
    save_drawing_settings(session.drawing.c_str());
    EXPECT_EQ(read_text(session.settings), "clfil=new\n");
}

TEST(SaveSettings, ProjectLinesThatDoNotFitOnTheDiskKeepTheOldFile)
{
    job session;
    std::string lines;
    while (lines.size() < 100000)
        lines += "PROJECT=C:\\A.PLN\n";
    write_text(session.settings, lines);
    {
        const nearly_full_disk disk(50000);
        save_drawing_settings(session.drawing.c_str());
    }
    EXPECT_EQ(read_text(session.settings), lines);
    EXPECT_EQ(session.printed, "\nUnable to write configuration file '" + session.settings + "'");
}

TEST(SaveSettings, DrawingWithoutAnExtensionWritesBesideTheDottedDirectory)
{
    job session;
    fake.lisp["low_elev"] = real_value(1.0); // an option: in the block, not in the file
    fake.lisp["clfil"] = real_value(1.0);
    save_drawing_settings((session.directory() + "B.C/NAME").c_str());
    EXPECT_EQ(read_text(session.directory() + "B.ini"), "clfil=1.000000\n");
}

TEST(SaveSettings, UnwritableFileIsToldAndTheBlockIsMade)
{
    job session;
    const std::string drawing = session.directory() + "none/SITE.DWG";
    save_drawing_settings(drawing.c_str());
    EXPECT_EQ(session.printed,
              "\nUnable to write configuration file '" + session.directory() + "none/SITE.ini'");
    EXPECT_EQ(fake.made.size(), 23u);
    EXPECT_TRUE(session.heap_is_as_before());
}

} // namespace

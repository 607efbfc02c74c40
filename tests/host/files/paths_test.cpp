#include "host/files/paths.h"

#include <gtest/gtest.h>

#include "host/core/document.h"
#include "host/files/names.h"
#include "hostapi/ads.h"
#include "hostapi/files.h"
#include "tests/host/files/temporary_directory.h"

namespace
{

using host::existing_path;
using host::find_file;
using host::real_path;

// Each form of one file's path, in the current directory and through drives.
TEST(Paths, EveryFormFindsTheFile)
{
    temporary_directory tmp;
    tmp.write("Jobs/Site/Points.TXT", "x");
    host::run_settings().drives['C'] = tmp.path;
    host::run_settings().drives['D'] = tmp.path + "/Jobs/";
    struct {
        std::string asked, found;
    } const cases[] = {
        {"Jobs/Site/Points.TXT", "Jobs/Site/Points.TXT"},
        {"jobs/site/points.txt", "Jobs/Site/Points.TXT"},
        {"JOBS\\SITE\\POINTS.TXT", "Jobs/Site/Points.TXT"},
        {"JOBS\\\\SITE//points.txt", "Jobs/Site/Points.TXT"},
        {".\\jobs\\..\\JOBS\\site\\points.txt", "./Jobs/../Jobs/Site/Points.TXT"},
        {"C:\\JOBS\\SITE\\POINTS.TXT", tmp.path + "/Jobs/Site/Points.TXT"},
        {"c:/jobs/site/points.txt", tmp.path + "/Jobs/Site/Points.TXT"},
        {"c:jobs\\site\\points.txt", tmp.path + "/Jobs/Site/Points.TXT"},
        {"D:\\SITE\\points.txt", tmp.path + "/Jobs/Site/Points.TXT"},
        {"Z:" + tmp.path + "\\jobs\\site\\points.txt", tmp.path + "/Jobs/Site/Points.TXT"},
        {"Q:" + tmp.path + "/jobs/site/points.txt", tmp.path + "/Jobs/Site/Points.TXT"},
        {"/" + tmp.path + "/jobs/site/points.txt", "/" + tmp.path + "/Jobs/Site/Points.TXT"},
        {"jobs\\site\\", "Jobs/Site/"},
        {"C:\\", tmp.path + "/"},
        {"c:", tmp.path + "/"},
    };
    for (const auto& one : cases) {
        EXPECT_EQ(real_path(one.asked), one.found) << one.asked;
        EXPECT_EQ(existing_path(one.asked), one.found) << one.asked;
    }
}

TEST(Paths, WhatIsNotThereKeepsItsSpellingBelowWhatIs)
{
    temporary_directory tmp;
    tmp.write("Jobs/Site/x", "");
    EXPECT_EQ(real_path("JOBS\\SITE\\New.Txt"), "Jobs/Site/New.Txt");
    EXPECT_EQ(real_path("JOBS\\Other\\New.Txt"), "Jobs/Other/New.Txt");
    EXPECT_EQ(real_path("\\\\Server\\Share\\A"), "//Server/Share/A");
    EXPECT_FALSE(existing_path("JOBS\\SITE\\New.Txt"));
    EXPECT_EQ(real_path(""), "");
    EXPECT_FALSE(existing_path(""));
}

TEST(Paths, APathThatStandsIsUsedAsItStands)
{
    temporary_directory tmp;
    tmp.write("a\\b", "odd");
    tmp.write("C:x", "odd");
    tmp.write("a/b", "plain");
    EXPECT_EQ(real_path("a\\b"), "a\\b");
    EXPECT_EQ(real_path("C:x"), "C:x");
}

TEST(Paths, ExactSpellingGoesBeforeOthersAndOthersInOrder)
{
    temporary_directory tmp;
    tmp.write("name", "");
    tmp.write("NAME", "");
    tmp.write("Name", "");
    EXPECT_EQ(real_path("Name"), "Name");
    EXPECT_EQ(real_path("nAME"), "NAME");
}

TEST(Paths, ADirectoryOfAnotherCaseIsTriedWhenTheFileIsThere)
{
    temporary_directory tmp;
    tmp.write("jobs/other", "");
    tmp.write("JOBS/Site/File", "");
    EXPECT_EQ(real_path("jobs/site/file"), "JOBS/Site/File");
}

TEST(Paths, NamesBeyondAsciiAreFoundFromWindows1252)
{
    temporary_directory tmp;
    tmp.write("Stra\xC3\x9F"
              "e/H\xC3\xB6he.txt",
              "x");
    EXPECT_EQ(real_path("stra\xDF"
                        "e\\H\xD6HE.TXT"),
              "Stra\xC3\x9F"
              "e/H\xC3\xB6he.txt");
    // New ones are named in UTF-8, and a path of this file system stays what it is.
    EXPECT_EQ(real_path("n\xF6\x80.txt"), "n\xC3\xB6\xE2\x82\xAC.txt");
    EXPECT_EQ(real_path("n\xC3\xB6.txt"), "n\xC3\xB6.txt");
}

TEST(Paths, CharactersWithoutAPlaceGoByTheirEscape)
{
    temporary_directory tmp;
    const std::string chinese = "\xE4\xB8\xAD", emoji = "\xF0\x9F\x98\x80";
    tmp.write(chinese + "/" + emoji, "x");
    EXPECT_EQ(host::program_path(chinese + "/" + emoji), "\\U+4E2D/\\U+D83D\\U+DE00");
    EXPECT_EQ(real_path("\\U+4E2D\\\\U+D83D\\U+DE00"), chinese + "/" + emoji);
    EXPECT_EQ(real_path("\\U+4E2D\\new"), chinese + "/new");
    EXPECT_EQ(real_path("\\U+4E2E"), "\xE4\xB8\xAE");
}

// A program that turns all backslashes to slashes turns those of escapes too.
TEST(Paths, EscapesWithSlashesLeadToADrawing)
{
    temporary_directory tmp;
    tmp.write("a/\xE6\x97\xA5\xE6\x9C\xAC.dxf", "x");
    tmp.write("a/x\xE6\x97\xA5y.dxf", "x");
    tmp.write("a/U+4E2D.dxf", "x");
    tmp.write("a\xE4\xB8\xAD.dxf", "x");
    const std::pair<const char*, const char*> cases[] = {
        {"a//U+65E5/U+672C.DWG", "a/\\U+65E5\\U+672C.DWG"},
        {"A/x/U+65E5y.dwg", "A/x\\U+65E5y.dwg"},
        {"a/U+4E2D.DWG", "a/U+4E2D.DWG"}, // a directory and a name that only looks like it
        {"a//U+65E5/U+672D.DWG", "a//U+65E5/U+672D.DWG"},
        {"a/\\U+65E5\\U+672C.DWG", "a/\\U+65E5\\U+672C.DWG"},
        {"/U+65E", "/U+65E"},
        {"", ""},
    };
    for (const auto& [given, meant] : cases)
        EXPECT_EQ(host::with_escapes_put_back(given), meant);
}

TEST(Paths, DirectoryAndNameAreSplitAtTheLastSeparator)
{
    struct {
        const char *path, *directory, *name;
    } const cases[] = {
        {"C:\\JOBS\\SITE.DWG", "C:\\JOBS\\", "SITE.DWG"},
        {"/a/b", "/a/", "b"},
        {"a\\b/c", "a\\b/", "c"},
        {"c:x", "c:", "x"},
        {"plain", "", "plain"},
        {"dir/", "dir/", ""},
        {"", "", ""},
    };
    for (const auto& one : cases) {
        EXPECT_EQ(host::directory_of(one.path), one.directory) << one.path;
        EXPECT_EQ(host::file_name_of(one.path), one.name) << one.path;
    }
}

TEST(DrawingPath, DwgStandsForDxf)
{
    temporary_directory tmp;
    tmp.write("old.dwg", "");
    tmp.write("both.DWG", "");
    tmp.write("both.dxf", "");
    tmp.write("Site.DXF", "");
    struct {
        const char *asked, *path;
    } const cases[] = {
        {"OLD.DWG", "old.dwg"}, {"both.dwg", "both.DWG"}, {"SITE.DWG", "Site.DXF"},
        {"site", "Site.DXF"},   {"old", "old.dwg"},       {"new.DWG", "new.dxf"},
        {"NEW", "NEW.dxf"},     {"site.dxf", "Site.DXF"}, {"notes.txt", "notes.txt"},
        {"v1.5", "v1.5"},       {"v1.5.dwg", "v1.5.dxf"},
    };
    for (const auto& one : cases)
        EXPECT_EQ(host::drawing_path(one.asked), one.path) << one.asked;
}

TEST(DrawingPath, FileOfJustThatNameIsReadWhereThereIsNoOther)
{
    temporary_directory tmp;
    tmp.write("SITE", "");
    EXPECT_EQ(host::drawing_to_read("site"), "SITE");
    EXPECT_EQ(host::drawing_path("site"), "site.dxf") << "what is written is always a drawing file";
    tmp.write("site.dxf", "");
    EXPECT_EQ(host::drawing_to_read("SITE"), "site.dxf");
    EXPECT_EQ(host::drawing_to_read("none"), "none.dxf");
}

TEST(DrawingPath, FilesOfProgramsGoByIt)
{
    temporary_directory tmp;
    tmp.write("site.dxf", "drawing");
    EXPECT_EQ(file_exists("SITE.DWG"), 1);
    EXPECT_EQ(file_exists("SITE"), 0);
    host_file* file = file_open("copy.dwg", "w");
    ASSERT_TRUE(file);
    file_puts("x", file);
    EXPECT_EQ(file_close(file), 0);
    EXPECT_EQ(tmp.read("copy.dxf"), "x");
    EXPECT_EQ(file_rename("copy.dwg", "moved.dwg"), 0);
    EXPECT_TRUE(tmp.has("moved.dxf"));
    EXPECT_EQ(file_remove("moved.DWG"), 0);
    EXPECT_FALSE(tmp.has("moved.dxf"));
}

TEST(FindFile, LooksInTheDrawingsDirectoryThenHereThenInTheProducts)
{
    temporary_directory tmp;
    tmp.write("here/a", "");
    tmp.write("job/a", "");
    tmp.write("here/b", "");
    tmp.write("share/dialogs/b", "");
    tmp.write("share/lisp/C.LSP", "");
    tmp.write("share/d", "");
    tmp.write("share/symbols/e", "");
    std::filesystem::create_directories(tmp.path + "/here/f");
    std::filesystem::current_path(tmp.path + "/here");
    host::run_settings().share = tmp.path + "/share";
    host::open_document().file = tmp.path + "/job/site.dxf";
    EXPECT_EQ(find_file("A"), tmp.path + "/job/a");
    EXPECT_EQ(find_file("./a"), tmp.path + "/here/./a");
    EXPECT_EQ(find_file("b"), tmp.path + "/here/b");
    EXPECT_EQ(find_file("c.lsp"), tmp.path + "/share/lisp/C.LSP");
    EXPECT_EQ(find_file("lisp\\c.lsp"), tmp.path + "/share/lisp/C.LSP");
    EXPECT_EQ(find_file("d"), tmp.path + "/share/d");
    EXPECT_EQ(find_file("e"), tmp.path + "/share/symbols/e");
    EXPECT_FALSE(find_file("f")) << "a directory is no file";
    EXPECT_FALSE(find_file("nowhere"));
    EXPECT_FALSE(find_file(""));
    EXPECT_FALSE(find_file("C:\\nowhere\\d")) << "with a root it is looked for there only";
    host::close_all_documents();
    EXPECT_EQ(find_file("a"), tmp.path + "/here/a") << "no drawing is open";
}

TEST(FindFile, ProgramsGetAFullPath)
{
    temporary_directory tmp;
    tmp.write("H\xC3\xB6he.txt", "");
    tmp.write("site.dxf", "");
    char out[ADS_PATH_SIZE];
    EXPECT_EQ(acedFindFile("h\xF6he.TXT", out), RTNORM);
    EXPECT_EQ(std::string(out), tmp.path + "/H\xF6he.txt");
    EXPECT_EQ(acedFindFile("SITE.DWG", out), RTNORM);
    EXPECT_EQ(std::string(out), tmp.path + "/site.DWG");
    EXPECT_EQ(acedFindFile("site.dxf", out), RTNORM);
    EXPECT_EQ(std::string(out), tmp.path + "/site.dxf");
    EXPECT_EQ(acedFindFile("missing", out), RTERROR);
    EXPECT_EQ(acedFindFile(nullptr, out), RTERROR);
}

} // namespace

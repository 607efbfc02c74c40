// The memory of picked files in the drawing's settings file.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "common/directories.h"
#include "common/text_buffer.h"
#include "settings/remembered_files.h"
#include "tests/fakes/fake_host.h"

namespace
{

// A named drawing whose settings file lies in a directory of its own.
struct job : host_session {
    job()
    {
        text_set(data_dir, directory() + "user_");
        fake.variables = {{"DWGPREFIX", text_value(directory())}, {"DWGNAME", text_value("site.dwg")}};
        settings = directory() + "site.ini";
        scratch = directory() + "user_temp.txt";
    }
    void unname() { fake.variables["DWGNAME"] = text_value("Drawing1.dwg"); }
    std::string settings, scratch;
};

std::string remembered(const char* extension)
{
    char out[256] = "before";
    remembered_directory(extension, out);
    return out;
}

std::string remember(const std::string& file)
{
    char path[256];
    text_set(path, file);
    remember_file(path);
    return path;
}

struct memory {
    const char* what;
    std::string settings;
    const char* extension;
    const char* directory;
};

TEST(RememberedDirectory, IsThatOfTheFirstLineThatEndsInTheExtension)
{
    const memory cases[] = {
        {"project line", "PROJECT=C:\\A\\B.PLN\n", "pln", "C:\\A\\"},
        {"variable, in upper case", "clfil=c:\\jobs\\b.cl\n", "cl", "C:\\JOBS\\"},
        {"slashes become backslashes", "clfil=c:/jobs/b.cl\n", "cl", "C:\\JOBS\\"},
        {"first of two", "a=C:\\X\\B.PLN\nPROJECT=C:\\Y\\B.PLN\n", "pln", "C:\\X\\"},
        {"extension inside the line", "a=C:\\X.PLN\\B.TXT\n", "pln", ""},
        {"longer extension", "a=C:\\X\\B.PLNX\n", "pln", ""},
        {"part of an extension", "a=C:\\X\\B.XPLN\n", "pln", ""},
        {"no equals sign", "C:\\X\\B.PLN\n", "pln", ""},
        {"no line feed at the end", "a=C:\\X\\B.PLN", "pln", ""},
        {"bare name gives its first character", "a=B.PLN\n", "pln", "B"},
        {"second equals sign", "a=C:\\X=Y\\B.PLN\n", "pln", "C:\\X=Y\\"},
        {"star is a plain character", "a=C:\\X\\B.PLN\n", "*", ""},
        {"carriage returns", "a=C:\\X\\B.PLN\r\n", "pln", "C:\\X\\"},
        {"empty file", "", "pln", ""},
    };
    for (const memory& c : cases) {
        job session;
        write_text(session.settings, c.settings);
        EXPECT_EQ(remembered(c.extension), c.directory) << c.what;
        EXPECT_TRUE(session.heap_is_as_before()) << c.what;
    }
}

TEST(RememberedDirectory, IsFoundInTheSampleFile)
{
    job session;
    write_text(session.settings, read_text(ZENT_SOURCE_DIR "/tests/settings/site.ini"));
    EXPECT_EQ(remembered("pln"), "C:\\JOBS\\");
    EXPECT_EQ(remembered("cl"), "C:\\ROADS\\");
    EXPECT_EQ(remembered("000000"), "1"); // a number is a bare name whose ending is .000000
    EXPECT_EQ(remembered("txt"), "");
}

TEST(RememberedDirectory, LinesAreReadInPiecesOf121Characters)
{
    job session;
    // "a=" + 's + "\B.PLN" + line feed: 121 characters are one piece, of 122 the line feed is cut off.
    write_text(session.settings, "a=" + std::string(112, 'X') + "\\B.PLN\n");
    EXPECT_EQ(remembered("pln"), std::string(112, 'X') + "\\");
    write_text(session.settings, "a=" + std::string(113, 'X') + "\\B.PLN\n");
    EXPECT_EQ(remembered("pln"), "");
}

TEST(RememberedDirectory, NothingForUnnamedDrawingsOrWithoutAFile)
{
    job session;
    EXPECT_EQ(remembered("pln"), "");
    write_text(session.directory() + "Drawing1.ini", "PROJECT=C:\\A\\B.PLN\n");
    session.unname();
    EXPECT_EQ(remembered("pln"), "");
}

TEST(RememberFile, NewestStandsFirstAndNoneTwice)
{
    job session;
    EXPECT_EQ(remember("c:\\a\\one.pln"), "PROJECT=C:\\A\\ONE.PLN");
    EXPECT_EQ(read_text(session.settings), "PROJECT=C:\\A\\ONE.PLN\n");
    remember("c:\\a\\two.pln ");
    EXPECT_EQ(read_text(session.settings), "PROJECT=C:\\A\\TWO.PLN\nPROJECT=C:\\A\\ONE.PLN\n");
    remember("C:\\A\\One.pln");
    EXPECT_EQ(read_text(session.settings), "PROJECT=C:\\A\\ONE.PLN\nPROJECT=C:\\A\\TWO.PLN\n");
    EXPECT_EQ(remembered("pln"), "C:\\A\\");
    EXPECT_TRUE(session.heap_is_as_before());
}

TEST(RememberFile, OtherLinesAreTrimmedAndKept)
{
    job session;
    write_text(session.settings, "  clfil=a  \r\n\n PROJECT=C:\\X.PLN \nlast");
    remember("C:\\X.PLN");
    EXPECT_EQ(read_text(session.settings), "PROJECT=C:\\X.PLN\nclfil=a\n\nlast\n");
    EXPECT_EQ(read_text(session.scratch), "clfil=a\n\nlast\n");
}

TEST(RememberFile, UnnamedDrawingChangesTheTextOnly)
{
    job session;
    session.unname();
    EXPECT_EQ(remember(" a.pln "), "PROJECT= A.PLN ");
    EXPECT_EQ(read_text(session.directory() + "Drawing1.ini"), "<none>");
    EXPECT_EQ(read_text(session.scratch), "<none>");
}

TEST(RememberFile, WithoutAScratchFileOnlyTheNewLineIsLeft)
{
    job session;
    write_text(session.settings, "clfil=a\n");
    text_set(data_dir, session.directory() + "none/");
    remember("C:\\X.PLN");
    EXPECT_EQ(read_text(session.settings), "PROJECT=C:\\X.PLN\n");
}

TEST(RememberFile, LinesThatDoNotFitOnTheDiskKeepTheOldFile)
{
    job session;
    std::string lines;
    while (lines.size() < 100000)
        lines += "clfil=a\n";
    write_text(session.settings, lines);
    {
        const nearly_full_disk disk(50000);
        remember("C:\\X.PLN");
    }
    EXPECT_EQ(read_text(session.settings), lines);
}

TEST(RememberFile, ScratchFileThatIsNotToBeWrittenComesInAsItIs)
{
    job session;
    write_text(session.settings, "clfil=a\n");
    // Nobody may make files there, so that it can be read and not be replaced.
    const std::string protected_file = "/proc/sys/kernel/ostype";
    std::filesystem::create_symlink(protected_file, session.scratch);
    remember("C:\\X.PLN");
    EXPECT_EQ(read_text(session.settings), "PROJECT=C:\\X.PLN\n" + read_text(protected_file));
}

TEST(RememberFile, SettingsThatCannotBeWrittenAreNoMatter)
{
    job session;
    fake.variables["DWGPREFIX"] = text_value(session.directory() + "none/");
    EXPECT_EQ(remember("C:\\X.PLN"), "PROJECT=C:\\X.PLN");
    EXPECT_EQ(remembered("pln"), "");
    EXPECT_EQ(session.printed, "");
    EXPECT_TRUE(session.heap_is_as_before());
}

TEST(RememberFile, OtherLinesAreReadInPiecesOf122Characters)
{
    job session;
    const std::string fits = "a=" + std::string(119, 'x'), longer = "b=" + std::string(121, 'y');
    write_text(session.settings, fits + "\n" + longer + "\n");
    remember("C:\\X.PLN");
    EXPECT_EQ(read_text(session.settings),
              "PROJECT=C:\\X.PLN\n" + fits + "\n" + longer.substr(0, 122) + "\ny\n");
}

TEST(RememberFile, LongPathIsCutToTheBuffer)
{
    job session;
    char path[16] = "C:\\ABCDEF.PLN";
    remember_file(path);
    EXPECT_STREQ(path, "PROJECT=C:\\ABCD");
    EXPECT_EQ(read_text(session.settings), "PROJECT=C:\\ABCD\n");
}

} // namespace

// The legacy coordinate program: its configuration and the batch file that starts it.
#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>
#include <string>

#include "common/directories.h"
#include "common/text_buffer.h"
#include "hostapi/ads.h"
#include "launch/coordinate_program.h"
#include "tests/fakes/fake_host.h"

namespace
{

using lines = std::vector<std::string>;

const lines STANDARD_LINES = {"IBME",   "HPLJ", "D:",     "\\JOBS\\", "",    "",    "seven",   "1",
                              "1/Y",    "6",    "20",     "33",       "10",  "13",  "23",      "23",
                              "N",      "N",    "1/9600", "FZ",       "ABC", "80C", "Y",       "BR",
                              "1/9600", "15",   "1",      "1",        "0",   "5",   "YNNYYNNN"};

lines lines_of(const std::string& text)
{
    lines out;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);)
        out.push_back(line);
    return out;
}

std::string text_of(const lines& all)
{
    std::string text;
    for (const std::string& line : all)
        text += line + "\n";
    return text;
}

lines with_tail(lines base, const std::string& name)
{
    for (const std::string& line :
         {std::string("\\"), std::string("-1"), name, std::string(), std::string(), std::string()})
        base.push_back(line);
    return base;
}

struct coordinate_session : host_session {
    coordinate_session()
    {
        text_set(data_dir, directory());
        config = directory() + "config.pik";
        scratch = directory() + "temp1.txt";
        batch = directory() + "ZTCOGO.BAT";
        program = directory() + "cogo/";
        std::filesystem::create_directory(program);
        write_text(program + "ZENT11.EXE", "MZ");
    }
    void launch(const std::string& data_file = "D:\\JOBS\\SITE1.CRD", const std::string& text = "seven")
    {
        resbuf* arguments =
            acutBuildList(RTSTR, program.c_str(), RTSTR, data_file.c_str(), RTSTR, text.c_str(), 0);
        coordinate_program_launch(arguments);
        acutRelRb(arguments);
    }
    // What a run with the standard arguments leaves of an old base.
    lines expected(lines base) const
    {
        base.resize(31);
        base[2] = "D:";
        base[3] = "\\JOBS\\";
        base[4] = "C:";
        base[5] = program;
        base[6] = "seven";
        return with_tail(base, "SITE1");
    }
    std::string config, scratch, batch, program;
};

TEST(CoordinateProgram, MissingFileGetsEveryDefaultLine)
{
    coordinate_session session;
    session.launch();
    const lines made = lines_of(read_text(session.config)), wanted = session.expected(STANDARD_LINES);
    ASSERT_EQ(made.size(), 37u);
    for (std::size_t i = 0; i < wanted.size(); ++i)
        EXPECT_EQ(made[i], wanted[i]) << "line " << i + 1;
    EXPECT_EQ(text_of(made), read_text(session.config));
    EXPECT_EQ(read_text(session.scratch) + "\\\n-1\nSITE1\n\n\n\n", read_text(session.config))
        << "stays behind";
    EXPECT_TRUE(fake.alerts.empty());
    EXPECT_EQ(session.printed, "");
    EXPECT_TRUE(session.heap_is_as_before());
}

TEST(CoordinateProgram, OldLinesStayAndMissingOnesAreAdded)
{
    for (const std::size_t count : {0u, 1u, 2u, 3u, 7u, 8u, 20u, 30u, 31u, 32u, 37u, 40u}) {
        coordinate_session session;
        lines old;
        for (std::size_t i = 0; i < count; ++i)
            old.push_back("old " + std::to_string(i + 1));
        write_text(session.config, text_of(old));
        lines base = STANDARD_LINES;
        for (std::size_t i = 0; i < std::min<std::size_t>(count, 31); ++i)
            base[i] = old[i];
        session.launch();
        EXPECT_EQ(lines_of(read_text(session.config)), session.expected(base)) << count;
        session.launch();
        EXPECT_EQ(lines_of(read_text(session.config)), session.expected(base)) << count << ", once more";
    }
}

TEST(CoordinateProgram, LineEndsOfOldFiles)
{
    for (const std::size_t count : {2u, 5u, 9u, 31u}) {
        lines base = STANDARD_LINES, old;
        for (std::size_t i = 0; i < count; ++i)
            old.push_back(base[i] = "x" + std::to_string(i));
        std::string text = text_of(old);
        coordinate_session session;
        write_text(session.config, text.substr(0, text.size() - 1));
        session.launch();
        EXPECT_EQ(lines_of(read_text(session.config)), session.expected(base))
            << count << ", no last line feed";
        std::string dos;
        for (const std::string& line : old)
            dos += line + "\r\n";
        write_text(session.config, dos);
        session.launch();
        EXPECT_EQ(lines_of(read_text(session.config)), session.expected(base)) << count << ", carriage returns";
    }
}

TEST(CoordinateProgram, LongLinesAreCountedInPiecesOf121Characters)
{
    coordinate_session session;
    const std::string line120(120, 'a'), line121(121, 'b');
    write_text(session.config, line120 + "\n" + line121 + "\n3\n");
    session.launch();
    const lines made = lines_of(read_text(session.config));
    EXPECT_EQ(made[0], line120);
    // The line feed behind 121 characters is the third piece, so the drive comes behind them.
    EXPECT_EQ(made[1], line121 + "D:");
    EXPECT_EQ(made[2], "\\JOBS\\") << "the file's third line is the fourth piece";
    EXPECT_EQ(made[29], "YNNYYNNN");
}

struct split {
    const char *file, *drive, *directory, *name;
};

TEST(CoordinateProgram, PlaceOfTheDataFile)
{
    const split cases[] = {
        {"D:\\JOBS\\SITE1.CRD", "D:", "\\JOBS\\", "SITE1"},
        {"\\JOBS\\SITE1.CRD", "C:", "\\JOBS\\", "SITE1"},
        {"e:/jobs/a.b.crd", "e:", "/jobs/", "a"},
        {"D:\\JOBS.95\\SITE1.CRD", "D:", "\\JOBS.95\\", "SITE1"},
        {"..\\SITE1.CRD", "C:", "..\\", "SITE1"},
        {"D:\\SITE1", "D:", "\\", "SITE1"},
        {"a:b:\\SITE1.CRD", "a:", "b:\\", "SITE1"},
        {"SITE1.CRD", "C:", "SITE1.CRD", "SITE1"}, // no separator: all of it counts as directory
        {"", "C:", "", ""},
    };
    for (const split& c : cases) {
        coordinate_session session;
        session.launch(c.file);
        const lines made = lines_of(read_text(session.config));
        ASSERT_EQ(made.size(), 37u) << c.file;
        EXPECT_EQ(made[2], c.drive) << c.file;
        EXPECT_EQ(made[3], c.directory) << c.file;
        EXPECT_EQ(made[33], c.name) << c.file;
    }
}

TEST(CoordinateProgram, PlaceOfTheProgram)
{
    coordinate_session session;
    session.program = "G:\\ZT\\";
    session.launch();
    const lines made = lines_of(read_text(session.config));
    EXPECT_EQ(made[4], "G:");
    EXPECT_EQ(made[5], "\\ZT\\");
}

TEST(CoordinateProgram, MissingArgumentsAreEmpty)
{
    coordinate_session session;
    coordinate_program_launch(nullptr);
    lines base = STANDARD_LINES;
    base[2] = base[4] = "C:";
    base[3] = base[5] = base[6] = "";
    EXPECT_EQ(lines_of(read_text(session.config)), with_tail(base, ""));
    EXPECT_EQ(fake.alerts, lines{"ZENTCOGO not installed."});
    EXPECT_TRUE(session.heap_is_as_before());
}

TEST(CoordinateProgram, NameHasAtMostEightCharacters)
{
    coordinate_session session;
    session.launch("D:\\JOBS\\EIGHTCHR.CRD");
    EXPECT_TRUE(fake.alerts.empty());
    EXPECT_EQ(fake.calls, lines{"system " + session.batch});
    fake.calls.clear();
    std::filesystem::remove(session.batch);
    session.launch("D:\\JOBS\\NINECHARS.CRD");
    EXPECT_EQ(fake.alerts, lines{"ZentCOGO does not handle long file names.\nNINECHARS must be renamed to 8 "
                                 "characters or less."});
    EXPECT_EQ(lines_of(read_text(session.config))[33], "NINECHARS")
        << "the configuration is written all the same";
    EXPECT_EQ(read_text(session.batch), "<none>");
    EXPECT_TRUE(fake.calls.empty());
}

TEST(CoordinateProgram, MissingProgramIsTold)
{
    coordinate_session session;
    std::filesystem::remove(session.program + "ZENT11.EXE");
    session.launch();
    EXPECT_EQ(fake.alerts, lines{"ZENTCOGO not installed."});
    EXPECT_EQ(lines_of(read_text(session.config)).size(), 37u);
    EXPECT_EQ(read_text(session.batch), "<none>");
    EXPECT_TRUE(fake.calls.empty());
}

TEST(CoordinateProgram, BatchFileGoesToTheDataDirectory)
{
    coordinate_session session;
    session.launch();
    const std::string bare = session.directory().substr(0, session.directory().size() - 1);
    EXPECT_EQ(read_text(session.batch), "cd " + bare + "\n" + session.program + "ZENT11.EXE\n");
    EXPECT_EQ(fake.calls, lines{"system " + session.batch});
}

TEST(CoordinateProgram, BatchFileChangesToTheDriveToo)
{
    coordinate_session session;
    text_set(data_dir, "D:" + session.directory()); // a drive that isn't set is the root
    session.launch();
    const std::string bare = session.directory().substr(0, session.directory().size() - 1);
    EXPECT_EQ(read_text(session.batch), "D:\ncd D:" + bare + "\n" + session.program + "ZENT11.EXE\n");
    EXPECT_EQ(fake.calls, lines{"system D:" + session.batch});
}

TEST(CoordinateProgram, WithoutItsWorkingCopyOnlyTheTailIsWritten)
{
    coordinate_session session;
    write_text(session.config, "1\n2\n3\n");
    std::filesystem::create_directory(session.scratch); // can't be opened for writing
    session.launch();
    EXPECT_EQ(read_text(session.config), "\\\n-1\nSITE1\n\n\n\n");
    EXPECT_EQ(fake.calls, lines{"system " + session.batch});
}

TEST(CoordinateProgram, ConfigurationThatCannotBeOpenedStaysAndTheProgramStarts)
{
    coordinate_session session;
    std::filesystem::create_directory(session.config);
    session.launch();
    EXPECT_TRUE(std::filesystem::is_directory(session.config));
    EXPECT_EQ(lines_of(read_text(session.scratch)).size(), 31u) << "it counts as empty";
    EXPECT_EQ(fake.calls, lines{"system " + session.batch});
}

// A device that takes nothing stands for a full disk.
TEST(CoordinateProgram, NothingIsStartedWhenTheDiskIsFull)
{
    for (const bool is_scratch : {true, false}) {
        coordinate_session session;
        const std::string full = is_scratch ? session.scratch : session.config;
        if (is_scratch)
            write_text(session.config, "old\n");
        std::filesystem::create_symlink("/dev/full", full);
        session.launch();
        EXPECT_EQ(session.printed, "Error: unable to write " + full + "\n");
        EXPECT_TRUE(fake.calls.empty());
        EXPECT_EQ(read_text(session.batch), "<none>");
        if (is_scratch) {
            EXPECT_EQ(read_text(session.config), "old\n");
        }
        EXPECT_TRUE(session.heap_is_as_before());
    }
}

TEST(CoordinateProgram, OldBatchFileIsNotRunForAnotherJob)
{
    coordinate_session session;
    std::filesystem::create_directory(session.batch); // can't be written
    session.launch();
    EXPECT_TRUE(fake.calls.empty());
    EXPECT_EQ(session.printed, "Error: unable to write " + session.batch + "\n");
}

} // namespace

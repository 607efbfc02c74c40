// The legacy program's directory in lines 3 and 4 of config.pik.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "settings/config_directory.h"
#include "tests/fakes/fake_host.h"

namespace
{

constexpr const char* KEY = "Software\\Quorvane Software\\Zentrik\\2001\\R15.0|PATH";
constexpr std::uint32_t TEXT = 1, EXPANDABLE_TEXT = 2, BINARY = 3;

struct installed : host_session {
    installed()
    {
        fake.registry[KEY] = {TEXT, directory()};
        config = directory() + "config.pik";
        scratch = directory() + "zentrprt.tmp";
    }
    std::string config, scratch;
};

struct change {
    const char* what;
    std::string path, before, after;
};

TEST(ConfigDirectory, DriveGoesToLine3AndTheRestToLine4)
{
    const change cases[] = {
        {"drive", "D:/jobs/a/", "1\n2\n3\n4\n5\n", "1\n2\nD:\n\\jobs\\a\\\n5\n"},
        {"no drive", "\\jobs\\a", "1\n2\n3\n4\n5\n", "1\n2\n3\n\\jobs\\a\n5\n"},
        {"second colon stays in the rest", "a:b:c", "1\n2\n3\n4\n", "1\n2\na:\nb:c\n"},
        {"drive alone", "C:", "1\n2\n3\n4\n5\n", "1\n2\nC:\n\n5\n"},
        {"empty path", "", "1\n2\n3\n4\n5\n", "1\n2\n3\n\n5\n"},
        {"file of three lines", "C:\\A", "1\n2\n3\n", "1\n2\nC:\n"},
        {"file of one line", "C:\\A", "1", "1"},
        {"empty file", "C:\\A", "", ""},
        {"no line feed at the end", "C:\\A", "1\n2\n3\n4\n5", "1\n2\nC:\n\\A\n5"},
    };
    for (const change& c : cases) {
        installed session;
        write_text(session.config, c.before);
        set_config_directory(c.path.c_str());
        EXPECT_EQ(read_text(session.config), c.after) << c.what;
        EXPECT_EQ(read_text(session.scratch), c.after) << c.what << ": the temporary file stays";
        EXPECT_EQ(session.printed, "");
        EXPECT_TRUE(session.heap_is_as_before());
    }
}

TEST(ConfigDirectory, LongLinesAreCountedInPiecesOf122Characters)
{
    installed session;
    const std::string line121(121, 'a'), line122(122, 'b');
    write_text(session.config, line121 + "\n" + line122 + "\n3\n4\n");
    set_config_directory("C:\\A");
    // The line feed behind 122 characters is the third piece.
    EXPECT_EQ(read_text(session.config), line121 + "\n" + line122 + "C:\n\\A\n4\n");
}

TEST(ConfigDirectory, SeparatorIsAddedToTheInstallation)
{
    installed session;
    const std::string bare = session.directory().substr(0, session.directory().size() - 1);
    fake.registry[KEY] = {TEXT, bare};
    write_text(session.config, "1\n2\n3\n4\n");
    set_config_directory("C:\\A");
    EXPECT_EQ(read_text(session.config), "1\n2\nC:\n\\A\n");
}

TEST(ConfigDirectory, OnlyATextOf123BytesAtMostNamesTheInstallation)
{
    struct value {
        std::uint32_t type;
        std::size_t length; // of the text, without its terminator
        bool found;
    };
    const value cases[] = {
        {TEXT, 122, true}, {TEXT, 123, false}, {EXPANDABLE_TEXT, 60, false}, {BINARY, 60, false}};
    for (const value& c : cases) {
        installed session;
        const std::string padding(c.length - session.directory().size(), '/');
        fake.registry[KEY] = {c.type, session.directory() + padding};
        write_text(session.config, "1\n2\n3\n4\n");
        set_config_directory("C:\\A");
        EXPECT_EQ(read_text(session.config), c.found ? "1\n2\nC:\n\\A\n" : "1\n2\n3\n4\n") << c.length;
    }
}

TEST(ConfigDirectory, NothingWithoutItsTemporaryFile)
{
    installed session;
    write_text(session.config, "1\n2\n3\n4\n");
    std::filesystem::create_directory(session.scratch); // can't be opened for writing
    set_config_directory("C:\\A");
    EXPECT_EQ(read_text(session.config), "1\n2\n3\n4\n");
    EXPECT_EQ(session.printed, "");
    EXPECT_TRUE(session.heap_is_as_before());
}

TEST(ConfigDirectory, NothingWithoutAnInstallationOrItsFile)
{
    installed session;
    write_text(session.scratch, "a report\n");
    set_config_directory("C:\\A"); // no config.pik
    EXPECT_EQ(read_text(session.config), "<none>");
    EXPECT_EQ(read_text(session.scratch), "a report\n");
    write_text(session.config, "1\n2\n3\n4\n");
    fake.registry[KEY] = {TEXT, ""};
    set_config_directory("C:\\A");
    fake.registry.clear();
    set_config_directory("C:\\A");
    EXPECT_EQ(read_text(session.config), "1\n2\n3\n4\n");
}

} // namespace

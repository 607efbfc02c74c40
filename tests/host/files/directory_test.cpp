#include <cstring>

#include <gtest/gtest.h>
#include <unistd.h>

#include "hostapi/files.h"
#include "tests/host/files/temporary_directory.h"

namespace
{

TEST(Directories, QuestionsAboutFiles)
{
    temporary_directory tmp;
    tmp.write("Sub/File", "x");
    EXPECT_EQ(file_exists("sub"), 1);
    EXPECT_EQ(file_exists("SUB\\FILE"), 1);
    EXPECT_EQ(file_exists("sub/none"), 0);
    EXPECT_EQ(file_exists(nullptr), 0);
    EXPECT_EQ(file_is_directory("SUB"), 1);
    EXPECT_EQ(file_is_directory("SUB\\"), 1);
    EXPECT_EQ(file_is_directory("sub/file"), 0);
    EXPECT_NE(file_remove("sub"), 0) << "a directory is not removed";
    EXPECT_EQ(file_remove("SUB\\FILE"), 0);
    EXPECT_NE(file_remove("SUB\\FILE"), 0);
    EXPECT_EQ(file_exists("sub/file"), 0);
}

TEST(Directories, AFileIsWrittenInItsOwnSpelling)
{
    temporary_directory tmp;
    tmp.write("List.txt", "old");
    host_file* file = file_open("LIST.TXT", "w");
    ASSERT_TRUE(file);
    EXPECT_EQ(file_puts("new\n", file), 0);
    EXPECT_EQ(file_close(file), 0);
    EXPECT_EQ(tmp.read("List.txt"), "new\n");
    EXPECT_EQ(tmp.count(), 1);
}

TEST(Directories, RenamingReplacesAndChangesCase)
{
    temporary_directory tmp;
    tmp.write("a.txt", "a");
    tmp.write("B.txt", "b");
    EXPECT_EQ(file_rename("A.TXT", "b.txt"), 0);
    EXPECT_EQ(tmp.read("B.txt"), "a");
    EXPECT_FALSE(tmp.has("a.txt"));
    EXPECT_EQ(file_rename("b.txt", "b.TXT"), 0);
    EXPECT_TRUE(tmp.has("b.TXT"));
    EXPECT_NE(file_rename("none", "x"), 0);
    EXPECT_NE(file_rename(nullptr, "x"), 0);
}

TEST(Directories, RenamingWorksAcrossFileSystems)
{
    temporary_directory tmp;
    if (access("/dev/shm", W_OK) != 0)
        GTEST_SKIP() << "no second file system here";
    const std::string other = "/dev/shm/zent-rename-" + std::to_string(getpid());
    tmp.write("a", "bytes");
    EXPECT_EQ(file_rename("a", other.c_str()), 0);
    EXPECT_FALSE(tmp.has("a"));
    EXPECT_EQ(file_rename(other.c_str(), "b"), 0);
    EXPECT_EQ(tmp.read("b"), "bytes");
    EXPECT_FALSE(std::filesystem::exists(other));
}

std::string found(const char* pattern)
{
    std::string out;
    char name[32];
    const char* previous = nullptr;
    char last[32];
    while (file_find(pattern, previous, name, sizeof name)) {
        out += std::string(name) + " ";
        std::memcpy(last, name, sizeof name);
        previous = last;
    }
    return out;
}

TEST(Directories, FindWalksInAlphabeticalOrder)
{
    temporary_directory tmp;
    for (const char* name : {"sub/b.txt", "sub/A.TXT", "sub/c.dat", "sub/.hidden", "sub/plain", "sub/one.dxf",
                             "sub/two.dwg", "sub/two.dxf", "sub/\xC3\xA9t\xC3\xA9"})
        tmp.write(name, "");
    std::filesystem::create_directory("sub/D");
    struct {
        const char *pattern, *names;
    } const cases[] = {
        {"SUB\\*.txt", "A.TXT b.txt "},
        {"sub/*.*", "A.TXT b.txt c.dat D one.dxf plain two.dwg two.dxf \xE9t\xE9 "},
        {"sub/?.*", "A.TXT b.txt c.dat "},
        {"sub/C.DAT", "c.dat "},
        {"sub/*.DWG", "one.dwg two.dwg "},
        {"sub/.*", ".hidden "},
        {"sub/\xC9*", "\xE9t\xE9 "},
        {"SUB", "sub "},
        {"sub/none", ""},
        {"sub/", ""},
        {"none/*", ""},
        {"", ""},
    };
    for (const auto& one : cases)
        EXPECT_EQ(found(one.pattern), one.names) << one.pattern;
}

TEST(Directories, FindPassesOverNamesThatAreTooLong)
{
    temporary_directory tmp;
    tmp.write("long-name", "");
    tmp.write("x", "");
    char name[9];
    EXPECT_EQ(file_find("*", nullptr, name, 9), 1);
    EXPECT_STREQ(name, "x");
    char room[10];
    EXPECT_EQ(file_find("*", nullptr, room, 10), 1);
    EXPECT_STREQ(room, "long-name");
    EXPECT_EQ(file_find(nullptr, nullptr, room, 10), 0);
    EXPECT_EQ(file_find("*", nullptr, room, 0), 0);
}

TEST(Directories, FindGoesOnBehindAFileThatWasRemoved)
{
    temporary_directory tmp;
    for (const char* name : {"a", "b", "c"})
        tmp.write(name, "");
    char name[9];
    ASSERT_EQ(file_find("*", nullptr, name, 9), 1);
    file_remove(name);
    ASSERT_EQ(file_find("*", "a", name, 9), 1);
    EXPECT_STREQ(name, "b");
}

} // namespace

#include <cerrno>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "host/files/paths.h"
#include "tests/host/files/temporary_directory.h"

namespace
{

TEST(ReplaceFile, NewFileIsMade)
{
    temporary_directory tmp;
    std::string error;
    EXPECT_TRUE(host::replace_file("t", "bytes", "t.bak", &error));
    EXPECT_EQ(tmp.read("t"), "bytes");
    EXPECT_FALSE(tmp.has("t.bak")) << "there was nothing to keep";
    EXPECT_EQ(error, "");
    EXPECT_EQ(tmp.count(), 1);
}

TEST(ReplaceFile, PreviousFileStaysAsBackup)
{
    temporary_directory tmp;
    tmp.write("t", "one");
    EXPECT_TRUE(host::replace_file("t", "two", "t.bak", nullptr));
    EXPECT_TRUE(host::replace_file("t", "three", "t.bak", nullptr));
    EXPECT_EQ(tmp.read("t"), "three");
    EXPECT_EQ(tmp.read("t.bak"), "two");
    EXPECT_TRUE(host::replace_file("t", "four", "", nullptr));
    EXPECT_EQ(tmp.read("t.bak"), "two");
    EXPECT_EQ(tmp.count(), 2);
}

TEST(ReplaceFile, FailureIsToldAndLeavesEverythingAsItWas)
{
    temporary_directory tmp;
    std::filesystem::create_directory("dir");
    tmp.write("t", "old");
    std::string error;
    EXPECT_FALSE(host::replace_file("dir", "x", "", &error));
    EXPECT_EQ(error, "Is a directory");
    EXPECT_FALSE(host::replace_file("none/t", "x", "", &error));
    EXPECT_EQ(error, "No such file or directory");
    EXPECT_FALSE(host::replace_file("t", "x", "none/t.bak", &error)) << "the backup can't be kept";
    EXPECT_EQ(tmp.read("t"), "old");
    EXPECT_EQ(tmp.count(), 2);
}

TEST(ReadWhole, BytesAsTheyAre)
{
    temporary_directory tmp;
    const std::string bytes = std::string("a\r\n\0b", 5) + std::string(200000, 'x');
    tmp.write("t", bytes);
    EXPECT_EQ(host::read_whole("t"), bytes);
    EXPECT_EQ(host::read_whole(tmp.write("empty", "")), "");
    errno = 0;
    EXPECT_FALSE(host::read_whole("none"));
    EXPECT_EQ(errno, ENOENT);
    EXPECT_FALSE(host::read_whole("."));
    EXPECT_EQ(errno, EISDIR);
}

} // namespace

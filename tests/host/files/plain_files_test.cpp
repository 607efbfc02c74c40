#include <gtest/gtest.h>

#include "hostapi/files.h"
#include "tests/host/files/temporary_directory.h"

namespace
{

TEST(PlainFiles, PathsAreThoseOfTheFileSystem)
{
    const temporary_directory tmp;
    tmp.write("Sub/File", "x");
    EXPECT_EQ(file_exists("Sub"), 1);
    EXPECT_EQ(file_exists("Sub/File"), 1);
    EXPECT_EQ(file_exists("sub/file"), 0);
    EXPECT_EQ(file_exists("Sub\\File"), 0);
    EXPECT_EQ(file_exists(nullptr), 0);
    EXPECT_EQ(file_is_directory("Sub"), 1);
    EXPECT_EQ(file_is_directory("Sub/"), 1);
    EXPECT_EQ(file_is_directory("Sub/File"), 0);
    EXPECT_EQ(file_is_directory(nullptr), 0);
    host_file* file = file_open("Sub/New", "w");
    ASSERT_TRUE(file);
    file_puts("y\n", file);
    EXPECT_EQ(file_close(file), 0);
    EXPECT_EQ(tmp.read("Sub/New"), "y\n");
}

TEST(PlainFiles, OnlyFilesAreRemoved)
{
    const temporary_directory tmp;
    tmp.write("sub/file", "x");
    EXPECT_NE(file_remove("sub"), 0);
    EXPECT_EQ(file_remove("sub/file"), 0);
    EXPECT_NE(file_remove("sub/file"), 0);
    EXPECT_NE(file_remove("sub"), 0) << "an empty directory too";
    EXPECT_NE(file_remove(nullptr), 0);
}

TEST(PlainFiles, RenamingReplaces)
{
    const temporary_directory tmp;
    tmp.write("a", "a");
    tmp.write("b", "b");
    EXPECT_EQ(file_rename("a", "b"), 0);
    EXPECT_EQ(tmp.read("b"), "a");
    EXPECT_FALSE(tmp.has("a"));
    EXPECT_NE(file_rename("none", "x"), 0);
    EXPECT_NE(file_rename(nullptr, "x"), 0);
    EXPECT_NE(file_rename("b", nullptr), 0);
}

} // namespace

// Temporary files, of the host and of the plain one.
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <set>
#include <string>

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "hostapi/files.h"
#include "tests/host/files/temporary_directory.h"

namespace
{

// The system's directory for temporary files is one of the test's own.
class TemporaryFiles : public testing::Test
{
protected:
    void SetUp() override
    {
        if (const char* set = getenv("TMPDIR"))
            before = set;
        setenv("TMPDIR", tmp.path.c_str(), 1);
        ASSERT_EQ(file_temp_name(name, sizeof name), 0);
    }
    void TearDown() override
    {
        if (before.empty())
            unsetenv("TMPDIR");
        else
            setenv("TMPDIR", before.c_str(), 1);
    }
    host_file* open(const char* mode) { return file_open_temp(name, mode); }
    void put(const char* mode, const char* bytes)
    {
        host_file* file = open(mode);
        ASSERT_TRUE(file);
        EXPECT_EQ(file_write(bytes, std::strlen(bytes), file), std::strlen(bytes));
        EXPECT_EQ(file_close(file), 0);
    }

    temporary_directory tmp;
    std::string before;
    char name[16] = {};
};

TEST_F(TemporaryFiles, ANameAloneMakesNoFile)
{
    EXPECT_LE(std::strlen(name), 15u);
    EXPECT_EQ(tmp.count(), 0);
    EXPECT_EQ(open("rb"), nullptr);
    EXPECT_EQ(open("r+b"), nullptr);
    EXPECT_EQ(tmp.count(), 0);
}

TEST_F(TemporaryFiles, NamesAreDifferent)
{
    std::set<std::string> names = {name};
    for (int i = 0; i < 1000; i++) {
        char other[16];
        ASSERT_EQ(file_temp_name(other, sizeof other), 0);
        EXPECT_TRUE(names.insert(other).second);
    }
}

TEST_F(TemporaryFiles, ANameThatHasNoRoomIsNone)
{
    char small[4] = "abc";
    EXPECT_NE(file_temp_name(small, sizeof small), 0);
    EXPECT_STREQ(small, "abc");
    EXPECT_NE(file_temp_name(nullptr, 16), 0);
}

TEST_F(TemporaryFiles, LieInTheSystemsDirectoryForTheUserAlone)
{
    put("w+b", "secret");
    EXPECT_EQ(tmp.read(name), "secret");
    struct stat state;
    ASSERT_EQ(stat((tmp.path + "/" + name).c_str(), &state), 0);
    EXPECT_EQ(state.st_mode & 07777, 0600u);
    EXPECT_EQ(tmp.count(), 1);
}

TEST_F(TemporaryFiles, ChangeInPlace)
{
    put("w+b", "0123456789");
    struct stat before_change, after;
    const std::string path = tmp.path + "/" + name;
    ASSERT_EQ(stat(path.c_str(), &before_change), 0);
    host_file* file = open("r+b");
    ASSERT_TRUE(file);
    EXPECT_EQ(tmp.count(), 1) << "nothing beside it";
    EXPECT_EQ(file_seek(file, 4, SEEK_SET), 0);
    EXPECT_EQ(file_write("\r\n\0", 3, file), 3u);
    EXPECT_EQ(file_close(file), 0);
    EXPECT_EQ(tmp.read(name), std::string("0123\r\n\0"
                                          "789",
                                          10));
    ASSERT_EQ(stat(path.c_str(), &after), 0);
    EXPECT_EQ(before_change.st_ino, after.st_ino);
}

TEST_F(TemporaryFiles, AreReadFromAnyPlace)
{
    put("w+b", "0123456789");
    host_file* file = open("rb");
    ASSERT_TRUE(file);
    char bytes[20] = {};
    EXPECT_EQ(file_seek(file, 6, SEEK_SET), 0);
    EXPECT_EQ(file_read(bytes, sizeof bytes, file), 4u);
    EXPECT_STREQ(bytes, "6789");
    EXPECT_EQ(file_seek(file, 0, SEEK_END), 0);
    EXPECT_EQ(file_tell(file), 10);
    EXPECT_EQ(file_write("x", 1, file), 0u) << "opened for reading";
    EXPECT_EQ(file_close(file), 0);
}

TEST_F(TemporaryFiles, WhatIsLeftOutIsZero)
{
    host_file* file = open("w+b");
    ASSERT_TRUE(file);
    file_seek(file, 3, SEEK_SET);
    EXPECT_EQ(file_write("x", 1, file), 1u);
    EXPECT_EQ(file_close(file), 0);
    EXPECT_EQ(tmp.read(name), std::string("\0\0\0x", 4));
}

TEST_F(TemporaryFiles, ANewOneIsNeverOneThatIsThere)
{
    put("w+b", "old");
    EXPECT_EQ(open("w+b"), nullptr);
    EXPECT_EQ(tmp.read(name), "old");
}

TEST_F(TemporaryFiles, LinksAreNotFollowed)
{
    const std::string target = tmp.write("target", "mine");
    ASSERT_EQ(symlink(target.c_str(), (tmp.path + "/" + name).c_str()), 0);
    for (const char* mode : {"rb", "r+b", "w+b"})
        EXPECT_EQ(open(mode), nullptr) << mode;
    EXPECT_EQ(tmp.read("target"), "mine");
}

TEST_F(TemporaryFiles, WhatIsNoFileIsRefused)
{
    ASSERT_EQ(mkdir((tmp.path + "/" + name).c_str(), 0700), 0);
    for (const char* mode : {"rb", "r+b", "w+b"})
        EXPECT_EQ(open(mode), nullptr) << mode;
    EXPECT_NE(file_remove_temp(name), 0);
    ASSERT_EQ(rmdir((tmp.path + "/" + name).c_str()), 0);
    ASSERT_EQ(mkfifo((tmp.path + "/" + name).c_str(), 0600), 0);
    EXPECT_EQ(open("rb"), nullptr) << "and nobody waits at a pipe";
}

TEST_F(TemporaryFiles, AnotherUsersFileIsRefused)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "only the superuser can make one";
    put("w+b", "x");
    ASSERT_EQ(chown((tmp.path + "/" + name).c_str(), 65534, 65534), 0);
    EXPECT_EQ(open("rb"), nullptr);
    EXPECT_EQ(open("r+b"), nullptr);
}

TEST_F(TemporaryFiles, NamesDoNotLeadElsewhere)
{
    tmp.write("sub/file", "x");
    for (const char* other : {"", ".", "..", "sub/file", "../x", "/etc/hostname"}) {
        EXPECT_EQ(file_open_temp(other, "rb"), nullptr) << other;
        EXPECT_NE(file_remove_temp(other), 0) << other;
    }
    EXPECT_EQ(file_open_temp(nullptr, "rb"), nullptr);
    EXPECT_NE(file_remove_temp(nullptr), 0);
    EXPECT_TRUE(tmp.has("sub/file"));
}

TEST_F(TemporaryFiles, OtherModesAreRefused)
{
    put("w+b", "x");
    for (const char* mode : {"", "r", "w", "wb", "a", "a+b", "rb+"})
        EXPECT_EQ(open(mode), nullptr) << mode;
    EXPECT_EQ(open(nullptr), nullptr);
    EXPECT_EQ(tmp.read(name), "x");
}

TEST_F(TemporaryFiles, GoWhenTheyAreRemoved)
{
    put("w+b", "x");
    EXPECT_EQ(file_remove_temp(name), 0);
    EXPECT_EQ(tmp.count(), 0);
    EXPECT_NE(file_remove_temp(name), 0);
    EXPECT_EQ(open("r+b"), nullptr);
    put("w+b", "y");
}

TEST_F(TemporaryFiles, AFullDiskIsToldAtTheClose)
{
    put("w+b", "old");
    const pid_t child = fork();
    if (child == 0) {
        signal(SIGXFSZ, SIG_IGN);
        const rlimit limit = {1000, 1000};
        setrlimit(RLIMIT_FSIZE, &limit);
        host_file* file = open("r+b");
        const std::string big(100000, 'x');
        if (file)
            file_write(big.data(), big.size(), file);
        _exit(file && file_close(file) != 0 ? 0 : 1);
    }
    int status = -1;
    waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
}

TEST_F(TemporaryFiles, GoWhenTheirProgramEndsAndOnlyThen)
{
    put("w+b", "the parent's");
    const pid_t child = fork();
    if (child == 0) {
        char other[16];
        file_temp_name(other, sizeof other);
        file_close(file_open_temp(other, "w+b"));
        std::exit(tmp.count());
    }
    int status = -1;
    waitpid(child, &status, 0);
    EXPECT_EQ(WEXITSTATUS(status), 2);
    EXPECT_EQ(tmp.count(), 1);
    EXPECT_EQ(tmp.read(name), "the parent's");
}

TEST_F(TemporaryFiles, NoneIsToBeHadWithoutADirectory)
{
    setenv("TMPDIR", "/nowhere-at-all", 1);
    char other[16];
    EXPECT_NE(file_temp_name(other, sizeof other), 0);
    EXPECT_EQ(open("w+b"), nullptr);
}

} // namespace

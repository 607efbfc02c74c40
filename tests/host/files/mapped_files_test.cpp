// Temporary files as memory, of the host and of the plain one; also when somebody takes the file away.
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "hostapi/files.h"
#include "tests/host/files/temporary_directory.h"

namespace
{

constexpr std::size_t SIZE = 300000;

class MappedFiles : public testing::Test
{
protected:
    void SetUp() override
    {
        if (const char* set = getenv("TMPDIR"))
            before = set;
        setenv("TMPDIR", tmp.path.c_str(), 1);
        ASSERT_EQ(make(name, SIZE), 0);
        sigaction(SIGBUS, nullptr, &action_before);
    }
    void TearDown() override
    {
        struct sigaction after;
        sigaction(SIGBUS, nullptr, &after);
        EXPECT_EQ(after.sa_handler, action_before.sa_handler) << "the guard has gone";
        file_remove_temp(name);
        if (before.empty())
            unsetenv("TMPDIR");
        else
            setenv("TMPDIR", before.c_str(), 1);
    }
    static int make(char (&to)[16], std::size_t size)
    {
        if (file_temp_name(to, sizeof to) != 0)
            return -1;
        host_file* file = file_open_temp(to, "w+b");
        const std::string bytes(size, 'x');
        return file && file_write(bytes.data(), size, file) == size ? file_close(file) : -1;
    }
    std::string path() const { return tmp.path + "/" + name; }
    char* map() const { return static_cast<char*>(file_map_temp(name, SIZE)); }

    temporary_directory tmp;
    std::string before;
    struct sigaction action_before = {};
    char name[16] = {};
};

TEST_F(MappedFiles, WhatIsChangedInMemoryIsChangedInTheFile)
{
    char* const bytes = map();
    ASSERT_TRUE(bytes);
    EXPECT_EQ(std::string(bytes, SIZE), std::string(SIZE, 'x'));
    std::memcpy(bytes + 100000, "changed", 7);
    EXPECT_EQ(file_unmap_temp(bytes), 0);
    std::string want(SIZE, 'x');
    want.replace(100000, 7, "changed");
    EXPECT_EQ(tmp.read(name), want);
}

TEST_F(MappedFiles, HolesAreZerosAndGetTheirPlace)
{
    truncate(path().c_str(), 0);
    truncate(path().c_str(), SIZE);
    struct stat state;
    ASSERT_EQ(stat(path().c_str(), &state), 0);
    EXPECT_LT(state.st_blocks * 512u, SIZE);
    char* const bytes = map();
    ASSERT_TRUE(bytes);
    ASSERT_EQ(stat(path().c_str(), &state), 0);
    EXPECT_GE(state.st_blocks * 512u, SIZE);
    EXPECT_EQ(bytes[SIZE - 1], 0);
    bytes[SIZE - 1] = 'e';
    EXPECT_EQ(file_unmap_temp(bytes), 0);
    EXPECT_EQ(tmp.read(name).back(), 'e');
}

TEST_F(MappedFiles, AFileThatIsShorterIsNotMapped)
{
    EXPECT_EQ(file_map_temp(name, SIZE + 1), nullptr);
    EXPECT_EQ(file_map_temp(name, 0), nullptr);
    EXPECT_EQ(std::filesystem::file_size(path()), SIZE);
    void* const part = file_map_temp(name, 10);
    EXPECT_TRUE(part);
    EXPECT_EQ(file_unmap_temp(part), 0);
}

TEST_F(MappedFiles, OnlyTemporaryFilesAreMapped)
{
    tmp.write("sub/file", "0123456789");
    for (const char* other : {"", "..", "sub/file", "not-there"})
        EXPECT_EQ(file_map_temp(other, 5), nullptr) << other;
    EXPECT_EQ(file_map_temp(nullptr, 5), nullptr);
    char byte;
    EXPECT_NE(file_unmap_temp(&byte), 0);
    EXPECT_NE(file_unmap_temp(nullptr), 0);
}

TEST_F(MappedFiles, AShortenedFileReadsAsZerosAndIsTold)
{
    for (const off_t left : {0, 5000}) {
        truncate(path().c_str(), SIZE);
        volatile char* const bytes = map();
        ASSERT_TRUE(bytes);
        bytes[0] = 'a';
        truncate(path().c_str(), left);
        EXPECT_EQ(bytes[200000], 0);
        bytes[200000] = 'b';
        EXPECT_EQ(bytes[200000], 'b') << "nobody keeps it, but it can be worked with";
        EXPECT_NE(file_unmap_temp(const_cast<char*>(bytes)), 0);
        EXPECT_EQ(std::filesystem::file_size(path()), std::size_t(left));
    }
}

TEST_F(MappedFiles, AFileThatWasShortenedWhereNobodyLookedIsTold)
{
    char* const bytes = map();
    ASSERT_TRUE(bytes);
    truncate(path().c_str(), SIZE - 1);
    EXPECT_NE(file_unmap_temp(bytes), 0);
}

TEST_F(MappedFiles, ARemovedFileIsTold)
{
    char* const bytes = map();
    ASSERT_TRUE(bytes);
    EXPECT_EQ(file_remove_temp(name), 0);
    bytes[SIZE - 1] = 'a';
    EXPECT_NE(file_unmap_temp(bytes), 0);
}

TEST_F(MappedFiles, OneThatIsLostLeavesTheOthers)
{
    char other[16];
    ASSERT_EQ(make(other, SIZE), 0);
    volatile char* const first = map();
    char* const second = static_cast<char*>(file_map_temp(other, SIZE));
    ASSERT_TRUE(first && second);
    truncate(path().c_str(), 0);
    EXPECT_EQ(first[100], 0);
    second[100] = 's';
    EXPECT_NE(file_unmap_temp(const_cast<char*>(first)), 0);
    EXPECT_EQ(file_unmap_temp(second), 0);
    EXPECT_EQ(tmp.read(other)[100], 's');
    file_remove_temp(other);
}

// The guard is for touches of the maps; what else raises the signal gets what it got before.
TEST_F(MappedFiles, OtherBusErrorsGoTheirOwnWay)
{
    for (const bool sent : {true, false}) {
        const pid_t child = fork();
        if (child == 0) {
            char other[16];
            make(other, SIZE);
            signal(SIGBUS, [](int) { _exit(77); });
            const int descriptor = open((tmp.path + "/" + other).c_str(), O_RDWR);
            volatile char* const own =
                static_cast<char*>(mmap(nullptr, SIZE, PROT_READ, MAP_SHARED, descriptor, 0));
            if (!map() || own == MAP_FAILED || ftruncate(descriptor, 0) != 0)
                _exit(1);
            if (sent)
                raise(SIGBUS);
            _exit(own[0] + 2);
        }
        int status = -1;
        waitpid(child, &status, 0);
        EXPECT_EQ(WEXITSTATUS(status), 77) << sent;
    }
}

} // namespace

#include "hostapi/files.h"

#include <cstring>
#include <random>
#include <vector>

#include <csignal>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "tests/host/files/temporary_directory.h"

namespace
{

std::string whole(const char* path, int size)
{
    std::string out;
    std::vector<char> buffer(static_cast<std::size_t>(size));
    host_file* file = file_open(path, "r");
    while (file && file_gets(buffer.data(), size, file))
        out += std::string(buffer.data()) + "|";
    if (file)
        file_close(file);
    return out;
}

// What fgets would give of a text with line feeds only.
std::string plain_model(std::string text, int size)
{
    std::string lines, out;
    for (std::size_t i = 0; i < text.size(); i++) {
        if (text[i] != '\r')
            lines += text[i];
        else if (i + 1 == text.size() || text[i + 1] != '\n')
            lines += '\n';
    }
    std::size_t at = 0;
    while (at < lines.size()) {
        std::string piece;
        while (at < lines.size() && piece.size() < static_cast<std::size_t>(size) - 1) {
            piece += lines[at++];
            if (piece.back() == '\n')
                break;
        }
        out += piece + "|";
    }
    return out;
}

TEST(FileGets, LineEndsOfEveryKindBecomeOneLineFeed)
{
    temporary_directory tmp;
    struct {
        const char *bytes, *lines;
    } const cases[] = {
        {"a\nb\n", "a\n|b\n|"},
        {"a\r\nb\r\n", "a\n|b\n|"},
        {"a\rb\r", "a\n|b\n|"},
        {"a\r\n\r\nb", "a\n|\n|b|"},
        {"a\r\r\nb", "a\n|\n|b|"},
        {"\r", "\n|"},
        {"", ""},
        {"a", "a|"},
        {"a\n\rb", "a\n|\n|b|"},
    };
    for (const auto& one : cases) {
        tmp.write("t", one.bytes);
        EXPECT_EQ(whole("t", 100), one.lines);
    }
}

TEST(FileGets, LimitSplitsLinesAsFgetsDoes)
{
    temporary_directory tmp;
    tmp.write("t", "abc\r\nde\r\n");
    EXPECT_EQ(whole("t", 4), "abc|\n|de\n|");
    EXPECT_EQ(whole("t", 5), "abc\n|de\n|");
    EXPECT_EQ(whole("t", 3), "ab|c\n|de|\n|");
    EXPECT_EQ(whole("t", 2), "a|b|c|\n|d|e|\n|");
}

TEST(FileGets, AgreesWithThePlainModelOnAnyMixture)
{
    temporary_directory tmp;
    std::mt19937 random(20260101);
    for (int round = 0; round < 300; round++) {
        std::string text;
        for (auto i = random() % 40; i > 0; i--)
            text += "ab\r\n\r"[random() % 5];
        tmp.write("t", text);
        for (int size = 2; size < 8; size++)
            ASSERT_EQ(whole("t", size), plain_model(text, size)) << "round " << round << " size " << size;
    }
}

TEST(FileGets, BadArgumentsGiveNothing)
{
    temporary_directory tmp;
    tmp.write("t", "a\n");
    host_file* file = file_open("t", "r");
    char buffer[4];
    EXPECT_EQ(file_gets(nullptr, 4, file), nullptr);
    EXPECT_EQ(file_gets(buffer, 0, file), nullptr);
    EXPECT_EQ(file_gets(buffer, 4, nullptr), nullptr);
    EXPECT_STREQ(file_gets(buffer, 1, file), "");
    EXPECT_STREQ(file_gets(buffer, 4, file), "a\n");
    EXPECT_EQ(file_gets(buffer, 4, file), nullptr);
    EXPECT_EQ(file_close(file), 0);
}

TEST(FileOpen, RefusesWhatItCannotOpen)
{
    temporary_directory tmp;
    std::filesystem::create_directory("dir");
    EXPECT_EQ(file_open("missing", "r"), nullptr);
    EXPECT_EQ(file_open("missing", "r+"), nullptr);
    EXPECT_FALSE(tmp.has("missing"));
    EXPECT_EQ(file_open("dir", "r"), nullptr);
    EXPECT_EQ(file_open("dir", "w"), nullptr);
    EXPECT_EQ(file_open("dir", "a"), nullptr);
    EXPECT_EQ(file_open("nowhere/x", "w"), nullptr);
    EXPECT_EQ(file_open("x", "q"), nullptr);
    EXPECT_EQ(file_open("x", "wz"), nullptr);
    EXPECT_EQ(file_open("x", ""), nullptr);
    EXPECT_EQ(file_open("x", nullptr), nullptr);
    EXPECT_EQ(file_open("", "w"), nullptr);
    EXPECT_EQ(file_open(nullptr, "r"), nullptr);
    EXPECT_EQ(tmp.count(), 1);
}

TEST(FileWriting, TheOldFileStandsUntilTheNewOneIsClosed)
{
    temporary_directory tmp;
    tmp.write("List.txt", "old");
    host_file* file = file_open("List.txt", "w");
    ASSERT_TRUE(file);
    EXPECT_EQ(file_puts("new\n", file), 0);
    EXPECT_EQ(file_printf(file, "%d %s\n", 5, "five"), 7);
    EXPECT_EQ(tmp.read("List.txt"), "old");
    EXPECT_EQ(file_close(file), 0);
    EXPECT_EQ(tmp.read("List.txt"), "new\n5 five\n");
    EXPECT_EQ(tmp.count(), 1) << "nothing is left beside it";
    EXPECT_NE(file_close(file), 0) << "a second close is refused";
}

TEST(FileWriting, CarriageReturnsWhenTheUserWantsThem)
{
    temporary_directory tmp;
    host::run_settings().crlf = true;
    host_file* file = file_open("t", "w");
    file_puts("a\nb\r\nc\r", file);
    file_puts("\nd\n", file);
    file_write("e\n", 2, file);
    EXPECT_EQ(file_close(file), 0);
    EXPECT_EQ(tmp.read("t"), "a\r\nb\r\nc\r\nd\r\ne\n");
    file = file_open("t", "wb");
    file_puts("a\n", file);
    EXPECT_EQ(file_close(file), 0);
    EXPECT_EQ(tmp.read("t"), "a\n") << "binary files hold bytes as they are";
}

TEST(FileWriting, AppendingKeepsWhatIsThere)
{
    temporary_directory tmp;
    for (const char* text : {"one\n", "two\n"}) {
        host_file* file = file_open("log", "a");
        ASSERT_TRUE(file);
        EXPECT_EQ(file_puts(text, file), 0);
        EXPECT_EQ(file_close(file), 0);
    }
    EXPECT_EQ(tmp.read("log"), "one\ntwo\n");
}

TEST(FileWriting, PlusModesReadAndWrite)
{
    temporary_directory tmp;
    tmp.write("t", "12345");
    host_file* file = file_open("t", "r+b");
    ASSERT_TRUE(file);
    char byte = 0;
    EXPECT_EQ(file_read(&byte, 1, file), 1u);
    EXPECT_EQ(file_write("x", 1, file), 1u);
    EXPECT_EQ(file_read(&byte, 1, file), 1u);
    EXPECT_EQ(byte, '3');
    EXPECT_EQ(file_tell(file), 3);
    EXPECT_EQ(file_seek(file, -1, SEEK_END), 0);
    file_write("z", 1, file);
    EXPECT_EQ(file_close(file), 0);
    EXPECT_EQ(tmp.read("t"), "1x34z");

    file = file_open("t", "a+");
    file_seek(file, 0, SEEK_SET);
    EXPECT_EQ(file_read(&byte, 1, file), 1u);
    EXPECT_EQ(byte, '1');
    file_puts("end", file);
    EXPECT_EQ(file_close(file), 0);
    EXPECT_EQ(tmp.read("t"), "1x34zend") << "appending writes at the end, wherever reading was";
}

TEST(FileWriting, AFileOpenForReadingTakesNothing)
{
    temporary_directory tmp;
    tmp.write("t", "a");
    host_file* file = file_open("t", "r");
    EXPECT_LT(file_puts("b", file), 0);
    EXPECT_EQ(file_write("b", 1, file), 0u);
    EXPECT_EQ(file_close(file), 0);
    EXPECT_EQ(tmp.read("t"), "a");
}

TEST(FileWriting, ModeOfTheOldFileIsKept)
{
    temporary_directory tmp;
    const std::string path = tmp.write("t", "a");
    chmod(path.c_str(), 0640);
    file_close(file_open("t", "w"));
    struct stat state;
    ASSERT_EQ(stat(path.c_str(), &state), 0);
    EXPECT_EQ(state.st_mode & 07777, 0640u);
    EXPECT_EQ(state.st_size, 0);
}

TEST(FileWriting, SymbolicLinksStayLinks)
{
    temporary_directory tmp;
    tmp.write("deep/real", "old");
    std::filesystem::create_symlink("deep/real", "link");
    std::filesystem::create_symlink("deep/made", "dangling");
    for (const char* name : {"link", "dangling"}) {
        host_file* file = file_open(name, "w");
        ASSERT_TRUE(file) << name;
        file_puts("new", file);
        EXPECT_EQ(file_close(file), 0);
        EXPECT_TRUE(std::filesystem::is_symlink(name));
    }
    EXPECT_EQ(tmp.read("deep/real"), "new");
    EXPECT_EQ(tmp.read("deep/made"), "new");
}

TEST(FileWriting, DevicesAreWrittenInPlace)
{
    host_file* file = file_open("/dev/null", "w");
    ASSERT_TRUE(file);
    EXPECT_EQ(file_puts("x", file), 0);
    EXPECT_EQ(file_close(file), 0);
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));
}

TEST(FileWriting, AFullDiskLeavesTheOldFile)
{
    // A limit on the size of files stands in for the full disk, in a process of its own.
    temporary_directory tmp;
    tmp.write("t", "old");
    const pid_t child = fork();
    if (child == 0) {
        signal(SIGXFSZ, SIG_IGN);
        const rlimit limit = {1000, 1000};
        setrlimit(RLIMIT_FSIZE, &limit);
        host_file* file = file_open("t", "w");
        const std::string big(100000, 'x');
        if (file)
            file_puts(big.c_str(), file);
        _exit(file && file_close(file) != 0 ? 0 : 1);
    }
    int status = -1;
    waitpid(child, &status, 0);
    EXPECT_EQ(status, 0) << "the close tells of the failure";
    EXPECT_EQ(tmp.read("t"), "old");
    EXPECT_EQ(tmp.count(), 1);
}

TEST(FileWriting, AFileThatIsGivenUpLeavesTheOldOneOrNone)
{
    temporary_directory tmp;
    tmp.write("t", "old");
    for (const char* path : {"t", "other"}) {
        host_file* file = file_open(path, "w");
        ASSERT_TRUE(file);
        file_puts("half of it", file);
        file_give_up(file);
        file_give_up(file); // gone already
        EXPECT_NE(file_close(file), 0);
    }
    file_give_up(nullptr);
    EXPECT_EQ(tmp.read("t"), "old");
    EXPECT_EQ(tmp.count(), 1);
}

// As another user, because the superuser may do everything.
class unprivileged
{
public:
    unprivileged()
    {
        if (geteuid() == 0)
            changed_ = seteuid(65534) == 0;
    }
    ~unprivileged()
    {
        if (changed_ && seteuid(0) != 0)
            std::abort();
    }

private:
    bool changed_ = false;
};

TEST(FileWriting, MissingRightsAreNoticedAtOpen)
{
    temporary_directory tmp;
    const std::string path = tmp.write("t", "old");
    chmod(path.c_str(), 0444);
    chmod(tmp.path.c_str(), 0777);
    {
        const unprivileged user;
        EXPECT_EQ(file_open("t", "w"), nullptr) << "write-protected";
        EXPECT_EQ(file_open("t", "a"), nullptr);
        EXPECT_EQ(file_open("/new-file-at-the-root", "w"), nullptr) << "no right on the directory";
    }
    EXPECT_EQ(tmp.read("t"), "old");
    EXPECT_EQ(tmp.count(), 1);
}

TEST(FileWriting, FilesNobodyClosedAreKeptAtTheEnd)
{
    temporary_directory tmp;
    const pid_t child = fork();
    if (child == 0) {
        file_puts("kept", file_open("t", "w"));
        std::exit(0);
    }
    waitpid(child, nullptr, 0);
    EXPECT_EQ(tmp.read("t"), "kept");
    EXPECT_EQ(tmp.count(), 1);
}

} // namespace

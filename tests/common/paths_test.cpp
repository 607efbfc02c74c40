// Path texts and copies of files.
#include <gtest/gtest.h>

#include <string>

#include "common/paths.h"
#include "tests/fakes/fake_host.h"

namespace
{

struct split {
    const char* path;
    const char* directory;
    const char* name;
};

TEST(Paths, AreSplitBehindTheLastSeparator)
{
    const split cases[] = {{"C:\\JOBS\\SITE.DWG", "C:\\JOBS\\", "SITE.DWG"},
                           {"c:/jobs/site.dwg", "c:/jobs/", "site.dwg"},
                           {"c:/jobs\\site", "c:/jobs\\", "site"},
                           {"C:\\JOBS\\", "C:\\JOBS\\", ""},
                           {"SITE.DWG", "SITE.DWG", "SITE.DWG"}, // a bare name is its own directory
                           {"C:SITE", "C:SITE", "C:SITE"},
                           {"", "", ""}};
    for (const split& c : cases) {
        char out[64];
        path_directory(c.path, out);
        EXPECT_STREQ(out, c.directory) << c.path;
        path_file_name(c.path, out);
        EXPECT_STREQ(out, c.name) << c.path;
    }
}

TEST(Paths, SplitIsCutToTheBuffer)
{
    char out[4];
    path_file_name("C:\\LONGNAME", out);
    EXPECT_STREQ(out, "LON");
    path_directory("C:\\JOBS\\A", out);
    EXPECT_STREQ(out, "C:\\");
}

TEST(Paths, SeparatorsTurnInPlaceAndTheLengthIsAnswered)
{
    char text[] = "a/b\\c/";
    EXPECT_EQ(path_to_backslash(text), 6);
    EXPECT_STREQ(text, "a\\b\\c\\");
    EXPECT_EQ(path_to_slash(text), 6);
    EXPECT_STREQ(text, "a/b/c/");
    char empty[] = "";
    EXPECT_EQ(path_to_backslash(empty), 0);
}

struct compacted {
    const char* path;
    int width;
    const char* out;
};

TEST(CompactPath, CapitalsAndWidths)
{
    const compacted cases[] = {
        {"c:/JOBS/site.dwg", 100, "C:\\Jobs\\Site.dwg"},
        {"\\\\server\\share\\a", 100, "\\\\Server\\Share\\A"},
        {"//server/share", 100, "Server\\Share"}, // only backslashes are a head
        {"\\jobs\\site", 100, "Jobs\\Site"},
        {"c:\\\\jobs//site\\", 100, "C:\\Jobs\\Site"},
        {"", 100, ""},
        {"\\\\", 100, "\\\\"},
        {"c:\\jobs\\abcdefghijkl", 21, "C:\\Jobs\\Abcdefghijkl"}, // 20 characters, below the width
        {"c:\\jobs\\abcdefghijkl", 20, "...bs\\Abcdefghijkl"},    // "..." and all from index 5 on
        {"c:\\jobs\\abcdefghijkl", 10, "...hijkl"},
        {"c:\\jobs\\abcdefghijkl", 5, "..."},
        {"c:\\jobs\\abcdefghijkl", 0, "..."},
        {"c:\\jobs\\abcdefghijkl", -7, "..."},
    };
    for (const compacted& c : cases) {
        char out[128];
        compact_path(c.path, out, c.width);
        EXPECT_STREQ(out, c.out) << c.path << " " << c.width;
    }
}

TEST(CompactPath, ShortenedTextIsTwoBelowTheWidth)
{
    const std::string path = "C:\\A\\" + std::string(300, 'b');
    for (int width = 5; width <= 300; width += 59) {
        char out[512];
        compact_path(path.c_str(), out, width);
        EXPECT_EQ(std::string(out).size(), static_cast<std::size_t>(width - 2));
    }
}

TEST(CompactPath, IsCutToTheBuffer)
{
    char out[5];
    compact_path("c:\\jobs\\site.dwg", out, 100);
    EXPECT_STREQ(out, "C:\\J");
}

TEST(CopyFile, CopiesBytesOverSeveralBlocks)
{
    host_session session;
    const std::string from = session.directory() + "from.bin", to = session.directory() + "to.bin";
    for (const std::size_t size :
         {std::size_t{0}, std::size_t{4095}, std::size_t{4096}, std::size_t{4097}, std::size_t{20000}}) {
        std::string bytes;
        for (std::size_t i = 0; i < size; ++i)
            bytes += static_cast<char>(i * 7 % 256);
        write_text(from, bytes);
        EXPECT_EQ(copy_file(from.c_str(), to.c_str()), 1);
        EXPECT_EQ(read_text(to), bytes);
    }
}

TEST(CopyFile, FailsWhenEitherFileDoesNotOpen)
{
    host_session session;
    const std::string from = session.directory() + "from.bin", to = session.directory() + "to.bin";
    EXPECT_EQ(copy_file(from.c_str(), to.c_str()), 0);
    EXPECT_EQ(read_text(to), "<none>");
    write_text(from, "bytes");
    EXPECT_EQ(copy_file(from.c_str(), (session.directory() + "none/to.bin").c_str()), 0);
}

} // namespace

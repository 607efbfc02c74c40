// The floors of the architecture: a file includes only from its own folder and from lower ones.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace
{

const std::map<std::string, std::vector<std::string>> module_floors = {
    {"hostapi", {}},
    {"common", {"hostapi"}},
    {"polygon", {"hostapi"}},
    {"spatial", {"hostapi"}},
    {"grid", {"hostapi", "common", "polygon"}},
    {"tin", {"hostapi", "common", "polygon"}},
    {"drawing", {"hostapi", "common", "polygon"}},
    {"topology", {"hostapi", "common", "polygon", "spatial", "tin", "grid", "drawing"}},
    {"settings", {"hostapi", "common", "drawing"}},
    {"launch", {"hostapi", "common", "settings"}},
    {"interchange", {"hostapi", "common", "polygon", "drawing", "settings"}},
    {"tools", {"hostapi", "common", "polygon", "drawing", "settings"}},
    {"reports", {"hostapi", "common", "drawing", "settings"}},
    {"symbols", {"hostapi", "common", "drawing", "settings", "reports"}},
    {"shell",
     {"hostapi", "common", "polygon", "drawing", "settings", "launch", "interchange", "tools", "reports",
      "symbols"}},
};

const std::map<std::string, std::vector<std::string>> host_floors = {
    {"core", {}},
    {"files", {"core"}},
    {"database", {"core", "files"}},
    {"lisp", {"core", "files", "database"}},
    {"dialogs", {"core", "files", "database", "lisp"}},
    {"commandline", {"core", "files", "database", "lisp", "dialogs"}},
    {"plot", {"core", "files", "database"}},
    {"desktop", {"core", "files", "database", "lisp", "dialogs", "commandline", "plot"}},
};

const fs::path root = ZENT_SOURCE_DIR;

struct include {
    fs::path file;
    std::string folder, target;
};

// X of a line '#include "X"', else nothing.
std::string quoted_include(std::string line)
{
    std::erase_if(line, [](char c) { return c == ' ' || c == '\t'; });
    const std::string before = "#include\"";
    const std::size_t end = line.starts_with(before) ? line.find('"', before.size()) : line.npos;
    return end == line.npos ? "" : line.substr(before.size(), end - before.size());
}

// Whether the name stands in the line as a whole word with a parenthesis behind it.
bool calls(const std::string& line, const std::string& name)
{
    const auto in_a_word = [](char c) { return std::isalnum(static_cast<unsigned char>(c)) || c == '_'; };
    for (std::size_t at = 0; (at = line.find(name, at)) != line.npos; at += name.size()) {
        const std::size_t behind = line.find_first_not_of(" \t", at + name.size());
        if ((at == 0 || !in_a_word(line[at - 1])) && behind != line.npos && line[behind] == '(')
            return true;
    }
    return false;
}

std::vector<include> includes_below(const std::string& top)
{
    std::vector<include> found;
    for (const auto& entry : fs::recursive_directory_iterator(root / top)) {
        const std::string extension = entry.path().extension().string();
        if (extension != ".h" && extension != ".cpp")
            continue;
        const fs::path inner = fs::relative(entry.path(), root / top);
        std::ifstream stream(entry.path());
        for (std::string line; std::getline(stream, line);)
            if (const std::string target = quoted_include(line); !target.empty())
                found.push_back({inner, inner.begin()->string(), target});
    }
    return found;
}

bool allows(const std::vector<std::string>& lower, const std::string& folder)
{
    return std::find(lower.begin(), lower.end(), folder) != lower.end();
}

TEST(Layout, ModuleIncludesOnlyDownward)
{
    const auto all = includes_below("src");
    ASSERT_FALSE(all.empty());
    for (const include& i : all) {
        if (i.folder == i.file.string())
            continue; // src/module.cpp
        ASSERT_TRUE(module_floors.count(i.folder)) << "unknown folder src/" << i.folder;
        const std::string target = fs::path(i.target).begin()->string();
        EXPECT_TRUE(target == i.folder || allows(module_floors.at(i.folder), target))
            << "src/" << i.file.string() << " includes " << i.target;
    }
}

TEST(Layout, HostIncludesOnlyDownwardAndOnlyTheInterfaceOfTheModule)
{
    const auto all = includes_below("host");
    ASSERT_FALSE(all.empty());
    for (const include& i : all) {
        const fs::path target = i.target;
        if (*target.begin() == "hostapi")
            continue;
        ASSERT_EQ(*target.begin(), "host") << "host/" << i.file.string() << " includes " << i.target;
        ASSERT_TRUE(host_floors.count(i.folder)) << "unknown folder host/" << i.folder;
        const std::string folder = std::next(target.begin())->string();
        EXPECT_TRUE(folder == i.folder || allows(host_floors.at(i.folder), folder))
            << "host/" << i.file.string() << " includes " << i.target;
    }
}

TEST(Layout, LinesAreReadAsTheyAreWritten)
{
    EXPECT_EQ(quoted_include("#include \"a/b.h\" // why"), "a/b.h");
    EXPECT_EQ(quoted_include("  #  include\t\"a.h\""), "a.h");
    EXPECT_EQ(quoted_include("#include <a.h>"), "");
    EXPECT_EQ(quoted_include("// #include \"a.h\""), "");
    EXPECT_TRUE(calls("x = gets(y)", "gets"));
    EXPECT_TRUE(calls("targets(gets (y))", "gets"));
    EXPECT_FALSE(calls("fgets(y) + targets(1) + gets", "gets"));
}

// The module asks its host for everything of the outside, and bounds all that it copies.
TEST(Layout, ModuleNeitherCopiesUnboundedNorGoesPastTheHost)
{
    const char* const banned[] = {"strcpy", "strcat", "sprintf", "vsprintf",
                                  "gets",   "fopen",  "getenv",  "throw"};
    for (const auto& entry : fs::recursive_directory_iterator(root / "src")) {
        if (entry.path().extension() != ".cpp" && entry.path().extension() != ".h")
            continue;
        std::ifstream stream(entry.path());
        int number = 0;
        for (std::string line; std::getline(stream, line);) {
            ++number;
            line = line.substr(0, line.find("//"));
            for (const char* name : banned)
                EXPECT_FALSE(calls(line, name)) << entry.path() << ":" << number << ": " << line;
        }
    }
}

// No compiler stops at what a merge leaves here, and LISP takes such a line for variables.
TEST(Layout, ProductFilesAndPagesHoldNoMarksOfAMerge)
{
    int files = 0;
    for (const char* top : {"share", "docs"})
        for (const auto& entry : fs::recursive_directory_iterator(root / top)) {
            const std::string extension = entry.path().extension().string();
            if (extension != ".lsp" && extension != ".dcl" && extension != ".md")
                continue;
            ++files;
            std::ifstream stream(entry.path());
            int number = 0;
            for (std::string line; std::getline(stream, line);) {
                ++number;
                for (const char* mark : {"<<<<<<< ", ">>>>>>> "})
                    EXPECT_FALSE(line.starts_with(mark)) << entry.path() << ":" << number;
            }
        }
    EXPECT_GT(files, 10);
}

} // namespace

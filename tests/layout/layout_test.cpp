// The floors of the architecture: a file includes only from its own folder and from lower ones.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
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

std::vector<include> includes_below(const std::string& top)
{
    std::vector<include> found;
    const std::regex quoted("^\\s*#\\s*include\\s*\"([^\"]+)\"");
    for (const auto& entry : fs::recursive_directory_iterator(root / top)) {
        const std::string extension = entry.path().extension().string();
        if (extension != ".h" && extension != ".cpp")
            continue;
        const fs::path inner = fs::relative(entry.path(), root / top);
        std::ifstream stream(entry.path());
        std::smatch match;
        for (std::string line; std::getline(stream, line);)
            if (std::regex_search(line, match, quoted))
                found.push_back({inner, inner.begin()->string(), match[1]});
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

// The module asks its host for everything of the outside, and bounds all that it copies.
TEST(Layout, ModuleNeitherCopiesUnboundedNorGoesPastTheHost)
{
    const std::regex banned("\\b(strcpy|strcat|sprintf|vsprintf|gets|fopen|getenv|throw)\\s*\\(");
    for (const auto& entry : fs::recursive_directory_iterator(root / "src")) {
        if (entry.path().extension() != ".cpp" && entry.path().extension() != ".h")
            continue;
        std::ifstream stream(entry.path());
        int number = 0;
        for (std::string line; std::getline(stream, line);) {
            ++number;
            line = line.substr(0, line.find("//"));
            EXPECT_FALSE(std::regex_search(line, banned)) << entry.path() << ":" << number << ": " << line;
        }
    }
}

} // namespace

// What modules want of their host against what the host's program gives. Names with a version belong to the
// language's own libraries (memcpy@GLIBC_2.14); the rest a module finds in the host or not at all.
#include <gtest/gtest.h>

#include <cstdio>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace
{

using names = std::set<std::string>;

std::vector<std::string> lines_of(const std::string& command)
{
    std::vector<std::string> out;
    FILE* pipe = popen(command.c_str(), "r");
    if (!pipe)
        return out;
    char line[4096];
    while (std::fgets(line, sizeof line, pipe))
        out.emplace_back(line);
    EXPECT_EQ(pclose(pipe), 0) << command;
    return out;
}

// A line of nm is "[address] kind name". Undefined names are of kind U, or w when they may be missing.
names listed(const std::string& options, const std::string& file)
{
    names out;
    for (const std::string& line : lines_of(std::string(ZENT_NM) + " -D " + options + " '" + file + "'")) {
        std::istringstream words(line);
        std::string word, last, kind;
        while (words >> word) {
            kind = last;
            last = word;
        }
        if (kind != "w" && kind != "v")
            out.insert(last);
    }
    return out;
}

// What the module's own libraries give. Those of a checking build have no versions and take the place of
// many functions of the language's. A line of ldd is "name => path (address)".
names given_by_libraries_of(const std::string& module)
{
    names out;
    for (const std::string& line : lines_of("ldd '" + module + "'")) {
        const std::size_t path = line.find("=> /");
        if (path != line.npos)
            out.merge(listed("--defined-only", line.substr(path + 3, line.rfind(" (") - path - 3)));
    }
    return out;
}

names wanted_by(const std::string& module)
{
    names out;
    for (const std::string& name : listed("--undefined-only", module))
        if (name.find('@') == std::string::npos)
            out.insert(name);
    return out;
}

std::string missing(const std::string& module, const std::string& program)
{
    names given = listed("--defined-only", program);
    EXPECT_GT(given.size(), 100u) << program << " exports next to nothing";
    given.merge(given_by_libraries_of(module));
    std::string out;
    for (const std::string& name : wanted_by(module))
        if (!given.contains(name))
            out += name + "\n";
    return out;
}

TEST(ExportedNames, TheProgramGivesAllThatTheModuleWants)
{
    EXPECT_FALSE(wanted_by(ZENT_MODULE).empty());
    EXPECT_EQ(missing(ZENT_MODULE, ZENT_PROGRAM), "");
}

TEST(ExportedNames, TheProgramGivesAllThatGuestsWant)
{
    struct {
        const char *guest, *one_of_its_names;
    } const cases[] = {
        {"guest_entities", "acdbEntMake"},
        {"guest_points", "acedGetPoint"},
        {"guest_reactor", "_Z15acrxSysRegistryv"},
    };
    for (const auto& c : cases) {
        const std::string file = std::string(ZENT_GUESTS) + "/" + c.guest + ".so";
        EXPECT_TRUE(wanted_by(file).contains(c.one_of_its_names)) << c.guest;
        EXPECT_EQ(missing(file, ZENT_PROGRAM), "") << c.guest;
    }
}

TEST(ExportedNames, TheModuleGivesWhatALoaderLooksFor)
{
    const names given = listed("--defined-only", ZENT_MODULE);
    for (const char* name : {"acrxEntryPoint", "acrxGetApiVersion", "_SetacrxPtp", "DllMain"})
        EXPECT_TRUE(given.contains(name)) << name;
}

} // namespace

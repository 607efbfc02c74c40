// Runs whole sessions with the real program and compares all that came out (see README.md).
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace
{

std::vector<std::string> scenario_names()
{
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(ZENT_SCENARIOS))
        if (fs::exists(entry.path() / "run.sh"))
            names.push_back(entry.path().filename());
    std::sort(names.begin(), names.end());
    return names;
}

std::string contents(const fs::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

void write(const fs::path& file, const std::string& text)
{
    std::ofstream(file, std::ios::binary) << text;
}

std::string quoted(const fs::path& path)
{
    return "'" + path.string() + "'";
}

std::string difference(const fs::path& expected, const fs::path& got)
{
    const fs::path out = got.string() + ".diff";
    const int status =
        std::system(("diff -u " + quoted(expected) + " " + quoted(got) + " > " + quoted(out)).c_str());
    return status == 0 ? "" : contents(out);
}

class Scenario : public testing::TestWithParam<std::string>
{
protected:
    void SetUp() override
    {
        source = fs::path(ZENT_SCENARIOS) / GetParam();
        std::string pattern = (fs::temp_directory_path() / "zentrik-scenario-XXXXXX").string();
        ASSERT_NE(mkdtemp(pattern.data()), nullptr);
        place = pattern;
        fs::create_directories(place / "work");
        for (const auto& entry : fs::directory_iterator(source))
            if (entry.path().filename() != "expected")
                fs::copy(entry.path(), place / "work" / entry.path().filename(), fs::copy_options::recursive);
    }
    void TearDown() override
    {
        if (!place.empty())
            fs::remove_all(place);
    }

    // Standard output, standard error and the exit status land beside the working directory. A session may
    // not see this user's settings.
    void run()
    {
        const std::string command = "cd " + quoted(place / "work") + " && env HOME=" + quoted(place) +
                                    " XDG_CONFIG_HOME=" + quoted(place) + " LC_ALL=C TZ=UTC SAMPLES=" +
                                    quoted(fs::path(ZENT_SOURCE_DIR) / "share/samples") +
                                    " PATH=" + quoted(ZENT_PROGRAM_DIR) +
                                    ":\"$PATH\" timeout 120 sh run.sh > ../stdout 2> ../stderr < /dev/null";
        const int result = std::system(command.c_str());
        write(place / "status", std::to_string(WIFEXITED(result) ? WEXITSTATUS(result) : 255) + "\n");
    }

    void renew()
    {
        const fs::path expected = source / "expected";
        fs::create_directories(expected);
        for (const char* name : {"stdout", "stderr", "status"}) {
            const std::string text = contents(place / name);
            const bool plain = name == std::string("status") ? text == "0\n" : text.empty();
            fs::remove(expected / name);
            if (!plain || name == std::string("stdout"))
                write(expected / name, text);
        }
        for (const auto& entry : fs::directory_iterator(expected))
            if (fs::exists(place / "work" / entry.path().filename()))
                fs::copy(place / "work" / entry.path().filename(), entry.path(),
                         fs::copy_options::overwrite_existing);
    }

    fs::path source, place;
};

TEST_P(Scenario, RunsAsExpected)
{
    run();
    if (std::getenv("ZENT_RENEW")) {
        renew();
        return;
    }
    const fs::path expected = source / "expected";
    ASSERT_TRUE(fs::exists(expected / "stdout")) << "nothing is expected of this scenario";
    const std::string status = fs::exists(expected / "status") ? contents(expected / "status") : "0\n";
    EXPECT_EQ(contents(place / "status"), status);
    if (!fs::exists(expected / "stderr")) {
        EXPECT_EQ(contents(place / "stderr"), "");
    }
    for (const auto& entry : fs::directory_iterator(expected)) {
        const fs::path name = entry.path().filename();
        if (name == "status")
            continue;
        const fs::path got = name == "stdout" || name == "stderr" ? place / name : place / "work" / name;
        ASSERT_TRUE(fs::exists(got)) << name << " was not made";
        EXPECT_EQ(difference(entry.path(), got), "");
    }
}

// Names of tests have no dashes.
std::string test_name(const testing::TestParamInfo<std::string>& scenario)
{
    std::string name = scenario.param;
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(Sessions, Scenario, testing::ValuesIn(scenario_names()), test_name);
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(Scenario);

} // namespace

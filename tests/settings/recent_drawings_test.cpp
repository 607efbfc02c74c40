// The drawings that the running installation has opened lately.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "hostapi/ads.h"
#include "settings/recent_drawings.h"
#include "tests/fakes/fake_host.h"

namespace
{

constexpr std::uint32_t TEXT = 1, BINARY = 3;
const std::string HOST = "Software\\Autodesk\\AutoCAD\\R15.0";

struct machine : host_session {
    machine() { fake.started_as = "\"C:\\Program Files\\Acad\\ACAD.EXE\" /nologo"; }
    static void installed(const std::string& id, const std::string& where)
    {
        fake.registry[HOST + "\\" + id + "|AcadLocation"] = {TEXT, where};
    }
    static void used(const std::string& id, const std::string& name, const std::string& path)
    {
        fake.registry["HKCU\\" + HOST + "\\" + id + "\\Recent File List|" + name] = {TEXT, path};
    }
};

std::vector<std::string> listed()
{
    std::vector<std::string> paths;
    resbuf* chain = recent_drawings();
    for (const resbuf* at = chain; at; at = at->rbnext) {
        EXPECT_EQ(at->restype, 1000);
        paths.push_back(at->resval.rstring);
    }
    if (chain)
        acutRelRb(chain);
    EXPECT_EQ(fake.open_keys, 0);
    return paths;
}

using texts = std::vector<std::string>;

TEST(RecentDrawings, AreThoseOfTheRunningInstallation)
{
    machine session;
    session.installed("ACAD-1:409", "D:\\Other");
    session.installed("ACAD-2:409", "c:\\program files\\acad");
    session.used("ACAD-1:409", "File1", "C:\\a.dwg");
    session.used("ACAD-2:409", "File1", "C:\\b.dwg");
    session.used("ACAD-2:409", "File2", "C:\\Jobs\\c.dwg");
    EXPECT_EQ(listed(), (texts{"C:\\b.dwg", "C:\\Jobs\\c.dwg"}));
    EXPECT_TRUE(session.heap_is_as_before());
}

TEST(RecentDrawings, InstallationNeedOnlyBeAPartOfTheCommandLine)
{
    machine session;
    session.installed("A", "iles\\acad");
    session.used("A", "File1", "C:\\a.dwg");
    EXPECT_EQ(listed(), texts{"C:\\a.dwg"});
    fake.started_as = "C:\\FILES\\ACAD\\ACAD.COM";
    EXPECT_EQ(listed(), texts{});
    EXPECT_TRUE(session.heap_is_as_before());
}

TEST(RecentDrawings, FirstInstallationThatFitsCounts)
{
    machine session;
    session.installed("A", "C:\\Program Files\\Acad");
    session.installed("B", "C:\\Program Files\\Acad");
    session.used("A", "File1", "C:\\a.dwg");
    session.used("B", "File1", "C:\\b.dwg");
    EXPECT_EQ(listed(), texts{"C:\\a.dwg"});
}

TEST(RecentDrawings, AreNoneWithoutAnInstallationOrAList)
{
    {
        machine session;
        EXPECT_EQ(listed(), texts{}) << "no key of the host";
        fake.registry[HOST + "|Version"] = {TEXT, "15"};
        EXPECT_EQ(listed(), texts{}) << "no installation below it";
    }
    machine session;
    fake.registry[HOST + "\\A|Language"] = {TEXT, "English"};
    session.used("A", "File1", "C:\\a.dwg");
    EXPECT_EQ(listed(), texts{}) << "an installation that doesn't say where it lies";
    session.installed("A", "C:\\Elsewhere");
    EXPECT_EQ(listed(), texts{}) << "another one runs";
    fake.registry.erase("HKCU\\" + HOST + "\\A\\Recent File List|File1");
    session.installed("A", "C:\\Program Files\\Acad");
    EXPECT_EQ(listed(), texts{}) << "no list";
    EXPECT_TRUE(session.heap_is_as_before());
}

TEST(RecentDrawings, InstallationWithoutALocationIsPassedBy)
{
    machine session;
    fake.registry[HOST + "\\A|Language"] = {TEXT, "English"};
    session.installed("B", "C:\\Program Files\\Acad");
    session.used("B", "File1", "C:\\b.dwg");
    EXPECT_EQ(listed(), texts{"C:\\b.dwg"});
}

TEST(RecentDrawings, ValuesWithFileInTheirNameCount)
{
    machine session;
    session.installed("A", "C:\\Program Files\\Acad");
    session.used("A", "A Count", "4");
    session.used("A", "File1", "C:\\a.dwg");
    session.used("A", "LastFile", "C:\\b.dwg");
    session.used("A", "file9", "C:\\c.dwg");
    fake.registry["HKCU\\" + HOST + "\\A\\Recent File List|FileTimes"] = {BINARY, "\1\2"};
    EXPECT_EQ(listed(), (texts{"C:\\a.dwg", "C:\\b.dwg"}));
}

TEST(RecentDrawings, ValuesOfMoreThan256BytesArePassedBy)
{
    machine session;
    session.installed("A", "C:\\Program Files\\Acad");
    const std::string longest(255, 'a'), too_long(256, 'b');
    session.used("A", "File1", too_long);
    session.used("A", "File2", longest);
    session.used("A", "File3" + std::string(300, 'x'), "C:\\a.dwg");
    session.used("A", "File4", "C:\\d.dwg");
    EXPECT_EQ(listed(), (texts{longest, "C:\\d.dwg"}));
    EXPECT_TRUE(session.heap_is_as_before());
}

} // namespace

#include "host/files/recent_files.h"

#include <algorithm>
#include <vector>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "host/core/text.h"
#include "host/files/installation.h"
#include "host/files/registry.h"
#include "hostapi/processes.h"
#include "tests/host/files/temporary_directory.h"

namespace
{

constexpr const char* HEADING = "Windows Registry Editor Version 5.00\n";
constexpr const char* KEY =
    "[HKEY_CURRENT_USER\\Software\\Autodesk\\AutoCAD\\R15.0\\ACAD-1:409\\Recent File List]\n";

class RecentDrawings : public testing::Test
{
protected:
    void SetUp() override { host::run_settings().registry = tmp.path + "/test.reg"; }
    // Names and texts as programs enumerate them.
    static std::string listed()
    {
        std::string out;
        HKEY key = 0;
        if (RegOpenKeyExA(HKEY_CURRENT_USER, host::recent_drawings_key().substr(18).c_str(), 0, KEY_READ,
                          &key) != ERROR_SUCCESS)
            return "none";
        long code = ERROR_SUCCESS;
        for (DWORD i = 0; code == ERROR_SUCCESS; i++) {
            char name[30];
            unsigned char data[256];
            DWORD name_size = sizeof name, size = sizeof data;
            code = RegEnumValueA(key, i, name, &name_size, nullptr, data, &size);
            if (code == ERROR_SUCCESS)
                out += std::string(name) + "=" + reinterpret_cast<const char*>(data) + "\n";
        }
        EXPECT_EQ(code, ERROR_NO_MORE_ITEMS);
        RegCloseKey(key);
        return out;
    }
    temporary_directory tmp;
};

TEST_F(RecentDrawings, StandNewestFirstAndOnce)
{
    EXPECT_EQ(listed(), "none");
    host::note_recent_drawing("C:\\JOB\\A.DWG");
    host::note_recent_drawing("C:\\JOB\\B.DWG");
    host::note_recent_drawing("C:\\JOB\\C.DWG");
    EXPECT_EQ(listed(), "File1=C:\\JOB\\C.DWG\nFile2=C:\\JOB\\B.DWG\nFile3=C:\\JOB\\A.DWG\n");
    host::note_recent_drawing("c:/job/b.dwg");
    EXPECT_EQ(listed(), "File1=c:\\job\\b.dwg\nFile2=C:\\JOB\\C.DWG\nFile3=C:\\JOB\\A.DWG\n");
    EXPECT_EQ(tmp.read("test.reg"), HEADING + std::string("\n") + KEY +
                                        "\"File1\"=\"c:\\\\job\\\\b.dwg\"\n"
                                        "\"File2\"=\"C:\\\\JOB\\\\C.DWG\"\n"
                                        "\"File3\"=\"C:\\\\JOB\\\\A.DWG\"\n");
    const std::string before = tmp.read("test.reg");
    host::note_recent_drawing("");
    EXPECT_EQ(tmp.read("test.reg"), before);
}

TEST_F(RecentDrawings, AreNineAtMost)
{
    for (int i = 1; i <= 12; i++)
        host::note_recent_drawing("C:\\" + std::to_string(i) + ".DWG");
    std::string expected;
    for (int i = 1; i <= 9; i++)
        expected += "File" + std::to_string(i) + "=C:\\" + std::to_string(13 - i) + ".DWG\n";
    EXPECT_EQ(listed(), expected);
}

TEST_F(RecentDrawings, LongerListIsCutToNine)
{
    std::string text = HEADING + std::string(KEY), expected = "File1=C:\\12.DWG\n";
    for (int i = 1; i <= 12; i++)
        text += "\"File" + std::to_string(i) + "\"=\"C:\\\\" + std::to_string(i) + ".DWG\"\n";
    tmp.write("test.reg", text);
    host::note_recent_drawing("C:\\12.DWG");
    for (int i = 2; i <= 9; i++)
        expected += "File" + std::to_string(i) + "=C:\\" + std::to_string(i - 1) + ".DWG\n";
    EXPECT_EQ(listed(), expected);
}

TEST_F(RecentDrawings, AreNamedAsProgramsExpectIt)
{
    tmp.write("only.dxf", "");
    tmp.write("both.dxf", "");
    tmp.write("both.dwg", "");
    const std::string here = "Z:" + [path = tmp.path]() mutable {
        for (char& c : path)
            c = c == '/' ? '\\' : c;
        return path;
    }();
    struct {
        std::string named, listed;
    } const cases[] = {
        {"C:\\JOB\\SITE.DWG", "C:\\JOB\\SITE.DWG"},
        {"d:/job/./x/../site.dwg", "d:\\job\\site.dwg"},
        {"\\\\server\\share\\a.dwg", "\\\\server\\share\\a.dwg"},
        {tmp.path + "/new.dwg", here + "\\new.dwg"},
        {"new.dwg", here + "\\new.dwg"},
        {"sub\\H\xF6he.dwg", here + "\\sub\\H\xF6he.dwg"},
        {"\\U+4E2D.dwg", here + "\\\\U+4E2D.dwg"},
        {"only.dxf", here + "\\only.dwg"},
        {"both.dxf", here + "\\both.dxf"},
        {"both.dwg", here + "\\both.dwg"},
    };
    for (const auto& one : cases) {
        host::note_recent_drawing(one.named);
        EXPECT_EQ(listed().substr(0, listed().find('\n')), "File1=" + one.listed) << one.named;
    }
    host::run_settings().drives['Z'] = "/elsewhere";
    host::note_recent_drawing("/a.dwg");
    EXPECT_EQ(listed().substr(0, 15), "File1=Y:\\a.dwg\n");
}

TEST_F(RecentDrawings, LeaveTheRestOfTheFileAsItStands)
{
    const std::string text = std::string(
        "Windows Registry Editor Version 5.00\r\n\r\n; my notes\r\n[HKCU\\software\\AUTODESK\\AutoCAD\\R15.0"
        "\\ACAD-1:409\\Recent File List]\r\n; here too\r\n\"Other\"=dword:1\r\n\"file1\"=\"C:\\\\OLD.DWG\"\r\n"
        "damaged\r\n\r\n[HKLM\\K]\r\n\"raw\"=hex:01,\\\r\n  02\r\n\"last\"=\"1\"");
    tmp.write("test.reg", text);
    testing::internal::CaptureStderr();
    host::note_recent_drawing("C:\\NEW.DWG");
    EXPECT_EQ(
        tmp.read("test.reg"),
        "Windows Registry Editor Version 5.00\r\n\r\n; my notes\r\n[HKCU\\software\\AUTODESK\\AutoCAD\\R15.0"
        "\\ACAD-1:409\\Recent File List]\r\n; here too\r\n\"Other\"=dword:1\r\n\"File1\"=\"C:\\\\NEW.DWG\"\r\n"
        "\"File2\"=\"C:\\\\OLD.DWG\"\r\n"
        "damaged\r\n\r\n[HKLM\\K]\r\n\"raw\"=hex:01,\\\r\n  02\r\n\"last\"=\"1\"");
    testing::internal::GetCapturedStderr();
}

TEST_F(RecentDrawings, ComeBehindALineThatTakesTheirKeyAway)
{
    tmp.write("test.reg", HEADING + std::string(KEY) + "\"File1\"=\"C:\\\\GONE.DWG\"\n[-HKCU\\Software]");
    host::note_recent_drawing("C:\\NEW.DWG");
    EXPECT_EQ(listed(), "File1=C:\\NEW.DWG\n");
    host::note_recent_drawing("C:\\NEWER.DWG");
    EXPECT_EQ(listed(), "File1=C:\\NEWER.DWG\nFile2=C:\\NEW.DWG\n");
}

TEST_F(RecentDrawings, OfAFileInAnyCodingAreKept)
{
    std::string wide = "\xFF\xFE";
    for (const char16_t unit : std::u16string(u"Windows Registry Editor Version 5.00\r\n[HKCU\\H\u00F6he]\r\n"))
        wide += {static_cast<char>(unit & 0xFF), static_cast<char>(unit >> 8)};
    for (const std::string& text : {wide, std::string("REGEDIT4\n[HKCU\\H\xF6he]\n")}) {
        tmp.write("test.reg", text);
        host::note_recent_drawing("C:\\H\xF6he.dwg");
        host::note_recent_drawing("C:\\B.dwg");
        EXPECT_EQ(listed(), "File1=C:\\B.dwg\nFile2=C:\\H\xF6he.dwg\n");
        HKEY key = 0;
        EXPECT_EQ(RegOpenKeyExA(HKEY_CURRENT_USER, "H\xF6he", 0, KEY_READ, &key), ERROR_SUCCESS);
        RegCloseKey(key);
    }
}

TEST_F(RecentDrawings, AreOfTheInstallationThatIsPresented)
{
    tmp.write("test.reg", HEADING + std::string("[HKLM\\Software\\Autodesk\\AutoCAD\\R15.0\\ACAD-7:409]\n"
                                                "\"AcadLocation\"=\"C:\\\\ACAD2000\"\n"));
    host::note_recent_drawing("C:\\A.DWG");
    EXPECT_EQ(host::recent_drawings_key(),
              "HKEY_CURRENT_USER\\Software\\Autodesk\\AutoCAD\\R15.0\\ACAD-7:409\\Recent File List");
    EXPECT_EQ(listed(), "File1=C:\\A.DWG\n");
    EXPECT_STREQ(GetCommandLineA(), "\"C:\\ACAD2000\\acad.exe\"");
}

TEST_F(RecentDrawings, ThatCannotBeWrittenAreToldOnceAndNothingIsLost)
{
    tmp.write("test.reg", HEADING + std::string(KEY) + "\"File1\"=\"C:\\\\A.DWG\"\n");
    const std::string before = tmp.read("test.reg");
    chmod((tmp.path + "/test.reg").c_str(), 0444);
    testing::internal::CaptureStderr();
    if (geteuid() == 0) { // whom a mode doesn't stop
        host::run_settings().registry = tmp.path + "/test.reg/none.reg";
    }
    host::note_recent_drawing("C:\\B.DWG");
    host::note_recent_drawing("C:\\C.DWG");
    const std::string told = testing::internal::GetCapturedStderr();
    EXPECT_TRUE(
        told.starts_with("zentrik: the list of recent drawings can't be written: " + tmp.path + "/test.reg"))
        << told;
    EXPECT_EQ(std::count(told.begin(), told.end(), '\n'), 1);
    EXPECT_EQ(tmp.read("test.reg"), before);
}

// Each of several hosts writes under its own key while the others do.
TEST_F(RecentDrawings, OfHostsThatWriteAtOnceAreAllKept)
{
    std::vector<pid_t> hosts;
    for (int i = 0; i < 4; i++) {
        const pid_t child = fork();
        if (child == 0) {
            bool good = true;
            std::string error;
            for (int n = 0; n < 10; n++)
                good = host::set_registry_value("HKEY_CURRENT_USER\\Hosts\\H" + std::to_string(i),
                                                {"v" + std::to_string(n), REG_SZ, "x"}, &error) &&
                       good;
            _exit(good ? 0 : 1);
        }
        hosts.push_back(child);
    }
    for (const pid_t child : hosts) {
        int status = 1;
        waitpid(child, &status, 0);
        EXPECT_EQ(status, 0);
    }
    const auto root = host::run_registry();
    for (int i = 0; i < 4; i++) {
        const auto key = root->find("HKEY_CURRENT_USER\\Hosts\\H" + std::to_string(i));
        ASSERT_TRUE(key);
        EXPECT_EQ(key->values.size(), 10u);
    }
}

TEST_F(RecentDrawings, AreLookedForUnderTheInstallationOfTheHost)
{
    HKEY product = 0, key = 0;
    ASSERT_EQ(RegOpenKeyExA(HKEY_LOCAL_MACHINE, "Software\\Autodesk\\AutoCAD\\R15.0", 0, KEY_READ, &product),
              ERROR_SUCCESS);
    char name[30];
    DWORD size = sizeof name;
    ASSERT_EQ(RegEnumKeyExA(product, 0, name, &size), ERROR_SUCCESS);
    EXPECT_STREQ(name, "ACAD-1:409");
    size = sizeof name;
    EXPECT_EQ(RegEnumKeyExA(product, 1, name, &size), ERROR_NO_MORE_ITEMS);
    ASSERT_EQ(RegOpenKeyExA(product, "ACAD-1:409", 0, KEY_READ, &key), ERROR_SUCCESS);
    unsigned char location[300];
    size = sizeof location;
    DWORD type = 0;
    ASSERT_EQ(RegQueryValueExA(key, "AcadLocation", nullptr, &type, location, &size), ERROR_SUCCESS);
    EXPECT_EQ(type, REG_SZ);
    const std::string program = host::upper(std::string(reinterpret_cast<char*>(location)) + "\\acad.exe");
    EXPECT_TRUE(program.starts_with("Z:\\")) << program;
    EXPECT_NE(host::upper(GetCommandLineA()).find(program), std::string::npos) << GetCommandLineA();
    RegCloseKey(key);
    RegCloseKey(product);
}

} // namespace

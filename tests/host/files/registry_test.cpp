#include "host/files/registry.h"

#include <array>
#include <cstring>

#include <gtest/gtest.h>

#include "host/core/trace.h"
#include "tests/host/files/temporary_directory.h"

namespace
{

constexpr const char* HEADING = "Windows Registry Editor Version 5.00\r\n\r\n";

class Registry : public testing::Test
{
protected:
    void keep(const std::string& text)
    {
        host::run_settings().registry = tmp.write("test.reg", HEADING + text);
    }
    static HKEY opened(HKEY parent, const char* path)
    {
        HKEY key = 0;
        EXPECT_EQ(RegOpenKeyExA(parent, path, 0, KEY_READ, &key), ERROR_SUCCESS) << path;
        return key;
    }
    // Type and bytes of a value, "missing" when there is none.
    static std::string queried(HKEY key, const char* name)
    {
        std::array<unsigned char, 200> data{};
        DWORD size = data.size(), type = 99;
        if (RegQueryValueExA(key, name, nullptr, &type, data.data(), &size) != ERROR_SUCCESS)
            return "missing";
        return std::to_string(type) + ":" + std::string(reinterpret_cast<const char*>(data.data()), size);
    }
    temporary_directory tmp;
};

std::string bytes(const char* text, std::size_t size)
{
    return std::string(text, size);
}

TEST_F(Registry, ValuesOfEveryKind)
{
    keep("; a comment\r\n"
         "[HKEY_LOCAL_MACHINE\\Software\\Zentrik]\r\n"
         "@=\"default\"\r\n"
         "\"PATH\"=\"C:\\\\Zentrik\\\\ \\\"new\\\"\"\r\n"
         "\"number\"=dword:0000012c\r\n"
         "\"raw\"=hex:01,02,\\\r\n"
         "  0a,FF\r\n"
         "\"expand\"=hex(2):25,00,41,00,25,00,00,00\r\n"
         "\"multi\"=hex(7):61,00,00,00,62,00,00,00,00,00\r\n"
         "\"none\"=hex(0):\r\n"
         "\"long\"=hex(b):01,00,00,00,00,00,00,00\r\n"
         "\"spaced\" = \"x\"\r\n");
    const HKEY key = opened(HKEY_LOCAL_MACHINE, "SOFTWARE\\zentrik");
    struct {
        const char* name;
        std::string found;
    } const cases[] = {
        {"", bytes("1:default\0", 10)},
        {nullptr, bytes("1:default\0", 10)},
        {"path", bytes("1:C:\\Zentrik\\ \"new\"\0", 20)},
        {"NUMBER", bytes("4:\x2c\x01\0\0", 6)},
        {"raw", "3:\x01\x02\x0a\xFF"},
        {"expand", bytes("2:%A%\0", 6)},
        {"multi", bytes("7:a\0b\0\0", 7)},
        {"none", "0:"},
        {"long", bytes("11:\x01\0\0\0\0\0\0\0", 11)},
        {"spaced", bytes("1:x\0", 4)},
        {"other", "missing"},
    };
    for (const auto& one : cases)
        EXPECT_EQ(queried(key, one.name), one.found) << (one.name ? one.name : "null");
}

TEST_F(Registry, KeysAreOpenedBelowKeysWithoutRegardToCase)
{
    keep("[HKLM\\A\\B]\n\"x\"=\"1\"\n[hkey_current_user\\A]\n\"x\"=\"2\"\n");
    const HKEY a = opened(HKEY_LOCAL_MACHINE, "a");
    EXPECT_EQ(queried(opened(a, "b"), "x"), bytes("1:1\0", 4));
    EXPECT_EQ(queried(opened(HKEY_CURRENT_USER, "A\\"), "x"), bytes("1:2\0", 4));
    EXPECT_EQ(queried(opened(opened(a, "B"), ""), "x"), bytes("1:1\0", 4));
    HKEY key = 7;
    EXPECT_EQ(RegOpenKeyExA(a, "C", 0, KEY_READ, &key), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(key, 0u);
    EXPECT_EQ(RegCloseKey(a), ERROR_SUCCESS);
    EXPECT_NE(RegCloseKey(a), ERROR_SUCCESS);
    EXPECT_NE(RegOpenKeyExA(a, "B", 0, KEY_READ, &key), ERROR_SUCCESS) << "the key was closed";
    EXPECT_EQ(queried(a, "x"), "missing");
    EXPECT_EQ(RegCloseKey(HKEY_LOCAL_MACHINE), ERROR_SUCCESS);
}

TEST_F(Registry, ClassesAreThoseOfMachineAndUser)
{
    keep("[HKEY_LOCAL_MACHINE\\Software\\Classes\\CLSID\\{1}]\n@=\"machine\"\n"
         "[HKEY_CLASSES_ROOT\\.dwg]\n@=\"drawing\"\n");
    EXPECT_EQ(queried(opened(HKEY_CLASSES_ROOT, "clsid\\{1}"), ""), bytes("1:machine\0", 10));
    EXPECT_EQ(queried(opened(HKEY_CLASSES_ROOT, ".DWG"), ""), bytes("1:drawing\0", 10));
}

TEST_F(Registry, RoomForDataIsTold)
{
    keep("[HKLM\\K]\n\"v\"=\"four\"\n");
    const HKEY key = opened(HKEY_LOCAL_MACHINE, "K");
    DWORD size = 0, type = 0;
    EXPECT_EQ(RegQueryValueExA(key, "v", nullptr, &type, nullptr, &size), ERROR_SUCCESS);
    EXPECT_EQ(size, 5u);
    EXPECT_EQ(type, REG_SZ);
    unsigned char data[5] = {'?', '?', '?', '?', '?'};
    size = 4;
    EXPECT_EQ(RegQueryValueExA(key, "v", nullptr, nullptr, data, &size), ERROR_MORE_DATA);
    EXPECT_EQ(size, 5u);
    EXPECT_EQ(data[0], '?') << "nothing is cut";
    EXPECT_EQ(RegQueryValueExA(key, "v", nullptr, nullptr, data, &size), ERROR_SUCCESS);
    EXPECT_EQ(std::memcmp(data, "four", 5), 0);
    EXPECT_EQ(RegQueryValueExA(key, "v", nullptr, nullptr, nullptr, nullptr), ERROR_SUCCESS);
    EXPECT_NE(RegQueryValueExA(key, "v", nullptr, nullptr, data, nullptr), ERROR_SUCCESS);
}

TEST_F(Registry, EnumerationKeepsTheFilesOrder)
{
    keep("[HKLM\\K\\Zeta]\n[HKLM\\K\\Alpha]\n[HKLM\\K]\n\"File2\"=\"b\"\n\"File1\"=dword:5\n");
    const HKEY key = opened(HKEY_LOCAL_MACHINE, "K");
    char name[6];
    DWORD size = sizeof name;
    EXPECT_EQ(RegEnumKeyExA(key, 0, name, &size), ERROR_SUCCESS);
    EXPECT_STREQ(name, "Zeta");
    EXPECT_EQ(size, 4u);
    size = 5;
    EXPECT_EQ(RegEnumKeyExA(key, 1, name, &size), ERROR_MORE_DATA);
    size = 6;
    EXPECT_EQ(RegEnumKeyExA(key, 1, name, &size), ERROR_SUCCESS);
    EXPECT_STREQ(name, "Alpha");
    EXPECT_EQ(RegEnumKeyExA(key, 2, name, &size), ERROR_NO_MORE_ITEMS);

    unsigned char data[4];
    DWORD type = 0, data_size = sizeof data;
    size = sizeof name;
    EXPECT_EQ(RegEnumValueA(key, 0, name, &size, &type, data, &data_size), ERROR_SUCCESS);
    EXPECT_STREQ(name, "File2");
    EXPECT_EQ(type, REG_SZ);
    EXPECT_EQ(data_size, 2u);
    size = 5;
    EXPECT_EQ(RegEnumValueA(key, 1, name, &size, nullptr, nullptr, nullptr), ERROR_MORE_DATA);
    size = 6;
    data_size = 3;
    EXPECT_EQ(RegEnumValueA(key, 1, name, &size, &type, data, &data_size), ERROR_MORE_DATA);
    EXPECT_EQ(data_size, 4u);
    size = 6;
    EXPECT_EQ(RegEnumValueA(key, 2, name, &size, &type, data, &data_size), ERROR_NO_MORE_ITEMS);
    EXPECT_NE(RegEnumValueA(12345, 0, name, &size, &type, data, &data_size), ERROR_SUCCESS);
}

TEST_F(Registry, DamagedLinesAreToldByFileAndLineAndPassedOver)
{
    struct {
        const char *text, *complaint;
    } const cases[] = {
        {"[HKLM\\K]\n\"a\"=\"open\n\"ok\"=\"1\"\n", "damaged.reg:3: a text has no quote at its end"},
        {"[HKLM\\K]\n\"a\"=\"x\" y\n\"ok\"=\"1\"\n", "damaged.reg:3: there is more behind the text"},
        {"[HKLM\\K]\n\"a\"=\"x\\\n\"ok\"=\"1\"\n", "damaged.reg:3: a text has no quote at its end"},
        {"[HKLM\\K]\n\"a\"=\"C:\\new\\two\"\n\"ok\"=\"1\"\n",
         "damaged.reg:3: a backslash in a text is to be written twice"},
        {"[HKLM\\K]\n\"C:\\a\"=\"x\"\n\"ok\"=\"1\"\n",
         "damaged.reg:3: a backslash in a text is to be written twice"},
        {"[HKLM\\K]\n\"a=5\n\"ok\"=\"1\"\n", "damaged.reg:3: a value's name isn't in quotes"},
        {"[HKLM\\K]\n\n\"a\" \"x\"\n\"ok\"=\"1\"\n", "damaged.reg:4: a value has no '='"},
        {"[HKLM\\K]\na=\"x\"\n\"ok\"=\"1\"\n", "damaged.reg:3: a value's name isn't in quotes"},
        {"[HKLM\\K]\n\"a\"=dword:12345678a\n\"ok\"=\"1\"\n",
         "damaged.reg:3: '12345678a' is no hexadecimal number of up to eight digits"},
        {"[HKLM\\K]\n\"a\"=dword:xyz\n\"ok\"=\"1\"\n",
         "damaged.reg:3: 'xyz' is no hexadecimal number of up to eight digits"},
        {"[HKLM\\K]\n\"a\"=hex:00,\\\n1g\n\"ok\"=\"1\"\n", "damaged.reg:3: '1g' is no hexadecimal byte"},
        {"[HKLM\\K]\n\"a\"=number:5\n\"ok\"=\"1\"\n", "damaged.reg:3: 'number' is no kind of value"},
        {"[HKLM\\K]\n\"a\"=\n\"ok\"=\"1\"\n", "damaged.reg:3: '' is no kind of value"},
        {"[HKLM\\L\n\"x\"=\"1\"\n[HKLM\\K]\n\"ok\"=\"1\"\n", "damaged.reg:2: a key has no ']'"},
        {"[HKEY_ELSE\\L]\n\"x\"=\"1\"\n[HKLM\\K]\n\"ok\"=\"1\"\n",
         "damaged.reg:2: 'HKEY_ELSE' is no root of a registry"},
        {"\"x\"=\"1\"\n[HKLM\\K]\n\"ok\"=\"1\"\n", "damaged.reg:2: a value stands outside of any key"},
    };
    for (const auto& one : cases) {
        testing::internal::CaptureStderr();
        const auto root = host::parse_registry("Windows Registry Editor Version 5.00\n" + std::string(one.text),
                                               "damaged.reg");
        EXPECT_EQ(testing::internal::GetCapturedStderr(), "zentrik: " + std::string(one.complaint) + "\n");
        const auto key = root->find("HKEY_LOCAL_MACHINE\\K");
        ASSERT_TRUE(key) << one.text;
        EXPECT_TRUE(key->value("ok")) << one.text;
        EXPECT_FALSE(key->value("a")) << one.text;
    }
}

TEST_F(Registry, AFileWithoutItsHeadingIsToldAndRead)
{
    testing::internal::CaptureStderr();
    const auto root = host::parse_registry("[HKLM\\K]\n", "x.reg");
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "zentrik: x.reg:1: the file doesn't begin with 'Windows Registry Editor Version 5.00'\n");
    EXPECT_TRUE(root->find("HKEY_LOCAL_MACHINE\\K"));
}

TEST_F(Registry, KeysThatAreTooDeepAreRefused)
{
    std::string path = "HKLM";
    for (int i = 0; i < 100000; i++)
        path += "\\k";
    testing::internal::CaptureStderr();
    host::parse_registry(HEADING + ("[" + path + "]\n"), "x.reg");
    EXPECT_NE(testing::internal::GetCapturedStderr().find("deeper than 512 levels"), std::string::npos);
}

TEST_F(Registry, MinusTakesAway)
{
    keep("[HKLM\\K]\n\"a\"=\"1\"\n\"b\"=\"2\"\n\"A\"=-\n\"gone\"=-\n[HKLM\\K\\L]\n[HKLM\\K\\M]\n[-HKLM\\K\\l]\n"
         "\"ignored\"=\"1\"\n[-HKLM\\none\\x]\n");
    const HKEY key = opened(HKEY_LOCAL_MACHINE, "K");
    EXPECT_EQ(queried(key, "a"), "missing");
    EXPECT_EQ(queried(key, "b"), bytes("1:2\0", 4));
    char name[6];
    DWORD size = sizeof name;
    EXPECT_EQ(RegEnumKeyExA(key, 0, name, &size), ERROR_SUCCESS);
    EXPECT_STREQ(name, "M");
}

TEST_F(Registry, AnyCodingOfTheFileIsRead)
{
    const std::string plain = "Windows Registry Editor Version 5.00\n[HKLM\\H\xC3\xB6he]\n@=\"\xE2\x82\xAC\"\n";
    std::string little = "\xFF\xFE", big = "\xFE\xFF";
    for (const char16_t unit : std::u16string(u"Windows Registry Editor Version 5.00\r\n[HKLM\\H\u00F6he]\r\n"
                                              u"@=\"\u20AC\"\r\n")) {
        little += {static_cast<char>(unit & 0xFF), static_cast<char>(unit >> 8)};
        big += {static_cast<char>(unit >> 8), static_cast<char>(unit & 0xFF)};
    }
    const std::string narrow = "REGEDIT4\n[HKLM\\H\xF6he]\n@=\"\x80\"\n\"e\"=hex(2):80,00\n";
    for (const std::string& text : {plain, "\xEF\xBB\xBF" + plain, little, big, narrow}) {
        host::run_settings().registry = tmp.write("coded.reg", text);
        const HKEY key = opened(HKEY_LOCAL_MACHINE, "h\xD6he");
        EXPECT_EQ(queried(key, ""), bytes("1:\x80\0", 4)) << text;
        if (text == narrow) {
            EXPECT_EQ(queried(key, "e"), bytes("2:\x80\0", 4));
        }
    }
}

TEST_F(Registry, AMissingFileLeavesWhatTheHostHas)
{
    host::run_settings().registry = tmp.path + "/none.reg";
    HKEY key = 0;
    testing::internal::CaptureStderr();
    EXPECT_EQ(RegOpenKeyExA(HKEY_LOCAL_MACHINE, "Software\\Example", 0, KEY_READ, &key), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST_F(Registry, WithoutAFileOfTheRunItIsTheUsersOwn)
{
    host::run_settings().registry.clear();
    setenv("XDG_CONFIG_HOME", tmp.path.c_str(), 1);
    EXPECT_EQ(host::registry_file(), tmp.path + "/zentrik/registry.reg");
    unsetenv("XDG_CONFIG_HOME");
    setenv("HOME", tmp.path.c_str(), 1);
    EXPECT_EQ(host::registry_file(), tmp.path + "/.config/zentrik/registry.reg");
}

TEST_F(Registry, WhatIsSetIsSavedAndReadBack)
{
    host::run_settings().registry = tmp.path + "/deep/own.reg";
    std::string error;
    EXPECT_TRUE(
        host::set_registry_value("HKEY_CURRENT_USER\\Software\\K", {"text", REG_SZ, "a\"\\\xC3\xB6"}, &error));
    EXPECT_TRUE(host::set_registry_value("HKEY_CURRENT_USER\\Software\\K",
                                         {"", REG_DWORD, bytes("\x05\0\0\0", 4)}, &error));
    EXPECT_TRUE(host::set_registry_value("HKEY_CURRENT_USER\\Software\\K", {"TEXT", REG_SZ, "new"}, &error));
    EXPECT_TRUE(host::set_registry_value("HKEY_CURRENT_USER\\Software\\K",
                                         {"e", REG_EXPAND_SZ, "\xF0\x9F\x98\x80"}, &error));
    EXPECT_TRUE(
        host::set_registry_value("HKEY_CURRENT_USER\\Software\\K", {"b", REG_BINARY, "\x01\xFF"}, &error));
    EXPECT_TRUE(host::set_registry_value("HKEY_CURRENT_USER\\Software\\K",
                                         {"m", host::REG_MULTI_SZ, bytes("a\0b\0", 4)}, &error));
    EXPECT_EQ(tmp.read("deep/own.reg"), "Windows Registry Editor Version 5.00\n"
                                        "\n[HKEY_CURRENT_USER\\Software\\K]\n"
                                        "\"TEXT\"=\"new\"\n"
                                        "@=dword:00000005\n"
                                        "\"e\"=hex(2):3d,d8,00,de,00,00\n"
                                        "\"b\"=hex:01,ff\n"
                                        "\"m\"=hex(7):61,00,00,00,62,00,00,00,00,00\n");
    const auto again = host::parse_registry(tmp.read("deep/own.reg"), "own.reg");
    EXPECT_EQ(host::registry_text(*again), "Windows Registry Editor Version 5.00\n"
                                           "\n[HKEY_CURRENT_USER]\n"
                                           "\n[HKEY_CURRENT_USER\\Software]\n" +
                                               tmp.read("deep/own.reg").substr(37));
    EXPECT_EQ(queried(opened(HKEY_CURRENT_USER, "Software\\K"), "text"), bytes("1:new\0", 6));
}

TEST_F(Registry, AFileThatCannotBeWrittenIsTold)
{
    host::run_settings().registry = tmp.path;
    std::string error;
    EXPECT_FALSE(host::set_registry_value("HKEY_CURRENT_USER\\K", {"a", REG_SZ, "b"}, &error));
    EXPECT_EQ(error, tmp.path + ": Is a directory");
    host::run_settings().registry = tmp.write("file", "") + "/x.reg";
    EXPECT_FALSE(host::set_registry_value("HKEY_CURRENT_USER\\K", {"a", REG_SZ, "b"}, &error));
    EXPECT_EQ(error, tmp.path + "/file/x.reg: Not a directory");
}

TEST_F(Registry, WhatIsNoNameIsNotWritten)
{
    keep("[HKLM\\K]\n");
    const std::string before = tmp.read("test.reg");
    std::string error;
    struct {
        const char *key, *name, *error;
    } const cases[] = {
        {"HKEY_ELSE\\K", "a", "'HKEY_ELSE' is no root of a registry"},
        {"HKEY_CURRENT_USER\\K\nL", "a", "this is no name of a key: HKEY_CURRENT_USER\\K\nL"},
        {"-HKEY_CURRENT_USER\\K", "a", "this is no name of a key: -HKEY_CURRENT_USER\\K"},
        {"HKEY_CURRENT_USER\\K", "a\nb", "a value's name has a line end"},
    };
    for (const auto& one : cases) {
        EXPECT_FALSE(host::set_registry_value(one.key, {one.name, REG_SZ, "x"}, &error)) << one.key;
        EXPECT_EQ(error, tmp.path + "/test.reg: " + one.error);
    }
    EXPECT_FALSE(host::set_registry_value("HKEY_CURRENT_USER", {"a", REG_SZ, "b"}, &error));
    EXPECT_EQ(error, "a registry value needs a key");
    EXPECT_EQ(tmp.read("test.reg"), before);
}

TEST_F(Registry, AChangedFileIsReadAgain)
{
    keep("[HKLM\\K]\n@=\"one\"\n");
    EXPECT_EQ(queried(opened(HKEY_LOCAL_MACHINE, "K"), ""), bytes("1:one\0", 6));
    keep("[HKLM\\K]\n@=\"second\"\n");
    EXPECT_EQ(queried(opened(HKEY_LOCAL_MACHINE, "K"), ""), bytes("1:second\0", 9));
}

TEST_F(Registry, ReadsAreTraced)
{
    keep("[HKLM\\K\\S]\n[HKLM\\K]\n\"v\"=\"C:\\\\X\"\n\"n\"=dword:7\n");
    ASSERT_TRUE(host::trace_to("trace.txt"));
    HKEY key = 0;
    RegOpenKeyExA(HKEY_LOCAL_MACHINE, "K", 0, KEY_READ, &key);
    queried(key, "v");
    queried(key, "n");
    queried(key, "none");
    char name[10];
    DWORD size = 10;
    RegEnumKeyExA(key, 0, name, &size);
    size = 10;
    RegEnumValueA(key, 0, name, &size, nullptr, nullptr, nullptr);
    host::trace_to("");
    const std::string k = std::to_string(key);
    EXPECT_EQ(tmp.read("trace.txt"), "RegOpenKeyExA HKEY_LOCAL_MACHINE \"K\" 0 131097 -> ERROR_SUCCESS\n"
                                     "RegQueryValueExA " +
                                         k +
                                         " \"v\" -> \"C:\\\\X\"\n"
                                         "RegQueryValueExA " +
                                         k +
                                         " \"n\" -> 7\n"
                                         "RegQueryValueExA " +
                                         k +
                                         " \"none\" -> ERROR_FILE_NOT_FOUND\n"
                                         "RegEnumKeyExA " +
                                         k +
                                         " 0 -> \"S\"\n"
                                         "RegEnumValueA " +
                                         k + " 0 -> \"v\" \"C:\\\\X\"\n");
}

} // namespace

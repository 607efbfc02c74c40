#include "host/dialogs/dcl_file.h"

#include <gtest/gtest.h>

#include "tests/host/files/temporary_directory.h"

namespace
{

using namespace host::dialogs;

std::unique_ptr<dcl_file> parsed(const std::string& text)
{
    dcl_error error;
    auto file = parse_dcl(text, "t.dcl", &error);
    EXPECT_TRUE(file) << error.text();
    return file;
}

// The tree on one line: "dialog(row(button=ok edit_box) text)".
std::string shape(const dcl_tile& tile)
{
    std::string out = kind_name(tile.kind);
    if (!tile.text("key").empty())
        out += "=" + tile.text("key");
    for (std::size_t i = 0; i < tile.children.size(); i++)
        out += (i == 0 ? "(" : " ") + shape(tile.children[i]);
    return out + (tile.children.empty() ? "" : ")");
}

TEST(Dcl, EveryTileOfTheLanguageIsKnown)
{
    for (const char* name : {"dialog",
                             "row",
                             "column",
                             "boxed_row",
                             "boxed_column",
                             "radio_row",
                             "radio_column",
                             "boxed_radio_row",
                             "boxed_radio_column",
                             "concatenation",
                             "paragraph",
                             "cluster",
                             "tile",
                             "button",
                             "edit_box",
                             "image",
                             "image_button",
                             "list_box",
                             "popup_list",
                             "radio_button",
                             "slider",
                             "spacer",
                             "spacer_0",
                             "spacer_1",
                             "text",
                             "text_part",
                             "toggle",
                             "ok_button",
                             "cancel_button",
                             "help_button",
                             "info_button",
                             "retirement_button",
                             "ok_only",
                             "ok_cancel",
                             "ok_cancel_err",
                             "ok_cancel_errtile",
                             "ok_cancel_help",
                             "ok_cancel_help_errtile",
                             "ok_cancel_help_info",
                             "ok_cancel_help_info_errtile",
                             "errtile",
                             "edit12_box",
                             "edit32_box",
                             "icon_image",
                             "default_dcl_settings",
                             "default_button"})
        EXPECT_TRUE(own_tile(name)) << name;
    EXPECT_FALSE(own_tile("no_tile"));
}

TEST(Dcl, TreesAreReadAsTheyStand)
{
    struct {
        const char *text, *shape;
    } const cases[] = {
        {"d : dialog { }", "dialog"},
        {"d:dialog{:row{:button{key=\"a\";}:edit_box{key=\"b\";}}}", "dialog(group(button=a edit_box=b))"},
        {"d : dialog { spacer; : spacer; ok_only; }", "dialog(spacer spacer group(button=accept))"},
        {"d : dialog { ok_cancel; }", "dialog(group(button=accept spacer button=cancel))"},
        {"d : dialog { ok_cancel_help_errtile; }",
         "dialog(group(group(button=accept spacer button=cancel spacer button=help) text=error))"},
        {"d : dialog { ; : text { } ; }", "dialog(text)"},
        {"d : dialog { named : toggle { key = \"t\"; } }", "dialog(toggle=t)"},
        {"d : dialog { } ;", "dialog"},
    };
    for (const auto& one : cases) {
        const auto file = parsed(one.text);
        ASSERT_TRUE(file) << one.text;
        EXPECT_EQ(shape(file->tiles.at("d")), one.shape) << one.text;
    }
}

TEST(Dcl, ValuesAreTheirText)
{
    const auto file = parsed(
        "d : dialog { a = \"x y\"; b = 12; c = -1.5; d = true; e = left; f = \"\"; g = \"5\";\n"
        "h = \"q\\\"q\\\\n\\n\\t\"; i = \"one\" \" two\"; j = .5; unknwon_atribute = centered; a = \"z\";"
        "k = \"C:\\JOBS\"; }");
    const dcl_tile& d = file->tiles.at("d");
    struct {
        const char *name, *value;
    } const cases[] = {
        {"a", "z"},
        {"b", "12"},
        {"c", "-1.5"},
        {"d", "true"},
        {"e", "left"},
        {"f", ""},
        {"g", "5"},
        {"h", "q\"q\\n\n\t"},
        {"i", "one two"},
        {"j", ".5"},
        {"unknwon_atribute", "centered"},
        {"k", "C:\\JOBS"},
    };
    for (const auto& one : cases)
        EXPECT_EQ(d.text(one.name), one.value) << one.name;
    EXPECT_FALSE(d.attribute("none"));
    EXPECT_TRUE(d.flag("d"));
    EXPECT_FALSE(d.flag("e"));
    EXPECT_FALSE(d.flag("none"));
    EXPECT_EQ(d.number("c", 0), -1.5);
    EXPECT_EQ(d.number("g", 0), 5);
    EXPECT_EQ(d.number("e", 7), 7);
}

TEST(Dcl, CommentsSettingsAndIncludesAreAllowedAnywhere)
{
    temporary_directory tmp;
    tmp.write("sub/Part.dcl", "wide : edit_box { edit_width = 40; }");
    tmp.write("sub/main.dcl",
              "// head { \"\n/* more\n lines } */ dcl_settings : default_dcl_settings { audit_level = 3; }\n"
              "@include \"base.dcl\"\n@include \"part\"\n"
              "d : dialog { // rest\n /* x */ : wide { key = \"w\"; /**/ } }\x1A");
    dcl_error error;
    const auto file = read_dcl(tmp.path + "/sub/main.dcl", &error);
    ASSERT_TRUE(file) << error.text();
    EXPECT_EQ(shape(file->tiles.at("d")), "dialog(edit_box=w)");
    EXPECT_EQ(file->tiles.at("d").children[0].text("edit_width"), "40");
    EXPECT_EQ(file->names, (std::vector<std::string>{"dcl_settings", "wide", "d"}));
}

TEST(Dcl, PrototypesAreInheritedAndOverridden)
{
    const auto file =
        parsed("wide : edit_box { edit_width = 40; label = \"L\"; }\n"
               "pair : row { : wide { key = \"a\"; } spacer; }\n"
               "wider : wide { edit_width = 60; }\n"
               "both : button : default_button { key = \"k\"; }\n"
               "d : dialog { pair; : wider { key = \"b\"; } : pair { label = \"more\"; : text { } } both; }");
    const dcl_tile& d = file->tiles.at("d");
    EXPECT_EQ(shape(d), "dialog(group(edit_box=a spacer) edit_box=b group(edit_box=a spacer text) button=k)");
    EXPECT_EQ(d.children[0].children[0].text("edit_width"), "40");
    EXPECT_EQ(d.children[1].text("edit_width"), "60");
    EXPECT_EQ(d.children[1].text("label"), "L");
    EXPECT_TRUE(d.children[0].horizontal);
    EXPECT_TRUE(d.children[3].flag("is_default"));
}

TEST(Dcl, AFileMayReplaceAnAssembly)
{
    const auto file = parsed("ok_cancel : row { : button { key = \"mine\"; } }\nd : dialog { ok_cancel; }");
    EXPECT_EQ(shape(file->tiles.at("d")), "dialog(group(button=mine))");
    EXPECT_EQ(shape(parsed("d : dialog { ok_cancel; }")->tiles.at("d")),
              "dialog(group(button=accept spacer button=cancel))")
        << "for itself only";
}

TEST(Dcl, TextsOfAnyCodingAreKeptInWindows1252)
{
    EXPECT_EQ(parsed("d : dialog { label = \"H\xF6he\"; }")->tiles.at("d").text("label"), "H\xF6he");
    EXPECT_EQ(parsed("\xEF\xBB\xBF"
                     "d : dialog { label = \"H\xC3\xB6he\"; }")
                  ->tiles.at("d")
                  .text("label"),
              "H\xF6he");
    EXPECT_EQ(parsed("d : dialog { label = \"\xE4\xB8\xAD\"; }")->tiles.at("d").text("label"), "\\U+4E2D");
}

TEST(Dcl, FaultsAreToldByFileAndLine)
{
    struct {
        const char *text, *message;
    } const cases[] = {
        {"d : dialog {\n  key = \"open;\n}", "t.dcl:2: a text has no quote at its end"},
        {"d : dialog {\n  key = \"a\"\n  label = \"b\";\n}",
         "t.dcl:2: ';' is missing behind the value of 'key', before 'label'"},
        {"d : dialog {\r\n  key = ;\r\n}", "t.dcl:2: attribute 'key' has no value"},
        {"d : dialog {\n\n  : buton { }\n}", "t.dcl:3: there is no tile 'buton'"},
        {"d : dialog {\n  later;\n}\nlater : text { }", "t.dcl:2: there is no tile 'later'"},
        {"d : dialog {\n  : row {\n  : text { }\n", "t.dcl:4: '}' is missing for the '{' of line 2"},
        {"d : dialog\n", "t.dcl:1: '{' is missing behind the tile's name, before the end of the file"},
        {"d {\n}", "t.dcl:1: ':' is missing behind 'd', before '{'"},
        {"\"d\" : dialog { }", "t.dcl:1: a definition begins with a name, not with \"d\""},
        {"d : \"dialog\" { }", "t.dcl:1: ':' wants a tile's name, not \"dialog\""},
        {"d : dialog { \"x\"; }", "t.dcl:1: an attribute or a tile begins with a name, not with \"x\""},
        {"d : dialog { key \"x\"; }", "t.dcl:1: '=' or ';' is missing behind 'key', before \"x\""},
        {"d : dialog { }\n}", "t.dcl:2: a definition begins with a name, not with '}'"},
        {"d : dialog { # }", "t.dcl:1: '#' has no meaning here"},
        {"\n/* never\nclosed", "t.dcl:2: a comment has no '*/' at its end"},
        {"\n@include \"none.dcl\"", "t.dcl:2: 'none.dcl' can't be read"},
        {"@include none", "t.dcl:1: '@include' wants a file's name in quotes"},
        {"@inclued \"x\"", "t.dcl:1: '@' stands before 'include' only, not before 'inclued'"},
        {"d", "t.dcl:1: ':' is missing behind 'd', before the end of the file"},
    };
    temporary_directory tmp;
    for (const auto& one : cases) {
        dcl_error error;
        EXPECT_FALSE(parse_dcl(one.text, "t.dcl", &error)) << one.text;
        EXPECT_EQ(error.text(), one.message) << one.text;
    }
}

TEST(Dcl, AFaultInAnIncludedFileIsToldThere)
{
    temporary_directory tmp;
    tmp.write("part.dcl", "a : text { }\nb : nothing { }");
    dcl_error error;
    EXPECT_FALSE(parse_dcl("@include \"part.dcl\"\nd : dialog { a; }", "t.dcl", &error));
    EXPECT_EQ(error.text(), "part.dcl:2: there is no tile 'nothing'");
}

TEST(Dcl, FilesThatIncludeThemselvesEnd)
{
    temporary_directory tmp;
    tmp.write("self.dcl", "@include \"self.dcl\"");
    dcl_error error;
    EXPECT_FALSE(read_dcl("self.dcl", &error));
    EXPECT_EQ(error.text(), "self.dcl:1: files include each other more than 20 deep");
}

TEST(Dcl, AFileThatIsNotThereIsTold)
{
    dcl_error error;
    EXPECT_FALSE(read_dcl("/nowhere/x.dcl", &error));
    EXPECT_EQ(error.text(), "/nowhere/x.dcl: can't be read: No such file or directory");
}

TEST(Dcl, NestingHasALimit)
{
    const auto nested = [](int depth) {
        std::string text = "d : dialog {";
        for (int i = 0; i < depth; i++)
            text += ": row {";
        return text + std::string(static_cast<std::size_t>(depth) + 1, '}');
    };
    dcl_error error;
    EXPECT_TRUE(parse_dcl(nested(100), "t", &error));
    EXPECT_FALSE(parse_dcl(nested(101), "t", &error));
    EXPECT_EQ(error.text(), "t:1: tiles stand more than 100 deep in each other");
    EXPECT_FALSE(parse_dcl(nested(100000), "t", &error));
}

TEST(Dcl, PrototypesThatDoubleAreStopped)
{
    std::string text = "a0 : row { spacer; spacer; }\n";
    for (int i = 1; i < 60; i++) {
        const std::string before = "a" + std::to_string(i - 1);
        text += "a" + std::to_string(i) + " : row { " + before + "; " + before + "; }\n";
    }
    dcl_error error;
    EXPECT_FALSE(parse_dcl(text, "t", &error));
    EXPECT_EQ(error.message.find("has more than 20000 tiles"), error.message.find("has")) << error.text();
}

} // namespace

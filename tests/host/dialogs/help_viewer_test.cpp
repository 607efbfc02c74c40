// Help in the history.
#include "host/dialogs/help_viewer.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <sstream>

#include "host/core/session.h"
#include "host/core/text.h"
#include "host/dialogs/html_page.h"
#include "hostapi/processes.h"
#include "tests/host/dialogs/dialog_session.h"

namespace fs = std::filesystem;

namespace
{

const fs::path SHARE = fs::path(ZENT_SOURCE_DIR) / "share";

class HelpViewer : public dialog_session
{
protected:
    HelpViewer()
    {
        host::run_settings() = host::settings();
        fs::create_directories(fs::path(tmp.path) / "share/help");
        tmp.write("share/help/index.html", "<h1>Start</h1>");
        tmp.write("share/help/host.html", "<p>Host");
        tmp.write("share/help/lots.html", "<p>Lots</p>");
        tmp.write("share/secret.html", "<p>Secret");
        host::run_settings().share = (fs::path(tmp.path) / "share/").string();
    }
    ~HelpViewer() override { host::run_settings() = host::settings(); }

    std::string shown(const std::string& target)
    {
        history.clear();
        host::dialogs::show_help(target);
        return history;
    }
    // By the library, as programs call it; "" in front of a 0.
    std::string called(const char* target)
    {
        history.clear();
        const HINSTANCE control = LoadLibraryA("C:\\WINNT\\System32\\HHCTRL.OCX");
        using entry = HWND (*)(HWND, const char*, unsigned, std::uintptr_t);
        const auto html_help = reinterpret_cast<entry>(GetProcAddress(control, LIBRARY_ORDINAL(14)));
        if (!html_help)
            return "no entry";
        const HWND window = html_help(0, target, 0, 0);
        return (window ? "" : "0 ") + history;
    }
};

TEST_F(HelpViewer, ShowsTheProductsPages)
{
    EXPECT_EQ(shown("C:\\ZENT\\zentrik.chm"), "[help] index.html\nStart\n=====\n");
    EXPECT_EQ(shown("C:\\ZENT\\ZENTRIK.CHM::/"), "[help] index.html\nStart\n=====\n");
    EXPECT_EQ(shown("C:\\ZENT\\zentrik.chm::/lots.html"), "[help] lots.html\nLots\n");
    EXPECT_EQ(shown("zentrik.chm::LOTS.html#size"), "[help] LOTS.html#size\nLots\n");
    EXPECT_EQ(shown("zentrik.chm::\\lots.html"), "[help] lots.html\nLots\n");
}

TEST_F(HelpViewer, DirectoryBesideTheFileGoesFirst)
{
    fs::create_directories(fs::path(tmp.path) / "job/zentrik");
    fs::create_directories(fs::path(tmp.path) / "job/Other");
    tmp.write("job/zentrik/index.html", "<p>Own");
    tmp.write("job/Other/index.html", "<p>Other");
    const std::string job = (fs::path(tmp.path) / "job").string();
    EXPECT_EQ(shown(job + "/zentrik.chm"), "[help] index.html\nOwn\n");
    EXPECT_EQ(shown(job + "\\other.chm"), "[help] index.html\nOther\n");
}

TEST_F(HelpViewer, WhatIsNotThereIsTold)
{
    EXPECT_EQ(shown("C:\\Z\\zentrik.chm::/gone.html"), "[help] there is no page 'gone.html' in zentrik.chm\n");
    EXPECT_EQ(shown("C:\\Z\\x.chm"),
              "[help] C:\\Z\\x.chm can't be shown: there is no directory of its pages beside it\n");
    EXPECT_EQ(shown(""), "[help]  can't be shown: there is no directory of its pages beside it\n");
    host::run_settings().share = (fs::path(tmp.path) / "nowhere/").string();
    EXPECT_EQ(shown("zentrik.chm"), "[help] there is no page 'index.html' in zentrik.chm\n");
}

TEST_F(HelpViewer, PagesLieWithinTheirDirectory)
{
    ASSERT_TRUE(fs::exists(fs::path(tmp.path) / "share/secret.html"));
    const std::string absolute = "zentrik.chm::/" + (fs::path(tmp.path) / "share/secret.html").string();
    for (const std::string& target :
         {std::string("zentrik.chm::/../secret.html"), std::string("zentrik.chm::..\\secret.html"),
          std::string("zentrik.chm::/x/../../secret.html"), absolute, std::string("zentrik.chm::/..")}) {
        EXPECT_NE(shown(target).find("there is no page"), std::string::npos) << target;
        EXPECT_EQ(history.find("Secret"), std::string::npos) << target;
    }
    fs::create_directories(fs::path(tmp.path) / "share/help/folder.html");
    EXPECT_NE(shown("zentrik.chm::/folder.html").find("there is no page"), std::string::npos);
}

TEST_F(HelpViewer, ControlOfThePlatformShowsPages)
{
    EXPECT_EQ(called("C:\\Z\\zentrik.chm::/lots.html"), "[help] lots.html\nLots\n");
    EXPECT_EQ(called("C:\\Z\\zentrik.chm::/gone.html"),
              "0 [help] there is no page 'gone.html' in zentrik.chm\n");
    EXPECT_EQ(called(nullptr), "0 ");
}

TEST_F(HelpViewer, OtherHelpIsRefusedWhereNoProgramsMayStart)
{
    fs::create_directories(fs::path(tmp.path) / "other");
    tmp.write("other/index.html", "<p>Other");
    const std::string other = (fs::path(tmp.path) / "other.chm").string();
    EXPECT_EQ(called(other.c_str()), "[help] index.html\nOther\n");
    host::run_settings().no_shell = true;
    testing::internal::CaptureStderr();
    EXPECT_EQ(called(other.c_str()), "0 ");
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "zentrik: other programs may not be started in this run: " + other + "\n");
    EXPECT_EQ(called("C:\\Z\\zentrik.chm"), "[help] index.html\nStart\n=====\n");
}

TEST_F(HelpViewer, HostsHelpIsAPageOfItsOwn)
{
    EXPECT_EQ(acedHelp(nullptr, "", 261), RTNORM);
    EXPECT_EQ(history, "[help] host.html\nHost\n");
    history.clear();
    EXPECT_EQ(acedHelp("", "LOTS", 0), RTNORM);
    EXPECT_EQ(acedHelp("C:\\Z\\zentrik.chm", "lots.html", 0), RTNORM);
    EXPECT_EQ(acedHelp("C:\\Z\\zentrik.chm", nullptr, 0), RTNORM);
    EXPECT_EQ(history, "[help] lots.html\nLots\n[help] lots.html\nLots\n[help] index.html\nStart\n=====\n");
    history.clear();
    EXPECT_EQ(acedHelp(nullptr, "../secret", 0), RTERROR);
    EXPECT_EQ(acedHelp("x.hlp", "", 0), RTERROR);
    EXPECT_EQ(history, "[help] there is no page '../secret' in zentrik.chm\n"
                       "[help] x.hlp can't be shown: there is no directory of its pages beside it\n");
}

TEST_F(HelpViewer, HelpIsTraced)
{
    host::trace_to("trace.txt");
    acedHelp("f", "t", 0);
    called("zentrik.chm::/gone.html");
    host::trace_to("");
    EXPECT_EQ(tmp.read("trace.txt"), "acedHelp \"f\" \"t\" 0 -> RTERROR\n"
                                     "HtmlHelpA 0 \"zentrik.chm::/gone.html\" 0 0 -> 0\n");
}

// ---- the product's pages --------------------------------------------------------------------------

std::string whole(const fs::path& file)
{
    std::ifstream in(file, std::ios::binary);
    std::stringstream text;
    text << in.rdbuf();
    return text.str();
}

// By function; the third field of the line.
std::map<std::string, std::string> topics()
{
    std::map<std::string, std::string> out;
    std::istringstream in(whole(SHARE / "symbols/help.xrf"));
    for (std::string line; std::getline(in, line);) {
        const std::size_t first = line.find('|'), second = line.find('|', first + 1);
        EXPECT_NE(second, std::string::npos) << line;
        EXPECT_LE(line.size(), 252u) << line;
        EXPECT_EQ(line.find_first_of(" \t\r"), line.find(' ', first)) << "a blank in the name of " << line;
        out[line.substr(0, first)] = line.substr(second + 1);
    }
    return out;
}

std::map<std::string, host::dialogs::html_page> product_pages()
{
    std::map<std::string, host::dialogs::html_page> out;
    for (const auto& entry : fs::directory_iterator(SHARE / "help"))
        if (entry.path().extension() == ".html")
            out[entry.path().filename()] = host::dialogs::parse_html(whole(entry.path()));
    return out;
}

TEST(ProductHelp, EachCommandHasATopicAndEachTopicAPage)
{
    const std::map<std::string, std::string> known = topics();
    const std::string program = whole(SHARE / "lisp/zentrik.lsp");
    const std::string begin = "(defun c:";
    int commands = 0;
    for (std::size_t at = program.find(begin); at != std::string::npos; at = program.find(begin, at + 1)) {
        const std::size_t from = at + begin.size();
        const std::string name = host::upper(program.substr(from, program.find_first_of(" (", from) - from));
        EXPECT_EQ(known.count(name), 1u) << name << " isn't in share/help/help.xrf";
        ++commands;
    }
    EXPECT_GT(commands, 10);
    for (const auto& [name, topic] : known)
        EXPECT_TRUE(fs::is_regular_file(SHARE / "help" / topic)) << name << " " << topic;
}

TEST(ProductHelp, EachLinkHasATarget)
{
    const auto pages = product_pages();
    ASSERT_GT(pages.size(), 15u);
    for (const auto& [name, page] : pages)
        for (const std::string& link : page.links) {
            if (link.find("://") != std::string::npos)
                continue;
            const std::size_t hash = std::min(link.find('#'), link.size());
            const auto target = pages.find(hash == 0 ? name : link.substr(0, hash));
            ASSERT_NE(target, pages.end()) << name << " leads to " << link;
            const std::vector<std::string>& anchors = target->second.anchors;
            const bool found =
                hash == link.size() || std::count(anchors.begin(), anchors.end(), link.substr(hash + 1)) == 1;
            EXPECT_TRUE(found) << name << " leads to " << link;
        }
}

TEST(ProductHelp, EachPageIsReachedFromTheStartPage)
{
    const auto pages = product_pages();
    std::set<std::string> reached{"index.html"};
    std::vector<std::string> open{"index.html"};
    while (!open.empty()) {
        const std::string name = open.back();
        open.pop_back();
        for (const std::string& link : pages.at(name).links)
            if (pages.count(link) && reached.insert(link).second)
                open.push_back(link);
    }
    for (const auto& [name, page] : pages) {
        EXPECT_EQ(reached.count(name), 1u) << name;
        EXPECT_NE(page.title, "") << name;
    }
}

// Elements are ended in the order in which they were begun: simple HTML, as other viewers want it.
TEST(ProductHelp, PagesAreWellFormed)
{
    const std::set<std::string> empty{"meta", "br", "hr", "!DOCTYPE"};
    for (const auto& entry : fs::directory_iterator(SHARE / "help")) {
        if (entry.path().extension() != ".html")
            continue;
        const std::string page = whole(entry.path());
        EXPECT_EQ(page.rfind("<!DOCTYPE html>\n<html lang=\"en\">", 0), 0u) << entry.path();
        EXPECT_NE(page.find("<meta charset=\"utf-8\">"), std::string::npos) << entry.path();
        std::vector<std::string> open;
        for (std::size_t at = page.find('<'); at != std::string::npos; at = page.find('<', at + 1)) {
            const bool ends = page[at + 1] == '/';
            const std::size_t from = at + (ends ? 2 : 1);
            const std::string name = page.substr(from, page.find_first_of(" >", from) - from);
            if (ends) {
                ASSERT_FALSE(open.empty()) << entry.path() << " " << name;
                EXPECT_EQ(open.back(), name) << entry.path();
                open.pop_back();
            } else if (!empty.count(name)) {
                open.push_back(name);
            }
        }
        EXPECT_TRUE(open.empty()) << entry.path();
    }
}

} // namespace

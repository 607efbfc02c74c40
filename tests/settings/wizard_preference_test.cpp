// "Don't show this again": use_startwiz in zentrik.ini.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "common/directories.h"
#include "common/text_buffer.h"
#include "settings/wizard_preference.h"
#include "tests/fakes/fake_host.h"

namespace
{

struct preferences : host_session {
    preferences()
    {
        text_set(data_dir, directory());
        file = directory() + "zentrik.ini";
        scratch = directory() + "temp.ini";
    }
    std::string rewritten(const std::string& before)
    {
        write_text(file, before);
        fake.set_order.clear();
        wizard_switch_off();
        EXPECT_EQ(fake.set_order, std::vector<std::string>{"use_startwiz=0"});
        EXPECT_EQ(fake.lisp["use_startwiz"].type, 5003) << "a 16-bit integer";
        return read_text(file);
    }
    std::string file, scratch;
};

TEST(WizardPreference, LineIsReplacedAndOthersStay)
{
    const std::string off = "use_startwiz=0\n";
    struct rewrite {
        const char* what;
        std::string before, after;
    };
    const rewrite cases[] = {
        {"in the middle", "a=1\nuse_startwiz=1\nb=2\n", "a=1\n" + off + "b=2\n"},
        {"more than once", "use_startwiz=1\nb=2\nuse_startwiz=yes=1\n", off + "b=2\n" + off},
        {"already off", off, off},
        {"no line", "a=1\nb\n", "a=1\nb\n" + off},
        {"empty file", "", off},
        {"last line without its end", "a=1", "a=1\n" + off},
        {"the line itself without its end", "a=1\nuse_startwiz=1", "a=1\n" + off},
        {"blank before the name", " use_startwiz=1\n", " use_startwiz=1\n" + off},
        {"blank behind the name", "use_startwiz =1\n", "use_startwiz =1\n" + off},
        {"other case", "USE_STARTWIZ=1\n", "USE_STARTWIZ=1\n" + off},
        {"longer name", "use_startwiz2=1\n", "use_startwiz2=1\n" + off},
        {"name without a value", "use_startwiz\n", "use_startwiz\n" + off},
        {"as a value", "x=use_startwiz=1\n", "x=use_startwiz=1\n" + off},
        {"empty value", "use_startwiz=\n", off},
        {"carriage returns", "a=1\r\nuse_startwiz=1\r\nb=2\r\n", "a=1\n" + off + "b=2\n"},
        {"blank lines", "\n\nuse_startwiz=1\n\n", "\n\n" + off + "\n"},
    };
    for (const rewrite& c : cases) {
        preferences session;
        EXPECT_EQ(session.rewritten(c.before), c.after) << c.what;
        EXPECT_TRUE(session.heap_is_as_before()) << c.what;
    }
}

TEST(WizardPreference, LinesAreCopiedWholeBesideTheFile)
{
    preferences session;
    const std::string before = "a=" + std::string(400, 'x') + "\nuse_startwiz=1\n";
    session.rewritten(before);
    EXPECT_EQ(read_text(session.scratch), before);
}

TEST(WizardPreference, LongLineCountsInPiecesOf253Characters)
{
    const std::string off = "use_startwiz=0\n", name = "use_startwiz=1\n";
    for (const std::size_t length : {std::size_t(121), std::size_t(122), std::size_t(123), std::size_t(252)}) {
        preferences session;
        const std::string line(length, 'a');
        EXPECT_EQ(session.rewritten(line + name), line + name + off) << length << ": part of its line";
    }
    preferences session;
    const std::string line(253, 'a');
    EXPECT_EQ(session.rewritten(line + name), line + off) << "a piece of its own";
    EXPECT_EQ(session.rewritten(line + "\n" + name), line + "\n" + off);
}

TEST(WizardPreference, LongValueIsReplacedInItsFirstPieceOnly)
{
    preferences session;
    const std::string name = "use_startwiz=", value(260, '1');
    EXPECT_EQ(session.rewritten(name + value + "\n"), name + "0\n" + value.substr(253 - name.size()) + "\n");
}

TEST(WizardPreference, FileThatIsMissingIsNotMade)
{
    preferences session;
    wizard_switch_off();
    EXPECT_EQ(read_text(session.file), "<none>");
    EXPECT_EQ(read_text(session.scratch), "<none>");
    EXPECT_EQ(fake.set_order, std::vector<std::string>{"use_startwiz=0"});
    EXPECT_EQ(session.printed, "");
}

TEST(WizardPreference, FileStaysWhenTheScratchFileCannotBeMade)
{
    preferences session;
    std::filesystem::create_directory(session.scratch);
    EXPECT_EQ(session.rewritten("use_startwiz=1\n"), "use_startwiz=1\n");
}

} // namespace

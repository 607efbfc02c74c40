#include "host/core/console.h"

#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "host/core/session.h"
#include "hostapi/ads.h"

namespace
{

class Console : public testing::Test
{
protected:
    void SetUp() override { host::capture_history(&shown); }
    void TearDown() override { host::capture_history(nullptr); }
    std::string shown;
};

TEST_F(Console, AnswerFollowsItsPromptAndCommentsAreSkipped)
{
    host::answers_from_text("; a remark\n12,5\n");
    host::history("\nPoint: ");
    EXPECT_EQ(host::next_answer("\nPoint: "), "12,5");
    EXPECT_EQ(shown, "\nPoint: 12,5\n");
}

TEST_F(Console, EmptyLineIsAnAnswerAndTheEndIsKeptWithItsPrompt)
{
    host::answers_from_text("\n");
    EXPECT_EQ(host::next_answer("first"), "");
    EXPECT_FALSE(host::answers_ended());
    EXPECT_EQ(host::next_answer("\nSecond: "), std::nullopt);
    EXPECT_EQ(host::next_answer("\nThird: "), std::nullopt);
    EXPECT_TRUE(host::answers_ended());
    EXPECT_EQ(host::answers_ended_at(), "Second:");
}

TEST_F(Console, AnswersAreConvertedAndRefusedWhenTheyCannotBe)
{
    host::answers_from_text("\u0141\n12\u00B0\n");
    EXPECT_EQ(host::next_answer("Angle: "), "12\xB0");
    EXPECT_NE(shown.find("12\u00B0"), std::string::npos);
}

TEST_F(Console, AnswerPutBackComesAgainWithoutBeingShown)
{
    host::answers_from_text("a\nb\n");
    host::unread_answer(*host::next_answer("?"));
    const std::string before = shown;
    EXPECT_EQ(host::next_answer("?"), "a");
    EXPECT_EQ(shown, before);
    EXPECT_EQ(host::next_answer("?"), "b");
}

TEST_F(Console, CarriageReturnsAndByteOrderMarkAreNoPartOfAnAnswer)
{
    host::answers_from_text("\xEF\xBB\xBFone\r\ntwo");
    EXPECT_EQ(host::next_answer("?"), "one");
    EXPECT_EQ(host::next_answer("?"), "two");
}

TEST_F(Console, HistoryLineStartsOnALineOfItsOwn)
{
    host::history("abc");
    host::history_line("def");
    host::history_line("ghi");
    EXPECT_EQ(shown, "abc\ndef\nghi\n");
}

// What stands on a terminal after `session`, which has it as standard input and output; the session gets the
// end at which a person types. Nothing on a machine that gives out no terminals.
template <class Session>
std::optional<std::string> on_a_terminal(Session session)
{
    const int person = posix_openpt(O_RDWR | O_NOCTTY);
    if (person < 0)
        return std::nullopt;
    const bool is_open = grantpt(person) == 0 && unlockpt(person) == 0;
    const int terminal = is_open ? open(ptsname(person), O_RDWR | O_NOCTTY) : -1;
    if (terminal < 0) {
        close(person);
        return std::nullopt;
    }
    host::flush_history();
    const int input = dup(STDIN_FILENO), output = dup(STDOUT_FILENO);
    dup2(terminal, STDIN_FILENO);
    dup2(terminal, STDOUT_FILENO);
    session(person);
    host::flush_history();
    dup2(input, STDIN_FILENO);
    dup2(output, STDOUT_FILENO);
    for (const int each : {input, output, terminal})
        close(each);
    // What was shown comes in pieces; once nobody holds the terminal the last of it is followed by an error.
    std::string seen;
    char piece[200];
    for (ssize_t length; (length = read(person, piece, sizeof piece)) > 0;)
        seen.append(piece, static_cast<std::size_t>(length));
    close(person);
    return seen;
}

TEST(Terminal, AnAnswerTypedAtItIsShownOnce)
{
    std::optional<std::string> answer;
    const std::optional<std::string> seen = on_a_terminal([&](int person) {
        host::answers_from_file("-");
        host::history("Where: ");
        host::flush_history();
        constexpr std::string_view typed = "5,5\n";
        if (write(person, typed.data(), typed.size()) == static_cast<ssize_t>(typed.size()))
            answer = host::next_answer("Where: ");
        host::history_line("done");
    });
    if (!seen)
        GTEST_SKIP() << "no terminal can be opened here";
    EXPECT_EQ(answer, "5,5");
    EXPECT_EQ(seen, "Where: 5,5\r\ndone\r\n");
    host::answers_from_text("");
}

TEST(Session, FixedClockAndBreakAfter)
{
    host::run_settings().clock = "20260315.123456";
    EXPECT_NEAR(host::clock_cdate(), 20260315.123456, 1e-7);
    EXPECT_NEAR(host::clock_julian(), 2461115 + (12 * 3600 + 34 * 60 + 56) / 86400.0, 1e-7);
    host::run_settings().clock.clear();

    host::request_break();
    EXPECT_EQ(acedUsrBrk(), 1);
    EXPECT_EQ(acedUsrBrk(), 0);
}

} // namespace

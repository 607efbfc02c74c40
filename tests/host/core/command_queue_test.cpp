// What programs hand to the command line: where an input ends, and when it may be read.
#include "host/core/command_queue.h"

#include <gtest/gtest.h>

#include <vector>

#include "host/core/console.h"

namespace host
{

namespace
{

class CommandQueue : public testing::Test
{
protected:
    void SetUp() override { clear_command_text(); }
    void TearDown() override { clear_command_text(); }
    static std::vector<std::string> inputs_of(std::string_view text)
    {
        queue_command_text(text);
        release_command_text();
        std::vector<std::string> all;
        while (const auto one = take_command_input())
            all.push_back(*one);
        return all;
    }
};

using inputs = std::vector<std::string>;

TEST_F(CommandQueue, ALineFeedOrABlankEndsAnInput)
{
    EXPECT_EQ(inputs_of("'_.HELP\n"), (inputs{"'_.HELP"}));
    EXPECT_EQ(inputs_of("LINE 0,0 5,5 \n"), (inputs{"LINE", "0,0", "5,5", ""}));
    EXPECT_EQ(inputs_of("A\r\nB\rC\tD\n"), (inputs{"A", "B", "C", "D"}));
    EXPECT_EQ(inputs_of("\n\n"), (inputs{"", ""}));
}

TEST_F(CommandQueue, NeitherEndsOneInsideOfParenthesesOrAString)
{
    EXPECT_EQ(inputs_of("(c:open_dwg \"C:/My Jobs/a.dwg\")\n"), (inputs{"(c:open_dwg \"C:/My Jobs/a.dwg\")"}));
    EXPECT_EQ(inputs_of("(setq a\n 1)\nU\n"), (inputs{"(setq a\n 1)", "U"}));
    EXPECT_EQ(inputs_of("\"C:\\My Jobs\\\" B\n"), (inputs{"\"C:\\My Jobs\\\"", "B"}));
    EXPECT_EQ(inputs_of("(princ \"\\\") (\") (x)\n"), (inputs{"(princ \"\\\") (\")", "(x)"}));
    EXPECT_EQ(inputs_of(")) a\n"), (inputs{"))", "a"}));
    EXPECT_EQ(inputs_of("12\"\nA\n"), (inputs{"12\"", "A"})); // inches: no string goes over a line
}

TEST_F(CommandQueue, EscapeAndControlCDropWhatIsTyped)
{
    EXPECT_EQ(inputs_of("\x1B\x1BZOOM\n"), (inputs{"^C", "^C", "ZOOM"}));
    EXPECT_EQ(inputs_of("LI\x03U\n"), (inputs{"^C", "U"}));
    EXPECT_EQ(inputs_of("(a \"b\x1BU\n"), (inputs{"^C", "U"}));
}

TEST_F(CommandQueue, WhatHasNoEndWaitsForMore)
{
    EXPECT_EQ(inputs_of("LI"), inputs());
    EXPECT_EQ(inputs_of("NE\n"), (inputs{"LINE"}));
    EXPECT_EQ(inputs_of("(a\n"), inputs());
    EXPECT_EQ(take_unfinished_input(), "(a\n");
    EXPECT_EQ(take_unfinished_input(), "");
}

TEST_F(CommandQueue, AnswersComeFromWhatWasReleased)
{
    std::string shown;
    capture_history(&shown);
    answers_from_text("user\n");
    queue_command_text("5,5\n6,6\n");
    EXPECT_EQ(next_answer("To: "), "user"); // the expression at hand is still running
    release_command_text();
    EXPECT_EQ(next_answer("To: "), "5,5");
    EXPECT_EQ(next_answer("To: "), "6,6");
    EXPECT_EQ(next_answer("To: "), std::nullopt);
    capture_history(nullptr);
    EXPECT_NE(shown.find("5,5\n"), std::string::npos);
}

} // namespace

} // namespace host

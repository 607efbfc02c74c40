// The evaluator against the plain one, which writes the text anew for each operation.
#include <gtest/gtest.h>

#include <random>

#include "tests/common/plain_evaluator.h"
#include "tests/fakes/fake_host.h"

namespace
{

// Of EVAL_FAILED.
const std::string FAILED_BITS = std::to_string(0x41978C29E0666666);

testing::AssertionResult same(const std::string& text, host_session& host)
{
    const evaluation ours = evaluated(library_expression, text, host.printed);
    if (!host.heap_is_as_before())
        return testing::AssertionFailure() << "the heap has grown by " << text;
    const evaluation theirs = evaluated(plain_expression, text, host.printed);
    if (ours == theirs)
        return testing::AssertionSuccess();
    return testing::AssertionFailure()
           << "'" << text << "'\nprinted " << ours.printed << "\nnot     " << theirs.printed << "\ntokens  "
           << ours.tokens << "\nnot     " << theirs.tokens << "\nbits " << ours.bits << " not " << theirs.bits;
}

TEST(EvaluatorRandom, GivesWhatRewritingTheTextGives)
{
    host_session host;
    std::mt19937 random{20011};
    int valued = 0, told = 0, longest_tokens = 0;
    for (int round = 0; round < 40000; ++round) {
        std::string bytes(1 + random() % (round % 10 == 0 ? 60 : 12), '\0');
        // A third without what breaks most texts off early.
        const unsigned kinds = round % 3 == 0 ? 160 : 256;
        for (char& byte : bytes)
            byte = static_cast<char>(random() % kinds);
        const std::string text = expression_of(bytes);
        host.printed.clear();
        ASSERT_TRUE(same(text, host)) << "round " << round;
        const evaluation one = evaluated(library_expression, text, host.printed);
        valued += one.bits != FAILED_BITS;
        told += !one.printed.empty();
        longest_tokens += one.tokens.size() > 300;
    }
    // The comparison is worth something only when all kinds of ends are met.
    EXPECT_GT(valued, 8000);
    EXPECT_GT(told, 8000);
    EXPECT_GT(longest_tokens, 200);
}

TEST(EvaluatorRandom, GivesTheSameForEveryTextOfFewLetters)
{
    host_session host;
    const std::string letters = "1b-+*/^() ";
    std::string text;
    for (int number = 0; number < 111110; ++number) {
        text.clear();
        for (int rest = number; rest > 0; rest /= 10)
            text += letters[static_cast<std::size_t>(rest % 10)];
        host.printed.clear();
        ASSERT_TRUE(same(text, host));
    }
}

} // namespace

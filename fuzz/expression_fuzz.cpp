// Any bytes as an expression, and as the plan of one: values, messages and calls of the value function are
// those of the plain evaluator, and the heap is as before.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "host/core/console.h"
#include "host/core/heap.h"
#include "tests/common/plain_evaluator.h"

static void compare(const std::string& text)
{
    std::string printed;
    host::capture_history(&printed);
    const std::size_t blocks = host::heap_live_blocks(), bytes = host::heap_live_bytes();
    const evaluation ours = evaluated(library_expression, text, printed);
    const bool is_given_back = host::heap_live_blocks() == blocks && host::heap_live_bytes() == bytes;
    const evaluation theirs = evaluated(plain_expression, text, printed);
    host::capture_history(nullptr);
    if (ours == theirs && is_given_back)
        return;
    std::fprintf(stderr, "expression_fuzz: %s '%s'\n",
                 is_given_back ? "another result of" : "the heap has grown by", text.c_str());
    std::abort();
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    constexpr std::size_t LONGEST = 2000; // the plain one takes squared time
    const std::string bytes(reinterpret_cast<const char*>(data), size < LONGEST ? size : LONGEST);
    compare(bytes.c_str());
    compare(expression_of(bytes));
    return 0;
}

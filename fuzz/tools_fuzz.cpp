// Any bytes as a call of a drafting tool and the answers to it: see tools_run.h.
#include "fuzz/tools_run.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    run_tool({reinterpret_cast<const char*>(data), size});
    return 0;
}

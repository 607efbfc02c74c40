// Any bytes as a grid's text file: a grid or none, the heap as before, and what was understood, saved and
// loaded again, is saved the same. The disk is small, so that no size that a file claims takes long.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "grid/grid.h"
#include "tests/grid/memory_files.h"
#include "tests/polygon/heap.h"

namespace
{

constexpr std::size_t DISK = 2'000'000;

void expect(bool holds, const char* what)
{
    if (holds)
        return;
    std::fprintf(stderr, "grid_fuzz: %s\n", what);
    std::abort();
}

// The grid of a text, saved; empty when there is none.
std::string loaded_and_saved(const std::string& text)
{
    memory_files::state& disk = memory_files::disk();
    disk.files["in"] = text;
    disk.files.erase("out");
    disk.room = DISK;
    grid* g = grid_load("in");
    if (!g)
        return {};
    expect(grid_null_count >= 0 && grid_null_count <= grid_cell_count(g), "more null cells than cells");
    disk.room = memory_files::NO_LIMIT;
    expect(grid_save(g, "out") == 1, "what was loaded can't be saved");
    grid_free(&g);
    return disk.files["out"];
}

// Numbers that don't fit on a line go on as the next one, and one value may round to what stands for null.
bool comes_back(const std::string& text)
{
    for (std::size_t from = 0, end; (end = text.find('\n', from)) != text.npos; from = end + 1)
        if (end - from > 100)
            return false;
    return text.find("-98765432.1000\n") == text.npos;
}

// The counts and the cells. Places are rounded, and with them the steps.
std::string behind_places(const std::string& text)
{
    std::size_t at = 0;
    for (int line = 0; line < 4; ++line)
        at = text.find('\n', at) + 1;
    return text.substr(at);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    memory_files::forget();
    const std::string once = loaded_and_saved(std::string(reinterpret_cast<const char*>(data), size));
    if (!once.empty() && comes_back(once)) {
        const std::string twice = loaded_and_saved(once);
        // Steps near nothing are lost in the places' decimals, and so is the grid.
        expect(twice.empty() || behind_places(twice) == behind_places(once), "saved again it is another one");
    }
    printed_text();
    expect(test_heap::live_blocks() == 0, "the heap isn't as before");
    expect(memory_files::disk().open_files == 0, "a file is still open");
    return 0;
}

// Grids in a temporary file against the windows told once more, and against a grid in memory.
#include <gtest/gtest.h>

#include <cstring>
#include <random>

#include "grid/grid.h"
#include "tests/grid/memory_files.h"
#include "tests/grid/plain_windows.h"
#include "tests/polygon/heap.h"

namespace
{

bool same(const grid_cell& a, const grid_cell& b)
{
    return std::memcmp(&a, &b, sizeof a) == 0;
}

// Indices that windows meet at: near others, and a window's length off them.
class walk
{
public:
    walk(unsigned seed, int count) : random_(seed), count_(count) {}
    int below(int n) { return std::uniform_int_distribution<int>(0, n - 1)(random_); }
    int next()
    {
        static const int jumps[] = {1, 2, 2499, 2500, 2501, 4999, 5000, 5001, 7499, 7500, 9999, 10000, 10001};
        switch (below(8)) {
        case 0:
            at_ = below(count_);
            break;
        case 1:
        case 2:
        case 3:
            at_ += jumps[below(13)] * (below(2) ? 1 : -1);
            break;
        case 4:
            at_ += below(12000) - 6000;
            break;
        default:
            at_ += below(5) - 2;
        }
        return at_ = std::clamp(at_, 0, count_ - 1);
    }
    grid_cell cell()
    {
        return {below(1000) / 8.0, "0015"[below(4)], "01"[below(2)], 0, static_cast<std::uint32_t>(below(9))};
    }

private:
    std::mt19937 random_;
    int count_, at_ = 0;
};

// The place of the first difference between the temporary file and the model's, or -1.
long difference(const grid* g, const plain_windows& plain)
{
    const auto& files = memory_files::disk().files;
    const auto found = files.find(g->temp_path);
    if ((found != files.end()) != plain.exists)
        return 0;
    if (!plain.exists || found->second == plain.bytes)
        return -1;
    std::size_t i = 0;
    while (i < plain.bytes.size() && i < found->second.size() && plain.bytes[i] == found->second[i])
        ++i;
    return static_cast<long>(i);
}

// What fails, if anything: the step's number.
int first_difference(unsigned seed, int cells, bool with_faults)
{
    memory_files::forget();
    grid* g = grid_create(0, 0, 1, 1, 600, 600);
    plain_windows plain;
    walk steps(seed, cells);
    int failed = 0;
    for (int step = 1; step <= 150 && !failed; ++step) {
        const int what = steps.below(20);
        if (what < 9) {
            const int i = steps.next();
            failed = same(grid_read_cell(g, i), plain.read(i)) ? 0 : step;
        } else if (what < 18) {
            const int i = steps.next();
            const grid_cell cell = steps.cell();
            grid_write_cell(g, i, cell);
            plain.write(i, cell);
        } else if (what == 18 || !with_faults) {
            grid_flush(g);
            plain.flush();
        } else if (steps.below(2)) {
            memory_files::disk().files.erase(g->temp_path);
            plain.vanish();
        } else if (steps.below(2)) {
            plain.refuse_opening = memory_files::disk().refuse_opening = !plain.refuse_opening;
        } else {
            plain.read_limit = memory_files::disk().read_limit =
                steps.below(2) ? memory_files::NO_LIMIT : static_cast<std::size_t>(steps.below(160000));
        }
        if (!failed && step % 10 == 0 && difference(g, plain) >= 0)
            failed = step;
    }
    grid_free(&g);
    return failed;
}

TEST(GridWindows, EveryCellAndTheFileAreAsTheStepsTellForSequencesOfChance)
{
    for (unsigned seed = 0; seed < 1500; ++seed)
        for (const int cells : {9000, 40000})
            ASSERT_EQ(first_difference(seed, cells, false), 0) << "seed " << seed << " cells " << cells;
    EXPECT_EQ(test_heap::live_blocks(), 0);
    EXPECT_EQ(memory_files::disk().open_files, 0);
}

TEST(GridWindows, TheStepsHoldWhenFilesVanishDontOpenOrAreReadShort)
{
    for (unsigned seed = 0; seed < 1500; ++seed)
        ASSERT_EQ(first_difference(seed, 30000, true), 0) << "seed " << seed;
    EXPECT_EQ(test_heap::live_blocks(), 0);
    EXPECT_EQ(memory_files::disk().open_files, 0);
}

TEST(GridWindows, AGridThatWasWrittenOnceAnswersAsOneInMemory)
{
    memory_files::forget();
    grid* file = grid_create(0, 0, 1, 1, 600, 600);
    grid* memory = grid_create(0, 0, 1, 1, 1, 200000);
    ASSERT_FALSE(file->in_memory);
    ASSERT_TRUE(memory->in_memory);
    const int count = grid_cell_count(file);
    ASSERT_GT(grid_cell_count(memory), count);
    walk steps(7, count);
    for (int i = 0; i < count; ++i) {
        const grid_cell cell = steps.cell();
        grid_write_cell(file, i, cell);
        grid_write_cell(memory, i, cell);
    }
    for (int step = 0; step < 200000; ++step) {
        const int i = steps.next();
        if (steps.below(2)) {
            const grid_cell cell = steps.cell();
            ASSERT_EQ(grid_write_cell(file, i, cell), 1);
            grid_write_cell(memory, i, cell);
        } else {
            ASSERT_TRUE(same(grid_read_cell(file, i), grid_read_cell(memory, i))) << step << ": cell " << i;
        }
    }
    for (int i = 0; i < count; ++i)
        ASSERT_TRUE(same(grid_read_cell(file, i), grid_read_cell(memory, i))) << i;
    grid_free(&file);
    grid_free(&memory);
}

} // namespace

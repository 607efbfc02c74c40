// Good files with damage done to them at random (always the same): never a crash, never a refusal without
// a reason, and whatever is read can be written and read again.
#include <gtest/gtest.h>

#include <random>

#include "host/core/document.h"
#include "tests/host/database/dxf_binary.h"
#include "tests/host/database/dxf_dump.h"

namespace host::db
{
namespace
{

using test::sample;

class damager
{
public:
    explicit damager(unsigned seed) : random_(seed) {}

    std::string damaged(std::string bytes)
    {
        for (std::size_t n = 1 + below(3); n > 0 && !bytes.empty(); --n)
            once(bytes);
        return bytes;
    }

private:
    std::size_t below(std::size_t n) { return random_() % n; }

    // Start of a line at or behind a place chosen at random.
    std::size_t line(const std::string& bytes)
    {
        const std::size_t at = bytes.find('\n', below(bytes.size()));
        return at == std::string::npos ? 0 : at + 1;
    }

    void once(std::string& bytes)
    {
        static const char* const values[] = {"",        "-1",       "abc",
                                             "1e999",   "0",        "5",
                                             "10",      "100",      "102",
                                             "330",     "999",      "1001",
                                             "SECTION", "ENDSEC",   "EOF",
                                             "TABLE",   "ENDTAB",   "BLOCK",
                                             "ENDBLK",  "POLYLINE", "VERTEX",
                                             "SEQEND",  "INSERT",   "ATTRIB",
                                             "{X",      "}",        "FFFFFFFFFFFFFFFF"};
        const std::size_t at = below(bytes.size());
        switch (below(7)) {
        case 0:
            bytes[at] = static_cast<char>(random_());
            break;
        case 1:
            bytes.resize(at);
            break;
        case 2:
            bytes.erase(at, below(40));
            break;
        case 3: {
            const std::size_t from = line(bytes), to = std::min(bytes.find('\n', from), bytes.size());
            bytes.replace(from, to - from, values[below(std::size(values))]);
            break;
        }
        case 4: {
            const std::size_t from = line(bytes);
            bytes.erase(from, std::min(bytes.find('\n', from), bytes.size()) + 1 - from);
            break;
        }
        case 5: { // a piece of it once more
            const std::string piece = bytes.substr(line(bytes), below(200));
            bytes.insert(line(bytes), piece);
            break;
        }
        default:
            bytes.insert(line(bytes), std::string(values[below(std::size(values))]) + '\n');
        }
    }

    std::mt19937_64 random_;
};

void check(const std::string& bytes, document& doc, const std::string& which)
{
    dxf_error error;
    const auto drawing = parse_dxf(bytes, "damaged.dxf", doc, &error);
    if (!drawing) {
        ASSERT_FALSE(error.message.empty()) << which;
        ASSERT_LE(error.line, static_cast<long>(bytes.size()) + 1) << which;
        return;
    }
    const std::string text = dxf_text(*drawing, dxf_version::r2000);
    const auto again = parse_dxf(text, "written.dxf", doc, &error);
    ASSERT_TRUE(again) << which << ": " << error.text();
    ASSERT_EQ(test::difference(dxf_text(*again, dxf_version::r2000), text), "") << which;
    ASSERT_TRUE(parse_dxf(dxf_text(*drawing, dxf_version::r12), "r12.dxf", doc, &error))
        << which << error.text();
}

TEST(DxfDamage, DamagedFilesAreReadOrRefused)
{
    document doc(1);
    testing::internal::CaptureStderr(); // remarks by the thousand
    for (const char* name :
         {"r12_minimal.dxf", "r12_blocks.dxf", "r2000.dxf", "r2007_utf8.dxf", "r2018_unknown.dxf"}) {
        const std::string good = sample(name);
        ASSERT_FALSE(good.empty());
        for (unsigned seed = 0; seed < 1000 && !testing::Test::HasFatalFailure(); ++seed)
            check(damager(seed).damaged(good), doc, name + (" with seed " + std::to_string(seed)));
    }
    testing::internal::GetCapturedStderr();
}

TEST(DxfDamage, DamagedBinaryFilesAreReadOrRefused)
{
    document doc(1);
    testing::internal::CaptureStderr();
    for (const bool wide : {true, false}) {
        const std::string good = test::binary_dxf(sample("r12_blocks.dxf"), wide);
        for (unsigned seed = 0; seed < 1000 && !testing::Test::HasFatalFailure(); ++seed)
            check(damager(seed).damaged(good), doc, "binary with seed " + std::to_string(seed));
    }
    testing::internal::GetCapturedStderr();
}

// Every place at which a file can end.
TEST(DxfDamage, CutFilesAreRefused)
{
    document doc(1);
    for (const char* name : {"r12_minimal.dxf", "r2007_utf8.dxf"}) {
        const std::string good = sample(name);
        for (std::size_t size = 0; size + 4 < good.size(); ++size) {
            dxf_error error;
            ASSERT_EQ(parse_dxf(good.substr(0, size), "cut.dxf", doc, &error), nullptr) << name << ' ' << size;
            ASSERT_FALSE(error.message.empty());
        }
    }
}

} // namespace
} // namespace host::db

// Any bytes as a polyline file of each format: the heap is as before, and what was understood, written and
// read again, is the same.
#include <unistd.h>

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "host/core/heap.h"
#include "interchange/color_codes.h"
#include "interchange/polyline_file.h"
#include "interchange/polyline_text.h"

static void expect(bool holds, const char* what)
{
    if (holds)
        return;
    std::fprintf(stderr, "polyline_fuzz: %s\n", what);
    std::abort();
}

namespace
{

struct scratch_file {
    char path[32] = "/tmp/polyline_fuzz_XXXXXX";
    int file = mkstemp(path);
    scratch_file() { expect(file >= 0, "no temporary file can be made"); }
    ~scratch_file()
    {
        close(file);
        std::remove(path);
    }
    void fill(std::string_view bytes) const
    {
        expect(pwrite(file, bytes.data(), bytes.size(), 0) == static_cast<ssize_t>(bytes.size()) &&
                   ftruncate(file, static_cast<off_t>(bytes.size())) == 0,
               "the temporary file can't be written");
    }
};

// The file's polylines as lines again. They come out backwards in reverse order. Longer numbers than fit on
// a line that is read back clear `fits`.
std::string read_and_written(const scratch_file& file, int format, bool* fits)
{
    constexpr double LARGEST = 1e15;
    std::string text;
    file_chain* list = parse_polyline_file(file.path, format);
    for (const file_chain* chain = list; chain; chain = chain->next) {
        for (const pl_vertex* v = chain->head; v; v = v->next) {
            expect(std::isfinite(v->x) && std::isfinite(v->y) && std::isfinite(v->z), "not a number");
            expect(v->bulge == 0, "files hold no arcs");
            *fits =
                *fits && std::fabs(v->x) < LARGEST && std::fabs(v->y) < LARGEST && std::fabs(v->z) < LARGEST;
        }
        if (chain->head)
            add_polyline(text, {format, true}, chain->head, false, file_color_of(chain->color));
    }
    free_file_chains(list);
    return text;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const scratch_file file;
    const std::size_t blocks = host::heap_live_blocks(), bytes = host::heap_live_bytes();
    for (const int format : {POLYLINE_FORMAT_MICROSTATION, POLYLINE_FORMAT_OWN, POLYLINE_FORMAT_DTM}) {
        file.fill({reinterpret_cast<const char*>(data), size});
        bool fits = true;
        const std::string once = read_and_written(file, format, &fits);
        if (fits) {
            file.fill(once);
            file.fill(read_and_written(file, format, &fits));
            expect(read_and_written(file, format, &fits) == once, "written twice it is something else");
        }
    }
    expect(host::heap_live_blocks() == blocks && host::heap_live_bytes() == bytes, "the heap has grown");
    return 0;
}

// The samples of docs/polyline-files.md, read and written again.
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "interchange/color_codes.h"
#include "interchange/polyline_file.h"
#include "interchange/polyline_text.h"
#include "tests/drawing/chains.h"
#include "tests/fakes/fake_host.h"

namespace
{

// The first indented block behind a heading, without its indent.
std::string sample_behind(const std::string& heading)
{
    std::istringstream page(read_text(ZENT_SOURCE_DIR "/docs/polyline-files.md"));
    std::string line, sample;
    while (std::getline(page, line) && line != "## " + heading) {
    }
    while (std::getline(page, line)) {
        if (line.starts_with("    "))
            sample += line.substr(4) + "\n";
        else if (!sample.empty())
            break;
    }
    return sample;
}

struct sample_polyline {
    int color;
    bool closed;
    std::vector<corner> corners; // of the drawing, as they are written
};
const std::vector<sample_polyline> SAMPLE = {
    {1, true, {{0, 0, 5}, {40.5, 0, 5}, {30.25, 80, 5}}},
    {2, false, {{640000.12, 5120000.5, 101.25}, {640012, 5120004, 102.75}}},
};

struct format_case {
    const char* heading;
    int format;
    bool has_color;
};
constexpr format_case FORMATS[] = {{"Own format", POLYLINE_FORMAT_OWN, true},
                                   {"DTM format", POLYLINE_FORMAT_DTM, false},
                                   {"MicroStation format", POLYLINE_FORMAT_MICROSTATION, false}};

TEST(PolylineSamples, AreWhatIsWritten)
{
    for (const format_case& f : FORMATS) {
        std::string text;
        for (const sample_polyline& p : SAMPLE)
            add_polyline(text, {f.format, true}, make_vertices(p.corners).get(), p.closed,
                         file_color_of(p.color));
        EXPECT_EQ(sample_behind(f.heading), text) << f.heading;
    }
}

TEST(PolylineSamples, AreReadBackwards)
{
    for (const format_case& f : FORMATS) {
        host_session session;
        const std::string path = session.directory() + "sample";
        write_text(path, sample_behind(f.heading));
        file_chain* list = parse_polyline_file(path.c_str(), f.format);
        const file_chain* chain = list;
        for (auto p = SAMPLE.rbegin(); p != SAMPLE.rend(); ++p, chain = chain->next) {
            ASSERT_NE(chain, nullptr) << f.heading;
            EXPECT_EQ(chain->color, f.has_color ? p->color : 0) << f.heading;
            std::vector<corner> expected(p->corners.rbegin(), p->corners.rend());
            if (p->closed)
                expected.push_back(p->corners.back());
            EXPECT_EQ(corners_of(chain->head), expected) << f.heading;
        }
        EXPECT_EQ(chain, nullptr) << f.heading;
        free_file_chains(list);
    }
}

} // namespace

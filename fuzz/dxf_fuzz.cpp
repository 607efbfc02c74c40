// Any bytes: either a clear refusal, or a drawing that can be written and read again.
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "host/core/document.h"
#include "host/database/dxf.h"

using namespace host;

static void expect(bool holds, const char* what)
{
    if (holds)
        return;
    std::fprintf(stderr, "dxf_fuzz: %s\n", what);
    std::abort();
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    document doc(1);
    db::dxf_error error;
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const auto drawing = db::parse_dxf(bytes, "fuzz.dxf", doc, &error);
    if (!drawing) {
        expect(!error.message.empty(), "a refusal without a message");
        return 0;
    }
    for (const db::dxf_version version :
         {db::dxf_version::r12, db::dxf_version::r2000, db::dxf_version::r2007}) {
        const std::string text = db::dxf_text(*drawing, version);
        const auto again = db::parse_dxf(text, "written.dxf", doc, &error);
        if (!again)
            std::fprintf(stderr, "%s\n", error.text().c_str());
        expect(again != nullptr, "what was written can't be read");
        if (version != db::dxf_version::r12)
            expect(db::dxf_text(*again, version) == text, "written again it is something else");
    }
    return 0;
}

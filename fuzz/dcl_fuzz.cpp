// Any bytes as a DCL file, those behind the first zero byte as answers: either a refusal that names a line,
// or dialogs that every answer leaves in order.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "host/core/console.h"
#include "host/dialogs/answer_front.h"
#include "host/dialogs/dialog.h"

using namespace host::dialogs;

static void expect(bool holds, const char* what)
{
    if (holds)
        return;
    std::fprintf(stderr, "dcl_fuzz: %s\n", what);
    std::abort();
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const std::size_t zero = bytes.find('\0');
    dcl_error error;
    std::shared_ptr<const dcl_file> file = parse_dcl(bytes.substr(0, zero), "fuzz.dcl", &error);
    if (!file) {
        expect(!error.message.empty() && error.line > 0, "a refusal without a message or a line");
        return 0;
    }
    std::string history;
    host::capture_history(&history);
    for (const std::string& name : file->names) {
        dialog* made = make_dialog(file, name, nullptr);
        if (!made)
            continue;
        described(*made);
        host::answers_from_text(zero == std::string_view::npos ? "" : bytes.substr(zero + 1));
        run_dialog(*made);
        expect(innermost_dialog() == nullptr, "a dialog is left");
    }
    host::capture_history(nullptr);
    return 0;
}

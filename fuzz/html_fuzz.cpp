// Any bytes as a page of HTML, shown as wide as the first byte says: plain text comes of it, that no terminal
// takes for commands, and not much more than the page has.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "host/dialogs/html_page.h"
#include "host/files/names.h"

static void expect(bool holds, const char* what)
{
    if (holds)
        return;
    std::fprintf(stderr, "html_fuzz: %s\n", what);
    std::abort();
}

static bool is_control(unsigned char before, unsigned char byte)
{
    return (byte < ' ' && byte != '\n') || byte == 0x7F || (before == 0xC2 && byte >= 0x80 && byte < 0xA0);
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    // A line of one letter may stand behind the deepest indent, or under it a rule of the page's width.
    constexpr std::size_t MOST_A_BYTE = 400;
    const std::size_t width = size > 0 ? data[0] : 0;
    const std::string_view bytes(reinterpret_cast<const char*>(data) + (size > 0), size - (size > 0));
    const host::dialogs::html_page page = host::dialogs::parse_html(bytes);
    const std::string text = host::dialogs::html_text(page, width);
    expect(host::is_utf8(text), "the text is no UTF-8");
    expect(text.empty() || text.back() == '\n', "the last line isn't ended");
    expect(text.size() <= MOST_A_BYTE * (size + 1), "the text is out of proportion");
    unsigned char before = 0;
    for (const char c : text) {
        expect(!is_control(before, static_cast<unsigned char>(c)), "a control character is shown");
        before = static_cast<unsigned char>(c);
    }
    return 0;
}

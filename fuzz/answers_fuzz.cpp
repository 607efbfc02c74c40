// Any bytes as answers to a prompt of a program: the first byte chooses the call, the second its rules, the
// third how the drawing writes numbers. What the call hands out is finite, fits its room and belongs to its
// status, and a text that it doesn't give is not to be had from acedGetInput.
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

#include "host/core/console.h"
#include "host/core/document.h"
#include "host/core/heap.h"
#include "host/core/text.h"
#include "host/database/sysvars.h"
#include "hostapi/ads.h"

using namespace host;

namespace
{

void expect(bool holds, const char* what)
{
    if (holds)
        return;
    std::fprintf(stderr, "answers_fuzz: %s\n", what);
    std::abort();
}

// The room that a call may fill, with a mark behind it.
struct texts {
    char room[ADS_TEXT_SIZE + 1];
    texts() { std::memset(room, '#', sizeof room); }
    void check() const
    {
        expect(std::memchr(room, '\0', ADS_TEXT_SIZE) != nullptr, "a text without an end");
        expect(room[ADS_TEXT_SIZE] == '#', "a text runs over its room");
    }
};

void expect_finite(const double* values, int count)
{
    for (int i = 0; i < count; ++i)
        expect(std::isfinite(values[i]), "a value that is not finite");
}

constexpr double FAR_PLACE[3] = {1.7e308, -1.7e308, 1.0};
constexpr double BASE[3] = {3.0, 4.0, 0.0};

int ask_measure(int (*call)(const ads_point, const char*, ads_real*), const double* base)
{
    double value = 0.0;
    const int status = call(base, "How much: ", &value);
    expect_finite(&value, 1);
    return status;
}

int ask_point(const double* base)
{
    ads_point at = {0, 0, 0};
    const int status = acedGetPoint(base, "Where: ", at);
    expect_finite(at, 3);
    return status;
}

int ask_real()
{
    double value = 0.0;
    const int status = acedGetReal("Number: ", &value);
    expect_finite(&value, 1);
    return status;
}

int ask_integer()
{
    int value = 0;
    const int status = acedGetInt("Number: ", &value);
    expect(value >= -32768 && value <= 32767, "a number that is no short one");
    return status;
}

int ask_word()
{
    texts word;
    const int status = acedGetKword("Word: ", word.room);
    word.check();
    return status;
}

int ask_text(int with_blanks)
{
    texts text;
    const int status = acedGetString(with_blanks, "Text: ", text.room);
    text.check();
    return status;
}

int ask_object()
{
    ads_name name = {0, 0};
    ads_point at = {0, 0, 0};
    const int status = acedEntSel("Object: ", name, at);
    expect_finite(at, 3);
    return status;
}

int ask_drag()
{
    const ads_name none = {0, 0};
    ads_point at = {0, 0, 0};
    const int status = acedDragGen(none, "Where to: ", 0, nullptr, at);
    expect_finite(at, 3);
    return status;
}

int ask(unsigned which)
{
    const double* base = which & 16 ? BASE : nullptr;
    switch (which % 11) {
    case 0:
        return ask_point(base);
    case 1:
        return ask_measure(acedGetDist, base);
    case 2:
        return ask_measure(acedGetAngle, base);
    case 3:
        return ask_measure(acedGetOrient, base);
    case 4:
        return ask_real();
    case 5:
        return ask_integer();
    case 6:
        return ask_word();
    case 7:
        return ask_text(0);
    case 8:
        return ask_text(1);
    case 9:
        return ask_object();
    default:
        return ask_drag();
    }
}

// Expressions are LISP's own business (lisp_fuzz), and some of them reach the machine.
bool has_expression(std::string_view text)
{
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        const std::string_view line = trimmed(text.substr(0, end));
        if (line.starts_with('(') || line.starts_with('!'))
            return true;
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    return false;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size < 3)
        return 0;
    const std::string_view answers(reinterpret_cast<const char*>(data) + 3, size - 3);
    if (has_expression(answers))
        return 0;
    const std::size_t blocks = heap_live_blocks();
    std::string history;
    capture_history(&history);
    document& doc = open_document();
    db::set_int(doc, "LUNITS", 1 + data[2] % 5);
    db::set_int(doc, "AUNITS", data[2] / 5 % 5);
    db::set_int(doc, "ANGDIR", data[2] / 25 % 2);
    db::set_real(doc, "ANGBASE", data[2] / 50 % 2);
    if (data[2] >= 200)
        db::set_point(doc, "LASTPOINT", FAR_PLACE);
    answers_from_text(answers);
    while (!answers_ended()) {
        acedInitGet(data[1], data[0] & 32 ? "Yes No Undo LType,LT" : "");
        const int status = ask(data[0]);
        expect(status == RTNORM || status == RTNONE || status == RTKWORD || status == RTCAN ||
                   status == RTERROR,
               "a status that no prompt has");
        texts input;
        acedGetInput(input.room);
        input.check();
        expect(status == RTKWORD || input.room[0] == '\0', "a text that was not given");
        if (status == RTERROR && (data[0] % 11) != 9)
            break; // no answer could be right
    }
    close_all_documents();
    capture_history(nullptr);
    expect(heap_live_blocks() == blocks, "something is left on the heap");
    return 0;
}

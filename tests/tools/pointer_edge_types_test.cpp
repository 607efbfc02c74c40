// E of the pointer tool on what its prompt doesn't let through: an object that is another one when it is read
// than when it was picked.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "hostapi/ads.h"
#include "tests/tools/pointer_session.h"

namespace
{

// From its second look-up on the list of `picked` is that of `becomes`.
struct {
    ads_name picked, becomes;
    int looks_left = -1; // -1: all lists are their own
} change;

bool same_name(const ads_name a, const ads_name b)
{
    return std::memcmp(a, b, sizeof(ads_name)) == 0;
}

} // namespace

extern "C" resbuf* __real_acdbEntGet(const ads_name name);
extern "C" resbuf* __wrap_acdbEntGet(const ads_name name)
{
    if (change.looks_left < 0 || !same_name(name, change.picked))
        return __real_acdbEntGet(name);
    return __real_acdbEntGet(change.looks_left-- > 0 ? name : change.becomes);
}

namespace
{

// E with an edge that becomes `other`; what was printed behind the pick.
std::string run_to_changed_edge(const char* other)
{
    pointer_session session(std::string(other) + "(lw 0 '((20 -5) (20 5)) nil)(line '(0 0 0) '(10 0 0) nil)");
    acdbEntNext(nullptr, change.becomes);
    acdbEntNext(change.becomes, change.picked);
    change.looks_left = 1;
    const bool fits = std::string_view(other).starts_with("(line");
    const std::string printed = session.run(std::string("9,0|E|20,3") + (fits ? "|" : ""));
    change.looks_left = -1;
    return printed.substr(printed.rfind("20,3\n") + 5) + objects_text();
}

TEST(PointerEdgeTypes, LineIsAnEdgeOfTwoVertices)
{
    const std::string left = run_to_changed_edge("(line '(30 -5 0) '(30 5 0) nil)");
    EXPECT_TRUE(left.ends_with("LINE 0,0 30,0")) << left;
}

TEST(PointerEdgeTypes, AnyOtherObjectEndsTheTool)
{
    const std::string left = run_to_changed_edge("(entmake '((0 . \"CIRCLE\") (10 50.0 0.0 0.0) (40 . 5.0)))");
    EXPECT_TRUE(left.starts_with("\nError: selection not a LINE or POLYLINE")) << left;
    EXPECT_TRUE(left.ends_with("LINE 0,0 10,0")) << left;
}

} // namespace

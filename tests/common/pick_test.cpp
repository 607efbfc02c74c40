// Picking one object of certain types.
#include <gtest/gtest.h>

#include "common/pick.h"
#include "tests/fakes/fake_host.h"

namespace
{

constexpr int MISSED = 7, NOTHING_TYPED = 52;

struct pick_case {
    const char* what;
    std::deque<fake_pick> picks;
    int status;
    std::size_t asked;
    const char* printed;
};

TEST(PickOfType, AsksUntilAPickFitsOrSomethingElseEndsIt)
{
    const pick_case cases[] = {
        {"listed", {{5100, 0, "POLYLINE"}}, 5100, 1, ""},
        {"listed second", {{5100, 0, "LWPOLYLINE"}}, 5100, 1, ""},
        {"lower case in the drawing", {{5100, 0, "lwpolyline"}}, 5100, 1, ""},
        {"blanks around the type", {{5100, 0, " POLYLINE "}}, 5100, 1, ""},
        {"part of a listed name",
         {{5100, 0, "LINE"}, {5100, 0, "POLYLINE"}},
         5100,
         2,
         "\nSelection is not one of 'POLYLINE  LWPOLYLINE'."},
        {"missed", {{-5001, MISSED, ""}, {-5001, MISSED, ""}, {5100, 0, "POLYLINE"}}, 5100, 3, ""},
        {"empty answer", {{-5001, NOTHING_TYPED, ""}}, 5000, 1, ""},
        {"cancel", {{-5002, 0, ""}}, -5002, 1, ""},
        {"key word", {{-5005, 0, ""}}, -5005, 1, ""},
        {"no type", {{5100, 0, "-"}}, -5001, 1, ""},
    };
    for (const pick_case& c : cases) {
        host_session session;
        fake.picks = c.picks;
        ads_name name = {0, 0};
        ads_point point = {0.0, 0.0, 0.0};
        EXPECT_EQ(entsel_of_type("POLYLINE  LWPOLYLINE", "\nPick: ", name, point), c.status) << c.what;
        EXPECT_EQ(fake.prompts, std::vector<std::string>(c.asked, "\nPick: ")) << c.what;
        EXPECT_EQ(session.printed, c.printed) << c.what;
        EXPECT_TRUE(session.heap_is_as_before()) << c.what;
        if (c.status == RTNORM) {
            EXPECT_EQ(name[0], 7);
            EXPECT_EQ(point[1], 2.0);
        }
    }
}

} // namespace

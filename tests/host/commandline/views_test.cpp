// ZOOM, PAN, UCS.
#include "host/commandline/views.h"
#include "tests/host/commandline/session.h"

namespace host::commandline
{

namespace
{

class viewing : public session
{
protected:
    void expect_view(double x, double y, double height)
    {
        const view now = view_of(doc());
        EXPECT_NEAR(now.center.x, x, 1e-6);
        EXPECT_NEAR(now.center.y, y, 1e-6);
        EXPECT_NEAR(now.height, height, 1e-6);
        EXPECT_NEAR(db::real_variable(doc(), "VIEWSIZE"), height, 1e-6);
    }
};

TEST_F(viewing, CentreWindowAndScale)
{
    send("ZOOM|C|100,50|40");
    expect_view(100, 50, 40);
    send("_.ZOOM|0.5X");
    expect_view(100, 50, 80);
    send("ZOOM|S|2x");
    expect_view(100, 50, 40);
    send("ZOOM|W|0,0|1,100");
    expect_view(0.5, 50, 100);
    send("ZOOM|0,0|1,10");
    expect_view(0.5, 5, 10);
    send("ZOOM|C|7,8|");
    expect_view(7, 8, 10);
}

TEST_F(viewing, PreviousGoesBackStepByStep)
{
    send("ZOOM|C|100,50|40");
    send("ZOOM|C|0,0|10");
    send("ZOOM|C|5,5|20");
    send("_.ZOOM|_P");
    expect_view(0, 0, 10);
    send("_.ZOOM|_P");
    expect_view(100, 50, 40);
}

TEST_F(viewing, ExtentsShowEverythingWithALittleRoom)
{
    send("LINE|10,10|11,30|");
    send("ZOOM|E");
    expect_view(10.5, 20, 20 * 1.02);
    send("LINE|0,0|1000,0|");
    send("ZOOM|O|L|");
    const view now = view_of(doc());
    EXPECT_NEAR(now.center.x, 500, 1e-6);
    EXPECT_NEAR(now.center.y, 0, 1e-6);
}

TEST_F(viewing, ExtentsOfAnEmptyDrawingAreItsLimits)
{
    send("ZOOM|E");
    EXPECT_GT(view_of(doc()).height, 0.0);
}

TEST_F(viewing, WrongScalesFail)
{
    const view before = view_of(doc());
    EXPECT_EQ(send("ZOOM|rubbish"), RTERROR);
    EXPECT_EQ(send("ZOOM|0"), RTERROR);
    EXPECT_EQ(send("ZOOM|-1X"), RTERROR);
    expect_view(before.center.x, before.center.y, before.height);
}

TEST_F(viewing, PanMovesTheMiddle)
{
    send("ZOOM|C|0,0|10");
    send("PAN|0,0|3,4");
    expect_view(-3, -4, 10);
    send("PAN|3,4|");
    expect_view(-6, -8, 10);
}

TEST_F(viewing, OnlyTheWorldSystemCanBeChosen)
{
    EXPECT_EQ(send("UCS|W"), RTNORM);
    EXPECT_EQ(send("UCS|"), RTNORM);
    EXPECT_EQ(send("UCS|P"), RTNORM);
    EXPECT_EQ(send("UCS|3"), RTERROR);
    EXPECT_TRUE(has_shown("only the world")) << shown;
}

} // namespace

} // namespace host::commandline

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

// The extents are kept between questions; each way of changing the drawing must be seen all the same.
TEST_F(viewing, TheDrawingsExtentsFollowEveryChange)
{
    const auto extents = [&] {
        const list_ptr low = db::get_variable(doc(), "EXTMIN"), high = db::get_variable(doc(), "EXTMAX");
        const double *a = low->resval.rpoint, *b = high->resval.rpoint;
        return number(a[0]) + "," + number(a[1]) + " " + number(b[0]) + "," + number(b[1]);
    };
    const std::string nothing = extents();
    send("LINE|0,0|10,5|");
    EXPECT_EQ(extents(), "0,0 10,5");
    send("LINE|-5,0|20,7|");
    EXPECT_EQ(extents(), "-5,0 20,7");
    send("MOVE|L||0,0|0,100");
    EXPECT_EQ(extents(), "-5,0 20,107");
    send("ERASE|L|");
    EXPECT_EQ(extents(), "0,0 10,5");
    send("U");
    EXPECT_EQ(extents(), "-5,0 20,107");
    send("U");
    EXPECT_EQ(extents(), "-5,0 20,7");
    send("U");
    send("U");
    EXPECT_EQ(extents(), nothing);
    send("REDO");
    EXPECT_EQ(extents(), "0,0 10,5");
    ads_name line;
    ASSERT_EQ(acdbEntLast(line), RTNORM);
    const list_ptr groups(acdbEntGet(line));
    for (resbuf* node = groups.get(); node; node = node->rbnext)
        if (node->restype == 11)
            node->resval.rpoint[0] = 33;
    ASSERT_EQ(acdbEntMod(groups.get()), RTNORM);
    EXPECT_EQ(extents(), "0,0 33,5");
    open_document();
    EXPECT_EQ(extents(), nothing);
}

// A block's objects reach where they are inserted.
TEST_F(viewing, TheDrawingsExtentsFollowItsBlocks)
{
    send("LINE|0,0|1,1|");
    send("BLOCK|MARK|0,0|L|");
    send("INSERT|MARK|10,10|1|1|0");
    const auto highest = [&] { return db::get_variable(doc(), "EXTMAX")->resval.rpoint[0]; };
    EXPECT_DOUBLE_EQ(highest(), 11);
    const db::object_id block = data().record("BLOCK_RECORD", "MARK");
    db::find(data().modify(db::first_entity(data(), block)), 11)->point[0] = 5;
    EXPECT_DOUBLE_EQ(highest(), 15);
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

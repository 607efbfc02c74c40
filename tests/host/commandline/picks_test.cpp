// Picks: by point, by handle, nested; object snap.
#include "tests/host/commandline/session.h"

namespace host::commandline
{

namespace
{

class picks : public session
{
protected:
    void SetUp() override
    {
        session::SetUp();
        send("LINE|0,0|10,0|"); // 0
        send("LINE|0,5|10,5|"); // 1
        send("CIRCLE|20,20|5"); // 2
    }
    int pick(std::string_view answers, ads_name name, ads_point at)
    {
        answer(answers);
        return acedEntSel("\nPick: ", name, at);
    }
    int picked_index(const ads_name name)
    {
        const db::object_id id = db::id_of_name(data(), name);
        for (int i = 0; i < count(); ++i)
            if (nth(i) == id)
                return i;
        return -1;
    }
};

TEST_F(picks, APointTakesTheNearestObject)
{
    ads_name name;
    ads_point at;
    ASSERT_EQ(pick("5,0.01", name, at), RTNORM);
    EXPECT_EQ(picked_index(name), 0);
    EXPECT_DOUBLE_EQ(at[1], 0.01);
    ASSERT_EQ(pick("25,20", name, at), RTNORM);
    EXPECT_EQ(picked_index(name), 2);
}

TEST_F(picks, OfTwoObjectsInOnePlaceTheNewestIsTaken)
{
    send("LINE|0,0|10,0|");
    ads_name name;
    ads_point at;
    ASSERT_EQ(pick("5,0", name, at), RTNORM);
    EXPECT_EQ(picked_index(name), 3);
}

TEST_F(picks, ThePickBoxGrowsWithTheView)
{
    ads_name name;
    ads_point at;
    EXPECT_EQ(pick("5,1", name, at), RTERROR);
    EXPECT_EQ(errno_now(), 7);
    send("ZOOM|C|0,0|1000");
    EXPECT_EQ(pick("5,1", name, at), RTNORM);
    EXPECT_EQ(picked_index(name), 0);
}

TEST_F(picks, EmptyMissedAndCancelledPicksDiffer)
{
    ads_name name;
    ads_point at;
    EXPECT_EQ(pick("", name, at), RTERROR);
    EXPECT_EQ(errno_now(), 52);
    EXPECT_EQ(pick("100,100", name, at), RTERROR);
    EXPECT_EQ(errno_now(), 7);
    EXPECT_EQ(pick("#FFFFFF", name, at), RTERROR);
    EXPECT_EQ(errno_now(), 7);
    EXPECT_EQ(pick("^C", name, at), RTCAN);
    EXPECT_EQ(pick("rubbish|5,0", name, at), RTNORM);
}

TEST_F(picks, HandlesNameTheObjectAndThePoint)
{
    ads_name name;
    ads_point at;
    ASSERT_EQ(pick(handle(1), name, at), RTNORM);
    EXPECT_EQ(picked_index(name), 1);
    EXPECT_DOUBLE_EQ(at[1], 5);
    ASSERT_EQ(pick(handle(1) + " 7,5", name, at), RTNORM);
    EXPECT_DOUBLE_EQ(at[0], 7);
    ASSERT_EQ(pick("#last 20,25", name, at), RTNORM);
    EXPECT_EQ(picked_index(name), 2);
    EXPECT_DOUBLE_EQ(at[1], 25);
    ASSERT_EQ(pick("#LAST", name, at), RTNORM);
    EXPECT_EQ(picked_index(name), 2);
}

TEST_F(picks, AHandleWithAPointThatIsNoneIsAskedForAgain)
{
    ads_name name;
    ads_point at = {0, 0, 0};
    for (const std::string bad : {" nan,0", " 1e999,0", " somewhere", " (list 1 2)"}) {
        SCOPED_TRACE(bad);
        ASSERT_EQ(pick(handle(1) + bad + "|" + handle(0) + " 1,0", name, at), RTNORM);
        EXPECT_EQ(picked_index(name), 0);
        EXPECT_TRUE(has_shown("Invalid selection.")) << shown;
    }
    ASSERT_EQ(pick("(list (entlast) (list 1.0 (* 1e200 1e200)))|(list (entlast) (list 25.0 20.0))", name, at),
              RTNORM);
    EXPECT_EQ(picked_index(name), 2);
    EXPECT_DOUBLE_EQ(at[0], 25);
    ASSERT_EQ(pick("1e308,1e308", name, at), RTERROR);
    EXPECT_EQ(errno_now(), 7);
    ASSERT_EQ(pick(handle(0) + " 1e308,-1e308", name, at), RTNORM);
    EXPECT_DOUBLE_EQ(at[0], 1e308);
}

TEST_F(picks, AHandleOfAPartTakesTheWholeAndOneOfAnotherSpaceNothing)
{
    const auto text_of = [this](db::object_id id) {
        char text[24];
        std::snprintf(text, sizeof text, "#%lX", static_cast<unsigned long>(data().at(id).handle));
        return std::string(text);
    };
    send("3DPOLY|50,0,0|60,0,0|60,10,0|"); // 3
    const db::object_id polyline = nth(3), vertex = db::first_child(data(), polyline);
    ads_name name;
    ads_point at;
    ASSERT_EQ(pick(text_of(vertex) + " 55,0", name, at), RTNORM);
    EXPECT_EQ(picked_index(name), 3);
    ASSERT_EQ(pick(text_of(data().at(polyline).last), name, at), RTNORM) << "the end of its sequence";
    EXPECT_EQ(picked_index(name), 3);

    const db::object_id block = db::add_block(data(), "MARK");
    std::string error;
    const db::object_id inner = db::append_entity(
        data(), block,
        {data().text_group(0, "LINE"), db::point_group(10, 0, 0, 0), db::point_group(11, 1, 0, 0)}, &error);
    const db::object_id begin = data().at(block).first;
    for (const db::object_id other : {inner, begin, block, data().record("LAYER", "0"), data().model_space()}) {
        EXPECT_EQ(pick(text_of(other), name, at), RTERROR) << data().type_of(other);
        EXPECT_EQ(errno_now(), 7);
    }
    // A polyline that is gone is not found by its parts either.
    db::object_id gone = polyline;
    data().set_erased(gone, true);
    EXPECT_EQ(pick(text_of(vertex), name, at), RTERROR);
}

TEST_F(picks, WithoutObjectsThereIsNoLastOne)
{
    send("ERASE|ALL|");
    ads_name name;
    ads_point at;
    EXPECT_EQ(pick("#last", name, at), RTERROR);
    EXPECT_EQ(errno_now(), 7);
    EXPECT_EQ(pick("last", name, at), RTERROR);
    EXPECT_EQ(pick("#", name, at), RTERROR);
    EXPECT_EQ(pick("#-1", name, at), RTERROR);
}

TEST_F(picks, KeyWordsComeBeforeThePick)
{
    ads_name name;
    ads_point at;
    acedInitGet(0, "Name");
    EXPECT_EQ(pick("n", name, at), RTKWORD);
    char word[ADS_TEXT_SIZE];
    acedGetInput(word);
    EXPECT_STREQ(word, "Name");
}

TEST_F(picks, WhatIsFrozenOrOffIsNotPicked)
{
    send("LAYER|M|TOP|");
    send("LINE|0,0|10,0|");
    send("LAYER|S|0|OFF|TOP|");
    ads_name name;
    ads_point at;
    ASSERT_EQ(pick("5,0", name, at), RTNORM);
    EXPECT_EQ(picked_index(name), 0);
}

TEST_F(picks, InsideABlockTheObjectAndItsPlaceAreGiven)
{
    const db::object_id block = db::add_block(data(), "MARK");
    db::database& d = data();
    std::string error;
    const db::object_id inner = db::append_entity(
        d, block, {d.text_group(0, "LINE"), db::point_group(10, 0, 0, 0), db::point_group(11, 1, 0, 0)},
        &error);
    ASSERT_NE(inner, 0u) << error;
    send("INSERT|MARK|100,100|2|2|90");
    answer("100,101");
    ads_name name;
    ads_point at;
    ads_matrix m;
    resbuf* containers = nullptr;
    ASSERT_EQ(acedNEntSelP("Pick: ", name, at, 0, m, &containers), RTNORM);
    const list_ptr held(containers);
    EXPECT_EQ(db::id_of_name(d, name), inner);
    ASSERT_NE(containers, nullptr);
    EXPECT_EQ(db::id_of_name(d, containers->resval.rlname), nth(3));
    EXPECT_EQ(containers->rbnext, nullptr);
    EXPECT_NEAR(m[0][1], -2, 1e-9);
    EXPECT_NEAR(m[1][0], 2, 1e-9);
    EXPECT_NEAR(m[0][3], 100, 1e-9);
    EXPECT_NEAR(m[3][3], 1, 1e-9);
}

TEST_F(picks, OfAnOldPolylineTheVertexIsGiven)
{
    send("3DPOLY|50,0,0|60,0,0|60,10,0|");
    ads_name name;
    ads_point at = {60, 5, 0};
    ads_matrix m;
    resbuf* containers = nullptr;
    ASSERT_EQ(acedNEntSelP(nullptr, name, at, 1, m, &containers), RTNORM);
    const list_ptr held(containers);
    EXPECT_EQ(described(db::id_of_name(data(), name), {10}), "VERTEX 10=60,0,0");
}

struct snap_case {
    const char* modes;
    double x, y;
    bool found;
    double at_x, at_y;
};

TEST_F(picks, ObjectSnapFindsTheNamedPlace)
{
    send("LINE|3,-5|3,5|");
    const snap_case cases[] = {
        {"END", 9.99, 0, true, 10, 0},       {"_endp", 9.99, 0, true, 10, 0}, {"MID", 5.01, 0, true, 5, 0},
        {"CEN", 25, 20, true, 20, 20},       {"NEA", 7, 0.01, true, 7, 0},    {"INT", 3.01, 0.01, true, 3, 0},
        {"QUA", 24.99, 20.01, true, 25, 20}, {"MID,QUA", 5, 0, true, 5, 0},   {"END", 100, 100, false, 0, 0},
        {"CEN", 5, 0, false, 0, 0},          {"XYZ", 5, 0, false, 0, 0},
    };
    for (const snap_case& c : cases) {
        SCOPED_TRACE(c.modes);
        const ads_point at = {c.x, c.y, 0};
        ads_point out = {0, 0, 0};
        EXPECT_EQ(acedOsnap(at, c.modes, out), c.found ? RTNORM : RTERROR);
        if (c.found) {
            EXPECT_NEAR(out[0], c.at_x, 1e-9);
            EXPECT_NEAR(out[1], c.at_y, 1e-9);
        }
    }
}

} // namespace

} // namespace host::commandline

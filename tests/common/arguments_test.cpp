// Values of a call: numbers and points from nodes of any type but texts.
#include "common/arguments.h"

#include <gtest/gtest.h>

#include <cstring>

#include "hostapi/ads.h"

namespace
{

struct list_of_values {
    resbuf* head;
    const resbuf* at;
    explicit list_of_values(resbuf* list) : head(list), at(list) {}
    ~list_of_values() { acutRelRb(head); }
};

const ads_point PLACE = {1.5, -2.5, 3.5};

TEST(NextReal, TakesTheRealsOfACallInOrder)
{
    list_of_values values(acutBuildList(RTREAL, 2.5, RTREAL, -1e300, RTREAL, 0.0, 0));
    EXPECT_EQ(next_real(&values.at, 9.0), 2.5);
    EXPECT_EQ(next_real(&values.at, 9.0), -1e300);
    EXPECT_EQ(next_real(&values.at, 9.0), 0.0);
    EXPECT_EQ(values.at, nullptr);
}

TEST(NextReal, IsTheStandardWhereThereIsNone)
{
    const resbuf* none = nullptr;
    EXPECT_EQ(next_real(&none, 0.08), 0.08);
    EXPECT_EQ(none, nullptr);
    list_of_values values(acutBuildList(RTSTR, "2.5", RTREAL, 4.0, 0));
    EXPECT_EQ(next_real(&values.at, 0.08), 0.08);
    EXPECT_EQ(next_real(&values.at, 0.08), 4.0); // the text was passed over
    EXPECT_EQ(next_real(&values.at, 0.08), 0.08);
}

TEST(NextReal, TakesTheBytesOfOtherNodesAsTheyStand)
{
    list_of_values values(acutBuildList(RT3DPOINT, PLACE, RTSHORT, 5, RTNIL, 0));
    EXPECT_EQ(next_real(&values.at, 9.0), 1.5); // the x of a point
    double bytes_of_the_short;
    std::memcpy(&bytes_of_the_short, &values.at->resval, sizeof bytes_of_the_short);
    EXPECT_EQ(next_real(&values.at, 9.0), bytes_of_the_short);
    EXPECT_NE(bytes_of_the_short, 5.0);
    EXPECT_NE(next_real(&values.at, 9.0), 9.0);
    EXPECT_EQ(values.at, nullptr);
}

TEST(NextPoint, TakesThePointsOfACallInOrder)
{
    const ads_point second = {640000.25, 5120000.5, 0.0};
    list_of_values values(acutBuildList(RT3DPOINT, PLACE, RTPOINT, second, 0));
    ads_point point = {0, 0, 0};
    EXPECT_TRUE(next_point(&values.at, point));
    EXPECT_EQ(point[0], 1.5);
    EXPECT_EQ(point[1], -2.5);
    EXPECT_EQ(point[2], 3.5);
    EXPECT_TRUE(next_point(&values.at, point));
    EXPECT_EQ(point[0], 640000.25);
    EXPECT_EQ(point[1], 5120000.5);
    EXPECT_EQ(values.at, nullptr);
}

TEST(NextPoint, LeavesThePointWhereThereIsNone)
{
    list_of_values values(acutBuildList(RTSTR, "1,2", RT3DPOINT, PLACE, 0));
    ads_point point = {7, 8, 9};
    EXPECT_FALSE(next_point(&values.at, point));
    EXPECT_EQ(point[0], 7);
    EXPECT_EQ(point[2], 9);
    EXPECT_TRUE(next_point(&values.at, point)); // the text was passed over
    EXPECT_EQ(point[0], 1.5);
    EXPECT_FALSE(next_point(&values.at, point));
    EXPECT_EQ(point[0], 1.5);
}

TEST(NextPoint, TakesTheBytesOfOtherNodesAsTheyStand)
{
    list_of_values values(acutBuildList(RTREAL, 2.5, RTSHORT, 5, RTT, 0));
    ads_point point = {7, 8, 9};
    EXPECT_TRUE(next_point(&values.at, point));
    EXPECT_EQ(point[0], 2.5);
    EXPECT_TRUE(next_point(&values.at, point));
    EXPECT_TRUE(next_point(&values.at, point));
    EXPECT_EQ(values.at, nullptr);
}

} // namespace

// Selections: each mode of acedSSGet, and the dialogue with each of its words.
#include "tests/host/commandline/session.h"

namespace host::commandline
{

namespace
{

// Three points in a row, a line through the third, a circle far off.
class selecting : public session
{
protected:
    void SetUp() override
    {
        session::SetUp();
        send("POINT|1,1");      // 0
        send("POINT|2,2");      // 1
        send("POINT|3,3");      // 2
        send("LINE|0,3|50,3|"); // 3
        send("CIRCLE|80,80|5"); // 4
    }
    // "2 1 0": the members by number, or the status when there is none.
    std::string members(int status, ads_name set)
    {
        if (status != RTNORM)
            return status == RTERROR ? "RTERROR" : status == RTCAN ? "RTCAN" : "?";
        std::string out;
        std::int32_t length = 0;
        acedSSLength(set, &length);
        for (std::int32_t i = 0; i < length; ++i) {
            ads_name name;
            acedSSName(set, i, name);
            const db::object_id id = db::id_of_name(data(), name);
            for (int n = 0; n < count(); ++n)
                if (nth(n) == id)
                    out += (out.empty() ? "" : " ") + std::to_string(n);
        }
        acedSSFree(set);
        return out;
    }
    std::string get(const char* mode, const void* a = nullptr, const void* b = nullptr,
                    const resbuf* filter = nullptr)
    {
        ads_name set;
        const int status = acedSSGet(mode, a, b, filter, set);
        return members(status, set);
    }
    std::string asked(std::string_view answers, const char* mode = nullptr)
    {
        answer(answers);
        shown.clear();
        return get(mode);
    }
    static list_ptr points(std::initializer_list<std::pair<double, double>> all)
    {
        list_builder list;
        for (const auto& [x, y] : all) {
            const double p[] = {x, y, 0};
            list.add(rb_point(RT3DPOINT, p));
        }
        return list_ptr(list.take());
    }
};

TEST_F(selecting, ModesThatNeedNoUser)
{
    const ads_point a = {0, 0, 0}, b = {2.5, 2.5, 0}, c = {4, 4, 0};
    EXPECT_EQ(get("X"), "4 3 2 1 0");
    EXPECT_EQ(get("_X"), "4 3 2 1 0");
    EXPECT_EQ(get("A"), "4 3 2 1 0");
    EXPECT_EQ(get("_ALL"), "4 3 2 1 0");
    EXPECT_EQ(get("L"), "4");
    EXPECT_EQ(get("P"), "4") << "the last search";
    EXPECT_EQ(get("W", a, b), "1 0");
    EXPECT_EQ(get("_W", b, a), "1 0") << "any two corners";
    EXPECT_EQ(get("W", a, c), "2 1 0");
    EXPECT_EQ(get("C", a, c), "3 2 1 0");
    EXPECT_EQ(get("I"), "RTERROR");
    EXPECT_EQ(get("Q"), "RTERROR") << "no such mode";
    EXPECT_EQ(get("W", a), "RTERROR") << "a corner is missing";
}

TEST_F(selecting, PolygonsAndFences)
{
    const list_ptr triangle = points({{0, 0}, {10, 0}, {0, 10}});
    EXPECT_EQ(get("WP", triangle.get()), "2 1 0");
    EXPECT_EQ(get("_CP", triangle.get()), "3 2 1 0");
    const list_ptr fence = points({{10, 0}, {10, 10}, {90, 90}});
    EXPECT_EQ(get("F", fence.get()), "4 3");
}

TEST_F(selecting, APointAloneIsAPick)
{
    const ads_point at = {25, 3, 0}, off = {25, 30, 0};
    EXPECT_EQ(get(nullptr, at), "3");
    EXPECT_EQ(get(nullptr, off), "RTERROR");
}

TEST_F(selecting, FiltersLetThroughWhatFits)
{
    list_builder list;
    list.add(rb_text(0, "POINT,CIRCLE"));
    const list_ptr filter(list.take());
    EXPECT_EQ(get("X", nullptr, nullptr, filter.get()), "4 2 1 0");
    answer("all|");
    EXPECT_EQ(get(nullptr, nullptr, nullptr, filter.get()), "4 2 1 0");
    EXPECT_TRUE(has_shown("1 were filtered out.")) << shown;
}

struct dialogue_case {
    const char* answers;
    const char* members;
};

TEST_F(selecting, TheDialogueTakesEachWord)
{
    const dialogue_case cases[] = {
        {"all|", "4 3 2 1 0"},
        {"ALL|r|last|", "3 2 1 0"},
        {"l|", "4"},
        {"last|", "4"},
        {"w 0,0 2.5,2.5|", "1 0"},
        {"w|0,0|2.5,2.5|", "1 0"},
        {"_W|0,0|2.5,2.5|", "1 0"},
        {"c 0,0 4,4|", "3 2 1 0"},
        {"wp 0,0 10,0 0,10|", "2 1 0"},
        {"cp|0,0|10,0|0,10||", "3 2 1 0"},
        {"f|10,0|10,10||", "3"},
        {"f 10,0 10,10|", "3"},
        {"1,1|2,2|", "0 1"},
        {"2,2|1,1|", "1 0"},
        {"25,3|", "3"},
        {"50,50|", "RTERROR"},
        {"|", "RTERROR"},
        {"^C", "RTCAN"},
        {"all|r|2,2|a|2,2|", "4 3 2 0 1"},
        {"all|remove|w 0,0 2.5,2.5|", "4 3 2"},
        {"all|r|all|", "RTERROR"},
        {"1,1|2,2|u|", "0"},
        {"rubbish|1,1|", "0"},
        {"p|1,1|", "0"},
        {"si|1,1", "0"},
        {"1,1|1,1|", "0"},
    };
    for (const dialogue_case& c : cases) {
        SCOPED_TRACE(c.answers);
        SetUp(); // no previous selection
        EXPECT_EQ(asked(c.answers), c.members);
        EXPECT_FALSE(answers_ended()) << shown;
    }
}

TEST_F(selecting, HandlesAndPrevious)
{
    EXPECT_EQ(asked(handle(1) + "|" + handle(0) + "|"), "1 0");
    EXPECT_EQ(asked("p|#last|"), "1 0 4");
    EXPECT_EQ(asked("#ABCDEF|1,1|"), "0");
}

TEST_F(selecting, APointBesideEverythingBeginsABox)
{
    EXPECT_EQ(asked("0,0.5|2.5,2.5|"), "1 0") << "to the right a window";
    EXPECT_EQ(asked("40,4|30,2|"), "3") << "to the left a crossing one";
    EXPECT_EQ(asked("60,60|1,1|"), "3 2 1 0") << "both corners of a box";
}

TEST_F(selecting, CountsAreTold)
{
    asked("1,1|1,1|w 0,0 4,4|r|2,2|");
    EXPECT_TRUE(has_shown("1 found\n")) << shown;
    EXPECT_TRUE(has_shown("1 found (1 duplicate), 1 total\n")) << shown;
    EXPECT_TRUE(has_shown("3 found (1 duplicate), 3 total\n")) << shown;
    EXPECT_TRUE(has_shown("1 found, 1 removed, 2 total\n")) << shown;
}

TEST_F(selecting, SingleTakesOneAnswer)
{
    EXPECT_EQ(asked("1,1|2,2|", ":S"), "0");
    EXPECT_EQ(asked("1,1", "_:S:E"), "0");
    EXPECT_EQ(asked("60,60", "_+.:E:S"), "RTERROR");
    send("POINT|1,1"); // 5
    EXPECT_EQ(asked("1,1", ":E:S"), "5 0");
}

TEST_F(selecting, LockedLayersAreLeftOutWhenAskedSo)
{
    send("LAYER|M|FIXED|");
    send("POINT|4,4"); // 5
    send("LAYER|S|0|LO|FIXED|");
    EXPECT_EQ(asked("all|", "_:L"), "4 3 2 1 0");
    EXPECT_EQ(asked("all|"), "5 4 3 2 1 0");
}

TEST_F(selecting, FrozenLayersCountOnlyForTheWholeDrawing)
{
    send("LAYER|M|DEEP|");
    send("POINT|4,4"); // 5
    send("LAYER|S|0|F|DEEP|");
    const ads_point a = {0, 0, 0}, b = {5, 5, 0};
    EXPECT_EQ(get("X"), "5 4 3 2 1 0");
    EXPECT_EQ(get("A"), "4 3 2 1 0");
    EXPECT_EQ(get("C", a, b), "3 2 1 0");
}

TEST_F(selecting, ErrnoTellsAnEmptySelection)
{
    EXPECT_EQ(asked("|"), "RTERROR");
    EXPECT_EQ(errno_now(), 52);
}

TEST_F(selecting, LargeSetsAreMadeAndCutAtOnce)
{
    db::database& d = data();
    for (int i = 0; i < 20000; ++i)
        db::make_entity(d, {d.text_group(0, "POINT"), db::point_group(10, i, 1000, 0)}, nullptr);
    answer("all|r|w 0,999 9999.5,1001|a|w 0,999 0.5,1001|");
    ads_name set;
    ASSERT_EQ(acedSSGet(nullptr, nullptr, nullptr, nullptr, set), RTNORM);
    std::int32_t length = 0;
    acedSSLength(set, &length);
    EXPECT_EQ(length, 5 + 10000 + 1);
    acedSSFree(set);
}

} // namespace

} // namespace host::commandline

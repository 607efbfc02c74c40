// LAYER, COLOR, LINETYPE.
#include "tests/host/commandline/session.h"

namespace host::commandline
{

namespace
{

class layers : public session
{
protected:
    // "colour flags linetype"
    std::string state(std::string_view name)
    {
        const db::object_id id = data().record("LAYER", name);
        if (!id)
            return "none";
        const db::group_list& g = data().at(id).groups;
        return std::to_string(db::int_of(g, 62, 0)) + " " + std::to_string(db::int_of(g, 70, 0)) + " " +
               std::string(data().text_of(g, 6));
    }
    std::string current() { return db::text_variable(doc(), "CLAYER"); }
};

TEST_F(layers, MakeSetAndColourAsProgramsSendThem)
{
    EXPECT_EQ(acedCommand(RTSTR, "_.LAYER", RTSTR, "_M", RTSTR, "FENCE", RTSTR, "_C", RTSHORT, 3, RTSTR,
                          "FENCE", RTSTR, "", 0),
              RTNORM);
    EXPECT_EQ(current(), "FENCE");
    EXPECT_EQ(state("FENCE"), "3 0 Continuous");
    EXPECT_EQ(send("_.LAYER|_T|0|_S|0|"), RTNORM);
    EXPECT_EQ(current(), "0");
}

TEST_F(layers, LineweightsEndAtTheHeaviest)
{
    for (const auto& [typed, stored] : {std::pair("0.5", 50), std::pair("1e300", 211)}) {
        EXPECT_EQ(send(std::string("LAYER|LW|") + typed + "|0|"), RTNORM);
        EXPECT_EQ(db::int_of(data().at(data().record("LAYER", "0")).groups, 370, 0), stored) << typed;
    }
}

struct option_case {
    const char* name;
    const char* line;
    const char* layer;
    const char* expected;
};

const option_case CASES[] = {
    {"New", "LAYER|N|A1,B1|", "B1", "7 0 Continuous"},
    {"NewFullWord", "-LAYER|NEW|A1|", "A1", "7 0 Continuous"},
    {"ColorByName", "LAYER|N|A1|C|Cyan|A1|", "A1", "4 0 Continuous"},
    {"ColorByLetter", "LAYER|N|A1|C|g|A1|", "A1", "3 0 Continuous"},
    {"ColorWildCards", "LAYER|N|A1,A2|C|2|A*|", "A2", "2 0 Continuous"},
    {"ColorOfTheCurrentByEnter", "LAYER|M|A1|C|5||", "A1", "5 0 Continuous"},
    {"Off", "LAYER|N|A1|OFF|a1|", "A1", "-7 0 Continuous"},
    {"OffAndOn", "LAYER|N|A1|OFF|A1|ON|A1|", "A1", "7 0 Continuous"},
    {"Freeze", "LAYER|N|A1|F|A1|", "A1", "7 1 Continuous"},
    {"FreezeAndThaw", "LAYER|N|A1|FREEZE|A1|THAW|A1|", "A1", "7 0 Continuous"},
    {"Lock", "LAYER|N|A1|LO|A1|", "A1", "7 4 Continuous"},
    {"LockFullWord", "LAYER|N|A1|LOCK|A1|", "A1", "7 4 Continuous"},
    {"Unlock", "LAYER|N|A1|LO|A1|U|A1|", "A1", "7 0 Continuous"},
    {"UnlockShort", "LAYER|N|A1|LO|A1|UN|A1|", "A1", "7 0 Continuous"},
    {"FreezeTheCurrentIsRefused", "LAYER|M|A1|F|A1|", "A1", "7 0 Continuous"},
    {"OffTheCurrentAsks", "LAYER|M|A1|OFF|A1|N|", "A1", "7 0 Continuous"},
    {"OffTheCurrentWithYes", "LAYER|M|A1|OFF|A1|Y|", "A1", "-7 0 Continuous"},
    {"MakeTurnsOnAndThaws", "LAYER|N|A1|OFF|A1|F|A1|M|A1|", "A1", "7 0 Continuous"},
    {"ColorKeepsOff", "LAYER|N|A1|OFF|A1|C|2|A1|", "A1", "-2 0 Continuous"},
    {"UnknownLinetypeThenContinuous", "LAYER|N|A1|LT|NOSUCH||A1|", "A1", "7 0 Continuous"},
    {"Linetype", "LAYER|N|A1|L|ByLayer|A1|", "A1", "7 0 ByLayer"},
};

class layer_options : public layers, public testing::WithParamInterface<option_case>
{
};

TEST_P(layer_options, SentAndTyped)
{
    send(GetParam().line);
    EXPECT_EQ(state(GetParam().layer), GetParam().expected);
    send("POINT|1,1"); // the command has ended: this is another
    EXPECT_EQ(count(), 1);
}

TEST_P(layer_options, Typed)
{
    type(GetParam().line);
    EXPECT_EQ(state(GetParam().layer), GetParam().expected);
    EXPECT_FALSE(answers_ended()) << shown;
}

INSTANTIATE_TEST_SUITE_P(Options, layer_options, testing::ValuesIn(CASES), name_of_case());

TEST_F(layers, SetOfAMissingLayerFails)
{
    EXPECT_EQ(send(".layer|_S|NOSUCH|"), RTERROR);
    EXPECT_EQ(current(), "0");
}

TEST_F(layers, BadNamesAreRefused)
{
    type("LAYER|M|A<B|GOOD||");
    EXPECT_EQ(current(), "GOOD");
    EXPECT_TRUE(has_shown("Invalid layer name \"A<B\".")) << shown;
}

// A program goes on sending values that were meant for other prompts: they must not become names.
struct refused_case {
    const char* name;
    const char* sent;
    const char* message;
    const char* current;
    int made; // layers beside 0
};

const refused_case REFUSED[] = {
    {"MakeOfAnInvalidName", "_.LAYER|_M|A<B|_C|3|A<B|", "LAYER: Invalid layer name \"A<B\".", "0", 0},
    {"MakeOfAnInvalidNameThatIsACommandElsewhere", "_.LAYER|_M|A<B|LINE|1,1|2,2|", "Invalid layer name", "0",
     0},
    {"NewOfAnInvalidName", "_.LAYER|_N|GOOD,A<B|_C|3|GOOD|", "LAYER: Invalid layer name \"A<B\".", "0", 0},
    {"SetOfAMissingLayer", "_.LAYER|_S|NOSUCH|_N|POINT|", "LAYER: Cannot find layer \"NOSUCH\".", "0", 0},
    {"SetOfAFrozenLayer", "_.LAYER|_N|ICE|_F|ICE|_S|ICE|_C|3|ICE|", "LAYER: Cannot set a frozen layer current.",
     "0", 1},
    {"ColourOfNoLayer", "_.LAYER|_M|FENCE|_C|256|FENCE|", "LAYER: A color number from 1 to 255 or", "FENCE", 1},
    {"ColourWithALayerNamedAsAColour", "_.LAYER|_M|RED|_C|256|RED|", "LAYER: A color number from 1 to 255 or",
     "RED", 1},
};

class refused_values : public layers, public testing::WithParamInterface<refused_case>
{
};

TEST_P(refused_values, EndTheCommandAndItsCall)
{
    const refused_case& c = GetParam();
    EXPECT_EQ(send(c.sent), RTERROR);
    EXPECT_TRUE(has_shown(c.message)) << shown;
    EXPECT_FALSE(has_shown("Unknown command")) << shown;
    EXPECT_EQ(current(), c.current);
    int layers_now = -1; // the standard layer
    const db::object_id table = data().table("LAYER");
    for (db::object_id id = data().at(table).first; id; id = data().at(id).next)
        layers_now += !data().at(id).erased;
    EXPECT_EQ(layers_now, c.made);
    EXPECT_EQ(count(), 0);
    EXPECT_EQ(send("POINT|1,1"), RTNORM); // no command was left open to take this
    EXPECT_EQ(count(), 1);
    EXPECT_EQ(send("2,2"), RTERROR) << "a value with no command";
    EXPECT_EQ(count(), 1);
}

INSTANTIATE_TEST_SUITE_P(Programs, refused_values, testing::ValuesIn(REFUSED), name_of_case());

TEST_F(layers, ListingNamesEachLayer)
{
    send("LAYER|N|FENCE|");
    type("LAYER|?|*||");
    EXPECT_TRUE(has_shown("FENCE")) << shown;
    EXPECT_TRUE(has_shown("Current layer: \"0\"")) << shown;
}

TEST_F(layers, LinetypesAreLoadedOnceAndDefined)
{
    send("LINETYPE|L|HIDDEN2|acad.lin|");
    const db::object_id id = data().record("LTYPE", "HIDDEN2");
    ASSERT_NE(id, 0u);
    EXPECT_EQ(described(id, {40, 49, 73}), "LTYPE 73=2 40=0.1875 49=0.125 49=-0.0625");
    type("LINETYPE|L|HIDDEN2|acad.lin|N||");
    EXPECT_TRUE(has_shown("already loaded")) << shown;
    type("LINETYPE|L|NOSUCH|||");
    EXPECT_TRUE(has_shown("Linetype \"NOSUCH\" not found.")) << shown;
}

TEST_F(layers, ColorTakesNumbersAndNames)
{
    for (const auto& [said, kept] :
         {std::pair{"5", "5"}, {"red", "1"}, {"BYLAYER", "BYLAYER"}, {"ByBlock", "BYBLOCK"}}) {
        send(std::string("COLOR|") + said);
        EXPECT_EQ(db::text_variable(doc(), "CECOLOR"), kept);
    }
    type("COLOR|mauve|300|7");
    EXPECT_EQ(db::text_variable(doc(), "CECOLOR"), "7");
    EXPECT_TRUE(has_shown("A color number or standard color name is required.")) << shown;
}

} // namespace

} // namespace host::commandline

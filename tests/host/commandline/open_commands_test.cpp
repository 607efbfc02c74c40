// Commands that wait between the calls of a program, pauses, cancels, reactors.
#include "host/core/reactors.h"
#include "hostapi/dbobjects.h"
#include "hostapi/editor.h"
#include "tests/host/commandline/session.h"

namespace host::commandline
{

namespace
{

class open_commands : public session
{
};

TEST_F(open_commands, ACommandGoesOnWithTheNextCall)
{
    EXPECT_EQ(send("LINE"), RTNORM);
    EXPECT_EQ(send("0,0|5,0"), RTNORM);
    EXPECT_EQ(count(), 1);
    send("5,5");
    send("");
    EXPECT_EQ(objects({10, 11}), "LINE 10=0,0,0 11=5,0,0 / LINE 10=5,0,0 11=5,5,0");
    EXPECT_EQ(send("POINT|1,1"), RTNORM);
    EXPECT_EQ(count(), 3);
}

TEST_F(open_commands, AnEmptyCallCancelsTheCommand)
{
    send("LINE|0,0|5,0");
    EXPECT_EQ(acedCmd(nullptr), RTNORM);
    EXPECT_EQ(send("9,9"), RTERROR) << "no command waits for a point";
    EXPECT_EQ(count(), 1);
    send("LINE|0,0");
    EXPECT_EQ(acedCommand(RTNONE), RTNORM);
    EXPECT_EQ(send("POINT|1,1"), RTNORM);
    EXPECT_EQ(count(), 2);
}

TEST_F(open_commands, AnotherCommandsNameCancelsTheOneThatWaits)
{
    for (const char* next : {"_.POINT|1,1", "POINT|1,1", ".point|1,1"}) {
        SCOPED_TRACE(next);
        const int before = count();
        send("LINE|0,0|5,0");
        EXPECT_EQ(send(next), RTNORM);
        EXPECT_EQ(count(), before + 2);
    }
}

TEST_F(open_commands, ANameThatIsAnAnswerIsTakenAsOne)
{
    send("LAYER|M");
    send("POINT");
    send("");
    EXPECT_EQ(db::text_variable(doc(), "CLAYER"), "POINT");
}

TEST_F(open_commands, OneCallMayHoldSeveralCommands)
{
    EXPECT_EQ(send("POINT|1,1|CIRCLE|0,0|2|LINE|0,0|1,0|"), RTNORM);
    EXPECT_EQ(objects({}), "POINT / CIRCLE / LINE");
}

TEST_F(open_commands, APauseTakesOneAnswerOfTheUser)
{
    answer("nonsense|7,8|99,99");
    send("LINE|0,0|\\|9,9|");
    EXPECT_EQ(objects({10, 11}), "LINE 10=0,0,0 11=7,8,0 / LINE 10=7,8,0 11=9,9,0");
}

TEST_F(open_commands, CancelAtAPauseEndsTheCall)
{
    answer("^C");
    EXPECT_EQ(send("LINE|0,0|5,0|\\|POINT|1,1"), RTCAN);
    EXPECT_EQ(objects({}), "LINE");
}

TEST_F(open_commands, CancelAtEachPromptOfATypedCommandKeepsWhatIsDone)
{
    type("LINE|^C");
    EXPECT_EQ(count(), 0);
    type("LINE|0,0|1,0|^C");
    EXPECT_EQ(count(), 1);
    type("PLINE|0,0|1,0|^C");
    EXPECT_EQ(objects({}), "LINE / LWPOLYLINE");
    EXPECT_TRUE(has_shown("*Cancel*"));
}

TEST_F(open_commands, ABreakCancelsTheCommand)
{
    send("LINE|0,0|1,0");
    request_break();
    EXPECT_EQ(send("2,0|3,0"), RTCAN);
    EXPECT_EQ(count(), 1);
    EXPECT_EQ(send("POINT|1,1"), RTNORM);
}

TEST_F(open_commands, ARefusedValueIsReported)
{
    EXPECT_EQ(send("LINE|0,0|rubbish|5,0|"), RTERROR);
    EXPECT_EQ(count(), 1);
    EXPECT_EQ(send("LINE|0,0|5,0|"), RTNORM);
}

TEST_F(open_commands, ACommandLeftOpenByAnExpressionGoesOnWithTheUser)
{
    answer("(command \"LINE\" '(0 0) '(5 0))|5,5|");
    run_session(doc());
    EXPECT_EQ(objects({11}), "LINE 11=5,0,0 / LINE 11=5,5,0");
}

TEST_F(open_commands, TheEndOfAnExpressionCancelsWhatItLeftOpen)
{
    send("LINE|0,0|5,0");
    expression_ended();
    EXPECT_EQ(send("POINT|1,1"), RTNORM);
    EXPECT_EQ(objects({}), "LINE / POINT");
}

TEST_F(open_commands, EveryKindOfValueIsPassed)
{
    EXPECT_EQ(acedCommand(RTSTR, "_.CIRCLE", RT3DPOINT, point3{1, 2, 3}.data(), RTREAL, 4.5, RTNONE), RTNORM);
    EXPECT_EQ(acedCommand(RTSTR, "_.COLOR", RTSHORT, 3, 0), RTNORM);
    ads_name name;
    ASSERT_EQ(acdbEntLast(name), RTNORM);
    EXPECT_EQ(
        acedCommand(RTSTR, "_.CHPROP", RTENAME, name, RTSTR, "", RTSTR, "_COLOR", RTSHORT, 5, RTSTR, "", 0),
        RTNORM);
    EXPECT_EQ(objects({10, 40, 62}), "CIRCLE 62=5 10=1,2,3 40=4.5");
    EXPECT_EQ(db::text_variable(doc(), "CECOLOR"), "3");
}

class listening : public AcEditorReactor
{
public:
    void commandWillStart(const char* name) override { heard += std::string("start ") + name + "; "; }
    void commandEnded(const char* name) override { heard += std::string("end ") + name + "; "; }
    void commandCancelled(const char* name) override { heard += std::string("cancel ") + name + "; "; }
    void commandFailed(const char* name) override { heard += std::string("fail ") + name + "; "; }
    std::string heard;
};

TEST_F(open_commands, ReactorsHearOfEachCommand)
{
    listening reactor;
    auto* editor = static_cast<AcEditor*>(acrxSysRegistry()->at("AcEditor"));
    editor->addReactor(&reactor);
    send("_.point|1,1");
    send("LINE|0,0");
    acedCmd(nullptr);
    send("ARC|0,0|1,0|2,0");
    type("z|E");
    editor->removeReactor(&reactor);
    EXPECT_EQ(reactor.heard, "start POINT; end POINT; start LINE; cancel LINE; start ARC; fail ARC; "
                             "start ZOOM; end ZOOM; ");
}

int registered_runs = 0;
void registered()
{
    ++registered_runs;
}

TEST_F(open_commands, ModuleCommandsRunByName)
{
    auto* stack = static_cast<AcEdCommandStack*>(acrxSysRegistry()->at("ACAD_REGISTERED_COMMANDS"));
    stack->addCommand("GROUP", "_SURVEYIT", "SURVEYIT", 0, registered);
    stack->addCommand("GROUP", "SURVEYTOO", "SURVEYTOO", 0, registered);
    registered_runs = 0;
    EXPECT_EQ(send("SURVEYTOO"), RTNORM);
    type("'_.surveytoo");
    EXPECT_EQ(registered_runs, 2);
    stack->removeGroup("GROUP");
}

TEST_F(open_commands, LispCommandsRunWhenTyped)
{
    answer("(defun c:twopoints () (command \"POINT\" '(1 1)) (command \"POINT\" '(2 2)) (princ))|twopoints");
    run_session(doc());
    EXPECT_EQ(objects({10}), "POINT 10=1,1,0 / POINT 10=2,2,0");
}

TEST_F(open_commands, UndoMarksAndGroups)
{
    send("POINT|1,1");
    send("UNDO|BE");
    send("POINT|2,2");
    send("POINT|3,3");
    send("UNDO|E");
    send("U");
    EXPECT_EQ(objects({10}), "POINT 10=1,1,0");
    send("REDO");
    EXPECT_EQ(count(), 3);
    send("UNDO|M");
    send("POINT|4,4");
    send("POINT|5,5");
    send("UNDO|B");
    EXPECT_EQ(count(), 3);
    send("POINT|4,4");
    send("POINT|5,5");
    send("UNDO|2");
    EXPECT_EQ(count(), 3);
}

} // namespace

} // namespace host::commandline

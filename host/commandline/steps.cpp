// steps.cpp: U, UNDO, REDO over the steps that the database keeps.
#include "host/commandline/edit_commands.h"
#include "host/core/document.h"

namespace host::commandline
{

namespace
{

task<> control(command_io& io)
{
    question q(want::key_word, "\nEnter an UNDO control option [All/None/One] <All>: ");
    q.keys("All None One");
    const answer given = co_await io.ask(std::move(q));
    io.data().undo_enable(given.none() || given.text != "None");
}

} // namespace

task<> u_command(command_io& io)
{
    if (!io.data().undo_back())
        io.say("Everything has been undone.");
    co_return;
}

task<> redo_command(command_io& io)
{
    if (!io.data().redo())
        io.say("Nothing to redo.");
    co_return;
}

task<> undo_command(command_io& io)
{
    question q(want::integer,
               "\nEnter the number of operations to undo or [Auto/Control/BEgin/End/Mark/Back] <1>: ");
    q.keys("Auto Control BEgin Group End Mark Back").with(RSG_NOZERO | RSG_NONEG);
    const answer given = co_await io.ask(std::move(q));
    db::database& db = io.data();
    if (given.is("BEgin") || given.is("Group")) {
        db.undo_mark(true);
    } else if (given.is("End")) {
        db.undo_group_end();
    } else if (given.is("Mark")) {
        db.undo_mark(false);
    } else if (given.is("Back")) {
        if (!db.undo_to_mark())
            io.say("Everything has been undone.");
    } else if (given.is("Control")) {
        co_await control(io);
    } else if (given.is("Auto")) {
        question on(want::key_word, "\nEnter UNDO Auto mode [ON/OFF] <On>: ");
        on.keys("ON OFF");
        const answer ignored = co_await io.ask(std::move(on)); // menus would be grouped; there are none
        static_cast<void>(ignored);
    } else {
        for (int n = given.ok() ? given.integer : 1; n > 0; --n)
            if (!db.undo_back()) {
                io.say("Everything has been undone.");
                break;
            }
    }
}

} // namespace host::commandline

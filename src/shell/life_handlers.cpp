#include "shell/life_handlers.h"

#include "common/arguments.h"
#include "launch/coordinate_program.h"
#include "launch/help.h"
#include "launch/programs.h"
#include "settings/startup_wizard.h"
#include "settings/title.h"
#include "shell/operations.h"
#include "shell/screen_marks.h"
#include "shell/status_pane.h"
#include "symbols/preview_tiles.h"

void op_coordinate_program(op_call& call)
{
    coordinate_program_launch(call.args);
}

void op_tile_preview(op_call& call)
{
    const char* name = next_text(&call.args, "");
    symbol_tile_preview(name, next_short(&call.args, 0));
}

void op_title(op_call&)
{
    title_refresh();
}

void op_open_pdf(op_call& call)
{
    if (const char* path = next_text(&call.args, nullptr))
        open_pdf(path);
}

void op_help(op_call&)
{
    help_show();
}

void op_wizard(op_call&)
{
    startup_wizard();
}

void op_html_help(op_call& call)
{
    if (const char* file = next_text(&call.args, nullptr))
        html_help(0, file, 0, 0);
}

void op_status_text(op_call& call)
{
    status_text(next_text(&call.args, ""));
}

// The text says nothing that is used, but a call without one is none. Only a point in space sets a mark.
void op_screen_mark(op_call& call)
{
    if (next_text(&call.args, "")[0] == '\0')
        return;
    const int action = next_short(&call.args, 0);
    if (action < 0)
        screen_mark_clear(-action);
    else if (call.args && call.args->restype == RT3DPOINT)
        screen_mark_set(action, call.args->resval.rpoint[0], call.args->resval.rpoint[1]);
}

void op_run_and_wait(op_call& call)
{
    if (const char* command_line = next_text(&call.args, nullptr))
        run_and_wait(command_line, 1);
}

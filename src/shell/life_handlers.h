// life_handlers.h: operations for settings, help, other programs and the screen.
#pragma once

struct op_call;

void op_coordinate_program(op_call& call);
void op_tile_preview(op_call& call);
void op_title(op_call& call);
void op_open_pdf(op_call& call);
void op_help(op_call& call);
void op_wizard(op_call& call);
void op_html_help(op_call& call);
void op_status_text(op_call& call);
void op_screen_mark(op_call& call);
void op_run_and_wait(op_call& call);

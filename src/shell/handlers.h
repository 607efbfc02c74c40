// handlers.h: operations that the shell does by itself or that are one call into another subsystem. Each
// reads its nodes from the call and leaves its value with the host.
#pragma once

struct op_call;

void op_beep(op_call& call);
void op_write_polylines(op_call& call);
void op_system(op_call& call);
void op_select_all_of_application(op_call& call);
void op_free_selection(op_call& call);
void op_select_of_application(op_call& call);
void op_save_settings(op_call& call);
void op_read_polylines(op_call& call);
void op_find_symbol(op_call& call);
void op_remember_file(op_call& call);
void op_config_directory(op_call& call);
void op_pick_file(op_call& call);
void op_compact_path(op_call& call);
void op_check_name(op_call& call);

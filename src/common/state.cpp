// state.cpp: the variables that all of the module shares.
#include "common/directories.h"
#include "common/tracking.h"

int cmd_active = 0;
int lisp_active = 0;
char current_function[255] = "";
int help_pending = 0;

char data_dir[128] = "";
char lsp_dir[128] = "";
char symbol_dir[256] = "";
char tmp_dir[256] = "";

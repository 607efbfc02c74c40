// pointer_help.h: the pointer tool's list of keys.
#pragma once

// Shows it on the text screen and waits for Enter.
void show_pointer_help();

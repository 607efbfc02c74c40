// memory_probe.h: a pair for the debugger: how much of the machine's memory a piece of work took.
#pragma once

// Notes the label and the memory that is available now.
void memory_probe_start(const char* label);
// Prints how much less is available now.
void memory_probe_report();

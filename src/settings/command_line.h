// command_line.h: text for the host's command line.
#pragma once

// Hands a text to the host as if it had been typed; it runs when what is running now has ended.
void send_to_command_line(const char* text);

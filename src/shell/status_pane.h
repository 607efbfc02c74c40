// status_pane.h: the module's pane at the right end of the host's status bar.
#pragma once

// Shows a text. The pane is made by the first one, which settles its width.
void status_text(const char* text);

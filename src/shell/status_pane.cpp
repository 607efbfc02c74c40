#include "shell/status_pane.h"

void status_text(const char*) {}

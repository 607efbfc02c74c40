// answer_front.h: dialogs run by answers, from a file or from a person at a terminal.
#pragma once

#include "host/dialogs/dialog.h"

namespace host::dialogs
{

// Until the dialog is done. Without answers it is cancelled.
void run_by_answers(dialog& dlg);

// The tiles with their labels and values, a line each: what the answer "?" shows.
std::string described(const dialog& dlg);

} // namespace host::dialogs

#include "settings/startup_wizard.h"

wizard_links wizard_calls{};

void startup_wizard() {}

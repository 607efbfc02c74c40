// commands.h: the host commands that the module registers: ZTHELP, ZTCLOSE, ZTOPEN.
#pragma once

void commands_register();
void commands_remove();

// coordinate_program.h: the stand-alone coordinate geometry program and its configuration file.
#pragma once

#include "hostapi/adsdef.h"

// Writes the job's directories into config.pik and runs the program by a batch file. The list holds up to
// three texts: the program's directory with its separator, the data file's full path, a text for line 7.
void coordinate_program_launch(const resbuf* first_node);

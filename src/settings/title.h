// title.h: the title of the host's main window.
#pragma once

// Shows the job's coordinate file (crdfile) in the title.
void title_refresh();

#include "tools/pointer_help.h"

#include "hostapi/ads.h"

namespace
{

constexpr const char* HELP_LINES[] = {
    "D  - Draw mode        Actions draw or extend the line or polyline\n",
    "M  - Move mode        Actions only move the pointer\n",
    "#  - Number           Distance to draw or move\n",
    "R  - Right rotate     Rotates clockwise 90 degrees\n",
    "L  - Left rotate      Rotates counter-clockwise 90 degrees\n",
    "E  - Extend to Edge   Extends to a boundary edge\n",
    "T# - Total distance   Sets current segement to specified distance\n",
    "A# - Angle change     Rotates pointer by specified # of degrees (dd.mmss)\n",
    "A  - Align            Rotates pointer to align with line or polyline segment\n",
    "B  - Bearing          Sets pointer direction by bearing in format:\n",
    "                      Qdd.mmss with Q-quadrant, d-degrees, m-minutes and\n",
    "                      s-seconds. (e.g. 130.1005 is NE 30 deg, 10 min, 5 sec)\n",
    "S  - Switch direction Reverses the pointer direction\n",
    "N  - Next             Moves pointer forward to next point\n",
    "P  - Previous         Moves pointer backward to previous point\n",
    "C  - Close            Close the polyline\n",
    "O  - Open             Open the polyline\n",
    "U  - Undo\n",
    "Press <Enter>         Ends the routine\n",
    "\n\nPress Enter to continue",
};

} // namespace

void show_pointer_help()
{
    acedTextPage();
    for (const char* line : HELP_LINES)
        acutPrintf("%s", line);
    char nothing[ADS_TEXT_SIZE];
    acedGetString(0, "", nothing);
    acedGraphScr();
}

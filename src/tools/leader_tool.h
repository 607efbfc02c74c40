// leader_tool.h: curved leaders and zorro lines, drawn by their points.
#pragma once

// Asks what to draw and draws it until the user has had enough. DIMASZ is put back when the user says at the
// end that there is no more to draw, and stays as chosen on every other way out. RTNORM in all cases.
int leader_tool();

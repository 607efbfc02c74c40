// pointer_tool.h: runs a traverse on a line or polyline of the drawing, by distances, turns and bearings.
#pragma once

// Asks for the object and then for one command after the other until Enter or a cancel. What has been drawn
// stays in every case. RTCAN after a cancel, else RTNORM.
int pointer_tool();

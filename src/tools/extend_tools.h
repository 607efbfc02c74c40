// extend_tools.h: the entry of two tools that programs start by number.
#pragma once

// mode 2 extends an arc; every other mode turns the view so that a picked segment lies horizontal. RTNORM in
// all cases.
int extend_tools(int mode);

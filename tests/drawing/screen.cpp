#include "tests/drawing/screen.h"

#include <cstdio>

#include "hostapi/ads.h"

std::vector<std::string> screen::alerts;
std::vector<std::string> screen::vectors;
int screen::updates = 0;

int acedAlert(const char* text)
{
    screen::alerts.push_back(text);
    return RTNORM;
}

int acedGrDraw(const ads_point from, const ads_point to, int color, int highlight)
{
    char text[200];
    std::snprintf(text, sizeof text, "%g,%g,%g %g,%g,%g %d %d", from[0], from[1], from[2], to[0], to[1], to[2],
                  color, highlight);
    screen::vectors.push_back(text);
    return RTNORM;
}

int acedUpdateDisplay()
{
    ++screen::updates;
    return RTNORM;
}

#include "settings/recent_drawings.h"

resbuf* recent_drawings()
{
    return nullptr;
}

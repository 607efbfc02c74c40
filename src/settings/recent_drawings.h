// recent_drawings.h: the drawings that the running host has opened lately.
#pragma once

#include "hostapi/adsdef.h"

// Texts (restype 1000) in the registry's order, for the caller to release with acutRelRb; null when the
// installation that runs isn't known.
resbuf* recent_drawings();

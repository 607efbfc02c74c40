#include "settings/title.h"

void title_refresh() {}

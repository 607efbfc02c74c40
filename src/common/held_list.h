// held_list.h: a list from the host that is given back when its holder goes.
#pragma once

#include <memory>

#include "hostapi/ads.h"

struct list_release {
    void operator()(resbuf* list) const { acutRelRb(list); }
};
using held_list = std::unique_ptr<resbuf, list_release>;

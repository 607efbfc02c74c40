// host_heap.h: classes whose objects lie on the host's heap. `new` gives null when that is exhausted.
#pragma once

#include <cstddef>

#include "hostapi/ads.h"

struct HostHeap {
    static void* operator new(std::size_t size) noexcept { return acad_malloc(size); }
    static void operator delete(void* block) noexcept { acad_free(block); }
};

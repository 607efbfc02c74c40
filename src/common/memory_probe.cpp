#include "common/memory_probe.h"

#include "common/text_buffer.h"
#include "hostapi/ads.h"
#include "hostapi/windows.h"

namespace
{

char probe_label[128] = "";
MEMORYSTATUS probe_start{};

MEMORYSTATUS memory_now()
{
    MEMORYSTATUS status{};
    status.dwLength = sizeof status;
    GlobalMemoryStatus(&status);
    return status;
}

} // namespace

void memory_probe_start(const char* label)
{
    text_set(probe_label, label);
    probe_start = memory_now();
}

void memory_probe_report()
{
    const MEMORYSTATUS now = memory_now();
    const auto lost =
        (probe_start.dwAvailPhys - now.dwAvailPhys) + (probe_start.dwAvailVirtual - now.dwAvailVirtual);
    acutPrintf("Memory Loss in (%s) is %ld bytes \n", probe_label, static_cast<long>(lost));
}

// guest.h: what the small guest modules share: the table of their functions and the entry point. A guest is
// a shared object that knows the host by src/hostapi alone.
#pragma once

#include <cstddef>

#include "hostapi/ads.h"
#include "hostapi/editor.h"

struct guest_function {
    const char* name;
    int (*run)(const resbuf* arguments); // leaves its result with acedRet...
};

// To be called from the guest's acrxEntryPoint. `started` and `ended` may be null.
template <std::size_t Count>
int guest_entry(const guest_function (&functions)[Count], int message, void* packet, void (*started)(),
                void (*ended)())
{
    switch (message) {
    case AcRx::kInitAppMsg:
        acrxUnlockApplication(packet);
        if (started)
            started();
        break;
    case AcRx::kUnloadAppMsg:
        if (ended)
            ended();
        break;
    case AcRx::kLoadDwgMsg:
        for (std::size_t i = 0; i < Count; ++i)
            if (!acedDefun(functions[i].name, static_cast<int>(i)))
                return AcRx::kRetError;
        break;
    case AcRx::kUnloadDwgMsg:
        for (std::size_t i = 0; i < Count; ++i)
            acedUndef(functions[i].name, static_cast<int>(i));
        break;
    case AcRx::kInvkSubrMsg: {
        const int code = acedGetFunCode();
        if (code < 0 || code >= static_cast<int>(Count))
            return AcRx::kRetError;
        resbuf* arguments = acedGetArgs();
        functions[code].run(arguments);
        acutRelRb(arguments);
        break;
    }
    default:
        break;
    }
    return AcRx::kRetOK;
}

#define GUEST_EXPORT extern "C" __attribute__((visibility("default")))

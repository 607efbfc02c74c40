// slot.h: the place of a virtual operation in its class's table, as the common C++ ABI of 64-bit PCs encodes
// it.
#pragma once

#include <cstdint>
#include <cstring>

#if defined(__x86_64__)
#define ZENT_SLOTS_CAN_BE_READ 1
#endif

// From 1.
template <class Member>
std::intptr_t slot_of(Member operation)
{
    std::intptr_t encoded = 0;
    std::memcpy(&encoded, &operation, sizeof encoded);
    return (encoded - 1) / static_cast<std::intptr_t>(sizeof(void*)) + 1;
}

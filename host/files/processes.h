// processes.h: what the host itself asks of the processes that programs have started.
#pragma once

#include <cstddef>

namespace host
{

// Handles that programs haven't given back.
std::size_t open_process_handles();

} // namespace host

// together.h - two pieces of work at the same time, one of them on a thread that lives for it.
#pragma once

#include <system_error>
#include <thread>

namespace quillon {

// Returns when both are done. They may share what neither of them changes. Without a thread to be
// had one follows the other.
template <typename First, typename Second>
void runTogether(const First& first, const Second& second)
{
    std::thread other;
    try {
        other = std::thread(first);
    } catch (const std::system_error&) {
        first();
    }
    second();
    if (other.joinable())
        other.join();
}

} // namespace quillon

// What some routine has found out about the system, for reports of crashes, which cannot ask.
#pragma once

#include <atomic>

namespace platform_linux {

struct KnownFacts {
    std::atomic<int> dosCodePage = 0;  // number
    std::atomic<int> screenDpi = 0;
};

// Those of the process: they lie where a handler finds them.
inline KnownFacts& knownFacts() noexcept {
    static constinit KnownFacts facts;
    return facts;
}

}  // namespace platform_linux

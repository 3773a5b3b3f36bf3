// A question that may hang, in a call of the system that nothing ends.
#pragma once

#include <windows.h>

#include <functional>

#include "platform/windows/handle.h"

namespace platform_windows {

// It is asked on a thread of its own, which is left behind where it does not answer.
class BackgroundQuestion {
public:
    // The question takes with it what it needs, and throws nothing.
    explicit BackgroundQuestion(std::function<void()> question);

    // Whether it is answered now, or within so many milliseconds; never where there was no thread for it.
    bool isAnswered(DWORD within) const noexcept;

private:
    KernelHandle thread_;
};

}  // namespace platform_windows

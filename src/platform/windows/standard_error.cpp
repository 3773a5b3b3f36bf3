#include "platform/windows/standard_error.h"

#include <windows.h>

namespace platform_windows {

namespace {

// Keeps a pipe whose reader does not read from holding up the job; where the pipe cannot do that, nothing changes.
class NoWaiting {
public:
    explicit NoWaiting(HANDLE pipe) : pipe_(pipe) {
        DWORD mode = PIPE_NOWAIT;
        changed_ = ::SetNamedPipeHandleState(pipe, &mode, nullptr, nullptr) != 0;
    }
    NoWaiting(const NoWaiting&) = delete;
    NoWaiting& operator=(const NoWaiting&) = delete;
    ~NoWaiting() {
        DWORD mode = PIPE_WAIT;
        if (changed_) {
            ::SetNamedPipeHandleState(pipe_, &mode, nullptr, nullptr);
        }
    }

private:
    HANDLE pipe_;
    bool changed_ = false;
};

}  // namespace

void writeToStandardError(std::string_view bytes) noexcept {
    const HANDLE output = ::GetStdHandle(STD_ERROR_HANDLE);
    if (output == nullptr || output == INVALID_HANDLE_VALUE) {
        return;
    }
    const NoWaiting quick(output);
    DWORD count = 0;
    ::WriteFile(output, bytes.data(), static_cast<DWORD>(bytes.size()), &count, nullptr);
}

}  // namespace platform_windows

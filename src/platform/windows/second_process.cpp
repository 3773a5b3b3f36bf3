#include "platform/windows/second_process.h"

#include <windows.h>

#include <array>

#include "platform/windows/handle.h"

namespace platform_windows {

bool startSecondProcess(const wchar_t* variable, const wchar_t* value) noexcept {
    constexpr std::size_t longestPath = 32768;
    static std::array<wchar_t, longestPath> program;
    std::array<wchar_t, MAX_PATH> folder{};
    ::GetModuleFileNameW(nullptr, program.data(), longestPath);
    ::GetSystemDirectoryW(folder.data(), MAX_PATH);
    // Without its variable it would be a job without arguments.
    if (::SetEnvironmentVariableW(variable, value) == 0) {
        return false;
    }
    STARTUPINFOW start{};
    start.cb = sizeof(start);
    PROCESS_INFORMATION started{};
    const bool runs = ::CreateProcessW(program.data(), nullptr, nullptr, nullptr, FALSE, 0, nullptr, folder.data(),
                                       &start, &started) != 0;
    const KernelHandle thread(started.hThread);
    const KernelHandle process(started.hProcess);
    ::SetEnvironmentVariableW(variable, nullptr);
    return runs;
}

}  // namespace platform_windows

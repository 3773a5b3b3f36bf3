#include "platform/windows/messenger/new_process.h"

namespace platform_windows::messenger {

NewProcess startProcess(const std::wstring& program, std::wstring command, const std::wstring& folder) {
    STARTUPINFOW start{};
    start.cb = sizeof(start);
    PROCESS_INFORMATION started{};
    const auto create = [&](DWORD more) {
        return ::CreateProcessW(program.c_str(), command.data(), nullptr, nullptr, FALSE,
                                CREATE_DEFAULT_ERROR_MODE | CREATE_NO_WINDOW | more, nullptr, folder.c_str(), &start,
                                &started) != 0;
    };
    // Whoever started the messenger may end it together with all that is in the same job.
    if (!create(CREATE_BREAKAWAY_FROM_JOB) && !create(0)) {
        return {.handle = {}, .number = 0, .error = ::GetLastError()};
    }
    const KernelHandle thread(started.hThread);
    return {.handle = KernelHandle(started.hProcess), .number = started.dwProcessId, .error = 0};
}

}  // namespace platform_windows::messenger

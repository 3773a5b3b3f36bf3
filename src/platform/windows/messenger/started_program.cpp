#include "platform/windows/messenger/started_program.h"

#include <array>
#include <cstdio>
#include <utility>

#include "platform/windows/exception_name.h"
#include "platform/windows/files.h"
#include "platform/windows/messenger/new_process.h"
#include "platform/windows/newer_functions.h"
#include "platform/windows/starter.h"
#include "platform/windows/system_error.h"
#include "platform/windows/wide_text.h"

namespace platform_windows::messenger {

namespace {

// In this process's environment while it starts a program, which so inherits it.
class StarterVariable {
public:
    explicit StarterVariable(const std::wstring& value) { ::SetEnvironmentVariableW(starterVariable, value.c_str()); }
    StarterVariable(const StarterVariable&) = delete;
    StarterVariable& operator=(const StarterVariable&) = delete;
    ~StarterVariable() { ::SetEnvironmentVariableW(starterVariable, nullptr); }
};

// The system would have a batch file read by its shell, which carries out what a host writes behind an "&".
bool isImage(const std::wstring& program) {
    constexpr std::wstring_view ending = L".exe";
    return program.size() > ending.size() &&
           isSameName(std::wstring_view(program).substr(program.size() - ending.size()), ending);
}

// An event of a name that was nobody's, and stays signalled.
KernelHandle makeEvent(std::wstring& name) {
    static DWORD count = 0;
    for (;;) {
        name = LR"(Local\KRVWinPrBote-)" + std::to_wstring(::GetCurrentProcessId()) + L'-' + std::to_wstring(++count);
        KernelHandle event(::CreateEventW(nullptr, TRUE, FALSE, name.c_str()));
        const DWORD error = ::GetLastError();
        if (event && error != ERROR_ALREADY_EXISTS) {
            return event;
        }
        if (!event && error != ERROR_INVALID_HANDLE && error != ERROR_ACCESS_DENIED) {
            throwFileError(error, {});
        }
    }
}

}  // namespace

StartedProgram::StartedProgram(const std::wstring& program, const std::wstring& folder, const std::wstring& tail,
                               const EventPort& port, ULONG_PTR key) {
    if (!isFile(program)) {
        throwFileError(ERROR_FILE_NOT_FOUND, shownPath(program));
    }
    if (!isImage(program)) {
        throwFileError(ERROR_BAD_EXE_FORMAT, shownPath(program), "nur eine .exe wird gestartet; eine solche angeben");
    }
    std::wstring event;
    written_ = makeEvent(event);
    writtenWait_.emplace(written_.get(), port, EventPort::Signal::completionWritten, key);

    const bool apart = tail.empty() || tail.front() == L' ' || tail.front() == L'\t';
    const std::wstring command = L'"' + widen(shownPath(program)) + L'"' + (apart ? L"" : L" ") + tail;
    const StarterVariable variable(event);
    NewProcess started = startProcess(program, command, folder);
    if (started.error != 0) {
        throwFileError(started.error, shownPath(started.error == ERROR_DIRECTORY ? folder : program));
    }
    process_ = std::move(started.handle);
    number_ = started.number;
    endWait_.emplace(process_.get(), port, EventPort::Signal::programEnded, key);
}

bool StartedProgram::takeCompletion() noexcept {
    const bool written = ::WaitForSingleObject(written_.get(), 0) == WAIT_OBJECT_0;
    return written && !std::exchange(told_, true);
}

std::string StartedProgram::how() const {
    DWORD code = 0;
    return ::GetExitCodeProcess(process_.get(), &code) != 0 ? howItEnded(code) : std::string();
}

std::string howItEnded(DWORD exitCode) {
    constexpr DWORD firstException = 0xC0000000;
    if (exitCode == 0) {
        return {};
    }
    const std::string name(exceptionName(exitCode));
    if (name.empty() && exitCode < firstException) {
        return "Rückgabewert " + std::to_string(exitCode);
    }
    std::array<char, 16> number{};
    std::snprintf(number.data(), number.size(), " (0x%08lX)", exitCode);
    return (name.empty() ? "Ausnahme des Systems" : name) + number.data();
}

}  // namespace platform_windows::messenger

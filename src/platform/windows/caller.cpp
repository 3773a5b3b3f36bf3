#include "platform/windows/caller.h"

#include <windows.h>

#include "platform/windows/file_calls.h"
#include "platform/windows/handle.h"
#include "platform/windows/wide_text.h"

namespace platform_windows {

namespace {

bool writeToOutput(const std::string& text) {
    const HANDLE output = ::GetStdHandle(STD_OUTPUT_HANDLE);
    const DWORD kind = ::GetFileType(output);
    std::size_t written = 0;
    return (kind == FILE_TYPE_DISK || kind == FILE_TYPE_PIPE) &&
           writeAll(output, encode(widen(text), CP_ACP), Where::atPosition, written) == 0;
}

// The program has no console of its own.
bool writeToConsole(const std::wstring& text) {
    if (::AttachConsole(ATTACH_PARENT_PROCESS) == 0) {
        return false;
    }
    bool written = false;
    {
        const FileHandle console(::CreateFileW(L"CONOUT$", GENERIC_READ | GENERIC_WRITE,
                                               FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr));
        DWORD count = 0;
        written = console &&
                  ::WriteConsoleW(console.get(), text.data(), static_cast<DWORD>(text.size()), &count, nullptr) != 0;
    }
    ::FreeConsole();
    return written;
}

}  // namespace

bool tellCaller(const std::string& text) {
    const std::string lines = withLineEnds(text.ends_with('\n') ? text : text + '\n');
    // A console's shell has gone on already; its prompt stands in the line.
    return writeToOutput(lines) || writeToConsole(L"\r\n" + widen(lines));
}

}  // namespace platform_windows

#include "platform/windows/messenger/session_start.h"

#include <string>

#include "platform/windows/files.h"
#include "platform/windows/messenger/new_process.h"
#include "platform/windows/messenger/program_name.h"
#include "platform/windows/places.h"
#include "platform/windows/system_error.h"
#include "platform/windows/wide_text.h"
#include "platform/windows/windows_settings_store.h"
#include "platform/windows/windows_system.h"
#include "runtime/error.h"

namespace platform_windows::messenger {

namespace {

constexpr const wchar_t* endEvent = LR"(Local\KRVWinPrBote)";
constexpr const char* runKey = R"(Software\Microsoft\Windows\CurrentVersion\Run)";

// Of a messenger that runs; none where there is none.
KernelHandle openEndEvent() {
    KernelHandle event(::OpenEventW(EVENT_MODIFY_STATE, FALSE, endEvent));
    if (const DWORD error = ::GetLastError(); !event && error == ERROR_ACCESS_DENIED) {
        throwFileError(error, programName, "der laufende Bote wurde mit höheren Rechten gestartet; ihn dort beenden");
    }
    return event;
}

void startNow() {
    const std::wstring program = programFile();
    const NewProcess started = startProcess(program, L'"' + program + L'"', systemFolder());
    if (started.error != 0) {
        throwFileError(started.error, shownPath(program));
    }
}

}  // namespace

KernelHandle beSessionsMessenger() {
    if (commandLineTail(::GetCommandLineW()).find_first_not_of(L" \t") != std::wstring_view::npos) {
        return {};
    }
    KernelHandle event(::CreateEventW(nullptr, TRUE, FALSE, endEvent));
    if (!event) {
        throwFileError(::GetLastError(), programName);
    }
    return event;
}

void startWithSessions() {
    WindowsSettingsStore registry;
    if (!registry.setText(platform::SettingsRoot::currentUser, runKey, programName,
                          '"' + shownPath(programFile()) + '"')) {
        throw runtime::Error(runtime::errPermissionDenied,
                             std::string("HKCU\\") + runKey + " (der Autostart lässt sich nicht eintragen)");
    }
    if (!openEndEvent()) {
        startNow();
    }
}

void endWithSessions() {
    RegistryKey run;
    if (::RegOpenKeyExW(HKEY_CURRENT_USER, widen(runKey).c_str(), 0, KEY_SET_VALUE, run.receive()) == ERROR_SUCCESS) {
        const LSTATUS status = ::RegDeleteValueW(run.get(), widen(programName).c_str());
        if (status != ERROR_SUCCESS && status != ERROR_FILE_NOT_FOUND) {
            throwFileError(static_cast<DWORD>(status), std::string("HKCU\\") + runKey);
        }
    }
    constexpr DWORD pause = 10;
    constexpr DWORD longest = 15'000;  // milliseconds; it waits for completion files itself
    for (DWORD waited = 0; waited < longest; waited += pause) {
        const KernelHandle event = openEndEvent();
        if (!event) {
            return;
        }
        ::SetEvent(event.get());
        ::Sleep(pause);
    }
    throw runtime::Error(runtime::errDeviceIo, std::string(programName) +
                                                   " (der laufende Bote antwortet nicht; ihn im Task-Manager beenden)");
}

}  // namespace platform_windows::messenger

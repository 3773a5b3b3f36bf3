#include "platform/windows/forms/shell_programs.h"

#include "platform/windows/gdi/system_headers.h"

#include <shellapi.h>

#include <cstddef>

#include "platform/messages/mail_link.h"
#include "platform/windows/file_calls.h"
#include "platform/windows/files.h"
#include "platform/windows/places.h"
#include "platform/windows/system_error.h"
#include "platform/windows/system_library.h"
#include "platform/windows/topmost_window.h"
#include "platform/windows/wide_text.h"

namespace platform_windows::forms {

namespace {

// By its full name, as the current directory, where the host keeps its files, must not have a say in what is started.
// It lies in the folder above the system's.
std::wstring explorer() {
    std::wstring folder = systemFolder();
    if (!folder.empty()) {
        folder.pop_back();
    }
    return folderOf(folder) + L"explorer.exe";
}

// 0, or what the system says against it.
DWORD open(const std::wstring& what, const wchar_t* parameters) {
    constexpr INT_PTR lastError = 32;
    const auto execute = functionOf<decltype(&::ShellExecuteW)>(systemLibrary(L"shell32.dll"), "ShellExecuteW");
    if (execute == nullptr) {
        return ERROR_CALL_NOT_IMPLEMENTED;
    }
    const auto result =
        reinterpret_cast<INT_PTR>(execute(topmostWindow(), L"open", what.c_str(), parameters, nullptr, SW_SHOWNORMAL));
    if (result > lastError) {
        return 0;
    }
    return result != 0 ? static_cast<DWORD>(result) : ERROR_NOT_ENOUGH_MEMORY;
}

}  // namespace

std::string openPrinterFolder() {
    const DWORD error = open(explorer(), L"/e,::{2227A280-3AEA-1069-A2DE-08002B30309D}");
    return error == 0 ? std::string()
                      : "Der Druckerordner lässt sich nicht öffnen (" + systemMessage(error) +
                            "). Bitte die Drucker in der Systemsteuerung öffnen.";
}

bool openFolderOf(const std::string& file) {
    // No name of a file has a quotation mark.
    const std::wstring marked = L"/select,\"" + widen(shownPath(nativePath(file))) + L"\"";
    return open(explorer(), marked.c_str()) == 0;
}

bool openMail(const std::string& subject, const std::string& text) {
    constexpr std::size_t longest = 2000;  // a little less than the system's longest address
    return open(widen(platform::messages::mailLink(subject, text, longest)), nullptr) == 0;
}

}  // namespace platform_windows::forms

#include "platform/windows/forms/windows_forms.h"

#include <shellapi.h>

#include <algorithm>
#include <utility>

#include "platform/windows/file_calls.h"
#include "platform/windows/forms/clipboard.h"
#include "platform/windows/forms/file_choice.h"
#include "platform/windows/places.h"
#include "platform/windows/system_error.h"
#include "platform/windows/system_library.h"
#include "platform/windows/topmost_window.h"
#include "platform/windows/visible_desktop.h"
#include "runtime/error.h"

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

// Every form is made here.
HWND windowOf(platform::Form* form) { return form != nullptr ? static_cast<WindowsForm*>(form)->window() : nullptr; }

}  // namespace

std::unique_ptr<platform::Form> WindowsForms::create(const platform::FormDesign& design, platform::FormEvents& events,
                                                     platform::Form* owner) {
    if (!hasVisibleDesktop()) {
        throw runtime::Error(runtime::errPermissionDenied, "das Fenster „" + design.title +
                                                               "“ braucht einen Bildschirm; das Programm als "
                                                               "angemeldeter Benutzer starten");
    }
    auto form = std::make_unique<WindowsForm>(design, events, *this, windowOf(owner));
    open_.push_back(form.get());
    return form;
}

void WindowsForms::run() {
    MSG message{};
    while (!open_.empty() && receive(message)) {
        const bool taken =
            std::any_of(open_.begin(), open_.end(), [&](WindowsForm* form) { return form->takes(message); });
        if (!taken) {
            ::TranslateMessage(&message);
            ::DispatchMessageW(&message);
        }
    }
    if (failure_) {
        std::rethrow_exception(std::exchange(failure_, nullptr));
    }
}

// Waits for the next message, and has the forms do what they have to do meanwhile. False at the end of all.
bool WindowsForms::receive(MSG& message) {
    while (std::any_of(open_.begin(), open_.end(), [](const WindowsForm* form) { return form->wantsIdle(); })) {
        // One to paint is the last that there is.
        if (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
            return message.message != WM_QUIT;
        }
        // An event may open a form.
        const std::vector<WindowsForm*> open = open_;
        for (WindowsForm* const form : open) {
            if (form->wantsIdle()) {
                form->tellIdle();
            }
        }
    }
    return ::GetMessageW(&message, nullptr, 0, 0) > 0;
}

void WindowsForms::closeAll() {
    for (WindowsForm* const form : open_) {
        form->close();
    }
}

void WindowsForms::copyText(const std::string& text) { setClipboardText(topmostWindow(), text); }

std::optional<std::string> WindowsForms::askFileToWrite(platform::Form& owner, const std::string& title,
                                                        const std::string& suggestion, const std::string& kindOfFile,
                                                        const std::string& ending) {
    return chooseFileToWrite(windowOf(&owner), title, suggestion, kindOfFile, ending);
}

std::string WindowsForms::showPrinterFolder() {
    constexpr INT_PTR lastError = 32;
    const auto execute = functionOf<decltype(&::ShellExecuteW)>(systemLibrary(L"shell32.dll"), "ShellExecuteW");
    const INT_PTR result = execute == nullptr
                               ? 0
                               : reinterpret_cast<INT_PTR>(execute(topmostWindow(), L"Open", explorer().c_str(),
                                                                   L"/e,::{2227A280-3AEA-1069-A2DE-08002B30309D}",
                                                                   nullptr, SW_SHOWNORMAL));
    if (result > lastError) {
        return {};
    }
    return "Der Druckerordner lässt sich nicht öffnen (" + systemMessage(static_cast<DWORD>(result)) +
           "). Bitte die Drucker in der Systemsteuerung öffnen.";
}

void WindowsForms::gone(WindowsForm& form) noexcept { std::erase(open_, &form); }

void WindowsForms::failed() noexcept {
    if (!failure_) {
        failure_ = std::current_exception();
    }
    closeAll();
}

}  // namespace platform_windows::forms

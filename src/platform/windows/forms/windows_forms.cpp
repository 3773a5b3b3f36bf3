#include "platform/windows/forms/windows_forms.h"

#include <algorithm>
#include <utility>

#include "platform/windows/forms/clipboard.h"
#include "platform/windows/forms/file_choice.h"
#include "platform/windows/forms/shell_programs.h"
#include "platform/windows/system_library.h"
#include "platform/windows/topmost_window.h"
#include "platform/windows/visible_desktop.h"
#include "runtime/error.h"

namespace platform_windows::forms {

namespace {

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
    loadControls();
    auto form = std::make_unique<WindowsForm>(design, events, *this, windowOf(owner));
    open_.push_back(form.get());
    return form;
}

void WindowsForms::run() {
    MSG message{};
    while (!open_.empty() && receive(message)) {
        handle(message);
    }
    if (failure_) {
        std::rethrow_exception(std::exchange(failure_, nullptr));
    }
}

void WindowsForms::serve() {
    MSG message{};
    while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
        if (message.message == WM_QUIT) {
            ::PostQuitMessage(static_cast<int>(message.wParam));
            return;
        }
        handle(message);
    }
}

void WindowsForms::handle(MSG& message) {
    if (std::none_of(open_.begin(), open_.end(), [&](WindowsForm* form) { return form->takes(message); })) {
        ::TranslateMessage(&message);
        ::DispatchMessageW(&message);
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

std::optional<std::string> WindowsForms::askFileToRead(platform::Form& owner, const std::string& title,
                                                       const std::string& folder) {
    return chooseFileToRead(windowOf(&owner), title, folder);
}

bool WindowsForms::showInFolder(const std::string& path) { return openFolderOf(path); }

bool WindowsForms::composeMail(const std::string& subject, const std::string& text) { return openMail(subject, text); }

std::string WindowsForms::showPrinterFolder() { return openPrinterFolder(); }

void WindowsForms::gone(WindowsForm& form) noexcept { std::erase(open_, &form); }

void WindowsForms::failed() noexcept {
    if (!failure_) {
        failure_ = std::current_exception();
    }
    closeAll();
}

}  // namespace platform_windows::forms

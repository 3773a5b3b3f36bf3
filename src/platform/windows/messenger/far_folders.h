// Folders on other machines. Whoever wants something of a machine that is switched off waits for that up to a minute,
// and the other folders would with him.
#pragma once

#include <windows.h>

#include <functional>
#include <map>
#include <memory>
#include <string>

#include "platform/windows/background_question.h"

namespace platform_windows::messenger {

class FarFolders {
public:
    // Why there is nothing at a native path; a system error code.
    using Ask = std::function<DWORD(const std::wstring& path)>;
    static DWORD askSystem(const std::wstring& path) noexcept;

    explicit FarFolders(Ask ask = askSystem, DWORD patience = 500) : ask_(std::move(ask)), patience_(patience) {}

    // Whether the path, with a drive or a server, is one of another machine.
    static bool isFar(const std::wstring& path);

    // Throws runtime::Error where the folder, which is far, is not there or its machine does not answer soon. Until it
    // does it is not asked again.
    void demand(const std::wstring& path);

private:
    struct Asked {
        std::shared_ptr<DWORD> error;
        BackgroundQuestion question;
    };
    Ask ask_;
    DWORD patience_;  // milliseconds
    std::map<std::wstring, Asked> open_;
};

}  // namespace platform_windows::messenger

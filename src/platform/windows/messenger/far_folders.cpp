#include "platform/windows/messenger/far_folders.h"

#include "platform/windows/files.h"
#include "platform/windows/system_error.h"
#include "platform/windows/wide_text.h"

namespace platform_windows::messenger {

DWORD FarFolders::askSystem(const std::wstring& path) noexcept {
    return ::GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES ? 0 : ::GetLastError();
}

bool FarFolders::isFar(const std::wstring& path) {
    constexpr std::size_t rootLength = 3;
    const std::string shown = shownPath(path);
    return shown.starts_with(R"(\\)") || ::GetDriveTypeW(widen(shown.substr(0, rootLength)).c_str()) == DRIVE_REMOTE;
}

void FarFolders::demand(const std::wstring& path) {
    auto asked = open_.find(path);
    if (asked == open_.end()) {
        const auto error = std::make_shared<DWORD>(0);
        BackgroundQuestion question([ask = ask_, path, error] { *error = ask(path); });
        asked = open_.emplace(path, Asked{error, std::move(question)}).first;
    }
    if (!asked->second.question.isAnswered(patience_)) {
        throwFileError(ERROR_BAD_NETPATH, shownPath(path));
    }
    const DWORD error = *asked->second.error;
    open_.erase(asked);
    if (error != 0) {
        throwFileError(error == ERROR_FILE_NOT_FOUND ? DWORD{ERROR_PATH_NOT_FOUND} : error, shownPath(path));
    }
}

}  // namespace platform_windows::messenger

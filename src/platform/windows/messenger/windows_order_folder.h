// The port OrderFolder on Windows.
#pragma once

#include <windows.h>

#include <optional>

#include "platform/order_folder.h"
#include "platform/windows/handle.h"
#include "platform/windows/messenger/event_port.h"
#include "platform/windows/messenger/far_folders.h"
#include "platform/windows/messenger/folder_watch.h"

namespace platform_windows::messenger {

// Which folder it is, whatever path leads there.
struct FolderIdentity {
    DWORD volume = 0;
    ULONGLONG number = 0;
    bool operator==(const FolderIdentity&) const = default;
};

// Changes are not reported where the folder is another machine's, where the user has switched that off, and where the
// system refuses; another machine's that the system hears of wake the messenger all the same.
class WindowsOrderFolder final : public platform::OrderFolder {
public:
    enum class Watching { yes, no };
    // Whose orders on another machine are to be obeyed is that machine's to judge: it knows who may make files there.
    WindowsOrderFolder(const std::string& path, const EventPort& port, FarFolders& farFolders, Watching watching);

    const std::string& path() const override { return shownPath_; }
    bool reportsChanges() const override { return !remote_ && watch_ && watch_->works(); }
    Holder hold() override;
    std::string holder() override;
    std::vector<platform::OrderFile> files() override;
    std::string read(const std::string& name) override;
    bool make(const std::string& name, std::string_view content) override;
    void change(const std::string& name, std::string_view content) override;
    bool rename(const std::string& name, const std::string& newName) override;
    bool remove(const std::string& name) noexcept override;
    std::string completionMark() override;
    bool isAt(const std::string& path) override;

private:
    std::wstring native(std::wstring_view name) const;
    FileHandle openOwn(const std::wstring& file, DWORD access) const;

    FarFolders& farFolders_;
    std::wstring path_;
    std::string shownPath_;
    FolderIdentity identity_;
    bool remote_ = false;
    FileHandle held_;
    std::optional<FolderWatch> watch_;
};

// Who this process is, for other messengers and whoever asks: user, machine, process.
std::string identityOfProcess();

}  // namespace platform_windows::messenger

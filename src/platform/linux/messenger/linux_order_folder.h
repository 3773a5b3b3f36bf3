// The port OrderFolder on Linux.
#pragma once

#include <sys/types.h>

#include "platform/linux/file_descriptor.h"
#include "platform/linux/messenger/event_queue.h"
#include "platform/linux/messenger/folder_hold.h"
#include "platform/linux/messenger/folder_watch.h"
#include "platform/order_folder.h"

namespace platform_linux::messenger {

// Keeps no descriptor of the folder open, so that its disk can be taken away.
class LinuxOrderFolder final : public platform::OrderFolder, public EventSource {
public:
    // An absolute path. The identity is what KRVWINPR.BOT says. The queue, which must outlive the folder, gets the
    // system's reports. Throws runtime::Error.
    LinuxOrderFolder(std::string path, const std::string& identity, EventQueue& queue);
    LinuxOrderFolder(const LinuxOrderFolder&) = delete;
    LinuxOrderFolder& operator=(const LinuxOrderFolder&) = delete;
    ~LinuxOrderFolder() override;

    // Why the system reports nothing of this folder, an errno value; 0 where it does.
    int watchError() const { return watch_.error(); }
    // It is to be looked at from time to time, whatever the system reports.
    void distrustReports() { trusted_ = false; }

    const std::string& path() const override { return path_; }
    bool reportsChanges() const override { return trusted_ && watch_.error() == 0; }
    Holder hold() override;
    std::string holder() override { return hold_.holder(); }
    std::vector<platform::OrderFile> files() override;
    std::string read(const std::string& name) override;
    bool make(const std::string& name, std::string_view content) override;
    void change(const std::string& name, std::string_view content) override;
    bool rename(const std::string& name, const std::string& newName) override;
    bool remove(const std::string& name) noexcept override;
    std::string completionMark() override;
    bool isAt(const std::string& path) override;

    void take(std::vector<platform::MessengerEvent>& events) override;

private:
    FileDescriptor open() const;
    template <typename Function>
    void forEachName(Function function) const;
    std::string spelling(const std::string& name) const;
    std::string fileNamed(const std::string& name) const { return path_ + "/" + name; }

    std::string path_;
    EventQueue& queue_;
    FolderWatch watch_;
    FolderHold hold_;
    dev_t device_ = 0;
    ino_t number_ = 0;
    bool trusted_ = true;
    bool gone_ = false;
};

}  // namespace platform_linux::messenger

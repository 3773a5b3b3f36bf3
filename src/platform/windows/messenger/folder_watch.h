// Has the system report what happens to the orders of a folder.
#pragma once

#include <windows.h>

#include <memory>
#include <string>
#include <string_view>

#include "platform/order_folder.h"
#include "platform/windows/handle.h"
#include "platform/windows/messenger/event_port.h"

namespace platform_windows::messenger {

// What a messenger holds a folder by.
inline constexpr std::wstring_view holderName = L"KRVWINPR.BOT";

// The folder may be deleted and renamed meanwhile.
class FolderWatch {
public:
    // A native path. Where the system refuses, nothing is reported.
    FolderWatch(const std::wstring& path, const EventPort& port, const platform::OrderFolder& folder);
    FolderWatch(const FolderWatch&) = delete;
    FolderWatch& operator=(const FolderWatch&) = delete;
    ~FolderWatch();

    bool works() const noexcept { return request_ != nullptr; }

    // The folder in which something has happened, by what the port says of a request; null where that is nothing to
    // do with orders.
    static const platform::OrderFolder* take(const EventPort::Entry& entry);

private:
    // What the system writes into until it says that it is done, whether or not somebody is still interested.
    struct Request;
    const platform::OrderFolder* takeChanges(const EventPort::Entry& entry);
    void ask();
    void end() noexcept;

    const platform::OrderFolder& folder_;
    FileHandle handle_;
    std::unique_ptr<Request> request_;
};

}  // namespace platform_windows::messenger

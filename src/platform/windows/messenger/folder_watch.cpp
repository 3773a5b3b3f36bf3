#include "platform/windows/messenger/folder_watch.h"

#include <array>
#include <cstddef>
#include <string_view>

#include "messenger/order_names.h"
#include "platform/windows/newer_functions.h"
#include "platform/windows/wide_text.h"

namespace platform_windows::messenger {

struct FolderWatch::Request : OVERLAPPED {
    FolderWatch* watch = nullptr;
    static constexpr std::size_t room = std::size_t{16} << 10;
    alignas(DWORD) std::array<std::byte, room> changes{};
};

namespace {

// The name that a messenger holds a folder by comes and goes as well.
bool matters(std::wstring_view name) {
    return ::messenger::orderFileName(narrow(name)).has_value() || isSameName(name, holderName);
}

bool anyMatters(const std::byte* changes) {
    for (;;) {
        const auto* change = reinterpret_cast<const FILE_NOTIFY_INFORMATION*>(changes);
        if (matters({&change->FileName[0], change->FileNameLength / sizeof(wchar_t)})) {
            return true;
        }
        if (change->NextEntryOffset == 0) {
            return false;
        }
        changes += change->NextEntryOffset;
    }
}

}  // namespace

FolderWatch::FolderWatch(const std::wstring& path, const EventPort& port, const platform::OrderFolder& folder)
    : folder_(folder),
      handle_(::CreateFileW(path.c_str(), FILE_LIST_DIRECTORY, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                            nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OVERLAPPED, nullptr)) {
    if (handle_ && port.attach(handle_.get()) == 0) {
        request_ = std::make_unique<Request>();
        request_->watch = this;
        ask();
    }
}

FolderWatch::~FolderWatch() {
    if (request_) {
        // The port gets it once more, as ended.
        request_->watch = nullptr;
        ::CancelIo(handle_.get());
        static_cast<void>(request_.release());
    }
}

const platform::OrderFolder* FolderWatch::take(const EventPort::Entry& entry) {
    auto* request = static_cast<Request*>(entry.request);
    if (request->watch != nullptr) {
        return request->watch->takeChanges(entry);
    }
    const std::unique_ptr<Request> done(request);
    return nullptr;
}

// A folder that was deleted goes when nobody has it open any more.
const platform::OrderFolder* FolderWatch::takeChanges(const EventPort::Entry& entry) {
    const bool tooMany = entry.error == ERROR_NOTIFY_ENUM_DIR || (entry.error == 0 && entry.bytes == 0);
    const bool changed = entry.error != 0 || tooMany || anyMatters(request_->changes.data());
    if (entry.error == 0 || tooMany) {
        ask();
    } else {
        end();
    }
    return changed || !works() ? &folder_ : nullptr;
}

void FolderWatch::ask() {
    if (::ReadDirectoryChangesW(handle_.get(), request_->changes.data(), Request::room, FALSE,
                                FILE_NOTIFY_CHANGE_FILE_NAME, nullptr, request_.get(), nullptr) == 0) {
        end();
    }
}

void FolderWatch::end() noexcept {
    request_.reset();
    handle_.reset();
}

}  // namespace platform_windows::messenger

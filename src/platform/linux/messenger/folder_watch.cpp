#include "platform/linux/messenger/folder_watch.h"

#include <sys/inotify.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "messenger/order_names.h"
#include "platform/linux/messenger/folder_hold.h"
#include "runtime/text.h"

namespace platform_linux::messenger {

namespace {

constexpr std::uint32_t newContent = IN_MOVED_TO | IN_CLOSE_WRITE;
constexpr std::uint32_t goneName = IN_MOVED_FROM | IN_DELETE;
constexpr std::uint32_t endOfFolder = IN_DELETE_SELF | IN_UNMOUNT | IN_IGNORED;

// An order appears under its name when it is whole. A messenger that is killed closes the file that it held.
bool matters(std::string_view name, std::uint32_t what) {
    if (runtime::upperCase(name) == holdName) {
        return true;
    }
    const auto file = ::messenger::orderFileName(name);
    return (what & newContent) != 0 && file && file->kind == ::messenger::OrderFileKind::order;
}

FolderWatch::Seen seen(std::uint32_t what, std::string_view name) {
    if ((what & endOfFolder) != 0) {
        return FolderWatch::Seen::end;
    }
    // What is told of no name is told of the folder, or that more has happened than there is room for.
    return name.empty() || matters(name, what) ? FolderWatch::Seen::something : FolderWatch::Seen::nothing;
}

}  // namespace

FolderWatch::FolderWatch(const std::string& folder) : queue_(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
    constexpr std::uint32_t wanted = newContent | goneName | IN_DELETE_SELF | IN_MOVE_SELF | IN_ONLYDIR;
    if (!queue_ || ::inotify_add_watch(queue_.get(), folder.c_str(), wanted) < 0) {
        error_ = errno;
        queue_.close();
    }
}

FolderWatch::Seen FolderWatch::take() {
    constexpr std::size_t room = 16384;
    alignas(inotify_event) std::array<char, room> buffer{};
    constexpr int mostTimes = 16;  // whatever goes on in the folder: others wait as well
    Seen result = Seen::nothing;
    for (int i = 0; i < mostTimes; ++i) {
        const ssize_t count = ::read(queue_.get(), buffer.data(), buffer.size());
        if (count <= 0) {
            break;
        }
        inotify_event event{};
        for (std::size_t at = 0; at + sizeof(event) <= static_cast<std::size_t>(count);
             at += sizeof(event) + event.len) {
            std::memcpy(&event, buffer.data() + at, sizeof(event));
            const char* name = buffer.data() + at + sizeof(event);
            result = std::max(result, seen(event.mask, event.len > 0 ? std::string_view(name) : std::string_view()));
        }
    }
    return result;
}

}  // namespace platform_linux::messenger

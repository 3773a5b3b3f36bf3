// What the system reports of a folder with orders (inotify).
#pragma once

#include <string>

#include "platform/linux/file_descriptor.h"

namespace platform_linux::messenger {

class FolderWatch {
public:
    // From now on.
    explicit FolderWatch(const std::string& folder);

    // Why there are no reports, an errno value; 0 where there are.
    int error() const { return error_; }
    // To be read when there is something to read; none where there are no reports.
    int descriptor() const { return queue_.get(); }

    // What has happened since the last call. Only what may mean an order, or another messenger's end, is something: the
    // host writes much else there. After the end nothing comes any more; the folder is gone, or its disk.
    enum class Seen { nothing, something, end };
    Seen take();

private:
    FileDescriptor queue_;
    int error_ = 0;
};

}  // namespace platform_linux::messenger

// What the functions on whole files are made of: calls of the system, begun again where a signal broke them off.
#pragma once

#include <fcntl.h>
#include <sys/types.h>

#include <optional>
#include <string>
#include <string_view>

#include "platform/linux/file_descriptor.h"

namespace platform_linux {

// Opening a pipe or a terminal neither waits nor takes it over. No descriptor, with errno set, where it fails.
FileDescriptor openFile(const std::string& path, int flags, mode_t mode = 0);

// The folder of a file: "." where the path has none.
std::string folderOf(const std::string& path);

struct Written {
    std::size_t bytes = 0;
    int error = 0;
};
Written writeAll(int descriptor, std::string_view content);

// Bytes read; fewer than asked for only at the end of the file. Nothing where reading failed, with errno set.
std::optional<std::size_t> readUpTo(int descriptor, char* to, std::size_t size);

// Writes the whole content of one file at the position of another; an errno value.
int copyContent(int from, int to);

// What root makes in somebody else's folder belongs to that somebody. For anybody else nothing happens.
void giveToOwnerOf(const std::string& folder, int made);

// Whether an error of flock() or fcntl() says that the file system has no such locks.
bool knowsNoLocks(int error);

// A link, opened so that owner and target are those of one and the same.
struct Link {
    uid_t owner = 0;
    std::string target;  // from where the link's own path starts
};
// Nothing where there is no link at that path.
std::optional<Link> linkAt(const std::string& path);

}  // namespace platform_linux

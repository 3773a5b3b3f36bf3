#include <unistd.h>

#include <cerrno>

#include "platform/linux/file_calls.h"
#include "platform/linux/files.h"

namespace platform_linux {

namespace {

// The function fills the new file and returns an errno value; where that fails there is none.
template <typename Fill>
int makeNewFile(const std::string& path, mode_t mode, const Fill& fill) {
    FileDescriptor file = openFile(path, O_WRONLY | O_CREAT | O_EXCL, mode);
    if (!file) {
        return errno;
    }
    giveToOwnerOf(folderOf(path), file.get());
    int error = fill(file.get());
    if (error == 0 && !file.close()) {
        error = errno;
    }
    if (error != 0) {
        ::unlink(path.c_str());
    }
    return error;
}

}  // namespace

int createFile(const std::string& path, std::string_view content, mode_t mode) {
    return makeNewFile(path, mode, [content](int file) { return writeAll(file, content).error; });
}

int copyToNewFile(int from, const std::string& path, mode_t mode) {
    return makeNewFile(path, mode, [from](int file) { return copyContent(from, file); });
}

}  // namespace platform_linux

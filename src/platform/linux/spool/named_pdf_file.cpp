#include "platform/linux/spool/named_pdf_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <memory>

namespace platform_linux::spool {

namespace {

constexpr mode_t permissions = 0777;

std::string folderNameOf(const std::string& path) {
    const std::string folder = std::filesystem::path(path).parent_path().string();
    return folder.empty() ? "." : folder;
}

}  // namespace

NamedPdfFile::NamedPdfFile(const std::string& path, Concealment concealment)
    : PdfFile(std::make_shared<const Folder>(Folder::at(folderNameOf(path))), {}, concealment),
      name_(path.substr(path.rfind('/') + 1)) {
    mode_t mode = 0;
    if (const int error = check(mode); error != 0) {
        fail(error);
    }
}

int NamedPdfFile::check(mode_t& mode) const {
    if (!folder().descriptor || name_.empty()) {
        return ENOTDIR;
    }
    struct stat old {};
    if (::fstatat(folder().descriptor.get(), name_.c_str(), &old, AT_SYMLINK_NOFOLLOW) != 0) {
        return errno == ENOENT ? 0 : errno;
    }
    if (S_ISLNK(old.st_mode)) {
        return 0;
    }
    if (!S_ISREG(old.st_mode)) {
        return S_ISDIR(old.st_mode) ? EISDIR : ENODEV;
    }
    mode = old.st_mode & permissions;
    return ::faccessat(folder().descriptor.get(), name_.c_str(), W_OK, AT_EACCESS) == 0 ? 0 : errno;
}

bool NamedPdfFile::putInPlace() {
    mode_t mode = 0;
    if (const int error = check(mode); error != 0) {
        errno = error;
        return false;
    }
    const int folder = this->folder().descriptor.get();
    if (!hide()) {
        errno = errno == ENOENT ? ENOTDIR : errno;  // then it is the folder that is gone
        return false;
    }
    if (mode != 0) {
        // Whoever could read and write it still can.
        [[maybe_unused]] const bool kept = ::fchmod(descriptor(), mode) == 0;
    }
    if (::renameat(folder, hidden().path().c_str(), folder, name_.c_str()) != 0) {
        return false;
    }
    inPlace();
    return true;
}

}  // namespace platform_linux::spool

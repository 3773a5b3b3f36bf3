#include "platform/linux/spool/pdf_file.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/sendfile.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <random>
#include <utility>

#include "platform/linux/documents/document_name.h"
#include "platform/linux/linux_error.h"

namespace platform_linux::spool {

namespace {

constexpr mode_t fileMode = 0666;  // the process's mask takes its bits away
constexpr int mostNumbers = 100000;

std::string viaProc(int descriptor) { return "/proc/self/fd/" + std::to_string(descriptor); }

// What the PDF's writer has written already goes along.
bool moveInto(const FileDescriptor& file, int descriptor) {
    struct stat status {};
    if (::fstat(descriptor, &status) != 0) {
        return false;
    }
    off_t done = 0;
    while (done < status.st_size) {
        const ssize_t sent = ::sendfile(file.get(), descriptor, &done, static_cast<std::size_t>(status.st_size - done));
        if (sent <= 0 && errno != EINTR) {
            return false;
        }
    }
    return ::dup3(file.get(), descriptor, O_CLOEXEC) == descriptor;
}

std::string randomLetters() {
    static constexpr std::string_view letters = "abcdefghijklmnopqrstuvwxyz0123456789";
    std::random_device source;
    std::uniform_int_distribution<std::size_t> choice(0, letters.size() - 1);
    std::string result;
    for (int i = 0; i < 8; ++i) {
        result += letters[choice(source)];
    }
    return result;
}

}  // namespace

Folder Folder::current() {
    std::error_code ignored;
    return {FileDescriptor(::open(".", O_PATH | O_DIRECTORY | O_CLOEXEC)),
            std::filesystem::current_path(ignored).string()};
}

PdfFile::PdfFile(std::shared_ptr<const Folder> folder, std::string name, Concealment concealment)
    : folder_(std::move(folder)),
      name_(std::move(name)),
      concealment_(concealment),
      file_(::memfd_create("krvwinpr-pdf", MFD_CLOEXEC)) {
    if (!file_) {
        fail(errno);
    }
}

PdfFile::~PdfFile() { remove(); }

void PdfFile::pageBegins() {
    if (made_) {
        return;
    }
    FileDescriptor file = concealment_ == Concealment::unnamed ? makeUnnamed() : FileDescriptor();
    if (!file) {
        file = makeHidden();
    }
    if (!file || !moveInto(file, file_.get())) {
        fail(errno);
    }
    made_ = true;
}

FileDescriptor PdfFile::makeUnnamed() const {
    FileDescriptor file(::openat(folder_->descriptor.get(), ".", O_TMPFILE | O_RDWR | O_CLOEXEC, fileMode));
    return file && ::access(viaProc(file.get()).c_str(), F_OK) == 0 ? std::move(file) : FileDescriptor();
}

FileDescriptor PdfFile::makeHidden() {
    concealment_ = Concealment::hidden;
    for (int attempt = 0; attempt < 100; ++attempt) {
        const std::string name = "." + name_ + ".pdf." + randomLetters();
        FileDescriptor file(
            ::openat(folder_->descriptor.get(), name.c_str(), O_CREAT | O_EXCL | O_RDWR | O_CLOEXEC, fileMode));
        if (file) {
            hiddenName_ = name;
            return file;
        }
        if (errno != EEXIST) {
            break;
        }
    }
    return {};
}

void PdfFile::deliver(const documents::PageOptions& /*firstPage*/) {
    // A file system of the network may only say now that it had no room.
    FileDescriptor copy(::dup(file_.get()));
    if (!copy || !copy.close()) {
        fail(errno);
    }
    for (int number = 1; number <= mostNumbers; ++number) {
        if (putInPlace(documents::numberedName(name_, number))) {
            hiddenName_.clear();
            return;
        }
        if (errno != EEXIST) {
            break;
        }
    }
    fail(errno);
}

bool PdfFile::putInPlace(const std::string& name) {
    const int folder = folder_->descriptor.get();
    if (concealment_ == Concealment::unnamed) {
        return ::linkat(AT_FDCWD, viaProc(file_.get()).c_str(), folder, name.c_str(), AT_SYMLINK_FOLLOW) == 0;
    }
    if (::renameat2(folder, hiddenName_.c_str(), folder, name.c_str(), RENAME_NOREPLACE) == 0) {
        return true;
    }
    if (errno != EINVAL && errno != ENOSYS) {
        return false;
    }
    if (::linkat(folder, hiddenName_.c_str(), folder, name.c_str(), 0) != 0) {
        return false;
    }
    ::unlinkat(folder, hiddenName_.c_str(), 0);
    return true;
}

void PdfFile::remove() noexcept {
    if (!hiddenName_.empty()) {
        ::unlinkat(folder_->descriptor.get(), hiddenName_.c_str(), 0);
        hiddenName_.clear();
    }
}

runtime::Error PdfFile::failure(const runtime::Error& cause) {
    remove();
    return runtime::Error(cause.number() == runtime::errDiskFull ? runtime::errDiskFull : runtime::errPrinter,
                          subject() + ": " + (cause.detail().empty() ? cause.description() : cause.detail()) +
                              " Die unvollständige Datei wurde entfernt.");
}

void PdfFile::fail(int systemError) {
    remove();
    const bool full = errorNumber(systemError) == runtime::errDiskFull;
    throw runtime::Error(full ? runtime::errDiskFull : runtime::errPrinter,
                         subject() + " konnte nicht angelegt werden: " + errorReason(systemError) + "." +
                             (full ? "" : " Sonst das Programm in einem anderen Ordner starten.") +
                             (made_ ? " Die unvollständige Datei wurde entfernt." : ""));
}

std::string PdfFile::subject() const {
    return "Die PDF-Datei „" + documents::numberedName(name_, 1) + "“ im Ordner „" + folder_->path + "“";
}

}  // namespace platform_linux::spool

#include "platform/linux/spool/pdf_file.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <utility>

#include "platform/linux/documents/document_name.h"
#include "platform/linux/file_calls.h"
#include "platform/linux/linux_error.h"

namespace platform_linux::spool {

namespace {

constexpr mode_t fileMode = 0666;  // the process's mask takes its bits away
constexpr int mostNumbers = 100000;

std::string viaProc(int descriptor) { return "/proc/self/fd/" + std::to_string(descriptor); }

// What the PDF's writer has written already goes along.
bool moveInto(const FileDescriptor& file, int descriptor) {
    if (const int error = copyContent(descriptor, file.get()); error != 0) {
        errno = error;
        return false;
    }
    return ::dup3(file.get(), descriptor, O_CLOEXEC) == descriptor;
}

// A file system over the network may only say when a file is closed that it had no room.
bool hasArrived(const FileDescriptor& file) {
    FileDescriptor copy(::dup(file.get()));
    return copy && copy.close();
}

}  // namespace

Folder Folder::at(const std::string& path) {
    return {FileDescriptor(::open(path.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC)), path};
}

Folder Folder::current() {
    std::error_code ignored;
    Folder folder = at(".");
    folder.path = std::filesystem::current_path(ignored).string();
    return folder;
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
    hidden_.hold(folder_->descriptor.get(), unfinishedName());
    FileDescriptor file(
        ::openat(folder_->descriptor.get(), hidden_.path().c_str(), O_CREAT | O_EXCL | O_RDWR | O_CLOEXEC, fileMode));
    if (file) {
        markInUse(file.get());
    } else {
        hidden_.release();
    }
    return file;
}

void PdfFile::deliver(const documents::PageOptions& /*firstPage*/) {
    if (!hasArrived(file_)) {
        fail(errno);
    }
    giveToOwnerOf(folder_->path, file_.get());
    if (!putInPlace()) {
        fail(errno);
    }
}

bool PdfFile::putInPlace() {
    for (int number = 1; number <= mostNumbers; ++number) {
        if (putInPlace(documents::numberedName(name_, number))) {
            return true;
        }
        if (errno != EEXIST) {
            break;
        }
    }
    return false;
}

bool PdfFile::putInPlace(const std::string& name) {
    const int folder = folder_->descriptor.get();
    if (concealment_ == Concealment::unnamed) {
        if (::linkat(AT_FDCWD, viaProc(file_.get()).c_str(), folder, name.c_str(), AT_SYMLINK_FOLLOW) == 0) {
            return true;
        }
        if (errno == EEXIST || !hideCopy()) {
            return false;
        }
    }
    return putHiddenInPlace(name);
}

bool PdfFile::hide() {
    if (hidden_) {
        return true;
    }
    hidden_.hold(folder_->descriptor.get(), unfinishedName());
    if (::linkat(AT_FDCWD, viaProc(file_.get()).c_str(), folder_->descriptor.get(), hidden_.path().c_str(),
                 AT_SYMLINK_FOLLOW) == 0) {
        return true;
    }
    hidden_.release();
    return hideCopy();
}

// A file without a name that cannot be given one.
bool PdfFile::hideCopy() {
    FileDescriptor copy = makeHidden();
    if (!copy) {
        return false;
    }
    if (const int error = copyContent(file_.get(), copy.get()); error != 0) {
        errno = error;
        return false;
    }
    giveToOwnerOf(folder_->path, copy.get());
    file_ = std::move(copy);
    return hasArrived(file_);
}

bool PdfFile::putHiddenInPlace(const std::string& name) {
    const int folder = folder_->descriptor.get();
    if (::renameat2(folder, hidden_.path().c_str(), folder, name.c_str(), RENAME_NOREPLACE) == 0) {
        hidden_.release();
        return true;
    }
    if (errno == EEXIST) {
        return false;
    }
    if (::linkat(folder, hidden_.path().c_str(), folder, name.c_str(), 0) == 0) {
        hidden_.remove();
        return true;
    }
    return errno != EEXIST && putOverReservation(name);
}

// An empty file of one's own takes the name first, so that nobody else's can be replaced.
bool PdfFile::putOverReservation(const std::string& name) {
    const SignalsWait untilItIsFinished;
    const int folder = folder_->descriptor.get();
    FileDescriptor reserved(::openat(folder, name.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, fileMode));
    if (!reserved) {
        return false;
    }
    reserved.close();
    if (::renameat(folder, hidden_.path().c_str(), folder, name.c_str()) == 0) {
        hidden_.release();
        return true;
    }
    if (fillReservation(name)) {
        hidden_.remove();
        return true;
    }
    const int error = errno != EEXIST ? errno : EIO;
    ::unlinkat(folder, name.c_str(), 0);
    errno = error;
    return false;
}

// Where nothing can be renamed to a name that is taken.
bool PdfFile::fillReservation(const std::string& name) const {
    FileDescriptor reserved(
        ::openat(folder_->descriptor.get(), name.c_str(), O_WRONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    if (!reserved) {
        return false;
    }
    giveToOwnerOf(folder_->path, reserved.get());
    if (const int error = copyContent(file_.get(), reserved.get()); error != 0) {
        errno = error;
        return false;
    }
    return reserved.close();
}

runtime::Error PdfFile::failure(const runtime::Error& cause) {
    hidden_.remove();
    return runtime::Error(cause.number() == runtime::errDiskFull ? runtime::errDiskFull : runtime::errPrinter,
                          subject() + ": " + (cause.detail().empty() ? cause.description() : cause.detail()) +
                              " Die unvollständige Datei wurde entfernt.");
}

void PdfFile::fail(int systemError) {
    hidden_.remove();
    const bool full = errorNumber(systemError) == runtime::errDiskFull;
    throw runtime::Error(full ? runtime::errDiskFull : runtime::errPrinter,
                         subject() + " konnte nicht angelegt werden: " + errorReason(systemError) + "." +
                             (full ? "" : advice()) + (made_ ? " Die unvollständige Datei wurde entfernt." : ""));
}

std::string PdfFile::fileName() const { return documents::numberedName(name_, 1); }

std::string PdfFile::subject() const { return "Die PDF-Datei „" + fileName() + "“ im Ordner „" + folder_->path + "“"; }

}  // namespace platform_linux::spool

#include "platform/linux/cups/queued_pdf.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <utility>
#include <vector>

#include "platform/linux/linux_error.h"

namespace platform_linux::cups {

namespace {

FileDescriptor makeWithoutName(const std::string& folder) {
    FileDescriptor file(::open(folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0600));
    if (!file) {
        std::string name = folder + "/krvwinpr-XXXXXX";
        file = FileDescriptor(::mkostemp(name.data(), O_CLOEXEC));
        if (file) {
            ::unlink(name.c_str());
        }
    }
    return file;
}

}  // namespace

QueuedPdf::QueuedPdf(std::string queue, Send send) : queue_(std::move(queue)), send_(std::move(send)) {
    std::vector<std::string> folders = {"/tmp"};
    if (const char* folder = std::getenv("TMPDIR"); folder != nullptr && *folder == '/') {
        folders.insert(folders.begin(), folder);
    }
    for (const std::string& folder : folders) {
        if (file_ = makeWithoutName(folder); file_) {
            place_ = "im Ordner „" + folder + "“";
            return;
        }
    }
    place_ = "im Speicher";
    file_ = FileDescriptor(::memfd_create("krvwinpr-pdf", MFD_CLOEXEC));
    if (!file_) {
        throw runtime::Error(runtime::errPrinter, "Der Auftrag für den Drucker „" + queue_ + "“ hat keinen Platz: " +
                                                      errorReason(errno) + ". Andere Programme beenden.");
    }
}

runtime::Error QueuedPdf::failure(const runtime::Error& cause) {
    return runtime::Error(cause.number() == runtime::errDiskFull ? runtime::errDiskFull : runtime::errPrinter,
                          "Der Auftrag für den Drucker „" + queue_ + "“, zwischengespeichert " + place_ + ": " +
                              (cause.detail().empty() ? cause.description() : cause.detail()) +
                              " Diese Seiten wurden nicht gedruckt.");
}

}  // namespace platform_linux::cups

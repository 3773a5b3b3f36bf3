#include "platform/linux/cups/queued_pdf.h"

#include <cups/ipp.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <utility>
#include <vector>

#include "platform/linux/cups/cups_error.h"
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

QueuedPdf::QueuedPdf(std::shared_ptr<QueueAccess> queues, std::string queue, MakeJob makeJob)
    : queues_(std::move(queues)), queue_(std::move(queue)), makeJob_(std::move(makeJob)) {
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

void QueuedPdf::deliver(const documents::PageOptions& firstPage) {
    if (sent_ && arrivedBefore()) {
        sent_ = false;
        return;
    }
    job_ = queues_->createJob(makeJob_(firstPage));
    sent_ = true;
    try {
        queues_->sendDocument(queue_, job_, file_.get());
    } catch (const platform::SpoolerError& error) {
        if (error.code() >= firstIppStatus) {
            // The server has answered: it did not take the document.
            queues_->cancel(queue_, job_);
            sent_ = false;
        }
        throw;
    }
    sent_ = false;
}

bool QueuedPdf::arrivedBefore() {
    switch (queues_->fate(queue_, job_)) {
        case JobFate::withDocument:
            return true;
        case JobFate::withoutDocument:
            queues_->cancel(queue_, job_);
            sent_ = false;
            return false;
        case JobFate::cancelled:
            sent_ = false;
            throw cups::failure(IPP_STATUS_ERROR_JOB_CANCELED, queue_, {});
        case JobFate::unknown:
            break;
    }
    throw platform::SpoolerError(IPP_STATUS_ERROR_NOT_FOUND,
                                 "Drucker „" + queue_ + "“: Der Auftrag Nr. " + std::to_string(job_) +
                                     " wurde gesendet, die Antwort ging verloren, und der Druckdienst kennt ihn nicht "
                                     "mehr. Bitte am Drucker nachsehen.");
}

runtime::Error QueuedPdf::failure(const runtime::Error& cause) {
    return runtime::Error(cause.number() == runtime::errDiskFull ? runtime::errDiskFull : runtime::errPrinter,
                          "Der Auftrag für den Drucker „" + queue_ + "“, zwischengespeichert " + place_ + ": " +
                              (cause.detail().empty() ? cause.description() : cause.detail()) +
                              " Diese Seiten wurden nicht gedruckt.");
}

}  // namespace platform_linux::cups

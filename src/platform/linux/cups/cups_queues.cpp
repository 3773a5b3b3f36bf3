#include "platform/linux/cups/cups_queues.h"

#include <cups/cups.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cmath>
#include <cstdlib>
#include <exception>
#include <utility>

#include "platform/linux/cups/bin_names.h"
#include "platform/linux/cups/cups_error.h"
#include "platform/linux/cups/queue_device.h"
#include "platform/linux/file_descriptor.h"
#include "runtime/text.h"
#include "runtime/utf8.h"

namespace platform_linux::cups {

namespace {

constexpr std::size_t longestJobName = 255;  // bytes, of the IPP type "name"

// Valid UTF-8 without control characters, and no longer than a name may be.
std::string jobName(const std::string& title) {
    std::string result;
    for (const char c : runtime::mended(title)) {
        const auto code = static_cast<unsigned char>(c);
        result += code < 0x20 || code == 0x7F ? '_' : c;
    }
    return std::string(runtime::beginningOf(result, longestJobName));
}

std::string fileContent(int fileDescriptor) {
    std::string content;
    std::string block(65536, '\0');
    ::lseek(fileDescriptor, 0, SEEK_SET);
    for (ssize_t size = 0; (size = ::read(fileDescriptor, block.data(), block.size())) > 0;) {
        content.append(block, 0, static_cast<std::size_t>(size));
    }
    return content;
}

// "de" of "de_DE.UTF-8"; empty where the user has none, and sees the driver's own language.
std::string userLanguage() {
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        if (const char* value = std::getenv(name); value != nullptr && *value != '\0') {
            const std::string locale = value;
            const std::string language = locale.substr(0, locale.find_first_of("_.@"));
            return language == "C" || language == "POSIX" ? std::string() : language;
        }
    }
    return {};
}

std::string hundredthsOfMillimetre(double points) { return std::to_string(std::lround(points * 2540.0 / 72.0)); }

}  // namespace

std::vector<platform::PaperBin> CupsQueues::bins(const std::string& queue) {
    const IppMessage answer = connection_->attributes(queue, {"media-source-supported"});
    const std::vector<std::string> sources = texts(answer.get(), "media-source-supported");
    std::vector<platform::PaperBin> result;
    if (sources.empty()) {
        return result;
    }
    std::vector<std::string> names;
    const FileDescriptor file(::memfd_create("krvwinpr-ppd", MFD_CLOEXEC));
    if (file && connection_->fetch("/printers/" + queue + ".ppd", file.get())) {
        names = binNames(fileContent(file.get()), userLanguage());
    }
    for (std::size_t i = 0; i < sources.size(); ++i) {
        result.push_back({static_cast<int>(i + 1), names.size() == sources.size() ? names[i] : sources[i]});
    }
    return result;
}

QueueDevice CupsQueues::device(const std::string& queue) {
    const IppMessage answer = connection_->attributes(queue, deviceAttributes());
    return queueDevice(answer.get());
}

Options CupsQueues::options(const std::string& queue, const QueueMedia& media, int bin, int orientation, int colorMode,
                            const Options& saved) {
    Options result;
    result["orientation-requested"] = std::to_string(orientation == 2 ? IPP_ORIENT_LANDSCAPE : IPP_ORIENT_PORTRAIT);
    result["print-color-mode"] = colorMode == 2 ? "color" : "monochrome";
    // The pages are made for this sheet; fitted to its printable area they would no longer be true to scale.
    result["print-scaling"] = "none";

    std::string source;
    if (bin > 0 || haveSource(saved)) {
        const IppMessage answer = connection_->attributes(queue, {"media-source-supported"});
        const std::vector<std::string> sources = texts(answer.get(), "media-source-supported");
        if (bin < 1) {
            source = savedSource(saved, sources);
        } else if (static_cast<std::size_t>(bin) <= sources.size()) {
            source = sources[static_cast<std::size_t>(bin) - 1];
        }
    }
    addSaved(result, saved, bin > 0 || !source.empty(), colorMode);
    if (source.empty() && !media.keyword.empty()) {
        result["media"] = media.keyword;
        return result;
    }
    std::string collection = "{media-size={x-dimension=" + hundredthsOfMillimetre(media.widthPoints) +
                             " y-dimension=" + hundredthsOfMillimetre(media.heightPoints) + "}";
    if (!source.empty()) {
        collection += " media-source=" + source;
    }
    result["media-col"] = collection + "}";
    return result;
}

int CupsQueues::createJob(const QueueJob& job) {
    IppMessage request = makeRequest(IPP_OP_CREATE_JOB, job.queue);
    ippAddString(request.get(), IPP_TAG_OPERATION, IPP_TAG_NAME, "job-name", nullptr, jobName(job.title).c_str());
    for (const auto& [name, value] : job.options) {
        cupsEncodeOption(request.get(), IPP_TAG_JOB, name.c_str(), value.c_str());
    }
    const IppMessage answer = connection_->request(job.queue, std::move(request));
    return number(answer.get(), "job-id", 0);
}

void CupsQueues::sendDocument(const std::string& queue, int job, int fileDescriptor) {
    IppMessage request = makeJobRequest(IPP_OP_SEND_DOCUMENT, queue, job);
    ippAddString(request.get(), IPP_TAG_OPERATION, IPP_TAG_MIMETYPE, "document-format", nullptr, "application/pdf");
    ippAddBoolean(request.get(), IPP_TAG_OPERATION, "last-document", 1);
    try {
        connection_->request(queue, std::move(request), fileDescriptor);
    } catch (const platform::SpoolerError& error) {
        if (error.code() != IPP_STATUS_ERROR_NOT_FOUND) {
            throw;
        }
        // Either the queue is gone, which the next question says, or the job: a server that keeps no history forgets a
        // job that is cancelled.
        connection_->attributes(queue, {"printer-state"});
        throw failure(IPP_STATUS_ERROR_JOB_CANCELED, queue, {});
    }
}

JobFate CupsQueues::fate(const std::string& queue, int job) {
    try {
        const IppMessage answer = connection_->request(
            queue, makeJobRequest(IPP_OP_GET_JOB_ATTRIBUTES, queue, job, {"number-of-documents", "job-state"}));
        if (number(answer.get(), "number-of-documents", 0) > 0) {
            return JobFate::withDocument;
        }
        return number(answer.get(), "job-state", 0) == IPP_JSTATE_CANCELED ? JobFate::cancelled
                                                                           : JobFate::withoutDocument;
    } catch (const platform::SpoolerError& error) {
        if (error.mayPass()) {
            throw;
        }
        return JobFate::unknown;
    }
}

void CupsQueues::cancel(const std::string& queue, int job) noexcept {
    try {
        connection_->request(queue, makeJobRequest(IPP_OP_CANCEL_JOB, queue, job));
    } catch (const std::exception&) {
        return;  // the server drops a job without a document by itself after a while
    }
}

}  // namespace platform_linux::cups

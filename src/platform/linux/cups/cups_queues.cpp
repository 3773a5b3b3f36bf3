#include "platform/linux/cups/cups_queues.h"

#include <cups/cups.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <utility>

#include "platform/linux/cups/bin_names.h"
#include "platform/linux/cups/cups_error.h"
#include "platform/linux/cups/printer_state.h"
#include "platform/linux/cups/queue_device.h"
#include "platform/linux/file_descriptor.h"

namespace platform_linux::cups {

namespace {

namespace attribute_flag = platform::printer_attribute;

constexpr std::size_t longestJobName = 255;  // bytes, of the IPP type "name"

bool serverIsLocal() {
    const std::string server = cupsServer();
    return server.starts_with('/') || server == "localhost" || server == "127.0.0.1" || server == "::1";
}

// Control characters and anything beyond the longest name go, never half a character.
std::string jobName(const std::string& title) {
    std::string result;
    for (const char c : title) {
        const auto code = static_cast<unsigned char>(c);
        result += code < 0x20 || code == 0x7F ? '_' : c;
    }
    std::size_t length = std::min(result.size(), longestJobName);
    while (length > 0 && length < result.size() && (static_cast<unsigned char>(result[length]) & 0xC0) == 0x80) {
        --length;
    }
    result.resize(length);
    return result;
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

class Destinations {
public:
    explicit Destinations(http_t* http) : count_(cupsGetDests2(http, &list_)) {}
    ~Destinations() { cupsFreeDests(count_, list_); }
    Destinations(const Destinations&) = delete;
    Destinations& operator=(const Destinations&) = delete;

    int count() const { return count_; }
    cups_dest_t* list() const { return list_; }

private:
    cups_dest_t* list_ = nullptr;
    int count_;
};

}  // namespace

IppMessage CupsQueues::attributes(const std::string& queue, const std::vector<const char*>& names) {
    return connection_.request(queue, makeRequest(IPP_OP_GET_PRINTER_ATTRIBUTES, queue, names));
}

std::vector<std::string> CupsQueues::names() {
    std::vector<std::string> result;
    try {
        const IppMessage answer = connection_.request({}, makeRequest(IPP_OP_CUPS_GET_PRINTERS, {}, {"printer-name"}));
        for (auto* attribute = ippFindAttribute(answer.get(), "printer-name", IPP_TAG_NAME); attribute != nullptr;
             attribute = ippFindNextAttribute(answer.get(), "printer-name", IPP_TAG_NAME)) {
            result.emplace_back(ippGetString(attribute, 0, nullptr));
        }
    } catch (const platform::SpoolerError&) {
        result.clear();
    }
    return result;
}

std::string CupsQueues::defaultName() {
    try {
        http_t* http = connection_.connected({});
        // Knows the user's lpoptions, which the call below does not, but gives nothing for a name that is no queue.
        if (cups_dest_t* destination = cupsGetNamedDest(http, nullptr, nullptr); destination != nullptr) {
            std::string result = destination->name;
            cupsFreeDests(1, destination);
            return result;
        }
        const char* name = cupsGetDefault2(http);
        return name != nullptr ? name : "";
    } catch (const platform::SpoolerError&) {
        return {};
    }
}

void CupsQueues::setDefaultName(const std::string& queue) {
    attributes(queue, {"printer-name"});
    http_t* http = connection_.connected(queue);
    const Destinations destinations(http);
    cupsSetDefaultDest(queue.c_str(), nullptr, destinations.count(), destinations.list());
    if (cupsSetDests2(http, destinations.count(), destinations.list()) != 0) {
        throw failure(static_cast<std::uint32_t>(cupsLastError()), queue, cupsLastErrorString());
    }
}

platform::PrinterRecord CupsQueues::record(const std::string& queue) {
    const IppMessage answer = attributes(
        queue, {"printer-name", "printer-state", "printer-state-reasons", "printer-is-accepting-jobs",
                "printer-is-shared", "printer-type", "printer-location", "printer-info", "printer-make-and-model",
                "device-uri", "job-priority-default", "pages-per-minute", "queued-job-count"});
    ipp_t* values = answer.get();
    platform::PrinterRecord record;
    record.name = text(values, "printer-name");
    record.portName = text(values, "device-uri");
    record.driverName = text(values, "printer-make-and-model");
    record.comment = text(values, "printer-info");
    record.location = text(values, "printer-location");
    record.defaultPriority = static_cast<std::uint32_t>(number(values, "job-priority-default", 50));
    record.priority = record.defaultPriority;
    record.jobs = static_cast<std::uint32_t>(number(values, "queued-job-count", 0));
    record.averagePpm = static_cast<std::uint32_t>(number(values, "pages-per-minute", 0));
    record.status =
        printerStatus(number(values, "printer-state", IPP_PSTATE_IDLE), texts(values, "printer-state-reasons"),
                      boolean(values, "printer-is-accepting-jobs").value_or(true));
    const auto type = static_cast<unsigned>(number(values, "printer-type", 0));
    if ((type & CUPS_PRINTER_REMOTE) != 0 || !serverIsLocal()) {
        record.attributes |= attribute_flag::network;
        record.serverName = serverIsLocal() ? "" : cupsServer();
    } else {
        record.attributes |= attribute_flag::local;
    }
    if (boolean(values, "printer-is-shared").value_or(false)) {
        record.attributes |= attribute_flag::shared;
        record.shareName = record.name;
    }
    if (defaultName() == record.name) {
        record.attributes |= attribute_flag::isDefault;
    }
    return record;
}

int CupsQueues::jobCount(const std::string& queue) {
    const IppMessage answer = attributes(queue, {"queued-job-count"});
    return number(answer.get(), "queued-job-count", 0);
}

std::vector<platform::PaperBin> CupsQueues::bins(const std::string& queue) {
    const IppMessage answer = attributes(queue, {"media-source-supported"});
    const std::vector<std::string> sources = texts(answer.get(), "media-source-supported");
    std::vector<platform::PaperBin> result;
    if (sources.size() < 2) {
        return result;
    }
    std::vector<std::string> names;
    const FileDescriptor file(::memfd_create("krvwinpr-ppd", MFD_CLOEXEC));
    if (file && connection_.fetch("/printers/" + queue + ".ppd", file.get())) {
        names = binNames(fileContent(file.get()), userLanguage());
    }
    for (std::size_t i = 0; i < sources.size(); ++i) {
        result.push_back({static_cast<int>(i + 1), names.size() == sources.size() ? names[i] : sources[i]});
    }
    return result;
}

QueueDevice CupsQueues::device(const std::string& queue) {
    const IppMessage answer = attributes(queue, deviceAttributes());
    return queueDevice(answer.get());
}

std::map<std::string, std::string> CupsQueues::options(const std::string& queue, const QueueMedia& media, int bin,
                                                       int orientation, int colorMode) {
    std::map<std::string, std::string> result;
    result["orientation-requested"] = std::to_string(orientation == 2 ? IPP_ORIENT_LANDSCAPE : IPP_ORIENT_PORTRAIT);
    result["print-color-mode"] = colorMode == 2 ? "color" : "monochrome";
    // The pages are made for this sheet; fitted to its printable area they would no longer be true to scale.
    result["print-scaling"] = "none";

    std::string source;
    if (bin > 0) {
        const IppMessage answer = attributes(queue, {"media-source-supported"});
        const std::vector<std::string> sources = texts(answer.get(), "media-source-supported");
        if (static_cast<std::size_t>(bin) <= sources.size()) {
            source = sources[static_cast<std::size_t>(bin) - 1];
        }
    }
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

bool CupsQueues::canAdminister(const std::string& queue) {
    // The server checks the right to cancel everybody's jobs before it looks whether the job is there.
    IppMessage request = makeRequest(IPP_OP_CANCEL_JOBS, queue);
    ippAddInteger(request.get(), IPP_TAG_OPERATION, IPP_TAG_INTEGER, "job-ids", std::numeric_limits<int>::max());
    try {
        connection_.request(queue, std::move(request));
    } catch (const platform::SpoolerError& error) {
        switch (error.code()) {
            case IPP_STATUS_ERROR_FORBIDDEN:
            case IPP_STATUS_ERROR_NOT_AUTHENTICATED:
            case IPP_STATUS_ERROR_NOT_AUTHORIZED:
            case IPP_STATUS_ERROR_CUPS_AUTHENTICATION_CANCELED:
                return false;
            case IPP_STATUS_ERROR_NOT_FOUND:
                attributes(queue, {"printer-name"});
                return true;
            default:
                throw;
        }
    }
    return true;
}

void CupsQueues::purge(const std::string& queue) { connection_.request(queue, makeRequest(IPP_OP_CANCEL_JOBS, queue)); }

bool CupsQueues::running() {
    try {
        connection_.request({}, makeRequest(IPP_OP_CUPS_GET_DEFAULT, {}, {"printer-name"}));
        return true;
    } catch (const platform::SpoolerError& error) {
        return error.code() >= firstIppStatus;  // an answer, if only that there is no default queue
    }
}

std::string CupsQueues::errorText(std::uint32_t code) { return statusText(code); }

int CupsQueues::submit(const QueueJob& job, int fileDescriptor) {
    IppMessage request = makeRequest(IPP_OP_PRINT_JOB, job.queue);
    ippAddString(request.get(), IPP_TAG_OPERATION, IPP_TAG_NAME, "job-name", nullptr, jobName(job.title).c_str());
    ippAddString(request.get(), IPP_TAG_OPERATION, IPP_TAG_MIMETYPE, "document-format", nullptr, "application/pdf");
    for (const auto& [name, value] : job.options) {
        cupsEncodeOption(request.get(), IPP_TAG_JOB, name.c_str(), value.c_str());
    }
    const IppMessage answer = connection_.request(job.queue, std::move(request), fileDescriptor);
    return number(answer.get(), "job-id", 0);
}

}  // namespace platform_linux::cups

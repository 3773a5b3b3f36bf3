#include "platform/linux/cups/cups_spooler.h"

#include <cups/cups.h>

#include <chrono>
#include <limits>
#include <thread>
#include <utility>

#include "platform/linux/cups/cups_error.h"
#include "platform/linux/cups/cups_queues.h"
#include "platform/linux/cups/printer_properties.h"
#include "platform/linux/cups/printer_state.h"
#include "platform/linux/cups/queue_target.h"

namespace platform_linux::cups {

namespace {

namespace attribute_flag = platform::printer_attribute;
using namespace std::chrono_literals;

constexpr auto discoveryLimit = 2s;
constexpr auto binsLimit = 2s;
constexpr auto setUpLimit = 8s;
constexpr auto setUpPoll = 50ms;

bool serverIsLocal() {
    const std::string server = cupsServer();
    return server.starts_with('/') || server == "localhost" || server == "127.0.0.1" || server == "::1";
}

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

CupsSpooler::CupsSpooler(const std::shared_ptr<Connection>& connection, documents::DocumentFactory makeDocument)
    : connection_(connection),
      queues_(std::make_shared<CupsQueues>(connection)),
      makeDocument_(std::move(makeDocument)) {}

std::vector<std::string> CupsSpooler::printerNames() {
    std::vector<std::string> result;
    try {
        const IppMessage answer = connection_->request({}, makeRequest(IPP_OP_CUPS_GET_PRINTERS, {}, {"printer-name"}));
        for (auto* attribute = ippFindAttribute(answer.get(), "printer-name", IPP_TAG_NAME); attribute != nullptr;
             attribute = ippFindNextAttribute(answer.get(), "printer-name", IPP_TAG_NAME)) {
            result.emplace_back(ippGetString(attribute, 0, nullptr));
        }
    } catch (const platform::SpoolerError& error) {
        // CUPS says that it has no queues as an error.
        if (error.mayPass()) {
            throw;
        }
    }
    return result;
}

// libcups waits its own time for each of its requests: it is let do so only where the server answers.
http_t* CupsSpooler::answering() {
    try {
        connection_->request({}, makeRequest(IPP_OP_CUPS_GET_DEFAULT, {}, {"printer-name"}));
    } catch (const platform::SpoolerError& error) {
        if (error.code() < firstIppStatus) {
            throw;
        }
        // An answer, if only that there is no default queue.
    }
    return connection_->connected({});
}

std::optional<std::string> CupsSpooler::discover(const std::string& name) {
    const auto found = discoveredPrinter(name, discoveryLimit);
    if (!found) {
        return std::nullopt;
    }
    makeQueue(*found);
    // The server asks the printer what it can do; until then the queue takes no job.
    const auto end = std::chrono::steady_clock::now() + setUpLimit;
    while (!acceptsJobs(found->queue)) {
        if (std::chrono::steady_clock::now() > end) {
            throw failure(IPP_STATUS_ERROR_NOT_ACCEPTING_JOBS, found->queue, "");
        }
        std::this_thread::sleep_for(setUpPoll);
    }
    return found->queue;
}

void CupsSpooler::makeQueue(const DiscoveredPrinter& printer) {
    IppMessage request = makeRequest(IPP_OP_CUPS_CREATE_LOCAL_PRINTER, printer.queue);
    ippAddString(request.get(), IPP_TAG_PRINTER, IPP_TAG_NAME, "printer-name", nullptr, printer.queue.c_str());
    ippAddString(request.get(), IPP_TAG_PRINTER, IPP_TAG_TEXT, "printer-info", nullptr, printer.info.c_str());
    ippAddString(request.get(), IPP_TAG_PRINTER, IPP_TAG_URI, "device-uri", nullptr, printer.uri.c_str());
    try {
        connection_->request({}, std::move(request));
    } catch (const platform::SpoolerError& error) {
        if (error.code() != IPP_STATUS_ERROR_NOT_POSSIBLE) {  // which says that there is the queue already
            throw;
        }
    }
}

bool CupsSpooler::acceptsJobs(const std::string& queue) {
    constexpr const char* accepting = "printer-is-accepting-jobs";
    return boolean(connection_->attributes(queue, {accepting}).get(), accepting).value_or(false);
}

std::string CupsSpooler::defaultPrinter() {
    defaultQueue_.clear();
    defaultInstance_.clear();
    // Knows the environment and the user's lpoptions, but gives nothing where those name no queue.
    if (cups_dest_t* destination = cupsGetNamedDest(answering(), nullptr, nullptr)) {
        defaultQueue_ = destination->name;
        defaultInstance_ = destination->instance != nullptr ? destination->instance : "";
        cupsFreeDests(1, destination);
        return defaultQueue_;
    }
    try {
        const IppMessage answer = connection_->request({}, makeRequest(IPP_OP_CUPS_GET_DEFAULT, {}, {"printer-name"}));
        defaultQueue_ = text(answer.get(), "printer-name");
    } catch (const platform::SpoolerError& error) {
        // CUPS says that it has no default queue as an error.
        if (error.mayPass()) {
            throw;
        }
    }
    return defaultQueue_;
}

void CupsSpooler::setDefaultPrinter(const std::string& queue) {
    connection_->attributes(queue, {"printer-name"});
    http_t* http = connection_->connected(queue);
    const Destinations destinations(http);
    cupsSetDefaultDest(queue.c_str(), nullptr, destinations.count(), destinations.list());
    if (cupsSetDests2(http, destinations.count(), destinations.list()) != 0) {
        throw failure(static_cast<std::uint32_t>(cupsLastError()), queue, cupsLastErrorString());
    }
}

platform::PrinterRecord CupsSpooler::printer(const std::string& queue) {
    const IppMessage answer = connection_->attributes(
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
    if (defaultPrinter() == record.name) {
        record.attributes |= attribute_flag::isDefault;
    }
    return record;
}

// Whoever asks is a user who looks at the answer.
std::vector<platform::PaperBin> CupsSpooler::paperBins(const std::string& queue) {
    const Connection::Limit limit(*connection_, binsLimit);
    return queues_->bins(queue);
}

bool CupsSpooler::canAdminister(const std::string& queue) {
    // The server checks the right to cancel everybody's jobs before it looks whether the job is there.
    IppMessage request = makeRequest(IPP_OP_CANCEL_JOBS, queue);
    ippAddInteger(request.get(), IPP_TAG_OPERATION, IPP_TAG_INTEGER, "job-ids", std::numeric_limits<int>::max());
    try {
        connection_->request(queue, std::move(request));
    } catch (const platform::SpoolerError& error) {
        switch (error.code()) {
            case IPP_STATUS_ERROR_FORBIDDEN:
            case IPP_STATUS_ERROR_NOT_AUTHENTICATED:
            case IPP_STATUS_ERROR_NOT_AUTHORIZED:
            case IPP_STATUS_ERROR_CUPS_AUTHENTICATION_CANCELED:
                return false;
            case IPP_STATUS_ERROR_NOT_FOUND:
                connection_->attributes(queue, {"printer-name"});
                return true;
            default:
                throw;
        }
    }
    return true;
}

void CupsSpooler::showProperties(const std::string& queue) {
    queues_->device(queue);
    showQueuePage(queue);
}

platform::ServiceState CupsSpooler::serviceState() {
    try {
        answering();
        return platform::ServiceState::running;
    } catch (const platform::SpoolerError&) {
        return platform::ServiceState::stopped;
    }
}

bool CupsSpooler::answersAgain() {
    connection_->askAgain();
    return serviceState() == platform::ServiceState::running;
}

std::string CupsSpooler::errorText(std::uint32_t code) { return statusText(code); }

std::unique_ptr<platform::PrintDocument> CupsSpooler::openDocument(const std::string& queue, const std::string& title) {
    Options saved = savedOptions(queue, queue == defaultQueue_ ? defaultInstance_ : std::string());
    return makeDocument_(std::make_unique<QueueTarget>(queues_, queue, title, std::move(saved)), title);
}

}  // namespace platform_linux::cups

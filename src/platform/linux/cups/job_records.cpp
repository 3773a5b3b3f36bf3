#include "platform/linux/cups/job_records.h"

#include <algorithm>
#include <array>
#include <ctime>
#include <string_view>
#include <utility>

#include "platform/linux/cups/ipp_message.h"
#include "platform/linux/cups/printer_state.h"
#include "platform/linux/cups/reason.h"
#include "platform/linux/local_time.h"
#include "platform/spooler.h"

namespace platform_linux::cups {

namespace {

namespace flag = platform::job_status;
namespace printer_flag = platform::printer_status;
using Strings = std::vector<std::string>;

constexpr std::array reasonFlags = {
    Reason{"job-incoming", flag::spooling},
    Reason{"job-data-insufficient", flag::spooling},
    Reason{"job-spooling", flag::spooling},
    Reason{"job-hold-until-specified", flag::paused},
    Reason{"job-suspended", flag::paused},
    Reason{"job-suspended-by-operator", flag::paused},
    Reason{"job-suspended-by-system", flag::paused},
    Reason{"job-suspended-by-user", flag::paused},
    Reason{"job-suspended-for-approval", flag::paused},
    Reason{"processing-to-stop-point", flag::deleting},
    Reason{"job-canceled-by-user", flag::deleting},
    Reason{"job-canceled-by-operator", flag::deleting},
    Reason{"job-canceled-at-device", flag::deleting},
    Reason{"printer-stopped", flag::blocked},
    Reason{"service-off-line", flag::offline},
    Reason{"resources-are-not-ready", flag::userIntervention},
    Reason{"resources-are-not-supported", flag::userIntervention},
    Reason{"account-info-needed", flag::userIntervention},
    Reason{"account-authorization-failed", flag::userIntervention},
    Reason{"account-closed", flag::userIntervention},
    Reason{"account-limit-reached", flag::userIntervention},
    Reason{"job-password-wait", flag::userIntervention},
    Reason{"job-release-wait", flag::userIntervention},
    Reason{"aborted-by-system", flag::error},
    Reason{"compression-error", flag::error},
    Reason{"conversion-error", flag::error},
    Reason{"document-access-error", flag::error},
    Reason{"document-format-error", flag::error},
    Reason{"document-password-error", flag::error},
    Reason{"document-permission-error", flag::error},
    Reason{"document-security-error", flag::error},
    Reason{"document-unprintable-error", flag::error},
    Reason{"job-completed-with-errors", flag::error},
    Reason{"submission-interrupted", flag::error},
    Reason{"unsupported-compression", flag::error},
    Reason{"unsupported-document-format", flag::error},
};

// What hinders a printer hinders the job that it prints.
constexpr std::array<std::pair<std::uint32_t, std::uint32_t>, 4> hindrances = {{
    {printer_flag::paperOut, flag::paperOut},
    {printer_flag::offline, flag::offline},
    {printer_flag::error, flag::error},
    {printer_flag::paperJam | printer_flag::paperProblem | printer_flag::manualFeed | printer_flag::outputBinFull |
         printer_flag::noToner | printer_flag::doorOpen | printer_flag::userIntervention,
     flag::userIntervention},
}};

std::uint32_t hindranceOf(const Strings& printerReasons) {
    const std::uint32_t printer = printerStatus(IPP_PSTATE_IDLE, printerReasons, true);
    std::uint32_t result = 0;
    for (const auto& [ofPrinter, ofJob] : hindrances) {
        result |= (printer & ofPrinter) != 0 ? ofJob : 0;
    }
    return result;
}

// A job while its attributes are read.
struct Told {
    platform::PrintJob job;
    int state = IPP_JSTATE_PENDING;
    int created = 0;    // server's clock, seconds since 1970
    int serverNow = 0;  // that clock, now
    std::uint32_t sheets = 0;
    std::uint32_t sheetsPrinted = 0;
    Strings reasons;
    Strings printerReasons;
};

std::string textOf(ipp_attribute_t* attribute) {
    const char* text = ippGetString(attribute, 0, nullptr);
    return text != nullptr ? text : "";
}

// 0 for what is no number, or less.
int integerOf(ipp_attribute_t* attribute) {
    const ipp_tag_t tag = ippGetValueTag(attribute);
    return tag == IPP_TAG_INTEGER || tag == IPP_TAG_ENUM ? std::max(ippGetInteger(attribute, 0), 0) : 0;
}

std::uint32_t amountOf(ipp_attribute_t* attribute) { return static_cast<std::uint32_t>(integerOf(attribute)); }

struct Attribute {
    std::string_view name;
    void (*read)(Told&, ipp_attribute_t*);
};

constexpr std::uint64_t bytesPerOctets = 1024;

constexpr std::array attributes = {
    Attribute{"job-id", [](Told& to, ipp_attribute_t* from) { to.job.number = amountOf(from); }},
    Attribute{"job-name", [](Told& to, ipp_attribute_t* from) { to.job.document = textOf(from); }},
    Attribute{"job-originating-user-name", [](Told& to, ipp_attribute_t* from) { to.job.user = textOf(from); }},
    Attribute{"job-originating-host-name", [](Told& to, ipp_attribute_t* from) { to.job.computer = textOf(from); }},
    Attribute{"job-priority", [](Told& to, ipp_attribute_t* from) { to.job.priority = amountOf(from); }},
    Attribute{"job-state", [](Told& to, ipp_attribute_t* from) { to.state = integerOf(from); }},
    Attribute{"job-state-reasons", [](Told& to, ipp_attribute_t* from) { to.reasons = textsOf(from); }},
    Attribute{"job-printer-state-reasons", [](Told& to, ipp_attribute_t* from) { to.printerReasons = textsOf(from); }},
    Attribute{"job-printer-state-message", [](Told& to, ipp_attribute_t* from) { to.job.statusText = textOf(from); }},
    Attribute{"job-k-octets", [](Told& to, ipp_attribute_t* from) { to.job.size = amountOf(from) * bytesPerOctets; }},
    Attribute{"job-impressions", [](Told& to, ipp_attribute_t* from) { to.job.pages = amountOf(from); }},
    Attribute{"job-impressions-completed",
              [](Told& to, ipp_attribute_t* from) { to.job.pagesPrinted = amountOf(from); }},
    Attribute{"job-media-sheets", [](Told& to, ipp_attribute_t* from) { to.sheets = amountOf(from); }},
    Attribute{"job-media-sheets-completed", [](Told& to, ipp_attribute_t* from) { to.sheetsPrinted = amountOf(from); }},
    Attribute{"time-at-creation", [](Told& to, ipp_attribute_t* from) { to.created = integerOf(from); }},
    Attribute{"job-printer-up-time", [](Told& to, ipp_attribute_t* from) { to.serverNow = integerOf(from); }},
};

void read(Told& told, ipp_attribute_t* attribute) {
    const std::string_view name = ippGetName(attribute);
    const auto* found =
        std::find_if(attributes.begin(), attributes.end(), [name](const Attribute& a) { return a.name == name; });
    if (found != attributes.end()) {
        found->read(told, attribute);
    }
}

platform::PrintJob finished(Told&& told) {
    platform::PrintJob job = std::move(told.job);
    job.pages = job.pages != 0 ? job.pages : told.sheets;
    job.pagesPrinted = job.pagesPrinted != 0 ? job.pagesPrinted : told.sheetsPrinted;
    job.status = jobStatus(told.state, told.reasons, told.printerReasons);
    if (told.created > 0) {
        job.submitted = localTimeOf({.tv_sec = told.created, .tv_nsec = 0});
        const std::int64_t now = told.serverNow > 0 ? told.serverNow : std::time(nullptr);
        job.waitingSeconds = std::max<std::int64_t>(now - told.created, 0);
    }
    return job;
}

}  // namespace

std::vector<const char*> jobAttributes() {
    std::vector<const char*> names(attributes.size());
    std::ranges::transform(attributes, names.begin(), [](const Attribute& a) { return a.name.data(); });
    return names;
}

std::vector<platform::PrintJob> jobRecords(ipp_t* answer) {
    std::vector<platform::PrintJob> jobs;
    Told told;
    const auto keep = [&] {
        if (told.job.number != 0) {
            jobs.push_back(finished(std::move(told)));
        }
        told = Told();
    };
    eachGroup(
        answer, IPP_TAG_JOB, [&told](ipp_attribute_t* attribute) { read(told, attribute); }, keep);
    std::stable_partition(jobs.begin(), jobs.end(),
                          [](const platform::PrintJob& job) { return (job.status & flag::printing) != 0; });
    for (std::uint32_t position = 1; platform::PrintJob & job : jobs) {
        job.position = position++;
    }
    return jobs;
}

std::uint32_t jobStatus(int state, const Strings& reasons, const Strings& printerReasons) {
    std::uint32_t status = flag::waiting;
    for (const std::string& reason : reasons) {
        status |= flagsIn(reasonFlags, reason).value_or(flag::waiting);
    }
    switch (state) {
        case IPP_JSTATE_HELD:
            // CUPS holds a job until it has its document.
            return (status & flag::spooling) != 0 ? status : status | flag::paused;
        case IPP_JSTATE_PROCESSING:
            return status | flag::printing | hindranceOf(printerReasons);
        case IPP_JSTATE_STOPPED:
            return status | flag::blocked | ((status & flag::blocked) != 0 ? 0 : flag::error);
        default:
            return status;
    }
}

}  // namespace platform_linux::cups

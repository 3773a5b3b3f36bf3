#include "platform/linux/cups/job_refusal.h"

#include <cups/cups.h>

#include "platform/linux/cups/cups_error.h"

namespace platform_linux::cups {

namespace {

std::string subject(const JobTask& task) { return "Auftrag " + std::to_string(task.job) + ' ' + task.undone; }

std::string stateReason(int state) {
    switch (state) {
        case IPP_JSTATE_PENDING:
            return "er wartet auf den Druck.";
        case IPP_JSTATE_HELD:
            return "er ist angehalten.";
        case IPP_JSTATE_PROCESSING:
            return "er wird gerade gedruckt.";
        case IPP_JSTATE_STOPPED:
            return "er steht.";
        case IPP_JSTATE_CANCELED:
            return "er ist schon abgebrochen.";
        case IPP_JSTATE_ABORTED:
            return "der Druckdienst hat ihn verworfen.";
        case IPP_JSTATE_COMPLETED:
            return "er ist schon gedruckt.";
        default:
            return {};
    }
}

// CUPS does not tell a user the names of other people's jobs.
std::string ownerReason(const std::string& owner) {
    if (owner == cupsUser()) {
        return "dazu fehlt die Berechtigung. Bitte den Verwalter des Druckdienstes darum bitten.";
    }
    return "er gehört " + (owner.empty() ? "jemand anderem" : "„" + owner + "“") +
           ". Aufträge anderer darf nur ein Verwalter des Druckdienstes steuern.";
}

// Empty where there is no other than the error's own.
std::string reasonOf(Connection& connection, const JobTask& task, std::uint32_t code) {
    const auto ask = [&](const char* attribute) {
        return connection.request(task.queue,
                                  makeJobRequest(IPP_OP_GET_JOB_ATTRIBUTES, task.queue, task.job, {attribute}));
    };
    switch (code) {
        case IPP_STATUS_ERROR_FORBIDDEN:
        case IPP_STATUS_ERROR_NOT_AUTHENTICATED:
        case IPP_STATUS_ERROR_NOT_AUTHORIZED:
        case IPP_STATUS_ERROR_CUPS_AUTHENTICATION_CANCELED:
            return ownerReason(text(ask("job-originating-user-name").get(), "job-originating-user-name"));
        case IPP_STATUS_ERROR_NOT_POSSIBLE:
            return stateReason(number(ask("job-state").get(), "job-state", 0));
        default:
            return {};
    }
}

}  // namespace

platform::SpoolerError refusal(std::uint32_t code, const JobTask& task, const std::string& reason) {
    return {code, "Drucker „" + task.queue + "“: " + subject(task) + ", denn " + reason};
}

platform::SpoolerError notFound(const JobTask& task) {
    return refusal(IPP_STATUS_ERROR_NOT_FOUND, task, "er steht nicht mehr in der Warteschlange.");
}

platform::SpoolerError refusal(Connection& connection, const JobTask& task, const platform::SpoolerError& error) {
    try {
        if (error.code() == IPP_STATUS_ERROR_NOT_FOUND) {
            // Either the queue is gone, which this question says, or the job.
            connection.attributes(task.queue, {"printer-state"});
            return notFound(task);
        }
        if (const std::string reason = reasonOf(connection, task, error.code()); !reason.empty()) {
            return refusal(error.code(), task, reason);
        }
    } catch (const platform::SpoolerError& another) {
        return another.about(subject(task));
    }
    return error.about(subject(task));
}

}  // namespace platform_linux::cups

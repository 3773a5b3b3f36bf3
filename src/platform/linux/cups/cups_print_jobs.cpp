#include "platform/linux/cups/cups_print_jobs.h"

#include <algorithm>
#include <cstdint>

#include "platform/linux/cups/cups_error.h"
#include "platform/linux/cups/cups_queue_watch.h"
#include "platform/linux/cups/job_records.h"
#include "platform/linux/cups/job_refusal.h"

namespace platform_linux::cups {

namespace {

using platform::JobOperation;
using platform::PrintJob;

constexpr std::uint32_t highestIppPriority = 100;

IppMessage jobRequest(ipp_op_t operation, const JobTask& task) {
    return makeJobRequest(operation, task.queue, task.job);
}

bool isPrinting(const PrintJob& job) { return (job.status & platform::job_status::printing) != 0; }

}  // namespace

int CupsPrintJobs::count(const std::string& queue) {
    const IppMessage answer = connection_->attributes(queue, {"queued-job-count"});
    return number(answer.get(), "queued-job-count", 0);
}

IppMessage CupsPrintJobs::unfinishedJobs(const std::string& queue, const std::vector<const char*>& attributes) {
    IppMessage request = makeRequest(IPP_OP_GET_JOBS, queue, attributes);
    ippAddString(request.get(), IPP_TAG_OPERATION, IPP_TAG_KEYWORD, "which-jobs", nullptr, "not-completed");
    return connection_->requestLong(queue, std::move(request));
}

std::vector<PrintJob> CupsPrintJobs::list(const std::string& queue) {
    std::vector<PrintJob> jobs = jobRecords(unfinishedJobs(queue, jobAttributes()).get());
    for (PrintJob& job : jobs) {
        job.priority = std::min(job.priority, platform::highestPriority);
    }
    return jobs;
}

void CupsPrintJobs::request(const JobTask& task, IppMessage message) {
    try {
        connection_->request(task.queue, std::move(message));
    } catch (const platform::SpoolerError& error) {
        throw refusal(*connection_, task, error);
    }
}

void CupsPrintJobs::control(const std::string& queue, std::uint32_t number, JobOperation operation) {
    JobTask task{queue, static_cast<int>(number), {}};
    switch (operation) {
        case JobOperation::pause:
            task.undone = "wurde nicht angehalten";
            return request(task, jobRequest(IPP_OP_HOLD_JOB, task));
        case JobOperation::resume:
            task.undone = "wurde nicht fortgesetzt";
            return request(task, jobRequest(IPP_OP_RELEASE_JOB, task));
        case JobOperation::cancel:
            task.undone = "wurde nicht abgebrochen";
            return request(task, jobRequest(IPP_OP_CANCEL_JOB, task));
        case JobOperation::restart:
            task.undone = "wurde nicht neu begonnen";
            return restart(task);
        case JobOperation::toFront:
            task.undone = "wurde nicht nach vorn gestellt";
            return toFront(task);
    }
}

// CUPS restarts what has ended or stopped; a job that it is printing begins anew when it was held.
void CupsPrintJobs::restart(const JobTask& task) {
    try {
        connection_->request(task.queue, jobRequest(IPP_OP_RESTART_JOB, task));
    } catch (const platform::SpoolerError& error) {
        const auto printing = [&] {
            const IppMessage answer = connection_->request(
                task.queue, makeJobRequest(IPP_OP_GET_JOB_ATTRIBUTES, task.queue, task.job, {"job-state"}));
            return cups::number(answer.get(), "job-state", 0) == IPP_JSTATE_PROCESSING;
        };
        if (error.code() != IPP_STATUS_ERROR_NOT_POSSIBLE || !printing()) {
            throw refusal(*connection_, task, error);
        }
        request(task, jobRequest(IPP_OP_HOLD_JOB, task));
        request({task.queue, task.job, "wurde angehalten, aber nicht neu begonnen"},
                jobRequest(IPP_OP_RELEASE_JOB, task));
    }
}

// CUPS prints by priority, and by number where that is the same.
void CupsPrintJobs::toFront(const JobTask& task) {
    const IppMessage answer = unfinishedJobs(task.queue, {"job-id", "job-priority", "job-state"});
    const std::vector<PrintJob> jobs = jobRecords(answer.get());
    const auto own = std::ranges::find(jobs, static_cast<std::uint32_t>(task.job), &PrintJob::number);
    if (own == jobs.end()) {
        throw notFound(task);
    }
    const auto firstWaiting = std::ranges::find_if_not(jobs, isPrinting);
    if (isPrinting(*own) || own == firstWaiting) {
        return;
    }
    std::uint32_t highest = 0;
    bool tied = false;
    for (auto other = firstWaiting; other != jobs.end(); ++other) {
        if (other != own) {
            highest = std::max(highest, other->priority);
            tied = tied || (other->priority == highestIppPriority && other->number < own->number);
        }
    }
    changePriority(task, static_cast<int>(std::min(highest + 1, highestIppPriority)));
    if (tied) {
        throw refusal(IPP_STATUS_ERROR_NOT_POSSIBLE, task,
                      "ein älterer Auftrag hat schon die höchste Priorität. Bitte dessen Priorität ändern.");
    }
}

void CupsPrintJobs::setPriority(const std::string& queue, std::uint32_t number, std::uint32_t priority) {
    changePriority({queue, static_cast<int>(number), "behält seine Priorität"},
                   static_cast<int>(std::clamp(priority, platform::lowestPriority, platform::highestPriority)));
}

void CupsPrintJobs::changePriority(const JobTask& task, int priority) {
    IppMessage message = jobRequest(IPP_OP_SET_JOB_ATTRIBUTES, task);
    ippAddInteger(message.get(), IPP_TAG_JOB, IPP_TAG_INTEGER, "job-priority", priority);
    request(task, std::move(message));
}

void CupsPrintJobs::purge(const std::string& queue) {
    connection_->request(queue, makeRequest(IPP_OP_CANCEL_JOBS, queue));
}

void CupsPrintJobs::resumePrinter(const std::string& queue) {
    try {
        connection_->request(queue, makeRequest(IPP_OP_RESUME_PRINTER, queue));
        const IppMessage answer =
            connection_->attributes(queue, {"printer-is-accepting-jobs", "printer-state-reasons"});
        if (!boolean(answer.get(), "printer-is-accepting-jobs").value_or(true)) {
            connection_->request(queue, makeRequest(IPP_OP_CUPS_ACCEPT_JOBS, queue));
        }
        const std::vector<std::string> reasons = texts(answer.get(), "printer-state-reasons");
        if (std::ranges::find(reasons, "hold-new-jobs") != reasons.end()) {
            connection_->request(queue, makeRequest(IPP_OP_RELEASE_HELD_NEW_JOBS, queue));
        }
    } catch (const platform::SpoolerError& error) {
        throw error.about("Der Drucker wurde nicht fortgesetzt");
    }
}

std::unique_ptr<platform::QueueWatch> CupsPrintJobs::watch(const std::string& queue) {
    try {
        return std::make_unique<CupsQueueWatch>(connection_, queue);
    } catch (const platform::SpoolerError& error) {
        if (error.code() < firstIppStatus || error.code() == IPP_STATUS_ERROR_NOT_FOUND) {
            throw;
        }
        return nullptr;
    }
}

}  // namespace platform_linux::cups

// Port: the jobs in the printers' queues. A job counts them; the rest is for the job list.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/spooler_error.h"
#include "runtime/datetime.h"

namespace platform {

// Status flags of a job (published values of the spooler's job record); any number of them together.
namespace job_status {
inline constexpr std::uint32_t waiting = 0;
inline constexpr std::uint32_t paused = 0x1;
inline constexpr std::uint32_t error = 0x2;
inline constexpr std::uint32_t deleting = 0x4;
inline constexpr std::uint32_t spooling = 0x8;
inline constexpr std::uint32_t printing = 0x10;
inline constexpr std::uint32_t offline = 0x20;
inline constexpr std::uint32_t paperOut = 0x40;
inline constexpr std::uint32_t printed = 0x80;
inline constexpr std::uint32_t deleted = 0x100;
inline constexpr std::uint32_t blocked = 0x200;
inline constexpr std::uint32_t userIntervention = 0x400;
inline constexpr std::uint32_t restart = 0x800;
inline constexpr std::uint32_t complete = 0x1000;
inline constexpr std::uint32_t retained = 0x2000;
inline constexpr std::uint32_t renderingLocally = 0x4000;
}  // namespace job_status

// A job's priority: 1 is the lowest, 99 the highest that both spoolers have.
inline constexpr std::uint32_t lowestPriority = 1;
inline constexpr std::uint32_t highestPriority = 99;

// One job as the spooler describes it (job record of level 2). Nothing, 0 and empty stand for what it does not tell.
struct PrintJob {
    std::uint32_t number = 0;  // of the spooler, unique on its machine
    std::string document;
    std::string user;
    std::string computer;
    std::uint32_t priority = 0;
    std::uint32_t position = 0;  // in the queue, from 1
    std::uint32_t pages = 0;
    std::uint32_t pagesPrinted = 0;
    std::uint64_t size = 0;                      // bytes
    std::optional<runtime::DateTime> submitted;  // in the user's local time
    std::int64_t waitingSeconds = 0;             // since it was submitted
    std::uint32_t status = 0;                    // job_status
    std::string statusText;                      // the driver's or the server's own, where there is one
};

enum class JobOperation { pause, resume, cancel, restart, toFront };

// Events of a queue.
class QueueWatch {
public:
    virtual ~QueueWatch() = default;

    // Whether anything may have changed in the queue or of its printer since the last call; the first call says yes.
    // Costs little and does not wait. Never throws.
    virtual bool changed() = 0;
};

// Printers are named by their device names, UTF-8. Every call throws SpoolerError when there is no printer of that name
// or the spooler does not answer; what it refuses says its code, and in the detail what was not done and why.
class PrintJobs {
public:
    virtual ~PrintJobs() = default;

    // Jobs in the printer's queue now, whoever sent them.
    virtual int count(const std::string& printer) = 0;

    // The jobs that count() counts, in the queue's order. One question to the spooler, however many there are.
    virtual std::vector<PrintJob> list(const std::string& printer) = 0;

    // Does something with a job of that queue. One that is not there any more is an error, too.
    virtual void control(const std::string& printer, std::uint32_t number, JobOperation operation) = 0;
    virtual void setPriority(const std::string& printer, std::uint32_t number, std::uint32_t priority) = 0;

    // Removes every job from the printer's queue.
    virtual void purge(const std::string& printer) = 0;

    // Lets a printer that was stopped or paused go on.
    virtual void resumePrinter(const std::string& printer) = 0;

    // Null where the system has no events for this queue, or refuses them; then whoever wants to know asks list() anew.
    virtual std::unique_ptr<QueueWatch> watch(const std::string& printer) = 0;
};

}  // namespace platform

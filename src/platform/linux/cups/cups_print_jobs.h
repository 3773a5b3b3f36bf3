// The port PrintJobs on the queues of CUPS.
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/linux/cups/connection.h"
#include "platform/print_jobs.h"

namespace platform_linux::cups {

struct JobTask;

class CupsPrintJobs final : public platform::PrintJobs {
public:
    explicit CupsPrintJobs(std::shared_ptr<Connection> connection) : connection_(std::move(connection)) {}

    int count(const std::string& queue) override;
    std::vector<platform::PrintJob> list(const std::string& queue) override;
    void control(const std::string& queue, std::uint32_t number, platform::JobOperation operation) override;
    void setPriority(const std::string& queue, std::uint32_t number, std::uint32_t priority) override;
    void purge(const std::string& queue) override;
    void resumePrinter(const std::string& queue) override;
    std::unique_ptr<platform::QueueWatch> watch(const std::string& queue) override;

private:
    IppMessage unfinishedJobs(const std::string& queue, const std::vector<const char*>& attributes);
    void request(const JobTask& task, IppMessage message);
    void restart(const JobTask& task);
    void toFront(const JobTask& task);
    void changePriority(const JobTask& task, int priority);

    std::shared_ptr<Connection> connection_;
};

}  // namespace platform_linux::cups

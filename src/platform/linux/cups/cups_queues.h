// The queues of CUPS, asked with plain IPP requests.
#pragma once

#include <memory>
#include <utility>

#include "platform/linux/cups/connection.h"
#include "platform/linux/cups/queue_access.h"

namespace platform_linux::cups {

class CupsQueues final : public QueueAccess {
public:
    explicit CupsQueues(std::shared_ptr<Connection> connection) : connection_(std::move(connection)) {}

    std::vector<platform::PaperBin> bins(const std::string& queue) override;
    QueueDevice device(const std::string& queue) override;
    Options options(const std::string& queue, const QueueMedia& media, int bin, int orientation, int colorMode,
                    const Options& saved) override;
    int createJob(const QueueJob& job) override;
    void sendDocument(const std::string& queue, int job, int fileDescriptor) override;
    JobFate fate(const std::string& queue, int job) override;
    void cancel(const std::string& queue, int job) noexcept override;

private:
    std::shared_ptr<Connection> connection_;
};

}  // namespace platform_linux::cups

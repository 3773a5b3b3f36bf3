// Events of a queue, which the server keeps until they are fetched (RFC 3995 and RFC 3996).
#pragma once

#include <chrono>
#include <memory>
#include <string>

#include "platform/linux/cups/connection.h"
#include "platform/print_jobs.h"

namespace platform_linux::cups {

// Subscribes to the server's events while it lives, because CUPS tells those of a job that waits to nobody else; for a
// program that ends otherwise the server ends the subscription some minutes later. The server is asked once a second at
// most; whatever keeps it from answering counts as a change, so that whoever then asks for the jobs hears why.
class CupsQueueWatch final : public platform::QueueWatch {
public:
    // Throws platform::SpoolerError where the server does not answer or refuses.
    CupsQueueWatch(std::shared_ptr<Connection> connection, std::string queue);
    CupsQueueWatch(const CupsQueueWatch&) = delete;
    CupsQueueWatch& operator=(const CupsQueueWatch&) = delete;
    ~CupsQueueWatch() override;

    bool changed() override;

private:
    using Clock = std::chrono::steady_clock;

    void subscribe();
    void unsubscribe() noexcept;
    void renew();
    bool fetch();
    IppMessage request(ipp_op_t operation, int subscription) const;

    std::shared_ptr<Connection> connection_;
    const std::string queue_;
    std::string subject_;            // the queue as the events call it; empty where they are its printers'
    int subscription_ = 0;           // 0 when the server no longer has it
    int lastEvent_ = 0;              // that was fetched
    std::chrono::seconds interval_;  // in which the server wants to be asked
    bool first_ = true;
    Clock::time_point askAt_;
    Clock::time_point renewAt_;
};

}  // namespace platform_linux::cups

// The queues of CUPS, asked for with plain IPP requests.
#pragma once

#include <memory>

#include "platform/linux/cups/connection.h"
#include "platform/linux/cups/print_queues.h"

namespace platform_linux::cups {

class CupsQueues : public PrintQueues {
public:
    std::vector<std::string> names() override;
    // What LPDEST or PRINTER in the user's environment name is given even if it is no queue.
    std::string defaultName() override;
    void setDefaultName(const std::string& queue) override;
    platform::PrinterRecord record(const std::string& queue) override;
    int jobCount(const std::string& queue) override;
    std::vector<platform::PaperBin> bins(const std::string& queue) override;
    QueueDevice device(const std::string& queue) override;
    std::map<std::string, std::string> options(const std::string& queue, const QueueMedia& media, int bin,
                                               int orientation, int colorMode) override;
    // Whether the server would let the user cancel other people's jobs.
    bool canAdminister(const std::string& queue) override;
    void purge(const std::string& queue) override;
    bool running() override;
    std::string errorText(std::uint32_t code) override;
    int submit(const QueueJob& job, int fileDescriptor) override;

private:
    IppMessage attributes(const std::string& queue, const std::vector<const char*>& names);

    Connection connection_;
};

}  // namespace platform_linux::cups
